// SPDX-License-Identifier: MIT
// Generic property access by path and text.
#include "framework/properties/FXPropertyAccess.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "framework/FXError.h"
#include "framework/KTCollection.h"
#include "framework/KTPersistent.h"

namespace framix {

namespace {

std::string Quote(std::string_view s) { return "'" + std::string(s) + "'"; }

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

std::size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            const bool same = std::tolower(static_cast<unsigned char>(a[i - 1])) ==
                              std::tolower(static_cast<unsigned char>(b[j - 1]));
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (same ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

std::vector<std::string_view> PropertyNames(const TFXClassInfo& info)
{
    std::vector<std::string_view> names;
    info.ForEach([&](const TFXPropInfo& p) { names.push_back(p.Name); });
    return names;
}

bool ParseInteger(std::string_view text, std::int64_t& value)
{
    bool negative = false;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    int base = 10;
    if (!text.empty() && text[0] == '$') {
        base = 16;
        text.remove_prefix(1);
    } else if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    }
    if (text.empty())
        return false;
    std::uint64_t magnitude = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (ec != std::errc() || end != text.data() + text.size())
        return false;
    // Hex is a bit pattern: $FFFFFFFF is a valid 32-bit colour or integer.
    if (magnitude > std::uint64_t(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0))
        return false;
    value = negative ? std::int64_t(0 - magnitude) : std::int64_t(magnitude);
    return true;
}

bool ParseFloat(std::string_view text, double& value)
{
    if (!text.empty() && text[0] == '+')
        text.remove_prefix(1);
    if (text.empty())
        return false;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    return ec == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

[[noreturn]] void WrongKind(const TFXPropInfo& info, std::string_view what, std::string_view text)
{
    throw EFXError("Property " + Quote(info.Name) + " expects " + std::string(what) + ", got " +
                   Quote(text));
}

void CheckBounds(const TFXPropInfo& info, double value, std::string_view text)
{
    if (value < info.Min || value > info.Max) {
        std::string range = FXFormatPropertyValue(info, info.Kind == TFXPropKind::Float ||
                                                                info.Kind == TFXPropKind::Double
                                                            ? TFXValue(info.Min)
                                                            : TFXValue(std::int64_t(info.Min)));
        std::string upper = FXFormatPropertyValue(info, info.Kind == TFXPropKind::Float ||
                                                                info.Kind == TFXPropKind::Double
                                                            ? TFXValue(info.Max)
                                                            : TFXValue(std::int64_t(info.Max)));
        if (info.Kind == TFXPropKind::Enum)
            throw EFXError("Property " + Quote(info.Name) + " has no value " + Quote(text));
        throw EFXError("Value " + std::string(text) + " of property " + Quote(info.Name) +
                       " is out of range (" + range + " to " + upper + ")");
    }
}

} // namespace

std::string_view FXPropKindName(TFXPropKind kind)
{
    switch (kind) {
    case TFXPropKind::Bool: return "Boolean";
    case TFXPropKind::Int: return "Integer";
    case TFXPropKind::Float: return "Single";
    case TFXPropKind::Double: return "Double";
    case TFXPropKind::Enum: return "Enumeration";
    case TFXPropKind::Colour: return "Colour";
    case TFXPropKind::String: return "String";
    case TFXPropKind::Group: return "Group";
    case TFXPropKind::Collection: return "Collection";
    case TFXPropKind::Pin: return "Pin";
    case TFXPropKind::Event: return "Event";
    }
    return "?";
}

TFXValue TFXPropInfo::Default() const
{
    switch (Kind) {
    case TFXPropKind::Bool: return TFXValue(DefaultInt != 0);
    case TFXPropKind::Int:
    case TFXPropKind::Enum:
    case TFXPropKind::Colour: return TFXValue(DefaultInt);
    case TFXPropKind::Float:
        // A single-precision property's default is the float nearest the declared value.
        return TFXValue(double(float(DefaultFloat)));
    case TFXPropKind::Double: return TFXValue(DefaultFloat);
    case TFXPropKind::String: return TFXValue(std::string(DefaultString));
    default: return TFXValue();
    }
}

std::string_view FXClosestName(std::string_view name, std::span<const std::string_view> candidates)
{
    std::string_view best;
    std::size_t bestDistance = std::max<std::size_t>(2, name.size() / 3) + 1;
    for (std::string_view c : candidates) {
        const std::size_t d = EditDistance(name, c);
        if (d < bestDistance) {
            bestDistance = d;
            best = c;
        }
    }
    return best;
}

TFXPropertyRef FXResolvePropertyPath(TKTPersistent& root, std::string_view path)
{
    TKTPersistent* object = &root;
    std::string_view rest = path;
    while (true) {
        const std::size_t dot = rest.find('.');
        const std::string_view step = rest.substr(0, dot);
        const TFXClassInfo& info = object->GetClassInfo();
        const TFXPropInfo* prop = info.Find(step);
        if (!prop) {
            std::string message = "Unknown property " + Quote(path) + ": " +
                                  std::string(info.Name()) + " has no property " + Quote(step);
            const auto names = PropertyNames(info);
            if (std::string_view near = FXClosestName(step, names); !near.empty())
                message += " (did you mean " + Quote(near) + "?)";
            throw EFXError(message);
        }
        if (dot == std::string_view::npos)
            return {object, prop};
        if (prop->Kind != TFXPropKind::Group)
            throw EFXError("Unknown property " + Quote(path) + ": " + Quote(step) +
                           " is not a property group");
        object = prop->GetObject(*object);
        rest.remove_prefix(dot + 1);
    }
}

TFXValue FXParsePropertyText(const TFXPropInfo& info, std::string_view text)
{
    switch (info.Kind) {
    case TFXPropKind::Bool:
        if (EqualsNoCase(text, "True"))
            return TFXValue(true);
        if (EqualsNoCase(text, "False"))
            return TFXValue(false);
        WrongKind(info, "True or False", text);
    case TFXPropKind::Int:
    case TFXPropKind::Colour: {
        std::int64_t v = 0;
        if (!ParseInteger(text, v))
            WrongKind(info, "an integer", text);
        CheckBounds(info, double(v), text);
        return TFXValue(v);
    }
    case TFXPropKind::Enum: {
        for (std::size_t i = 0; i < info.EnumNames.size(); ++i)
            if (EqualsNoCase(info.EnumNames[i], text))
                return TFXValue(std::int64_t(i));
        std::int64_t v = 0;
        if (ParseInteger(text, v)) {
            CheckBounds(info, double(v), text);
            return TFXValue(v);
        }
        std::string message = "Property " + Quote(info.Name) + " has no value " + Quote(text);
        if (std::string_view near = FXClosestName(text, info.EnumNames); !near.empty())
            message += " (did you mean " + Quote(near) + "?)";
        throw EFXError(message);
    }
    case TFXPropKind::Float:
    case TFXPropKind::Double: {
        double v = 0;
        if (!ParseFloat(text, v))
            WrongKind(info, "a number", text);
        CheckBounds(info, v, text);
        return TFXValue(v);
    }
    case TFXPropKind::String: return TFXValue(std::string(text));
    default:
        throw EFXError("Property " + Quote(info.Name) + " is a " +
                       std::string(FXPropKindName(info.Kind)) + " and has no text value");
    }
}

std::string FXFormatPropertyValue(const TFXPropInfo& info, const TFXValue& value)
{
    if (const bool* b = std::get_if<bool>(&value))
        return *b ? "True" : "False";
    if (const std::int64_t* i = std::get_if<std::int64_t>(&value)) {
        if (info.Kind == TFXPropKind::Enum && *i >= 0 && std::size_t(*i) < info.EnumNames.size())
            return std::string(info.EnumNames[std::size_t(*i)]);
        if (info.Kind == TFXPropKind::Colour) {
            char buffer[16];
            std::snprintf(buffer, sizeof buffer, "$%08X", unsigned(std::uint32_t(*i)));
            return buffer;
        }
        return std::to_string(*i);
    }
    if (const double* d = std::get_if<double>(&value)) {
        char buffer[64];
        // Shortest text that reads back to the same value (as single precision where it is).
        auto [end, ec] = info.Kind == TFXPropKind::Float
                             ? std::to_chars(buffer, buffer + sizeof buffer, float(*d))
                             : std::to_chars(buffer, buffer + sizeof buffer, *d);
        return std::string(buffer, end);
    }
    if (const std::string* s = std::get_if<std::string>(&value))
        return *s;
    return {};
}

void FXSetPropertyValue(TKTPersistent& object, const TFXPropInfo& info, const TFXValue& value)
{
    if (!info.IsWritable())
        throw EFXError("Property " + Quote(info.Name) + " is read-only");
    const bool kindMatches = std::visit(
        [&](const auto& v) {
            using V = std::decay_t<decltype(v)>;
            switch (info.Kind) {
            case TFXPropKind::Bool: return std::is_same_v<V, bool>;
            case TFXPropKind::Int:
            case TFXPropKind::Enum:
            case TFXPropKind::Colour: return std::is_same_v<V, std::int64_t>;
            case TFXPropKind::Float:
            case TFXPropKind::Double: return std::is_same_v<V, double>;
            case TFXPropKind::String: return std::is_same_v<V, std::string>;
            default: return false;
            }
        },
        value);
    if (!kindMatches)
        throw EFXError("Property " + Quote(info.Name) + " expects a value of kind " +
                       std::string(FXPropKindName(info.Kind)));
    if (const std::int64_t* i = std::get_if<std::int64_t>(&value))
        CheckBounds(info, double(*i), std::to_string(*i));
    if (const double* d = std::get_if<double>(&value))
        CheckBounds(info, *d, FXFormatPropertyValue(info, value));
    info.Set(object, value);
}

bool FXIsDefaultValue(const TFXPropInfo& info, const TFXValue& value)
{
    if (info.Flags & pfNoDefault)
        return false;
    const TFXValue def = info.Default();
    if (info.Kind == TFXPropKind::Float) {
        const double* d = std::get_if<double>(&value);
        return d && float(*d) == float(std::get<double>(def));
    }
    return value == def;
}

void FXAssignProperties(TKTPersistent& target, const TKTPersistent& source)
{
    auto& mutableSource = const_cast<TKTPersistent&>(source);  // groups are reached by reference
    source.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        const TFXPropInfo* mine = target.GetClassInfo().Find(p.Name);
        if (!mine || mine->Kind != p.Kind)
            return;
        if (p.Kind == TFXPropKind::Group || p.Kind == TFXPropKind::Collection)
            mine->GetObject(target)->Assign(*p.GetObject(mutableSource));
        else if (p.HasValue() && mine->IsWritable())
            mine->Set(target, p.Get(source));
    });
}

} // namespace framix
