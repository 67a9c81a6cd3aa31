// Images filled from the test's own data, and their bytes read back.
#pragma once
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "image/image_object.h"
#include "scene/scene_fixture.h"

class ImageTest : public SceneTest {
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
};
