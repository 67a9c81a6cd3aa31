#include <GL/gl.h>

#include <algorithm>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "render/draw.h"
#include "render/normals.h"
#include "render/textures.h"
#include "scene/volume.h"

namespace {

const float WHITE[3] = {1, 1, 1};

const float* fl(const word* v) { return v ? reinterpret_cast<const float*>(v + 4) : nullptr; }
int elements(const word* v) { return v ? np(v) * std::max<int>(dimp(v), 1) : 0; }

// The geometry a member draws: plain or generated. False after message 27.
struct Geometry {
  const word* poi = nullptr;
  const word* fac = nullptr;
  const float* p = nullptr;
  int d = 3, n = 0;
};

bool geometrie(Objet* o, const DisplayRecord& r, bool generated, Geometry& g) {
  g.poi = generated ? r[R_poi_generate] : r[R_poi];
  g.fac = generated ? r[R_fac_generate] : r[R_fac];
  if (!g.poi || tag(g.poi) != T_FLOAT || !g.fac || tag(g.fac) != T_HYBRIDE) {
    voir_message(0, MES_UNABLE_TO_PROCESS);
    voir_objet(o);
    voir_texte("\n");
    return false;
  }
  g.p = fl(g.poi);
  g.d = stride(g.poi);
  g.n = np(g.poi);
  return true;
}

inline void sommet(const Geometry& g, int k) {
  if (k >= 1 && k <= g.n) glVertex3fv(g.p + (k - 1) * g.d);
}

// A colour of a per-element table, white past its end.
const float* couleur(const word* table, int i) {
  return table && (i + 1) * 3 <= elements(table) ? fl(table) + i * 3 : WHITE;
}

}  // namespace

Illum illum_de(const word* v) {
  Illum il;
  float* f = &il.mode;
  for (int i = 0; i < 5 && i < elements(v) && tag(v) == T_FLOAT; i++) f[i] = getf(v, i);
  return il;
}

void set_material(const float* col, float diffuse, float specular, float shininess, float alpha,
                  bool both) {
  const GLenum face = both ? GL_FRONT_AND_BACK : GL_FRONT;
  const float c[4] = {col[0] * diffuse, col[1] * diffuse, col[2] * diffuse, alpha};
  glColor4fv(c);
  glMaterialfv(face, GL_DIFFUSE, c);
  glColorMaterial(face, GL_DIFFUSE);
  const float s[4] = {specular, specular, specular, 1};
  glMaterialfv(face, GL_SPECULAR, s);
  const float sh = std::clamp(shininess, 0.0f, 128.0f);
  const float shine[3] = {sh, sh, sh};
  glMaterialfv(face, GL_SHININESS, shine);
}

int DISPLAY_0(Objet* o, const DisplayRecord& r, bool generated) {
  Geometry g;
  if (!geometrie(o, r, generated, g)) return -1;
  glDisable(GL_LIGHTING);
  const word* cf = generated ? r[R_col_fac_generate] : r[R_col_fac];
  const float* col = elements(r[R_col]) >= 3 ? fl(r[R_col]) : WHITE;
  glColor3fv(col);
  const word* close = r[R_close_fac];
  const bool open = close && tag(close) == T_FLOAT && elements(close) > 0 && getf(close, 0) <= 0;
  const GLenum loop = open ? GL_LINE_STRIP : GL_LINE_LOOP;
  int i = 0;
  pour_chaque_facette(g.fac, [&](const word* v, int m) {
    if (cf) glColor3fv(couleur(cf, i));
    i++;
    glBegin(loop);
    for (int k = 0; k < m; k++) sommet(g, v[k]);
    glEnd();
  });
  // Pairs of vertices of `segment generate`.
  if (const word* seg = r[R_segment_generate]; seg && generated && tag(seg) == T_FLOAT) {
    const float* s = fl(seg);
    glBegin(GL_LINES);
    for (int k = 0; k + 1 < elements(seg); k += 2) {
      sommet(g, static_cast<int>(s[k]));
      sommet(g, static_cast<int>(s[k + 1]));
    }
    glEnd();
  }
  return 0;
}

