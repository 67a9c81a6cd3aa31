// `help` and `demo`: the keywords of the interpreter vocabulary.
//   help          all keywords, in columns
//   help word...  for each word: its name line, its descriptor, its
//                 default and current values, and how it is used
//   demo word     the same as help word
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "language/lang_state.h"

namespace {

struct Usage {
  int code;
  const char* text;
};

constexpr Usage USAGES[] = {
    {KW_alias, "alias(\"name=replacement\") adds an alias line, alias alone prints the table; yes alias applies it"},
    {KW_bye, "bye leaves after confirmation; bye(\"question\") sets the question, bye func(\"f\") the exit function"},
    {KW_calloc, "x=calloc(n) or x=calloc dim(n,d) [char]: a zeroed value of n elements (malloc the same)"},
    {KW_CG, "CG(x1,y1,z1,x2,y2,z2,...) the mean point of the points; CG vol(ids) [abs anc matrix] the centre of volumes; CG vertex(n..) fac(f..) secx(i..) secy(j..) coe(w..) animate vol(id) centres of parts; CG image(id)"},
    {KW_clean, "clean(\"text\") the text without its leading and trailing blanks; clean removes empty generic objects; clean vol(1) keeps the first of duplicate properties"},
    {KW_compile, "compile func(\"f\") compiles a function; compile message(...) the message form"},
    {KW_debug, "debug func, debug var, debug local, debug message, debug(\"*\") list objects; edit adds values"},
    {KW_demo, "demo word prints the help of the word"},
    {KW_dim, "dim(v) the element width and the size in words of v"},
    {KW_dup, "dup func(\"f g\") copies function f as g; dup vol(id1,id2,...) copies object id1 as id2..."},
    {KW_exec, "exec(\"file\") runs a task; exec exec(\"a;b\"), exec message(env,num), exec func(\"f\") time(p)"},
    {KW_exit, "exit ends the program at once, after the steps of bye"},
    {KW_func, "func the function names; func(\"f\") its source; func=\"f(x){...}\" defines it"},
    {KW_GO, "GO ends the console loop after the running text"},
    {KW_help, "help lists the keywords; help word... shows their descriptors, values and usage"},
    {KW_history, "history lists the console lines; history(n) runs line n again"},
    {KW_ini, "ini yes, ini no, ini ini, ini debug, ini word: initial values back; ini vol removes every volume"},
    {KW_input, "input or input(\"prompt\"): a typed line, numbers as FLOAT, other text as CHAR"},
    {KW_limit, "limit(v) dim(min,max) each element held between min and max; dim(m) between -m and m; limit [generate] vol(ids) the box min x,y,z max x,y,z"},
    {KW_link, "link links the calls of the functions"},
    {KW_LIST, "LIST func the sources, LIST var the extern and static variables, LIST(\"define\") the macros, LIST vol[(id)] objects and their properties"},
    {KW_list, "list func the function names, list var the extern variables, list(\"define\") the defined names, list vol[(id)] the objects"},
    {KW_malloc, "x=malloc(n) or x=malloc dim(n,d) [char]: a zeroed value of n elements"},
    {KW_matrix, "matrix identity 4x4; matrix(m); matrix(a,b) product; matrix(m) transp; matrix(m,x,y,z...) vector"},
    {KW_name, "name(\"file.ext\") the root of a file name; name func the current function; name vol(id)[=\"a\"] object names"},
    {KW_no, "no word... sets the switches of the words to 0; no(n) word to n"},
    {KW_NP, "NP(v) the np word of v: points, parts, or characters of a string"},
    {KW_number, "number(\"1 2,3\") the numbers of a text; number(v) the element count of v; number vol(\"a\")[=n] object numbers"},
    {KW_print, "print(v) prints v; the value is NIL"},
    {KW_read, "read func(\"file\") reads functions from a file; read vol[(ids)] [add] name(\"file\") reads objects"},
    {KW_rem, "rem var(\"a b\"), rem var, rem func(\"f\"), rem(\"define\"), rem STOP(\"f\",n), rem vol[(id)], rem col vol(id) remove objects and properties"},
    {KW_return, "return or return(v): leaves the function with NIL or v"},
    {KW_ring, "ring one bell; ring(n) n bells; ring(n,ms) ms apart; ring(-1) after each console line"},
    {KW_sort, "sort(v) ascending; sort(v) inv descending; sort(v) number the positions in order; words of a string"},
    {KW_status, "status the switch array; status word [(n)] one switch; status(x) the shape of x"},
    {KW_STOP, "STOP(\"f\",line) adds a stopping point; STOP alone lists them (kept for the debugger)"},
    {KW_system, "system(\"command\") runs a shell command; system(n) sets the system variable"},
    {KW_time, "time seconds since start-up; time(0) starts the chronometer, time(1) reads it; dist(t) time seconds since t; precision time(...) as time"},
    {KW_type, "type(v) 0 NIL, 1 CHAR, 2 LONG, 3 FLOAT, 4 HYBRIDE; type vol(id)[=\"name\"] the user type of objects"},
    {KW_var, "var the extern names; var(\"x\") [func(\"f\")] the value of x; var func(\"f\") its statics"},
    {KW_write, "write func(\"file\") writes the functions to a file; write vol[(ids)] name(\"file\") [NP(n)] writes objects"},
    {KW_yes, "yes word... sets the switches of the words to 1; yes(n) word to n"},
    // Objects and volumes.
    {KW_vol, "vol(id) poi(x,y,z,...) fac(1,2,3,...) makes a volume; vol(id) pipe(a,b), envelope(a,b) secx(n), arc(r,a0,a1,n), vol(id) vol(a) vol(b)"},
    {KW_object, "object(id) word(values)... makes generic objects; word object(id)=v sets a property, word object(id) reads it"},
    {KW_cube, "cube(id) dim(dx,dy,dz): 8 vertices at +-d, 6 facets"},
    {KW_ball, "ball(id) dim(r) secy(ny) secx(nx) [poi dila rotx roty rotz] [sphere]; ball(id) alone: radius 1, 8 sections"},
    {KW_rev, "rev(id) poi(x,y,z,...) ang(a,a0) secx(n) [close]: a profile turned about y"},
    {KW_prism, "prism(id) poi(base x,y,z,...) poi(dx,dy,dz) secy(n) [close]: a base moved along a displacement"},
    {KW_grid, "grid(id) dim(dx,dy,dz) secx(nx) secy(ny) secz(nz): a lattice of cells"},
    {KW_radius, "radius [vertex(n..)] vol(ids) the largest distance from the mean point; radius near vertex(n) vol(id) a vertex's radius"},
    {KW_generate, "generate [normal fac|normal vertex|coord vertex|near vertex|radius near vertex|poi anc|frac(n)|ext(d)] vol(ids) computes generated data"},
    {KW_normal, "normal(x,y,z) the current normal; normal fac[(f..)] vol(id), normal vertex[(n..)] vol(id) unit normals"},
    {KW_near, "near vertex[(n..)] vol(id) the neighbours of vertices; near vertex dist vol(id) the lengths of the edges"},
    {KW_coord, "coord vertex[(n..)] vol(id) texture coordinates u,v"},
    {KW_local, "local(\"f(){...}\") vol(ids) adds a local function; local vol(id) their names; local(n) or local(\"f\") vol(id) a text; local exec vol(ids) runs them; rem local[(n)] vol(ids)"},
    {KW_alea, "alea reads and alea(n) sets the seed of the random table; alea(ax,ay,az) vol(id) moves vertices by it"},
};

// The transformations of vertices share one line.
constexpr int TRANSFORMS[] = {KW_tran, KW_rotx, KW_roty, KW_rotz, KW_rota, KW_dila, KW_dilx, KW_dily, KW_dilz,
                              KW_hom,  KW_symx, KW_symy, KW_symz, KW_syma, KW_cutx, KW_cuty, KW_cutz, KW_alex,
                              KW_aley, KW_alez, KW_distort, KW_move};
constexpr const char* TRANSFORM_USAGE =
    "tran(dx,dy,dz) rotx(a) rota(a) axis(x,y,z) dila(k..) hom symx cutx(k)... obj(ids) [vertex(n..) acc dec cos sin "
    "pend law(id)] [poi(c) CG] [ini(1) validate] [max] [generate] [matrix]";

// The value functions share one line.
constexpr int MATH[] = {KW_abs,  KW_acos, KW_asin, KW_atan, KW_cos,  KW_cosh, KW_exp,  KW_ent,  KW_int,
                        KW_log,  KW_sin,  KW_sinh, KW_sqrt, KW_sum,  KW_tan,  KW_tanh, KW_unit, KW_module,
                        KW_max,  KW_min,  KW_average, KW_rand, KW_randf, KW_scalar, KW_product, KW_vector, KW_dist};
constexpr const char* MATH_USAGE = "abs acos asin atan cos exp int log sin sqrt sum max min rand... (v): math on a vector";

const char* usage_of(int code) {
  for (const Usage& u : USAGES)
    if (u.code == code) return u.text;
  for (const auto& [c, text] : lang().usages)
    if (c == code) return text;
  for (int m : MATH)
    if (m == code) return MATH_USAGE;
  for (int t : TRANSFORMS)
    if (t == code) return TRANSFORM_USAGE;
  return nullptr;
}

// The first word of a name line.
void print_name(int code, int width) {
  const char* n = vocab().name[code];
  int len = 0;
  for (; n && n[len] && n[len] != ' ' && n[len] != ',' && n[len] != '\n'; len++) voir_car(n[len]);
  for (; len < width; len++) voir_car(' ');
}

void list_keywords() {
  const VocabState& v = vocab();
  int column = 0;
  for (int code = 0; code < v.nb_kw[0] && code < KW_PER_VOC; code++) {
    if (!v.name[code]) continue;
    print_name(code, 13);
    if (++column == 6) {
      voir_texte("\n");
      column = 0;
    }
  }
  if (column) voir_texte("\n");
}

void print_values(const char* title, const float* f, int n) {
  if (!f || n <= 0) return;
  voir_texte(title);
  for (int i = 0; i < n; i++) voir_float(" %g", f[i]);
  voir_texte("\n");
}

}  // namespace

