// Reading a child program's output until a text appears.
#pragma once
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <string>

// Appends what `fd` gives to `seen` until `text` stands in it after
// position `from`, or `seconds` pass, or the output ends; true when found.
inline bool read_until(int fd, std::string& seen, const std::string& text, size_t from, int seconds) {
  auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  while (seen.find(text, from) == std::string::npos) {
    if (std::chrono::steady_clock::now() > end) return false;
    pollfd p{fd, POLLIN, 0};
    if (poll(&p, 1, 100) <= 0) continue;
    char buf[4096];
    ssize_t n = read(fd, buf, sizeof buf);
    if (n <= 0) return seen.find(text, from) != std::string::npos;
    seen.append(buf, static_cast<size_t>(n));
  }
  return true;
}
