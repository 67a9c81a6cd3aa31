// The property layer under the generic property command: values of
// every kind written whole, by point, by element table, and read back.
#include <cstring>
#include <deque>
#include <vector>

#include "kernel/handles.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/property_rw.h"
#include "scene/vol_build.h"
#include "scene_fixture.h"

namespace {

class PropertyRw : public SceneTest {
 protected:
  Objet* o = nullptr;
  void SetUp() override {
    SceneTest::SetUp();
    o = cre_objet(chaine_classe(KW_object), KW_object, 0, nullptr, nullptr, 1);
    ASSERT_NE(o, nullptr);
  }
  // Writes `v` under `keys` as bloc_0 would, creating the property.
  int write(Cles k, const std::vector<word>& v) {
    int slot = 0;
    if (!get_propr_k(o->local, static_cast<int>(k.codes.size()), k.codes.data(), &slot))
      slot = cree_propriete_vide(o, k);
    EXPECT_GE(slot, 4);
    return set_bloc_b(o, k, slot, v.data());
  }
  std::vector<word> read(const Cles& k) {
    const word* p = get_propr_k(o->local, static_cast<int>(k.codes.size()), k.codes.data(), nullptr);
    std::vector<word> st(200, 0);
    st[0] = 4, st[1] = T_NIL, st[3] = 1;
    if (!p) return {};
    EXPECT_EQ(get_bloc_b(k, p, st.data(), st.data() + st.size()), 0);
    st.resize(static_cast<size_t>(st[0]));
    return st;
  }
  static std::vector<word> flo(std::initializer_list<float> f, int dimp = 1) {
    std::vector<word> v{static_cast<word>(4 + f.size()), T_FLOAT, static_cast<word>(f.size()) / dimp, dimp};
    for (float x : f) v.push_back(fw(x));
    return v;
  }
  static std::vector<float> as_floats(const std::vector<word>& v) {
    std::vector<float> f;
    for (size_t i = 4; i < v.size(); i++) f.push_back(wf(v[i]));
    return f;
  }
  // The key's codes are kept for the whole run: a key only views them.
  static Cles key(std::initializer_list<int> codes, const std::vector<word>* params = nullptr) {
    static std::deque<std::vector<int>> kept;
    Cles k;
    k.codes = kept.emplace_back(codes);
    if (params) k.params = params->data();
    return k;
  }
};

TEST_F(PropertyRw, WholeValuesTakeTheKeywordsSizeAndKeepTheirSlot) {
  // col has 3 values: one point of three, padded or cut.
  ASSERT_EQ(write(key({KW_col}), flo({1})), 0);
  std::vector<word> v = read(key({KW_col}));
  ASSERT_EQ(v.size(), 7u);
  EXPECT_EQ(v[2], 1);
  EXPECT_EQ(v[3], 3);
  expect_floats(as_floats(v), {1, 0, 0}, "padded");
  ASSERT_EQ(write(key({KW_box}), flo({1, 2, 3, 4, 5, 6}, 3)), 0);
  v = read(key({KW_box}));
  EXPECT_EQ(v[2], 1) << "a keyword without size keeps every number as one point";
  EXPECT_EQ(v[3], 6);
  const word slot_box = o->local[5];
  // Another size replaces the property in its own slot: order is kept.
  ASSERT_EQ(write(key({KW_col}), flo({4, 5, 6, 7})), 0);
  EXPECT_EQ(o->local[2], 2);
  expect_floats(as_floats(read(key({KW_col}))), {4, 5, 6}, "cut");
  ASSERT_EQ(write(key({KW_box}), flo({9})), 0);
  EXPECT_NE(o->local[5], slot_box) << "a new size takes a new property";
  EXPECT_EQ(get_propr_1(o->local, KW_box), handle_bloc(o->local[5]));
}

TEST_F(PropertyRw, TextsLongAndNilValues) {
  std::vector<word> t(8, 0);
  t[0] = 8, t[1] = T_CHAR, t[2] = 11, t[3] = 1;
  std::memcpy(t.data() + 4, "left arm", 9);
  ASSERT_EQ(write(key({KW_inherit}), t), 0);
  std::vector<word> v = read(key({KW_inherit}));
  ASSERT_GE(v.size(), 5u);
  EXPECT_EQ(v[1], T_CHAR);
  EXPECT_STREQ(reinterpret_cast<const char*>(v.data() + 4), "left arm");
  // LONG values are read as FLOAT.
  ASSERT_EQ(write(key({KW_bitmap}), {6, T_LONG, 2, 1, 7, -3}), 0);
  v = read(key({KW_bitmap}));
  EXPECT_EQ(v[1], T_FLOAT);
  expect_floats(as_floats(v), {7, -3}, "long");
  // NIL leaves the value as it was.
  ASSERT_EQ(write(key({KW_bitmap}), {4, T_NIL, 0, 1}), 0);
  expect_floats(as_floats(read(key({KW_bitmap}))), {7, -3}, "after NIL");
}

TEST_F(PropertyRw, PointsAreOverwrittenOrAppendedByNumber) {
  ASSERT_EQ(write(key({KW_col}), flo({1, 1, 1})), 0);
  std::vector<word> zero = flo({0});
  ASSERT_EQ(write(key({KW_col}, &zero), flo({0, 0, 1})), 0);  // appended
  std::vector<word> two = flo({2});
  ASSERT_EQ(write(key({KW_col}, &two), flo({0.5f})), 0);  // overwritten, padded
  std::vector<word> v = read(key({KW_col}));
  EXPECT_EQ(v[2], 2);
  expect_floats(as_floats(v), {1, 1, 1, 0.5f, 0, 0}, "two points");
  Capture out;
  std::vector<word> five = flo({5});
  EXPECT_EQ(write(key({KW_col}, &five), flo({1})), 0);
  EXPECT_NE(out.take().find("5 "), std::string::npos) << "an illegal point is named";
  expect_floats(as_floats(read(key({KW_col}, &two))), {0.5f, 0, 0}, "point 2 alone");
  // Without a size, parameter 0 appends whole elements.
  ASSERT_EQ(write(key({KW_box}), flo({1, 2})), 0);
  ASSERT_EQ(write(key({KW_box}, &zero), flo({3})), 0);
  v = read(key({KW_box}));
  expect_floats(as_floats(v), {1, 2, 3}, "elements");
  const word* p = get_propr_1(o->local, KW_box);
  EXPECT_EQ(propr_val(p)[1], T_HYBRIDE);
  EXPECT_EQ(propr_val(p)[2], 2);
  // envelope keeps its appended elements as integers.
  ASSERT_EQ(write(key({KW_envelope}, &zero), flo({2.7f, 3})), 0);
  const word* e = propr_val(get_propr_1(o->local, KW_envelope));
  ASSERT_EQ(e[1], T_HYBRIDE);
  EXPECT_EQ(e[4 + 1], T_LONG);
  EXPECT_EQ(e[4 + 4], 2);
}

TEST_F(PropertyRw, ElementTablesOfSlotsAndOfBlocks) {
  ok("vol(3) poi(0,0,0,1,0,0,1,1,0)");
  o = get_objet_id(chaine_classe(KW_vol), KW_vol, 3);
  ASSERT_NE(o, nullptr);
  std::vector<word> two = flo({2});
  Cles k = key({KW_col, KW_vertex});
  k.sub = KW_vertex;
  k.sub_value = two.data();
  ASSERT_EQ(write(k, flo({1, 0, 0})), 0);
  const word* v = propr_val(get_propr_2(o->local, KW_col, KW_vertex));
  EXPECT_EQ(v[2], 3) << "one slot per vertex";
  EXPECT_EQ(v[3], -4) << "stride of col's three values and a mark";
  EXPECT_EQ(v[4], 0) << "slot 1 empty";
  EXPECT_EQ(v[8], 4) << "slot 2 set";
  Cles all = k;
  all.sub_value = nullptr;
  std::vector<word> r = read(all);
  EXPECT_EQ(r[3], 3) << "read back with the keyword's width";
  expect_floats(as_floats(r), {1, 0, 0}, "only the set slot");
  // A keyword without size holds one block per vertex.
  Cles b = key({KW_inherit, KW_vertex});
  b.sub = KW_vertex;
  ASSERT_EQ(write(b, flo({7, 8})), 0);
  const word* table = propr_val(get_propr_2(o->local, KW_inherit, KW_vertex));
  ASSERT_EQ(table[1], T_PROPRIETES);
  EXPECT_EQ(table[2], 3);
  for (int i = 0; i < 3; i++) EXPECT_NE(handle_bloc(table[4 + i]), nullptr) << i;
  EXPECT_NE(table[4], table[5]) << "each slot its own copy";
  b.sub_value = two.data();
  ASSERT_EQ(write(b, flo({9})), 0);
  expect_floats(as_floats(read(b)), {9}, "slot 2 replaced");
  // More vertices: the table grows when next written.
  const word np2[] = {8, 1, KW_NP, 5, T_FLOAT, 1, 1, fw(2)};
  ASSERT_EQ(ajou_propriete_simple(o, np2), 0);
  ASSERT_EQ(write(b, flo({5})), 0);
  EXPECT_EQ(propr_val(get_propr_2(o->local, KW_inherit, KW_vertex))[2], 5);
}

TEST_F(PropertyRw, ReleasedWithTheirObjectWithoutLeaks) {
  const long before = bloc_state().live_blocks;
  ok("vol(4) poi(0,0,0,1,1,1) fac(1,2)");
  ok("inherit vertex vol(4)=\"a\"");
  ok("col vertex(1) vol(4)=1,2,3");
  ok("box(0) vol(4)=1");
  ok("box(0) vol(4)=2");
  ok("rem inherit vertex vol(4)");
  ok("inherit vertex vol(4)=1,2");
  ok("dup vol(4,5)");
  ok("rem vol");
  EXPECT_EQ(bloc_state().live_blocks, before);
}

TEST_F(PropertyRw, FixedKeyForms) {
  ok("object(2)");
  Objet* two = get_objet_id(chaine_classe(KW_object), KW_object, 2);
  ok("vol(6) poi(1,2,3)");
  // Built by hand: `left object(1,2)`, the command and its work area on
  // one stack as the evaluator lays them.
  std::vector<word> stack(256, 0);
  word* s = stack.data();
  s[0] = 4, s[1] = T_SEGMENTS;
  auto seg = [&](int code, std::initializer_list<float> f) {
    word* at = s + s[0];
    at[0] = 3, at[1] = code / 200, at[2] = code;
    if (f.size()) {
      at[0] = static_cast<word>(7 + f.size());
      at[3] = static_cast<word>(4 + f.size()), at[4] = T_FLOAT, at[5] = static_cast<word>(f.size()), at[6] = 1;
      int i = 7;
      for (float x : f) at[i++] = fw(x);
    }
    s[0] += at[0];
    s[2] += 1;
  };
  seg(KW_left, {});
  seg(KW_object, {1, 2});
  word* st = s + 100;
  const word* lim = stack.data() + stack.size();
  const std::vector<word> saved(s, s + s[0]);
  auto reset = [&] { std::copy(saved.begin(), saved.end(), s); };
  std::vector<word> value = flo({1, 2, 3});
  ASSERT_EQ(COM1_COM2_OBJ(s, st, lim, value.data(), KW_left, KW_right), 0);
  expect_floats(as_floats(std::vector<word>(get_val_2(two->local, KW_left, KW_right),
                                            get_val_2(two->local, KW_left, KW_right) + 7)),
                {1, 2, 3}, "written on object 2");
  // A shorter value goes in place, the rest zeroed.
  value = flo({9});
  reset();
  ASSERT_EQ(COM1_COM2_OBJ(s, st, lim, value.data(), KW_left, KW_right), 0);
  reset();
  ASSERT_EQ(COM1_COM2_OBJ(s, st, lim, nullptr, KW_left, KW_right), 0);
  expect_floats(as_floats(std::vector<word>(s, s + s[0])), {9, 0, 0, 9, 0, 0}, "read from both");
  reset();
  value = flo({4});
  ASSERT_EQ(SET_GET_BLOC(s, st, lim, value.data()), 0);
  EXPECT_NE(get_val_1(two->local, KW_left), nullptr);
  reset();
  ASSERT_EQ(SIMPLE_PROPERTY_OBJ(s, st, lim, value.data()), 0);
  EXPECT_EQ(get_val_1(two->local, KW_object), nullptr) << "no brush or vol: nothing selected";
}

}  // namespace
