// SPDX-License-Identifier: MIT
// The rectangular kernel filter and its kernel.
#include "filters/neighbourhood/FXRectKernelFilter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "framework/FXError.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

namespace {

constexpr double kInt32Max = double(std::numeric_limits<std::int32_t>::max());

// The scale that turns a coefficient into an integer: 1 for 0 and for magnitudes of at least
// 1, otherwise trunc(1 / |v|) + 1 (so 1/9 as a single, 0.11111111194, gives 8 + 1 = 9).
std::int64_t Scale(float value)
{
    const double magnitude = std::fabs(double(value));
    if (std::isnan(magnitude) || magnitude == 0.0 || magnitude >= 1.0)
        return 1;
    const double inverse = 1.0 / magnitude;
    return inverse >= kInt32Max ? std::int64_t(kInt32Max) : std::int64_t(inverse) + 1;
}

std::int32_t TruncateSaturated(double value)
{
    if (std::isnan(value))
        return 0;
    return std::int32_t(std::clamp(std::trunc(value), -kInt32Max - 1, kInt32Max));
}

} // namespace

// ---------------------------------------------------------------- TFXRectKernel

TFXRectKernel::TFXRectKernel(TFXRectKernelFilter& owner)
    : TKTPersistent(&owner.Lock()), FOwner(owner), FWidth(owner.GetMaskSize().GetWidth()),
      FHeight(owner.GetMaskSize().GetHeight()), FCoefficients(std::size_t(FWidth) * FHeight),
      FIntKernel(FCoefficients.size())
{
}

const TFXClassInfo& TFXRectKernel::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXRectKernel::GetWidth, &TFXRectKernel::SetCurrentWidth>(kWidth),
        FXProp<&TFXRectKernel::GetHeight, &TFXRectKernel::SetCurrentHeight>(kHeight),
    };
    static const TFXClassInfo info{"TFXRectKernel", &TKTPersistent::ClassInfo(), kProps};
    return info;
}

std::uint32_t TFXRectKernel::GetWidth() const
{
    auto guard = Lock().Read();
    return FWidth;
}

std::uint32_t TFXRectKernel::GetHeight() const
{
    auto guard = Lock().Read();
    return FHeight;
}

void TFXRectKernel::SetCurrentWidth(std::uint32_t value)
{
    auto guard = Lock().Write();
    RecalcArray(std::min<std::uint32_t>(value, std::uint32_t(kWidth.Max)), FHeight);
}

void TFXRectKernel::SetCurrentHeight(std::uint32_t value)
{
    auto guard = Lock().Write();
    RecalcArray(FWidth, std::min<std::uint32_t>(value, std::uint32_t(kHeight.Max)));
}

std::size_t TFXRectKernel::Index(int column, int row) const
{
    // The filter's mask width is the row length; it equals Width once a mask change resized
    // the kernel.
    const std::int64_t index =
        std::int64_t(row) * FOwner.GetMaskSize().GetWidth() + std::int64_t(column);
    if (column < 0 || row < 0 || index >= std::int64_t(FCoefficients.size()))
        throw EFXError("TFXRectKernel: no coefficient at column " + std::to_string(column) +
                       ", row " + std::to_string(row) + " of " +
                       std::to_string(FCoefficients.size()));
    return std::size_t(index);
}

float TFXRectKernel::GetItem(int column, int row) const
{
    return FCoefficients[Index(column, row)];
}

void TFXRectKernel::SetItem(int column, int row, float value)
{
    auto guard = Lock().Write();
    FCoefficients[Index(column, row)] = value;
    PopulateIntArray();
}

