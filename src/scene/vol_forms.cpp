// The forms of `vol(id)` that build a volume from others: `pipe` through
// the first sections of volumes, `envelope` through their vertices, `arc`
// a tube along an arc, and `vol(id) vol(a) vol(b)` their union.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/primitives.h"
#include "scene/selection.h"
#include "scene/volume.h"

namespace {

using Ligne = std::vector<float>;  // a row of vertices, x,y,z each

// The volumes named by a word's parameters, in order.
std::vector<Objet*> sources(word* s, int code) {
  std::vector<Objet*> out;
  word* item = find_item(s, code);
  if (!item || !item_value(item)) return out;
  Selection sel;
  sel.chaine = chaine_classe(KW_vol);
  sel.selector = item_value(item);
  for (Objet* o : objets_selection(sel))
    if (o) out.push_back(o);
  return out;
}

Ligne sommets_de(Objet* o, int first, int count, int step = 1) {
  Ligne l;
  const word* poi = poi_vol(o);
  const int d = stride(poi);
  for (int i = 0; i < count; i++) {
    const float* p = reinterpret_cast<const float*>(poi + 4) + static_cast<long>(first + i * step) * d;
    l.insert(l.end(), {p[0], p[1], p[2]});
  }
  return l;
}

// The size of a band of `rows` rows of n vertices, `steps` rows made
// between two given ones.
Taille taille_bande(double rows, double n, double steps, bool close) {
  Taille t;
  const double count = (rows - 1) * steps + 1;
  t.sommets = count * n;
  t.quadrilateres(close ? n * (count - 1) : (n - 1) * (count - 1));
  return t;
}

// Rows joined by `steps` interpolated rows between two given ones, then
// faceted as a closed or open band.
Construction bande(const std::vector<Ligne>& rows, int steps, bool close) {
  Construction c;
  const size_t len = rows.front().size();
  for (size_t r = 0; r < rows.size(); r++) {
    const int parts = r + 1 < rows.size() ? steps : 1;
    for (int j = 0; j < parts; j++) {
      interrupt_check();
      const float t = static_cast<float>(j) / static_cast<float>(steps);
      for (size_t k = 0; k < len; k += 3) {
        float p[3];
        for (int a = 0; a < 3; a++)
          p[a] = r + 1 < rows.size() ? rows[r][k + a] + t * (rows[r + 1][k + a] - rows[r][k + a]) : rows[r][k + a];
        c.poi.add(p[0], p[1], p[2]);
      }
    }
  }
  const int n = static_cast<int>(len / 3), count = c.poi.count() / n;
  c.fac = close ? gen_fac_close(n, count - 1) : gen_fac_grid(n - 1, count - 1, 0);
  c.secx = close ? n : n - 1, c.secy = count - 1, c.close = close;
  return c;
}

int VOL_PIPE(word* s) {
  std::vector<Objet*> src = sources(s, KW_pipe);
  if (src.size() < 2) {
    voir_mot(KW_vol);
    voir_texte("(id1)");
    voir_mot(KW_pipe);
    voir_texte("(id2,id2)\a\n");
    return -1;
  }
  std::vector<Ligne> rows;
  size_t len = SIZE_MAX;
  for (Objet* o : src) {
    if (vol_secx(o) <= 0 || !poi_vol(o)) {
      voir_objet(o);
      voir_message(0, MES_TRUNCATED_DATA);
      return -1;
    }
    const int n = std::min(vol_close(o) ? vol_secx(o) : vol_secx(o) + 1, np(poi_vol(o)));
    rows.push_back(sommets_de(o, 0, n));
    len = std::min(len, rows.back().size());
  }
  for (Ligne& r : rows) r.resize(len);
  const int steps = compte_mot(s, KW_secy, 1, 1);
  const bool close = vol_close(src.front()) != 0, ends = find_item(s, KW_ext) != nullptr;
  Taille t = taille_bande(static_cast<double>(rows.size()), len / 3.0, steps, close);
  if (ends) t.facette(len / 3.0), t.facette(len / 3.0);
  if (!taille_possible(s, t, 0, "VOL_PIPE()")) return -1;
  Construction c = bande(rows, steps, close);
  if (ends) {
    // Both ends closed by a facet.
    const int n = static_cast<int>(len / 3), last = c.poi.count() - n;
    std::vector<int> a, b;
    for (int i = n; i >= 1; i--) a.push_back(i);
    for (int i = 1; i <= n; i++) b.push_back(last + i);
    c.fac.add(a);
    c.fac.add(b);
  }
  return cree_volumes(s, KW_pipe, c, {KW_pipe, KW_secy, KW_ext});
}

int VOL_ENVELOPE(word* s) {
  std::vector<Objet*> src = sources(s, KW_envelope);
  if (src.empty()) {
    voir_mot(KW_vol);
    voir_texte("(id) ");
    voir_mot(KW_envelope);
    voir_texte("(id1,id2,...) secx(n)\a\n");
    return -1;
  }
  bool given = false;
  valeurs_mot(s, KW_close, &given);
  std::vector<float> cl = valeurs_mot(s, KW_close);
  const bool close = !given || cl.empty() || cl[0] != 0;
  const word* premier = poi_vol(src.front());
  const int n = compte_mot(s, KW_secx, premier ? np(premier) : 2, 2);
  std::vector<Ligne> rows;
  for (Objet* o : src) {
    const int have = poi_vol(o) ? std::min(det_np(o), np(poi_vol(o))) : 0;
    if (n > have) {
      char text[64];
      std::snprintf(text, sizeof text, "(%d < %d)", have, n);
      voir_objet(o);
      voir_texte(text);
      voir_texte("\a\n");
      return -1;
    }
    // n vertices spread over the source's.
    Ligne l;
    for (int i = 0; i < n; i++) {
      const int k = close ? i * have / n : (n > 1 ? i * (have - 1) / (n - 1) : 0);
      Ligne p = sommets_de(o, k, 1);
      l.insert(l.end(), p.begin(), p.end());
    }
    rows.push_back(l);
  }
  if (rows.size() < 2) rows.push_back(rows.front());
  const int steps = compte_mot(s, KW_secy, 1, 1);
  if (!taille_possible(s, taille_bande(static_cast<double>(rows.size()), n, steps, close), 0, "VOL_ENVELOPE()"))
    return -1;
  Construction c = bande(rows, steps, close);
  return cree_volumes(s, KW_envelope, c, {KW_envelope, KW_secx, KW_secy, KW_close, KW_meta, KW_vertex});
}

int VOL_ARC(word* s) {
  std::vector<float> a = valeurs_mot(s, KW_arc);
  const float r = a.size() > 0 ? a[0] : 100.0f, a0 = a.size() > 1 ? a[1] : 0.0f;
  const float a1 = a.size() > 2 ? a[2] : 6.2831855f;
  const int n = a.size() > 3 ? std::max(entier(a[3]), 2) : 12;
  std::vector<float> d = valeurs_mot(s, KW_dim);
  const float rt = d.empty() ? r / 10 : d[0];
  const int m = compte_mot(s, KW_secx, 8, 3);
  // The rows are made first: weighed with the band they become.
  Taille t = taille_bande(n + 1.0, m, 1, true);
  t.sommets *= 2;
  if (!taille_possible(s, t, 0, "VOL_ARC()")) return -1;
  std::vector<Ligne> rows;
  for (int i = 0; i <= n; i++) {
    interrupt_check();
    const float t = a0 + (a1 - a0) * static_cast<float>(i) / static_cast<float>(n);
    const float cx = std::cos(t), cy = std::sin(t);
    Ligne l;
    for (int j = 0; j < m; j++) {
      const float b = 6.2831855f * static_cast<float>(j) / static_cast<float>(m);
      const float w = r + rt * std::cos(b);
      l.insert(l.end(), {w * cx, w * cy, rt * std::sin(b)});
    }
    rows.push_back(l);
  }
  Construction c = bande(rows, 1, true);
  return cree_volumes(s, KW_arc, c, {KW_arc, KW_dim, KW_secx});
}

// `vol(id) vol(a) vol(b)...`: the vertices and facets of the others, the
// facets renumbered after the vertices before them.
int VOL_VOL_VOL(word* s) {
  std::vector<Objet*> parts;
  Taille t;
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    if (item[2] != KW_vol || !item_value(item)) continue;
    Selection sel;
    sel.chaine = chaine_classe(KW_vol);
    sel.selector = item_value(item);
    for (Objet* o : objets_selection(sel)) {
      if (!o || !poi_vol(o)) continue;
      parts.push_back(o);
      t.sommets += np(poi_vol(o));
      pour_chaque_facette(fac_vol(o), [&](const word*, int n) { t.facette(n); });
    }
  }
  if (!taille_possible(s, t, 0, "VOL_VOL_VOL()")) return -1;
  Construction c;
  std::vector<int> f;
  for (Objet* o : parts) {
    const int base = c.poi.count();
    Ligne l = sommets_de(o, 0, np(poi_vol(o)));
    c.poi.xyz.insert(c.poi.xyz.end(), l.begin(), l.end());
    pour_chaque_facette(fac_vol(o), [&](const word* v, int n) {
      f.clear();
      for (int k = 0; k < n; k++) f.push_back(base + v[k]);
      c.fac.add(f);
    });
  }
  return cree_volumes(s, KW_vol, c, {KW_vol});
}

}  // namespace

// The forms that build from other volumes; 1 when the command is none.
int formes_vol(word* s) {
  if (find_item(s, KW_pipe)) return VOL_PIPE(s);
  if (find_item(s, KW_envelope)) return VOL_ENVELOPE(s);
  if (find_item(s, KW_arc)) return VOL_ARC(s);
  int vols = 0;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) vols += item[2] == KW_vol && item_value(item);
  if (vols >= 2 && !find_item(s, KW_vertex)) return VOL_VOL_VOL(s);
  return 1;
}
