#include "platform/console_io.h"
#include "platform/process.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {
std::string* capture = nullptr;
const std::string* input_text = nullptr;
size_t input_pos = 0;
void (*interrupt_hook)() = nullptr;
// Bytes read ahead of the reader: whole reads, and the lines the line
// editor hands over.
std::string in_buf;
size_t in_next = 0;
bool in_ended = false;
bool (*line_editor)(int) = nullptr;

void buffer_compact() {
  if (in_next > 0) {
    in_buf.erase(0, in_next);
    in_next = 0;
  }
}

// With ORVELA_ECHO=1 in the environment, each byte taken from standard
// input without a line editor is written to the output, as a terminal
// echoes what is typed: a session run from a file reads with its input.
bool echo_input() {
  static const bool echo = [] {
    const char* e = std::getenv("ORVELA_ECHO");
    return e && e[0] == '1' && e[1] == 0;
  }();
  return echo;
}

bool line_buffered() { return in_buf.find('\n', in_next) != std::string::npos; }

// Appends what one read(2) of standard input gives; false at its end.
bool read_some() {
  char chunk[4096];
  ssize_t n = read(0, chunk, sizeof chunk);
  if (n < 0 && errno == EINTR) return true;
  if (n <= 0) {
    in_ended = true;
    return false;
  }
  buffer_compact();
  in_buf.append(chunk, static_cast<size_t>(n));
  return true;
}

// One byte of standard input. A termination signal runs the hook (which
// ends the process); SIGINT runs it too (the interrupt dialogue), unless a
// line editor is reading, for which Ctrl-C abandons the line being typed.
int stdin_byte() {
  while (in_next >= in_buf.size()) {
    if (terminate_pending()) {
      if (!interrupt_hook) return -1;
      interrupt_hook();
    }
    if (in_ended) return -1;
    if (line_editor) {
      line_editor(-1);
      continue;
    }
    if (interrupt_pending()) {
      if (interrupt_hook) interrupt_hook();
      else interrupt_clear();
      continue;
    }
    pollfd fds[2] = {{0, POLLIN, 0}, {interrupt_fd(), POLLIN, 0}};
    int ready = poll(fds, interrupt_fd() >= 0 ? 2 : 1, -1);
    if (ready < 0 || (fds[1].revents & POLLIN) || !(fds[0].revents & (POLLIN | POLLHUP | POLLERR))) continue;
    read_some();
  }
  const char c = in_buf[in_next++];
  if (!line_editor && echo_input()) out_write(&c, 1);
  return static_cast<unsigned char>(c);
}
}  // namespace

void out_write(const char* s, size_t n) {
  if (capture) {
    capture->append(s, n);
    return;
  }
  fwrite(s, 1, n, stdout);
}

void out_flush() {
  if (!capture) fflush(stdout);
}

std::string* out_capture(std::string* sink) {
  std::string* previous = capture;
  capture = sink;
  return previous;
}

int in_getc() {
  if (input_text) {
    if (input_pos >= input_text->size()) return -1;
    return static_cast<unsigned char>((*input_text)[input_pos++]);
  }
  return stdin_byte();
}

bool in_getline(std::string& line) {
  line.clear();
  int c;
  while ((c = in_getc()) >= 0 && c != '\n') line.push_back(static_cast<char>(c));
  return c >= 0 || !line.empty();
}

void in_from_string(const std::string* text) {
  input_text = text;
  input_pos = 0;
}

void in_set_interrupt_hook(void (*hook)()) { interrupt_hook = hook; }

bool in_at_end() { return !input_text && in_ended; }

bool in_is_terminal() { return !input_text && isatty(0); }

void in_resume() { in_ended = false; }

void in_push_text(const std::string& text, bool end) {
  buffer_compact();
  in_buf += text;
  if (end) in_ended = true;
}

void in_set_line_editor(bool (*feed)(int timeout_ms)) { line_editor = feed; }

bool in_wait_line(int timeout_ms) {
  if (input_text || in_ended || line_buffered() || terminate_pending()) return true;
  if (line_editor) {
    line_editor(timeout_ms);
    return in_ended || line_buffered() || terminate_pending();
  }
  pollfd fd = {0, POLLIN, 0};
  if (poll(&fd, 1, timeout_ms) <= 0 || !(fd.revents & (POLLIN | POLLHUP | POLLERR))) return false;
  read_some();
  return in_ended || line_buffered();
}
