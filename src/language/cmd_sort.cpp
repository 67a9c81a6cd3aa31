// `sort`: the elements of a FLOAT in ascending order, the words of a
// string in byte order joined by one blank.
//   sort(v)          ascending
//   sort(v) inv      descending
//   sort(v) number   the order instead: the positions (from 0) of the
//                    elements, smallest first (largest first with inv)
#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"

namespace {

template <class T>
std::vector<size_t> order(const std::vector<T>& v, bool descending) {
  std::vector<size_t> idx(v.size());
  std::iota(idx.begin(), idx.end(), size_t{0});
  std::stable_sort(idx.begin(), idx.end(), [&](size_t a, size_t b) { return descending ? v[b] < v[a] : v[a] < v[b]; });
  return idx;
}

template <class T>
int sorted_result(word* record, const word* limit, const std::vector<T>& v, bool descending, bool positions,
                  int (*write)(word*, const word*, const std::vector<T>&, const std::vector<size_t>&)) {
  std::vector<size_t> idx = order(v, descending);
  if (positions) {
    std::vector<float> f;
    for (size_t i : idx) f.push_back(static_cast<float>(i));
    return build_floats(record, limit, f);
  }
  return write(record, limit, v, idx);
}

int write_floats(word* record, const word* limit, const std::vector<float>& v, const std::vector<size_t>& idx) {
  std::vector<float> f;
  for (size_t i : idx) f.push_back(v[i]);
  return build_floats(record, limit, f);
}

int write_words(word* record, const word* limit, const std::vector<std::string>& v, const std::vector<size_t>& idx) {
  std::string s;
  for (size_t i : idx) s += (s.empty() ? "" : " ") + v[i];
  return build_text_or_nil(record, limit, s);
}

}  // namespace

int SORT_a(word* record, const word* limit) {
  const word* arg = command_argument(record);
  bool descending = find_item(record, KW_inv) != nullptr;
  bool positions = find_item(record, KW_number) != nullptr;
  if (!arg || tag(arg) == T_NIL) return build_nil(record);
  if (tag(arg) == T_FLOAT) return sorted_result(record, limit, floats_of(arg), descending, positions, write_floats);
  if (const char* s = value_text(arg))
    return sorted_result(record, limit, split_words(s), descending, positions, write_words);
  err_syntaxe(MES_COMMAND_USAGE, KW_sort, "(v) [inv] [number]\n");
  return -1;
}
