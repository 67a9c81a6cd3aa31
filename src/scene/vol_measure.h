// What is measured on volumes: centre of gravity, bounding box, radius.
// Each measure is a cached property of the volume (`CG`, `box`,
// `radius`) made stale when the vertices change.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// The `CG` property: the current centre (mean of the NP first vertices)
// in row 0, the centre at the first computation in rows 1 and 2. The
// current centre goes to `c`. Negative after a report (no vertices).
int det_cg_vol(Objet* o, float c[3]);

// How CG_VOL places each object's centre.
enum class ModeCG {
  Local,   // the centre in the volume's own coordinates
  Abs,     // the centre through the matrix of the block's values
  Anc,     // the origin of that matrix (its position column)
  Matrix,  // the origin of `matrix anc`, else of the block's stored matrix
};
// The mean of the objects' centres. False when no object has one.
bool CG_VOL(const std::vector<Objet*>& objets, ModeCG mode, float c[3]);

// The merged box of the objects, min x,y,z then max x,y,z; each object
// keeps in its `box` property the box merged so far. `generate` takes
// every stored vertex rather than NP and recomputes. False with no box.
bool det_limite_vol(const std::vector<Objet*>& objets, bool generate, float box[6]);

// Largest distance from the mean point of the NP first vertices, over
// all of them or over the listed vertex numbers (from 1; others are
// skipped). Without a list the answer is kept in the `radius` property.
// Negative after a report.
float det_rayon(Objet* o, const std::vector<int>* liste);

// The matrix of a volume made from its transformation block, values plus
// deltas, in the order of the animation's matrices: translation, `rota`
// about its axis, then `rotz`, `rotx`, `roty` (degrees), and the scale
// last. The block's stored matrix is left as it is.
void matrice_du_bloc(Objet* o, float m[16]);
