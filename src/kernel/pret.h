// Buffers lent for the length of a call and kept for the next one: a call
// made at every image allocates nothing once the buffers have grown, and
// a call made from within another borrows a buffer of its own.
#pragma once
#include <cstddef>
#include <deque>
#include <vector>

template <class T>
struct Prets {
  std::deque<std::vector<T>> niveaux;  // a deque: growing it moves none
  size_t profondeur = 0;
};

template <class T>
class Pret {
 public:
  explicit Pret(Prets<T>& p) : prets_(p), v(prendre(p)) {}
  ~Pret() { prets_.profondeur--; }
  Pret(const Pret&) = delete;
  Pret& operator=(const Pret&) = delete;

 private:
  Prets<T>& prets_;

 public:
  std::vector<T>& v;

 private:
  static std::vector<T>& prendre(Prets<T>& p) {
    if (p.profondeur == p.niveaux.size()) p.niveaux.emplace_back();
    return p.niveaux[p.profondeur++];
  }
};
