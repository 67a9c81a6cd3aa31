// AUDIO_IMAGE: the live level chooses, among a list of images, the one a
// volume wears or an image shows.
#include <cstring>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/image_object.h"
#include "sound/live_exec.h"

namespace {

constexpr float PAS_AUTO = 25;  // the step of a table made automatically

// The table of bounds, made on the first call when it is missing or
// begins with a negative value: one bound an image, every 25 from 0.
const word* table(Objet* o, int n) {
  const word* t = get_val_2(o->local, KW_audio, KW_period);
  if (t && elements(t) > 0 && value_at(t, 0) >= 0) return t;
  bloc b = set_val_2(o, KW_audio, KW_period, n);
  if (!b) return nullptr;
  for (int k = 0; k < n; k++) setf(b, k, PAS_AUTO * static_cast<float>(k));
  return b;
}

// The pixels of image `num` into image `o`, when both are of one size.
void montre(Objet* o, int num) {
  Objet* src = image_numero(num);
  if (!src || src == o) return;
  const word* p = pixels_lecture(src);
  if (!p || image_nx(src) != image_nx(o) || image_ny(src) != image_ny(o) || image_nz(src) != image_nz(o)) return;
  const word* q = pixels_lecture(o);
  const size_t n = static_cast<size_t>(size(p) - 4) * sizeof(word);
  if (!q || size(q) != size(p) || std::memcmp(octets(q), octets(p), n) == 0) return;
  // Written only when it changes: a texture of the image follows it.
  if (bloc d = pixels_bloc(o)) std::memcpy(octets(d), octets(p), n);
}

}  // namespace

int AUDIO_IMAGE(Objet* o, float L) {
  const bool trace = Yes(KW_debug) > 0;
  if (trace) voir_texte("AUDIO_IMAGE\n");
  const word* images = get_val_2(o->local, KW_audio, KW_image);
  const int n = elements(images);
  if (n < 1) return 0;
  const word* t = table(o, n);
  if (!t) return 0;
  // The last bound not above L; the first image below them all.
  int i = 0;
  for (int k = 1; k < elements(t) && k < n; k++)
    if (value_at(t, k) <= L) i = k;
  if (trace) voir_float2("lu(%f) per(%f)\n", L, value_at(t, i));
  // The table may have moved the list.
  const int num = entier(value_at(get_val_2(o->local, KW_audio, KW_image), i));
  if (trace) voir_int2("i(%d) num(%d)\n", i, num);
  if (o->kind == KW_image) {
    montre(o, num);
  } else if (bloc tx = set_val_1(o, KW_texture, 1)) {
    setf(tx, 0, static_cast<float>(num));
  }
  return num;
}
