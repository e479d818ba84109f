// SPDX-License-Identifier: MIT
// Colour lookup.
#include "filters/colour/FXColorLookup.h"

#include <string>

#include "filters/colour/detail/FXColourFrames.h"
#include "framework/FXError.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

// ---------------------------------------------------------------- one channel

TFXLookupTable::TFXLookupTable(TKTPersistent* owner, IKTLock& lock)
    : TKTPersistentNotify(owner, lock, nullptr)
{
}

const TFXClassInfo& TFXLookupTable::ClassInfo()
{
    static const TFXClassInfo info{"TFXLookupTable", &TKTPersistentNotify::ClassInfo(), {}};
    return info;
}

void TFXLookupTable::CheckIndex(int index, std::size_t size) const
{
    if (index < 0 || std::size_t(index) >= size)
        throw EFXError("Lookup table point " + std::to_string(index) + " out of range (count " +
                       std::to_string(size) + ")");
}

int TFXLookupTable::GetCount() const
{
    auto guard = Lock().Read();
    return int(FValues.size());
}

void TFXLookupTable::SetCount(int count)
{
    if (count < 0)
        throw EFXError("A lookup table cannot have " + std::to_string(count) + " points");
    auto guard = Lock().Write();
    FLevels.resize(std::size_t(count));
    FValues.resize(std::size_t(count));
    FSorted = false;
}

std::int32_t TFXLookupTable::GetLevel(int index) const
{
    auto guard = Lock().Read();
    CheckIndex(index, FLevels.size());
    return FLevels[std::size_t(index)];
}

void TFXLookupTable::SetLevel(int index, std::int32_t level)
{
    auto guard = Lock().Write();
    // A table that took only values (Assign) grows its levels as they are set.
    CheckIndex(index, FValues.size());
    if (FLevels.size() <= std::size_t(index))
        FLevels.resize(std::size_t(index) + 1);
    FLevels[std::size_t(index)] = level;
    FSorted = false;
}

std::int32_t TFXLookupTable::GetValue(int index) const
{
    auto guard = Lock().Read();
    CheckIndex(index, FValues.size());
    return FValues[std::size_t(index)];
}

void TFXLookupTable::SetValue(int index, std::int32_t value)
{
    auto guard = Lock().Write();
    CheckIndex(index, FValues.size());
    FValues[std::size_t(index)] = value;
    FSorted = false;
}

void TFXLookupTable::AddInt(std::int32_t level, std::int32_t value)
{
    FLevels.push_back(level);
    FValues.push_back(value);
    FSorted = false;
}

void TFXLookupTable::Add(std::int32_t level, std::int32_t value)
{
    auto guard = Lock().Write();
    AddInt(level, value);
    DoChange();
}

void TFXLookupTable::Clear()
{
    auto guard = Lock().Write();
    FLevels.clear();
    FValues.clear();
    FSorted = false;
    DoChange();
}

void TFXLookupTable::BeginUpdate()
{
    auto guard = Lock().Write();
    ++FUpdateCount;
}

void TFXLookupTable::EndUpdate()
{
    auto guard = Lock().Write();
    if (FUpdateCount > 0 && --FUpdateCount == 0 && FPendingChange) {
        FPendingChange = false;
        DoChange();
    }
}

void TFXLookupTable::DoChange()
{
    if (FUpdateCount > 0)
        FPendingChange = true;
    else if (FOnChange)
        FOnChange(*this);
}

// Intentional: only the values are copied; the copy has its count of values and no levels until
// they are set (levels missing at a frame read as 0). Stored forms and editors that copy a curve
// and then place its levels rely on it.
void TFXLookupTable::Assign(const TKTPersistent& source)
{
    const auto* table = dynamic_cast<const TFXLookupTable*>(&source);
    if (!table) {
        TKTPersistentNotify::Assign(source);
        return;
    }
    if (table == this)
        return;
    auto guard = Lock().Write();
    Clear();
    {
        auto sourceGuard = table->Lock().Read();
        FValues = table->FValues;
    }
    FSorted = false;
    DoChange();
}

std::vector<std::pair<std::int32_t, std::int32_t>> TFXLookupTable::GetPoints() const
{
    auto guard = Lock().Read();
    std::vector<std::pair<std::int32_t, std::int32_t>> points;
    for (std::size_t i = 0; i < FValues.size(); ++i)
        points.emplace_back(i < FLevels.size() ? FLevels[i] : 0, FValues[i]);
    return points;
}

