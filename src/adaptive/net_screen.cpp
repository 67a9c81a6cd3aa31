// The learning screen, mode 298 of the idle dispatch: `interaction
// network(id) validate(nb,1)` shows the network learning, one pass an
// idle call, each layer a column and each weight a grey line, with a menu
// of the right button to start, step, pace and leave.
#include <algorithm>
#include <string>

#include "adaptive/net_internal.h"
#include "adaptive/net_state.h"
#include "interaction/interaction.h"
#include "interaction/loop_state.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "kernel/report.h"
#include "platform/console_io.h"
#include "platform/process.h"
#include "render/frame.h"
#include "render/window.h"

namespace {

enum Entree {
  E_HELP = 1,
  E_QUITTER,
  E_INTERP,
  E_CENTRE,
  E_GO_INIT,
  E_GO_RAND,
  E_PAS_A_PAS,
  E_VITESSE,
  E_NUMERO,
};

constexpr const char* AIDE[] = {
    "help: Help\n",
    "quitter: Retour a l'interpreteur\n",
    "interp: Acces a l'interpreteur\n",
    "centre: Centre l'image\n",
    "go_init: Lance l'apprentissage initial\n",
    "go_rand: Lance l'apprentissage aleatoire\n",
    "pas a pas: Lance l'apprentissage pas a pas\n",
    "vitesse: Lire la vitesse (entre 0 et 1)\n",
};

NetworkScreen& ecran() { return networks().screen; }

Objet* reseau_ecran() {
  const NetworkScreen& S = ecran();
  Objet* o = S.net ? handle_objet(S.net) : nullptr;
  return o && o->kind == KW_network ? o : nullptr;
}

void quitte(const char* raison) {
  ecran().actif = false;
  fin_interaction(raison);
}

// The weights put back as they were when the screen started.
void matrice_initiale(Reseau& r) {
  const NetworkScreen& S = ecran();
  if (!r.matrix || S.initial.size() != static_cast<size_t>(r.N) * r.N) return;
  for (size_t k = 0; k < S.initial.size(); k++) r.matrix[4 + k] = fw(S.initial[k]);
}

void depart(bool pas_a_pas) {
  NetworkScreen& S = ecran();
  S.compteur = 1;
  S.delai = 0;
  S.pas_a_pas = pas_a_pas;
  S.cible = 2;
}

bool lit_nombre(const char* prompt, int* n) {
  voir_texte(prompt);
  flush_out();
  std::string line;
  if (!in_getline(line)) return false;
  float f[1] = {0};
  if (std::sscanf(line.c_str(), "%f", &f[0]) != 1) return false;
  *n = entier(f[0]);
  return true;
}

void choix(int code) {
  NetworkScreen& S = ecran();
  Objet* o = reseau_ecran();
  if (!o) return;
  Reseau r = trouve_reseau(o);
  switch (code) {
    case E_HELP:
      for (const char* t : AIDE) voir_texte(t);
      break;
    case E_QUITTER: quitte("quitter"); break;
    case E_INTERP: {
      voir_texte("interp = ");
      flush_out();
      std::string line;
      if (in_getline(line)) interaction_ligne(line.c_str());
      break;
    }
    case E_CENTRE:
      S.centre_x = S.centre_y = 0;
      S.echelle = 1;
      break;
    case E_GO_INIT:
      matrice_initiale(r);
      depart(false);
      break;
    case E_GO_RAND:
      go_rand(r, -10.0f, 10.0f, 0.1f, -2);
      depart(false);
      break;
    case E_PAS_A_PAS:
      if (S.pas_a_pas && S.compteur) {
        S.cible = S.compteur + 1;  // one more step
      } else {
        matrice_initiale(r);
        depart(true);
      }
      break;
    case E_VITESSE: {
      int v = S.vitesse;
      if (lit_nombre("vitesse (1,25) = ", &v)) S.vitesse = std::max(0, v);
      break;
    }
    case E_NUMERO: {
      const int n = hybride_parts(r.motif);
      char prompt[64];
      std::snprintf(prompt, sizeof prompt, "numero [1, %d] (0: Tous) = ", n);
      int k = 0;
      if (!lit_nombre(prompt, &k)) break;
      if (k < 0 || k > n) voir_int("[1, %d]\a\n", n);
      else S.numero_motif = k;
      break;
    }
    default: break;
  }
}

// The entries of the loop's menu string, each run as a console line.
void choix_exec(int code) {
  const InteractionState& L = loop();
  if (code >= 0 && static_cast<size_t>(code) < L.entrees_menu.size())
    interaction_ligne(std::string(L.entrees_menu[static_cast<size_t>(code)]).c_str());
}

// A pattern chosen by the menu: "Tous" (0) or one of them.
void choix_motif(int code) { ecran().numero_motif = code; }

// The root holds every action; "exec" the entries of the loop's menu
// string, "menu" the patterns to learn one at a time.
void cree_menu(const Reseau& r) {
  const int exec = menu_new(choix_exec);
  const InteractionState& L = loop();
  for (size_t k = 0; k < L.entrees_menu.size(); k++) menu_entry(L.entrees_menu[k].c_str(), static_cast<int>(k));
  const int motifs = menu_new(choix_motif);
  menu_entry("Tous", 0);
  for (int k = 1; k <= hybride_parts(r.motif); k++) menu_entry(("motif " + std::to_string(k)).c_str(), k);
  const int racine = menu_new(choix);
  menu_submenu("exec", exec);
  menu_submenu("menu", motifs);
  menu_entry("help", E_HELP);
  menu_entry("quitter", E_QUITTER);
  menu_entry("interp", E_INTERP);
  menu_entry("centre", E_CENTRE);
  menu_entry("go_init", E_GO_INIT);
  menu_entry("go_rand", E_GO_RAND);
  menu_entry("pas a pas", E_PAS_A_PAS);
  menu_entry("vitesse", E_VITESSE);
  menu_entry("numero motif", E_NUMERO);
  menu_attach_right();
  interaction_menus(racine, exec, motifs);
}

// The screen's start, on the first idle call of a new loop.
bool demarre() {
  NetworkScreen& S = ecran();
  InteractionState& L = loop();
  S = NetworkScreen{};
  S.net = L.reseau_objet;
  S.session = L.Temps_debut;
  S.nb = std::max(1, L.reseau_images);
  Objet* o = reseau_ecran();
  if (!o) return false;
  NetOptions opt;
  opt.passes = S.nb;
  if (complete_reseau(o, opt, false) < 0) return false;
  const Reseau r = trouve_reseau(o);
  S.initial = floats_of(r.matrix);
  S.lowest = S.highest = 0;
  if (!S.initial.empty()) {
    S.lowest = *std::min_element(S.initial.begin(), S.initial.end());
    S.highest = *std::max_element(S.initial.begin(), S.initial.end());
  }
  cree_menu(r);
  // validate(nb, start): learning runs free from that pass at once.
  if (L.reseau_debut > 0 && L.reseau_debut <= S.nb) {
    depart(false);
    S.compteur = L.reseau_debut;
  }
  S.actif = true;
  return true;
}

// One pass at the counter's number, as `generate network(id)
// validate(nb, counter)` would run it.
bool une_passe(Objet* o) {
  NetworkScreen& S = ecran();
  NetOptions opt;
  opt.passes = S.nb;
  opt.start = S.compteur;
  opt.time = S.numero_motif > 0 ? S.numero_motif : -1;
  opt.debug = Yes(KW_debug) > 0;  // each weight change printed
  NetResult res;
  return generer_reseau_1(o, opt, &res) == 0;
}

}  // namespace

