// The keyboard of the window: the line typed in it, its keys of control,
// and the `ascii` bindings that exec_INTERACTION runs once an image.
//   interaction ascii("a") func("f")   typing "a" in the window runs f
//   interaction ascii                  the last line ended with Return
//   interaction ascii abs              the code of the last key
//   interaction ascii format("<")      the prompt character (reads without value)
//   interaction ascii poi(x,y) rectangle(r,g,b) frame(r,g,b) col(r,g,b)
//                                      waits for a line typed in the window
//                                      in a box at (x,y), and answers it
#include <algorithm>
#include <cstring>
#include <string>

#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/console_runner.h"
#include "language/args.h"
#include "render/frame.h"
#include "render/window.h"
#include "language/eval.h"

namespace {

constexpr unsigned char ESCAPE = 27, BACKSPACE = 8, DELETE = 127;

void ajoute(char c) {
  InteractionState& L = loop();
  if (L.longueur >= LIGNE_CLAVIER_MAX) {
    err_debordement(nullptr);
    efface_ligne();
    return;
  }
  L.Ligne_clavier[L.longueur++] = c;
  L.Ligne_clavier[L.longueur] = 0;
}

// Return: a line opened by "!" runs as a command, any other is kept as
// the validated line.
void valide_ligne() {
  InteractionState& L = loop();
  std::string line(L.Ligne_clavier, static_cast<size_t>(L.longueur));
  efface_ligne();
  if (!line.empty() && line[0] == '!') {
    execute_ligne(line.c_str() + 1);
    return;
  }
  std::memcpy(L.Ligne_validee, line.c_str(), line.size() + 1);
}

void echappement() {
  InteractionState& L = loop();
  KernelState& k = kernel();
  if (!L.menus) return;
  if (k.Mode_idle == KW_interaction) fin_interaction("Esc");
  else k.Mode_idle = 0;
}

Liaison* liaison(char c) {
  for (Liaison& b : loop().liaisons)
    if (b.car == c) return &b;
  return nullptr;
}

// The pointer strictly inside the key capture rectangle.
bool dans_capture(int x, int y) {
  const float* r = loop().capture;
  const float x0 = std::min(r[0], r[2]), x1 = std::max(r[0], r[2]);
  const float y0 = std::min(r[1], r[3]), y1 = std::max(r[1], r[3]);
  const float px = static_cast<float>(x), py = static_cast<float>(y);
  return px > x0 && px < x1 && py > y0 && py < y1;
}

// `ascii poi(x,y) rectangle(r,g,b) frame(r,g,b) col(r,g,b)`: the box of
// GET_ASCII from the command's items.
int saisie(word* s) {
  BoiteSaisie b;
  arg_floats(s, KW_poi, b.poi, 2);
  arg_floats(s, KW_rectangle, b.fond, 3);
  arg_floats(s, KW_frame, b.cadre, 3);
  arg_floats(s, KW_col, b.col, 3);
  return build_text_or_nil(s, eval_limit(), GET_ASCII(b));
}

}  // namespace

// A line typed in a box: the window's events are taken until Return (or
// Escape, or the window's end).
std::string GET_ASCII(const BoiteSaisie& b) {
  InteractionState& L = loop();
  efface_ligne();
  L.Ligne_validee[0] = 0;
  L.attend_saisie = 1;
  while (L.attend_saisie && gl_on()) {
    const std::string shown = std::string(1, L.Car_prompt) + L.Ligne_clavier;
    const float w = text_width(shown.c_str()) + 8, h = 20;
    const float box[4] = {b.poi[0] - 4, b.poi[1] - 15, b.poi[0] - 4 + w, b.poi[1] - 15 + h};
    if (b.fond[0] >= 0) fill_rectangle(box, b.fond);
    if (b.cadre[0] >= 0) outline_rectangle(box, b.cadre);
    text_at(shown.c_str(), b.poi[0], b.poi[1], b.col);
    flush_window();
    window_events(20);
  }
  L.attend_saisie = 0;
  return L.Ligne_validee;
}

// The caller's text before the typed line; the scale variant asks the
// scales' tool for a field of type "name" instead of the box.
int KEYBOARD_INPUT(const char* texte, const BoiteSaisie& b, bool echelle, std::string& lu) {
  InteractionState& L = loop();
  lu = texte ? texte : "";
  if (!echelle) {
    lu += GET_ASCII(b);
    return 0;
  }
  if (!L.echelle_saisie) return non_construit(KW_scale);
  std::string champ;
  if (L.echelle_saisie(b.poi, champ) < 0) return -1;
  lu += champ;
  return 0;
}

