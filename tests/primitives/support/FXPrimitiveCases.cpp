// SPDX-License-Identifier: MIT
// Case lists and guarded images for the primitive tests.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>

namespace framix::test {
namespace {

using prim::TFXShape;

constexpr Ipp8u kSentinel = 0xA5;

std::vector<int> WidthsFor(const prim::TFXPrimitiveInfo& p)
{
    // The wider side's pixels decide where the vector boundaries fall.
    const prim::TFXShapeGeometry g = prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout);
    const int pixelBytes = std::max(g.SrcPixelBytes, g.DstPixelBytes);
    std::vector<int> widths = {1, 2, 3, 5, 7, 9, 13};
    // Around each vector width in bytes (16, 32, 64) and in 32-bit lanes (4, 8, 16 samples).
    for (int bytes : {16, 32, 64, 128, 16 * pixelBytes, 32 * pixelBytes / 2})
        for (int d : {-1, 0, 1}) {
            const int w = bytes / pixelBytes + d;
            if (w >= 1)
                widths.push_back(w);
        }
    std::sort(widths.begin(), widths.end());
    widths.erase(std::unique(widths.begin(), widths.end()), widths.end());
    return widths;
}

std::vector<IppiSize> MasksFor(const prim::TFXPrimitiveInfo& p)
{
    // Median: every size that has a network, and 9x1 that has none.
    if (p.Name.find("Median") != std::string_view::npos)
        return {{3, 3}, {5, 5}, {1, 1}, {3, 1}, {1, 5}, {7, 1}, {5, 3}, {3, 7}, {7, 7}, {9, 1}};
    return {{3, 3}, {5, 5}, {1, 1}, {2, 1}, {1, 2}, {4, 3}, {7, 5}, {2, 6}, {9, 9}};
}

std::vector<Ipp32f> KernelFor(int variant, std::mt19937& rng)
{
    std::uniform_real_distribution<float> any(-1.0f, 2.0f);
    switch (variant % 5) {
    case 0: { // random weights
        std::vector<Ipp32f> k(1 + rng() % 7);
        for (auto& v : k)
            v = any(rng);
        return k;
    }
    case 1: // exact halves: rounding ties
        return {0.5f, 0.5f};
    case 2: { // normalised smoothing
        std::vector<Ipp32f> k(3 + 2 * (rng() % 3));
        for (auto& v : k)
            v = 1.0f / float(k.size());
        return k;
    }
    case 3: // saturates both ways
        return {3.0f, -2.5f, 0.25f};
    default: // single tap: picks one pixel
        return {1.0f};
    }
}

// Integer kernels for ippiFilter: the weights, the divisor, and what they exercise.
void IntKernelFor(int variant, TFXCase& c, std::mt19937& rng)
{
    const int taps = c.Mask.width * c.Mask.height;
    c.IntKernel.assign(std::size_t(taps), 0);
    auto uniform = [&](int lo, int hi) { return lo + int(rng() % unsigned(hi - lo + 1)); };
    switch (variant % 6) {
    case 0: // small signed weights, 16-bit sums for 8-bit samples
        for (auto& k : c.IntKernel)
            k = uniform(-4, 4);
        c.Divisor = uniform(1, 20);
        break;
    case 1: // the mean: exact halves when the area is even
        c.IntKernel.assign(std::size_t(taps), 1);
        c.Divisor = taps;
        break;
    case 2: // weights whose sums need 32 bits
        for (auto& k : c.IntKernel)
            k = uniform(-3000, 3000);
        c.Divisor = uniform(100, 5000);
        break;
    case 3: // a negative divisor: the quotient of the negated sum
        for (auto& k : c.IntKernel)
            k = uniform(-5, 1);
        c.Divisor = -uniform(1, 9);
        break;
    case 4: // weights beyond 16 bits (sums beyond 32 on 16-bit samples), a power-of-two divisor
        for (auto& k : c.IntKernel)
            k = uniform(-(1 << 17), 1 << 17);
        c.Divisor = 1 << 12;
        break;
    default: // one weight: picks (and scales) one pixel, no division
        c.IntKernel[rng() % c.IntKernel.size()] = uniform(1, 3);
        c.Divisor = 1;
    }
}

bool IsLut(TFXShape s)
{
    return s == TFXShape::Lut || s == TFXShape::LutChannels;
}

bool IsHistogram(TFXShape s)
{
    return s == TFXShape::Histogram || s == TFXShape::HistogramChannels;
}

int Uniform(std::mt19937& rng, int lo, int hi)
{
    return lo + int(rng() % unsigned(hi - lo + 1));
}

// n distinct levels in [lo, hi], ascending.
std::vector<Ipp32s> AscendingLevels(std::mt19937& rng, int n, int lo, int hi)
{
    std::vector<Ipp32s> levels;
    while (int(levels.size()) < n) {
        const int l = Uniform(rng, lo, hi);
        if (std::find(levels.begin(), levels.end(), l) == levels.end())
            levels.push_back(l);
    }
    std::sort(levels.begin(), levels.end());
    return levels;
}

// One channel's table; `variant` picks the kind of table.
void LutTableFor(int variant, int maxValue, std::mt19937& rng, std::vector<Ipp32s>& levels,
                 std::vector<Ipp32s>& values)
{
    int lowValue = -maxValue / 4, highValue = maxValue + maxValue / 4; // saturates both ways
    switch (variant % 8) {
    case 0: // a level per sample value (per 256 for 16 bits), as a curve editor fills it
        levels.clear();
        for (int l = 0; l <= maxValue + 1; l += (maxValue + 1) / 256)
            levels.push_back(l);
        break;
    case 1: // a few ascending levels inside and around the range
        levels = AscendingLevels(rng, Uniform(rng, 2, 9), -3, maxValue + 3);
        break;
    case 2: // levels in no order: the last interval holding a sample decides
        levels = AscendingLevels(rng, Uniform(rng, 3, 6), -3, maxValue + 3);
        std::shuffle(levels.begin(), levels.end(), rng);
        break;
    case 3: { // repeated levels: empty intervals, cubic windows without a curve
        levels = AscendingLevels(rng, Uniform(rng, 3, 6), 0, maxValue);
        const std::size_t i = rng() % levels.size();
        levels.insert(levels.begin() + std::ptrdiff_t(i), levels[i]);
        break;
    }
    case 4: { // a narrow band: most samples lie outside and keep their value
        const int lo = Uniform(rng, 0, maxValue / 2);
        levels = AscendingLevels(rng, 5, lo, lo + maxValue / 8 + 5);
        break;
    }
    case 5: // two or three levels (the cubic becomes linear)
        levels = AscendingLevels(rng, Uniform(rng, 2, 3), -3, maxValue + 3);
        break;
    case 6: // even level steps with odd value steps: exact halves to round
        levels.clear();
        for (int l = 0; l <= maxValue + 1; l += (maxValue + 1) / 8)
            levels.push_back(l);
        lowValue = 0;
        highValue = maxValue;
        break;
    default: // levels far apart and huge values: saturation, beyond exact cubic arithmetic
        levels = {-100000, Uniform(rng, 0, maxValue / 2), Uniform(rng, maxValue / 2 + 1, maxValue),
                  200000};
        lowValue = -5000000;
        highValue = 5000000;
    }
    values.resize(levels.size());
    for (auto& v : values)
        v = lowValue + Ipp32s(rng() % unsigned(highValue - lowValue + 1));
    if (variant % 8 == 6)
        for (std::size_t i = 1; i < values.size(); ++i)
            values[i] = values[i - 1] + 2 * int(rng() % 40) - 39; // odd steps
}

// One channel's bins; `variant` picks the kind.
void HistogramFor(int variant, int maxValue, std::mt19937& rng, int& levels, Ipp32s& lower,
                  Ipp32s& upper)
{
    switch (variant % 7) {
    case 0: // a bin per value
        levels = maxValue + 2, lower = 0, upper = maxValue + 1;
        break;
    case 1: // the top value outside the last bin
        levels = maxValue + 1, lower = 0, upper = maxValue;
        break;
    case 2: // bins that do not divide the range: the first ones are wider
        levels = 13, lower = 0, upper = maxValue;
        break;
    case 3: // anywhere, beyond the sample range too
        levels = Uniform(rng, 2, 40);
        lower = Uniform(rng, -10, maxValue / 2);
        upper = Uniform(rng, lower + 1, maxValue + 10);
        break;
    case 4: // an empty range
        levels = 5, lower = upper = Uniform(rng, 0, maxValue);
        break;
    case 5: // upper below lower: descending levels, nothing counted
        levels = 4, lower = maxValue * 3 / 4, upper = maxValue / 5;
        break;
    default: // one bin for every sample
        levels = 2, lower = 0, upper = maxValue + 1;
    }
}

// Scale factors, constants, alpha values and types, weights: edge values first, then random.
void ArithmeticParameters(const prim::TFXPrimitiveInfo& p, int n, int rep, std::mt19937& rng,
                          TFXCase& c)
{
    constexpr int kScales[] = {0, 1,  2,   0, -1, 3,   0, 8, -3, 0, 9, 16,   0, -9,    5,
                               0, 17, -17, 0, 40, -40, 0, 4, -2, 0, 7, 1000, 0, -1000, 15};
    constexpr Ipp32f kWeights[] = {0.3f, 0.5f, 0.0f, 1.0f, 0.123456f, 1.7f, -0.25f, 0.999f};
    const int max = p.Sample == prim::TFXSample::U8 ? 255 : 65535;
    c.ScaleFactor = kScales[n % std::size(kScales)];
    c.AlphaType = n % 12;
    c.Weight = n % 9 == 8 ? float(rng() % 1000) / 1000.0f : kWeights[n % std::size(kWeights)];
    c.SmallSamples = n % 3 == 2;
    for (int& v : c.Values)
        v = int(rng() % (max + 1));
    switch (rep) {
    case 0: // the identity, zero and near-edge fractions
        c.Values[0] = max, c.Values[1] = 0, c.Values[2] = 1, c.Values[3] = max - 1;
        break;
    case 1: // alphas of a half and of 8-bit size on 16-bit images
        c.Values[0] = max / 2 + 1, c.Values[1] = n % 2 == 0 ? max : 255;
        break;
    default:
        break;
    }
    if (n % 4 == 3) // 8-bit alphas that add up to 255, as a cross-fade uses (any sample type)
        c.Values[0] %= 256, c.Values[1] = 255 - c.Values[0];
}

// A random value of the sample type, as the int that TFXShapeArgs carries.
int ValueFor(prim::TFXSample sample, std::mt19937& rng)
{
    switch (sample) {
    case prim::TFXSample::U8:
        return int(rng() % 256);
    case prim::TFXSample::U16:
        return int(rng() % 65536);
    case prim::TFXSample::S16:
        return int(rng() % 65536) - 32768;
    default:
        return int(rng());
    }
}

// Set values, channel orders, axes, round modes, noise bounds and seeds, signal constants and
// scale factors.
void CopyParameters(const prim::TFXPrimitiveInfo& p, int n, int rep, std::mt19937& rng, TFXCase& c)
{
    static constexpr int kScaleFactors[] = {0, 1, 2, -1, 5, 16, 31, 32, -3, 40, 62, 63, 70, -33};
    switch (p.Shape) {
    case TFXShape::SetScalar:
    case TFXShape::SetChannels:
    case TFXShape::SignalSet:
        for (int& v : c.Values)
            v = ValueFor(p.Sample, rng);
        break;
    case TFXShape::SwapChannels:
    case TFXShape::SwapChannelsInPlace:
        for (int k = 0; k < 3; ++k) // repeats are allowed; every third case a permutation
            c.Values[k] = rep == 0 ? 2 - k : int(rng() % 3);
        break;
    case TFXShape::Mirror:
    case TFXShape::MirrorInPlace:
    case TFXShape::ConvertFromFloat:
        c.Param = n % 3; // the three axes; zero, nearest and financial rounding
        break;
    case TFXShape::AddNoise: {
        int a = ValueFor(p.Sample, rng), b = ValueFor(p.Sample, rng);
        if (rep == 0 && a > b) // bounds in order, reversed, and a narrow range
            std::swap(a, b);
        if (rep == 2)
            b = std::min(a + int(rng() % 8), p.Sample == prim::TFXSample::U8 ? 255 : 65535);
        c.Values[0] = a;
        c.Values[1] = b;
        c.NoiseSeed = rng();
        break;
    }
    case TFXShape::SignalAddScaled:
        c.ScaleFactor = kScaleFactors[n % std::size(kScaleFactors)];
        break;
    case TFXShape::SignalMulCScaled:
        // mostly small constants (the vector kernels' range), some of any size
        c.Values[0] = rep != 2 ? int(rng() % 2001) - 1000 : ValueFor(p.Sample, rng);
        c.ScaleFactor = kScaleFactors[n % std::size(kScaleFactors)];
        break;
    case TFXShape::SignalShiftC:
        c.Values[0] = int(rng() % 40);
        break;
    default:
        break;
    }
}

// The parameters of the point operations for case n (repetition rep of its width).
void PointParameters(const prim::TFXPrimitiveInfo& p, int n, int rep, std::mt19937& rng, TFXCase& c)
{
    if (FXIsArithmeticShape(p.Shape)) {
        ArithmeticParameters(p, n, rep, rng, c);
        return;
    }
    CopyParameters(p, n, rep, rng, c);
    const int maxValue = p.Sample == prim::TFXSample::U8 ? 255 : 65535;
    for (int ch = 0; ch < prim::FXProcessedChannels(p.Layout); ++ch) {
        // Channels of one case get different kinds of tables.
        if (IsLut(p.Shape))
            LutTableFor(n + 3 * ch, maxValue, rng, c.LutLevels[ch], c.LutValues[ch]);
        if (IsHistogram(p.Shape)) // odd cases: every channel the same kind of bins
            HistogramFor(n % 2 ? n : n + 2 * ch, maxValue, rng, c.HistLevels[ch], c.Lower[ch],
                         c.Upper[ch]);
    }
    if (p.Shape == TFXShape::LutPalette) {
        const int bits[] = {8, 1, 3, 4, 7};
        c.BitSize = bits[n % 5];
        c.Palette.resize(std::size_t(1) << c.BitSize);
        for (auto& v : c.Palette)
            v = Ipp32u(rng());
    }
    if (p.Shape == TFXShape::Threshold || p.Shape == TFXShape::ThresholdBoth)
        for (int ch = 0; ch < 3; ++ch) {
            // Some limits at the ends of the range, where nothing (or everything) is replaced.
            const int kind = int(rng() % 8);
            c.Limit[ch] = kind == 0 ? 0 : kind == 1 ? 255 : Ipp8u(rng());
            c.UpperLimit[ch] = kind == 2 ? c.Limit[ch] : Ipp8u(rng());
            if (p.Shape == TFXShape::ThresholdBoth && c.Limit[ch] > c.UpperLimit[ch])
                std::swap(c.Limit[ch], c.UpperLimit[ch]);
            c.LimitValue[ch] = Ipp8u(rng());
            c.UpperValue[ch] = Ipp8u(rng());
        }
}

using TTwist = std::array<std::array<Ipp32f, 4>, 3>;

TTwist TwistFor(int variant, std::mt19937& rng)
{
    std::uniform_real_distribution<float> weight(-1.5f, 1.5f), offset(-128.0f, 128.0f);
    constexpr float kInf = std::numeric_limits<float>::infinity();
    switch (variant % 5) {
    case 0: { // random weights and offsets: saturates both ways
        TTwist t;
        for (auto& row : t)
            row = {weight(rng), weight(rng), weight(rng), offset(rng)};
        return t;
    }
    case 1: // halves: rounding ties
        return {{{0.5f, 0, 0, 0}, {0, 0.5f, 0, 0.5f}, {0.25f, 0.25f, 0, 0}}};
    case 2: // a YCbCr-like matrix with offsets
        return {{{0.257f, 0.504f, 0.098f, 16},
                 {-0.148f, -0.291f, 0.439f, 128},
                 {0.439f, -0.368f, -0.071f, 128}}};
    case 3: // channel permutation
        return {{{0, 0, 1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}}};
    default: // sums beyond any integer, infinities and NaN (infinity times a zero sample)
        return {{{1e30f, -1e30f, 0, 0}, {kInf, 0, 0, -1e20f}, {0, -kInf, 1, 0}}};
    }
}

} // namespace

