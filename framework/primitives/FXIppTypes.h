// SPDX-License-Identifier: MIT
// IPP's sample, geometry and status types, numbered as the legacy IPP headers number them.
#pragma once

#include <cstdint>

namespace framix {

using Ipp8u = std::uint8_t;
using Ipp8s = std::int8_t;
using Ipp16u = std::uint16_t;
using Ipp16s = std::int16_t;
using Ipp32u = std::uint32_t;
using Ipp32s = std::int32_t;
using Ipp32f = float;
using Ipp64f = double;

struct IppiSize {
    int width;
    int height;
};

struct IppiPoint {
    int x;
    int y;
};

struct IppiRect {
    int x;
    int y;
    int width;
    int height;
};

// Legacy numbering (IPP 7 - 9.0). Several values differ in oneAPI IPP 2021+ (step, data type,
// threshold ...); callers compiled against the legacy headers expect these.
using IppStatus = int;

inline constexpr IppStatus ippStsNoErr = 0;
inline constexpr IppStatus ippStsNoOperation = 1;
inline constexpr IppStatus ippStsEvenMedianMaskSize = 5;
inline constexpr IppStatus ippStsDivByZero = 6;
inline constexpr IppStatus ippStsWrongIntersectROI = 29;
inline constexpr IppStatus ippStsWrongIntersectQuad = 30;
inline constexpr IppStatus ippStsErr = -2;
inline constexpr IppStatus ippStsNoMemErr = -4;
inline constexpr IppStatus ippStsBadArgErr = -5;
inline constexpr IppStatus ippStsSizeErr = -6;
inline constexpr IppStatus ippStsRangeErr = -7;
inline constexpr IppStatus ippStsNullPtrErr = -8;
inline constexpr IppStatus ippStsMemAllocErr = -9;
inline constexpr IppStatus ippStsDivByZeroErr = -10;
inline constexpr IppStatus ippStsOutOfRangeErr = -11;
inline constexpr IppStatus ippStsDataTypeErr = -12;
inline constexpr IppStatus ippStsScaleRangeErr = -13;
inline constexpr IppStatus ippStsStepErr = -14;
inline constexpr IppStatus ippStsContextMatchErr = -17;
inline constexpr IppStatus ippStsThresholdErr = -18;
inline constexpr IppStatus ippStsThreshNegLevelErr = -19;
inline constexpr IppStatus ippStsMoment00ZeroErr = -20;
inline constexpr IppStatus ippStsMirrorFlipErr = -21;
inline constexpr IppStatus ippStsInterpolationErr = -22;
inline constexpr IppStatus ippStsResizeFactorErr = -23;
inline constexpr IppStatus ippStsShiftErr = -32;
inline constexpr IppStatus ippStsMaskSizeErr = -33;
inline constexpr IppStatus ippStsAnchorErr = -34;
inline constexpr IppStatus ippStsJaehneErr = -38;
inline constexpr IppStatus ippStsChannelErr = -47;
inline constexpr IppStatus ippStsGammaRangeErr = -49;
inline constexpr IppStatus ippStsAlphaTypeErr = -50;
inline constexpr IppStatus ippStsDivisorErr = -51;
inline constexpr IppStatus ippStsNumChannelsErr = -53;
inline constexpr IppStatus ippStsCoeffErr = -56;
inline constexpr IppStatus ippStsRectErr = -57;
inline constexpr IppStatus ippStsQuadErr = -58;
inline constexpr IppStatus ippStsChannelOrderErr = -60;
inline constexpr IppStatus ippStsLUTNofLevelsErr = -106;
inline constexpr IppStatus ippStsHistoNofLevelsErr = -107;
inline constexpr IppStatus ippStsNotEvenStepErr = -108;
inline constexpr IppStatus ippStsRoundModeNotSupportedErr = -213;
inline constexpr IppStatus ippStsBorderErr = -225;
inline constexpr IppStatus ippStsNotSupportedModeErr = -9999;

// Fixed-mask codes: the mask's two sides as decimal digits (33: 3x3). A fixed underlying type, so
// any integer a caller passes is a valid value to test.
enum IppiMaskSize : int {
    ippMskSize1x3 = 13,
    ippMskSize1x5 = 15,
    ippMskSize3x1 = 31,
    ippMskSize3x3 = 33,
    ippMskSize5x1 = 51,
    ippMskSize5x5 = 55,
};

// Compositing operations of ippiAlphaComp and ippiAlphaCompC.
enum IppiAlphaType : int {
    ippAlphaOver = 0,
    ippAlphaIn = 1,
    ippAlphaOut = 2,
    ippAlphaATop = 3,
    ippAlphaXor = 4,
    ippAlphaPlus = 5,
    ippAlphaOverPremul = 6,
    ippAlphaInPremul = 7,
    ippAlphaOutPremul = 8,
    ippAlphaATopPremul = 9,
    ippAlphaXorPremul = 10,
    ippAlphaPlusPremul = 11,
};

inline constexpr int IPP_MAX_8U = 0xFF;
inline constexpr int IPP_MAX_16U = 0xFFFF;

// Mirror axes. The fixed underlying type lets a caller pass any value; the primitives reject the
// ones they do not know.
enum IppiAxis : int { ippAxsHorizontal = 0, ippAxsVertical = 1, ippAxsBoth = 2 };

// Float to integer rounding (legacy values).
enum IppRoundMode : int { ippRndZero = 0, ippRndNear = 1, ippRndFinancial = 2 };

} // namespace framix
