// Line editing and history on a terminal (libedit in its callback form),
// so that keys can be taken one at a time between window events.
#pragma once

// Installs the editor when standard input is a terminal; false otherwise.
bool line_editor_start();
// The prompt shown by the editor for the next line.
void line_editor_prompt(const char* prompt);
bool line_editor_active();
