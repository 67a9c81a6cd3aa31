// IPv4 sockets for the TCP and UDP devices. Each call that fails leaves
// its cause in net_error(): 10035 for "would block" (the code the
// console shows for it), errno otherwise. Waits are cut in slices of
// 100 ms, and `stop` (when given) is asked between them: a true answer
// ends the wait as if nothing had come.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

constexpr int NET_WOULD_BLOCK = 10035;
// The cause left when `stop` ended a wait.
constexpr int NET_INTERRUPTED = -2;

// An IPv4 address and port, in host order.
struct NetAddress {
  uint32_t ip = 0;
  int port = 0;
};

using NetStop = bool (*)();

int net_error();
// A stream (TCP) or datagram (UDP) socket; -1 on failure.
int net_socket(bool stream);
// Binds to every local address on `port` (0: any free port).
bool net_bind(int fd, int port);
// The port a bound socket has; 0 when it cannot be told.
int net_local_port(int fd);
bool net_listen(int fd);
// Waits for a connection; the connected socket, or -1 (on an error, or
// when `stop` asked to end the wait: net_error() is then
// NET_INTERRUPTED).
int net_accept(int fd, NetStop stop);
// A dotted address or a host name; false when it names nothing.
bool net_resolve(const char* host, int port, NetAddress* out);
// A dotted address only (no look-up); false for anything else. The port
// of `out` is left as it stands.
bool net_dotted(const char* host, NetAddress* out);
// The host name of an address by a reverse look-up; false when unknown.
bool net_reverse(const NetAddress& a, std::string* name);
// Connects, waiting in slices for the answer (or `stop`).
bool net_connect(int fd, const NetAddress& to, NetStop stop);
void net_set_blocking(int fd, bool blocking);
// Waits until something can be received, `ms` milliseconds at most
// (negative: for ever): false when the time ran out (net_error()
// NET_WOULD_BLOCK) or `stop` ended the wait (NET_INTERRUPTED).
bool net_readable(int fd, int ms, NetStop stop);
// Receives up to n bytes. With `wait`, waits until something comes (or
// `stop`); without, returns -1 with NET_WOULD_BLOCK when nothing is
// there. 0 means the peer closed a stream. For datagrams `from` receives
// the sender and *truncated is set when the datagram was longer than n.
long net_recv(int fd, void* buf, size_t n, bool wait, NetStop stop);
long net_recvfrom(int fd, void* buf, size_t n, NetAddress* from, bool* truncated, bool wait, NetStop stop);
// The same with the datagram's real length in *real (above the result
// when it was cut).
long net_recvfrom_len(int fd, void* buf, size_t n, NetAddress* from, long* real, bool wait, NetStop stop);
long net_send(int fd, const void* buf, size_t n);
long net_sendto(int fd, const void* buf, size_t n, const NetAddress& to);
void net_close(int fd);
// "127.0.0.1" for an address; the name of this machine.
std::string net_address_text(const NetAddress& a);
std::string net_host_name();
