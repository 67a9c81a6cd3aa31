#include "sound/live_exec.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/call.h"
#include "language/functions.h"
#include "scene/image_object.h"
#include "scene/lookup.h"
#include "scene/volume.h"
#include "sound/live_capture.h"
#include "sound/live_state.h"

namespace {

// The three parts of the transformation that sound drives, with the
// words of their coefficient and limit.
struct Partie {
  int mot;
  int decalage;  // in the animation's deltas
};
constexpr Partie PARTIES[3] = {{KW_tran, TR_TRAN}, {KW_rota, TR_ROTX}, {KW_dila, TR_DILA}};
// The sources of the three-level forms; none is the mean or the sample.
constexpr int SOURCES[3] = {KW_min, KW_max, KW_rand};

// The bounds of `limit tran` and the like: (m) gives -m .. m.
void bornes(const word* v, float* lo, float* hi) {
  *lo = -INFINITY;
  *hi = INFINITY;
  if (elements(v) < 1) return;
  const float a = value_at(v, 0, INFINITY);
  if (elements(v) < 2) {
    *lo = -std::fabs(a);
    *hi = std::fabs(a);
  } else {
    *lo = a;
    *hi = value_at(v, 1, INFINITY);
  }
}

// The window's sample i for `audio win`, or -1.
int echantillon(const LiveAudio& a, const word* l) {
  const word* w = get_val_2(l, KW_audio, KW_win);
  if (!w) return -1;
  const float i = value_at(w, 0, -1);
  return i >= 0 && i < static_cast<float>(a.Fenetre) ? static_cast<int>(i) : -1;
}

// The sound value a source word names.
float valeur(const LiveAudio& a, int source, int i) {
  switch (source) {
    case KW_min: return a.Niveau_min;
    case KW_max: return a.Niveau_max;
    case KW_rand: return i >= 0 ? a.Derivee[i] : a.Niveau_moyen - a.Moyen_precedent;
    default: return i >= 0 ? a.Signal[i] : a.Niveau_moyen;
  }
}

// Adds value * axes to `cible`; true when the axes are there.
bool ajoute(float* cible, const word* axes, float v) {
  if (!axes) return false;
  for (int k = 0; k < 3; k++) cible[k] += v * value_at(axes, k, 0);
  return true;
}

// The function of the volume's `meta func`, found by its name the first
// time and again only when the name or the function changes.
Objet* fonction_du_volume(LiveAudio& a, const Objet* o, const word* nom) {
  const char* n = value_text(nom);
  if (!n) return nullptr;
  LiveAudio::FonctionVolume* e = nullptr;
  for (LiveAudio::FonctionVolume& x : a.exec_fonctions)
    if (x.vol == o) e = &x;
  // The same name: the function found for it, if it is still there (none
  // when it was not found: told once).
  if (e && std::strcmp(e->texte, n) == 0) {
    Objet* f = objet_ref(e->f);
    if (f || !e->f.handle) return f;
  }
  if (!e) {
    a.exec_fonctions.push_back({o, {}, {}});
    e = &a.exec_fonctions.back();
  }
  std::snprintf(e->texte, sizeof e->texte, "%s", n);
  Objet* f = get_fonction(n);
  e->f = f ? ref_objet(f) : RefObjet{};
  if (!f) err_fonction_inconnue(n);
  return f;
}

// The value of `meta func` added to the nine targets; false without one.
bool par_fonction(LiveAudio& a, Objet* o, float L, float cible[9]) {
  const word* nom = get_val_2(o->local, KW_meta, KW_func);
  if (!nom) return false;
  Objet* f = fonction_du_volume(a, o, nom);
  if (!f) return false;
  const float arg[4] = {static_cast<float>(o->id), L, a.Niveau_min, a.Niveau_max};
  float r[9];
  if (run_function_vector(f, arg, 4, r, 9) < 0) return false;
  for (int k = 0; k < 9; k++) cible[k] += r[k];
  return true;
}

// Whether sound drives part p of the volume.
bool partie_pilotee(const word* l, int p) {
  if (get_val_2(l, KW_meta, KW_func) || get_val_2(l, KW_audio, PARTIES[p].mot)) return true;
  for (int s : SOURCES)
    if (get_val_3(l, KW_audio, PARTIES[p].mot, s)) return true;
  return false;
}

bool pilote(const word* l) {
  if (get_val_2(l, KW_audio, KW_image)) return true;
  for (int p = 0; p < 3; p++)
    if (partie_pilotee(l, p)) return true;
  return false;
}

// The object's coefficient of the level (`coe audio`), else `coe`.
float coefficient(const word* l, float coe) { return value_at(get_val_2(l, KW_coe, KW_audio), 0, coe); }

// The objects of the step, held before any user function runs: those of
// a kind numbered in `ids`, or every volume.
void tient(LiveAudio& a, int kind, const std::vector<int>& ids) {
  Objet* tete = chaine_classe(kind);
  for (int id : ids)
    if (Objet* o = get_objet_id(tete, kind, id)) a.exec_objets.push_back(ref_objet(o));
}

void tient_les_volumes(LiveAudio& a) {
  for (Objet* o = chaine_classe(KW_vol)->next; o; o = o->next) a.exec_objets.push_back(ref_objet(o));
}

}  // namespace

