// SPDX-License-Identifier: MIT
// A source component that plays a Y4M stream, an image sequence or a still image.
#pragma once

#include <memory>
#include <string>

#include "framework/FXFrameGenerator.h"
#include "framework/FXPumpSource.h"
#include "framework/QNBasicCommonFilter.h"

namespace framix {

class TFXY4MReader;
class TFXImageSequenceReader;

// Plays `FileName` when pumped, one frame per pump, and ends with the file.
//  - YUV4MPEG2 (a name ending in .y4m, or a file or standard input `-` that starts with the
//    Y4M signature): frames in the file's format (vfI420 for 4:2:0, vfI422, vfI444,
//    vfYUVA444, vfGray8 for mono, vfGray16 for mono16), announced with the header's frame
//    period, its interlacing in the announcement's flags (kFXStartFlagTopFieldFirst, ...) and
//    its pixel aspect in the aspect fields. Filters convert the frames as they admit them.
//  - Anything else: a PGM/PPM/PAM or PNG image, a numbered sequence (in_%04d.ppm, from 1 as
//    ffmpeg numbers, or from 0), or a stream of PNM images; each image is one frame, at
//    `FrameRate` frames per second. PGM gives vfGray8 or vfGray16, PPM vfRGB24, PAM with
//    alpha vfRGB32, exactly as stored.
// A stream that ends inside a frame is an error, raised after every complete frame before it
// was sent on. Errors name the component and the file.
//
//   object Player1: TFXFilePlayer
//     FileName = '-'
//   end
class TFXFilePlayer : public TQNBasicCommonFilter,
                      public IFXPumpSource,
                      protected IFXGeneratorHooks {
public:
    static constexpr TFXStringProp kFileName{
        .Name = "FileName",
        .Help = "Y4M file, `-` for standard input, or an image, image sequence (in_%04d.ppm)",
        .Default = ""};
    static constexpr TFXFloatProp kFrameRate{
        .Name = "FrameRate",
        .Help = "frames per second of images (a Y4M stream announces its own rate)",
        .Default = 25.0,
        .Min = 0.001,
        .Max = 1000.0};

    explicit TFXFilePlayer(TKTComponent* owner);
    ~TFXFilePlayer() override;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::string GetFileName() const;
    void SetFileName(std::string value);
    double GetFrameRate() const;
    void SetFrameRate(double value);
    TFXPXImageSourcePin& GetImageOutputPin() { return FOutputPin; }
    TPXSourcePin* GetOutputPin() override { return &FOutputPin; }

    // Frames sent since the stream started.
    std::int64_t GetFramesPlayed() const;

    bool IsActiveSource() override { return true; }
    void StartSource() override;
    bool PumpFrame() override;
    void StopSource() override;
    double GetSourceFrameRate() override;

protected:
    bool SourceDispatch(TPXBasicPin& pin, TPXDataType type, const IPXNotifyOperation& operation,
                        TPXNotifyState state) override;
    // The stream is the open file's (under the lock).
    void IntStart() override;
    void IntStop() override;
    void GetImageSize(int& width, int& height) override;
    TFXVideoFormat GetVideoFormat() override;
    double GetGeneratorFrameRate() override { return FStreamRate; }
    void GenerateFrame(IFXImageBuffer& buffer) override { FillFrame(buffer); }
    bool FillFrame(IFXImageBuffer& buffer) override;

private:
    void Open();
    void Close();
    [[noreturn]] void Fail(const std::string& message) const;

    TFXPXImageSourcePin FOutputPin;
    TFXFrameGenerator FGenerator;
    std::string FFileName;
    double FFrameRate = kFrameRate.Default;
    std::unique_ptr<TFXY4MReader> FY4M;
    std::unique_ptr<TFXImageSequenceReader> FImages;
    double FStreamRate = 0; // of the open stream
    bool FEnded = false;
    std::int64_t FPlayed = 0;
};

} // namespace framix
