// SPDX-License-Identifier: MIT
// Noise, reference: IPP's generator (Noise.h), reproduced sample for sample.
#include "framework/primitives/families/Noise.h"

namespace framix::prim::ref {

// Sample = (low + high) / 2 + output * (high - low) / 2^32 in double, rounded to nearest with
// halves to even, then added to the pixel and saturated. low > high is allowed (the range is
// mirrored).
template <class T, TFXLayout L>
IppStatus AddRandUniform(T* pSrcDst, int srcDstStep, IppiSize roiSize, T low, T high,
                         unsigned int* pSeed)
{
    TFXIppRandom rnd(*pSeed);
    const double mean = (double(low) + double(high)) / 2.0;
    const double scale = (double(high) - double(low)) / 4294967296.0;
    FXAddNoise<T, L>(pSrcDst, srcDstStep, roiSize,
                     [&] { return FXRoundHalfEven(mean + double(rnd.Next()) * scale); });
    *pSeed = rnd.Seed();
    return ippStsNoErr;
}

// Sample = mean + stdev * g, g from the polar method (TFXIppGauss), rounded to nearest with halves
// to even.
template <class T, TFXLayout L>
IppStatus AddRandGauss(T* pSrcDst, int srcDstStep, IppiSize roiSize, T mean, T stdev,
                       unsigned int* pSeed)
{
    TFXIppRandom rnd(*pSeed);
    TFXIppGauss gauss(rnd);
    FXAddNoise<T, L>(pSrcDst, srcDstStep, roiSize,
                     [&] { return FXRoundHalfEven(double(mean) + double(stdev) * gauss.Next()); });
    *pSeed = rnd.Seed();
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Noise, FX_NOISE_PRIMITIVES)

} // namespace framix::prim::ref
