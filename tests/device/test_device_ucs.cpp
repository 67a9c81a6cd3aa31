// "UCS" devices on loopback: every format both ways in both byte orders
// through a Python echo peer, the cuts and warnings, the server's latch
// on its first sender, and crafted datagrams. Each peer ends within 10 s
// and each receive is polled a bounded number of times.
#include <string>

#include "device/device_table.h"
#include "support/python_peer.h"
#include "support/text_runner.h"

namespace {

// Prints each datagram as "len hex" and sends it back, until "end" or 5 s of silence.
std::string echo(int port) {
  return "import socket\n"
         "s=socket.socket(socket.AF_INET, socket.SOCK_DGRAM); s.settimeout(5)\n"
         "s.bind((\"127.0.0.1\"," + std::to_string(port) + ")); print(\"ready\", flush=True)\n"
         "while True:\n"
         "  d,a=s.recvfrom(70000)\n"
         "  if d==b\"end\": break\n"
         "  print(len(d), d.hex(), flush=True); s.sendto(d, a)\n";
}

class DeviceUcs : public SocketTest {
 protected:
  // A non-blocking read polled until something comes or is told (2 s at most).
  static Outcome recevoir(const std::string& line) {
    Outcome o;
    for (int i = 0; i < 40; i++) {
      o = run(line);
      if (o.status != 0 || !o.out.empty() || o.value.size() != 4 || o.value[1] != T_NIL) break;
      usleep(50000);
    }
    return o;
  }
  static std::vector<float> nombres(const Outcome& o) {
    std::vector<float> v;
    if (o.value.size() >= 4 && o.value[1] == T_FLOAT)
      for (int i = 0; i < o.value[2]; i++) v.push_back(wf(o.value[4 + static_cast<size_t>(i)]));
    return v;
  }
  static std::string texte(const Outcome& o) {
    return o.value.size() > 4 && o.value[1] == T_CHAR ? reinterpret_cast<const char*>(o.value.data() + 4) : "<none>";
  }
};

struct Cas {
  const char* format;
  const char* liste;
  const char* lsb;  // the bytes the peer sees, least significant first
  const char* msb;  // most significant first
};

}  // namespace