void efface_ligne() {
  InteractionState& L = loop();
  L.longueur = 0;
  L.Ligne_clavier[0] = 0;
}

int execute_ligne(const char* text) { return run_launch_text(text); }

void touche(unsigned char key, int, int) {
  InteractionState& L = loop();
  KernelState& k = kernel();
  L.derniere_touche = key;
  note_touche(key);
  if (!L.entree_clavier && key != ESCAPE) return;
  if (L.capture_on && dans_capture(L.survol[0], L.survol[1])) L.touche_capturee = key;
  switch (key) {
    case BACKSPACE: case DELETE:
      if (L.longueur > 0) L.Ligne_clavier[--L.longueur] = 0;
      return;
    case ESCAPE:
      L.attend_saisie = 0;
      echappement();
      return;
    case '&': case '>': efface_ligne(); return;
    case '[':
      if (k.Mode_idle > 0) k.Mode_idle = -k.Mode_idle;
      return;
    case ']':
      if (k.Mode_idle < 0) k.Mode_idle = -k.Mode_idle;
      return;
    default: break;
  }
  const char c = static_cast<char>(key);
  if (L.voir && L.longueur == 0 && c != L.Car_prompt) {
    // The console view: a key opens a command line.
    if (key == 10 || key == 13) return;
    ajoute('!');
    ajoute(c);
    return;
  }
  if (key == 10 || key == 13) {
    valide_ligne();
    if (L.attend_saisie) L.attend_saisie = 0;
    return;
  }
  if ((c == '!' || c == '<') && L.longueur > 0) return;
  ajoute(c);
}

int exec_INTERACTION() {
  InteractionState& L = loop();
  if (L.longueur == 0) return 0;
  if (L.Ligne_clavier[0] == L.Car_prompt && L.Ligne_clavier[L.longueur - 1] != '\r') return 0;
  const char first = L.Ligne_clavier[0];
  if (first == '!') return 0;
  for (size_t i = 0; i < L.liaisons.size(); i++) {
    const Liaison b = L.liaisons[i];
    if (b.car != first) continue;
    efface_ligne();
    if (b.kind == KW_func && run_fonction(b.function) < 0) return -1;
    if (b.kind == KW_stock && L.stock_touche && L.stock_touche(b.stock) < 0) return -1;
    return 0;
  }
  return 0;
}

int INTERACTION_ASCII(word* s, const word* lim) {
  InteractionState& L = loop();
  if (has_word(s, KW_abs)) return build_float(s, lim, static_cast<float>(L.derniere_touche));
  if (has_word(s, KW_format)) {
    const char* t = value_text(arg_of(s, KW_format));
    if (!t) return build_text_or_nil(s, lim, std::string(1, L.Car_prompt));
    L.Car_prompt = t[0] ? t[0] : '<';
    efface_ligne();
    return build_nil(s);
  }
  if (has_word(s, KW_poi)) return saisie(s);
  if (const char* name = value_text(arg_of(s, KW_write))) return enregistre(name) < 0 ? -1 : build_nil(s);
  if (const char* name = value_text(arg_of(s, KW_read))) return relit(name) < 0 ? -1 : build_nil(s);
  const char* car = value_text(arg_of(s, KW_ascii));
  if (!car) return build_text_or_nil(s, lim, L.Ligne_validee);
  if (!car[0] || car[1]) {
    err_syntaxe(MES_COMMAND_USAGE, KW_ascii, "(\"c\") func(\"f\")\n");
    return -1;
  }
  Liaison b;
  b.car = car[0];
  if (has_word(s, KW_func)) {
    b.kind = KW_func;
    if (!(b.function = fonction_nommee(value_text(arg_of(s, KW_func))))) return -1;
  } else if (has_word(s, KW_stock)) {
    // The stock entries belong to their own tool: without it, a binding
    // to one could never run.
    if (!L.stock_touche) return non_construit(KW_stock);
    b.kind = KW_stock;
    b.stock = arg_int(s, KW_stock, 0, 0);
  } else {
    // The binding of that character goes.
    for (size_t i = 0; i < L.liaisons.size(); i++)
      if (L.liaisons[i].car == b.car) L.liaisons.erase(L.liaisons.begin() + static_cast<long>(i));
    return build_nil(s);
  }
  if (Liaison* old = liaison(b.car)) *old = b;
  else L.liaisons.push_back(b);
  return build_nil(s);
}
