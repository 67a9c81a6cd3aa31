// cube, ball, rev, prism and grid.
#include "scene/primitives.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "kernel/access.h"
#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/scene_state.h"
#include "scene/volume.h"

namespace {

constexpr float DEUX_PI = 6.2831855f;
constexpr float PI_F = 3.14159265f;

// `dim(a,b,c)` with `fallback` when absent; a missing value repeats the
// one before it.
void dimensions(word* s, float d[3], float fallback) {
  std::vector<float> v = valeurs_mot(s, KW_dim);
  for (int k = 0; k < 3; k++) d[k] = k < static_cast<int>(v.size()) ? v[k] : (k ? d[k - 1] : fallback);
}

Sommets profil(const std::vector<float>& v) {
  Sommets p;
  for (size_t i = 0; i < v.size(); i += 3)
    p.add(v[i], i + 1 < v.size() ? v[i + 1] : 0.0f, i + 2 < v.size() ? v[i + 2] : 0.0f);
  return p;
}

// Facets over p rows of n revolved or extruded positions, and their count.
Facettes facettes_lignes(int n, int rows, bool close) {
  return close ? gen_fac_close(n, rows - 1) : gen_fac_grid(n - 1, rows - 1, 0);
}
double nombre_lignes(double n, double rows, bool close) {
  return close ? facettes_close(n, rows - 1) : facettes_grid(n - 1, rows - 1, 0);
}

// The shared unit sphere: a record of its own, outside the chains.
int sphere_partagee(const Construction& unit) {
  Objet*& sphere = scene().sphere;
  if (!sphere) {
    static Objet head;
    chaine_ini(&head);
    sphere = cre_objet(&head, KW_vol, KW_sphere, nullptr, "sphere", 0);
    if (!sphere) return -1;
  }
  return pose_geometrie(sphere, unit);
}

// `rev(id)` without `poi`: the profile the volume was built from.
std::vector<float> profil_existant(word* s) {
  std::vector<float> v;
  const word* ids = item_value(first_item(s));
  Objet* o = ids ? get_objet_simple(chaine_classe(KW_vol), ids, 0) : nullptr;
  if (const word* p = o ? get_val_2(o->local, KW_rev, KW_poi) : nullptr; p && tag(p) == T_FLOAT)
    for (int i = 0; i < np(p) * std::max(dimp(p), 1) && i < size(p) - 4; i++) v.push_back(getf(p, i));
  return v;
}

// The profile kept on each new volume, for a later `rev(id)` alone.
void garde_profil(word* s, const std::vector<float>& v) {
  std::vector<word> b{static_cast<word>(4 + v.size()), T_FLOAT, static_cast<word>(v.size() ? 1 : 0),
                      static_cast<word>(std::max<size_t>(v.size(), 1))};
  for (float x : v) b.push_back(fw(x));
  const word* ids = item_value(first_item(s));
  for (int i = 0, n = nb_selection(ids); i < n; i++)
    if (Objet* o = get_objet_simple(chaine_classe(KW_vol), ids, i)) {
      rem_propr_2(o, KW_rev, KW_poi);
      bloc p = ajoute_propriete(o, 8 + b[0]);
      if (!p) return;
      p[0] = 8 + b[0];
      propr_key_2(p, KW_rev, KW_poi);
      std::copy(b.begin(), b.end(), propr_val(p));
    }
}

}  // namespace

int CUBE_b(word* s, const word*, word*, const word*) {
  float d[3];
  dimensions(s, d, 100.0f);
  const float dx = d[0], dy = d[1], dz = d[2];
  Construction c;
  c.poi.add(-dx, dy, -dz), c.poi.add(dx, dy, -dz), c.poi.add(dx, dy, dz), c.poi.add(-dx, dy, dz);
  c.poi.add(-dx, -dy, -dz), c.poi.add(dx, -dy, -dz), c.poi.add(dx, -dy, dz), c.poi.add(-dx, -dy, dz);
  c.fac.add({1, 2, 6, 5}), c.fac.add({2, 3, 7, 6}), c.fac.add({3, 4, 8, 7});
  c.fac.add({4, 1, 5, 8}), c.fac.add({5, 6, 7, 8}), c.fac.add({4, 3, 2, 1});
  return cree_volumes(s, KW_cube, c, {KW_dim});
}

