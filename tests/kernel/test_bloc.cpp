// The allocator, its counters and switches, copying, deep release and
// duplication, the debug registry, the memory check and the handles.
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/property.h"
#include "kernel/values.h"
#include "language/code.h"
#include "bloc_fixture.h"

class BlocAlloc : public BlocFixture {};
class BlocRelease : public BlocFixture {};
class BlocCopy : public BlocFixture {};
class BlocDup : public BlocFixture {};
class BlocRegistry : public BlocFixture {};
class BlocCheck : public BlocFixture {};
class BlocHandles : public BlocFixture {};

TEST_F(BlocAlloc, SetsSizeWordAndCountsLiveBlocksAndWords) {
  const long long words0 = bloc_state().total_words;
  bloc b = alloue_bloc(5);
  bloc p = alloue_bloc(-6);
  ASSERT_TRUE(b && p);
  EXPECT_EQ(b[0], 5);
  EXPECT_EQ(p[0], -6);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 2);
  EXPECT_EQ(bloc_state().total_words, words0 + 11);
  libere_bloc(p);  // permanent: refused
  EXPECT_EQ(bloc_state().live_blocks, live0 + 2);
  libere_bloc(b);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 1);
  EXPECT_EQ(bloc_state().total_words, words0 + 11);  // never lowered
  p[0] = 6;
  libere_bloc(p);
  expect_all_released();
}

TEST_F(BlocAlloc, ZeroWordsIsReportedWithItsByteCount) {
  EXPECT_EQ(alloue_bloc(0), nullptr);
  const std::string s = said();
  EXPECT_EQ(s.rfind("0: ", 0), 0u) << s;
  EXPECT_NE(s.find("MALLOC ERROR"), std::string::npos) << s;
  expect_all_released();
}

TEST_F(BlocAlloc, PlainMemoryIsCountedAndDuplicatedWhole) {
  char* s = static_cast<char*>(alloue_mem(7));
  std::strcpy(s, "abcdef");
  EXPECT_EQ(bloc_state().live_blocks, live0 + 1);
  char* d = static_cast<char*>(dup_mem(s));
  EXPECT_STREQ(d, "abcdef");
  EXPECT_NE(d, s);
  libere_mem(s);
  libere_mem(d);
  expect_all_released();
}

TEST_F(BlocRelease, NoRemKeepsTheCountRisingAndYesRemOnlyActsAfterwards) {
  Yes(KW_rem) = 0;
  bloc a = alloue_bloc(4);
  libere_bloc(a);
  libere_valeur(a);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 1);
  EXPECT_EQ(a[0], 4);  // still ours: nothing was given back
  Yes(KW_rem) = 1;
  libere_bloc(a);
  expect_all_released();
}

TEST_F(BlocRelease, PermanentBlockIsLeftAloneByDeepRelease) {
  bloc p = alloue_bloc(-5);
  p[1] = T_FLOAT, p[2] = 1, p[3] = 1, setf(p, 0, 2.5f);
  libere_valeur(p);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 1);
  EXPECT_EQ(F(p, 0), 2.5f);
  p[0] = 5;
  libere_valeur(p);
  expect_all_released();
}

TEST_F(BlocRelease, TagsOutsideTheCountedSetAreFreedWithoutLoweringTheCount) {
  bloc l = alloue_bloc(5);
  l[1] = T_LONG, l[2] = 1, l[3] = 1, l[4] = 9;
  const word h = bloc_handle(l);
  libere_valeur(l);
  EXPECT_EQ(handle_bloc(h), nullptr);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 1);
  bloc_state().live_blocks = live0;
}

TEST_F(BlocRelease, PropertyListGoesDeepWithObjetsAndPrivateChain) {
  Objet* o = objet(1);
  set_val_1(o, KW_poi, 3);
  // A property holding an OBJETS list of two objects made elsewhere.
  Objet* a = cre_objet(&head, KW_vol, 0, nullptr, "a", 2);
  Objet* b = cre_objet(&head, KW_vol, 0, nullptr, "b", 3);
  word objs[6] = {6, T_OBJETS, 2, 1, objet_handle(a), objet_handle(b)};
  set_propr_1(o, KW_attach, objs);
  // And one holding a private chain of one object.
  Objet* priv = new Objet{};
  bloc_state().object_count++;
  chaine_ini(priv);
  cre_objet(priv, KW_vol, 0, nullptr, "p", 9);
  word ch[5] = {5, T_CHAINE, 1, 1, objet_handle(priv)};
  set_propr_1(o, KW_fac, ch);
  ASSERT_EQ(np(o->local), 3);
  ASSERT_EQ(head.next->next->next, b);
  bloc list = o->local;
  o->local = nullptr;
  EXPECT_EQ(libere_valeur(list), 0);
  EXPECT_EQ(head.next, o);  // a and b were unlinked and removed
  EXPECT_EQ(o->next, nullptr);
  rem_objet(o);
  expect_all_released();
}

