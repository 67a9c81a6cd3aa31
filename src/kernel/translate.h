// Translation of the text of user programs between two natural languages:
// two parallel lists of lines, line i of the first standing for line i of
// the second, read from text files or from CHAR variables.
#pragma once
#include <cstddef>
#include <string>

constexpr int TRANSLATE_FROM_FILE = 92;  // '\\', the code of `read`
constexpr int TRANSLATE_FROM_VAR = 114;  // the code of `var`

// The language layer hands over the CHAR value of a variable through this
// hook: 0 with the text, -1 when there is no such variable, -2 when it is
// not CHAR. Until it is set, no variable is found.
using TranslateVarReader = int (*)(const char* name, std::string* text);
void set_translate_var_reader(TranslateVarReader reader);

// Loads the two lists, from files (TRANSLATE_FROM_FILE) or variables
// (TRANSLATE_FROM_VAR). Missing, "Voc_xxx" or equal names, or identical
// lists, leave translation off: the sem of `generate` becomes -1 and
// "NO TRANSLATE" is printed. Returns 0, or -1 when a list failed (reported).
int set_GENERATE_MESSAGE(const char* voc1, const char* voc2, int mode);
// 2 when a translation is loaded, 0 otherwise.
int translation_state();

// `generate message`: the counterpart of the whole string `s` in the second
// list. `reverse` (a negative parameter on `generate`) exchanges the lists
// when `abs` is given and returns `s` unchanged otherwise. With no string or
// no lists the result is the name of the second vocabulary. Returns 0, or
// -1 when `s` is in no list (reported; the value is NIL). The caller checks
// that the result fits its stack and reports the dimension message if not.
int generate_message(const char* s, int reverse, int abs, std::string* out);
// Translates every entry found in `text`, words and other characters being
// copied as they stand. The result stops quietly at `limit` bytes.
std::string translate_text(const char* text, int reverse, size_t limit);
// Translates one word: the entry equal to it, or the word up to its first
// non-letter.
std::string translate_word(const char* w, int reverse);

// `read generate message("voc1,voc2")`: names cut at a blank, tab or comma.
// Without names it prints the form of the command and returns -1.
int read_generate_message(const char* names, int mode);
// Prints every pair as "a -> b" and returns them joined, one per line.
std::string list_generate_message();
