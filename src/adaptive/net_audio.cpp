// AUDIO_NETWORK, `audio network(ids) [coe(c)]`: the live window, scaled by
// c / 127 (its bytes reach 255), the size of each network's first motif
// (zeros past the window), run through the network; the outputs of the
// networks one after the other.
#include <vector>

#include "adaptive/net_audio.h"
#include "adaptive/net_internal.h"
#include "adaptive/network.h"
#include "device/device_util.h"
#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "sound/live_capture.h"
#include "sound/live_state.h"

namespace {

int AUDIO_NETWORK(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = false;
  if (ob || arg_of(s, KW_audio) || second_word(s) != KW_network) return 0;
  *done = true;
  const std::vector<Objet*> reseaux = arg_objects(s, KW_network);
  if (reseaux.empty()) {
    voir_texte("audio network(ids) [coe(c)]\a\n");
    return -1;
  }
  const LiveAudio& a = live_audio();
  if (!a.on) {
    err_son();
    return -1;
  }
  HandleNotification();
  const float k = arg_float(s, KW_coe, 1) / 127;
  std::vector<float> sorties;
  for (Objet* o : reseaux) {
    const Reseau r = trouve_reseau(o);
    const word* m0 = r.motif ? sous_bloc(r.motif, 0) : nullptr;
    if (!m0) {
      rapport_manque(o, KW_motif);
      return -1;
    }
    std::vector<float> motif(static_cast<size_t>(elements(m0)), 0.0f);
    for (int i = 0; i < static_cast<int>(motif.size()) && i < a.Fenetre; i++) motif[i] = a.Signal[i] * k;
    if (build_floats(st, lim, motif, m0[3] > 0 ? m0[3] : 1) < 0) return -1;
    word* sortie = st + size(st);
    if (valider_motif_reseau(o, st, sortie, lim, nullptr) < 0) return -1;
    const std::vector<float> v = floats_of(sortie);
    sorties.insert(sorties.end(), v.begin(), v.end());
  }
  return build_floats(s, lim, sorties);
}

}  // namespace

void install_audio_network() { register_graphic_shape(KW_audio, AUDIO_NETWORK); }
