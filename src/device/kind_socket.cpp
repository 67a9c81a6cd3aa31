// "TCP" and "UDP": clients (kinds 4, 5) and servers with `lead` (7, 8)
// on port `number` (8889 by default). A TCP server waits for its client
// in `ini`, as the whole program does. Reads take the raw bytes, `Dim`
// at most (1024 by default): a text, or with `float` floats of 4 bytes;
// without `close` a read that finds nothing gives NIL at once.
#include <algorithm>

#include "device/device_util.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "platform/sockets.h"

namespace {

constexpr int TAMPON_SOCKET = 1024;

const char* hote(const Periph& p) { return p.Nom.empty() ? "127.0.0.1" : p.Nom.c_str(); }

int port_de(const Periph& p) { return p.Port > 0 ? p.Port : PORT_DEFAUT; }

// A port past 65535 (or below 0) is refused with its range and message 66.
bool port_valide(const Periph& p) {
  if (p.Port >= 0 && p.Port <= 65535) return true;
  voir_int2("%d [0,%d]", p.Port, 65535);
  voir_message(0, MES_ILLEGAL);
  return false;
}

void usage_serveur() {
  voir_texte("periph(num)ini(type)nom(nn)numero(port)\n");
  voir_texte("\ttype = TCP ou UDP\n");
  voir_texte("\tnn = 127.0.0.1 ou nom_ordinateur\n");
  voir_texte("\tport = numero de port (8889 par defaut)\n");
}

// Reports a failed step of a server's set-up and closes its socket.
int echec(Periph& p, const char* format) {
  // Ctrl-C ended the wait: the interpreter's dialogue follows.
  if (net_error() != NET_INTERRUPTED) voir_int(format, net_error());
  net_close(p.Sock);
  p.Sock = -1;
  if (net_error() != NET_INTERRUPTED) usage_serveur();
  return -1;
}

bool bloquant(const Periph& p) { return p.Bloquant != 0; }

// A client's socket toward its server, connected for a stream: 0, or -1
// after a report.
int client(Periph& p, bool flux) {
  if (!port_valide(p)) return -1;
  NetAddress a;
  if (!net_resolve(hote(p), port_de(p), &a)) {
    VOIR_CHAR("Unable to resolve %s\n", hote(p));
    return -1;
  }
  p.Sock = net_socket(flux);
  if (p.Sock < 0) {
    voir_texte("socket() failed\n");
    return -1;
  }
  if (flux && !net_connect(p.Sock, a, interruption_demandee)) {
    if (net_error() != NET_INTERRUPTED) voir_texte("connect() failed\n");
    net_close(p.Sock);
    p.Sock = -1;
    return -1;
  }
  p.Distant = a;
  p.Distant_pret = 1;
  return 0;
}

}  // namespace

int ouvrir_tcp_serveur(Periph& p, int, word*, const word*) {
  if (!port_valide(p)) return -1;
  if (p.Nom.empty()) p.Nom = net_host_name();
  p.Sock = net_socket(true);
  if (p.Sock < 0) return echec(p, "socket() failed with error %d\n");
  if (!net_bind(p.Sock, port_de(p))) return echec(p, "bind() failed with error %d\n");
  if (!net_listen(p.Sock)) return echec(p, "listen() failed with error %d\n");
  voir_int("SERVEUR OUVERT sur le port %d\n", port_de(p));
  voir_texte("Lancer le client\n");
  flush_out();
  const int c = net_accept(p.Sock, interruption_demandee);
  if (c < 0) return echec(p, "accept() failed with error %d\n");
  net_close(p.Sock);
  p.Sock = c;
  p.Distant_pret = 1;
  voir_int("CONNECTION OK socket = %d\n", c);
  return 0;
}


int ouvrir_tcp_client(Periph& p, int, word*, const word*) {
  VOIR_CHAR("LANCEMENT CLIENT_TCP sur machine %s ", hote(p));
  voir_int("et port %d\n", port_de(p));
  return client(p, true);
}

