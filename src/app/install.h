// What the subsystems above the scene add to it before any command runs.
#pragma once

// Their rows of the graphic dispatch: the window, views and display, the
// images, and the object files. The program, the tests and the benchmarks
// call it once at start.
void install_graphic_commands();
