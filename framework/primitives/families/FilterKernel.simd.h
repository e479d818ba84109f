// SPDX-License-Identifier: MIT
// Integer convolution, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/FilterKernel.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecAlpha.h"
#include "framework/primitives/simd/FXVecDivide.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

// One engine serves the general kernel and the fixed ones: the kernel becomes a list of taps
// (non-zero weights with the source sample each reads), and every output vector sums its taps.
// Rows are one sequence of samples, C1, C3 and AC4 alike (the neighbour dx columns away of
// sample i is sample i + dx * channels). Four ways to sum, the first that fits:
// - bytes: 8-bit samples, byte weights and sums within 16 bits; taps go by pairs through the
//   byte multiply-add (two taps per instruction, 16-bit sums that may wrap on the way: only the
//   final sum must fit);
// - wide bytes: the same with sums within 32 bits: the pairs form groups whose sums fit 16
//   bits, and each group's sum is widened and added in 32 bits;
// - words: weights within 16 bits and sums within 32; taps by pairs through the 16-bit
//   multiply-add (16-bit samples offset by -32768 to fit, the offset added back at once);
// - wide: any weights with sums within 32 bits, one 32-bit multiply per tap.
// A kernel larger than 3x3 of one weight (but for one cell) with 16-bit sums on 8-bit samples
// is a box and is summed separably instead (see TBox).
// Other kernels run the reference. AC4 rows are computed on all four channels and stored with
// the destination's alpha bytes kept (directly by the byte ways, through a scratch row else).

namespace framix::prim::FX_SIMD_NS {
namespace {

struct TTap {
    int Row;               // source row, relative to the output row
    std::ptrdiff_t Offset; // source sample, relative to the output sample
    Ipp32s Weight;
};

// The kernel as taps. A negative divisor moves its sign onto the weights (the quotient is the
// same); Highest and Lowest bound the sums.
struct TPlan {
    std::unique_ptr<TTap[]> Taps;
    int Count = 0;
    int Divisor = 1;
    std::int64_t Highest = 0;
    std::int64_t Lowest = 0;
    std::int64_t WeightSum = 0;
};

// False when a sum could overflow even 64-bit bounds (the reference handles such kernels).
template <class T>
bool MakePlan(TPlan& plan, const Ipp32s* pKernel, IppiSize size, IppiPoint anchor, int divisor,
              int channels)
{
    constexpr std::int64_t kBound = std::int64_t(1) << 40;
    if (divisor == INT_MIN)
        return false;
    const Ipp32s sign = divisor < 0 ? -1 : 1;
    plan.Divisor = divisor * sign;
    plan.Taps.reset(new TTap[std::size_t(size.width) * size.height]);
    for (int i = 0; i < size.height; ++i)
        for (int j = 0; j < size.width; ++j) {
            const Ipp32s w = pKernel[i * size.width + j];
            if (w == 0)
                continue;
            if (w == INT_MIN)
                return false;
            const std::int64_t reach = std::int64_t(w) * sign * kFXSampleMax<T>;
            (reach > 0 ? plan.Highest : plan.Lowest) += reach;
            plan.WeightSum += std::int64_t(w) * sign;
            if (plan.Highest > kBound || plan.Lowest < -kBound)
                return false;
            plan.Taps[plan.Count++] = {anchor.y - i, std::ptrdiff_t(anchor.x - j) * channels,
                                       w * sign};
        }
    return true;
}

// round_half_even(x / d), saturated to 8 bits later, on 16-bit lanes, for 0 <= x <= 32767 and
// 2 <= d <= 16383; the constants are splatted once.
struct TDivide16 {
    enum TKind { PowerOfTwo, MagicOdd, MagicEven, General } Kind;
    int Shift = 0;
    VI16 One, D, DMinus1, Reciprocal, Half, HalfMinus1, Cap;

