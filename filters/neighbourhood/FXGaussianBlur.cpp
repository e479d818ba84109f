// SPDX-License-Identifier: MIT
// The Gaussian blur and its kernel group.
#include "filters/neighbourhood/FXGaussianBlur.h"

#include "framework/FXMakeGaussianKernel.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

// ---------------------------------------------------------------- TFXGaussianKernel

TFXGaussianKernel::TFXGaussianKernel(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange)
    : TFXMaskSize(owner, lock, std::move(onChange), false, std::uint16_t(kWidth.Default),
                  std::uint16_t(kHeight.Default))
{
}

const TFXClassInfo& TFXGaussianKernel::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXSize::GetWidth, &TFXMaskSize::SetWidth>(kWidth),
        FXProp<&TFXSize::GetHeight, &TFXMaskSize::SetHeight>(kHeight),
        FXProp<&TFXGaussianKernel::GetSigmaX, &TFXGaussianKernel::SetSigmaX>(kSigmaX),
        FXProp<&TFXGaussianKernel::GetSigmaY, &TFXGaussianKernel::SetSigmaY>(kSigmaY),
    };
    static const TFXClassInfo info{"TFXGaussianKernel", &TFXMaskSize::ClassInfo(), kProps};
    return info;
}

float TFXGaussianKernel::GetSigmaX() const
{
    auto guard = Lock().Read();
    return FSigmaX;
}

float TFXGaussianKernel::GetSigmaY() const
{
    auto guard = Lock().Read();
    return FSigmaY;
}

void TFXGaussianKernel::SetSigmaX(float value)
{
    StoreAndNotify(FSigmaX, value);
}
void TFXGaussianKernel::SetSigmaY(float value)
{
    StoreAndNotify(FSigmaY, value);
}

// ---------------------------------------------------------------- TFXGaussianBlur

TFXGaussianBlur::TFXGaussianBlur(TKTComponent* owner)
    : TFXCommonROIFilter(owner),
      FKernel(this, Lock(), [this](TKTPersistent& sender) { Changed(sender); })
{
}

const TFXClassInfo& TFXGaussianBlur::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXGaussianBlur::GetKernel>({.Name = "Kernel", .Help = "the Gaussian tables"}),
    };
    static const TFXClassInfo info{"TFXGaussianBlur", &TFXCommonROIFilter::ClassInfo(), kProps};
    return info;
}

std::vector<float> TFXGaussianBlur::GetKernelX() const
{
    auto guard = Lock().Read();
    return FKernelX;
}

std::vector<float> TFXGaussianBlur::GetKernelY() const
{
    auto guard = Lock().Read();
    return FKernelY;
}

void TFXGaussianBlur::StreamStart()
{
    TFXCommonROIFilter::StreamStart();
    auto guard = Lock().Write();
    FKernelX.resize(FKernel.GetWidth());
    FKernelY.resize(FKernel.GetHeight());
    FXMakeGaussianKernelS(FKernelX.data(), int(FKernelX.size()) - 1, double(FKernel.GetSigmaX()));
    FXMakeGaussianKernelS(FKernelY.data(), int(FKernelY.size()) - 1, double(FKernel.GetSigmaY()));
}

void TFXGaussianBlur::Changed(TKTPersistent& sender)
{
    StreamStart();
}

void TFXGaussianBlur::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
}

void TFXGaussianBlur::GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor)
{
    maskSize = {FKernel.GetWidth(), FKernel.GetHeight()};
    // Intentional: (taps + 1) div 2 rather than the centre tap; the output keeps that shift.
    anchor = {(maskSize.width + 1) / 2, (maskSize.height + 1) / 2};
}

TFXMaskReach TFXGaussianBlur::GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor)
{
    // The reported mask is Width x Height, but the column pass runs the Width table down and the
    // row pass the Height table across: the region is shrunk by what the passes really read.
    return FXKernelMaskReach({maskSize.height, maskSize.width}, {anchor.y, anchor.x});
}

void TFXGaussianBlur::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    const TFXVideoFormat format = input.GetFormat();
    TFXImageSize roi = input.GetSize();
    const TFXRect processed = GetProcessedRect(roi.width, roi.height);
    if (processed.IsEmpty())
        return; // nothing reachable: the output keeps the input image
    const int columnAnchor = (FKernel.GetWidth() + 1) / 2;
    const int rowAnchor = (FKernel.GetHeight() + 1) / 2;
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination = PrepareOutput(input, output, processed);
    ReclaculateRoiAndOffset(roi, source, input.GetRowStride(), output, destination, format);

    const int sourceStride = input.GetRowStride();
    const int destinationStride = output.GetRowStride();
    const IppiSize size{roi.width, roi.height};
    // The tables hold Width and Height taps once built; before the first build they are empty
    // and the primitives refuse a size of 0.
    const int columnTaps = int(FKernelX.size());
    const int rowTaps = int(FKernelY.size());
    auto passes = [&](auto column, auto row, auto sample) {
        using T = std::remove_pointer_t<decltype(sample)>;
        const T* s = reinterpret_cast<const T*>(source);
        T* d = reinterpret_cast<T*>(destination);
        // Intentional: the column pass uses the Width/SigmaX table, and the row pass reads the
        // unfiltered source again and overwrites it; the output is the row pass alone. Both
        // write the same region, so the column pass shows only where the row pass refuses:
        // running the row pass first and the column pass only then gives the same bytes at
        // half the cost.
        if (row(s, sourceStride, d, destinationStride, size, FKernelY.data(), rowTaps,
                rowAnchor) == ippStsNoErr)
            return;
        // The row pass refused (a one-tap table): the column pass's result stands, unless it
        // refuses too, and then the region must still show the input.
        if (column(s, sourceStride, d, destinationStride, size, FKernelX.data(), columnTaps,
                   columnAnchor) != ippStsNoErr)
            output.CopyFrom(input);
    };
    switch (format) {
    case vfRGB24:
        passes(ipp::ippiFilterColumn32f_8u_C3R, ipp::ippiFilterRow32f_8u_C3R, (Ipp8u*)nullptr);
        break;
    case vfRGB32:
        passes(ipp::ippiFilterColumn32f_8u_C4R, ipp::ippiFilterRow32f_8u_C4R, (Ipp8u*)nullptr);
        break;
    case vfGray8:
        passes(ipp::ippiFilterColumn32f_8u_C1R, ipp::ippiFilterRow32f_8u_C1R, (Ipp8u*)nullptr);
        break;
    case vfGray16:
        passes(ipp::ippiFilterColumn32f_16u_C1R, ipp::ippiFilterRow32f_16u_C1R, (Ipp16u*)nullptr);
        break;
    default:
        output.CopyFrom(input); // not admitted: leave the frame as it came
        break;
    }
}

void RegisterFXGaussianBlur(TFXPalette& palette)
{
    palette.Register<TFXGaussianBlur>(kFXPalettePage);
}

} // namespace framix
