// The `device` command and its installation in the graphic dispatch.
#pragma once
#include "kernel/word.h"

int DEVICE_b(word* s, const word* ob, word* st, const word* lim);
// `device(n) ini("XXX") ...`: opens slot n.
int INI_DEVICE(word* s, const word* lim);
// Registers `device`, clears the table, and lends the "cin" read.
void install_device_commands();
