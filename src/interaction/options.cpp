// The options of init_interaction, one keyword sub-block each. Seven are
// read and used by nothing (`dim`, `poi`, `exp`, `precision`, `coe`, `vol`,
// `zbuf`): the command accepts them and they change nothing.
#include <algorithm>
#include <cstring>
#include <string>

#include "interaction/internal.h"
#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/handles.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/args.h"
#include "scene/lookup.h"

namespace {

constexpr int TITRE_IMAGES = 75;

// `time(n [, menus [, third]])`; with a text first, the unit factor of its
// first letter (m 60, h 3600) is computed and not applied.
void temps(const word* v) {
  InteractionState& L = loop();
  if (!v) {
    L.Nb_image_max = 1;
    return;
  }
  float f[3] = {0, 0, 0};
  int n = 0;
  if (tag(v) == T_HYBRIDE) {
    const word* first = sous_bloc(v, 0);
    if (const char* unit = value_text(first)) {
      const int facteur = unit[0] == 'm' ? 60 : unit[0] == 'h' ? 3600 : 1;
      (void)facteur;
      for (int i = 1; i < 3; i++)
        if (const word* b = sous_bloc(v, i)) f[i] = value_at(b, 0, 0);
      L.menus = entier(f[1]);
      L.troisieme = entier(f[2]);
      return;
    }
    for (int i = 0; i < 3; i++)
      if (const word* b = sous_bloc(v, i)) f[n++] = value_at(b, 0, 0);
  } else {
    n = floats_of(v, f, 3);
  }
  if (n > 0) L.Nb_image_max = entier(f[0]);
  if (n > 1) L.menus = entier(f[1]);
  if (n > 2) L.troisieme = entier(f[2]);
}

// `name(n)`: 75 x n title images (at least 75); `name("text")` the title's
// text and 75; a list of both gives both.
void nom(const word* v) {
  InteractionState& L = loop();
  L.Nb_image_titre = TITRE_IMAGES;
  if (!v) return;
  if (const char* t = value_text(v)) {
    L.Titre_texte = t;
    return;
  }
  int n = 1;
  char text[256];
  for (int i = 0; tag(v) == T_HYBRIDE ? i < np(v) : i < 1; i++) {
    int number = 0;
    const int k = get_ind(v, i, &number, text, sizeof text);
    if (k == 0) n = number;
    else if (k == 1) L.Titre_texte = text;
  }
  L.Nb_image_titre = TITRE_IMAGES * std::max(n, 1);
}

// The version text up to its third blank.
bool meme_version(const char* t) {
  const char* v = ORVELA_VERSION;
  size_t n = 0;
  for (int blanks = 0; v[n] && v[n] != '\n'; n++)
    if (v[n] == ' ' && ++blanks == 3) break;
  return std::strlen(t) == n && std::strncmp(t, v, n) == 0;
}

int reseau(const word* v) {
  InteractionState& L = loop();
  Objet* o = v ? get_objet_kind(chaine_classe(KW_network), v, 0, KW_network) : nullptr;
  if (!o) {
    voir_mot(KW_network);
    voir_message(0, MES_NOT_FOUND);
    return -1;
  }
  L.reseau = 1;
  L.reseau_objet = objet_handle(o);
  return 0;
}

int valide(const word* v) {
  InteractionState& L = loop();
  float f[2] = {0, 0};
  if (floats_of(v, f, 2) < 2) {
    voir_mot(KW_interaction);
    voir_mot(KW_validate);
    voir_texte("(nb,1)\a\n");
    return -1;
  }
  L.reseau_images = entier(f[0]);
  L.reseau_debut = entier(f[1]);
  return 0;
}

}  // namespace

int options_init(word* block) {
  InteractionState& L = loop();
  word* item = first_item(block);
  for (int i = 1; i < item_count(block); i++) {
    item = next_item(item);
    if (item[1] > 1) return -1;  // a word of another vocabulary stops the command
    const word* v = item_value(item);
    switch (item[2]) {
      case KW_dim: case KW_poi: case KW_precision: case KW_coe: case KW_vol: case KW_zbuf: break;
      case KW_exp: {
        const int mode = arg_int(block, KW_exp, 0);
        const int gl_mode = mode == 1 ? 0x0800 : mode == 2 ? 0x0801 : 0x2601;  // GL_EXP, GL_EXP2, GL_LINEAR
        (void)gl_mode;
        break;
      }
      case KW_error:
        L.log_mode = v ? entier(value_at(v, 0, 1)) : 1;
        stamp_debut();
        break;
      case KW_format:
        if (const char* t = value_text(v); t && meme_version(t)) {
          L.titre_vu = 1;
          L.Cpt_image_titre = L.Nb_image_titre;
        }
        break;
      case KW_func:
        if (INTERACTION_FUNC(block, nullptr) < 0) return -1;
        break;
      case KW_line: {
        L.chemin.clear();
        L.chemin_pos = 0;
        for (int k = 0; v && k < elements(v); k++) L.chemin.push_back(value_at(v, k, 0));
        break;
      }
      case KW_memory:
        non_construit(KW_memory);
        break;
      case KW_menu:
        if (const char* t = value_text(v)) L.texte_menu += (L.texte_menu.empty() ? "" : "|") + std::string(t);
        break;
      case KW_name: nom(v); break;
      case KW_network:
        if (reseau(v) < 0) return -1;
        break;
      case KW_period: L.Periode_image = std::max(0, entier(value_at(v, 0, static_cast<float>(L.Periode_image)))); break;
      case KW_see: L.voir = 1; break;
      case KW_system:
        // The title is left out on a machine whose system text holds the string.
        if (const char* t = value_text(v); t && kernel().sysinfo.find(t) != std::string::npos) L.Nb_image_titre = 0;
        break;
      case KW_time: temps(v); break;
      case KW_validate:
        if (valide(v) < 0) return -1;
        break;
      case KW_win: L.Titre_plein_ecran = v ? entier(value_at(v, 0, 12)) : 12; break;
      default: break;
    }
  }
  return 0;
}
