// The compiler seen through its listings: precedence, statements and
// control records, variable resolution, `break` linking, and failures.
#include <gtest/gtest.h>

#include "compile_fixture.h"

namespace {

// The listing without line tokens: only the code of the statements.
std::string code_of(const std::string& listing) {
  std::string out;
  size_t p = 0;
  while (p < listing.size()) {
    size_t nl = listing.find('\n', p);
    std::string line = listing.substr(p, nl == std::string::npos ? std::string::npos : nl - p);
    if (line.rfind(" line ", 0) != 0 && line != "LINK" && line.rfind("func ", 0) != 0) out += line;
    p = nl == std::string::npos ? listing.size() : nl + 1;
  }
  return out;
}

std::string console(const std::string& text, int level = 1) { return code_of(console_listing(text, level)); }
std::string linked(const std::string& text) { return code_of(console_listing(text, 1, true)); }
std::string function(const std::string& text, int level = 1) { return code_of(function_listing(text, level)); }
std::string function_linked(const std::string& text) { return code_of(function_listing(text, 1, true)); }

class Compile : public ::testing::Test {
 protected:
  void SetUp() override { minimal_kernel(); }
};

}  // namespace

TEST_F(Compile, PrecedenceIsTheLanguagesOwn) {
  EXPECT_EQ(console("a+b^2"), "((a +b )^2.000000 );");
  EXPECT_EQ(console("a<b,c"), "(a <(b ,c ));");
  EXPECT_EQ(console("a+b,c"), "((a +b ),c );");
  EXPECT_EQ(console("x=1,2,3"), "(x =(1.000000 ,(2.000000 ,3.000000 )));");
  EXPECT_EQ(console("a-b*c+d"), "((a -(b *c ))+d );");
  EXPECT_EQ(console("a||b&&c|d"), "(a ||(b &&(c |d )));");
  EXPECT_EQ(console("a==b<c"), "(a ==(b <c ));");
  EXPECT_EQ(console("x+=y*2"), "(x +=(y *2.000000 ));");
}

TEST_F(Compile, UnaryFormsAndNumbers) {
  EXPECT_EQ(console("-x"), "(0.000000 -x );");
  EXPECT_EQ(console("y=-x"), "(y =(0.000000 -x ));");
  EXPECT_EQ(console("!a&&b"), "(!(a &&b ));");
  EXPECT_EQ(console("x++"), "(x ++);");
  EXPECT_EQ(console("++x"), "(++x );");
  EXPECT_EQ(console("010+0x10+09"), "((8.000000 +16.000000 )+9.000000 );");
  EXPECT_EQ(console("'ab'"), "('97,98' );");
}

// Integer literals longer than any integer type are read as the nearest
// float, with no overflow on the way.
TEST_F(Compile, LongIntegerLiteralsAreTheNearestFloat) {
  EXPECT_EQ(console("0333333333333333333333333"), "(2023871369906631999488.000000 );");
  EXPECT_EQ(console("0xffffffffffffffffffffff"), "(309485009821345068724781056.000000 );");
  EXPECT_EQ(console("0x" + std::string(60, 'f')), "(inf );");
}

TEST_F(Compile, RedundantParenthesesAreRemoved) {
  // The compile listing comes before the removal, the link listing after.
  EXPECT_EQ(console("((x))"), "((x ));");
  EXPECT_EQ(linked("((x))"), "(x );");
  EXPECT_EQ(linked("(((a+b)))*c"), "((a +b )*c );");
}

TEST_F(Compile, CommandsTakeOneArgumentGroup) {
  EXPECT_EQ(console("col vol(1)=1,0,0"), "(col vol (1.000000 )=(1.000000 ,(0.000000 ,0.000000 )));");
  // A function-like word takes one operand.
  EXPECT_EQ(console("y=sin x+1"), "(y =(sin (x )+1.000000 ));");
  EXPECT_EQ(console("$x"), "(print (x ));");
  EXPECT_EQ(console("print -x"), "(print (0.000000 -x ));");
}

TEST_F(Compile, CallsHaveOneGroupPerArgument) {
  EXPECT_EQ(console("f(a,b+1,g(c))", 2),
            "(UNDEFINED_f[3](EXTERN_a )(EXTERN_b +1.000000 )(UNDEFINED_g[1](EXTERN_c )));");
  EXPECT_EQ(console("f()", 2), "(UNDEFINED_f[0]);");
  EXPECT_EQ(console("x[i+1]=2"), "((x [i +1.000000 ])=2.000000 );");
}

TEST_F(Compile, ControlRecordsAndTheirOffsets) {
  EXPECT_EQ(console("if(a<b) x=1; else y=2;"), "if (a <b ){ (x =1.000000 );} else { (y =2.000000 );} ");
  EXPECT_EQ(linked("if(a<b) x=1; else y=2;"), "if[5,17,33] (a <b ){ (x =1.000000 );} goto 53 { (y =2.000000 );} ");
  EXPECT_EQ(linked("while(i<3){i=i+1;}"), "if[5,17,39] (i <3.000000 ){ (i =(i +1.000000 ));goto 4 ;");
  EXPECT_EQ(linked("for(i=0;i<3;i++){x=x+i;}"),
            "(i =0.000000 )for[12,32,54,0,0,0,0,0] (i <3.000000 )(i ++)goto 14 (x =(x +i ));goto 36 ;");
  EXPECT_EQ(linked("switch(n){case 1: x=1; break; case(n+1): x=2; default: x=3;}"),
            "switch[3,17,1065353216,-49,39,63,27] (n ){ case 1 ;(x =1.000000 );goto 83 ;case 0 (n +1.000000 );"
            "(x =2.000000 );default: (x =3.000000 );} ;");
}

