// Moves of the pixels inside an image of fixed size: translation, turn
// and scaling, all through one inverse map with nearest sampling.
#include <cmath>
#include <cstring>

#include "image/image_edit.h"
#include "kernel/interrupt.h"

int transforme_image(Objet* o, const float* m) {
  const int nx = image_nx(o), ny = image_ny(o);
  uint8_t* p = pixels_image(o);
  std::vector<uint8_t> src(p, p + static_cast<size_t>(nx) * ny * 4);
  for (int y = 0; y < ny; y++) {
    interrupt_check();
    for (int x = 0; x < nx; x++, p += 4) {
      const float u = m[0] * static_cast<float>(x) + m[1] * static_cast<float>(y) + m[2];
      const float v = m[3] * static_cast<float>(x) + m[4] * static_cast<float>(y) + m[5];
      const float fx = std::floor(u + 0.5f), fy = std::floor(v + 0.5f);
      if (fx >= 0 && fy >= 0 && fx < static_cast<float>(nx) && fy < static_cast<float>(ny))
        std::memcpy(p, &src[(static_cast<size_t>(fy) * nx + static_cast<size_t>(fx)) * 4], 4);
      else
        std::memset(p, 0, 4);
    }
  }
  return 0;
}

int TRAN_IMAGE(Objet* o, float dx, float dy) {
  const float m[6] = {1, 0, -dx, 0, 1, -dy};
  return transforme_image(o, m);
}

int ROTZ_IMAGE(Objet* o, float deg) {
  const float a = deg * static_cast<float>(M_PI / 180.0), c = std::cos(a), s = std::sin(a);
  const float cx = static_cast<float>(image_nx(o) - 1) / 2, cy = static_cast<float>(image_ny(o) - 1) / 2;
  const float m[6] = {c, s, cx - c * cx - s * cy, -s, c, cy + s * cx - c * cy};
  return transforme_image(o, m);
}

int DILA_IMAGE(Objet* o, float sx, float sy) {
  if (sx == 0 || sy == 0) {
    voir_float("%f ", sx);
    voir_float("%f ", sy);
    err_illegal("DILA_IMAGE()");
    return -1;
  }
  const float cx = static_cast<float>(image_nx(o) - 1) / 2, cy = static_cast<float>(image_ny(o) - 1) / 2;
  const float m[6] = {1 / sx, 0, cx - cx / sx, 0, 1 / sy, cy - cy / sy};
  return transforme_image(o, m);
}
