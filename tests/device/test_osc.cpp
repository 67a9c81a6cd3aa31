// OSC devices in the process: the message made into a value, a value made
// into a message, and a client and a server talking on loopback through
// the device table (the bundles, patterns and foreign peers are in the
// transcript device_osc).
#include <string>
#include <vector>

#include "device/device_table.h"
#include "device/osc_device.h"
#include "kernel/access.h"
#include "support/capture.h"
#include "support/text_runner.h"

namespace {

OscArg num(char t, int32_t i, float f = 0) { return OscArg{t, i, 0, f, 0, nullptr, nullptr, 0}; }

std::string part_text(const word* v, int i) { return text(sous_bloc(v, i)); }

std::vector<float> part_floats(const word* v, int i) {
  const word* p = sous_bloc(v, i);
  std::vector<float> out;
  for (int k = 0; k < elements(p); k++) out.push_back(getf(p, k));
  return out;
}

}  // namespace

TEST(OscValue, NumbersTogetherTextsAndBlobsApartNilLeftOut) {
  const unsigned char bytes[] = {0, 7, 255};
  OscArg args[] = {num('i', 3), num('f', 0, 1.5f), num('T', 1), num('N', 0), num('F', 0),
                   OscArg{'s', 0, 0, 0, 0, "hi", nullptr, 0}, num('h', 0), OscArg{'b', 0, 0, 0, 0, nullptr, bytes, 3},
                   num('c', 65)};
  args[6].h = 1LL << 40;
  std::vector<word> area(200);
  ASSERT_EQ(osc_valeur_message(area.data(), area.data() + area.size(), "/a/b", args, 9), 0);
  const word* v = area.data();
  ASSERT_EQ(tag(v), T_HYBRIDE);
  ASSERT_EQ(hybride_parts(v), 6);
  EXPECT_EQ(part_text(v, 0), "/a/b");
  expect_floats(part_floats(v, 1), {3, 1.5f, 1, 0}, "numbers before the text");
  EXPECT_EQ(part_text(v, 2), "hi");
  expect_floats(part_floats(v, 3), {static_cast<float>(1LL << 40)}, "int64");
  expect_floats(part_floats(v, 4), {0, 7, 255}, "blob bytes");
  expect_floats(part_floats(v, 5), {65}, "char after a blob");
  long total = 4;
  for (int i = 0; i < hybride_parts(v); i++) total += size(sous_bloc(v, i));
  EXPECT_EQ(total, size(v));
}

TEST(OscValue, AMessagePastItsRoomIsRefusedWithoutAReport) {
  OscArg args[] = {OscArg{'s', 0, 0, 0, 0, "a rather long string argument", nullptr, 0}, num('i', 1)};
  for (int room : {3, 6, 10, 14, 15}) {
    std::vector<word> area(static_cast<size_t>(room) + 1, 0x5a5a5a5a);
    Capture out;
    EXPECT_EQ(osc_valeur_message(area.data(), area.data() + room, "/x", args, 2), -12) << room;
    EXPECT_EQ(area[static_cast<size_t>(room)], 0x5a5a5a5a) << "written past the room of " << room;
    EXPECT_EQ(out.take(), "");
  }
}

// Two devices of the table on loopback: what the client sends the server
// reads, and the server's answer goes back to the client.
class OscDevices : public TextRunner {
 protected:
  void TearDown() override {
    Capture quiet;
    fermer_device(41);
    fermer_device(42);
  }
  // The server on a free port, the client toward it.
  void open_pair() {
    Capture quiet;
    ASSERT_EQ(run("device(41) ini(\"OSC\") lead number(0)").status, 0);
    const int port = periph(41)->Port;
    ASSERT_GT(port, 0);
    ASSERT_EQ(run("device(42) ini(\"OSC\") number(" + std::to_string(port) + ")").status, 0);
  }
};

