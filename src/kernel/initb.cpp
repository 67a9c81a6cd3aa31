// Graphic side of start-up: graphic options, window size, colour range,
// random table, permanent properties, scratch block.
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/keywords.h"
#include "kernel/options.h"
#include "kernel/random_table.h"
#include "kernel/report.h"
#include "kernel/screen.h"
#include "kernel/startup.h"
#include "kernel/vocab.h"
#include "kernel/values.h"

namespace {

void parse_graphic_options(int argc, char** argv) {
  ScreenState& sc = screen();
  KernelState& k = kernel();
  int lift = 0;
  options_b_text(k.env_text.size() > 1 ? k.env_text[1].c_str() : "", &lift);
  sc.height -= lift;
  lift = 0;
  for (int i = 1; i < argc; i++) option_b(argv[i], &lift);
  sc.height -= lift;
}

void print_resolution() {
  ScreenState& sc = screen();
  if (sc.height % 2) sc.height += 1;
  if (sc.frac_x > 0 || sc.frac_y > 0) {
    char line[160];
    snprintf(line, sizeof line, "RESOLUTION: (%f -> %d, %f ->%d)\n", sc.frac_x, sc.width, sc.frac_y,
             sc.height);
    voir_texte(line);
  } else {
    voir_int2("RESOLUTION: (%d,%d)\n", sc.width, sc.height);
  }
}

// Constant properties shared by every volume, made permanent by a negated
// size word so that no clean-up releases them.
bloc permanent_normals(int second_key) {
  const int words = 4 + 4 + 4 + 3;  // header, two keys, FLOAT header, one point
  bloc p = alloue_bloc(-words);
  if (!p) return nullptr;
  build_head(p, p[0], T_SEGMENTS, 8, 2);
  p[4] = KW_normal / 200;
  p[5] = KW_normal;
  p[6] = second_key / 200;
  p[7] = second_key;
  word* v = p + 8;
  const float origin[] = {0.0f, 0.0f, 0.0f};
  build_floats(v, nullptr, 3, origin, 3);
  return p;
}

}  // namespace

GraphicConstants& graphic_constants() {
  static GraphicConstants c;
  return c;
}

int initb(int argc, char** argv) {
  if (argc == 2 && strcmp(argv[1], "help") == 0) {
    print_help_b();
    enter_exit(nullptr);
  }
  voir_texte(ORVELA_VERSION);
  ScreenState& sc = screen();
  sc = ScreenState{};
  parse_graphic_options(argc, argv);
  print_resolution();
  sc.image_width = sc.window_width = sc.width;
  sc.window_height = sc.height;
  sc.unit = sc.width / 40.0f;
  sc.colour_range = (sc.rvb >= 0 && sc.rvb < 31) ? (1 << sc.rvb) - 1 : 255;
  random_table_fill(sc.ale);
  GraphicConstants& gc = graphic_constants();
  if (!gc.normal_fac) gc.normal_fac = permanent_normals(KW_fac);
  if (!gc.normal_vertex) gc.normal_vertex = permanent_normals(KW_vertex);
  KernelState& k = kernel();
  if (!k.scratch) k.scratch = alloue_bloc(192000);
  k.Mode_idle = 0;
  k.sysinfo += ORVELA_VERSION;
  if (sc.hei_w == 0) {
    sc.hei_w = sc.width;
    sc.hei_h = sc.height;
  }
  return 0;
}
