// Every operator new of the test program is counted, so that a test can
// say that a path allocates nothing; with the kernel's block requests
// (bloc_state().requests) that covers every allocation of the system.
#pragma once

long long allocations_so_far();
