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
// Called when a read of standard input is broken by a signal: SIGINT
// (unless a line editor reads: Ctrl-C then abandons the line being
// typed), SIGTERM or SIGHUP.
void in_set_interrupt_hook(void (*hook)());
bool in_at_end();
// True when standard input is a terminal (and no test text replaces it).
bool in_is_terminal();
// Reading goes on after an end of input (Ctrl-D at a terminal).
void in_resume();

// Reading without blocking, for a console that shares the thread with a
// window. True when a whole line (or the end of input, or a termination
// signal) is waiting; otherwise waits at most `timeout_ms` for standard
// input, takes what came, and answers again.
bool in_wait_line(int timeout_ms);
// Text handed over by a line editor; `end` marks the end of input.
void in_push_text(const std::string& text, bool end);
// A line editor that owns the terminal: `feed(timeout_ms)` waits that
// long (-1: until something happens) for a key or a signal and deals with
// it; null reads standard input directly.
void in_set_line_editor(bool (*feed)(int timeout_ms));
