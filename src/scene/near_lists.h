// Reading the self-sized neighbour lists of `near vertex vertex` (and the
// rest lengths of `near vertex dist`, laid out alike): one list a vertex,
// led by its own size with that entry counted. A negative size skips the
// vertex's list; a size that does not fit ends the walk. The limits and
// the dynamics both walk them, vertex after vertex, through this cursor.
#pragma once
#include "kernel/entier.h"

class CurseurVoisins {
 public:
  // The entries of one vertex's list: indexes [debut, fin) of the floats.
  struct Liste {
    int debut = 0, fin = 0;
    bool vide() const { return fin <= debut; }
  };

  CurseurVoisins(const float* v, int total) : v_(v), total_(v && total > 0 ? total : 0) {}

  // The next vertex's list: empty when skipped, or once the walk has ended.
  Liste suivante() {
    if (pos_ >= total_) return {};
    const int taille = entier(v_[pos_]), len = taille < 0 ? -taille : taille;
    if (len < 1 || len > total_ - pos_) {
      pos_ = total_;
      return {};
    }
    const int debut = pos_ + 1;
    pos_ += len;
    return taille > 0 ? Liste{debut, pos_} : Liste{};
  }

  bool fini() const { return pos_ >= total_; }
  // The vertex number (from 1) at entry m.
  int voisin(int m) const { return entier(v_[m]); }

 private:
  const float* v_;
  int total_;
  int pos_ = 0;
};
