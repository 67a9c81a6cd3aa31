#include "kernel/screen.h"

ScreenState& screen() {
  static ScreenState s;
  return s;
}