TEST_F(DeviceUcs, EveryFormatBothWaysInBothOrders) {
  const int port = port_libre(false);
  ASSERT_GT(port, 0);
  Pair peer;
  peer.start(echo(port));
  ASSERT_TRUE(peer.wait_for("ready"));
  const std::string p = std::to_string(port);
  Outcome o = run("device(12) ini(\"UCS\") name(\"127.0.0.1\") number(" + p + ")");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("Original HostName is an @IP : 127.0.0.1"), std::string::npos) << o.out;
  ASSERT_EQ(run("device(13) ini(\"UCS\") name(\"127.0.0.1\") number(" + p + ") inv").status, 0);

  const Cas cas[] = {
      {"UB", "0,-1,255,256", "00ffff00", "00ffff00"},
      {"SB", "200,-1", "c8ff", "c8ff"},
      {"US", "256,65535,32768", "0001ffff0080", "0100ffff8000"},
      {"SS", "32767,32768,-1", "ff7f0080ffff", "7fff8000ffff"},
      {"UL", "256,4294967040", "0001000000ffffff", "00000100ffffff00"},
      {"SL", "-1,2147483648", "ffffffff00000080", "ffffffff80000000"},
      {"FF", "1.5,-2", "0000c03f000000c0", "3fc00000c0000000"},
      {"HB", "\"00ff7a\"", "00ff7a", "00ff7a"},
      {"HS", "\"12345\"", "34120050", "12345000"},
      {"HL", "\"DEADBEEF\"", "efbeadde", "deadbeef"},
      {"CC", "\"hello\"", "68656c6c6f", "68656c6c6f"},
  };
  const std::vector<std::vector<float>> retour = {
      {0, 255, 255, 0}, {-56, -1}, {256, 65535, 32768}, {32767, -32768, -1}, {256, 4294967040.0f},
      {-1, -2147483648.0f}, {1.5f, -2}};
  const char* chaines[] = {"00FF7A", "12345000", "DEADBEEF", "hello"};
  for (int d : {12, 13}) {
    const std::string dev = "device(" + std::to_string(d) + ")";
    for (size_t i = 0; i < std::size(cas); i++) {
      const Cas& c = cas[i];
      const std::string fmt = std::string(" format(\"") + c.format + "\")";
      ASSERT_EQ(run(dev + fmt + "=" + c.liste).status, 0) << c.format;
      const std::string vu = std::string(d == 12 ? c.lsb : c.msb);
      EXPECT_TRUE(peer.wait_for(std::to_string(vu.size() / 2) + " " + vu)) << dev << " " << c.format << " " << vu;
      const Outcome r = recevoir(dev + fmt);
      ASSERT_EQ(r.status, 0) << r.out;
      if (i < retour.size()) EXPECT_EQ(nombres(r), retour[i]) << dev << " " << c.format;
      else EXPECT_EQ(texte(r), chaines[i - retour.size()]) << dev << " " << c.format;
    }
  }

  // "SP": 11 bytes sent, 16-bit values read from an offset.
  struct Partie {
    const char* args;
    std::vector<float> lsb, msb;
    const char* message;
  };
  const Partie parties[] = {
      {"1,4", {0x0302, 0x0504}, {0x0203, 0x0405}, nullptr},
      {"2,3", {0x0403, 0x0005}, {0x0304, 0x0500}, "Received Message Format SP, Odd Byte Added Len_msg 3 not even\n"},
      {"8,10", {0x0A09, 0x000B}, {0x090A, 0x0B00},
       "Received Message Format SP, Required Size 10 Satisfied up to 3 bytes\n"},
      {"11,2", {}, {}, "Received Message Format SP, Ignored Dep 11 >= Len_msg 11\n"},
  };
  for (int d : {12, 13}) {
    const std::string dev = "device(" + std::to_string(d) + ")";
    for (const Partie& s : parties) {
      ASSERT_EQ(run(dev + " format(\"HB\")=\"0102030405060708090A0B\"").status, 0);
      Outcome r = recevoir(dev + " format(\"SP\"," + s.args + ")");
      ASSERT_EQ(r.status, 0) << r.out;
      EXPECT_EQ(nombres(r), d == 12 ? s.lsb : s.msb) << s.args << r.out;
      if (s.message) {
        EXPECT_NE(r.out.find(s.message), std::string::npos) << s.args << ": " << r.out;
      }
      if (s.lsb.empty()) {
        EXPECT_EQ(r.value[1], T_NIL);
      }
    }
  }

  // The sender's warning names the other kind; "CC" still sends floats raw.
  o = run("device(12) format(\"UB\")=\"abc\"");
  EXPECT_NE(o.out.find("User Error on Orvela List Format for Sending, Char expected\n"), std::string::npos) << o.out;
  o = run("device(12) format(\"HB\")=1,2");
  EXPECT_NE(o.out.find("User Error on Orvela List Format for Sending, Float expected\n"), std::string::npos) << o.out;
  o = run("device(12)=1.5");
  EXPECT_NE(o.out.find("User Error on Orvela List Format for Sending, Float expected\n"), std::string::npos) << o.out;
  EXPECT_TRUE(peer.wait_for("4 0000c03f"));
  EXPECT_EQ(nombres(recevoir("device(12) format(\"FF\")")), std::vector<float>{1.5f});

  // 400 floats: "UL" cuts at 375 with its text, "FF" direct sends them all.
  run("l=0");
  for (int i = 1; i < 400; i++) run("l=l," + std::to_string(i));
  o = run("device(12) format(\"UL\")=l");
  EXPECT_NE(o.out.find("Sent Message Truncated for Format UL : Orvela Lg 400 -> Cur Lg 1600 > Max Lg 1500\n"),
            std::string::npos) << o.out;
  EXPECT_TRUE(peer.wait_for("\n1500 00000000010000000200"));
  std::vector<float> v = nombres(recevoir("device(12) format(\"UL\")"));
  ASSERT_EQ(v.size(), 375u);
  EXPECT_EQ(v[374], 374);
  o = run("device(12) format(\"FF\")=l");
  EXPECT_EQ(o.out.find("Truncated"), std::string::npos) << o.out;
  EXPECT_TRUE(peer.wait_for("\n1600 000000000000803f"));
  v = nombres(recevoir("device(12) format(\"FF\")"));
  ASSERT_EQ(v.size(), 400u);
  EXPECT_EQ(v[399], 399);
  // The 1600 bytes again, read in a format of the 1500-byte buffer.
  run("device(12) format(\"FF\")=l");
  Outcome r = recevoir("device(12) format(\"US\")");
  EXPECT_NE(r.out.find("Received Message Truncated for Format US : Rx Lg 1600 -> 800 > Orvela Lg 750\n"), std::string::npos)
      << r.out;
  EXPECT_EQ(nombres(r).size(), 750u);

  run("device(12) format(\"CC\")=\"end\"");
  peer.finish();
}

