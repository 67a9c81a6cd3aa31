// Removal of /* */ comments from environment texts, in place.
#include <cstring>
#include <string>

#include "kernel/report.h"
#include "kernel/vocab.h"

static int count_lines(const char* from, const char* to) {
  int n = 0;
  for (; from < to; from++) n += (*from == '\n');
  return n;
}

// "line N: rest of the line ERROR COMMENT" for a comment never closed.
static void report_unclosed(const char* start, int line) {
  const char* end = std::strchr(start, '\n');
  std::string rest = end ? std::string(start, end) : std::string(start);
  voir_message(0, MES_LINE);
  voir_int(" %d: ", line);
  VOIR_CHAR("%s", rest.c_str());
  voir_message(0, MES_ERROR_COMMENT);
}

static void compact_newlines(char* text) {
  char* dst = text;
  for (const char* src = text; *src; src++)
    if (!(*src == '\n' && dst > text && dst[-1] == '\n')) *dst++ = *src;
  *dst = '\0';
}

int enlever_commentaires(char* text, int compacter) {
  if (!text) return -1;
  char* dst = text;
  const char* src = text;
  int line = 1, status = 0;
  while (*src) {
    if (src[0] == '/' && src[1] == '*') {
      const char* end = std::strstr(src + 2, "*/");
      if (!end) {
        report_unclosed(src, line);
        status = -1;
        break;
      }
      line += count_lines(src, end);
      src = end + 2;
      continue;
    }
    line += (*src == '\n');
    *dst++ = *src++;
  }
  *dst = '\0';
  if (compacter) compact_newlines(text);
  return status;
}
