// The parts of one object's step, shared by the files that do them.
#pragma once
#include "animation/dynamics/dyn_props.h"
#include "kernel/objet.h"

// What the parts of a step read: the object, its properties, its
// transformation block and the inverse mass.
struct Pas {
  Objet* o;
  DynProps d;
  float* T;     // the transformation block
  float m;      // `mass`
  float r;      // 1/m, 1000000 at or under 0.0000001
  float s;      // `coe force rota`, the share of w that reaches the angle
  float *force, *speed, *acc, *force_rota, *speed_rota, *acc_rota;
};

// The moment and its damping: `force rota` completed by `force rota add`.
void moment(const Pas& p, float* M, float* c);
// The angle in degrees held within `limit rota` (radians; one value a
// serves for -a..a).
void borne_rota(float& angle, const word* limit);
// The bounds of the angle: `limit rota` and `limit rota rotz`.
void bornes_angle(Pas& p);
// Clamps x to -L..L when L is at or above 0.
float borne_scalaire(float x, const word* limit);
// v scaled to the length L of `limit` when longer (L negative: none).
void borne_vecteur(float* v, int n, float L);
// `spring rota`: `rota dup` made from the present angle at first use;
// the term added to `acc rota`. 0 without the spring. Negative on failure
// through *err.
float ressort_rota(Pas& p, int* err);

// The axis of rotation led by `limit axis rota`.
void pas_axe(Pas& p);
// The rotation's update: `acc rota` = c w + (M + t) r, the spring of
// rotation, `acc rota` clamped by `borne_acc`, w clamped by `limit speed
// rota`, the angle advanced by s w.
int pas_rotation(Pas& p, float t, const word* borne_acc);
// The motion as a whole of an object that leads nothing.
int mouvement_libre(Pas& p);
// The rotation of an object without `lead`, m not 0.
int rotation_libre(Pas& p);
// A led object: rotation only.
int mouvement_mene(Pas& p);
// The speed handed down along the chain of a led object.
void EXEC_LAW_SPEED_ROTA(Objet* o, float k, float q, float w);
// The memory of the positions.
int memoire_positions(Pas& p);
// The vertices.
int mouvement_sommets(Pas& p);
// The simple form of the step.
int forme_simple(Pas& p);
