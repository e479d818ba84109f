// SPDX-License-Identifier: MIT
// The DefineProperties hooks over stored-form values: reading and writing extra properties.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/properties/FXFiler.h"
#include "storage/FXFormValue.h"

namespace framix {

// Reads one stored value item by item, as a class's extra-property reader asks for it. A list
// is entered with ReadListBegin and left with ReadListEnd, which insists that every item was
// read. Errors are EFXFormError pointing at the offending item; their text starts with
// `label` ("Graph1.Kernel1: Kernel.MatrixData").
class TFXFormValueReader final : public TFXReader {
public:
    TFXFormValueReader(const TFXFormValue& value, std::string fileName, std::string label);

    std::int64_t ReadInteger() override;
    double ReadFloat() override;
    std::string ReadString() override;
    std::string ReadIdent() override;
    bool ReadBool() override;
    std::vector<std::uint8_t> ReadBinary() override;
    void ReadListBegin() override;
    bool EndOfList() override;
    void ReadListEnd() override;

    // Throws unless the reader consumed the whole value (no list left open, nothing unread).
    void CheckFinished() const;

private:
    struct TLevel {
        const std::vector<TFXFormValue>* Items;
        std::size_t Next;
        TFXFormPosition Position;
    };
    const TFXFormValue& Take(const char* what);
    [[noreturn]] void Fail(TFXFormPosition position, const std::string& reason) const;

    std::vector<TFXFormValue> FTop; // the value, as a sequence of one
    std::vector<TLevel> FLevels;
    std::string FFileName;
    std::string FLabel;
};

// Builds one stored value from what a class's extra-property writer writes: exactly one value,
// which may be a list (nested lists allowed).
class TFXFormValueWriter final : public TFXWriter {
public:
    TFXFormValueWriter();

    void WriteInteger(std::int64_t value) override;
    void WriteFloat(double value) override;
    void WriteString(std::string_view value) override;
    void WriteIdent(std::string_view value) override;
    void WriteBool(bool value) override;
    void WriteBinary(const std::vector<std::uint8_t>& data) override;
    void WriteListBegin() override;
    void WriteListEnd() override;

    // The value written; throws EFXError naming `label` unless exactly one value was written and
    // every list closed.
    TFXFormValue Take(const std::string& label);

private:
    void Add(TFXFormValue value);
    std::vector<std::vector<TFXFormValue>> FLevels;
};

// Asks an object for its extra properties and reads the one called `name` (case-insensitive,
// as names are in a stored form) from `value`. Found() tells whether the object defines it;
// Names() lists every name it defines, for suggestions.
class TFXFormReadFiler final : public TFXFiler {
public:
    TFXFormReadFiler(std::string_view name, const TFXFormValue& value, std::string fileName,
                     std::string label);
    void DefineProperty(std::string_view name, const std::function<void(TFXReader&)>& read,
                        const std::function<void(TFXWriter&)>& write, bool hasData) override;

    bool Found() const { return FFound; }
    const std::vector<std::string>& Names() const { return FNames; }

private:
    std::string_view FName;
    const TFXFormValue& FValue;
    std::string FFileName;
    std::string FLabel;
    bool FFound = false;
    std::vector<std::string> FNames;
};

// Collects the extra properties an object has data for, each as (name, value), in the order
// its DefineProperties registers them.
class TFXFormWriteFiler final : public TFXFiler {
public:
    explicit TFXFormWriteFiler(std::string label) : FLabel(std::move(label)) {}
    void DefineProperty(std::string_view name, const std::function<void(TFXReader&)>& read,
                        const std::function<void(TFXWriter&)>& write, bool hasData) override;

    std::vector<std::pair<std::string, TFXFormValue>>& Values() { return FValues; }

private:
    std::string FLabel;
    std::vector<std::pair<std::string, TFXFormValue>> FValues;
};

} // namespace framix
