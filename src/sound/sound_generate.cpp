#include "sound/sound_generate.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "kernel/random_table.h"
#include "kernel/report.h"
#include "sound/sound_object.h"

namespace {

constexpr double DEUX_PI = 2 * std::numbers::pi;

// The curve's value at a fraction x in [0, 1] of the stretch: its points
// spread evenly, joined by straight lines; 1 without a curve.
double courbe(const std::vector<float>& c, double x) {
  if (c.empty()) return 1;
  if (c.size() == 1) return c[0];
  const double pos = x * static_cast<double>(c.size() - 1);
  const size_t i = std::min(static_cast<size_t>(pos), c.size() - 2);
  const double f = pos - static_cast<double>(i);
  return c[i] * (1 - f) + c[i + 1] * f;
}

float arg(const std::vector<float>& v, size_t i, float dflt) { return i < v.size() ? v[i] : dflt; }

}  // namespace

void pose(const Tranche& t, long long k, double v) {
  const int m = pleine_echelle(t.nb_octet);
  const long s = std::lround(std::clamp(v, -1.0, 1.0) * m);
  uint8_t* p = t.p + k * t.canaux * t.nb_octet;
  for (int c = 0; c < t.canaux; c++, p += t.nb_octet)
    ecrit_echantillon(p, t.nb_octet, t.ajoute ? s + lit_echantillon(p, t.nb_octet) : s);
}

bool tranche_temps(Objet* o, float t1, float t2, Tranche& t) {
  const int n = Nb_octet(o);
  uint8_t* d = donnees(o);
  if ((n != 1 && n != 2) || !d || Rate(o) <= 0 || Channel(o) <= 0) return false;
  const long long total = trames(o);
  if (!(t1 >= 0)) t1 = 0;
  long long debut = static_cast<long long>(static_cast<double>(t1) * Rate(o) / IMAGES_SECONDE);
  if (n == 2 && debut % 2) debut++;
  const double fin_d = static_cast<double>(t2) * Rate(o) / IMAGES_SECONDE;
  const long long fin = fin_d >= static_cast<double>(total) ? total : static_cast<long long>(std::max(0.0, fin_d));
  if (debut >= total || !(t2 > t1) || fin <= debut) return false;
  t.p = d + debut * octets_trame(o);
  t.n = fin - debut;
  t.nb_octet = n;
  t.canaux = Channel(o);
  t.Rate = Rate(o);
  return true;
}

void GENERATE_SIN(const Tranche& t, float f, float a, float phase, const std::vector<float>& curve) {
  const double pas = DEUX_PI * f / t.Rate;
  const double n = static_cast<double>(t.n);
  for (long long k = 0; k < t.n; k++)
    pose(t, k, a * courbe(curve, static_cast<double>(k) / n) * std::sin(phase + pas * static_cast<double>(k)));
}

void GENERATE_SIN_SIN(const Tranche& t, const std::vector<float>& s1, const std::vector<float>& s2) {
  const double p1 = DEUX_PI * arg(s1, 0, 0) / t.Rate, p2 = DEUX_PI * arg(s2, 0, 0) / t.Rate;
  const double a = arg(s1, 1, 1) * arg(s2, 1, 1);
  for (long long k = 0; k < t.n; k++) {
    const double x = static_cast<double>(k);
    pose(t, k, a * std::sin(arg(s1, 2, 0) + p1 * x) * std::sin(arg(s2, 2, 0) + p2 * x));
  }
}

void GENERATE_SIN_N(const Tranche& t, float f, float a, float phase, int n) {
  // Harmonics 1..n at 1/h of the amplitude, scaled so that their sum
  // keeps within a.
  double norme = 0;
  for (int h = 1; h <= n; h++) norme += 1.0 / h;
  const double pas = DEUX_PI * f / t.Rate;
  for (long long k = 0; k < t.n; k++) {
    double v = 0;
    for (int h = 1; h <= n; h++) v += std::sin(h * (phase + pas * static_cast<double>(k))) / h;
    pose(t, k, a * v / norme);
  }
}

void GENERATE_AUDIO_SIN_INTERPOL(const Tranche& t, float f1, float a1, float phase, float f2, float a2) {
  double phi = phase;
  const double n = static_cast<double>(t.n);
  for (long long k = 0; k < t.n; k++) {
    const double x = static_cast<double>(k) / n;
    pose(t, k, (a1 + (a2 - a1) * x) * std::sin(phi));
    phi += DEUX_PI * (f1 + (f2 - f1) * x) / t.Rate;
  }
}

