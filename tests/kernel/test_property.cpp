// Properties on objects: the list, lookups in their three shapes,
// creation and replacement, removal, keys, and growth of a value.
#include "bloc_fixture.h"
#include "kernel/property.h"
#include "kernel/values.h"

class PropertyList : public BlocFixture {};
class PropertyLookup : public BlocFixture {};
class PropertySet : public BlocFixture {};
class PropertyRemove : public BlocFixture {};
class PropertyGrow : public BlocFixture {};

// A property of the given keys holding build_float(x), appended.
static bloc ajoute(Objet* o, std::initializer_list<int> keys, float x) {
  const int n = static_cast<int>(keys.size());
  bloc p = ajoute_propriete(o, 2 * n + 4 + 5);
  propr_key_k(p, n, keys.begin());
  build_float(propr_val(p), nullptr, x);
  return p;
}

TEST_F(PropertyList, EachAdditionGrowsTheListByOneSlotKeepingOrder) {
  Objet* o = objet();
  ASSERT_EQ(o->local, nullptr);
  bloc p1 = ajoute_propriete(o, 11);
  ASSERT_NE(p1, nullptr);
  EXPECT_EQ(p1[0], 11);
  EXPECT_EQ(o->local[0], 5);
  EXPECT_EQ(o->local[1], T_PROPRIETES);
  EXPECT_EQ(o->local[2], 1);
  EXPECT_EQ(o->local[3], 1);
  bloc p2 = ajoute_propriete(o, 11);
  EXPECT_EQ(o->local[0], 6);
  EXPECT_EQ(o->local[2], 2);
  EXPECT_EQ(handle_bloc(o->local[4]), p1);
  EXPECT_EQ(handle_bloc(o->local[5]), p2);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 3);  // the old lists went
  for (bloc p : {p1, p2}) propr_key_1(p, KW_col), build_float(propr_val(p), nullptr, 1);
  rem_objet(o);
  expect_all_released();
}

TEST_F(PropertyLookup, NullListOrWrongTagFindsNothing) {
  Objet* o = objet();
  EXPECT_EQ(get_val_1(o->local, KW_poi), nullptr);
  EXPECT_EQ(get_propr_2(nullptr, KW_poi, KW_anc), nullptr);
  word f[5] = {5, T_FLOAT, 1, 1, 0};
  EXPECT_EQ(get_val_1(f, KW_poi), nullptr);
  EXPECT_EQ(get_val_4(f, 1, 2, 3, 4), nullptr);
}

TEST_F(PropertyLookup, KeyCountIsCheckedExceptByGetVal3AndGetVal4) {
  Objet* o = objet();
  ajoute(o, {KW_rotx, KW_vertex, KW_poi, KW_anc}, 4);
  ajoute(o, {KW_poi}, 1);
  ajoute(o, {KW_poi, KW_anc}, 2);
  const bloc l = o->local;
  EXPECT_EQ(F(get_val_1(l, KW_poi), 0), 1.0f);
  EXPECT_EQ(F(get_val_2(l, KW_poi, KW_anc), 0), 2.0f);
  EXPECT_EQ(get_val_2(l, KW_rotx, KW_vertex), nullptr);
  // Three leading codes of a four-key property are enough for get_val_3.
  ASSERT_NE(get_val_3(l, KW_rotx, KW_vertex, KW_poi), nullptr);
  EXPECT_EQ(F(get_val_3(l, KW_rotx, KW_vertex, KW_poi), 0), 4.0f);
  EXPECT_EQ(get_propr_3(l, KW_rotx, KW_vertex, KW_poi), nullptr);
  EXPECT_EQ(F(get_val_4(l, KW_rotx, KW_vertex, KW_poi, KW_anc), 0), 4.0f);
  EXPECT_NE(get_propr_4(l, KW_rotx, KW_vertex, KW_poi, KW_anc), nullptr);
  const int keys[] = {KW_rotx, KW_vertex, KW_poi};
  EXPECT_NE(get_val_n(l, 3, keys), nullptr);
  EXPECT_EQ(get_val_n(l, 2, keys), nullptr);
  EXPECT_EQ(get_val_n(l, 5, keys), nullptr);
}

TEST_F(PropertyLookup, EmptySlotIsSkippedAndIndexIsTheWordPosition) {
  Objet* o = objet();
  ajoute(o, {KW_col}, 1);
  ajoute(o, {KW_poi}, 2);
  ajoute(o, {KW_poi}, 3);  // a second one: the first match wins
  const word first = o->local[4];
  o->local[4] = 0;
  int ind = 0;
  bloc p = get_propr_ind_1(o->local, KW_poi, &ind);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(ind, 5);
  EXPECT_EQ(F(propr_val(p), 0), 2.0f);
  EXPECT_EQ(get_val_1(o->local, KW_col), nullptr);
  o->local[4] = first;
  EXPECT_TRUE(get_propr_ind_1(o->local, KW_col, &ind));
  EXPECT_EQ(ind, 4);
  word segs[6] = {3, 1, KW_poi, 3, 1, KW_anc};
  ajoute(o, {KW_poi, KW_anc}, 7);
  EXPECT_TRUE(get_propr_n(o->local, 2, segs, &ind));
  EXPECT_EQ(ind, 7);
  EXPECT_EQ(get_propr_n(o->local, 1, segs + 3, nullptr), nullptr);
}

