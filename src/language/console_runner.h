// Makes the console run its lines: compile, link, interp, echo.
#pragma once
#include <string>

void install_console_runner();

// Runs the launching text given by `lan=` as a console line.
int run_launch_text(const std::string& text);
