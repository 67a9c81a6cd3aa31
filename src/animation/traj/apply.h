// Giving one row of a trajectory to an object.
#pragma once
#include "kernel/objet.h"

// Applies the row r of d floats of trajectory t to o, by t's kinds. True
// when it changed o's transformation block (its geometry as drawn).
bool applique_ligne(Objet* o, Objet* t, const float* r, int d);
// The angle in degrees of a quaternion of first value w: 2 acos(w), w
// clamped to [-1, 1], brought to -pi..pi.
float angle_quat(float w);
// The axis of a row of the `axis` kind, clamped by `limit axis` of the
// trajectory, then normalised.
void axe_limite(Objet* t, const float* r, float a[3]);
// The kinds that place a light or a view (EXEC_TRAJ_LIGHT_VIEW); false
// for a kind that writes a property as on any object.
bool applique_lumiere_vue(Objet* o, Objet* t, const float* r, int d);
// A `dim` row on an image: the image is resized to it.
void dim_image(Objet* o, const float* r, int d);
