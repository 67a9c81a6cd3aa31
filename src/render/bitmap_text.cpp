// Texts drawn from the program's font tables: one glBitmap a glyph, with
// the pixel store set for the tables' tightly packed rows.
#include <GL/gl.h>

#include <algorithm>

#include "render/font_tables.h"

void bitmap_text(const BitmapFont& font, const char* text) {
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_FALSE);
  glPixelStorei(GL_UNPACK_LSB_FIRST, GL_FALSE);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  for (const unsigned char* c = reinterpret_cast<const unsigned char*>(text); *c; c++) {
    const int w = font.width[*c];
    glBitmap(w, font.height, font.xorig, font.yorig, static_cast<float>(w), 0, font.bits + font.at[*c]);
  }
  glPopClientAttrib();
}

int bitmap_length(const BitmapFont& font, const char* text) {
  int longest = 0, line = 0;
  for (const unsigned char* c = reinterpret_cast<const unsigned char*>(text); *c; c++) {
    if (*c == '\n') {
      longest = std::max(longest, line);
      line = 0;
    } else {
      line += font.width[*c];
    }
  }
  return std::max(longest, line);
}
