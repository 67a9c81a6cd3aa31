// State of the language layer that outlives one compile or one line.
#pragma once
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "language/quick_code.h"
#include "language/quick_loop.h"
#include "language/symbols.h"

// One saved variable, or the mark that opens a call's frame. A formal's
// value is copied (into the entry when small, else into the arena), its
// bloc staying with the variable to be overwritten by the next binding;
// other variables hand their bloc over to the frame, so that the call
// starts them fresh.
constexpr int SMALL_VALUE = 6;  // words of a scalar float or NIL fit
struct FrameEntry {
  word handle;   // the variable; 0 for a frame mark
  int kind, subkind, work5, work6;
  int copied_words;  // 0 when nothing was copied
  bloc moved;        // the value bloc handed over, or null
  size_t copied;     // offset of a large copied value in the arena
  word small[SMALL_VALUE];
};
struct Frames {
  std::vector<FrameEntry> entries;
  std::vector<word> arena;
};

// An increment or decrement waiting for the end of its expression.
struct PendingStep {
  word handle;
  float delta;
};
// Nested evaluations (function calls inside an expression) stack their
// entries above the caller's; each expression holds at most 10.
constexpr int PENDING_PER_EXPRESSION = 10;
constexpr int PENDING_MAX = 1024;

// What is known of one function for the quick road of pure calls, for the
// code it had when judged.
constexpr int MAX_FORMALS = 8;
// A step of a pure function's decoded code: a test going to step `yes`
// or `no`, a `return`, or a place the quick road cannot run.
enum PureStepKind : word { P_IF, P_RETURN, P_UNFIT };
struct PureStep {
  word kind;
  int first = 0, count = 0;  // the expression's ops
  int yes = 0, no = 0;
};
struct Verdict {
  const word* code = nullptr;
  int id = 0;
  int fit = 0;  // 1 pure, -1 not
  int formals = 0;
  word formal[MAX_FORMALS] = {};  // the formals' handles, in order
  // The code decoded: steps, the first being the entry, over the
  // programs of their expressions.
  std::vector<PureStep> steps;
  std::vector<QuickOp> ops;
};

// The functions `exec` runs at each image, each on its own count.
struct ScheduledFunction {
  word function;  // handle of the function object
  float period;   // reload value of the count
  float next;     // images left before the next run
};
struct ExecSchedule {
  std::vector<ScheduledFunction> entries;
  int on = 0;           // the list runs at each image
  int delay = 0;        // the common delay, 0 for none
  int counter = 0;      // images counted towards it
  size_t position = 0;  // the entry that runs next under it
};

struct LanguageState {
  int Dim_com = 200000;         // words of a compile work buffer; doubles on overflow
  int symbol_capacity = 200000; // words a symbol table starts with; keeps its doublings
  Symboles macros_globales;     // macros defined outside any function
  // Names tested by #ifdef: entries [word count, name bytes], zero-ended.
  bloc defined_names = nullptr;
  int defined_capacity = 0;
  // Alias table, lines "name=replacement"; used when `alias` is on.
  std::string alias_text;
  bool alias_exists = false;

  int listing = 0;              // compile listing level (0 off, 1 source-like, 2 with kinds)
  int listing_link = 0;         // listing after linking
  int compile_failed = 0;       // -1 after a failed function compile
  int link_state = 0;           // 1 linked, -1 failed
  int function_serial = 0;      // numbers given to compiled functions
  Objet* running_function = nullptr;  // the function being executed, if any
  std::vector<Objet*> extern_list;    // extern declarations of this compile
  // Runs the initial text of a `static` at compile time, storing its value
  // (a new heap bloc) in *value; installed by the interpreter.
  int (*static_runner)(const char* text, bloc* value) = nullptr;
  int system_value = 0;         // set by `system(n)`
  // Runs the functions of the exec schedule; installed by the cycle.
  int (*run_schedule)() = nullptr;
  // What runs before each console line typed or piped, outside any
  // function: the OSC devices' routes; installed by the subsystems.
  std::vector<void (*)()> between_lines;
  // The object whose `global` variables a `local` function sees, or null.
  Objet* (*local_root)(Objet* local_function) = nullptr;
  // Runs a command of the graphic vocabulary (`value`: the right side of
  // an assignment, or null); installed by the scene.
  int (*graphic_command)(word* record, const word* value, const word* limit) = nullptr;

  Frames frames;                 // variables saved by the calls in progress
  // The area of a function run apart from the console's (the animation's
  // calls), and whether a run is on it; a nested run takes its own.
  std::vector<word> apart_area;
  bool apart_busy = false;
  PendingStep pending[PENDING_MAX];  // `i++` and `i--` waiting for their expression
  int pending_count = 0;
  int pending_base = 0;          // the first entry of the current expression
  // Pure-call verdicts by function handle; sized at the start of each
  // quick run, during which no function gains a handle.
  std::vector<Verdict> verdicts;
  // Above 0 while quick runs are off: abandoned for a passing reason
  // (depth, interrupt, a callee not compiled yet), the rest of the call
  // takes the general road.
  int quick_off = 0;
  // The quick roads (pure calls, quick loop turns) may be taken; off,
  // everything runs on the general road, which they must match.
  bool quick_roads = true;
  // Bodies of counted `for` loops decoded for their quick turns, by the
  // address of their record; the count changes each time the cache is
  // emptied, so that a loop holding an entry knows to ask again.
  std::unordered_map<const word*, QuickLoop> quick_loops;
  unsigned quick_loops_generation = 0;
  // Named stopping points of `stop`: a name and a line.
  std::vector<std::pair<std::string, int>> stopping_points;
  double chrono_start = 0.0;     // seconds at the last `time(0)`
  ExecSchedule exec;             // the `exec` schedule
  // The comment that stood above each function in the file it was read
  // from, by function name, written back above it by `write func`.
  std::map<std::string, std::string> comments;
};

// The one state of the language layer, reached through lang().
extern LanguageState the_language_state;
inline LanguageState& lang() { return the_language_state; }
