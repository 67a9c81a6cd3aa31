// The walk over a command's segments that finds which objects it names
// and which other words make up the property key: shared by the generic
// property command and the removal commands.
#pragma once
#include <type_traits>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

struct Selection {
  Objet* chaine = nullptr;          // chain of the object word
  const word* selector = nullptr;   // its parameters: numbers and names
  int object_code = 0;              // the object word
  Objet* fixed = nullptr;           // `see` and `sphere` name one object
  int sub = 0;                      // sub-element word and its parameters
  const word* sub_value = nullptr;
  int last = 0;                     // last other word and its parameters
  const word* last_value = nullptr;
  int code2 = 0;                    // qualifier word
  int user_type = 0;                // from `type("name")`
  int message_width = 0;            // `col message`: 3, `poi message`: 2
};

enum class WalkEnd {
  Objects,  // the selection is complete
  Nil,      // nothing is selected: the command's value is NIL
  Quiet,    // an application word: the command does nothing
};

// Object words of the property grammar (`scale` and `win` included).
bool mot_objet(int code);
// The words the removal and duplication commands also take.
bool mot_objet_rem(int code);
bool mot_sous_element(int code);
bool mot_qualificatif(int code);

// Walks the segments of `s` in order. `objects` tells which words are
// object words. The selector points into `s`.
WalkEnd lire_selection(word* s, Selection& sel, bool (*objects)(int));

// f on the objects of the selection, in selector order, absent ones
// skipped. An f that returns a number stops the walk at a negative one,
// which is returned; 0 otherwise. A short selection asks for no memory.
template <class F>
int pour_chaque_objet(const Selection& sel, F&& f);

// Element count of the selection (1 for a fixed object).
int nb_objets(const Selection& sel);
// Object of element i, or null.
Objet* objet_selection(const Selection& sel, int i);

// The object of every element, null where absent: the same answers as
// objet_selection element by element, found in one walk of the chain
// when the selector is long.
std::vector<Objet*> objets_selection(const Selection& sel);
// From this many elements on, objets_selection finds them in one walk of
// the chain; below, one look-up per element costs no more.
constexpr int SELECTION_EN_UNE_MARCHE = 16;

template <class F>
int pour_chaque_objet(const Selection& sel, F&& f) {
  auto un = [&](Objet* o) -> int {
    if constexpr (std::is_void_v<decltype(f(o))>) {
      f(o);
      return 0;
    } else {
      return f(o);
    }
  };
  const int n = nb_objets(sel);
  if (sel.fixed || n < SELECTION_EN_UNE_MARCHE) {
    for (int i = 0; i < n; i++)
      if (Objet* o = objet_selection(sel, i))
        if (const int r = un(o); r < 0) return r;
    return 0;
  }
  for (Objet* o : objets_selection(sel))
    if (o)
      if (const int r = un(o); r < 0) return r;
  return 0;
}

// The user type named by a string: a keyword code, or a registered user
// type; 0 when unknown.
int type_utilisateur(const char* name);
// The same, registering an unknown name as a new user type.
int type_utilisateur_cree(const char* name);
