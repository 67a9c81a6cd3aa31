// Pictures of the recordings: encoded by our own writer, read back by
// libpng, pixel for pixel and the right way up, again and again with the
// same compressor.
#include <gtest/gtest.h>

#include "image/image_files.h"
#include "image/png_frames.h"

namespace {

// RGB rows from the bottom, as OpenGL reads them: a value that tells the
// pixel and the component apart.
std::vector<uint8_t> gradient(int w, int h, int seed) {
  std::vector<uint8_t> rgb(static_cast<size_t>(w) * h * 3);
  for (int y = 0; y < h; y++)
    for (int x = 0; x < w; x++)
      for (int c = 0; c < 3; c++) rgb[(static_cast<size_t>(y) * w + x) * 3 + c] = static_cast<uint8_t>(x * 7 + y * 31 + c * 85 + seed);
  return rgb;
}

void expect_reads_back(const PngFrames& f, size_t n, const std::vector<uint8_t>& rgb) {
  ImageData img;
  ASSERT_EQ(png_read(f.file.data(), n, FormatOptions{}, img), 0);
  ASSERT_EQ(img.w, f.w);
  ASSERT_EQ(img.h, f.h);
  // The reader keeps R, G, B, A with the bottom row first, as GL gave it.
  for (int y = 0; y < f.h; y++)
    for (int x = 0; x < f.w; x++)
      for (int c = 0; c < 3; c++)
        ASSERT_EQ(img.px[(static_cast<size_t>(y) * f.w + x) * 4 + c], rgb[(static_cast<size_t>(y) * f.w + x) * 3 + c])
            << x << "," << y << " component " << c;
}

TEST(PngFrames, PicturesOfOddSizesReadBackExactlyOneAfterTheOther) {
  for (const auto& [w, h] : {std::pair{7, 5}, std::pair{1, 1}, std::pair{768, 576}}) {
    PngFrames f;
    ASSERT_TRUE(png_frames_start(f, w, h));
    for (int seed = 0; seed < 3; seed++) {
      const std::vector<uint8_t> rgb = gradient(w, h, seed * 40);
      const size_t n = png_frames_encode(f, rgb.data());
      ASSERT_GT(n, 0u);
      expect_reads_back(f, n, rgb);
    }
    png_frames_end(f);
  }
}

TEST(PngFrames, TheSamePixelsGiveTheSameBytesAndAPlainPictureIsSmall) {
  PngFrames f;
  ASSERT_TRUE(png_frames_start(f, 64, 48));
  const std::vector<uint8_t> plain(64 * 48 * 3, 200);
  const size_t n = png_frames_encode(f, plain.data());
  const std::vector<uint8_t> first(f.file.begin(), f.file.begin() + static_cast<long>(n));
  png_frames_encode(f, gradient(64, 48, 1).data());
  ASSERT_EQ(png_frames_encode(f, plain.data()), n);
  EXPECT_TRUE(std::equal(first.begin(), first.end(), f.file.begin()));
  EXPECT_LT(n, 300u);
  png_frames_end(f);
  // Ended, it encodes nothing.
  EXPECT_EQ(png_frames_encode(f, plain.data()), 0u);
}

}  // namespace
