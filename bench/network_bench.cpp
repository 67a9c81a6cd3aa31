// Back-propagation passes a second on a 64-32-8 network with 256
// patterns: the network's own pass (weights addressed by index from the
// layer lists, neurons in their eight-word records) against a plain loop
// doing the same arithmetic on contiguous arrays. Both start from the
// same weights; the weights after the passes are compared. Best of five
// rounds of 20 passes each.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

#include "adaptive/net_internal.h"
#include "bench_console.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/values.h"
#include "scene/lookup.h"

namespace {

constexpr int NI = 64, NH = 32, NO = 8, N = NI + NH + NO, P = 256, PASSES = 20;

struct Plain {
  std::vector<float> w, out, delta, err, work, motif, law;
};

// One pass: forward, output errors, then each layer back to the second
// with the products of the old weights, as the network does it.
void plain_pass(Plain& p, float coef, float tol, float wmax) {
  const int first[3] = {0, NI, NI + NH}, count[3] = {NI, NH, NO};
  std::fill(p.delta.begin(), p.delta.end(), 0.0f);
  for (int k = 0; k < P; k++) {
    std::memcpy(p.out.data(), p.motif.data() + k * NI, NI * sizeof(float));
    for (int l = 1; l < 3; l++)
      for (int j = first[l]; j < first[l] + count[l]; j++) {
        float s = 0;
        for (int i = first[l - 1]; i < first[l - 1] + count[l - 1]; i++) s += p.w[j * N + i] * p.out[i];
        p.out[j] = 1.0f / (1.0f + std::exp(-1.0f * s));
      }
    bool above = false;
    for (int a = 0; a < NO; a++) {
      p.err[first[2] + a] = p.law[k * NO + a] - p.out[first[2] + a];
      if (std::fabs(p.err[first[2] + a]) > tol) above = true;
    }
    if (!above) continue;
    for (int l = 2; l >= 1; l--) {
      for (int j = first[l]; j < first[l] + count[l]; j++) p.delta[j] = (1 - p.out[j]) * p.out[j] * p.err[j];
      for (int a = 0; a < count[l]; a++) {
        const int j = first[l] + a;
        for (int b = 0; b < count[l - 1]; b++) {
          const int i = first[l - 1] + b;
          const float old = p.w[j * N + i];
          p.work[a * NI + b] = p.delta[j] * old;
          p.w[j * N + i] = std::clamp(old + coef * p.delta[j] * p.out[i], -wmax, wmax);
        }
      }
      for (int b = 0; b < count[l - 1]; b++) {
        float s = 0;
        for (int a = 0; a < count[l]; a++) s += p.work[a * NI + b];
        p.err[first[l - 1] + b] = s;
      }
    }
  }
}

}  // namespace

int main() {
  if (!bench::start()) return 1;
  std::mt19937 g(5);
  std::uniform_real_distribution<float> u(0.05f, 0.95f);
  Plain p;
  p.motif.resize(P * NI);
  p.law.resize(P * NO);
  for (float& v : p.motif) v = u(g);
  for (float& v : p.law) v = u(g);
  if (!bench::run("network(1) fac(64,32,8)")) return 1;
  Objet* o = get_objet_id(chaine_classe(KW_network), KW_network, 1);
  std::vector<word> motifs = liste_vide(), laws = liste_vide();
  for (int k = 0; k < P; k++) {
    liste_ajoute(motifs, valeur_floats(p.motif.data() + k * NI, NI, NI).data());
    liste_ajoute(laws, valeur_floats(p.law.data() + k * NO, NO, NO).data());
  }
  if (!set_propr_1(o, KW_motif, motifs.data()) || !set_propr_1(o, KW_law, laws.data())) return 1;
  if (!bench::run("generate network(1) validate(1) alea(3)")) return 1;
  Reseau r = trouve_reseau(o);
  p.w.assign(static_cast<size_t>(N) * N, 0.0f);
  std::memcpy(p.w.data(), r.matrix + 4, p.w.size() * sizeof(float));
  p.out.assign(N, 0);
  p.delta.assign(N, 0);
  p.err.assign(N, 0);
  p.work.assign(NI * NI, 0);
  NetOptions opt;
  opt.error = 0.0f;  // every pattern teaches
  std::vector<float> work;
  const float coef = 0.5f;
  const double net_ms = bench::best_ms(5, [&] {
    for (int i = 0; i < PASSES; i++)
      if (passe_retropropagation(r, coef, opt, work) < 0) return false;
    return true;
  });
  const double plain_ms = bench::best_ms(5, [&] {
    for (int i = 0; i < PASSES; i++) plain_pass(p, coef, opt.error, opt.max);
    return true;
  });
  const bool same = std::memcmp(p.w.data(), r.matrix + 4, p.w.size() * sizeof(float)) == 0;
  bench::stop();
  if (net_ms < 0) return 1;
  printf("back-propagation, 64-32-8, 256 patterns, %d passes\n", PASSES);
  printf("network pass:  %8.2f ms, %6.1f passes a second\n", net_ms, PASSES * 1000.0 / net_ms);
  printf("plain loop:    %8.2f ms, %6.1f passes a second\n", plain_ms, PASSES * 1000.0 / plain_ms);
  printf("network / plain loop: %.2f; weights %s\n", net_ms / plain_ms, same ? "identical" : "DIFFERENT");
  return same ? 0 : 1;
}
