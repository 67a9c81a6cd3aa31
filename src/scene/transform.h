// Changing vertices in place: the transformations of `tran`, `rotx`,
// `dila`... applied to a vertex array, uniformly or along a list of
// vertices with a law of gradation.
#pragma once
#include <vector>

// What TRANSF_POI applies.
struct Transformation {
  int kind = 0;                 // the keyword: tran, rotx, dila, cutx, alea...
  std::vector<float> par;       // its values (start and end pairs with a law)
  float centre[3] = {0, 0, 0};  // of rotations, scales, cuts
  float axis[3] = {0, 0, 1};    // of rota and distort
  float factor[2] = {1, 1};     // mouse factors of the first two values
  std::vector<int> vertices;    // 1-based; empty for all
  int law = 0;                  // cos, sin, acc, dec, pend, or law (with a curve)
  std::vector<float> curve;     // points (x,y,z) of a law(id)
  bool alea = false;            // random values from the table, not the generator
};

// Number of values a kind reads (the start values with a law).
int nb_valeurs(int kind);
// Applies `t` to `n` vertices of stride `d` from `src` into `dst` (the
// same array, or a saved copy and the array).
void TRANSF_POI(const float* src, float* dst, int n, int d, const Transformation& t);

// The seed of the `alea` table.
int& graine_alea();

// The words of MOD_b's transformations.
bool mot_transformation(int code);
