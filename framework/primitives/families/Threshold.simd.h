// SPDX-License-Identifier: MIT
// Threshold, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/Threshold.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <cstddef>

// A row is one sequence of samples; the limits and values become vectors that repeat the
// three colour channels' entries with the pixel's period, one per phase (the offset of the
// vector's first sample modulo the channel count). AC4 writes alpha back from the destination.

namespace framix::prim::FX_SIMD_NS {
namespace {

constexpr int kMaxChannels = 4;

template <TFXLayout L> struct TPattern {
    VU8 Phase[kMaxChannels];
};

// entries[c] for the lanes of colour channel c; alpha lanes get `alpha`. One run of the period
// serves every phase (a load at the phase's offset), so a call prepares its vectors cheaply
// (callers that keep four-channel alpha run the primitive strip by strip).
template <TFXLayout L> TPattern<L> Repeat(const Ipp8u* entries, Ipp8u alpha)
{
    constexpr int kCh = FXChannels(L);
    Ipp8u lanes[kVecBytes + kMaxChannels];
    for (int j = 0; j < kVecBytes + kCh; ++j) {
        const int c = j % kCh;
        lanes[j] = c < 3 ? entries[c] : alpha;
    }
    TPattern<L> p;
    for (int phase = 0; phase < kCh; ++phase)
        p.Phase[phase] = Load(lanes + phase);
    return p;
}

// rule(s, phase) maps the vector of samples s whose first sample has that phase.
template <TFXLayout L, class Rule>
IppStatus ForEachVector(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                        Rule rule)
{
    constexpr int kCh = FXChannels(L);
    const int n = roi.width * kCh;
    if (n < kLanes<Ipp8u>)
        return kFXDeclined;
    const Ipp8u noAlpha[3] = {0, 0, 0};
    const TPattern<L> alpha = Repeat<L>(noAlpha, 0xFF);
    constexpr int kGroup = kCh * kLanes<Ipp8u>; // vectors whose phases repeat
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        const auto one = [&](int at, int phase) {
            VU8 r = rule(Load(in + at), phase);
            if constexpr (L == TFXLayout::AC4)
                r = Select(alpha.Phase[phase], Load(out + at), r);
            Store(out + at, r);
        };
        int i = 0;
        for (; i + kGroup <= n; i += kGroup)
            for (int j = 0; j < kCh; ++j)
                one(i + j * kLanes<Ipp8u>, j * kLanes<Ipp8u> % kCh);
        for (; i < n; i += kLanes<Ipp8u>) {
            const int at = FXVectorStart(i, n, kLanes<Ipp8u>);
            one(at, at % kCh);
        }
    }
    return ippStsNoErr;
}

// s where s <= t, else v; s where s >= t, else v.
inline VU8 KeepAtMost(VU8 s, VU8 t, VU8 v)
{
    return Select(CmpEq(Min(s, t), s), s, v);
}
inline VU8 KeepAtLeast(VU8 s, VU8 t, VU8 v)
{
    return Select(CmpEq(Max(s, t), s), s, v);
}
// kept where s >= t, else v.
inline VU8 KeepAtLeast(VU8 s, VU8 t, VU8 v, VU8 kept)
{
    return Select(CmpEq(Max(s, t), s), kept, v);
}

// keep(s, t, v): the sample vector s against the limits t, v where it is replaced.
template <TFXLayout L, VU8 (*Keep)(VU8, VU8, VU8)>
IppStatus OneLimit(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                   const Ipp8u* threshold, const Ipp8u* value)
{
    const TPattern<L> t = Repeat<L>(threshold, 0), v = Repeat<L>(value, 0);
    return ForEachVector<L>(pSrc, srcStep, pDst, dstStep, roi, [&](VU8 s, int phase) {
        return Keep(s, t.Phase[phase], v.Phase[phase]);
    });
}

// Below the lower limit wins over above the upper one, as in the reference (checked limits
// never allow both).
template <TFXLayout L>
IppStatus Outside(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                  const Ipp8u* thresholdLT, const Ipp8u* valueLT, const Ipp8u* thresholdGT,
                  const Ipp8u* valueGT)
{
    const TPattern<L> lt = Repeat<L>(thresholdLT, 0), lv = Repeat<L>(valueLT, 0);
    const TPattern<L> gt = Repeat<L>(thresholdGT, 0), gv = Repeat<L>(valueGT, 0);
    return ForEachVector<L>(pSrc, srcStep, pDst, dstStep, roi, [&](VU8 s, int phase) {
        const VU8 upper = KeepAtMost(s, gt.Phase[phase], gv.Phase[phase]);
        return KeepAtLeast(s, lt.Phase[phase], lv.Phase[phase], upper);
    });
}

} // namespace

template <class T, TFXLayout L>
IppStatus ThresholdGTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3])
{
    return OneLimit<L, KeepAtMost>(pSrc, srcStep, pDst, dstStep, roiSize, threshold, value);
}

template <class T, TFXLayout L>
IppStatus ThresholdLTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3])
{
    return OneLimit<L, KeepAtLeast>(pSrc, srcStep, pDst, dstStep, roiSize, threshold, value);
}

template <class T, TFXLayout L>
IppStatus ThresholdLTValGTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                              const T thresholdLT[3], const T valueLT[3], const T thresholdGT[3],
                              const T valueGT[3])
{
    return Outside<L>(pSrc, srcStep, pDst, dstStep, roiSize, thresholdLT, valueLT, thresholdGT,
                      valueGT);
}

FX_KERNEL_TABLE(Threshold, FX_THRESHOLD_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
