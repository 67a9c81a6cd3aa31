// The interaction loop: the mode word's idle dispatch, the start and stop
// of the real-time loop, one image per idle call, the keyboard and mouse of
// the window, and the `interaction` command.
#pragma once
#include "kernel/word.h"

// Registers the loop's parts at start-up: its row in the graphic dispatch,
// the window's idle and input hooks, the stages' hooks.
void install_interaction();
// The start-up's entry (mode 1, or -1 with a launching text): starts the
// loop for the boot pass; with no window, says "graphic off".
void interaction_demarrage(int mode);

// The launching text of `lan=`, run once when the interpreter first has
// the thread.
void texte_de_lancement();

// `interaction ...`: its sub-keywords, else the start of the loop.
int INTERACTION_b(word* s, const word* ob, word* st, const word* lim);
// Starts the loop; `titre` is 1 from start-up, -1 in batch start-up, 0
// from the command. Negative after a report (the loop is then stopped).
int init_interaction(word* block, int titre);
// Stops the loop; `raison` is printed with `debug` on.
void fin_interaction(const char* raison);
// One image of the real-time loop.
void interaction_Idle_Func();
// One image of the paint palette: the same stages, another end.
void palette_Idle_Func();
// The `ascii` bindings of the current keyboard line.
int exec_INTERACTION();

// For the screens that other subsystems run in the loop's place (mode
// 298): user slot n, a console line run, and menus of theirs that the
// loop frees with its own when it stops.
int interaction_slot(int n);
int interaction_ligne(const char* text);
void interaction_menus(int racine, int sous_menu_1, int sous_menu_2);
