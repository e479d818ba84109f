// SPDX-License-Identifier: MIT
// The base of components with one image input and outputs of other kinds (measurements).
#pragma once

#include "framework/FXPins.h"
#include "framework/QNBasicThreadedEnableFilter.h"

namespace framix {

// Takes frames on "InputPin". A stream announcement calls VideoStreamStart (width, height,
// format ordinal); each frame of an enabled sink reaches ProcessImage. Both run under the
// component lock, on the sender's thread or the worker.
class TFXSinkFilter : public TQNBasicThreadedEnableFilter {
public:
    explicit TFXSinkFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXPXImageSinkPin& GetImageInputPin() { return FInputPin; }
    TPXSinkPin* GetInputPin() override { return &FInputPin; }

protected:
    void IntSingleOperation(const IPXNotifyOperation& operation) override;
    void IntSingleBufferOperation(const FXImageBufferPtr& buffer) override;
    virtual void BaseProcessImage(IFXImageBuffer& buffer);
    virtual void VideoStreamStart(int width, int height, int format) {}
    virtual void ProcessImage(IFXImageBuffer& buffer) {}

private:
    TFXPXImageSinkPin FInputPin;
};

} // namespace framix
