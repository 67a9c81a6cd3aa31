// The state of the genetics subsystem: the selection position and the
// read position of the `alea` table, both restarted by each `generate
// genetic`, the random sources (replaceable, so that a test can script
// them), and the work buffers of a generation, kept between calls.
#pragma once
#include <functional>
#include <vector>

struct GeneticState {
  int position = 0;      // selection position, from 0
  int alea = 0;          // next read of the `alea` table
  // Uniform numbers in [0, 1): the process generator, and the table read
  // from the seed of `alea` on. Null: the system's own.
  std::function<float()> process;
  std::function<float()> table;
  // A generation's copies: the population and the next one, the two
  // candidates, the fitness, the crossover log, the recorded positions.
  std::vector<char> pop, next, dup;
  std::vector<float> fit, log;
  std::vector<int> recorded;
  bool busy = false;     // a generation is running (its buffers in use)
};

GeneticState& genetics();
// Back to the state of a new `generate genetic`.
void genetics_restart();