    explicit TDivide16(int d)
    {
        while ((2 << Shift) <= d)
            ++Shift; // floor(log2(d))
        Kind = (d & (d - 1)) == 0 ? PowerOfTwo
               : d > 127          ? General
               : d % 2 != 0       ? MagicOdd
                                  : MagicEven;
        One = SplatI16(1);
        D = SplatI16(d);
        DMinus1 = SplatI16(d - 1);
        Half = SplatI16(d / 2);
        HalfMinus1 = SplatI16(d / 2 - 1);
        // x at or above 256 d saturates whatever its rounding, so x + d / 2 stays below 2^15.
        Cap = SplatI16(std::min(256 * d, 32767)); // used by the magic kinds only (d <= 127)
        // Magic: ceil(2^(16 + Shift) / d), below 2^16; for z < 2^15,
        // floor(z * Reciprocal / 2^(16 + Shift)) == floor(z / d) (the error z (m d - 2^(16+s))
        // stays below 2^(16+s) because d < 2^(s+1)). General: floor(65536 / d).
        const bool magic = Kind == MagicOdd || Kind == MagicEven;
        Reciprocal =
            SplatI16(magic ? int(((std::int64_t(1) << (16 + Shift)) + d - 1) / d) : 65536 / d);
    }

    VI16 operator()(VI16 x) const
    {
        switch (Kind) {
        case PowerOfTwo: {
            // (x + half - 1 + the truncated quotient's lowest bit) >> Shift; below 2^16.
            const VI16 odd = And(ShiftRightU(x, Shift), One);
            return ShiftRightU(Add(Add(x, HalfMinus1), odd), Shift);
        }
        case MagicOdd: // no ties: floor((x + (d - 1) / 2) / d)
            return ShiftRightU(MulHiU(Add(Min(x, Cap), Half), Reciprocal), Shift);
        case MagicEven: {
            // floor((x + d/2) / d) rounds halves up; floor((x + d/2 - 1) / d) is one lower
            // exactly on a tie, where the even one of the two wins.
            x = Min(x, Cap);
            const VI16 up = ShiftRightU(MulHiU(Add(x, Half), Reciprocal), Shift);
            const VI16 down = ShiftRightU(MulHiU(Add(x, HalfMinus1), Reciprocal), Shift);
            return Sub(up, And(Sub(up, down), up));
        }
        default: {
            // x * Reciprocal / 2^16 is floor(x / d) or one less; the remainder corrects it,
            // then decides: up when 2r > d, or 2r == d and q is odd.
            VI16 q = MulHiU(x, Reciprocal);
            VI16 r = Sub(x, MulLo(q, D));
            const VI16 over = CmpGt(r, DMinus1);
            q = Sub(q, over);
            r = Sub(r, And(over, D));
            return Sub(q, CmpGt(Add(Add(r, r), And(q, One)), D));
        }
        }
    }
};

// A 32-bit sum to a sample value: divided (halves to even) and saturated.
template <class T> struct TFinish32 {
    VI32 Zero, Top, Cap, D, TwiceD;
    VF32 Reciprocal, ReciprocalOfTwice;
    bool Divide, Small;
    bool Negative, Large; // whether sums can be negative, or saturate

    // lowest and highest bound the sums (they decide which clamps can act).
    TFinish32(int divisor, std::int64_t lowest, std::int64_t highest)
    {
        // Sums at or above (max + 1) * d saturate whatever they are, so the clamp keeps
        // quotients small enough for the exact division.
        const std::int64_t cap =
            std::min<std::int64_t>(std::int64_t(kFXSampleMax<T> + 1) * divisor, INT32_MAX);
        Zero = SplatI32(0);
        Top = SplatI32(kFXSampleMax<T>);
        Cap = SplatI32(int(cap));
        D = SplatI32(divisor);
        TwiceD = SplatI32(2 * divisor);
        Reciprocal = SplatF32(1.0f / float(divisor));
        ReciprocalOfTwice = SplatF32(1.0f / float(2 * divisor));
        Divide = divisor > 1;
        Small = 2 * cap + divisor < (std::int64_t(1) << 21);
        Negative = lowest < 0;
        // Below (max + 1/2) * d every quotient rounds to at most max.
        Large = 2 * highest >= (2 * std::int64_t(kFXSampleMax<T>) + 1) * divisor;
    }

    VI32 operator()(VI32 sum) const
    {
        if (Negative)
            sum = Max(sum, Zero);
        if (Divide) {
            if (Large)
                sum = Min(sum, Cap);
            sum = Small ? DivRoundHalfEvenSmall(sum, TwiceD, ReciprocalOfTwice, D)
                        : DivRoundHalfEven(sum, D, Reciprocal);
        }
        return Large ? Min(sum, Top) : sum;
    }
};

// Stores a vector of results: AC4 rows keep the destination's alpha bytes.
template <bool KeepAlpha> inline void StoreResult(Ipp8u* p, VU8 v)
{
    if constexpr (KeepAlpha)
        StoreKeepingAlpha(p, v, AlphaMask());
    else
        Store(p, v);
}

// Bytes: V consecutive steps of kLanes<Ipp8u> samples from at, taps (an even count) by pairs;
// several steps share each tap's address and weights.
template <int V, bool KeepAlpha>
void BytesSteps(const Ipp8u* const* taps, const VU8* pairs, int count, const TDivide16* divide,
                Ipp8u* out, int at)
{
    const VI16 zero = SplatI16(0);
    VI16 lo[V], hi[V];
    for (int v = 0; v < V; ++v)
        lo[v] = hi[v] = zero;
    for (int t = 0; t < count; t += 2) {
        const Ipp8u* p = taps[t] + at;
        const Ipp8u* q = taps[t + 1] + at;
        const VU8 w = pairs[t / 2];
        for (int v = 0; v < V; ++v) {
            const VU8 a = Load(p + v * kLanes<Ipp8u>);
            const VU8 b = Load(q + v * kLanes<Ipp8u>);
            lo[v] = Add(lo[v], MulAddPairs(ZipLo8(a, b), w));
            hi[v] = Add(hi[v], MulAddPairs(ZipHi8(a, b), w));
        }
    }
    for (int v = 0; v < V; ++v) {
        if (divide != nullptr) {
            lo[v] = (*divide)(Max(lo[v], zero));
            hi[v] = (*divide)(Max(hi[v], zero));
        }
        // negative sums give 0
        StoreResult<KeepAlpha>(out + at + v * kLanes<Ipp8u>, PackU8(lo[v], hi[v]));
    }
}

template <bool KeepAlpha>
void RowBytes(const Ipp8u* const* taps, const VU8* pairs, int count, const TDivide16* divide,
              Ipp8u* out, int n)
{
    int i = 0;
    for (; i + 2 * kLanes<Ipp8u> <= n; i += 2 * kLanes<Ipp8u>)
        BytesSteps<2, KeepAlpha>(taps, pairs, count, divide, out, i);
    for (; i < n; i += kLanes<Ipp8u>)
        BytesSteps<1, KeepAlpha>(taps, pairs, count, divide, out,
                                 FXVectorStart(i, n, kLanes<Ipp8u>));
}

// Samples as 16-bit lanes: 8-bit ones zero-extended, 16-bit ones offset by -32768.
inline VI16 LoadWords(const Ipp8u* p)
{
    return LoadWiden16(p);
}
inline VI16 LoadWords(const Ipp16u* p)
{
    return Add(LoadI16(reinterpret_cast<const Ipp16s*>(p)), SplatI16(-32768));
}

// Words: kLanes16 samples, taps (an even count) by pairs; bias undoes the samples' offset.
template <class T>
VI16 WordsStep(const T* const* taps, const VI16* pairs, int count, VI32 bias,
               const TFinish32<T>& finish, int at)
{
    VI32 lo = bias, hi = bias;
    for (int t = 0; t < count; t += 2) {
        const VI16 a = LoadWords(taps[t] + at);
        const VI16 b = LoadWords(taps[t + 1] + at);
        lo = Add(lo, MulAddPairs(ZipLo16(a, b), pairs[t / 2]));
        hi = Add(hi, MulAddPairs(ZipHi16(a, b), pairs[t / 2]));
    }
    return PackU16(finish(lo), finish(hi));
}

template <class T>
void RowWords(const T* const* taps, const VI16* pairs, int count, std::int64_t weightSum,
              const TFinish32<T>& finish, T* out, int n)
{
    // sum(w * s) = sum(w * (s - 32768)) + 32768 * sum(w), modulo 2^32 (the true sum fits).
    const VI32 bias =
        SplatI32(sizeof(T) == 1 ? 0 : std::int32_t(std::uint32_t(std::uint64_t(weightSum) << 15)));
    if constexpr (sizeof(T) == 1) {
        for (int i = 0; i < n; i += kLanes<Ipp8u>) {
            const int at = FXVectorStart(i, n, kLanes<Ipp8u>);
            const VI16 first = WordsStep(taps, pairs, count, bias, finish, at);
            const VI16 second = WordsStep(taps, pairs, count, bias, finish, at + kLanes16);
            Store(out + at, NarrowU8(first, second));
        }
    } else {
        for (int i = 0; i < n; i += kLanes16) {
            const int at = FXVectorStart(i, n, kLanes16);
            StoreI16(reinterpret_cast<Ipp16s*>(out + at),
                     WordsStep(taps, pairs, count, bias, finish, at));
        }
    }
}

// Wide: kLanes32 samples per step, one 32-bit multiply per tap.
template <class T>
void RowWide(const T* const* taps, const Ipp32s* weights, int count, const TFinish32<T>& finish,
             T* out, int n)
{
    for (int i = 0; i < n; i += kLanes32) {
        const int at = FXVectorStart(i, n, kLanes32);
        VI32 sum = SplatI32(0);
        for (int t = 0; t < count; ++t)
            sum = Add(sum, MulLo(LoadWiden(taps[t] + at), SplatI32(weights[t])));
        StoreNarrow(out + at, finish(sum));
    }
}

// Wide bytes: pairs [First, First + Count) sum within 16 bits, zero-extended (Unsigned: no
// negative weight) or sign-extended to 32.
struct TGroup {
    int First;
    int Count;
    bool Unsigned;
};

template <int V, bool KeepAlpha>
void WideBytesSteps(const Ipp8u* const* taps, const VU8* pairs, const TGroup* groups,
                    int groupCount, const TFinish32<Ipp8u>& finish, Ipp8u* out, int at)
{
    const VI16 zero16 = SplatI16(0);
    VI32 acc[V][4];
    for (int v = 0; v < V; ++v)
        for (VI32& a : acc[v])
            a = SplatI32(0);
    for (int g = 0; g < groupCount; ++g) {
        VI16 lo[V], hi[V];
        for (int v = 0; v < V; ++v)
            lo[v] = hi[v] = zero16;
        for (int p = groups[g].First; p < groups[g].First + groups[g].Count; ++p) {
            const Ipp8u* a = taps[2 * p] + at;
            const Ipp8u* b = taps[2 * p + 1] + at;
            for (int v = 0; v < V; ++v) {
                const VU8 x = Load(a + v * kLanes<Ipp8u>);
                const VU8 y = Load(b + v * kLanes<Ipp8u>);
                lo[v] = Add(lo[v], MulAddPairs(ZipLo8(x, y), pairs[p]));
                hi[v] = Add(hi[v], MulAddPairs(ZipHi8(x, y), pairs[p]));
            }
        }
        for (int v = 0; v < V; ++v) {
            const VI16 loExt = groups[g].Unsigned ? zero16 : CmpGt(zero16, lo[v]);
            const VI16 hiExt = groups[g].Unsigned ? zero16 : CmpGt(zero16, hi[v]);
            acc[v][0] = Add(acc[v][0], AsI32(ZipLo16(lo[v], loExt)));
            acc[v][1] = Add(acc[v][1], AsI32(ZipHi16(lo[v], loExt)));
            acc[v][2] = Add(acc[v][2], AsI32(ZipLo16(hi[v], hiExt)));
            acc[v][3] = Add(acc[v][3], AsI32(ZipHi16(hi[v], hiExt)));
        }
    }
    for (int v = 0; v < V; ++v) {
        const VI16 lo = PackU16(finish(acc[v][0]), finish(acc[v][1]));
        const VI16 hi = PackU16(finish(acc[v][2]), finish(acc[v][3]));
        StoreResult<KeepAlpha>(out + at + v * kLanes<Ipp8u>, PackU8(lo, hi));
    }
}

template <bool KeepAlpha>
void RowWideBytes(const Ipp8u* const* taps, const VU8* pairs, const TGroup* groups, int groupCount,
                  const TFinish32<Ipp8u>& finish, Ipp8u* out, int n)
{
    int i = 0;
    for (; i + 2 * kLanes<Ipp8u> <= n; i += 2 * kLanes<Ipp8u>)
        WideBytesSteps<2, KeepAlpha>(taps, pairs, groups, groupCount, finish, out, i);
    for (; i < n; i += kLanes<Ipp8u>)
        WideBytesSteps<1, KeepAlpha>(taps, pairs, groups, groupCount, finish, out,
                                     FXVectorStart(i, n, kLanes<Ipp8u>));
}

enum class TEngine { Bytes, WideBytes, Words, Wide };

bool Within(std::int64_t v, std::int64_t lo, std::int64_t hi)
{
    return v >= lo && v <= hi;
}

// Positive and negative weight of a set of taps, as multiples of one sample.
struct TReach {
    std::int64_t Up = 0;
    std::int64_t Down = 0;

