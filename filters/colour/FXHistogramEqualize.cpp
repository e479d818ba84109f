// SPDX-License-Identifier: MIT
// Histogram equalisation.
#include "filters/colour/FXHistogramEqualize.h"

#include <cmath>

#include "filters/colour/detail/FXColourFrames.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/primitives/dispatch/Fxconvdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {
namespace {

// Sizes a kept buffer without giving memory back, all entries zero.
void Reset(std::vector<std::int32_t>& buffer, std::size_t size)
{
    buffer.assign(size, 0);
}

} // namespace

TFXHistogramEqualize::TFXHistogramEqualize(TKTComponent* owner)
    : TFXCommonFilter(owner), FWork(new TFXImageBuffer())
{
}

const TFXClassInfo& TFXHistogramEqualize::ClassInfo()
{
    static const TFXClassInfo info{"TFXHistogramEqualize", &TFXCommonFilter::ClassInfo(), {}};
    return info;
}

void TFXHistogramEqualize::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
}

void TFXHistogramEqualize::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    switch (input.GetFormat()) {
    case vfGray8:
        GrayScaleOperation(input, output);
        break;
    case vfGray16:
        GrayScale16Operation(input, output);
        break;
    default:
        RGBOperation(input, output);
        break;
    }
}

// The running sum is a single-precision float, added bin by bin in ascending order; each entry
// is rounded to nearest, halves to even.
template <class T>
void TFXHistogramEqualize::BuildTable(const std::vector<std::int32_t>& counts, std::int64_t pixels,
                                      double top, T* table)
{
    // Intentional: single-precision accumulation, as the curve has always been computed; above
    // 2^24 pixels in one bin range the sum rounds.
    float sum = 0.0f;
    const double scale = top / double(pixels);
    for (std::size_t i = 0; i < counts.size(); ++i) {
        sum += float(counts[i]);
        table[i] = T(std::nearbyint(double(sum) * scale));
    }
}

// Intentional: 256 levels over 0 ... 255 make 255 bins of width 1; the top value lies outside the
// last bin and is not counted (a frame of 255 everywhere becomes 0 everywhere).
void TFXHistogramEqualize::GrayScaleOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    Reset(FCounts[0], 256);
    FLevels[0].resize(256);
    const IppiSize roi = detail::FXRoiOf(input);
    ipp::ippiHistogramEven_8u_C1R(input.GetReadPointer(), input.GetRowStride(), roi,
                                  FCounts[0].data(), FLevels[0].data(), 256, 0, 255);
    BuildTable(FCounts[0], std::int64_t(roi.width) * roi.height, 255.0, FTable.data());

    const std::uint8_t* in = input.GetReadPointer();
    std::uint8_t* out = output.GetWritePointer();
    for (int y = 0; y < roi.height; ++y) {
        const std::uint8_t* source = in + std::ptrdiff_t(y) * input.GetRowStride();
        std::uint8_t* destination = out + std::ptrdiff_t(y) * output.GetRowStride();
        for (int x = 0; x < roi.width; ++x)
            destination[x] = FTable[source[x]];
    }
}

void TFXHistogramEqualize::GrayScale16Operation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    Reset(FCounts[0], 0x10000);
    FLevels[0].resize(0x10000);
    FTable16.resize(0x10000);
    const IppiSize roi = detail::FXRoiOf(input);
    ipp::ippiHistogramEven_16u_C1R(reinterpret_cast<const Ipp16u*>(input.GetReadPointer()),
                                   input.GetRowStride(), roi, FCounts[0].data(), FLevels[0].data(),
                                   0x10000, 0, 65535);
    BuildTable(FCounts[0], std::int64_t(roi.width) * roi.height, 65535.0, FTable16.data());

    const std::uint8_t* in = input.GetReadPointer();
    std::uint8_t* out = output.GetWritePointer();
    for (int y = 0; y < roi.height; ++y) {
        const auto* source =
            reinterpret_cast<const std::uint16_t*>(in + std::ptrdiff_t(y) * input.GetRowStride());
        auto* destination =
            reinterpret_cast<std::uint16_t*>(out + std::ptrdiff_t(y) * output.GetRowStride());
        for (int x = 0; x < roi.width; ++x)
            destination[x] = FTable16[source[x]];
    }
}

// Equalises the lightness of the frame's HLS form and converts back.
void TFXHistogramEqualize::RGBOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    const bool rgb32 = detail::FXIsRGB32(input);
    const int step = rgb32 ? 4 : 3;
    const IppiSize roi = detail::FXRoiOf(input);
    for (int c = 0; c < 3; ++c) {
        Reset(FCounts[c], 256);
        FLevels[c].resize(256);
    }
    output.CopyFrom(input);
    if (FWork->GetWidth() != roi.width || FWork->GetHeight() != roi.height ||
        FWork->GetFormat() != input.GetFormat())
        FWork->SetSize(roi.width, roi.height, input.GetFormat());
    std::uint8_t* work = FWork->GetWritePointer();
    const int workStride = FWork->GetRowStride();
    const std::uint8_t* source = input.GetReadPointer();
    (rgb32 ? ipp::ippiRGBToHLS_8u_AC4R : ipp::ippiRGBToHLS_8u_C3R)(source, input.GetRowStride(),
                                                                   work, workStride, roi);

    Ipp32s* counts[3] = {FCounts[0].data(), FCounts[1].data(), FCounts[2].data()};
    Ipp32s* levels[3] = {FLevels[0].data(), FLevels[1].data(), FLevels[2].data()};
    int levelCounts[3] = {256, 256, 256};
    Ipp32s lower[3] = {0, 0, 0}, upper[3] = {255, 255, 255};
    (rgb32 ? ipp::ippiHistogramEven_8u_AC4R : ipp::ippiHistogramEven_8u_C3R)(
        work, workStride, roi, counts, levels, levelCounts, lower, upper);
    BuildTable(FCounts[1], std::int64_t(roi.width) * roi.height, 255.0, FTable.data());

    for (int y = 0; y < roi.height; ++y) {
        std::uint8_t* lightness = work + std::ptrdiff_t(y) * workStride + 1;
        for (int x = 0; x < roi.width * step; x += step)
            lightness[x] = FTable[lightness[x]];
    }
    std::uint8_t* destination = output.GetWritePointer();
    (rgb32 ? ipp::ippiHLSToRGB_8u_AC4R : ipp::ippiHLSToRGB_8u_C3R)(work, workStride, destination,
                                                                   output.GetRowStride(), roi);
    if (rgb32)
        ipp::ippiCopy_8u_C4CR(source + 3, input.GetRowStride(), destination + 3,
                              output.GetRowStride(), roi);
}

void RegisterFXHistogramEqualize(TFXPalette& palette)
{
    palette.Register<TFXHistogramEqualize>(kFXPalettePage);
}

} // namespace framix
