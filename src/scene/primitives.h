// The commands that build a volume from nothing: `cube`, `ball`, `rev`,
// `prism`, `grid`. Each makes one volume per identifier, replacing any
// volume of that number, and keeps the words it does not use as
// properties of the new volume.
#pragma once
#include <initializer_list>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "scene/vol_gen.h"

// A count given by the word `code`: its first value as an integer, at
// least `least`; `fallback` when the word or its value is absent.
int compte_mot(word* s, int code, int fallback, int least = 1);

// What a primitive builds: its geometry, sections and the part of the
// transformation block it sets.
struct Construction {
  Sommets poi;
  Facettes fac;
  int secx = 0, secy = 0, secz = 0, close = 0;
  bool transf = false;  // set tran, dila, rotx..rotz of the block below
  float tran[3] = {0, 0, 0}, dila[3] = {1, 1, 1}, rot[3] = {0, 0, 0};
};

// Whether the volumes the command makes, one per identifier of its first
// word and `extra` more, can take that size (see volume_possible).
bool taille_possible(word* s, const Taille& t, int extra, const char* name);
// Makes a volume of kind `subkind` for every identifier of the first
// word, from `c`, and adds the words other than `used` as properties.
// Without identifiers, prints the keyword and "(id)".
int cree_volumes(word* s, int subkind, const Construction& c, std::initializer_list<int> used);
// Puts vertices, facets and sections on an existing volume.
int pose_geometrie(Objet* o, const Construction& c);