void FXFillSamples(prim::TFXSample sample, Ipp8u* p, std::size_t bytes, std::mt19937& rng)
{
    std::size_t i = 0;
    if (sample == prim::TFXSample::F32) {
        std::uniform_real_distribution<float> byteRange(-20.0f, 300.0f), wordRange(-20.0f, 7e4f);
        const float specials[] = {std::numeric_limits<float>::quiet_NaN(),
                                  std::numeric_limits<float>::infinity(),
                                  -std::numeric_limits<float>::infinity(),
                                  -0.0f,
                                  1e20f,
                                  -1e20f,
                                  255.5f,
                                  65535.5f};
        for (; i + 4 <= bytes; i += 4) {
            const unsigned kind = rng() % 20;
            float v = kind < 11 ? byteRange(rng) : kind < 15 ? wordRange(rng) : 0.0f;
            if (kind >= 15 && kind < 18) // exact halves, where the round modes differ
                v = float(int(rng() % 66000) - 3) + 0.5f;
            if (kind == 18)
                v = specials[rng() % std::size(specials)];
            if (kind == 19)
                v = float(int(rng() % 300));
            std::memcpy(p + i, &v, 4);
        }
    } else if (sample == prim::TFXSample::F64) {
        std::uniform_real_distribution<double> moderate(-1000.0, 1000.0), large(-1e6, 1e6);
        for (; i + 8 <= bytes; i += 8) {
            const double v = rng() % 8 == 0 ? large(rng) : moderate(rng);
            std::memcpy(p + i, &v, 8);
        }
    }
    for (; i < bytes; ++i)
        p[i] = Ipp8u(rng());
}

