// Helpers shared by the files of the networks.
#pragma once
#include <cstdio>
#include <vector>

#include "adaptive/network.h"
#include "kernel/access.h"
#include "language/args.h"

// The parts of a HYBRIDE in order, for a range-for; none for any other
// value or a part whose size runs past the list.
struct Parties {
  const word* list;
  explicit Parties(const word* l) : list(l) {}
  struct It {
    const word* p;
    const word* end;
    const word* operator*() const { return p; }
    It& operator++() {
      p += p[0];
      if (p >= end || p[0] < 4 || p + p[0] > end) p = end;
      return *this;
    }
    bool operator!=(const It& o) const { return p != o.p; }
  };
  It begin() const {
    if (!list || tag(list) != T_HYBRIDE || size(list) <= 4 || np(list) < 1) return end();
    const word* p = list + 4;
    const word* e = list + size(list);
    return {p[0] < 4 || p + p[0] > e ? e : p, e};
  }
  It end() const {
    const word* e = list && size(list) > 0 ? list + size(list) : list;
    return {e, e};
  }
};

// A uniform draw in [lo, hi) from the networks' generator.
float tirage(float lo, float hi);
// The minimum-magnitude rule: a value in (-min, min) becomes +min.
float poids_min(float v, float min);
// "(nx * ny) size != n" for an element of the wrong size.
void rapport_taille_element(const word* e, int n);
// The kind and number of the object ("network 3 ", "genetic 1 "), then
// the keyword and MISSING: a sub-property absent.
void rapport_manque(const Objet* o, int code);
// The weight from neuron i to neuron j (numbers from 1): its word.
inline word* poids_de(bloc m, int N, int j, int i) { return m + 4 + static_cast<long>(j - 1) * N + (i - 1); }
inline word* poids(const Reseau& r, int j, int i) { return poids_de(r.matrix, r.N, j, i); }
// Word w of the record of neuron j (from 1).
inline word* neurone(const Reseau& r, int j, int w) { return r.neuron + 4 + static_cast<long>(j - 1) * NR_WORDS + w; }
inline float lit(const word* w) { return wf(*w); }
inline void ecrit(word* w, float f) { *w = fw(f); }
// Every motif the size of the first layer and every law that of the last;
// "name motif(k) != n" otherwise.
int verifie_tailles(const Reseau& r);
// The neighbourhood of a map at pass `pass` of `passes`: from 9 down,
// at least 1.
int voisinage(int pass, int passes);
// The output neuron closest to a pattern (sum of absolute differences)
// and its distance; 0 when none is under 1000000.
int gagnant(const Reseau& r, const word* pattern, float* distance);
// The recurrent run of a `near` network: each neuron of the later layers
// takes the mean of the others' weighted outputs, then its activation;
// the first layer holds the pattern.
void passe_recurrente(Reseau& r, const word* pattern);
// The outputs of a layer's neurons, in order, into `out` (grown to fit).
void sorties_couche(const Reseau& r, const word* layer, std::vector<float>& out);
// The first number of a layer whose numbers follow one another, else 0:
// its weights then lie side by side in each row.
int suite(const word* layer);
// The learning screen: the network drawn in the window, layers as
// columns; its idle step (mode 298), registered at start-up.
void dessine_reseau(const Reseau& r);
void idle_reseau();
void install_network_screen();
