// Lexical routines, the marks of prepared text and the symbol tables.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "language/lexer.h"
#include "language/symbols.h"
#include "support/capture.h"

namespace {

class Lexer : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    Yes(KW_ring) = 0;
  }
  // The word read at the start of `s`, its return value, and what is left.
  struct Lu {
    int n;
    std::string mot, reste;
  };
  static Lu lire(const char* s) {
    char mot[LONG_MOT];
    const char* p = s;
    int n = lire_mot(mot, &p, LONG_MOT);
    return {n, n >= 0 ? mot : "", p};
  }
};

TEST_F(Lexer, LireMotEndsAtEachSeparatorButNotAtDotsQuotesOrTilde) {
  for (const char* sep : {"!", "#", "%", "&", "(", ")", "*", "+", ",", "-", "/", ":", ";", "<", "=",
                          ">", "[", "]", "^", "{", "|", "}", " ", "\t", "\n", "\3"}) {
    std::string s = std::string("ab") + sep + "cd";
    Lu r = lire(s.c_str());
    EXPECT_EQ(r.n, 3) << "separator " << int(sep[0]);
    EXPECT_EQ(r.mot, "ab");
    EXPECT_EQ(r.reste, std::string(sep) + "cd");
  }
  for (const char* s : {"1.5", "a.b", "x\"y", "a$b", "it's", "a?b", "a@b", "a\\b", "a~b"}) {
    Lu r = lire(s);
    EXPECT_EQ(r.mot, s);
    EXPECT_EQ(r.n, static_cast<int>(std::strlen(s)) + 1);
    EXPECT_EQ(r.reste, "");
  }
}

TEST_F(Lexer, LireMotSkipsBlanksAndTellsEmptyFromNoWord) {
  Lu r = lire(" \t word rest");
  EXPECT_EQ(r.n, 5);
  EXPECT_EQ(r.mot, "word");
  EXPECT_EQ(r.reste, " rest");
  // Empty: nothing more in this statement.
  for (const char* s : {"", "  ", "\2name", "\nx", ";x", " {x"}) {
    Lu e = lire(s);
    EXPECT_EQ(e.n, 0) << s;
    EXPECT_EQ(e.mot, "");
  }
  // A separator first: a word of length 0, the cursor before the separator.
  Lu z = lire("  (a)");
  EXPECT_EQ(z.n, 1);
  EXPECT_EQ(z.reste, "(a)");
  // A word never runs into an origin mark.
  EXPECT_EQ(lire("ab\2f").mot, "ab");
}

TEST_F(Lexer, LireMotReportsOverflowPastItsCapacity) {
  Capture out;
  std::string fits(LONG_MOT - 1, 'a'), long_one(LONG_MOT, 'a');
  EXPECT_EQ(lire(fits.c_str()).n, LONG_MOT);
  EXPECT_EQ(out.take(), "");
  EXPECT_EQ(lire(long_one.c_str()).n, -1);
  EXPECT_NE(out.take().find("OVERFLOW"), std::string::npos);
}

TEST_F(Lexer, SauterMotStopsAtTildeAndSignsButNotAtColon) {
  EXPECT_STREQ(sauter_mot("ab:c~d"), "~d");
  EXPECT_STREQ(sauter_mot("1e-5"), "-5");
  EXPECT_STREQ(sauter_mot("a.b\3x"), "\3x");
  EXPECT_STREQ(sauter_mot("abc"), "");
  EXPECT_STREQ(sauter_blancs(" \t x"), "x");
  EXPECT_STREQ(sauter_blancs("\n x"), "\n x");
}

TEST_F(Lexer, ComparerMotMatchesAWordEndingAtASeparator) {
  EXPECT_EQ(comparer_mot("if", "if"), 0);
  EXPECT_EQ(comparer_mot("if", "if (a)"), 0);
  EXPECT_EQ(comparer_mot("if", "if(a)"), 0);
  EXPECT_EQ(comparer_mot("if", "if\tx"), 0);
  EXPECT_NE(comparer_mot("if", "ifx"), 0);
  EXPECT_NE(comparer_mot("if", "if;"), 0);  // ";" may end the word, not follow it
  EXPECT_NE(comparer_mot("ifx", "if"), 0);
  EXPECT_NE(comparer_mot("while", "whale"), 0);
  // A separator in the word against blank or "(" in the text.
  EXPECT_EQ(comparer_mot("f;", "f "), 0);
  EXPECT_EQ(comparer_mot("f+", "f("), 0);
  EXPECT_NE(comparer_mot("f+", "f-"), 0);
}

