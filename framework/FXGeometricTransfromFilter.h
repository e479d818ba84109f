// SPDX-License-Identifier: MIT
// Filters whose output size may differ from the input: the size-changing and geometric bases.
#pragma once

#include "framework/FXCommonROIFilter.h"

namespace framix {

// A region-of-interest filter whose output stream may have another size. SetSizeRate asks
// CalculateOutputSize for the output size and announces it; a disabled filter announces and
// passes the input size.
class TFXCommonROISizeFilter : public TFXCommonROIFilter {
public:
    explicit TFXCommonROISizeFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    // The settled sizes of the running stream.
    int GetInputWidth() const;
    int GetInputHeight() const;
    int GetOutputWidth() const;
    int GetOutputHeight() const;

protected:
    void SetSizeRate(int& width, int& height, TFXVideoFormat& format, std::int64_t frameDelay,
                     std::uint32_t reserved, std::uint32_t& aspectWidth,
                     std::uint32_t& aspectHeight) override;
    bool OutputSameAsInputSize() override;
    // The output size for an input of inWidth x inHeight; the default keeps it.
    virtual void CalculateOutputSize(int inWidth, int inHeight, int& outWidth, int& outHeight);

private:
    int FInputWidth = 0;
    int FInputHeight = 0;
    int FOutputWidth = 0;
    int FOutputHeight = 0;
};

FX_ENUM(TFXOutputSizeMode, osmInputSize, osmBoundingRect, osmMaxBoundingRect, osmCustom)

// The published `OutputSize` of geometric filters: the input's size, the transformed image's
// bounding rectangle, the largest bounding rectangle any setting can produce (a size that does
// not change while the settings animate), or Width x Height.
class TFXGeometricOutputSize : public TKTPersistentNotify {
public:
    static constexpr TFXEnumProp<TFXOutputSizeMode> kMode{
        .Name = "Mode", .Help = "how the output size is chosen", .Default = osmInputSize};
    static constexpr TFXIntProp kWidth{
        .Name = "Width", .Help = "output width in osmCustom", .Default = 320, .Min = 1,
        .Max = 32768};
    static constexpr TFXIntProp kHeight{
        .Name = "Height", .Help = "output height in osmCustom", .Default = 240, .Min = 1,
        .Max = 32768};

    TFXGeometricOutputSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXOutputSizeMode GetMode() const;
    void SetMode(TFXOutputSizeMode value);
    std::int32_t GetWidth() const;
    void SetWidth(std::int32_t value);
    std::int32_t GetHeight() const;
    void SetHeight(std::int32_t value);

private:
    TFXOutputSizeMode FMode = kMode.Default;
    std::int32_t FWidth = std::int32_t(kWidth.Default);
    std::int32_t FHeight = std::int32_t(kHeight.Default);
};

// Interpolation of geometric primitives; the primitive flag is 1 shifted left by the ordinal.
FX_ENUM(TFXInterpolationType, itNearest, itLinear, itCubic, itSuper, itLanczos)

// The base of rotate, shear, warp and the remap filters: output size, interpolation type
// (ordinal 2 by default) and background colour. A change of the output size settings
// re-negotiates the stream before the next frame.
class TFXGeometricTransfromFilter : public TFXCommonROISizeFilter {
public:
    static constexpr TFXEnumProp<TFXInterpolationType> kInterpolationType{
        .Name = "InterpolationType", .Help = "interpolation of the primitive",
        .Default = itCubic};
    static constexpr TFXColourProp kBackgroundColor{
        .Name = "BackgroundColor", .Help = "fill of output pixels no source pixel maps to"};

    explicit TFXGeometricTransfromFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXGeometricOutputSize& GetOutputSize() { return FOutputSize; }
    void SetOutputSize(const TFXGeometricOutputSize& value) { FOutputSize.Assign(value); }
    TFXInterpolationType GetInterpolationType() const;
    void SetInterpolationType(TFXInterpolationType value);
    std::uint32_t GetBackgroundColor() const;
    void SetBackgroundColor(std::uint32_t value);

    // 1 shifted left by the InterpolationType ordinal: the flag primitives take.
    int GetInterpolationFlag() const { return 1 << int(GetInterpolationType()); }
    // Fills every pixel of `buffer` with BackgroundColor (red in its lowest byte), in the
    // buffer's format; grey formats take the colour's luma.
    void FillBackground(IFXImageBuffer& buffer) const;

protected:
    void CalculateOutputSize(int inWidth, int inHeight, int& outWidth, int& outHeight) override;
    virtual void SetInterpolationTypeInt(TFXInterpolationType type);
    // The largest output any setting of the filter can produce for an input of width x height.
    virtual void GetMaxBoundingRect(int& width, int& height) {}
    // The output rectangle for an input of width x height with the current settings.
    virtual void GetBoundingRect(int& width, int& height) {}

private:
    TFXGeometricOutputSize FOutputSize;
    TFXInterpolationType FInterpolationType = kInterpolationType.Default;
    std::uint32_t FBackgroundColor = kBackgroundColor.Default;
};

} // namespace framix
