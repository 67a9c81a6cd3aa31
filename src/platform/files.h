// Open files of the language's file commands, read and written byte by
// byte or by blocks, and the millisecond clock that paces busy waits.
#pragma once
#include <cstddef>

struct OsFile;

// update: an existing file, read and written in place.
enum class FileMode { read, write, append, update };

// Null when the file cannot be opened in that mode.
OsFile* os_open(const char* path, FileMode mode);
// The next byte (0 to 255), or -1 at the end of the file.
int os_getc(OsFile* f);
// Up to n bytes; the count read, 0 at the end.
size_t os_read(OsFile* f, char* buf, size_t n);
// False when not every byte could be written.
bool os_write(OsFile* f, const char* s, size_t n);
// Moves to byte `offset` from the start; false when it cannot.
bool os_seek(OsFile* f, long long offset);
void os_close(OsFile* f);
// True when the path names an existing folder.
bool os_is_folder(const char* path);

// Milliseconds of a monotonic clock.
long long clock_ms();