void register_usage(int code, const char* text) {
  for (auto& [c, t] : lang().usages)
    if (c == code) {
      t = text;
      return;
    }
  lang().usages.emplace_back(code, text);
}

void print_keyword_help(int code) {
  const VocabState& v = vocab();
  if (code < 0 || code >= NB_CODES || !v.name[code]) return;
  VOIR_CHAR("%s\n", v.name[code]);
  voir_int("emp=%d ", v.emp[code]);
  voir_int("sem=%d ", v.sem[code]);
  voir_int("dim=%d ", v.dim[code]);
  voir_int("type=%d\n", v.type[code]);
  print_values("default:", v.defaults[code], v.dim[code]);
  print_values("current:", v.current[code], v.dim[code]);
  if (const char* u = usage_of(code)) VOIR_CHAR("%s\n", u);
}

// Wherever `help` or `demo` stands, the other words of the record are
// explained: `ini help` gives the help of ini. `help` alone lists the
// keywords, `demo` alone explains itself.
int HELP_a(word* record, const word* limit) {
  (void)limit;
  int shown = 0;
  word* item = first_item(record);
  for (int i = 0; i < item_count(record); i++, item = next_item(item)) {
    if (item[2] == KW_help || item[2] == KW_demo) continue;
    print_keyword_help(item[2]);
    shown++;
  }
  if (shown == 0 && find_item(record, KW_help)) list_keywords();
  else if (shown == 0) print_keyword_help(KW_demo);
  return build_nil(record);
}
