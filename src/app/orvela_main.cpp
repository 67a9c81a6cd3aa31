// The start of ORVELA: start-up, then the window's loop, or the console's
// loop when there is no window.
#include "app/orvela_main.h"

#include "animation/collision/collision.h"
#include "animation/dynamics/dynamics.h"
#include "animation/laws/laws.h"
#include "animation/limits/limits.h"
#include "animation/traj/traj.h"
#include "app/install.h"
#include "interaction/interaction.h"
#include "kernel/bye.h"
#include "kernel/console.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/message_names.h"
#include "kernel/screen.h"
#include "kernel/startup.h"
#include "language/console_runner.h"
#include "persist/object_file.h"
#include "platform/console_io.h"
#include "platform/line_editor.h"
#include "platform/process.h"
#include "render/window.h"

void orvela_main(int argc, char** argv) {
  KernelState& k = kernel();
  k.mode_courant = 1;
  install_console_runner();
  install_graphic_commands();
  install_interaction();
  install_dynamics();
  install_collisions();
  install_limits();
  install_laws();
  install_object_files();
  install_trajectories();
  inita(argc, argv, "initb.h");
  announce_recovery();
  interrupt_clear();
  interrupt_install();
  in_set_interrupt_hook(interrupt_dialogue);
  // At a terminal the console edits its lines and keeps their history.
  line_editor_start();
  const bool fenetre = screen().gra && window_start();
  // The loop's entry: with a window the boot pass of the loop, without it
  // "graphic off".
  interaction_demarrage(k.lan_state == 1 ? -1 : 1);
  // With a window, the toolkit owns the thread; the console and the
  // launching text run in its idle calls.
  if (fenetre) window_main_loop();
  texte_de_lancement();
  for (;;) {
    try {
      lire_executer(1, MES_PROMPT, k.eval_stack, 0);
    } catch (const Abandon&) {
      // Back at the recovery point: the line was abandoned.
    }
  }
}
