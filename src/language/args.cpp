// The reader of a command's arguments (args.h).
#include "language/args.h"

#include "kernel/access.h"

namespace {

// Calls f on each element of a FLOAT or LONG until it returns false;
// false when f stopped.
template <class F>
bool each_element(const word* v, F& f) {
  const int n = elements(v);
  if (tag(v) == T_FLOAT) {
    for (int i = 0; i < n; i++)
      if (!f(getf(v, i))) return false;
  } else if (tag(v) == T_LONG) {
    for (int i = 0; i < n; i++)
      if (!f(static_cast<float>(v[4 + i]))) return false;
  }
  return true;
}

// The same over every number of v, by the rule of args.h.
template <class F>
void each_number(const word* v, F&& f) {
  if (!v || size(v) < 4) return;
  if (tag(v) != T_HYBRIDE) {
    each_element(v, f);
    return;
  }
  for (int p = 0; p < hybride_parts(v); p++)
    if (const word* part = sous_bloc(v, p); part && !each_element(part, f)) return;
}

// Number i of v into out; false when v has none such. FLOAT and LONG are
// read in place, a HYBRIDE walked.
bool number_at(const word* v, int i, float* out) {
  if (!v || i < 0 || size(v) < 4) return false;
  if (tag(v) == T_FLOAT || tag(v) == T_LONG) {
    if (i >= elements(v)) return false;
    *out = tag(v) == T_FLOAT ? getf(v, i) : static_cast<float>(v[4 + i]);
    return true;
  }
  bool found = false;
  int k = 0;
  each_number(v, [&](float x) {
    if (k++ < i) return true;
    *out = x, found = true;
    return false;
  });
  return found;
}

}  // namespace

int floats_of(const word* v, float* out, int n) {
  int k = 0;
  if (n > 0)
    each_number(v, [&](float x) {
      out[k++] = x;
      return k < n;
    });
  return k;
}

std::vector<float> floats_of(const word* v) {
  std::vector<float> out;
  each_number(v, [&](float x) {
    out.push_back(x);
    return true;
  });
  return out;
}

float value_at(const word* v, int i, float dflt) {
  float f = 0;
  return number_at(v, i, &f) ? f : dflt;
}

std::vector<float> arg_floats(word* s, int code, bool* present) {
  word* item = find_item(s, code);
  if (present) *present = item != nullptr;
  return item ? floats_of(item_value(item)) : std::vector<float>{};
}

std::vector<std::vector<float>> arg_floats_all(word* s, int code) {
  std::vector<std::vector<float>> out;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (item[2] == code) out.push_back(floats_of(item_value(item)));
  return out;
}

float arg_float(word* s, int code, float dflt, int i) { return value_at(arg_of(s, code), i, dflt); }

int arg_int(word* s, int code, int dflt, int i) {
  float f = 0;
  return number_at(arg_of(s, code), i, &f) ? entier(f) : dflt;
}

std::vector<int> arg_ints(word* s, int code) {
  std::vector<int> out;
  for (float f : arg_floats(s, code)) out.push_back(entier(f));
  return out;
}
