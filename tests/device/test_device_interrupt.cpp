// Ctrl-C reaches the device's blocking waits: a TCP server waiting for
// its client in `ini`, and a blocking read that nothing answers. The
// program holds its dialogue and the session goes on.
#include <gtest/gtest.h>

#include <string>

#include "platform/sockets.h"
#include "support/program_session.h"

namespace {

int port_libre() {
  const int fd = net_socket(true);
  if (fd < 0 || !net_bind(fd, 0)) return 0;
  const int port = net_local_port(fd);
  net_close(fd);
  return port;
}

// Types `line`, waits for `running` (the wait has begun), interrupts,
// and abandons the line at the dialogue.
void interrupt_wait(ProgramSession& s, const std::string& line, const std::string& running) {
  size_t mark = s.seen.size();
  ASSERT_TRUE(s.type(line + "\n"));
  ASSERT_TRUE(s.wait_for(running, mark, 5)) << line << s.seen.substr(mark);
  usleep(300000);
  s.interrupt();
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark, 5)) << line << s.seen.substr(mark);
  mark = s.seen.size();
  ASSERT_TRUE(s.type("0\n"));
  ASSERT_TRUE(s.wait_for(" ?", mark, 5)) << s.seen.substr(mark);
}

}  // namespace

TEST(DeviceInterrupt, CtrlCEndsTheWaitsOfSockets) {
  const int port = port_libre();
  ASSERT_GT(port, 0);
  ProgramSession s;
  ASSERT_TRUE(s.start());
  ASSERT_TRUE(s.wait_for(" ?", 0)) << s.seen;
  interrupt_wait(s, "device(1) ini(\"TCP\") lead number(" + std::to_string(port) + ")", "Lancer le client");
  // The slot stayed free: a UDP server opens there, and its blocking
  // read waits for a datagram that never comes.
  const int port2 = port_libre();
  size_t mark = s.seen.size();
  ASSERT_TRUE(s.type("device(1) ini(\"UDP\") lead number(" + std::to_string(port2) + ") close\n"));
  ASSERT_TRUE(s.wait_for("numero = 1 UDP_serveur", mark, 5)) << s.seen.substr(mark);
  interrupt_wait(s, "print(\"reading\"); device(1)", "reading");
  mark = s.seen.size();
  ASSERT_TRUE(s.type("$(1+1)\n"));
  EXPECT_TRUE(s.wait_for("2.000000", mark, 5)) << s.seen.substr(mark);
  const int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status << s.seen;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}
