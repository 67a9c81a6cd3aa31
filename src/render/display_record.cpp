// The record of a volume's properties: one walk of its list, each known
// path stored at its place.
#include <cstring>

#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "render/display.h"

namespace {

struct Path {
  int n;
  int codes[5];
};

// In the order of RecordIndex.
constexpr Path PATHS[L_END] = {
    {1, {KW_attach}}, {2, {KW_axis, KW_vertex}}, {2, {KW_close, KW_fac}}, {1, {KW_col}},
    {2, {KW_col, KW_fac}}, {3, {KW_col, KW_fac, KW_generate}}, {2, {KW_col, KW_vertex}},
    {3, {KW_col, KW_vertex, KW_generate}}, {2, {KW_coord, KW_vertex}},
    {3, {KW_coord, KW_vertex, KW_generate}}, {1, {KW_disk}}, {2, {KW_envelope, KW_vertex}},
    {1, {KW_ext}}, {1, {KW_fac}}, {2, {KW_fac, KW_generate}}, {1, {KW_follow}}, {1, {KW_frac}},
    {1, {KW_illum}}, {2, {KW_illum, KW_fac}}, {2, {KW_illum, KW_vertex}},
    {3, {KW_illum, KW_vertex, KW_generate}}, {1, {KW_lead}}, {1, {KW_light}},
    {2, {KW_meta, KW_axis}}, {3, {KW_meta, KW_axis, KW_force}}, {3, {KW_meta, KW_axis, KW_validate}},
    {3, {KW_meta, KW_axis, KW_vol}}, {4, {KW_meta, KW_axis, KW_vol, KW_force}},
    {2, {KW_meta, KW_normal}}, {2, {KW_meta, KW_sphere}}, {3, {KW_meta, KW_sphere, KW_force}},
    {3, {KW_meta, KW_sphere, KW_validate}}, {1, {KW_motif}}, {2, {KW_motif, KW_adjust}},
    {3, {KW_motif, KW_adjust, KW_fac}}, {2, {KW_motif, KW_dila}}, {3, {KW_motif, KW_dila, KW_fac}},
    {2, {KW_motif, KW_fac}}, {3, {KW_near, KW_vertex, KW_vertex}}, {2, {KW_normal, KW_fac}},
    {3, {KW_normal, KW_fac, KW_generate}}, {2, {KW_normal, KW_vertex}},
    {3, {KW_normal, KW_vertex, KW_generate}}, {1, {KW_particle}}, {1, {KW_poi}},
    {2, {KW_poi, KW_generate}}, {2, {KW_poi, KW_validate}}, {2, {KW_radius, KW_dist}},
    {1, {KW_segment}}, {2, {KW_shadow, KW_col}}, {2, {KW_shadow, KW_poi}}, {2, {KW_shadow, KW_vol}},
    {2, {KW_segment, KW_generate}}, {1, {KW_texture}}, {2, {KW_texture, KW_fac}},
    {3, {KW_texture, KW_fac, KW_generate}}, {2, {KW_transp, KW_texture}},
    {4, {KW_meta, KW_validate, KW_axis, KW_limit}}, {4, {KW_meta, KW_validate, KW_rota, KW_limit}},
    {1, {KW_vol}}, {2, {KW_vol, KW_vertex}},
    // Locals.
    {1, {KW_message}}, {1, {KW_behind}}, {1, {KW_collision}}, {1, {KW_simple}},
    {2, {KW_back, KW_message}}, {2, {KW_col, KW_frame}}, {2, {KW_col, KW_message}},
    {2, {KW_font, KW_message}}, {2, {KW_fog, KW_zbuf}}, {2, {KW_speed, KW_vertex}},
    {2, {KW_vertex, KW_follow}}, {2, {KW_vertex, KW_lead}},
};

}  // namespace

int index_chemin(int n, const int* codes) {
  for (int i = 0; i < L_END; i++) {
    const Path& p = PATHS[i];
    if (p.n != n || p.codes[0] != codes[0]) continue;
    int k = 1;
    while (k < n && p.codes[k] == codes[k]) k++;
    if (k == n) return i;
  }
  return -1;
}

void remplit_record(const Objet* o, DisplayRecord& r) {
  std::memset(r.p, 0, sizeof r.p);
  const word* list = o ? o->local : nullptr;
  if (!list || list[1] != T_PROPRIETES) return;
  for (int s = 0; s < list[2]; s++) {
    bloc p = handle_bloc(list[4 + s]);
    // A stale cache (validity 0) counts as absent: it is computed again.
    if (!p || p[0] <= 4 || p[1] == 0 || p[3] < 1 || p[3] > 5) continue;
    int codes[5];
    for (int k = 0; k < p[3]; k++) codes[k] = p[5 + 2 * k];
    const int i = index_chemin(p[3], codes);
    if (i >= 0 && !r.p[i]) r.p[i] = p + p[2];
  }
}
