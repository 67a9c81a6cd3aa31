// Light objects: `light(id)` with `eye`, `aim`, `axis`, `col`,
// `ambiance`, `coe` and `meta roll`, handed to GL's lights.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

constexpr int LIGHT_LIMIT = 3376;

// One light, or with null every light whose displ is above 0. `code`
// limits the work to one aspect (`eye`, `col`, `ambiance`, `coe`; 0 all).
// With no light in use, the start-up light stands at the default place.
// Negative after a report.
int SET_LIGHT_1(Objet* light, int code, const word* arg);
// At each image: the cut-off of the lights with `meta roll`.
void COMPUTE_LIGHT();
// Switches GL's lights as the lights' displ words say.
void lights_enable();
// The cut-off for `meta roll` values a (and b) and the focal f, with
// `floor` as the least focal and divisor; false to leave it.
bool meta_roll_cutoff(const float* ab, int n, float f, float floor, float* roll);
