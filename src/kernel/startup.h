// Process start-up: the interpreter side (`inita`), the graphic side
// (`initb`), and the fatal exit of start-up.
#pragma once

int inita(int argc, char** argv, const char* default_ini);
int initb(int argc, char** argv);
// Prints `text` if any, then "ENTER", waits for one character and ends
// the process with status 0.
[[noreturn]] void enter_exit(const char* text);
void print_help_a();
void print_help_b();
// Loads the code table turning characters into HTML entities; -1 on failure.
int load_htm_table(const char* path);
// The banner printed at start-up.
extern const char* const ORVELA_BANNER;
extern const char* const ORVELA_VERSION;
