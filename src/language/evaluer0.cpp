// EVALUER_0: the interpreter vocabulary's dispatch. A first walk lets the
// words that act wherever they stand (`yes`, `no`, `debug`...) take the
// record; then the first word chooses the handler. What it does not
// handle goes to EVALUER_1.
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "language/operators.h"

namespace {

using Handler = int (*)(word* record, const word* limit);

struct Entry {
  int code;
  Handler handler;
};

// Words that act wherever they stand in the record.
constexpr Entry ANYWHERE[] = {
    {KW_debug, DEBUG_a},
    {KW_yes, YES_NO_a},
    {KW_no, YES_NO_a},
    {KW_read, READ_a},
    {KW_write, WRITE_a},
    // `help word` and `demo word` explain the other words of the record.
    {KW_help, HELP_a},
    {KW_demo, HELP_a},
    {KW_ini, INI_a},
    {KW_type, TYPE_a},
};

// Handlers chosen by the first word.
constexpr Entry FIRST[] = {
    {KW_aba, ABA_a},         {KW_bye, BYE_a},        {KW_exit, BYE_a},       {KW_compile, COMPILE_a},
    {KW_exec, executer_a},   {KW_GO, GO_a},        {KW_link, LINK_a},
    {KW_print, PRINT_a},     {KW_return, RETURN_a},  {KW_status, a_status},  {KW_system, SYSTEM_a},
    {KW_static, DECLARED_a}, {KW_extern, DECLARED_a}, {KW_global, DECLARED_a},
    {KW_calloc, ALLOC_a},    {KW_malloc, ALLOC_a},
    {KW_var, VAR_a},         {KW_rem, REM_a},        {KW_name, NAME_a},      {KW_dup, DUP_a},
    // The value functions.
    {KW_abs, fct0},          {KW_acos, fct0},        {KW_acosh, fct0},       {KW_arc, fct0},
    {KW_ascii, fct0},        {KW_asin, fct0},        {KW_asinh, fct0},       {KW_atan, fct0},
    {KW_atanh, fct0},        {KW_atof, fct0},        {KW_atoi, fct0},        {KW_char, fct0},
    {KW_cos, fct0},          {KW_cosh, fct0},        {KW_dist, fct0},        {KW_directory, fct0},
    {KW_ent, fct0},          {KW_error, fct0},       {KW_exp, fct0},         {KW_fclose, fct0},
    {KW_float, fct0},        {KW_fopen, fct0},       {KW_fread, fct0},       {KW_func, fct0},
    {KW_fwrite, fct0},       {KW_getline, fct0},     {KW_getword, fct0},     {KW_grep, fct0},
    {KW_inclu, fct0},        {KW_int, fct0},         {KW_inv, fct0},         {KW_log, fct0},
    {KW_module, fct0},       {KW_precision, fct0},   {KW_product, fct0},     {KW_rand, fct0},
    {KW_randf, fct0},        {KW_rand2f, fct0},      {KW_rand2, fct0},       {KW_scalar, fct0},
    {KW_sin, fct0},          {KW_sinh, fct0},        {KW_sum, fct0},         {KW_sqrt, fct0},
    {KW_string, fct0},       {KW_stringf, fct0},     {KW_tan, fct0},         {KW_tanh, fct0},
    {KW_unit, fct0},         {KW_vector, fct0},      {KW_wait, fct0},        {KW_format, fct0},
    {KW_average, MIN_MAX_a}, {KW_max, MIN_MAX_a},    {KW_min, MIN_MAX_a},    {KW_puls, PULS_a},
    // Console, listing and value commands.
    {KW_history, HISTORY_a}, {KW_list, LIST_a},
    {KW_LIST, LIST_a},       {KW_sort, SORT_a},      {KW_time, TIME_a},      {KW_number, NUMBER_a},
    {KW_NP, NP_a},           {KW_dim, DIM_a},      {KW_limit, LIMIT_a},
    {KW_CG, CG_a},           {KW_matrix, MATRIX_a},  {KW_input, INPUT_a},    {KW_ring, RING_a},
    {KW_alias, ALIAS_a},     {KW_STOP, STOP_a},      {KW_clean, CLEAN_a},
};

// The two tables spread by code, built once: dispatch is one load.
struct Dispatch {
  Handler anywhere[KW_PER_VOC] = {};
  Handler first[KW_PER_VOC] = {};
  Dispatch() {
    for (const Entry& e : ANYWHERE) anywhere[e.code] = e.handler;
    for (const Entry& e : FIRST) first[e.code] = e.handler;
  }
};

const Dispatch& dispatch() {
  static const Dispatch d;
  return d;
}

// With `error` off, a failed handler leaves the value in place and the
// line goes on.
int outcome(int r) {
  if (r < 0 && Yes(KW_error) <= 0) return 0;
  return r;
}

}  // namespace

bool has_other_vocabulary(const word* record) {
  const word* item = record + 4;
  for (int i = 0; i < item_count(record); i++, item += item[0])
    if (item[1] != 0) return true;
  return false;
}

word* find_item(word* record, int code) {
  word* item = first_item(record);
  for (int i = 0; i < item_count(record); i++, item = next_item(item))
    if (item[2] == code) return item;
  return nullptr;
}

int set_result(word* record, const word* value, const word* limit) {
  int n = item_words(value);
  if (record + n > limit) {
    err_dim_ev(nullptr);
    return -12;
  }
  memmove(record, value, static_cast<size_t>(n) * sizeof(word));
  return 0;
}


int EVALUER_0(word* record, const word* limit) {
  if (record[0] <= 0 || tag(record) != T_SEGMENTS) {
    voir_texte("EVALUER_0()");
    voir_message(0, MES_WARNING);
    return 0;
  }
  if (item_count(record) < 1) return build_nil(record);
  word* item = first_item(record);
  const Dispatch& d = dispatch();
  // The first word of another vocabulary hands the record on, unless a
  // word that acts anywhere comes before it.
  for (int i = 0; i < item_count(record); i++, item = next_item(item)) {
    if (item[1] != 0) return 1;
    int code = item[2];
    if (code >= 0 && code < KW_PER_VOC && d.anywhere[code]) return outcome(d.anywhere[code](record, limit));
  }
  return interpreter_command(record, limit);
}

int interpreter_command(word* record, const word* limit) {
  int code = first_item(record)[2];
  Handler h = code >= 0 && code < KW_PER_VOC ? dispatch().first[code] : nullptr;
  if (!h) return 1;
  return outcome(h(record, limit));
}
