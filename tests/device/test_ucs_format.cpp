// The datagram formats: encoders and decoders over the limit values, in
// both byte orders, the hex rules, cuts at the room, "SP" and the dump.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "device/ucs_format.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes encode(const char* fmt, const std::vector<float>& v, bool msb, int room = UCS_TAMPON) {
  Bytes out(static_cast<size_t>(room) + 8, 0xEE);
  std::vector<word> w;
  for (float f : v) w.push_back(fw(f));
  const UcsEncodage e = ucs_encoder_nombres(w.data(), static_cast<int>(w.size()), ucs_format(fmt), msb, out.data(), room);
  out.resize(static_cast<size_t>(e.octets));
  return out;
}

std::vector<float> decode(const char* fmt, const Bytes& b, bool msb, int room = 1000) {
  std::vector<word> out(static_cast<size_t>(room) + 1, 0);
  const UcsDecodage d = ucs_decoder_nombres(b.data(), static_cast<int>(b.size()), ucs_format(fmt), msb, out.data(), room);
  std::vector<float> f;
  for (int i = 0; i < d.elements; ++i) f.push_back(wf(out[static_cast<size_t>(i)]));
  return f;
}

Bytes hexa(const char* fmt, const std::string& s, bool msb) {
  Bytes out(UCS_TAMPON, 0);
  const UcsEncodage e = ucs_encoder_hexa(s.data(), static_cast<int>(s.size()), ucs_format(fmt), msb, out.data(), UCS_TAMPON);
  out.resize(static_cast<size_t>(e.octets));
  return out;
}

std::string hexa_lu(const char* fmt, const Bytes& b, bool msb, int room = 1000) {
  std::string out(static_cast<size_t>(room), '\0');
  const UcsDecodage d = ucs_decoder_hexa(b.data(), static_cast<int>(b.size()), ucs_format(fmt), msb, out.data(), room);
  out.resize(static_cast<size_t>(d.elements));
  return out;
}

}  // namespace

TEST(UcsFormat, TableNamesAndDefaults) {
  EXPECT_EQ(ucs_format("CC").code, 0x4343);
  EXPECT_STREQ(ucs_format("SL").nom, "SL");
  EXPECT_EQ(ucs_format("HL").largeur, 4);
  EXPECT_TRUE(ucs_format("SS").signe);
  EXPECT_FALSE(ucs_format("US").signe);
  // Missing, short and unknown formats are "CC"; "HC" of the help text is unknown.
  for (const char* f : {static_cast<const char*>(nullptr), "", "H", "HC", "ZZ", "hb"})
    EXPECT_STREQ(ucs_format(f).nom, "CC") << (f ? f : "null");
  EXPECT_EQ(ucs_format("SP").genre, UCS_PARTIE);
}

