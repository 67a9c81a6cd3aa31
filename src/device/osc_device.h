// The OSC devices (kinds 20 and 21): a client toward a host and port
// (`device(n) ini("OSC") name("host") number(port)`) or a server on a
// port (`device(n) ini("OSC") lead number(port)`). What comes waits in a
// queue made at opening, one slot a message, read in order by
// `device(n)`; the messages whose address matches a route (`device(n)
// format("/pattern") func("f")`) go to their function instead, between
// the stages of an image or before a console line. `device(n)
// format("/address") [type("if")] = v` sends.
#pragma once
#include <string>
#include <vector>

#include "device/device_kinds.h"
#include "platform/osc.h"

struct OscRoute {
  std::string motif;  // an OSC address pattern
  word fonction = 0;  // handle of the function object
};

struct OscDevice {
  OscEnd* end = nullptr;
  int numero = 0;
  int mots_slot = 0;          // words of a slot: the largest message value
  int slots = 0;
  std::vector<word> file;     // slots * mots_slot words
  int tete = 0, nombre = 0;   // the oldest message and how many wait
  long perdus = 0;            // queue full, since last told
  long trop_longs = 0;        // past a slot, since last told
  long recus = 0;             // messages taken since the opening
  std::vector<OscRoute> routes;
};

// A message as a value at `at`: a list of its address, then its
// arguments, consecutive numbers (int32, float32, int64, double, char,
// true 1, false 0) in one FLOAT part, each string a CHAR part, each blob
// a FLOAT part of its bytes; nil and infinitum give nothing. 0, or -12
// when it does not fit before `lim` (nothing is reported).
int osc_valeur_message(word* at, const word* lim, const char* path, const OscArg* args, int argc);
// Adds the value v to the message being built: with `types`, one OSC
// type letter an argument (i f h d c: the next number; s S: the next
// text; b: the rest of a part of numbers, a byte each, or the next text's
// bytes; T F N I: nothing); without, each number a float32 and each text
// a string. False after a message when the value does not fit the types.
bool osc_ajoute_valeur(OscEnd* e, const word* v, const char* types);

int ouvrir_osc_client(Periph& p, int n, word* s, const word* lim);
int ouvrir_osc_serveur(Periph& p, int n, word* s, const word* lim);
int lire_osc(Periph& p, Lecture& l);
int ecrire_osc(Periph& p, int n, const word* v);
void fermer_osc(Periph& p);
// `format`, `type` and `func` of an OSC device's command: 0 when done, 1 for the
// usual read, negative after a report.
int commande_osc(Periph& p, int n, word* s, const word* ob);
// Takes what came on every OSC device, then runs the routes: at the
// input stage of each image, and before each console line.
int messages_osc();
// The forms of the OSC devices, for `help` and a bad command.
void usage_osc();
