// SPDX-License-Identifier: MIT
// The colour twist: a user-set 3x4 affine colour matrix applied to every pixel.
#pragma once

#include "framework/FXCommonFilter.h"

namespace framix {

class TFXColorTwists;

// One row of the colour matrix: the weights of the input's blue, green and red bytes and an
// offset in byte units. It holds no values of its own but a view of four floats of the owning
// TFXColorTwists. Red, Green, Blue and Offset are published in that order, while the storage
// index follows a pixel's byte order (Blue 0, Green 1, Red 2, Offset 3).
class TFXColorChannelTwist : public TKTPersistent {
public:
    static constexpr TFXFloatProp kRed{
        .Name = "Red", .Help = "weight of the input's red byte", .Flags = pfStored | pfNoDefault};
    static constexpr TFXFloatProp kGreen{.Name = "Green",
                                         .Help = "weight of the input's green byte",
                                         .Flags = pfStored | pfNoDefault};
    static constexpr TFXFloatProp kBlue{
        .Name = "Blue", .Help = "weight of the input's blue byte", .Flags = pfStored | pfNoDefault};
    static constexpr TFXFloatProp kOffset{.Name = "Offset",
                                          .Help = "constant added, in 0-255 byte units",
                                          .Flags = pfStored | pfNoDefault};

    TFXColorChannelTwist(float* row, IKTLock& lock) : TKTPersistent(&lock), FRow(row) {}
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    // The float at `index` of the row (0 blue, 1 green, 2 red, 3 offset).
    float GetItem(int index) const;
    // Stores under the owner's lock; no change notification.
    void SetItem(int index, float value);

    float GetRed() const { return GetItem(2); }
    void SetRed(float value) { SetItem(2, value); }
    float GetGreen() const { return GetItem(1); }
    void SetGreen(float value) { SetItem(1, value); }
    float GetBlue() const { return GetItem(0); }
    void SetBlue(float value) { SetItem(0, value); }
    float GetOffset() const { return GetItem(3); }
    void SetOffset(float value) { SetItem(3, value); }

private:
    float* FRow;
};

// The 3x4 colour matrix, row 0 producing the output's blue byte, row 1 green, row 2 red. Every
// value starts at 0.0: a new matrix turns every pixel black until the user or a stored form
// sets it.
class TFXColorTwists : public TKTPersistent {
public:
    explicit TFXColorTwists(IKTLock& lock);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXColorChannelTwist& GetRedTwist() { return FRed; }
    TFXColorChannelTwist& GetGreenTwist() { return FGreen; }
    TFXColorChannelTwist& GetBlueTwist() { return FBlue; }
    // Copy the four values of `value` into the owned row.
    void SetRedTwist(const TFXColorChannelTwist& value) { FRed.Assign(value); }
    void SetGreenTwist(const TFXColorChannelTwist& value) { FGreen.Assign(value); }
    void SetBlueTwist(const TFXColorChannelTwist& value) { FBlue.Assign(value); }

    // The matrix as the colour-twist primitive takes it; read it under the lock.
    const float (&Matrix() const)[3][4] { return FMatrix; }

private:
    // Intentional: no initial matrix. A fresh twist outputs black (alpha kept).
    float FMatrix[3][4] = {};
    TFXColorChannelTwist FRed;   // row 2
    TFXColorChannelTwist FGreen; // row 1
    TFXColorChannelTwist FBlue;  // row 0
};

// Applies ColorTwists to every pixel: out[c] = m[c][0] B + m[c][1] G + m[c][2] R + m[c][3],
// rounded to nearest and saturated. Admits vfRGB24 and vfRGB32 (alpha kept); every other format
// arrives as vfRGB24. Setters run on any thread under the component lock, which the base holds
// around each frame.
//
//   object Twist1: TFXColorTwist
//     ColorTwists.RedTwist.Red = 1.000000000000000000
//     ColorTwists.GreenTwist.Green = 1.000000000000000000
//     ColorTwists.BlueTwist.Blue = 1.000000000000000000
//   end
class TFXColorTwist : public TFXCommonFilter {
public:
    explicit TFXColorTwist(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXColorTwists& GetColorTwists() { return FColorTwists; }
    void SetColorTwists(const TFXColorTwists& value) { FColorTwists.Assign(value); }

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    TFXColorTwists FColorTwists;
};

} // namespace framix
