// "UCS" (kinds 16 and 17): datagrams with foreign equipment, each one a
// list or a string of the language in the two-letter format given at
// each exchange. A client names its server; a server learns its peer
// from the first datagram and keeps it for ever.
#include <cstdio>
#include <cstring>

#include "device/device_util.h"
#include "device/ucs_table.h"
#include "kernel/report.h"
#include "kernel/keywords.h"
#include "kernel/values.h"
#include "language/args.h"
#include "platform/sockets.h"

namespace {

UcsRecord& record(int n) { return devices().ucs.Table_ucs[n - 1]; }

template <typename... A>
void voir(const char* format, A... a) {
  char t[512];
  std::snprintf(t, sizeof t, format, a...);
  voir_texte(t);
}

// The report of a failed socket call.
void rapport(const char* fonction, const char* appel) {
  voir_texte("Erreur ");
  VOIR_CHAR("dans %s ", fonction);
  VOIR_CHAR("cause %s ", appel);
  voir_int("Code WSA : %d\n", net_error());
}

// A failed set-up: the report, and the socket closed.
int echec_ucs(Periph& p, const char* fonction, const char* appel) {
  rapport(fonction, appel);
  net_close(p.Sock);
  p.Sock = -1;
  return -1;
}

std::string ip(const NetAddress& a) { return net_address_text(a); }

void dump(int n, const char* sens, const unsigned char* b, long len) {
  voir("Periph(%d) %s length %ld, dumping:\n", n, sens, len);
  char ligne[UCS_LIGNE_DUMP];
  for (int i = 0; i < len; i += 16) {
    ucs_ligne_dump(b, static_cast<int>(len), i, ligne);
    voir_texte(ligne);
  }
}

const char* mode(bool bloquant) { return bloquant ? "Blocking" : "Non-Blocking"; }

// The record of device n cleared for a server (17) or a client (16).
UcsRecord& nouveau(int n, int type, bool inv) {
  UcsRecord& r = record(n);
  r = UcsRecord{};
  r.Type = type;
  r.Inv = inv;
  r.Role = type == DEV_UCS_CLIENT;
  r.Type_distant = type == DEV_UCS_SERVEUR;
  return r;
}

}  // namespace

int init_serveur_UCS(int port, Periph& p, bool bloquant, int n, bool inv) {
  UcsRecord& r = nouveau(n, DEV_UCS_SERVEUR, inv);
  if (port == 0) port = PORT_DEFAUT;
  p.Sock = net_socket(false);
  if (p.Sock < 0) return echec_ucs(p, "init_serveur_UCS", "socket");
  if (!net_bind(p.Sock, port)) return echec_ucs(p, "init_serveur_UCS", "bind");
  net_set_blocking(p.Sock, bloquant);
  r.Nom_local = net_host_name();
  if (!net_resolve(r.Nom_local.c_str(), port, &r.Adr_locale)) r.Adr_locale = {0, port};
  r.Adr_locale.port = net_local_port(p.Sock);
  char etiquette[200];
  std::snprintf(etiquette, sizeof etiquette, "Srv_UCS on %s port %d (%s) ", r.Nom_local.c_str(), r.Adr_locale.port,
                ip(r.Adr_locale).c_str());
  p.Nom = etiquette;
  voir("Socket %d ==> Serveur UCS Ouvert en %s (@IP %s) sur le port %d\n", p.Sock, r.Nom_local.c_str(),
       ip(r.Adr_locale).c_str(), r.Adr_locale.port);
  voir("- Attente Datagram in %s mode\n", mode(bloquant));
  r.Local_pret = 1;
  return 0;
}

