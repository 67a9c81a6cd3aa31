#include "sound/sound_smooth.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "sound/sound_object.h"

Lissage lissage_defaut(const Objet* o) {
  Lissage l;
  l.largeur = son().Largeur_lissage;
  const int m = pleine_echelle(o->work[AF_NB_OCTET]);
  l.bas = static_cast<float>(-m);
  l.haut = static_cast<float>(m);
  return l;
}

int SMOOTH_AUDIO_1(Objet* o, const Lissage& l) {
  const int nb = Nb_octet(o), canaux = Channel(o);
  uint8_t* d = donnees(o);
  if ((nb != 1 && nb != 2) || !d || canaux < 1) return -1;
  const long long total = trames(o);
  const long long w = std::max(1, l.largeur), n = std::max(1, l.n);
  const double seuil = static_cast<double>(l.coe) * pleine_echelle(nb);
  const long long pas = static_cast<long long>(canaux) * nb;
  auto at = [&](long long i, int c) { return d + i * pas + c * nb; };
  int remplaces = 0;
  for (int c = 0; c < canaux; c++) {
    for (long long i = w; i < total - 2 * w && i + n < total;) {
      if (std::abs(lit_echantillon(at(i + n, c), nb) - lit_echantillon(at(i, c), nb)) <= seuil) {
        i++;
        continue;
      }
      const double a = lit_echantillon(at(i - w, c), nb), b = lit_echantillon(at(i + w, c), nb);
      for (long long j = 0; j <= 2 * w; j++) {
        const double v = std::clamp(a + (b - a) * static_cast<double>(j) / static_cast<double>(2 * w),
                                    static_cast<double>(l.bas), static_cast<double>(l.haut));
        ecrit_echantillon(at(i - w + j, c), nb, std::lround(v));
      }
      remplaces++;
      i += w;
    }
  }
  return remplaces;
}
