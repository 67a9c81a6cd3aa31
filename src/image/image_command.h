// The image commands of the graphic vocabulary. Each takes the command
// `s`, the right side `ob` of an assignment (null when reading), the
// first free word `st` and the evaluation limit `lim`, leaves its result
// in place of the command, and returns 0, or -1 after a report.
#pragma once
#include "kernel/word.h"

// `image(ids) dim(nx,ny) col(...) ...`: creates or changes images.
int IMAGE_1(word* s, const word* ob, word* st, const word* lim);
// `dim image(ids)` answers the sizes; `dim image(id)=nx,ny` resamples.
int DIM_IMAGE(word* s, const word* ob, word* st, const word* lim);
// `smooth image(src[,dst])`, `smooth(n) image(...)`, `smooth(w...) image(...)`.
int SMOOTH_b(word* s, const word* ob, word* st, const word* lim);
// `near image(ids) dup(n) matrix(...) number(a,b) rand(p) limit(t)`.
int NEAR_IMAGE(word* s, const word* ob, word* st, const word* lim);
// `near matrix image(id)[=m0..m8]`, `near number image(id)[=a,b]`.
int NEAR_IMAGE_EG(word* s, const word* ob, word* st, const word* lim);
// `disk image(ids) poi(x,y) radius(r) col(r,g,b) ...`.
int DISK_IMAGE(word* s, const word* ob, word* st, const word* lim);
// `interpol(n) image(ids) number(dest)`.
int INTERPOL_b(word* s, const word* ob, word* st, const word* lim);
// `generate speed image(ids) [image(ids2)] coe(c) rand(a,b) ...`.
int GENERATE_SPEED_IMAGE(word* s, const word* ob, word* st, const word* lim);

// True when the command names images: the dispatch sends it here.
bool commande_image(word* s);

// The image commands' rows of the graphic dispatch.
void install_image_commands();
