// Source preparation, stage by stage, seen through its prepared text.
// Marks are shown as <n> (line mark) and <@name> (origin mark), byte 1 as <q>.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "kernel/bloc.h"
#include "kernel/object_store.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "language/lexer.h"
#include "language/prepare.h"
#include "support/capture.h"

namespace {

std::string lisible(const char* t) {
  std::string r;
  for (const char* p = t; *p;) {
    if (*p == MARQUE_LIGNE && longueur_marque(p) == LONG_MARQUE_LIGNE) {
      r += "<" + std::to_string(numero_ligne(p)) + ">";
      p += LONG_MARQUE_LIGNE;
    } else if (*p == MARQUE_ORIGINE && longueur_marque(p) == LONG_MARQUE_ORIGINE) {
      r += "<@" + std::string(p + 1, std::strcspn(p + 1, " ")) + ">";
      p += LONG_MARQUE_ORIGINE;
    } else {
      r += *p == 1 ? std::string("<q>") : std::string(1, *p);
      p++;
    }
  }
  return r;
}

// A function (CHAR source) or a console text (CODE block).
struct Source {
  Objet obj;
  explicit Source(const std::string& s, bool console = false) {
    int mots = static_cast<int>(s.size() / 4 + 5);
    obj.kind = console ? 0 : KW_func;
    obj.local = alloue_bloc(mots);
    std::memset(obj.local + 1, 0, static_cast<size_t>(mots - 1) * sizeof(word));
    tag(obj.local) = console ? T_CODE : T_CHAR;
    std::memcpy(text(obj.local), s.data(), s.size());
  }
  ~Source() { libere_bloc(obj.local); }
};

struct Resultat {
  int r = 0, status = 0, doublements = 0;
  word mots = 0;
  std::string texte, sortie;
};

// Drives the pass as the compiler does: the area doubles while it is too small.
Resultat preparer(Objet* o, int dim = 4000) {
  Capture capture;
  Resultat res;
  int ancien = lang().Dim_com;
  for (lang().Dim_com = dim;; lang().Dim_com *= 2, res.doublements++) {
    int n = lang().Dim_com;
    bloc work = alloue_bloc(n + 8);
    std::memset(work + n - 120, 0x5A, (120 + 8) * sizeof(word));
    res.r = compile_passe_1(o, work, work + n - 120, &res.status);
    for (int i = (n - 120) * 4; i < (n + 8) * 4; i++)
      EXPECT_EQ(reinterpret_cast<unsigned char*>(work)[i], 0x5A) << "written past the limit";
    if (res.r >= 0) {
      res.texte = lisible(text(work));
      res.mots = work[0];
      EXPECT_EQ(work[0], static_cast<word>((std::strlen(text(work)) + 1) / 4 + 5));
    }
    libere_bloc(work);
    if (res.r >= 0 || res.status != -1 || res.doublements > 20) break;
  }
  lang().Dim_com = ancien;
  res.sortie = capture.take();
  return res;
}

Resultat preparer(const std::string& s, bool console = false, int dim = 4000) {
  Source src(s, console);
  return preparer(&src.obj, dim);
}

bool contient(const std::string& s, const std::string& t) { return s.find(t) != std::string::npos; }

class PrepareTest : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    Yes(KW_ring) = 0;
  }
  void TearDown() override {
    vider_noms_definis();
    symb_free(&lang().macros_globales);
    lang().alias_text.clear();
    lang().alias_exists = false;
    minimal_kernel();
  }
};

// Stage 1.
using PrepareComments = PrepareTest;

TEST_F(PrepareComments, EmptySourceIsOneLineMark) {
  Resultat r = preparer("");
  EXPECT_EQ(r.r, 0);
  EXPECT_EQ(r.texte, "<1>");
  EXPECT_EQ(r.mots, (5 + 1) / 4 + 5);
  EXPECT_EQ(r.sortie, "error INCLUDE\n");
}