void TFXRectKernel::RecalcArray(std::uint32_t width, std::uint32_t height)
{
    auto guard = Lock().Write();
    const std::uint64_t cells = std::uint64_t(width) * height;
    if (cells > kMaxCells)
        throw EFXError("TFXRectKernel: a " + std::to_string(width) + " x " +
                       std::to_string(height) + " kernel is larger than " +
                       std::to_string(kMaxCells) + " cells");
    // Every kept coefficient stays in its row and column; new cells are 0. (Rows are laid out
    // by the old width, whatever the array's length: cells past its end count as 0.)
    std::vector<float> resized(cells);
    const std::uint32_t keptRows = std::min(FHeight, height);
    const std::uint32_t keptColumns = std::min(FWidth, width);
    for (std::uint32_t r = 0; r < keptRows; ++r)
        for (std::uint32_t c = 0; c < keptColumns; ++c) {
            const std::size_t from = std::size_t(r) * FWidth + c;
            if (from < FCoefficients.size())
                resized[std::size_t(r) * width + c] = FCoefficients[from];
        }
    FCoefficients = std::move(resized);
    FIntKernel.resize(cells); // element 0 keeps its value (0 once the array exists)
    FWidth = width;
    FHeight = height;
    PopulateIntArray();
}

void TFXRectKernel::PopulateIntArray()
{
    auto guard = Lock().Write();
    const std::size_t count = FCoefficients.size();
    FIntKernel.resize(count);
    std::int64_t divisor = count > 0 ? Scale(FCoefficients[0]) : 1;
    for (std::size_t i = 1; i < count; ++i)
        divisor = std::max(divisor, Scale(FCoefficients[i]));
    FDivisor = std::int32_t(divisor);
    // Intentional: element 0 is not computed; it keeps its value, 0 in every kernel.
    for (std::size_t i = 1; i < count; ++i)
        FIntKernel[i] = TruncateSaturated(double(FCoefficients[i]) * double(divisor));
}

void TFXRectKernel::Assign(const TKTPersistent& source)
{
    const auto* kernel = dynamic_cast<const TFXRectKernel*>(&source);
    if (!kernel) {
        TKTPersistent::Assign(source);
        return;
    }
    if (kernel == this)
        return;
    std::vector<float> coefficients;
    std::size_t intLength;
    {
        auto guard = kernel->Lock().Read();
        coefficients = kernel->FCoefficients;
        intLength = kernel->FIntKernel.size();
    }
    auto guard = Lock().Write();
    FCoefficients = std::move(coefficients);
    FIntKernel.resize(intLength);
    PopulateIntArray();
}

void TFXRectKernel::DefineProperties(TFXFiler& filer)
{
    bool hasData;
    {
        auto guard = Lock().Read();
        // Stored unless it is what Width and Height alone give: that many zeros.
        hasData = FCoefficients.size() != std::size_t(FWidth) * FHeight ||
                  std::any_of(FCoefficients.begin(), FCoefficients.end(), [](float v) {
                      std::uint32_t bits;
                      std::memcpy(&bits, &v, sizeof bits);
                      return bits != 0;
                  });
    }
    filer.DefineProperty(
        "MatrixData", [this](TFXReader& reader) { ReadData(reader); },
        [this](TFXWriter& writer) { WriteData(writer); }, hasData);
}

void TFXRectKernel::ReadData(TFXReader& reader)
{
    reader.ReadListBegin();
    const std::int64_t count = reader.ReadInteger();
    if (count < 0 || std::uint64_t(count) > kMaxCells)
        throw EFXError("MatrixData: " + std::to_string(count) +
                       " is not a coefficient count (0 to " + std::to_string(kMaxCells) + ")");
    std::vector<float> values(static_cast<std::size_t>(count));
    for (float& v : values) {
        if (reader.EndOfList())
            throw EFXError("MatrixData: " + std::to_string(count) +
                           " coefficients announced, fewer stored");
        v = float(reader.ReadFloat());
    }
    reader.ReadListEnd();
    auto guard = Lock().Write();
    FCoefficients = std::move(values);
    // The integer kernel follows at the next stream start.
    FIntKernel.resize(FCoefficients.size());
}

void TFXRectKernel::WriteData(TFXWriter& writer) const
{
    auto guard = Lock().Read();
    writer.WriteListBegin();
    writer.WriteInteger(std::int64_t(FCoefficients.size()));
    for (float v : FCoefficients)
        writer.WriteFloat(double(v));
    writer.WriteListEnd();
}

