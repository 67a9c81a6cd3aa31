// Commands on functions: `read func("file")`, `write func("f g")
// name("file")`, the console form `func = "source"`, and `read generate
// message(...)`.
#include <string>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/translate.h"
#include "language/args.h"
#include "language/commands.h"
#include "language/function_files.h"
#include "language/handlers.h"
#include "language/lexer.h"
#include "language/operators.h"

namespace {


std::vector<std::string> names_of(const char* list) {
  std::vector<std::string> names;
  char w[LONG_MOT];
  const char* p = list;
  while (p && lire_mot(w, &p, LONG_MOT) > 1) {
    names.push_back(w);
    while (*p == ',' || *p == ';') p++;
  }
  return names;
}

}  // namespace

int READ_a(word* record, const word* limit) {
  (void)limit;
  if (find_item(record, KW_func)) {
    const char* file = arg_text(record, KW_func);
    if (!file) file = arg_text(record, KW_name);
    if (!file) {
      err_syntaxe(MES_COMMAND_USAGE, KW_read, " func(\"file\")\n");
      return -1;
    }
    int n = read_functions_file(file);
    if (n < 0) return -1;
    return build_float(record, limit, static_cast<float>(n));
  }
  if (find_item(record, KW_generate) && find_item(record, KW_message)) {
    const char* names = arg_text(record, KW_message);
    int r = read_generate_message(names, TRANSLATE_FROM_FILE);
    build_nil(record);
    return r;
  }
  return 1;
}

int WRITE_a(word* record, const word* limit) {
  (void)limit;
  if (!find_item(record, KW_func)) return 1;
  const char* file = arg_text(record, KW_name);
  if (!file) {
    err_syntaxe(MES_COMMAND_USAGE, KW_write, " func(\"f g\") name(\"file\")\n");
    return -1;
  }
  int r = write_functions_file(names_of(arg_text(record, KW_func)), file);
  build_nil(record);
  return r;
}

int define_from_console(word* record, const word* value) {
  if (!value || value[0] <= 0 || tag(value) != T_CHAR) {
    voir_message(0, MES_ILLEGAL_ASSIGNMENT);
    return -1;
  }
  (void)record;
  return define_functions(text(value)) < 0 ? -1 : 0;
}