TEST_F(PrepareComments, CommentsGoAndOrdinaryCharactersStay) {
  EXPECT_EQ(preparer("f(){a/b;}").texte, "<1>f(){a /b ;}");
  EXPECT_EQ(preparer("f(){a=1;/* x\ny */b=2;}").texte, "<1>f(){a =1;b =2;}");
  EXPECT_EQ(preparer("f(){s=\"/*\";}").texte, "<1>f(){s =\"/*\";}");
  // "//" also takes the empty lines and the indentation behind it.
  EXPECT_EQ(preparer("f(){a=1; // c\n\n  b=2;\n}").texte, "<1>f(){a =1; b =2;<3>}");
}

TEST_F(PrepareComments, EachNewlineIsALineMarkAndEmptyLinesCollapseFromLineThree) {
  // Line n carries n - 1, the first line 1.
  EXPECT_EQ(preparer("f(){\na;\n\n\nb;\n}").texte, "<1>f(){<1>a ;<4>b ;<5>}");
  EXPECT_EQ(preparer("f(){\n\n}").texte, "<1>f(){<1><2>}");
  EXPECT_EQ(preparer("f(){a;\r\nb;\r}").texte, "<1>f(){a ;<1>b ;\r }");
  // A comment marks none of its lines, but counts them.
  EXPECT_EQ(preparer("f(){/*\n\n*/a;\nb;}").texte, "<1>f(){a ;<3>b ;}");
}

TEST_F(PrepareComments, OpenCommentsAndStringsAreErrors) {
  for (const char* s : {"f(){/* open", "f(){a; // no newline", "f(){a;}/"}) {
    Resultat r = preparer(s);
    if (std::string(s) == "f(){a;}/") {
      EXPECT_EQ(r.r, 0);  // a lone slash is no comment
      continue;
    }
    EXPECT_LT(r.r, 0) << s;
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(contient(r.sortie, "ERROR COMMENT")) << r.sortie;
  }
  Resultat r = preparer("f(){\ns=\"abc\\\"");
  EXPECT_LT(r.r, 0);
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(contient(r.sortie, "INCOMPLETE STRING"));
  EXPECT_TRUE(contient(r.sortie, "func f line 1\n"));
}

// Stage 2.
using PrepareDirectives = PrepareTest;

TEST_F(PrepareDirectives, TextOfDirectivesAloneKeepsOnlyItsLineMarks) {
  Resultat r = preparer("#define A 1\n#define B 2\n");
  EXPECT_EQ(r.r, 0);
  EXPECT_EQ(r.texte, "<1><1><2>");
  EXPECT_EQ(r.sortie, "error INCLUDE\n");
  EXPECT_EQ(preparer("#define A 1\nf(){A;}").texte, "<1><1>f(){1 ;}");
}

// Stage 3.
class PrepareIncludes : public PrepareTest {
 protected:
  void TearDown() override {
    for (Objet* f : fonctions) rem_objet(f);
    for (const std::string& n : fichiers) std::remove(n.c_str());
    PrepareTest::TearDown();
  }
  void fonction(const char* s) {
    Objet* f = define_function(s);
    ASSERT_NE(f, nullptr);
    fonctions.push_back(f);
  }
  void fichier(const std::string& nom, const std::string& contenu) {
    FILE* f = std::fopen(nom.c_str(), "wb");
    ASSERT_NE(f, nullptr);
    std::fwrite(contenu.data(), 1, contenu.size(), f);
    std::fclose(f);
    fichiers.push_back(nom);
  }
  std::vector<Objet*> fonctions;
  std::vector<std::string> fichiers;
};

TEST_F(PrepareIncludes, FunctionBodyIsInsertedWithoutItsBracesOrComments) {
  fonction("g(a){x=1;/* note */\ny={2};}");
  Resultat r = preparer("f(){\n#include g( anything\nz=3;}");
  EXPECT_EQ(r.r, 0) << r.sortie;
  // The origin mark goes with the rewriting; the body's newline carries
  // the counter of the including text.
  EXPECT_EQ(r.texte, "<1>f(){<1>x =1;<1>y ={2};<2>z =3;}");
}

