// Removal of objects from chains, by selector, by kind and by number.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// The lighter removal used on whole chains: functions stay in place.
// Returns what followed the object.
Objet* rem_objet_simple(Objet* o);
// Every object of the chain, or those the selector names.
void rem_chaine(Objet* head, const word* selector);
// Every object of that kind, or of that kind and number.
void rem_kind(int classe, int kind);
void rem_objet_id(int kind, int id);
// Every object of the chain with that user type (0 for all), releasing
// lights and menus first. Returns the number removed.
int rem_tous(Objet* head, int kind, int user_type);
