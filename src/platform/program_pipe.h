// A program fed through a pipe on its standard input, as films are given
// to ffmpeg; nothing is allocated once it runs.
#pragma once
#include <cstddef>

// True when `name` is an executable file in a folder of PATH.
bool program_on_path(const char* name);

struct ProgramPipe {
  int fd = -1;   // the writing end; -1 when no program runs
  int pid = -1;
};

// Starts argv[0] (searched in PATH) with argv, its standard input the pipe;
// its output and errors go where ours go. False when it cannot start.
bool pipe_start(const char* const argv[], ProgramPipe* p);
// All of `data`; false once the program has stopped reading.
bool pipe_write(ProgramPipe* p, const void* data, size_t n);
// Closes the pipe, so that the program finishes, and waits for it: its
// exit status, or -1 when it did not exit normally.
int pipe_finish(ProgramPipe* p);
