// Stepping the counters: INC_TRAJ_1 moves one trajectory by its period
// mode and, when its cycle comes round, the trajectories of the next
// order, like the wheels of a counter.
#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "render/window.h"
#include "kernel/chains.h"

namespace {

// `add(n)` and `number(...)`: each number of the list increased by n.
int avance_numeros(Objet* t) {
  const word* add = get_val_1(t->local, KW_add);
  bloc list = get_val_1(t->local, KW_number);
  if (!add || !list) return 0;
  if (tag(list) != T_FLOAT) {
    voir_mot(KW_number);
    print_value(list);
    TRACE_FAIL("INC_TRAJ_1()");
    return -1;
  }
  const float n = tag(add) == T_FLOAT && np(add) > 0 ? getf(add, 0) : 0.0f;
  for (int i = 0; i < np(list) * (dimp(list) > 0 ? dimp(list) : 1); i++) setf(list, i, getf(list, i) + n);
  return 0;
}

}  // namespace

int step_traj(Objet* t) {
  if (end(t) == -1) return 0;  // a one-shot ends once
  cpt(t) += inc(t);
  int ended = 0;
  if (period(t) == 0 && cpt(t) > ni(t)) {
    ended = 1;
    end(t) = -1;
  } else if (period(t) > 0 && cpt(t) >= ni(t)) {
    ended = 1;
    cpt(t) = 0;
  } else if (period(t) < 0) {
    if (cpt(t) >= ni(t) && inc(t) > 0) {
      inc(t) = -inc(t);
      cpt(t) = ni(t) - 2;
      ended = 1;
    } else if (cpt(t) < 0 && inc(t) < 0) {
      inc(t) = -inc(t);
      cpt(t) = 1;
      ended = 1;
    }
  }
  if (ended) {
    if (bloc time = get_val_1(t->local, KW_time); time && tag(time) == T_FLOAT && np(time) > 0) {
      if (getf(time, 0) <= 0) ni(t) = -1;
      setf(time, 0, getf(time, 0) - 1);
    }
  }
  return ended;
}

namespace {

// One trajectory's step: the background of the `back` kind, the counter,
// and on a cycle ended the list of `number`. 1 when a cycle ended, 0 when
// not, -1 after a report.
int un_pas(Objet* t) {
  if (ni(t) <= 0) return 0;
  if (kind_1(t) == KW_back) {
    int d = 0;
    if (const float* r = ligne_courante(t, &d)) {
      float* b = Back();
      for (int k = 0; k < 3 && k < d; k++) b[k] = r[k], b[3 + k] = r[k] * 255.0f;
    }
  }
  if (step_traj(t) == 0) return 0;
  return avance_numeros(t) < 0 ? -1 : 1;
}

}  // namespace

// Each cycle that ends steps every trajectory of the next order once; the
// orders are walked in a loop rather than by recursion, so that a long
// chain of orders cannot exhaust the stack.
int INC_TRAJ_1(Objet* t) {
  int fois = un_pas(t);
  if (fois < 0) return -1;
  Objet* head = chaine_classe(KW_traj);
  for (int o = order(t) + 1; fois > 0 && o <= traj_state().Max_order; o++) {
    int ended = 0;
    for (int f = 0; f < fois; f++)
      for (Objet* u = head->next; u; u = u->next) {
        if (u->kind != KW_traj || order(u) != o) continue;
        const int r = un_pas(u);
        if (r < 0) return -1;
        ended += r;
      }
    fois = ended;
  }
  return 0;
}
