// SPDX-License-Identifier: MIT
// Gaussian smoothing by separable single-precision row and column passes.
#pragma once

#include <vector>

#include "framework/FXCommonROIFilter.h"
#include "framework/FXSizeGroups.h"

namespace framix {

// The kernel of the Gaussian blur: Width and Height taps (default 5 x 5, 0 allowed) and a sigma
// per table (0 = fitted to the width, see FXMakeGaussianKernelS). Every change reaches the
// owner's change handler, which rebuilds the tables.
class TFXGaussianKernel : public TFXMaskSize {
public:
    static constexpr TFXIntProp kWidth{
        .Name = "Width", .Help = "taps of the table built from SigmaX", .Default = 5};
    static constexpr TFXIntProp kHeight{
        .Name = "Height", .Help = "taps of the table built from SigmaY", .Default = 5};
    static constexpr TFXFloatProp kSigmaX{
        .Name = "SigmaX", .Help = "standard deviation of the Width table; 0 = fitted"};
    static constexpr TFXFloatProp kSigmaY{
        .Name = "SigmaY", .Help = "standard deviation of the Height table; 0 = fitted"};

    TFXGaussianKernel(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    float GetSigmaX() const;
    float GetSigmaY() const;
    void SetSigmaX(float value);
    void SetSigmaY(float value);

private:
    float FSigmaX = float(kSigmaX.Default);
    float FSigmaY = float(kSigmaY.Default);
};

// Smooths the region of interest with a column pass and a row pass of Gaussian tables built
// when the stream starts and after every change of `Kernel`. Admits vfRGB24, vfRGB32 (all four
// channels filtered), vfGray8 and vfGray16; other formats arrive as vfRGB24. Pixels the kernel
// cannot reach without leaving the frame, and everything outside the region, keep the input.
//
// Kept on purpose, as the filter has always behaved:
// - the column (vertical) pass uses the table built from Width and SigmaX, the row
//   (horizontal) pass the one from Height and SigmaY;
// - both passes read the unfiltered input and write the same output, so the row pass
//   overwrites the column pass: what leaves the filter is the input filtered horizontally with
//   the Height/SigmaY table, and Width and SigmaX change no output pixel;
// - the anchors are (taps + 1) div 2 (3 for five taps), not the centre tap, so the result is
//   shifted by half a tap towards the top-left; a one-tap table has anchor 1, outside the table,
//   and the primitive refuses it.
// Setters run on the caller's thread under the component lock; the tables are rebuilt under it,
// so a frame never sees half a table.
//
//   object Blur1: TFXGaussianBlur
//     Kernel.Height = 7
//     Kernel.SigmaY = 2.000000000000000000
//   end
class TFXGaussianBlur : public TFXCommonROIFilter {
public:
    explicit TFXGaussianBlur(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXGaussianKernel& GetKernel() { return FKernel; }
    void SetKernel(const TFXGaussianKernel& value) { FKernel.Assign(value); }
    // The current tables (empty before the first stream start or change).
    std::vector<float> GetKernelX() const;
    std::vector<float> GetKernelY() const;

protected:
    void StreamStart() override;
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;
    void GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor) override;
    TFXMaskReach GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor) override;
    // The kernel group changed (under the lock): rebuild the tables.
    virtual void Changed(TKTPersistent& sender);

private:
    TFXGaussianKernel FKernel;
    std::vector<float> FKernelX; // Width taps from SigmaX
    std::vector<float> FKernelY; // Height taps from SigmaY
};

} // namespace framix
