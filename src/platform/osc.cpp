#include "platform/osc.h"

#include <lo/lo.h>
#include <lo/lo_lowlevel.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstring>
#include <string>

struct OscEnd {
  lo_server server = nullptr;
  lo_address peer = nullptr;        // where sends go
  bool client = false;              // a client's peer never changes
  char peer_host[64] = "";          // a server's last sender, to tell a new one
  char peer_port[16] = "";
  lo_message out = nullptr;         // the message being built
  const OscSink* sink = nullptr;    // during a poll or a dispatch
  bool faulty = false;              // the packet being taken was not OSC
};

namespace {

std::string derniere_erreur;
// liblo reports faults through a handler that has no context: the end
// being polled stands here meanwhile.
OscEnd* en_cours = nullptr;

void erreur_lo(int num, const char* msg, const char* where) {
  if (en_cours && en_cours->sink) {
    en_cours->faulty = true;
    if (en_cours->sink->fault) en_cours->sink->fault(en_cours->sink->ctx, num, msg ? msg : "");
    return;
  }
  derniere_erreur = msg ? msg : "error";
  if (where && *where) derniere_erreur += std::string(" (") + where + ")";
}

// A server's answers go to whoever wrote last: the address is made again
// only when the sender changes.
void retenir_source(OscEnd* e, lo_message m) {
  if (e->client) return;
  lo_address src = lo_message_get_source(m);
  if (!src) return;
  const char* host = lo_address_get_hostname(src);
  const char* port = lo_address_get_port(src);
  if (!host || !port) return;
  if (e->peer && std::strcmp(host, e->peer_host) == 0 && std::strcmp(port, e->peer_port) == 0) return;
  std::snprintf(e->peer_host, sizeof e->peer_host, "%s", host);
  std::snprintf(e->peer_port, sizeof e->peer_port, "%s", port);
  if (e->peer) lo_address_free(e->peer);
  e->peer = lo_address_new(e->peer_host, e->peer_port);
}

constexpr int ARGS_MAX = 64;

int recu(const char* path, const char* types, lo_arg** argv, int argc, lo_message m, void* data) {
  OscEnd* e = static_cast<OscEnd*>(data);
  retenir_source(e, m);
  if (!e->sink || !e->sink->message) return 0;
  OscArg args[ARGS_MAX];
  const int n = argc < ARGS_MAX ? argc : ARGS_MAX;
  for (int k = 0; k < n; k++) {
    OscArg& a = args[k];
    a = OscArg{types[k], 0, 0, 0, 0, nullptr, nullptr, 0};
    // The arguments stand in the packet at 4-byte boundaries, which the
    // 8-byte union does not promise: each is copied out.
    const unsigned char* v = reinterpret_cast<const unsigned char*>(argv[k]);
    switch (types[k]) {
      case LO_INT32: std::memcpy(&a.i, v, 4); break;
      case LO_CHAR: {
        char c;
        std::memcpy(&c, v, 1);
        a.i = static_cast<unsigned char>(c);
        break;
      }
      case LO_TRUE: a.i = 1; break;
      case LO_FALSE: a.i = 0; break;
      case LO_INT64: std::memcpy(&a.h, v, 8); break;
      case LO_TIMETAG: {
        uint32_t t[2];
        std::memcpy(t, v, 8);
        a.h = static_cast<int64_t>(t[0]) << 32 | t[1];
        break;
      }
      case LO_FLOAT: std::memcpy(&a.f, v, 4); break;
      case LO_DOUBLE: std::memcpy(&a.d, v, 8); break;
      case LO_STRING:
      case LO_SYMBOL: a.s = reinterpret_cast<const char*>(v); break;
      case LO_BLOB: {
        std::memcpy(&a.len, v, 4);
        a.b = v + 4;
        break;
      }
      case LO_MIDI: a.b = v, a.len = 4; break;
      default: break;  // nil, infinitum: the letter alone
    }
  }
  e->sink->message(e->sink->ctx, path, args, n);
  return 0;
}

OscEnd* nouvelle(const char* port) {
  derniere_erreur.clear();
  lo_server s = lo_server_new_with_proto(port, LO_UDP, erreur_lo);
  if (!s) {
    if (derniere_erreur.empty()) derniere_erreur = "cannot open the port";
    return nullptr;
  }
  OscEnd* e = new OscEnd;
  e->server = s;
  lo_server_add_method(s, nullptr, nullptr, recu, e);
  // The messages of a bundle come at once, in their order, whatever its
  // time tag: a tag far ahead would otherwise keep them in memory.
  lo_server_enable_queue(s, 0, 1);
  // Room for a burst of small datagrams between two images.
  const int fd = lo_server_get_socket_fd(s);
  const int taille = 8 << 20;
  if (fd >= 0 && setsockopt(fd, SOL_SOCKET, SO_RCVBUFFORCE, &taille, sizeof taille) != 0)
    setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &taille, sizeof taille);
  return e;
}

