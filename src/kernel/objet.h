// The object record: one type for every object the user can name or
// number, doubly linked in chains whose head is itself a record.
#pragma once
#include "kernel/word.h"

struct Objet {
  int id = 0;              // number; 0 unnumbered, -12345 not valid
  char* name = nullptr;    // name or null; may open with a marker ! . = >
  int kind = 0;            // keyword code of the kind, or a negative tag
  int subkind = 0;
  int kind2 = 0;
  int kind3 = 0;
  int user_type = 0;
  int reserved = 0;
  bloc local = nullptr;    // the object's data, normally a PROPRIETES list
  bloc code = nullptr;     // compiled code, or a volume's transformation block
  int work[7] = {};        // owner's words
  int valid = 0;           // 1 for a complete object
  Objet* child = nullptr;  // first sub-object
  Objet* locals = nullptr; // head of a private chain
  void* hook = nullptr;    // non-null when other objects depend on this one
  Objet* next = nullptr;
  Objet* prev = nullptr;

  word handle = 0;         // registry handle, 0 until first asked
  // Not saved: the head of the chain the record is linked in, and for a
  // head its last record, so that creation need not walk the chain.
  Objet* head = nullptr;
  Objet* tail = nullptr;
};

// Number of words of the record in its saved form.
constexpr int OBJET_WORDS = 23;