// Selection sort by level, ascending; of equal levels the first entered comes first.
void TFXLookupTable::Sort()
{
    auto guard = Lock().Write();
    if (FSorted)
        return;
    FUnsortedLevels = FLevels;
    FUnsortedLevels.resize(FValues.size());
    FSortedLevels = FUnsortedLevels;
    FSortedValues = FValues;
    const std::size_t n = FSortedValues.size();
    for (std::size_t i = 0; i < n; ++i) {
        std::size_t smallest = i;
        for (std::size_t j = i + 1; j < n; ++j)
            if (FSortedLevels[j] < FSortedLevels[smallest])
                smallest = j;
        std::swap(FSortedLevels[i], FSortedLevels[smallest]);
        std::swap(FSortedValues[i], FSortedValues[smallest]);
    }
    FSorted = true;
}

// ---------------------------------------------------------------- the four channels

TFXLookupTables::TFXLookupTables(IKTLock& lock) : TKTPersistent(&lock)
{
    for (auto& table : FTables) {
        table = std::make_unique<TFXLookupTable>(this, lock);
        table->SetChangeHandler([this](TFXLookupTable& t) {
            if (OnChange)
                OnChange(t);
        });
    }
}

const TFXClassInfo& TFXLookupTables::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXLookupTables::GetLookupMode, &TFXLookupTables::SetLookupMode>(kLookupMode),
    };
    static const TFXClassInfo info{"TFXLookupTables", &TKTPersistent::ClassInfo(), kProps};
    return info;
}

TFXColorLookupMode TFXLookupTables::GetLookupMode() const
{
    auto guard = Lock().Read();
    return FLookupMode;
}

void TFXLookupTables::SetLookupMode(TFXColorLookupMode value)
{
    Lock().Store(FLookupMode, value <= clmCubic ? value : clmCubic);
}

TFXLookupTable& TFXLookupTables::GetColorChannel(int index)
{
    if (index < 0 || index >= int(FTables.size()))
        throw EFXError("A lookup has no colour channel " + std::to_string(index));
    return *FTables[std::size_t(index)];
}

void TFXLookupTables::Assign(const TKTPersistent& source)
{
    const auto* tables = dynamic_cast<const TFXLookupTables*>(&source);
    if (!tables) {
        TKTPersistent::Assign(source);
        return;
    }
    for (std::size_t c = 0; c < FTables.size(); ++c)
        FTables[c]->Assign(*tables->FTables[c]);
}

void TFXLookupTables::DefineProperties(TFXFiler& filer)
{
    bool hasData = false;
    for (const auto& table : FTables)
        hasData = hasData || table->GetCount() > 0;
    filer.DefineProperty(
        "ColorChannels",
        [this](TFXReader& reader) {
            reader.ReadListBegin();
            for (auto& table : FTables) {
                if (reader.EndOfList())
                    break;
                // The channel is emptied, refilled, and signals one change.
                table->BeginUpdate();
                table->Clear();
                reader.ReadListBegin();
                while (!reader.EndOfList()) {
                    const std::int64_t level = reader.ReadInteger();
                    if (reader.EndOfList())
                        throw EFXError("ColorChannels: a level without its value");
                    table->Add(std::int32_t(level), std::int32_t(reader.ReadInteger()));
                }
                reader.ReadListEnd();
                table->EndUpdate();
            }
            if (!reader.EndOfList())
                throw EFXError("ColorChannels holds more than four channels");
            reader.ReadListEnd();
        },
        [this](TFXWriter& writer) {
            writer.WriteListBegin();
            for (auto& table : FTables) {
                writer.WriteListBegin();
                for (const auto& [level, value] : table->GetPoints()) {
                    writer.WriteInteger(level);
                    writer.WriteInteger(value);
                }
                writer.WriteListEnd();
            }
            writer.WriteListEnd();
        },
        hasData);
}

// ---------------------------------------------------------------- the component

TFXColorLookup::TFXColorLookup(TKTComponent* owner) : TFXCommonFilter(owner), FLookupTables(Lock())
{
}

