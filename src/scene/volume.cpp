#include "scene/volume.h"

#include <algorithm>
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "scene/lookup.h"

bloc poi_vol(const Objet* o) {
  bloc v = o ? get_val_1(o->local, KW_poi) : nullptr;
  return v && v[1] == T_FLOAT ? v : nullptr;
}

bloc fac_vol(const Objet* o) {
  bloc v = o ? get_val_1(o->local, KW_fac) : nullptr;
  return v && v[1] == T_HYBRIDE ? v : nullptr;
}

float* get_matrix_vol(Objet* o) {
  if (!o->code || o->code[0] != 4 + TRANSF_SIZE || o->code[1] != T_FLOAT) {
    libere_mem(o->code);
    o->code = alloue_bloc(4 + TRANSF_SIZE);
    if (!o->code) {
      TRACE_FAIL("get_matrix_vol()");
      return nullptr;
    }
    build_head(o->code, o->code[0], T_FLOAT, TRANSF_SIZE);
    float* t = reinterpret_cast<float*>(o->code + 4);
    std::fill(t, t + TRANSF_SIZE, 0.0f);
    t[TR_DILA] = t[TR_DILA + 1] = t[TR_DILA + 2] = 1.0f;
    t[TR_ROTA + 3] = 1.0f;
    for (int i = 0; i < 4; i++) t[TR_MATRIX + 5 * i] = 1.0f;
  }
  return reinterpret_cast<float*>(o->code + 4);
}

int det_np(Objet* o) { return det_np(o, poi_vol(o), fac_vol(o)); }

int det_np(Objet* o, const word* poi, const word* fac) {
  const int stored = poi ? poi[2] : 0;
  if (fac) {
    int most = 0;
    pour_chaque_facette(fac, [&](const word* v, int n) {
      for (int i = 0; i < n; i++) most = std::max(most, entier(v[i]));
    });
    if (most > stored) {
      voir_texte("max np: ");
      voir_int2("%d %d\n", most, stored);
      return stored;
    }
    return most;
  }
  int n = stored;
  for (int side : {KW_lead, KW_follow})
    if (const word* v = get_val_2(o->local, KW_vertex, side)) n -= v[2];
  return std::max(n, 0);
}

bloc cache_vol(Objet* o, int n, const int* keys, int np, int dimp, bool* valid) {
  *valid = false;
  if (!o->local && !local_ini(o)) return nullptr;
  int slot = 0;
  bloc p = get_propr_k(o->local, n, keys, &slot);
  if (p && propr_val(p)[1] == T_FLOAT && propr_val(p)[2] == np && propr_val(p)[3] == dimp) {
    *valid = p[1] == 1;
    return propr_val(p);
  }
  const int size = 2 * n + 8 + np * dimp;
  bloc q = alloue_bloc(size);
  if (!q) {
    TRACE_FAIL("cache_vol()");
    return nullptr;
  }
  propr_key_k(q, n, keys);
  q[0] = size;
  q[1] = 0;  // to be computed
  bloc v = propr_val(q);
  build_head(v, 4 + np * dimp, T_FLOAT, np, dimp);
  std::fill(v + 4, v + v[0], 0);
  if (p) {
    o->local[slot] = bloc_handle(q);
    libere_valeur(p);
  } else {
    bloc added = ajoute_propriete(o, size);
    if (!added) {
      libere_bloc(q);
      return nullptr;
    }
    std::memcpy(added, q, static_cast<size_t>(size) * sizeof(word));
    libere_bloc(q);
    return propr_val(added);
  }
  return v;
}

void cache_valide(Objet* o, int n, const int* keys) {
  if (bloc p = get_propr_k(o->local, n, keys, nullptr)) p[1] = 1;
}

namespace {

// Properties whose value is derived from the vertices.
bool derivee(const word* p) {
  const int k1 = p[5], k2 = p[3] > 1 ? p[7] : 0;
  switch (k1) {
    case KW_box: case KW_CG: case KW_radius: return p[3] <= 3;
    case KW_normal: return k2 == KW_fac || k2 == KW_vertex;
    case KW_near: return k2 == KW_vertex;
    case KW_coord: return k2 == KW_vertex;
    case KW_poi: case KW_fac: return k2 == KW_generate || k2 == KW_anc;
    default: return false;
  }
}

}  // namespace

void invalide_caches(Objet* o) {
  if (!o || !o->local || o->local[1] != T_PROPRIETES) return;
  for (int i = 0; i < o->local[2]; i++)
    if (bloc p = handle_bloc(o->local[4 + i]); p && derivee(p)) p[1] = 0;
  raz_generate(o, 0);
}

namespace {

// Followers that follow each other in a ring would never end: the walk
// goes no deeper than this.
constexpr int FOLLOW_DEPTH = 64;

void raz_generate_suiveurs(Objet* o, int how, int depth) {
  if (!o || !o->local || depth > FOLLOW_DEPTH) return;
  if (bloc v = get_val_2(o->local, KW_meta, KW_generate); v && v[2] >= 2) {
    if (how == 0) v[4] = 0;
    v[5] = 0;
  }
  // The volumes that follow this one.
  if (const word* f = get_val_1(o->local, KW_follow); f && (f[1] == T_FLOAT || f[1] == T_LONG)) {
    for (int i = 0; i < elements(f); i++) {
      const int id = f[1] == T_FLOAT ? entier(getf(f, i)) : f[4 + i];
      Objet* g = get_objet_id(chaine_classe(KW_vol), KW_vol, id);
      if (g && g != o) raz_generate_suiveurs(g, how, depth + 1);
    }
  }
}

}  // namespace

void raz_generate(Objet* o, int how) { raz_generate_suiveurs(o, how, 0); }
