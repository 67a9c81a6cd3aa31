#include "scene/vol_gen.h"

#include <cmath>

#include "kernel/interrupt.h"
#include "kernel/report.h"
#include "kernel/resources.h"

bool volume_possible(const Taille& t, int copies, const char* name) {
  const bool blocs = 4 + 3 * t.sommets <= MOTS_BLOC_MAX && 4 + t.mots_facettes <= MOTS_BLOC_MAX;
  if (blocs && memoire_disponible(t.octets() * (2 + (copies > 1 ? copies : 1)))) return true;
  err_malloc(name, t.octets());
  return false;
}

// The loops below run as long as the user's numbers ask: each row is a
// point where the interrupt is heard.

Sommets gen_poi_rev(const Sommets& profile, float angle, float phase, int n, bool close) {
  Sommets out;
  if (n < 1) n = 1;
  const float step = angle / static_cast<float>(n);
  const int m = close ? n : n + 1;
  Sommets origin;
  origin.add(0, 0, 0);
  const Sommets& p = profile.count() ? profile : origin;
  out.xyz.reserve(static_cast<size_t>(p.count()) * static_cast<size_t>(m) * 3);
  for (int k = 0; k < p.count(); k++) {
    interrupt_check();
    const float x = p.xyz[3 * k], y = p.xyz[3 * k + 1], z = p.xyz[3 * k + 2];
    for (int i = 0; i < m; i++) {
      const float a = static_cast<float>(i) * step + phase;
      const float c = std::cos(a), s = std::sin(a);
      out.add(x * c - z * s, y, z * c + x * s);
    }
  }
  return out;
}

Facettes gen_fac_close(int nx, int ny) {
  Facettes f;
  f.mots.reserve(static_cast<size_t>(facettes_close(nx, ny)) * 8);
  for (int row = 0; row < ny; row++) {
    interrupt_check();
    const int k = 1 + row * nx;
    for (int i = 0; i <= nx - 2; i++) f.add({k + i, k + i + 1, k + i + 1 + nx, k + i + nx});
    f.add({k + nx - 1, k, k + nx, k + 2 * nx - 1});
  }
  return f;
}

Facettes gen_fac_grid(int nx, int ny, int nz) {
  Facettes f;
  f.mots.reserve(static_cast<size_t>(facettes_grid(nx, ny, nz)) * 8);
  const int row = nx + 1, layer = (nx + 1) * (ny + 1);
  for (int l = 0; l <= nz; l++)
    for (int r = 0; r < ny; r++) {
      interrupt_check();
      for (int i = 0; i < nx; i++) {
        const int v = 1 + l * layer + r * row + i;
        f.add({v, v + 1, v + nx + 2, v + nx + 1});
      }
    }
  for (int l = 0; l < nz; l++)
    for (int r = 0; r <= ny; r++) {
      interrupt_check();
      for (int i = 0; i < nx; i++) {
        const int v = 1 + l * layer + r * row + i, w = v + layer;
        f.add({v, v + 1, w + 1, w});
      }
    }
  return f;
}

Facettes gen_fac_fan(int n) {
  Facettes f;
  std::vector<int> all;
  for (int i = 1; i <= n; i++) all.push_back(i);
  f.add(all);
  return f;
}

std::vector<word> bloc_sommets(const Sommets& s) {
  std::vector<word> v{static_cast<word>(4 + s.xyz.size()), T_FLOAT, s.count(), 3};
  v.reserve(4 + s.xyz.size());
  for (float x : s.xyz) v.push_back(fw(x));
  return v;
}

std::vector<word> bloc_facettes(const Facettes& f) {
  std::vector<word> v{static_cast<word>(4 + f.mots.size()), T_HYBRIDE, f.count, 0};
  v.insert(v.end(), f.mots.begin(), f.mots.end());
  return v;
}