TEST_F(BlocCopy, SizeZeroWritesOneZeroWordAndTokensTwo) {
  word src0[2] = {0, 77};
  word dst[4] = {9, 9, 9, 9};
  EXPECT_EQ(copie_bloc(dst, src0), 1);
  EXPECT_EQ(dst[0], 0);
  EXPECT_EQ(dst[1], 9);
  word tok[3] = {C_COMMAND, 230, 55};
  word d2[4] = {9, 9, 9, 9};
  EXPECT_EQ(copie_bloc(d2, tok), 2);
  EXPECT_EQ(d2[0], C_COMMAND);
  EXPECT_EQ(d2[1], 230);
  EXPECT_EQ(d2[2], 9);
}

TEST_F(BlocCopy, CopiesExactlySizeWordsAndNothingOntoItself) {
  word v[6] = {5, T_FLOAT, 1, 1, fw(3.0f), 123};
  word d[7] = {};
  d[5] = 42;
  EXPECT_EQ(copie_bloc(d, v), 5);
  EXPECT_TRUE(std::equal(v, v + 5, d));
  EXPECT_EQ(d[5], 42);
  EXPECT_EQ(copie_bloc(v, v), 0);
  EXPECT_EQ(F(v, 0), 3.0f);
}

TEST_F(BlocDup, FlatValueIsAnEqualFreshBlock) {
  word v[7] = {7, T_FLOAT, 3, 1, fw(1), fw(2), fw(3)};
  bloc d = dup_bloc(v);
  ASSERT_NE(d, nullptr);
  EXPECT_TRUE(std::equal(v, v + 7, d));
  EXPECT_EQ(dup_bloc(nullptr), nullptr);
  libere_valeur(d);
  expect_all_released();
}

TEST_F(BlocDup, TokensNilAndIndirect) {
  word nil[2] = {T_NIL, 0};
  bloc n = dup_bloc(nil);
  ASSERT_NE(n, nullptr);
  EXPECT_EQ(n[0], 4);
  EXPECT_EQ(n[1], T_NIL);
  EXPECT_EQ(n[2], 0);
  libere_valeur(n);

  word val[5] = {5, T_FLOAT, 1, 1, fw(8)};
  Objet* o = cre_objet(&head, KW_vol, 0, val, "x", 1);
  word ind[2] = {T_INDIRECT, objet_handle(o)};
  bloc c = dup_bloc(ind);
  ASSERT_NE(c, nullptr);
  EXPECT_NE(c, o->local);
  EXPECT_EQ(F(c, 0), 8.0f);
  libere_valeur(c);

  Objet* empty = objet(2);
  ind[1] = objet_handle(empty);
  said();
  EXPECT_EQ(dup_bloc(ind), nullptr);
  EXPECT_NE(said().find("EMPTY"), std::string::npos);
  word bad[2] = {-5, 0};
  EXPECT_EQ(dup_bloc(bad), nullptr);
  EXPECT_NE(said().find("-5: "), std::string::npos);
}

TEST_F(BlocDup, PropertyListSlotsAreCompactedAndDeep) {
  Objet* o = objet(1);
  set_val_1(o, KW_poi, 2)[4] = fw(5);
  set_val_1(o, KW_fac, 1);
  set_val_1(o, KW_col, 1);
  bloc list = o->local;
  const word mid = list[5];
  list[5] = 0;  // an unused slot in the middle
  bloc d = dup_bloc(list);
  list[5] = mid;
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(np(d), 3);
  EXPECT_NE(d[4], 0);
  EXPECT_NE(d[5], 0);
  EXPECT_EQ(d[6], 0);
  EXPECT_NE(d[4], list[4]);
  EXPECT_EQ(handle_bloc(d[5])[5], KW_col);
  EXPECT_EQ(F(get_val_1(d, KW_poi), 0), 5.0f);
  libere_valeur(d);
  EXPECT_EQ(F(get_val_1(o->local, KW_poi), 0), 5.0f);  // source intact
  rem_objet(o);
  expect_all_released();
}

TEST_F(BlocDup, ObjetsAreDuplicatedAsRecords) {
  word val[5] = {5, T_FLOAT, 1, 1, fw(8)};
  Objet* a = cre_objet(&head, KW_vol, 0, val, "a", 4);
  word objs[6] = {6, T_OBJETS, 2, 1, 0, objet_handle(a)};
  bloc d = dup_bloc(objs);
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(d[4], 0);
  Objet* c = handle_objet(d[5]);
  ASSERT_NE(c, nullptr);
  EXPECT_NE(c, a);
  EXPECT_STREQ(c->name, "a");
  EXPECT_EQ(c->id, 4);
  EXPECT_NE(c->local, a->local);
  EXPECT_EQ(F(c->local, 0), 8.0f);
  EXPECT_EQ(bloc_state().object_count, objects0 + 2);
  libere_valeur(d);
  EXPECT_EQ(bloc_state().object_count, objects0 + 1);
  EXPECT_EQ(head.next, a);
}

