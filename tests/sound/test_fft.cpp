// The FFT of the live analysis against the definition of the transform.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

#include "sound/fft.h"
#include "support/capture.h"

namespace {

constexpr unsigned N = 1024;

float magnitude(const std::vector<float>& re, const std::vector<float>& im, unsigned k) {
  return std::hypot(re[k], im[k]);
}

TEST(Fft, PureToneFallsInItsTwoBins) {
  for (unsigned k : {1u, 37u, 511u}) {
    std::vector<float> x(N), re(N), im(N);
    for (unsigned t = 0; t < N; t++) x[t] = static_cast<float>(std::cos(2 * std::numbers::pi * k * t / N));
    ASSERT_EQ(fft_float(N, 0, x.data(), nullptr, re.data(), im.data()), 0);
    const float half = N / 2.0f;
    EXPECT_NEAR(magnitude(re, im, k), half, half * 1e-4f) << "bin " << k;
    EXPECT_NEAR(magnitude(re, im, N - k), half, half * 1e-4f) << "bin " << N - k;
    EXPECT_NEAR(re[k], half, half * 1e-4f) << "a cosine is real";
    for (unsigned b = 0; b < N; b++)
      if (b != k && b != N - k) {
        ASSERT_LT(magnitude(re, im, b), half * 1e-3f) << "tone " << k << " leaks into bin " << b;
      }
  }
}

TEST(Fft, RandomInputMatchesThePlainDftInDouble) {
  std::mt19937 g(26);
  std::uniform_real_distribution<float> d(-1, 1);
  std::vector<float> xr(N), xi(N), re(N), im(N);
  for (unsigned t = 0; t < N; t++) {
    xr[t] = d(g);
    xi[t] = d(g);
  }
  ASSERT_EQ(fft_float(N, 0, xr.data(), xi.data(), re.data(), im.data()), 0);
  std::vector<std::complex<double>> ref(N);
  double largest = 0;
  for (unsigned k = 0; k < N; k++) {
    std::complex<double> s = 0;
    for (unsigned t = 0; t < N; t++)
      s += std::complex<double>(xr[t], xi[t]) * std::polar(1.0, -2 * std::numbers::pi * k * t / N);
    ref[k] = s;
    largest = std::max(largest, std::abs(s));
  }
  double worst = 0;
  for (unsigned k = 0; k < N; k++) worst = std::max(worst, std::abs(ref[k] - std::complex<double>(re[k], im[k])));
  EXPECT_LT(worst, 1e-4 * largest) << "largest magnitude " << largest;
}

TEST(Fft, InverseGivesTheInputBackAndWorksInPlace) {
  std::mt19937 g(7);
  std::uniform_real_distribution<float> d(0, 255);
  for (unsigned n : {2u, 8u, 1024u, 16384u}) {
    std::vector<float> x(n), re(n), im(n);
    for (float& v : x) v = d(g);
    ASSERT_EQ(fft_float(n, 0, x.data(), nullptr, re.data(), im.data()), 0);
    // The inverse in place, over the spectrum itself.
    ASSERT_EQ(fft_float(n, 1, re.data(), im.data(), re.data(), im.data()), 0);
    for (unsigned t = 0; t < n; t++) {
      ASSERT_NEAR(re[t], x[t], 1e-3f) << "n " << n << " t " << t;
      ASSERT_NEAR(im[t], 0.0f, 1e-3f) << "n " << n << " t " << t;
    }
  }
}

TEST(Fft, ConstantInputIsAllInBinZero) {
  std::vector<float> x(16, 3.0f), re(16), im(16);
  ASSERT_EQ(fft_float(16, 0, x.data(), nullptr, re.data(), im.data()), 0);
  EXPECT_FLOAT_EQ(re[0], 48.0f);
  for (int k = 1; k < 16; k++) EXPECT_NEAR(std::hypot(re[k], im[k]), 0.0f, 1e-5f);
}

TEST(Fft, BadArgumentsAreRefusedWithTheirMessages) {
  minimal_kernel();
  std::vector<float> x(12), re(12), im(12);
  Capture c;
  EXPECT_EQ(fft_float(12, 0, x.data(), nullptr, re.data(), im.data()), -1);
  EXPECT_EQ(c.take(), "Error in fft():  NumSamples=12 is not power of two\n");
  EXPECT_EQ(fft_float(1, 0, x.data(), nullptr, re.data(), im.data()), -1);
  EXPECT_EQ(c.take(), "Error in fft():  NumSamples=1 is not power of two\n");
  EXPECT_EQ(fft_float(8, 0, nullptr, nullptr, re.data(), im.data()), -1);
  EXPECT_EQ(c.take(), "Error in fft_float():  RealIn == NULL\n");
  EXPECT_EQ(fft_float(8, 0, x.data(), nullptr, nullptr, im.data()), -1);
  EXPECT_EQ(c.take(), "Error in fft_float():  RealOut == NULL\n");
  EXPECT_EQ(fft_float(8, 0, x.data(), nullptr, re.data(), nullptr), -1);
  EXPECT_EQ(c.take(), "Error in fft_float():  ImagOut == NULL\n");
  EXPECT_EQ(NumberOfBitsNeeded(1), 0u);
  EXPECT_EQ(c.take(), ">>> Error in fftmisc.c: argument 1 to NumberOfBitsNeeded is too small.\n");
}

TEST(Fft, BitsAndTheirReversal) {
  EXPECT_EQ(NumberOfBitsNeeded(2), 1u);
  EXPECT_EQ(NumberOfBitsNeeded(1024), 10u);
  EXPECT_EQ(ReverseBits(1, 10), 512u);
  EXPECT_EQ(ReverseBits(0b0000000110, 10), 0b0110000000u);
  EXPECT_TRUE(IsPowerOfTwo(16384));
  EXPECT_FALSE(IsPowerOfTwo(0));
  EXPECT_FALSE(IsPowerOfTwo(1));
  EXPECT_FALSE(IsPowerOfTwo(96));
}

}  // namespace
