// SPDX-License-Identifier: MIT
// Sampled Gaussian coefficient tables.
#include "framework/FXMakeGaussianKernel.h"

#include <cmath>
#include <vector>

namespace framix {

void FXMakeGaussianKernelS(float* kernel, int lastIndex, double sigma)
{
    if (kernel == nullptr || lastIndex < 0)
        return;
    const int taps = lastIndex + 1;
    sigma = std::fabs(sigma);
    if (!(sigma > 0)) // zero or not a number
        sigma = taps / 6.0;
    const double centre = lastIndex / 2.0;
    std::vector<double> weights(std::size_t(taps), 1.0);
    if (std::isfinite(sigma))
        for (int i = 0; i < taps; ++i) {
            const double d = i - centre;
            weights[std::size_t(i)] = std::exp(-d * d / (2 * sigma * sigma));
        }
    double sum = 0;
    for (double w : weights)
        sum += w;
    // A sigma so small that only the middle tap survives still sums to at least that tap (1 for
    // an odd count); an even count with a tiny sigma can underflow every tap to 0.
    if (!(sum > 0)) {
        for (double& w : weights)
            w = 0;
        weights[std::size_t(lastIndex / 2)] = 1;
        if (taps % 2 == 0)
            weights[std::size_t(lastIndex / 2)] = weights[std::size_t(lastIndex / 2 + 1)] = 0.5;
        sum = 1;
    }
    for (int i = 0; i < taps; ++i)
        kernel[i] = float(weights[std::size_t(i)] / sum);
}

} // namespace framix
