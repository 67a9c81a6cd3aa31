// Every cut of the "UCS" exchange told with its text and counts, on
// loopback: datagrams longer than the room of the result (the receive is
// called with a small area, as a full evaluation area never is), float
// sequences not a multiple of 4 bytes, direct and through the buffer, and
// lists longer than the 1500-byte buffer on the sending side.
#include <cstring>
#include <string>
#include <vector>

#include "device/device_kinds.h"
#include "kernel/values.h"
#include "support/capture.h"
#include "support/python_peer.h"

namespace {

class UcsCuts : public SocketTest {
 protected:
  void SetUp() override {
    SocketTest::SetUp();
    port = port_libre(false);
    ASSERT_GT(port, 0);
    const std::string p = std::to_string(port);
    ASSERT_EQ(run("device(20) ini(\"UCS\") lead number(" + p + ")").status, 0);
    ASSERT_EQ(run("device(21) ini(\"UCS\") name(\"127.0.0.1\") number(" + p + ") inv").status, 0);
    ASSERT_EQ(run("device(22) ini(\"UCS\") name(\"127.0.0.1\") number(" + p + ")").status, 0);
  }

  // Device 22 sends these bytes to the server, device 20.
  void envoyer(const std::string& bytes) {
    ASSERT_EQ(run("device(22) = \"" + bytes + "\"").status, 0);
  }
  // Server device 20 (with `inv` when asked) receives in format f into an
  // area of `mots` words; what it printed, and the value.
  struct Recu {
    std::string out;
    std::vector<word> value;
  };
  Recu recevoir(const char* f, int mots, bool inv = false) {
    Periph& p = *periph(20);
    std::strcpy(p.Format_echange, f);
    devices().ucs.Table_ucs[19].Inv = inv;
    std::vector<word> area(static_cast<size_t>(mots), 0);
    Recu r;
    for (int i = 0; i < 40; i++) {
      Capture c;
      Lecture l{area.data(), area.data() + mots, 0, T_CHAR, 20, false};
      int code = 0;
      EXPECT_EQ(lire_socket_UCS(p, l, &code), 0);
      r.out = c.take();
      if (code != 3) break;
      usleep(50000);
    }
    r.value.assign(area.begin(), area.begin() + std::min(mots, std::max(area[0], 0)));
    return r;
  }
  // Device n sends the value v; what it printed.
  static std::string envoyer_valeur(int n, const char* f, const std::vector<word>& v) {
    Periph& p = *periph(n);
    std::strcpy(p.Format_echange, f);
    Capture c;
    stocker_socket_UCS(n, p, v.data());
    return c.take();
  }
  int port = 0;
};

std::vector<word> texte(const std::string& s) {
  std::vector<word> v(s.size() / 4 + 8, 0);
  build_text(v.data(), v.data() + v.size(), s.c_str());
  return v;
}

std::vector<word> flottants(int n) {
  std::vector<word> v(static_cast<size_t>(n) + 4, 0);
  build_zeros(v.data(), v.data() + v.size(), n);
  for (int i = 0; i < n; i++) setf(v.data(), i, static_cast<float>(i));
  return v;
}

}  // namespace