TEST_F(PrepareIncludes, NestedIncludesResolve) {
  fonction("h(){w=0;}");
  fonction("g(){\n#include h(\nx=1;}");
  Resultat r = preparer("f(){\n#include g(\ny=2;}");
  EXPECT_EQ(r.r, 0) << r.sortie;
  EXPECT_EQ(r.texte, "<1>f(){<1><1>w =0;<1>x =1;<2>y =2;}");
}

TEST_F(PrepareIncludes, FileIsReadWholeWithItsLineEndsAsMarks) {
  fichier("prepare_inc_a.txt", "a=1;/* c\n*/\r\nb=\"/*\";\n#include \"prepare_inc_b.txt\"\n");
  fichier("prepare_inc_b.txt", "c=3;");
  Resultat r = preparer("f(){\n\n#include \"prepare_inc_a.txt\" rest\nd=4;}");
  EXPECT_EQ(r.r, 0) << r.sortie;
  EXPECT_EQ(r.texte, "<1>f(){<1><2>a =1;<2>b =\"/*\";<2>c =3;<3>d =4;}");
  EXPECT_EQ(preparer("f(){\n#include <prepare_inc_b.txt>\n}").texte, "<1>f(){<1>c =3;<2>}");
}

TEST_F(PrepareIncludes, MissingSourcesAndUnknownDirectivesAreErrors) {
  Resultat r = preparer("f(){\n#include nosuch(\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(contient(r.sortie, "func nosuch NOT FOUND")) << r.sortie;
  r = preparer("f(){\n#include \"prepare_no_such_file\"\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_TRUE(contient(r.sortie, "prepare_no_such_file:  READ ERROR")) << r.sortie;
  r = preparer("f(){\n#pragma once\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_TRUE(contient(r.sortie, "pragma:  UNKNOWN DIRECTIVE")) << r.sortie;
  // A "#" inside a string is no directive.
  EXPECT_EQ(preparer("f(){s=\"#pragma\";}").r, 0);
}

TEST_F(PrepareIncludes, AFunctionThatIncludesItselfStops) {
  fonction("loop(){x;\n#include loop(\n}");
  Resultat r = preparer("f(){\n#include loop(\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_TRUE(contient(r.sortie, "#include:  OVERFLOW")) << r.sortie.substr(0, 200);
}

// Stage 4.
using PrepareBrackets = PrepareTest;

TEST_F(PrepareBrackets, AClosingBracketTooManyNamesTheFirstCounterThatIsOff) {
  struct Cas {
    const char* source;
    const char* paire;
  } cas[] = {{"f(){a=(1));}", "()"}, {"f(){a=[1]];}", "[]"}, {"f(){a=1;}}", "{}"},
             {"f(){a=(1];}", "()"}};
  for (const Cas& c : cas) {
    Resultat r = preparer(c.source);
    EXPECT_LT(r.r, 0) << c.source;
    EXPECT_EQ(r.sortie.rfind(std::string(c.paire) + " PATENTHESIS ERROR ()", 0), 0u) << r.sortie;
    // A one-line function shows that line, though its mark says 1.
    EXPECT_TRUE(contient(r.sortie, "func f line 1\n ------------------------------\n" + std::string(c.source)));
  }
  // Brackets inside strings do not count, and open ones are left to the compiler.
  EXPECT_EQ(preparer("f(){s=\")]}\";}").r, 0);
  EXPECT_EQ(preparer("f(){a=(1;").r, 0);
}

// Stages 5 and 8: labels and goto.
using PrepareLabels = PrepareTest;

TEST_F(PrepareLabels, LabelsBecomeOrdinalsAndGotoTakesThem) {
  EXPECT_EQ(preparer("f(){a: x=1; b:goto a; goto b;}").texte,
            "<1>f(){E0: x =1; E1:goto 0; goto 1;}");
  // A keyword used as a label is still a label.
  EXPECT_EQ(preparer("f(){while: goto while;}").texte, "<1>f(){E0: goto 0;}");
  // A label-like word in a string is entered, harmlessly, and takes an ordinal.
  EXPECT_EQ(preparer("f(){s=\"t: x\"; e: goto e;}").texte, "<1>f(){s =\"t: x\"; E1: goto 1;}");
}

TEST_F(PrepareLabels, GotoToAnUnknownLabelIsAnError) {
  Resultat r = preparer("f(){\nx=1;\ngoto nowhere;\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.sortie.rfind("nowhere:  NO LABEL FOUND\n", 0), 0u) << r.sortie;
  EXPECT_TRUE(contient(r.sortie, "func f line 2\n"));
}

// Stage 6.
using PrepareMacros = PrepareTest;

TEST_F(PrepareMacros, DefinitionsAreExpandedAtOnceAndSubstitutedOutsideQuotes) {
  Resultat r = preparer("f(){\n#define A 1\n#define B A+A  \nx=B; s=\"B\"; c='B';}");
  EXPECT_EQ(r.r, 0) << r.sortie;
  EXPECT_EQ(r.texte, "<1>f(){<3>x =1+1 ; s =\"B\"; c ='B';}");
  // A later definition does not reach back into an earlier one.
  EXPECT_EQ(preparer("f(){\n#define A B\n#define B 2\nx=A;}").texte, "<1>f(){<3>x =B ;}");
  // In the replacement, a backslash inside a string goes.
  EXPECT_EQ(preparer("f(){\n#define S \"a\\qb\"\nx=S;}").texte, "<1>f(){<1><2>x =\"aqb\" ;}");
}

TEST_F(PrepareMacros, MacroThatExpandsToItselfFailsWithOverflow) {
  for (const char* s : {"f(){\n#define A A\n}", "f(){\n#define A x A x\n}",
                        "f(){\n#define A B\n#define B A\n}"}) {
    Resultat r = preparer(s);
    EXPECT_LT(r.r, 0) << s;
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(contient(r.sortie, "A:  OVERFLOW") || contient(r.sortie, "B:  OVERFLOW")) << r.sortie;
  }
}

TEST_F(PrepareMacros, DefineWithoutNameIsAnError) {
  Resultat r = preparer("f(){\n#define\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_TRUE(contient(r.sortie, "DIRECTIVE ERROR"));
  EXPECT_LT(preparer("f(){\n#ifdef\n}").r, 0);
  r = preparer("f(){\n#define -X 1\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_TRUE(contient(r.sortie, "ILLEGAL NAME"));
}

TEST_F(PrepareMacros, ConsoleMacrosAreGlobalAndOutliveTheLine) {
  EXPECT_EQ(preparer("{\n#define GG 7\n}", true).r, 0);
  EXPECT_EQ(preparer("{x=GG;}", true).texte, "<1>{x =7 ;}");
  EXPECT_EQ(preparer("f(){x=GG;}").texte, "<1>f(){x =7 ;}");
  // The global table wins over the function's own.
  EXPECT_EQ(preparer("f(){\n#define GG 8\nx=GG;}").texte, "<1>f(){<1><2>x =7 ;}");
}

TEST_F(PrepareMacros, IfdefSeesNamesDefinedByEarlierSuccessfulCompiles) {
  const char* s = "f(){\n#define D 1\n#ifdef D\nx;\n#endif\ny;}";
  Resultat r = preparer(s);
  EXPECT_EQ(r.r, 0) << r.sortie;
  EXPECT_EQ(r.texte, "<1>f(){<1><2>" + std::string(26, ' ') + "<5>y ;}");
  EXPECT_TRUE(nom_defini("D"));
  EXPECT_EQ(preparer(s).texte, "<1>f(){<3>x ;<5>y ;}");
  // A failing compile adds nothing.
  EXPECT_LT(preparer("f(){\n#define E 1\ngoto z;}").r, 0);
  EXPECT_FALSE(nom_defini("E"));
  vider_noms_definis();
  EXPECT_FALSE(nom_defini("D"));
}

TEST_F(PrepareMacros, IfdefWithoutEndifFailsAndDoesNotHang) {
  Resultat r = preparer("f(){\n#ifdef X\nx;\n}");
  EXPECT_LT(r.r, 0);
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(contient(r.sortie, "#endif:  MISSING")) << r.sortie;
  EXPECT_TRUE(contient(r.sortie, "func f line 1\n"));
}

// Stage 7.
using PrepareAlias = PrepareTest;

TEST_F(PrepareAlias, WordsOfTheTableAreReplacedWhenAliasIsOn) {
  lang().alias_text = "pr=print\nsq=sqrt(2)\r\n";
  lang().alias_exists = true;
  Yes(KW_alias) = 1;
  EXPECT_EQ(preparer("{pr sq; prx \"pr\";}", true).texte, "<1>{print sqrt(2); prx \"pr\";}");
  Yes(KW_alias) = 0;
  EXPECT_EQ(preparer("{pr sq;}", true).texte, "<1>{pr sq ;}");
  Yes(KW_alias) = 1;
  lang().alias_exists = false;
  EXPECT_EQ(preparer("{pr sq;}", true).texte, "<1>{pr sq ;}");
}

// Stage 8.
using PrepareRewrite = PrepareTest;

TEST_F(PrepareRewrite, IncrementsAreParenthesised) {
  EXPECT_EQ(preparer("{x++;}", true).texte, "<1>{(x++);}");
  EXPECT_EQ(preparer("{++x;}", true).texte, "<1>{(++x);}");
  EXPECT_EQ(preparer("{--x; y--;}", true).texte, "<1>{(--x); (y--);}");
  EXPECT_EQ(preparer("{x + +y;}", true).texte, "<1>{x + +y ;}");
  EXPECT_EQ(preparer("{a--b;}", true).texte, "<1>{(a--)b ;}");
  EXPECT_EQ(preparer("{x=1++;}", true).texte, "<1>{x =1++;}");
}

TEST_F(PrepareRewrite, CaseAndDefaultBecomeMarkers) {
  EXPECT_EQ(preparer("{switch (n) {case 3: a; case(n+1) : b; default: c;}}", true).texte,
            "<1>{switch(n){:3; a ; :(n+1); b ; :: c ;}}");
  EXPECT_EQ(preparer("{case 'c';}", true).texte, "<1>{:'c';}");
  for (const char* s : {"f(){case 3\n;}", "f(){case :}", "f(){case 3"}) {
    Resultat r = preparer(s);
    EXPECT_LT(r.r, 0) << s;
    EXPECT_TRUE(contient(r.sortie, "case constante: ou case(expr):")) << r.sortie;
  }
}

TEST_F(PrepareRewrite, AutoBecomesOneAssignmentPerName) {
  EXPECT_EQ(preparer("{auto a;}", true).texte, "<1>{a=0;}");
  EXPECT_EQ(preparer("{auto a[3];}", true).texte, "<1>{a[3]=0;}");
  EXPECT_EQ(preparer("{auto a, b = 2 ,c;x;}", true).texte, "<1>{a=0;b=2;c=0;x ;}");
  EXPECT_EQ(preparer("{auto v=f(1,2),w\n}", false).texte, "<1>{v=f(1,2);w=0;<1>}");
}

TEST_F(PrepareRewrite, ControlHeadsAreCopiedWholeAndTheirLineMarksDropped) {
  EXPECT_EQ(preparer("f(){if (a==(b))\n  {b;}\nelse x;}").texte, "<1>f(){if(a==(b)){b ;}<2>else  x ;}");
  EXPECT_EQ(preparer("{for (i=0;i<3;i++) ;}", true).texte, "<1>{for(i=0;i<3;i++);}");
  EXPECT_EQ(preparer("{while(x);}", true).texte, "<1>{while(x);}");
  Resultat r = preparer("{if (a", true);
  EXPECT_LT(r.r, 0);
  EXPECT_TRUE(contient(r.sortie, "SYNTAX ERROR"));
}

TEST_F(PrepareRewrite, BareWordCommandsKeepTheirArguments) {
  EXPECT_EQ(preparer("{help print if; x++;}", true).texte, "<1>{help print if; (x++);}");
  EXPECT_EQ(preparer("f(){status  yes ring\nx;}").texte, "<1>f(){status yes ring<1>x ;}");
}

TEST_F(PrepareRewrite, SemicolonsDirectivesAndGroups) {
  EXPECT_EQ(preparer("{a;;  ; b;}", true).texte, "<1>{a ; b ;}");
  EXPECT_EQ(preparer("f(){a;\n\n;b;}").texte, "<1>f(){a ;<1><2>b ;}");
  EXPECT_EQ(preparer("{f (a, b [1]) ; x = $y.z ~ 1.5e3;}", true).texte,
            "<1>{f(a, b [1]) ; x = $y.z ~ 1.5e3 ;}");
}

TEST_F(PrepareRewrite, StringEscapesKeepTheirQuirks) {
  // \" is byte 1; \n \t \b; decimal codes; \( stays; any other escaped
  // character is written and read again.
  EXPECT_EQ(preparer("{s=\"a\\\"b\\n\\t\\b\\65\\(\";}", true).texte,
            "<1>{s =\"a<q>b\n\t\bA\\(\";}");
  EXPECT_EQ(preparer("{s=\"\\q\";}", true).texte, "<1>{s =\"qq\";}");
  EXPECT_EQ(preparer("{s=\"\\\\n\";}", true).texte, "<1>{s =\"\\\n\";}");
  EXPECT_EQ(preparer("{f(\"x\\ty\");}", true).texte, "<1>{f(\"x\ty\");}");
  EXPECT_EQ(preparer("{s=\"\\0\";}", true).texte, "<1>{s =\"\";}");
}

// Overflow and retry.
using PrepareOverflow = PrepareTest;

TEST_F(PrepareOverflow, TooSmallAreaIsDoubledUntilTheTextFits) {
  std::string s = "f(){\n#define L abcdefghijklmnopqrstuvwxyz+abcdefghijklmnopqrstuvwxyz\n";
  for (int i = 0; i < 300; i++) s += "x=L;\n";
  s += "}";
  Resultat petit = preparer(s, false, 600);
  Resultat grand = preparer(s, false, 200000);
  EXPECT_EQ(petit.r, 0);
  EXPECT_GE(petit.doublements, 2);
  EXPECT_EQ(petit.sortie, "");
  EXPECT_EQ(grand.doublements, 0);
  EXPECT_EQ(petit.texte, grand.texte);
  EXPECT_TRUE(contient(petit.texte, "x =abcdefghijklmnopqrstuvwxyz+abcdefghijklmnopqrstuvwxyz ;"));
}

TEST_F(PrepareOverflow, AreaAtTheCeilingIsAnErrorNotARetry) {
  Source src("f(){" + std::string(2000, 'x') + "}");
  bloc work = alloue_bloc(200);
  int ancien = lang().Dim_com, status = -5;
  lang().Dim_com = DIM_COM_MAX;
  Capture out;
  EXPECT_LT(compile_passe_1(&src.obj, work, work + 80, &status), 0);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(contient(out.take(), "compile_passe_1:  OVERFLOW"));
  lang().Dim_com = ancien;
  libere_bloc(work);
}

// Error reports.
class PrepareErrors : public PrepareTest {
 protected:
  void contexte(float n) { vocab().current[KW_error][0] = n; }
};

TEST_F(PrepareErrors, OffendingLineIsPrintedBetweenRules) {
  ASSERT_NE(vocab().current[KW_error], nullptr);
  contexte(0);
  const std::string regle = " ------------------------------\n";
  Resultat r = preparer("f(){\nx=1;\ngoto nowhere;\n}");
  EXPECT_EQ(r.sortie, "nowhere:  NO LABEL FOUND\nfunc f line 2\n" + regle + "goto nowhere;\n" + regle);
  contexte(1);
  r = preparer("f(){\nx=1;\ngoto nowhere;\ny;\nz;\n}");
  EXPECT_EQ(r.sortie, "nowhere:  NO LABEL FOUND\nfunc f line 2\nx=1;\n" + regle + "goto nowhere;\n" + regle + "y;\n");
  // A console text reports line 0, and context stops at the ends of the text.
  contexte(3);
  r = preparer("{goto nowhere;}", true);
  EXPECT_EQ(r.sortie, "nowhere:  NO LABEL FOUND\n line 0\n" + regle + "{goto nowhere;}\n" + regle);
}

TEST_F(PrepareErrors, ObjectWithoutSourceIsReportedNotFollowed) {
  Objet o;
  o.kind = KW_func;
  Capture out;
  bloc work = alloue_bloc(1000);
  int status = -5;
  EXPECT_LT(compile_passe_1(&o, work, work + 880, &status), 0);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(contient(out.take(), "EMPTY"));
  libere_bloc(work);
}

// Bad input of any kind: a message, never a crash, a hang or a stray read.
using PrepareRobustness = PrepareTest;

TEST_F(PrepareRobustness, RandomBytesGiveATextOrAMessage) {
  std::mt19937 alea(1234);
  const char pieces[] = "{}()[];:\"'\\/*#+-=, \n\t\1\2\3\xff abcx0123";
  for (int essai = 0; essai < 1500; essai++) {
    std::string s;
    int n = static_cast<int>(alea() % 300);
    for (int i = 0; i < n; i++)
      s += essai % 2 ? static_cast<char>(alea() % 255 + 1) : pieces[alea() % (sizeof pieces - 1)];
    if (essai % 3 == 0) s = "#include g(\n#define a b\n#ifdef q\n" + s;
    Resultat r = preparer(s, essai % 4 == 0, 140 + static_cast<int>(alea() % 200));
    if (r.r < 0) {
      EXPECT_EQ(r.status, 0);
      EXPECT_FALSE(r.sortie.empty()) << "silent failure on essai " << essai;
    }
  }
}

TEST_F(PrepareRobustness, SourceWithoutNulAndVeryLongTextsAreSafe) {
  // A CHAR block filled to its last byte: reading stops at its end.
  Source plein("f(){abc;}xyz");
  std::memset(text(plein.obj.local), 'q', static_cast<size_t>(size(plein.obj.local) - 4) * 4);
  std::memcpy(text(plein.obj.local), "f(){", 4);
  EXPECT_EQ(preparer(&plein.obj).r, 0);
  // A word of a million characters is refused; a million characters of statements compile.
  Resultat mot = preparer("f(){" + std::string(1000000, 'a') + ";}", false, 2600000);
  EXPECT_LT(mot.r, 0);
  EXPECT_TRUE(contient(mot.sortie, "OVERFLOW"));
  std::string lignes = "f(){";
  while (lignes.size() < 1000000) lignes += "x=1;\n";
  Resultat r = preparer(lignes + "}", false, 2600000);
  EXPECT_EQ(r.r, 0);
  EXPECT_EQ(r.doublements, 0);
  EXPECT_TRUE(contient(r.texte, "<9999>x =1;<9999>}"));
}

}  // namespace
