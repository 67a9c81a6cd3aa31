// "MEM": a view of 1024 bytes of shared memory, named by `name`, that
// holds one block. Its word 0 is the block's size, 0 while a writer is
// at work: the writer sets it to 0, copies the other words, then sets the
// size last, so that a reader never takes a half-written block. A reader
// copies the block when word 0 is above 0. In `wait` mode a read first
// waits, `Timeout` ms at most, for the peer to take what was written
// (word 0 falls to 0, or its answer already stands in place of it), then
// `wait` seconds, then reads the answer.
#include <atomic>
#include <cstring>

#include "device/device_util.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/shared_memory.h"

namespace {

word charge(word* w) { return std::atomic_ref<word>(*w).load(std::memory_order_acquire); }
void range(word* w, word v) { std::atomic_ref<word>(*w).store(v, std::memory_order_release); }

// Copies a whole block out of the view into p.Bloc: its size, or 0 when
// word 0 is 0, or -1 for a size the view cannot hold. A copy that the
// writer overlapped (word 0 changed meanwhile) is taken again.
int copie_bloc_vue(Periph& p) {
  for (int essai = 0; essai < 100; essai++) {
    const word taille = charge(p.Mem);
    if (taille == 0) return 0;
    if (taille < 4 || taille > MEM_MOTS) return -1;
    p.Bloc[0] = taille;
    for (int i = 1; i < taille; i++) p.Bloc[static_cast<size_t>(i)] = std::atomic_ref<word>(p.Mem[i]).load(std::memory_order_relaxed);
    if (charge(p.Mem) == taille) return taille;
  }
  return 0;
}

// The block last written was taken: word 0 is 0, or another block holds
// the view. True when nothing was written.
bool pris(Periph& p) {
  const word taille = charge(p.Mem);
  if (taille == 0 || p.Buffer.empty()) return true;
  const word ecrit = p.Buffer[0];
  if (taille != ecrit) return true;
  for (int i = 1; i < ecrit; i++)
    if (std::atomic_ref<word>(p.Mem[i]).load(std::memory_order_relaxed) != p.Buffer[static_cast<size_t>(i)]) return true;
  return false;
}

}  // namespace

int ouvrir_memoire(Periph& p, int, word*, const word*) {
  const int h = shm_object_open(p.Nom.c_str(), MEM_OCTETS);
  if (h < 0) {
    VOIR_CHAR("ERROR CreateFileMapping %s\n", p.Nom.c_str());
    return -1;
  }
  void* vue = shm_object_map(h, MEM_OCTETS);
  if (!vue) {
    voir_texte("ERROR MapViewOfFile\a\n");
    return -1;
  }
  p.Mem = static_cast<word*>(vue);
  p.Bloc.assign(MEM_MOTS, 0);
  p.Buffer.clear();
  p.Buffer.reserve(MEM_MOTS);
  return 0;
}

int lire_memoire(Periph& p, Lecture& l) {
  if (p.Attente > 0) {
    const long long fin = clock_ms() + p.Timeout;
    while (!pris(p)) {
      if (clock_ms() >= fin || interruption_demandee()) {
        voir_message(0, MES_TIME_OUT);
        return build_nil(l.v, l.lim);
      }
      sleep_ms(1);
    }
    if (!attendre_ms(static_cast<long long>(p.Attente * 1000))) return build_nil(l.v, l.lim);
  }
  const int taille = copie_bloc_vue(p);
  if (taille < 0) {
    voir_message(0, MES_BADLY_FORMATTED_FILE);
    return build_nil(l.v, l.lim);
  }
  if (taille == 0) return build_nil(l.v, l.lim);
  // What another process wrote is taken for its numbers or its text only,
  // each number mapped; its header is not trusted further.
  const word* b = p.Bloc.data();
  if (tag(b) == T_CHAR) return build_text(l.v, l.lim, text(b), static_cast<size_t>(text_bytes(b)));
  if (tag(b) != T_FLOAT && tag(b) != T_LONG) return build_nil(l.v, l.lim);
  int n = elements(b);
  if (l.n > 0 && l.n < n) n = l.n;
  if (!build_zeros(l.v, l.lim, n)) return -12;
  for (int i = 0; i < n; i++) setf(l.v, i, mappe(p, value_at(b, i)));
  return 0;
}

int ecrire_memoire(Periph& p, int, const word* v) {
  if (!v || size(v) < 4 || size(v) > MEM_MOTS) {
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  range(p.Mem, 0);
  for (int i = 1; i < size(v); i++) std::atomic_ref<word>(p.Mem[i]).store(v[i], std::memory_order_relaxed);
  range(p.Mem, size(v));
  // What was written, to know when the peer took it.
  p.Buffer.assign(v, v + size(v));
  return 0;
}

void fermer_memoire(Periph& p) {
  shm_object_unmap(p.Mem, MEM_OCTETS);
  p.Mem = nullptr;
}