struct Pendant {
  OscEnd* avant;
  explicit Pendant(OscEnd* e, const OscSink& sink) : avant(en_cours) {
    en_cours = e;
    e->sink = &sink;
  }
  ~Pendant() {
    en_cours->sink = nullptr;
    en_cours = avant;
  }
};

}  // namespace

OscEnd* osc_server(int port) {
  char p[16];
  std::snprintf(p, sizeof p, "%d", port);
  return nouvelle(port > 0 ? p : nullptr);
}

OscEnd* osc_client(const char* host, int port) {
  char p[16];
  std::snprintf(p, sizeof p, "%d", port);
  lo_address a = lo_address_new(host, p);
  if (!a) {
    derniere_erreur = std::string("unknown host ") + host;
    return nullptr;
  }
  OscEnd* e = nouvelle(nullptr);
  if (!e) {
    lo_address_free(a);
    return nullptr;
  }
  e->peer = a;
  e->client = true;
  return e;
}

OscEnd* osc_decoder() { return nouvelle(nullptr); }

void osc_close(OscEnd* e) {
  if (!e) return;
  if (e->out) lo_message_free(e->out);
  if (e->peer) lo_address_free(e->peer);
  lo_server_free(e->server);
  delete e;
}

const char* osc_error() { return derniere_erreur.c_str(); }

int osc_port(const OscEnd* e) { return e ? lo_server_get_port(e->server) : 0; }

int osc_poll(OscEnd* e, const OscSink& sink, int max) {
  Pendant p(e, sink);
  int n = 0;
  while (n < max && lo_server_recv_noblock(e->server, 0) > 0) n++;
  return n;
}

bool osc_dispatch(OscEnd* e, const OscSink& sink, const void* data, size_t n) {
  Pendant p(e, sink);
  e->faulty = false;
  const int r = lo_server_dispatch_data(e->server, const_cast<void*>(data), n);
  return r >= 0 && !e->faulty;
}

bool osc_has_peer(const OscEnd* e) { return e && e->peer; }

void osc_begin(OscEnd* e) {
  if (e->out) lo_message_free(e->out);
  e->out = lo_message_new();
}

void osc_add(OscEnd* e, const OscArg& a) {
  lo_message m = e->out;
  if (!m) return;
  switch (a.type) {
    case LO_INT32: lo_message_add_int32(m, a.i); break;
    case LO_FLOAT: lo_message_add_float(m, a.f); break;
    case LO_DOUBLE: lo_message_add_double(m, a.d); break;
    case LO_INT64: lo_message_add_int64(m, a.h); break;
    case LO_STRING: lo_message_add_string(m, a.s ? a.s : ""); break;
    case LO_SYMBOL: lo_message_add_symbol(m, a.s ? a.s : ""); break;
    case LO_CHAR: lo_message_add_char(m, static_cast<char>(a.i)); break;
    case LO_TRUE: lo_message_add_true(m); break;
    case LO_FALSE: lo_message_add_false(m); break;
    case LO_NIL: lo_message_add_nil(m); break;
    case LO_INFINITUM: lo_message_add_infinitum(m); break;
    case LO_BLOB: {
      lo_blob b = lo_blob_new(a.len, a.b);
      if (b) {
        lo_message_add_blob(m, b);
        lo_blob_free(b);
      }
      break;
    }
    default: break;
  }
}

int osc_send(OscEnd* e, const char* path) {
  if (!e->peer) {
    derniere_erreur = "no peer yet";
    return -1;
  }
  if (!e->out) osc_begin(e);
  const int r = lo_send_message_from(e->peer, e->server, path, e->out);
  lo_message_free(e->out);
  e->out = nullptr;
  if (r < 0) {
    derniere_erreur = lo_address_errstr(e->peer) ? lo_address_errstr(e->peer) : "send failed";
    return -1;
  }
  return 0;
}

bool osc_match(const char* pattern, const char* path) { return lo_pattern_match(path, pattern) != 0; }
