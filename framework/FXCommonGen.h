// SPDX-License-Identifier: MIT
// The base of generators: components with no image input that make frames when pumped.
#pragma once

#include "framework/FXFrameGenerator.h"
#include "framework/FXPumpSource.h"
#include "framework/FXSizeGroups.h"
#include "framework/QNBasicCommonFilter.h"

namespace framix {

// Publishes `ImageSize` (default 320 x 240) and `FrameRate` (default 25) and an "OutputPin".
// Each pump makes one frame of ImageSize in GetVideoFormat, lets GenerateFrame draw it (under
// the component lock), stamps it and sends it. A pump request arriving from downstream pumps as
// many frames as it asks for; a stream query repeats the announcement.
class TFXCommonGen : public TQNBasicCommonFilter,
                     public IFXPumpSource,
                     protected IFXGeneratorHooks {
public:
    static constexpr TFXFloatProp kFrameRate{.Name = "FrameRate",
                                             .Help = "frames per second of the generated stream",
                                             .Default = 25.0,
                                             .Min = 0.001,
                                             .Max = 1000.0};

    explicit TFXCommonGen(TKTComponent* owner);
    ~TFXCommonGen() override;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXFilterOutputSize& GetImageSize() { return FImageSize; }
    void SetImageSize(const TFXFilterOutputSize& value) { FImageSize.Assign(value); }
    double GetFrameRate() const;
    void SetFrameRate(double value);
    TFXPXImageSourcePin& GetImageOutputPin() { return FOutputPin; }
    TPXSourcePin* GetOutputPin() override { return &FOutputPin; }

    bool IsActiveSource() override { return GetCanStart(); }
    void StartSource() override;
    bool PumpFrame() override;
    void StopSource() override;
    double GetSourceFrameRate() override { return GetFrameRate(); }

protected:
    bool SourceDispatch(TPXBasicPin& pin, TPXDataType type, const IPXNotifyOperation& operation,
                        TPXNotifyState state) override;
    virtual void RequestPump(int count);
    // Called at the start of a stream, under the lock, before the announcement (open files,
    // reset state).
    void IntStart() override {}
    void IntStop() override {}
    virtual bool GetCanStart() { return true; }
    // One frame: returns false when the generator has no more frames.
    virtual bool IntPump();
    virtual void SetRate(double rate) { SetFrameRate(rate); }
    // Draws one frame; the buffer has the stream's size and format. Called under the lock.
    void GenerateFrame(IFXImageBuffer& buffer) override {}
    TFXVideoFormat GetVideoFormat() override { return vfRGB24; }
    void GetImageSize(int& width, int& height) override;
    double GetGeneratorFrameRate() override { return FFrameRate; }

private:
    TFXPXImageSourcePin FOutputPin;
    TFXFilterOutputSize FImageSize;
    double FFrameRate = kFrameRate.Default;
    TFXFrameGenerator FGenerator;
};

} // namespace framix
