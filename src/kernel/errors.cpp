// The fixed-form failure reports. Each prints its optional name, then its
// numbered message of vocabulary 0, or a fixed text before the message
// tables exist.
#include <cstdio>

#include "kernel/keywords.h"
#include "kernel/objet.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

namespace {

void name_of(const char* name) {
  if (name) VOIR_CHAR("%s: ", name);
}

// Message `num`, or `early` at console state 0 (nothing when null).
void report(int num, const char* early) {
  if (kernel().etat_console < 1) {
    if (early) VOIR_CHAR("%s", early);
    return;
  }
  voir_message(0, num);
}

void named(const char* name, int num, const char* early) {
  name_of(name);
  report(num, early);
}

}  // namespace

void err_debordement(const char* n) { named(n, MES_OVERFLOW, "OVERFLOW\a\n"); }
void err_parenthese(const char* n) { named(n, MES_PARENTHESIS_ERROR, "PARENTHESIS ERROR ()\a\n"); }
void err_assignation(const char* n) { named(n, MES_ILLEGAL_ASSIGNMENT, "ILLEGAL ASSIGNMENT\a\n"); }
void err_abandon(const char* n) { named(n, MES_ABANDONMENT, "ABANDONNEMENT\n"); }
void err_manque(const char* n) { named(n, MES_MISSING, "MISSING\a\n"); }
void err_fatale(const char* n) { named(n, MES_FATAL_ERROR, "FATAL ERROR\a\n"); }
void err_warning(const char* n) { named(n, MES_WARNING, nullptr); }
void err_dim_ev(const char* n) { named(n, MES_OVERFLOW_DIM_EV, nullptr); }
void err_incoherent(const char* n) { named(n, MES_INCOHERENT, "INCOHERENT\a\n"); }
void err_tronque(const char* n) { named(n, MES_TRUNCATED_DATA, nullptr); }
void err_operateur(const char* n) { named(n, MES_OPERATOR_ERROR, "OPERATOR ERROR\a\n"); }
void err_bloc(const char* n) { named(n, MES_BLOCK_ERROR, "BLOC ERROR\a\n"); }
void err_crochet(const char* n) { named(n, MES_HOOK_ERROR, "HOOK ERROR []\a\n"); }
void err_nom(const char* n) { named(n, MES_ILLEGAL_NAME, "illegal name"); }
void err_commentaire(const char* n) { named(n, MES_ERROR_COMMENT, "COMMENT ERROR\a\n"); }
void err_illegal(const char* n) { named(n, MES_ILLEGAL, "illegal\a\n"); }
void err_disque(const char* n) { named(n, MES_DISK_FULL, "DISK FULL\a\n"); }
void err_accolade(const char* n) { named(n, MES_BRACKET_ERROR, "BRACKET ERROR {}\a\n"); }
void err_compilation(const char* n) { named(n, MES_COMPILATION_ERROR, "COMPILE ERROR\a\n"); }
void err_execution(const char* n) { named(n, MES_EXECUTION_ERROR, "EXECUTION ERROR\a\n"); }
void err_link(const char* n) { named(n, MES_LINK_ERROR, "LINK ERROR\a\n"); }
void err_lecture(const char* n) { named(n, MES_READ_ERROR, nullptr); }
void err_ecriture(const char* n) { named(n, MES_WRITE_ERROR, nullptr); }
void err_existe(const char* n) { named(n, MES_EXISTS_WRITE, "EXISTS, WRITE (0,1) ?\a"); }
void err_pas_trouve(const char* n) { named(n, MES_NOT_FOUND, "NOT FOUND\a\n"); }

void err_malloc(const char* n, double bytes) {
  name_of(n);
  // The count as a whole number of any size (exact below 2^53).
  char count[64];
  std::snprintf(count, sizeof count, "%.0f: ", bytes);
  VOIR_CHAR("%s", count);
  if (kernel().etat_console < 1) {
    voir_texte("MALLOC ERROR\a\n");
    return;
  }
  voir_message(0, MES_MALLOC_ERROR);
}

void err_imbrication(const char* n) {
  name_of(n);
  voir_texte("NESTING TOO DEEP\a\n");
}

void err_realloc(const char* n, int count) {
  name_of(n);
  VOIR_CHAR("%s", "Reallocation: ");
  if (kernel().etat_console < 1) return;
  voir_int("%d", count);
  voir_message(0, MES_REALLOCATION);
}

void err_vide(const char* n, const Objet* o) {
  name_of(n);
  voir_objet(o);
  report(MES_EMPTY, "EMPTY\a\n");
}

void err_octets(const char* n, long count) {
  name_of(n);
  voir_int("%d", static_cast<int>(count));
  report(MES_BYTES, " BYTES\n");
}

void err_compile_off(const char* n) {
  name_of(n);
  voir_etat(KW_compile, Yes(KW_compile));
  report(MES_COMPILE_OFF, nullptr);
}

void err_link_off(const char* n) {
  name_of(n);
  voir_etat(KW_link, Yes(KW_link));
  report(MES_LINK_OFF, nullptr);
}

void err_non_initialise(const char* func, const char* var) {
  if (func) {
    voir_mot(KW_func);
    VOIR_CHAR("%s ", func);
  }
  if (var) VOIR_CHAR("%s ", var);
  report(MES_NOT_INITIALIZED_VARIABLE, "NOT INITIALIZED VARIABLE\a\n");
}

void err_fonction(const char* n, int number) {
  voir_int("%d ", number);
  if (n) VOIR_CHAR("%s", n);
  report(MES_NON_DEFINED_FUNCTION, "NO DEFINED FUNCTION\a\n");
}

void err_format(const char* n, int line) {
  name_of(n);
  if (kernel().etat_console < 1) {
    VOIR_CHAR("%s", "wrong formated file\a\n");
    VOIR_CHAR("%s", "line");
  } else {
    voir_message(0, MES_BADLY_FORMATTED_FILE);
    voir_message(0, MES_LINE);
  }
  voir_int(" %d\n", line);
}

void err_syntaxe(int num, int code, const char* usage) {
  voir_message(0, num);
  voir_mot(code);
  if (usage) VOIR_CHAR("%s", usage);
}
