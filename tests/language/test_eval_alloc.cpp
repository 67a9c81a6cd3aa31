// Expressions live on the evaluation area: once every variable has a
// value of its final size, running expressions allocates nothing at all.
#include <gtest/gtest.h>

#include "compile_fixture.h"
#include "kernel/bloc.h"
#include "kernel/kernel.h"
#include "kernel/work_areas.h"
#include "language/eval.h"
#include "support/alloc_count.h"

TEST(EvalAlloc, ExpressionsAllocateNothing) {
  minimal_kernel();
  Capture quiet;
  if (!kernel().eval_stack) {
    ASSERT_EQ(allocate_work_areas(), 0);
  }
  eval_state().limit = kernel().eval_limit;
  ConsoleText setup("a=[1,1000]; b=[1000,1]; c=a; s=\"abc def\"; t=s; n=0; v=1,2,3");
  ASSERT_EQ(a_compile(&setup.obj), 0);
  ASSERT_EQ(lier_fonction(&setup.obj), 0);
  word* result = nullptr;
  ASSERT_EQ(interp(setup.obj.code, kernel().eval_stack, &result), 0);

  ConsoleText work(
      "for(k=1,50){ c=a+b; c=a*2-b; n=n+k; t=s{1},s{0}; v=(v,1,2)[0,2]; "
      "if((c<a)[3] || n>5){ n=n-1; } switch(n){case 1: n=1; default: n=n;} }");
  ASSERT_EQ(a_compile(&work.obj), 0);
  ASSERT_EQ(lier_fonction(&work.obj), 0);
  ASSERT_EQ(interp(work.obj.code, kernel().eval_stack, &result), 0);  // sizes settle

  long words = bloc_state().total_words, blocks = bloc_state().live_blocks, before = allocations_so_far();
  for (int i = 0; i < 20; i++) ASSERT_EQ(interp(work.obj.code, kernel().eval_stack, &result), 0);
  EXPECT_EQ(allocations_so_far(), before);
  EXPECT_EQ(bloc_state().total_words, words);
  EXPECT_EQ(bloc_state().live_blocks, blocks);
  // And the work was done: the values are what the expressions say.
  EXPECT_EQ(quiet.take().find("ERROR"), std::string::npos);
}
