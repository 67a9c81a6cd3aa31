// Neural networks: the `network` object, its learning and its queries.
//
// A network keeps everything in sub-properties of its object, found by
// keyword code: `motif` and `law` (HYBRIDE lists of FLOAT patterns of
// ny points of nx), `fac` and `inv fac` (HYBRIDE lists of LONG layers
// of neuron numbers, from 1, inputs first), `matrix` (FLOAT N x N,
// matrix[j][i] the weight from i to j at row j) and its best copy under
// -72, `neuron` (N records of eight words), `func`, `func neuron`, `coe`,
// `near` (the neighbour table of a `texture` map), `motif law dist` (the
// rewards of a `near` network) and `validate` (the outputs).
//
// The object's subkind is its kind word (`fac` 255, `near` 296, `texture`
// 348; 0 reads as `fac`), and kind2 its subtype (`CG` 20 for `near`).
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// The most neurons a network has: its matrix is N x N floats, and a best
// copy beside it (two times 256 MB at the most).
constexpr int NEURONES_MAX = 8192;

// The owner word of the record that keeps the third value of a map's
// `validate` (saved with the object).
constexpr int NW_TROISIEME = 2;

// Words of a `neuron` record.
enum NeuronWord : int {
  NR_NUMBER = 0,   // from 1
  NR_INPUT = 1,    // the sum of weighted inputs
  NR_KIND = 2,     // 0 threshold, 1 logistic
  NR_PARAM = 3,    // threshold or slope
  NR_FUNC = 4,     // handle of a function object, or 0; never called
  NR_OUTPUT = 5,
  NR_DELTA = 6,
  NR_ERROR = 7,
  NR_WORDS = 8,
};

// A network's sub-properties, found once: pointers into its property
// values, valid until a property is replaced.
struct Reseau {
  Objet* o = nullptr;
  bloc motif = nullptr, law = nullptr;
  bloc fac = nullptr, inv_fac = nullptr;
  bloc matrix = nullptr, best = nullptr;
  bloc neuron = nullptr;
  bloc func = nullptr;
  bloc near = nullptr;
  int N = 0;  // neurons
  // The activation of the whole network, when `func` holds numbers.
  bool func_global = false;
  int func_kind = 1;
  float func_param = 1;
  int kind() const;
};

// The options of `generate network`, read from the command.
struct NetOptions {
  int passes = 1;
  int start = 0;         // resume at this pass; 0 for a whole run
  int third = 0;         // stored for `texture`, used by nothing
  bool test = false;     // a second `validate`: the test pass alone
  bool coe_given = false;
  float coe_start = 1.0f, coe_end = 0.01f;
  std::vector<float> curve;  // points (x, y, z) of the coefficient curve
  float error = 0.1f;    // tolerance
  float max = 100.0f;    // weight limit
  float mass[3] = {-1.0f, 1.0f, 0.01f};
  bool alea_given = false;
  int alea = -2;
  bool edit = false, debug = false;
  int time = -1;         // the one pattern of a `near` step, from 1
  bool read = false;     // patterns were read: weights drawn in `mass` by `alea`
};

struct NetResult {
  int passes = 0;
  float max_error = 0;
  int converged = 0;
};

// The kind word of a network (255, 296 or 348).
int network_kind(const Objet* o);

// Sub-properties of the object; missing ones null, N from `fac`.
Reseau trouve_reseau(Objet* o);

// The weights' random fill: values in [lo, hi] where the kind connects,
// a drawn value in (-min, min) becoming +min; mode -3 puts lo everywhere,
// -2 draws without reseeding, any other value seeds with it.
void go_rand(Reseau& r, float lo, float hi, float min, int mode);
// The seed of the networks' generator when no mode is given: the clock.
int graine_horloge();

// Layers for n inputs and m outputs with h hidden layers of (n+m)/h
// neurons (at least one): the `fac` and `inv fac` of the object.
int generer_fac_reseau(Objet* o, int h);
// Layers from `dim(n_in, n_out, h)`: hidden layers of (n_in+n_out)/(h+1).
int NETWORK_DIM(Objet* o, int n_in, int n_out, int h);
// `fac` from layer sizes, neurons numbered in order; `inv fac` with it.
int set_fac_tailles(Objet* o, const std::vector<int>& sizes);
// `inv fac` rebuilt from `fac`.
int set_inv_fac(Objet* o);
// The neighbour table of a map of `inputs` neurons then `outputs` ones,
// as rows of nine neuron numbers (0 where the grid ends); row-major.
std::vector<int> table_voisins(int inputs, int outputs);

// Builds what a run needs and is missing: `fac`, `func`, `matrix`,
// `inv fac`, `law` of zeros, `-matrix`, `neuron` (unless `resume`).
// Negative after a report.
int complete_reseau(Objet* o, const NetOptions& opt, bool resume);
// `neuron` records made afresh from `func neuron` or `func`.
int cree_neurones(Objet* o);
// The shorter of `motif` and `law` extended by repeating its last element.
int egalise_listes(Objet* o);

// The forward pass of one pattern (a FLOAT). Negative after a report.
int propage(Reseau& r, const word* pattern);
// The output of neuron j (from 1) for its input, by the network's `func`
// when it holds numbers, else by the neuron's own kind and parameter.
float activation(const Reseau& r, int j, float input);

// One back-propagation pass: the number of patterns whose error passed
// the tolerance, or negative after a report. `work` holds L*L floats.
int passe_retropropagation(Reseau& r, float coef, const NetOptions& opt, std::vector<float>& work);
// One pass of a self-organising map at pass `pass` of `passes`;
// `largest` receives the largest winning distance.
int passe_texture(Reseau& r, float coef, int pass, const NetOptions& opt, float* largest);
// One reward pass of a `near` network; `largest` receives the largest
// step. The count of negative rewards.
int passe_near(Reseau& r, float coef, const NetOptions& opt, float* largest);
// The rewards of consecutive patterns, into `motif law dist`.
int recompenses(Reseau& r, std::vector<float>& out);

// The learning of `generate network` on one network. Returns 0 with the
// result, 1 when motif or law is missing (reported), negative on failure.
int generer_reseau_1(Objet* o, const NetOptions& opt, NetResult* res);
// The check pass of a layered network: the largest |output - expected|,
// with `edit` the report. Negative after a report.
float passe_controle(Reseau& r, const NetOptions& opt, int* count);
// `validate` made again from every pattern.
int rafraichit_validate(Reseau& r);

// Runs a trained network on one pattern and writes the output vector at
// `out` (before `lim`), shaped as the first `law` element (for a
// `texture`, as the motif); `limits` pairs (lo, hi) clamp it. 0, or
// negative after a report.
int valider_motif_reseau(Objet* o, const word* motif, bloc out, const word* lim, const word* limits);

// The motif of the closest law to `v` over the networks in order (sum of
// squared differences over the shorter length, the first of equal ones
// kept), or null when none has a law.
const word* requete_inverse(const std::vector<Objet*>& nets, const word* v);

// `generate inv network(id1) network(id2) fac(h)`: the second network
// learns the inverse mapping of the first, whose own lists are exchanged.
// As generer_reseau_1 for the second network.
int GENERATE_INV_NETWORK(Objet* first, Objet* second, int h, const NetOptions& opt, NetResult* res);

// `network(id) fac(...) motif(...) law(...)`: the object with its lists.
int set_network_fac_motif_law(Objet* o, const word* fac, const word* motif, const word* law);

// The commands' rows and the screen's mode.
void install_network();