std::string TFXCase::Describe() const
{
    std::ostringstream s;
    s << "roi " << Roi.width << "x" << Roi.height << ", mask " << Mask.width << "x" << Mask.height
      << " anchor (" << Anchor.x << "," << Anchor.y << "), kernel size " << Kernel.size()
      << " anchor " << KernelAnchor << ", pads " << SrcPad << "/" << DstPad << ", extra "
      << Extra.Left << "/" << Extra.Top << "/" << Extra.Right << "/" << Extra.Bottom << ", seed "
      << Seed;
    if (!IntKernel.empty()) {
        s << ", kernel {";
        for (std::size_t i = 0; i < IntKernel.size(); ++i)
            s << (i ? "," : "") << IntKernel[i];
        s << "} / " << Divisor;
    }
    s << ", mask code " << int(MaskCode);
    for (int c = 0; c < 4; ++c) {
        s << "; channel " << c << ": levels";
        for (Ipp32s l : LutLevels[c])
            s << " " << l;
        s << ", values";
        for (Ipp32s v : LutValues[c])
            s << " " << v;
        s << ", bins " << HistLevels[c] << " over " << Lower[c] << " ... " << Upper[c];
    }
    s << "; palette of " << BitSize << " bits; limits";
    for (int c = 0; c < 3; ++c)
        s << " " << int(Limit[c]) << "->" << int(LimitValue[c]) << "/" << int(UpperLimit[c]) << "->"
          << int(UpperValue[c]);
    s << "; scale factor " << ScaleFactor << ", values " << Values[0] << "/" << Values[1] << "/"
      << Values[2] << "/" << Values[3] << ", alpha type " << AlphaType << ", weight " << Weight
      << (SmallSamples ? ", small samples" : "") << ", param " << Param << ", noise seed "
      << NoiseSeed;
    return s.str();
}

