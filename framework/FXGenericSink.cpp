// SPDX-License-Identifier: MIT
// The callback sink.
#include "framework/FXGenericSink.h"

#include "framework/properties/FXPalette.h"

namespace framix {

TFXGenericSink::TFXGenericSink(TKTComponent* owner) : TFXSinkFilter(owner) {}

const TFXClassInfo& TFXGenericSink::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXEvent({.Name = "OnVideoStreamStart", .Help = "a stream was announced"}),
        FXEvent({.Name = "OnProcessImage", .Help = "a frame arrived"}),
        FXEvent({.Name = "OnStop", .Help = "the stream ended"}),
    };
    static const TFXClassInfo info{"TFXGenericSink", &TFXSinkFilter::ClassInfo(), kProps};
    return info;
}

void TFXGenericSink::VideoStreamStart(int width, int height, int format)
{
    if (OnVideoStreamStart)
        OnVideoStreamStart(*this, width, height, TFXVideoFormat(format));
}

void TFXGenericSink::ProcessImage(IFXImageBuffer& buffer)
{
    if (OnProcessImage)
        OnProcessImage(*this, buffer);
}

void TFXGenericSink::StreamStop()
{
    if (OnStop)
        OnStop(*this);
}

void RegisterFXGenericSink(TFXPalette& palette) { palette.Register<TFXGenericSink>(kFXPalettePage); }

} // namespace framix
