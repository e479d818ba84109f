// SPDX-License-Identifier: MIT
// Published properties: one typed declaration per property, erased into a table entry.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "framework/properties/FXEnum.h"

namespace framix {

class TKTPersistent;
class TPXBasicPin;
class TPXPinListBase;

enum class TFXPropKind : std::uint8_t {
    Bool,
    Int,        // signed or unsigned integer, with bounds
    Float,      // single precision
    Double,
    Enum,       // stored by name
    Colour,     // 32-bit colour, red in the lowest byte
    String,
    Group,      // a nested property group: paths walk into it ("Kernel.Width")
    Collection, // a list of items, each a property group
    Pin,        // a pin or a pin list; the stored form writes its connections
    Event,      // an On... callback: listed, never stored
};

std::string_view FXPropKindName(TFXPropKind kind);

enum TFXPropFlags : std::uint8_t {
    pfStored = 1,    // written to the stored form when it differs from the default
    pfNoDefault = 2, // always written
    pfReadOnly = 4,  // never set from text or the stored form
    pfLegacy = 8,    // read from older stored forms, never written
    pfRuntime = 16,  // documented as safe to change while frames flow
};

// A property value in erased form: booleans, integers (also enumerations and colours),
// floating-point numbers and strings.
using TFXValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

// The erased table entry that generic code iterates.
struct TFXPropInfo {
    std::string_view Name;
    std::string_view Help;
    TFXPropKind Kind = TFXPropKind::Int;
    std::uint8_t Flags = pfStored;
    std::int64_t DefaultInt = 0;  // Bool, Int, Enum, Colour
    double DefaultFloat = 0;      // Float, Double
    std::string_view DefaultString;
    double Min = -std::numeric_limits<double>::infinity();
    double Max = std::numeric_limits<double>::infinity();
    std::span<const std::string_view> EnumNames;  // index = ordinal
    TFXValue (*Get)(const TKTPersistent&) = nullptr;
    void (*Set)(TKTPersistent&, const TFXValue&) = nullptr;
    TKTPersistent* (*GetObject)(TKTPersistent&) = nullptr;  // Group, Collection
    TPXBasicPin* (*GetPin)(TKTPersistent&) = nullptr;       // Pin: one pin
    TPXPinListBase* (*GetPinList)(TKTPersistent&) = nullptr; // Pin: a list (InputPins)

