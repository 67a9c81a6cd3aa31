// The program's own bitmap fonts: the same glyphs as the window toolkit's,
// so that texts are drawn alike with a window and off-screen; the widths
// that place texts and buttons.
#include <gtest/gtest.h>

#include "render/font_tables.h"

// freeglut's records of its fonts (stable since 2.x); its GLUT_BITMAP_*
// names are only tokens.
struct ToolkitFont {
  char* name;
  int quantity;
  int height;
  const unsigned char** characters;
  float xorig, yorig;
};
extern "C" ToolkitFont fgFontFixed8x13, fgFontFixed9x15, fgFontTimesRoman10, fgFontTimesRoman24, fgFontHelvetica10,
    fgFontHelvetica12, fgFontHelvetica18;

namespace {

TEST(FontTables, EveryGlyphIsTheToolkitsBitForBit) {
  const ToolkitFont* toolkit[NB_BITMAP_FONTS] = {&fgFontFixed8x13,    &fgFontFixed9x15,    &fgFontTimesRoman10,
                                                 &fgFontTimesRoman24, &fgFontHelvetica10, &fgFontHelvetica12,
                                                 &fgFontHelvetica18};
  for (int i = 0; i < NB_BITMAP_FONTS; i++) {
    const BitmapFont& ours = BITMAP_FONTS[i];
    const ToolkitFont& theirs = *toolkit[i];
    ASSERT_EQ(ours.height, theirs.height) << ours.name;
    EXPECT_EQ(ours.xorig, theirs.xorig) << ours.name;
    EXPECT_EQ(ours.yorig, theirs.yorig) << ours.name;
    for (int c = 1; c < 256 && c < theirs.quantity; c++) {
      const unsigned char* face = theirs.characters[c];
      ASSERT_EQ(ours.width[c], face[0]) << ours.name << " glyph " << c;
      const int bytes = (face[0] + 7) / 8 * ours.height;
      // The glyphs lie one after the other in the table.
      if (c < 255) {
        ASSERT_EQ(ours.at[c + 1], ours.at[c] + bytes) << ours.name << " glyph " << c;
      }
      for (int k = 0; k < bytes; k++) ASSERT_EQ(ours.bits[ours.at[c] + k], face[1 + k]) << ours.name << " glyph " << c;
    }
  }
}

TEST(FontTables, WidthsOfTextsAreThoseOfTheirLongestLine) {
  const BitmapFont& fixed = BITMAP_FONTS[FONT_9_BY_15];
  EXPECT_EQ(bitmap_length(fixed, ""), 0);
  EXPECT_EQ(bitmap_length(fixed, "CONTINUE"), 72);
  EXPECT_EQ(bitmap_length(fixed, "ab\ncdef\ng"), 36);
  const BitmapFont& helvetica = BITMAP_FONTS[6];
  EXPECT_LT(bitmap_length(helvetica, "iii"), bitmap_length(helvetica, "WWW"));
  // Bytes above 127 are Latin-1 glyphs, as the toolkit draws them.
  EXPECT_GT(bitmap_length(fixed, "\xe9"), 0);
}

}  // namespace
