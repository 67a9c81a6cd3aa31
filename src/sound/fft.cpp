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
  std::vector<float> tw_im_inv;     // the conjugates' imaginary parts
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
  p.tw_im_inv.reserve(room);
  p.reverse.resize(n);
  p.tw_re.resize(n > 1 ? n - 1 : 0);
  p.tw_im.resize(n > 1 ? n - 1 : 0);
  p.tw_im_inv.resize(n > 1 ? n - 1 : 0);
  for (unsigned i = 0; i < n; i++) p.reverse[i] = ReverseBits(i, bits);
  for (unsigned h = 1; h < n; h <<= 1) {
    // w_j = e^(-i pi j / h) by the recurrence w_(j+1) = w_j * w_1, in double.
    const double delta = -std::numbers::pi / h;
    const double c = std::cos(delta), s = std::sin(delta);
    double wr = 1, wi = 0;
    for (unsigned j = 0; j < h; j++) {
      p.tw_re[h - 1 + j] = static_cast<float>(wr);
      p.tw_im[h - 1 + j] = static_cast<float>(wi);
      p.tw_im_inv[h - 1 + j] = static_cast<float>(-wi);
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

// The butterflies of one block: its halves a and b, h values each, never
// overlap (restrict lets the loop vectorise without checks). H, when not
// 0, is h known at compile time.
template <unsigned H>
inline void block(unsigned h, const float* __restrict wr, const float* __restrict wi, float* __restrict ar,
                  float* __restrict ai, float* __restrict br, float* __restrict bi) {
  const unsigned m = H ? H : h;
  for (unsigned j = 0; j < m; j++) {
    const float tr = wr[j] * br[j] - wi[j] * bi[j];
    const float ti = wr[j] * bi[j] + wi[j] * br[j];
    br[j] = ar[j] - tr;
    bi[j] = ai[j] - ti;
    ar[j] += tr;
    ai[j] += ti;
  }
}

// One stage of butterflies on blocks of 2h with the twiddles (wr, wi):
// the conjugates of the forward ones for an inverse.
template <unsigned H>
void stage(unsigned n, unsigned h, const float* wr, const float* wi, float* re, float* im) {
  for (unsigned b = 0; b < n; b += 2 * h) block<H>(h, wr, wi, re + b, im + b, re + b + h, im + b + h);
}

// The stages from half-size h on. Built twice, for AVX2 and for plain
// x86-64, the one for the processor chosen when the program loads.
__attribute__((target_clones("avx2", "default"))) void stages(unsigned n, unsigned h, const float* wr,
                                                                const float* wi, float* re, float* im) {
  for (; h < n; h <<= 1) {
    if (h == 4) stage<4>(n, h, wr + h - 1, wi + h - 1, re, im);
    else if (h == 8) stage<8>(n, h, wr + h - 1, wi + h - 1, re, im);
    else stage<0>(n, h, wr + h - 1, wi + h - 1, re, im);
  }
}

// The first two stages as one butterfly of radix 4 on (x0, x1, x2, x3),
// in bit-reversed order already: the twiddles are 1 and -i (i for an
// inverse, s = -1). The results go to r[0..3], i[0..3].
inline void papillon4(const float (&xr)[4], const float (&xi)[4], float s, float* r, float* i) {
  const float a0r = xr[0] + xr[1], a0i = xi[0] + xi[1], a1r = xr[0] - xr[1], a1i = xi[0] - xi[1];
  const float a2r = xr[2] + xr[3], a2i = xi[2] + xi[3], a3r = xr[2] - xr[3], a3i = xi[2] - xi[3];
  const float t3r = s * a3i, t3i = -s * a3r;  // a3 times -i
  r[0] = a0r + a2r;
  i[0] = a0i + a2i;
  r[2] = a0r - a2r;
  i[2] = a0i - a2i;
  r[1] = a1r + t3r;
  i[1] = a1i + t3i;
  r[3] = a1r - t3r;
  i[3] = a1i - t3i;
}

// The first two stages over values already in bit-reversed order.
void radix4(unsigned n, float s, float* re, float* im) {
  for (unsigned b = 0; b < n; b += 4) {
    const float xr[4] = {re[b], re[b + 1], re[b + 2], re[b + 3]};
    const float xi[4] = {im[b], im[b + 1], im[b + 2], im[b + 3]};
    papillon4(xr, xi, s, re + b, im + b);
  }
}

// The bit-reversed copy and the first two stages in one pass, from inputs
// apart from the outputs. Block b of four takes the inputs k, k + n/2,
// k + n/4 and k + 3n/4 where b is k reversed: the reads are contiguous.
template <bool IMAG>
void entree_radix4(unsigned n, float s, const unsigned* rev, const float* __restrict xr, const float* __restrict xi,
                   float* __restrict re, float* __restrict im) {
  const unsigned q = n / 4;
  for (unsigned k = 0; k < q; k++) {
    const float r[4] = {xr[k], xr[k + 2 * q], xr[k + q], xr[k + 3 * q]};
    const float i[4] = {IMAG ? xi[k] : 0.0f, IMAG ? xi[k + 2 * q] : 0.0f, IMAG ? xi[k + q] : 0.0f,
                        IMAG ? xi[k + 3 * q] : 0.0f};
    papillon4(r, i, s, re + rev[k], im + rev[k]);
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
  const float sens = InverseTransform ? -1.0f : 1.0f;
  if (n == 2) {
    const float x0 = RealIn[0], x1 = RealIn[1], y0 = ImagIn ? ImagIn[0] : 0.0f, y1 = ImagIn ? ImagIn[1] : 0.0f;
    RealOut[0] = x0 + x1;
    ImagOut[0] = y0 + y1;
    RealOut[1] = x0 - x1;
    ImagOut[1] = y0 - y1;
  } else if (RealIn == RealOut || (ImagIn && ImagIn == ImagOut) || RealIn == ImagOut || ImagIn == RealOut) {
    // An input is also an output: both arrays are brought to the outputs,
    // their pairs swapped there, then the first two stages.
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
    radix4(n, sens, RealOut, ImagOut);
  } else if (ImagIn) {
    entree_radix4<true>(n, sens, p.reverse.data(), RealIn, ImagIn, RealOut, ImagOut);
  } else {
    entree_radix4<false>(n, sens, p.reverse.data(), RealIn, nullptr, RealOut, ImagOut);
  }
  const float* wi = InverseTransform ? p.tw_im_inv.data() : p.tw_im.data();
  stages(n, 4, p.tw_re.data(), wi, RealOut, ImagOut);
  if (InverseTransform) {
    const float k = 1.0f / static_cast<float>(n);
    for (unsigned i = 0; i < n; i++) {
      RealOut[i] *= k;
      ImagOut[i] *= k;
    }
  }
  return 0;
}
