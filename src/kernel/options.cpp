#include "kernel/options.h"

#include <cstdio>
#include <cstdlib>
#include <cctype>
#include <cstring>

#include "kernel/entier.h"
#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/screen.h"
#include "platform/process.h"

namespace {

struct Option {
  std::string key;    // with its "=" when a value follows
  std::string value;
};

bool separator(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// One word: up to 80 characters of key, then after "=" a value up to a
// blank, tab or newline. Returns the position after the word.
const char* read_option(const char* p, Option& opt) {
  opt.key.clear();
  opt.value.clear();
  while (*p && separator(*p)) p++;
  while (*p && !separator(*p) && *p != '=' && opt.key.size() < 80) opt.key.push_back(*p++);
  while (*p && !separator(*p) && *p != '=') p++;  // key longer than 80
  if (*p == '=') {
    opt.key.push_back(*p++);
    while (*p && !separator(*p)) opt.value.push_back(*p++);
  }
  return p;
}

// Decimal integer; text that is not a number gives 0, huge values clamp.
int to_int(const std::string& s) {
  long long v = strtoll(s.c_str(), nullptr, 10);
  if (v > 2000000000LL) return 2000000000;
  if (v < -2000000000LL) return -2000000000;
  return static_cast<int>(v);
}

float to_float(const std::string& s) { return strtof(s.c_str(), nullptr); }

// "a,b" or "a b"; a missing second value repeats the first when `same`.
void two_numbers(const std::string& s, float* a, float* b, bool same) {
  char* end = nullptr;
  *a = strtof(s.c_str(), &end);
  while (*end == ',' || *end == ' ') end++;
  if (*end) *b = strtof(end, nullptr);
  else if (same) *b = *a;
}

// A screen size: below 1 it is a fraction of the maximum screen.
void screen_size(float v, int* size, float* frac, int max) {
  if (v > 0 && v < 1) {
    *frac = v;
    *size = static_cast<int>(v * max);
  } else {
    *frac = 0;
    *size = entier(v);
  }
}

void set_win_size(const std::string& s) {
  ScreenState& sc = screen();
  float a = 0, b = 0;
  two_numbers(s, &a, &b, false);
  screen_size(a, &sc.width, &sc.frac_x, sc.max_width);
  screen_size(b, &sc.height, &sc.frac_y, sc.max_height);
}

void win_option(const std::string& v) {
  ScreenState& sc = screen();
  if (v == "ful") sc.ful = 1;
  else if (v == "vid") {
    sc.vid = 1;
    voir_int2("video %d %d", sc.width, sc.height);
  } else if (!v.empty() && (isdigit(static_cast<unsigned char>(v[0])) || v[0] == '.'))
    set_win_size(v);
  else {
    std::string content;
    if (!file_read_all(v, content)) {
      VOIR_CHAR("creer le fichier %s contenant les dimensions de l'ecran\a\n", v.c_str());
      return;
    }
    set_win_size(content.substr(0, 80));
  }
}

void zbuffer_option(int z) {
  screen().zbu = z;
  if (z == 0) VOIR_CHAR("%s", "zbuffer off\n");
  else if (z == 1) VOIR_CHAR("%s", "zbuffer 16 bits\n");
  else if (z == 2) VOIR_CHAR("%s", "zbuffer 32 bits\n");
  else voir_int("zbuffer = %d shorts\n", z);
}

}  // namespace

const char* option_a(const char* text, int* buffer_size, int* write_thread_id, std::string* key_buffer) {
  Option o;
  const char* next = read_option(text, o);
  KernelState& k = kernel();
  const std::string& key = o.key;
  const std::string& v = o.value;
  if (key == "ini=") k.ini = v;
  else if (key == "mac=") k.mac = v;
  else if (key == "env=") k.env = v;
  else if (key == "ima=") k.ima = v;
  else if (key == "exe=") {
    if (!v.empty() && v[0] == '!') k.exe = v.substr(1);
    else k.exe = v;  // folder separators are "/" here, kept as written
  } else if (key == "htm=") k.htm = v;
  else if (key == "fun=") k.fun = v;
  else if (key == "buf=") *buffer_size = to_int(v);
  else if (key == "eva=") k.Dim_ev = to_int(v);
  else if (key == "com=") k.Dim_com = to_int(v);
  else if (key == "emp=") k.Dim_emp = to_int(v);
  else if (key == "mal=") k.Dim_mal = to_int(v);  // shadows the registry key below
  else if (key == "pri=") k.pri = to_int(v);
  else if (key == "esc=") k.esc = to_int(v);
  else if (key == "lan=") {
    k.lan = v;
    k.lan_state = 1;
    if (k.err) VOIR_CHAR("lan=%s\n", v.c_str());
  } else if (key == "tim=") {
    k.tim = v;
    if (key_buffer) *key_buffer = v;
  } else if (key == "voc1=") k.voc1 = v;
  else if (key == "voc2=") k.voc2 = v;
  else if (key == "deb") k.deb = 1;
  else if (key == "err") k.err = 1;
  else if (key == "ID") *write_thread_id = 0;
  return next;
}

const char* option_b(const char* text, int* bottom_lift) {
  Option o;
  const char* next = read_option(text, o);
  ScreenState& sc = screen();
  const std::string& key = o.key;
  const std::string& v = o.value;
  if (key == "ale=") sc.ale = to_int(v);
  else if (key == "rvb=") sc.rvb = to_int(v);
  else if (key == "cam=") {
    float a = 0, b = 0;
    two_numbers(v, &a, &b, false);
    sc.origin_y = entier(a);
    sc.image_height = -entier(b);
  } else if (key == "cx=") sc.cx = to_float(v);
  else if (key == "cy=") sc.cy = to_float(v);
  else if (key == "dy=") *bottom_lift += to_int(v);
  else if (key == "gra=") sc.gra = to_int(v) != 0;
  else if (key == "hei=") {
    float a = 0, b = 0;
    two_numbers(v, &a, &b, true);
    sc.hei_w = entier(a);
    sc.hei_h = entier(b);
  } else if (key == "orx=") sc.orx = to_int(v);
  else if (key == "ory=") sc.ory = to_int(v);
  else if (key == "x=") screen_size(to_float(v), &sc.width, &sc.frac_x, sc.max_width);
  else if (key == "y=") screen_size(to_float(v), &sc.height, &sc.frac_y, sc.max_height);
  else if (key == "son=") kernel().son = v;
  else if (key == "win=") win_option(v);
  else if (key == "zbu=") zbuffer_option(to_int(v));
  else if (key == "PER=") sc.PER = to_int(v);
  else if (key == "ful") sc.ful = 1;
  else if (key == "vid") sc.vid = 1;
  else if (key == "see") sc.see = 1;
  else if (key == "egl") sc.egl = 1;
  return next;
}

void options_a_text(const char* text) {
  KernelState& k = kernel();
  const char* p = text;
  while (*p) {
    const char* q = option_a(p, &k.Dim_buf, &k.write_thread_id, &k.tim);
    if (q == p) break;
    p = q;
  }
}

void options_b_text(const char* text, int* bottom_lift) {
  const char* p = text;
  while (*p) {
    const char* q = option_b(p, bottom_lift);
    if (q == p) break;
    p = q;
  }
}

std::vector<std::string> split_words(const std::string& text) {
  std::vector<std::string> words;
  const char* p = text.c_str();
  while (*p) {
    while (*p && separator(*p)) p++;
    std::string w;
    while (*p && !separator(*p)) w.push_back(*p++);
    if (!w.empty()) words.push_back(w);
  }
  return words;
}
