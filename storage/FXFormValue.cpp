// SPDX-License-Identifier: MIT
// Stored-form values: construction, checked access and content equality.
#include "storage/FXFormValue.h"

#include <algorithm>
#include <bit>

namespace framix {

std::string_view FXFormValueKindName(TFXFormValueKind kind)
{
    switch (kind) {
    case TFXFormValueKind::Integer:
        return "integer";
    case TFXFormValueKind::Float:
        return "float";
    case TFXFormValueKind::String:
        return "string";
    case TFXFormValueKind::Identifier:
        return "identifier";
    case TFXFormValueKind::Set:
        return "set";
    case TFXFormValueKind::List:
        return "list";
    case TFXFormValueKind::Binary:
        return "binary block";
    case TFXFormValueKind::Collection:
        return "collection";
    }
    return "value";
}

bool FXFormSameName(std::string_view a, std::string_view b)
{
    auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [&](char x, char y) { return lower(x) == lower(y); });
}

const TFXFormProperty* TFXFormCollectionItem::Find(std::string_view path) const
{
    for (const TFXFormProperty& p : Properties)
        if (FXFormSameName(p.Path, path))
            return &p;
    return nullptr;
}

TFXFormValue::TFXFormValue(TFXFormValueKind kind, TPayload payload)
    : FKind(kind), FPayload(std::move(payload))
{
}

TFXFormValue TFXFormValue::Integer(std::int64_t value)
{
    return {TFXFormValueKind::Integer, value};
}
TFXFormValue TFXFormValue::Float(double value)
{
    return {TFXFormValueKind::Float, value};
}
TFXFormValue TFXFormValue::String(std::string utf8)
{
    return {TFXFormValueKind::String, std::move(utf8)};
}
TFXFormValue TFXFormValue::Identifier(std::string name)
{
    return {TFXFormValueKind::Identifier, std::move(name)};
}
TFXFormValue TFXFormValue::Boolean(bool value)
{
    return Identifier(value ? "True" : "False");
}
TFXFormValue TFXFormValue::Set(std::vector<std::string> names)
{
    return {TFXFormValueKind::Set, std::move(names)};
}
TFXFormValue TFXFormValue::List(std::vector<TFXFormValue> items)
{
    return {TFXFormValueKind::List, std::move(items)};
}
TFXFormValue TFXFormValue::Binary(std::vector<std::uint8_t> bytes)
{
    return {TFXFormValueKind::Binary, std::move(bytes)};
}
TFXFormValue TFXFormValue::Collection(std::vector<TFXFormCollectionItem> items)
{
    return {TFXFormValueKind::Collection, std::move(items)};
}

template <class T> const T& TFXFormValue::Expect(TFXFormValueKind kind) const
{
    if (FKind != kind)
        throw EFXError("expected " + std::string(FXFormValueKindName(kind)) + ", found " +
                       Describe());
    return std::get<T>(FPayload);
}

std::int64_t TFXFormValue::AsInteger() const
{
    return Expect<std::int64_t>(TFXFormValueKind::Integer);
}

double TFXFormValue::AsNumber() const
{
    if (FKind == TFXFormValueKind::Integer)
        return double(std::get<std::int64_t>(FPayload));
    if (FKind != TFXFormValueKind::Float)
        throw EFXError("expected a number, found " + Describe());
    return std::get<double>(FPayload);
}

const std::string& TFXFormValue::AsString() const
{
    return Expect<std::string>(TFXFormValueKind::String);
}

const std::string& TFXFormValue::AsIdentifier() const
{
    return Expect<std::string>(TFXFormValueKind::Identifier);
}

bool TFXFormValue::AsBoolean() const
{
    if (FKind == TFXFormValueKind::Identifier) {
        const std::string& name = std::get<std::string>(FPayload);
        if (FXFormSameName(name, "True"))
            return true;
        if (FXFormSameName(name, "False"))
            return false;
    }
    throw EFXError("expected True or False, found " + Describe());
}

const std::vector<std::string>& TFXFormValue::AsSet() const
{
    return Expect<std::vector<std::string>>(TFXFormValueKind::Set);
}

const std::vector<TFXFormValue>& TFXFormValue::AsList() const
{
    return Expect<std::vector<TFXFormValue>>(TFXFormValueKind::List);
}

const std::vector<std::uint8_t>& TFXFormValue::AsBinary() const
{
    return Expect<std::vector<std::uint8_t>>(TFXFormValueKind::Binary);
}

const std::vector<TFXFormCollectionItem>& TFXFormValue::AsCollection() const
{
    return Expect<std::vector<TFXFormCollectionItem>>(TFXFormValueKind::Collection);
}

std::string TFXFormValue::Describe() const
{
    const std::string kind(FXFormValueKindName(FKind));
    auto count = [&](std::size_t n, const char* noun) {
        return kind + " of " + std::to_string(n) + ' ' + noun + (n == 1 ? "" : "s");
    };
    switch (FKind) {
    case TFXFormValueKind::Integer:
        return kind + ' ' + std::to_string(AsInteger());
    case TFXFormValueKind::Float:
        return kind + ' ' + std::to_string(AsNumber());
    case TFXFormValueKind::String: {
        const std::string& s = AsString();
        return kind + " '" + (s.size() > 40 ? s.substr(0, 40) + "..." : s) + '\'';
    }
    case TFXFormValueKind::Identifier:
        return kind + " '" + AsIdentifier() + '\'';
    case TFXFormValueKind::Set:
        return count(AsSet().size(), "name");
    case TFXFormValueKind::List:
        return count(AsList().size(), "item");
    case TFXFormValueKind::Binary:
        return count(AsBinary().size(), "byte");
    case TFXFormValueKind::Collection:
        return count(AsCollection().size(), "item");
    }
    return kind;
}

bool operator==(const TFXFormValue& a, const TFXFormValue& b)
{
    if (a.FKind != b.FKind)
        return false;
    if (a.FKind == TFXFormValueKind::Float)
        return std::bit_cast<std::uint64_t>(std::get<double>(a.FPayload)) ==
               std::bit_cast<std::uint64_t>(std::get<double>(b.FPayload));
    return a.FPayload == b.FPayload;
}

bool operator==(const TFXFormProperty& a, const TFXFormProperty& b)
{
    return a.Path == b.Path && a.Value == b.Value;
}

bool operator==(const TFXFormCollectionItem& a, const TFXFormCollectionItem& b)
{
    return a.Properties == b.Properties;
}

} // namespace framix