std::vector<float> TFXRectKernel::GetCoefficients() const
{
    auto guard = Lock().Read();
    return FCoefficients;
}

std::vector<std::int32_t> TFXRectKernel::GetIntKernel() const
{
    auto guard = Lock().Read();
    return FIntKernel;
}

std::int32_t TFXRectKernel::GetDivisor() const
{
    auto guard = Lock().Read();
    return FDivisor;
}

// ---------------------------------------------------------------- TFXRectKernelFilter

TFXRectKernelFilter::TFXRectKernelFilter(TKTComponent* owner)
    : TFXCommonROIMatrixFilterIntermidiate(owner), FKernel(*this)
{
}

const TFXClassInfo& TFXRectKernelFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXRectKernelFilter::GetKernel>(
            {.Name = "Kernel", .Help = "the coefficients (stored as MatrixData)"}),
    };
    static const TFXClassInfo info{"TFXRectKernelFilter",
                                   &TFXCommonROIMatrixFilterIntermidiate::ClassInfo(), kProps};
    return info;
}

void TFXRectKernelFilter::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
    FFormat = buffer.GetFormat();
}

void TFXRectKernelFilter::Changed(TKTPersistent& sender)
{
    if (&sender == &GetMaskSize())
        FKernel.RecalcArray(GetMaskSize().GetWidth(), GetMaskSize().GetHeight());
}

void TFXRectKernelFilter::StreamStart()
{
    TFXCommonROIMatrixFilterIntermidiate::StreamStart();
    FKernel.PopulateIntArray();
}

TFXMaskReach TFXRectKernelFilter::GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor)
{
    return FXKernelMaskReach(maskSize, anchor);
}

bool TFXRectKernelFilter::PerformFilter(const std::uint8_t* source, int sourceStride,
                                        std::uint8_t* destination, int destinationStride,
                                        TFXImageSize roiSize, TFXImageSize maskSize,
                                        TFXPoint anchor, TFXVideoFormat format)
{
    const IppiSize size{roiSize.width, roiSize.height};
    const IppiSize mask{maskSize.width, maskSize.height};
    const IppiPoint at{anchor.x, anchor.y};
    const Ipp32s* kernel = FKernel.FIntKernel.data();
    const int divisor = FKernel.FDivisor;
    IppStatus status = ippStsNoOperation;
    // A kernel smaller than the mask (Width and Height set apart from it) would be read past
    // its end: the region keeps the input instead.
    if (FKernel.FIntKernel.size() >= std::size_t(mask.width) * std::size_t(mask.height)) {
        switch (format) {
        case vfRGB24:
            status = ipp::ippiFilter_8u_C3R(source, sourceStride, destination, destinationStride,
                                            size, kernel, mask, at, divisor);
            break;
        case vfRGB32:
            status = ipp::ippiFilter_8u_AC4R(source, sourceStride, destination, destinationStride,
                                             size, kernel, mask, at, divisor);
            break;
        case vfGray8:
            status = ipp::ippiFilter_8u_C1R(source, sourceStride, destination, destinationStride,
                                            size, kernel, mask, at, divisor);
            break;
        case vfGray16:
            status = ipp::ippiFilter_16u_C1R(reinterpret_cast<const Ipp16u*>(source), sourceStride,
                                             reinterpret_cast<Ipp16u*>(destination),
                                             destinationStride, size, kernel, mask, at, divisor);
            break;
        default:
            break;
        }
    }
    if (status != ippStsNoErr)
        KeepSourceRegion(source, sourceStride, destination, destinationStride, roiSize, format);
    // Intentional: false after the four-channel variant, true otherwise; the base ignores it.
    return format != vfRGB32;
}

void RegisterFXRectKernelFilter(TFXPalette& palette)
{
    palette.Register<TFXRectKernelFilter>(kFXPalettePage);
}

} // namespace framix
