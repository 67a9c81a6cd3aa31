// What the loop draws over the image: the CONTINUE/X panel, the buttons,
// the title, the console view's line; and the kept `generate` block.
#include <cstring>
#include <string>

#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "language/commands.h"
#include "language/args.h"
#include "render/frame.h"
#include "render/window.h"
#include "scene/graphic.h"

namespace {

constexpr float HAUT = 20;  // height of the panel's box

float unite() { return text_unit(); }

void dessine_panneau() {
  const InteractionState& L = loop();
  const float u = unite(), x = L.panneau_x, y = L.panneau_y;
  const float box[4] = {x, y, x + 10 * u, y + HAUT};
  if (L.panneau_fond[0] >= 0) fill_rectangle(box, L.panneau_fond);
  if (L.panneau_cadre[0] >= 0) outline_rectangle(box, L.panneau_cadre);
  const float sep[4] = {x + 8 * u, y, x + 8 * u, y + HAUT};
  line_segment(sep, L.panneau_cadre[0] >= 0 ? L.panneau_cadre : L.panneau_col);
  const float rouge[3] = {1, 0, 0};
  text_at("CONTINUE", x + 1, y + 15, L.panneau_col);
  text_at("X", x + 8 * u + u / 2, y + 15, rouge);
}

// 1 in CONTINUE, 2 in X, 0 elsewhere.
int partie(const int p[2]) {
  const InteractionState& L = loop();
  const float u = unite(), x = L.panneau_x, y = L.panneau_y;
  if (p[1] < y || p[1] > y + HAUT || p[0] < x || p[0] > x + 10 * u) return 0;
  return p[0] < x + 8 * u ? 1 : 2;
}

// The title's text: the one given by `name`, or the version.
std::string titre() {
  const InteractionState& L = loop();
  if (!L.Titre_texte.empty()) return L.Titre_texte;
  std::string v = ORVELA_VERSION;
  while (!v.empty() && v.back() == '\n') v.pop_back();
  return v;
}

}  // namespace

int INTERACTION_MOUSE(word* block, const word* lim) {
  InteractionState& L = loop();
  if (block) {
    if (has_word(block, KW_validate)) return build_float(block, lim, static_cast<float>(L.Panneau_continue));
    L.Panneau_continue = 1;
    L.panneau_mode = arg_int(block, KW_mouse, 1);
    float at[2] = {L.panneau_x, L.panneau_y};
    if (arg_floats(block, KW_poi, at, 2) == 2) {
      L.panneau_x = at[0];
      L.panneau_y = at[1];
    }
    arg_floats(block, KW_col, L.panneau_col, 3);
    arg_floats(block, KW_rectangle, L.panneau_fond, 3);
    arg_floats(block, KW_frame, L.panneau_cadre, 3);
    L.hit_continue = 0;
    return build_nil(block);
  }
  dessine_panneau();
  int r = 0;
  if (L.panneau_mode == 1) {
    if (L.hit_continue) r = partie(L.appui);
    L.hit_continue = 0;
  } else if (L.enfonce) {
    r = partie(L.glisse);
  }
  if (r == 2) L.Panneau_continue = 0;
  return r;
}

int dessine_boutons() {
  InteractionState& L = loop();
  const float rouge[3] = {1, 0, 0};
  for (size_t i = 0; i < L.boutons.size(); i++) {
    const Bouton& b = L.boutons[i];
    const float w = text_width(b.texte.c_str());
    const bool dessous = L.survol[0] >= b.x && L.survol[0] <= b.x + w && L.survol[1] >= b.y - 15 && L.survol[1] <= b.y + 4;
    text_at(b.texte.c_str(), b.x, b.y, dessous ? rouge : b.col);
    const bool clic = L.clic_pris[0] && L.clic[0] >= b.x && L.clic[0] <= b.x + w && L.clic[1] >= b.y - 15 &&
                      L.clic[1] <= b.y + 4;
    if (clic) {
      const std::string t = b.texte;  // the text may remove the buttons
      if (execute_ligne(t.c_str()) < 0) return -1;
    }
  }
  return 0;
}

void dessine_titre() {
  const InteractionState& L = loop();
  const std::string t = titre();
  const float blanc[3] = {1, 1, 1};
  const float x = -text_width(t.c_str()) / 2;
  if (L.Cpt_image_titre < L.Nb_image_titre) {
    // A title image: the title alone in the middle of the window.
    Efface_image();
    text_at(t.c_str(), x, 0, blanc);
  } else {
    text_at(t.c_str(), x, 20 - win().Dimy / 2.0f, blanc);
  }
}

// The console view: the prompt and the line typed so far, at the bottom.
void dessine_ligne_clavier() {
  const InteractionState& L = loop();
  const std::string t = std::string(1, L.Car_prompt) + L.Ligne_clavier;
  const float blanc[3] = {1, 1, 1};
  text_at(t.c_str(), 10 - win().Dimx / 2.0f, win().Dimy / 2.0f - 10, blanc);
}

int generate_image() {
  InteractionState& L = loop();
  std::vector<word>& z = L.generate_zone;
  std::memcpy(z.data(), L.generate.data(), L.generate.size() * sizeof(word));
  return EVALUER_1(z.data(), z.data() + z.size());
}
