// lier_fonction: the link of compiled code, in three walks over the
// tokens: calls, `break`, then jumps and the offsets of control records.
#include <cstring>
#include <string>
#include <vector>

#include "kernel/chains.h"
#include "kernel/exceptions.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/compile.h"
#include "language/compile_internal.h"
#include "language/functions.h"
#include "language/lang_state.h"

namespace {

// The symbol table behind the code of a compiled bloc.
const word* code_table(const word* code) { return code + code[0] + 1; }

const word* table_entry(const word* table, int ordinal) {
  for (int i = 0; *table; table += table[0], i++)
    if (i == ordinal) return table;
  return nullptr;
}

struct Link {
  Objet* obj;
  Tokens& t;
  const word* table;
  int line = 0;
  int construct = 0;  // message of the construct being linked
  // The brackets stay where they are through the three walks.
  const Groupes g{t};

  int fail(int message) {
    if (obj->kind == KIND_FUNC || obj->kind == KIND_LOCAL) {
      voir_mot(KW_func);
      VOIR_CHAR("%s ", obj->name ? obj->name : "");
    }
    voir_message(0, MES_LINE);
    voir_int(" %d: ", line);
    voir_message(0, message);
    voir_message(0, MES_LINK_ERROR);
    return -1;
  }
  void line_before(size_t at) {
    for (size_t j = 0; j < at && t[j] != 0; j = next_token(t, j))
      if (t[j] == C_LINE) line = t[j + 1];
  }

