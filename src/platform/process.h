// Process-level services: files, working directory, thread id, exit,
// and the SIGINT flag.
#pragma once
#include <string>

// Whole content of a file; false when it cannot be read.
bool file_read_all(const std::string& path, std::string& out);
// Writes (or, with append, adds to) a file; false on failure.
bool file_write_all(const std::string& path, const std::string& text, bool append = false);
bool file_exists(const std::string& path);

std::string working_directory();
unsigned long thread_id();
[[noreturn]] void process_exit(int status);

// SIGINT: installs a handler that only raises the interrupt flag, unless
// SIGINT was already ignored. Reads of standard input are interrupted by it.
void interrupt_install();
bool interrupt_pending();
// Readable when SIGINT has arrived since the last interrupt_clear (-1
// before interrupt_install).
int interrupt_fd();
void interrupt_clear();
void sleep_ms(int ms);

// Runs a command through the shell and waits: its exit status, or -1.
int run_shell(const char* command);
// Starts a command through the shell without waiting; -1 when it cannot start.
int start_task(const char* command);