void dessine_reseau(const Reseau& r) {
  NetworkScreen& S = ecran();
  const WindowState& W = win();
  std::vector<const word*>& couches = S.couches;  // its memory kept from image to image
  couches.clear();
  for (const word* l : Parties{r.fac}) couches.push_back(l);
  if (couches.empty() || !r.matrix || !r.neuron) return;
  const float dx = static_cast<float>(W.Dimx) * 0.8f / static_cast<float>(std::max<size_t>(couches.size() - 1, 1));
  auto position = [&](size_t c, int k, float xy[2]) {
    const int n = elements(couches[c]);
    const float dy = static_cast<float>(W.Dimy) * 0.8f / static_cast<float>(std::max(n - 1, 1));
    xy[0] = S.centre_x + S.echelle * (static_cast<float>(c) - static_cast<float>(couches.size() - 1) / 2) * dx;
    xy[1] = S.centre_y + S.echelle * (static_cast<float>(k) - static_cast<float>(n - 1) / 2) * dy;
  };
  const float range = S.highest - S.lowest;
  for (size_t c = 1; c < couches.size(); c++) {
    const word* I = couches[c - 1];
    const word* J = couches[c];
    for (int a = 0; a < elements(J); a++)
      for (int b = 0; b < elements(I); b++) {
        const int i = I[4 + b], j = J[4 + a];
        const float g = range > 0 ? std::clamp((lit(poids(r, j, i)) - S.lowest) * lit(neurone(r, i, NR_OUTPUT)) / range, 0.0f, 1.0f)
                                  : 0.0f;
        float p[2], q[2];
        position(c - 1, b, p);
        position(c, a, q);
        const float seg[4] = {p[0], p[1], q[0], q[1]};
        const float col[3] = {g, g, g};
        line_segment(seg, col);
      }
  }
  // Each neuron a square, grey by its output.
  for (size_t c = 0; c < couches.size(); c++)
    for (int k = 0; k < elements(couches[c]); k++) {
      float p[2];
      position(c, k, p);
      const float o = std::clamp(lit(neurone(r, couches[c][4 + k], NR_OUTPUT)), 0.0f, 1.0f);
      const float box[4] = {p[0] - 5, p[1] - 5, p[0] + 5, p[1] + 5};
      const float col[3] = {o, o, o};
      fill_rectangle(box, col);
      const float frame[3] = {1, 1, 0};
      outline_rectangle(box, frame);
    }
}

void idle_reseau() {
  NetworkScreen& S = ecran();
  InteractionState& L = loop();
  if (!S.actif || S.session != L.Temps_debut || S.net != L.reseau_objet) {
    if (!demarre()) {
      TRACE_FAIL("idle_reseau()");
      quitte("network");
      return;
    }
  }
  Objet* o = reseau_ecran();
  if (!o) {
    quitte("network");
    return;
  }
  if (interaction_slot(1) < 0 || interaction_slot(2) < 0) {
    quitte("network");
    return;
  }
  if (S.compteur > S.nb) S.compteur = 0;  // the run is over
  bool pas = false;
  if (S.compteur) {
    if (S.pas_a_pas) {
      pas = S.compteur < S.cible;
    } else if (S.delai > 0) {
      S.delai--;
    } else {
      S.delai = S.vitesse;
      pas = true;
    }
  }
  if (pas) {
    Efface_image();
    if (!une_passe(o)) {
      quitte("network");
      return;
    }
    dessine_reseau(trouve_reseau(o));
    swap_image();
    S.compteur++;
    S.dessine = true;
    return;
  }
  if (!S.dessine) {
    // The network as it stands, once, when nothing runs.
    Efface_image();
    dessine_reseau(trouve_reseau(o));
    swap_image();
    S.dessine = true;
  }
  sleep_ms(10);  // an idle screen costs almost nothing
}

void install_network_screen() { loop().idle_reseau = idle_reseau; }
