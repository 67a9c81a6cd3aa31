// EVALUER_1: commands of the graphic vocabulary, and interpreter words
// that no handler of the interpreter takes. Until the object store and
// the property grammar are in place every such command reports that it
// is not implemented, naming its words.
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/commands.h"

namespace {

int not_implemented(word* record) {
  word* item = first_item(record);
  for (int i = 0; i < item_count(record); i++, item = next_item(item)) voir_mot(item[2]);
  voir_message(0, 104);
  return -1;
}

}  // namespace

int EVALUER_1(word* record, const word* limit) {
  (void)limit;
  return not_implemented(record);
}

int EVALUER_1_assign(word* record, const word* value, const word* limit) {
  (void)value;
  (void)limit;
  return not_implemented(record);
}
