// SPDX-License-Identifier: MIT
// A sink component that writes every frame it receives to a file or standard output.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "framework/FXSinkFilter.h"

namespace framix {

class TFXY4MWriter;
class TFXImageSequenceWriter;

// Writes what reaches "InputPin" to `FileName`, one frame at a time, each flushed as written,
// so a reader at the other end of a pipe sees whole frames at once; the file is closed,
// complete, when the stream stops.
//  - YUV4MPEG2 for a name ending in .y4m and for `-` (standard output). The first frame fixes
//    the stream: vfI420, vfYV12 and vfNV12 are written as 4:2:0, vfYUY2, vfUYVY and vfI422 as
//    4:2:2, vfI444 as 4:4:4, vfYUVA444 as 444alpha, vfGray8 as mono and vfGray16 as mono16
//    unchanged; RGB frames are converted to 4:4:4 (alpha is dropped: write PAM to keep it).
//    The header carries the announced frame rate, interlacing and pixel aspect. A later frame
//    of another size, or one that maps to another Y4M layout, is an error: a Y4M stream holds
//    one, and the frames before it stay intact.
//  - PNG (a name ending in .png, when libpng was found): a numbered pattern writes one file per
//    frame, a plain name keeps the latest frame.
//  - Otherwise PGM, PPM or PAM as the frame's format says (vfGray8, vfGray16, vfRGB24,
//    vfRGB32, vfRGB48, vfRGBA64 exactly; YUV and 16-bit colour frames converted to vfRGB24,
//    vfYUVA444 to vfRGB32): one file per frame for a numbered pattern (out_%04d.ppm), every
//    frame one after another for a plain name.
//
//   object Logger1: TFXFileLogger
//     FileName = 'out.y4m'
//   end
class TFXFileLogger : public TFXSinkFilter {
public:
    static constexpr TFXStringProp kFileName{
        .Name = "FileName",
        .Help = "Y4M file (.y4m), `-` for standard output, or images (.png, .ppm, out_%04d.pgm)",
        .Default = ""};

    explicit TFXFileLogger(TKTComponent* owner);
    ~TFXFileLogger() override;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::string GetFileName() const;
    void SetFileName(std::string value);

    // Frames written since the stream started.
    std::int64_t GetFramesWritten() const;

    // The Y4M layout a frame of `format` is written in.
    static TFXVideoFormat Y4MFormatFor(TFXVideoFormat format);
    // The PNM/PAM/PNG format a frame of `format` is written in.
    static TFXVideoFormat ImageFormatFor(TFXVideoFormat format);

protected:
    void IntSingleOperation(const IPXNotifyOperation& operation) override;
    void ProcessImage(IFXImageBuffer& buffer) override;
    void StreamStop() override;

private:
    bool IsY4M() const;
    void OpenY4M(TFXVideoFormat format, int width, int height);
    void Close();
    [[noreturn]] void Fail(const std::string& message) const;

    std::string FFileName;
    std::unique_ptr<TFXY4MWriter> FY4M;
    std::unique_ptr<TFXImageSequenceWriter> FImages;
    // The last announcement: the Y4M header takes its rate, flags and aspect.
    std::unique_ptr<TPXStartFrameOperation> FStream;
    std::int64_t FFrames = 0;
};

} // namespace framix
