// SPDX-License-Identifier: MIT
// Playing Y4M streams, image sequences and still images as a frame source.
#include "bridges/FXFilePlayer.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "bridges/FXImageSequenceReader.h"
#include "bridges/FXY4MReader.h"
#include "framework/properties/FXPalette.h"

namespace framix {

namespace {

// True when the stream starts with the Y4M signature. Standard input is peeked at by one
// byte, which is pushed back ('Y' starts a Y4M stream, 'P' a PNM image).
bool LooksLikeY4M(const std::string& fileName)
{
    if (fileName == "-") {
        const int c = std::getc(stdin);
        if (c == EOF)
            return true; // an empty stream: the Y4M reader reports it
        std::ungetc(c, stdin);
        return c == 'Y';
    }
    std::error_code error;
    if (!std::filesystem::is_regular_file(fileName, error))
        return false;
    char magic[9] = {};
    std::ifstream(fileName, std::ios::binary).read(magic, sizeof magic);
    return std::memcmp(magic, "YUV4MPEG2", sizeof magic) == 0;
}

std::uint32_t FieldFlags(const std::optional<char>& interlacing)
{
    switch (interlacing.value_or('p')) {
    case 't':
        return kFXStartFlagTopFieldFirst;
    case 'b':
        return kFXStartFlagBottomFieldFirst;
    case 'm':
        return kFXStartFlagMixedFields;
    default:
        return 0;
    }
}

} // namespace

TFXFilePlayer::TFXFilePlayer(TKTComponent* owner)
    : TQNBasicCommonFilter(owner), FOutputPin(*this, "OutputPin", Lock(), SourceDispatcher()),
      FGenerator(*this, Lock(), FOutputPin)
{
}

TFXFilePlayer::~TFXFilePlayer() = default;

const TFXClassInfo& TFXFilePlayer::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXFilePlayer::GetFileName, &TFXFilePlayer::SetFileName>(kFileName),
        FXProp<&TFXFilePlayer::GetFrameRate, &TFXFilePlayer::SetFrameRate>(kFrameRate),
        FXPin<&TFXFilePlayer::GetImageOutputPin>({.Name = "OutputPin", .Help = "frames out"}),
    };
    static const TFXClassInfo info{"TFXFilePlayer", &TQNBasicCommonFilter::ClassInfo(), kProps};
    return info;
}

std::string TFXFilePlayer::GetFileName() const
{
    auto guard = Lock().Read();
    return FFileName;
}

void TFXFilePlayer::SetFileName(std::string value)
{
    Lock().Store(FFileName, std::move(value));
}

double TFXFilePlayer::GetFrameRate() const
{
    auto guard = Lock().Read();
    return FFrameRate;
}

void TFXFilePlayer::SetFrameRate(double value)
{
    Lock().StoreClamped(FFrameRate, value, kFrameRate);
}

std::int64_t TFXFilePlayer::GetFramesPlayed() const
{
    auto guard = Lock().Read();
    return FPlayed;
}

double TFXFilePlayer::GetSourceFrameRate()
{
    auto guard = Lock().Read();
    return FY4M || FImages ? FStreamRate : FFrameRate;
}

void TFXFilePlayer::Fail(const std::string& message) const
{
    throw EFXError(GetPathName() + ": " + message);
}

void TFXFilePlayer::Open()
{
    Close();
    if (FFileName.empty())
        Fail("FileName is empty (name a Y4M file, '-' for standard input, or images)");
    try {
        if (FXIsY4MFileName(FFileName) || LooksLikeY4M(FFileName)) {
            FY4M = std::make_unique<TFXY4MReader>(FFileName);
            const TFXY4MStreamInfo& info = FY4M->Info();
            const std::int64_t period = info.FramePeriod();
            FStreamRate = period > 0 ? 1e7 / double(period) : 0.0;
            const TFXRatio aspect = info.PixelAspect.value_or(TFXRatio{1, 1});
            FGenerator.SetStreamFlags(FieldFlags(info.Interlacing), std::uint32_t(aspect.Num),
                                      std::uint32_t(aspect.Den));
        } else {
            FImages = std::make_unique<TFXImageSequenceReader>(FFileName);
            FStreamRate = FFrameRate;
            FGenerator.SetStreamFlags(0, 1, 1);
        }
    } catch (const EFXError& e) {
        Close();
        Fail(e.what());
    }
}

void TFXFilePlayer::Close()
{
    FY4M.reset();
    FImages.reset();
}

void TFXFilePlayer::IntStart()
{
    Open();
    FEnded = false;
    FPlayed = 0;
}

void TFXFilePlayer::IntStop()
{
    Close();
    FEnded = true;
}

void TFXFilePlayer::GetImageSize(int& width, int& height)
{
    width = FY4M ? FY4M->Info().Width : FImages->Width();
    height = FY4M ? FY4M->Info().Height : FImages->Height();
}

TFXVideoFormat TFXFilePlayer::GetVideoFormat()
{
    return FY4M ? FY4M->Info().Format : FImages->Format();
}

bool TFXFilePlayer::FillFrame(IFXImageBuffer& buffer)
{
    bool got = false;
    try {
        got = FY4M ? FY4M->ReadFrame(buffer.GetWritePlanes())
                   : FImages->ReadFrame(buffer.GetWritePlanes());
    } catch (const EFXError& e) {
        FEnded = true;
        Fail(e.what());
    }
    if (got)
        ++FPlayed;
    else
        FEnded = true;
    return got;
}

void TFXFilePlayer::StartSource() { FGenerator.Start(); }

bool TFXFilePlayer::PumpFrame()
{
    {
        TKTLockGuard guard(Lock());
        if (FEnded && FGenerator.IsStarted())
            return false;
    }
    return FGenerator.Pump();
}

void TFXFilePlayer::StopSource() { FGenerator.Stop(); }

bool TFXFilePlayer::SourceDispatch(TPXBasicPin& pin, TPXDataType type,
                                   const IPXNotifyOperation& operation, TPXNotifyState state)
{
    if (const auto* request = operation.As<TPXPumpRequestOperation>()) {
        for (int i = 0; i < request->Count && PumpFrame(); ++i) {
        }
        return true;
    }
    return FGenerator.HandleQuery(operation) ||
           TQNBasicCommonFilter::SourceDispatch(pin, type, operation, state);
}

void RegisterFXFilePlayer(TFXPalette& palette)
{
    palette.Register<TFXFilePlayer>(kFXPalettePage);
}

} // namespace framix
