// The networks' commands and what they share.
#pragma once
#include <vector>

#include "adaptive/network.h"

// `network(id) ...`: making and changing networks.
int NETWORK_b(word* s, const word* ob, word* st, const word* lim);
// `speed network(ids) law` (or `motif`): each list minus its copy under
// the negated code, element by element; the copy then takes the list.
int SPEED_NETWORK(word* s, const word* ob, word* st, const word* lim);
// The test pass of the networks a command names (all of them when it
// names none), as `generate network(ids) validate validate`: the
// handler that a `validate` command with a second `validate` reaches.
int VALIDATE_NETWORK(word* s, const word* ob, word* st, const word* lim);
// `network(id) brush ...`: the brushes that paint through a network.
int BRUSH_NETWORK(word* s, const word* ob, word* st, const word* lim);

// The brushes by kind: one value a pixel, (r+g+b)/765 (`lum`), or three
// (`col`); "network not found: " for a network that is missing.
int BRUSH_NETWORK_1(word* s, const word* lim);
int BRUSH_NETWORK_3(word* s, const word* lim);
int BRUSH_NETWORK_LUM(word* s, const word* lim);
int BRUSH_NETWORK_COL(word* s, const word* lim);
// Picture files, each reduced to nx by ny, as the `motif` list (0) or the
// `law` list (1) of the network. Negative after a report.
int READ_IMAGE_NETWORK_0(Objet* o, const char* names, int nx, int ny);
int READ_IMAGE_NETWORK_1(Objet* o, const char* names, int nx, int ny);
// `motif(v) network(id)`: the outputs for v.
int MOTIF_b(word* s, const word* ob, word* st, const word* lim);
// `roll network(id) motif(v)`: the first motif rolled by v, then run.
int ROLL_NETWORK_MOTIF_PROPR(word* s, const word* ob, word* st, const word* lim);
void install_network_drivers();

// The networks a command names; with `network` alone, all of them.
std::vector<Objet*> reseaux_commande(word* s);
// The options of `generate network` from the command. Negative after a
// report.
int lit_options(word* s, NetOptions& opt);
// The test pass of a second `validate`: the check of every pattern and
// `validate` made again; as generer_reseau_1.
int test_reseau(Objet* o, const NetOptions& opt, NetResult* res);
// `read("file")`: motifs and laws from a text file into the network,
// shaped by `format` and `average` of the command. Negative after a
// report.
int lit_motifs_fichier(Objet* o, const char* file, word* s, NetOptions& opt);
// Their rows in the dispatch.
void install_network_commands();
