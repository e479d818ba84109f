// SPDX-License-Identifier: MIT
// Colour conversion back to RGB, vector kernels: compiled once per level (see CMakeLists.txt).
// A pixel per 32-bit lane; every lane performs the reference's operations in its order, so all
// levels give its bytes.
#include "framework/primitives/families/ColorConvertBack.h"

#include "framework/primitives/families/FXColorCieVectors.h"
#include "framework/primitives/families/FXColorVectors.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecPixels.h"

namespace framix::prim::FX_SIMD_NS {
namespace {

// All ones where a >= b (float, neither NaN).
VI32 AtLeast(VF32 a, VF32 b)
{
    return Sub(SplatI32(-1), CmpGt(b, a));
}

// Grey (S = 0) needs no case of its own: v - v * 0 * f is v in every channel.
TChannelBytes RgbFromHsv(VI32 pixels)
{
    const VI32 v8 = ChannelOf(pixels, 2);
    const VF32 v = ToF32(v8);
    const VF32 s = Mul(ToF32(ChannelOf(pixels, 1)), SplatF32(1.0f / 255.0f));
    VF32 h = Mul(Mul(ToF32(ChannelOf(pixels, 0)), SplatF32(float(360.0 / 255.0))),
                 SplatF32(1.0f / 60.0f));
    const VF32 six = SplatF32(6.0f);
    h = Select(AtLeast(h, six), Sub(h, six), h);
    const VI32 sextant = TruncToI32(h);
    const VF32 f = Sub(h, ToF32(sextant));
    const VF32 vs = Mul(v, s);
    const VI32 m = ColorSample(Sub(v, vs)), n = ColorSample(Sub(v, Mul(vs, f))),
               k = ColorSample(Sub(v, Mul(vs, Sub(SplatF32(1.0f), f))));
    // below[i]: sextant < i.
    VI32 below[6];
    for (int i = 1; i < 6; ++i)
        below[i] = CmpGt(SplatI32(i), sextant);
    // Sextants 0 ... 5: R = v n m m k v, G = k v v n m m, B = m m k v v n.
    const VI32 r =
        Select(below[1], v8, Select(below[2], n, Select(below[4], m, Select(below[5], k, v8))));
    const VI32 g = Select(below[1], k, Select(below[3], v8, Select(below[4], n, m)));
    const VI32 b = Select(below[2], m, Select(below[3], k, Select(below[5], v8, n)));
    return PixelsOf(r, g, b);
}

TChannelBytes RgbFromYcc(VI32 pixels)
{
    const VF32 y = Mul(SplatF32(1.3584f), ToF32(ChannelOf(pixels, 0)));
    const VF32 c1 = Mul(SplatF32(2.2179f), Sub(ToF32(ChannelOf(pixels, 1)), SplatF32(156.0f)));
    const VF32 c2 = Mul(SplatF32(1.8215f), Sub(ToF32(ChannelOf(pixels, 2)), SplatF32(137.0f)));
    return PixelsOf(ColorSample(Add(y, c2)),
                    ColorSample(Sub(Sub(y, Mul(SplatF32(0.194f), c1)), Mul(SplatF32(0.509f), c2))),
                    ColorSample(Add(y, c1)));
}

} // namespace

template <class T, TFXLayout L> constexpr auto& HSVToRGB = ConvertWith<L, RgbFromHsv>;

template <class T, TFXLayout L>
constexpr auto& YUVToRGB = FixedConvert<L, kFXYuvToRgb, kFXYuvToRgbPlan>;

template <class T, TFXLayout L>
constexpr auto& XYZToRGB = FixedConvert<L, kFXXyzToRgb, kFXXyzToRgbPlan>;

template <class T, TFXLayout L> constexpr auto& YCCToRGB = ConvertWith<L, RgbFromYcc>;

template <class T, TFXLayout L>
constexpr auto& YCbCrToRGB = FixedConvert<L, kFXYCbCrToRgb, kFXYCbCrToRgbPlan>;

template <class T, TFXLayout L> constexpr auto& LUVToRGB = ConvertWith<L, RgbFromLuv>;

template <class T, TFXLayout L> constexpr auto& LabToBGR = ConvertWith<L, BgrFromLab>;

FX_KERNEL_TABLE(ColorConvertBack, FX_COLOR_CONVERT_BACK_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
