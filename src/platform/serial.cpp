#include "platform/serial.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

#include "platform/files.h"

namespace {

struct Speed {
  int bauds;
  speed_t code;
};
const Speed SPEEDS[] = {{1200, B1200},   {2400, B2400},   {4800, B4800},    {9600, B9600},
                        {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200}};

speed_t speed_code(int bauds) {
  for (const Speed& s : SPEEDS)
    if (s.bauds == bauds) return s.code;
  return B9600;
}

}  // namespace

int serial_speed(int requested) {
  for (const Speed& s : SPEEDS)
    if (s.bauds == requested) return requested;
  return 9600;
}

int serial_open(const char* path, int speed) {
  const int fd = open(path, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return -1;
  termios t{};
  if (tcgetattr(fd, &t) != 0) {
    close(fd);
    return -1;
  }
  cfmakeraw(&t);
  t.c_cflag &= ~static_cast<tcflag_t>(PARENB | CSTOPB | CSIZE | CRTSCTS);
  t.c_cflag |= CS8 | CLOCAL | CREAD;
  t.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
  t.c_cc[VMIN] = 0;
  t.c_cc[VTIME] = 0;
  cfsetispeed(&t, speed_code(speed));
  cfsetospeed(&t, speed_code(speed));
  if (tcsetattr(fd, TCSANOW, &t) != 0) {
    close(fd);
    return -1;
  }
  return fd;
}

long serial_read(int fd, void* buf, size_t n) {
  const ssize_t r = read(fd, buf, n);
  if (r >= 0) return r;
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR ? 0 : -1;
}

long serial_write(int fd, const void* buf, size_t n, int timeout_ms) {
  const char* p = static_cast<const char*>(buf);
  size_t done = 0;
  const long long end = clock_ms() + timeout_ms;
  while (done < n) {
    const ssize_t w = write(fd, p + done, n - done);
    if (w > 0) {
      done += static_cast<size_t>(w);
      continue;
    }
    if (w < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) return -1;
    const long long left = end - clock_ms();
    if (left <= 0) break;
    pollfd pfd{fd, POLLOUT, 0};
    poll(&pfd, 1, static_cast<int>(left));
  }
  return static_cast<long>(done);
}

void serial_close(int fd) {
  if (fd >= 0) close(fd);
}

bool pty_pair(int* master, int* slave, std::string* slave_path) {
  int m = -1, s = -1;
  char name[256];
  termios t{};
  cfmakeraw(&t);
  if (openpty(&m, &s, name, &t, nullptr) != 0) return false;
  fcntl(m, F_SETFD, FD_CLOEXEC);
  fcntl(s, F_SETFD, FD_CLOEXEC);
  *master = m;
  *slave = s;
  *slave_path = name;
  return true;
}
