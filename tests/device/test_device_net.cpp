// "TCP" and "UDP" devices on loopback, each with a Python peer that the
// test starts in the background and that ends within seconds.
#include <cstdio>
#include <string>

#include "device/device_table.h"
#include "platform/sockets.h"
#include "support/python_peer.h"
#include "support/text_runner.h"

using DeviceNet = SocketTest;

TEST_F(DeviceNet, TcpClientTalksToAServer) {
  const int port = port_libre(true);
  ASSERT_GT(port, 0);
  Pair peer;
  peer.start("import socket\n"
             "s=socket.socket(); s.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)\n"
             "s.bind((\"127.0.0.1\"," + std::to_string(port) + ")); s.listen(1); print(\"ready\", flush=True)\n"
             "c,_=s.accept(); c.sendall(b\"hello\"); print(c.recv(100).decode(), flush=True)\n"
             "c.close()\n");
  // The peer listens within a second or two.
  Outcome o;
  for (int i = 0; i < 40; i++) {
    o = run("device(7) ini(\"TCP\") name(\"127.0.0.1\") number(" + std::to_string(port) + ") close");
    if (o.status == 0) break;
    usleep(100000);
  }
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("LANCEMENT CLIENT_TCP sur machine 127.0.0.1 et port " + std::to_string(port) + "\n"),
            std::string::npos);
  EXPECT_NE(o.out.find("TCP_client 127.0.0.1 -> host"), std::string::npos) << o.out;
  // `close`: the read waits for the bytes.
  EXPECT_EQ(str("device(7)"), "hello");
  ASSERT_EQ(run("device(7) = \"pong\"").status, 0);
  EXPECT_NE(peer.finish().find("pong"), std::string::npos);
  // The peer closed: the next read says so.
  Outcome c = run("device(7)");
  EXPECT_NE(c.out.find("Closed connection 7\n"), std::string::npos) << c.out;
}

TEST_F(DeviceNet, TcpServerWaitsForItsClient) {
  const int port = port_libre(true);
  ASSERT_GT(port, 0);
  Pair peer;
  peer.start("import socket, time, struct\n"
             "for i in range(50):\n"
             "  try:\n"
             "    c=socket.create_connection((\"127.0.0.1\"," + std::to_string(port) + ")); break\n"
             "  except OSError: time.sleep(0.1)\n"
             "c.sendall(struct.pack(\"<2f\", 1.5, -2.0)); print(c.recv(100).decode(), flush=True)\n");
  Outcome o = run("device(8) ini(\"TCP\") lead number(" + std::to_string(port) + ") float close");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("SERVEUR OUVERT sur le port " + std::to_string(port) + "\nLancer le client\nCONNECTION OK socket = "),
            std::string::npos)
      << o.out;
  expect_floats(floats("device(8)"), {1.5f, -2.0f}, "floats of 4 bytes");
  ASSERT_EQ(run("device(8) = \"done\"").status, 0);
  EXPECT_NE(peer.finish().find("done"), std::string::npos);
}

TEST_F(DeviceNet, UdpServerAnswersItsPeerAndAClientSends) {
  const int port = port_libre(false);
  ASSERT_GT(port, 0);
  Outcome o = run("device(9) ini(\"UDP\") lead number(" + std::to_string(port) + ") dim(4)");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("LANCEMENT SERVEUR_UDP\n"), std::string::npos);
  // Before any datagram the server knows no peer, and nothing waits.
  EXPECT_TRUE(nil("device(9)"));
  EXPECT_NE(run("device(9) = \"x\"").out.find("Periph 9 : Cote Distant Inconnu \n"), std::string::npos);

  Pair peer;
  peer.start("import socket\n"
             "s=socket.socket(socket.AF_INET, socket.SOCK_DGRAM); s.settimeout(5)\n"
             "s.sendto(b\"abcdefgh\", (\"127.0.0.1\"," + std::to_string(port) + "))\n"
             "print(s.recvfrom(100)[0].decode(), flush=True)\n");
  // A datagram longer than `dim`: reported, and its head kept.
  Outcome r;
  for (int i = 0; i < 50; i++) {
    r = run("device(9) close");
    if (r.value.size() > 4) break;
    usleep(100000);
  }
  EXPECT_NE(r.out.find("WSAEMSGSIZE\n"), std::string::npos) << r.out;
  ASSERT_GT(r.value.size(), 4u);
  EXPECT_STREQ(reinterpret_cast<const char*>(r.value.data() + 4), "abcd");
  ASSERT_EQ(run("device(9) = \"back\"").status, 0);
  EXPECT_NE(peer.finish().find("back"), std::string::npos);

  // A client sends to a listening peer.
  const int port2 = port_libre(false);
  Pair listener;
  listener.start("import socket\n"
                 "s=socket.socket(socket.AF_INET, socket.SOCK_DGRAM); s.settimeout(5)\n"
                 "s.bind((\"127.0.0.1\"," + std::to_string(port2) + ")); print(\"ready\", flush=True)\n"
                 "d,a=s.recvfrom(100); print(d.decode(), flush=True); s.sendto(b\"ok\", a)\n");
  Outcome c = run("device(10) ini(\"UDP\") name(\"127.0.0.1\") number(" + std::to_string(port2) + ")");
  ASSERT_EQ(c.status, 0) << c.out;
  EXPECT_NE(c.out.find("LANCEMENT CLIENT_UDP\n"), std::string::npos);
  std::string got;
  for (int i = 0; i < 30 && got.empty(); i++) {
    run("device(10) = \"to peer\"");
    usleep(100000);
    Outcome a = run("device(10)");
    if (a.value.size() > 4) got = reinterpret_cast<const char*>(a.value.data() + 4);
  }
  EXPECT_EQ(got, "ok");
  EXPECT_NE(listener.finish().find("to peer"), std::string::npos);
}

TEST_F(DeviceNet, ResolutionAndConnectionFailuresAreReported) {
  Outcome o = run("device(11) ini(\"TCP\") name(\"no.such.host.invalid\") number(9)");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("Unable to resolve no.such.host.invalid\n"), std::string::npos) << o.out;
  const int port = port_libre(true);  // nobody listens there now
  Outcome c = run("device(11) ini(\"TCP\") name(\"127.0.0.1\") number(" + std::to_string(port) + ")");
  EXPECT_LT(c.status, 0);
  EXPECT_NE(c.out.find("connect() failed\n"), std::string::npos) << c.out;
  EXPECT_EQ(periph_ouvert(11), nullptr);
  Outcome r = run("device(11) ini(\"UDP\") lead number(70000)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("70000 [0,65535]"), std::string::npos) << r.out;
  EXPECT_EQ(periph_ouvert(11), nullptr);
}
