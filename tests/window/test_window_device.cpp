// The "MOU" device in its window: the pointer placed by xdotool, read
// back as (2 x / width - 1 + tran) * coe and the same in y.
#include "window/window_run.h"

namespace {

bool has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }

// A script run by the probe program, the loop's `time(240)` and `bye`
// added: what images 30 to 230 asked for must be nothing. The output.
std::string without_allocation(const std::string& script, const std::string& after = "") {
  WindowRun run(script + "interaction period(0)\ninteraction time(240)\n" + after + "bye abs\n", "ID", "",
                ORVELA_ALLOC_PROBE);
  EXPECT_TRUE(has(run.out, "probe: images 30 to 230: 0 new, 0 blocks\n")) << run.out;
  return run.out;
}

}  // namespace

TEST(WindowDevice, TheMouseDeviceReadsWhereThePointerHovers) {
  REQUIRE_XVFB();
  // The window is 768 by 576: (576, 144) is a quarter from the right
  // edge and from the top.
  const std::string script =
      "no edit\n"
      "device(1) ini(\"MOU\")\n"
      "device(2) ini(\"MOU\") coe(2) tran(0.5)\n"
      "func=\"mark(n){if(n==3){print(\\\"LOOP RUNNING\\\")}}\"\n"
      "interaction func(1,\"mark\")\ninteraction period(25)\ninteraction\nprint(\"BACK\")\n"
      "device(1)\ndevice(2)\nbye abs\n";
  WindowRun run(script, "ID",
                "wait_text 'LOOP RUNNING'\nxdotool mousemove --window $(window_id) 576 144\nsleep 0.5\nkey Escape\n");
  EXPECT_TRUE(has(run.out, "BACK\n ?0.500000 -0.500000 0.000000 \n ?2.000000 0.000000 0.000000")) << run.out;
}

// A table of three rows marked as the `cin` device places the pointer at
// each image, before the second user function, which reads it back through
// a "MOU" device: 192 pixels right of the centre of the 768-pixel-wide
// window is x 0.5, 144 above the centre of its 576 pixels is y -0.5.
TEST(WindowDevice, TheCinDeviceDrivesThePointerImageByImage) {
  REQUIRE_DRAWING();
  const std::string script =
      "no edit\n"
      "device(9) ini(\"LIR\") name(\"rows\")\n"
      "device(9) = \"192 -144 0\\n-384 288 5\\n96 0 0\\n\"\n"
      "device(2) ini(\"DAT\") name(\"rows.dat\")\n"
      "device(2) cin\n"
      "device(1) ini(\"MOU\")\n"
      "func=\"show(n){p=device(1); print(\\\"IMAGE \\\",n); print(p)}\"\n"
      "interaction func(2,\"show\")\ninteraction period(25)\n"
      "interaction format(\"ORVELA 0.1 for\") time(4)\nprint(\"BACK\")\nbye abs\n";
  WindowRun run(script, "ID");
  EXPECT_TRUE(has(run.out, "IMAGE \n1.000000 \n0.500000 -0.500000 0.000000 \n"
                           "IMAGE \n2.000000 \n-1.000000 1.000000 0.000000 \n"
                           "IMAGE \n3.000000 \n0.250000 0.000000 0.000000 \n"
                           "IMAGE \n4.000000 \n0.500000 -0.500000 0.000000 \n ?BACK"))
      << run.out;
}

// The `cin` read at each image asks for no memory: a table marked, and a
// datagram device polled by a user function, over images 30 to 230.
TEST(WindowDevice, TheCinReadAndAPolledDatagramDeviceAllocateNothing) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  const std::string script =
      "no edit\n"
      "device(9) ini(\"LIR\") name(\"rows\")\n"
      "device(9) = \"10 20 30\\n40 50 60\\n\"\n"
      "device(2) ini(\"DAT\") name(\"rows.dat\") coe(2)\n"
      "device(2) cin\n"
      "device(3) ini(\"UCS\") lead number(47397)\n"
      "func=\"poll(n){p=device(3) format(\\\"FF\\\")}\"\n"
      "interaction func(2,\"poll\")\n";
  without_allocation(script);
}

// An OSC client sends at each image what an OSC server of the same
// program routes to a function at an image's input stage: the
// program's own part of it asks for no memory (liblo's codec has its own
// allocations, which the probe does not see).
TEST(WindowDevice, OscMessagesSentAndRoutedInTheLoopAllocateNothing) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  const std::string script =
      "no edit\n"
      "device(3) ini(\"OSC\") lead number(47833)\n"
      "device(4) ini(\"OSC\") number(47833)\n"
      "k=0\n"
      "func=\"send(n){device(4) format(\\\"/p\\\") type(\\\"if\\\") = n, 2}\"\n"
      "func=\"got(m){extern k; k = k + 1}\"\n"
      "device(3) format(\"/p\") func(\"got\")\n"
      "interaction func(2,\"send\")\n";
  const std::string out = without_allocation(script, "print(\"ROUTED \", k)\n");
  // Every message came to its function, the last one before the next
  // console line at the latest.
  EXPECT_TRUE(has(out, "ROUTED \n240.000000")) << out;
}