TEST_F(BlocRegistry, FillsLowestZeroSlotAndReportsOverflow) {
  ASSERT_EQ(pile_alloc_ini(2), 0);
  bloc a = alloue_bloc(4), b = alloue_bloc(4);
  EXPECT_EQ(said(), "");
  bloc c = alloue_bloc(4);
  ASSERT_NE(c, nullptr);  // returned, though unregistered
  EXPECT_EQ(said(), "Debordement de Pile_alloc\n");
  BlocState& s = bloc_state();
  libere_bloc(a);
  EXPECT_EQ(s.pile_debut[0], nullptr);
  EXPECT_EQ(s.pile_libre, s.pile_debut + 2);
  bloc e = alloue_bloc(4);
  EXPECT_EQ(s.pile_debut[0], e);
  libere_bloc(b);  // the top slot lowers the free pointer
  EXPECT_EQ(s.pile_libre, s.pile_debut + 1);
  libere_bloc(c);
  EXPECT_NE(said().find(": Deja libere\n"), std::string::npos);
  EXPECT_EQ(s.live_blocks, live0 + 2);
  libere_bloc(e);
  libere_bloc(e);
  EXPECT_NE(said().find(": Deja libere\n"), std::string::npos);
  pile_alloc_fin();
  libere_bloc(c);
  expect_all_released();
}

TEST_F(BlocRegistry, UncountedReleaseEmptiesItsSlotToo) {
  ASSERT_EQ(pile_alloc_ini(4), 0);
  bloc l = alloue_bloc(5);
  l[1] = T_LONG, l[2] = 1, l[3] = 1, l[4] = 0;
  EXPECT_EQ(bloc_state().pile_debut[0], l);
  libere_valeur(l);
  EXPECT_EQ(bloc_state().pile_libre, bloc_state().pile_debut);
  EXPECT_EQ(said(), "");
  bloc_state().live_blocks = live0;
}

TEST_F(BlocCheck, WellFormedBlocksPassSilently) {
  word h[4 + 5 + 6] = {15, T_HYBRIDE, 2, 1, 5, T_FLOAT, 1, 1, fw(1), 6, T_CHAR, 2, 1, 0, 0};
  EXPECT_EQ(verifie_bloc(h), 0);
  word s[64];
  seg_ini(s, nullptr);
  seg_add(s, nullptr, KW_col);
  seg_add_f2(s, nullptr, KW_vol, 1, 2);
  EXPECT_EQ(verifie_bloc(s), 0);
  Objet* o = objet();
  set_val_1(o, KW_poi, 3);
  EXPECT_EQ(verifie_bloc(o->local), 0);
  EXPECT_EQ(said(), "");
}

TEST_F(BlocCheck, SizesThatDontAddUpAreReported) {
  word h[4 + 5 + 6] = {15, T_HYBRIDE, 2, 1, 5, T_FLOAT, 1, 1, fw(1), 6, T_CHAR, 2, 1, 0, 0};
  h[9] = 7;  // second sub-block claims one word too many
  EXPECT_EQ(verifie_bloc(h), -1);
  EXPECT_EQ(said(), "9: BLOC MAL FORMATE\ndim = 15\n");
  Objet* o = objet();
  bloc v = set_val_1(o, KW_poi, 3);
  v[2] = 4;  // np no longer matches the size
  EXPECT_EQ(verifie_bloc(o->local), -1);
  EXPECT_NE(said().find("BLOC MAL FORMATE"), std::string::npos);
}

TEST_F(BlocHandles, ResolveBothWaysAndDieWithTheirBlock) {
  EXPECT_EQ(handle_bloc(0), nullptr);
  EXPECT_EQ(bloc_handle(nullptr), 0);
  bloc b = alloue_bloc(4);
  const word h = bloc_handle(b);
  EXPECT_GT(h, 0);
  EXPECT_EQ(bloc_handle(b), h);
  EXPECT_EQ(handle_bloc(h), b);
  Objet* o = objet();
  const word ho = objet_handle(o);
  EXPECT_EQ(handle_objet(ho), o);
  EXPECT_EQ(handle_bloc(ho), nullptr);  // an object handle is no block
  EXPECT_EQ(handle_objet(h), nullptr);
  libere_bloc(b);
  EXPECT_EQ(handle_bloc(h), nullptr);
  rem_objet(o);
  EXPECT_EQ(handle_objet(ho), nullptr);
  expect_all_released();
}
