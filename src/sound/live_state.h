// The live sound: the capture, the sampling window and everything drawn
// from it at each poll (levels, envelope, spectrum, differences), and the
// settings that the `audio` command changes. One struct, reached through
// live_audio(); its arrays are fixed, so that the image loop allocates
// nothing.
#pragma once
#include <vector>

#include "kernel/handles.h"

struct AudioCapture;

constexpr int MAX_FENETRE = 16384;      // room of every window array
constexpr int MIN_NOTIFICATION = 4;
constexpr int NB_MAXIMA = 250;          // the history of maxima
constexpr int MAX_MOYENNES = 1024;      // room of the ring of averages

// A stage that cuts a window into blocks and keeps each block's peak and
// its change since the last window.
struct Enveloppe {
  int on = 0;
  int n = 8;           // samples a block
  float scale = 1;     // the gate and the limit are multiplied by it
  int blocs = 0;       // blocks in the last pass
  float Pic[MAX_FENETRE];
  float Diff[MAX_FENETRE];
};

struct LiveAudio {
  AudioCapture* capture = nullptr;
  int on = 0;                   // capture started and not stopped
  int Fenetre = 1024;           // samples in the window, a power of 2
  int Notification = 1024;      // bytes taken at the last poll, 4 .. 16384

  float Echantillons[MAX_FENETRE];  // the raw bytes as floats
  float Signal[MAX_FENETRE];        // absolute, gated, limited (or the law)
  float Derivee[MAX_FENETRE];       // Signal - Precedent
  float Precedent[MAX_FENETRE];
  float Spectre_re[MAX_FENETRE];
  float Spectre_im[MAX_FENETRE];

  float Niveau_min = 0, Niveau_max = 0, Niveau_moyen = 0;
  float Moyen_precedent = 0;        // the mean before the last ring pass
  float Maxima[NB_MAXIMA];          // the windows' maxima, newest first

  // The ring of the last `Nb_moyennes` windows' mean, minimum and maximum.
  int Nb_moyennes = 1;
  int Ring_pos = 0;
  float Ring_moyen[MAX_MOYENNES], Ring_min[MAX_MOYENNES], Ring_max[MAX_MOYENNES];

  // The window processing.
  float Offset = 0;
  float Gain = 1;
  float Gate = 0;               // values below are 0
  float Limit = 255;            // values above are the limit
  int Law = 0;                  // the law below on
  float Law_seuil = 0, Law_scale = 1, Law_exposant = 1;
  int Auto_periode = 0;         // calls between auto-gain updates; 0 off
  float Auto_cible = 0;
  int Auto_compte = 0;
  float Auto_etendue = 0;       // the windows' ranges since the last update
  int Normalise = 0;            // levels / 255; and the FFT runs inverse

  // The analysis stages.
  int Analyse_faite = 0;        // the guard: set after the first analysis
  Enveloppe env;                // on Signal
  int Spectre_on = 0;
  float Spectre_scale = 1;
  Enveloppe env_re, env_im;     // on the spectra, when both stages are on

  // EXEC_AUDIO: the volumes and images it drives at each image (no list
  // at all: every volume) and the common coefficient; `exec` is 0 until
  // the command sets it.
  int exec = 0;
  std::vector<int> exec_vols;
  std::vector<int> exec_images;
  float exec_coe = 1;
  // The objects of one step, held so that a user function that removes
  // objects cannot leave the walk on a freed one; kept from image to image.
  std::vector<RefObjet> exec_objets;
  // The `meta func` of each driven volume, found by its name once: the
  // name it was found for, and the function.
  struct FonctionVolume {
    const Objet* vol;
    RefObjet f;
    char texte[64];
  };
  std::vector<FonctionVolume> exec_fonctions;
};

LiveAudio& live_audio();
