#include "kernel/work_areas.h"

#include <cstdlib>

#include "kernel/bloc.h"
#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/values.h"

namespace {

int allocation_failure(const char* label, int size) {
  voir_int(label, size);
  voir_int("%d", size);
  voir_texte("ALLOCATION ERROR in inita\n\a");
  return -1;
}

}  // namespace

int allocate_work_areas() {
  KernelState& k = kernel();
  // The external variables themselves live in their chain; Dim_EXTERN
  // bounds how many one compile may declare.
  if (k.Dim_EXTERN <= 0) return allocation_failure("Dim_EXTERN objets = %d: ", k.Dim_EXTERN);
  // The area is allocated 92 bytes a word, while the overflow limit stands
  // only Dim_ev words above its base.
  if (k.Dim_ev <= 0) return allocation_failure("Dim_ev = %d: ", k.Dim_ev);
  size_t bytes = static_cast<size_t>(k.Dim_ev) * 92;
  free(k.eval_stack);
  k.eval_stack = static_cast<word*>(malloc(bytes));
  if (!k.eval_stack) return allocation_failure("Dim_ev = %d: ", k.Dim_ev);
  k.eval_limit = k.eval_stack + k.Dim_ev;
  k.eval_stack[0] = 0;
  bloc_state().live_blocks = 0;
  bloc_state().total_words = 0;
  if (k.Dim_emp < 4) return allocation_failure("Dim_com = %d: ", k.Dim_emp);
  libere_bloc(k.command_stack);
  k.command_stack = alloue_bloc(k.Dim_emp);
  if (!k.command_stack) return allocation_failure("Dim_com = %d: ", k.Dim_emp);
  word* s = k.command_stack;
  build_head(s, 4, T_SEGMENTS, 0, 0);
  k.command_insert = s + 4;
  k.command_limit = s + k.Dim_emp;
  return 0;
}
