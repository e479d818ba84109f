// SPDX-License-Identifier: MIT
// Exact integer division with halves to even on 32-bit and 16-bit lanes, shared by the kernel
// files of the families that average or divide (included after simd/FXVec.h, once per level).
#pragma once

#include "framework/primitives/FXWordDivisor.h"
#include "framework/primitives/simd/FXVec.h"

namespace framix::prim::FX_SIMD_NS {

// Exact sum / count, halves to even, for 0 <= sum < 2^31 and a quotient below 2^17 (count
// > 0): a float estimate (times the reciprocal) is within one of the truth, the remainder
// corrects it, then the remainder decides the rounding.
inline VI32 DivRoundHalfEven(VI32 sum, VI32 count, VF32 reciprocal)
{
    const VI32 zero = SplatI32(0);
    const VI32 one = SplatI32(1);
    VI32 q = TruncToI32(Mul(ToF32(sum), reciprocal));
    VI32 r = Sub(sum, MulLo(q, count));
    const VI32 under = CmpGt(zero, r); // all ones: q one too big
    q = Add(q, under);
    r = Add(r, And(under, count));
    const VI32 over = CmpGt(r, Sub(count, one)); // q one too small
    q = Sub(q, over);
    r = Sub(r, And(over, count));
    // Up when 2r > count, or 2r == count and q is odd.
    const VI32 up = CmpGt(Add(Add(r, r), And(q, one)), count);
    return Sub(q, up);
}

// The same result with fewer steps, for sum + count < 2^21 (8-bit images up to 8192 samples
// per mask, 16-bit ones up to 31): halves to even is floor((2 sum + count) / (2 count)), one
// lower when that division is exact and gives an odd quotient (a tie). The float quotient t of
// (2 sum + count + 0.5) (exact as a float) stays at least 1 / (4 count) from every integer; two
// roundings (the reciprocal, the product) move it by less than t 2^-23, which is below that
// while t count = sum + count / 2 + 1/4 < 2^21, so truncating it is the exact floor.
inline VI32 DivRoundHalfEvenSmall(VI32 sum, VI32 twiceCount, VF32 reciprocalOfTwice, VI32 count)
{
    const VI32 one = SplatI32(1);
    const VI32 x = Add(Add(sum, sum), count);
    VI32 q = TruncToI32(Mul(Add(ToF32(x), SplatF32(0.5f)), reciprocalOfTwice));
    const VI32 exact = CmpGt(one, Sub(x, MulLo(q, twiceCount))); // remainder 0
    return Sub(q, And(exact, And(q, one)));
}

// The same for an odd count, where the exact quotient is never a half: its fractional part is
// an odd multiple of 1 / (2 count) after adding 1/2, so at least that far from an integer. sum
// is exact as a float; the reciprocal's rounding and the one of the fused multiply-add (plus the
// product's without one) move sum / count + 1/2 by at most 3 (sum / count + 1) 2^-24, below
// 1 / (2 count) while (sum / count + 1) count < 2^21, so truncating is the exact rounding.
inline VI32 DivRoundOddSmall(VI32 sum, VF32 reciprocal)
{
#if defined(FX_SIMD_LEVEL_SSE41)
    return TruncToI32(Add(Mul(ToF32(sum), reciprocal), SplatF32(0.5f)));
#else
    return TruncToI32(MulAdd(ToF32(sum), reciprocal, SplatF32(0.5f)));
#endif
}

// Sums of 8-bit samples in 16-bit lanes divided by a fixed count, halves to even: the steps of
// TFXWordDivisor::Divide (FXWordDivisor.h), which must be Valid().
class TWordDivide {
public:
    explicit TWordDivide(const TFXWordDivisor& d)
        : FMultiplier(SplatI16(d.Multiplier)), FBiasUp(SplatI16(d.Bias)),
          FBiasDown(SplatI16(d.Bias - 1)), FShift(d.Shift), FEven(d.Even)
    {
    }

    VI16 operator()(VI16 sum) const
    {
        const VI16 up = ShiftRightU(MulHiU(Add(sum, FBiasUp), FMultiplier), FShift);
        if (!FEven)
            return up;
        const VI16 down = ShiftRightU(MulHiU(Add(sum, FBiasDown), FMultiplier), FShift);
        return Sub(up, And(Sub(up, down), up));
    }

private:
    VI16 FMultiplier, FBiasUp, FBiasDown;
    int FShift;
    bool FEven;
};

} // namespace framix::prim::FX_SIMD_NS
