#include "kernel/values.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/keywords.h"
#include "kernel/report.h"

constexpr int LIMITE = -12;

static bool depasse(const word* at, long words, const word* lim) { return !build_fits(at, words, lim); }

int build_overflow() {
  err_dim_ev(nullptr);
  return LIMITE;
}

int build_floats(bloc at, const word* lim, int n, const float* f, int dimp) {
  if (n < 0) n = 0;
  if (!build_fits(at, 4L + n, lim)) return build_overflow();
  const int width = dimp > 1 ? dimp : 1;
  build_head(at, 4 + n, T_FLOAT, n / width, width);
  for (int i = 0; i < n; i++) setf(at, i, f[i]);
  return 0;
}

int build_floats(bloc at, const word* lim, const std::vector<float>& f, int dimp) {
  return build_floats(at, lim, static_cast<int>(f.size()), f.data(), dimp);
}

int build_floats_or_nil(bloc at, const word* lim, const std::vector<float>& f, int dimp) {
  return f.empty() ? build_nil(at, lim) : build_floats(at, lim, f, dimp);
}

bloc build_zeros(bloc at, const word* lim, int n, int dimp) {
  if (n < 0) n = 0;
  if (!build_fits(at, 4L + n, lim)) {
    build_overflow();
    return nullptr;
  }
  const int width = dimp > 1 ? dimp : 1;
  build_head(at, 4 + n, T_FLOAT, n / width, width);
  std::memset(at + 4, 0, static_cast<size_t>(n) * sizeof(word));
  return at;
}

// Words of a NUL-ended text padded to a word.
// Text, NUL and zero padding after the header.
static void ecrit_texte(bloc v, const char* text, size_t len) {
  const int n = text_words(len);
  v[4 + n - 1] = 0;
  std::memcpy(v + 4, text, len);
  reinterpret_cast<char*>(v + 4)[len] = '\0';
}

int build_text(bloc at, const word* lim, const char* s, size_t len) {
  const int n = text_words(len);
  if (!build_fits(at, 4L + n, lim)) return build_overflow();
  build_head(at, 4 + n, T_CHAR, n);
  ecrit_texte(at, s, len);
  return 0;
}

int build_text(bloc at, const word* lim, const char* s) {
  if (!s) s = "";
  return build_text(at, lim, s, std::strlen(s));
}

int build_text_or_nil(bloc at, const word* lim, const std::string& s) {
  return s.empty() ? build_nil(at, lim) : build_text(at, lim, s.data(), s.size());
}

int build_text_in_place(bloc at, const word* lim, size_t len) {
  const int n = text_words(len);
  if (!build_fits(at, 4L + n, lim)) return build_overflow();
  build_head(at, 4 + n, T_CHAR, n);
  char* t = reinterpret_cast<char*>(at + 4);
  std::memset(t + len, 0, static_cast<size_t>(n) * sizeof(word) - len);
  return 0;
}

void recompte_char(bloc v) {
  int blanks = 0;
  const char* end = reinterpret_cast<const char*>(v + (v[0] > 4 ? v[0] : 4));
  for (const char* c = text(v); c < end && *c; ++c) blanks += *c == ' ';
  v[2] = blanks + 1;
}

/* Segment lists */

static int liste_ini(bloc s, const word* lim) {
  if (depasse(s, 4, lim)) return LIMITE;
  build_head(s, 4, T_SEGMENTS, 0, 0);
  return 0;
}

// Appends the three words of a segment with room for `value_words`
// after them; returns where the value goes, or null past the limit.
static bloc seg_ouvre(bloc s, const word* lim, int code, int value_words) {
  bloc at = s + s[0];
  const int len = 3 + value_words;
  if (depasse(at, len, lim)) return nullptr;
  at[0] = len;
  at[1] = code / KW_PER_VOC;
  at[2] = code;
  s[0] += len;
  s[2] += 1;
  return at + 3;
}

static int seg_floats(bloc s, const word* lim, int code, int n, const float* f) {
  bloc v = seg_ouvre(s, lim, code, 4 + n);
  if (!v) return LIMITE;
  build_floats(v, nullptr, n, f);
  return 0;
}

static int seg_copie(bloc s, const word* lim, int code, const word* val) {
  bloc v = seg_ouvre(s, lim, code, bloc_len(val));
  if (!v) return LIMITE;
  copie_bloc(v, val);
  return 0;
}

