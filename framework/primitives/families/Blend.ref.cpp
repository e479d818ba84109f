// SPDX-License-Identifier: MIT
// Alpha compositing, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Blend.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/families/FXPointSamples.h"

#include <cstdint>

namespace framix::prim::ref {
namespace {

// (P * A + Q * B) / M^2 rounded to nearest and saturated. M^2 is odd, so the exact value is
// never a half. 16-bit weights reach 2^32, the products 2^48: all exact in 64 bits.
template <class T> T Composite(TFXCompositeWeights w, T a, T b)
{
    constexpr std::uint64_t kM = kFXSampleMax<T>;
    const std::uint64_t n = w.P * a + w.Q * b;
    return FXSaturate<T>(std::int64_t((2 * n + kM * kM) / (2 * kM * kM)));
}

} // namespace

template <class T, TFXLayout L>
IppStatus AlphaCompC(const T* pSrc1, int src1Step, T alpha1, const T* pSrc2, int src2Step, T alpha2,
                     T* pDst, int dstStep, IppiSize roiSize, IppiAlphaType alphaType)
{
    const TFXCompositeWeights w = FXCompositeWeights(alphaType, alpha1, alpha2, kFXSampleMax<T>);
    FXForEachPair<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                        [w](T a, T b) { return Composite(w, a, b); });
    return ippStsNoErr;
}

// Each pixel's own alphas; the destination's alpha is the composite alpha (not left alone,
// although the layout is AC4).
template <class T, TFXLayout L>
IppStatus AlphaComp(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                    int dstStep, IppiSize roiSize, IppiAlphaType alphaType)
{
    constexpr T kM = T(kFXSampleMax<T>);
    for (int y = 0; y < roiSize.height; ++y) {
        const T* a = FXRowAt(pSrc1, src1Step, y);
        const T* b = FXRowAt(pSrc2, src2Step, y);
        T* d = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width * 4; x += 4) {
            const TFXCompositeWeights w = FXCompositeWeights(alphaType, a[x + 3], b[x + 3], kM);
            for (int c = 0; c < 3; ++c)
                d[x + c] = Composite(w, a[x + c], b[x + c]);
            const TFXCompositeWeights plain =
                FXCompositeWeights(alphaType % 6, a[x + 3], b[x + 3], kM);
            d[x + 3] = Composite(plain, kM, kM);
        }
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Blend, FX_BLEND_PRIMITIVES)

} // namespace framix::prim::ref
