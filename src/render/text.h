// Texts in the window, drawn with the program's bitmap fonts: the
// `message` of a volume, and the text buttons of the `exec` menu.
#pragma once
#include "kernel/objet.h"
#include "render/display.h"
#include "render/font_tables.h"

// A text over an optional filled rectangle, with an optional outline
// and frame. Units are pixels of the font; y grows upward from the
// text's base line, at the current model-view origin.
struct TextBox {
  const char* text = "";
  const BitmapFont* font = nullptr;  // null: 9 by 15
  const float* back = nullptr;      // filled rectangle behind the text
  const float* outline = nullptr;   // its edge
  const float* frame = nullptr;     // a second edge, two pixels out
  float col[3] = {1, 1, 1};
};

// The font of a `font` value: a number 0 to 6 or a name
// ("8x13", "9x15", "times10", "times24", "helvetica10", "helvetica12",
// "helvetica18"); 9 by 15 otherwise.
const BitmapFont* police(const word* font);
// Width and height of the box around a text, in pixels.
float largeur_texte(const BitmapFont* font, const char* text);
float hauteur_texte(const BitmapFont* font);
void dessine_texte(const TextBox& box);
// Window pixels from the bottom left corner as the frame of what follows
// (true), and the former matrices back (false).
void repere_pixels(bool on);
// The same with the window spanning left, right, bottom, top of `box`.
void repere_plan(bool on, const double box[4]);

// The text of `message` at the volume's first vertex (or the origin),
// over a rectangle of `back message`, in `col message`; with mode 0 the
// rectangle's outline; `col frame` adds a frame.
void message_volume(Objet* o, const DisplayRecord& r, int mode);