  int calls();
  int breaks();
  int flow();
  int switch_entries(const Tokens& orig, size_t r);
  size_t first_block(size_t r) const;
};

// The function a call names: a local function of the object, then any.
Objet* find_called(Objet* obj, const char* name) {
  for (Objet* o = obj->child; o; o = o->next)
    if ((o->kind == KIND_FUNC || o->kind == KIND_LOCAL) && o->name && strcmp(o->name, name) == 0) return o;
  return get_fonction(name);
}

int Link::calls() {
  for (size_t j = 0; j < t.size() && t[j] != 0; j = next_token(t, j)) {
    word* r = &t[j];
    if (r[0] == C_LINE) line = r[1];
    if (r[0] <= 0 || (r[1] != R_UNDEFINED && r[1] != R_CODE_FUNC && r[1] != R_FUNC_DISK)) continue;
    const word* e = table_entry(table, r[4]);
    if (!e || (e[1] != R_UNDEFINED && e[1] != C_FORMEL)) {
      err_fonction(nullptr, r[4]);
      return fail(MES_NON_DEFINED_FUNCTION);
    }
    if (e[1] == C_FORMEL) continue;  // a call through a formal stays
    const char* name = reinterpret_cast<const char*>(e + 5);
    Objet* f = find_called(obj, name);
    r[1] = f ? R_CODE_FUNC : R_FUNC_DISK;
    r[2] = f ? objet_handle(f) : r[4];
  }
  return 0;
}

// Index of the open token of a control record's first block.
size_t Link::first_block(size_t r) const {
  size_t j = next_token(t, r);
  int groups = 1;
  if (t[r + 1] == R_FOR_COUNTED) groups = t[r + FOR_STEP] ? 3 : 2;
  else if (t[r + 1] == R_FOR_C) groups = 2;
  for (int k = 0; k < groups && j < t.size(); k++) j = g.end(j);
  return j;
}

// Each `break` is linked by the innermost `if`, `for` or `switch` whose
// first block holds it: a jump behind the n-th closing bracket that
// follows it, nested groups stepped over, n being 2 for an `if` and 1
// otherwise; that close is the one of the n-th group around the break.
// A `break` in no such block (a `while` or an `else` block at the top)
// stays. One walk, keeping the groups and the first blocks around it.
int Link::breaks() {
  struct Bloc {
    size_t open, end;
    int n;
  };
  std::vector<size_t> ouverts;
  std::vector<Bloc> blocs;
  for (size_t j = 0; j < t.size() && t[j] != 0; j = next_token(t, j)) {
    word* k = &t[j];
    if (k[0] == C_LINE) line = k[1];
    while (!blocs.empty() && j + 2 >= blocs.back().end) blocs.pop_back();
    if (is_open(k)) {
      ouverts.push_back(j);
    } else if (is_close(k)) {
      if (!ouverts.empty()) ouverts.pop_back();
    } else if (k[0] > 0 && (k[1] == R_IF || k[1] == R_FOR_COUNTED || k[1] == R_FOR_C || k[1] == R_SWITCH)) {
      const size_t open = first_block(j);
      if (!oper_at(t, open, O_OPEN)) return fail(MES_ILLEGAL_BREAK);
      blocs.push_back({open, g.end(open), k[1] == R_IF ? 2 : 1});
    } else if (k[0] == C_BREAK) {
      // The top block may not have begun: the break is then in the
      // heads of its record, which lie in the block below.
      size_t b = blocs.size();
      while (b > 0 && j <= blocs[b - 1].open) b--;
      if (b == 0) continue;
      const size_t n = static_cast<size_t>(blocs[b - 1].n);
      if (ouverts.size() < n) return fail(MES_ILLEGAL_BREAK);
      const size_t target = g.end(ouverts[ouverts.size() - n]);
      if (target >= t.size()) return fail(MES_ILLEGAL_BREAK);
      k[0] = C_JUMP;
      k[1] = static_cast<word>(target - j);
    }
  }
  return 0;
}

void set_jump(Tokens& t, size_t at, size_t target) {
  t[at] = C_JUMP;
  t[at + 1] = static_cast<word>(static_cast<long>(target) - static_cast<long>(at));
}

// Offsets are computed on an untouched copy, so that tokens turned into
// jumps never hide a bracket from a later computation.
int Link::flow() {
  const Tokens orig = t;
  auto off = [](size_t a, size_t r) { return static_cast<word>(static_cast<long>(a) - static_cast<long>(r)); };
  for (size_t r = 0; r < orig.size() && orig[r] != 0; r = next_token(orig, r)) {
    const word* k = &orig[r];
    if (k[0] == C_LINE) line = k[1];
    if (k[0] == C_GOTO) {
      construct = 55;
      size_t label = 0;
      for (size_t j = 0; j < orig.size() && orig[j] != 0; j = next_token(orig, j))
        if (orig[j] == C_LABEL && orig[j + 1] == k[1]) {
          label = next_token(orig, j);
          break;
        }
      if (!label) return fail(MES_NO_LABEL_FOUND);
      set_jump(t, r, label);
      continue;
    }
    if (k[0] <= 0) continue;
    word tag_word = k[1];
    if (tag_word == R_IF || tag_word == R_WHILE) {
      construct = 45;
      size_t cond = r + IF_WORDS, body = g.end(cond);
      if (!oper_at(orig, body, O_OPEN)) return fail(MES_IF_USAGE);
      size_t after = g.end(body);
      t[r + 1] = R_IF_LINKED;
      t[r + TEST_CONDITION] = IF_WORDS;
      t[r + TEST_TRUE] = off(body + 2, r);
      t[r + TEST_FALSE] = off(after, r);
      if (tag_word == R_WHILE) {
        set_jump(t, after - 2, r);
      } else if (oper_at(orig, after, O_ELSE)) {
        size_t else_open = next_token(orig, after);
        size_t else_end = g.end(else_open);
        t[r + TEST_FALSE] = off(else_open, r);
        set_jump(t, after, else_end);
        if (oper_at(orig, next_token(orig, else_open), O_CLOSE)) t[else_open + 1] = O_NOP;
      }
    } else if (tag_word == R_FOR_COUNTED) {
      construct = 95;
      size_t g1 = r + FOR_WORDS, g2 = g.end(g1), g3 = g.end(g2);
      size_t open = orig[r + FOR_STEP] ? g.end(g3) : g3;
      if (!oper_at(orig, open, O_OPEN)) return fail(MES_FOR_USAGE);
      size_t close = g.end(open) - 2;
      t[r + 1] = R_FOR_COUNTED_LINKED;
      t[r + FOR_INIT] = off(g1, r);
      t[r + FOR_END] = off(g2, r);
      t[r + FOR_STEP] = orig[r + FOR_STEP] ? off(g3, r) : 0;
      set_jump(t, open, open + 2);
      t[r + FOR_BODY] = off(open + 2, r);
      set_jump(t, close, r);
      t[r + FOR_AFTER] = off(close + 2, r);
    } else if (tag_word == R_FOR_C) {
      construct = 33;
      size_t cond = r + FOR_WORDS, inc = g.end(cond), open = g.end(inc);
      if (!oper_at(orig, open, O_OPEN)) return fail(MES_FOR_C_USAGE);
      size_t close = g.end(open) - 2;
      t[r + 1] = R_FOR_C_LINKED;
      t[r + TEST_CONDITION] = off(cond, r);
      set_jump(t, open, r);
      t[r + TEST_TRUE] = off(open + 2, r);
      set_jump(t, close, inc);
      t[r + TEST_FALSE] = off(close + 2, r);
    } else if (tag_word == R_SWITCH) {
      construct = 58;
      if (switch_entries(orig, r) < 0) return fail(MES_SWITCH_USAGE);
    }
  }
  return 0;
}

// The entries of a switch record: for a constant case or `default`, the
// marker's offset and value; for an expression case, the negated offset of
// the code after the expression and the expression's offset. Without a
// `default` the last entry holds the offset of the block's end.
int Link::switch_entries(const Tokens& orig, size_t r) {
  size_t expr = next_token(orig, r), open = g.end(expr);
  if (!oper_at(orig, open, O_OPEN)) return -1;
  size_t end = g.end(open);
  int entries = orig[r + 2], e = 0;
  t[r + 1] = R_SWITCH_LINKED;
  for (size_t j = next_token(orig, open); j + 2 < end && e < entries;) {
    if (is_open(&orig[j])) {
      j = g.end(j);
      continue;
    }
    word* entry = &t[r + 3 + 2 * e];
    if (orig[j] == C_DEFAULT || (orig[j] == C_CASE && oper_at(orig, next_token(orig, j), ';'))) {
      entry[0] = static_cast<word>(j - r);
      entry[1] = orig[j + 1];
      e++;
    } else if (orig[j] == C_CASE) {
      size_t expr = next_token(orig, j);
      if (!oper_at(orig, expr, '(')) return -1;
      size_t after = g.end(expr);
      entry[0] = -static_cast<word>(after - r);
      entry[1] = static_cast<word>(expr - r);
      e++;
      j = after;
      continue;
    }
    j = next_token(orig, j);
  }
  if (e < entries) {
    word* sentinel = &t[r + 3 + 2 * e];
    sentinel[0] = static_cast<word>(end - 2 - r);
    sentinel[1] = 0;
    e++;
  }
  return e == entries ? 0 : -1;
}

}  // namespace

