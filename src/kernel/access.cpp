#include "kernel/access.h"

#include <algorithm>
#include <cstring>

#include "kernel/report.h"

const word* sous_bloc(const word* v, int i) {
  if (!v || v[1] != T_HYBRIDE || i < 0 || i >= v[2]) return nullptr;
  const word* end = v + v[0];
  const word* sub = v + 4;
  for (int k = 0;; k++, sub += sub[0]) {
    if (sub >= end || sub[0] < 1 || sub + sub[0] > end) return nullptr;
    if (k == i) return sub;
  }
}

static int hors_limite(int i, int message) {
  voir_int("%d: ", i);
  voir_message(0, message);
  return -1;
}

static void copie_texte(const word* v, char* name, int size) {
  if (size <= 0) return;
  const size_t room = static_cast<size_t>(v[0] > 4 ? v[0] - 4 : 0) * sizeof(word);
  const size_t len = std::min(strnlen(text(v), room), static_cast<size_t>(size - 1));
  std::memcpy(name, text(v), len);
  name[len] = '\0';
}

int get_ind(const word* v, int i, int* number, char* name, int name_size) {
  switch (v[1]) {
    case T_FLOAT: {
      const int count = elements(v);
      if (i < 0 || i >= count) return hors_limite(i, MES_ILLEGAL_INDEX);
      *number = entier(getf(v, i));
      return 0;
    }
    case T_CHAR:
      return mot_i(text(v), i, name, name_size) < 0 ? hors_limite(i, MES_ILLEGAL_INDEX) : 1;
    case T_HYBRIDE: {
      const word* sub = sous_bloc(v, i);
      if (!sub) return hors_limite(i, MES_ILLEGAL_INDEX);
      if (sub[1] == T_CHAR) {
        copie_texte(sub, name, name_size);
        return 1;
      }
      if (sub[1] != T_FLOAT) break;
      if (sub[0] < 5) return hors_limite(i, MES_ILLEGAL_INDEX);
      *number = entier(getf(sub, 0));
      return 0;
    }
    default:
      break;
  }
  err_illegal(nullptr);
  return -1;
}

// The entry of a dimp-0 value, or the slot of a negative-dimp one.
static int point_entree(const word* v, int i, int* dimp, const word** point) {
  long at = 4;
  for (int k = 1;; k++, at += v[at]) {
    if (at >= v[0] || v[at] < 1 || at + v[at] > v[0]) return hors_limite(i, MES_ILLEGAL);
    if (k == i) break;
  }
  *dimp = v[at] - 1;
  *point = v + at + 1;
  return 0;
}

static int point_slot(const word* v, int i, int* dimp, const word** point) {
  const long stride = -static_cast<long>(v[3]);
  const long at = 4 + (i - 1) * stride;
  if (at + stride > v[0]) return hors_limite(i, MES_ILLEGAL);
  *dimp = v[at] > 0 ? static_cast<int>(std::min<long>(v[at], stride) - 1) : 0;
  *point = v + at + 1;
  return 0;
}

int get_point(const word* v, int i, int* kind, int* dimp, const word** point) {
  if (v[1] == T_HYBRIDE) {
    const word* sub = sous_bloc(v, i - 1);
    if (!sub) return hors_limite(i, MES_ILLEGAL);
    *kind = sub[1];
    *dimp = sub[0] - 4;
    *point = sub + 4;
    return 0;
  }
  if (i < 1 || i > v[2] || v[1] == T_SHORT) return hors_limite(i, MES_ILLEGAL);
  *kind = v[1];
  if (v[3] == 0) return point_entree(v, i, dimp, point);
  if (v[3] < 0) return point_slot(v, i, dimp, point);
  const long at = 4 + static_cast<long>(i - 1) * v[3];
  if (at + v[3] > v[0]) return hors_limite(i, MES_ILLEGAL);
  *dimp = v[3];
  *point = v + at;
  return 0;
}

int mot_i(const char* text, int i, char* buf, int size) {
  if (!text || i < 0 || size <= 0) return -1;
  const char* c = text;
  for (int k = 0; k < i; k++) {
    c = std::strchr(c, ' ');
    if (!c) return -1;
    c++;
  }
  const size_t len = std::min(std::strcspn(c, " "), static_cast<size_t>(size - 1));
  std::memcpy(buf, c, len);
  buf[len] = '\0';
  return static_cast<int>(len);
}

int val_point(bloc place, const word* lim, int kind, int dimp, const word* src) {
  place[0] = 4 + dimp;
  if (lim && place + place[0] > lim) return -12;
  place[1] = kind;
  place[2] = 1;
  place[3] = dimp;
  std::memmove(place + 4, src, static_cast<size_t>(dimp) * sizeof(word));
  return 0;
}

static int ajoute_points(bloc dst, const word* lim, const word* v);

// n words of kind `kind` appended as floats at the end of dst.
static int ajoute_floats(bloc dst, const word* lim, int kind, int n, const word* p) {
  if (kind != T_FLOAT && kind != T_LONG) {
    err_illegal(nullptr);
    return -1;
  }
  bloc at = dst + dst[0];
  if (lim && at + n > lim) return -12;
  for (int k = 0; k < n; k++) at[k] = kind == T_LONG ? fw(static_cast<float>(p[k])) : p[k];
  dst[0] += n;
  dst[2] = (dst[0] - 4) / std::max(dst[3], 1);
  return 0;
}

int val_concat_point(bloc dst, const word* lim, const word* v, int i) {
  if (v[1] == T_HYBRIDE) {
    const word* sub = sous_bloc(v, i - 1);
    return sub ? ajoute_points(dst, lim, sub) : hors_limite(i, MES_ILLEGAL);
  }
  int kind = 0, dimp = 0;
  const word* p = nullptr;
  if (get_point(v, i, &kind, &dimp, &p) < 0) return -1;
  return ajoute_floats(dst, lim, kind, dimp, p);
}

static int ajoute_points(bloc dst, const word* lim, const word* v) {
  if (v[0] < 4) return 0;
  for (int i = 1; i <= v[2]; i++)
    if (const int r = val_concat_point(dst, lim, v, i); r < 0) return r;
  return 0;
}

int val_append(bloc dst, const word* lim, const word* v) {
  return ajoute_points(dst, lim, v) < 0 ? -1 : 0;
}

int egal_val(const word* a, const word* b) {
  if (!a || !b || a[1] != T_CHAR || b[1] != T_CHAR) return 0;
  return std::strcmp(text(a), text(b)) == 0 ? 1 : 0;
}