int ouvrir_udp_client(Periph& p, int, word*, const word*) {
  voir_texte("LANCEMENT CLIENT_UDP\n");
  return client(p, false);
}

int ouvrir_udp_serveur(Periph& p, int, word*, const word*) {
  if (!port_valide(p)) return -1;
  voir_texte("LANCEMENT SERVEUR_UDP\n");
  if (p.Nom.empty()) p.Nom = net_host_name();
  p.Sock = net_socket(false);
  if (p.Sock < 0) return echec(p, "socket() failed with error %d\n");
  if (!net_bind(p.Sock, port_de(p))) return echec(p, "bind() failed with error %d\n");
  return 0;
}

int lire_socket(Periph& p, Lecture& l) {
  // A `dim` above the default reads into the slot's own buffer (Dim
  // words, made at opening): nothing is asked for here.
  unsigned char tampon[TAMPON_SOCKET + 1];
  const int capacite = std::max(TAMPON_SOCKET, p.Dim);
  unsigned char* octets = capacite > TAMPON_SOCKET ? reinterpret_cast<unsigned char*>(p.Buffer.data()) : tampon;
  const int n = std::clamp(l.n > 0 ? l.n : (p.Dim > 0 ? p.Dim : TAMPON_SOCKET), 1, capacite);
  const bool flux = p.Type == DEV_TCP_CLIENT || p.Type == DEV_TCP_SERVEUR;
  if (bloquant(p)) flush_out();  // what came before shows while the read waits
  // A read with a limit waits for data that long, then takes what is there.
  bool attendre = bloquant(p);
  if (attendre && p.Delai_lecture >= 0) {
    attendre = false;
    if (!net_readable(p.Sock, p.Delai_lecture, interruption_demandee)) {
      if (l.debug && net_error() == NET_WOULD_BLOCK) voir_message(0, MES_TIME_OUT);
      return build_nil(l.v, l.lim);
    }
  }
  long lu;
  if (flux) {
    lu = net_recv(p.Sock, octets, static_cast<size_t>(n), attendre, interruption_demandee);
  } else {
    bool tronque = false;
    NetAddress de;
    lu = net_recvfrom(p.Sock, octets, static_cast<size_t>(n), &de, &tronque, attendre, interruption_demandee);
    if (tronque) voir_texte("WSAEMSGSIZE\n");
    // A server answers whoever wrote to it last.
    if (lu >= 0 && p.Type == DEV_UDP_SERVEUR) {
      p.Distant = de;
      p.Distant_pret = 1;
    }
  }
  if (lu == 0 && flux) {
    voir_int("Closed connection %d\n", l.numero);
    return build_nil(l.v, l.lim);
  }
  if (lu < 0) {
    if (net_error() != NET_WOULD_BLOCK && net_error() != NET_INTERRUPTED) voir_int("recv() failed with error %d\n", net_error());
    return build_nil(l.v, l.lim);
  }
  octets[lu] = '\0';
  if (l.debug) VOIR_CHAR(" recv %s\n", reinterpret_cast<const char*>(octets));
  return resultat_mots(l, p, octets, static_cast<int>(lu));
}

int ecrire_socket(Periph& p, int n, const word* v) {
  const unsigned char* data = nullptr;
  size_t len = 0;
  if (!octets_de_valeur(p, v, false, &data, &len)) return -1;
  if (!p.Distant_pret) {
    voir_int("Periph %d : Cote Distant Inconnu \n", n);
    return -1;
  }
  const bool flux = p.Type == DEV_TCP_CLIENT || p.Type == DEV_TCP_SERVEUR;
  const long r = flux ? net_send(p.Sock, data, len) : net_sendto(p.Sock, data, len, p.Distant);
  if (r < 0) {
    voir_int("send() failed with error %d\n", net_error());
    return -1;
  }
  return 0;
}

void fermer_socket(Periph& p) {
  net_close(p.Sock);
  p.Sock = -1;
}
