// Bounding boxes of volumes.
#include <algorithm>
#include <limits>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

// Within one volume the running bounds start at +-1000000, not at the
// extreme floats: a volume lying wholly beyond them is not reported as
// such, a property the collision code relies on.
constexpr float BORNE = 1000000.0f;

void fusionne(float box[6], const float b[6]) {
  for (int k = 0; k < 3; k++) {
    box[k] = std::min(box[k], b[k]);
    box[3 + k] = std::max(box[3 + k], b[3 + k]);
  }
}

// The box of the NP first vertices, or of all with `tous`. False when
// the volume has no vertex.
bool boite_sommets(Objet* o, bool tous, float b[6]) {
  const word* poi = poi_vol(o);
  if (!poi || poi[2] < 1) return false;
  const int d = stride(poi);
  const int n = tous ? poi[2] : std::min(det_np(o), static_cast<int>(poi[2]));
  const float* p = reinterpret_cast<const float*>(poi + 4);
  for (int k = 0; k < 3; k++) b[k] = BORNE, b[3 + k] = -BORNE;
  for (int i = 0; i < n; i++)
    for (int k = 0; k < 3 && k < d; k++) {
      b[k] = std::min(b[k], p[i * d + k]);
      b[3 + k] = std::max(b[3 + k], p[i * d + k]);
    }
  return true;
}

// One object merged into the running box; the object keeps that box.
bool det_limite_vol_1(Objet* o, bool generate, float box[6]) {
  const int keys[] = {KW_box};
  bool valide = false;
  bloc v = cache_vol(o, 1, keys, 2, 3, &valide);
  if (!v) return false;
  float* stocke = reinterpret_cast<float*>(v + 4);
  if (valide && !generate) {
    fusionne(box, stocke);
    return true;
  }
  float b[6];
  if (!boite_sommets(o, generate, b)) return false;
  fusionne(box, b);
  std::copy(box, box + 6, stocke);
  cache_valide(o, 1, keys);
  return true;
}

}  // namespace

bool det_limite_vol(const std::vector<Objet*>& objets, bool generate, float box[6]) {
  constexpr float MAX = std::numeric_limits<float>::max();
  for (int k = 0; k < 3; k++) box[k] = MAX, box[3 + k] = -MAX;
  bool trouve = false;
  for (Objet* o : objets)
    if (o && det_limite_vol_1(o, generate, box)) trouve = true;
  return trouve;
}
