// Object files: what is written reads back the same, and what no writer
// made (cut, swollen, negative, nested without end) is refused with the
// store left as it was.
#include <cstring>
#include <string>
#include <vector>

#include "../scene/scene_fixture.h"
#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "persist/object_file.h"
#include "scene/lookup.h"
#include "scene/volume.h"

namespace {

class ObjectFile : public SceneTest {
 protected:
  static int vol_block_words() { return 4 + TRANSF_SIZE; }
  static Objet* vol(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }
  static std::vector<word> save(std::initializer_list<int> ids) {
    std::vector<word> out;
    for (int id : ids) EXPECT_EQ(WRITE_OBJ_1(vol(id), out, nullptr), 0) << id;
    return out;
  }
  static std::string bytes(const std::vector<word>& w) {
    return std::string(reinterpret_cast<const char*>(w.data()), w.size() * sizeof(word));
  }
  static int load(const std::vector<word>& w, const word* ids = nullptr, bool add = false) {
    LectureObjets how;
    how.chaine = chaine_classe(KW_vol);
    how.kind = KW_vol;
    how.ids = ids;
    how.add = add;
    Capture quiet;
    return lire_objets(bytes(w), how);
  }
  static int count() {
    int n = 0;
    for (Objet* o = chaine_classe(KW_vol)->next; o; o = o->next) n++;
    return n;
  }
};

// Two property lists hold the same keys and values, in order; tables of
// blocks are compared slot by slot.
void expect_same_properties(const Objet* a, const Objet* b) {
  ASSERT_NE(a->local, nullptr);
  ASSERT_NE(b->local, nullptr);
  ASSERT_EQ(a->local[2], b->local[2]);
  for (int i = 0; i < a->local[2]; i++) {
    const word* p = handle_bloc(a->local[4 + i]);
    const word* q = handle_bloc(b->local[4 + i]);
    ASSERT_EQ(p[0], q[0]) << "property " << i;
    const word* v = propr_val(p);
    if (v[1] == T_PROPRIETES) {
      EXPECT_TRUE(std::equal(p + 1, p + p[2] + 4, q + 1)) << "keys and list header of property " << i;
      for (int k = 0; k < v[2]; k++) {
        const word* x = handle_bloc(v[4 + k]);
        const word* y = handle_bloc(propr_val(q)[4 + k]);
        ASSERT_EQ(x == nullptr, y == nullptr) << "slot " << k;
        if (x) {
          EXPECT_TRUE(std::equal(x, x + x[0], y)) << "slot " << k;
        }
      }
    } else {
      EXPECT_TRUE(std::equal(p + 1, p + p[0], q + 1)) << "property " << i;
    }
  }
}

TEST_F(ObjectFile, AVolumeReadsBackWhole) {
  ok("cube(1) dim(2) col(1,0,0) name(\"box\")");
  ok("col vertex(2) vol(1)=0,1,0");
  ok("inherit vertex(3) vol(1)=\"knee\"");
  ok("rotx(1) matrix vol(1)");
  ok("dup vol(1,2)");
  std::vector<word> file = save({1});
  ok("rem vol(1)");
  ASSERT_EQ(load(file), 1);
  Objet* back = vol(1);
  ASSERT_NE(back, nullptr);
  EXPECT_STREQ(back->name, "box");
  EXPECT_EQ(back->subkind, KW_cube);
  expect_same_properties(vol(2), back);
  ASSERT_NE(back->code, nullptr);
  ASSERT_NE(vol(2)->code, nullptr) << "the duplicate has the transformation too";
  EXPECT_TRUE(std::equal(back->code, back->code + back->code[0], vol(2)->code));
}

TEST_F(ObjectFile, IdentitiesReplacementAndAdd) {
  ok("cube(1) name(\"a\")");
  ok("ball(2)");
  std::vector<word> file = save({1, 2});
  ok("cube(5) name(\"a\")");
  ASSERT_EQ(load(file), 2);
  EXPECT_EQ(vol(5), nullptr) << "the object of the same name goes";
  EXPECT_EQ(count(), 2);
  const word ids[] = {6, T_FLOAT, 2, 1, fw(7.0f), fw(8.0f)};
  ASSERT_EQ(load(file, ids), 2);
  EXPECT_NE(vol(7), nullptr);
  EXPECT_EQ(vol(7)->name, nullptr) << "the file's name is dropped";
  EXPECT_EQ(vol(8)->subkind, KW_ball);
  ASSERT_EQ(load(file, nullptr, true), 2);
  EXPECT_EQ(count(), 6);
}

TEST_F(ObjectFile, EveryCutOfAFileIsRefusedWithoutChange) {
  ok("cube(1) col(1,0,0)");
  ok("inherit vertex vol(1)=1,2");
  ok("ball(2) secy(2)");
  std::vector<word> file = save({1, 2});
  const std::vector<word> first = save({1});
  ok("rem vol");
  const long blocks = bloc_state().live_blocks;
  // Cut just before the transformation block, an object without one
  // reads back as a last object would: skipped here.
  const size_t no_block = first.size() - static_cast<size_t>(vol_block_words());
  for (size_t n = 1; n < first.size(); n++) {
    if (n == no_block) continue;
    std::vector<word> cut(file.begin(), file.begin() + static_cast<long>(n));
    EXPECT_EQ(load(cut), -1) << "cut at word " << n;
    EXPECT_EQ(count(), 0) << "cut at word " << n;
  }
  EXPECT_EQ(bloc_state().live_blocks, blocks) << "nothing kept from refused objects";
  // Cut in the second object: the first stays.
  std::vector<word> second_cut(file.begin(), file.begin() + static_cast<long>(first.size() + 20));
  EXPECT_EQ(load(second_cut), -1);
  EXPECT_EQ(count(), 1);
}

// A record of an object with a NIL name and zero fields, then `tail`.
std::vector<word> record(std::initializer_list<word> tail) {
  std::vector<word> w{1, 4, T_NIL, 0, 0};
  w.resize(w.size() + 12, 0);
  w.insert(w.end(), tail);
  return w;
}

TEST_F(ObjectFile, HostileSizesAreRefused) {
  const long blocks = bloc_state().live_blocks;
  EXPECT_EQ(load({1, 0x7fffffff}), -1) << "a name larger than the file";
  EXPECT_EQ(load({1, -5}), -1) << "a negative name size";
  EXPECT_EQ(load(record({1000004, T_PROPRIETES, 1000000, 1})), -1) << "a million properties";
  EXPECT_EQ(load(record({8, T_PROPRIETES, -3, 1})), -1) << "a negative count";
  EXPECT_EQ(load(record({5, T_PROPRIETES, 1, 0, 5, T_FLOAT, 1, 1, 0})), -1) << "a list of entries of their own length";
  EXPECT_EQ(load(record({5, T_PROPRIETES, 1, 1, 900, T_FLOAT, 1, 1})), -1) << "a value larger than the file";
  EXPECT_EQ(load(record({5, T_PROPRIETES, 1, 1, -9, T_FLOAT, 1, 1})), -1) << "a negative value size";
  // A property whose value is a list nested in a list without end.
  std::vector<word> deep = record({5, T_PROPRIETES, 1, 1});
  for (int i = 0; i < 200; i++) deep.insert(deep.end(), {5, T_PROPRIETES, 1, 1});
  EXPECT_EQ(load(deep), -1) << "nesting without end";
  // Values made of handles: a file cannot give them.
  EXPECT_EQ(load(record({5, T_PROPRIETES, 1, 1, 12, T_SEGMENTS, 6, 1, 1, KW_col, 6, T_CHAINE, 1, 1, 7, 0})), -1)
      << "a private chain";
  EXPECT_EQ(load(record({5, T_PROPRIETES, 1, 1, 15, T_HYBRIDE, 2, 0, 5, T_FLOAT, 1, 1, 0, 6, T_MALLOCS, 1, 1, 3, 0})),
            -1)
      << "a list of allocations inside a value";
  // Kinds whose records keep or leak their blocks when removed.
  for (word kind : {static_cast<word>(T_CHAINE), static_cast<word>(KW_func), static_cast<word>(-41), static_cast<word>(NB_CODES)}) {
    std::vector<word> w = record({4, T_PROPRIETES, 0, 1});
    w[5] = kind;
    EXPECT_EQ(load(w), -1) << "kind " << kind;
  }
  EXPECT_EQ(count(), 0);
  EXPECT_EQ(bloc_state().live_blocks, blocks);
  EXPECT_EQ(load({}), 0) << "an empty file";
}

TEST_F(ObjectFile, ObjectsWithoutListOrBlockKeepTheOldAsymmetry) {
  // No property list: the writer leaves out its header, the reader wants one.
  Objet* bare = cre_objet(chaine_classe(KW_object), KW_object, 0, nullptr, "bare", 3);
  std::vector<word> w;
  ASSERT_EQ(WRITE_OBJ_1(bare, w, nullptr), 0);
  EXPECT_EQ(w.size(), 1u + 4 + 2 + 12) << "id, name and fields only";
  // With a list and no block, a single object reads back as the last one.
  ok("object(4) col(1,0,0)");
  Objet* four = get_objet_id(chaine_classe(KW_object), KW_object, 4);
  std::vector<word> one;
  ASSERT_EQ(WRITE_OBJ_1(four, one, nullptr), 0);
  LectureObjets how;
  how.chaine = chaine_classe(KW_object);
  how.kind = KW_object;
  Capture quiet;
  EXPECT_EQ(lire_objets(bytes(one), how), 1);
  std::vector<word> two = one;
  two.insert(two.end(), one.begin(), one.end());
  EXPECT_EQ(lire_objets(bytes(two), how), -1) << "the next record's id is taken for a block size";
}

TEST_F(ObjectFile, ListsOfObjectsInAProperty) {
  ok("cube(1)");
  Objet* o = vol(1);
  Objet* a = cre_objet(cre_chaine_privee(), KW_object, 0, nullptr, "a", 11);
  ASSERT_NE(a, nullptr);
  Objet* head = a->head;
  delie_objet(a);
  rem_chaine_privee(head);
  // [keys inherit], value OBJETS of two slots: a, and none.
  bloc p = ajoute_propriete(o, 6 + 6);
  p[0] = 12;
  propr_key_1(p, KW_inherit);
  bloc v = propr_val(p);
  v[0] = 6, v[1] = T_OBJETS, v[2] = 2, v[3] = 1, v[4] = objet_handle(a), v[5] = 0;
  std::vector<word> file = save({1});
  ok("rem vol(1)");
  ASSERT_EQ(load(file), 1);
  const word* back = get_val_1(vol(1)->local, KW_inherit);
  ASSERT_NE(back, nullptr);
  ASSERT_EQ(back[1], T_OBJETS);
  Objet* copy = handle_objet(back[4]);
  ASSERT_NE(copy, nullptr);
  EXPECT_STREQ(copy->name, "a");
  EXPECT_EQ(copy->id, 11);
  EXPECT_EQ(copy->next, nullptr) << "in no chain";
  EXPECT_EQ(back[5], 0);
}

}  // namespace
