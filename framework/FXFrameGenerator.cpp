// SPDX-License-Identifier: MIT
// Announcing, pumping, stamping and sending generated frames.
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

void TFXFrameGenerator::StartLocked()
{
    FHooks.IntStart();
    FHooks.GetImageSize(FWidth, FHeight);
    FFormat = FHooks.GetVideoFormat();
    FDelay = FrameDelayOf(FHooks.GetGeneratorFrameRate());
    FCount = 0;
    FStarted = true;
    Announce();
    FOutput.Notify(TPXStartPumpOperation());
}

void TFXFrameGenerator::Start()
{
    TKTLockGuard guard(FLock);
    StartLocked();
}

bool TFXFrameGenerator::Pump()
{
    FXImageBufferPtr frame;
    {
        TKTLockGuard guard(FLock);
        if (!FStarted)
            StartLocked();
        int width = 0;
        int height = 0;
        FHooks.GetImageSize(width, height);
        const TFXVideoFormat format = FHooks.GetVideoFormat();
        const std::int64_t delay = FrameDelayOf(FHooks.GetGeneratorFrameRate());
        if (width != FWidth || height != FHeight || format != FFormat || delay != FDelay) {
            FWidth = width;
            FHeight = height;
            FFormat = format;
            FDelay = delay;
            Announce();
        }
        frame = new TFXImageBuffer(FWidth, FHeight, FFormat);
        if (!FHooks.FillFrame(*frame))
            return false;
        frame->GetSequenceStamp().SetBufferNumber(FCount);
        frame->GetTimeStamp().SetBegin(FCount * FDelay);
        frame->GetTimeStamp().SetEnd((FCount + 1) * FDelay);
        frame->GetTimeStamp().SetAvailable(FDelay > 0);
        frame->GetTimeCode().SetFrame(FCount);
        ++FCount;
    }
    FOutput.SendBuffer(std::move(frame));
    return true;
}

void TFXFrameGenerator::Stop()
{
    {
        TKTLockGuard guard(FLock);
        if (!FStarted)
            return;
        FHooks.IntStop();
        FStarted = false;
    }
    FOutput.Notify(TPXStopOperation());
}

bool TFXFrameGenerator::HandleQuery(const IPXNotifyOperation& operation)
{
    if (operation.As<TPXQueryStreamOperation>()) {
        TKTLockGuard guard(FLock);
        if (FStarted)
            Announce();
        return true;
    }
    return false;
}

} // namespace framix