TEST_F(PropertySet, SetValKeepsValuesOfSameLengthAndZeroesOtherwise) {
  Objet* o = objet();
  bloc v = set_val_2(o, KW_poi, KW_anc, 3);
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(v[0], 7);
  EXPECT_EQ(v[1], T_FLOAT);
  setf(v, 0, 1), setf(v, 1, 2), setf(v, 2, 3);
  bloc same = set_val_2(o, KW_poi, KW_anc, 3);
  EXPECT_EQ(same, v);
  EXPECT_EQ(F(same, 2), 3.0f);
  ajoute(o, {KW_col}, 9);
  bloc longer = set_val_2(o, KW_poi, KW_anc, 4);
  ASSERT_NE(longer, nullptr);
  EXPECT_EQ(longer[2], 4);
  for (int i = 0; i < 4; i++) EXPECT_EQ(F(longer, i), 0.0f);
  EXPECT_EQ(np(o->local), 2);  // same slot, no new one
  int ind = 0;
  get_propr_ind_2(o->local, KW_poi, KW_anc, &ind);
  EXPECT_EQ(ind, 4);
  EXPECT_EQ(bloc_state().live_blocks, live0 + 3);
}

TEST_F(PropertySet, SetProprCopiesTheValueAndReusesTheBlockOfSameSize) {
  Objet* o = objet();
  word a[6] = {6, T_FLOAT, 2, 1, fw(1), fw(2)};
  bloc p = set_propr_1(o, KW_col, a);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p[3], 1);
  EXPECT_TRUE(std::equal(a, a + 6, propr_val(p)));
  a[4] = fw(5);
  EXPECT_EQ(set_propr_1(o, KW_col, a), p);
  EXPECT_EQ(F(propr_val(p), 0), 5.0f);
  word b[5] = {5, T_FLOAT, 1, 1, fw(8)};
  bloc q = set_propr_1(o, KW_col, b);
  ASSERT_NE(q, nullptr);
  EXPECT_EQ(np(o->local), 1);
  EXPECT_EQ(F(get_val_1(o->local, KW_col), 0), 8.0f);
  EXPECT_EQ(verifie_bloc(o->local), 0);
}

TEST_F(PropertySet, SetMatrixAppendsWithoutLooking) {
  Objet* o = objet();
  bloc m = set_matrix_2(o, KW_rota, KW_anc, 2, 3);
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(m[0], 10);
  EXPECT_EQ(m[2], 2);
  EXPECT_EQ(m[3], 3);
  setf(m, 5, 1);
  set_matrix_2(o, KW_rota, KW_anc, 2, 3);
  EXPECT_EQ(np(o->local), 2);
  EXPECT_EQ(get_val_2(o->local, KW_rota, KW_anc), m);
  EXPECT_EQ(verifie_bloc(o->local), 0);
}

TEST_F(PropertySet, KeysFromSegmentsOrCodesAreTheSame) {
  word p1[12], p2[12], p3[12];
  word segs[7] = {3, 1, KW_rotx, 4, 1, KW_poi, 99};
  propr_keys(p1, 2, segs);
  propr_key_2(p2, KW_rotx, KW_poi);
  EXPECT_TRUE(std::equal(p1 + 1, p1 + 8, p2 + 1));
  EXPECT_EQ(p1[2], 8);
  EXPECT_EQ(p1[4], 1);
  EXPECT_EQ(egal_keys(p1, p2), 1);
  propr_key_3(p3, KW_rotx, KW_poi, KW_anc);
  EXPECT_EQ(egal_keys(p1, p3), 0);
  propr_key_2(p3, KW_rotx, KW_anc);
  EXPECT_EQ(egal_keys(p1, p3), 0);
}

TEST_F(PropertyRemove, AbsentChangesNothingPresentLeavesTheOthersInOrder) {
  Objet* o = objet();
  ajoute(o, {KW_col}, 1);
  ajoute(o, {KW_poi}, 2);
  ajoute(o, {KW_fac}, 3);
  const bloc list = o->local;
  const long live = bloc_state().live_blocks;
  EXPECT_EQ(rem_propr_1(o, KW_anc), 0);
  EXPECT_EQ(rem_propr_2(o, KW_col, KW_poi), 0);
  EXPECT_EQ(o->local, list);
  EXPECT_EQ(bloc_state().live_blocks, live);
  const word col = list[4], fac = list[6];
  EXPECT_EQ(rem_propr_1(o, KW_poi), 1);
  EXPECT_EQ(o->local[0], 6);
  EXPECT_EQ(o->local[2], 2);
  EXPECT_EQ(o->local[4], col);
  EXPECT_EQ(o->local[5], fac);
  EXPECT_EQ(bloc_state().live_blocks, live - 1);
  Yes(KW_edit) = 2;
  said();
  const int keys[] = {KW_fac};
  EXPECT_EQ(rem_propr_k(o, 1, keys), 1);
  EXPECT_EQ(said(), "fac \n");
  word seg[3] = {3, 1, KW_col};
  EXPECT_EQ(rem_propr_n(o, 1, seg), 1);
  EXPECT_EQ(o->local[2], 0);
  rem_objet(o);
  expect_all_released();
}

