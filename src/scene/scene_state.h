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

struct SceneState {
  Objet* sphere = nullptr;  // the shared unit sphere, once built
  SceneEvents events;
  // Objects whose local functions are running: their list is held apart
  // meanwhile and may not change.
  std::vector<RefObjet> locales_en_cours;
  // The objects a walk that runs local functions holds, and the areas
  // those functions evaluate in: kept from one image to the next.
  Prets<RefObjet> marches;
  Prets<word> zones_locales;
};

SceneState& scene();
