// `help` and `demo`: the words of both vocabularies.
//   help          every word, by group
//   help word...  for each word: its name line, its descriptor, its
//                 default and current values, its usage and an example;
//                 a word that is none is reported with the nearest names
//   demo word     the same as help word
#include "kernel/keywords.h"
#include "language/args.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "language/help_table.h"
#include "language/lexer.h"

// Wherever `help` or `demo` stands, the other words of the record are
// explained in order: `ini help` gives the help of ini. A word that is no
// keyword comes as `help("word")`. `help` alone lists the words, `demo`
// alone explains itself.
int HELP_a(word* record, const word* limit) {
  (void)limit;
  int shown = 0;
  word* item = first_item(record);
  for (int i = 0; i < item_count(record); i++, item = next_item(item)) {
    const int code = item[2];
    if (code == KW_help || code == KW_demo) {
      const char* name = value_text(item_value(item));
      if (!name) continue;
      int voc = 0, found = 0;
      if (chercher_commande(name, &voc, &found) >= 0) help_print(found);
      else help_unknown(name);
      shown++;
      continue;
    }
    help_print(code);
    shown++;
  }
  if (shown == 0 && find_item(record, KW_help)) help_list();
  else if (shown == 0) help_print(KW_demo);
  return build_nil(record);
}
