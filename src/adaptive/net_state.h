// The state of the networks' subsystem: the generator of weights, the
// work array of back-propagation, and the live screen of mode 298.
#pragma once
#include <cstdint>
#include <random>
#include <vector>

#include "kernel/word.h"

struct Objet;

struct NetworkScreen {
  word net = 0;                 // handle of the network on the screen
  long long session = 0;        // the loop's start time: a new loop starts again
  bool actif = false;
  bool dessine = false;         // the network drawn since the last pass
  std::vector<float> initial;   // the matrix when the screen started
  float lowest = 0, highest = 0;  // weight range for the greys
  int nb = 1;                   // passes of one learning (the image count)
  int compteur = 0;             // the pass to run, from 1; 0: none
  int pas_a_pas = 0;            // single-step mode
  int cible = 0;                // single-step target
  int vitesse = 1;              // the delay between passes
  int delai = 0;                // the delay counter
  int numero_motif = 0;         // 0: patterns cycle
  float centre_x = 0, centre_y = 0, echelle = 1;
  std::vector<const word*> couches;  // the layers, gathered at each drawing
};

struct NetworkState {
  std::mt19937 rng{1};
  std::vector<float> work;      // L*L products of back-propagation
  std::vector<float> sorties;   // the outputs of one layer, side by side
  std::vector<word> liste_validate, motif_validate;  // the `validate` list in the making
  NetworkScreen screen;
};

NetworkState& networks();