TEST_F(PropertyGrow, FlatValueGainsWholePoints) {
  Objet* o = objet();
  set_matrix_2(o, KW_poi, KW_anc, 1, 3);
  const int keys[] = {KW_poi, KW_anc};
  Yes(KW_edit) = 2;
  word add[7] = {7, T_FLOAT, 3, 1, fw(1), fw(2), fw(3)};
  ASSERT_EQ(grow_val(o, 2, keys, add), 0);
  EXPECT_EQ(add[2], 1);  // flattened in place
  EXPECT_EQ(add[3], 3);
  bloc v = get_val_2(o->local, KW_poi, KW_anc);
  EXPECT_EQ(v[2], 2);
  EXPECT_EQ(F(v, 5), 3.0f);
  word add7[11] = {11, T_LONG, 7, 1, 4, 5, 6, 7, 8, 9, 10};  // two points, one word cut
  ASSERT_EQ(grow_val(o, 2, keys, add7), 0);
  v = get_val_2(o->local, KW_poi, KW_anc);
  EXPECT_EQ(v[2], 4);
  EXPECT_EQ(F(v, 6), 4.0f);
  EXPECT_EQ(F(v, 11), 9.0f);
  word add2[6] = {6, T_FLOAT, 2, 1, fw(1), fw(1)};  // padded to one point
  ASSERT_EQ(grow_val(o, 2, keys, add2), 0);
  v = get_val_2(o->local, KW_poi, KW_anc);
  EXPECT_EQ(v[2], 5);
  EXPECT_EQ(F(v, 14), 0.0f);
  EXPECT_EQ(said(), "+ 2\n+ [3,4]\n+ 5\n");
  EXPECT_EQ(verifie_bloc(o->local), 0);
  EXPECT_EQ(np(o->local), 1);
}

TEST_F(PropertyGrow, HybrideGainsLongSubBlocks) {
  Objet* o = objet();
  word fac[4] = {4, T_HYBRIDE, 0, 1};
  set_propr_1(o, KW_fac, fac);
  const int keys[] = {KW_fac};
  word add[7] = {7, T_FLOAT, 3, 1, fw(1.7f), fw(2), fw(3)};
  Yes(KW_edit) = 2;
  ASSERT_EQ(grow_val(o, 1, keys, add), 0);
  word two[4 + 6 + 6] = {16, T_HYBRIDE, 2, 1, 6, T_FLOAT, 2, 1, fw(4), fw(5), 6, T_LONG, 1, 2, 6, 7};
  ASSERT_EQ(grow_val(o, 1, keys, two), 0);
  EXPECT_EQ(said(), "+1\n+3\n");
  const word* v = get_val_1(o->local, KW_fac);
  const word want[] = {4 + 7 + 6 + 6, T_HYBRIDE, 3, 1, 7, T_LONG, 1, 3, 1, 2, 3,
                       6, T_LONG, 1, 2, 4, 5, 6, T_LONG, 1, 2, 6, 7};
  EXPECT_TRUE(std::equal(want, want + 23, v));
  EXPECT_EQ(verifie_bloc(o->local), 0);
}

TEST_F(PropertyGrow, EntriesOfDifferingLengthAndAbsentProperty) {
  Objet* o = objet();
  word e[4] = {4, T_FLOAT, 0, 0};
  set_propr_1(o, KW_lattice, e);
  const int keys[] = {KW_lattice};
  word add[6] = {6, T_FLOAT, 2, 1, fw(1), fw(2)};
  ASSERT_EQ(grow_val(o, 1, keys, add), 0);
  const word* v = get_val_1(o->local, KW_lattice);
  EXPECT_EQ(v[0], 7);
  EXPECT_EQ(v[2], 1);
  EXPECT_EQ(v[4], 3);  // the entry's own length
  EXPECT_EQ(F(v, 2), 2.0f);
  EXPECT_EQ(verifie_bloc(o->local), 0);
  const int other[] = {KW_speed};
  word one[5] = {5, T_FLOAT, 1, 1, fw(3)};
  ASSERT_EQ(grow_val(o, 1, other, one), 0);
  EXPECT_EQ(F(get_val_1(o->local, KW_speed), 0), 3.0f);
}