int lier_fonction(Objet* obj) {
  if (!obj) return -1;
  if (!obj->code && a_compile(obj) < 0) return -1;
  if (!obj->code) return -1;
  word* code = obj->code;
  Tokens t;
  int r = sans_exception([&] {
    t.assign(code + CODE_HEAD, code + code[0]);
    Link l{obj, t, code_table(code)};
    int q = l.calls();
    if (q >= 0) q = l.breaks();
    if (q >= 0) q = l.flow();
    return q;
  });
  LanguageState& L = lang();
  if (r < 0) {
    L.link_state = -1;
    TRACE_FAIL("lier_fonction()");
    return -1;
  }
  std::memcpy(code + CODE_HEAD, t.data(), t.size() * sizeof(word));
  L.link_state = 1;
  if (L.listing_link != 0) {
    voir_texte("LINK\n");
    lister_code(code + CODE_HEAD, code_table(code), L.listing_link, true);
  }
  return 0;
}

int compiler_tout() {
  int r = 0;
  for (Objet* f = chaine_classe(KW_func)->next; f; f = f->next)
    if (f->kind == KIND_FUNC && a_compile(f) < 0) r = -1;
  return r;
}

int lier_tout() {
  int r = 0;
  for (Objet* f = chaine_classe(KW_func)->next; f; f = f->next)
    if (f->kind == KIND_FUNC && lier_fonction(f) < 0) r = -1;
  lang().link_state = r < 0 ? -1 : 1;
  return r;
}