std::vector<TFXCase> FXCasesFor(const prim::TFXPrimitiveInfo& p)
{
    std::vector<TFXCase> cases;
    std::mt19937 rng(0x5EED + static_cast<unsigned>(p.Name.size()));
    const std::vector<int> widths = WidthsFor(p);
    const std::vector<IppiSize> masks = MasksFor(p);
    const int heights[] = {1, 2, 3, 5, 8};
    int n = 0;
    for (int w : widths)
        for (int rep = 0; rep < 3; ++rep, ++n) {
            TFXCase c;
            c.Roi = {w, heights[(n + rep) % 5]};
            c.Seed = rng();
            c.SrcPad = (n % 3 == 0) ? 0 : int(rng() % 17);
            c.DstPad = (n % 4 == 1) ? 0 : int(rng() % 9);
            if (n % 5 == 2) // a ROI inside a larger image
                c.Extra = {int(rng() % 4), int(rng() % 3), int(rng() % 4), int(rng() % 3)};
            if (p.Shape == TFXShape::FixedMaskFilter) {
                c.MaskCode = (n + rep) % 2 ? ippMskSize5x5 : ippMskSize3x3;
            } else if (p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::KernelFilter) {
                c.Mask = masks[n % masks.size()];
                switch (rep) {
                case 0:
                    c.Anchor = {c.Mask.width / 2, c.Mask.height / 2};
                    break;
                case 1:
                    c.Anchor = {0, c.Mask.height - 1};
                    break;
                default:
                    c.Anchor = {int(rng() % c.Mask.width), int(rng() % c.Mask.height)};
                }
                if (p.Shape == TFXShape::KernelFilter)
                    IntKernelFor(n, c, rng);
            } else if (p.Shape == TFXShape::ColorTwist) {
                c.Twist = TwistFor(n, rng);
            } else if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
                c.Kernel = KernelFor(n, rng);
                const int k = int(c.Kernel.size());
                c.KernelAnchor = rep == 0 ? k / 2 : rep == 1 ? k - 1 : int(rng() % k);
            }
            if (prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout).Signal) {
                c.Roi.height = 1; // one sample row per array
                c.Extra = {};
            }
            PointParameters(p, n, rep, rng, c);
            cases.push_back(c);
        }
    // One larger image, so every vector kernel runs several full vectors per row.
    TFXCase big;
    big.Roi = {203, 7};
    big.SrcPad = 5;
    big.Seed = 77;
    if (p.Shape == TFXShape::FixedMaskFilter)
        big.MaskCode = ippMskSize5x5;
    if (p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::KernelFilter) {
        big.Mask = {5, 5};
        big.Anchor = {2, 2};
        if (p.Shape == TFXShape::KernelFilter) {
            big.IntKernel.resize(25);
            for (int i = 0; i < 25; ++i)
                big.IntKernel[std::size_t(i)] = (i * 7) % 5 - 2;
            big.Divisor = 3;
        }
    } else if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
        big.Kernel = {0.1f, 0.2f, 0.4f, 0.2f, 0.1f};
        big.KernelAnchor = 2;
    } else if (p.Shape == TFXShape::ColorTwist) {
        big.Twist = TwistFor(0, rng);
    } else if (FXIsArithmeticShape(p.Shape)) {
        big.Values[0] = 200, big.Values[1] = 77, big.Values[2] = 254, big.Values[3] = 3;
        big.Weight = 0.3f;
    } else {
        if (prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout).Signal)
            big.Roi = {big.Roi.width * big.Roi.height, 1};
        PointParameters(p, 1, 0, rng, big);
    }
    cases.push_back(big);
    // Arithmetic: larger images for every compositing type and several scale factors, so rare
    // roundings (exact halves, estimates corrected by one) occur.
    if (FXIsArithmeticShape(p.Shape))
        for (int k = 0; k < 12; ++k) {
            TFXCase c = big;
            c.Roi = {97 + 16 * k, 9};
            c.Seed = rng();
            ArithmeticParameters(p, k, 3, rng, c);
            c.AlphaType = k;
            c.ScaleFactor = k % 3 == 0 ? 0 : c.ScaleFactor;
            cases.push_back(c);
        }
    return cases;
}

