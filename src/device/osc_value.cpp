// OSC messages and the language's values, both ways.
#include <algorithm>
#include <cstring>

#include "device/osc_device.h"
#include "kernel/access.h"
#include "kernel/entier.h"
#include "kernel/report.h"
#include "kernel/values.h"

namespace {

// Room for a text, checked before the builder, which would report.
bool place_texte(const word* at, const word* lim, const char* t) {
  return build_fits(at, 4L + text_words(std::strlen(t)), lim);
}

bool nombre(char t) { return std::strchr("ifhdcTFt", t) != nullptr; }

double valeur_nombre(const OscArg& a) {
  switch (a.type) {
    case 'f': return a.f;
    case 'd': return a.d;
    case 'h':
    case 't': return static_cast<double>(a.h);
    default: return a.i;
  }
}

}  // namespace

int osc_valeur_message(word* at, const word* lim, const char* path, const OscArg* args, int argc) {
  if (!build_fits(at, 4, lim)) return -12;
  build_head(at, 4, T_HYBRIDE, 0);
  // Each part is written at the list's end, then counted.
  auto ajoute = [&](word* part) {
    at[0] += size(part);
    at[2] += 1;
  };
  word* fin = at + 4;
  if (!place_texte(fin, lim, path) || build_text(fin, lim, path) < 0) return -12;
  ajoute(fin);
  word* nombres = nullptr;  // the FLOAT part still open
  for (int k = 0; k < argc; k++) {
    const OscArg& a = args[k];
    fin = at + at[0];
    if (nombre(a.type)) {
      if (!nombres) {
        if (!build_fits(fin, 4, lim)) return -12;
        build_head(fin, 4, T_FLOAT, 0);
        nombres = fin;
        ajoute(fin);
      }
      if (!build_fits(at + at[0], 1, lim)) return -12;
      nombres[4 + nombres[2]] = fw(static_cast<float>(valeur_nombre(a)));
      nombres[0]++, nombres[2]++, at[0]++;
      continue;
    }
    if (a.type != 's' && a.type != 'S' && a.type != 'b' && a.type != 'm') continue;  // nil, infinitum
    nombres = nullptr;
    if (a.type == 's' || a.type == 'S') {
      const char* t = a.s ? a.s : "";
      if (!place_texte(fin, lim, t) || build_text(fin, lim, t) < 0) return -12;
      ajoute(fin);
    } else if ((a.type == 'b' || a.type == 'm') && a.len >= 0) {
      word* b = build_fits(fin, 4L + a.len, lim) ? build_zeros(fin, lim, a.len) : nullptr;
      if (!b) return -12;
      for (int i = 0; i < a.len; i++) b[4 + i] = fw(static_cast<float>(a.b[i]));
      ajoute(fin);
    }
  }
  return 0;
}

namespace {

// A walk over the atoms of a value: the numbers of its FLOAT and LONG
// parts one by one, its texts whole.
struct Curseur {
  const word* v;
  int part = 0, elem = 0;
  int parts() const { return tag(v) == T_HYBRIDE ? hybride_parts(v) : 1; }
  const word* courante() const { return tag(v) == T_HYBRIDE ? sous_bloc(v, part) : (part == 0 ? v : nullptr); }
  // Steps over spent and empty parts.
  const word* ici() {
    for (; part < parts(); part++, elem = 0) {
      const word* c = courante();
      if (!c) continue;
      if (tag(c) == T_CHAR && elem == 0) return c;
      if ((tag(c) == T_FLOAT || tag(c) == T_LONG) && elem < elements(c)) return c;
    }
    return nullptr;
  }
  bool nombre(float* x) {
    const word* c = ici();
    if (!c || tag(c) == T_CHAR) return false;
    *x = tag(c) == T_FLOAT ? getf(c, elem) : static_cast<float>(c[4 + elem]);
    elem++;
    return true;
  }
  const char* texte() {
    const word* c = ici();
    if (!c || tag(c) != T_CHAR) return nullptr;
    part++, elem = 0;
    return text(c);
  }
};

constexpr int BLOB_MAX = 65000;

bool ne_va_pas(const char* types) {
  VOIR_CHAR("OSC types %s: the value does not fit them ", types);
  voir_message(0, MES_ILLEGAL);
  return false;
}

}  // namespace

bool osc_ajoute_valeur(OscEnd* e, const word* v, const char* types) {
  if (!v || size(v) < 4 || tag(v) == T_NIL) return true;
  Curseur c{v};
  if (!types || !*types) {
    for (const word* at; (at = c.ici());) {
      if (tag(at) == T_CHAR) {
        osc_add(e, OscArg{'s', 0, 0, 0, 0, c.texte(), nullptr, 0});
      } else {
        float x = 0;
        c.nombre(&x);
        osc_add(e, OscArg{'f', 0, 0, x, 0, nullptr, nullptr, 0});
      }
    }
    return true;
  }
  static unsigned char octets[BLOB_MAX];
  for (const char* t = types; *t; t++) {
    OscArg a{*t, 0, 0, 0, 0, nullptr, nullptr, 0};
    float x = 0;
    switch (*t) {
      case 'i':
      case 'c':
        if (!c.nombre(&x)) return ne_va_pas(types);
        a.i = entier(x);
        break;
      case 'h':
        if (!c.nombre(&x)) return ne_va_pas(types);
        a.h = static_cast<int64_t>(x);
        break;
      case 'f':
        if (!c.nombre(&x)) return ne_va_pas(types);
        a.f = x;
        break;
      case 'd':
        if (!c.nombre(&x)) return ne_va_pas(types);
        a.d = x;
        break;
      case 's':
      case 'S':
        if (!(a.s = c.texte())) return ne_va_pas(types);
        break;
      case 'b': {
        const word* at = c.ici();
        if (!at) return ne_va_pas(types);
        if (tag(at) == T_CHAR) {
          a.s = c.texte();
          a.b = reinterpret_cast<const unsigned char*>(a.s);
          a.len = static_cast<int32_t>(std::strlen(a.s));
          break;
        }
        int n = 0;
        while (n < BLOB_MAX && c.ici() == at && c.nombre(&x))
          octets[n++] = static_cast<unsigned char>(entier_borne(x, 0, 255));
        a.b = octets, a.len = n;
        break;
      }
      case 'T':
      case 'F':
      case 'N':
      case 'I': break;
      default: return ne_va_pas(types);
    }
    osc_add(e, a);
  }
  return true;
}
