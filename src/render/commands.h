// Handlers of the graphic words that act on the window, the views, the
// lights and the display. Same form as the other graphic handlers.
#pragma once
#include "kernel/word.h"

int WIN_b(word* s, const word* ob, word* st, const word* lim);
int GRAPHIC_b(word* s, const word* ob, word* st, const word* lim);
int BACK_b(word* s, const word* ob, word* st, const word* lim);
int SCREEN_b(word* s, const word* ob, word* st, const word* lim);
int ZBUF_b(word* s, const word* ob, word* st, const word* lim);
int SET_VIEW_b(word* s, const word* ob, word* st, const word* lim);
int AIM_EYE_b(word* s, const word* ob, word* st, const word* lim);
int FOC_ROLL_b(word* s, const word* ob, word* st, const word* lim);
int PERS_b(word* s, const word* ob, word* st, const word* lim);
int STEREO_b(word* s, const word* ob, word* st, const word* lim);
int DEPTH_b(word* s, const word* ob, word* st, const word* lim);
int DISPL_b(word* s, const word* ob, word* st, const word* lim);
// A text button of the `exec` menu (`displ exec("text") ...`).
int DISPLAY_EXEC(word* s, const word* lim);
// The rows of these commands in the graphic dispatch.
void install_render_commands();
