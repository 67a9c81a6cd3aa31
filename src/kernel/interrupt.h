// The interrupt dialogue held at safe points after SIGINT.
#pragma once

// Thrown to abandon the running line; caught only where lines start.
struct Abandon {};

// Holds the CONTINUE dialogue if SIGINT arrived; may throw Abandon. After
// SIGTERM or SIGHUP, saves the unsaved work and ends the run instead.
void interrupt_check();
// The dialogue itself: "0" abandons, "2" runs one debug line then
// abandons, "b" ends the run, anything else continues.
void interrupt_dialogue();
