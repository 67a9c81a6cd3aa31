// Images filled from the test's own data or with known pixels, their
// bytes read back, and a fresh folder for the files the tests write.
#pragma once
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "image/image_files.h"
#include "scene/image_object.h"
#include "scene/scene_fixture.h"
#include "support/scratch_folder.h"

class ImageTest : public SceneTest, protected ScratchFolder {
 public:
  // Image `id` of nx by ny holding `px` (R, G, B, A a pixel).
  static Objet* pose(int id, int nx, int ny, const std::vector<uint8_t>& px) {
    Objet* o = image_ou_cree(id, nullptr);
    EXPECT_NE(o, nullptr);
    if (!o || SET_DIM_IMAGE(o, nx, ny) < 0) return nullptr;
    std::memcpy(pixels_image(o), px.data(), static_cast<size_t>(nx) * ny * 4);
    return o;
  }
  static std::vector<uint8_t> hasard(int nx, int ny, unsigned seed) {
    std::mt19937 g(seed);
    std::vector<uint8_t> px(static_cast<size_t>(nx) * ny * 4);
    for (uint8_t& b : px) b = static_cast<uint8_t>(g() & 255);
    return px;
  }
  static std::vector<uint8_t> octets_de(int id) {
    Objet* o = image_numero(id);
    const uint8_t* p = o ? pixels_image(o) : nullptr;
    if (!p) return {};
    return {p, p + static_cast<size_t>(image_nx(o)) * image_ny(o) * 4};
  }

 protected:
  void SetUp() override {
    SceneTest::SetUp();
    make_folder("orvela_img_");
  }
  void TearDown() override {
    SceneTest::TearDown();
    remove_folder();
  }
};

// Pixels that differ from one byte to the next, in an image `id`.
inline Objet* motif(int id, int w, int h) {
  Objet* o = image_ou_cree(id, nullptr);
  if (!o || SET_DIM_IMAGE(o, w, h) < 0) return nullptr;
  uint8_t* px = pixels_image(o);
  for (int i = 0; i < w * h * 4; i++) px[i] = static_cast<uint8_t>(i * 7 + id * 13 + 1);
  return o;
}
inline ImageView view_of(Objet* o) { return {pixels_image(o), image_nx(o), image_ny(o), image_nz(o)}; }
inline Bytes bytes_of(Objet* o) {
  const uint8_t* px = pixels_image(o);
  return Bytes(px, px + static_cast<size_t>(image_nx(o)) * image_ny(o) * image_nz(o) * 4);
}
