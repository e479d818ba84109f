// SPDX-License-Identifier: MIT
// A region-of-interest filter that generates frames of its own when nothing feeds it.
#pragma once

#include "framework/FXCommonROIFilter.h"
#include "framework/FXFrameGenerator.h"
#include "framework/FXPumpSource.h"
#include "framework/FXSizeGroups.h"

namespace framix {

// With its input connected it filters like any region-of-interest filter. With the input
// unconnected it is a source: each pump makes a frame of `ImageSize` in GetVideoFormat, lets
// GenerateFrame draw it, stamps it at `FrameRate` and sends it.
class TFXCommonROIGenFilter : public TFXCommonROIFilter,
                              public IFXPumpSource,
                              protected IFXGeneratorHooks {
public:
    static constexpr TFXFloatProp kFrameRate{.Name = "FrameRate",
                                             .Help = "frames per second when generating",
                                             .Default = 25.0,
                                             .Min = 0.001,
                                             .Max = 1000.0};

    explicit TFXCommonROIGenFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXFilterOutputSize& GetImageSize() { return FImageSize; }
    void SetImageSize(const TFXFilterOutputSize& value) { FImageSize.Assign(value); }
    double GetFrameRate() const;
    void SetFrameRate(double value);

    bool IsActiveSource() override { return !GetImageInputPin().IsConnected(); }
    void StartSource() override;
    bool PumpFrame() override;
    void StopSource() override;
    double GetSourceFrameRate() override { return GetFrameRate(); }

protected:
    bool SourceDispatch(TPXBasicPin& pin, TPXDataType type, const IPXNotifyOperation& operation,
                        TPXNotifyState state) override;
    virtual void RequestPump(int count);
    void IntStop() override {}
    void IntStart() override {}
    void GetImageSize(int& width, int& height) override;
    TFXVideoFormat GetVideoFormat() override { return vfRGB32; }
    // Draws one generated frame (size and format already set), under the lock.
    void GenerateFrame(IFXImageBuffer& buffer) override {}
    double GetGeneratorFrameRate() override { return FFrameRate; }

private:
    TFXFilterOutputSize FImageSize;
    double FFrameRate = kFrameRate.Default;
    TFXFrameGenerator FGenerator;
};

} // namespace framix
