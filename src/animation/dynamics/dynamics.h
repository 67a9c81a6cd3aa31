// Dynamics: masses, forces, springs and fields, one semi-implicit Euler
// step an image. Every constant is in units of one image: no clock enters
// any formula. The stage DYNAMIC_b walks the families of objects; the
// commands `mass`, `force`, `speed`, `lead`, `follow`, `anc`, `reanc` and
// the fields are registered in the graphic dispatch by install_dynamics.
//
// Which force acts how long, with `yes dynamic` and `yes force`: `force`
// (x, y, z) is cleared after the user's first function and before the
// trajectories, so a value set between images or by F1 never acts, and
// one set by F2 or a trajectory acts in that image; `force add`, `force
// rota` and `force vertex` are cleared after the dynamics, so a value
// written at the console acts for exactly one image. With `no force`
// nothing is cleared and every force holds from image to image.
//
// The simple form of the step is taken when the object's `simple` is above
// 1, or the switch `simple` above 1: `yes simple` alone gives 1, so the
// switch is set to that level by `status simple(2)`.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Registers the stage and the command handlers. Called once at start-up.
void install_dynamics();
// The creation of fields with their kind (`field(id) meta(...)`...).
void install_fields();
// `dynamic` with a second word (image, brush, audio, mouse).
void install_dynamic_commands();
// `mass image(ids)`: the images' mass, which makes them dynamic.
int MASS_IMAGE(word* s, const word* ob, const word* lim);

// The stage: fields, dynamic images, lights, brushes, objects, volumes,
// then the views and the particles.
int DYNAMIC_b();
// One step of one object. 0, or negative after a report.
int DYNAMIC_2(Objet* o);
// One step of an image of type dynamic: its pixels' colours.
int DYNAMIC_IMAGE(Objet* o);

// The force of the spring from pi to pj of rest length `rest`, with
// stiffness k and damping c (applied to the speed vi of the first end),
// added to F. `limit` (dmin, dmax) or null bounds the extension.
void spring_force(const float pi[3], const float pj[3], float rest, float F[3], float k, float c,
                  const float vi[3], const float* limit);

// One step of a point `to` pulled toward `from` by a spring (k, c) of
// mass m: `speed` (3) and `acc` (3) are its motion, `force` (4) an added
// force and its damping; `limit_force` and `limit_speed` bound the
// force and the speed when at or above 0.
struct SpringMotion {
  float* speed;
  float* acc;
  const float* force;
  float limit_force = -1;
  float limit_speed = -1;
};
void spring_move(const float from[3], float to[3], float k, float c, float m, SpringMotion& s);
// The same on an object's `speed move`, `acc move`, `force move`,
// `limit force` and `limit speed` (made when missing): `eye spring`. A
// `qualifier` keeps a second motion apart (`speed move aim`... for the
// aim of a view).
int SPRING_MOVE(Objet* o, const float from[3], float to[3], float k, float c, float m, int qualifier = 0);

// The force of one field at `point` (vertex number `vertex` from 1, or
// 0 for the object as a whole) added to force[0..2]; force[3] takes the
// field's damping when it has one. `col`, the vertex's `col vertex` or
// null, goes to the function of a `func` field after the point. 0, or
// negative after a report.
int set_FIELD_1(Objet* field, float force[4], const float point[3], int vertex, const float* col = nullptr);
// Every field that acts on `o` (its own `field` list, else every field
// with `displ` above 0), added to `force`.
int champs_objet(Objet* o, const word* field_list, float force[4], const float point[3], int vertex,
                 const float* col = nullptr);
