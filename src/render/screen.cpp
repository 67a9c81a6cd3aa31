#include "render/screen.h"

ScreenState& screen() {
  static ScreenState s;
  return s;
}