TEST_F(Lexer, SauterCommentairesCountsLinesAndRefusesAnOpenComment) {
  int ligne = 0;
  const char* s = " \n/* a\nb */ // c\n\t x";
  EXPECT_STREQ(sauter_commentaires(s, &ligne), "x");
  EXPECT_EQ(ligne, 3);
  Capture out;
  ligne = 0;
  EXPECT_EQ(sauter_commentaires(" /* open\n", &ligne), nullptr);
  EXPECT_NE(out.take().find("ERROR COMMENT"), std::string::npos);
  EXPECT_EQ(sauter_commentaires("// to the end", &ligne), nullptr);
  EXPECT_NE(out.take().find("ERROR COMMENT"), std::string::npos);
}

TEST_F(Lexer, ChercherCommandeTriesEverySynonymOfEveryVocabulary) {
  int voc = -1, code = -1;
  EXPECT_EQ(chercher_commande("while", &voc, &code), KW_while);
  EXPECT_EQ(voc, 0);
  EXPECT_EQ(chercher_commande("vol", &voc, &code), KW_vol);
  EXPECT_EQ(voc, 1);
  EXPECT_EQ(code, KW_vol);
  EXPECT_LT(chercher_commande("no_such_word", &voc, &code), 0);
  EXPECT_LT(chercher_commande("", &voc, &code), 0);
  // A name line with synonyms: each one finds the keyword.
  static char ligne[] = "first second";
  const char* ancien = vocab().name[KW_aba];
  vocab().name[KW_aba] = ligne;
  EXPECT_EQ(chercher_commande("second", &voc, &code), KW_aba);
  EXPECT_EQ(chercher_commande("first", &voc, &code), KW_aba);
  vocab().name[KW_aba] = ancien;
}

// Marks.

std::string marques(const Sortie& o) { return std::string(o.debut, o.p); }

TEST_F(Lexer, LineMarksStoreFourDigitsPlusOneAndCollapseFromThreeOn) {
  char tampon[64];
  Sortie o = sortie_sur(tampon, tampon + sizeof tampon);
  marquer_ligne(o, 1);
  EXPECT_EQ(marques(o), std::string("\3\1\1\1\2", 5));
  marquer_ligne(o, 2);  // below 3: both stay
  EXPECT_EQ(o.p - o.debut, 10);
  marquer_ligne(o, 3);  // replaces the mark of line 2
  marquer_ligne(o, 4087);
  EXPECT_EQ(marques(o), std::string("\3\1\1\1\2\3\x05\1\x09\x08", 10));
  EXPECT_EQ(numero_ligne(o.debut + 5), 4087);
  ecrire(o, 'x');
  marquer_ligne(o, 5);  // not directly behind a mark: kept apart
  EXPECT_EQ(o.p - o.debut, 16);
  EXPECT_EQ(ligne_avant(o.debut, o.p, -1), 5);
  EXPECT_EQ(ligne_avant(o.debut, o.debut + 10, -1), 4087);
  EXPECT_EQ(ligne_avant(o.debut, o.debut, -1), -1);
}

TEST_F(Lexer, LineNumbersPast9999StayAt9999) {
  char tampon[16];
  Sortie o = sortie_sur(tampon, tampon + sizeof tampon);
  marquer_ligne(o, 123456);
  EXPECT_EQ(numero_ligne(o.debut), LIGNE_MAX);
  for (int i = 1; i < 5; i++) EXPECT_NE(o.debut[i], 0);
}

TEST_F(Lexer, MarksAreSteppedWholeButNeverPastTheEnd) {
  char tampon[200];
  Sortie o = sortie_sur(tampon, tampon + sizeof tampon);
  marquer_origine(o, "lib(x) more");
  ASSERT_EQ(o.p - o.debut, LONG_MARQUE_ORIGINE);
  EXPECT_EQ(std::string(o.debut, 5), "\2lib ");
  terminer(o);
  EXPECT_EQ(longueur_marque(tampon), LONG_MARQUE_ORIGINE);
  EXPECT_EQ(std::strlen(tampon), static_cast<size_t>(LONG_MARQUE_ORIGINE));
  EXPECT_EQ(longueur_marque("\3\1\2"), 3);  // cut by the NUL
  EXPECT_EQ(longueur_marque("\2ab"), 3);
  EXPECT_EQ(longueur_marque("x"), 0);
  // A long name is cut so that the mark keeps its size.
  Sortie p = sortie_sur(tampon, tampon + sizeof tampon);
  marquer_origine(p, std::string(300, 'n').c_str());
  EXPECT_EQ(p.p - p.debut, LONG_MARQUE_ORIGINE);
}

