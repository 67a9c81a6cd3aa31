// Files open for reading, byte by byte or by blocks (files are written
// through platform/safe_write.h), and the millisecond clock that paces
// busy waits.
#pragma once
#include <cstddef>

struct OsFile;

// Null when the path names no regular file that can be read.
OsFile* os_open(const char* path);
// The next byte (0 to 255), or -1 at the end of the file.
int os_getc(OsFile* f);
// Up to n bytes; the count read, 0 at the end.
size_t os_read(OsFile* f, char* buf, size_t n);
// Moves to byte `offset` from the start; false when it cannot.
bool os_seek(OsFile* f, long long offset);
void os_close(OsFile* f);
// True when the path names an existing folder.
bool os_is_folder(const char* path);

// Milliseconds of a monotonic clock.
long long clock_ms();
