// Object files: an object's record and its property list in their word
// form, one object after the other, with no header. 32-bit words in the
// machine's order.
#pragma once
#include <string>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// Appends one object record to `out`. With a `limit`, the vertex array
// `poi` is written with only its first *limit points; a limit outside
// 1..count prints "%d != [1,%d]" and writes nothing (-1).
int WRITE_OBJ_1(Objet* o, std::vector<word>& out, const int* limit);

struct LectureObjets {
  Objet* chaine = nullptr;      // where the objects go
  int kind = 0;                 // the kind word of the command
  const word* ids = nullptr;    // identities given by the command, or null
  bool add = false;             // keep objects of the same number or name
};

// Reads one object from `words` at `*at` (advanced past it) into the
// chain. 1 when an object was read, 0 at the end, -1 for a malformed
// record (reported), the store then being as it was.
int READ_OBJ_0(const std::vector<word>& words, size_t* at, const LectureObjets& how, int index);
// Every object of the bytes of a file: the number read, or -1 after the
// first malformed record (those before it stay).
int lire_objets(const std::string& bytes, const LectureObjets& how);

// Registers the unsaved volumes, trajectories and laws as work that `bye`
// asks about and that a signal's end saves (start-up).
void install_object_files();
// The same for another kind of object: the commands that name its objects
// mark them, `bye` asks message `num` of vocabulary `voc` (or `question`
// when num is 0), and a signal's end writes them to an object file with
// that extension.
void suivre_travail(int kind, int voc, int num, const char* question, const char* extension);
// `write` and `read`: object files, and pictures for `image`.
int WRITE_b(word* s, const word* ob, word* st, const word* lim);
int READ_b(word* s, const word* ob, word* st, const word* lim);
// Their rows of the graphic dispatch.
void install_object_commands();
