// The mouse factors of the transformation commands.
#pragma once
#include "kernel/word.h"

// The two factors of the command `s` (1 and 1 without `mouse` or without a
// window). False when the pointer's state leaves the command without
// effect.
bool facteurs_souris(word* s, float factor[2]);
