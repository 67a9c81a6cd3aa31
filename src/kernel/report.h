// Console printing and failure reports. All console text goes through
// VOIR_CHAR and its family: bells are dropped when `ring` is off, long
// strings are cut at `pri`, and output is copied to the console log object.
#pragma once
#include "kernel/kernel.h"
#include "kernel/message_names.h"
#include "kernel/word.h"

struct Objet;

void VOIR_CHAR(const char* format, const char* s);
void voir_car(int c);
void voir_int(const char* format, int v);
void voir_int2(const char* format, int a, int b);
void voir_float(const char* format, float f);
void voir_float2(const char* format, float a, float b);
void voir_mot(int code);
// Message `num` of vocabulary `voc` (names in kernel/message_names.h).
void voir_message(int voc, int num);
void voir_etat(int code, int value);
void voir_objet(const Objet* o);
// Shorthand: a literal text through VOIR_CHAR with the format "%s".
inline void voir_texte(const char* s) { VOIR_CHAR("%s", s); }
// Rings the bell once (unless `ring` is off) and flushes.
void bell();
void flush_out();

// The one trace line of a failing routine: its name, when the trace is on.
void trace_fail(const char* name);
#define TRACE_FAIL(name) \
  do { if (kernel().trace_err) trace_fail(name); } while (0)

// Fixed-form reports; `name` is printed first with "%s: " when non-null.
void err_debordement(const char* name);
void err_parenthese(const char* name);
void err_assignation(const char* name);
void err_abandon(const char* name);
void err_manque(const char* name);
void err_fatale(const char* name);
void err_warning(const char* name);
void err_dim_ev(const char* name);
void err_incoherent(const char* name);
void err_tronque(const char* name);
// The count of bytes that could not be had, then message 16.
void err_malloc(const char* name, double bytes);
// A text or a loop nested deeper than the native stack allows.
void err_imbrication(const char* name);
void err_realloc(const char* name, int count);
void err_vide(const char* name, const Objet* o);
void err_octets(const char* name, long count);
void err_pas_trouve(const char* name);
void err_compile_off(const char* name);
void err_operateur(const char* name);
void err_bloc(const char* name);
void err_non_initialise(const char* func, const char* var);
void err_lecture(const char* name);
void err_ecriture(const char* name);
void err_existe(const char* name);
void err_fonction(const char* name, int number);
void err_link_off(const char* name);
void err_crochet(const char* name);
void err_nom(const char* name);
void err_commentaire(const char* name);
void err_illegal(const char* name);
void err_disque(const char* name);
void err_accolade(const char* name);
void err_format(const char* name, int line);
void err_compilation(const char* name);
void err_execution(const char* name);
void err_link(const char* name);
// Syntax report: message 118 or 104, the keyword, and a usage text.
void err_syntaxe(int num, int code, const char* usage);
// Bad object reference: keyword, selector value, index, number, text,
// ending with NOT FOUND (as in "vol 3 NOT FOUND").
void err_objet(int code, const word* value, int index, int number, const char* text);

// Value printing as the print command uses it. Returns 0 or -1.
int print_value(const word* v);

// The bell driven directly (the `ring` command): `n` bells, flushed one by
// one, `delay_ms` apart when above 1; a negative `n` sets the switch to 2.
void ring_bells(int n, int delay_ms);
