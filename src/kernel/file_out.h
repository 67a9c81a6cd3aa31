// Writing the user's files. Every writer of the program goes through
// here, so that each file is written safely (platform/safe_write.h) and a
// failure prints the same message whatever the kind of file: the file's
// name, then "DISK FULL" when space ran out, else "WRITE ERROR".
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/safe_write.h"

// Writes the bytes as the whole file; false after the message.
bool ecrit_fichier(const std::string& path, const void* data, size_t n);
inline bool ecrit_fichier(const std::string& path, std::string_view bytes) {
  return ecrit_fichier(path, bytes.data(), bytes.size());
}
// The message of a failed write (nothing for WriteFault::none).
void signale_ecriture(const std::string& path, WriteFault fault);