TFXCaseImages::TFXCaseImages(const prim::TFXPrimitiveInfo& prim, const TFXCase& c)
    : FPrim(prim), FCase(c), FGeometry(prim::FXShapeGeometry(prim.Shape, prim.Sample, prim.Layout))
{
    const prim::TFXShapeGeometry& g = FGeometry;
    const int sampleBytes = prim::FXSampleBytes(g.SrcSample);
    for (int r = 0; r < 3; ++r)
        for (int k = 0; k < 4; ++k)
            FTwist[r][k] = c.Twist[r][k];
    const prim::TFXMargins m = prim::FXShapeMargins(prim.Shape, Args(nullptr));
    const int left = m.Left + c.Extra.Left, right = m.Right + c.Extra.Right;
    const int top = m.Top + c.Extra.Top, bottom = m.Bottom + c.Extra.Bottom;
    const int srcRowBytes = (c.Roi.width + left + right) * g.SrcPixelBytes;
    const int srcRows = c.Roi.height + top + bottom;
    const std::size_t leftBytes = std::size_t(left) * g.SrcPixelBytes;
    // Steps stay multiples of the sample size, as IPP requires for 16- and 32-bit images.
    const int srcPad = c.SrcPad - c.SrcPad % sampleBytes;
    FSrcStep = srcRowBytes + srcPad;
    FSrcSize = std::size_t(FSrcStep) * (srcRows - 1) + srcRowBytes;
    std::mt19937 rng(c.Seed);
    // Arithmetic on small samples: every byte below 16 (8-bit and 16-bit samples alike).
    const Ipp8u byteMask = c.SmallSamples ? 0x0F : 0xFF;
    const auto fill = [&](std::unique_ptr<Ipp8u[]>& image, std::size_t size) {
        image.reset(new Ipp8u[size]);
        FXFillSamples(g.SrcSample, image.get(), size, rng);
        for (std::size_t i = 0; i < size; ++i)
            image[i] &= byteMask;
    };
    for (int p = 0; p < (g.SrcPixelBytes > 0 ? g.SrcPlanes : 0); ++p) {
        fill(FSrc[p], FSrcSize);
        FSrcRoi[p] = FSrc[p].get() + std::size_t(top) * FSrcStep + leftBytes;
    }
    if (g.SecondSource) { // its own padding, so the two steps differ
        const int pad2 = (c.SrcPad * 5 + 3) % 11;
        FSrc2Step = srcRowBytes + pad2 - pad2 % sampleBytes;
        fill(FSrc2, std::size_t(FSrc2Step) * (srcRows - 1) + srcRowBytes);
        FSrc2Roi = FSrc2.get() + std::size_t(top) * FSrc2Step + leftBytes;
    }
    if (g.DstPixelBytes == 0) { // histograms: per channel the counts, then the levels
        std::size_t at = 0;
        for (int ch = 0; ch < prim::FXProcessedChannels(prim.Layout); ++ch) {
            FHistAt[ch] = at;
            at += (2 * std::size_t(c.HistLevels[ch]) - 1) * sizeof(Ipp32s);
        }
        FDstRowBytes = at;
        FDstRows = 1;
        FDstStep = int(at);
    } else {
        const IppiSize dstRoi = DstRoi();
        FDstRowBytes = std::size_t(dstRoi.width) * g.DstPixelBytes;
        FDstRows = dstRoi.height;
        FDstStep = int(FDstRowBytes) + c.DstPad - c.DstPad % prim::FXSampleBytes(g.DstSample);
    }
    FDstPlaneBytes = std::size_t(FDstStep) * (FDstRows - 1) + FDstRowBytes;
    FDstInit.assign(kFXGuardBytes + g.DstPlanes * (FDstPlaneBytes + kFXGuardBytes), kSentinel);
    if (g.InPlace) // the image the primitive works on; padding keeps the sentinel
        for (int y = 0; y < FDstRows; ++y) {
            Ipp8u* row = FDstInit.data() + kFXGuardBytes + std::size_t(y) * FDstStep;
            if (g.DstSample == prim::TFXSample::F32) { // a float accumulator: finite values
                std::uniform_real_distribution<float> any(-100.0f, 70000.0f);
                for (std::size_t i = 0; i < FDstRowBytes; i += sizeof(Ipp32f)) {
                    const Ipp32f v = any(rng);
                    std::memcpy(row + i, &v, sizeof v);
                }
            } else {
                FXFillSamples(g.DstSample, row, FDstRowBytes, rng);
                for (std::size_t i = 0; i < FDstRowBytes; ++i)
                    row[i] &= byteMask;
            }
        }
}

