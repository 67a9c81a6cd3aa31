// Reader of message tables. A record is "|N: text": N is ignored and the
// position gives the number; the text starts right after the colon, runs
// over lines (whose newlines are dropped) up to a newline followed by "|",
// and holds the escapes \n \t \7 (bell) \e (blank), "\x" giving x.
#include <algorithm>
#include <cstring>

#include "kernel/report.h"
#include "kernel/vocab.h"

static char unescape(char c) {
  switch (c) {
    case 'n': return '\n';
    case 't': return '\t';
    case '7': return '\a';
    case 'e': return ' ';
    default: return c;
  }
}

// Reads the text of the record whose "|" is at p; returns where the next
// record starts, or the end of the text.
static const char* read_message(const char* p, std::string* m) {
  const char* colon = p + 1;
  while (*colon && *colon != '\n' && *colon != ':') colon++;
  p = (*colon == ':') ? colon + 1 : p + 1;
  while (*p) {
    if (*p == '\n' && p[1] == '|') return p + 1;
    if (*p == '\n' || (*p == '\r' && p[1] == '\n')) {
      p++;
    } else if (*p == '\\') {
      if (!p[1]) break;
      *m += unescape(p[1]);
      p += 2;
    } else {
      *m += *p++;
    }
  }
  return p;
}

// Returns the size of the table, or -1 (reported). The size is the count of
// every "|" in the text, so a "|" inside a message adds an empty entry.
int lire_mes(int voc, const char* text) {
  VocabState& v = vocab();
  if (voc < 0 || voc >= NB_VOC_MAX) {
    voir_int2("mes %d != [0,%d]\a\n", voc, NB_VOC_MAX - 1);
    return -1;
  }
  if (!text) return -1;
  int count = static_cast<int>(std::count(text, text + std::strlen(text), '|'));
  v.mes[voc].assign(count, std::string());
  int pos = 0;
  for (const char* p = std::strchr(text, '|'); p && *p; pos++)
    p = read_message(p, &v.mes[voc][pos]);
  v.nb_mes[voc] = count;
  v.nb_voc = std::max(v.nb_voc, voc + 1);
  return count;
}
