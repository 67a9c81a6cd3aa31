// Interpolation between images: `interpol(n) image(a,b,...) number(d)`
// makes n+1 images between each image of the list and the next,
// numbered from d upward (default one past the highest image number):
// t runs from 1 down in steps of 1/(n+1), and each byte is
// t*a + (1-t)*b truncated. So n=0 gives a copy of the first image, and
// chained pairs give one continuous sequence without repeats.
#include <algorithm>

#include "image/image_command.h"
#include "image/image_ops.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/resources.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/primitives.h"

// INTERPOL_IMAGE_1: images k and k+1 (from 0) of the list into n+1
// images numbered from `destination`. 0, or -1 after a report.
int INTERPOL_IMAGE_1(const word* ids, int destination, int k, int n) {
  Objet* a = image_operande(ids, k);
  Objet* b = a ? image_operande(ids, k + 1) : nullptr;
  if (!a || !b) return -1;
  const int nx = image_nx(a), ny = image_ny(a);
  if (nx != image_nx(b) || ny != image_ny(b)) {
    err_tailles(a, b);
    return -1;
  }
  const size_t ligne = static_cast<size_t>(nx) * 4;
  for (int j = 0; j <= n; j++) {
    Objet* d = image_de_taille(destination + j, nx, ny);
    if (!d) return -1;
    // The sources may have been re-made if one of them is a destination.
    const uint8_t* pa = pixels_image(a);
    const uint8_t* pb = pixels_image(b);
    uint8_t* q = pixels_image(d);
    // t = (n+1-j)/(n+1), in integers so that the truncation is exact.
    const unsigned ta = static_cast<unsigned>(n + 1 - j), tb = static_cast<unsigned>(j), den = static_cast<unsigned>(n + 1);
    for (size_t y = 0, i = 0; y < static_cast<size_t>(ny); y++) {
      interrupt_check();
      for (const size_t fin = i + ligne; i < fin; i++) q[i] = static_cast<uint8_t>((ta * pa[i] + tb * pb[i]) / den);
    }
  }
  return 0;
}

int INTERPOL_b(word* s, const word* ob, word* st, const word* lim) {
  bool found = false;
  const word* ids = images_commande(s, &found);
  if (ob || !found) return bloc_0(s, ob, st, lim);
  const int m = ids ? nb_selection(ids) : 0;
  if (m < 2) {
    voir_mot(KW_interpol);
    voir_texte("(n) image(id1,id2,...) number(destination)\a\n");
    return -1;
  }
  const int n = std::clamp(coord(arg_float(s, KW_interpol, 0)), 0, 100000);
  // One past the highest number, counted in float: the highest may be
  // the largest int.
  const float suivant = static_cast<float>(std::max(0, num_max(1, KW_image))) + 1.0f;
  const int d = std::clamp(coord(arg_float(s, KW_number, suivant)), -100000000, 100000000);
  // All the images the command makes, weighed before the first is made.
  double octets = 0;
  for (int k = 0; k + 1 < m; k++)
    if (Objet* a = image_operande(ids, k)) octets += (n + 1.0) * image_nx(a) * image_ny(a) * 4;
  if (!memoire_possible(octets, "INTERPOL_b()")) return -1;
  for (int k = 0; k + 1 < m; k++)
    if (INTERPOL_IMAGE_1(ids, d + k * (n + 1), k, n) < 0) {
      TRACE_FAIL("INTERPOL_IMAGE_1()");
      return -1;
    }
  return build_nil(s);
}
