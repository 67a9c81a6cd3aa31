// The start and the stop of the real-time loop, and DATE.log.
#include <cstdio>
#include <new>
#include <string>

#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/screen.h"
#include "kernel/vocab.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/safe_write.h"
#include "render/frame.h"
#include "render/lights.h"
#include "render/view.h"
#include "render/window.h"

namespace {

constexpr float FOC_INTERACTION = 0.825f;

void defauts() {
  InteractionState& L = loop();
  const WindowState& w = win();
  efface_ligne();
  L.Temps_debut = L.t0 = clock_ms();
  L.Temps_courant = 0;
  place_vue(nullptr, nullptr, &FOC_INTERACTION);
  L.periode = 1;
  L.cpt_periode = 0;
  L.fonction_periode = L.fonction_apres = 0;
  L.Nb_image_titre = 75;
  L.titre_vu = 0;
  L.boutons.clear();
  L.boutons.reserve(NB_BOUTONS);
  L.limite_on = 0;
  L.limite[0] = -w.Dimx / 2.0f;
  L.limite[1] = -w.Dimy / 2.0f;
  L.limite[2] = w.Dimx / 2.0f;
  L.limite[3] = w.Dimy / 2.0f;
  for (float& c : L.limite_col) c = 1;
  L.panneau_x = 20 - w.Dimx / 2.0f;
  L.panneau_y = 20 - w.Dimy / 2.0f;
  L.swap = 1;
  L.images = 0;
}

// The two record buffers of the keys and of their text.
bool tampons() {
  InteractionState& L = loop();
  try {
    L.enregistrement_touches.assign(DIM_ENREGISTREMENT, 0);
    L.enregistrement_texte.assign(DIM_ENREGISTREMENT, 0);
  } catch (const std::bad_alloc&) {
    err_debordement(nullptr);
    return false;
  }
  return true;
}

void libere_tampons() {
  InteractionState& L = loop();
  std::vector<word>().swap(L.enregistrement_touches);
  std::vector<word>().swap(L.enregistrement_texte);
  std::vector<word>().swap(L.generate);
  L.Titre_texte.clear();
}

int echec_init() {
  voir_texte("init_interaction()\n");
  fin_interaction("ERROR init_interaction()");
  return -1;
}

}  // namespace

// Two steps of a start are left out on purpose: no default interaction
// file is read (nothing gives its name or its form), and the window is not
// made again when its width differs from the screen's (that would undo, at
// every start of the loop, a size the user gave the window).
int init_interaction(word* block, int titre) {
  InteractionState& L = loop();
  KernelState& k = kernel();
  defauts();
  if (!tampons()) return -1;
  L.titre = titre;
  L.batch = k.lan_state == 1 ? 1 : -1;
  L.Nb_image_max = titre > 0 && L.batch < 0 ? 150 : titre < 0 ? 1 : 0;
  L.reseau = 0;
  L.chemin.clear();
  L.chemin_pos = 0;
  if (block && options_init(block) < 0) return echec_init();
  L.Nb_image_reste = L.Nb_image_max;
  if (!L.reseau) {
    k.Mode_idle = KW_interaction;
    L.Mode_graphique = KW_interaction;
    SET_LIGHT_1(nullptr, 0, nullptr);
    if (enregistrement_du() < 0) return echec_init();
    if (!L.chemin.empty()) L.Nb_image_max = L.Nb_image_reste = static_cast<int>(L.chemin.size() / 3);
    if (L.menus) generer_menu_interaction();
  } else {
    k.Mode_idle = KW_network;
    L.Mode_graphique = KW_interaction;
  }
  // With a count of 1 the image stays on the screen as it was drawn.
  win().clear_colour = L.Nb_image_max != 1;
  loop_gl_start(L.no_cull);
  if (L.F[0] && L.F[0]() < 0) {
    voir_texte("ERROR _F0()\n");
    fin_interaction("ERROR _F0()");
    return -1;
  }
  if (run_slot(0) < 0) {
    voir_texte("ERROR P_fonc0\n");
    fin_interaction("ERROR P_fonc0");
    return -1;
  }
  L.Temps_debut = L.t0 = clock_ms();
  return 0;
}

void fin_interaction(const char* raison) {
  InteractionState& L = loop();
  if (L.arret_en_cours) return;  // slot 6 stopping again
  L.arret_en_cours = 1;
  if (Yes(KW_debug) > 0) VOIR_CHAR("%s\n", raison);
  // The loop makes no scene objects of its own: its buttons, menus and
  // panel are its state, freed below; the user's objects stay.
  libere_tampons();
  depth_test_off();
  kernel().Mode_idle = 0;
  L.Mode_graphique = 0;
  // Slots 3 to 5 stay for the next start; slot 6 runs with the loop stopped.
  L.P_fonc[0] = L.P_fonc[1] = L.P_fonc[2] = 0;
  run_slot(6);
  L.boutons.clear();
  libere_menus();
  L.Panneau_continue = 0;
  loop_gl_stop();
  L.mode_enregistrement = 0;
  film_fin_boucle();
  L.mode_play = 0;
  L.cpt_periode = 0;
  L.Periode_image = 75;
  win().clear_colour = true;
  draw_in_back(false);
  if (L.log_mode) ecrit_date_log();
  L.arret_en_cours = 0;
}

void heure(int* h, int* m, int* s) { time_of_day(h, m, s); }

void stamp_debut() {
  InteractionState& L = loop();
  heure(&L.debut_h, &L.debut_m, &L.debut_s);
}

void ecrit_date_log() {
  InteractionState& L = loop();
  int h = 0, m = 0, s = 0;
  heure(&h, &m, &s);
  char text[160];
  const int n = std::snprintf(text, sizeof text,
                              "\n============================\nstart: %d h %d m %d s\nstop: %d h %d m %d s", L.debut_h,
                              L.debut_m, L.debut_s, h, m, s);
  // "wb" below log mode 1, "ab" otherwise: an append starts from a copy
  // of the old log.
  WriteFault fault = WriteFault::none;
  SafeFile* f = safe_open("DATE.log", L.log_mode >= 1, &fault);
  if (f) {
    safe_write(f, text, static_cast<size_t>(n));
    fault = safe_commit(f);
  }
  if (!f || fault != WriteFault::none) VOIR_CHAR("%s\a\n", "UNABLE WRITTING DATE.log");
}

void interaction_demarrage(int mode) {
  if (!gl_on()) {
    voir_message(1, MESG_GRAPHIC_OFF);
    return;
  }
  pointeur_scene();
  // `see` at start-up: the first idle call starts the loop with its
  // console view.
  if (screen().see) loop().lance_flag = 1;
  init_interaction(nullptr, mode);
}
