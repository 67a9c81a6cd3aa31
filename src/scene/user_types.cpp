#include "scene/user_types.h"

#include <string>
#include <vector>

#include "kernel/keywords.h"
#include "scene/scene_state.h"

namespace {

std::vector<std::string>& table() {
  static std::vector<std::string> t;
  return t;
}

}  // namespace

SceneState& scene() {
  static SceneState s;
  return s;
}

int user_type_find(const char* name) {
  const auto& t = table();
  for (size_t i = 0; i < t.size(); i++)
    if (t[i] == name) return NB_CODES + static_cast<int>(i);
  return 0;
}

int user_type_make(const char* name) {
  if (!name || !*name) return 0;
  if (int n = user_type_find(name)) return n;
  table().emplace_back(name);
  return NB_CODES + static_cast<int>(table().size()) - 1;
}

const char* user_type_name(int number) {
  if (number < NB_CODES) return nullptr;
  size_t i = static_cast<size_t>(number - NB_CODES);
  return i < table().size() ? table()[i].c_str() : nullptr;
}

void user_types_clear() { table().clear(); }