void GENERATE_AUDIO_SIN_VAR(const Tranche& t, float f, float a, float phase, float depth, float rate) {
  double phi = phase;
  for (long long k = 0; k < t.n; k++) {
    pose(t, k, a * std::sin(phi));
    const double s = static_cast<double>(k) / t.Rate;
    phi += DEUX_PI * (f + depth * std::sin(DEUX_PI * rate * s)) / t.Rate;
  }
}

void GENERATE_AUDIO_RAND(const Tranche& t, float a) {
  for (long long k = 0; k < t.n; k++) pose(t, k, a * (2.0 * random_uniform() - 1));
}

void GENERATE_AUDIO_CUT(const Tranche& t) {
  Tranche z = t;
  z.ajoute = false;
  for (long long k = 0; k < t.n; k++) pose(z, k, 0);
}

void GENERATE_AUDIO_PULS(const Tranche& t, float f, float a, float width) {
  const double periode = f > 0 ? t.Rate / static_cast<double>(f) : 0;
  for (long long k = 0; k < t.n; k++) {
    const double x = periode > 0 ? std::fmod(static_cast<double>(k), periode) / periode : 0;
    pose(t, k, x < width ? a : 0);
  }
}

void GENERATE_AUDIO_PERIOD(const Tranche& t, float f, float a, const float* v, int nv) {
  if (nv < 1) return;
  // One period of nv values, joined by straight lines, the last to the first.
  for (long long k = 0; k < t.n; k++) {
    double x = std::fmod(static_cast<double>(k) * f / t.Rate, 1.0) * nv;
    if (x < 0) x += nv;
    const int i = std::min(static_cast<int>(x), nv - 1);
    const double frac = x - i;
    pose(t, k, a * (v[i] * (1 - frac) + v[(i + 1) % nv] * frac));
  }
}

void GENERATE_AUDIO_AUDIO(const Tranche& t, Objet* source) {
  const uint8_t* s = donnees(source);
  const int sn = Nb_octet(source), sc = Channel(source);
  if (!s || (sn != 1 && sn != 2) || sc < 1) return;
  const long long n = std::min(t.n, trames(source));
  const double echelle = 1.0 / pleine_echelle(sn);
  for (long long k = 0; k < n; k++)
    for (int c = 0; c < t.canaux; c++) {
      const long v = std::lround(lit_echantillon(s + (k * sc + c % sc) * sn, sn) * echelle * pleine_echelle(t.nb_octet));
      uint8_t* p = t.p + (k * t.canaux + c) * t.nb_octet;
      ecrit_echantillon(p, t.nb_octet, t.ajoute ? v + lit_echantillon(p, t.nb_octet) : v);
    }
}

int INSERT_AUDIO_TIME(Objet* o, float t1, float t2, const Generation& g) {
  Tranche t;
  if (!tranche_temps(o, t1, t2, t)) return 0;
  t.ajoute = g.add;
  const std::vector<float> none;
  const std::vector<float>& s = g.sin.empty() ? none : g.sin[0];
  if (g.source) {
    GENERATE_AUDIO_AUDIO(t, g.source);
  } else if (g.cut) {
    GENERATE_AUDIO_CUT(t);
  } else if (!g.rand.empty()) {
    GENERATE_AUDIO_RAND(t, g.rand[0]);
  } else if (!g.puls.empty()) {
    GENERATE_AUDIO_PULS(t, arg(g.puls, 0, 0), arg(g.puls, 1, 1), arg(g.puls, 2, 0.5f));
  } else if (g.period.size() > 2) {
    GENERATE_AUDIO_PERIOD(t, g.period[0], g.period[1], g.period.data() + 2, static_cast<int>(g.period.size() - 2));
  } else if (g.sin.size() >= 2) {
    GENERATE_SIN_SIN(t, g.sin[0], g.sin[1]);
  } else if (!s.empty() && g.harmoniques > 0) {
    GENERATE_SIN_N(t, s[0], arg(s, 1, 1), arg(s, 2, 0), g.harmoniques);
  } else if (!s.empty() && !g.interpol.empty()) {
    GENERATE_AUDIO_SIN_INTERPOL(t, s[0], arg(s, 1, 1), arg(s, 2, 0), g.interpol[0], arg(g.interpol, 1, arg(s, 1, 1)));
  } else if (!s.empty() && g.var.size() >= 2) {
    GENERATE_AUDIO_SIN_VAR(t, s[0], arg(s, 1, 1), arg(s, 2, 0), g.var[0], g.var[1]);
  } else if (!s.empty()) {
    GENERATE_SIN(t, s[0], arg(s, 1, 1), arg(s, 2, 0), g.coe);
  } else {
    voir_texte("generate audio(id) time(t1, t2) sin(f, a, p) | cut | alea(a) | puls(f, a, w) | period(f, a, v...) | audio(id, source)\a\n");
    return -1;
  }
  return 1;
}
