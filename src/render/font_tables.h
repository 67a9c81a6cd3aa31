// The program's own bitmap fonts: the toolkit's seven, so that texts are
// drawn the same with a window or with no window system at all.
#pragma once

struct BitmapFont {
  const char* name;
  int height;                  // rows of every glyph
  float xorig, yorig;          // the glyph's origin in its bitmap
  const unsigned char* bits;   // rows from the bottom, (width+7)/8 bytes each
  const unsigned short* at;    // where each of the 256 glyphs starts in bits
  const unsigned char* width;  // advance of each glyph, in pixels
};

constexpr int NB_BITMAP_FONTS = 7;
// 8x13, 9x15, times10, times24, helvetica10, helvetica12, helvetica18.
extern const BitmapFont BITMAP_FONTS[NB_BITMAP_FONTS];
constexpr int FONT_9_BY_15 = 1;

// Draws the glyphs of `text` at the current raster position, which moves
// on by their widths.
void bitmap_text(const BitmapFont& font, const char* text);
// The width of the longest line of `text`, in pixels.
int bitmap_length(const BitmapFont& font, const char* text);
