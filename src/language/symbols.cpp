// Symbol tables: entries laid end to end in one word array, a zero word
// behind the last. The array doubles when an entry does not fit.
#include "language/symbols.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

namespace {

constexpr int ENTETE = 5;  // count, kind, ordinal, function, name words + 2

int mots_pour(size_t octets) { return static_cast<int>(octets / sizeof(word) + 1); }

// Makes room for `mots` more words plus the final zero.
int agrandir(Symboles* s, int mots) {
  int capacite = s->capacity > 0 ? s->capacity : 1024;
  while (s->used + mots + 1 > capacite) capacite *= 2;
  if (capacite == s->capacity) return 0;
  auto* t = static_cast<bloc>(alloue_mem(static_cast<size_t>(capacite) * sizeof(word)));
  if (!t) return -1;
  if (s->table) std::memcpy(t, s->table, static_cast<size_t>(s->used + 1) * sizeof(word));
  else t[0] = 0;
  if (s->table && Yes(KW_edit) > 1) err_realloc(nullptr, capacite);
  libere_mem(s->table);
  s->table = t;
  s->capacity = capacite;
  return 0;
}

// Appends the header and name of an entry with `extra` words behind the
// name; returns the entry, or null after a report.
word* nouvelle_entree(Symboles* s, int kind, const char* name, int extra) {
  if (name[0] == '+' || name[0] == '-') {
    err_nom(name);
    return nullptr;
  }
  int nom = mots_pour(std::strlen(name));
  int total = ENTETE + nom + extra;
  if (agrandir(s, total) < 0) return nullptr;
  word* e = s->table + s->used;
  std::memset(e, 0, static_cast<size_t>(total + 1) * sizeof(word));
  e[0] = total;
  e[1] = kind;
  e[2] = -s->count;
  e[4] = nom + 2;
  std::strcpy(reinterpret_cast<char*>(e + ENTETE), name);
  s->used += total;
  s->count++;
  return e;
}

}  // namespace

int symb_ini(Symboles* s, int capacity) {
  symb_free(s);
  s->table = static_cast<bloc>(alloue_mem(static_cast<size_t>(capacity > 1 ? capacity : 1) * sizeof(word)));
  if (!s->table) return -1;
  s->table[0] = 0;
  s->capacity = capacity > 1 ? capacity : 1;
  return 0;
}

void symb_free(Symboles* s) {
  libere_mem(s->table);
  *s = Symboles{};
}

int symb_add(Symboles* s, int kind, const char* name, const word* value, Objet* function) {
  int extra = value ? bloc_len(value) : 0;
  word* e = nouvelle_entree(s, kind, name, extra);
  if (!e) return -1;
  if (function) e[3] = objet_handle(function);
  if (value) std::memcpy(e + 3 + e[4], value, static_cast<size_t>(extra) * sizeof(word));
  return s->count - 1;
}

int symb_add_macro(Symboles* s, const char* name, const char* replacement) {
  size_t longueur = std::strlen(replacement);
  word* e = nouvelle_entree(s, C_MACRO, name, 1 + mots_pour(longueur));
  if (!e) return -1;
  e[2] = 2;
  word* fin_nom = e + 3 + e[4];
  fin_nom[0] = static_cast<word>(longueur);
  std::memcpy(fin_nom + 1, replacement, longueur + 1);
  return s->count - 1;
}

int symb_find(const Symboles* s, int kind, const char* name) {
  if (!s->table) return -1;
  int ordinal = 0;
  for (const word* e = s->table; e[0] > 0; e += e[0], ordinal++)
    if ((kind == 0 || e[1] == kind) && std::strcmp(name, reinterpret_cast<const char*>(e + ENTETE)) == 0)
      return ordinal;
  return -1;
}

word* symb_entry(const Symboles* s, int ordinal) {
  if (!s->table || ordinal < 0) return nullptr;
  word* e = s->table;
  for (int i = 0; e[0] > 0; e += e[0], i++)
    if (i == ordinal) return e;
  return nullptr;
}

const char* symb_name(const word* e) { return reinterpret_cast<const char*>(e + ENTETE); }

const char* symb_macro_text(const word* e) { return reinterpret_cast<const char*>(e + 3 + e[4] + 1); }

bloc symb_value(word* e) {
  if (e[1] == C_MACRO) return nullptr;
  int debut = 3 + e[4];
  return debut < e[0] ? e + debut : nullptr;
}
