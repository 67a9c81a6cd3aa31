// The time of the process, for the `time` command.
#pragma once

// Seconds since the program started, from a monotonic clock.
double seconds_since_start();
