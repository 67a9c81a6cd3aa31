// The picture formats on bytes in memory: what each writes, what each
// reads back, and how each refuses a hostile file.
#include <cstring>

#include "image/file_numbers.h"
#include "image/image_files.h"
#include "support/capture.h"
#include "support/text_runner.h"

namespace {

using ImageFormats = TextRunner;

Bytes rgba(int w, int h) {
  Bytes b(static_cast<size_t>(w) * h * 4);
  for (size_t i = 0; i < b.size(); i++) b[i] = static_cast<uint8_t>(i * 11 + 3);
  return b;
}

// Decodes with a format, keeping what it printed.
struct Decoded {
  int status;
  ImageData d;
  std::string out;
};
Decoded decode(Decoder f, const Bytes& b, FormatOptions o = {}) {
  Decoded r;
  Capture c;
  r.status = f(b.data(), b.size(), o, r.d);
  r.out = c.take();
  return r;
}

TEST_F(ImageFormats, ExtensionsAreAllLowerOrAllUpperCase) {
  for (const char* ok : {"a.flo", "a.FLO", "x/a.bmp", "a.BMP", "a.ima", "a.IMA", "a.jpg", "a.JPG", "a.tga", "a.TGA",
                         "a.raw", "a.RAW", "a.png", "a.PNG"})
    EXPECT_NE(format_of(ok), nullptr) << ok;
  for (const char* bad : {"a.Bmp", "a.bMP", "a.jpeg", "a", "a.", "bmp"}) EXPECT_EQ(format_of(bad), nullptr) << bad;
}

TEST_F(ImageFormats, NumericFormatsKeepTheirPlaces) {
  std::string s;
  const struct {
    const char* fmt;
    long long v;
    const char* want;
  } cases[] = {{"4D", 7, "0007"},    {"6D", 1234567, "234567"}, {"4D", 12345, "2345"}, {"8X", 255, "000000ff"},
               {"3b", 5, "101"},     {"4o", 8, "0010"},         {"4D", -7, "-007"},    {"1D", 0, "0"}};
  for (const auto& c : cases) {
    ASSERT_TRUE(format_numerique(c.fmt, c.v, s)) << c.fmt;
    EXPECT_EQ(s, c.want) << c.fmt << " " << c.v;
  }
  EXPECT_FALSE(format_numerique("D", 7, s));
  EXPECT_FALSE(format_numerique("0D", 7, s));
}

TEST_F(ImageFormats, FloHasATextHeaderAndDoNothingCompression) {
  const Bytes px = rgba(3, 2);
  const Bytes f = WRITE_IMAGE_FLO({px.data(), 3, 2, 1}, {});
  ASSERT_EQ(f.size(), 16u + 24u);
  EXPECT_EQ(std::string(f.begin(), f.begin() + 16), "000003 000002 0\n");
  Decoded r = decode(READ_IMAGE_FLO, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.w, 3);
  EXPECT_EQ(r.d.h, 2);
  EXPECT_EQ(r.d.px, px);
  // Compressed: the header alone, and a black image when read.
  FormatOptions packed;
  packed.compression = 1;
  const Bytes c = WRITE_IMAGE_FLO({px.data(), 3, 2, 1}, packed);
  EXPECT_EQ(c.size(), 16u);
  Bytes flagged = f;
  flagged[14] = '1';
  r = decode(READ_IMAGE_FLO, flagged);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.px, Bytes(24, 0));
  EXPECT_EQ(r.d.valid, 24u);
  // A short file gives only what it holds.
  r = decode(READ_IMAGE_FLO, Bytes(f.begin(), f.end() - 5));
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.valid, 19u);
}