TEST_F(DeviceUcs, ServerAnswersItsFirstSenderForEver) {
  const int port = port_libre(false);
  ASSERT_GT(port, 0);
  const std::string p = std::to_string(port);
  Outcome o = run("device(14) ini(\"UCS\") lead number(" + p + ")");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find(" ==> Serveur UCS Ouvert en "), std::string::npos) << o.out;
  EXPECT_NE(o.out.find("sur le port " + p + "\n- Attente Datagram in Non-Blocking mode\n"), std::string::npos);
  // Nothing came yet: NIL at once, and no peer to answer.
  EXPECT_TRUE(nil("device(14)"));
  EXPECT_NE(run("device(14)=\"x\"").out.find("Periph 14 : Cote Distant Inconnu \n"), std::string::npos);

  Pair peers;
  peers.start("import socket,time\n"
              "a=socket.socket(socket.AF_INET, socket.SOCK_DGRAM); a.settimeout(2)\n"
              "b=socket.socket(socket.AF_INET, socket.SOCK_DGRAM); b.settimeout(1)\n"
              "a.sendto(b\"from a\", (\"127.0.0.1\"," + p + ")); time.sleep(0.3)\n"
              "b.sendto(b\"from b\", (\"127.0.0.1\"," + p + ")); print(\"sent\", flush=True)\n"
              "for n,s in ((\"a\",a),(\"b\",b)):\n"
              "  try: print(n, s.recvfrom(100)[0].decode(), flush=True)\n"
              "  except Exception: print(n, \"nothing\", flush=True)\n");
  ASSERT_TRUE(peers.wait_for("sent"));
  EXPECT_EQ(texte(recevoir("device(14)")), "from a");
  EXPECT_EQ(texte(recevoir("device(14)")), "from b");
  ASSERT_EQ(run("device(14)=\"answer\"").status, 0);
  const std::string vu = peers.finish();
  EXPECT_NE(vu.find("a answer"), std::string::npos) << vu;
  EXPECT_NE(vu.find("b nothing"), std::string::npos) << vu;
}

TEST_F(DeviceUcs, CraftedDatagramsGiveMessagesNotCrashes) {
  const int port = port_libre(false);
  ASSERT_GT(port, 0);
  const std::string p = std::to_string(port);
  ASSERT_EQ(run("device(15) ini(\"UCS\") lead number(" + p + ")").status, 0);
  Pair peer;
  peer.start("import socket,time\n"
             "s=socket.socket(socket.AF_INET, socket.SOCK_DGRAM)\n"
             "for d in (b\"\", b\"\\x80\", bytes(range(256))*255+bytes(227), b\"abc\"):\n"
             "  s.sendto(d, (\"127.0.0.1\"," + p + ")); time.sleep(0.2)\n"
             "print(\"sent\", flush=True)\n");
  ASSERT_TRUE(peer.wait_for("sent"));
  Outcome o = run("device(15) format(\"SS\")");
  EXPECT_NE(o.out.find("Periph 15 : Connection closing...\n"), std::string::npos) << o.out;
  EXPECT_EQ(nombres(run("device(15) format(\"SS\")")), std::vector<float>{128});
  o = run("device(15) format(\"SS\")");
  EXPECT_NE(o.out.find("Received Message Truncated for Format SS : Rx Lg 65507 -> 32754 > Orvela Lg 750\n"),
            std::string::npos) << o.out;
  EXPECT_EQ(nombres(o).size(), 750u);
  EXPECT_EQ(texte(run("device(15)")), "abc");
  peer.finish();
}

