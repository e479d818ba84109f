// SPDX-License-Identifier: MIT
// Colour lookup: every channel value mapped through a transfer curve given as points.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "framework/FXCommonFilter.h"

namespace framix {

FX_ENUM(TFXColorLookupMode, clmStep, clmLinear, clmCubic)

// The points (level, value) of one channel's curve, in the order they were entered. Every edit
// holds the owner's lock. The change handler runs after each edit, or once at the end of a
// BeginUpdate/EndUpdate bracket. A frame sorts the points by level when they changed since
// the last sort.
class TFXLookupTable : public TKTPersistentNotify {
public:
    using TChangeHandler = std::function<void(TFXLookupTable& table)>;

    TFXLookupTable(TKTPersistent* owner, IKTLock& lock);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
    void SetChangeHandler(TChangeHandler handler) { FOnChange = std::move(handler); }

    // The number of points: the length of the values.
    int GetCount() const;
    // Sets the length of both arrays (new points are (0, 0)); no change is signalled.
    void SetCount(int count);
    std::int32_t GetLevel(int index) const;
    void SetLevel(int index, std::int32_t level);
    std::int32_t GetValue(int index) const;
    void SetValue(int index, std::int32_t value);
    void Add(std::int32_t level, std::int32_t value);
    void Clear();
    void BeginUpdate();
    void EndUpdate();
    // Another lookup table: copies its values only (see the class comment in the .cpp).
    void Assign(const TKTPersistent& source) override;

    // The points (level, value) in entered order; a missing level reads as 0.
    std::vector<std::pair<std::int32_t, std::int32_t>> GetPoints() const;

    // Builds the sorted arrays when the points changed since the last call.
    void Sort();
    const std::vector<std::int32_t>& GetSortedLevels() const { return FSortedLevels; }
    const std::vector<std::int32_t>& GetSortedValues() const { return FSortedValues; }
    // The levels in entered order, one per value (missing levels read as 0); valid after Sort.
    const std::vector<std::int32_t>& GetUnsortedLevels() const { return FUnsortedLevels; }

private:
    void AddInt(std::int32_t level, std::int32_t value);
    void DoChange();
    void CheckIndex(int index, std::size_t size) const;

    TChangeHandler FOnChange;
    std::vector<std::int32_t> FLevels;
    std::vector<std::int32_t> FValues;
    std::vector<std::int32_t> FSortedLevels;
    std::vector<std::int32_t> FSortedValues;
    std::vector<std::int32_t> FUnsortedLevels;
    bool FPendingChange = false;
    std::int32_t FUpdateCount = 0;
    bool FSorted = false;
};

// The four channel curves, in pixel byte order (0: blue, or the grey sample; 1 green; 2 red;
// 3 alpha), and the interpolation between points. The points are stored as the extra property
// "ColorChannels": four lists, each of (level value) pairs in entered order.
class TFXLookupTables : public TKTPersistent {
public:
    static constexpr TFXEnumProp<TFXColorLookupMode> kLookupMode{
        .Name = "LookupMode", .Help = "interpolation between points", .Default = clmCubic};

    explicit TFXLookupTables(IKTLock& lock);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXColorLookupMode GetLookupMode() const;
    void SetLookupMode(TFXColorLookupMode value);
    TFXLookupTable& GetColorChannel(int index);
    // Another lookup table set: channel by channel, through TFXLookupTable::Assign.
    void Assign(const TKTPersistent& source) override;
    void DefineProperties(TFXFiler& filer) override;

    // Called after a change of any channel's points (once per BeginUpdate/EndUpdate bracket).
    std::function<void(TFXLookupTable& table)> OnChange;

private:
    TFXColorLookupMode FLookupMode = kLookupMode.Default;
    std::array<std::unique_ptr<TFXLookupTable>, 4> FTables;
};

// Maps every channel value through its channel's curve (step, linear or cubic between the points;
// values outside the first and last level kept; results saturated). A channel without points
// passes through a two-point table (0, 0), (256, 256): unchanged in linear and cubic mode, 0 in
// step mode. Grey frames use channel 0 alone. With no points at all the frame passes untouched.
// Admits vfRGB24, vfRGB32 (alpha mapped through channel 3), vfGray8 and vfGray16; every other
// format arrives as vfRGB24.
//
//   object Lookup1: TFXColorLookup
//     LookupTables.LookupMode = clmLinear
//     LookupTables.ColorChannels = (
//       ()
//       ()
//       (0 255 256 0)
//       ())
//   end
class TFXColorLookup : public TFXCommonFilter {
public:
    explicit TFXColorLookup(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXLookupTables& GetLookupTables() { return FLookupTables; }
    void SetLookupTables(const TFXLookupTables& value) { FLookupTables.Assign(value); }

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    TFXLookupTables FLookupTables;
};

} // namespace framix
