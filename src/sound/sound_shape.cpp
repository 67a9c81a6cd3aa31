// The members of the GENERATE_ family that reshape the samples already in
// a stretch rather than write new ones.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/args.h"
#include "sound/sound_generate.h"
#include "sound/sound_object.h"

namespace {

// Each sample of the stretch, on every channel, through f(frame, value in
// units of the full scale); `add` does not apply: these reshape.
template <class F>
void remodele(const Tranche& t, F f) {
  const double m = pleine_echelle(t.nb_octet);
  for (long long k = 0; k < t.n; k++) {
    uint8_t* p = t.p + k * t.canaux * t.nb_octet;
    for (int c = 0; c < t.canaux; c++, p += t.nb_octet)
      ecrit_echantillon(p, t.nb_octet, std::lround(std::clamp(f(k, lit_echantillon(p, t.nb_octet) / m), -1.0, 1.0) * m));
  }
}

}  // namespace

std::vector<float> enveloppe_stock(const Objet* o) {
  std::vector<float> out;
  const std::vector<float> pairs = o ? floats_of(get_val_1(o->local, KW_stock)) : std::vector<float>();
  for (size_t i = 1; i < pairs.size(); i += 2) out.push_back(std::abs(pairs[i]));
  const float m = out.empty() ? 0 : *std::max_element(out.begin(), out.end());
  for (float& x : out) x = m > 0 ? x / m : 0;
  return out;
}

void GENERATE_AUDIO_INTERPOL(const Tranche& t) {
  if (t.n < 2) return;
  const uint8_t* fin = t.p + (t.n - 1) * t.canaux * t.nb_octet;
  for (int c = 0; c < t.canaux; c++) {
    const double a = lit_echantillon(t.p + c * t.nb_octet, t.nb_octet);
    const double b = lit_echantillon(fin + c * t.nb_octet, t.nb_octet);
    for (long long k = 1; k + 1 < t.n; k++)
      ecrit_echantillon(t.p + (k * t.canaux + c) * t.nb_octet, t.nb_octet,
                        std::lround(a + (b - a) * static_cast<double>(k) / static_cast<double>(t.n - 1)));
  }
}

void GENERATE_AUDIO_VAR(const Tranche& t, float depth, float rate) {
  const double w = 2 * std::numbers::pi * rate / t.Rate;
  remodele(t, [&](long long k, double v) { return v * (1 + depth * std::sin(w * static_cast<double>(k))); });
}

void GENERATE_AUDIO_MIN(const Tranche& t, float seuil) {
  remodele(t, [&](long long, double v) { return std::abs(v) < seuil ? 0.0 : v; });
}

void GENERATE_AUDIO_STOCK(const Tranche& t, Objet* stock) {
  const std::vector<float> e = enveloppe_stock(stock);
  const double par_image = static_cast<double>(t.Rate) / IMAGES_SECONDE;
  remodele(t, [&](long long k, double v) {
    const size_t i = static_cast<size_t>(static_cast<double>(k) / par_image);
    return i < e.size() ? v * e[i] : 0.0;
  });
}

void decroissance(const Tranche& t, float d) {
  remodele(t, [&](long long k, double v) { return v * std::exp(-d * static_cast<double>(k) / t.Rate); });
}
