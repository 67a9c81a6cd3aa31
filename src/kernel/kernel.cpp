#include "kernel/kernel.h"

KernelState& kernel() {
  static KernelState k;
  return k;
}
