// Whether an X display can be opened: the window toolkit ends the process
// when it cannot, so start-up asks first.
#pragma once

bool display_available();
// Protocol errors of the X server become a call of `report` with one
// line of text, and the process goes on.
void display_errors_to(void (*report)(const char* text));
