#include "device/device_util.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "platform/files.h"
#include "platform/process.h"

namespace {

float float_de(const unsigned char* b, bool inverse) {
  unsigned char o[4] = {b[0], b[1], b[2], b[3]};
  if (inverse) std::reverse(o, o + 4);
  float f;
  std::memcpy(&f, o, 4);
  return f;
}

}  // namespace

int resultat_octets(Lecture& l, const Periph& p, const unsigned char* b, int n) {
  if (n <= 0) return build_nil(l.v, l.lim);
  if (l.format != T_FLOAT) return build_text(l.v, l.lim, reinterpret_cast<const char*>(b), static_cast<size_t>(n));
  if (!build_zeros(l.v, l.lim, n)) return -12;
  for (int i = 0; i < n; i++) setf(l.v, i, mappe(p, b[i]));
  return 0;
}

int resultat_mots(Lecture& l, const Periph& p, const unsigned char* b, int n) {
  if (l.format != T_FLOAT) return resultat_octets(l, p, b, n);
  const int k = n / 4;
  if (k == 0) return build_nil(l.v, l.lim);
  if (!build_zeros(l.v, l.lim, k)) return -12;
  for (int i = 0; i < k; i++) setf(l.v, i, mappe(p, float_de(b + 4 * i, p.Inverse != 0)));
  return 0;
}

int resultat_mappe(Lecture& l, const Periph& p, const float* f, int n) {
  if (n <= 0) return build_nil(l.v, l.lim);
  if (!build_zeros(l.v, l.lim, n)) return -12;
  for (int i = 0; i < n; i++) setf(l.v, i, mappe(p, f[i]));
  return 0;
}

bool octets_de_valeur(const Periph& p, const word* v, bool octet, const unsigned char** data, size_t* n) {
  if (!v || (tag(v) != T_CHAR && tag(v) != T_FLOAT && tag(v) != T_LONG && tag(v) != T_HYBRIDE)) {
    voir_message(0, MES_ILLEGAL);
    return false;
  }
  if (tag(v) == T_CHAR) {
    *data = reinterpret_cast<const unsigned char*>(text(v));
    *n = static_cast<size_t>(text_bytes(v));
    return true;
  }
  const std::vector<float> f = floats_of(v);
  std::vector<unsigned char>& t = devices().Octets;
  t.clear();
  for (float x : f) {
    if (octet) {
      t.push_back(static_cast<unsigned char>(entier_borne(x, 0, 255)));
      continue;
    }
    unsigned char o[4];
    std::memcpy(o, &x, 4);
    if (p.Inverse) std::reverse(o, o + 4);
    t.insert(t.end(), o, o + 4);
  }
  *data = t.data();
  *n = t.size();
  return true;
}

bool interruption_demandee() { return sigint_pending(); }

bool attendre_ms(long long ms) {
  const long long fin = clock_ms() + ms;
  for (long long reste = ms; reste > 0; reste = fin - clock_ms()) {
    if (sigint_pending()) return false;
    sleep_ms(static_cast<int>(std::min(reste, 100LL)));
  }
  return !sigint_pending();
}

void err_device(int n) {
  voir_mot(KW_device);
  voir_int(" %d ", n);
  voir_message(0, MES_ILLEGAL);
}

Periph* periph_ou_erreur(int n) {
  Periph* p = periph(n);
  if (!p) {
    voir_int2("%d [0,%d]", n, NB_PERIPH);
    voir_message(0, MES_ILLEGAL);
  }
  return p;
}

void err_son() {
  voir_mot(KW_audio);
  voir_message(0, MES_SOUND_OFF);
}