void EXEC_AUDIO_1(Objet* o, float coe) {
  LiveAudio& a = live_audio();
  const word* l = o->local;
  if (!pilote(l)) return;
  const int i = echantillon(a, l);
  const float c = coefficient(l, coe);
  const float L = valeur(a, 0, i) * c;
  float cible[9] = {};
  bool pilotee[3] = {};
  for (int p = 0; p < 3; p++) {
    float part[3] = {};
    pilotee[p] = ajoute(part, get_val_2(l, KW_audio, PARTIES[p].mot), L);
    for (int s : SOURCES)
      pilotee[p] |= ajoute(part, get_val_3(l, KW_audio, PARTIES[p].mot, s), valeur(a, s, i) * c);
    const float k = value_at(get_val_2(l, KW_coe, PARTIES[p].mot), 0, 1);
    for (int x = 0; x < 3; x++) cible[3 * p + x] = part[x] * k;
  }
  const RefObjet moi = ref_objet(o);
  if (par_fonction(a, o, L, cible)) pilotee[0] = pilotee[1] = pilotee[2] = true;
  if (objet_ref(moi) != o) return;  // the function removed it
  if (get_val_2(o->local, KW_audio, KW_image)) AUDIO_IMAGE(o, L);
  // The function and the table may have moved the properties, or taken
  // the volume's block away.
  l = o->local;
  float* B = get_matrix_vol(o);
  if (!B) return;
  const float s = std::clamp(value_at(get_val_2(l, KW_speed, KW_audio), 0, 1), 0.0f, 1.0f);
  for (int p = 0; p < 3; p++) {
    if (!pilotee[p]) continue;
    float lo, hi;
    bornes(get_val_2(l, KW_limit, PARTIES[p].mot), &lo, &hi);
    float* d = B + TR_DELTA + PARTIES[p].decalage;
    for (int x = 0; x < 3; x++) d[x] += s * (std::clamp(cible[3 * p + x], lo, hi) - d[x]);
  }
}

int EXEC_AUDIO() {
  LiveAudio& a = live_audio();
  if (!a.exec || !a.on || Yes(KW_audio) < 0) return 0;
  if (HandleNotification() < 0) return 0;
  a.exec_objets.clear();
  if (a.exec_vols.empty() && a.exec_images.empty()) {
    tient_les_volumes(a);
  } else {
    tient(a, KW_vol, a.exec_vols);
    tient(a, KW_image, a.exec_images);
  }
  pour_chaque_objet_vivant(a.exec_objets, [&a](Objet* o) {
    if (o->kind != KW_image) EXEC_AUDIO_1(o, a.exec_coe);
    else AUDIO_IMAGE(o, valeur(a, 0, echantillon(a, o->local)) * coefficient(o->local, a.exec_coe));
    return 0;
  });
  return 0;
}

void audio_anc() {
  LiveAudio& a = live_audio();
  a.exec_objets.clear();
  if (a.exec_vols.empty()) tient_les_volumes(a);
  else tient(a, KW_vol, a.exec_vols);
  pour_chaque_objet_vivant(a.exec_objets, [](Objet* o) {
    float* B = get_matrix_vol(o);
    for (int p = 0; B && p < 3; p++)
      if (partie_pilotee(o->local, p)) std::fill_n(B + TR_DELTA + PARTIES[p].decalage, 3, 0.0f);
    return 0;
  });
}
