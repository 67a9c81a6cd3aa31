// The precalculated table of random numbers (option `ale`) and its seed.
#pragma once
#include "kernel/word.h"

// Fills the table with `n` numbers; n of zero or less leaves it empty.
void random_table_fill(int n);
// Number `i` of the table, in [0, 1); 0 when the table is empty.
float random_table_at(int i);
// Numbers in the table.
int random_table_size();
// The generator behind the table and `rand`: uniform in [0, 1).
float random_uniform();
void random_seed(unsigned seed);

// Permanent constant properties made at start-up.
struct GraphicConstants {
  bloc normal_fac = nullptr;     // keys [normal, fac]
  bloc normal_vertex = nullptr;  // keys [normal, vertex]
};
GraphicConstants& graphic_constants();
