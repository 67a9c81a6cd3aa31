// Raw streams of numbers (WRITE_AUDIO_1, READ_AUDIO_1): a file of bare
// elements, each a byte ("char"), a 4-byte float ("float") or a 4-byte
// integer ("long"), written or read a few at a time.
#pragma once
#include <string>
#include <vector>

// Opens the stream; an open one of the same direction is closed first.
// The type is "char", "float" or "long" (float when empty). 0, or -1
// after a report.
int WRITE_AUDIO_1(const std::string& name, const std::string& type);
int READ_AUDIO_1(const std::string& name, const std::string& type);
// Appends the values, converted to the stream's type. -1 after a report.
int ecrit_flux(const std::vector<float>& v);
// Up to n values of the reading stream (fewer at its end).
int lit_flux(int n, std::vector<float>& out);
// Closes the stream; a failed close prints "ERROR fclose". 0 or -1.
int END_WRITE_AUDIO();
int END_READ_AUDIO();
