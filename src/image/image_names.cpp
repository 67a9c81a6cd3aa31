// What `read image` and `write image` share: the file name with its
// number, and the format options.
#include "image/file_numbers.h"
#include "image/image_commands.h"
#include "kernel/keywords.h"
#include "language/args.h"

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
  if (format && !o.order) o.compression = arg_int(s, KW_format, 0);
  if (has_word(s, KW_debug)) o.debug = arg_int(s, KW_debug, 1);
  return o;
}