int init_client_UCS(const char* hote, int port, Periph& p, bool bloquant, int n, bool inv) {
  UcsRecord& r = nouveau(n, DEV_UCS_CLIENT, inv);
  if (port == 0) port = PORT_DEFAUT;
  NetAddress a{0, port};
  if (net_dotted(hote, &a)) {
    voir("Original HostName is an @IP : %s", hote);
  } else if (net_resolve(hote, port, &a)) {
    voir("DNS Translating %s into %s\n", hote, ip(a).c_str());
  } else {
    voir("Unable to resolve %s : Unknown HostName or ill-formed @IP", hote);
    return -1;
  }
  a.port = port;
  std::string nom;
  if (net_reverse(a, &nom)) {
    r.Nom_distant = nom;
    voir("DNS Translating @IP %s into Host %s\n", ip(a).c_str(), nom.c_str());
  } else {
    voir("Unable to Inverse Resolve %s, Host Unknown to DNS\n", ip(a).c_str());
  }
  p.Sock = net_socket(false);
  if (p.Sock < 0) return echec_ucs(p, "init_client_UCS", "socket");
  net_set_blocking(p.Sock, bloquant);
  r.Nom_local = net_host_name();
  if (!net_resolve(r.Nom_local.c_str(), 0, &r.Adr_locale)) r.Adr_locale = {};
  r.Adr_distante = a;
  r.Local_pret = 1;
  r.Distant_pret = 1;
  return 0;
}

void aide_ucs() {
  voir_texte("------- Commandes pour nouveaux peripheriques UDP : UCS ------\n");
  voir_texte("Serveur : ini(\"UCS\") lead periph(n) numero(<Numero_Port>) \n");
  voir_texte("Client  : ini(\"UCS\") nom(\"host/@IP\") periph(n) numero(<Numero_Port>) \n");
  voir_texte(" Options:  fermer(1) : bloquant, debug, inv : Echanges en MSB \n");
  voir_texte("p = periph(n) format(F) et  periph(n) format(F) =  p\n");
  voir_texte(" format F=\"CC\",\"HC\",\"HS\",\"HL\",\"UB\",\"US\",\"UL\",\"SB\",\"SS\",\"SL\",\"FF\" \n\n");
}

namespace {

// `help` shows the commands first; a failed set-up shows them after.
int ouvrir_ucs(word* s, int r) {
  if (r < 0 && !has_word(s, KW_help)) aide_ucs();
  return r;
}

}  // namespace

int ouvrir_ucs_serveur(Periph& p, int n, word* s, const word*) {
  if (has_word(s, KW_help)) aide_ucs();
  return ouvrir_ucs(s, init_serveur_UCS(p.Port, p, p.Bloquant != 0, n, p.Inverse != 0));
}

int ouvrir_ucs_client(Periph& p, int n, word* s, const word*) {
  if (has_word(s, KW_help)) aide_ucs();
  return ouvrir_ucs(s, init_client_UCS(p.Nom.empty() ? "127.0.0.1" : p.Nom.c_str(), p.Port, p, p.Bloquant != 0, n,
                                       p.Inverse != 0));
}

// Sends the list v in the device's format: 0 once sent, a positive code
// after a report (the device stays open).
int stocker_socket_UCS(int n, Periph& p, const word* v) {
  const UcsFormat& f = ucs_format(p.Format_echange);
  UcsRecord& r = record(n);
  const bool msb = r.Inv != 0;
  if (!r.Local_pret || !r.Distant_pret) {
    voir("Periph %d : Cote Distant Inconnu \n", n);
    return 1;
  }
  const bool chaine = tag(v) == T_CHAR;
  const bool veut_chaine = f.genre == UCS_TEXTE || f.genre == UCS_HEXA;
  const bool bon = veut_chaine ? chaine : tag(v) == T_FLOAT;
  // The word printed is the other kind's: kept as users know it.
  if (!bon) voir("User Error on Orvela List Format for Sending, %s expected\n", veut_chaine ? "Float" : "Char");
  if (!bon && f.genre != UCS_TEXTE) return 1;
  if (f.genre == UCS_PARTIE) return 1;
  const unsigned char* envoi = devices().ucs.Tampon;
  long longueur = 0;
  if (f.genre == UCS_TEXTE) {
    // In place: a string's characters, or anything else's raw data.
    envoi = reinterpret_cast<const unsigned char*>(data(v));
    longueur = chaine ? text_bytes(v) : static_cast<long>(size(v)) * 4 - 16;
  } else if (f.genre == UCS_FLOTTANT && !msb) {
    envoi = reinterpret_cast<const unsigned char*>(data(v));
    longueur = static_cast<long>(size(v)) * 4 - 16;
  } else {
    const int compte = chaine ? text_bytes(v) : elements(v);
    const UcsEncodage e = chaine ? ucs_encoder_hexa(text(v), compte, f, msb, devices().ucs.Tampon, UCS_TAMPON)
                                 : ucs_encoder_nombres(data(v), compte, f, msb, devices().ucs.Tampon, UCS_TAMPON);
    if (e.tronque())
      voir("Sent Message Truncated for Format %s : Orvela Lg %d -> Cur Lg %d > Max Lg %d\n", f.nom, compte, e.besoin,
           UCS_TAMPON);
    longueur = e.octets;
  }
  if (longueur <= 0) return 0;
  if (p.Debug) {
    voir("Periph %d : Sending msg to %s port %d \n", n, ip(r.Adr_distante).c_str(), r.Adr_distante.port);
    dump(n, "Sending", envoi, longueur);
  }
  if (net_sendto(p.Sock, envoi, static_cast<size_t>(longueur), r.Adr_distante) < 1) {
    voir("Periph %d send ERROR (sock = %d)\n", n, p.Sock);
    rapport("stocker_socket_UCS", "sendto");
    return 5;
  }
  return 0;
}

