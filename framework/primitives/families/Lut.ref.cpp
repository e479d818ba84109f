// SPDX-License-Identifier: MIT
// Look-up tables, reference: the mapping of one sample (exact rational arithmetic), the tables
// the level kernels map through, and plain loops over the image.
#include "framework/primitives/families/Lut.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace framix::prim {
namespace {

// Interpolated values are exact fractions N / D: products of four level differences and a
// value need up to 125 bits.
__extension__ typedef __int128 TWide;

// floor(n / d) for d > 0 (C++ division truncates towards zero).
TWide FloorDiv(TWide n, TWide d)
{
    const TWide q = n / d;
    return (n % d != 0 && n < 0) ? q - 1 : q;
}

// n / d rounded to nearest, halves upwards (d > 0): what IPP's replacement gives on every
// sample that is not an exact half, and on most that are (its CPU paths differ on the rest).
TWide RoundHalfUp(TWide n, TWide d)
{
    return FloorDiv(2 * n + d, 2 * d);
}

Ipp32s Clamp(TWide v, int maxValue)
{
    return v < 0 ? 0 : v > maxValue ? maxValue : Ipp32s(v);
}

// The cubic of one interval through four points as an exact fraction: value(v) = N(v - Origin)
// / D with N(u) = sum of C[i] * prod over j != i of (u - A[j]). Exact while the points span
// less than kSpan and the values stay below kValue in magnitude (every meaningful table of
// 8- and 16-bit samples); then |N| < 2^124 over the span and a few samples beyond it.
constexpr std::int64_t kSpan = (std::int64_t(1) << 17) - 4;
constexpr std::int64_t kValue = std::int64_t(1) << 20;

struct TCubic {
    std::int64_t Origin = 0;
    std::array<std::int64_t, 4> A{}; // levels relative to Origin
    std::array<TWide, 4> C{};        // values times D / (the Lagrange denominator)
    TWide D = 1;                     // > 0
};

// The window of interval k: four consecutive points, moved inside the table at its ends.
int CubicWindow(const TFXLutTable& table, int k)
{
    return std::clamp(k - 1, 0, table.Count - 4);
}

bool RepeatsALevel(const Ipp32s* x)
{
    for (int i = 0; i < 4; ++i)
        for (int j = i + 1; j < 4; ++j)
            if (x[i] == x[j])
                return true;
    return false;
}

// False when the window lies beyond the exact range.
bool ExactCubic(const Ipp32s* x, const Ipp32s* y, TCubic& cubic)
{
    const auto [lo, hi] = std::minmax_element(x, x + 4);
    if (std::int64_t(*hi) - *lo >= kSpan)
        return false;
    for (int i = 0; i < 4; ++i)
        if (y[i] >= kValue || y[i] <= -kValue)
            return false;
    cubic.Origin = *lo;
    for (int i = 0; i < 4; ++i)
        cubic.A[i] = std::int64_t(x[i]) - *lo;
    TWide vandermonde = 1; // product of A[j] - A[i] over i < j
    for (int i = 0; i < 4; ++i)
        for (int j = i + 1; j < 4; ++j)
            vandermonde *= cubic.A[j] - cubic.A[i];
    cubic.D = vandermonde < 0 ? -vandermonde : vandermonde;
    for (int i = 0; i < 4; ++i) {
        TWide lagrange = 1; // product of A[i] - A[j] over j != i; divides the Vandermonde product
        for (int j = 0; j < 4; ++j)
            if (j != i)
                lagrange *= cubic.A[i] - cubic.A[j];
        cubic.C[i] = TWide(y[i]) * (cubic.D / lagrange);
    }
    return true;
}

// The same fraction with common factors out: evenly spaced levels leave a small D, and the
// numbers then fit 64 bits.
void Reduce(TCubic& cubic)
{
    TWide g = cubic.D;
    for (TWide c : cubic.C)
        for (TWide r = c < 0 ? -c : c; r != 0;) {
            const TWide t = g % r;
            g = r;
            r = t;
        }
    cubic.D /= g;
    for (TWide& c : cubic.C)
        c /= g;
}

TWide CubicNumerator(const TCubic& cubic, std::int64_t u)
{
    TWide n = 0;
    for (int i = 0; i < 4; ++i) {
        TWide term = cubic.C[i];
        for (int j = 0; j < 4; ++j)
            if (j != i)
                term *= u - cubic.A[j];
        n += term;
    }
    return n;
}

// Beyond the exact range (levels millions apart, values beyond 2^20): extended precision,
// where an exact half may round either way.
Ipp32s ApproximateCubic(const Ipp32s* x, const Ipp32s* y, int v, int maxValue)
{
    long double sum = 0;
    for (int i = 0; i < 4; ++i) {
        long double term = y[i];
        for (int j = 0; j < 4; ++j)
            if (j != i)
                term *= (long double)(std::int64_t(v) - x[j]) /
                        (long double)(std::int64_t(x[i]) - x[j]);
        sum += term;
    }
    const long double r = std::floor(sum + 0.5L);
    return !(r > 0) ? 0 : r >= maxValue ? maxValue : Ipp32s(r);
}

Ipp32s IntervalValue(TFXLutKind kind, const TFXLutTable& table, int k, int v, int maxValue)
{
    const Ipp32s* L = table.Levels;
    const Ipp32s* P = table.Values;
    if (kind == TFXLutKind::Step)
        return Clamp(P[k], maxValue);
    if (kind == TFXLutKind::Linear || table.Count < 4) {
        const std::int64_t t = std::int64_t(v) - L[k];
        const std::int64_t dL = std::int64_t(L[k + 1]) - L[k]; // > 0: v lies in the interval
        const std::int64_t dP = std::int64_t(P[k + 1]) - P[k];
        return Clamp(P[k] + RoundHalfUp(TWide(t) * dP, dL), maxValue);
    }
    const int s = CubicWindow(table, k);
    // Intentional: no cubic passes through a repeated level; IPP's replacement writes 0 there.
    if (RepeatsALevel(L + s))
        return 0;
    TCubic cubic;
    if (!ExactCubic(L + s, P + s, cubic))
        return ApproximateCubic(L + s, P + s, v, maxValue);
    return Clamp(RoundHalfUp(CubicNumerator(cubic, std::int64_t(v) - cubic.Origin), cubic.D),
                 maxValue);
}

// ---------------------------------------------------------------- tables

// A quotient and remainder in base B (0 <= R < B): exact sums without dividing again. TInt is
// 64 bits where the interval's values allow, else 128.
template <class TInt> struct TDigits {
    TInt Q = 0;
    TInt R = 0;
};

// Without a branch: whether a carry occurs follows the fractions, which no predictor guesses.
template <class TInt> void AddTo(TDigits<TInt>& a, const TDigits<TInt>& b, TInt base)
{
    a.Q += b.Q;
    a.R += b.R;
    const TInt carry = a.R >= base;
    a.R -= base & -carry;
    a.Q += carry;
}

// floor((2 N(u) + D) / (2 D)) for u, u + 1, ... with N a polynomial of degree 3 at most, by
// forward differences kept as quotient and remainder in base 2D: additions only per sample.
template <class TInt> class TStepper {
public:
    // n holds N(u), N(u + 1), N(u + 2), N(u + 3).
    TStepper(const std::array<TWide, 4>& n, TWide d) : FBase(TInt(2 * d))
    {
        std::array<TWide, 4> diff = n; // then N, first, second and third differences at u
        for (int order = 1; order < 4; ++order)
            for (int i = 3; i >= order; --i)
                diff[i] -= diff[i - 1];
        for (int i = 0; i < 4; ++i) {
            const TWide value = 2 * diff[i] + (i == 0 ? d : 0);
            const TWide q = FloorDiv(value, 2 * d);
            FTerms[i] = {TInt(q), TInt(value - q * 2 * d)};
        }
    }

    TInt Next()
    {
        const TInt result = FTerms[0].Q;
        for (int i = 0; i < 3; ++i)
            AddTo(FTerms[i], FTerms[i + 1], FBase);
        return result;
    }

private:
    TInt FBase;
    std::array<TDigits<TInt>, 4> FTerms;
};

template <class TInt, class T>
void Step(const std::array<TWide, 4>& n, TWide d, TWide offset, int lo, int hi, T* out)
{
    TStepper<TInt> stepper(n, d);
    for (int v = lo; v < hi; ++v)
        out[v] = T(Clamp(offset + stepper.Next(), kFXSampleMax<T>));
}

// Writes interval k's values for v in [lo, hi), a part of the interval inside the sample range.
template <class T>
void FillInterval(TFXLutKind kind, const TFXLutTable& table, int k, int lo, int hi, T* out)
{
    constexpr int kMax = kFXSampleMax<T>;
    const Ipp32s* L = table.Levels;
    const Ipp32s* P = table.Values;
    if (kind == TFXLutKind::Step) {
        std::fill(out + lo, out + hi, T(Clamp(P[k], kMax)));
        return;
    }
    std::array<TWide, 4> n{};
    TWide d = 1;
    TWide offset = 0;
    TWide bound = 0; // at least |N(u)| for u up to three samples beyond the interval
    if (kind == TFXLutKind::Linear || table.Count < 4) {
        // P[k] + (v - L[k]) dP / dL
        const std::int64_t dP = std::int64_t(P[k + 1]) - P[k];
        for (int i = 0; i < 4; ++i)
            n[i] = TWide(std::int64_t(lo) + i - L[k]) * dP;
        d = std::int64_t(L[k + 1]) - L[k];
        offset = P[k];
        bound = TWide(hi + 3 - std::int64_t(L[k])) * (dP < 0 ? -dP : dP);
    } else {
        const int s = CubicWindow(table, k);
        TCubic cubic;
        // Short intervals (a level per sample), and the rare cases: one sample at a time.
        if (hi - lo < 16 || RepeatsALevel(L + s) || !ExactCubic(L + s, P + s, cubic)) {
            for (int v = lo; v < hi; ++v)
                out[v] = T(IntervalValue(kind, table, k, v, kMax));
            return;
        }
        Reduce(cubic);
        for (int i = 0; i < 4; ++i)
            n[i] = CubicNumerator(cubic, std::int64_t(lo) + i - cubic.Origin);
        d = cubic.D;
        const TWide span = *std::max_element(cubic.A.begin(), cubic.A.end()) + 3;
        for (TWide c : cubic.C)
            bound += (c < 0 ? -c : c) * span * span * span;
    }
    // 64 bits hold every quantity when the values over the interval (a bound: the numerator's
    // terms at the window's span, three samples beyond) stay far below 2^63 and so does 2D.
    if (d < (TWide(1) << 58) && bound < (TWide(1) << 58) * d)
        Step<std::int64_t>(n, d, offset, lo, hi, out);
    else
        Step<TWide>(n, d, offset, lo, hi, out);
}

// The same mapping as FXLutValue, built interval by interval: later intervals overwrite
// earlier ones (the last interval holding a sample wins), samples at or above the last level
// map to themselves.
template <class T> void Fill(TFXLutKind kind, const TFXLutTable& table, T* out)
{
    constexpr int kSize = kFXSampleMax<T> + 1;
    const Ipp32s* L = table.Levels;
    for (int v = 0; v < kSize; ++v)
        out[v] = T(v);
    for (int k = 0; k + 1 < table.Count; ++k) {
        const int lo = int(std::clamp<std::int64_t>(L[k], 0, kSize));
        const int hi = int(std::clamp<std::int64_t>(L[k + 1], 0, kSize));
        if (lo < hi)
            FillInterval(kind, table, k, lo, hi, out);
    }
    for (int v = int(std::clamp<std::int64_t>(L[table.Count - 1], 0, kSize)); v < kSize; ++v)
        out[v] = T(v);
}

} // namespace

