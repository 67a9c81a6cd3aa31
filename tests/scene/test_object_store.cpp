// Lookups, creation and removal in chains.
#include <cstring>
#include <vector>

#include "kernel/bloc.h"
#include "kernel/kernel.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "scene/lookup.h"
#include "scene_fixture.h"

namespace {

using ObjectStore = SceneTest;

Objet* head() { return chaine_classe(KW_object); }

Objet* make(int id, const char* name) { return cre_objet(head(), KW_object, 0, nullptr, name, id); }

TEST_F(ObjectStore, SelectorsByNumberNameAndMixedLists) {
  Objet* unnumbered = make(0, ">x");
  Objet* three = make(3, nullptr);
  Objet* three_again = make(3, "dup");
  const word zero[] = {5, T_FLOAT, 1, 1, fw(0.0f)};
  EXPECT_EQ(get_objet_simple(head(), zero, 0), unnumbered) << "0 finds the first unnumbered object";
  const word ints[] = {6, T_LONG, 2, 1, 7, 3};
  EXPECT_EQ(get_objet_simple(head(), ints, 0), nullptr);
  EXPECT_EQ(get_objet_simple(head(), ints, 1), three) << "the older of two with one number";
  word names[8] = {8, T_CHAR, 5, 1};
  std::strcpy(reinterpret_cast<char*>(names + 4), "x dup");
  EXPECT_EQ(nb_selection(names), 2);
  EXPECT_EQ(get_objet_simple(head(), names, 0), unnumbered) << "a stored marker is skipped";
  EXPECT_EQ(get_objet_simple(head(), names, 1), three_again);
  EXPECT_EQ(get_objet_nom(head(), ">x"), nullptr) << "the marker is not part of the name";
  // A list of a FLOAT part and a CHAR part: four elements.
  word mixed[20] = {0, T_HYBRIDE, 2, 0, 6, T_FLOAT, 2, 1, fw(3.0f), fw(9.0f)};
  word* part = mixed + 10;
  part[0] = 6, part[1] = T_CHAR, part[2] = 5, part[3] = 1;
  std::strcpy(reinterpret_cast<char*>(part + 4), "dup x");
  mixed[0] = 16;
  EXPECT_EQ(nb_selection(mixed), 4);
  EXPECT_EQ(get_objet_simple(head(), mixed, 0), three);
  EXPECT_EQ(get_objet_simple(head(), mixed, 1), nullptr);
  EXPECT_EQ(get_objet_simple(head(), mixed, 2), three_again);
  EXPECT_EQ(get_objet_simple(head(), mixed, 3), unnumbered);
  // Other kinds of value select nothing, and an index past the end is reported.
  const word nil[] = {4, T_NIL, 0, 1};
  EXPECT_EQ(get_objet_simple(head(), nil, 0), nullptr);
  Capture out;
  EXPECT_EQ(get_objet_simple(head(), zero, 4), nullptr);
  EXPECT_NE(out.take().find("ILLEGAL INDEX"), std::string::npos);
}

TEST_F(ObjectStore, GeneralSearchAndHighestNumber) {
  Objet* a = make(1, "a");
  Objet* b = make(2, "b");
  make(5, "a");
  b->subkind = 7;
  EXPECT_EQ(get_objet(head(), KW_object, 0, 0, "a"), a) << "by name when the number is 0";
  EXPECT_EQ(get_objet(head(), KW_object, 0, 5, nullptr)->id, 5) << "by number without a name";
  EXPECT_EQ(get_objet(head(), KW_object, 0, 5, "b"), nullptr) << "both must match";
  EXPECT_EQ(get_objet(head(), KW_object, 7, 2, "b"), b);
  EXPECT_EQ(get_objet(head(), KW_object, 8, 2, "b"), nullptr);
  EXPECT_EQ(get_objet(head(), KW_local, 0, 1, nullptr), nullptr);
  EXPECT_EQ(get_objet_kind_nom(head(), KW_object, "b"), b);
  EXPECT_EQ(get_objet_id(head(), KW_object, 2), b);
  EXPECT_EQ(num_max(1, KW_object), 5);
  EXPECT_EQ(num_max(1, KW_fog), -1000000000);
}

TEST_F(ObjectStore, CreationAndRemovalKeepTheCounts) {
  const int objects = bloc_state().object_count;
  const long blocks = bloc_state().live_blocks;
  const word sel[] = {7, T_FLOAT, 3, 1, fw(1.0f), fw(-12345.0f), fw(2.0f)};
  Objet* one = set_objet_simple(head(), 1, KW_object, sel, 0);
  Objet* invalid = set_objet_simple(head(), 1, KW_object, sel, 1);
  Objet* two = set_objet_simple(head(), 1, KW_object, sel, 2);
  EXPECT_EQ(one->valid, 1);
  EXPECT_EQ(invalid->valid, 0);
  EXPECT_EQ(one->local, nullptr);
  EXPECT_EQ(bloc_state().object_count, objects + 3);
  // Removal in a walk goes on from the returned object.
  EXPECT_EQ(rem_objet(invalid), two);
  EXPECT_EQ(one->next, two);
  EXPECT_EQ(two->prev, one);
  EXPECT_EQ(rem_objet(two), nullptr);
  EXPECT_EQ(rem_objet(nullptr), nullptr);
  rem_objet(one);
  EXPECT_EQ(bloc_state().object_count, objects);
  EXPECT_EQ(bloc_state().live_blocks, blocks);
  EXPECT_EQ(head()->next, nullptr);
}

// The head's list of records answers as a walk of the links would,
// through renumbering, removals and the squeezing of emptied slots.
TEST_F(ObjectStore, ListOfRecordsFollowsTheChain) {
  std::vector<Objet*> made;
  for (int i = 1; i <= 200; i++) made.push_back(make(i % 50, nullptr));
  auto walk = [](int id) {
    for (Objet* o = head()->next; o; o = o->next)
      if (o->id == id) return o;
    return static_cast<Objet*>(nullptr);
  };
  auto check = [&](const char* when) {
    for (int id = 0; id < 60; id++) {
      const word sel[] = {5, T_FLOAT, 1, 1, fw(static_cast<float>(id))};
      EXPECT_EQ(get_objet_simple(head(), sel, 0), walk(id)) << when << " id " << id;
      EXPECT_EQ(get_objet_id(head(), KW_object, id), walk(id)) << when << " id " << id;
    }
  };
  check("made");
  for (size_t i = 0; i < made.size(); i += 3) rem_objet(made[i]);  // past the squeezing threshold
  check("after removals");
  ok("number object(7)=55");
  objet_numero(walk(8), 56);
  check("after renumbering");
  EXPECT_EQ(one("number object(55)"), 55.0f);
  Objet* last = make(55, "new");
  EXPECT_NE(get_objet_id(head(), KW_object, 55), last) << "the older record is found first";
}

// The chain heads belong to the kernel's state: putting its settings back
// keeps them, with their records and their lists, where they were.
TEST_F(ObjectStore, KernelResetKeepsTheChainsAndTheirRecords) {
  Objet* const chain = head();
  Objet* seven = make(7, "kept");
  const KernelSettings saved = kernel();  // the fixture's areas and options
  kernel().Dim_ev = KernelSettings().Dim_ev + 1;
  kernel_reset();
  EXPECT_EQ(kernel().Dim_ev, KernelSettings().Dim_ev) << "the settings are put back";
  static_cast<KernelSettings&>(kernel()) = saved;
  EXPECT_EQ(head(), chain);
  EXPECT_EQ(get_objet_id(head(), KW_object, 7), seven);
  EXPECT_EQ(get_objet_nom(head(), "kept"), seven);
  Objet* eight = make(8, nullptr);
  EXPECT_EQ(seven->next, eight) << "creation still links at the head's tail";
  rem_objet(seven);
  EXPECT_EQ(get_objet_id(head(), KW_object, 7), nullptr);
  EXPECT_EQ(get_objet_id(head(), KW_object, 8), eight);
}

TEST_F(ObjectStore, CleanSweepsEmptyGenericObjectsOnly) {
  Objet* g = chaine_generique();
  const word v[] = {5, T_FLOAT, 1, 1, fw(1.0f)};
  cre_objet(g, 0, 0, nullptr, "empty", 0);
  Objet* kept = cre_objet(g, 0, 0, v, "kept", 0);
  cre_objet(g, 0, 0, nullptr, nullptr, 4);
  ok("clean");
  EXPECT_EQ(g->next, kept);
  EXPECT_EQ(kept->next, nullptr);
}

TEST_F(ObjectStore, ChainRemovalLeavesFunctions) {
  Objet* locals = cre_chaine_privee();
  Objet* f = cre_objet(locals, 0, KW_func, nullptr, "f", 0);
  cre_objet(locals, 0, 0, nullptr, "v", 0);
  rem_chaine(locals, nullptr);
  EXPECT_EQ(locals->next, f) << "a function record is left in place";
  EXPECT_EQ(f->next, nullptr);
  rem_chaine_privee(locals);
}

TEST_F(ObjectStore, CommandsOnKinds) {
  ok("object(1,2) name(\"n\")");
  ok("light(1,2)");
  EXPECT_EQ(one("number object(\"n\")"), 1.0f);
  ok("rem object(\"n\")");
  EXPECT_EQ(head()->next, nullptr) << "both objects named n go";
  ok("ini light");
  EXPECT_EQ(chaine_classe(KW_light)->next, nullptr);
  EXPECT_TRUE(nil("col object(1)"));
  EXPECT_NE(fails("dup object(1)").find("obj(id1,id2)"), std::string::npos);
}

}  // namespace