TEST_F(ImageFormats, ImaWordsAndTheCompressionFlag) {
  const Bytes px = rgba(2, 3);
  FormatOptions flag;
  flag.compression = 5;
  Bytes f = WRITE_IMAGE_IMA({px.data(), 2, 3, 1}, flag);
  ASSERT_EQ(f.size(), 28u + 24u);
  const uint8_t head[] = {7, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 1, 0, 0, 0, 4, 0, 0, 0, 8, 0, 0, 0, 5, 0, 0, 0};
  EXPECT_EQ(std::memcmp(f.data(), head, 28), 0);
  EXPECT_EQ(Bytes(f.begin() + 28, f.end()), px);
  // Written with a flag, it can't be read back.
  Decoded r = decode(READ_IMAGE_IMA, f);
  EXPECT_EQ(r.status, -1);
  EXPECT_EQ(r.out, "ima compressed\n");
  // Another magic reads; word 4 gives the bytes read a pixel.
  f[24] = 0;
  f[0] = 9;
  f[16] = 2;
  r = decode(READ_IMAGE_IMA, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.valid, 12u);
  EXPECT_EQ(std::memcmp(r.d.px.data(), px.data(), 12), 0);
}

TEST_F(ImageFormats, RawCarriesFourDigitSizes) {
  const Bytes px = rgba(12345, 1);
  const Bytes f = WRITE_IMAGE_RAW({px.data(), 12345, 1, 1}, {});
  EXPECT_EQ(std::string(f.begin(), f.begin() + 8), "23450001");
  Decoded r = decode(READ_IMAGE_RAW, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.w, 2345);
  EXPECT_EQ(std::memcmp(r.d.px.data(), px.data(), r.d.px.size()), 0);
  EXPECT_EQ(decode(READ_IMAGE_RAW, Bytes{'0', '0', '1'}).status, -1);
  EXPECT_NE(decode(READ_IMAGE_RAW, Bytes{'0', '0', '0', '0', '0', '0', '0', '1'}).out.find("illegal size"),
            std::string::npos);
}

// A targa header of type `type`, depth `depth`, w x h, with a colour map
// of `map` entries.
Bytes tga_head(int type, int depth, int w, int h, int map = 0, int map_depth = 24) {
  Bytes b(18, 0);
  b[1] = map ? 1 : 0;
  b[2] = static_cast<uint8_t>(type);
  b[5] = static_cast<uint8_t>(map);
  b[7] = static_cast<uint8_t>(map_depth);
  b[12] = static_cast<uint8_t>(w);
  b[14] = static_cast<uint8_t>(h);
  b[16] = static_cast<uint8_t>(depth);
  return b;
}

TEST_F(ImageFormats, TargaRoundTripAndPixelDepths) {
  const Bytes px = rgba(3, 2);
  const Bytes f = tga_bytes({px.data(), 3, 2, 1}, {});
  ASSERT_EQ(f.size(), 18u + 24u);
  EXPECT_EQ(f[2], 2);
  EXPECT_EQ(f[16], 32);
  EXPECT_EQ(f[18], px[2]);  // B, G, R, A
  Decoded r = decode(lire_image_tga, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.px, px);
  // 24 bits: alpha 0, unless an alpha is given.
  Bytes t24 = tga_head(2, 24, 1, 1);
  t24.insert(t24.end(), {10, 20, 30});
  r = decode(lire_image_tga, t24);
  EXPECT_EQ(r.d.px, (Bytes{30, 20, 10, 0}));
  FormatOptions opaque;
  opaque.alpha = 200;
  EXPECT_EQ(decode(lire_image_tga, t24, opaque).d.px, (Bytes{30, 20, 10, 200}));
  // 16 bits: 1 rrrrr ggggg bbbbb.
  Bytes t16 = tga_head(2, 16, 1, 1);
  t16.insert(t16.end(), {0xff, 0xff});
  r = decode(lire_image_tga, t16);
  EXPECT_EQ(r.d.px, (Bytes{0xf8, 0xf8, 0xf8, 0x80}));
}

TEST_F(ImageFormats, TargaRunLengthPacketsCrossRows) {
  // 3 x 2: a run of 4 red pixels, then 2 raw pixels.
  Bytes f = tga_head(10, 24, 3, 2);
  f.insert(f.end(), {0x83, 0, 0, 255, 0x01, 1, 2, 3, 4, 5, 6});
  Decoded r = decode(lire_image_tga, f);
  ASSERT_EQ(r.status, 0) << r.out;
  const Bytes want{255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 3, 2, 1, 0, 6, 5, 4, 0};
  EXPECT_EQ(r.d.px, want);
}

