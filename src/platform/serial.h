// Serial ports through termios: 8 data bits, no parity, one stop bit,
// raw bytes without flow control. Reads return at once with what is
// there; writes give up after a total time. Pseudo-terminal pairs stand
// in for a port where there is none (tests, simulators).
#pragma once
#include <cstddef>
#include <string>

// The speed kept for a port: one of 1200, 2400, 4800, 19200, 38400,
// 57600 and 115200 as given; any other becomes 9600.
int serial_speed(int requested);
// Opens the device at `path` for reading and writing at `speed` (already
// passed through serial_speed); -1 when it cannot be opened or set up.
int serial_open(const char* path, int speed);
// Up to n bytes already received; 0 when none, -1 on an error.
long serial_read(int fd, void* buf, size_t n);
// Writes n bytes within `timeout_ms` in all; the count written, -1 on an error.
long serial_write(int fd, const void* buf, size_t n, int timeout_ms);
void serial_close(int fd);

// A pseudo-terminal pair in raw mode: the master end, the slave end held
// open (so that the master sees no hang-up between the port's openings;
// close both with serial_close), and the path of the slave that
// serial_open takes. False when none can be made.
bool pty_pair(int* master, int* slave, std::string* slave_path);
