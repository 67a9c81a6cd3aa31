// Test helpers: console output captured into a string, and a kernel set
// up on the minimal environment.
#pragma once
#include <string>

#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"

struct Capture {
  std::string text;
  std::string* previous;
  Capture() : previous(out_capture(&text)) {}
  ~Capture() { out_capture(previous); }
  std::string take() {
    std::string t;
    t.swap(text);
    return t;
  }
};

// Loads the minimal vocabularies (silently) and puts the console in its
// normal state.
inline void minimal_kernel() {
  Capture quiet;
  vocab_reset();
  env_minimal();
  kernel().etat_console = 1;
  kernel().pri = 5000;
  kernel().trace_err = 0;
  kernel().Text_courant = nullptr;
  kernel().mode_courant = 0;
}
