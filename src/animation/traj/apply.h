// Giving one row of a trajectory to an object.
#pragma once
#include "kernel/objet.h"

// Applies the row r of d floats of trajectory t to o, by t's kinds. True
// when it changed o's transformation block (its geometry as drawn).
bool applique_ligne(Objet* o, Objet* t, const float* r, int d);
// The angle in degrees of a quaternion of first value w: 2 acos(w), w
// clamped to [-1, 1], brought to -pi..pi.
float angle_quat(float w);
