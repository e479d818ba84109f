// SPDX-License-Identifier: MIT
// The conversions through CIE XYZ (FXColorCie.h) on pixel lanes: the references' float steps in
// their order, so every level gives their bytes. Compiled once per level: include only from a
// level's kernel file.
#pragma once

#include "framework/primitives/families/FXColorCie.h"
#include "framework/primitives/families/FXColorVectors.h"

namespace framix::prim::FX_SIMD_NS {

using TCieLanes = std::array<VF32, 3>;

// (W0 a + W1 b) + W2 c for each row of m.
inline TCieLanes CieMatrix(const TFXCieMatrix& m, VF32 a, VF32 b, VF32 c)
{
    TCieLanes out;
    for (int i = 0; i < 3; ++i)
        out[std::size_t(i)] = Add(Add(Mul(SplatF32(m.W[i][0]), a), Mul(SplatF32(m.W[i][1]), b)),
                                  Mul(SplatF32(m.W[i][2]), c));
    return out;
}

// FXCieCubeRoot on every lane (lanes at or below the knee are computed too and discarded).
inline VF32 CieCubeRoot(VF32 t)
{
    const VF32 third = SplatF32(kFXCieThird), fourThirds = SplatF32(kFXCieFourThirds);
    const VI32 guess = Sub(SplatI32(kFXCieRootMagic), TruncToI32(Mul(ToF32(BitsOf(t)), third)));
    VF32 r = FloatOfBits(guess);
    const VF32 tThird = Mul(t, third);
    for (int i = 0; i < 3; ++i) {
        const VF32 r3 = Mul(Mul(r, r), r);
        r = Mul(r, Sub(fourThirds, Mul(tThird, r3)));
    }
    return Mul(t, Mul(r, r));
}

// All ones where t is above the knee.
inline VI32 AboveKnee(VF32 t)
{
    return CmpGt(t, SplatF32(kFXCieKnee));
}

inline VF32 CieF(VF32 t)
{
    return Select(AboveKnee(t), CieCubeRoot(t),
                  Add(Mul(SplatF32(kFXCieSlopeF), t), SplatF32(kFXCieOffsetF)));
}

inline VF32 CieL(VF32 y, VF32 fy)
{
    return Select(AboveKnee(y), Sub(Mul(SplatF32(116.0f), fy), SplatF32(16.0f)),
                  Mul(SplatF32(kFXCieSlopeL), y));
}

inline TCieLanes CieXyzOf(const TFXCieMatrix& m, VI32 pixels, int c0, int c2)
{
    return CieMatrix(m, ToF32(ChannelOf(pixels, c0)), ToF32(ChannelOf(pixels, 1)),
                     ToF32(ChannelOf(pixels, c2)));
}

inline TChannelBytes LuvFromRgb(VI32 pixels)
{
    const auto [x, y, z] = CieXyzOf(kFXRgbToXyzCie, pixels, 0, 2);
    const VF32 l = CieL(y, CieF(y));
    const VF32 zero = SplatF32(0.0f);
    const VF32 den = Add(Add(x, Mul(SplatF32(15.0f), y)), Mul(SplatF32(3.0f), z));
    const VF32 inv = Select(CmpGt(den, zero), Div(SplatF32(1.0f), den), zero);
    const VF32 l13 = Mul(SplatF32(13.0f), l);
    const VF32 u = Mul(l13, Sub(Mul(Mul(SplatF32(4.0f), x), inv), SplatF32(kFXCieUn)));
    const VF32 v = Mul(l13, Sub(Mul(Mul(SplatF32(9.0f), y), inv), SplatF32(kFXCieVn)));
    return PixelsOf(ColorSample(Mul(l, SplatF32(2.55f))),
                    ColorSample(Mul(Add(u, SplatF32(134.0f)), SplatF32(float(255.0 / 354.0)))),
                    ColorSample(Mul(Add(v, SplatF32(140.0f)), SplatF32(float(255.0 / 262.0)))));
}

// Channels in B, G, R order.
inline TChannelBytes LabFromBgr(VI32 pixels)
{
    const auto [x, y, z] = CieXyzOf(kFXRgbToXyzLab, pixels, 2, 0);
    const VF32 fy = CieF(y);
    return PixelsOf(ColorSample(Mul(CieL(y, fy), SplatF32(2.55f))),
                    ColorSample(Add(Mul(SplatF32(500.0f), Sub(CieF(x), fy)), SplatF32(128.0f))),
                    ColorSample(Add(Mul(SplatF32(200.0f), Sub(fy, CieF(z))), SplatF32(128.0f))));
}

// The samples of RGB lanes (zero where keep is not set), written as channels c0, 1, c2.
inline TChannelBytes CieSamples(const TFXCieMatrix& m, VF32 x, VF32 y, VF32 z, int c0, int c2,
                                VI32 keep = SplatI32(-1))
{
    TCieLanes rgb = CieMatrix(m, x, y, z);
    VI32 s[3];
    for (int i = 0; i < 3; ++i)
        s[i] = And(ColorSample(rgb[std::size_t(i)]), keep);
    return PixelsOf(s[c0], s[1], s[c2]);
}

// Black (L = 0) lanes go through infinities and are replaced by zero at the end.
inline TChannelBytes RgbFromLuv(VI32 pixels)
{
    const VI32 l8 = ChannelOf(pixels, 0);
    const VF32 l = Mul(ToF32(l8), SplatF32(float(100.0 / 255.0)));
    const VF32 u =
        Sub(Mul(ToF32(ChannelOf(pixels, 1)), SplatF32(float(354.0 / 255.0))), SplatF32(134.0f));
    const VF32 v =
        Sub(Mul(ToF32(ChannelOf(pixels, 2)), SplatF32(float(262.0 / 255.0))), SplatF32(140.0f));
    const VF32 inv13l = Div(SplatF32(1.0f), Mul(SplatF32(13.0f), l));
    const VF32 up = Add(Mul(u, inv13l), SplatF32(kFXCieUn));
    const VF32 vp = Add(Mul(v, inv13l), SplatF32(kFXCieVn));
    const VF32 t = Mul(Add(l, SplatF32(16.0f)), SplatF32(float(1.0 / 116.0)));
    const VF32 y = Mul(Mul(t, t), t);
    const VF32 invVp = Div(SplatF32(1.0f), vp);
    const VF32 x = Mul(Mul(Mul(SplatF32(2.25f), y), up), invVp);
    const VF32 z = Sub(Sub(Mul(Mul(SplatF32(3.0f), y), invVp), Mul(SplatF32(5.0f), y)),
                       Mul(x, SplatF32(kFXCieThird)));
    return CieSamples(kFXXyzToRgbCie, x, y, z, 0, 2, Sub(SplatI32(-1), CmpGt(SplatI32(1), l8)));
}

// Written in B, G, R order.
inline TChannelBytes BgrFromLab(VI32 pixels)
{
    const VF32 p =
        Mul(Add(Mul(ToF32(ChannelOf(pixels, 0)), SplatF32(float(100.0 / 255.0))), SplatF32(16.0f)),
            SplatF32(float(1.0 / 116.0)));
    const VI32 offset = SplatI32(128);
    const VF32 fx = Add(p, Mul(ToF32(Sub(ChannelOf(pixels, 1), offset)), SplatF32(0.002f)));
    const VF32 fz = Sub(p, Mul(ToF32(Sub(ChannelOf(pixels, 2), offset)), SplatF32(0.005f)));
    return CieSamples(kFXXyzToRgbLab, Mul(Mul(fx, fx), fx), Mul(Mul(p, p), p), Mul(Mul(fz, fz), fz),
                      2, 0);
}

} // namespace framix::prim::FX_SIMD_NS
