#include "language/lang_state.h"

LanguageState the_language_state;
