// The interrupt dialogue held at safe points after SIGINT.
#pragma once
#include <cstddef>

// Thrown to abandon the running line; caught only where lines start.
struct Abandon {};

// Holds the CONTINUE dialogue if SIGINT arrived; may throw Abandon. After
// SIGTERM or SIGHUP, saves the unsaved work and ends the run instead. A
// safe point: long work (a row of pixels, a pass, an image) calls it at
// least every few milliseconds, so that Ctrl-C is heard at once.
void interrupt_check();

// A long flat loop over n items in slices of a few milliseconds of work,
// with a safe point before each: f(first, end) for each slice.
template <class F>
void par_tranches(size_t n, F&& f) {
  constexpr size_t TRANCHE = size_t{1} << 18;
  for (size_t a = 0; a < n; a += TRANCHE) {
    interrupt_check();
    f(a, n - a < TRANCHE ? n : a + TRANCHE);
  }
}
// The dialogue itself: "0" abandons, "2" runs one debug line then
// abandons, "b" ends the run, anything else continues.
void interrupt_dialogue();
