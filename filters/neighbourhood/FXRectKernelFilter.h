// SPDX-License-Identifier: MIT
// Convolution with a user-edited rectangular kernel of real coefficients.
#pragma once

#include <cstdint>
#include <vector>

#include "framework/FXCommonROIMatrixFilter.h"

namespace framix {

class TFXRectKernelFilter;

// The coefficients of a rectangular kernel, Width x Height row by row, and the integer kernel
// and common divisor the convolution primitive is given. Owned by the filter and guarded by its
// lock. `Width` and `Height` are ordinary stored properties; the coefficients are stored as the
// extra property "MatrixData": a list of the count followed by that many single-precision
// values.
//
// The integer kernel: every coefficient v has a scale, 1 when |v| >= 1 or v = 0 and otherwise
// trunc(1 / |v|) + 1; the divisor is the largest scale, and element i is trunc(v * divisor).
// Intentional: element 0 is never computed and stays 0, so the top-left coefficient (which
// the inverse-order convolution lays on the bottom-right neighbour) never counts. Values beyond
// the 32-bit range saturate; a coefficient that is not a number counts as 0.
class TFXRectKernel : public TKTPersistent {
public:
    // Guards against a kernel too large to hold; mask sides alone would allow 65535 x 65535.
    static constexpr std::uint64_t kMaxCells = 1u << 22;
    static constexpr TFXIntProp kWidth{
        .Name = "Width", .Help = "columns of the kernel", .Default = 3, .Min = 0, .Max = 65535};
    static constexpr TFXIntProp kHeight{
        .Name = "Height", .Help = "rows of the kernel", .Default = 3, .Min = 0, .Max = 65535};

    explicit TFXRectKernel(TFXRectKernelFilter& owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::uint32_t GetWidth() const;
    std::uint32_t GetHeight() const;
    void SetCurrentWidth(std::uint32_t value);
    void SetCurrentHeight(std::uint32_t value);

    // Coefficient at (column, row): row times the filter's mask width plus column. Throws
    // EFXError outside the coefficients.
    float GetItem(int column, int row) const;
    // Stores one coefficient under the lock and recomputes the integer kernel.
    void SetItem(int column, int row, float value);
    // Resizes to width x height: coefficients keep their row and column, new cells are 0.
    // Throws EFXError, changing nothing, for more than kMaxCells cells.
    void RecalcArray(std::uint32_t width, std::uint32_t height);
    // Recomputes the integer kernel and the divisor from the coefficients.
    void PopulateIntArray();
    // From another kernel: the coefficients (and the array lengths), not Width and Height.
    void Assign(const TKTPersistent& source) override;
    void DefineProperties(TFXFiler& filer) override;
    void ReadData(TFXReader& reader);
    void WriteData(TFXWriter& writer) const;

    std::vector<float> GetCoefficients() const;
    std::vector<std::int32_t> GetIntKernel() const;
    std::int32_t GetDivisor() const;

private:
    friend class TFXRectKernelFilter;
    std::size_t Index(int column, int row) const;

    TFXRectKernelFilter& FOwner;
    std::uint32_t FWidth;
    std::uint32_t FHeight;
    std::vector<float> FCoefficients;
    std::vector<std::int32_t> FIntKernel;
    std::int32_t FDivisor = 1;
};

// Convolves the region of interest with `Kernel` (IPP's legacy convolution: the kernel in
// inverse order, `Anchor` counted from its bottom-right cell, default the centre), the sum
// divided by the kernel's divisor with rounding to nearest and saturated. A change of
// `MaskSize` resizes the kernel to it; the integer kernel is rebuilt when the stream starts.
// Admits vfRGB24, vfRGB32 (alpha unchanged), vfGray8 and vfGray16; other formats arrive as
// vfRGB24. Pixels the kernel cannot reach keep the input, and so does the region when the
// kernel holds fewer cells than the mask. Setters take the component lock; frames are
// filtered under it.
//
//   object Kernel1: TFXRectKernelFilter
//     Kernel.MatrixData = (
//       9
//       0.000000000000000000
//       -1.000000000000000000
//       ...
//       0.000000000000000000)
//   end
class TFXRectKernelFilter : public TFXCommonROIMatrixFilterIntermidiate {
public:
    explicit TFXRectKernelFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXRectKernel& GetKernel() { return FKernel; }
    void SetKernel(const TFXRectKernel& value) { FKernel.Assign(value); }

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void Changed(TKTPersistent& sender) override;
    void StreamStart() override;
    TFXMaskReach GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor) override;
    bool GetPreserveBufferData() override { return FFormat == vfRGB32; }
    bool PerformFilter(const std::uint8_t* source, int sourceStride, std::uint8_t* destination,
                       int destinationStride, TFXImageSize roiSize, TFXImageSize maskSize,
                       TFXPoint anchor, TFXVideoFormat format) override;

private:
    TFXRectKernel FKernel;
    TFXVideoFormat FFormat = vfRGB24; // of the frame being filtered
};

} // namespace framix
