// What the subsystems above the scene add to it before any command runs.
#pragma once

// The scene's dispatch of the graphic vocabulary, and the rows of the
// subsystems above it: the window, views and display, the images, and the
// object files, and the help of the graphic words. The program, the tests
// and the benchmarks call it once at start.
void install_graphic_commands();
