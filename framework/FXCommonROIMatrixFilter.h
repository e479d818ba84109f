// SPDX-License-Identifier: MIT
// The matrix filter chain: a mask size, an anchor, and a base that does the frame handling.
#pragma once

#include "framework/FXCommonROIFilter.h"
#include "framework/FXSizeGroups.h"

namespace framix {

// The mask anchor of a matrix filter; -1 on an axis means the centre of the mask (size / 2).
class TFXMaskAnchor : public TKTPersistentNotify {
public:
    static constexpr TFXIntProp kX{
        .Name = "X", .Help = "anchor column; -1 = the mask's centre", .Default = -1, .Min = -1};
    static constexpr TFXIntProp kY{
        .Name = "Y", .Help = "anchor row; -1 = the mask's centre", .Default = -1, .Min = -1};

    TFXMaskAnchor(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::int32_t GetX() const;
    std::int32_t GetY() const;
    void SetX(std::int32_t value);
    void SetY(std::int32_t value);
    // The anchor for a mask of the given size.
    TFXPoint Resolve(const TFXImageSize& maskSize) const;

private:
    std::int32_t FX = std::int32_t(kX.Default);
    std::int32_t FY = std::int32_t(kY.Default);
};

// Publishes `MaskSize` (default 3 x 3). A change of a group reaches Changed.
class TFXCommonROIMatrixSizeFilter : public TFXCommonROIFilter {
public:
    explicit TFXCommonROIMatrixSizeFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXMaskSize& GetMaskSize() { return FMaskSize; }
    void SetMaskSize(const TFXMaskSize& value) { FMaskSize.Assign(value); }

protected:
    void GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor) override;
    // A property group changed (called under the lock).
    virtual void Changed(TKTPersistent& sender) {}
    TKTPersistentNotify::TChangeNotify ChangeNotifier();

private:
    TFXMaskSize FMaskSize;
};

// Adds the published `Anchor`.
class TFXCommonROIMatrixSizeAnchorFilter : public TFXCommonROIMatrixSizeFilter {
public:
    explicit TFXCommonROIMatrixSizeAnchorFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXMaskAnchor& GetAnchor() { return FAnchor; }
    void SetAnchor(const TFXMaskAnchor& value) { FAnchor.Assign(value); }

protected:
    void GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor) override;

private:
    TFXMaskAnchor FAnchor;
};

// Does the frame handling of a matrix filter: takes the pointers, keeps the input outside the
// processed region, moves the pointers to the region and calls PerformFilter.
class TFXCommonROIMatrixFilterIntermidiate : public TFXCommonROIMatrixSizeAnchorFilter {
public:
    explicit TFXCommonROIMatrixFilterIntermidiate(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

protected:
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;
    virtual void ReclaculateRoiAndOffsetInt(TFXImageSize& roiSize, const std::uint8_t*& source,
                                            int sourceStride, IFXImageBuffer& output,
                                            std::uint8_t*& destination, TFXVideoFormat format);
    // True when the output must start as a copy of the input even where every pixel is
    // written. (Pixels outside the processed region always keep the input.)
    virtual bool GetPreserveBufferData() { return false; }
    // The work: pointers already at the region's first pixel, both strides, the region size.
    virtual bool PerformFilter(const std::uint8_t* source, int sourceStride,
                               std::uint8_t* destination, int destinationStride,
                               TFXImageSize roiSize, TFXImageSize maskSize, TFXPoint anchor,
                               TFXVideoFormat format) = 0;
    // Copies the source region to the destination. The destination may be fresh memory (only
    // the pixels outside the region are copied in advance), so a PerformFilter whose primitive
    // refuses to run calls this to leave the region as the input.
    static void KeepSourceRegion(const std::uint8_t* source, int sourceStride,
                                 std::uint8_t* destination, int destinationStride,
                                 TFXImageSize roiSize, TFXVideoFormat format);
};

} // namespace framix
