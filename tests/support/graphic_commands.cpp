// The subsystems' commands in the graphic dispatch for every test, as the
// program installs them at start-up.
#include "app/install.h"

namespace {
[[maybe_unused]] const bool installed = (install_graphic_commands(), true);
}  // namespace
