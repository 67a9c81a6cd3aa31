#include "sound/sound_curve.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "scene/primitives.h"
#include "scene/removal.h"
#include "sound/sound_object.h"

namespace {

constexpr int MAX_CANAUX = 8;
constexpr int MAX_POINTS = 1000000;

}  // namespace

Objet* WAV_AUDIO_CURVE(int vol, Objet* son, const TraceSon& t) {
  const int nb = Nb_octet(son), canaux = Channel(son);
  const uint8_t* d = donnees(son);
  if (!d || (nb != 1 && nb != 2) || canaux < 1 || canaux > MAX_CANAUX) {
    voir_texte("generate vol(id) audio(id) [time(t1, t2)] [NP(n)] [dim(w, h)]: samples of 8 or 16 bits\a\n");
    return nullptr;
  }
  const long long total = trames(son);
  const double par_image = static_cast<double>(Rate(son)) / IMAGES_SECONDE;
  const long long a = std::clamp<long long>(static_cast<long long>(std::max(0.0f, t.t1) * par_image), 0, total);
  const long long b = t.t2 < t.t1 ? total : std::clamp<long long>(static_cast<long long>(t.t2 * par_image), a, total);
  const int n = static_cast<int>(std::clamp<long long>(std::min<long long>(t.points, b - a), 0, MAX_POINTS));
  if (n < 2) {
    voir_texte("generate vol(id) audio(id): fewer than 2 frames drawn\a\n");
    return nullptr;
  }
  Construction c;
  float max_canal[MAX_CANAUX] = {};
  const double m = pleine_echelle(nb);
  for (int ch = 0; ch < canaux; ch++) {
    const float base = t.hauteur * (static_cast<float>(canaux - 1) / 2 - static_cast<float>(ch));
    for (int i = 0; i < n; i++) {
      // The sample of largest magnitude of the stretch keeps the peaks.
      const long long k0 = a + (b - a) * i / n, k1 = std::max(k0 + 1, a + (b - a) * (i + 1) / n);
      int pic = 0;
      for (long long k = k0; k < k1; k++) {
        const int v = lit_echantillon(d + (k * canaux + ch) * nb, nb);
        if (std::abs(v) > std::abs(pic)) pic = v;
      }
      max_canal[ch] = std::max(max_canal[ch], static_cast<float>(std::abs(pic) / m));
      const float y = static_cast<float>(pic / m) * t.hauteur / 2 * (t.inv ? -1.0f : 1.0f);
      c.poi.add(t.largeur * (static_cast<float>(i) / static_cast<float>(n - 1) - 0.5f), base + y, 0);
      if (i > 0) c.fac.add({ch * n + i, ch * n + i + 1});
    }
  }
  rem_objet_id(KW_vol, vol);
  Objet* o = cre_objet(chaine_classe(KW_vol), KW_vol, KW_audio, nullptr, "", vol);
  if (!o || pose_geometrie(o, c) < 0) {
    TRACE_FAIL("WAV_AUDIO_CURVE()");
    return nullptr;
  }
  DISPLAY_AUDIO_ID_1(son, t, max_canal);
  return o;
}

void DISPLAY_AUDIO_ID_1(Objet* son, const TraceSon& t, const float* max_canal) {
  const std::vector<float> pairs = floats_of(get_val_1(son->local, KW_stock));
  const float freq = pairs.size() >= 2 ? pairs[0] : 0, amp = pairs.size() >= 2 ? pairs[1] : 0;
  for (int ch = 0; ch < Channel(son) && ch < MAX_CANAUX; ch++) {
    voir_int("channel %d ", ch);
    voir_float("freq %f ", freq);
    voir_float("amp %f ", amp);
    voir_float("max %f ", max_canal[ch]);
    voir_texte(t.inv ? "inv\n" : "inv inv\n");
  }
}
