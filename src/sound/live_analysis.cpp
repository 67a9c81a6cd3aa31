#include "sound/live_analysis.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "sound/fft.h"

void entre_octets(LiveAudio& a, const uint8_t* p1, int n1, const uint8_t* p2, int n2) {
  const int F = a.Fenetre;
  const int n = n1 + n2;
  float* e = a.Echantillons;
  auto octet = [&](int i) { return static_cast<float>(i < n1 ? p1[i] : p2[i - n1]); };
  if (n < F) {
    std::memmove(e + n, e, static_cast<size_t>(F - n) * sizeof(float));
    for (int i = 0; i < n; i++) e[i] = octet(i);
  } else {
    for (int i = 0; i < F; i++) e[i] = octet(i);
  }
}

namespace {

// The law on a processed value: linear above the threshold with an
// exponent of 0 or 1, a power of the excess otherwise (a non-positive
// excess has no logarithm: 0).
float loi(const LiveAudio& a, float v) {
  if (a.Law_exposant == 0 || a.Law_exposant == 1) return v > a.Law_seuil ? (v - a.Law_seuil) * a.Law_scale : 0.0f;
  const float x = v - a.Law_seuil;
  if (!(x > 0)) return 0.0f;
  const float r = a.Law_scale * std::exp(a.Law_exposant * std::log(x));
  return r < a.Law_seuil ? 0.0f : r;
}

float borne(float v, float gate, float limit) {
  if (v < gate) return 0.0f;
  return v > limit ? limit : v;
}

// The window's mean, minimum and maximum into the ring; when it wraps,
// the running levels from the whole ring.
void passe_anneau(LiveAudio& a, float moyen, float mini, float maxi) {
  const int N = std::clamp(a.Nb_moyennes, 1, MAX_MOYENNES);
  if (a.Ring_pos >= N) a.Ring_pos = 0;
  a.Ring_moyen[a.Ring_pos] = moyen;
  a.Ring_min[a.Ring_pos] = mini;
  a.Ring_max[a.Ring_pos] = maxi;
  if (++a.Ring_pos >= N) {
    a.Ring_pos = 0;
    float m = 0, lo = 1000000, hi = 0;
    for (int i = 0; i < N; i++) {
      m = std::max(m, a.Ring_moyen[i]);
      lo = std::min(lo, a.Ring_min[i]);
      hi = std::max(hi, a.Ring_max[i]);
    }
    a.Moyen_precedent = a.Niveau_moyen;
    a.Niveau_moyen = borne(m, a.Gate, a.Limit);
    a.Niveau_min = lo;
    a.Niveau_max = hi;
    if (a.Normalise) {
      a.Niveau_moyen /= 255;
      a.Niveau_min /= 255;
      a.Niveau_max /= 255;
    }
  }
  std::memmove(a.Maxima + 1, a.Maxima, (NB_MAXIMA - 1) * sizeof(float));
  a.Maxima[0] = maxi;
}

}  // namespace

void traitement_fenetre(LiveAudio& a) {
  if (a.Auto_periode > 0 && ++a.Auto_compte >= a.Auto_periode) {
    a.Gain = std::fabs(a.Auto_etendue / (static_cast<float>(a.Auto_periode) * 127) - a.Auto_cible);
    a.Auto_compte = 0;
    a.Auto_etendue = 0;
  }
  const bool puissance = a.Law && a.Law_exposant != 0 && a.Law_exposant != 1;
  double somme = 0;
  float mini = 255, maxi = 0;
  for (int i = 0; i < a.Fenetre; i++) {
    float v = std::fabs((a.Echantillons[i] - a.Offset) * a.Gain);
    if (!puissance) v = borne(v, a.Gate, a.Limit);
    somme += v;
    mini = std::min(mini, v);
    maxi = std::max(maxi, v);
    if (!a.Law) a.Signal[i] = v;
    else if (!puissance) a.Signal[i] = loi(a, v);
    else a.Signal[i] = borne(loi(a, v), a.Gate, a.Limit);
  }
  if (a.Auto_periode > 0) a.Auto_etendue += maxi - mini;
  passe_anneau(a, static_cast<float>(somme / a.Fenetre), mini, maxi);
}

void passe_enveloppe(const float* x, int n, float gate, float limit, Enveloppe& e) {
  if (e.n < 2) {
    e.blocs = n;
    for (int i = 0; i < n; i++) {
      e.Pic[i] = x[i];
      e.Diff[i] = 0;
    }
    if (n > 0) e.Pic[0] = 0;
    return;
  }
  const float g = gate * e.scale, l = limit * e.scale;
  e.blocs = n / e.n;
  for (int b = 0; b < e.blocs; b++) {
    float pic = 0;
    for (int i = b * e.n; i < (b + 1) * e.n; i++) pic = std::max(pic, borne(x[i], g, l));
    e.Diff[b] = pic - e.Pic[b];
    e.Pic[b] = pic;
  }
  if (e.blocs > 0) e.Pic[0] = 0;
}

int etapes_analyse(LiveAudio& a) {
  const int F = a.Fenetre;
  if (a.env.on) passe_enveloppe(a.Signal, F, a.Gate, a.Limit, a.env);
  if (a.Spectre_on) {
    if (fft_float(static_cast<unsigned>(F), a.Normalise, a.Signal, nullptr, a.Spectre_re, a.Spectre_im) < 0) return -1;
    const float g = a.Gate * a.Spectre_scale, l = a.Limit * a.Spectre_scale;
    for (int i = 0; i < F; i++) {
      a.Spectre_re[i] = borne(a.Spectre_re[i], g, l);
      a.Spectre_im[i] = borne(a.Spectre_im[i], g, l);
    }
    if (a.env.on) {
      passe_enveloppe(a.Spectre_re, F, a.Gate, a.Limit, a.env_re);
      passe_enveloppe(a.Spectre_im, F, a.Gate, a.Limit, a.env_im);
    }
  }
  for (int i = 0; i < F; i++) {
    a.Derivee[i] = a.Signal[i] - a.Precedent[i];
    a.Precedent[i] = a.Signal[i];
  }
  return 0;
}

float premier_passage(const LiveAudio& a, float level, float tolerance) {
  bool arme = true;
  int indice = 0;
  for (int i = 0; i < a.Fenetre; i++) {
    if (arme && std::fabs(a.Signal[i]) > level + tolerance) {
      arme = false;
      indice = i;
    }
  }
  return static_cast<float>(indice);
}
