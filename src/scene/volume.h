// What a volume is in memory. Its geometry lives in properties: `poi`, a
// FLOAT of n vertices of stride d (3 for every primitive, always read
// from the block), and `fac`, a HYBRIDE of facets, each a LONG of vertex
// numbers from 1 (an entry with word 3 at 0 is a compound facet holding
// word 2 plain facets). The record's `code` holds the transformation
// block; `work` 1, 2, 3 and 5 the sections and the closing flag.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// The transformation block: 42 floats.
constexpr int TRANSF_SIZE = 42;
enum TransfIndex : int {
  TR_TRAN = 0,    // translation x,y,z
  TR_DILA = 3,    // scale x,y,z
  TR_ROTA = 6,    // angle in degrees and axis x,y,z
  TR_ROTX = 10,   // rotx, roty, rotz in degrees
  TR_MATRIX = 13, // the 4x4 matrix, column-major
  TR_DELTA = 29,  // the same 13 values added by the animation
};
// Degrees in a radian: commands take radians, the block keeps degrees.
constexpr float DEGRES = 57.295776f;

inline int& vol_secx(Objet* o) { return o->work[0]; }
inline int& vol_secy(Objet* o) { return o->work[1]; }
inline int& vol_secz(Objet* o) { return o->work[2]; }
inline int& vol_close(Objet* o) { return o->work[4]; }

// The vertex array and the facet list, or null.
bloc poi_vol(const Objet* o);
bloc fac_vol(const Objet* o);
// The stride of a vertex array (at least 1).
inline int stride(const word* poi) { return poi[3] > 0 ? poi[3] : 1; }
inline float* sommets(bloc poi) { return reinterpret_cast<float*>(poi + 4); }

// The 42 floats of the transformation block, made with its defaults on
// first demand (tran 0, dila 1, rota 0 about z, the identity matrix).
float* get_matrix_vol(Objet* o);

// The vertices that count: with `fac` the largest number it references
// (reported with "max np: " when past the stored count, which is then
// used), without it the stored count less the `vertex lead` and
// `vertex follow` entries.
int det_np(Objet* o);
// The same with the volume's `poi` and `fac` already found (null: none).
int det_np(Objet* o, const word* poi, const word* fac);

// Each entry of a facet list, plain or compound: f(index from 0, entry).
template <class F>
void pour_chaque_bloc(const word* fac, F&& f) {
  if (!fac || fac[1] != T_HYBRIDE) return;
  const word* end = fac + fac[0];
  const word* p = fac + 4;
  for (int i = 0; i < fac[2] && p < end && p[0] >= 4 && p + p[0] <= end; i++, p += p[0]) f(i, p);
}

inline bool facette_composee(const word* p) { return p[3] == 0 && p[1] == T_HYBRIDE; }

// Each plain facet of a facet list, compound facets opened.
template <class F>
void pour_chaque_facette(const word* fac, F&& f) {
  pour_chaque_bloc(fac, [&](int, const word* p) {
    if (facette_composee(p)) pour_chaque_facette(p, f);
    else if (p[1] == T_LONG) f(p + 4, p[0] - 4);
  });
}

// A cached property (box, CG, radius, normals...): its value, a zeroed
// FLOAT of np points of dimp made when missing or of another shape.
// `*valid` tells whether the cache holds a computed value; the caller
// marks it computed with cache_valide.
bloc cache_vol(Objet* o, int n, const int* keys, int np, int dimp, bool* valid);
void cache_valide(Objet* o, int n, const int* keys);
// The vertices changed: every cache of the volume becomes stale, and the
// per-image state of generated data too.
void invalide_caches(Objet* o);
// The per-image state `meta generate`: how 0 clears both words, 1 the
// second (the vertices); the volume's `follow` objects too.
void raz_generate(Objet* o, int how);
