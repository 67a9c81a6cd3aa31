// The "DAT" table reader: rows of numbers, the first row's count holding
// for all, and the faults it names by line.
#include <gtest/gtest.h>

#include <string>

#include "device/dat_table.h"

namespace {

bool lit(const std::string& s, TableDatas* t, size_t max = 1000) { return lire_table_datas(s.data(), s.size(), t, max); }

}  // namespace

TEST(DatTable, RowsAndSeparators) {
  TableDatas t;
  ASSERT_TRUE(lit("1 2 3\n4,5;6\n\n7\t8 -9.5e1\r\n", &t));
  EXPECT_EQ(t.colonnes, 3);
  EXPECT_EQ(t.lignes, 3);
  ASSERT_EQ(t.valeurs.size(), 9u);
  EXPECT_FLOAT_EQ(t.valeurs[3], 4);
  EXPECT_FLOAT_EQ(t.valeurs[8], -95);
  // A last line without its end counts.
  ASSERT_TRUE(lit("1 2\n3 4", &t));
  EXPECT_EQ(t.lignes, 2);
}

TEST(DatTable, FaultsNameTheirLine) {
  TableDatas t;
  EXPECT_FALSE(lit("1 2\n3 4\n5\n", &t));
  EXPECT_EQ(t.ligne_fautive, 3);
  EXPECT_FALSE(lit("1 2\n\n3 x\n", &t));
  EXPECT_EQ(t.ligne_fautive, 3);
  // A NUL inside a number is no number.
  EXPECT_FALSE(lit(std::string("1 2\n3\0 4\n", 9), &t));
  EXPECT_EQ(t.ligne_fautive, 2);
  EXPECT_FALSE(lit("", &t));
  EXPECT_FALSE(lit("\n \n", &t));
}

TEST(DatTable, LineLengthAndSizeBounds) {
  TableDatas t;
  std::string line(DAT_LIGNE_MAX - 1, ' ');
  line[0] = '7';
  EXPECT_TRUE(lit(line + "\n", &t));  // 257 characters with its end
  EXPECT_FALSE(lit("1\n" + line + " \n", &t));
  EXPECT_EQ(t.ligne_fautive, 2);
  EXPECT_FALSE(lit("1 2 3\n4 5 6\n", &t, 5));
  EXPECT_EQ(t.ligne_fautive, 2);
}