// The unit ball of nx by ny sections, kept for `sphere`.
Construction boule(float r, int nx, int ny) {
  Sommets p;
  p.add(0, r, 0);
  const float step = PI_F / static_cast<float>(ny);
  for (int k = 1; k < ny; k++) {
    const float phi = PI_F / 2 - static_cast<float>(k) * step;
    p.add(r * std::cos(phi), r * std::sin(phi), 0);
  }
  p.add(0, -r, 0);
  Construction c;
  c.poi = gen_poi_rev(p, DEUX_PI, 0, nx, true);
  c.fac = gen_fac_close(nx, ny);
  c.secx = nx, c.secy = ny, c.close = 1;
  return c;
}

int BALL_b(word* s, const word*, word*, const word*) {
  // `ball(id)` alone: a unit ball of 8 sections.
  const bool bare = item_count(s) == 1;
  std::vector<float> d = valeurs_mot(s, KW_dim);
  const float r = bare ? 1.0f : (d.empty() ? 100.0f : d[0]);
  const int ny = compte_mot(s, KW_secy, bare ? 8 : 3, 2);
  const int nx = compte_mot(s, KW_secx, ny > INT_MAX / 2 ? INT_MAX : 2 * ny, 3);
  bool sphere = false;
  valeurs_mot(s, KW_sphere, &sphere);
  Taille t;
  t.sommets = (ny + 1.0) * nx;
  t.quadrilateres(facettes_close(nx, ny));
  if (!taille_possible(s, t, sphere ? 1 : 0, "BALL_b()")) return -1;
  Construction c = boule(sphere ? 1.0f : r, nx, ny);
  c.transf = sphere;
  if (sphere) c.dila[0] = c.dila[1] = c.dila[2] = r;
  for (int k = 0; k < 3; k++) {
    std::vector<float> t = valeurs_mot(s, KW_poi), g = valeurs_mot(s, KW_dila);
    if (k < static_cast<int>(t.size())) c.tran[k] = t[k], c.transf = true;
    if (k < static_cast<int>(g.size())) c.dila[k] = g[k], c.transf = true;
  }
  const int rots[] = {KW_rotx, KW_roty, KW_rotz};
  for (int k = 0; k < 3; k++)
    if (std::vector<float> a = valeurs_mot(s, rots[k]); !a.empty()) c.rot[k] = a[0], c.transf = true;
  if (sphere && sphere_partagee(boule(1.0f, nx, ny)) < 0) return -1;
  return cree_volumes(s, KW_ball, c,
                      {KW_dim, KW_secx, KW_secy, KW_poi, KW_dila, KW_rotx, KW_roty, KW_rotz, KW_sphere});
}