IppiSize TFXCaseImages::DstRoi() const
{
    return FGeometry.Reduces ? IppiSize{1, 1} : FCase.Roi;
}

std::size_t TFXCaseImages::DstPlaneStart(int p) const
{
    return kFXGuardBytes + std::size_t(p) * (FDstPlaneBytes + kFXGuardBytes);
}

prim::TFXShapeArgs TFXCaseImages::Args(Ipp8u* dstAllocation, std::uint32_t* seed) const
{
    prim::TFXShapeArgs a;
    a.Src = FSrcRoi[0];
    a.SrcStep = FSrcStep;
    a.Dst = dstAllocation != nullptr ? dstAllocation + kFXGuardBytes : nullptr;
    a.DstStep = FDstStep;
    a.Roi = FCase.Roi;
    a.Mask = FCase.Mask;
    a.Anchor = FCase.Anchor;
    a.Kernel = FCase.Kernel.data();
    a.KernelSize = int(FCase.Kernel.size());
    a.KernelAnchor = FCase.KernelAnchor;
    a.IntKernel = FCase.IntKernel.data();
    a.Divisor = FCase.Divisor;
    a.MaskCode = FCase.MaskCode;
    const bool histogram = FGeometry.DstPixelBytes == 0 && dstAllocation != nullptr;
    for (int c = 0; c < 4; ++c) {
        a.LutValues[c] = FCase.LutValues[c].data();
        a.LutLevels[c] = FCase.LutLevels[c].data();
        a.LevelCounts[c] =
            IsHistogram(FPrim.Shape) ? FCase.HistLevels[c] : int(FCase.LutLevels[c].size());
        a.Lower[c] = FCase.Lower[c];
        a.Upper[c] = FCase.Upper[c];
        if (histogram && c < prim::FXProcessedChannels(FPrim.Layout)) {
            auto* counts = reinterpret_cast<Ipp32s*>(dstAllocation + kFXGuardBytes + FHistAt[c]);
            a.Hist[c] = counts;
            a.HistLevels[c] = counts + FCase.HistLevels[c] - 1;
        }
    }
    a.Palette = FCase.Palette.data();
    a.BitSize = FCase.BitSize;
    a.Limit = FCase.Limit.data();
    a.LimitValue = FCase.LimitValue.data();
    a.UpperLimit = FCase.UpperLimit.data();
    a.UpperValue = FCase.UpperValue.data();
    a.Twist = FTwist;
    if (FGeometry.SrcPlanes > 1)
        for (int p = 0; p < FGeometry.SrcPlanes; ++p)
            a.Planes[p] = const_cast<Ipp8u*>(FSrcRoi[p]);
    else if (dstAllocation != nullptr && FGeometry.DstPlanes > 1)
        for (int p = 0; p < FGeometry.DstPlanes; ++p)
            a.Planes[p] = dstAllocation + DstPlaneStart(p);
    a.Src2 = FSrc2Roi;
    a.Src2Step = FSrc2Step;
    a.ScaleFactor = FCase.ScaleFactor;
    std::copy(std::begin(FCase.Values), std::end(FCase.Values), a.Values);
    a.AlphaType = FCase.AlphaType;
    a.Weight = FCase.Weight;
    a.Param = FCase.Param;
    a.Seed = seed;
    return a;
}

