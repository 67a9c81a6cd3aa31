// Ending the run: questions about unsaved work, then message 5 and exit;
// and the end forced by a signal, which saves that work first.
#pragma once
#include <string>
#include <vector>

// One kind of work that may be unsaved (functions, volumes...). The
// layer that owns it registers the row at start-up.
struct UnsavedWork {
  int voc = 0, num = 0;          // the question asked at `bye`
  bool (*pending)() = nullptr;   // true while some of it is unsaved
  // The recovery file's ending, and the writer of the unsaved part to a
  // file: false after its own message.
  const char* extension = "";
  bool (*save)(const std::string& path) = nullptr;
  // The question's own text, for work that no numbered message names
  // (asked alone, num being 0).
  const char* text = nullptr;
};

struct ByeState {
  std::string question;      // asked at exit with message 90
  std::string function;      // run at exit
  // Runs the stored exit function; installed by the language layer.
  int (*run_function)(const std::string& name) = nullptr;
  std::vector<UnsavedWork> work;  // in the order the questions are asked
};

ByeState& bye_state();
void unsaved_work_register(const UnsavedWork& row);

// With `abs` no question is asked. Returns -1 when an answer cancelled
// the exit; otherwise the process ends with status 0.
int bye(bool abs);

// The files that work is saved in when a signal ends the run: this name
// in the working folder, followed by each kind's ending.
constexpr const char* RECOVERY_NAME = "orvela-recovery";
// Writes every unsaved kind of work to its recovery file, says where,
// and ends the process (status 128 + the signal's number).
[[noreturn]] void end_on_signal(int signal);
// At start-up: names the recovery files left by an ended run, if any.
void announce_recovery();
