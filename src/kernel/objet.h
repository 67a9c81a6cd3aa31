// The object record: one type for every object the user can name or
// number, doubly linked in chains whose head is itself a record.
#pragma once
#include <vector>

#include "kernel/word.h"

// Fields in the order of the saved record, except the links: `next`
// beside `id` puts what a lookup reads in one cache line.
struct Objet {
  int id = 0;              // number; 0 unnumbered, -12345 not valid
  int user_type = 0;       // user type number, 0 for none
  Objet* next = nullptr;
  Objet* prev = nullptr;
  char* name = nullptr;    // name or null; may open with a marker ! . = >
  int kind = 0;            // keyword code of the kind, or a negative tag
  int subkind = 0;
  int kind2 = 0;
  int kind3 = 0;
  int reserved = 0;
  bloc local = nullptr;    // the object's data, normally a PROPRIETES list
  bloc code = nullptr;     // compiled code, or a volume's transformation block
  int work[7] = {};        // owner's words
  int valid = 0;           // 1 for a complete object
  Objet* child = nullptr;  // first sub-object
  Objet* locals = nullptr; // head of a private chain
  void* hook = nullptr;    // non-null when other objects depend on this one

  word handle = 0;         // registry handle, 0 until first asked
  // Not saved: 1 while the object holds work that no file has, set when
  // it is made or changed and cleared when a file of it is written.
  int unsaved = 0;
  // Not saved: the head of the chain the record is linked in, and for a
  // head its last record, so that creation need not walk the chain.
  Objet* head = nullptr;
  Objet* tail = nullptr;
  // A global chain's head also lists its records and their numbers in
  // chain order, emptied slots included, so that a lookup reads an array
  // rather than chasing links; `member` is a record's place in that list.
  // A linked record changes its number through objet_numero().
  struct Member {
    Objet* o;
    int id;
  };
  std::vector<Member>* members = nullptr;
  int members_empty = 0;
  int member = -1;
};

// Number of words of the record in its saved form.
constexpr int OBJET_WORDS = 23;
