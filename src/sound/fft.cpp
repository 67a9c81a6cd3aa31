#include "sound/fft.h"

#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "kernel/report.h"

namespace {

constexpr unsigned MAX_SAMPLES = 16384;

// What a transform of one size needs: the reversed index of each input
// and, stage after stage, the twiddles of the forward sign (the inverse
// takes their conjugates).
struct Plan {
  unsigned n = 0;
  std::vector<unsigned> reverse;
  std::vector<float> tw_re, tw_im;  // stage of half-size h at offset h - 1
};

Plan& plan() {
  static Plan p;
  return p;
}

void build_plan(Plan& p, unsigned n) {
  const unsigned bits = NumberOfBitsNeeded(n);
  // Room for the largest window once, so that a later size reuses it.
  const unsigned room = n > MAX_SAMPLES ? n : MAX_SAMPLES;
  p.reverse.reserve(room);
  p.tw_re.reserve(room);
  p.tw_im.reserve(room);
  p.reverse.resize(n);
  p.tw_re.resize(n > 1 ? n - 1 : 0);
  p.tw_im.resize(n > 1 ? n - 1 : 0);
  for (unsigned i = 0; i < n; i++) p.reverse[i] = ReverseBits(i, bits);
  for (unsigned h = 1; h < n; h <<= 1) {
    // w_j = e^(-i pi j / h) by the recurrence w_(j+1) = w_j * w_1, in double.
    const double delta = -std::numbers::pi / h;
    const double c = std::cos(delta), s = std::sin(delta);
    double wr = 1, wi = 0;
    for (unsigned j = 0; j < h; j++) {
      p.tw_re[h - 1 + j] = static_cast<float>(wr);
      p.tw_im[h - 1 + j] = static_cast<float>(wi);
      const double t = wr * c - wi * s;
      wi = wr * s + wi * c;
      wr = t;
    }
  }
  p.n = n;
}

// "Error in fft_float():  RealIn == NULL" as the classic routine says it.
bool pointer_ok(const void* p, const char* name) {
  if (p) return true;
  VOIR_CHAR("Error in fft_float():  %s == NULL\n", name);
  return false;
}

// One stage of butterflies on blocks of 2h, twiddles w (conjugated when
// `inverse`). The inner loop is contiguous so that it vectorises.
void stage(unsigned n, unsigned h, const float* wr, const float* wi, bool inverse, float* re, float* im) {
  const float sign = inverse ? -1.0f : 1.0f;
  for (unsigned b = 0; b < n; b += 2 * h) {
    float* ar = re + b;
    float* ai = im + b;
    float* br = ar + h;
    float* bi = ai + h;
    for (unsigned j = 0; j < h; j++) {
      const float cr = wr[j], ci = sign * wi[j];
      const float tr = cr * br[j] - ci * bi[j];
      const float ti = cr * bi[j] + ci * br[j];
      br[j] = ar[j] - tr;
      bi[j] = ai[j] - ti;
      ar[j] += tr;
      ai[j] += ti;
    }
  }
}

}  // namespace

bool IsPowerOfTwo(unsigned x) { return x >= 2 && (x & (x - 1)) == 0; }

unsigned NumberOfBitsNeeded(unsigned PowerOfTwo) {
  if (PowerOfTwo < 2) {
    voir_int(">>> Error in fftmisc.c: argument %d to NumberOfBitsNeeded is too small.\n",
             static_cast<int>(PowerOfTwo));
    return 0;
  }
  for (unsigned i = 0;; i++)
    if (PowerOfTwo & (1u << i)) return i;
}

unsigned ReverseBits(unsigned index, unsigned NumBits) {
  unsigned rev = 0;
  for (unsigned i = 0; i < NumBits; i++) {
    rev = (rev << 1) | (index & 1);
    index >>= 1;
  }
  return rev;
}

int fft_float(unsigned NumSamples, int InverseTransform, const float* RealIn, const float* ImagIn, float* RealOut,
              float* ImagOut) {
  if (!IsPowerOfTwo(NumSamples)) {
    VOIR_CHAR("%s", ("Error in fft():  NumSamples=" + std::to_string(NumSamples) + " is not power of two\n").c_str());
    return -1;
  }
  if (!pointer_ok(RealIn, "RealIn") || !pointer_ok(RealOut, "RealOut") || !pointer_ok(ImagOut, "ImagOut")) return -1;
  Plan& p = plan();
  if (p.n != NumSamples) build_plan(p, NumSamples);
  const unsigned n = NumSamples;
  // The bit-reversed copy. When an input is also an output, both arrays
  // are first brought to the outputs and their pairs swapped there.
  if (RealIn == RealOut || (ImagIn && ImagIn == ImagOut) || RealIn == ImagOut || ImagIn == RealOut) {
    if (RealIn != RealOut)
      for (unsigned i = 0; i < n; i++) RealOut[i] = RealIn[i];
    if (!ImagIn)
      for (unsigned i = 0; i < n; i++) ImagOut[i] = 0.0f;
    else if (ImagIn != ImagOut)
      for (unsigned i = 0; i < n; i++) ImagOut[i] = ImagIn[i];
    for (unsigned i = 0; i < n; i++) {
      const unsigned j = p.reverse[i];
      if (j <= i) continue;
      std::swap(RealOut[i], RealOut[j]);
      std::swap(ImagOut[i], ImagOut[j]);
    }
  } else {
    for (unsigned i = 0; i < n; i++) {
      const unsigned j = p.reverse[i];
      RealOut[j] = RealIn[i];
      ImagOut[j] = ImagIn ? ImagIn[i] : 0.0f;
    }
  }
  // The first stage has the twiddle 1 alone.
  for (unsigned b = 0; b < n; b += 2) {
    const float ar = RealOut[b], ai = ImagOut[b];
    RealOut[b] = ar + RealOut[b + 1];
    ImagOut[b] = ai + ImagOut[b + 1];
    RealOut[b + 1] = ar - RealOut[b + 1];
    ImagOut[b + 1] = ai - ImagOut[b + 1];
  }
  for (unsigned h = 2; h < n; h <<= 1)
    stage(n, h, p.tw_re.data() + h - 1, p.tw_im.data() + h - 1, InverseTransform != 0, RealOut, ImagOut);
  if (InverseTransform) {
    const float k = 1.0f / static_cast<float>(n);
    for (unsigned i = 0; i < n; i++) {
      RealOut[i] *= k;
      ImagOut[i] *= k;
    }
  }
  return 0;
}
