// Texture coordinates of the vertices, two floats each, from 0 to 1.
// A volume with sections is mapped along them: vertex k of a row of m
// (m = secx when closed, else secx+1) takes u = column / secx and
// v = row / secy, rows counted over the layers of a grid. Any other
// volume is mapped around its centre: u the longitude about y from the
// +z side, v from the top (+y) to the bottom.
#include <cmath>
#include <numbers>
#include <vector>

#include "kernel/keywords.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

void par_sections(Objet* o, int nv, std::vector<float>& uv) {
  const int sx = vol_secx(o), sy = vol_secy(o);
  const int m = vol_close(o) ? sx : sx + 1;
  const int lignes = (sy + 1) > 0 ? sy + 1 : 1;
  for (int k = 0; k < nv; k++) {
    const int ligne = (k / m) % lignes;
    uv[2 * static_cast<size_t>(k)] = static_cast<float>(k % m) / static_cast<float>(sx);
    uv[2 * static_cast<size_t>(k) + 1] = sy > 0 ? static_cast<float>(ligne) / static_cast<float>(sy) : 0.0f;
  }
}

void spherique(const word* poi, int nv, std::vector<float>& uv) {
  const float* p = reinterpret_cast<const float*>(poi + 4);
  const int d = stride(poi);
  float c[3];
  mat::moyenne(p, nv, d, c);
  constexpr float pi = std::numbers::pi_v<float>;
  for (int k = 0; k < nv; k++) {
    const float* q = p + k * d;
    const float x = q[0] - c[0], y = d > 1 ? q[1] - c[1] : 0, z = d > 2 ? q[2] - c[2] : 0;
    const float r = std::sqrt(x * x + y * y + z * z);
    float u = 0.5f, v = 0.5f;
    if (r > 0) {
      u = 0.5f + std::atan2(x, z) / (2 * pi);
      v = 0.5f - std::asin(std::fmax(-1.0f, std::fmin(1.0f, y / r))) / pi;
    }
    uv[2 * static_cast<size_t>(k)] = u;
    uv[2 * static_cast<size_t>(k) + 1] = v;
  }
}

}  // namespace

std::vector<float> coord_spheriques(const word* poi) {
  std::vector<float> uv(2 * static_cast<size_t>(poi[2]), 0.0f);
  spherique(poi, poi[2], uv);
  return uv;
}

bloc gen_coord_vertex(Objet* o) {
  const word* poi = poi_requis(o, "gen_coord_vertex()");
  if (!poi) return nullptr;
  const int nv = poi[2];
  std::vector<float> uv(2 * static_cast<size_t>(nv), 0.0f);
  if (vol_secx(o) > 0) par_sections(o, nv, uv);
  else spherique(poi, nv, uv);
  const int keys[] = {KW_coord, KW_vertex};
  return stocke_floats(o, 2, keys, uv, 2);
}