TEST_F(DeviceUcs, StatePrintHelpAndBadNames) {
  const int port = port_libre(false);
  ASSERT_GT(port, 0);
  const std::string p = std::to_string(port);
  Outcome o = run("device(16) ini(\"UCS\") name(\"127.0.0.1\") number(" + p + ") inv close(0) help");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("------- Commandes pour nouveaux peripheriques UDP : UCS ------\n"
                       "Serveur : ini(\"UCS\") lead periph(n) numero(<Numero_Port>) \n"
                       "Client  : ini(\"UCS\") nom(\"host/@IP\") periph(n) numero(<Numero_Port>) \n"
                       " Options:  fermer(1) : bloquant, debug, inv : Echanges en MSB \n"
                       "p = periph(n) format(F) et  periph(n) format(F) =  p\n"
                       " format F=\"CC\",\"HC\",\"HS\",\"HL\",\"UB\",\"US\",\"UL\",\"SB\",\"SS\",\"SL\",\"FF\" \n\n"),
            std::string::npos)
      << o.out;
  o = run("device(16) edit");
  EXPECT_NE(o.out.find(" Socket : " + std::to_string(periph(16)->Sock) + " Echange : MsbFirst \n Local Pret Oui Type Client Nom "),
            std::string::npos) << o.out;
  EXPECT_NE(o.out.find(" Distant Pret Oui Type Serveur Nom "), std::string::npos) << o.out;
  EXPECT_NE(o.out.find("(@IP 127.0.0.1) port " + p + "\n En Connexion Non @IP 0.0.0.0 port 0\n"), std::string::npos)
      << o.out;

  // A server's state before and after its first datagram, with the dump of `debug`.
  ASSERT_EQ(run("device(17) ini(\"UCS\") lead number(" + p + ") debug").status, 0);
  o = run("device(17) edit");
  EXPECT_NE(o.out.find("Echange : LsbFirst \n Local Pret Oui Type Serveur"), std::string::npos) << o.out;
  EXPECT_NE(o.out.find(" Distant Pret Non Type Client Nom ? (@IP 0.0.0.0) port 0\n"), std::string::npos) << o.out;
  ASSERT_EQ(run("device(16) format(\"HB\")=\"414243\"").status, 0);
  o = recevoir("device(17)");
  EXPECT_EQ(texte(o), "ABC");
  EXPECT_NE(o.out.find("Periph(17) Received length 3, dumping:\n0000: 414243" + std::string(30, ' ') + " : ABC\n"),
            std::string::npos) << o.out;
  o = run("device(17) edit");
  EXPECT_NE(o.out.find(" Distant Pret Oui Type Client "), std::string::npos) << o.out;
  EXPECT_NE(o.out.find(" En Connexion Oui @IP 127.0.0.1 port "), std::string::npos) << o.out;
  // Nothing more: NIL, silent without `debug`, told with it.
  EXPECT_TRUE(nil("device(16)"));
  EXPECT_EQ(run("device(16)").out, "");
  EXPECT_NE(run("device(17)").out.find("Periph 17 : WouldBlock...\n"), std::string::npos);

  o = run("device(18) ini(\"UCS\") name(\"no.such.host.invalid\")");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("Unable to resolve no.such.host.invalid : Unknown HostName or ill-formed @IP"),
            std::string::npos) << o.out;
  EXPECT_NE(o.out.find("------- Commandes pour nouveaux peripheriques UDP : UCS ------\n"), std::string::npos);
  EXPECT_EQ(periph_ouvert(18), nullptr);
}