namespace {

// The datagram of `lu` bytes (`reel` before the kernel cut it) made the
// value at l.v by the format f.
void decoder(const UcsFormat& f, bool msb, const Periph& p, Lecture& l, const unsigned char* b, long lu, long reel,
             long room) {
  const int n = static_cast<int>(lu);
  switch (f.genre) {
    case UCS_TEXTE:
      if (reel > lu) voir("Received Message Truncated for Format CC : Rx Lg %ld > Orvela Lg %ld\n", reel, room);
      build_text_in_place(l.v, l.lim, static_cast<size_t>(lu));
      return;
    case UCS_HEXA: {
      const int place = static_cast<int>(room) - 1;
      const UcsDecodage d = ucs_decoder_hexa(b, n, f, msb, text(l.v), place > 0 ? place : 0);
      // The limit told is the room, or what the buffer kept of a datagram
      // the kernel cut.
      if (d.tronque() || reel > lu)
        voir("Received Message Truncated for Format %s : Rx Lg %ld -> %d > Orvela Lg %d\n", f.nom, reel,
             reel > lu ? static_cast<int>(reel) * 2 : d.voulus, d.tronque() ? place : d.elements);
      build_text_in_place(l.v, l.lim, static_cast<size_t>(d.elements));
      return;
    }
    case UCS_PARTIE: {
      const UcsPartie s = ucs_decoder_partie(b, n, p.Sp_dep, p.Sp_taille, msb, data(l.v), static_cast<int>(room / 4));
      if (s.ignore) {
        voir("Received Message Format SP, Ignored Dep %d >= Len_msg %d\n", p.Sp_dep, n);
        build_nil(l.v, l.lim);
        return;
      }
      if (s.court) voir("Received Message Format SP, Required Size %d Satisfied up to %d bytes\n", p.Sp_taille,
                        s.longueur - (s.impair ? 1 : 0));
      if (s.impair) voir("Received Message Format SP, Odd Byte Added Len_msg %d not even\n", s.longueur - 1);
      build_head(l.v, 4 + s.d.elements, T_FLOAT, s.d.elements);  // decoded in place, within room
      return;
    }
    case UCS_FLOTTANT:
    case UCS_ENTIER: {
      const int place = static_cast<int>(room / 4);
      const bool direct = f.genre == UCS_FLOTTANT && !msb;
      // Direct "FF" already stands in the result's data.
      UcsDecodage d;
      if (direct) {
        d.voulus = n / 4;
        d.elements = d.voulus;
      } else {
        d = ucs_decoder_nombres(b, n, f, msb, data(l.v), place);
      }
      if (f.genre == UCS_FLOTTANT) {
        if (reel > lu || d.tronque())
          voir("ReceivedMessage Truncated for Format FF : Rx Lg %ld > Orvela Lg %d\n", reel,
               d.tronque() ? place * 4 : d.elements * 4);
        if (n % 4) {
          if (direct) voir("Periph %d: Received Message Truncated for Format FF : Float Sequence not multiple of %d bytes\n", l.numero, 4);
          else voir("ReceivedMessage Truncated for Format FF : Float Sequence not multiple of %d bytes\n", 4);
        }
      } else if (d.tronque() || reel > lu) {
        voir("Received Message Truncated for Format %s : Rx Lg %ld -> %d > Orvela Lg %d\n", f.nom, reel,
             static_cast<int>((reel + f.largeur - 1) / f.largeur), d.tronque() ? place : d.elements);
      }
      build_head(l.v, 4 + d.elements, T_FLOAT, d.elements);  // decoded in place, within room
      return;
    }
  }
}

}  // namespace

