// Line editing and history on a terminal (libedit in its callback form),
// so that keys can be taken one at a time between window events. Ctrl-C
// abandons the line being typed or searched. The history is kept across
// runs in a bounded file: ORVELA_HISTORY names it, else it is
// ".orvela_history" in the home folder.
#pragma once
#include <string>

// Installs the editor when standard input is a terminal; false otherwise.
bool line_editor_start();
// The prompt shown by the editor for the next line.
void line_editor_prompt(const char* prompt);
bool line_editor_active();
// Adds a line that ran to the history and to its file.
void line_editor_remember(const std::string& line);
