// The device table's shapes that a transcript cannot show: values read
// into an image, and a shared memory block that another process wrote
// wrongly.
#include <string>

#include "device/device_table.h"
#include "scene/image_object.h"
#include "scene/scene_fixture.h"

namespace {

class DeviceTable : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    ini_devices();
  }
  void TearDown() override {
    ini_devices();
    SceneTest::TearDown();
  }
};

}  // namespace

TEST_F(DeviceTable, ImageTakesOneGreyPixelAValue) {
  ASSERT_EQ(run("image(31) dim(4, 2)").status, 0);
  ASSERT_EQ(run("device(1) ini(\"MOU\") coe(100) tran(3)").status, 0);
  // Without a window the pointer is at 0,0: (-1 + 3) * 100 = 200, and 0.
  expect_floats(floats("device(1) image(31)"), {200, 200, 0}, "mouse values");
  Objet* o = image_numero(31);
  ASSERT_NE(o, nullptr);
  const uint8_t* px = octets(pixels_lecture(o));
  ASSERT_NE(px, nullptr);
  const uint8_t want[] = {200, 200, 200, 255, 200, 200, 200, 255, 0, 0, 0, 255};
  for (int i = 0; i < 12; i++) EXPECT_EQ(px[i], want[i]) << "byte " << i;
  EXPECT_EQ(px[12 + 3], 0) << "the pixels past the values are left alone";
}

TEST_F(DeviceTable, AForeignBlockInSharedMemoryIsCheckedBeforeUse) {
  const std::string name = "orvela_unit_" + std::to_string(getpid());
  ASSERT_EQ(run("device(2) ini(\"MEM\") name(\"" + name + "\") float").status, 0);
  word* view = periph_ouvert(2)->Mem;
  ASSERT_NE(view, nullptr);
  // A size word beyond the view.
  view[1] = T_FLOAT;
  view[0] = MEM_MOTS + 1;
  Outcome o = run("device(2)");
  EXPECT_NE(o.out.find("BADLY FORMATED FILE"), std::string::npos) << o.out;
  EXPECT_TRUE(nil("device(2)"));
  // A count of elements beyond the block: only what the block holds.
  view[0] = 6;
  view[2] = 1000000;
  view[3] = 1;
  view[4] = fw(1.5f);
  view[5] = fw(2.5f);
  expect_floats(floats("device(2)"), {1.5f, 2.5f}, "the block's own words");
  // A text without its end is cut at the block's end.
  view[0] = 0;
  view[1] = T_CHAR;
  std::memcpy(view + 4, "abcdefgh", 8);
  view[0] = 6;
  EXPECT_EQ(str("device(2)"), "abcdefgh");
  run("device(2) end");
  std::string path = "/dev/shm/" + name;
  std::remove(path.c_str());
}

TEST_F(DeviceTable, SharedMemoryAnswerOfAnotherProgramInWaitMode) {
  if (system("python3 -c pass >/dev/null 2>&1") != 0) GTEST_SKIP() << "python3 is not installed: no peer";
  const std::string name = "orvela_wait_" + std::to_string(getpid());
  ASSERT_EQ(run("device(3) ini(\"MEM\") name(\"" + name + "\") float wait(0.2) time(5000)").status, 0);
  // The peer waits for a block, takes it (word 0 to 0), and answers with
  // the sum of its floats, its size word last.
  const std::string peer =
      "import mmap, struct, time\n"
      "f=open(\"/dev/shm/" + name + "\", \"r+b\"); m=mmap.mmap(f.fileno(), 1024)\n"
      "for i in range(100):\n"
      "  n=struct.unpack_from(\"<i\", m, 0)[0]\n"
      "  if n > 0: break\n"
      "  time.sleep(0.05)\n"
      "v=struct.unpack_from(\"<%df\" % (n-4), m, 16)\n"
      "struct.pack_into(\"<i\", m, 0, 0)\n"
      "time.sleep(0.05)\n"
      "struct.pack_into(\"<3if\", m, 4, -1002, 1, 1, sum(v))\n"
      "struct.pack_into(\"<i\", m, 0, 5)\n";
  const std::string cmd = "timeout 10 python3 -c '" + peer + "' &";
  ASSERT_EQ(system(cmd.c_str()), 0);
  ASSERT_EQ(run("device(3) = 1, 2, 3.5").status, 0);
  expect_floats(floats("device(3)"), {6.5f}, "the peer's answer");
  run("device(3) end");
  std::remove(("/dev/shm/" + name).c_str());
}
