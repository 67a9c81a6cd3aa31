// The mouse factors of MOD_b: `mouse(k)`, `frame(x1,y1,x2,y2)` and
// `scale(x1,y1,x2,y2)` scale the first two values of a transformation by
// the pointer's place, from the window's centre (y up). mouse(0) acts while
// a button is held, mouse(1) once for each press, any other value at every
// call; a place outside the frame (by default the middle half of the
// window) leaves the command without effect. With `scale` the factors go
// from min to max across the window, else they are the place in pixels.
#include "scene/mod_mouse.h"

#include <vector>

#include "kernel/access.h"
#include "kernel/keywords.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/primitives.h"
#include "scene/scene_state.h"

bool facteurs_souris(word* s, float factor[2]) {
  bool souris = false;
  const std::vector<float> m = arg_floats(s, KW_mouse, &souris);
  if (!souris) return true;
  ScenePointer& p = scene().pointeur;
  if (!p.on) return true;  // no window: the factors stay 1
  const int mode = m.empty() ? 0 : entier(m[0]);
  if (mode == 0 && !p.down) return false;
  if (mode == 1) {
    if (p.presses == p.presses_taken) return false;
    p.presses_taken = p.presses;
  }
  const float w = static_cast<float>(p.window_w), h = static_cast<float>(p.window_h);
  const float x = p.x, y = -p.y;
  float frame[4] = {-w / 4, -h / 4, w / 4, h / 4};
  bool cadre = false;
  const std::vector<float> f = arg_floats(s, KW_frame, &cadre);
  if (cadre) {
    for (size_t i = 0; i < 4 && i < f.size(); i++) frame[i] = f[i];
    if (p.dessine_cadre) p.dessine_cadre(frame);
  }
  if (x < frame[0] || x > frame[2] || y < frame[1] || y > frame[3]) return false;
  bool echelle = false;
  const std::vector<float> e = arg_floats(s, KW_scale, &echelle);
  if (!echelle) {
    factor[0] = x;
    factor[1] = y;
    return true;
  }
  float range[4] = {-0.5f, -0.5f, 0.5f, 0.5f};
  if (e.size() >= 4)
    for (size_t i = 0; i < 4; i++) range[i] = e[i];
  factor[0] = (range[2] - range[0]) * (w / 2 + x) / w;
  factor[1] = (range[3] - range[1]) * (h / 2 + y) / h;
  return true;
}
