// READ_OBJ_0: one object record read back. Every size is checked against
// what is left of the file before anything is allocated, and the object
// is built apart and put in its chain only once whole, so that a
// truncated or hostile file leaves the store as it was.
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "persist/object_file.h"
#include "scene/lookup.h"

namespace {

// Deeper nesting than this is no file this program wrote.
constexpr int PROFONDEUR_MAX = 16;

struct Lecteur {
  const std::vector<word>& w;
  size_t at;
  bool ok = true;

  size_t reste() const { return at < w.size() ? w.size() - at : 0; }
  bool prend(word* dst, size_t n) {
    if (!ok || n > reste()) return ok = false;
    if (n == 0) return true;
    std::memcpy(dst, w.data() + at, n * sizeof(word));
    at += n;
    return true;
  }
  word mot() {
    word x = 0;
    prend(&x, 1);
    return x;
  }
  // A size word for a block that must still fit in the file.
  bool taille(word n, size_t deja) { return ok = ok && n >= 4 && static_cast<size_t>(n) - deja <= reste(); }
};

// The kinds of value a file may hold: values of numbers, text, pixels and
// sound, and lists of them, but nothing whose words are handles to
// memory, which a file cannot give.
bool valeur_sure(const word* v, int depth) {
  if (depth > PROFONDEUR_MAX || v[0] < 4) return false;
  switch (v[1]) {
    case T_FLOAT: case T_LONG: case T_CHAR: case T_NIL: case T_SHORT: case T_IMAGE: case T_IMAGE_PREV: case T_SOUND:
      return true;
    case T_HYBRIDE: {
      const word* end = v + v[0];
      const word* p = v + 4;
      for (int i = 0; i < v[2]; i++, p += p[0])
        if (p + 4 > end || p[0] < 4 || p + p[0] > end || !valeur_sure(p, depth + 1)) return false;
      return true;
    }
    default:
      return est_propriete(v) && valeur_sure(propr_val(v), depth + 1);
  }
}

bloc lit_entree(Lecteur& r, int depth);
Objet* lit_objet(Lecteur& r, Objet* head, int depth);

// A list of blocks or of objects: its header was read into `h`.
bloc lit_liste(Lecteur& r, const word h[4], int depth) {
  // Every entry takes at least four words; a list of one handle a slot
  // is the only form written.
  if (h[2] < 0 || static_cast<size_t>(h[2]) > r.reste() / 4 || h[3] != 1) return r.ok = false, nullptr;
  bloc list = alloue_bloc(4 + h[2]);
  if (!list) return r.ok = false, nullptr;
  list[1] = h[1], list[2] = h[2], list[3] = h[3];
  std::fill(list + 4, list + 4 + h[2], 0);
  for (int i = 0; i < h[2] && r.ok; i++) {
    if (h[1] == T_OBJETS) {
      if (r.reste() >= 4 && r.w[r.at] == 4 && r.w[r.at + 1] == T_NIL) {
        r.at += 4;
        continue;
      }
      // An object of a list belongs to no chain, as a duplicate does.
      Objet* apart = cre_chaine_privee();
      Objet* o = apart ? lit_objet(r, apart, depth + 1) : nullptr;
      if (o) {
        delie_objet(o);
        list[4 + i] = objet_handle(o);
      }
      rem_chaine_privee(apart);
      if (!apart) r.ok = false;
    } else {
      bloc b = lit_entree(r, depth + 1);
      if (b && b[1] == T_NIL && b[0] == 4) {
        libere_bloc(b);
        continue;
      }
      if (b) list[4 + i] = bloc_handle(b);
    }
  }
  if (!r.ok) {
    libere_valeur(list);
    return nullptr;
  }
  return list;
}

// A property whose value is a list: its keys, then the list.
bloc lit_propriete_liste(Lecteur& r, const word* head, int depth) {
  word h[4];
  if (!r.prend(h, 4)) return nullptr;
  bloc list = lit_liste(r, h, depth);
  if (!list) return nullptr;
  const int n = head[2] + list[0];
  bloc p = alloue_bloc(n);
  if (!p) {
    libere_valeur(list);
    return r.ok = false, nullptr;
  }
  std::memcpy(p, head, static_cast<size_t>(head[2]) * sizeof(word));
  p[0] = n;
  std::memcpy(p + head[2], list, static_cast<size_t>(list[0]) * sizeof(word));
  libere_bloc(list);  // its entries now belong to the property
  return p;
}

bloc lit_entree(Lecteur& r, int depth) {
  if (depth > PROFONDEUR_MAX) return r.ok = false, nullptr;
  word h[4];
  if (!r.prend(h, 4)) return nullptr;
  if (h[1] == T_PROPRIETES || h[1] == T_OBJETS) return lit_liste(r, h, depth);
  if (!r.taille(h[0], 4)) return nullptr;
  // A property: its keys, then a list or a plain value.
  if (mot_validite(h[1]) && h[3] >= 1 && h[2] == 2L * h[3] + 4 && h[2] + 4L <= h[0]) {
    std::vector<word> head(static_cast<size_t>(h[2]));
    std::memcpy(head.data(), h, sizeof h);
    if (!r.prend(head.data() + 4, head.size() - 4)) return nullptr;
    if (r.reste() >= 2 && (r.w[r.at + 1] == T_PROPRIETES || r.w[r.at + 1] == T_OBJETS))
      return lit_propriete_liste(r, head.data(), depth);
    bloc p = alloue_bloc(h[0]);
    if (!p) return r.ok = false, nullptr;
    std::memcpy(p, head.data(), head.size() * sizeof(word));
    if (!r.prend(p + head.size(), static_cast<size_t>(h[0]) - head.size()) || !est_propriete(p) ||
        !valeur_sure(propr_val(p), depth)) {
      libere_bloc(p);
      return r.ok = false, nullptr;
    }
    return p;
  }
  bloc b = alloue_bloc(h[0]);
  if (!b) return r.ok = false, nullptr;
  std::memcpy(b, h, sizeof h);
  if (!r.prend(b + 4, static_cast<size_t>(h[0]) - 4) || verifie_bloc(b) < 0 || !valeur_sure(b, depth)) {
    libere_bloc(b);
    return r.ok = false, nullptr;
  }
  return b;
}

// The name: a CHAR of size 5 or more, or anything shorter for none.
bool lit_nom(Lecteur& r, std::string& name) {
  const word size = r.mot();
  if (!r.ok || size < 1 || static_cast<size_t>(size) - 1 > r.reste()) return r.ok = false;
  std::vector<word> b(static_cast<size_t>(size), 0);
  b[0] = size;
  if (!r.prend(b.data() + 1, b.size() - 1)) return false;
  if (size >= 5) name.assign(reinterpret_cast<const char*>(b.data() + 4), strnlen(reinterpret_cast<const char*>(b.data() + 4), (b.size() - 4) * sizeof(word)));
  return true;
}

Objet* lit_objet(Lecteur& r, Objet* head, int depth) {
  const word id = r.mot();
  std::string name;
  if (!r.ok || !lit_nom(r, name)) return nullptr;
  Objet* o = cre_objet(head, 0, 0, nullptr, name.c_str(), id);
  if (!o) return r.ok = false, nullptr;
  word f[12];
  // The kind decides how the record is released: a file names a kind of
  // the vocabularies, never a language object's.
  if (r.prend(f, 12) && (f[0] < 0 || f[0] >= NB_CODES || est_objet_langage(f[0]))) r.ok = false;
  if (r.ok) {
    o->kind = f[0], o->subkind = f[1], o->kind2 = f[2], o->kind3 = f[3], o->user_type = f[4], o->reserved = f[5];
    o->work[0] = f[6], o->work[1] = f[7], o->work[2] = f[8], o->work[4] = f[9], o->work[5] = f[10], o->valid = f[11];
  }
  // The list of properties, always read (the writer leaves it out for an
  // object that has none).
  word h[4];
  if (r.prend(h, 4) && h[1] == T_PROPRIETES) {
    bloc list = lit_liste(r, h, depth);
    if (list) o->local = list;
  } else {
    r.ok = false;
  }
  // The transformation block, when its size word is above 0; the end of
  // the file here means none.
  if (r.ok && r.reste() > 0) {
    const word size = r.w[r.at];
    if (size > 0) {
      if (!r.taille(size, 0)) {
      } else {
        bloc code = alloue_bloc(size);
        if (!code || !r.prend(code, static_cast<size_t>(size)) || !valeur_sure(code, 0)) {
          libere_bloc(code);
          r.ok = false;
        } else {
          o->code = code;
        }
      }
    } else {
      r.at++;
    }
  }
  if (!r.ok) {
    rem_objet(o);
    return nullptr;
  }
  return o;
}

void retire_homonymes(Objet* chaine, int kind, int id, const char* name) {
  for (Objet* o = chaine->next; o;)
    o = (o->kind == kind && id != 0 && o->id == id) ? rem_objet(o) : o->next;
  if (name && *name)
    for (Objet* o = chaine->next; o;) o = (o->kind == kind && nom_egal(o->name, name)) ? rem_objet(o) : o->next;
}

}  // namespace

