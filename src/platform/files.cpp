#include "platform/files.h"

#include <chrono>
#include <cstdio>
#include <system_error>
#include <filesystem>

struct OsFile {
  FILE* stream;
};

OsFile* os_open(const char* path) {
  if (!path || !*path) return nullptr;
  // Only regular files may be read: a fifo or a device could block for ever.
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return nullptr;
  FILE* s = fopen(path, "rb");
  if (!s) return nullptr;
  return new OsFile{s};
}

int os_getc(OsFile* f) { return getc(f->stream); }

size_t os_read(OsFile* f, char* buf, size_t n) { return fread(buf, 1, n, f->stream); }

bool os_seek(OsFile* f, long long offset) {
  return offset >= 0 && fseeko(f->stream, static_cast<off_t>(offset), SEEK_SET) == 0;
}

void os_close(OsFile* f) {
  if (!f) return;
  fclose(f->stream);
  delete f;
}

long long clock_ms() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

bool os_is_folder(const char* path) {
  std::error_code ec;
  return std::filesystem::is_directory(path, ec);
}
