// SPDX-License-Identifier: MIT
// One value of a stored-form property assignment, and the assignment itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "storage/FXFormError.h"

namespace framix {

enum class TFXFormValueKind : std::uint8_t {
    Integer,    // 42, -7, $FF
    Float,      // 1.500000000000000000, 2.5E-3
    String,     // 'it''s'#13#10'done' (UTF-8 bytes)
    Identifier, // enumeration names, True/False, dotted references Graph1.Blur1.OutputPin
    Set,        // [fsBold, fsItalic]
    List,       // ( value value ... ), nested lists allowed
    Binary,     // { 0A1B2C }
    Collection, // < item ... end item ... end >
};

// "integer", "float", ... for error messages.
std::string_view FXFormValueKindName(TFXFormValueKind kind);

struct TFXFormProperty;

// One `item ... end` of a collection: its own property assignments.
struct TFXFormCollectionItem {
    std::vector<TFXFormProperty> Properties;
    TFXFormPosition Position;

    // First assignment to `path` (case-insensitive, as names are in the form), or null.
    const TFXFormProperty* Find(std::string_view path) const;
};

// A tagged value. Accessors throw EFXError naming the expected and the actual kind, so the
// layer that applies values to components can report "expected an integer" without a switch.
// Equality compares content only (never positions) and floats bit for bit, so that reading
// back what the writer wrote gives an equal value even for -0.0.
class TFXFormValue {
public:
    TFXFormValue() = default; // the integer 0

    static TFXFormValue Integer(std::int64_t value);
    static TFXFormValue Float(double value);
    static TFXFormValue String(std::string utf8);
    static TFXFormValue Identifier(std::string name);
    static TFXFormValue Boolean(bool value); // the identifier True or False
    static TFXFormValue Set(std::vector<std::string> names);
    static TFXFormValue List(std::vector<TFXFormValue> items);
    static TFXFormValue Binary(std::vector<std::uint8_t> bytes);
    static TFXFormValue Collection(std::vector<TFXFormCollectionItem> items);

    TFXFormValueKind Kind() const { return FKind; }
    TFXFormPosition Position() const { return FPosition; }
    void SetPosition(TFXFormPosition position) { FPosition = position; }

    std::int64_t AsInteger() const;
    // A float, or an integer widened to double (a float property written as 2 is fine).
    double AsNumber() const;
    const std::string& AsString() const;
    const std::string& AsIdentifier() const;
    // True/False, case-insensitive as the form's names are.
    bool AsBoolean() const;
    const std::vector<std::string>& AsSet() const;
    const std::vector<TFXFormValue>& AsList() const;
    const std::vector<std::uint8_t>& AsBinary() const;
    const std::vector<TFXFormCollectionItem>& AsCollection() const;

    // A short rendering for messages: "integer 42", "identifier 'vfRGB24'", "list of 3 items".
    std::string Describe() const;

    friend bool operator==(const TFXFormValue& a, const TFXFormValue& b);

private:
    using TPayload = std::variant<std::int64_t, double, std::string, std::vector<std::string>,
                                  std::vector<TFXFormValue>, std::vector<std::uint8_t>,
                                  std::vector<TFXFormCollectionItem>>;

    TFXFormValue(TFXFormValueKind kind, TPayload payload);
    template <class T> const T& Expect(TFXFormValueKind kind) const;

    TFXFormValueKind FKind = TFXFormValueKind::Integer;
    TPayload FPayload; // holds the integer 0 until assigned
    TFXFormPosition FPosition;
};

// `Path = Value`, where the path walks property groups: "Kernel.Width".
struct TFXFormProperty {
    std::string Path;
    TFXFormValue Value;
    TFXFormPosition Position;
};

bool operator==(const TFXFormProperty& a, const TFXFormProperty& b);
bool operator==(const TFXFormCollectionItem& a, const TFXFormCollectionItem& b);

// Case-insensitive ASCII comparison, the rule for every name in a stored form.
bool FXFormSameName(std::string_view a, std::string_view b);

} // namespace framix
