// The fast Fourier transform of the live analysis: radix 2, decimation in
// time, single-precision data. Twiddle factors come from a recurrence on
// the cosine and sine of each stage's angle, in double; they and the
// index reversal are kept per size, so that a transform of a size already
// seen allocates nothing.
#pragma once

// True for 2, 4, 8, ...
bool IsPowerOfTwo(unsigned x);
// log2 of a power of two; below 2 prints its message and gives 0.
unsigned NumberOfBitsNeeded(unsigned PowerOfTwo);
// `index` with its lowest NumBits bits in reverse order.
unsigned ReverseBits(unsigned index, unsigned NumBits);

// The transform of the NumSamples values (RealIn, ImagIn) into (RealOut,
// ImagOut); ImagIn may be null for real data. Forward: X[k] = sum x[t]
// e^(-2 pi i k t / n); inverse (InverseTransform non-zero): the opposite
// sign, divided by n. The input may be the output. 0, or -1 after a
// message (a size that is not a power of two, a null array).
int fft_float(unsigned NumSamples, int InverseTransform, const float* RealIn, const float* ImagIn, float* RealOut,
              float* ImagOut);
