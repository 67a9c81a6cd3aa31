#include "platform/memory.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

bool stack_bounds(const char** lowest, size_t* size) {
  pthread_attr_t attr;
  if (pthread_getattr_np(pthread_self(), &attr) != 0) return false;
  void* addr = nullptr;
  size_t n = 0;
  const bool ok = pthread_attr_getstack(&attr, &addr, &n) == 0 && addr && n > 0;
  pthread_attr_destroy(&attr);
  if (!ok) return false;
  *lowest = static_cast<const char*>(addr);
  *size = n;
  return true;
}

namespace {

// "MemAvailable" of /proc/meminfo in bytes, or -1.
double available_physical() {
  FILE* f = std::fopen("/proc/meminfo", "r");
  if (!f) return -1;
  char line[256];
  double bytes = -1;
  while (std::fgets(line, sizeof line, f)) {
    unsigned long long kb = 0;
    if (std::sscanf(line, "MemAvailable: %llu kB", &kb) == 1) {
      bytes = static_cast<double>(kb) * 1024;
      break;
    }
  }
  std::fclose(f);
  return bytes;
}

// What the address-space limit still leaves, or -1 without a limit.
double address_space_left() {
  rlimit r;
  if (getrlimit(RLIMIT_AS, &r) != 0 || r.rlim_cur == RLIM_INFINITY) return -1;
  FILE* f = std::fopen("/proc/self/statm", "r");
  if (!f) return -1;
  unsigned long long pages = 0;
  const bool read = std::fscanf(f, "%llu", &pages) == 1;
  std::fclose(f);
  if (!read) return -1;
  const double used = static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE));
  const double left = static_cast<double>(r.rlim_cur) - used;
  return left > 0 ? left : 0;
}

}  // namespace

double memory_available() {
  const double physical = available_physical(), space = address_space_left();
  if (physical < 0) return space;
  if (space < 0) return physical;
  return physical < space ? physical : space;
}
