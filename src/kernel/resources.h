// What the process may still use, checked before it is used up: the
// native stack, for routines whose depth the user's input decides, and
// memory, for allocations whose size a user's number decides.
#pragma once
#include <cstddef>

struct Ressources {
  // Memory set aside at start, given back when an allocation fails so
  // that the lines after the failure can still be compiled and run
  // (`rem image` above all); taken again once there is room.
  void* reserve = nullptr;
};
Ressources& ressources();

// The address below which the stack is too short to go one level deeper.
const char* pile_plancher();
// True when the stack is too short for another level of a recursion
// (nested brackets, nested calls): the caller then fails with a message.
// Read at every group the evaluator enters, so kept to a comparison.
// With `garde`, that many bytes more are kept: nested calls stop before
// nesting within the deepest of them has to.
inline bool pile_epuisee(unsigned long garde = 0) {
  static const char* const plancher = pile_plancher();
  return static_cast<const char*>(__builtin_frame_address(0)) < plancher + garde;
}

// Whether `bytes` may be asked for: more than the machine can give (less
// a margin left to the rest of the system) prints "MALLOC ERROR" with the
// count (under `name` when not null) and gives false.
bool memoire_possible(double bytes, const char* name);
// The same without a message.
bool memoire_disponible(double bytes);
// Words a block can hold at most (its size is a word).
constexpr double MOTS_BLOC_MAX = 2147483647.0;
// Whether a block of `words` words can be made, `copies` of it being held
// at once while it is built: more than a block holds, or than the machine
// can give, prints MALLOC ERROR with the block's bytes and gives false.
bool bloc_possible(double words, double copies, const char* name);

// An allocation failed: the reserve is given back.
void memoire_manque();
// Takes the reserve again when there is room for it and more; at the
// start of each console line.
void memoire_reserve();
