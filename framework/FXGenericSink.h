// SPDX-License-Identifier: MIT
// A sink that hands every announcement and frame to application callbacks.
#pragma once

#include <functional>

#include "framework/FXSinkFilter.h"

namespace framix {

// OnVideoStreamStart receives each stream announcement, OnProcessImage each frame, OnStop the
// end of a stream; all on the sender's thread (or the worker), under the component lock.
class TFXGenericSink : public TFXSinkFilter {
public:
    using TFXStreamEvent =
        std::function<void(TFXGenericSink& sender, int width, int height, TFXVideoFormat format)>;
    using TFXImageEvent = std::function<void(TFXGenericSink& sender, IFXImageBuffer& buffer)>;
    using TFXStopEvent = std::function<void(TFXGenericSink& sender)>;

    explicit TFXGenericSink(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXStreamEvent OnVideoStreamStart;
    TFXImageEvent OnProcessImage;
    TFXStopEvent OnStop;

protected:
    void VideoStreamStart(int width, int height, int format) override;
    void ProcessImage(IFXImageBuffer& buffer) override;
    void StreamStop() override;
};

} // namespace framix
