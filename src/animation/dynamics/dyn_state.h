// The state of the dynamics that lives from image to image outside the
// objects: the pointer as the stage measures it, and the buffers its
// commands borrow.
#pragma once
#include "kernel/pret.h"

struct DynState {
  // x, y (pixels from the window's centre, y up), speed and acceleration
  // in pixels an image.
  float souris[6] = {};
  bool vu = false;  // a position was taken at the image before
  // Takes the pointer's place of this image.
  void echantillonne_souris();
  // The vertex numbers a per-vertex command names.
  Prets<int> sommets;
};

DynState& dynamique();
