// SPDX-License-Identifier: MIT
// Weighted accumulation: argument checks and the family's entry points.
#include "framework/primitives/families/Accumulate.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

// The accumulator's step must hold whole floats.
template <class T, TFXLayout L>
IppStatus CheckAccumulate(const T* pSrc, int srcStep, Ipp32f* pSrcDst, int srcDstStep,
                          IppiSize roiSize, Ipp32f)
{
    const int w = roiSize.width;
    return FXCheckPointArgs(
        roiSize, {FXImageArg(pSrc, srcStep, w, L), FXImageArg<Ipp32f>(pSrcDst, srcDstStep, w, L)});
}

} // namespace

template <class T, TFXLayout L> inline constexpr auto CheckAddWeighted = &CheckAccumulate<T, L>;

FX_DEFINE_FAMILY(Accumulate, FX_ACCUMULATE_PRIMITIVES)

} // namespace framix::prim
