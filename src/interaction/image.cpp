// interaction_Idle_Func: one image of the real-time loop, its steps in
// their order. The stages of the animation (Stage in animation/cycle.h)
// are steps 8 to 20; the loop supplies the user functions between them,
// and the input, the panels, the swap and the pacing around them.
#include "animation/cycle.h"
#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/entier.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "language/live_reload.h"
#include "platform/files.h"
#include "render/frame.h"
#include "render/lights.h"
#include "render/window.h"

namespace {

// The user functions' places among the stages: _F<n> then slot n, and the
// check point of Raz_fonc after it.
int fonction_utilisateur(int n) {
  if (run_slot(n) < 0) return -1;
  point_de_controle();
  return 0;
}

// The pointer placed by input other than the mouse: x, y in pixels from
// the window's centre, y down, as the mouse gives them.
void pose_pointeur(const float xyz[3]) {
  InteractionState& L = loop();
  for (int i = 0; i < 3; i++) L.souris_chemin[i] = xyz[i];
  L.survol[0] = entier(xyz[0]);
  L.survol[1] = entier(xyz[1]);
  pointeur_scene();
}

// Step 11: the messages come to their functions; the `cin` device's three
// values, then the recorded mouse path, each stands for the pointer.
int entrees() {
  InteractionState& L = loop();
  if (L.messages && L.messages() < 0) return -1;
  float xyz[3];
  if (L.lire_cin) {
    const int r = L.lire_cin(xyz);
    if (r < 0) return -1;
    if (r > 0) pose_pointeur(xyz);
  }
  if (L.chemin_pos + 3 <= L.chemin.size()) {
    pose_pointeur(&L.chemin[L.chemin_pos]);
    L.chemin_pos += 3;
  }
  return 0;
}

// Step 18: with a period of n the scene is painted over n images between
// two clears; the period function runs at the end of each period.
int periode_image() {
  InteractionState& L = loop();
  if (L.periode == 0 || L.panneau) return 0;
  if (L.cpt_periode == 0) Efface_image();
  if (++L.cpt_periode < L.periode) return 0;
  L.cpt_periode = 0;
  return run_fonction(L.fonction_periode);
}

int etape(Stage s) {
  switch (s) {
    case STAGE_F1:
      loop().Nb_anim = 0;
      return fonction_utilisateur(1);
    case STAGE_F2: return fonction_utilisateur(2);
    case STAGE_F3: return fonction_utilisateur(3);
    case STAGE_F4: return fonction_utilisateur(4);
    case STAGE_CIN: return entrees();
    case STAGE_PERIOD: return periode_image();
    default: return 0;
  }
}

void echec(const char* label) {
  if (Yes(KW_error) > 0) {
    VOIR_CHAR("%s\n", label);
    voir_texte("interaction_Idle_Func()\n");
  }
  fin_interaction("interaction_Idle_Func");
}

// Steps 21 to 33: what runs in every image, frozen or not. Negative with
// the failed step's label in *label.
int queue(const char** label) {
  InteractionState& L = loop();
  if (L.joue_son && (*label = "alphabet", L.joue_son(L.derniere_touche) < 0)) return -1;
  rejoue_touches();
  L.designation[0] = DESIGNATION_LIBRE;
  L.designation[1] = 0;
  if (L.exec_menu && Yes(KW_menu) > 0 && (*label = "EXEC_MENU", L.exec_menu() < 0)) return -1;
  souris_image();
  *label = "exec_fonc_obj";
  if (run_hook(5) < 0 || (L.avance && run_user(5) < 0)) return -1;
  point_de_controle();
  if (L.echelles && (*label = "scale", L.echelles() < 0)) return -1;
  if (L.exec_brush && Yes(KW_brush) > 0 && (*label = "EXEC_BRUSH", L.exec_brush() < 0)) return -1;
  if (L.Mode_designation) EXEC_DESIGNE();
  if (L.textes && (*label = "text", L.textes() < 0)) return -1;
  if (L.voir) dessine_ligne_clavier();
  *label = "button";
  if (!L.boutons.empty() && dessine_boutons() < 0) return -1;
  if (!L.titre_vu) dessine_titre();
  *label = "NUM";
  if (jauges() < 0) return -1;
  if (L.limite_on) outline_rectangle(L.limite, L.limite_col);
  *label = "GENERATE_IMAGE";
  if (!L.generate.empty() && generate_image() < 0) return -1;
  if (L.Nb_image_reste > 0 && --L.Nb_image_reste < 1) fin_interaction("frame count out");
  if (L.Temps_fin && L.Temps_fin < L.Temps_courant) fin_interaction("time out");
  if (L.exec_stock && Yes(KW_stock) > 0 && (*label = "EXEC_STOCK", L.exec_stock() < 0)) return -1;
  return 0;
}

// Step 38: a spin on the clock up to the period's end; the measured rate.
void cadence() {
  InteractionState& L = loop();
  if (L.Periode_image == 0 || L.no_pacing) return;
  long long dt = clock_ms() - L.t0;
  if (dt != 0) L.Images_par_seconde = 1000.0f / static_cast<float>(dt);
  const float reste = 1.0f / static_cast<float>(L.Periode_image) - static_cast<float>(dt) / 1000.0f;
  if (reste > 0) {
    const long long fin = clock_ms() + static_cast<long long>(reste * 1000.0f);
    while (clock_ms() < fin) {
    }
  }
  dt = clock_ms() - L.t0;
  if (dt != 0) L.Images_par_seconde = 1000.0f / static_cast<float>(dt);
}

}  // namespace

