// EVALUER_1: commands whose first word is graphic, and interpreter words
// that the interpreter passes on. One byte per code (-1 to 360) names a
// handler in a small table, so several words share one handler; words
// without a row go to bloc_0, the generic property command.
#include <array>
#include <cstdint>

#include "kernel/console.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "scene/graphic.h"
#include "scene/selection.h"
#include "scene/unsaved.h"
#include "scene/vol_commands.h"

namespace {

constexpr int NB_ENTRIES = 362;  // codes -1 to 360

// A handler that runs its interpreter counterpart on the same record.
template <int (*F)(word*, const word*)>
int interprete(word* s, const word*, word*, const word* lim) {
  return F(s, lim);
}

// Whether a command changes the objects it names (an assignment always
// does): its followed objects are then marked unsaved before it runs.
enum class Change : uint8_t {
  never,
  always,
  with_value,  // when the first word carries a value: `type("t") vol(1)`
};

struct Row {
  std::initializer_list<int> codes;
  Handler1 handler;
  bool quiet = false;  // a failure is not traced
  Change change = Change::never;
};

// The words of the scene whose handler is in place; the subsystems above
// register theirs at start-up, and the others answer through bloc_0.
const Row ROWS[] = {
    {{KW_rem}, REM_b},
    {{KW_dup}, DUP_b},
    {{KW_clean}, CLEAN_b},
    {{KW_ini}, INI_b},
    {{KW_name, KW_number}, NUM_b, false, Change::with_value},
    {{KW_type}, TYPE_b, false, Change::with_value},
    {{KW_status}, b_status},
    {{KW_print}, PRINT_b},
    {{KW_yes, KW_no}, interprete<YES_NO_a>},
    {{KW_list, KW_LIST}, LIST_b},
    {{KW_vol}, OBJ_b, false, Change::with_value},
    {{KW_object, KW_brush, KW_device, KW_field, KW_fog, KW_genetic, KW_law, KW_light, KW_memory,
      KW_menu, KW_network, KW_traj, KW_scale, KW_stock, KW_audio},
     OBJET_b, false, Change::with_value},
    {{KW_cube}, CUBE_b, true},
    {{KW_ball}, BALL_b},
    {{KW_rev}, REV_b},
    {{KW_prism}, PRISM_b},
    {{KW_grid}, GRID_b},
    {{KW_rand, KW_alex, KW_aley, KW_alez, KW_cutx, KW_cuty, KW_cutz, KW_dila, KW_dilx, KW_dily, KW_dilz, KW_hom,
      KW_move, KW_rotx, KW_roty, KW_rotz, KW_syma, KW_symx, KW_symy, KW_symz, KW_tran, KW_distort, KW_alea, KW_rota},
     MOD_b, false, Change::always},
    {{KW_camera}, [](word* s, const word* ob, word*, const word* lim) { return set_get_val_com(s, lim, ob); }},
    {{KW_debug}, interprete<DEBUG_a>, true},
    {{KW_system}, interprete<SYSTEM_a>, true},
    {{KW_compile}, interprete<COMPILE_a>},
    {{KW_link}, interprete<LINK_a>},
    // Measured and generated data of volumes.
    {{KW_CG}, CG_b},
    {{KW_limit}, LIMIT_b},
    {{KW_radius}, RADIUS_b},
    {{KW_generate}, GENERATE_b, false, Change::always},
    {{KW_local}, LOCALE_b, false, Change::with_value},
    {{KW_normal, KW_near, KW_coord, KW_poi, KW_fac}, LIRE_DERIVE},
};

struct Table {
  std::array<uint8_t, NB_ENTRIES> index{};  // 0: bloc_0
  std::vector<Handler1> handlers{bloc_0};
  std::vector<bool> quiet{false};
  std::vector<Change> change{Change::never};
  // The shapes a word's subsystems take, tried in order; none: the row
  // answers alone.
  std::array<std::vector<ShapedHandler>, NB_ENTRIES> shaped{};
  Table() {
    for (const Row& r : ROWS) {
      handlers.push_back(r.handler);
      quiet.push_back(r.quiet);
      change.push_back(r.change);
      for (int c : r.codes) index[c + 1] = static_cast<uint8_t>(handlers.size() - 1);
    }
  }
};

Table& table() {
  static Table t;
  return t;
}

bool names_object(word* s) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (mot_objet_rem(item[2])) return true;
  return false;
}

// The current values of `col` (3), `illum` (5) and, through the fifth
// illumination value, `transp`, set from the parameter or the right side.
int valeurs_couleur(word* s, const word* ob, const word* lim) {
  if (first_item(s)[2] == KW_coe) return bloc_0(s, ob, s + s[0], lim);
  return set_get_val_com(s, lim, ob);
}

