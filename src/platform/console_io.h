// The process's console: standard output (with a capture hook for tests)
// and standard input.
#pragma once
#include <cstddef>
#include <string>

void out_write(const char* s, size_t n);
void out_flush();
// While `sink` is non-null, output is appended to it instead of stdout.
// Returns the sink it replaces.
std::string* out_capture(std::string* sink);

// One byte of standard input, or -1 at its end.
int in_getc();
// Reads one line without its newline; false at end of input.
bool in_getline(std::string& line);
// Redirects console input to a string (tests); null restores stdin.
void in_from_string(const std::string* text);
// Called when a read of standard input is broken by SIGINT.
void in_set_interrupt_hook(void (*hook)());
bool in_at_end();