TEST_F(Compile, SwitchWithoutDefaultEndsAtItsBlock) {
  std::string s = linked("switch(n){case 1: x=1;}");
  // Two entries: the case, and the sentinel: the offset of the block's
  // close, which the listing shows as the last "}".
  EXPECT_EQ(s, "switch[2,15,1065353216,31,0] (n ){ case 1 ;(x =1.000000 );} ;") << s;
}

TEST_F(Compile, FunctionVariablesByKind) {
  EXPECT_EQ(function("cf1(a,b){return(a+b);}", 2), "(return (FORMEL_a +FORMEL_b ));(return )");
  EXPECT_EQ(function("cf2(n){static s=0,t[3]; s=s+n; x=n;}", 2),
            "(static );(STATIC_s =(STATIC_s +FORMEL_n ));(AUTO_x =FORMEL_n );(return )");
  EXPECT_EQ(function("cf3(n){ extern e1, e2; e1 = n; }", 2), ";(EXTERN_e1 =FORMEL_n );(return )");
  EXPECT_EQ(function("cf4(p) func p; { return(p(1)); }", 2), "(return (TYPE_FUNC_p (1.000000 )));(return )");
  EXPECT_EQ(function("cf5(n){ auto a,b=2; }", 2), "(AUTO_a =0.000000 );(AUTO_b =2.000000 );(return )");
  EXPECT_EQ(function("cf6(){}"), ";(return )");
}

TEST_F(Compile, LabelsAndGoto) {
  EXPECT_EQ(function_linked("cg1(x){ lab: x=x-1; if(x>0) goto lab; }"),
            "ETIQUETTE 0:(x =(x -1.000000 ));if[5,17,23] (x >0.000000 ){ goto 4 ;} (return )");
}

// The break rules: an `if` leaves the enclosing block, a `for` or
// `switch` its own; a `while` is no starting point.
TEST_F(Compile, BreakIsLinkedByTheEnclosingRecords) {
  EXPECT_EQ(function_linked("cb1(n){ for(i=0,n){ if(i==3) break; } }"),
            "for[12,0,22,0,0,1065353216,30,55] (i =0.000000 )(n )goto 34 if[5,17,23] (i ==3.000000 ){ goto 59 ;} goto 4 ;"
            "(return )");
  // Two ifs deep, only the outer one is left.
  EXPECT_EQ(function_linked("cb2(n){ if(n){ if(n>1) { break; } } }"),
            "if[5,13,38] (n ){ if[5,17,23] (n >1.000000 ){ goto 40 ;} } ;(return )");
  // Directly in a top-level while it stays a break.
  EXPECT_EQ(function_linked("cb3(n){ while(n){ break; } }"), "if[5,13,19] (n ){ break ;goto 2 ;(return )");
  // In an else block nothing links it.
  EXPECT_NE(function_linked("cb4(n){ if(n){ x=1; } else { break; } }").find("break"), std::string::npos);
  // In a while inside a for, it leaves the while.
  std::string s = function_linked("cb5(n){ for(i=0,n){ while(1){ break; } } }");
  EXPECT_EQ(s.find("break"), std::string::npos) << s;
}

TEST_F(Compile, FailuresReportTheirMessages) {
  EXPECT_NE(console_listing("a--b").find("OPERATOR ERROR"), std::string::npos);
  EXPECT_NE(console_listing("for(i=0;i<3;i++);").find("for(ini;cond;inc)"), std::string::npos);
  EXPECT_NE(console_listing("for(i=0;i<3){}").find("for(ini;cond;inc)"), std::string::npos);
  EXPECT_NE(console_listing("for(i){}").find("for(i=depart,arrivee,pas)"), std::string::npos);
  EXPECT_NE(console_listing("if x").find("if(cond) {bloc}"), std::string::npos);
  EXPECT_NE(console_listing("while x").find("while(condition)"), std::string::npos);
  EXPECT_NE(console_listing("switch x").find("switch(expression)"), std::string::npos);
  EXPECT_NE(console_listing("x=(1;2)").find("PATENTHESIS ERROR"), std::string::npos);
  EXPECT_NE(console_listing("x=[1;2]").find("HOOK ERROR"), std::string::npos);
  EXPECT_NE(console_listing("f(1,,2)").find("ILLEGAL"), std::string::npos);
  EXPECT_NE(console_listing("print = 3").find("ILLEGAL"), std::string::npos);
  EXPECT_NE(function_listing("sin(x){}").find("IS A COMMAND"), std::string::npos);
  EXPECT_NE(function_listing("cx1 x{}").find("FUNCTION(liste)"), std::string::npos);
  EXPECT_NE(function_listing("cx2(a) func b; {}").find("NOT FOUND"), std::string::npos);
  EXPECT_NE(function_listing("cx3(n){ if(n){ break; } }", 1, true).find("ILLEGAL BREAK"), std::string::npos);
  EXPECT_NE(function_listing("cx4(n){ goto 7; }", 1, true).find("NO LABEL FOUND"), std::string::npos);
}