TFXRunResult TFXCaseImages::Run(prim::TFXAnyFn fn) const
{
    TFXRunResult r;
    r.Dst = FDstInit;
    r.NoiseSeed = FCase.NoiseSeed;
    r.Status = prim::FXCallShape(FPrim.Shape, FPrim.Sample, fn, Args(r.Dst.data(), &r.NoiseSeed));
    return r;
}

std::size_t TFXCaseImages::DstOffset(int x, int y, int c) const
{
    const std::size_t at = std::size_t(y) * FDstStep + std::size_t(x) * FGeometry.DstPixelBytes;
    if (FGeometry.DstPlanes > 1)
        return DstPlaneStart(c) + at;
    return kFXGuardBytes + at + std::size_t(c) * prim::FXSampleBytes(FGeometry.DstSample);
}

std::vector<Ipp32s> TFXCaseImages::Counts(const std::vector<Ipp8u>& dst, int c) const
{
    std::vector<Ipp32s> v(std::size_t(FCase.HistLevels[c]) - 1);
    std::memcpy(v.data(), dst.data() + kFXGuardBytes + FHistAt[c], v.size() * sizeof(Ipp32s));
    return v;
}

std::vector<Ipp32s> TFXCaseImages::HistogramLevels(const std::vector<Ipp8u>& dst, int c) const
{
    std::vector<Ipp32s> v(FCase.HistLevels[c]);
    std::memcpy(v.data(), dst.data() + kFXGuardBytes + FHistAt[c] + (v.size() - 1) * sizeof(Ipp32s),
                v.size() * sizeof(Ipp32s));
    return v;
}

long TFXCaseImages::FirstDamagedGuard(const std::vector<Ipp8u>& dst) const
{
    const std::size_t planeSpan = FDstPlaneBytes + kFXGuardBytes;
    for (std::size_t i = 0; i < dst.size(); ++i) {
        const std::size_t inPlane = i < kFXGuardBytes ? planeSpan : (i - kFXGuardBytes) % planeSpan;
        const bool inRow = i >= kFXGuardBytes && inPlane < FDstPlaneBytes &&
                           inPlane / FDstStep < std::size_t(FDstRows) &&
                           inPlane % FDstStep < FDstRowBytes;
        if (!inRow && dst[i] != kSentinel)
            return long(i);
    }
    return -1;
}

std::vector<const prim::TFXPrimitiveInfo*> FXAllPrimitivePointers()
{
    std::vector<const prim::TFXPrimitiveInfo*> all;
    for (const prim::TFXPrimitiveInfo& p : prim::FXAllPrimitives())
        all.push_back(&p);
    return all;
}

std::string FXPrimitiveTestName(const testing::TestParamInfo<const prim::TFXPrimitiveInfo*>& info)
{
    return std::string(info.param->Name);
}

} // namespace framix::test
