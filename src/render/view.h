// Views: camera objects with ten properties (eye, aim, axis, foc, roll
// and five 4x4 matrices), the current view that the commands `eye`,
// `aim`, `foc` and `roll` act on, and the loading of the projection.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

struct ViewState {
  // The current view and pointers to its values, refreshed by vue_active:
  // the view is found again by its number, so a removed view is never
  // read through a stale pointer.
  Objet* Vue_courante = nullptr;
  int current_id = 1;
  float* P_eye = nullptr;
  float* P_aim = nullptr;
  float* P_axis = nullptr;
  float* P_foc = nullptr;
  float* P_roll = nullptr;
  float* P_cut = nullptr;        // near and far planes
  int Param_ortho[9] = {};       // eye, aim and up of the orthographic camera
  float Dist_eye_aim = 0;
  float Coe_pers = 0;
  float Coe_foc = 0;             // 0: the focal is used as it is
  int Type_projection = 307;     // 300 orthographic, 307 perspective
  int pushed = 0;                // model-view saves made by the projections
  // The spring step of the dynamics, installed by it: moves `to` (the
  // eye, or the aim when `code` is aim) of view `v` toward `from` by a
  // spring (k, c) of mass m, keeping its motion in the view. 0, or
  // negative after a report.
  int (*spring_move)(Objet* v, int code, const float from[3], float to[3], float k, float c, float m) = nullptr;
};

ViewState& views();

// The matrices of one view, row-major (m[r*4+c]), applied as m*p.
struct ViewMatrices {
  float abs_eye[16], eye_pers[16], abs_pers[16], eye_abs[16], pers_abs[16];
  float dist = 0, coe_pers = 0;
};
// The computation of CAL_VIEW on plain values; false when the focal is
// too small (nothing written). `with_pers` recomputes `eye_pers`.
bool view_matrices(const float eye[3], const float aim[3], float foc, float roll, int dimx, int dimy,
                   float coe_foc, bool with_pers, ViewMatrices& m);
// General inverse of a 4x4 matrix; false when singular.
bool inverse_4x4(const float m[16], float out[16]);
void produit_4x4(const float a[16], const float b[16], float out[16]);

// Finds or makes view `id` (or named `name`), displ 1, its ten properties
// made from the defaults when missing.
Objet* CRE_VIEW(int id, const char* name);
// A wall of n x n sub-views: view `sel` of subkind write holding the
// text of n*n items separated by semicolons. -1 after a report.
int SET_VIEW_WRITE(const word* sel, int n, const char* text);
// `eye poi(x,y,z) view(id)`, `eye vol(id) view(id)`, and the same for aim.
int EYE_VOL_POI(word* s);
int AIM_VOL_POI(word* s);
// The start-up view: as CRE_VIEW, subkind aim, and current.
Objet* CRE_VIEW_DEFAUT(int id);
// Makes `v` the current view: the P_ pointers point at its values.
void vue_courante(Objet* v);
// The current view found again (made when missing), pointers refreshed.
Objet* vue_active();
// The current view back to the keyword table's eye, aim, axis, focal and
// roll.
void vue_initiale();
// Places the current view: the eye, the aim and the focal that are not
// null, then its matrices.
void place_vue(const float* eye, const float* aim, const float* foc);
// The matrices of a view (null: view 1, made when missing). Negative
// after a report.
int CAL_VIEW(Objet* v, int flag);

void init_param_ortho();
// The window went from old_w x old_h to its present size: the default
// orthographic camera follows it (one set by `pers normal` stays), and
// the views' matrices are computed again.
void param_ortho_suit(int old_w, int old_h);
void vues_a_la_taille();
// Loads GL's projection and model-view for one view.
void Projection_vue(Objet* v);
// By Type_projection; `reset` sets the matrix mode and identity first.
void Projection(int reset);
void Projection_ortho();
// Undoes the saves of the model-view that the projections made.
void pop_projections();
// The window position of a point seen by the current view (pers(x,y,z)).
bool projette_point(const float p[3], float out[3]);
