// OSC over UDP through liblo. An end is a server bound to a port, or a
// client toward a host and port that receives its answers on a port of
// its own. What comes is handed over decoded, message by message, the
// messages of a bundle in their order; a packet that is not OSC is
// handed over as a fault with its cause. Nothing here waits.
#pragma once
#include <cstddef>
#include <cstdint>

struct OscEnd;

// One argument of a message: its OSC type letter and its value. Numbers
// in `i` (i, c, T, F), `h` (h, t), `f` (f) or `d` (d); texts (s, S) in
// `s`; blobs and MIDI messages (b, m) as `len` bytes at `b`.
struct OscArg {
  char type;
  int32_t i;
  int64_t h;
  float f;
  double d;
  const char* s;
  const unsigned char* b;
  int32_t len;
};

struct OscSink {
  void* ctx = nullptr;
  void (*message)(void* ctx, const char* path, const OscArg* args, int argc) = nullptr;
  // A packet that is not OSC: liblo's code and its words for the fault.
  void (*fault)(void* ctx, int code, const char* what) = nullptr;
};

// A server on `port` (0: any free port); null with the cause in osc_error().
OscEnd* osc_server(int port);
// A client toward host:port; null with the cause in osc_error().
OscEnd* osc_client(const char* host, int port);
// For the fuzz target and tests: an end with no socket of its own, that
// only decodes what osc_dispatch hands it.
OscEnd* osc_decoder();
void osc_close(OscEnd* e);
// The cause of the last failure of this file.
const char* osc_error();
// The port an end receives on.
int osc_port(const OscEnd* e);

// Takes at most `max` packets that have come, without waiting, into the
// sink; the count taken.
int osc_poll(OscEnd* e, const OscSink& sink, int max);
// Decodes one packet as if it had come; false when it was not OSC.
bool osc_dispatch(OscEnd* e, const OscSink& sink, const void* data, size_t n);

// The peer a send goes to: a client's server, a server's last sender.
bool osc_has_peer(const OscEnd* e);
// A message built argument by argument, then sent to the peer. The
// message is kept from one send to the next: building it again asks for
// no memory once it has been as long.
void osc_begin(OscEnd* e);
void osc_add(OscEnd* e, const OscArg& a);
// 0, or -1 with the cause in osc_error().
int osc_send(OscEnd* e, const char* path);

// True when an OSC address pattern (with ?, *, [], {}) matches the path.
bool osc_match(const char* pattern, const char* path);
