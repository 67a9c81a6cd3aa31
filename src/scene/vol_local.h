// Local functions of scene objects: each object may keep, on a private
// chain at its `child`, functions of its own (kind `local`), numbered
// from 1 in the order they were given and named by their text up to the
// first parenthesis.
#pragma once
#include "kernel/objet.h"

// Adds the function whose source is `source`, or replaces the one of the
// same name, and compiles it. Null after a report.
Objet* ajoute_locale(Objet* o, const char* source);
// `rem local vol(id)` removes them all, `rem local("f") vol(id)` and
// `rem local(n) vol(id)` one; the others are numbered again.
int REM_LOCALE(word* s);
// Runs the local functions of the object, in order: all of them, or the
// first `combien` when it is above 0. Negative after a report.
int exec_locales(Objet* o, int combien = 0);
// Runs the local functions of every object of every kind, chain by
// chain: one stage of the animation cycle. Negative when one failed.
int EXEC_LOCALE_TOUT();
