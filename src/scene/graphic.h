// Handlers of the graphic vocabulary. Each takes the command `s` (a
// SEGMENTS list that also receives the result), the right side `ob` of
// an assignment (null when reading), `st` the first free word above the
// command for work and results, and the evaluation limit `lim`. They
// return 0, or negative after a report.
#pragma once
#include <initializer_list>

#include "kernel/word.h"

using Handler1 = int (*)(word* s, const word* ob, word* st, const word* lim);

// The dispatch: the first word's handler, through a byte table.
int evaluer_1(word* s, const word* ob, word* st, const word* lim);
// The same with the work space above the command (and its right side).
int EVALUER_1(word* record, const word* limit);
int EVALUER_1_assign(word* record, const word* value, const word* limit);
// Makes the language send its graphic commands here.
void install_scene_commands();
// Gives these words a handler in the dispatch. The subsystems above the
// scene register their commands so at start-up.
void register_graphic_handler(std::initializer_list<int> codes, Handler1 handler, bool quiet = false);
// A handler that takes only some shapes of a word's commands (`dim
// image(1)` but not `dim vol(1)`): it sets *done when the command was its
// own, and the word's row answers the others. A word may have several
// shapes, from several subsystems: they are tried in the order given.
using ShapedHandler = int (*)(word* s, const word* ob, word* st, const word* lim, bool* done);
void register_graphic_shape(int code, ShapedHandler handler);

// The generic property command: the object word selects objects, the
// words before it are the key.
int bloc_0(word* s, const word* ob, word* st, const word* lim);

// The object store's commands.
int REM_b(word* s, const word* ob, word* st, const word* lim);
int DUP_b(word* s, const word* ob, word* st, const word* lim);
int CLEAN_b(word* s, const word* ob, word* st, const word* lim);
int INI_b(word* s, const word* ob, word* st, const word* lim);
int NUM_b(word* s, const word* ob, word* st, const word* lim);
int TYPE_b(word* s, const word* ob, word* st, const word* lim);
int LIST_b(word* s, const word* ob, word* st, const word* lim);
int b_status(word* s, const word* ob, word* st, const word* lim);
int PRINT_b(word* s, const word* ob, word* st, const word* lim);
// Creation: `vol(id)` and the object words alone with identifiers.
int OBJ_b(word* s, const word* ob, word* st, const word* lim);
int OBJET_b(word* s, const word* ob, word* st, const word* lim);

// The property forms with fixed keys.
int set_get_val_com(word* s, const word* lim, const word* ob);
int COM1_COM2_OBJ(word* s, word* st, const word* lim, const word* ob, int code1, int code2);
int SET_GET_BLOC(word* s, word* st, const word* lim, const word* ob);
int SIMPLE_PROPERTY_OBJ(word* s, word* st, const word* lim, const word* ob);
int PROPR_OBJ(word* s, word* st, const word* lim, const word* ob);
// `rem col vol(1)`: the property keyed by the words other than `code`.
int REM_PROPRIETE(word* s, int code);

// The result `v` copied over the command (NIL for null); -12 past `lim`.
int resultat(word* s, const word* v, const word* lim);

// Primitives.
int CUBE_b(word* s, const word* ob, word* st, const word* lim);
int BALL_b(word* s, const word* ob, word* st, const word* lim);
int REV_b(word* s, const word* ob, word* st, const word* lim);
int PRISM_b(word* s, const word* ob, word* st, const word* lim);
int GRID_b(word* s, const word* ob, word* st, const word* lim);

// Transformations of vertices, and the seed of the random table.
int MOD_b(word* s, const word* ob, word* st, const word* lim);
int ALEA_b(word* s, const word* ob, word* st, const word* lim);
