#include "kernel/resources.h"

#include <cstdlib>

#include "kernel/report.h"
#include "platform/memory.h"

namespace {

constexpr size_t RESERVE = 16u << 20;
// Left to the rest of the machine: what would bring the memory available
// below this is refused, before the system has to end a process for it.
constexpr double MARGE_MEMOIRE = 256.0 * (1 << 20);
// Below this, the rest of the stack is kept for the work of the deepest
// level and for the reports; a quarter of a small stack.
constexpr size_t MARGE_PILE = 2u << 20;

}  // namespace

const char* pile_plancher() {
  const char* bas = nullptr;
  size_t taille = 0;
  if (!stack_bounds(&bas, &taille)) {
    // Unknown: 8 MB counted down from here.
    taille = 8u << 20;
    bas = static_cast<const char*>(__builtin_frame_address(0)) - taille + (64u << 10);
  }
  const size_t marge = taille / 4 < MARGE_PILE ? taille / 4 : MARGE_PILE;
  return bas + marge;
}

Ressources& ressources() {
  static Ressources r;
  return r;
}

bool memoire_disponible(double bytes) {
  const double libre = memory_available();
  return libre < 0 || bytes + MARGE_MEMOIRE <= libre;
}

bool memoire_possible(double bytes, const char* name) {
  if (memoire_disponible(bytes)) return true;
  err_malloc(name, bytes);
  return false;
}

bool bloc_possible(double words, double copies, const char* name) {
  if (words <= MOTS_BLOC_MAX && memoire_disponible(words * 4 * copies)) return true;
  err_malloc(name, words * 4);
  return false;
}

void memoire_manque() {
  Ressources& r = ressources();
  std::free(r.reserve);
  r.reserve = nullptr;
}

void memoire_reserve() {
  Ressources& r = ressources();
  if (r.reserve) return;
  // Twice the reserve must be free, so that taking it leaves room.
  void* essai = std::malloc(2 * RESERVE);
  if (!essai) return;
  std::free(essai);
  r.reserve = std::malloc(RESERVE);
}
