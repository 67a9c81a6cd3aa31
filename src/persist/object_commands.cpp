// `write vol(1,2) name("file")` and `read vol name("file")`: object files
// through the kind word that chooses the chain; and the unsaved objects
// that `bye` asks about and that a signal's end writes to recovery files.
#include <cmath>
#include <cstring>

#include "image/image_commands.h"
#include "kernel/bye.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/file_out.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "persist/object_file.h"
#include "platform/process.h"
#include "language/args.h"
#include "scene/graphic.h"
#include "scene/selection.h"
#include "scene/unsaved.h"

namespace {

// The kinds read from object files. Trajectories are written too, so that
// their unsaved work can be saved, but they are no kind of the reader.
bool mot_fichier(int code) {
  switch (code) {
    case KW_field: case KW_fog: case KW_genetic: case KW_law: case KW_light: case KW_memory: case KW_menu:
    case KW_network: case KW_object: case KW_scale: case KW_view: case KW_vol:
      return true;
    default:
      return false;
  }
}

word* item_fichier(word* s, bool writing) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (mot_fichier(item[2]) || (writing && item[2] == KW_traj)) return item;
  return nullptr;
}

const char* nom_fichier(word* s, int code) {
  word* name = find_item(s, KW_name);
  const char* file = name ? value_text(item_value(name)) : nullptr;
  if (!file || !*file) {
    voir_mot(first_item(s)[2]);
    voir_mot(code);
    voir_texte("(id) name(\"file\")\a\n");
  }
  return file;
}

// The objects the kind word names, or all of its kind.
std::vector<Objet*> objets(word* item) {
  std::vector<Objet*> out;
  Objet* head = chaine_classe(item[2]);
  if (const word* ids = item_value(item)) {
    Selection sel;
    sel.chaine = head;
    sel.selector = ids;
    for (Objet* o : objets_selection(sel))
      if (o) out.push_back(o);
  } else {
    for (Objet* o = head->next; o; o = o->next)
      if (o->kind == item[2]) out.push_back(o);
  }
  return out;
}

// Writes the objects to the file; they are saved once it is whole. -1
// after the message.
int ecrit_objets(const std::vector<Objet*>& objets, const std::string& file, const int* limite) {
  std::vector<word> words;
  for (Objet* o : objets)
    if (WRITE_OBJ_1(o, words, limite) < 0) {
      TRACE_FAIL("WRITE_OBJ_1()");
      return -1;
    }
  if (!ecrit_fichier(file, words.data(), words.size() * sizeof(word))) {
    TRACE_FAIL("WRITE_OBJ_1()");
    return -1;
  }
  for (Objet* o : objets) o->unsaved = 0;
  return 0;
}

}  // namespace

void suivre_travail(int kind, int voc, int num, const char* question, const char* extension) {
  suivre_objets(kind);
  UnsavedWork w;
  w.voc = voc;
  w.num = num;
  w.question = question;
  w.extension = extension;
  w.pending = [kind] { return objets_non_sauves(kind); };
  // The unsaved objects of the kind, to a recovery file.
  w.save = [kind](const std::string& file) {
    std::vector<Objet*> out;
    for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
      if (o->kind == kind && o->unsaved) out.push_back(o);
    return ecrit_objets(out, file, nullptr) == 0;
  };
  unsaved_work_register(w);
}

void install_object_files() {
  for (const TravailScene& t : TRAVAUX_SCENE) suivre_travail(t.kind, t.voc, t.num, nullptr, t.extension);
}

// Objects go to object files; `write image` and `read image` are pictures.
int WRITE_b(word* s, const word* ob, word* st, const word* lim) {
  word* item = item_fichier(s, true);
  if (!item) return WRITE_IMAGE_b(s, ob, st, lim);
  const char* file = nom_fichier(s, item[2]);
  if (!file) return -1;
  int limit = 0;
  const int* limite = nullptr;
  if (word* n = find_item(s, KW_NP); n && item_value(n) && tag(item_value(n)) == T_FLOAT && np(item_value(n)) > 0) {
    limit = entier(getf(item_value(n), 0));
    limite = &limit;
  }
  if (ecrit_objets(objets(item), file, limite) < 0) return -1;
  return build_nil(s);
}

int READ_b(word* s, const word* ob, word* st, const word* lim) {
  word* item = item_fichier(s, false);
  if (!item) return has_word(s, KW_image) ? READ_IMAGE_b(s, ob, st, lim) : bloc_0(s, ob, st, lim);
  const char* file = nom_fichier(s, item[2]);
  if (!file) return -1;
  std::string bytes;
  if (!file_read_all(file, bytes)) {
    err_lecture(file);
    TRACE_FAIL("READ_OBJ_1()");
    return -1;
  }
  LectureObjets how;
  how.chaine = chaine_classe(item[2]);
  how.kind = item[2];
  how.ids = item_value(item);
  how.add = find_item(s, KW_add) != nullptr;
  const int count = lire_objets(bytes, how);
  if (count < 0) TRACE_FAIL("READ_OBJ_1()");
  return build_float(s, lim, count < 0 ? -1.0f : count > 0 ? 1.0f : 0.0f);
}

void install_object_commands() {
  register_graphic_handler({KW_write}, WRITE_b);
  register_graphic_handler({KW_read}, READ_b);
}
