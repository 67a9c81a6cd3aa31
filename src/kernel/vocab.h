// Vocabularies: keyword tables (name, descriptor, defaults, current values)
// and message tables, one per vocabulary, filled from kom and mes texts.
#pragma once
#include <string>
#include <vector>

#include "kernel/keywords.h"

constexpr int NB_VOC_MAX = 8;
constexpr int VALUE_POOL = 10000;  // floats in each of the two 40000-byte value arrays

struct VocabState {
  int nb_voc = 0;  // vocabularies loaded

  // Keyword table, parallel arrays indexed by code.
  const char* name[NB_CODES] = {};   // name line: keyword and synonyms
  int emp[NB_CODES] = {};
  int sem[NB_CODES] = {};            // working switch, read directly as a flag
  int sem_ini[NB_CODES] = {};        // as read
  int dim[NB_CODES] = {};            // number of default values
  int type[NB_CODES] = {};           // how the compiler treats parameters
  float* defaults[NB_CODES] = {};    // never changed by running code
  float* current[NB_CODES] = {};     // working copy of the defaults

  // Per vocabulary.
  int nb_kw[NB_VOC_MAX] = {};
  int nb_mes[NB_VOC_MAX] = {};
  std::vector<std::string> mes[NB_VOC_MAX];     // message texts, escapes resolved
  std::vector<std::string> kw_text[NB_VOC_MAX]; // private storage of name lines

  // The two value arrays; they never move, so hot paths may keep pointers.
  float default_pool[VALUE_POOL] = {};
  float current_pool[VALUE_POOL] = {};
  int pool_used = 0;
};

// Made on first use; switches are read on hot paths, hence inline.
extern VocabState* the_vocab;
VocabState& vocab_make();
inline VocabState& vocab() { return the_vocab ? *the_vocab : vocab_make(); }
// Clears every table (start-up, and tests).
void vocab_reset();

// The sem word of keyword `code`: the system's flag for it.
inline int& Yes(int code) { return vocab().sem[code]; }

int lire_kom(int voc, const char* text);
int lire_mes(int voc, const char* text);
// Strips /* */ comments in place; with `compacter`, runs of newlines become one.
// Returns 0, or -1 for an unclosed comment (reported).
int enlever_commentaires(char* text, int compacter);
void env_minimal();
// Minimal environment texts (env of vocabularies 0 and 1, kom and mes of both).
extern const char* const ENV_TEXT_0;
extern const char* const ENV_TEXT_1;
extern const char* const KOM_TEXT_0;
extern const char* const KOM_TEXT_1;
extern const char* const MES_TEXT_0;
extern const char* const MES_TEXT_1;

// Word lookup over the synonyms of every name line: 0 when found.
int cherche_mot(const char* word, int* voc, int* code);
// Whole-line lookup, where a synonym must not match.
int cherche_ligne(const char* line, int* voc, int* code);
float* val_com(int voc, int code, int* n);
float* def_com(int voc, int code, int* n);
void ini_com(int code);

// Called after a switch changed, so that the window follows it in GL.
extern void (*sem_hook)(int code);
// yes / no on a list of keyword codes; returns 0, or -1 when one was refused.
int set_sem(int code, int value);
// ini yes / ini no / ini ini.
void ini_yes();
void ini_no();
void ini_ini();
