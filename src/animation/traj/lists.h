// The trajectories an object names in its lists (`traj`, `traj animate`,
// `traj vertex`, `traj fac`), resolved without a search by name at each
// image: numbers go through the table by number, names through a cache
// made when the list is first read and made again when its words change,
// when a trajectory it found is removed or renamed, or when trajectories
// are made.
#pragma once
#include "kernel/handles.h"
#include "kernel/objet.h"
#include "kernel/word.h"

// The lists of an object, in the order they are played.
enum ListeTraj { LT_TRAJ = 0, LT_ANIMATE = 1, LT_VERTEX = 2, LT_FAC = 3 };

// A list read for one image: its elements, and for a list of names what
// each one found.
struct ListeLue {
  const word* list = nullptr;
  const RefObjet* refs = nullptr;  // names only
  int n = 0;
  bool by_name = false;
};
// The list `which` of o, whose value is `list`.
ListeLue lis_liste(Objet* o, ListeTraj which, const word* list);
// The trajectory of element i, or null when it names none.
Objet* element_liste(const ListeLue& l, int i);
// Made, removed or renamed trajectories: the cache of names is dropped.
void noms_traj_changes();
