// SPDX-License-Identifier: MIT
// The base of every single-input video filter: stream start and the per-frame cycle.
#pragma once

#include <cstdint>

#include "framework/FXImageBuffer.h"
#include "framework/FXPins.h"
#include "framework/QNBasicThreadedEnableFilter.h"

namespace framix {

// A point as primitives take it (x, y as two 32-bit integers).
struct TFXPoint {
    int x;
    int y;
};

// The stream a filter announced downstream at its last start-frame.
struct TFXStreamInfo {
    int Width = 0;
    int Height = 0;
    std::int64_t FrameDelay = 0;
    TFXVideoFormat Format = vfRGB24;
    std::uint32_t Reserved = 0;
    std::uint32_t AspectWidth = 1;
    std::uint32_t AspectHeight = 1;
};

// One image input pin ("InputPin"), one image output pin ("OutputPin").
//
// Stream start (a TPXStartFrameOperation reaches the input): under the component lock the base
// calls SetSizeRate, whose inherited form records the values and announces them downstream,
// then StreamStart.
//
// One frame: a disabled filter hands it on unchanged (ProcessDisabled). Otherwise, under the
// component lock, SetVideoFormat may convert the filter's own view of the input (the default
// keeps vfRGB24 and converts everything else to it; components admit more), the output is made
// to hold the input image (shared, no copy), FilterInternalOperation does the work, and the
// output is sent. Frames run on the sender's thread, or on the worker with Threading.Enabled.
class TFXCommonFilter : public TQNBasicThreadedEnableFilter {
public:
    explicit TFXCommonFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXPXImageSinkPin& GetImageInputPin() { return FInputPin; }
    TFXPXImageSourcePin& GetImageOutputPin() { return FOutputPin; }
    TPXSourcePin* GetOutputPin() override { return &FOutputPin; }
    TPXSinkPin* GetInputPin() override { return &FInputPin; }
    // What the filter announced at its last stream start.
    TFXStreamInfo GetStreamInfo() const;

protected:
    void IntSingleOperation(const IPXNotifyOperation& operation) override;
    void IntSingleBufferOperation(const FXImageBufferPtr& buffer) override;
    void EnabledChanged() override;

    // The per-frame body: enable switch, admission, the filter's work. Returns whether the
    // output is sent on.
    virtual bool IntBufferOperation(IFXImageBuffer& input, IFXImageBuffer& output);
    virtual bool CanSoftRestart() { return true; }
    virtual bool CanStart() { return true; }
    // Format admission: the default brings every format but vfRGB24 to vfRGB24.
    virtual void SetVideoFormat(IFXImageBuffer& buffer);
    virtual void InternalOperation(IFXImageBuffer& input, IFXImageBuffer& output);
    virtual void ProcessDisabled(IFXImageBuffer& input, IFXImageBuffer& output);
    // The component's work on one frame; the output holds the input image when it is called.
    virtual void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) {}
    virtual bool OptionalStop() { return false; }
    // True when anything is connected to the output.
    virtual bool NeedsOutput() { return FOutputPin.IsConnected(); }
    // Stream negotiation: an override may change the values before calling the inherited
    // operation, or size its working memory after it. The inherited operation records the
    // values and announces them downstream.
    virtual void SetSizeRate(int& width, int& height, TFXVideoFormat& format,
                             std::int64_t frameDelay, std::uint32_t reserved,
                             std::uint32_t& aspectWidth, std::uint32_t& aspectHeight);
    // Moves both pointers to the first pixel of the region to process and shrinks the size to
    // it; this base processes the whole frame.
    virtual void ReclaculateRoiAndOffset(TFXImageSize& roiSize, const std::uint8_t*& source,
                                         int sourceStride, IFXImageBuffer& output,
                                         std::uint8_t*& destination, TFXVideoFormat format)
    {
    }
    virtual void RestoreBufferSize(IFXImageBuffer& input, IFXImageBuffer& output) {}

    // Admission helper for SetVideoFormat overrides: keeps `native` formats and vfRGB24.
    void AdmitFormats(IFXImageBuffer& buffer, TFXFormatSet native);
    // The format a frame of `format` has once SetVideoFormat admitted it.
    TFXVideoFormat AdmittedFormat(TFXVideoFormat format);
    // Negotiates the stream again (SetSizeRate, StreamStart, a new announcement) before the next
    // frame, from the last announcement received: for settings that change the output stream.
    void RequestReannounce();

private:
    void StartFrame(const TPXStartFrameOperation& operation);

    TFXPXImageSinkPin FInputPin;
    TFXPXImageSourcePin FOutputPin;
    TFXStreamInfo FStream;
    TFXStreamInfo FInputStream;       // the last announcement received
    bool FHaveInputStream = false;
    bool FReannounce = false;         // the enable switch changed: announce again before a frame
};

} // namespace framix
