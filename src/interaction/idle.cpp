// The idle dispatch by the mode word, the launch list, and the
// registration of the loop's parts at start-up.
#include <string>

#include "animation/cycle.h"
#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/console_runner.h"
#include "platform/files.h"
#include "platform/process.h"
#include "render/frame.h"
#include "render/window.h"
#include "scene/graphic.h"
#include "scene/scene_state.h"

namespace {

// The next command file of the launch list, run as console text; the list
// wraps to its first file after the last. Its lines run one by one as
// console lines. A file that cannot be read, or a line that fails, ends
// the list: the console is read again.
void lance_suivant() {
  InteractionState& L = loop();
  if (L.lance_pos >= L.lance.size()) L.lance_pos = 0;
  const std::string name = L.lance[L.lance_pos];
  voir_int("Lance %d: ", static_cast<int>(L.lance_pos) + 1);
  VOIR_CHAR("%s\n", name.c_str());
  L.lance_pos++;
  std::string text;
  OsFile* f = os_open(name.c_str());
  if (!f) {
    err_lecture(name.c_str());
    L.lance.clear();
    return;
  }
  char buf[4096];
  for (size_t n; (n = os_read(f, buf, sizeof buf)) > 0;) text.append(buf, n);
  os_close(f);
  // Line by line, as typed at the console.
  size_t p = 0;
  while (p < text.size()) {
    size_t e = text.find('\n', p);
    if (e == std::string::npos) e = text.size();
    const std::string line = text.substr(p, e - p);
    p = e + 1;
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    int r = -1;
    try {
      r = run_launch_text(line);
    } catch (const Abandon&) {
    }
    if (r < 0) {
      L.lance.clear();
      return;
    }
  }
}

// A mode whose subsystem is not built goes back to the interpreter (the
// loop that asked for it stops).
void mode_absent() {
  non_construit(kernel().Mode_idle);
  if (loop().Mode_graphique) fin_interaction("NOT IMPLEMENTED");
  kernel().Mode_idle = 0;
}

void run_mode(void (*idle)()) {
  if (idle) idle();
  else mode_absent();
}

void dispatch() {
  InteractionState& L = loop();
  KernelState& k = kernel();
  if (L.lance_flag) {
    L.lance_flag = 0;
    L.voir = 1;
    init_interaction(nullptr, 0);
  }
  if (k.Mode_idle == 0) {
    texte_de_lancement();
    if (!L.lance.empty()) lance_suivant();
    else if (k.Mode_idle == 0) console_step();
  }
  switch (k.Mode_idle) {
    case KW_network: run_mode(L.idle_reseau); break;
    case KW_interaction: case -KW_interaction: interaction_Idle_Func(); break;
    case KW_mouse: run_mode(L.idle_souris); break;
    case KW_palette: palette_Idle_Func(); break;
    case KW_play: run_mode(L.idle_play); break;
    default: break;  // 0, and the modes paused by "["
  }
}

// The idle call: an interrupt answered "0" during an image abandons it;
// the loop that was running starts again.
void idle() {
  try {
    dispatch();
  } catch (const Abandon&) {
    // An abandoned image ends the recording with what it has.
    loop().film.dans_image = 0;
    film_arret();
    if (loop().Mode_graphique == KW_interaction) {
      try {
        init_interaction(nullptr, 0);
      } catch (const Abandon&) {
        fin_interaction("ABANDONMENT");
      }
    }
  }
}

}  // namespace

void texte_de_lancement() {
  KernelState& k = kernel();
  if (k.Mode_idle != 0 || k.lan_state != 1 || k.lan.empty()) return;
  const std::string launch = k.lan;
  k.lan.clear();
  try {
    run_launch_text(launch);
  } catch (const Abandon&) {
  }
}

void install_interaction() {
  register_graphic_handler({KW_interaction}, INTERACTION_b);
  WindowHooks& h = window_hooks();
  h.idle = idle;
  h.key = touche;
  h.button = bouton_souris;
  h.drag = glisse_souris;
  h.hover = survol_souris;
  scene().pointeur.dessine_cadre = cadre_souris;
  install_cycle();
  // A recording under way is finished when the process ends.
  process_at_exit(film_arret);
}
