// SPDX-License-Identifier: MIT
// Announcing, stamping and sending generated frames.
#include "framework/FXFrameGenerator.h"

#include <algorithm>
#include <cmath>

namespace framix {

std::int64_t TFXFrameGenerator::FrameDelayOf(double frameRate)
{
    if (!(frameRate > 0))
        return 0;
    return std::max<std::int64_t>(1, std::llround(1e7 / frameRate));
}

void TFXFrameGenerator::SetStreamFlags(std::uint32_t reserved, std::uint32_t aspectWidth,
                                       std::uint32_t aspectHeight)
{
    FReserved = reserved;
    FAspectWidth = aspectWidth;
    FAspectHeight = aspectHeight;
}

void TFXFrameGenerator::Announce()
{
    FOutput.Notify(TPXStartFrameOperation(FWidth, FHeight, FDelay, FFormat, FReserved,
                                          FAspectWidth, FAspectHeight));
}

void TFXFrameGenerator::Start(int width, int height, TFXVideoFormat format, double frameRate)
{
    FWidth = width;
    FHeight = height;
    FFormat = format;
    FDelay = FrameDelayOf(frameRate);
    FCount = 0;
    FStarted = true;
    Announce();
    FOutput.Notify(TPXStartPumpOperation());
}

void TFXFrameGenerator::Reannounce()
{
    if (FStarted)
        Announce();
}

FXImageBufferPtr TFXFrameGenerator::Produce(int width, int height, TFXVideoFormat format,
                                            double frameRate,
                                            const std::function<void(IFXImageBuffer&)>& fill)
{
    if (!FStarted) {
        Start(width, height, format, frameRate);
    } else if (width != FWidth || height != FHeight || format != FFormat ||
               FrameDelayOf(frameRate) != FDelay) {
        FWidth = width;
        FHeight = height;
        FFormat = format;
        FDelay = FrameDelayOf(frameRate);
        Announce();
    }
    FXImageBufferPtr frame = new TFXImageBuffer(FWidth, FHeight, FFormat);
    fill(*frame);
    frame->GetSequenceStamp().SetBufferNumber(FCount);
    frame->GetTimeStamp().SetBegin(FCount * FDelay);
    frame->GetTimeStamp().SetEnd((FCount + 1) * FDelay);
    frame->GetTimeStamp().SetAvailable(FDelay > 0);
    frame->GetTimeCode().SetFrame(FCount);
    ++FCount;
    return frame;
}

void TFXFrameGenerator::Stop()
{
    if (!FStarted)
        return;
    FStarted = false;
    FOutput.Notify(TPXStopOperation());
}

} // namespace framix
