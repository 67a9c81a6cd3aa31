// Curves read as functions, and the laws of gradation along a list.
#pragma once
#include <vector>

#include "kernel/word.h"

// The y of a curve of n points (x,y) of stride d at abscissa v: linear
// between the two points around v, the first y before the curve, the
// last after it. A step in x of 0.0001 or less uses the step itself as
// the fraction, as the curves of older scenes expect.
float read_law(const float* points, int n, int d, float v);

// The keys replaced by the points of a cubic curve through them whose
// tangent at a key is (next - previous) x tension / 2 (one-sided at the
// ends of an open curve); `steps` points a segment, the keys included.
std::vector<float> courbe_ext(const std::vector<float>& keys, int dim, int steps, float tension, bool closed);

// The laws of gradation: f(t) for t from 0 to 1, by keyword (`cos`,
// `sin`, `acc`, `dec`, `pend`); 1 for any other code.
float loi(int code, float t);

// The curve of `law(id)`: the vertices of the law object as points
// (x, y, z); a law with `ext(steps, tension)` gives the points of the
// `ext` curve through its vertices (8 points a segment and tension 1 by
// default). False after a report when there is none.
bool courbe_loi(const word* ids, std::vector<float>& curve);
