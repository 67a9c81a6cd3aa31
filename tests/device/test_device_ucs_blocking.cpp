// "UCS" servers in a child process, the program itself, with a Python
// peer: a blocking server (`close(1)`) whose reads wait in recvfrom for
// each datagram and answer its sender, and a non-blocking one polled by
// the language while crafted datagrams come. Every process ends within
// 10 s.
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "support/python_peer.h"

namespace {

// The program run in the background (10 s at most) on a script written in
// a folder of its own, removed at the end.
struct Program {
  char folder[32] = "/tmp/orvela_programXXXXXX";
  std::string script;
  Pair run;
  explicit Program(const std::string& text) {
    if (!mkdtemp(folder)) return;
    script = std::string(folder) + "/script.orv";
    if (FILE* f = std::fopen(script.c_str(), "w")) {
      std::fputs(text.c_str(), f);
      std::fclose(f);
    }
    run.start_command(std::string(ORVELA_BINARY) + " gra=0 ID < " + script);
  }
  ~Program() {
    std::remove(script.c_str());
    rmdir(folder);
  }
};

class DeviceUcsChild : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!python_present()) GTEST_SKIP() << "python3 is not installed: no peer for the sockets";
    const int port = port_libre(false);
    ASSERT_GT(port, 0);
    p = std::to_string(port);
  }
  // The program on `text`, once its server waits for datagrams in `mode`.
  Pair& serveur(const std::string& text, const std::string& mode) {
    program = std::make_unique<Program>(text);
    EXPECT_TRUE(program->run.wait_for("- Attente Datagram in " + mode + " mode\n")) << program->run.printed();
    return program->run;
  }
  std::string p;  // the server's port
  std::unique_ptr<Program> program;
};

}  // namespace

TEST_F(DeviceUcsChild, ABlockingServerWaitsForEachDatagramAndAnswers) {
  // Three rounds: each value doubled back in "US"; then the state.
  Pair& server = serveur("device(1) ini(\"UCS\") lead number(" + p + ") close(1)\n"
                         "n=0\n"
                         "while(n<3){q=device(1) format(\"US\"); device(1) format(\"US\")=q*2; n=n+1}\n"
                         "device(1) edit\nbye abs\n",
                         "Blocking");
  Pair peer;
  peer.start("import socket,struct,time\n"
             "s=socket.socket(socket.AF_INET, socket.SOCK_DGRAM); s.settimeout(5)\n"
             "for v in ((1,2),(300,),(40000,7)):\n"
             "  time.sleep(0.2)\n"
             "  s.sendto(struct.pack(\"<%dH\" % len(v), *v), (\"127.0.0.1\"," + p + "))\n"
             "  d=s.recvfrom(100)[0]; print(\"back\", struct.unpack(\"<%dH\" % (len(d)//2), d), flush=True)\n");
  const std::string seen = peer.finish();
  const std::string shown = server.finish();
  EXPECT_NE(seen.find("back (2, 4)\nback (600,)\nback (14464, 14)\n"), std::string::npos) << seen << shown;
  // The server waited: no "WouldBlock", and it knows its peer.
  EXPECT_EQ(shown.find("WouldBlock"), std::string::npos) << shown;
  EXPECT_NE(shown.find(" Distant Pret Oui Type Client Nom "), std::string::npos) << shown;
  EXPECT_NE(shown.find(" En Connexion Oui @IP 127.0.0.1 port "), std::string::npos) << shown;
}

// The program itself polling a non-blocking server in a loop of the
// language while a Python peer sends it crafted datagrams: an empty one,
// one byte read as "SS", the largest a datagram can be; each is told, and
// the program goes on to its end.
TEST_F(DeviceUcsChild, CraftedDatagramsToTheRunningProgramAreToldAndItGoesOn) {
  // Polls until three datagrams with data came (or 8 s passed).
  Pair& server = serveur("device(1) ini(\"UCS\") lead number(" + p + ")\n"
                         "k=0\nt=time(0)\n"
                         "while(k<3 && time(1)<8){q=device(1) format(\"SS\"); if(type(q)!=type(NIL)){k=k+1; "
                         "print(\"GOT \",q[0])}}\n"
                         "print(\"DONE \",k)\nbye abs\n",
                         "Non-Blocking");
  Pair peer;
  peer.start("import socket,time\n"
             "s=socket.socket(socket.AF_INET, socket.SOCK_DGRAM)\n"
             "for d in (b\"\", b\"\\x80\", bytes(65507), b\"\\x01\\x00\\x02\\x00\"):\n"
             "  s.sendto(d, (\"127.0.0.1\"," + p + ")); time.sleep(0.2)\n"
             "print(\"sent\", flush=True)\n");
  EXPECT_NE(peer.finish().find("sent"), std::string::npos);
  const std::string shown = server.finish();
  EXPECT_NE(shown.find("Periph 1 : Connection closing...\n"), std::string::npos) << shown;
  EXPECT_NE(shown.find("Received Message Truncated for Format SS : Rx Lg 65507 -> 32754 > Orvela Lg 750\n"),
            std::string::npos) << shown;
  // The first value of each: 128 of the lone byte, 0 of the zeros, 1 of the last.
  EXPECT_NE(shown.find("GOT \n128.000000 \n"), std::string::npos) << shown;
  EXPECT_NE(shown.find("GOT \n0.000000 \nGOT \n1.000000 \n ?DONE \n3.000000 \n"), std::string::npos) << shown;
  EXPECT_NE(shown.find("SEE YOU SOON"), std::string::npos) << shown;
}
