// WRITE_OBJ_1. A property whose value is a list of blocks (a table of one
// block per vertex) or of objects cannot be saved as it lies in memory,
// since its slots hold handles: it is written as its keys, the list's
// four header words, then each entry in full (an absent block as a NIL,
// an object as an object record), and read back the same way.
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "persist/object_file.h"
#include "scene/volume.h"

namespace {

using Words = std::vector<word>;

void nil(Words& out) { out.insert(out.end(), {4, T_NIL, 0, 0}); }

void bloc_entier(Words& out, const word* b) { out.insert(out.end(), b, b + b[0]); }

bool est_liste(const word* v) { return v[1] == T_PROPRIETES || v[1] == T_OBJETS; }

void ecrit_entree(Words& out, const word* b);
int ecrit_objet(Objet* o, Words& out, const int* limite, bool inside);

// The four header words of a list, then its entries.
void ecrit_liste(Words& out, const word* list) {
  out.insert(out.end(), list, list + 4);
  const int n = std::min(list[2], list[0] - 4);
  for (int i = 0; i < n; i++) {
    if (list[1] == T_OBJETS) {
      Objet* o = handle_objet(list[4 + i]);
      if (o)
        ecrit_objet(o, out, nullptr, true);
      else
        nil(out);
    } else {
      const word* b = handle_bloc(list[4 + i]);
      if (b)
        ecrit_entree(out, b);
      else
        nil(out);
    }
  }
}

void ecrit_entree(Words& out, const word* b) {
  if (est_propriete(b) && est_liste(propr_val(b))) {
    out.insert(out.end(), b, b + b[2]);
    ecrit_liste(out, propr_val(b));
  } else if (est_liste(b)) {
    ecrit_liste(out, b);
  } else {
    bloc_entier(out, b);
  }
}

// The name as a NIL, or a CHAR of its text and NUL padded to a word.
void ecrit_nom(Words& out, const char* name) {
  if (!name) return nil(out);
  const size_t len = std::strlen(name);
  const size_t size = len / 4 + 5;
  const size_t at = out.size();
  out.resize(at + size, 0);
  build_head(out.data() + at, static_cast<word>(size), T_CHAR, 1);
  std::memcpy(out.data() + at + 4, name, len);
}

// An object inside a list always has its list header and a block size
// word (0 for none), so that what follows it reads back in place.
int ecrit_objet(Objet* o, Words& out, const int* limite, bool inside) {
  bloc poi = o->kind == KW_vol ? poi_vol(o) : nullptr;
  const int limit = limite ? *limite : 0;
  if (limite && (!poi || limit < 1 || limit > np(poi))) {
    voir_int2("%d != [1,%d]\n", 1, poi ? np(poi) : 0);
    return -1;
  }
  // Files of volumes read back whole because every volume has its block.
  if (o->kind == KW_vol && !get_matrix_vol(o)) return -1;
  out.push_back(o->id);
  ecrit_nom(out, o->name);
  out.insert(out.end(), {o->kind, o->subkind, o->kind2, o->kind3, o->user_type, o->reserved});
  out.insert(out.end(), {o->work[0], o->work[1], o->work[2], o->work[4], o->work[5], o->valid});
  if (o->local || inside) {
    const word none[4] = {4, T_PROPRIETES, 0, 1};
    const word* list = o->local ? o->local : none;
    out.insert(out.end(), list, list + 4);
    for (int i = 0; i < list[2]; i++) {
      bloc p = handle_bloc(list[4 + i]);
      if (!p) {
        nil(out);
        continue;
      }
      // The vertex limit: the size and count words changed for the write.
      const bool cut = limite && p[3] == 1 && p[5] == KW_poi && propr_val(p) == poi;
      const word size = p[0], count = poi ? poi[0] : 0, points = poi ? poi[2] : 0;
      if (cut) {
        const int drop = (points - limit) * stride(poi);
        p[0] -= drop, poi[0] -= drop, poi[2] = limit;
      }
      ecrit_entree(out, p);
      if (cut) p[0] = size, poi[0] = count, poi[2] = points;
    }
  }
  if (o->code && o->code[0] >= 4 && o->code[0] <= mem_words(o->code))
    bloc_entier(out, o->code);
  else if (inside)
    out.push_back(0);
  return 0;
}

}  // namespace

int WRITE_OBJ_1(Objet* o, std::vector<word>& out, const int* limite) { return ecrit_objet(o, out, limite, false); }
