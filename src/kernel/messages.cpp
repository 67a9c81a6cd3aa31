// Numbered messages, keyword names and object descriptions.
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/objet.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"

namespace {

// Texts that stand in for a few messages before the tables exist.
const char* early_text(int num) {
  switch (num) {
    case 28: return "erreur allocation\a\n";
    case 36: return "erreur fichier\a\n";
    case 37: return "erreur en ecriture\a\n";
    case 64: return "erreur commentaire\a\n";
    case 67: return "disque plein\a\n";
    default: return nullptr;
  }
}

}  // namespace

void voir_message(int voc, int num) {
  VocabState& v = vocab();
  KernelState& k = kernel();
  if (k.etat_console < 1) {
    if (voc == 0) VOIR_CHAR("%s", early_text(num));
    return;
  }
  if (voc < 0 || voc >= v.nb_voc) {
    voir_int2("env %d !$ [0,%d]\a\n", voc, v.nb_voc - 1);
    return;
  }
  if (num < 0 || num >= v.nb_mes[voc]) {
    voir_int2("mes %d != [0,%d]\a\n", num, v.nb_mes[voc] - 1);
    return;
  }
  const char* text = static_cast<size_t>(num) < v.mes[voc].size() ? v.mes[voc][num].c_str() : "";
  if ((k.mode_courant == 85 || k.mode_courant == 156) && voc == 0 && num != 0 && num != 1 &&
      num != 48)
    VOIR_CHAR("%s", text);
  Yes(KW_print) = -2;
  VOIR_CHAR("%s", text);
  Yes(KW_print) = -1;
  out_flush();
}

void voir_mot(int code) {
  if (code < 0) {
    VOIR_CHAR("%s", "-");
    code = -code;
  }
  if (code >= NB_CODES) {
    voir_int2("%d != [0, %d]\a\n", code, NB_CODES - 1);
    return;
  }
  const char* name = vocab().name[code];
  if (!name || !*name) name = "(name = 0)";
  VOIR_CHAR("%s ", name);
}

void voir_etat(int code, int value) {
  voir_mot(code);
  VOIR_CHAR("%s", value > 0 ? " ON\n" : " OFF\a\n");
}

void voir_objet(const Objet* o) {
  if (!o) return;
  VOIR_CHAR("%s", " ");
  for (int code : {o->kind, o->subkind, o->kind2, o->kind3})
    if (code) voir_mot(code);
  voir_int("(%d)", o->id);
  if (o->name) VOIR_CHAR("(%s)", o->name);
  VOIR_CHAR("%s", "\n");
}
