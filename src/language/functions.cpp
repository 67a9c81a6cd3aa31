#include "language/functions.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "language/compile.h"
#include "language/lang_state.h"

namespace {

// Length of the name at the head of a source text: up to "(" or a blank.
size_t name_length(const char* s) {
  size_t n = 0;
  while (s[n] && s[n] != '(' && s[n] != ' ' && s[n] != '\t' && s[n] != '\n') n++;
  return n;
}

const char* skip_blanks(const char* s) {
  while (*s == ' ' || *s == '\t' || *s == '\n' || *s == '\r') s++;
  return s;
}

}  // namespace

const char* source_of(const Objet* o) {
  if (!o || !o->local || size(o->local) < 5 || tag(o->local) != T_CHAR) return nullptr;
  return text(o->local);
}

Objet* get_fonction(const char* name) {
  if (!name) return nullptr;
  size_t len = strlen(name);
  for (Objet* o = chaine_classe(KW_func)->next; o; o = o->next) {
    if (o->kind != KW_func || o->subkind != 0) continue;
    const char* s = source_of(o);
    if (!s) continue;
    s = skip_blanks(s);
    if (name_length(s) == len && strncmp(s, name, len) == 0) return o;
  }
  return nullptr;
}

std::string function_name(const char* source) {
  const char* s = skip_blanks(source);
  return std::string(s, name_length(s));
}

bloc source_value(const char* source) {
  size_t words = strlen(source) / 4 + 5;
  bloc value = alloue_bloc(static_cast<int>(words));
  if (!value) return nullptr;
  build_text(value, nullptr, source);
  return value;
}

Objet* define_function(const char* source, bool from_file) {
  std::string name = function_name(source);
  if (name.empty()) return nullptr;
  bloc value = source_value(source);
  if (!value) return nullptr;
  Objet* f = get_fonction(name.c_str());
  // The same text again changes nothing that needs saving.
  const bool same = f && source_of(f) && strcmp(source_of(f), source) == 0;
  if (!f) {
    f = cre_objet(chaine_classe(KW_func), KW_func, 0, nullptr, nullptr, 0);
    if (!f) {
      libere_bloc(value);
      return nullptr;
    }
  }
  libere_valeur(f->local);
  f->local = value;
  libere_bloc(f->code);
  f->code = nullptr;
  if (from_file) f->unsaved = 0;
  else if (!same) f->unsaved = 1;
  lang().link_state = 0;      // calls are linked again before the next call
  return f;
}

bool nom_mot_cle(const char* name) {
  int voc = 0, code = 0;
  return name && *name && cherche_mot(name, &voc, &code) == 0;
}

void check_definition(Objet* f) {
  // A keyword for a name, or a text that does not compile, is told now by
  // the compiler's own messages. The code is then let go: functions are
  // compiled and linked together at the first call, as before. With `no
  // compile` functions stay as text until the switch is back.
  if (!source_of(f) || Yes(KW_compile) < 1 || f->code) return;
  LanguageState& L = lang();
  const int listing = L.listing, listing_link = L.listing_link;
  L.listing = L.listing_link = 0;
  a_compile(f);
  L.listing = listing;
  L.listing_link = listing_link;
  libere_bloc(f->code);
  f->code = nullptr;
  L.link_state = 0;
}

void err_fonction_inconnue(const char* name) {
  voir_mot(KW_func);
  VOIR_CHAR("%s ", name);
  err_pas_trouve(nullptr);
}
