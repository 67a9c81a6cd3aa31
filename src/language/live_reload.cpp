#include "language/live_reload.h"

#include <algorithm>
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/compile.h"
#include "language/eval.h"
#include "language/function_files.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "platform/file_watch.h"
#include "platform/process.h"

ReloadState& rechargement() {
  static ReloadState r;
  return r;
}

namespace {

// What a function was before the file was read again: its text (empty
// when the file brings it new) and whether the console had changed it.
struct Avant {
  std::string nom;
  std::string source;
  int unsaved = 0;
};

// Compiles f as its first call would, the listings off; the code is let
// go after, as a new definition's is: functions are linked together at
// the next call.
bool compile(Objet* f) {
  LanguageState& L = lang();
  const int listing = L.listing, listing_link = L.listing_link;
  L.listing = L.listing_link = 0;
  const int r = a_compile(f);
  L.listing = listing;
  L.listing_link = listing_link;
  libere_bloc(f->code);
  f->code = nullptr;
  L.link_state = 0;
  return r >= 0;
}

// The functions as they were: a text given back, a function the file
// brought removed.
void restaure(const std::vector<Avant>& avant) {
  for (const Avant& a : avant) {
    if (!a.source.empty()) {
      if (Objet* f = define_function(a.source.c_str(), true)) f->unsaved = a.unsaved;
    } else if (Objet* f = get_fonction(a.nom.c_str())) {
      rem_objet(f);
    }
  }
  lang().link_state = 0;
}

void garde_ancienne(const char* path) { VOIR_CHAR("reload %s: the previous version runs\n", path); }

}  // namespace

void reload_note_file(const std::string& path) {
  ReloadState& R = rechargement();
  const std::string f = watch_path(path);
  if (std::find(R.fichiers.begin(), R.fichiers.end(), f) == R.fichiers.end()) R.fichiers.push_back(f);
}

int reload_file(const std::string& path) {
  std::string text;
  if (!file_read_all(path, text)) {
    err_lecture(path.c_str());
    garde_ancienne(path.c_str());
    return -1;
  }
  text.resize(strlen(text.c_str()));
  std::vector<FunctionPiece> pieces;
  if (function_pieces(text, pieces) < 0) {
    garde_ancienne(path.c_str());
    return -1;
  }
  std::vector<Avant> avant;
  for (const FunctionPiece& p : pieces) {
    Avant a{function_name(p.source.c_str()), "", 0};
    if (const Objet* f = get_fonction(a.nom.c_str())) {
      a.source = source_of(f) ? source_of(f) : "";
      a.unsaved = f->unsaved;
    }
    avant.push_back(a);
  }
  std::vector<Objet*> nouvelles;
  bool bon = true;
  for (const FunctionPiece& p : pieces) {
    Objet* f = define_function(p.source.c_str(), true);
    if (!f) {
      voir_message(0, MES_FUNCTION_LIST_USAGE);
      bon = false;
      break;
    }
    nouvelles.push_back(f);
  }
  // All of the file is defined before any is compiled: its functions may
  // call one another. Every mistake is told, not only the first.
  if (bon && Yes(KW_compile) > 0)
    for (Objet* f : nouvelles) bon = compile(f) && bon;
  if (!bon) {
    restaure(avant);
    garde_ancienne(path.c_str());
    return -1;
  }
  std::string noms;
  for (size_t i = 0; i < pieces.size(); i++) {
    keep_function_comment(avant[i].nom, pieces[i].comment);
    if (avant[i].unsaved)
      VOIR_CHAR("func %s: the file's version replaces the one changed at the console\n", avant[i].nom.c_str());
    noms += " " + avant[i].nom;
  }
  VOIR_CHAR("reload %s:", path.c_str());
  VOIR_CHAR("%s\n", noms.c_str());
  return 0;
}

void reload_poll() {
  ReloadState& R = rechargement();
  if (Yes(KW_reload) <= 0 || R.fichiers.empty() || R.sans_veille) return;
  // Inside a function the code being run would be let go under it.
  if (eval_state().depth > 0) return;
  if (!R.veille && !(R.veille = watch_open())) {
    R.sans_veille = true;
    voir_texte("reload: the system gives no watch of files\n");
    return;
  }
  for (; R.surveilles < R.fichiers.size(); R.surveilles++)
    if (!watch_add(R.veille, R.fichiers[R.surveilles]))
      VOIR_CHAR("reload: %s cannot be watched\n", R.fichiers[R.surveilles].c_str());
  watch_changed(R.veille, R.changes);
  for (const std::string& f : R.changes) reload_file(f);
}

void entre_lignes() {
  reload_poll();
  for (void (*h)() : lang().between_lines) h();
}
