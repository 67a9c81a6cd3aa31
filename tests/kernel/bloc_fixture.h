// Shared set-up of the block-layer tests: the minimal kernel with memory
// release on, no bells and no edit prints, output captured, and a chain
// of objects cleared at the end so that nothing leaks.
#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/object_store.h"
#include "support/capture.h"

class BlocFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    Yes(KW_rem) = 1;
    Yes(KW_edit) = 0;
    Yes(KW_ring) = 0;
    pile_alloc_fin();
    chaine_ini(&head);
    out = std::make_unique<Capture>();
    live0 = bloc_state().live_blocks;
    objects0 = bloc_state().object_count;
    handles0 = handle_count();
  }
  void TearDown() override {
    Yes(KW_rem) = 1;
    pile_alloc_fin();
    for (Objet* o = head.next; o;) o = rem_objet(o);
    out.reset();
  }
  std::string said() { return out->take(); }
  Objet* objet(int id = 1, const char* name = nullptr) {
    return cre_objet(&head, KW_vol, 0, nullptr, name, id);
  }
  // Nothing allocated since SetUp is still held.
  void expect_all_released() {
    EXPECT_EQ(bloc_state().live_blocks, live0);
    EXPECT_EQ(bloc_state().object_count, objects0);
    EXPECT_EQ(handle_count(), handles0);
  }

  Objet head;
  std::unique_ptr<Capture> out;
  long live0 = 0;
  int objects0 = 0;
  int handles0 = 0;
};

inline float F(const word* v, int i) { return getf(v, i); }