int DISPLAY_1(Objet* o, const DisplayRecord& r, int mode, bool generated, const Texturage* tx) {
  Geometry g;
  if (!geometrie(o, r, generated, g)) return -1;
  glEnable(GL_LIGHTING);
  const word* iv = generated ? r[R_illum_vertex_generate] : r[R_illum_vertex];
  const Illum il = illum_de(r[R_illum]);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  const bool both = mode < 1;
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, both ? 1 : 0);
  const word* cf = generated ? r[R_col_fac_generate] : r[R_col_fac];
  const word* cv = generated ? r[R_col_vertex_generate] : r[R_col_vertex];
  const float* col = elements(r[R_col]) >= 3 ? fl(r[R_col]) : WHITE;
  const bool smooth = mode < -1 || mode > 1;
  const bool par_sommet = smooth || cv || iv;

  // Normals: the facets' or the vertices', computed when missing.
  const float* nf = nullptr;
  const float* nv = nullptr;
  int nvd = 3;
  if (generated) {
    nf = fl(r[R_normal_fac_generate]);
    nv = fl(r[R_normal_vertex_generate]);
    if (nv) nvd = std::max<int>(dimp(r[R_normal_vertex_generate]), 1);
  } else if (!cf && par_sommet) {
    nv = normales_vertex(o);
    nvd = 3;
  } else {
    nf = normales_fac(o);
  }
  const int nfacets = nf ? nb_facettes(g.fac) : 0;
  const word* ifac = r[R_illum_fac];
  const int ivd = iv ? std::max<int>(dimp(iv), 1) : 5;

  // A textured pass sets its own alpha.
  auto alpha = [&](const Illum& x) { return tx && tx->alpha >= 0 ? tx->alpha : 1 - x.transp; };
  const float* uv = tx ? tx->uv : nullptr;
  const int nuv = tx ? tx->nuv : 0;
  if (!cf && !cv) set_material(col, il.diffuse, il.specular, il.shininess, alpha(il), both);
  int i = 0;
  float scratch[3];
  pour_chaque_facette(g.fac, [&](const word* v, int m) {
    const int facet = i++;
    if (v[-2] <= 0) return;
    if (cf) {
      Illum fi = il;
      if (ifac && (facet + 1) * 5 <= elements(ifac)) std::copy_n(fl(ifac) + facet * 5, 5, &fi.mode);
      set_material(couleur(cf, facet), fi.diffuse, fi.specular, fi.shininess, alpha(fi), both);
    }
    if (tx && tx->images_fac) lie_texture_facette(tx->images_fac, facet);
    glBegin(GL_POLYGON);
    if (!par_sommet || cf) {
      if (nf && facet < nfacets) glNormal3fv(nf + facet * 3);
      else {
        normale_facette(g.p, g.d, g.n, v, m, scratch);
        glNormal3fv(scratch);
      }
    }
    for (int k = 0; k < m; k++) {
      const int s = v[k];
      if (s < 1 || s > g.n) continue;
      // A colour or lighting values of the vertex: its material.
      if (cv || (iv && s * ivd <= elements(iv))) {
        Illum vi = il;
        if (iv && s * ivd <= elements(iv)) std::copy_n(fl(iv) + (s - 1) * ivd, std::min(5, ivd), &vi.mode);
        const float* c = cv ? couleur(cv, s - 1) : cf ? couleur(cf, facet) : col;
        set_material(c, vi.diffuse, vi.specular, vi.shininess, alpha(vi), both);
      }
      if (par_sommet && !cf && nv) glNormal3fv(nv + (s - 1) * nvd);
      if (uv && s <= nuv) glTexCoord2fv(uv + (s - 1) * 2);
      glVertex3fv(g.p + (s - 1) * g.d);
    }
    glEnd();
  });
  return 0;
}