int READ_OBJ_0(const std::vector<word>& words, size_t* at, const LectureObjets& how, int index) {
  if (*at >= words.size()) return 0;
  Objet* apart = cre_chaine_privee();
  if (!apart) return -1;
  Lecteur r{words, *at};
  Objet* o = lit_objet(r, apart, 0);
  if (!o) {
    rem_chaine_privee(apart);
    voir_message(0, MES_BADLY_FORMATTED_FILE);
    TRACE_FAIL("READ_OBJ_0()");
    return -1;
  }
  *at = r.at;
  // The identity: the file's, or the one the command gives.
  if (how.ids && index < nb_selection(how.ids)) {
    int number = 0;
    char name[256] = "";
    if (element_selection(how.ids, index, &number, name) >= 0) {
      libere_mem(o->name);
      o->name = copie_nom(name);
      o->id = number;
    }
    o->kind = how.kind;
  }
  if (!how.add) retire_homonymes(how.chaine, o->kind, o->id, o->name);
  deplace_objet(o, how.chaine);
  o->unsaved = 0;  // as its file holds it
  rem_chaine_privee(apart);
  return 1;
}

int lire_objets(const std::string& bytes, const LectureObjets& how) {
  std::vector<word> words(bytes.size() / sizeof(word));
  if (!words.empty()) std::memcpy(words.data(), bytes.data(), words.size() * sizeof(word));
  size_t at = 0;
  int count = 0;
  for (int r; (r = READ_OBJ_0(words, &at, how, count)) != 0; count++)
    if (r < 0) return -1;
  return count;
}
