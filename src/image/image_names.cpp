// What `read image` and `write image` share: the file name with its
// number, and the format options.
#include <algorithm>
#include <cmath>

#include "image/file_numbers.h"
#include "image/image_commands.h"
#include "kernel/keywords.h"
#include "render/cmd_args.h"

int arg_entier(word* s, int code, int i, int dflt) {
  float f[16];
  if (i >= 16 || arg_floats(s, code, f, 16) <= i || std::isnan(f[i])) return dflt;
  return static_cast<int>(std::clamp(f[i], -1e9f, 1e9f));
}

bool nom_fichier_image(word* s, int offset, std::string& name) {
  const char* given = value_text(arg_of(s, KW_name));
  name = given ? given : "";
  word* number = find_item(s, KW_number);
  if (!number) return true;
  std::string numbered;
  if (!DET_NUMBER(name, item_value(number), offset, numbered)) return false;
  name = numbered;
  return true;
}

FormatOptions options_format(word* s) {
  FormatOptions o;
  const word* format = arg_of(s, KW_format);
  o.order = value_text(format);
  if (format && !o.order) o.compression = arg_entier(s, KW_format, 0, 0);
  if (has_word(s, KW_debug)) o.debug = arg_entier(s, KW_debug, 0, 1);
  return o;
}