TEST_F(Lexer, WriterKeepsItsLastByteForTheNulAndDropsWhatDoesNotFit) {
  char tampon[8];
  std::memset(tampon, '#', sizeof tampon);
  Sortie o = sortie_sur(tampon, tampon + 6);
  ecrire_texte(o, "abcde");
  EXPECT_FALSE(o.plein);
  ecrire(o, 'f');
  EXPECT_TRUE(o.plein);
  EXPECT_TRUE(terminer(o));
  EXPECT_STREQ(tampon, "abcde");
  EXPECT_EQ(tampon[6], '#');
  Sortie q = sortie_sur(tampon, tampon + 6);
  ecrire_texte(q, "abcdefgh");
  EXPECT_TRUE(q.plein);
  EXPECT_EQ(q.p, tampon);
  marquer_ligne(q, 7);
  marquer_ligne(q, 8);
  EXPECT_EQ(tampon[6], '#');
}

// Symbol tables.

class Symbols : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    Yes(KW_ring) = 0;
    ASSERT_EQ(symb_ini(&s, 16), 0);
  }
  void TearDown() override { symb_free(&s); }
  Symboles s;
};

TEST_F(Symbols, EntriesGetOrdinalsInOrderAndAreFoundByKindAndName) {
  EXPECT_EQ(s.table[0], 0);
  EXPECT_EQ(symb_find(&s, 0, "a"), -1);
  EXPECT_EQ(symb_add(&s, C_LABEL, "a"), 0);
  EXPECT_EQ(symb_add_macro(&s, "m", "1+2"), 1);
  EXPECT_EQ(symb_add(&s, R_UNDEFINED, "a"), 2);
  EXPECT_EQ(symb_find(&s, C_LABEL, "a"), 0);
  EXPECT_EQ(symb_find(&s, R_UNDEFINED, "a"), 2);
  EXPECT_EQ(symb_find(&s, 0, "a"), 0);
  EXPECT_EQ(symb_find(&s, C_LABEL, "m"), -1);
  EXPECT_EQ(symb_find(&s, C_MACRO, "m"), 1);
  EXPECT_EQ(s.count, 3);
  // Layout: count, kind, ordinal (non-positive), function, name words + 2, name.
  word* e = symb_entry(&s, 2);
  ASSERT_NE(e, nullptr);
  EXPECT_EQ(symb_kind(e), R_UNDEFINED);
  EXPECT_EQ(e[2], -2);
  EXPECT_EQ(e[4], 3);
  EXPECT_STREQ(symb_name(e), "a");
  EXPECT_EQ(symb_value(e), nullptr);
  EXPECT_EQ(symb_entry(&s, 3), nullptr);
  EXPECT_EQ(s.table[s.used], 0);
  // A macro: third word 2, a length word, then the text.
  word* m = symb_entry(&s, 1);
  EXPECT_EQ(m[2], 2);
  EXPECT_STREQ(symb_macro_text(m), "1+2");
  EXPECT_EQ(m[3 + m[4]], 3);
}

TEST_F(Symbols, ValuesAndFunctionsFollowTheName) {
  word valeur[6] = {6, T_FLOAT, 2, 1, fw(1.5f), fw(-2.0f)};
  Objet f;
  int n = symb_add(&s, C_STATIC, "longer_name", valeur, &f);
  word* e = symb_entry(&s, n);
  bloc v = symb_value(e);
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(std::memcmp(v, valeur, sizeof valeur), 0);
  EXPECT_EQ(handle_objet(e[3]), &f);
  EXPECT_EQ(e[0], 5 + 3 + 6);
  objet_handle_forget(&f);
}

TEST_F(Symbols, FullTableDoublesAndKeepsItsEntries) {
  Capture out;
  for (int i = 0; i < 100; i++) ASSERT_EQ(symb_add(&s, C_LABEL, ("label" + std::to_string(i)).c_str()), i);
  EXPECT_GE(s.capacity, s.used + 1);
  EXPECT_EQ(s.capacity % 16, 0);
  for (int i = 0; i < 100; i++) EXPECT_EQ(symb_find(&s, C_LABEL, ("label" + std::to_string(i)).c_str()), i);
  EXPECT_EQ(out.take(), "");  // reported only when `edit` is above 1
  Yes(KW_edit) = 2;
  int capacite = s.capacity;
  while (s.capacity == capacite) symb_add(&s, C_LABEL, "more");
  EXPECT_NE(out.take().find("Reallocation: "), std::string::npos);
}

TEST_F(Symbols, NameStartingWithASignIsRefused) {
  Capture out;
  EXPECT_EQ(symb_add(&s, C_FORMEL, "-x"), -1);
  EXPECT_NE(out.take().find("ILLEGAL NAME"), std::string::npos);
  EXPECT_EQ(symb_add_macro(&s, "+y", "1"), -1);
  EXPECT_EQ(s.count, 0);
  EXPECT_EQ(s.table[0], 0);
}

}  // namespace
