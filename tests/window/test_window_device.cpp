// The "MOU" device in its window: the pointer placed by xdotool, read
// back as (2 x / width - 1 + tran) * coe and the same in y.
#include "window/window_run.h"

namespace {

bool has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }

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
