// The FFT of 1024 points of the live analysis, in ns a transform, against
// the plain O(n^2) DFT (twiddles from a table, double sums) and against
// FFTW's single-precision fftwf_execute on the same data with its best
// plan (FFTW_MEASURE). Best of several rounds; the results are compared
// so that the transforms timed are the same one.
#include <fftw3.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <vector>

#include "sound/fft.h"

namespace {

constexpr unsigned N = 1024;

template <class F>
double best_ns(int rounds, int reps, F&& f) {
  double best = 1e30;
  for (int r = 0; r < rounds; r++) {
    const auto t0 = std::chrono::steady_clock::now();
    for (int i = 0; i < reps; i++) f();
    const double ns = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - t0).count() / reps;
    best = std::min(best, ns);
  }
  return best;
}

void plain_dft(const std::vector<float>& x, const std::vector<double>& c, const std::vector<double>& s,
               std::vector<float>& re, std::vector<float>& im) {
  for (unsigned k = 0; k < N; k++) {
    double a = 0, b = 0;
    for (unsigned t = 0; t < N; t++) {
      const unsigned i = (k * t) % N;
      a += x[t] * c[i];
      b -= x[t] * s[i];
    }
    re[k] = static_cast<float>(a);
    im[k] = static_cast<float>(b);
  }
}

}  // namespace

int main() {
  std::mt19937 g(1);
  std::uniform_real_distribution<float> d(0, 255);
  std::vector<float> x(N), re(N), im(N), dre(N), dim(N);
  for (float& v : x) v = d(g);

  std::vector<double> c(N), s(N);
  for (unsigned i = 0; i < N; i++) {
    c[i] = std::cos(2 * std::numbers::pi * i / N);
    s[i] = std::sin(2 * std::numbers::pi * i / N);
  }

  fftwf_complex* in = fftwf_alloc_complex(N);
  fftwf_complex* out = fftwf_alloc_complex(N);
  fftwf_plan plan = fftwf_plan_dft_1d(N, in, out, FFTW_FORWARD, FFTW_MEASURE);
  for (unsigned i = 0; i < N; i++) {
    in[i][0] = x[i];
    in[i][1] = 0;
  }

  const double ours = best_ns(7, 20000, [&] { fft_float(N, 0, x.data(), nullptr, re.data(), im.data()); });
  const double fftw = best_ns(7, 20000, [&] { fftwf_execute(plan); });
  const double dft = best_ns(3, 20, [&] { plain_dft(x, c, s, dre, dim); });

  // The three agree to single precision of the largest bin.
  double largest = 0, ecart_fftw = 0, ecart_dft = 0;
  for (unsigned k = 0; k < N; k++) largest = std::max(largest, std::hypot<double>(re[k], im[k]));
  for (unsigned k = 0; k < N; k++) {
    ecart_fftw = std::max(ecart_fftw, std::hypot<double>(re[k] - out[k][0], im[k] - out[k][1]));
    ecart_dft = std::max(ecart_dft, std::hypot<double>(re[k] - dre[k], im[k] - dim[k]));
  }
  std::printf("FFT of %u points, ns a transform (best of rounds)\n", N);
  std::printf("  fft_float            %10.0f ns\n", ours);
  std::printf("  fftwf_execute        %10.0f ns   fft_float / FFTW = %.2f (target: 4 or less)\n", fftw, ours / fftw);
  std::printf("  plain O(n^2) DFT     %10.0f ns   DFT / fft_float = %.0f\n", dft, dft / ours);
  std::printf("  largest difference against FFTW %.2g, against the DFT %.2g, of a largest bin %.4g\n", ecart_fftw,
              ecart_dft, largest);
  fftwf_destroy_plan(plan);
  fftwf_free(in);
  fftwf_free(out);
  return ecart_fftw < 1e-4 * largest && ecart_dft < 1e-4 * largest ? 0 : 1;
}
