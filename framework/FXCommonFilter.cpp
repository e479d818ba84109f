// SPDX-License-Identifier: MIT
// Stream start and the per-frame cycle of single-input filters.
#include "framework/FXCommonFilter.h"

#include <string>

#include "framework/FXError.h"

namespace framix {

TFXCommonFilter::TFXCommonFilter(TKTComponent* owner)
    : TQNBasicThreadedEnableFilter(owner),
      FInputPin(*this, "InputPin", Lock(), SinkDispatcher()),
      FOutputPin(*this, "OutputPin", Lock(), SourceDispatcher())
{
}

const TFXClassInfo& TFXCommonFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXPin<&TFXCommonFilter::GetImageInputPin>({.Name = "InputPin", .Help = "frames in"}),
        FXPin<&TFXCommonFilter::GetImageOutputPin>({.Name = "OutputPin", .Help = "frames out"}),
    };
    static const TFXClassInfo info{"TFXCommonFilter", &TQNBasicThreadedEnableFilter::ClassInfo(),
                                   kProps};
    return info;
}

TFXStreamInfo TFXCommonFilter::GetStreamInfo() const
{
    auto guard = Lock().Read();
    return FStream;
}

// ---------------------------------------------------------------- stream start

void TFXCommonFilter::IntSingleOperation(const IPXNotifyOperation& operation)
{
    if (const auto* start = operation.As<TPXStartFrameOperation>())
        StartFrame(*start);
    else
        TQNBasicThreadedEnableFilter::IntSingleOperation(operation);
}

void TFXCommonFilter::StartFrame(const TPXStartFrameOperation& operation)
{
    if (operation.Width <= 0 || operation.Height <= 0 || operation.Width > kFXMaxImageSide ||
        operation.Height > kFXMaxImageSide)
        throw EFXError(GetPathName() + ": stream announced with an invalid size of " +
                       std::to_string(operation.Width) + " x " + std::to_string(operation.Height));
    const TFXVideoFormat announced = FXCheckedVideoFormat(operation.Format);
    TKTLockGuard guard(Lock());
    FInputStream = {operation.Width,    operation.Height,      operation.FrameDelay, announced,
                    operation.Reserved, operation.AspectWidth, operation.AspectHeight};
    FHaveInputStream = true;
    FReannounce = false;
    int width = operation.Width;
    int height = operation.Height;
    TFXVideoFormat format = announced;
    std::uint32_t aspectWidth = operation.AspectWidth;
    std::uint32_t aspectHeight = operation.AspectHeight;
    SetSizeRate(width, height, format, operation.FrameDelay, operation.Reserved, aspectWidth,
                aspectHeight);
    StreamStart();
}

void TFXCommonFilter::SetSizeRate(int& width, int& height, TFXVideoFormat& format,
                                  std::int64_t frameDelay, std::uint32_t reserved,
                                  std::uint32_t& aspectWidth, std::uint32_t& aspectHeight)
{
    // Frames leave in the format admission gives them, so that is what is announced.
    if (IsEnabled())
        format = AdmittedFormat(format);
    FStream = {width, height, frameDelay, format, reserved, aspectWidth, aspectHeight};
    OutputPinsNotify(TPXStartFrameOperation(width, height, frameDelay, format, reserved,
                                            aspectWidth, aspectHeight));
}

void TFXCommonFilter::EnabledChanged()
{
    // The announcement depends on the switch; the frame thread repeats it before its next frame.
    RequestReannounce();
}

void TFXCommonFilter::RequestReannounce()
{
    auto guard = Lock().Write();
    FReannounce = FHaveInputStream;
}

// ---------------------------------------------------------------- one frame

void TFXCommonFilter::IntSingleBufferOperation(const FXImageBufferPtr& buffer)
{
    if (!buffer)
        return;
    {
        TKTLockGuard guard(Lock());
        if (FReannounce) {
            const TFXStreamInfo& s = FInputStream;
            StartFrame(TPXStartFrameOperation(s.Width, s.Height, s.FrameDelay, s.Format,
                                              s.Reserved, s.AspectWidth, s.AspectHeight));
        }
    }
    // The filter's own view of the frame: converting it never touches the sender's buffer.
    FXImageBufferPtr input = new TFXImageBuffer(*buffer);
    FXImageBufferPtr output = new TFXImageBuffer();
    if (IntBufferOperation(*input, *output) && !output->IsEmpty())
        FOutputPin.SendBuffer(output);
}

bool TFXCommonFilter::IntBufferOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    if (!IsEnabled()) {
        ProcessDisabled(input, output);
        return true;
    }
    TKTLockGuard guard(Lock());
    SetVideoFormat(input);
    output.CopyFrom(input);
    InternalOperation(input, output);
    return true;
}

void TFXCommonFilter::InternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    FilterInternalOperation(input, output);
}

void TFXCommonFilter::ProcessDisabled(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    RestoreBufferSize(input, output);
}

void TFXCommonFilter::SetVideoFormat(IFXImageBuffer& buffer)
{
    if (buffer.GetFormat() != vfRGB24)
        buffer.ConvertFormat(vfRGB24);
}

void TFXCommonFilter::AdmitFormats(IFXImageBuffer& buffer, TFXFormatSet native)
{
    if (!native.Contains(buffer.GetFormat()))
        TFXCommonFilter::SetVideoFormat(buffer);
}

TFXVideoFormat TFXCommonFilter::AdmittedFormat(TFXVideoFormat format)
{
    // Ask the filter's own SetVideoFormat with a tiny frame: whatever it decides for frames is,
    // by construction, what the announcement says.
    FXImageBufferPtr probe = new TFXImageBuffer(2, 2, format);
    SetVideoFormat(*probe);
    return probe->GetFormat();
}

} // namespace framix
