// Unsaved work on scene objects: each object carries a mark (Objet::
// unsaved), set when it is made (the store links it) or changed (the
// command dispatch, before a command that changes what it names), and
// cleared when a file of it is written or when it is read from one.
#pragma once
#include "kernel/word.h"

// The kinds whose unsaved work `bye` asks about, in the order it asks:
// volumes, trajectories, and the laws of motion (its "kinematics").
struct TravailScene {
  int kind;
  int voc, num;           // the question
  const char* extension;  // the recovery file's ending
};
extern const TravailScene TRAVAUX_SCENE[3];

// Another kind whose objects the command dispatch marks when a command
// names them (the subsystems above the scene, at start-up).
void suivre_objets(int kind);
// True when an object of that kind carries the mark.
bool objets_non_sauves(int kind);
// Marks the followed objects that the command names: those its object
// words select, and those of its first word when that is a kind word.
void marque_objets_commande(word* s);
