// State of the scene shared by the object commands, and the places where
// subsystems that come later hook their reactions to property writes.
#pragma once
#include <vector>

#include "kernel/handles.h"
#include "kernel/objet.h"
#include "kernel/pret.h"

struct SceneEvents {
  // After a property write on a brush, a light, or an object that others
  // depend on (its `hook`); after `illum` and `spe` are written on a light.
  void (*brush_changed)(Objet*) = nullptr;
  void (*light_changed)(Objet*) = nullptr;
  void (*light_illum)(Objet*) = nullptr;
  void (*light_spe)(Objet*) = nullptr;
  void (*inherit)(Objet*, int n, const int* keys) = nullptr;
  // Before lights and menus are removed.
  void (*light_release)(int id) = nullptr;
  void (*menu_release)(Objet*) = nullptr;
  // Before a volume is removed by number: its dependent data.
  void (*vol_release)(Objet*) = nullptr;
};

// The pointer of the window, kept up to date by the interaction's mouse
// callbacks, for the mouse factors of MOD_b: pixels from the window's
// centre, y down.
struct ScenePointer {
  bool on = false;        // a window gives positions
  float x = 0, y = 0;
  bool down = false;      // a button is held
  int presses = 0;        // presses so far
  int presses_taken = 0;  // the presses that `mouse(1)` has acted on
  int window_w = 0, window_h = 0;
  // Outlines a `frame` given to a transformation, in white (pixels from
  // the window's centre, y up); set by the window's side.
  void (*dessine_cadre)(const float frame[4]) = nullptr;
};

struct SceneState {
  Objet* sphere = nullptr;  // the shared unit sphere, once built
  SceneEvents events;
  // Objects whose local functions are running: their list is held apart
  // meanwhile and may not change.
  std::vector<RefObjet> locales_en_cours;
  // The objects a walk that runs local functions holds: kept from one
  // image to the next.
  Prets<RefObjet> marches;
  // The keys and the prepared value of a property command, lent so that a
  // user function writing properties at each image asks for no memory.
  Prets<int> cles;
  Prets<word> valeurs;
  ScenePointer pointeur;
};

SceneState& scene();