TEST(UcsFormat, IntegersAtTheLimitsBothOrders) {
  const std::vector<float> v = {0, -1, 255, 256, 32767, 32768, 65535, 2147483648.0f};
  EXPECT_EQ(encode("UB", v, false), (Bytes{0, 255, 255, 0, 255, 0, 255, 0}));
  EXPECT_EQ(decode("UB", encode("UB", v, false), false), (std::vector<float>{0, 255, 255, 0, 255, 0, 255, 0}));
  EXPECT_EQ(decode("SB", encode("SB", v, true), true), (std::vector<float>{0, -1, -1, 0, -1, 0, -1, 0}));
  // 200 sent as "SB" reads -56.
  EXPECT_EQ(decode("SB", encode("SB", {200}, false), false), std::vector<float>{-56});

  EXPECT_EQ(encode("US", {256, 65535}, false), (Bytes{0x00, 0x01, 0xFF, 0xFF}));
  EXPECT_EQ(encode("US", {256, 65535}, true), (Bytes{0x01, 0x00, 0xFF, 0xFF}));
  for (bool msb : {false, true}) {
    EXPECT_EQ(decode("US", encode("US", v, msb), msb), (std::vector<float>{0, 65535, 255, 256, 32767, 32768, 65535, 0}));
    EXPECT_EQ(decode("SS", encode("SS", v, msb), msb), (std::vector<float>{0, -1, 255, 256, 32767, -32768, -1, 0}));
    EXPECT_EQ(decode("UL", encode("UL", v, msb), msb),
              (std::vector<float>{0, 4294967295.0f, 255, 256, 32767, 32768, 65535, 2147483648.0f}));
    EXPECT_EQ(decode("SL", encode("SL", v, msb), msb),
              (std::vector<float>{0, -1, 255, 256, 32767, 32768, 65535, -2147483648.0f}));
  }
  EXPECT_EQ(encode("UL", {256}, true), (Bytes{0, 0, 1, 0}));
  EXPECT_EQ(encode("UL", {256}, false), (Bytes{0, 1, 0, 0}));
  // 2^32 - 1 is 2^32 as a float: its low 32 bits are 0. The largest float
  // under 2^32 keeps its bits.
  EXPECT_EQ(encode("UL", {4294967295.0f}, true), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(encode("UL", {4294967040.0f}, true), (Bytes{0xFF, 0xFF, 0xFF, 0x00}));
  // Truncation toward zero, and NaN as 0.
  EXPECT_EQ(encode("SS", {-1.9f, 2.9f, std::numeric_limits<float>::quiet_NaN()}, false),
            (Bytes{0xFF, 0xFF, 2, 0, 0, 0}));
}

TEST(UcsFormat, FloatsBothOrders) {
  EXPECT_EQ(encode("FF", {1.0f}, true), (Bytes{0x3F, 0x80, 0, 0}));
  EXPECT_EQ(encode("FF", {1.0f}, false), (Bytes{0, 0, 0x80, 0x3F}));
  const std::vector<float> v = {0, -1, 3.5f, 1e-30f, 65535};
  for (bool msb : {false, true}) EXPECT_EQ(decode("FF", encode("FF", v, msb), msb), v);
  // A tail short of 4 bytes is left out.
  EXPECT_EQ(decode("FF", Bytes{0, 0, 0x80, 0x3F, 1, 2}, false), std::vector<float>{1.0f});
}

TEST(UcsFormat, ShortTailsCompletedWithZeros) {
  // One byte in "SS": one value, its missing byte 0.
  EXPECT_EQ(decode("SS", Bytes{0x80}, false), std::vector<float>{128});
  EXPECT_EQ(decode("SS", Bytes{0x80}, true), std::vector<float>{-32768});
  EXPECT_EQ(decode("UL", Bytes{1, 2, 3, 4, 5}, true), (std::vector<float>{16909060.0f, 83886080.0f}));
  EXPECT_TRUE(decode("SS", Bytes{}, false).empty());
}

TEST(UcsFormat, HexStringsOddShortAndBadDigits) {
  EXPECT_EQ(hexa("HB", "00ff7A", false), (Bytes{0x00, 0xFF, 0x7A}));
  // An odd count completes its last byte with 0; bad digits count 0.
  EXPECT_EQ(hexa("HB", "ABC", false), (Bytes{0xAB, 0xC0}));
  EXPECT_EQ(hexa("HB", "G1Z-", false), (Bytes{0x01, 0x00}));
  // Five digits in "HS": two values, the second with three zero digits.
  EXPECT_EQ(hexa("HS", "12345", true), (Bytes{0x12, 0x34, 0x50, 0x00}));
  EXPECT_EQ(hexa("HS", "12345", false), (Bytes{0x34, 0x12, 0x00, 0x50}));
  EXPECT_EQ(hexa("HL", "DEADBEEF1", true), (Bytes{0xDE, 0xAD, 0xBE, 0xEF, 0x10, 0, 0, 0}));
  EXPECT_EQ(hexa("HL", "DEADBEEF", false), (Bytes{0xEF, 0xBE, 0xAD, 0xDE}));
  EXPECT_TRUE(hexa("HS", "", false).empty());
  for (bool msb : {false, true}) {
    EXPECT_EQ(hexa_lu("HB", hexa("HB", "00ff7a", msb), msb), "00FF7A");
    EXPECT_EQ(hexa_lu("HS", hexa("HS", "12345", msb), msb), "12345000");
    EXPECT_EQ(hexa_lu("HL", hexa("HL", "0000FFFF", msb), msb), "0000FFFF");
  }
  // A received tail short of a value is completed with zero bytes.
  EXPECT_EQ(hexa_lu("HS", Bytes{0xAB, 0xCD, 0xEF}, true), "ABCDEF00");
}

TEST(UcsFormat, CutsAtTheRoom) {
  // 400 floats as "UL" fill 1500 bytes with 375 values; the rest is told.
  const std::vector<word> v(400, fw(7));
  Bytes out(UCS_TAMPON);
  UcsEncodage e = ucs_encoder_nombres(v.data(), 400, ucs_format("UL"), false, out.data(), UCS_TAMPON);
  EXPECT_EQ(e.pris, 375);
  EXPECT_EQ(e.octets, 1500);
  EXPECT_EQ(e.besoin, 1600);
  EXPECT_TRUE(e.tronque());
  // A 16-bit value needs 2 free bytes: 3 bytes of room take one.
  e = ucs_encoder_nombres(v.data(), 2, ucs_format("SS"), false, out.data(), 3);
  EXPECT_EQ(e.octets, 2);
  EXPECT_EQ(e.pris, 1);
  e = ucs_encoder_nombres(v.data(), 2, ucs_format("SS"), false, out.data(), 4);
  EXPECT_FALSE(e.tronque());
  const std::string h(3002, 'F');
  e = ucs_encoder_hexa(h.data(), 3002, ucs_format("HB"), false, out.data(), UCS_TAMPON);
  EXPECT_EQ(e.octets, 1500);
  EXPECT_EQ(e.pris, 3000);
  EXPECT_EQ(e.besoin, 1501);

  // Received: whole values within the room, the wanted count told.
  std::vector<word> w(3);
  const Bytes b(10, 1);
  UcsDecodage d = ucs_decoder_nombres(b.data(), 10, ucs_format("US"), false, w.data(), 3);
  EXPECT_EQ(d.elements, 3);
  EXPECT_EQ(d.voulus, 5);
  char c[7];
  d = ucs_decoder_hexa(b.data(), 10, ucs_format("HS"), false, c, 7);
  EXPECT_EQ(d.elements, 4);
  EXPECT_EQ(d.voulus, 20);
}

TEST(UcsFormat, PartFromAnOffset) {
  const Bytes b = {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07};
  std::vector<word> w(16);
  auto lus = [&](const UcsPartie& p) {
    std::vector<float> f;
    for (int i = 0; i < p.d.elements; ++i) f.push_back(wf(w[static_cast<size_t>(i)]));
    return f;
  };
  // Odd start, whole rest.
  UcsPartie p = ucs_decoder_partie(b.data(), 7, 1, -1, true, w.data(), 16);
  EXPECT_FALSE(p.ignore);
  EXPECT_FALSE(p.impair);
  EXPECT_FALSE(p.court);
  EXPECT_EQ(p.longueur, 6);
  EXPECT_EQ(lus(p), (std::vector<float>{0x0203, 0x0405, 0x0607}));
  // An odd rest: a 0 byte added.
  p = ucs_decoder_partie(b.data(), 7, 2, -1, true, w.data(), 16);
  EXPECT_TRUE(p.impair);
  EXPECT_EQ(p.longueur, 6);
  EXPECT_EQ(lus(p), (std::vector<float>{0x0304, 0x0506, 0x0700}));
  p = ucs_decoder_partie(b.data(), 7, 1, 4, false, w.data(), 16);
  EXPECT_EQ(lus(p), (std::vector<float>{0x0302, 0x0504}));
  EXPECT_FALSE(p.impair);
  // Odd size asked.
  p = ucs_decoder_partie(b.data(), 7, 0, 3, true, w.data(), 16);
  EXPECT_TRUE(p.impair);
  EXPECT_EQ(lus(p), (std::vector<float>{0x0102, 0x0300}));
  // More asked than there is.
  p = ucs_decoder_partie(b.data(), 7, 4, 10, true, w.data(), 16);
  EXPECT_TRUE(p.court);
  EXPECT_EQ(p.longueur, 4);
  EXPECT_EQ(lus(p), (std::vector<float>{0x0506, 0x0700}));
  // An offset at or past the end.
  EXPECT_TRUE(ucs_decoder_partie(b.data(), 7, 7, 2, true, w.data(), 16).ignore);
  EXPECT_TRUE(ucs_decoder_partie(b.data(), 0, 0, 2, true, w.data(), 16).ignore);
}

TEST(UcsFormat, DumpLines) {
  Bytes b;
  for (int i = 0; i < 20; ++i) b.push_back(static_cast<unsigned char>(i == 1 ? 'A' : i == 2 ? 0xC1 : i));
  char l[UCS_LIGNE_DUMP];
  ucs_ligne_dump(b.data(), 20, 0, l);
  EXPECT_STREQ(l, "0000: 0041C103 04050607 08090A0B 0C0D0E0F  : .AA.............\n");
  ucs_ligne_dump(b.data(), 20, 16, l);
  EXPECT_EQ(std::string(l), "0010: 10111213 " + std::string(27, ' ') + " : ....\n");
}
