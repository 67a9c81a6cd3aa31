#include "kernel/file_out.h"

#include "kernel/report.h"

void signale_ecriture(const std::string& path, WriteFault fault) {
  if (fault == WriteFault::none) return;
  if (fault == WriteFault::space) err_disque(path.c_str());
  else err_ecriture(path.c_str());
}

bool ecrit_fichier(const std::string& path, const void* data, size_t n) {
  const WriteFault fault = safe_write_file(path, data, n);
  signale_ecriture(path, fault);
  return fault == WriteFault::none;
}