TEST_F(OscDevices, EveryTypeSentIsReadBackAndTheServerAnswersItsSender) {
  open_pair();
  ASSERT_EQ(run("device(42) format(\"/all\") type(\"ifhdcsbTFNIS\") = 7, 2.5, 40, 0.25, 66, \"str\", 1, 2, 3, "
                "\"sym\"").status, 0);
  // A server answers whoever wrote last: it has no peer before.
  Outcome r = run("m = device(41)");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(str("m[0]"), "/all");
  expect_floats(floats("m[1]"), {7, 2.5f, 40, 0.25f, 66}, "numbers");
  EXPECT_EQ(str("m[2]"), "str");
  expect_floats(floats("m[3]"), {1, 2, 3}, "blob");
  expect_floats(floats("m[4]"), {1, 0}, "true and false");
  EXPECT_EQ(str("m[5]"), "sym");
  EXPECT_TRUE(nil("device(41)"));
  ASSERT_EQ(run("device(41) format(\"/back\") = 1, \"two\"").status, 0);
  ASSERT_EQ(run("a = device(42)").status, 0);
  EXPECT_EQ(str("a[0]"), "/back");
  EXPECT_EQ(str("a[2]"), "two");
}

TEST_F(OscDevices, FloatReadsGiveTheNumbersMappedAndQueueOrderHolds) {
  open_pair();
  for (int i = 0; i < 50; i++)
    ASSERT_EQ(run("device(42) format(\"/n\") = " + std::to_string(i) + ", \"x\", 1").status, 0);
  run("device(41) coe(2) tran(1)");
  for (int i = 0; i < 50; i++) expect_floats(floats("device(41) float"), {(i + 1) * 2.0f, 4}, "mapped");
  EXPECT_TRUE(nil("device(41)"));
}

TEST_F(OscDevices, RoutesCallTheirFunctionsInOrderAndLeaveTheRestQueued) {
  open_pair();
  ASSERT_EQ(run("got = 0").status, 0);
  ASSERT_EQ(run("func=\"take(m){extern got; v = m[1]; got = got * 10 + v[0]}\"").status, 0);
  ASSERT_EQ(run("device(41) format(\"/ctl/[ab]\") func(\"take\")").status, 0);
  for (const char* a : {"/ctl/a", "/other", "/ctl/b", "/ctl/c", "/ctl/a"}) {
    static int k = 0;
    ASSERT_EQ(run(std::string("device(42) format(\"") + a + "\") = " + std::to_string(++k)).status, 0);
  }
  // The reads take in, route, then give what no route took.
  ASSERT_EQ(run("m = device(41)").status, 0);
  EXPECT_EQ(str("m[0]"), "/other");
  EXPECT_EQ(one("got"), 135.0f);
  ASSERT_EQ(run("m = device(41)").status, 0);
  EXPECT_EQ(str("m[0]"), "/ctl/c");
  EXPECT_TRUE(nil("device(41)"));
  // A route to a function that is nowhere is refused; taken away, a route
  // no longer takes its messages.
  EXPECT_NE(fails("device(41) format(\"/z\") func(\"nowhere_at_all\")").find("NOT FOUND"), std::string::npos);
  ASSERT_EQ(run("device(41) format(\"/ctl/[ab]\") func").status, 0);
  ASSERT_EQ(run("device(42) format(\"/ctl/a\") = 9").status, 0);
  ASSERT_EQ(run("m = device(41)").status, 0);
  EXPECT_EQ(str("m[0]"), "/ctl/a");
  EXPECT_EQ(one("got"), 135.0f);
}

TEST_F(OscDevices, AFullQueueLosesTheNewestAndSaysHowMany) {
  open_pair();
  OscDevice& d = *periph(41)->Osc;
  d.nombre = d.slots - 2;  // as if the queue had been left unread
  for (int i = 0; i < 5; i++) ASSERT_EQ(run("device(42) format(\"/q\") = " + std::to_string(i)).status, 0);
  Outcome r = run("device(41)");
  EXPECT_NE(r.out.find("device 41: 3 OSC messages lost, the queue was full\n"), std::string::npos) << r.out;
  EXPECT_EQ(d.nombre, d.slots - 1);
}
