// Numbers in file names and headers: the numeric format ("4D", "8X"...)
// and the sequence names that DET_NUMBER builds.
#pragma once
#include <string>

#include "kernel/word.h"

// `v` in the numeric format `fmt`: decimal digits giving the number of
// places, then a letter giving the base (B/b 2, O/o 8, X/x 16, anything
// else 10). The text has exactly that many places: zeros pad it on the
// left, higher digits that do not fit are lost, and a negative value puts
// its "-" in the first place. False when the format has no places.
bool format_numerique(const char* fmt, long long v, std::string& out);

// DET_NUMBER: `name` with a number put between its base and its
// extension. `number` is n, ("4D", n) or ("text"), and `offset` is added
// to n. False after `number` and a usage text when the value is unusable.
bool DET_NUMBER(const std::string& name, const word* number, int offset, std::string& out);
