// ORVELA: start-up, then the console loop (or the window's loop).
#include "kernel/bye.h"
#include "kernel/console.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "language/console_runner.h"
#include "persist/object_file.h"
#include "platform/console_io.h"
#include "platform/line_editor.h"
#include "platform/process.h"
#include "render/screen.h"
#include "render/window.h"

int main(int argc, char** argv) {
  KernelState& k = kernel();
  k.mode_courant = 1;
  install_console_runner();
  install_object_files();
  inita(argc, argv, "initb.h");
  announce_recovery();
  interrupt_clear();
  interrupt_install();
  in_set_interrupt_hook(interrupt_dialogue);
  // At a terminal the console edits its lines and keeps their history.
  line_editor_start();
  // With a window, the toolkit owns the thread and the console runs in
  // its idle slices.
  if (screen().gra && window_start()) window_main_loop();
  // With graphics off the interaction entry only says so, and the
  // launching text runs once.
  {
    voir_message(1, 95);
    if (k.Mode_idle == 0 && k.lan_state == 1 && !k.lan.empty()) {
      std::string launch = k.lan;
      k.lan.clear();
      try {
        run_launch_text(launch);
      } catch (const Abandon&) {
      }
    }
  }
  for (;;) {
    try {
      lire_executer(1, 0, k.eval_stack, 0);
    } catch (const Abandon&) {
      // Back at the recovery point: the line was abandoned.
    }
  }
}
