// SPDX-License-Identifier: MIT
// A generator whose frames an application draws in a callback.
#pragma once

#include <functional>

#include "framework/FXCommonGen.h"

namespace framix {

// Makes frames of ImageSize in Format at FrameRate and hands each to OnGenerateFrame (on the
// pumping thread, under the component lock). Without a callback the frames are black.
//
//   object Gen1: TFXGenericGen
//     ImageSize.Width = 640
//     Format = vfGray8
//   end
class TFXGenericGen : public TFXCommonGen {
public:
    using TFXGenerateEvent = std::function<void(TFXGenericGen& sender, IFXImageBuffer& buffer)>;

    static constexpr TFXEnumProp<TFXVideoFormat> kFormat{
        .Name = "Format", .Help = "pixel format of the generated frames", .Default = vfRGB24};

    explicit TFXGenericGen(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXVideoFormat GetFormat() const;
    void SetFormat(TFXVideoFormat value);

    TFXGenerateEvent OnGenerateFrame;

protected:
    void GenerateFrame(IFXImageBuffer& buffer) override;
    TFXVideoFormat GetVideoFormat() override { return GetFormat(); }

private:
    TFXVideoFormat FFormat = kFormat.Default;
};

} // namespace framix
