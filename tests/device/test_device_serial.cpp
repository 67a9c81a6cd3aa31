// "COM" through a pseudo-terminal pair: the device opens the slave end
// as its port, the test plays the equipment at the master end.
#include <poll.h>
#include <unistd.h>

#include <string>

#include "device/device_table.h"
#include "platform/serial.h"
#include "support/text_runner.h"

namespace {

class DeviceSerial : public TextRunner {
 protected:
  int master = -1, slave = -1;
  std::string path;
  void SetUp() override {
    TextRunner::SetUp();
    ini_devices();
    ASSERT_TRUE(pty_pair(&master, &slave, &path));
  }
  void TearDown() override {
    ini_devices();
    serial_close(master);
    serial_close(slave);
  }
  // What the master end receives within a second.
  std::string equipement_recoit(size_t n) {
    std::string got;
    char buf[64];
    for (int i = 0; i < 20 && got.size() < n; i++) {
      pollfd p{master, POLLIN, 0};
      if (poll(&p, 1, 50) > 0) {
        const ssize_t r = read(master, buf, sizeof buf);
        if (r > 0) got.append(buf, static_cast<size_t>(r));
      }
    }
    return got;
  }
};

}  // namespace

TEST_F(DeviceSerial, BytesBothWaysAndTheSpeedKept) {
  Outcome o = run("device(3) ini(\"COM\") name(\"" + path + "\") speed(5000) dim(8) float coe(2) tran(1)");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("Port serie " + path), std::string::npos) << o.out;
  // A speed outside the list became 9600.
  EXPECT_NE(run("device(3) edit").out.find(" vitesse = 9600 "), std::string::npos);
  EXPECT_TRUE(nil("device(3)")) << "nothing came yet";

  ASSERT_EQ(write(master, "\x01\x02\x03", 3), 3);
  usleep(50000);
  // Each byte mapped as (v + tran) * coe.
  expect_floats(floats("device(3)"), {4, 6, 8}, "bytes read");

  // `dim` caps a read; `char` gives the bytes as text.
  ASSERT_EQ(write(master, "hello", 5), 5);
  usleep(50000);
  EXPECT_EQ(str("device(3) char dim(3)"), "hel");
  EXPECT_EQ(str("device(3) char"), "lo");

  ASSERT_EQ(run("device(3) = \"ping\"").status, 0);
  EXPECT_EQ(equipement_recoit(4), "ping");
  ASSERT_EQ(run("device(3) = 65, 66").status, 0);
  EXPECT_EQ(equipement_recoit(2), "AB");

  Outcome d = run("device(3) debug");
  EXPECT_NE(d.out.find("0 octets lus: "), std::string::npos) << d.out;
  EXPECT_NE(run("device(3) end").out.find("FERMETURE DEVICE 3\n"), std::string::npos);
}

TEST_F(DeviceSerial, KnownSpeedsAreKeptAndAMissingPortIsReported) {
  ASSERT_EQ(run("device(4) ini(\"COM\") name(\"" + path + "\") speed(57600)").status, 0);
  EXPECT_NE(run("device(4) edit").out.find(" vitesse = 57600 "), std::string::npos);
  Outcome o = run("device(5) ini(\"COM\") name(\"/dev/nowhere_tty\")");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("ERROR OUVERTURE COM/dev/nowhere_tty\n"), std::string::npos) << o.out;
  // The slot stayed free.
  EXPECT_EQ(periph_ouvert(5), nullptr);
}