TEST_F(ImageFormats, TargaColourMapSkipsOneByteAnEntry) {
  // Two entries of 24 bits: 2 bytes are skipped, not 6, so the pixel is
  // read from the map's third byte on.
  Bytes f = tga_head(2, 24, 1, 1, 2, 24);
  f.insert(f.end(), {1, 2, 3, 4, 5, 6, 7, 8, 9});
  Decoded r = decode(lire_image_tga, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.px, (Bytes{5, 4, 3, 0}));
}

TEST_F(ImageFormats, TargaRefusalsPrintTheirMessages) {
  EXPECT_EQ(decode(lire_image_tga, tga_head(1, 24, 1, 1)).out, "Can only handle image type 2 and 10\n");
  EXPECT_EQ(decode(lire_image_tga, tga_head(2, 8, 1, 1)).out, "Can only handle pixel depths of 16, 24, and 32\n");
  Bytes map2 = tga_head(2, 24, 1, 1);
  map2[1] = 2;
  EXPECT_EQ(decode(lire_image_tga, map2).out, "Can only handle colour map types of 0 and 1\n");
  // The data ends inside the pixels: reported, and the reading stops.
  Bytes f = tga_head(2, 24, 2, 2);
  f.insert(f.end(), {1, 2, 3, 4, 5});
  Decoded r = decode(lire_image_tga, f);
  EXPECT_EQ(r.status, -1);
  EXPECT_EQ(r.out, "Unexpected end of file at pixel 1\n");
  Bytes rle = tga_head(10, 32, 200, 200);
  rle.insert(rle.end(), {0xff, 1, 2, 3, 4});
  EXPECT_EQ(decode(lire_image_tga, rle).out, "Unexpected end of file at pixel 128\n");
  // Debug level 2 prints the header first.
  FormatOptions debug;
  debug.debug = 2;
  const std::string out = decode(lire_image_tga, f, debug).out;
  EXPECT_EQ(out.rfind("ID length:         0\nColourmap type:    0\nImage type:        2\n", 0), 0u) << out;
  EXPECT_NE(out.find("Width:             2\n"), std::string::npos);
}

TEST_F(ImageFormats, BitmapRowsAreUnpaddedWhenWrittenAndPaddedWhenRead) {
  const Bytes px = rgba(4, 2);
  Bytes f = bmp_bytes({px.data(), 4, 2, 1}, {});
  ASSERT_EQ(f.size(), 54u + 24u);
  EXPECT_EQ(f[0], 'B');
  EXPECT_EQ(f[28], 24);
  EXPECT_EQ(f[54], px[2]);  // B, G, R by default
  FormatOptions o;
  o.alpha = 77;
  Decoded r = decode(bmp_read, f, o);
  ASSERT_EQ(r.status, 0);
  for (size_t i = 0; i < px.size(); i++) EXPECT_EQ(r.d.px[i], i % 4 == 3 ? 77 : px[i]) << i;
  // Width 3: the writer packs rows of 9 bytes, the reader steps by 12, so
  // the second row starts three bytes late.
  const Bytes odd = rgba(3, 2);
  f = bmp_bytes({odd.data(), 3, 2, 1}, {});
  ASSERT_EQ(f.size(), 54u + 18u);
  r = decode(bmp_read, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.px[0], odd[0]);
  EXPECT_EQ(r.d.px[12], odd[16]);  // row 1 pixel 0 is file pixel 4
  EXPECT_EQ(r.d.px[20], 0);       // its last pixel lies past the data
  // The component order names what is written in file order.
  FormatOptions order;
  order.order = "RGB";
  EXPECT_EQ(bmp_bytes({px.data(), 4, 2, 1}, order)[54], px[0]);
  order.order = "RGX";
  Capture c;
  EXPECT_TRUE(bmp_bytes({px.data(), 4, 2, 1}, order).empty());
  EXPECT_EQ(c.take(), "RGX ILLEGAL\n");
}