namespace {

void une_image() {
  InteractionState& L = loop();
  KernelState& k = kernel();
  interrupt_check();
  // Function files written again since the last image take effect now.
  reload_poll();
  L.clic_pris[0] = L.clic_pris[1] = 0;
  L.t0 = clock_ms();
  L.Temps_courant = static_cast<int>(L.t0 - L.Temps_debut);
  // The boot state, and the loop ended by "[": one pass that stops it.
  if (k.Mode_idle == -KW_interaction) {
    k.Mode_idle = KW_interaction;
    fin_interaction("no lan");
  }
  if (L.Titre_plein_ecran >= 0) {
    if (L.Titre_plein_ecran > 0) full_screen();
    L.Titre_plein_ecran--;
    return;
  }
  if (L.Panneau_continue) {
    if (L.mode_play != KW_play) Efface_image();
    L.avance = INTERACTION_MOUSE(nullptr, nullptr);
    L.panneau = 1;
  } else {
    L.avance = 1;
    L.panneau = 0;
  }
  bool titre = false;
  if (L.Nb_image_titre != 0) {
    if (L.titre < 0) fin_interaction("lan");
    if (L.Cpt_image_titre < L.Nb_image_titre) {
      if (L.titre == 2) fin_interaction("end header demo");
      dessine_titre();
      L.Cpt_image_titre++;
      titre = true;
    } else {
      L.titre_vu = 1;
    }
  }
  if (!titre) {
    if (L.avance) {
      if (k.Mode_idle < 0) return;
      if (L.lumieres_differees >= 0 && ++L.lumieres_differees == 2) {
        L.lumieres_differees = -1;
        SET_LIGHT_1(nullptr, 0, nullptr);
      }
    }
    L.images++;
    bool simulation = true;
    if (L.Gel_interaction > 0) simulation = false;
    else if (L.Gel_interaction == 0) L.Gel_interaction = 1;
    if (simulation) {
      const int r = run_stages({LOOP_INTERACTION, L.avance, etape});
      if (r < 0) {
        echec(failed_stage_label());
        return;
      }
      if (r == 0 && exec_INTERACTION() < 0) {
        echec("exec_INTERACTION");
        return;
      }
    }
    const char* label = "";
    if (queue(&label) < 0) {
      echec(label);
      return;
    }
  }
  if (L.Panneau_continue) INTERACTION_MOUSE(nullptr, nullptr);
  // The title images of the first run are the system's, not the scene's.
  if (L.film.etat && !titre) film_image();
  if (L.swap) swap_image();
  if (L.fonction_apres && L.cpt_periode == 0 && run_fonction(L.fonction_apres) < 0) {
    echec("exec_fonc_obj");
    return;
  }
  if (L.stock_audio && L.stock_audio() < 0) {
    echec("STOCK_AUDIO");
    return;
  }
  if (L.exec_audio && L.exec_audio() < 0) {
    echec("EXEC_AUDIO");
    return;
  }
  bip();
  // What the image's functions printed shows at once, also through a pipe.
  flush_out();
  cadence();
}

}  // namespace

// One image; a recording asked to stop during it (the loop ended there)
// stops once the image is recorded, however the image ends.
void interaction_Idle_Func() {
  Film& f = loop().film;
  f.dans_image = 1;
  struct Fin {
    Film& f;
    ~Fin() {
      f.dans_image = 0;
      if (f.arret) film_arret();
    }
  } fin{f};
  une_image();
}
