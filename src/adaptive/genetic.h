// Genetics: the `genetic` object, a population of strings evolved by
// selection, crossover and mutation under a fitness function.
//
// Everything lives in sub-properties of the object, found by keyword
// code: `particle` (the population: a CHAR whose np is the count n and
// dimp the stride L, individual i from 1 at byte L*(i-1), L-1 characters
// and a NUL), -`particle` (the next generation), -`dup` (the two
// candidates of a crossover), `alphabet`, `func` (a number for a built-in
// function, a text naming a language function), `cut` (the crossover log:
// cut, parent a, parent b for each child), `scale particle` (the fitness
// of each individual), `object particle` (left to the user), `meta rand`
// or `meta alea` (crossover rate, mutation rate, then optional base and
// spread of the mutation rate) and `meta` (the last mean fitness).
#pragma once
#include <cstddef>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// The population block's parts: count, stride and bytes. A block whose
// header does not fit its words (a damaged file) is refused.
struct Population {
  int n = 0;
  int L = 0;
  char* bytes = nullptr;
  size_t size = 0;  // bytes of the data words, padding included
  char* individu(int i) const { return bytes + static_cast<size_t>(i) * L; }  // i from 0
};
bool lit_population(const word* v, Population* p);
// A zeroed population of n strings of stride L in the property `code`
// (replacing the old one); its value, or null after a report.
bloc cree_population(Objet* o, int code, int n, int L);
// The largest population block, in bytes: beyond it a creation is
// refused with message 66.
constexpr long long POPULATION_MAX = 1LL << 28;

// Where a random number comes from: the process generator (`rand`) or
// the reproducible table (`alea`), whose read position restarts at each
// `generate genetic`.
enum class Source { process, table };
float tire(Source s);
// An integer drawn uniformly in 0..n-1 (0 for n below 2: nothing drawn).
int tire_entier(Source s, int n);

// The rates of `meta rand` or `meta alea`.
struct Taux {
  float crossover = 1.0f;
  float mutation = 0.001f;
  Source source = Source::process;
};
// The object's rates; with three or more numbers the mutation rate is the
// third plus a draw within the fourth. A negative rate becomes 0.001.
Taux lit_taux(Objet* o);

// The fitness function of an object.
struct Fitness {
  int builtin = 0;        // number of a built-in function, when `fn` is null
  Objet* fn = nullptr;    // a language function called with (object, individual)
  int object = 0;         // the object's number, its first argument
};
// From the `func` property (or `func` given to a command, when not
// null). Negative after a report: `func` missing, or error 48 for a
// function name that names nothing.
int lit_fitness(Objet* o, const word* func, Fitness* f);
// The fitness of individual i (from 1) of a block of `bytes` bytes with
// stride L, into *out. Built-in 1 reads the block as floats; other
// built-in numbers leave *out as it was. Negative after a failing call.
int evalue(const Fitness& f, const char* block, size_t bytes, int i, int L, float* out);
// Built-in function 1: the sum of 2^k times the float at word (i-1)*L+k
// of the block, k from 0 to L-2; words past the block count 0.
float fitness_1(const char* block, size_t bytes, int i, int L);

// valider_genetique_1: the fitness of the population `pop` into `scale
// particle` of the object, for the listed indices (from 1; out of range
// ones skipped), every individual when the list is empty. The values
// computed are appended to `values` when it is not null. Negative after
// a report.
int valider_genetique_1(Objet* o, const word* pop, const Fitness& f, const std::vector<int>& indices,
                        std::vector<float>* values = nullptr);

// Mutation of one character under the rate.
char mute(char c, const char* alphabet, int len, const Taux& t);
// Selection: the parent's position (from 0) in a population of n whose
// fitness values are `fit`, with mean `mean`.
int selection(const float* fit, int n, float mean, Source s);

// The automatic mutation rate of `adjust`.
struct TauxAuto {
  float lo = 0.0001f, hi = 0.001f, start = 0.00055f, spread = 0.125f;
};
TauxAuto lit_ajustement(const std::vector<float>& v);
// The rate for this fitness vector; `meta` holds the stored mean (an
// absent one counts 0) and takes the new mean.
float ajuste(const TauxAuto& a, const float* fit, int n, float* meta);

// One generation of an object: the count of individuals below `bar`,
// negative after a report. With `adj`, *rate gets the automatic rate.
int generation_genetique(Objet* o, float bar, const TauxAuto* adj, float* rate);

// A new random population of n strings of L-1 letters of the alphabet
// (not `sized`: the old block's size), the alphabet kept as the
// object's when given. Negative after a report.
int population_aleatoire(Objet* o, bool sized, int n, int L, const char* alphabet, Source s);

// The object's alphabet (default "01") and its length.
const char* alphabet_de(Objet* o, int* len);

// The commands' rows.
void install_genetic();