TEST_F(ImageFormats, BitmapOtherDepthsAndHostileHeaders) {
  const Bytes px = rgba(2, 2);
  Bytes f = bmp_bytes({px.data(), 2, 2, 1}, {});
  f[28] = 32;  // 32 bits: the size is kept, the pixels are not converted
  f[34] = 12;  // image size field: 12 bytes
  Decoded r = decode(bmp_read, f);
  ASSERT_EQ(r.status, 0);
  EXPECT_EQ(r.d.w, 2);
  EXPECT_EQ(r.d.px, Bytes(16, 0));
  Bytes big = bmp_bytes({px.data(), 2, 2, 1}, {});
  big[34] = 0xff;  // more data than the file holds
  big[35] = 0xff;
  EXPECT_EQ(decode(bmp_read, big).out, "Couldn't read bitmap\n");
  Bytes wide = bmp_bytes({px.data(), 2, 2, 1}, {});
  wide[21] = 0x7f;  // 2 billion wide
  EXPECT_NE(decode(bmp_read, wide).out.find("Couldn't allocate memory\n"), std::string::npos);
  EXPECT_EQ(decode(bmp_read, Bytes(f.begin(), f.begin() + 30)).out, "Couldn't read the bitmap header\n");
  EXPECT_EQ(decode(bmp_read, Bytes{'B', 'M'}).out, "ERREUR fread\n");
}

TEST_F(ImageFormats, PngKeepsEveryByteAndJpegComesClose) {
  const int w = 16, h = 8;
  Bytes px(static_cast<size_t>(w) * h * 4);
  for (int y = 0; y < h; y++)
    for (int x = 0; x < w; x++) {
      uint8_t* p = &px[(static_cast<size_t>(y) * w + x) * 4];
      p[0] = static_cast<uint8_t>(x * 16);
      p[1] = static_cast<uint8_t>(y * 32);
      p[2] = 128;
      p[3] = static_cast<uint8_t>(x * y);
    }
  const Bytes png = png_bytes({px.data(), w, h, 1}, {});
  ASSERT_GT(png.size(), 8u);
  EXPECT_EQ(png[1], 'P');
  Decoded r = decode(png_read, png);
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.d.px, px);
  const Bytes jpg = jpg_bytes({px.data(), w, h, 1}, {});
  ASSERT_GT(jpg.size(), 2u);
  EXPECT_EQ(jpg[0], 0xff);
  r = decode(jpg_read, jpg);
  ASSERT_EQ(r.status, 0) << r.out;
  ASSERT_EQ(r.d.px.size(), px.size());
  int worst = 0;
  for (size_t i = 0; i < px.size(); i++)
    worst = std::max(worst, i % 4 == 3 ? std::abs(r.d.px[i] - 255) : std::abs(r.d.px[i] - px[i]));
  EXPECT_LE(worst, 24);
}

TEST_F(ImageFormats, CorruptPngAndJpegAreRefusedWithAMessage) {
  const Bytes px = rgba(8, 8);
  Bytes png = png_bytes({px.data(), 8, 8, 1}, {});
  Bytes cut(png.begin(), png.begin() + static_cast<long>(png.size() / 2));
  Decoded r = decode(png_read, cut);
  EXPECT_EQ(r.status, -1);
  EXPECT_EQ(r.out.rfind("png: ", 0), 0u) << r.out;
  Bytes jpg = jpg_bytes({px.data(), 8, 8, 1}, {});
  r = decode(jpg_read, Bytes(jpg.begin(), jpg.begin() + 20));
  EXPECT_EQ(r.status, -1);
  EXPECT_EQ(r.out.rfind("jpg: ", 0), 0u) << r.out;
  EXPECT_EQ(decode(jpg_read, Bytes{1, 2, 3}).status, -1);
  EXPECT_EQ(decode(png_read, Bytes{}).status, -1);
}

}  // namespace
