// fct0: the value functions of the interpreter vocabulary (arithmetic on
// vectors and strings, random numbers, text files, function texts). Each
// result is built on the evaluation area just behind the command record,
// then moved in place of the record.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "kernel/entier.h"
#include "kernel/values.h"
#include "kernel/word.h"
#include "language/handlers.h"

// The handlers fct0, MIN_MAX_a and PULS_a are declared in handlers.h.
// Keyword code of a name, or -1 when it is no keyword (`inclu("name")`).
int INCLU_NAME(const char* name);

struct OsFile;
struct SafeFile;

// Slots of open files, numbered from 1.
constexpr int FILE_SLOTS = 20;

// An open file: read, or being written (it replaces the file of that
// name when closed, if every write went well).
struct OpenFile {
  OsFile* in = nullptr;
  SafeFile* out = nullptr;
  std::string name;
  bool reported = false;  // a write failed and was reported
};

// The state of the family: the current error word, the names kept by
// `func error`, the table of open files and the pacing of `wait(a, b)`.
struct Fct0State {
  int Erreur_code = 0;
  std::vector<std::string> Tab_noms_err;
  OpenFile files[FILE_SLOTS + 1] = {};  // slot 0 unused: no valid number is 0
  long long pace_start = 0;            // milliseconds
  float pace_rate = 0;                 // images per second
  int pace_count = 0;                  // images since the start
};
Fct0State& fct0_state();
// Closes every file opened by `fopen` (end of run, tests); files being
// written are put in place.
void fct0_close_files();

// ---- shared by the files of the family --------------------------------

// One call: the record, its items and where the result is built.
struct Fct0Call {
  word* record = nullptr;
  const word* limit = nullptr;
  word* first = nullptr;        // first item
  word* second = nullptr;       // second item, or null
  const word* arg = nullptr;    // argument of the first item, or null
  const word* v = nullptr;      // evaluated argument (evaluated codes)
  int n = 0;                    // its element count
  word* out = nullptr;          // where the result bloc is built
  bool time = false;            // a `time` item was seen
  bool error = false;           // an `error` item was seen
};
using Fct0Worker = int (*)(Fct0Call& c);

// The first item's argument evaluated, or null.
const word* fct0_argument(Fct0Call& c);

// Copies `value` as the result.
int copy_result(Fct0Call& c, const word* value);
// The keyword followed by "ILLEGAL": an argument of the wrong kind.
int wrong_kind(Fct0Call& c);

// A CHAR result written piece by piece at c.out, never past the limit.
struct TextOut {
  word* block = nullptr;
  char* p = nullptr;
  char* end = nullptr;
  bool full = false;
};
TextOut text_begin(Fct0Call& c);
bool text_add(TextOut& t, const char* s, size_t n);
inline bool text_put(TextOut& t, char ch) { return text_add(t, &ch, 1); }
// Closes the CHAR header; -12 after message 12 when the text did not fit.
int text_end(TextOut& t);

// rand() of the family: 0 to 32767.
int rand_int();

// Workers, one per code (or family of codes).
int fct0_map(Fct0Call& c);       // element-wise functions
int fct0_shaped(Fct0Call& c);    // acosh, asinh, atanh
int fct0_abs(Fct0Call& c);
int fct0_arc(Fct0Call& c);
int fct0_average(Fct0Call& c);
int fct0_dist(Fct0Call& c);
int fct0_log(Fct0Call& c);
int fct0_extreme(Fct0Call& c);   // max, min
int fct0_module(Fct0Call& c);
int fct0_product(Fct0Call& c);
int fct0_scalar(Fct0Call& c);
int fct0_sum(Fct0Call& c);
int fct0_sqrt(Fct0Call& c);
int fct0_unit(Fct0Call& c);
int fct0_vector(Fct0Call& c);
int fct0_inv(Fct0Call& c);
int fct0_random(Fct0Call& c);    // rand, randf, rand2, rand2f
int fct0_ascii(Fct0Call& c);
int fct0_ato(Fct0Call& c);       // atof, atoi
int fct0_string(Fct0Call& c);    // string, stringf
int fct0_format(Fct0Call& c);
int fct0_inclu(Fct0Call& c);
int fct0_wait(Fct0Call& c);
// Codes that take their argument unevaluated.
int fct0_typed(Fct0Call& c);     // char, float
int fct0_directory(Fct0Call& c);
int fct0_error(Fct0Call& c);     // error, precision
int fct0_func(Fct0Call& c);
int fct0_grep(Fct0Call& c);
int FOPEN_a(Fct0Call& c);
int FCLOSE_a(Fct0Call& c);
int FREAD_a(Fct0Call& c);
int FWRITE_a(Fct0Call& c);
int fct0_getline(Fct0Call& c);   // getline, getword
