// `inside line(x1,y1, ...) poi(x,y)`: whether a point lies within a
// polygon, by the even-odd rule on the edges crossed by a ray along +x.
#include <cmath>
#include <vector>

#include "animation/limits/limits.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"

namespace {

// The even-odd count with coordinates a and b of each point.
int croisements(const float* line, int n, int dim, int a, int b, float x, float y, bool close) {
  int c = 0;
  const int aretes = close ? n : n - 1;
  for (int i = 0; i < aretes; i++) {
    const float* p = line + i * dim;
    const float* q = line + ((i + 1) % n) * dim;
    if ((p[b] > y) == (q[b] > y)) continue;
    const float xc = p[a] + (y - p[b]) * (q[a] - p[a]) / (q[b] - p[b]);
    if (x < xc) c++;
  }
  return c;
}

}  // namespace

int INSIDE_LINE(const float* line, int n, int dim, const float poi[2], bool close) {
  return croisements(line, n, dim, 0, 1, poi[0], poi[1], close) % 2;
}

int INSIDE_POI_LINE_3D(const float* line, int n, const float poi[3], bool close) {
  // Newell's normal of the polygon picks the plane to see it in.
  float N[3] = {0, 0, 0};
  for (int i = 0; i < n; i++) {
    const float* p = line + i * 3;
    const float* q = line + ((i + 1) % n) * 3;
    for (int c = 0; c < 3; c++) N[c] += (p[(c + 1) % 3] - q[(c + 1) % 3]) * (p[(c + 2) % 3] + q[(c + 2) % 3]);
  }
  int axe = 2;
  if (std::fabs(N[0]) >= std::fabs(N[1]) && std::fabs(N[0]) >= std::fabs(N[2])) axe = 0;
  else if (std::fabs(N[1]) >= std::fabs(N[2])) axe = 1;
  const int a = (axe + 1) % 3, b = (axe + 2) % 3;
  return croisements(line, n, 3, a, b, poi[a], poi[b], close) % 2;
}

int INSIDE_b(word* s, const word* ob, word* st, const word* lim) {
  (void)ob;
  (void)st;
  // The dimension is the value of `inside(n)`, which may follow the command's own word.
  int dim = 2;
  for (const std::vector<float>& v : arg_floats_all(s, KW_inside))
    if (!v.empty()) dim = entier(v[0]);
  const std::vector<float> line = arg_floats(s, KW_line);
  const std::vector<float> poi = arg_floats(s, KW_poi);
  if ((dim != 2 && dim != 3) || static_cast<int>(line.size()) < 2 * dim || static_cast<int>(poi.size()) < dim) {
    voir_texte("inside line(x1,y1, ...) poi(x,y)\a\n");
    return -1;
  }
  const int n = static_cast<int>(line.size()) / dim;
  const bool close = has_word(s, KW_close);
  const int r = dim == 3 ? INSIDE_POI_LINE_3D(line.data(), n, poi.data(), close)
                         : INSIDE_LINE(line.data(), n, dim, poi.data(), close);
  if (has_word(s, KW_debug)) voir_int("inside = %d\n", r);
  return build_floats(s, lim, {static_cast<float>(r)});
}