// True when a stacked command names an object other than a menu: the
// animation still needs the stack.
bool stacked_object() {
  const word* stack = kernel().command_stack;
  if (!stack) return false;
  const word* cmd = stack + 4;
  for (int c = 0; c < np(stack) && cmd < kernel().command_insert && cmd[0] > 0; c++, cmd += cmd[0]) {
    const word* seg = cmd + 4;
    for (int i = 0; i < np(cmd) && seg[0] >= 3; i++, seg += seg[0])
      if (seg[2] != KW_menu && mot_objet(seg[2])) return true;
  }
  return false;
}

// `transp(t)` alone: the fifth illumination value.
int valeur_transparence(word* s, const word* ob, const word* lim) {
  int count = 0;
  float* illum = val_com(KW_illum / KW_PER_VOC, KW_illum, &count);
  const word* v = ob ? ob : item_value(first_item(s));
  if (!illum || count < 5) return bloc_0(s, ob, s + s[0], lim);
  if (v && tag(v) == T_FLOAT && np(v) > 0) illum[4] = getf(v, 0);
  return ob ? 0 : build_float(s, lim, illum[4]);
}

// The words whose dispatch depends on the command's shape.
int special(word* s, int code, const word* ob, word* st, const word* lim, bool* done) {
  *done = true;
  const int n = item_count(s);
  switch (code) {
    case KW_aba:
      if (!stacked_object()) abandon_state();
      return build_nil(s);
    case KW_help:
      return build_nil(s);  // the interaction help is off
    case KW_sort:
      if (n < 2) return SORT_a(s, lim);
      break;
    case KW_normal:
      if (n == 1) return set_get_val_com(s, lim, ob);
      break;
    case KW_coe: case KW_col: case KW_illum:
      if (n == 1) return valeurs_couleur(s, ob, lim);
      break;
    case KW_transp:
      if (n == 1) return valeur_transparence(s, ob, lim);
      break;
    case KW_alea:
      if (n == 1) return ALEA_b(s, ob, st, lim);
      break;
    case KW_dynamic:
      if (n < 2) return set_get_val_com(s, lim, ob);
      break;
    default:
      break;
  }
  *done = false;
  return 0;
}

}  // namespace

void register_graphic_handler(std::initializer_list<int> codes, Handler1 handler, bool quiet) {
  Table& t = table();
  t.handlers.push_back(handler);
  t.quiet.push_back(quiet);
  t.change.push_back(Change::never);
  for (int c : codes)
    if (c >= -1 && c < NB_ENTRIES - 1) t.index[c + 1] = static_cast<uint8_t>(t.handlers.size() - 1);
}

void register_graphic_shape(int code, ShapedHandler handler) {
  if (code >= -1 && code < NB_ENTRIES - 1) table().shaped[code + 1].push_back(handler);
}

int evaluer_1(word* s, const word* ob, word* st, const word* lim) {
  if (s[0] <= 0 || tag(s) != T_SEGMENTS) {
    err_warning("EVALUER_1()");
    return -1;
  }
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) {
    const int code = item[2];
    if (code >= 400) {
      voir_mot(code);
      voir_message(0, MES_NOT_IMPLEMENTED);
      return -1;
    }
    if (code < -1) return 0;
    if (code == -1) continue;  // a placeholder: the next word decides
    bool done = false;
    int r = 0;
    // An interpreter command with graphic words but no object: the
    // interpreter's own handler, as `matrix(m) transp`.
    if (code < KW_PER_VOC && !ob && !names_object(s)) {
      r = interpreter_command(s, lim);
      done = r != 1;
    }
    if (!done) r = special(s, code, ob, st, lim, &done);
    const Table& t = table();
    if (!done && code < NB_ENTRIES - 1)
      for (ShapedHandler shape : t.shaped[code + 1]) {
        r = shape(s, ob, st, lim, &done);
        if (done) break;
      }
    if (!done) {
      const int h = code < NB_ENTRIES - 1 ? t.index[code + 1] : 0;
      const Change c = t.change[h];
      if (ob || c == Change::always || (c == Change::with_value && item_value(item)))
        marque_objets_commande(s);
      r = t.handlers[h](s, ob, st, lim);
      if (r < 0 && t.quiet[h]) return r;
    }
    if (r < 0 && code == KW_audio) bell();
    if (r < 0) TRACE_FAIL("EVALUER_1()");
    return r;
  }
  return build_nil(s);
}

// The first free word above the command, and above the right side of an
// assignment when it stands there.
static word* libre(word* s, const word* ob) {
  word* st = s + s[0];
  if (ob && ob >= st) st = const_cast<word*>(ob) + size(ob);
  return st;
}

int EVALUER_1(word* record, const word* limit) { return evaluer_1(record, nullptr, libre(record, nullptr), limit); }

int EVALUER_1_assign(word* record, const word* value, const word* limit) {
  return evaluer_1(record, value, libre(record, value), limit);
}

void install_scene_commands() { lang().graphic_command = EVALUER_1_assign; }