Ipp32s FXLutValue(TFXLutKind kind, const TFXLutTable& table, int v, int maxValue)
{
    const Ipp32s* L = table.Levels;
    if (v >= L[table.Count - 1])
        return v;
    // Levels need not ascend: the last interval that holds v decides, as in IPP.
    for (int k = table.Count - 2; k >= 0; --k)
        if (L[k] <= v && v < L[k + 1])
            return IntervalValue(kind, table, k, v, maxValue);
    return v;
}

void FXLutFill(TFXLutKind kind, const TFXLutTable& table, Ipp8u* out)
{
    Fill(kind, table, out);
}

void FXLutFill(TFXLutKind kind, const TFXLutTable& table, Ipp16u* out)
{
    Fill(kind, table, out);
}

namespace ref {
namespace {

template <class T, TFXLayout L>
IppStatus MapEverySample(TFXLutKind kind, const T* pSrc, int srcStep, T* pDst, int dstStep,
                         IppiSize roi, const TFXLutTable* tables)
{
    FXMapSamples<T, L>(pSrc, srcStep, pDst, dstStep, roi, [&](T v, int c) {
        return T(FXLutValue(kind, tables[c], v, kFXSampleMax<T>));
    });
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L>
IppStatus Lut(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
              const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    const TFXLutTable table{pValues, pLevels, nLevels};
    return MapEverySample<T, L>(TFXLutKind::Step, pSrc, srcStep, pDst, dstStep, roiSize, &table);
}

template <class T, TFXLayout L>
IppStatus LutLinear(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                    const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    const TFXLutTable table{pValues, pLevels, nLevels};
    return MapEverySample<T, L>(TFXLutKind::Linear, pSrc, srcStep, pDst, dstStep, roiSize, &table);
}

template <class T, TFXLayout L>
IppStatus LutCubic(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                   const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    const TFXLutTable table{pValues, pLevels, nLevels};
    return MapEverySample<T, L>(TFXLutKind::Cubic, pSrc, srcStep, pDst, dstStep, roiSize, &table);
}

template <class T, TFXLayout L>
IppStatus LutChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                      const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    const auto tables = FXLutTables<L>(pValues, pLevels, nLevels);
    return MapEverySample<T, L>(TFXLutKind::Step, pSrc, srcStep, pDst, dstStep, roiSize,
                                tables.data());
}

template <class T, TFXLayout L>
IppStatus LutLinearChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    const auto tables = FXLutTables<L>(pValues, pLevels, nLevels);
    return MapEverySample<T, L>(TFXLutKind::Linear, pSrc, srcStep, pDst, dstStep, roiSize,
                                tables.data());
}

template <class T, TFXLayout L>
IppStatus LutCubicChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                           const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    const auto tables = FXLutTables<L>(pValues, pLevels, nLevels);
    return MapEverySample<T, L>(TFXLutKind::Cubic, pSrc, srcStep, pDst, dstStep, roiSize,
                                tables.data());
}

// The nBitSize low bits of each sample index the palette.
template <class T, TFXLayout L>
IppStatus LutPalette(const T* pSrc, int srcStep, Ipp32u* pDst, int dstStep, IppiSize roiSize,
                     const Ipp32u* pTable, int nBitSize)
{
    const unsigned mask = (1u << nBitSize) - 1;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        Ipp32u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            out[x] = pTable[in[x] & mask];
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Lut, FX_LUT_PRIMITIVES)

} // namespace ref
} // namespace framix::prim
