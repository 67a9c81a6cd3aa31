// The list of windows: the main window, "ORVELA", and the sub-windows
// made by `win("name")`. Each `win` object holds in its owner words the
// toolkit's window number, its size and place in the main window, and
// the window that has the focus (where commands draw).
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

enum WinWord { WW_NUMBER = 0, WW_W = 1, WW_H = 2, WW_X = 3, WW_Y = 4, WW_FOCUS = 5 };

// The main window's object, made or brought up to date after the window
// was (re-)created.
Objet* objet_fenetre_principale();
// A window of the list by name, or null.
Objet* fenetre_nommee(const char* name);
// After the main window was made again: its sub-windows are made again
// as they were, and the focus stays with the same window.
void fenetres_refaites();
// Makes the window that has the focus current again (after a callback of
// the toolkit made another one current).
void focus_reprise();

// `win("name") dim(w,h) poi(x,y)`: makes the sub-window, or moves and
// resizes it; the place counts from the main window's centre, and by
// default centres it. `win foc("name")` draws in that window from now
// on, `win below("name")` puts it under its sisters. Negative after a
// report.
int SOUS_FENETRE(word* s, const word* lim, const char* name);
