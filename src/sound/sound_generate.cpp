#include "sound/sound_generate.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "kernel/random_table.h"
#include "kernel/report.h"
#include "sound/sound_object.h"
#include "sound/sound_stream.h"

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

constexpr const char* USAGE_GENERATE =
    "generate audio(id) time(t1, t2) sin(f, a, p) [coe(c...) | interpol(f2, a2) | var(d, r) | NP(n) | law(d) | "
    "module(fm, i, ...)] | sin(...) sin(...) | cut | alea(a) | puls(f, a, w) | period(f, a, v...) | poi(v...) | "
    "memory | min(v) | var(d, r) | law(d) | interpol | stock(id) [sin(...)] | audio(id, source) [sin(...) interpol | "
    "period(f, a)] [add]\a\n";

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

void GENERATE_AUDIO_LAW(const Tranche& t, float f, float a, float phase, float d) {
  const double pas = DEUX_PI * f / t.Rate;
  for (long long k = 0; k < t.n; k++) {
    const double x = static_cast<double>(k);
    pose(t, k, a * std::exp(-d * x / t.Rate) * std::sin(phase + pas * x));
  }
}

void GENERATE_AUDIO_POI(const Tranche& t, const float* v, int n) {
  if (n < 1) return;
  const std::vector<float> points(v, v + n);
  const double len = static_cast<double>(t.n > 1 ? t.n - 1 : 1);
  for (long long k = 0; k < t.n; k++) pose(t, k, courbe(points, static_cast<double>(k) / len));
}

void GENERATE_AUDIO_MEMORY(const Tranche& t, const std::vector<float>& v) {
  const long long n = std::min(t.n, static_cast<long long>(v.size()));
  for (long long k = 0; k < n; k++) pose(t, k, v[static_cast<size_t>(k)]);
}

namespace {

// Sample c of frame k of a sound, in units of its full scale; 0 past its end.
double echantillon_source(Objet* o, long long k, int c) {
  const uint8_t* s = donnees(o);
  const int n = Nb_octet(o), canaux = Channel(o);
  if (!s || (n != 1 && n != 2) || canaux < 1 || k >= trames(o)) return 0;
  return lit_echantillon(s + (k * canaux + c % canaux) * n, n) / static_cast<double>(pleine_echelle(n));
}

// Writes (or adds) v on channel c of frame k.
void pose_canal(const Tranche& t, long long k, int c, double v) {
  const int m = pleine_echelle(t.nb_octet);
  const long s = std::lround(std::clamp(v, -1.0, 1.0) * m);
  uint8_t* p = t.p + (k * t.canaux + c) * t.nb_octet;
  ecrit_echantillon(p, t.nb_octet, t.ajoute ? s + lit_echantillon(p, t.nb_octet) : s);
}

}  // namespace

void GENERATE_AUDIO_AUDIO_SIN_INTERPOL(const Tranche& t, Objet* source, float f, float a, float phase) {
  const double pas = DEUX_PI * f / t.Rate, n = static_cast<double>(t.n);
  for (long long k = 0; k < t.n; k++) {
    const double x = static_cast<double>(k) / n, sinus = a * std::sin(phase + pas * static_cast<double>(k));
    for (int c = 0; c < t.canaux; c++) pose_canal(t, k, c, (1 - x) * echantillon_source(source, k, c) + x * sinus);
  }
}

void GENERATE_AUDIO_PERIOD_1(const Tranche& t, Objet* source, float f, float a) {
  if (!(f > 0)) return;
  const long long periode = std::min<long long>(std::max<long long>(std::llround(t.Rate / static_cast<double>(f)), 1), trames(source));
  if (periode < 1) return;
  for (long long k = 0; k < t.n; k++)
    for (int c = 0; c < t.canaux; c++) pose_canal(t, k, c, a * echantillon_source(source, k % periode, c));
}

void GENERATE_STOCK_AUDIO(const Tranche& t, Objet* stock, float f, float a, float phase) {
  const std::vector<float> e = enveloppe_stock(stock);
  const double pas = DEUX_PI * f / t.Rate, par_image = static_cast<double>(t.Rate) / IMAGES_SECONDE;
  for (long long k = 0; k < t.n; k++) {
    const size_t i = static_cast<size_t>(static_cast<double>(k) / par_image);
    pose(t, k, i < e.size() ? a * e[i] * std::sin(phase + pas * static_cast<double>(k)) : 0);
  }
}

void INSERT_AUDIO_TIME_MODULE_2(const Tranche& t, float f, float a, float phase, float fm, float index) {
  INSERT_AUDIO_TIME_MODULE_N(t, f, a, phase, {fm, index});
}

