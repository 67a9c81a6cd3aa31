// The genetics' state and its random sources.
#include "adaptive/genetic_state.h"

#include "adaptive/genetic.h"
#include "kernel/entier.h"
#include "kernel/random_table.h"
#include "scene/transform.h"

GeneticState& genetics() {
  static GeneticState g;
  return g;
}

void genetics_restart() {
  GeneticState& g = genetics();
  g.position = 0;
  g.alea = 0;
}

float tire(Source s) {
  GeneticState& g = genetics();
  if (s == Source::table) return g.table ? g.table() : random_table_at(graine_alea() + g.alea++);
  return g.process ? g.process() : random_uniform();
}

int tire_entier(Source s, int n) {
  if (n < 2) return 0;
  return entier_borne(tire(s) * static_cast<float>(n), 0, n - 1);
}
