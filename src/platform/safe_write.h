// Writing a file without ever damaging the one it replaces: the bytes go
// to a temporary file in the target's folder, which is flushed to disk
// and renamed over the target only once complete. On any failure the
// temporary file is removed and the target stays as it was. A target
// that is no regular file (a device, a fifo) is written in place.
#pragma once
#include <cstddef>
#include <string>

// Why a write failed: the file could not be made or renamed into place
// (`create`), the disk or the size limit was reached (`space`), or
// another error of the device (`io`).
enum class WriteFault { none, create, space, io };

// A write in progress.
struct SafeFile;

// Starts writing `path`. With `keep`, the temporary file begins as a
// copy of the existing target, so that writes add to it or patch it.
// Null on failure, with the cause in *fault.
SafeFile* safe_open(const std::string& path, bool keep, WriteFault* fault);
// Appends bytes; false once any write has failed (later ones do nothing).
bool safe_write(SafeFile* f, const void* data, size_t n);
// Writes bytes at `offset` of the file (for patching a kept copy).
bool safe_write_at(SafeFile* f, long long offset, const void* data, size_t n);
// The fault of the writes so far (WriteFault::none while all went well).
WriteFault safe_fault(const SafeFile* f);
// Finishes: flushes, then puts the file in place. Releases `f`.
WriteFault safe_commit(SafeFile* f);
// Gives the write up: the target stays as it was. Releases `f`.
void safe_abandon(SafeFile* f);
// Finishes every write still open (at the end of the process).
void safe_commit_all();

// The whole of `data` to `path` through the temporary file `temp` (in the
// same folder), renamed over it once complete; allocates nothing, for
// writers that run at every image.
WriteFault write_whole_file(const char* path, const char* temp, const void* data, size_t n);
// The whole content of `path`, written safely.
WriteFault safe_write_file(const std::string& path, const void* data, size_t n);