TEST_F(UcsCuts, ReceivedDatagramsLongerThanTheRoom) {
  // 10 words leave 10 * 4 - 20 = 20 bytes of room.
  envoyer(std::string(100, 'a'));
  Recu r = recevoir("CC", 10);
  EXPECT_EQ(r.out, "Received Message Truncated for Format CC : Rx Lg 100 > Orvela Lg 20\n");
  EXPECT_EQ(r.value[1], T_CHAR);
  EXPECT_EQ(std::string(text(r.value.data())), std::string(20, 'a'));

  // Hex: 20 bytes would make 40 digits; 19 fit with the end of the text.
  for (const char* f : {"HB", "HS", "HL"}) {
    envoyer(std::string(20, 'b'));
    r = recevoir(f, 10);
    EXPECT_EQ(r.out, std::string("Received Message Truncated for Format ") + f + " : Rx Lg 20 -> 40 > Orvela Lg 19\n")
        << f;
  }
  // Numbers: 30 bytes are 30 "SB" values, 15 "US", 8 "UL"; 5 fit.
  const struct {
    const char* f;
    int voulus;
  } nombres[] = {{"SB", 30}, {"US", 15}, {"UL", 8}};
  for (const auto& c : nombres) {
    envoyer(std::string(30, 'c'));
    r = recevoir(c.f, 10);
    EXPECT_EQ(r.out, std::string("Received Message Truncated for Format ") + c.f + " : Rx Lg 30 -> " +
                         std::to_string(c.voulus) + " > Orvela Lg 5\n")
        << c.f;
    EXPECT_EQ(r.value[2], 5) << c.f;
  }
  // "FF" direct (no `inv`) and through the buffer (`inv`).
  envoyer(std::string(40, 'd'));
  r = recevoir("FF", 10);
  EXPECT_EQ(r.out, "ReceivedMessage Truncated for Format FF : Rx Lg 40 > Orvela Lg 20\n");
  EXPECT_EQ(r.value[2], 5);
  envoyer(std::string(40, 'd'));
  r = recevoir("FF", 10, true);
  EXPECT_EQ(r.out, "ReceivedMessage Truncated for Format FF : Rx Lg 40 > Orvela Lg 20\n");
  EXPECT_EQ(r.value[2], 5);
}

TEST_F(UcsCuts, FloatSequencesNotAMultipleOfFourBytes) {
  envoyer("abcdefghij");
  Recu r = recevoir("FF", 100);
  EXPECT_EQ(r.out, "Periph 20: Received Message Truncated for Format FF : Float Sequence not multiple of 4 bytes\n");
  EXPECT_EQ(r.value[2], 2);
  envoyer("abcdefghij");
  r = recevoir("FF", 100, true);
  EXPECT_EQ(r.out, "ReceivedMessage Truncated for Format FF : Float Sequence not multiple of 4 bytes\n");
  EXPECT_EQ(r.value[2], 2);
}

TEST_F(UcsCuts, SentListsLongerThanTheBuffer) {
  // 3002 hex digits: 1501 bytes of "HB", 751 values of "HS", 376 of "HL".
  const std::vector<word> hex = texte(std::string(3002, 'F'));
  EXPECT_EQ(envoyer_valeur(22, "HB", hex), "Sent Message Truncated for Format HB : Orvela Lg 3002 -> Cur Lg 1501 > Max Lg 1500\n");
  EXPECT_EQ(envoyer_valeur(22, "HS", hex), "Sent Message Truncated for Format HS : Orvela Lg 3002 -> Cur Lg 1502 > Max Lg 1500\n");
  EXPECT_EQ(envoyer_valeur(22, "HL", hex), "Sent Message Truncated for Format HL : Orvela Lg 3002 -> Cur Lg 1504 > Max Lg 1500\n");
  const std::vector<word> f = flottants(1501);
  for (const char* fmt : {"UB", "SB"})
    EXPECT_EQ(envoyer_valeur(22, fmt, f),
              std::string("Sent Message Truncated for Format ") + fmt + " : Orvela Lg 1501 -> Cur Lg 1501 > Max Lg 1500\n");
  for (const char* fmt : {"US", "SS"})
    EXPECT_EQ(envoyer_valeur(22, fmt, f),
              std::string("Sent Message Truncated for Format ") + fmt + " : Orvela Lg 1501 -> Cur Lg 3002 > Max Lg 1500\n");
  for (const char* fmt : {"UL", "SL"})
    EXPECT_EQ(envoyer_valeur(22, fmt, f),
              std::string("Sent Message Truncated for Format ") + fmt + " : Orvela Lg 1501 -> Cur Lg 6004 > Max Lg 1500\n");
  // "FF" with `inv` goes through the buffer: cut too; without, all of it.
  EXPECT_EQ(envoyer_valeur(21, "FF", f), "Sent Message Truncated for Format FF : Orvela Lg 1501 -> Cur Lg 6004 > Max Lg 1500\n");
  EXPECT_EQ(envoyer_valeur(22, "FF", flottants(400)), "");
  // What the server received: the parts that fit, in order.
  Recu r = recevoir("CC", 2000);
  EXPECT_EQ(std::string(text(r.value.data())), std::string(1500, '\xFF')) << r.out;
}