static int seg_char(bloc s, const word* lim, int code, const char* text) {
  const size_t len = std::strlen(text);
  bloc v = seg_ouvre(s, lim, code, 4 + text_words(len));
  if (!v) return LIMITE;
  build_head(v, 4 + text_words(len), T_CHAR, static_cast<word>(len));
  ecrit_texte(v, text, len);
  return 0;
}

static int seg_flat(bloc s, const word* lim, int code, const word* val) {
  const int words = val[0] > 4 ? val[0] - 4 : 0;
  bloc v = seg_ouvre(s, lim, code, 4 + words);
  if (!v) return LIMITE;
  std::memcpy(v + 4, val + 4, static_cast<size_t>(words) * sizeof(word));
  build_head(v, 4 + words, T_FLOAT, words);
  return 0;
}

// The reporting family: a failure prints the dimension message.
static void rapporte(int r) {
  if (r < 0) err_dim_ev(nullptr);
}

void seg_ini(bloc s, const word* lim) { rapporte(liste_ini(s, lim)); }
void seg_add(bloc s, const word* lim, int code) { rapporte(seg_ouvre(s, lim, code, 0) ? 0 : LIMITE); }
void seg_add_char(bloc s, const word* lim, int code, const char* text) {
  rapporte(seg_char(s, lim, code, text ? text : ""));
}
void seg_add_f1(bloc s, const word* lim, int code, float a) { rapporte(seg_floats(s, lim, code, 1, &a)); }
void seg_add_f2(bloc s, const word* lim, int code, float a, float b) {
  const float f[] = {a, b};
  rapporte(seg_floats(s, lim, code, 2, f));
}
void seg_add_f3(bloc s, const word* lim, int code, float a, float b, float c) {
  const float f[] = {a, b, c};
  rapporte(seg_floats(s, lim, code, 3, f));
}
void seg_add_f4(bloc s, const word* lim, int code, float a, float b, float c, float d) {
  const float f[] = {a, b, c, d};
  rapporte(seg_floats(s, lim, code, 4, f));
}
void seg_add_f6(bloc s, const word* lim, int code, float a, float b, float c, float d, float e,
                float f) {
  const float t[] = {a, b, c, d, e, f};
  rapporte(seg_floats(s, lim, code, 6, t));
}
void seg_add_tab(bloc s, const word* lim, int code, int n, const float* tab) {
  rapporte(seg_floats(s, lim, code, n > 0 ? n : 0, tab));
}
void seg_add_val(bloc s, const word* lim, int code, const word* val) { rapporte(seg_copie(s, lim, code, val)); }
void seg_add_flat(bloc s, const word* lim, int code, const word* val) { rapporte(seg_flat(s, lim, code, val)); }

int seg_ini_r(bloc s, const word* lim) { return liste_ini(s, lim); }
int seg_add_r(bloc s, const word* lim, int code) { return seg_ouvre(s, lim, code, 0) ? 0 : LIMITE; }
int seg_add_fn_r(bloc s, const word* lim, int code, int n, const float* f) {
  if (n < 1 || n > 4) {
    voir_int("%d: ", n);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  return seg_floats(s, lim, code, n, f);
}
int seg_add_val_r(bloc s, const word* lim, int code, const word* val) { return seg_copie(s, lim, code, val); }

std::vector<word> liste_vide() { return {4, T_HYBRIDE, 0, 1}; }

void liste_vide(std::vector<word>& list) { list.assign({4, T_HYBRIDE, 0, 1}); }

void liste_ajoute(std::vector<word>& list, const word* part) {
  list.insert(list.end(), part, part + size(part));
  list[0] = static_cast<word>(list.size());
  list[2] += 1;
}

std::vector<word> valeur_floats(const float* f, int n, int dimp) {
  const int width = dimp > 1 ? dimp : 1;
  std::vector<word> v{4 + n, T_FLOAT, n / width, width};
  for (int i = 0; i < n; i++) v.push_back(fw(f[i]));
  return v;
}

std::vector<word> valeur_texte(const char* s, size_t len) {
  std::vector<word> v(4 + static_cast<size_t>(text_words(len)));
  build_text(v.data(), nullptr, s, len);
  return v;
}

std::vector<word> valeur_longs(const int* x, int n, int dimp) {
  const int width = dimp > 1 ? dimp : 1;
  std::vector<word> v{4 + n, T_LONG, n / width, width};
  v.insert(v.end(), x, x + n);
  return v;
}
