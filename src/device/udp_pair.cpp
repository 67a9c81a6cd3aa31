// The older pair of UDP commands, DEVICE_TYPE_SERVEUR_UDP and
// DEVICE_TYPE_CLIENT_UDP:
//   device(n) lead texture(port) [dim(bytes)] [time(ms)] [close]
//   device(n) name("host") texture(port) [dim(bytes)] [time(ms)] [close]
// Each makes slot n a "UDP" device of the table, a server (kind 8) with
// `lead`, a client (kind 5) otherwise, on port `texture` (8889 when 0 or
// not given), receiving datagrams of `dim` bytes at most (1024 by
// default). With `close` a read waits for a datagram, `time` ms at most
// (1000 by default), and gives NIL when none came. They are read, written
// and closed (`device(n) end`, END_DEVICE_UDP) as every device.
#include "device/device_kinds.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"

namespace {

constexpr int TAMPON_UDP = 1024;

// What the pair sets beyond the settings of `ini`.
void regler_udp(word* s, Periph& p) {
  p.Port = arg_int(s, KW_texture, 0);
  if (p.Dim <= 0) p.Dim = TAMPON_UDP;
  p.Delai_lecture = p.Timeout;
}

}  // namespace

int DEVICE_TYPE_SERVEUR_UDP(word* s, const word* lim, int n) {
  return ouvrir_slot(s, lim, n, *kind_row(DEV_UDP_SERVEUR), regler_udp);
}

int DEVICE_TYPE_CLIENT_UDP(word* s, const word* lim, int n) {
  return ouvrir_slot(s, lim, n, *kind_row(DEV_UDP_CLIENT), regler_udp);
}

void usage_udp() {
  voir_mot(KW_device);
  voir_texte("\n");
  voir_texte("device(n) lead texture(port) [dim(bytes)] [time(ms)] [close] : UDP server\n");
  voir_texte("device(n) name(\"host\") texture(port) [dim(bytes)] [time(ms)] [close] : UDP client\n");
  voir_texte("\tport 8889 by default, dim 1024 bytes, close : a read waits time ms (1000)\n");
  voir_texte("p = device(n) reads, device(n) = p sends, device(n) end closes\n");
}