int REV_b(word* s, const word*, word*, const word*) {
  bool has_poi = false;
  std::vector<float> v = valeurs_mot(s, KW_poi, &has_poi);
  if (!has_poi) v = profil_existant(s);
  if (v.empty()) {
    voir_mot(KW_rev);
    voir_texte("(id) poi(x1,y1,z1,...)\a\n");
    return -1;
  }
  std::vector<float> ang = valeurs_mot(s, KW_ang);
  const float angle = ang.empty() ? DEUX_PI : ang[0];
  const float phase = ang.size() > 1 ? ang[1] : 0.0f;
  const int n = compte_mot(s, KW_secx, 6);
  bool close = false;
  valeurs_mot(s, KW_close, &close);
  if (std::fabs(angle - DEUX_PI) < 0.0001f) close = true;
  Sommets p = profil(v);
  Taille t;
  const double positions = close ? n : n + 1.0;
  if (p.count() < 2) {
    t.sommets = positions;
    t.facette(positions);
  } else {
    t.sommets = p.count() * positions;
    t.quadrilateres(static_cast<double>(n) * (p.count() - 1));
  }
  if (!taille_possible(s, t, 0, "REV_b()")) return -1;
  Construction c;
  if (p.count() < 2) {
    Sommets one;
    one.add(p.xyz[0], p.xyz[1], p.xyz[2]);
    c.poi = gen_poi_rev(one, angle, phase, n, close);
    c.fac = gen_fac_fan(c.poi.count());
  } else {
    c.poi = gen_poi_rev(p, angle, phase, n, close);
    c.fac = close ? gen_fac_close(n, p.count() - 1) : gen_fac_grid(n, p.count() - 1, 0);
  }
  c.secx = n, c.secy = p.count() - 1, c.close = close;
  int r = cree_volumes(s, KW_rev, c, {KW_poi, KW_ang, KW_secx, KW_close});
  if (r == 0) garde_profil(s, v);
  return r;
}

int PRISM_b(word* s, const word*, word*, const word*) {
  std::vector<std::vector<float>> pois = valeurs_mots(s, KW_poi);
  if (pois.size() < 2 || pois[0].size() < 3 || pois[1].size() < 3) {
    voir_mot(KW_geod);
    voir_texte("(id)");
    voir_mot(KW_secx);
    voir_texte("(nx)\a\n");
    return -1;
  }
  const Sommets base = profil(pois[0]);
  const float* d = pois[1].data();
  const int n = compte_mot(s, KW_secy, 1);
  bool close = false;
  valeurs_mot(s, KW_close, &close);
  Taille taille;
  taille.sommets = (n + 1.0) * base.count();
  taille.quadrilateres(nombre_lignes(base.count(), n + 1.0, close));
  if (!taille_possible(s, taille, 0, "PRISM_b()")) return -1;
  Construction c;
  for (int j = 0; j <= n; j++) {
    interrupt_check();
    const float t = static_cast<float>(j) / static_cast<float>(n);
    for (int k = 0; k < base.count(); k++)
      c.poi.add(base.xyz[3 * k] + t * d[0], base.xyz[3 * k + 1] + t * d[1], base.xyz[3 * k + 2] + t * d[2]);
  }
  c.fac = facettes_lignes(base.count(), n + 1, close);
  c.secx = base.count(), c.secy = n, c.close = close;
  return cree_volumes(s, KW_prism, c, {KW_poi, KW_secy, KW_close});
}

int GRID_b(word* s, const word*, word*, const word*) {
  std::vector<float> d = valeurs_mot(s, KW_dim);
  const float dx = d.size() > 0 ? d[0] : 100.0f, dy = d.size() > 1 ? d[1] : 100.0f;
  const float dz = d.size() > 2 ? d[2] : (dx + dy) / 2;
  const int nx = compte_mot(s, KW_secx, 1), ny = compte_mot(s, KW_secy, 1);
  const int nz = compte_mot(s, KW_secz, 0);
  Taille t;
  t.sommets = (nx + 1.0) * (ny + 1.0) * (nz + 1.0);
  t.quadrilateres(facettes_grid(nx, ny, nz));
  if (!taille_possible(s, t, 0, "GRID_b()")) return -1;
  Construction c;
  for (int k = 0; k <= nz; k++)
    for (int j = 0; j <= ny; j++) {
      interrupt_check();
      for (int i = 0; i <= nx; i++)
        c.poi.add(-nx * dx / 2 + i * dx, ny * dy / 2 - j * dy, -nz * dz / 2 + k * dz);
    }
  c.fac = gen_fac_grid(nx, ny, nz);
  c.secx = nx, c.secy = ny, c.secz = nz;
  return cree_volumes(s, KW_grid, c, {KW_dim, KW_secx, KW_secy, KW_secz});
}
