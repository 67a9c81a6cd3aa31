// The process's memory as the system sees it: the native stack of the
// calling thread, and what a large allocation may still count on.
#pragma once
#include <cstddef>

// Lowest address and size of the calling thread's stack; false when the
// system cannot tell.
bool stack_bounds(const char** lowest, size_t* size);

// Bytes the process may still take: the memory the system reports as
// available, and no more than its address-space limit leaves. Negative
// when neither can be read.
double memory_available();
