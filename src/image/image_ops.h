// What the image commands share: finding their operands, reading their
// options, the random sources, and copies between images.
#pragma once
#include <cmath>
#include <cstdint>
#include <vector>

#include "kernel/report.h"
#include "kernel/word.h"
#include "scene/image_object.h"

// The current image: image 0, refilled from the window's pixels (bottom
// row first, as the window gives them). Null after a report when there
// is no window to read.
Objet* image_courante();

// Number of images a selector names; 1 for none (the current image).
int nb_images(const word* selector);
// The image of element `index` of the selector (null selector: the
// current image). A missing image reports `image` with its number, an
// image without pixels reports it as empty; both give null.
Objet* image_operande(const word* selector, int index);

// Runs f on each image of the selector in order. The first image that is
// missing, empty or failing ends the walk (after the trace of `name`);
// the images before it stay done. 0, or -1.
template <class F>
int pour_chaque_image(const word* selector, const char* name, F&& f) {
  const int n = nb_images(selector);
  for (int i = 0; i < n; i++) {
    Objet* o = image_operande(selector, i);
    if (!o || f(o) < 0) {
      TRACE_FAIL(name);
      return -1;
    }
  }
  return 0;
}

// The parameters of the first `image` word of a command, or null; `*found`
// tells whether the word is there at all.
const word* images_commande(word* s, bool* found);

// The image numbered `id` with pixels of nx by ny: kept when its block
// has that size, re-made otherwise, created (and marked visible) when
// absent. Null after a report.
Objet* image_de_taille(int id, int nx, int ny);
// The pixels of `src` copied over those of `dst`, which is re-made to
// the size of `src` when it differs. 0, or -1.
int copie_image(Objet* dst, Objet* src);
// "image(a) nx,ny image(b) nx,ny" and the incoherence message: two images
// that should have the same size do not.
void err_tailles(Objet* a, Objet* b);

// A float as an int, rounded down, NaN as 0 and the rest held within
// +-1e9, so that any number a user gives converts safely and sums of two
// of them do not overflow (the kernel's `entier` truncates instead).
inline int entier_borne(float f) {
  if (!(f == f)) return 0;
  return f < -1e9f ? -1000000000 : f > 1e9f ? 1000000000 : static_cast<int>(std::floor(f));
}

// A value from 0 to 255 as a byte, rounded and clamped.
inline uint8_t octet255(float v) {
  const float x = v + 0.5f;
  return x <= 0 ? 0 : x >= 255 ? 255 : static_cast<uint8_t>(x);
}
// A colour value from 0 to 1 as a byte.
inline uint8_t octet(float v) { return octet255(v * 255.0f); }

// Uniform numbers in [0, 1): the language's generator (`rand`), or the
// precalculated table from its seed on (`alea`).
struct Tirage {
  bool table = false;
  int k = 0;
  float operator()();
};

// The first value of the first word `code` of a command, or `dflt` when
// the word is absent or has no value.
float option_1(word* s, int code, float dflt);
