// Local functions of objects: kept on the object, compiled when given,
// numbered in order, run on demand and by the cycle's stage.
#include "kernel/object_store.h"
#include "scene/vol_local.h"
#include "vol_fixture.h"

namespace {

using VolLocal = VolTest;

TEST_F(VolLocal, FunctionsAreKeptNumberedReplacedAndRemoved) {
  Objet* o = volume(1, grid_points(2), grid_facets(2));
  ok("local(\"a(){return 1}\") vol(1)");
  ok("local(\"b(){return 2}\") vol(1)");
  EXPECT_EQ(str("local vol(1)"), "a b");
  EXPECT_EQ(str("local(2) vol(1)"), "b(){return 2}");
  EXPECT_EQ(str("local(\"a\") vol(1)"), "a(){return 1}");
  ok("local(\"a(){return 3}\") vol(1)");
  EXPECT_EQ(str("local vol(1)"), "a b") << "the same name replaces, in place";
  EXPECT_EQ(str("local(1) vol(1)"), "a(){return 3}");
  ASSERT_NE(o->child, nullptr);
  EXPECT_EQ(o->child->next->id, 1);
  EXPECT_EQ(o->child->next->next->id, 2);
  EXPECT_NE(o->child->next->code, nullptr) << "compiled when given";
  EXPECT_NE(run("local(5) vol(1)").out.find("5  ILLEGAL"), std::string::npos);
  EXPECT_NE(fails("local(\"zz\") vol(1)").find("zz  NOT FOUND"), std::string::npos);
  ok("rem local(\"a\") vol(1)");
  EXPECT_EQ(str("local vol(1)"), "b");
  EXPECT_EQ(o->child->next->id, 1) << "numbered again";
  ok("rem local vol(1)");
  EXPECT_TRUE(nil("local vol(1)"));
  EXPECT_EQ(o->child, nullptr);
}

TEST_F(VolLocal, RunningReachesExternAndSharedGlobalVariables) {
  grilles({1, 2});
  lignes({"count=0", "m=0", "local(\"step(){extern count; count=count+1}\") vol(1,2)",
          "local(\"a(){global n; n=5}\") vol(1)", "local(\"b(){global n; extern m; m=n*2}\") vol(1)",
          "local exec vol(1)"});
  EXPECT_EQ(one("count"), 1.0f);
  EXPECT_EQ(one("m"), 10.0f) << "a and b share n, in order";
  ASSERT_EQ(EXEC_LOCALE_TOUT(), 0);
  EXPECT_EQ(one("count"), 3.0f) << "every object's list";
  // A failing function stops the stage with its report.
  ok("local(\"c(){global q; q=q+2}\") vol(2)");
  Capture out;
  EXPECT_LT(EXEC_LOCALE_TOUT(), 0);
  EXPECT_NE(out.take().find("exec_fonc_obj"), std::string::npos);
}

TEST_F(VolLocal, BadTextsAreReportedAndTheObjectGoesWithItsFunctions) {
  const int before = bloc_state().object_count;
  volume(1, grid_points(2), grid_facets(2));
  EXPECT_NE(fails("local(\"bad(){x=}\") vol(1)").find("bad(){x=}"), std::string::npos);
  const std::string longname(130, 'x');
  EXPECT_NE(fails("local(\"" + longname + "(){}\") vol(1)").find("ILLEGAL NAME"), std::string::npos);
  EXPECT_TRUE(nil("local vol(1)")) << "a text that does not compile is not kept";
  ok("local(\"f(){return 1}\") vol(1)");
  fails("local(\"f(){x=}\") vol(1)");
  EXPECT_EQ(str("local(\"f\") vol(1)"), "f(){return 1}") << "nor does it replace";
  ok("rem vol(1)");
  EXPECT_EQ(bloc_state().object_count, before) << "the volume goes with its functions and their records";
}

TEST_F(VolLocal, AFunctionMayRemoveObjectsButNotChangeTheListThatRuns) {
  grilles({1, 2, 3});
  lignes({"local(\"k(){rem vol(1,2)}\") vol(1)", "local(\"j(){extern ran; ran=1}\") vol(1)",
          "local(\"j(){extern ran2; ran2=1}\") vol(2)", "ran=0", "ran2=0"});
  ASSERT_EQ(EXEC_LOCALE_TOUT(), 0);
  EXPECT_EQ(one("ran"), 1.0f) << "the list goes on after its object went";
  EXPECT_EQ(one("ran2"), 0.0f) << "a removed object's functions do not run";
  EXPECT_EQ(get_objet_id(chaine_classe(KW_vol), KW_vol, 1), nullptr);
  ok("local(\"m(){local(\\\"q(){}\\\") vol(3)}\") vol(3)");
  EXPECT_NE(fails("local exec vol(3)").find("local  ILLEGAL\n"), std::string::npos);
  ok("local(\"m(){local exec vol(3)}\") vol(3)");
  const std::string again = fails("local exec vol(3)");
  EXPECT_NE(again.find("local  ILLEGAL\n"), std::string::npos) << again;
  EXPECT_EQ(str("local vol(3)"), "m") << "the list is back after the run";
}

TEST_F(VolLocal, RunningOnSeveralObjectsSkipsTheOnesAFunctionRemoved) {
  grilles({1, 2});
  lignes({"ran=0", "local(\"lf(){extern ran; ran=ran+1; rem vol(2)}\") vol(1,2)", "local exec vol(1,2)"});
  EXPECT_EQ(one("ran"), 1.0f) << "vol 2 went before its turn";
  EXPECT_EQ(get_objet_id(chaine_classe(KW_vol), KW_vol, 2), nullptr);
  EXPECT_EQ(str("local vol(1)"), "lf");
}

// An object removed by its own function and made again under the same
// number is another object: it keeps its own functions, and one made
// during a pass of the cycle waits for the next pass.
TEST_F(VolLocal, AnObjectMadeAgainInItsPlaceIsAnotherObject) {
  grilles({1});
  lignes({"local(\"lf(){rem vol(1); ball(1) dim(2); local(\\\"g(){}\\\") vol(1)}\") vol(1)",
          "local exec vol(1)"});
  EXPECT_EQ(str("local vol(1)"), "g");
  grilles({2, 3});
  lignes({"count=0",
          "local(\"lf(){extern count; count=count+1; rem vol(3); ball(3) dim(1); "
          "local(\\\"h(){extern count; count=count+10}\\\") vol(3)}\") vol(2)"});
  ASSERT_EQ(EXEC_LOCALE_TOUT(), 0);
  EXPECT_EQ(one("count"), 1.0f);
  EXPECT_EQ(str("local vol(3)"), "h");
}

}  // namespace
