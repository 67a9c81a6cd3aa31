// The display of volumes: DISPLAY_VOL for a whole image or the `displ`
// command, one object by DISPLAY_VOL_1, the matrices by CAL_MATRIX_1, and
// the record of a volume's properties that the drawing members read.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// The paths a volume's display knows, in the order of the record.
enum RecordIndex : int {
  R_attach, R_axis_vertex, R_close_fac, R_col, R_col_fac, R_col_fac_generate, R_col_vertex,
  R_col_vertex_generate, R_coord_vertex, R_coord_vertex_generate, R_disk, R_envelope_vertex, R_ext,
  R_fac, R_fac_generate, R_follow, R_frac, R_illum, R_illum_fac, R_illum_vertex,
  R_illum_vertex_generate, R_lead, R_light, R_meta_axis, R_meta_axis_force, R_meta_axis_validate,
  R_meta_axis_vol, R_meta_axis_vol_force, R_meta_normal, R_meta_sphere, R_meta_sphere_force,
  R_meta_sphere_validate, R_motif, R_motif_adjust, R_motif_adjust_fac, R_motif_dila,
  R_motif_dila_fac, R_motif_fac, R_near_vertex_vertex, R_normal_fac, R_normal_fac_generate,
  R_normal_vertex, R_normal_vertex_generate, R_particle, R_poi, R_poi_generate, R_poi_validate,
  R_radius_dist, R_segment, R_shadow_col, R_shadow_poi, R_shadow_vol, R_segment_generate,
  R_texture, R_texture_fac, R_texture_fac_generate, R_transp_texture,
  R_meta_validate_axis_limit, R_meta_validate_rota_limit, R_vol, R_vol_vertex,
  R_COUNT,
  // Paths read into locals beside the record.
  L_message = R_COUNT, L_behind, L_collision, L_simple, L_back_message, L_col_frame,
  L_col_message, L_font_message, L_fog_zbuf, L_speed_vertex, L_vertex_follow, L_vertex_lead,
  L_END
};
static_assert(R_COUNT == 61, "the record holds 61 paths");

// The values of one volume's known paths, null where absent.
struct DisplayRecord {
  bloc p[L_END] = {};
  bloc operator[](int i) const { return p[i]; }
};

// One walk of the property list fills the record.
void remplit_record(const Objet* o, DisplayRecord& r);
// The index of a path (its keyword codes), or -1.
int index_chemin(int n, const int* codes);

// The `displ` command and the drawing of an image. Negative after a report.
int DISPLAY_VOL(word* command);
// `ids` null: the volume chain in order, else those objects.
int DISPLAY_VOL_0(Objet** list, int n, word* command);
int DISPLAY_VOL_1(Objet* o, word* command);
int CAL_MATRIX_1(Objet* o);

// Displayed-object counter of the last image.
int& nb_affiches();
