// The time of the process, for the `time` command, and the time of day.
#pragma once

// Seconds since the program started, from a monotonic clock.
double seconds_since_start();
// The local time of day.
void time_of_day(int* hour, int* minute, int* second);
