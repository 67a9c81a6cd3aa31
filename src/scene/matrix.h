// 4x4 matrices in column-major order (as OpenGL reads them: element
// (row r, column c) at [c*4 + r]) and 3-vectors, as float arrays.
#pragma once

namespace mat {

void identite(float m[16]);
// r = a.b; r may be a or b.
void produit(const float a[16], const float b[16], float r[16]);
// r = m.(p,1): the point's three coordinates, translation added; r may be p.
void point(const float m[16], const float p[3], float r[3]);
void echelle(float m[16], float kx, float ky, float kz);
// Rotation by `a` radians about the axis through `c` along `axis` (of
// any length; below 0.0001 the identity).
void rotation(float m[16], float a, const float axis[3], const float c[3]);

float scalaire(const float a[3], const float b[3]);
// Mean of n points of stride d (their three first coordinates).
void moyenne(const float* p, int n, int d, float r[3]);
void vectoriel(const float a[3], const float b[3], float r[3]);
// (b-a) x (c-a): the normal direction of a triangle.
void vectoriel_points(const float a[3], const float b[3], const float c[3], float r[3]);
// v made of length 1; a vector of length at most 0.0000001 is left as it is.
void normalise(float v[3]);
// The unit vector from a to b.
void unitaire(const float a[3], const float b[3], float r[3]);
float distance2(const float a[3], const float b[3]);

}  // namespace mat
