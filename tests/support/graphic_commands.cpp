// The graphic commands for every test, installed as the program does at
// start-up. An environment, so that it runs after the states it fills are
// constructed.
#include <gtest/gtest.h>

#include "app/install.h"

namespace {

class GraphicCommands : public ::testing::Environment {
 public:
  void SetUp() override { install_graphic_commands(); }
};

[[maybe_unused]] ::testing::Environment* const installed = ::testing::AddGlobalTestEnvironment(new GraphicCommands);

}  // namespace