    void Add(Ipp32s w) { (w > 0 ? Up : Down) += std::abs(std::int64_t(w)); }
    // The byte multiply-add's 16-bit pair sums cannot saturate, and a group's sum fits 16
    // bits, signed, while both stay at or below 128 (255 * 128 < 32768).
    bool FitsSigned() const { return Up <= 128 && Down <= 128; }
    // All weights non-negative: unsigned 16 bits hold up to 257 (255 * 257 = 65535).
    bool FitsUnsigned() const { return Down == 0 && Up <= 257; }
};

// Orders the taps into pairs for the byte multiply-add (largest weights first, each with the
// largest partner that keeps the pair from saturating, else with a zero-weight spare), and the
// pairs into groups that sum within 16 bits.
void PairForBytes(const TPlan& plan, std::vector<TTap>& paired, std::vector<TGroup>& groups)
{
    std::vector<TTap> sorted(plan.Taps.get(), plan.Taps.get() + plan.Count);
    std::sort(sorted.begin(), sorted.end(),
              [](const TTap& a, const TTap& b) { return std::abs(a.Weight) > std::abs(b.Weight); });
    paired.clear();
    for (int i = 0, j = plan.Count - 1; i <= j; ++i) {
        TReach pair;
        pair.Add(sorted[i].Weight);
        if (j > i) {
            pair.Add(sorted[j].Weight);
            if (pair.FitsSigned()) {
                paired.push_back(sorted[i]);
                paired.push_back(sorted[j--]);
                continue;
            }
        }
        paired.push_back(sorted[i]);
        paired.push_back({sorted[i].Row, sorted[i].Offset, 0});
    }
    groups.clear();
    TReach group;
    for (int p = 0; 2 * p < int(paired.size()); ++p) {
        TReach grown = group;
        grown.Add(paired[2 * p].Weight);
        grown.Add(paired[2 * p + 1].Weight);
        if (groups.empty() || !(grown.FitsSigned() || grown.FitsUnsigned())) {
            groups.push_back({p, 0, true});
            grown = TReach();
            grown.Add(paired[2 * p].Weight);
            grown.Add(paired[2 * p + 1].Weight);
        }
        group = grown;
        groups.back().Count++;
        groups.back().Unsigned = group.FitsUnsigned();
    }
}

// The first way to sum that fits the plan (see the top of the file), or false.
template <class T> bool ChooseEngine(const TPlan& plan, TEngine& engine)
{
    const auto allWeights = [&](std::int64_t lo, std::int64_t hi) {
        for (int t = 0; t < plan.Count; ++t)
            if (!Within(plan.Taps[t].Weight, lo, hi))
                return false;
        return true;
    };
    const bool sums32 = Within(plan.Highest, INT32_MIN, INT32_MAX) &&
                        Within(plan.Lowest, INT32_MIN, INT32_MAX) && plan.Divisor <= (1 << 29);
    const bool bytes = sizeof(T) == 1 && allWeights(-128, 127);
    if (bytes && Within(plan.Highest, INT16_MIN, INT16_MAX) &&
        Within(plan.Lowest, INT16_MIN, INT16_MAX) && plan.Divisor <= 16383)
        engine = TEngine::Bytes;
    else if (bytes && sums32)
        engine = TEngine::WideBytes;
    else if (allWeights(-32768, 32767) && sums32)
        engine = TEngine::Words;
    else if (sums32)
        engine = TEngine::Wide;
    else
        return false;
    return true;
}

// A box: one weight everywhere, except perhaps one cell (Lowpass and Hipass 5x5, user means). On
// 8-bit samples with 16-bit sums it is summed separably: column sums over the kernel's rows, then
// their sums over its columns, times the weight, plus the odd cell's difference. All in wrapping
// 16-bit arithmetic: only the final sum must fit.
struct TBox {
    Ipp32s Weight = 0;
    Ipp32s Odd = 0;          // the odd cell's weight minus Weight (0: none)
    TTap OddTap{};           // Offset relative to the output sample
    int Top = 0;             // the kernel's top row, relative to the output row
    std::ptrdiff_t Left = 0; // its left column, in samples relative to the output sample
    int Width = 0, Height = 0;
};

// True when the kernel (its sign moved as in the plan) is a box of more than 3x3 cells: up to
// 3x3 the pairs of the byte way are as fast.
bool FindBox(const Ipp32s* pKernel, IppiSize size, IppiPoint anchor, int divisor, int channels,
             TBox& box)
{
    const int cells = size.width * size.height;
    if (size.width < 2 || size.height < 2 || cells <= 9)
        return false;
    const Ipp32s sign = divisor < 0 ? -1 : 1;
    // The common weight: the first cell's, unless the next two agree on another.
    Ipp32s common = pKernel[0];
    if (pKernel[1] != common && pKernel[2] == pKernel[1])
        common = pKernel[1];
    if (common == 0 || common == INT_MIN)
        return false;
    int odd = -1;
    for (int c = 0; c < cells; ++c)
        if (pKernel[c] != common) {
            if (odd >= 0 || pKernel[c] == INT_MIN)
                return false;
            odd = c;
        }
    box.Weight = common * sign;
    box.Top = anchor.y - (size.height - 1);
    box.Left = std::ptrdiff_t(anchor.x - (size.width - 1)) * channels;
    box.Width = size.width;
    box.Height = size.height;
    if (odd >= 0) {
        const int i = odd / size.width, j = odd % size.width;
        box.Odd = (pKernel[odd] - common) * sign;
        box.OddTap = {anchor.y - i, std::ptrdiff_t(anchor.x - j) * channels, box.Odd};
    }
    return true;
}

template <bool KeepAlpha>
void ConvolveBox(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                 int channels, const TBox& box, const TDivide16* divide)
{
    const int n = roi.width * channels;
    const int e = n + (box.Width - 1) * channels; // column sums the row needs
    std::unique_ptr<Ipp16s[]> columns(new Ipp16s[std::size_t(e)]);
    std::unique_ptr<const Ipp8u*[]> rows(new const Ipp8u*[std::size_t(box.Height)]);
    const VI16 zero = SplatI16(0);
    const VI16 weight = SplatI16(box.Weight);
    const VI16 odd = SplatI16(box.Odd);
    for (int y = 0; y < roi.height; ++y) {
        for (int r = 0; r < box.Height; ++r)
            rows[r] = FXRowAt(pSrc, srcStep, y + box.Top + r) + box.Left;
        for (int i = 0; i < e; i += kLanes16) {
            const int at = FXVectorStart(i, e, kLanes16);
            VI16 sum = LoadWiden16(rows[0] + at);
            for (int r = 1; r < box.Height; ++r)
                sum = Add(sum, LoadWiden16(rows[r] + at));
            StoreI16(columns.get() + at, sum);
        }
        const Ipp8u* centre = FXRowAt(pSrc, srcStep, y + box.OddTap.Row) + box.OddTap.Offset;
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes<Ipp8u>) {
            const int at = FXVectorStart(i, n, kLanes<Ipp8u>);
            VI16 half[2];
            for (int h = 0; h < 2; ++h) {
                const Ipp16s* c = columns.get() + at + h * kLanes16;
                VI16 sum = LoadI16(c);
                for (int j = 1; j < box.Width; ++j)
                    sum = Add(sum, LoadI16(c + j * channels));
                sum = MulLo(sum, weight);
                if (box.Odd != 0)
                    sum = Add(sum, MulLo(LoadWiden16(centre + at + h * kLanes16), odd));
                half[h] = divide != nullptr ? (*divide)(Max(sum, zero)) : sum;
            }
            StoreResult<KeepAlpha>(out + at, NarrowU8(half[0], half[1]));
        }
    }
}

template <class T, TFXLayout L>
IppStatus Convolve(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi,
                   const Ipp32s* pKernel, IppiSize kernelSize, IppiPoint anchor, int divisor)
{
    constexpr int kCh = FXChannels(L);
    constexpr bool kAlpha = L == TFXLayout::AC4;
    const int n = roi.width * kCh;
    TPlan plan;
    TEngine engine;
    if (!MakePlan<T>(plan, pKernel, kernelSize, anchor, divisor, kCh) ||
        !ChooseEngine<T>(plan, engine))
        return kFXDeclined;
    const int step = kAlpha || sizeof(T) == 1  ? kLanes<Ipp8u>
                     : engine == TEngine::Wide ? kLanes32
                                               : kLanes16;
    if (n < step)
        return kFXDeclined;
    TBox box;
    if constexpr (sizeof(T) == 1)
        if (engine == TEngine::Bytes && FindBox(pKernel, kernelSize, anchor, divisor, kCh, box)) {
            const std::unique_ptr<TDivide16> divide(plan.Divisor > 1 ? new TDivide16(plan.Divisor)
                                                                     : nullptr);
            ConvolveBox<kAlpha>(pSrc, srcStep, pDst, dstStep, roi, kCh, box, divide.get());
            return ippStsNoErr;
        }
    // The taps in summing order: by pairs (an even count, a zero-weight spare where needed)
    // except for the wide way.
    std::vector<TTap> order(plan.Taps.get(), plan.Taps.get() + plan.Count);
    std::vector<TGroup> groups;
    if (engine == TEngine::Bytes || engine == TEngine::WideBytes)
        PairForBytes(plan, order, groups);
    else if (engine == TEngine::Words && plan.Count % 2 != 0)
        order.push_back({order[0].Row, order[0].Offset, 0});
    const int count = int(order.size());
    std::vector<const T*> taps(std::size_t(count) + 1);
    std::vector<Ipp32s> weights(std::size_t(count) + 1);
    for (int t = 0; t < count; ++t)
        weights[t] = order[t].Weight;
    // The weight pairs as vectors, once per call rather than per step.
    std::unique_ptr<VU8[]> bytePairs(new VU8[std::size_t(count) / 2 + 1]);
    std::unique_ptr<VI16[]> wordPairs(new VI16[std::size_t(count) / 2 + 1]);
    for (int t = 0; t + 1 < count; t += 2) {
        bytePairs[t / 2] = SplatPair8(weights[t], weights[t + 1]);
        wordPairs[t / 2] = SplatPair16(weights[t], weights[t + 1]);
    }
    // The byte ways store AC4 results keeping alpha themselves; the others use a scratch row.
    const bool viaScratch = kAlpha && engine != TEngine::Bytes && engine != TEngine::WideBytes;
    std::unique_ptr<T[]> scratch(viaScratch ? new T[std::size_t(n)] : nullptr);
    std::unique_ptr<TDivide16> divide(
        engine == TEngine::Bytes && plan.Divisor > 1 ? new TDivide16(plan.Divisor) : nullptr);
    const TFinish32<T> finish(plan.Divisor, plan.Lowest, plan.Highest);
    for (int y = 0; y < roi.height; ++y) {
        for (int t = 0; t < count; ++t)
            taps[t] = FXRowAt(pSrc, srcStep, y + order[t].Row) + order[t].Offset;
        T* row = FXRowAt(pDst, dstStep, y);
        T* out = viaScratch ? scratch.get() : row;
        if (engine == TEngine::Wide) {
            RowWide(taps.data(), weights.data(), count, finish, out, n);
        } else if (engine == TEngine::Words) {
            RowWords(taps.data(), wordPairs.get(), count, plan.WeightSum, finish, out, n);
        } else if constexpr (sizeof(T) == 1) {
            if (engine == TEngine::Bytes)
                RowBytes<kAlpha>(taps.data(), bytePairs.get(), count, divide.get(), out, n);
            else
                RowWideBytes<kAlpha>(taps.data(), bytePairs.get(), groups.data(),
                                     int(groups.size()), finish, out, n);
        }
        if (viaScratch)
            StoreKeepingAlpha(reinterpret_cast<Ipp8u*>(row), reinterpret_cast<Ipp8u*>(out), n);
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FilterKernel32s(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                          const Ipp32s* pKernel, IppiSize kernelSize, IppiPoint anchor, int divisor)
{
    return Convolve<T, L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, pKernel, kernelSize, anchor,
                          divisor);
}

FX_DEFINE_FIXED_KERNEL_OPS

} // namespace

FX_KERNEL_TABLE(FilterKernel, FX_FILTER_KERNEL_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
