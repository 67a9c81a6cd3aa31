// Assignment to variables, addresses and references; prefix and postfix
// operators and the queue of postfix changes of a statement.
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/code.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "language/variables.h"

namespace {

// Replaces a variable's value, reallocating only when the size differs.
int store(Objet* v, const word* value) {
  if (v->local && v->local[0] == value[0]) {
    memcpy(v->local, value, static_cast<size_t>(value[0]) * sizeof(word));
    return 0;
  }
  bloc b = alloue_bloc(value[0]);
  if (!b) return -1;
  memcpy(b, value, static_cast<size_t>(value[0]) * sizeof(word));
  libere_valeur(v->local);
  v->local = b;
  return 0;
}

// Writes through a reference, element by element (or triple by triple)
// up to the shorter length; a string fills characters or words.
int store_reference(const word* ref, const word* value) {
  Objet* v = handle_objet(ref[4]);
  if (!v || !v->local) {
    voir_message(0, MES_ILLEGAL_ASSIGNMENT);
    return -1;
  }
  bloc target = v->local;
  bool brace = tag(ref) == T_REF_BRACE;
  int count = ref[2];
  const word* idx = ref + 5;
  if (tag(target) == T_FLOAT && tag(value) == T_FLOAT) {
    int per = brace ? 3 : 1, n = elements(value);
    for (int i = 0, k = 0; i < count && k < n; i++)
      for (int j = 0; j < per && k < n; j++, k++) target[4 + idx[i] * per + j] = value[4 + k];
    return 0;
  }
  if (tag(target) == T_CHAR && tag(value) == T_CHAR) {
    const char* s = text(value);
    char* t = text(target);
    size_t len = strlen(t);
    if (!brace) {
      for (int i = 0; i < count && s[i]; i++)
        if (static_cast<size_t>(idx[i]) < len) t[idx[i]] = s[i];
      return 0;
    }
    // Whole words: each target word takes the next word of the string,
    // within the target's own room.
    std::string src = s;
    size_t from = 0;
    for (int i = 0; i < count; i++) {
      size_t b = src.find_first_not_of(" \t,", from);
      if (b == std::string::npos) break;
      size_t e = src.find_first_of(" \t,", b);
      std::string w = src.substr(b, e == std::string::npos ? std::string::npos : e - b);
      from = e == std::string::npos ? src.size() : e;
      int start = 0, n = 0, pos = 0, k = 0;
      for (;;) {
        while (t[pos] == ' ' || t[pos] == '\t' || t[pos] == ',') pos++;
        if (!t[pos]) break;
        int b2 = pos;
        while (t[pos] && t[pos] != ' ' && t[pos] != '\t' && t[pos] != ',') pos++;
        if (k++ == idx[i]) {
          start = b2;
          n = pos - b2;
          break;
        }
      }
      for (int c = 0; c < n; c++) t[start + c] = c < static_cast<int>(w.size()) ? w[static_cast<size_t>(c)] : ' ';
    }
    return 0;
  }
  voir_message(0, MES_ILLEGAL_ASSIGNMENT);
  return -1;
}


int change_all(Objet* v, float delta) {
  if (!v || !v->local || tag(v->local) != T_FLOAT) {
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  int n = elements(v->local);
  for (int i = 0; i < n; i++) setf(v->local, i, getf(v->local, i) + delta);
  return 0;
}

int copy_value(word* at, const word* value) {
  if (!room(at, size(value))) return -12;
  memmove(at, value, static_cast<size_t>(size(value)) * sizeof(word));
  return 0;
}

}  // namespace

int assign_to(word* left, const word* value) {
  if (value[0] < 0 && value[0] == T_ADDRESS) {
    Objet* v = token_variable(left);
    if (!v) {
      voir_message(0, MES_ILLEGAL_ASSIGNMENT);
      return -1;
    }
    // The variable becomes a reference to the target.
    libere_valeur(v->local);
    v->local = nullptr;
    var_make_address(v, value[1]);
    return 0;
  }
  if (is_variable_token(left)) {
    Objet* v = variable_of(left);
    if (!v) {
      voir_message(0, MES_ILLEGAL_ASSIGNMENT);
      return -1;
    }
    if (tag(value) == T_FLOAT && elements(value) == 0) {
      word nil[4];
      build_nil(nil);
      return store(v, nil);
    }
    return store(v, value);
  }
  if (left[0] == T_ADDRESS) {
    voir_message(0, MES_ILLEGAL_ASSIGNMENT);
    return -1;
  }
  if (left[0] > 0 && (tag(left) == T_REF_SQUARE || tag(left) == T_REF_BRACE)) return store_reference(left, value);
  if (left[0] > 0 && tag(left) == T_SEGMENTS) return assign_command(left, value);
  voir_message(0, MES_ILLEGAL_ASSIGNMENT);
  return -1;
}

int prefix(word* at, word op) {
  if (op == O_ADDRESS) {
    Objet* v = token_variable(at);
    if (!v) {
      voir_message(0, MES_ILLEGAL);
      return -1;
    }
    at[0] = T_ADDRESS;
    at[1] = objet_handle(v);
    return 0;
  }
  if (op == '!') {
    word* out = at + item_words(at);
    const word* v = value_of(at, out);
    if (!v) return -1;
    if (v == out) out += size(out);
    if (eval_not(v, out, eval_limit()) < 0) return -1;
    return copy_value(at, out);
  }
  Objet* v = variable_of(at);
  if (change_all(v, op == O_INC ? 1.0f : -1.0f) < 0) return -1;
  return copy_value(at, v->local);
}

int postfix(word* at, word op) {
  Objet* v = variable_of(at);
  if (!v || !v->local || tag(v->local) != T_FLOAT) {
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  LanguageState& L = lang();
  if (L.pending_count - L.pending_base >= PENDING_PER_EXPRESSION || L.pending_count >= PENDING_MAX) {
    voir_message(0, MES_INCOMPATIBLE_TYPES);
    return -1;
  }
  L.pending[L.pending_count++] = {objet_handle(v), op == O_INC ? 1.0f : -1.0f};
  return copy_value(at, v->local);
}

int pending_open() {
  LanguageState& L = lang();
  int previous = L.pending_base;
  L.pending_base = L.pending_count;
  return previous;
}

int pending_close(int previous, bool apply) {
  LanguageState& L = lang();
  int r = 0;
  for (int i = L.pending_base; apply && i < L.pending_count && r == 0; i++)
    r = change_all(handle_objet(L.pending[i].handle), L.pending[i].delta);
  L.pending_count = L.pending_base;
  L.pending_base = previous;
  return r;
}
