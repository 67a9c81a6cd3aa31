// Laws on objects: the functions f(t) of gradation read as values, the
// centres of volumes moved along a curve, and curves given as lines.
//
//   acc(t...), dec(t...), pend(t...)      f(t) of each t (`law acc(t)` too)
//   law CG(t) law(k) vol(id)              each volume's centre put at the
//                                         point of parameter t (0 to 1, by
//                                         the points of the curve) of law
//                                         object k, from its origin
//   law CG validate law(k) vol(id)        the origin taken from where the
//                                         volume stands: its translation
//                                         less the curve's first point,
//                                         kept in the property `law CG`
//   law line(x1,y1, ...) poi(x...)        the y of the line at each x
//                                         (read_law)
// Every other form of `law` is the generic object command; `acc`, `dec`
// and `pend` with an object are the speed handler's.
#pragma once
#include <vector>

#include "kernel/objet.h"

void install_laws();

// The point of parameter t (clamped to 0..1) along a curve of n points
// (x,y,z): linear between the points around t x (n-1).
void point_courbe(const std::vector<float>& curve, float t, float r[3]);