    TFXValue Default() const;
    bool HasValue() const { return Get != nullptr; }
    bool IsWritable() const { return Set != nullptr && !(Flags & pfReadOnly); }
};

// ---------------------------------------------------------------- typed declarations
// Each published property is declared once, as a static constexpr member of its class; the
// field is initialised from it, the setter clamps with it and the table entry is built from it.

struct TFXBoolProp {
    std::string_view Name;
    std::string_view Help;
    bool Default = false;
    std::uint8_t Flags = pfStored;
};

struct TFXIntProp {
    std::string_view Name;
    std::string_view Help;
    std::int64_t Default = 0;
    std::int64_t Min = std::numeric_limits<std::int64_t>::min();
    std::int64_t Max = std::numeric_limits<std::int64_t>::max();
    std::uint8_t Flags = pfStored;
};

struct TFXFloatProp {
    std::string_view Name;
    std::string_view Help;
    double Default = 0;
    double Min = -std::numeric_limits<double>::infinity();
    double Max = std::numeric_limits<double>::infinity();
    std::uint8_t Flags = pfStored;
};

template <class E>
struct TFXEnumProp {
    std::string_view Name;
    std::string_view Help;
    E Default{};
    std::uint8_t Flags = pfStored;
};

struct TFXColourProp {
    std::string_view Name;
    std::string_view Help;
    std::uint32_t Default = 0;
    std::uint8_t Flags = pfStored;
};

struct TFXStringProp {
    std::string_view Name;
    std::string_view Help;
    std::string_view Default;
    std::uint8_t Flags = pfStored;
};

// Groups, collections, pins and events carry no value of their own.
struct TFXObjectProp {
    std::string_view Name;
    std::string_view Help;
};

// ---------------------------------------------------------------- thunks
namespace detail {

template <class>
struct TFXMemberTraits;
template <class C, class R>
struct TFXMemberTraits<R (C::*)() const> {
    using Class = C;
    using Value = std::remove_cvref_t<R>;
};
template <class C, class R>
struct TFXMemberTraits<R (C::*)() const noexcept> : TFXMemberTraits<R (C::*)() const> {};
template <class C, class R>
struct TFXMemberTraits<R (C::*)()> {
    using Class = C;
    using Value = std::remove_cvref_t<R>;
};
template <class C, class A>
struct TFXMemberTraits<void (C::*)(A)> {
    using Class = C;
    using Value = std::remove_cvref_t<A>;
};

template <class V>
TFXValue FXToValue(const V& v)
{
    if constexpr (std::is_same_v<V, bool>)
        return TFXValue(v);
    else if constexpr (std::is_enum_v<V> || std::is_integral_v<V>)
        return TFXValue(std::int64_t(v));
    else if constexpr (std::is_floating_point_v<V>)
        return TFXValue(double(v));
    else
        return TFXValue(std::string(v));
}

template <class V>
V FXFromValue(const TFXValue& value)
{
    if constexpr (std::is_same_v<V, bool>)
        return std::get<bool>(value);
    else if constexpr (std::is_enum_v<V> || std::is_integral_v<V>)
        return V(std::get<std::int64_t>(value));
    else if constexpr (std::is_floating_point_v<V>)
        return V(std::get<double>(value));
    else
        return V(std::get<std::string>(value));
}

template <auto Getter>
TFXValue FXGetThunk(const TKTPersistent& object)
{
    using T = TFXMemberTraits<decltype(Getter)>;
    return FXToValue((static_cast<const typename T::Class&>(object).*Getter)());
}

template <auto Setter>
void FXSetThunk(TKTPersistent& object, const TFXValue& value)
{
    using T = TFXMemberTraits<decltype(Setter)>;
    (static_cast<typename T::Class&>(object).*Setter)(FXFromValue<typename T::Value>(value));
}

template <auto Getter>
TKTPersistent* FXObjectThunk(TKTPersistent& object)
{
    using T = TFXMemberTraits<decltype(Getter)>;
    return &(static_cast<typename T::Class&>(object).*Getter)();
}

template <auto Getter>
TPXBasicPin* FXPinThunk(TKTPersistent& object)
{
    using T = TFXMemberTraits<decltype(Getter)>;
    return &(static_cast<typename T::Class&>(object).*Getter)();
}

template <auto Getter>
TPXPinListBase* FXPinListThunk(TKTPersistent& object)
{
    using T = TFXMemberTraits<decltype(Getter)>;
    return &(static_cast<typename T::Class&>(object).*Getter)();
}

template <auto Getter, auto Setter>
consteval TFXPropInfo FXValueEntry(std::string_view name, std::string_view help, TFXPropKind kind,
                                   std::uint8_t flags)
{
    using G = TFXMemberTraits<decltype(Getter)>;
    TFXPropInfo info;
    info.Name = name;
    info.Help = help;
    info.Kind = kind;
    info.Flags = flags;
    info.Get = &FXGetThunk<Getter>;
    if constexpr (!std::is_same_v<decltype(Setter), std::nullptr_t>) {
        using S = TFXMemberTraits<decltype(Setter)>;
        static_assert(std::is_same_v<typename G::Value, typename S::Value>,
                      "getter and setter of a property must agree on its type");
        info.Set = &FXSetThunk<Setter>;
    }
    return info;
}

} // namespace detail

// ---------------------------------------------------------------- table entries
// FXProp<&T::GetX, &T::SetX>(kX) builds the entry of a value property; pass nullptr as the
// setter of a read-only one.

template <auto Getter, auto Setter>
consteval TFXPropInfo FXProp(const TFXBoolProp& d)
{
    TFXPropInfo info = detail::FXValueEntry<Getter, Setter>(d.Name, d.Help, TFXPropKind::Bool, d.Flags);
    info.DefaultInt = d.Default;
    return info;
}

template <auto Getter, auto Setter>
consteval TFXPropInfo FXProp(const TFXIntProp& d)
{
    using V = typename detail::TFXMemberTraits<decltype(Getter)>::Value;
    static_assert(std::is_integral_v<V>, "an integer property needs an integer getter");
    TFXPropInfo info = detail::FXValueEntry<Getter, Setter>(d.Name, d.Help, TFXPropKind::Int, d.Flags);
    info.DefaultInt = d.Default;
    // The bounds are the declaration's, narrowed to what the field's type can hold.
    info.Min = double(std::max<long double>(d.Min, std::numeric_limits<V>::min()));
    info.Max = double(std::min<long double>(d.Max, std::numeric_limits<V>::max()));
    return info;
}

template <auto Getter, auto Setter>
consteval TFXPropInfo FXProp(const TFXFloatProp& d)
{
    using V = typename detail::TFXMemberTraits<decltype(Getter)>::Value;
    static_assert(std::is_floating_point_v<V>, "a floating-point property needs a float getter");
    TFXPropInfo info = detail::FXValueEntry<Getter, Setter>(
        d.Name, d.Help, std::is_same_v<V, float> ? TFXPropKind::Float : TFXPropKind::Double, d.Flags);
    info.DefaultFloat = d.Default;
    info.Min = d.Min;
    info.Max = d.Max;
    return info;
}

template <auto Getter, auto Setter, class E>
consteval TFXPropInfo FXProp(const TFXEnumProp<E>& d)
{
    TFXPropInfo info = detail::FXValueEntry<Getter, Setter>(d.Name, d.Help, TFXPropKind::Enum, d.Flags);
    info.DefaultInt = std::int64_t(d.Default);
    info.EnumNames = FXEnumNames(E{});
    info.Min = 0;
    info.Max = double(info.EnumNames.size() - 1);
    return info;
}

template <auto Getter, auto Setter>
consteval TFXPropInfo FXProp(const TFXColourProp& d)
{
    TFXPropInfo info = detail::FXValueEntry<Getter, Setter>(d.Name, d.Help, TFXPropKind::Colour, d.Flags);
    info.DefaultInt = d.Default;
    info.Min = 0;
    info.Max = 4294967295.0;
    return info;
}

template <auto Getter, auto Setter>
consteval TFXPropInfo FXProp(const TFXStringProp& d)
{
    TFXPropInfo info = detail::FXValueEntry<Getter, Setter>(d.Name, d.Help, TFXPropKind::String, d.Flags);
    info.DefaultString = d.Default;
    return info;
}

namespace detail {
consteval TFXPropInfo FXObjectEntry(const TFXObjectProp& d, TFXPropKind kind)
{
    TFXPropInfo info;
    info.Name = d.Name;
    info.Help = d.Help;
    info.Kind = kind;
    info.Flags = kind == TFXPropKind::Event ? 0 : pfStored;
    return info;
}
} // namespace detail

// A nested group: the getter returns the group by reference.
template <auto Getter>
consteval TFXPropInfo FXGroup(const TFXObjectProp& d)
{
    TFXPropInfo info = detail::FXObjectEntry(d, TFXPropKind::Group);
    info.GetObject = &detail::FXObjectThunk<Getter>;
    return info;
}

template <auto Getter>
consteval TFXPropInfo FXCollection(const TFXObjectProp& d)
{
    TFXPropInfo info = detail::FXObjectEntry(d, TFXPropKind::Collection);
    info.GetObject = &detail::FXObjectThunk<Getter>;
    return info;
}

template <auto Getter>
consteval TFXPropInfo FXPin(const TFXObjectProp& d)
{
    TFXPropInfo info = detail::FXObjectEntry(d, TFXPropKind::Pin);
    info.GetPin = &detail::FXPinThunk<Getter>;
    return info;
}

// A published pin list ("InputPins"): the getter returns the TPXPinListBase by reference.
template <auto Getter>
consteval TFXPropInfo FXPinList(const TFXObjectProp& d)
{
    TFXPropInfo info = detail::FXObjectEntry(d, TFXPropKind::Pin);
    info.GetPinList = &detail::FXPinListThunk<Getter>;
    return info;
}

consteval TFXPropInfo FXEvent(const TFXObjectProp& d)
{
    return detail::FXObjectEntry(d, TFXPropKind::Event);
}

} // namespace framix
