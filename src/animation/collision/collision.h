// Collisions: simple tests of each volume between the integration steps
// of an image, against planes, other volumes' centres and their bounding
// spheres. The response is direct: the speed is reflected and the volume
// moved out. The stages EXEC_COLLISION_ANC and EXEC_COLLISION and the
// command `collision` are registered by install_collisions.
//
// The properties of a volume (all optional):
//   collision            the state of the contact, 11 floats: 0 none,
//                        1 new, 2 resting; vertex and plane of the
//                        contact (from 1); its point; vertex, plane and
//                        point of the previous contact
//   collision poi        the planes' points, x,y,z each
//   collision center     a second set of planes, handled the same way
//   collision normal     the planes' normals, cycling over the points;
//                        0,-1,0 by default. A vertex is in contact when
//                        it lies behind its plane: (point - vertex).normal
//                        above 0
//   collision coe        restitution, extent (the extent is kept, unused)
//   collision force      coefficient of the torque and its decay along a
//                        chain; 0 or absent: no torque
//   collision acc, alea  kept, used by no step
//   collision func       the name of a function called at each new
//                        contact, with the volume's number
//   collision debug      not 0: the contacts are printed
//   collision vertex     the vertices tested (from 1), all by default
//   collision follow     not 0: the volume's `follow` objects share what
//                        a pair of `collision anc` gives it, and a new
//                        contact keeps the height of the old one
//   collision vol        volumes pushed away as spheres
//   collision anc        volumes kept apart (or together) by their centres
//   collision limit      d1, d2, k of those pairs; 100, 100, 0.5
//   collision lead       the number of the head of a chain
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

constexpr int COLL_STATE = 11;

// The work space of the stages, grown at the first images and then reused.
struct CollisionState {
  std::vector<float> places;  // the placed vertices of the volume under test
};
CollisionState& collision_state();

void install_collisions();

// The properties the stages read, found by one walk of the volume's list
// (walked again after anything that may change the list: a property made,
// a `collision func` called).
enum CollPath : int {
  C_state, C_poi, C_center, C_normal, C_coe, C_vertex, C_follow, C_debug, C_force_coll, C_func, C_vol,
  C_copy, C_speed, C_force, C_force_rota, C_lead, C_vpoi, C_fac, C_COUNT
};
struct CollProps {
  bloc v[C_COUNT];
  bloc operator[](CollPath p) const { return v[p]; }
};
void lire_collision(const Objet* o, CollProps& c);

// The stages. Negative after a report: an object named in a list that
// does not exist.
int EXEC_COLLISION_ANC();
int EXEC_COLLISION();
// One volume: its planes, its centres, its spheres.
int EXEC_COLLISION_1(Objet* o);
int EXEC_COLLISION_1(Objet* o, CollProps& c);

// The vertices of a volume where the scene places them: through the
// matrix of its transformation block, or `poi anc` for a led volume
// while the `anc` switch is on.
struct Absolus {
  const float* p = nullptr;
  int n = 0, d = 3;
  float m[16];
  const float* q = nullptr;  // the placed vertices, 3 floats each, once computed
  void at(int i, float r[3]) const;
  // Computes the placed vertices once into `buffer`, for the tests that
  // read each of them several times.
  void place(std::vector<float>& buffer);
  // Their mean.
  void centre(float g[3]) const;
};
bool absolus(Objet* o, Absolus& a);
// The same from the properties already found.
bool absolus(Objet* o, Absolus& a, const CollProps& c);

// The plane test, in absolute coordinates.
// The vertex (from 1) lying furthest along -N among those of `liste`
// (numbers from 1; null: all), the lowest number on a tie; its position
// in P. 0 when there is none.
int MAX_POI_ANC(const Absolus& a, const word* liste, const float N[3], float P[3]);
// The point C where the line through P along v cuts the plane through Q
// of normal N; false when the line is parallel to it.
bool coupe_plan(const float P[3], const float v[3], const float Q[3], const float N[3], float C[3]);

// The contacts of a volume with the planes of `plans`, updating `etat`.
// 1 when a plane gave a contact, 0 when none did (the caller then sets
// the state to 0, once all its planes are tested), negative after a report.
// `c` is walked again when the list may have changed.
int EXEC_COLLISION_POI(Objet* o, const word* plans, float* etat, CollProps& c);
// The moment a contact gives to the volume and to its chains.
void EXEC_COLLISION_ROTA(Objet* o, const float* etat, const Absolus& a, const float* force, float k, float q,
                         float* moment);
void COLLISION_ROTA(Objet* o, const float* etat, float k);
// Spheres: the volume put outside the spheres of the listed volumes.
int COLLISION_VOL(Objet* o, const word* liste);
// A particle volume: each vertex against the planes, with no torque.
int EXEC_COLLISION_PARTICLE(Objet* o, const word* plans);

// The angle in radians between two vectors; 0 when either is null.
float angle_vecteurs(const float a[3], const float b[3]);
// The floats of the path `c1` (or `c1 c2` when c2 is not 0), made zeroed
// with n floats when missing or shorter. Null after a report.
float* cree_floats(Objet* o, int c1, int c2, int n);
// The volume of number `id`, or null.
Objet* volume_numero(float id);
