#include "platform/program_pipe.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>

extern char** environ;

bool program_on_path(const char* name) {
  const char* path = std::getenv("PATH");
  if (!path) return false;
  std::string folders = path;
  size_t start = 0;
  while (start <= folders.size()) {
    size_t end = folders.find(':', start);
    if (end == std::string::npos) end = folders.size();
    std::string file = (end > start ? folders.substr(start, end - start) : ".") + "/" + name;
    struct stat st {};
    if (stat(file.c_str(), &st) == 0 && S_ISREG(st.st_mode) && access(file.c_str(), X_OK) == 0) return true;
    start = end + 1;
  }
  return false;
}

bool pipe_start(const char* const argv[], ProgramPipe* p) {
  // A program that stops reading gives EPIPE to our writes, not a signal
  // that would end the session.
  std::signal(SIGPIPE, SIG_IGN);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
  pid_t pid = -1;
  const int r = posix_spawnp(&pid, argv[0], &actions, nullptr, const_cast<char* const*>(argv), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[0]);
  if (r != 0) {
    close(ends[1]);
    return false;
  }
  p->fd = ends[1];
  p->pid = pid;
  return true;
}

bool pipe_write(ProgramPipe* p, const void* data, size_t n) {
  const char* at = static_cast<const char*>(data);
  while (p->fd >= 0 && n > 0) {
    const ssize_t w = write(p->fd, at, n);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) return false;
    at += w;
    n -= static_cast<size_t>(w);
  }
  return p->fd >= 0;
}

int pipe_finish(ProgramPipe* p) {
  if (p->fd >= 0) close(p->fd);
  p->fd = -1;
  if (p->pid < 0) return -1;
  int status = 0;
  while (waitpid(p->pid, &status, 0) < 0 && errno == EINTR) {
  }
  p->pid = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
