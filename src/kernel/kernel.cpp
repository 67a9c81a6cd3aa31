#include "kernel/kernel.h"

KernelState& kernel() {
  static KernelState k;
  return k;
}

void kernel_reset() { static_cast<KernelSettings&>(kernel()) = KernelSettings(); }
