// The pixel operations of the `image` command. Each works on an image
// that has pixels, walks its byte block directly, and returns 0, or -1
// after a report.
#pragma once
#include <cstdint>

#include "image/image_ops.h"

// One colour (3 values from 0 to 1) over the whole image, or with 6
// values a gradient from the first colour on the first column to the
// second on the last, linear in x. Alpha becomes 255.
void IMAGE_COL(Objet* o, const float* c, int n);
// Grey from the luminance 0.299 R + 0.587 G + 0.114 B.
void IMAGE_LUMINANCE(Objet* o);
// Negative: 255 - v for R, G and B; alpha kept.
void INV_IMAGE(Objet* o);
// A field of live and dead cells: each pixel white with probability p,
// black otherwise, alpha 255.
void image_alea(Objet* o, float p, Tirage& t);
// The rectangle of corners (x1,y1) and (x2,y2), both included, clipped
// to the image, painted with `rgba`.
void RECTANGLE_IMAGE(Objet* o, int x1, int y1, int x2, int y2, const uint8_t* rgba);
// The image cut to that rectangle (clipped); an empty one is refused.
int IMAGE_CUT(Objet* o, int x1, int y1, int x2, int y2);

// The inverse map of a pixel: its source x = m0 x + m1 y + m2, y = m3 x
// + m4 y + m5, in pixel-centre coordinates; the nearest source pixel is
// taken, and pixels that come from outside become 0.
int transforme_image(Objet* o, const float* m);
// Translation by (dx, dy) pixels.
int TRAN_IMAGE(Objet* o, float dx, float dy);
// Turn by `deg` degrees about the centre, counter-clockwise with y up.
int ROTZ_IMAGE(Objet* o, float deg);
// Scaling by (sx, sy) about the centre.
int DILA_IMAGE(Objet* o, float sx, float sy);

// The pixels resampled to nx by ny: each axis through a triangle filter
// as wide as a source pixel when enlarging and as a destination pixel
// when shrinking, so every source pixel counts.
int REDIM_IMAGE(Objet* o, int nx, int ny);
// REDIM_IMAGE to the size of `ref`.
int IMAGE_ADJUST_DIM(Objet* o, Objet* ref);

// `validate`: the pixels kept as the previous copy; `ini`: the kept copy
// put back (the image becomes black when none was kept).
int VALIDATE_IMAGE(Objet* o);
int IMAGE_INI(Objet* o);

// The per-pixel speed (property `speed`, three floats a pixel): kept when
// it fits the image's size, made zeroed otherwise. Null after a report.
bloc speed_image(Objet* o);
