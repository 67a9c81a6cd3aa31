// Resampling key values into the rows of a trajectory's table: from n key
// points of `dim` floats to `ni` rows, spaced along the curve by a law.
// Plain arrays in, plain arrays out: no object is read here.
#pragma once
#include <vector>

// The law that places the rows along the curve (s as a function of t).
struct LoiTraj {
  int kind = 0;              // 0, KW_acc, KW_dec, KW_pend, -KW_pend, KW_law, KW_anc, KW_adjust
  std::vector<float> curve;  // points (x, y, z) of `law(id)`
};

struct Ajustement {
  int ni = 2;                // rows, at least 2
  bool interpol = false;     // equal spacing segment by segment
  bool ext = false;          // the keys smoothed into a curve first
  int ext_steps = 8;         // points of the curve between two keys
  float ext_tension = 1.0f;  // tangents (next - previous) x tension / 2
  bool close = false;        // the first key appended at the end
  LoiTraj loi;
};

// The position along a curve of length L at t (0 to 1) by the law.
float position_loi(const LoiTraj& loi, float L, float t);

// The table of a.ni rows of `dim` floats from the keys (at least one key).
std::vector<float> ajust_1(const std::vector<float>& keys, int dim, const Ajustement& a);

// `format(1)` and `format(2)`: values of width 1 or 2 widened to points
// (v, i, 0) and (a, b, 0), and rows narrowed back.
std::vector<float> elargit_format(const std::vector<float>& values, int format);
std::vector<float> retrecit_format(const std::vector<float>& rows, int format);
