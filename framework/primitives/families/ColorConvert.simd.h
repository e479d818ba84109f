// SPDX-License-Identifier: MIT
// Colour conversion to other spaces, vector kernels: compiled once per level (see
// CMakeLists.txt). A pixel per 32-bit lane; every lane performs the reference's operations
// (fixed-point sums, or float steps in the reference's order), so all levels give its bytes.
#include "framework/primitives/families/ColorConvert.h"

#include "framework/primitives/families/FXColorCieVectors.h"
#include "framework/primitives/families/FXColorVectors.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecPixels.h"

namespace framix::prim::FX_SIMD_NS {
namespace {

// Value is the maximum; saturation the spread over it; ties between maxima broken cyclically
// (red over green, green over blue, blue over red).
TChannelBytes HsvFromRgb(VI32 pixels, const Ipp32f* reciprocal)
{
    const VI32 r = ChannelOf(pixels, 0), g = ChannelOf(pixels, 1), b = ChannelOf(pixels, 2);
    const VI32 zero = SplatI32(0);
    const VI32 hi = MaxI32(MaxI32(r, g), b), lo = MinI32(MinI32(r, g), b);
    const VI32 spread = Sub(hi, lo);
    const VI32 chroma = CmpGt(spread, zero);
    const VI32 s =
        And(RoundToI32(Mul(ToF32(MulLo(spread, SplatI32(255))), Lookup(reciprocal, hi))), chroma);
    const VI32 isR = And(EqualsAtMost(hi, r), CmpGt(r, b));
    const VI32 isG = And(EqualsAtMost(hi, g), CmpGt(g, r));
    const VI32 num = Select(isR, Sub(g, b), Select(isG, Sub(b, r), Sub(r, g)));
    const VI32 sextant = Select(isR, zero, Select(isG, SplatI32(2), SplatI32(4)));
    VF32 h = Mul(Add(ToF32(sextant), Mul(ToF32(num), Lookup(reciprocal, spread))), SplatF32(42.5f));
    h = Select(CmpGt(SplatF32(0.0f), h), Add(h, SplatF32(255.0f)), h);
    return PixelsOf(And(RoundToI32(h), chroma), s, hi);
}

// The float value truncated to a sample (toward minus infinity), saturated.
VI32 TruncatedSample(VF32 v)
{
    return RoundToI32(FloorF32(Min(Max(v, SplatF32(-1.0f)), SplatF32(256.0f))));
}

TChannelBytes YccFromRgb(VI32 pixels)
{
    const VF32 r = ToF32(ChannelOf(pixels, 0)), g = ToF32(ChannelOf(pixels, 1)),
               b = ToF32(ChannelOf(pixels, 2));
    const VF32 y =
        Add(Add(Mul(SplatF32(0.299f), r), Mul(SplatF32(0.587f), g)), Mul(SplatF32(0.114f), b));
    return PixelsOf(
        TruncatedSample(Mul(y, SplatF32(1.0f / 1.402f))),
        TruncatedSample(Add(Mul(SplatF32(111.4f / 255.0f), Sub(b, y)), SplatF32(156.0f))),
        TruncatedSample(Add(Mul(SplatF32(135.64f / 255.0f), Sub(r, y)), SplatF32(137.0f))));
}

} // namespace

template <class T, TFXLayout L>
IppStatus RGBToHSV(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    const Ipp32f* reciprocal = ReciprocalEstimates();
    return ConvertPixelLanes<FXChannels(L)>(pSrc, srcStep, pDst, dstStep, roiSize,
                                            [&](VI32 p) { return HsvFromRgb(p, reciprocal); });
}

template <class T, TFXLayout L> constexpr auto& RGBToLUV = ConvertWith<L, LuvFromRgb>;

template <class T, TFXLayout L>
constexpr auto& RGBToXYZ = FixedConvert<L, kFXRgbToXyz, kFXRgbToXyzPlan>;

template <class T, TFXLayout L> constexpr auto& RGBToYCC = ConvertWith<L, YccFromRgb>;

template <class T, TFXLayout L>
constexpr auto& RGBToYCbCr = FixedConvert<L, kFXRgbToYCbCr, kFXRgbToYCbCrPlan>;

template <class T, TFXLayout L>
constexpr auto& RGBToYUV = FixedConvert<L, kFXRgbToYuv, kFXRgbToYuvPlan>;

template <class T, TFXLayout L> constexpr auto& BGRToLab = ConvertWith<L, LabFromBgr>;

FX_KERNEL_TABLE(ColorConvert, FX_COLOR_CONVERT_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
