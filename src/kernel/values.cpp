#include "kernel/values.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/keywords.h"
#include "kernel/report.h"

constexpr int LIMITE = -12;

static bool depasse(const word* at, long words, const word* lim) {
  return lim && at + words > lim;
}

// Writes the size; past the limit nothing more is written.
static int taille_valeur(bloc v, const word* lim, int size) {
  if (!v) return LIMITE;
  v[0] = size;
  return depasse(v, size, lim) ? LIMITE : 0;
}

static void en_tete(bloc v, word tag, word np, word dimp) {
  v[1] = tag;
  v[2] = np;
  v[3] = dimp;
}

int val_floats_room(bloc v, const word* lim, int n) {
  if (taille_valeur(v, lim, 4 + n) < 0) return LIMITE;
  en_tete(v, T_FLOAT, n, 1);
  return 0;
}

int val_floats(bloc v, const word* lim, int n, const float* f) {
  if (val_floats_room(v, lim, n) < 0) return LIMITE;
  for (int i = 0; i < n; i++) setf(v, i, f[i]);
  return 0;
}

int val_0(bloc v, const word* lim) { return val_floats(v, lim, 0, nullptr); }
int val_1(bloc v, const word* lim, float a) { return val_floats(v, lim, 1, &a); }
int val_2(bloc v, const word* lim, float a, float b) {
  const float f[] = {a, b};
  return val_floats(v, lim, 2, f);
}
int val_3(bloc v, const word* lim, float a, float b, float c) {
  const float f[] = {a, b, c};
  return val_floats(v, lim, 3, f);
}
int val_4(bloc v, const word* lim, float a, float b, float c, float d) {
  const float f[] = {a, b, c, d};
  return val_floats(v, lim, 4, f);
}
int val_5(bloc v, const word* lim, float a, float b, float c, float d, float e) {
  const float f[] = {a, b, c, d, e};
  return val_floats(v, lim, 5, f);
}
int val_6(bloc v, const word* lim, float a, float b, float c, float d, float e, float f) {
  const float t[] = {a, b, c, d, e, f};
  return val_floats(v, lim, 6, t);
}

int val_nil(bloc v, const word* lim) {
  if (!v) return 0;
  if (depasse(v, 4, lim)) return -1;
  v[0] = 4;
  en_tete(v, T_NIL, 0, 1);
  return 0;
}

// Words of a NUL-ended text padded to a word.
static int mots_texte(size_t len) { return static_cast<int>(len / sizeof(word) + 1); }

// Text, NUL and zero padding after the header.
static void ecrit_texte(bloc v, const char* text, size_t len) {
  const int n = mots_texte(len);
  v[4 + n - 1] = 0;
  std::memcpy(v + 4, text, len);
  reinterpret_cast<char*>(v + 4)[len] = '\0';
}

int val_char_en_place(bloc v, const word* lim, size_t len) {
  if (taille_valeur(v, lim, 4 + mots_texte(len)) < 0) return LIMITE;
  en_tete(v, T_CHAR, mots_texte(len), 1);
  char* t = reinterpret_cast<char*>(v + 4);
  for (size_t i = len; i < static_cast<size_t>(mots_texte(len)) * sizeof(word); i++) t[i] = '\0';
  return 0;
}

int val_char(bloc v, const word* lim, const char* text) {
  if (!text) text = "";
  return val_char_n(v, lim, text, std::strlen(text));
}

int val_char_n(bloc v, const word* lim, const char* text, size_t len) {
  if (taille_valeur(v, lim, 4 + mots_texte(len)) < 0) return LIMITE;
  en_tete(v, T_CHAR, mots_texte(len), 1);
  ecrit_texte(v, text, len);
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
  s[0] = 4;
  en_tete(s, T_SEGMENTS, 0, 0);
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
  val_floats(v, nullptr, n, f);
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
  bloc v = seg_ouvre(s, lim, code, 4 + mots_texte(len));
  if (!v) return LIMITE;
  v[0] = 4 + mots_texte(len);
  en_tete(v, T_CHAR, static_cast<word>(len), 1);
  ecrit_texte(v, text, len);
  return 0;
}

static int seg_flat(bloc s, const word* lim, int code, const word* val) {
  const int words = val[0] > 4 ? val[0] - 4 : 0;
  bloc v = seg_ouvre(s, lim, code, 4 + words);
  if (!v) return LIMITE;
  std::memcpy(v + 4, val + 4, static_cast<size_t>(words) * sizeof(word));
  v[0] = 4 + words;
  en_tete(v, T_FLOAT, words, 1);
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
