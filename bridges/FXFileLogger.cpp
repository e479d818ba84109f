// SPDX-License-Identifier: MIT
// Writing a stream of frames as Y4M, PNG or PNM/PAM.
#include "bridges/FXFileLogger.h"

#include <cctype>

#include "bridges/FXImageSequenceWriter.h"
#include "bridges/FXY4MFormat.h"
#include "bridges/FXY4MWriter.h"
#include "framework/properties/FXPalette.h"

namespace framix {

namespace {

std::string Describe(TFXVideoFormat format, int width, int height)
{
    return std::to_string(width) + "x" + std::to_string(height) + " " +
           std::string(FXVideoFormatName(format));
}

char Interlacing(std::uint32_t flags)
{
    switch (flags & kFXStartFlagFieldMask) {
    case kFXStartFlagTopFieldFirst:
        return 't';
    case kFXStartFlagBottomFieldFirst:
        return 'b';
    case kFXStartFlagMixedFields:
        return 'm';
    default:
        return 'p';
    }
}

} // namespace

TFXFileLogger::TFXFileLogger(TKTComponent* owner) : TFXSinkFilter(owner) {}

TFXFileLogger::~TFXFileLogger() = default;

const TFXClassInfo& TFXFileLogger::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXFileLogger::GetFileName, &TFXFileLogger::SetFileName>(kFileName),
    };
    static const TFXClassInfo info{"TFXFileLogger", &TFXSinkFilter::ClassInfo(), kProps};
    return info;
}

std::string TFXFileLogger::GetFileName() const
{
    auto guard = Lock().Read();
    return FFileName;
}

void TFXFileLogger::SetFileName(std::string value)
{
    Lock().Store(FFileName, std::move(value));
}

std::int64_t TFXFileLogger::GetFramesWritten() const
{
    auto guard = Lock().Read();
    return FFrames;
}

TFXVideoFormat TFXFileLogger::Y4MFormatFor(TFXVideoFormat format)
{
    switch (format) {
    case vfI420:
    case vfYV12:
    case vfNV12:
        return vfI420;
    case vfYUY2:
    case vfUYVY:
    case vfI422:
        return vfI422;
    case vfI444:
    case vfYUVA444:
    case vfGray8:
    case vfGray16:
        return format;
    default:
        return vfI444; // every RGB layout: full chroma keeps the colours closest
    }
}

TFXVideoFormat TFXFileLogger::ImageFormatFor(TFXVideoFormat format)
{
    switch (format) {
    case vfGray8:
    case vfGray16:
    case vfRGB24:
    case vfRGB32:
    case vfRGB48:
    case vfRGBA64:
        return format;
    case vfYUVA444:
        return vfRGB32;
    default:
        return vfRGB24;
    }
}

void TFXFileLogger::Fail(const std::string& message) const
{
    throw EFXError(GetPathName() + ": " + message);
}

bool TFXFileLogger::IsY4M() const
{
    return FFileName == "-" || FXIsY4MFileName(FFileName);
}

void TFXFileLogger::IntSingleOperation(const IPXNotifyOperation& operation)
{
    if (const auto* start = operation.As<TPXStartFrameOperation>()) {
        TKTLockGuard guard(Lock());
        FStream = std::make_unique<TPXStartFrameOperation>(*start);
    }
    TFXSinkFilter::IntSingleOperation(operation);
}

void TFXFileLogger::OpenY4M(TFXVideoFormat format, int width, int height)
{
    const std::int64_t period = FStream ? FStream->FrameDelay : 0;
    TFXY4MStreamInfo info =
        TFXY4MStreamInfo::For(format, width, height, FXFrameRateFromPeriod(period));
    if (period <= 0)
        info.FrameRate.reset();
    if (FStream) {
        info.Interlacing = Interlacing(FStream->Reserved);
        if (FStream->AspectWidth != 1 || FStream->AspectHeight != 1)
            info.PixelAspect = TFXRatio{int(FStream->AspectWidth), int(FStream->AspectHeight)};
    }
    FY4M = std::make_unique<TFXY4MWriter>(FFileName, std::move(info));
    FFrames = 0;
}

void TFXFileLogger::ProcessImage(IFXImageBuffer& buffer)
{
    if (FFileName.empty())
        Fail("FileName is empty (name a .y4m file, '-' for standard output, or images)");
    const TFXVideoFormat format = buffer.GetFormat();
    const int width = buffer.GetWidth();
    const int height = buffer.GetHeight();
    try {
        const bool y4m = IsY4M();
        const TFXVideoFormat target = y4m ? Y4MFormatFor(format) : ImageFormatFor(format);
        if (y4m) {
            if (!FY4M) {
                OpenY4M(target, width, height);
            } else if (target != FY4M->Info().Format || width != FY4M->Info().Width ||
                       height != FY4M->Info().Height) {
                throw EFXError(
                    (FFileName == "-" ? std::string("standard output") : FFileName) +
                    ": a Y4M stream holds frames of one size and layout: it was started with " +
                    Describe(FY4M->Info().Format, FY4M->Info().Width, FY4M->Info().Height) +
                    " frames, frame " + std::to_string(FFrames + 1) + " is " +
                    Describe(format, width, height));
            }
        } else if (!FImages) {
            FImages = std::make_unique<TFXImageSequenceWriter>(FFileName);
            FFrames = 0;
        }
        FXImageBufferPtr converted;
        if (format != target) {
            converted = new TFXImageBuffer(buffer); // shares the pixels; conversion copies
            converted->ConvertFormat(target);
        }
        const TFXConstPlanes planes =
            converted ? converted->GetReadPlanes() : buffer.GetReadPlanes();
        if (y4m)
            FY4M->WriteFrame(target, width, height, planes);
        else
            FImages->WriteFrame(target, width, height, planes);
        ++FFrames;
    } catch (const EFXError& e) {
        Fail(e.what());
    }
}

void TFXFileLogger::StreamStop()
{
    // A stream that ended before its first frame still leaves a valid (empty) Y4M file.
    if (!FY4M && FFrames == 0 && FStream && IsY4M()) {
        try {
            OpenY4M(Y4MFormatFor(FStream->Format), FStream->Width, FStream->Height);
        } catch (const EFXError&) {
            // Nothing was written and the stream is over; an impossible header leaves no file.
        }
    }
    Close();
}

void TFXFileLogger::Close()
{
    FY4M.reset();
    FImages.reset();
}

void RegisterFXFileLogger(TFXPalette& palette)
{
    palette.Register<TFXFileLogger>(kFXPalettePage);
}

} // namespace framix
