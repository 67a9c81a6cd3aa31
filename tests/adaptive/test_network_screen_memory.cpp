// The learning screen runs one resumed pass an idle call and draws the
// network: once the first pass has made what a network needs, a pass and
// its drawing ask for no memory, neither from the heap nor from the
// kernel's blocks.
#include <gtest/gtest.h>

#include "kernel/bloc.h"
#include "network_fixture.h"
#include "support/alloc_count.h"

TEST_F(NetworkTest, AScreenPassAllocatesNothingOnceTheFirstHasRun) {
  ok("network(1) fac(2,4,1) motif(0.1,0.1, 0.1,0.9, 0.9,0.1, 0.9,0.9) law(0.1,0.9,0.9,0.1)");
  ok("generate network(1) validate(1) alea(1)");
  NetOptions opt;
  opt.passes = 40;
  NetResult res;
  Capture quiet;
  opt.start = 1;
  ASSERT_EQ(generer_reseau_1(net(1), opt, &res), 0);
  dessine_reseau(trouve_reseau(net(1)));
  const std::vector<float> before = values(trouve_reseau(net(1)).matrix);
  const long long news = allocations_so_far(), blocks = bloc_state().requests;
  for (opt.start = 2; opt.start <= 30; opt.start++) {
    ASSERT_EQ(generer_reseau_1(net(1), opt, &res), 0);
    dessine_reseau(trouve_reseau(net(1)));  // with no window, GL does nothing
  }
  EXPECT_EQ(allocations_so_far() - news, 0);
  EXPECT_EQ(bloc_state().requests - blocks, 0);
  // The passes did learn.
  EXPECT_NE(values(trouve_reseau(net(1)).matrix), before);
  EXPECT_EQ(res.passes, 30);
}
