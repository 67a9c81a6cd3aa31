#include "sound/live_exec.h"

#include <algorithm>
#include <cmath>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/lookup.h"
#include "scene/volume.h"
#include "sound/live_capture.h"
#include "sound/live_state.h"

namespace {

// The bounds of `limit tran` or `limit rota`: (m) gives -m .. m.
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

// L * axis * coe, bounded, moved a part s of the way from `d`.
void applique(float* d, const word* axes, float niveau, const word* coe, const word* limite, float s) {
  if (!axes) return;
  float lo, hi;
  bornes(limite, &lo, &hi);
  const float c = value_at(coe, 0, 1);
  for (int k = 0; k < 3; k++) {
    const float cible = std::clamp(niveau * value_at(axes, k, 0) * c, lo, hi);
    d[k] += s * (cible - d[k]);
  }
}

void pour_les_volumes(void (*f)(Objet*, float)) {
  const LiveAudio& a = live_audio();
  Objet* tete = chaine_classe(KW_vol);
  if (a.exec_vols.empty()) {
    for (Objet* o = tete->next; o; o = o->next) f(o, a.exec_coe);
    return;
  }
  for (int id : a.exec_vols)
    if (Objet* o = get_objet_id(tete, KW_vol, id)) f(o, a.exec_coe);
}

}  // namespace

void EXEC_AUDIO_1(Objet* o, float coe) {
  const LiveAudio& a = live_audio();
  const word* l = o->local;
  const word* axes_t = get_val_2(l, KW_audio, KW_tran);
  const word* axes_r = get_val_2(l, KW_audio, KW_rota);
  if (!axes_t && !axes_r) return;
  float niveau = a.Niveau_moyen;
  if (const word* w = get_val_2(l, KW_audio, KW_win)) {
    const float i = value_at(w, 0, 0);
    if (i >= 0 && i < static_cast<float>(a.Fenetre)) niveau = a.Signal[static_cast<int>(i)];
  }
  niveau *= value_at(get_val_2(l, KW_coe, KW_audio), 0, coe);
  const float s = std::clamp(value_at(get_val_2(l, KW_speed, KW_audio), 0, 1), 0.0f, 1.0f);
  float* B = get_matrix_vol(o);
  if (!B) return;
  applique(B + TR_DELTA + TR_TRAN, axes_t, niveau, get_val_2(l, KW_coe, KW_tran), get_val_2(l, KW_limit, KW_tran), s);
  applique(B + TR_DELTA + TR_ROTX, axes_r, niveau, get_val_2(l, KW_coe, KW_rota), get_val_2(l, KW_limit, KW_rota), s);
}

int EXEC_AUDIO() {
  LiveAudio& a = live_audio();
  if (!a.exec || !a.on || Yes(KW_audio) < 0) return 0;
  if (HandleNotification() < 0) return 0;
  pour_les_volumes(EXEC_AUDIO_1);
  return 0;
}

void audio_anc() {
  pour_les_volumes([](Objet* o, float) {
    const word* l = o->local;
    if (!get_val_2(l, KW_audio, KW_tran) && !get_val_2(l, KW_audio, KW_rota)) return;
    if (float* B = get_matrix_vol(o))
      for (int k = 0; k < 3; k++) B[TR_DELTA + TR_TRAN + k] = B[TR_DELTA + TR_ROTX + k] = 0;
  });
}
