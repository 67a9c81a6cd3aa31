// The code table: characters turned into HTML entities by the text-output
// commands. Each line: two characters skipped, the character's code, then
// the entity from "&" through ";".
#include <cstdlib>
#include <string>

#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "platform/process.h"

int load_htm_table(const char* path) {
  KernelState& k = kernel();
  std::string text;
  if (!file_read_all(path, text) && !file_read_all(k.env + path, text)) {
    VOIR_CHAR("%s: file not found, no code html set\a\n", path);
    return -1;
  }
  for (auto& e : k.htm_table) e.clear();
  size_t p = 0;
  for (int entry = 0; entry < 256 && p < text.size(); entry++) {
    while (p < text.size() && (text[p] == '\n' || text[p] == '\r')) p++;
    if (p >= text.size()) break;
    p += 2;
    if (p >= text.size()) break;
    const char* start = text.c_str() + p;
    char* end = nullptr;
    long code = strtol(start, &end, 10);
    p += end - start;
    size_t amp = text.find('&', p);
    if (amp == std::string::npos) break;
    size_t semi = text.find(';', amp);
    if (semi == std::string::npos) {
      voir_texte("INI_HTM()\n");
      err_format("code_htm", entry + 1);
      return -1;
    }
    k.htm_table[static_cast<unsigned char>(code)] = text.substr(amp, semi - amp + 1);
    p = semi + 1;
    size_t nl = text.find('\n', p);
    p = nl == std::string::npos ? text.size() : nl + 1;
  }
  return 0;
}