// Receives one datagram into l.v in the device's format. 0 with a value
// (NIL when nothing came), the code of the case in *code: 1 local side
// not ready, 2 an empty datagram, 3 nothing there, 4 an error.
int lire_socket_UCS(Periph& p, Lecture& l, int* code) {
  const int n = l.numero;
  UcsRecord& r = record(n);
  const UcsFormat& f = ucs_format(p.Format_echange);
  const bool msb = r.Inv != 0;
  long room = static_cast<long>(l.lim - l.v) * 4 - 20;
  if (room < 0) room = 0;
  const bool direct = f.genre == UCS_TEXTE || (f.genre == UCS_FLOTTANT && !msb);
  *code = 0;
  if (!r.Local_pret) {
    voir("Periph %d : Cote Local Non Pret\n", n);
    *code = 1;
    return build_nil(l.v, l.lim);
  }
  unsigned char* b = direct ? reinterpret_cast<unsigned char*>(data(l.v)) : devices().ucs.Tampon;
  const long place = direct ? room : UCS_TAMPON;
  if (p.Bloquant) flush_out();  // what came before shows while the read waits
  long reel = 0;
  const long lu = net_recvfrom_len(p.Sock, b, static_cast<size_t>(place), &r.Adr_source, &reel, p.Bloquant != 0,
                                   interruption_demandee);
  if (lu < 1) {
    r.En_connexion = 0;
    if (lu == 0) {
      voir("Periph %d : Connection closing...\n", n);
      *code = 2;
    } else if (net_error() == NET_WOULD_BLOCK || net_error() == NET_INTERRUPTED) {
      if (l.debug) voir("Periph %d : WouldBlock...\n", n);
      *code = 3;
    } else {
      voir("Periph %d : Erreur dans lire_socket_UCS cause recvfrom Code WSA : %d\n", n, net_error());
      *code = 4;
    }
    return build_nil(l.v, l.lim);
  }
  if (lu < place) b[lu] = 0;
  if (l.debug) {
    voir("Periph %d : Received msg from %s port %d \n", n, ip(r.Adr_source).c_str(), r.Adr_source.port);
    dump(n, "Received", b, lu);
  }
  r.En_connexion = 1;
  if (!r.Distant_pret) {
    r.Distant_pret = 1;
    r.Adr_distante = r.Adr_source;
    std::string nom;
    if (net_reverse(r.Adr_distante, &nom)) r.Nom_distant = nom;
  }
  decoder(f, msb, p, l, b, lu, reel, room);
  return 0;
}

int lire_ucs(Periph& p, Lecture& l) {
  int code = 0;
  return lire_socket_UCS(p, l, &code);
}

int ecrire_ucs(Periph& p, int n, const word* v) {
  stocker_socket_UCS(n, p, v);
  return 0;
}

void voir_ucs(int n) {
  const Periph* p = periph_ouvert(n);
  if (!p || (p->Type != DEV_UCS_CLIENT && p->Type != DEV_UCS_SERVEUR)) return;
  const UcsRecord& r = record(n);
  auto oui = [](int v) { return v ? "Oui" : "Non"; };
  voir(" -- Nom Periph : %s Socket : %d Echange : %s \n", p->Nom.c_str(), p->Sock, r.Inv ? "MsbFirst" : "LsbFirst");
  voir(" Local Pret %s Type %s Nom %s (@IP %s) port %d\n", oui(r.Local_pret), r.Role == 0 ? "Serveur" : "Client",
       r.Nom_local.c_str(), ip(r.Adr_locale).c_str(), r.Adr_locale.port);
  voir(" Distant Pret %s Type %s Nom %s (@IP %s) port %d\n", oui(r.Distant_pret),
       r.Type_distant ? "Client" : "Serveur", r.Nom_distant.c_str(), ip(r.Adr_distante).c_str(),
       r.Adr_distante.port);
  voir(" En Connexion %s @IP %s port %d\n", oui(r.En_connexion), ip(r.Adr_source).c_str(), r.Adr_source.port);
}

void fermer_ucs(Periph& p) {
  net_close(p.Sock);
  p.Sock = -1;
}
