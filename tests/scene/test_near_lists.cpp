// The cursor over self-sized neighbour lists, shared by the limits and the
// dynamics: what each vertex gets for sizes that skip, end or overflow.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "scene/near_lists.h"

namespace {

// The lists the cursor gives to n vertices, written "a b|c|" (one bar a
// vertex), with "-" for a vertex whose walk has ended.
std::string walk(const std::vector<float>& v, int n) {
  CurseurVoisins c(v.data(), static_cast<int>(v.size()));
  std::string s;
  for (int i = 0; i < n; i++) {
    if (c.fini()) {
      s += "-|";
      continue;
    }
    const CurseurVoisins::Liste l = c.suivante();
    for (int m = l.debut; m < l.fin; m++) s += (m > l.debut ? " " : "") + std::to_string(c.voisin(m));
    s += "|";
  }
  return s;
}

TEST(NearLists, SizesLeadTheirListsAndNegativeSizesSkip) {
  EXPECT_EQ(walk({3, 2, 3, 2, 1, 3, 1, 2}, 3), "2 3|1|1 2|");
  EXPECT_EQ(walk({3, 2, 3, -2, 9, 2, 1}, 3), "2 3||1|");
  // A size of 1 is an empty list that still counts as the vertex's.
  EXPECT_EQ(walk({1, 2, 7}, 2), "|7|");
}

TEST(NearLists, ASizeThatDoesNotFitEndsTheWalk) {
  EXPECT_EQ(walk({2, 5, 4, 1, 2}, 3), "5||-|");
  EXPECT_EQ(walk({2, 5, 0, 1, 2}, 3), "5||-|");
  EXPECT_EQ(walk({-5, 1, 2}, 2), "|-|");
  EXPECT_EQ(walk({NAN, 1}, 2), "|-|");
  EXPECT_EQ(walk({1e30f, 1}, 2), "|-|");
  EXPECT_EQ(walk({-1e30f, 1}, 2), "|-|");
}

TEST(NearLists, NoListsGiveEmptyWalks) {
  CurseurVoisins c(nullptr, 12);
  EXPECT_TRUE(c.fini());
  EXPECT_TRUE(c.suivante().vide());
  EXPECT_EQ(walk({}, 2), "-|-|");
}

}  // namespace
