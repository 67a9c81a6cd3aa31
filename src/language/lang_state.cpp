#include "language/lang_state.h"

LanguageState& lang() {
  static LanguageState s;
  return s;
}