void INSERT_AUDIO_TIME_MODULE_N(const Tranche& t, float f, float a, float phase, const std::vector<float>& m) {
  const double pas = DEUX_PI * f / t.Rate;
  for (long long k = 0; k < t.n; k++) {
    const double x = static_cast<double>(k);
    double mod = 0;
    for (size_t i = 0; i + 1 < m.size(); i += 2) mod += m[i + 1] * std::sin(DEUX_PI * m[i] * x / t.Rate);
    pose(t, k, a * std::sin(phase + pas * x + mod));
  }
}

int INSERT_AUDIO_TIME(Objet* o, float t1, float t2, const Generation& g) {
  Tranche t;
  if (!tranche_temps(o, t1, t2, t)) return 0;
  t.ajoute = g.add;
  const std::vector<float> none;
  const std::vector<float>& s = g.sin.empty() ? none : g.sin[0];
  const float f = arg(s, 0, 0), a = arg(s, 1, 1), p = arg(s, 2, 0);
  // The sources first (a sound, the stream, the analysis), then the
  // shapes of the samples there, then the syntheses, sines last.
  if (g.source && !s.empty() && g.has_interpol) {
    GENERATE_AUDIO_AUDIO_SIN_INTERPOL(t, g.source, f, a, p);
  } else if (g.source && !g.period.empty()) {
    GENERATE_AUDIO_PERIOD_1(t, g.source, g.period[0], arg(g.period, 1, 1));
  } else if (g.source) {
    GENERATE_AUDIO_AUDIO(t, g.source);
  } else if (g.stock && !s.empty()) {
    GENERATE_STOCK_AUDIO(t, g.stock, f, a, p);
  } else if (g.stock) {
    GENERATE_AUDIO_STOCK(t, g.stock);
  } else if (g.has_memory) {
    std::vector<float> v;
    if (lit_flux(static_cast<int>(std::min<long long>(t.n, 1 << 30)), v) < 0) return -1;
    GENERATE_AUDIO_MEMORY(t, v);
  } else if (g.cut) {
    GENERATE_AUDIO_CUT(t);
  } else if (!g.rand.empty()) {
    GENERATE_AUDIO_RAND(t, g.rand[0]);
  } else if (!g.puls.empty()) {
    GENERATE_AUDIO_PULS(t, arg(g.puls, 0, 0), arg(g.puls, 1, 1), arg(g.puls, 2, 0.5f));
  } else if (g.period.size() > 2) {
    GENERATE_AUDIO_PERIOD(t, g.period[0], g.period[1], g.period.data() + 2, static_cast<int>(g.period.size() - 2));
  } else if (!g.poi.empty()) {
    GENERATE_AUDIO_POI(t, g.poi.data(), static_cast<int>(g.poi.size()));
  } else if (s.empty() && !g.min.empty()) {
    GENERATE_AUDIO_MIN(t, g.min[0]);
  } else if (s.empty() && g.var.size() >= 2) {
    GENERATE_AUDIO_VAR(t, g.var[0], g.var[1]);
  } else if (s.empty() && !g.law.empty()) {
    decroissance(t, g.law[0]);
  } else if (s.empty() && g.has_interpol && g.interpol.empty()) {
    GENERATE_AUDIO_INTERPOL(t);
  } else if (g.sin.size() >= 2) {
    GENERATE_SIN_SIN(t, g.sin[0], g.sin[1]);
  } else if (!s.empty() && g.module.size() > 2) {
    INSERT_AUDIO_TIME_MODULE_N(t, f, a, p, g.module);
  } else if (!s.empty() && g.module.size() == 2) {
    INSERT_AUDIO_TIME_MODULE_2(t, f, a, p, g.module[0], g.module[1]);
  } else if (!s.empty() && !g.law.empty()) {
    GENERATE_AUDIO_LAW(t, f, a, p, g.law[0]);
  } else if (!s.empty() && g.harmoniques > 0) {
    GENERATE_SIN_N(t, f, a, p, g.harmoniques);
  } else if (!s.empty() && !g.interpol.empty()) {
    GENERATE_AUDIO_SIN_INTERPOL(t, f, a, p, g.interpol[0], arg(g.interpol, 1, a));
  } else if (!s.empty() && g.var.size() >= 2) {
    GENERATE_AUDIO_SIN_VAR(t, f, a, p, g.var[0], g.var[1]);
  } else if (!s.empty()) {
    GENERATE_SIN(t, f, a, p, g.coe);
  } else {
    voir_texte(USAGE_GENERATE);
    return -1;
  }
  return 1;
}
