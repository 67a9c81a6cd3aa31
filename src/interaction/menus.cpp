// The menus of the right button in the loop: the entries of the menu
// string (each runs its text as a command line), the "memoire" submenu
// (the designated volume's turns, printed) and the root menu of the
// loop's own actions.
#include <string>

#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/cmd_util.h"
#include "platform/console_io.h"
#include "render/frame.h"
#include "render/lights.h"
#include "render/view.h"
#include "scene/volume.h"

namespace {

constexpr int ENTREE_TEXTE = 1000;   // codes of the menu string's entries
constexpr int MEMOIRE = 30;          // codes of "memoire"'s entries

// Prints the designated volume's turn about x, y, z, or its rota.
void memoire(int k) {
  const InteractionState& L = loop();
  Objet* o = L.designe ? handle_objet(L.designe) : nullptr;
  const float* t = o && o->kind == KW_vol ? get_matrix_vol(o) : nullptr;
  if (!t) return;
  char line[128];
  if (k < 3) std::snprintf(line, sizeof line, "%s %f\n", k == 0 ? "rotx" : k == 1 ? "roty" : "rotz", t[TR_ROTX + k]);
  else std::snprintf(line, sizeof line, "x,y,z,an %f %f %f %f\n", t[TR_ROTA + 1], t[TR_ROTA + 2], t[TR_ROTA + 3], t[TR_ROTA]);
  voir_texte(line);
}

void preset(int code) {
  static const float EYES[6][3] = {{0, 0, -750}, {750, 0, 0}, {0, 0, 750}, {-750, 0, 0}, {0, -750, 1}, {0, 750, 1}};
  const float aim[3] = {0, 0, 0};
  place_vue(EYES[code - 9], aim, nullptr);
  loop().Mode_designation = code;
}

void choix(int code) {
  InteractionState& L = loop();
  if (!L.menus) return;
  if (code >= ENTREE_TEXTE) {
    const size_t k = static_cast<size_t>(code - ENTREE_TEXTE);
    if (k < L.entrees_menu.size()) execute_ligne(std::string(L.entrees_menu[k]).c_str());
    return;
  }
  if (code >= MEMOIRE && code < MEMOIRE + 4) {
    memoire(code - MEMOIRE);
    return;
  }
  switch (code) {
    case 1:
      voir_texte("interaction -> interpreter\n");
      fin_interaction("interaction -> interpreter");
      break;
    case 2: {
      voir_texte("interpreter = ");
      flush_out();
      std::string line;
      if (in_getline(line)) execute_ligne(line.c_str());
      break;
    }
    case 3:
      voir_texte("reset\n");
      L.designe = 0;
      L.sommet = 0;
      vue_initiale();
      SET_LIGHT_1(nullptr, 0, nullptr);
      L.Mode_designation = 3;
      break;
    case 5: case 6: case 7:
      voir_texte("dep(oeil)\n");
      L.Mode_designation = code;
      break;
    case 9: case 10: case 11: case 12: case 13: case 14: preset(code); break;
    case 16: L.Mode_designation = KW_tran; break;
    case 17: L.Mode_designation = KW_rotx; break;
    case 18: L.Mode_designation = KW_roty; break;
    case 19: L.Mode_designation = KW_rotz; break;
    case 20:
      L.Mode_designation = KW_pull;
      set_sem(KW_pers, 0);
      break;
    case 21: L.Mode_designation = 0; break;
    case 22:
      L.Mode_designation = 0;
      L.designe = 0;
      break;
    default: break;
  }
}

// The menu string: groups separated by "|"; a group whose first word
// starts with ">" or "&" is a submenu of that name, the others give their
// words to the first menu.
int menu_texte() {
  InteractionState& L = loop();
  L.entrees_menu.clear();
  if (L.texte_menu.empty()) return 0;
  std::vector<std::pair<std::string, std::vector<std::string>>> groupes;
  std::vector<std::string> premier;
  size_t p = 0;
  while (p <= L.texte_menu.size()) {
    size_t e = L.texte_menu.find('|', p);
    if (e == std::string::npos) e = L.texte_menu.size();
    std::vector<std::string> mots = split_words(L.texte_menu.substr(p, e - p).c_str());
    if (!mots.empty() && (mots[0][0] == '>' || mots[0][0] == '&'))
      groupes.push_back({mots[0].substr(1), std::vector<std::string>(mots.begin() + 1, mots.end())});
    else
      premier.insert(premier.end(), mots.begin(), mots.end());
    p = e + 1;
  }
  std::vector<int> sous;
  for (auto& g : groupes) {
    const int m = menu_new(choix);
    L.sous_menus.push_back(m);
    for (const std::string& w : g.second) {
      menu_entry(w.c_str(), ENTREE_TEXTE + static_cast<int>(L.entrees_menu.size()));
      L.entrees_menu.push_back(w);
    }
    sous.push_back(m);
  }
  const int m = menu_new(choix);
  L.sous_menus.push_back(m);
  for (const std::string& w : premier) {
    menu_entry(w.c_str(), ENTREE_TEXTE + static_cast<int>(L.entrees_menu.size()));
    L.entrees_menu.push_back(w);
  }
  for (size_t i = 0; i < groupes.size(); i++) menu_submenu(groupes[i].first.c_str(), sous[i]);
  return m;
}

}  // namespace

void libere_menus() {
  InteractionState& L = loop();
  if (L.menu_racine) menu_free(L.menu_racine);
  for (int m : L.sous_menus) menu_free(m);
  L.menu_racine = 0;
  L.sous_menus.clear();
}

void generer_menu_interaction() {
  InteractionState& L = loop();
  libere_menus();
  const int texte = menu_texte();
  const int mem = menu_new(choix);
  L.sous_menus.push_back(mem);
  const char* MEM[] = {"rotx ", "roty ", "rotz ", "x,y,z,an "};
  for (int i = 0; i < 4; i++) menu_entry(MEM[i], MEMOIRE + i);
  L.menu_racine = menu_new(choix);
  struct Entree {
    const char* texte;
    int code;
  };
  static const Entree RACINE[] = {
      {"quitter", 1},  {"interpreteur", 2}, {"reset", 3},     {" ", 4},        {"dep(eyey)", 5},
      {"rotxy(eye)", 6}, {"rotxz(eye)", 7}, {"droite", 9},    {"devant", 10},  {"gauche", 11},
      {"derriere", 12}, {"dessus", 13},     {"dessous", 14},  {"dep", 16},     {"rotx", 17},
      {"roty", 18},    {"rotz", 19},        {"pull", 20},     {"displ", 21},   {"validate", 22},
  };
  for (const Entree& e : RACINE) menu_entry(e.texte, e.code);
  if (texte) menu_submenu("menu", texte);
  menu_submenu("memoire", mem);
  menu_attach_right();
}

int interaction_ligne(const char* text) { return execute_ligne(text); }

void interaction_menus(int racine, int sous_menu_1, int sous_menu_2) {
  InteractionState& L = loop();
  libere_menus();
  L.menu_racine = racine;
  L.sous_menus = {sous_menu_1, sous_menu_2};
}
