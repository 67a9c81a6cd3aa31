// The kinds of device as one table: their `ini` strings, printed labels
// and operations. A kind without an operation refuses it.
#pragma once
#include "device/device_table.h"

// Where a read leaves its value: a bloc at `v`, never past `lim`. `n`
// values are asked (0: the kind's own count); `format` is T_CHAR or
// T_FLOAT; `numero` is the device number; `debug` makes the read print
// (the slot's own `debug` does so for every read).
struct Lecture {
  word* v;
  const word* lim;
  int n;
  int format;
  int numero;
  bool debug;
};

struct KindRow {
  int Type;
  const char* ini;         // the string of `ini`; null for none
  int lead;                // the kind that `lead` makes of the same string
  const char* etiquette;   // the printed label, %s the name
  // Opens slot p (its options already read) from the command `s`: 0, or
  // negative after a report (the slot then stays free).
  int (*ouvrir)(Periph& p, int n, word* s, const word* lim);
  // 0 with a value at l.v (NIL when nothing came), negative after a report.
  int (*lire)(Periph& p, Lecture& l);
  // Writes the value v: 0, or negative after a report.
  int (*ecrire)(Periph& p, int n, const word* v);
  void (*fermer)(Periph& p);
  // The kind's own words in a read or write command, before the usual
  // ones: 0 when it did the command, 1 for the usual read or write,
  // negative after a report.
  int (*commande)(Periph& p, int n, word* s, const word* ob) = nullptr;
};

const KindRow* kind_row(int type);
// The row of an `ini` string, the server form with `lead`; null when unknown.
const KindRow* kind_by_ini(const char* ini, bool lead);

// Opens slot n as kind k: the settings of `ini` read from the command,
// then those of `regler` when given, then the kind's own opening; the
// slot is printed as opened. 0, or negative after a report (a slot in
// use keeps its device, a failed opening leaves it free).
int ouvrir_slot(word* s, const word* lim, int n, const KindRow& k, void (*regler)(word* s, Periph& p));

// The kinds' operations, each in its own file.
int ouvrir_fichier(Periph& p, int n, word* s, const word* lim);
int lire_fichier(Periph& p, Lecture& l);
int ecrire_fichier(Periph& p, int n, const word* v);

int ouvrir_datas(Periph& p, int n, word* s, const word* lim);
int lire_datas(Periph& p, Lecture& l);

int ouvrir_memoire(Periph& p, int n, word* s, const word* lim);
int lire_memoire(Periph& p, Lecture& l);
int ecrire_memoire(Periph& p, int n, const word* v);
void fermer_memoire(Periph& p);

int ouvrir_serie(Periph& p, int n, word* s, const word* lim);
int lire_serie(Periph& p, Lecture& l);
int ecrire_serie(Periph& p, int n, const word* v);
void fermer_serie(Periph& p);

int ouvrir_tcp_client(Periph& p, int n, word* s, const word* lim);
int ouvrir_tcp_serveur(Periph& p, int n, word* s, const word* lim);
int ouvrir_udp_client(Periph& p, int n, word* s, const word* lim);
int ouvrir_udp_serveur(Periph& p, int n, word* s, const word* lim);
int lire_socket(Periph& p, Lecture& l);
// The older pair of UDP commands (udp_pair.cpp): `device(n) texture(port)`
// makes slot n a UDP server with `lead`, a client otherwise.
int DEVICE_TYPE_SERVEUR_UDP(word* s, const word* lim, int n);
int DEVICE_TYPE_CLIENT_UDP(word* s, const word* lim, int n);
// `device texture` with no device: `device` and the pair's usage.
void usage_udp();
int ecrire_socket(Periph& p, int n, const word* v);
void fermer_socket(Periph& p);

// "UCS": the datagram exchange (kind_ucs.cpp).
int init_serveur_UCS(int port, Periph& p, bool bloquant, int n, bool inv);
int init_client_UCS(const char* hote, int port, Periph& p, bool bloquant, int n, bool inv);
int stocker_socket_UCS(int n, Periph& p, const word* v);
int lire_socket_UCS(Periph& p, Lecture& l, int* code);
int ouvrir_ucs_serveur(Periph& p, int n, word* s, const word* lim);
int ouvrir_ucs_client(Periph& p, int n, word* s, const word* lim);
int lire_ucs(Periph& p, Lecture& l);
int ecrire_ucs(Periph& p, int n, const word* v);
void fermer_ucs(Periph& p);
// The commands of the "UCS" devices, as `help` in their `ini` shows them.
void aide_ucs();
// The state block of a "UCS" device n; nothing for another kind.
void voir_ucs(int n);

int ouvrir_midi(Periph& p, int n, word* s, const word* lim);
int lire_midi(Periph& p, Lecture& l);
void fermer_midi(Periph& p);

int lire_souris(Periph& p, Lecture& l);
int ouvrir_audio(Periph& p, int n, word* s, const word* lim);
int lire_audio(Periph& p, Lecture& l);
int ouvrir_horloge(Periph& p, int n, word* s, const word* lim);
int lire_horloge(Periph& p, Lecture& l);
int ecrire_horloge(Periph& p, int n, const word* v);
int ouvrir_interruption(Periph& p, int n, word* s, const word* lim);
int lire_interruption(Periph& p, Lecture& l);
// Message 104 "NOT IMPLEMENTED": the slot stays free.
int ouvrir_non_implemente(Periph& p, int n, word* s, const word* lim);
