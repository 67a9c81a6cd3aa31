// Makes the console run its lines: compile, link, interp, echo.
#pragma once

void install_console_runner();
