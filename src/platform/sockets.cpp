#include "platform/sockets.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

int last_error = 0;

void keep_errno() { last_error = (errno == EAGAIN || errno == EWOULDBLOCK) ? NET_WOULD_BLOCK : errno; }

sockaddr_in to_sockaddr(const NetAddress& a) {
  sockaddr_in s{};
  s.sin_family = AF_INET;
  s.sin_addr.s_addr = htonl(a.ip);
  s.sin_port = htons(static_cast<uint16_t>(a.port));
  return s;
}

// Waits until fd is readable, `ms` milliseconds at most (negative: for
// ever): true when it is; false when the time ran out (net_error()
// NET_WOULD_BLOCK), when `stop` ended the wait (NET_INTERRUPTED) or when
// poll failed.
bool wait_readable(int fd, NetStop stop, int ms = -1) {
  for (int waited = 0;; waited += 100) {
    const int slice = ms < 0 ? 100 : std::min(100, ms - waited);
    pollfd p{fd, POLLIN, 0};
    const int r = poll(&p, 1, std::max(slice, 0));
    if (r > 0) return true;
    if (r < 0 && errno != EINTR) {
      keep_errno();
      return false;
    }
    if (stop && stop()) {
      last_error = NET_INTERRUPTED;
      return false;
    }
    if (ms >= 0 && waited + 100 >= ms) {
      last_error = NET_WOULD_BLOCK;
      return false;
    }
  }
}

}  // namespace

int net_error() { return last_error; }

int net_socket(bool stream) {
  const int fd = socket(AF_INET, (stream ? SOCK_STREAM : SOCK_DGRAM) | SOCK_CLOEXEC, 0);
  if (fd < 0) keep_errno();
  if (fd >= 0 && stream) {
    const int one = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
  }
  return fd;
}

bool net_bind(int fd, int port) {
  NetAddress any{INADDR_ANY, port};
  const sockaddr_in s = to_sockaddr(any);
  if (bind(fd, reinterpret_cast<const sockaddr*>(&s), sizeof s) == 0) return true;
  keep_errno();
  return false;
}

int net_local_port(int fd) {
  sockaddr_in s{};
  socklen_t n = sizeof s;
  if (getsockname(fd, reinterpret_cast<sockaddr*>(&s), &n) != 0) return 0;
  return ntohs(s.sin_port);
}

bool net_listen(int fd) {
  if (listen(fd, 1) == 0) return true;
  keep_errno();
  return false;
}

int net_accept(int fd, NetStop stop) {
  if (!wait_readable(fd, stop)) return -1;
  const int c = accept4(fd, nullptr, nullptr, SOCK_CLOEXEC);
  if (c < 0) keep_errno();
  return c;
}

bool net_resolve(const char* host, int port, NetAddress* out) {
  in_addr a{};
  if (inet_pton(AF_INET, host, &a) == 1) {
    *out = {ntohl(a.s_addr), port};
    return true;
  }
  addrinfo hints{};
  hints.ai_family = AF_INET;
  addrinfo* list = nullptr;
  if (getaddrinfo(host, nullptr, &hints, &list) != 0 || !list) return false;
  const auto* s = reinterpret_cast<const sockaddr_in*>(list->ai_addr);
  *out = {ntohl(s->sin_addr.s_addr), port};
  freeaddrinfo(list);
  return true;
}

bool net_dotted(const char* host, NetAddress* out) {
  in_addr a{};
  if (!host || inet_pton(AF_INET, host, &a) != 1) return false;
  out->ip = ntohl(a.s_addr);
  return true;
}

bool net_reverse(const NetAddress& a, std::string* name) {
  const sockaddr_in s = to_sockaddr(a);
  char host[NI_MAXHOST];
  if (getnameinfo(reinterpret_cast<const sockaddr*>(&s), sizeof s, host, sizeof host, nullptr, 0, NI_NAMEREQD) != 0)
    return false;
  *name = host;
  return true;
}

bool net_connect(int fd, const NetAddress& to, NetStop stop) {
  const sockaddr_in s = to_sockaddr(to);
  const int flags = fcntl(fd, F_GETFL, 0);
  fcntl(fd, F_SETFL, flags | O_NONBLOCK);
  bool ok = connect(fd, reinterpret_cast<const sockaddr*>(&s), sizeof s) == 0;
  if (!ok && errno == EINPROGRESS) {
    for (;;) {
      pollfd p{fd, POLLOUT, 0};
      const int r = poll(&p, 1, 100);
      if (r > 0) {
        int err = 0;
        socklen_t len = sizeof err;
        getsockopt(fd, SOL_SOCKET, SO_ERROR, &err, &len);
        ok = err == 0;
        errno = err;
        break;
      }
      if (r < 0 && errno != EINTR) break;
      if (stop && stop()) {
        fcntl(fd, F_SETFL, flags);
        last_error = NET_INTERRUPTED;
        return false;
      }
    }
  }
  if (!ok) keep_errno();
  fcntl(fd, F_SETFL, flags);
  return ok;
}

bool net_readable(int fd, int ms, NetStop stop) { return wait_readable(fd, stop, ms); }

void net_set_blocking(int fd, bool blocking) {
  const int flags = fcntl(fd, F_GETFL, 0);
  if (flags < 0) return;
  fcntl(fd, F_SETFL, blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK);
}

long net_recv(int fd, void* buf, size_t n, bool wait, NetStop stop) {
  if (wait && !wait_readable(fd, stop)) return -1;
  const ssize_t r = recv(fd, buf, n, MSG_DONTWAIT);
  if (r < 0) keep_errno();
  return r;
}

long net_recvfrom_len(int fd, void* buf, size_t n, NetAddress* from, long* real, bool wait, NetStop stop) {
  if (real) *real = 0;
  if (wait && !wait_readable(fd, stop)) return -1;
  sockaddr_in s{};
  socklen_t len = sizeof s;
  // MSG_TRUNC gives the datagram's real length, so that a cut one is told.
  const ssize_t r = recvfrom(fd, buf, n, MSG_DONTWAIT | MSG_TRUNC, reinterpret_cast<sockaddr*>(&s), &len);
  if (r < 0) {
    keep_errno();
    return r;
  }
  if (from) *from = {ntohl(s.sin_addr.s_addr), ntohs(s.sin_port)};
  if (real) *real = static_cast<long>(r);
  return static_cast<size_t>(r) > n ? static_cast<long>(n) : static_cast<long>(r);
}

long net_recvfrom(int fd, void* buf, size_t n, NetAddress* from, bool* truncated, bool wait, NetStop stop) {
  long real = 0;
  const long r = net_recvfrom_len(fd, buf, n, from, &real, wait, stop);
  if (truncated) *truncated = r >= 0 && real > r;
  return r;
}

long net_send(int fd, const void* buf, size_t n) {
  const ssize_t r = send(fd, buf, n, MSG_NOSIGNAL);
  if (r < 0) keep_errno();
  return r;
}

long net_sendto(int fd, const void* buf, size_t n, const NetAddress& to) {
  const sockaddr_in s = to_sockaddr(to);
  const ssize_t r = sendto(fd, buf, n, MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&s), sizeof s);
  if (r < 0) keep_errno();
  return r;
}

void net_close(int fd) {
  if (fd >= 0) close(fd);
}

std::string net_address_text(const NetAddress& a) {
  in_addr x{};
  x.s_addr = htonl(a.ip);
  char t[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &x, t, sizeof t);
  return t;
}

std::string net_host_name() {
  char t[256] = "";
  if (gethostname(t, sizeof t - 1) != 0) return "";
  return t;
}
