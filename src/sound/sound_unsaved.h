// Unsaved sounds: `bye` asks about them and a signal's end writes them to
// a recovery file, an object file of the sounds (".audio") that `read
// audio name("file")` reads back with their numbers.
#pragma once
#include <string>

// Registers the row of the unsaved work (start-up).
void install_sound_unsaved();
// The sounds of an object file into the audio chain, each replacing the
// sound of its number; their rate and length taken again from their
// header, which the record does not keep. The number read, or -1 after
// a report.
int lit_sons(const std::string& name);
// Every sound, or the unsaved ones, to an object file. 0, or -1 after a
// report.
int ecrit_sons(const std::string& name, bool non_sauves_seuls);
