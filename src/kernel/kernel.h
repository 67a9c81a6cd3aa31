// State of the kernel that start-up fills and the whole system reads.
#pragma once
#include <string>
#include <vector>

#include "kernel/chains.h"
#include "kernel/word.h"

struct Objet;

// What start-up sets from the options and files, and a test may put back.
struct KernelSettings {
  // Console state: 0 in early start-up (fixed texts), 1 with message
  // tables, 2 with debug on.
  int etat_console = 0;
  int trace_err = 0;         // failing functions print their names
  int err = 0;               // option `err`: verbose start-up trace
  int deb = 0;               // option `deb`
  int pri = 5000;            // longest string printed in one call
  Objet* Text_courant = nullptr;  // text object receiving a copy of output
  int Mode_idle = 0;
  int mode_courant = 0;      // current-mode variable
  int interaction = 0;       // 0 idle, -276 while the graphic loop owns the thread

  // Working areas (option keys buf, eva, com, emp, mal, esc).
  int Dim_buf = 100000;
  int Dim_ev = 100000;
  int Dim_com = 200000;
  int Dim_emp = 10000;
  int Dim_mal = 20000;
  int Dim_com2 = 200000;
  int Dim_force = 1000000;
  int Dim_EXTERN = 1000;
  int esc = 27;

  std::string ini, mac = "PC", env = "env/", ima = "ima/", exe = "exe/",
              htm, tim, son, voc1 = "Voc_xxx", voc2 = "Voc_xxx", lan, cwd,
              fun;  // folder searched for "name.func" files
  int write_thread_id = 1;
  int lan_state = -1;        // launching state
  std::vector<std::string> lan_words;
  int machine = -1;          // 0 SGI, 1 PC
  int timer_ticks = 60;
  std::string sysinfo;       // "Executable: ..." and the version line

  // Environment texts per vocabulary (env, kom, mes).
  std::vector<std::string> env_text, kom_text, mes_text;
  std::string htm_table[256];

  // Working areas allocated at start-up.
  word* eval_stack = nullptr;   // evaluation area base
  word* eval_limit = nullptr;   // Dim_ev words above the base
  bloc command_stack = nullptr; // commands stacked for the animation cycle
  word* command_insert = nullptr;
  word* command_limit = nullptr;
  std::vector<word> random_table;  // precalculated random numbers (ale)
  bloc scratch = nullptr;       // 192000-word scratch block

  // Printing code: line width and page height (current values of `edit`).
  int line_width = 72, page_height = 21;
};

// The kernel's state: its settings and the heads of the object chains.
// Every linked record points back at its head, so the heads are made once
// in place and never copied or replaced.
struct KernelState : KernelSettings {
  ChainHeads chains;
};

KernelState& kernel();
// Puts the settings back as start-up found them; the chains and the
// records linked in them stay.
void kernel_reset();
