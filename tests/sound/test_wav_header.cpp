// The header reader on canonical, unusual and hostile bytes, and the
// header written for a generated sound, byte by byte.
#include <gtest/gtest.h>

#include <cstring>

#include "sound/wav_header.h"
#include "sound_fixture.h"

namespace {

WavLecture lit(const Octets& b, WavEntete& e) { return lit_entete_wav(b.data(), b.size(), e); }

// A file whose fmt chunk is followed by a LIST chunk holding `list`.
Octets avec_list(const std::string& list, const Octets& samples) {
  Octets b = wav(1, 8000, 16, samples);
  Octets chunk = {'L', 'I', 'S', 'T'};
  const uint32_t n = static_cast<uint32_t>(list.size());
  for (int i = 0; i < 4; i++) chunk.push_back(static_cast<uint8_t>(n >> (8 * i)));
  chunk.insert(chunk.end(), list.begin(), list.end());
  b.insert(b.begin() + 36, chunk.begin(), chunk.end());
  const uint32_t riff = static_cast<uint32_t>(b.size() - 8);
  for (int i = 0; i < 4; i++) b[4 + i] = static_cast<uint8_t>(riff >> (8 * i));
  return b;
}

}  // namespace

TEST(WavHeader, CanonicalFieldsAndLength) {
  WavEntete e;
  ASSERT_EQ(lit(wav(2, 22050, 16, Octets(22050 * 4 * 3)), e), WavLecture::ok);
  EXPECT_EQ(e.format, 1);
  EXPECT_EQ(e.Channel, 2);
  EXPECT_EQ(e.Rate, 22050);
  EXPECT_EQ(e.Bits, 16);
  EXPECT_EQ(e.Nb_octet, 2);
  EXPECT_EQ(e.Header, 44);
  EXPECT_EQ(e.data, 22050 * 4 * 3);
  EXPECT_EQ(e.seconds, 3);
  EXPECT_EQ(e.Images, 75);
  // Shorter than a second counts as one, 25 images.
  ASSERT_EQ(lit(wav(1, 8000, 8, Octets(100, 128)), e), WavLecture::ok);
  EXPECT_EQ(e.seconds, 1);
  EXPECT_EQ(e.Images, 25);
}

TEST(WavHeader, DataFoundByScanningFirstHitWins) {
  WavEntete e;
  // A LIST chunk without the word: the real chunk is found after it.
  Octets plain = avec_list("INFOISFTLavf", Octets(16));
  ASSERT_EQ(lit(plain, e), WavLecture::ok);
  EXPECT_EQ(e.Header, 44 + 20);
  EXPECT_EQ(e.data, 16);
  // "data" inside the LIST chunk wins over the real chunk.
  Octets faux = avec_list("INFOdata....", Octets(16));
  ASSERT_EQ(lit(faux, e), WavLecture::ok);
  EXPECT_EQ(e.Header, 36 + 8 + 4 + 8);
  EXPECT_EQ(e.data, static_cast<long long>(faux.size()) - e.Header);
}

TEST(WavHeader, DataBytesComeFromTheFileSizeNotTheChunk) {
  Octets b = wav(1, 8000, 16, Octets(400));
  b[40] = 0xe8;  // the chunk claims 1000 bytes
  b[41] = 0x03;
  WavEntete e;
  ASSERT_EQ(lit(b, e), WavLecture::ok);
  EXPECT_EQ(e.longueur_chunk, 1000);
  EXPECT_EQ(e.data, 400);
}

TEST(WavHeader, HostileHeaders) {
  WavEntete e;
  Octets b = wav(1, 8000, 16, Octets(64));
  Octets not_riff = b;
  std::memcpy(not_riff.data(), "RIFX", 4);
  EXPECT_EQ(lit(not_riff, e), WavLecture::pas_riff);
  EXPECT_EQ(lit(Octets{'R', 'I'}, e), WavLecture::pas_riff);
  // Truncated: below 44 bytes, even with "data" in it.
  EXPECT_EQ(lit(Octets(b.begin(), b.begin() + 43), e), WavLecture::pas_un_son);
  // No "data" anywhere.
  Octets sans = b;
  std::memcpy(sans.data() + 36, "dat@", 4);
  EXPECT_EQ(lit(sans, e), WavLecture::pas_de_data);
  // A RIFF length far past the file: the scan stops at the bytes read.
  Octets grand = sans;
  grand[4] = grand[5] = grand[6] = grand[7] = 0xff;
  EXPECT_EQ(lit(grand, e), WavLecture::pas_de_data);
  Octets grand_ok = b;
  grand_ok[7] = 0x7f;
  ASSERT_EQ(lit(grand_ok, e), WavLecture::ok);
  EXPECT_EQ(e.data, 64);
  // A RIFF length that ends before "data" hides it.
  Octets court = b;
  court[4] = 20;
  court[5] = court[6] = court[7] = 0;
  EXPECT_EQ(lit(court, e), WavLecture::pas_de_data);
  // "data" as the last four bytes: its length field is cut off.
  Octets coupe(b.begin(), b.begin() + 40);
  coupe.insert(coupe.end(), {'x', 'x', 'x', 'x', 'd', 'a', 't', 'a'});
  std::memcpy(coupe.data() + 36, "xxxx", 4);
  EXPECT_EQ(lit(coupe, e), WavLecture::pas_un_son);
  // Zero channels, zero rate, samples under a byte.
  for (int at : {22, 24, 34}) {
    Octets z = b;
    z[at] = at == 34 ? 4 : 0;
    z[at + 1] = 0;
    EXPECT_EQ(lit(z, e), WavLecture::pas_un_son) << at;
  }
  // No fmt chunk: the first chunk's length runs past the end.
  Octets sans_fmt = b;
  std::memcpy(sans_fmt.data() + 12, "junk", 4);
  sans_fmt[16] = 0xff;
  EXPECT_EQ(lit(sans_fmt, e), WavLecture::pas_un_son);
}

TEST(WavHeader, GeneratedHeaderByteByByte) {
  uint8_t b[44];
  std::memset(b, 0xaa, sizeof b);
  ecrit_entete_wav(b, 44 + 176400, 2, 2);
  const uint8_t want[44] = {'R', 'I', 'F', 'F', 0x3c, 0xb1, 0x02, 0x00,  // file size 176444
                            'W', 'A', 'V', 'E', 'f', 'm', 't', ' ',
                            16, 0, 0, 0,               // format length
                            1, 0,                      // PCM
                            2, 0,                      // channels
                            0x44, 0xac, 0x00, 0x00,    // 44100
                            0x88, 0x58, 0x01, 0x00,    // 88200: 44100 * channels
                            2, 0,                      // block align: Nb_octet
                            16, 0,                     // bits
                            'd', 'a', 't', 'a', 0x10, 0xb1, 0x02, 0x00};  // 176400
  for (int i = 0; i < 44; i++) EXPECT_EQ(b[i], want[i]) << "byte " << i;
}
