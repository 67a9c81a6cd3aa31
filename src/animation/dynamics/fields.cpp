// Force fields: objects of the `field` family whose `subkind` gives the
// kind (a `func` field is known by its `func` property). `meta` is the
// gradient of a quadric, `func` a user function of the point, `vol` the
// attraction of a volume's vertices, `image` the colour of the pixel under
// the point (or, when the field has a `speed`, the speed the image keeps
// for that pixel); any other field has one of three forms of direction,
// chosen by its data:
//   `near` (points)          form 3: toward the nearest of the points;
//   `poi` of two points      form 2: the constant direction first to second;
//   `poi` of one point       form 1: toward the point, away from it inside
//                            the squared `radius`.
// A `func` field's function gets the point, and after it the vertex's
// `col vertex` when the volume has one (six values then).
// The strength is `coe` (0.1 by default), shaped by `law`: one value b
// divides it by distance^b (the divisor at least 0.001), a curve of
// (distance, factor) points multiplies it. A field's `force`, when it has a
// fourth value, gives the damping of the object it acts on.
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "scene/image_object.h"
#include "language/call.h"
#include "language/functions.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/law.h"
#include "scene/lookup.h"
#include "scene/matrix.h"
#include "scene/volume.h"

namespace {

constexpr float COE_DEFAUT = 0.1f;
// The squared distance from which the nearest vertex is sought.
constexpr float LOIN = 1000000.0f;

float longueur(const float v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

// The strength at distance `dist`: s, or s shaped by the `law`.
float intensite(float s, const word* law, float dist) {
  if (!law || elements(law) < 1) return s;
  if (elements(law) == 1) return s / std::max(std::pow(dist, value_at(law, 0, 0)), 0.001f);
  if (tag(law) != T_FLOAT) return s;
  return s * read_law(reinterpret_cast<const float*>(law + 4), elements(law) / 2, 2, dist);
}

// Adds the strength along the unit vector from `point` to `target`.
void vers(float force[4], const float point[3], const float target[3], float s, const word* law, float signe = 1) {
  float u[3] = {target[0] - point[0], target[1] - point[1], target[2] - point[2]};
  const float d = longueur(u);
  if (d <= 0) return;
  const float g = signe * intensite(s, law, d) / d;
  for (int a = 0; a < 3; a++) force[a] += g * u[a];
}

void champ_meta(const word* q, const word* poi, float s, float force[4], const float x[3]) {
  if (elements(q) < 9) return;
  float k[9];
  floats_of(q, k, 9);
  const float p[3] = {x[0] - value_at(poi, 0, 0), x[1] - value_at(poi, 1, 0), x[2] - value_at(poi, 2, 0)};
  force[0] += s * (2 * k[0] * p[0] + k[3] * p[1] + k[4] * p[2] + k[6]);
  force[1] += s * (k[3] * p[0] + 2 * k[1] * p[1] + k[5] * p[2] + k[7]);
  force[2] += s * (k[4] * p[0] + k[5] * p[1] + 2 * k[2] * p[2] + k[8]);
}

// The function of a `func` field, looked up by its name once and kept in
// the field's first two work words.
Objet* fonction_du_champ(Objet* f, const word* nom) {
  RefObjet r{f->work[0], static_cast<uint32_t>(f->work[1])};
  if (Objet* g = objet_ref(r)) return g;
  const char* n = value_text(nom);
  Objet* g = n ? get_fonction(n) : nullptr;
  if (!g) return nullptr;
  r = ref_objet(g);
  f->work[0] = r.handle;
  f->work[1] = static_cast<int>(r.generation);
  return g;
}

int champ_func(Objet* f, const word* nom, float s, float force[4], const float x[3], const float* col) {
  Objet* g = fonction_du_champ(f, nom);
  if (!g) {
    err_objet(KW_func, nom, 0, 0, nullptr);
    return -1;
  }
  // The point, and after it the colour of the vertex when it has one.
  const float arg[6] = {x[0], x[1], x[2], col ? col[0] : 0, col ? col[1] : 0, col ? col[2] : 0};
  float r[3];
  if (run_function_vector(g, arg, col ? 6 : 3, r, 3) < 0) return -1;
  for (int a = 0; a < 3; a++) force[a] += s * r[a];
  return 0;
}

int champ_vol(Objet* f, const word* local, float s, float force[4], const float x[3], int vertex) {
  const word* id = get_val_1(local, KW_vol);
  Objet* v = get_objet_id(chaine_classe(KW_vol), KW_vol, static_cast<int>(value_at(id, 0, 0)));
  if (!v) {
    err_objet(KW_vol, id, 0, 0, nullptr);
    return -1;
  }
  const word* poi = poi_vol(v);
  const float* T = get_matrix_vol(v);
  if (!poi || !T || stride(poi) < 3 || v == f) return 0;
  const float* p = reinterpret_cast<const float*>(poi + 4);
  const int n = np(poi), d = stride(poi);
  const word* law = get_val_1(local, KW_law);
  float a[3];
  if (get_val_1(local, KW_near)) {
    float best = LOIN;
    int k = -1;
    for (int i = 0; i < n; i++) {
      mat::point(T + TR_MATRIX, p + i * d, a);
      if (const float d2 = mat::distance2(a, x); d2 < best) best = d2, k = i;
    }
    if (k >= 0) {
      mat::point(T + TR_MATRIX, p + k * d, a);
      vers(force, x, a, s, law);
    }
  } else if (get_val_1(local, KW_vertex)) {
    if (vertex >= 1 && vertex <= n) {
      mat::point(T + TR_MATRIX, p + (vertex - 1) * d, a);
      vers(force, x, a, s, law);
    }
  } else {
    for (int i = 0; i < n; i++) {
      mat::point(T + TR_MATRIX, p + i * d, a);
      vers(force, x, a, s, law);
    }
  }
  return 0;
}

// The pixel of the image under the point (x, y in pixels, the first row
// first), or -1 outside.
int pixel_sous(const Objet* im, const float x[3]) {
  const int i = static_cast<int>(std::floor(x[0])), j = static_cast<int>(std::floor(x[1]));
  if (i < 0 || j < 0 || i >= image_nx(im) || j >= image_ny(im)) return -1;
  return j * image_nx(im) + i;
}

// set_FIELD_IMAGE: the colour of the pixel under the point, each of R, G,
// B from -1 to 1 about its middle 128, times s.
void set_FIELD_IMAGE(const Objet* im, float s, float force[4], const float x[3]) {
  const word* px = pixels_lecture(im);
  const int k = px ? pixel_sous(im, x) : -1;
  if (k < 0 || k >= np(px)) return;
  const uint8_t* c = octets(px) + 4 * k;
  for (int a = 0; a < 3; a++) force[a] += s * (static_cast<float>(c[a]) - 128) / 128;
}

// set_FIELD_IMAGE_SPEED: the speed the image keeps for that pixel
// (`generate speed image`), times s.
void set_FIELD_IMAGE_SPEED(const Objet* im, float s, float force[4], const float x[3]) {
  const word* v = get_val_1(im->local, KW_speed);
  const int k = pixel_sous(im, x);
  if (k < 0 || !v || tag(v) != T_FLOAT || dimp(v) != 3 || k >= np(v)) return;
  for (int a = 0; a < 3; a++) force[a] += s * getf(v, 3 * k + a);
}

int champ_image(const word* local, float s, float force[4], const float x[3]) {
  const word* id = get_val_1(local, KW_image);
  const Objet* im = image_numero(static_cast<int>(value_at(id, 0, 0)));
  if (!im) {
    err_objet(KW_image, id, 0, 0, nullptr);
    return -1;
  }
  if (get_val_1(local, KW_speed)) set_FIELD_IMAGE_SPEED(im, s, force, x);
  else set_FIELD_IMAGE(im, s, force, x);
  return 0;
}

void champ_direction(const word* local, float s, float force[4], const float x[3]) {
  const word* law = get_val_1(local, KW_law);
  if (const word* near = get_val_1(local, KW_near); near && elements(near) >= 3) {
    float best = -1, cible[3] = {0, 0, 0};
    for (int i = 0; i + 2 < elements(near); i += 3) {
      const float c[3] = {value_at(near, i, 0), value_at(near, i + 1, 0), value_at(near, i + 2, 0)};
      if (const float d2 = mat::distance2(c, x); best < 0 || d2 < best) {
        best = d2;
        std::copy(c, c + 3, cible);
      }
    }
    vers(force, x, cible, s, law);
    return;
  }
  const word* poi = get_val_1(local, KW_poi);
  if (elements(poi) >= 6) {
    float u[3] = {value_at(poi, 3, 0) - value_at(poi, 0, 0), value_at(poi, 4, 0) - value_at(poi, 1, 0),
                  value_at(poi, 5, 0) - value_at(poi, 2, 0)};
    const float d = longueur(u);
    if (d <= 0) return;
    const float g = intensite(s, law, d) / d;
    for (int a = 0; a < 3; a++) force[a] += g * u[a];
  } else if (elements(poi) >= 3) {
    const float c[3] = {value_at(poi, 0, 0), value_at(poi, 1, 0), value_at(poi, 2, 0)};
    const float r = value_at(get_val_1(local, KW_radius), 0, 0);
    vers(force, x, c, s, law, mat::distance2(c, x) < r * r ? -1.0f : 1.0f);
  }
}

}  // namespace

int set_FIELD_1(Objet* f, float force[4], const float point[3], int vertex, const float* col) {
  const word* local = f->local;
  if (!local) return 0;
  const float s = value_at(get_val_1(local, KW_coe), 0, COE_DEFAUT);
  int r = 0;
  // A `func` field is known by its property (see field_commands.cpp).
  const int kind = f->subkind ? f->subkind : get_val_1(local, KW_func) ? KW_func : 0;
  switch (kind) {
    case KW_meta: champ_meta(get_val_1(local, KW_meta), get_val_1(local, KW_poi), s, force, point); break;
    case KW_func: r = champ_func(f, get_val_1(local, KW_func), s, force, point, col); break;
    case KW_vol: r = champ_vol(f, local, s, force, point, vertex); break;
    case KW_image: r = champ_image(local, s, force, point); break;
    default: champ_direction(local, s, force, point); break;
  }
  if (const word* fo = get_val_1(local, KW_force); elements(fo) >= 4) force[3] = value_at(fo, 3, 0);
  return r;
}

int champs_objet(Objet* o, const word* liste, float force[4], const float point[3], int vertex, const float* col) {
  Objet* head = chaine_classe(KW_field);
  if (liste) {
    for (int i = 0; i < elements(liste); i++) {
      Objet* f = get_objet_id(head, KW_field, static_cast<int>(value_at(liste, i, 0)));
      if (!f) {
        err_objet(KW_field, liste, i, 0, nullptr);
        return -1;
      }
      if (f != o && set_FIELD_1(f, force, point, vertex, col) < 0) return -1;
    }
    return 0;
  }
  for (Objet* f = head->next; f; f = f->next)
    if (f->kind == KW_field && f->valid > 0 && f != o && set_FIELD_1(f, force, point, vertex, col) < 0) return -1;
  return 0;
}
