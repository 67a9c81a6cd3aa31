// Trajectories: objects of the `traj` chain that hold a table of rows,
// one an image, computed once from key values, and a current row. Objects
// that list a trajectory in their `traj` property take the current row at
// each image; trajectories chain by `order` like the wheels of a counter.
#pragma once
#include <vector>

#include "kernel/handles.h"
#include "kernel/objet.h"
#include "kernel/word.h"

// The fields of a trajectory in the words of its record.
inline int& kind_1(Objet* t) { return t->subkind; }    // what it drives: tran, rota, col...
inline int& kind_2(Objet* t) { return t->kind2; }      // a qualifier: dila eye, col col...
inline int& anim(Objet* t) { return t->kind3; }        // KW_animate when given an image count
inline int& traj_ini(Objet* t) { return t->reserved; } // 1 when `ini` was named
inline int& ni(Objet* t) { return t->work[0]; }        // rows; -1 stopped for good
inline int& cpt(Objet* t) { return t->work[1]; }       // current row from 0
inline int& period(Objet* t) { return t->work[2]; }    // 0 once, > 0 loop, < 0 go and back
inline int& order(Objet* t) { return t->work[4]; }     // place in the chain, 1 by default
inline int& inc(Objet* t) { return t->work[5]; }       // step of cpt
inline int& end(Objet* t) { return t->work[6]; }       // -1 when a one-shot has ended
inline int& pas_image(Objet* t) { return t->work[3]; } // the image it last stepped where applied

// Bounds of what a user may ask: rows of a table, and the order.
constexpr int MAX_LIGNES = 1000000;
constexpr int MAX_ORDRE = 1000000000;
// Floats of a table (a morph between large shapes is the case to bound).
constexpr long long MAX_FLOTTANTS = 1LL << 25;

struct TrajState {
  int Max_order = 1;  // the greatest order of all the trajectories
  // Trajectories by number, found again in O(1) at each image: a slot
  // is checked against the object it names before use.
  std::vector<RefObjet> par_numero;
  // The images played, counted from 1 and kept within what a float holds
  // exactly (the lights keep it in a property).
  int image = 0;
};
TrajState& traj_state();

// The trajectory numbered id, or null.
Objet* trajectoire(int id);
// A new image for the stage; whether t has stepped in this one already
// (a trajectory named by its name steps where it is applied), and marking
// that it has.
void nouvelle_image();
inline bool pas_fait(Objet* t) { return pas_image(t) == traj_state().image; }
inline void marque_pas(Objet* t) { pas_image(t) = traj_state().image; }
// Max_order made again from the chain.
void calcule_max_order();

// The table `var K` (`var K K2`), or null.
bloc table_traj(Objet* t);
// The row at cpt, or null when cpt is out of 0..ni-1 or there is no table.
const float* ligne_courante(Objet* t, int* dim);
// The value of a one-value kind in a row: its second float (the first
// for a table of one float a row).
inline float valeur_ligne(const float* r, int dim) { return dim >= 2 ? r[1] : r[0]; }

// Kinds by the number of values of a key.
bool kind_une_valeur(int kind);
bool kind_angle(int kind);

// The table of a kind from its keys; stored as `var K` (SET_VAR_1) or
// `var K K2` (SET_VAR_2); SET_VAR_3 makes the two interleaved tables of
// `limit`. 0, or negative after a report.
struct Ajustement;
int SET_VAR_1(int n_rows, Objet* t, int kind, const std::vector<float>& keys, const Ajustement& a, int format);
int SET_VAR_2(int n_rows, Objet* t, int kind, int kind2, const std::vector<float>& keys, const Ajustement& a,
              int format);
int SET_VAR_3(int n_rows, Objet* t, int kind2, const std::vector<float>& keys, const Ajustement& a);
// `interpol`: keys that are whole shapes of `dim` floats (the vertices of
// volumes), spaced equally segment by segment.
int SET_VAR_FORMES(int n_rows, Objet* t, const std::vector<float>& shapes, int dim, const Ajustement& a);

// The stage and its parts.
int EXEC_TRAJ();
int EXEC_TRAJ_1(Objet* t);
int EXEC_TRAJ_OBJ(Objet* o);
int EXEC_TRAJ_OBJ_1_1(Objet* o, Objet* t);
int INC_TRAJ_1(Objet* t);
// One step of cpt by the period mode; 1 when a cycle ended.
int step_traj(Objet* t);
void MATRIX_POS(Objet* t);
int CAL_MATRIX_TRAJ();
int EXEC_TRAJ_TRAJ_0(Objet* t, const word* children, bool tables);
int EXEC_TRAJ_TRAJ_1(Objet* t, Objet* u, bool step);

// The command `traj`, and its field form.
int TRAJ_b(word* s, const word* ob, word* st, const word* lim);
int PROPR_TRAJ(word* s, const word* ob, Objet* t, const word* lim);


// Registers the command and the stages (start-up).
void install_trajectories();
