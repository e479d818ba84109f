// SPDX-License-Identifier: MIT
// The Jaehne test image, vector kernel: compiled once per level (see CMakeLists.txt). The image
// is symmetric about its centre lines, so a quarter is computed (the sine in double lanes) and
// the rest mirrored.
#include "framework/primitives/families/ImageJaehne.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace framix::prim::FX_SIMD_NS {
namespace {

// FXJaehneSine, lane by lane, in the same operations.
VF64 Sine(VF64 x)
{
    const VF64 n = RoundF64(Mul(x, SplatF64(kFXJaehneOneOverPi)));
    const VF64 r = Sub(Sub(x, Mul(n, SplatF64(kFXJaehnePi[0]))), Mul(n, SplatF64(kFXJaehnePi[1])));
    const VF64 r2 = Mul(r, r);
    VF64 p = SplatF64(kFXJaehneSin[0]);
    for (int i = 1; i < kFXJaehneTerms; ++i)
        p = Add(Mul(p, r2), SplatF64(kFXJaehneSin[i]));
    const VF64 s = Add(r, Mul(r, Mul(r2, p)));
    const VF64 halfN = Mul(n, SplatF64(0.5)); // odd n negates
    return IfNe(halfN, FloorF64(halfN), Sub(SplatF64(0.0), s), s);
}

// Shuffle indices spreading 16 pixel values over the 48 bytes of 16 three-channel pixels.
constexpr TFXBytes16 Spread3(int block)
{
    TFXBytes16 t{};
    for (int j = 0; j < 16; ++j)
        t.B[j] = Ipp8u((16 * block + j) / 3);
    return t;
}

} // namespace

template <class T, TFXLayout L> IppStatus ImageJaehne(T* pDst, int dstStep, IppiSize roiSize)
{
    const int w = roiSize.width, h = roiSize.height;
    const int half = (w + 1) / 2; // columns computed; x2 of column w - 1 - x is -x2 of column x
    const float k = 3.14159265358979323846f * (0.5f / float(h));
    const float cx = float(w - 1) * 0.5f, cy = float(h - 1) * 0.5f;
    const VB16 spread[3] = {B16(Spread3(0)), B16(Spread3(1)), B16(Spread3(2))};
    const VB16 reverse = B16({{15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}});
    // x2^2 of every computed column, exact in double; the last vector may run past the row
    // (its extra lanes are computed and not used)
    const int columns = (half + kLanes32 - 1) / kLanes32 * kLanes32;
    std::vector<double> xx(static_cast<std::size_t>(columns));
    for (int x = 0; x < columns; ++x) {
        const float x2 = float(x) - cx;
        xx[x] = double(x2) * x2;
    }
    std::vector<Ipp8u> values(std::size_t(std::max(w, columns)) + 16);
    for (int y = 0; y < (h + 1) / 2; ++y) {
        const float y2 = float(y) - cy;
        const VF64 yy = SplatF64(double(y2) * y2);
        // the phase grows with |x2|, so column 0 has the row's largest
        const bool small = FXJaehnePhase(-cx, y2, k) < kFXJaehneLargePhase;
        for (int at = 0; at < columns; at += kLanes32) {
            if (!small) { // the C library's sine, as the reference takes
                for (int x = at; x < at + kLanes32; ++x)
                    values[x] = FXJaehneByte(FXJaehnePhase(float(x) - cx, y2, k));
                continue;
            }
            // x2^2 + y2^2 rounded once to float, then the float product
            const VF32 r2 = ToF32(Add(LoadF64(xx.data() + at), yy),
                                  Add(LoadF64(xx.data() + at + kLanes64), yy));
            const VF32 phase = Mul(r2, SplatF32(k));
            const VF32 s = ToF32(Sine(ToF64Low(phase)), Sine(ToF64High(phase)));
            StoreNarrow(values.data() + at,
                        RoundToI32(Add(SplatF32(128.0f), Mul(SplatF32(128.0f), s))));
        }
        int m = half; // the right half mirrors the left, sixteen bytes at a time
        for (; m + 16 <= w; m += 16)
            StoreB16(values.data() + m, Shuffle(LoadB16(values.data() + w - 16 - m), reverse));
        for (; m < w; ++m)
            values[m] = values[w - 1 - m];
        T* out = FXRowAt(pDst, dstStep, y);
        int x = 0;
        for (; x + 16 <= w; x += 16) {
            const VB16 v = LoadB16(values.data() + x);
            for (int b = 0; b < 3; ++b)
                StoreB16(out + 3 * x + 16 * b, Shuffle(v, spread[b]));
        }
        for (; x < w; ++x)
            out[3 * x] = out[3 * x + 1] = out[3 * x + 2] = values[x];
        if (h - 1 - y != y)
            std::memcpy(FXRowAt(pDst, dstStep, h - 1 - y), out, std::size_t(w) * 3);
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(ImageJaehne, FX_IMAGE_JAEHNE_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