const TFXClassInfo& TFXColorLookup::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXColorLookup::GetLookupTables>(
            {.Name = "LookupTables", .Help = "the channel curves and their interpolation"}),
    };
    static const TFXClassInfo info{"TFXColorLookup", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

void TFXColorLookup::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
}

void TFXColorLookup::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    static constexpr Ipp32s kPassThrough[2] = {0, 256};
    const Ipp32s* values[4];
    const Ipp32s* levels[4];
    int counts[4];
    bool any = false;
    for (int c = 0; c < 4; ++c) {
        TFXLookupTable& table = FLookupTables.GetColorChannel(c);
        if (table.GetCount() > 0) {
            table.Sort();
            values[c] = table.GetSortedValues().data();
            levels[c] = table.GetSortedLevels().data();
            counts[c] = table.GetCount();
            any = true;
        } else {
            values[c] = kPassThrough;
            levels[c] = kPassThrough;
            counts[c] = 2;
        }
    }
    if (!any)
        return;

    output.CopyFrom(input);
    const TFXColorLookupMode mode = FLookupTables.GetLookupMode();
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination = output.GetWritePointer();
    const int sourceStride = input.GetRowStride(), destinationStride = output.GetRowStride();
    const IppiSize roi = detail::FXRoiOf(input);
    const TFXVideoFormat format = input.GetFormat();
    IppStatus status;
    if (format == vfGray8 || format == vfGray16) {
        // Channel 0 alone, as it is: an empty table goes to the primitive with no points.
        TFXLookupTable& table = FLookupTables.GetColorChannel(0);
        table.Sort();
        const int count = table.GetCount();
        const Ipp32s* sortedValues = table.GetSortedValues().data();
        const Ipp32s* sortedLevels = table.GetSortedLevels().data();
        // Intentional: the cubic single-channel call pairs the levels in entered order with the
        // values sorted by level; they match only for points entered in ascending order.
        const Ipp32s* cubicLevels = table.GetUnsortedLevels().data();
        if (format == vfGray8) {
            const Ipp8u* s = source;
            Ipp8u* d = destination;
            status = mode == clmStep ? ipp::ippiLUT_8u_C1R(s, sourceStride, d, destinationStride,
                                                           roi, sortedValues, sortedLevels, count)
                     : mode == clmLinear
                         ? ipp::ippiLUT_Linear_8u_C1R(s, sourceStride, d, destinationStride, roi,
                                                      sortedValues, sortedLevels, count)
                         : ipp::ippiLUT_Cubic_8u_C1R(s, sourceStride, d, destinationStride, roi,
                                                     sortedValues, cubicLevels, count);
        } else {
            const auto* s = reinterpret_cast<const Ipp16u*>(source);
            auto* d = reinterpret_cast<Ipp16u*>(destination);
            status = mode == clmStep ? ipp::ippiLUT_16u_C1R(s, sourceStride, d, destinationStride,
                                                            roi, sortedValues, sortedLevels, count)
                     : mode == clmLinear
                         ? ipp::ippiLUT_Linear_16u_C1R(s, sourceStride, d, destinationStride, roi,
                                                       sortedValues, sortedLevels, count)
                         : ipp::ippiLUT_Cubic_16u_C1R(s, sourceStride, d, destinationStride, roi,
                                                      sortedValues, cubicLevels, count);
        }
    } else {
        const auto lut = format == vfRGB32 ? (mode == clmStep     ? ipp::ippiLUT_8u_C4R
                                              : mode == clmLinear ? ipp::ippiLUT_Linear_8u_C4R
                                                                  : ipp::ippiLUT_Cubic_8u_C4R)
                                           : (mode == clmStep     ? ipp::ippiLUT_8u_C3R
                                              : mode == clmLinear ? ipp::ippiLUT_Linear_8u_C3R
                                                                  : ipp::ippiLUT_Cubic_8u_C3R);
        status =
            lut(source, sourceStride, destination, destinationStride, roi, values, levels, counts);
    }
    // A refused call (a table of one point) writes nothing: the output stays the input.
    if (status != ippStsNoErr)
        output.CopyFrom(input);
}

void RegisterFXColorLookup(TFXPalette& palette)
{
    palette.Register<TFXColorLookup>(kFXPalettePage);
}

} // namespace framix
