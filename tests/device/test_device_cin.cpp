// The `cin` device: marked by `device(n) cin`, read at each image through
// the loop's hook as `device(n)` reads it, its first three numbers for the
// pointer. Here the hook is called as the loop calls it.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "device/device_table.h"
#include "interaction/loop_state.h"
#include "platform/sockets.h"
#include "support/python_peer.h"
#include "support/text_runner.h"

namespace {

class DeviceCinTest : public TextRunner {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    ini_devices();
    ASSERT_NE(loop().lire_cin, nullptr) << "the device layer lends the loop its cin read";
  }
  void TearDown() override {
    ini_devices();
    for (const std::string& f : files) std::remove(f.c_str());
  }
  // A file of this text in /tmp; its path.
  std::string file(const std::string& name, const std::string& text) {
    const std::string path = "/tmp/orvela_cin_" + std::to_string(getpid()) + "_" + name;
    if (FILE* f = std::fopen(path.c_str(), "w")) {
      std::fputs(text.c_str(), f);
      std::fclose(f);
    }
    files.push_back(path);
    return path;
  }
  // One image's read: the hook's answer, and the three values.
  struct Lu {
    int r;
    float x, y, z;
  };
  static Lu image() {
    float v[3] = {-999, -999, -999};
    const int r = loop().lire_cin(v);
    return {r, v[0], v[1], v[2]};
  }
  std::vector<std::string> files;
};

void expect_point(const char* what, float x, float y, float z, float ex, float ey, float ez) {
  EXPECT_FLOAT_EQ(x, ex) << what;
  EXPECT_FLOAT_EQ(y, ey) << what;
  EXPECT_FLOAT_EQ(z, ez) << what;
}

}  // namespace

TEST_F(DeviceCinTest, AMarkedTableGivesOneMappedRowAnImage) {
  const std::string rows = file("rows", "10 20 30\n-5 6 7\n");
  ASSERT_EQ(run("device(3) ini(\"DAT\") name(\"" + rows + "\") coe(2) tran(1)").status, 0);
  // Nothing marked: the hook reads nothing and leaves the values.
  Lu l = image();
  EXPECT_EQ(l.r, 0);
  EXPECT_EQ(l.x, -999);
  EXPECT_EQ(run("device(3) cin").status, 0);
  EXPECT_EQ(one("device cin"), 3);
  // (v + tran) * coe, row after row, round the table.
  l = image();
  EXPECT_EQ(l.r, 1);
  expect_point("row 1", l.x, l.y, l.z, 22, 42, 62);
  l = image();
  expect_point("row 2", l.x, l.y, l.z, -8, 14, 16);
  l = image();
  expect_point("row 1 again", l.x, l.y, l.z, 22, 42, 62);
  const Outcome e = run("device(3) edit");
  EXPECT_NE(e.out.find("dep(1.000000) cin\n"), std::string::npos) << e.out;
}

TEST_F(DeviceCinTest, OneDeviceAtATimeUntilTakenBackOrClosed) {
  const std::string pair = file("pair", "1 2\n");
  const std::string rows = file("rows", "4 5 6\n");
  ASSERT_EQ(run("device(4) ini(\"DAT\") name(\"" + pair + "\")").status, 0);
  ASSERT_EQ(run("device(5) ini(\"DAT\") name(\"" + rows + "\")").status, 0);
  ASSERT_EQ(run("device(5) cin").status, 0);
  ASSERT_EQ(run("device(4) cin").status, 0);
  EXPECT_EQ(one("device cin"), 4) << "the last marked replaces the first";
  EXPECT_EQ(run("device(5) edit").out.find(" cin"), std::string::npos);
  // Two numbers: the third is 0.
  Lu l = image();
  EXPECT_EQ(l.r, 1);
  expect_point("two columns", l.x, l.y, l.z, 1, 2, 0);
  // cin(0) on another device leaves the mark; on the marked one takes it back.
  ASSERT_EQ(run("device(5) cin(0)").status, 0);
  EXPECT_EQ(one("device cin"), 4);
  ASSERT_EQ(run("device(4) cin(0)").status, 0);
  EXPECT_EQ(one("device cin"), 0);
  EXPECT_EQ(image().r, 0);
  // Closing the marked device takes the mark with it.
  ASSERT_EQ(run("device(5) cin").status, 0);
  ASSERT_EQ(run("device(5) end").status, 0);
  EXPECT_EQ(one("device cin"), 0);
  EXPECT_EQ(image().r, 0);
  // Only an open device can be marked.
  const Outcome o = run("device(6) cin");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("device  6  ILLEGAL"), std::string::npos) << o.out;
  EXPECT_EQ(one("device cin"), 0);
}

TEST_F(DeviceCinTest, ADatagramDeviceKeepsTheFormatOfItsMarkAndNothingLeavesThePointer) {
  const int port = port_libre(false);
  ASSERT_GT(port, 0);
  ASSERT_EQ(run("device(7) ini(\"UCS\") lead number(" + std::to_string(port) + ")").status, 0);
  ASSERT_EQ(run("device(7) cin format(\"SS\")").status, 0);
  // Nothing has come: NIL, the pointer stays.
  Lu l = image();
  EXPECT_EQ(l.r, 0);
  EXPECT_EQ(l.x, -999);
  // A read of the language in another format does not change the mark's.
  EXPECT_TRUE(nil("device(7) format(\"FF\")"));
  const int s = net_socket(false);
  ASSERT_GE(s, 0);
  NetAddress to;
  ASSERT_TRUE(net_resolve("127.0.0.1", port, &to));
  const unsigned char three[] = {0x10, 0x00, 0xF6, 0xFF, 0x00, 0x01};  // 16, -10, 256 little-endian
  const unsigned char one_value[] = {0x05, 0x00};
  ASSERT_EQ(net_sendto(s, three, sizeof three, to), static_cast<long>(sizeof three));
  ASSERT_EQ(net_sendto(s, one_value, sizeof one_value, to), static_cast<long>(sizeof one_value));
  net_close(s);
  for (int i = 0; i < 40 && (l = image()).r == 0; i++) usleep(50000);
  EXPECT_EQ(l.r, 1);
  expect_point("three 16-bit values", l.x, l.y, l.z, 16, -10, 256);
  l = image();
  EXPECT_EQ(l.r, 1);
  expect_point("one value, the others 0", l.x, l.y, l.z, 5, 0, 0);
  EXPECT_EQ(image().r, 0);
}
