// The time of the process, for the `time` command, and the time of day.
#pragma once

// Seconds since the program started, from a monotonic clock.
double seconds_since_start();
// The local time of day.
void time_of_day(int* hour, int* minute, int* second);
// The local date and time: year, month (1-12), day, hour, minute, second.
void date_time(int out[6]);
