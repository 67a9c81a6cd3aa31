// Process-level services: files, working directory, thread id, exit,
// and the signal flags.
#pragma once
#include <atomic>
#include <string>
#include <vector>

// Whole content of a file; false when it cannot be read.
bool file_read_all(const std::string& path, std::string& out);
bool file_exists(const std::string& path);
// Names of the entries of `folder` that begin with `prefix`, sorted.
std::vector<std::string> files_starting_with(const std::string& folder, const std::string& prefix);

std::string working_directory();
// The user's home folder, or "" when there is none.
std::string home_directory();
unsigned long thread_id();
// Ends the process; files still being written are finished first, and
// before them what each registered `finish` finishes (a recording under
// way, the sound devices), in the order registered.
[[noreturn]] void process_exit(int status);
void process_at_exit(void (*finish)());

// Signals: SIGINT raises the interrupt flag, SIGTERM and SIGHUP the
// termination flag; a signal ignored at start (SIGINT under a shell's
// `&`, SIGHUP under `nohup`) stays ignored. A size limit on files makes
// writes fail rather than end the process. Reads of standard input are
// broken by these signals.
void interrupt_install();
// The flags the handlers raise, read inline at every safe point of the
// interpreter.
struct SignalFlags {
  std::atomic<bool> interrupted{false};
  std::atomic<int> terminated{0};
};
extern SignalFlags signal_flags;
// True when SIGINT, SIGTERM or SIGHUP has arrived and was not dealt with.
inline bool interrupt_pending() { return signal_flags.interrupted.load() || signal_flags.terminated.load() != 0; }
// True when SIGINT (Ctrl-C) has arrived and was not dealt with.
bool sigint_pending();
// The number of the terminating signal that arrived, or 0.
int terminate_pending();
// Acts as if SIGHUP had arrived: for a terminal found gone.
void hangup_request();
// "SIGTERM", "SIGHUP"... for a signal number.
std::string signal_name(int signal);
// Readable when a signal has arrived since the last interrupt_clear (-1
// before interrupt_install).
int interrupt_fd();
// Clears SIGINT's flag; a termination stays pending.
void interrupt_clear();
void sleep_ms(int ms);

// Runs a command through the shell and waits: its exit status, or -1.
int run_shell(const char* command);
// Starts a command through the shell without waiting; -1 when it cannot start.
int start_task(const char* command);
