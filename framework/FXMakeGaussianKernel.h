// SPDX-License-Identifier: MIT
// Sampled Gaussian coefficient tables for the separable filters.
#pragma once

namespace framix {

// Fills kernel[0] ... kernel[lastIndex] (lastIndex + 1 taps) with a Gaussian of standard
// deviation `sigma` sampled at the tap centres, that is at distances i - lastIndex / 2 from the
// middle of the table (half-integers for an even count, so every table is symmetric), and
// normalised so that the taps sum to 1 (computed in double precision, stored as float).
//
// A sigma of 0 (or one that is not a number) fits the Gaussian to the table: sigma = taps / 6,
// so the table spans about plus and minus three standard deviations; the default five taps get
// sigma 5/6 and the coefficients 0.0269, 0.2334, 0.4794, 0.2334, 0.0269. A negative sigma counts
// as its magnitude; an infinite one gives equal taps. A lastIndex below 0 writes nothing.
void FXMakeGaussianKernelS(float* kernel, int lastIndex, double sigma);

} // namespace framix
