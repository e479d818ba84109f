// SPDX-License-Identifier: MIT
// Extra stored properties: a value read item by item, and a value built from writes.
#include "storage/FXFormFiler.h"

#include <cmath>

#include "storage/FXFormError.h"

namespace framix {

// ---------------------------------------------------------------- reading

TFXFormValueReader::TFXFormValueReader(const TFXFormValue& value, std::string fileName,
                                       std::string label)
    : FTop{value}, FFileName(std::move(fileName)), FLabel(std::move(label))
{
    FLevels.push_back({&FTop, 0, value.Position()});
}

void TFXFormValueReader::Fail(TFXFormPosition position, const std::string& reason) const
{
    throw EFXFormError(FFileName, position, FLabel + ": " + reason);
}

const TFXFormValue& TFXFormValueReader::Take(const char* what)
{
    TLevel& level = FLevels.back();
    if (level.Next >= level.Items->size())
        Fail(level.Position, std::string("expected ") + what + ", found the end of " +
                                 (FLevels.size() > 1 ? "the list" : "the value"));
    return (*level.Items)[level.Next++];
}

std::int64_t TFXFormValueReader::ReadInteger()
{
    const TFXFormValue& v = Take("an integer");
    if (v.Kind() != TFXFormValueKind::Integer)
        Fail(v.Position(), "expected an integer, found " + v.Describe());
    return v.AsInteger();
}

double TFXFormValueReader::ReadFloat()
{
    const TFXFormValue& v = Take("a number");
    if (v.Kind() != TFXFormValueKind::Integer && v.Kind() != TFXFormValueKind::Float)
        Fail(v.Position(), "expected a number, found " + v.Describe());
    return v.AsNumber();
}

std::string TFXFormValueReader::ReadString()
{
    const TFXFormValue& v = Take("a string");
    if (v.Kind() != TFXFormValueKind::String)
        Fail(v.Position(), "expected a string, found " + v.Describe());
    return v.AsString();
}

std::string TFXFormValueReader::ReadIdent()
{
    const TFXFormValue& v = Take("a name");
    if (v.Kind() != TFXFormValueKind::Identifier)
        Fail(v.Position(), "expected a name, found " + v.Describe());
    return v.AsIdentifier();
}

bool TFXFormValueReader::ReadBool()
{
    const TFXFormValue& v = Take("True or False");
    if (v.Kind() == TFXFormValueKind::Identifier) {
        if (FXFormSameName(v.AsIdentifier(), "True"))
            return true;
        if (FXFormSameName(v.AsIdentifier(), "False"))
            return false;
    }
    Fail(v.Position(), "expected True or False, found " + v.Describe());
}

std::vector<std::uint8_t> TFXFormValueReader::ReadBinary()
{
    const TFXFormValue& v = Take("a binary block");
    if (v.Kind() != TFXFormValueKind::Binary)
        Fail(v.Position(), "expected a binary block, found " + v.Describe());
    return v.AsBinary();
}

void TFXFormValueReader::ReadListBegin()
{
    const TFXFormValue& v = Take("a list");
    if (v.Kind() != TFXFormValueKind::List)
        Fail(v.Position(), "expected a list, found " + v.Describe());
    FLevels.push_back({&v.AsList(), 0, v.Position()});
}

bool TFXFormValueReader::EndOfList()
{
    return FLevels.size() > 1 && FLevels.back().Next >= FLevels.back().Items->size();
}

void TFXFormValueReader::ReadListEnd()
{
    if (FLevels.size() < 2)
        Fail(FLevels.back().Position, "the reader closed a list it never opened");
    const TLevel& level = FLevels.back();
    if (level.Next < level.Items->size())
        Fail((*level.Items)[level.Next].Position(),
             "unexpected " + (*level.Items)[level.Next].Describe() + " after the last item");
    FLevels.pop_back();
}

void TFXFormValueReader::CheckFinished() const
{
    if (FLevels.size() > 1)
        Fail(FLevels.back().Position, "the list was not read to its end");
    if (FLevels.back().Next == 0)
        Fail(FLevels.back().Position, "the value was not read");
}

// ---------------------------------------------------------------- writing

TFXFormValueWriter::TFXFormValueWriter() : FLevels(1) {}

void TFXFormValueWriter::Add(TFXFormValue value)
{
    FLevels.back().push_back(std::move(value));
}

void TFXFormValueWriter::WriteInteger(std::int64_t value)
{
    Add(TFXFormValue::Integer(value));
}

void TFXFormValueWriter::WriteFloat(double value)
{
    if (!std::isfinite(value))
        throw EFXError("cannot store the number " + std::to_string(value));
    Add(TFXFormValue::Float(value));
}

void TFXFormValueWriter::WriteString(std::string_view value)
{
    Add(TFXFormValue::String(std::string(value)));
}

void TFXFormValueWriter::WriteIdent(std::string_view value)
{
    Add(TFXFormValue::Identifier(std::string(value)));
}

void TFXFormValueWriter::WriteBool(bool value)
{
    Add(TFXFormValue::Boolean(value));
}

void TFXFormValueWriter::WriteBinary(const std::vector<std::uint8_t>& data)
{
    Add(TFXFormValue::Binary(data));
}

void TFXFormValueWriter::WriteListBegin()
{
    FLevels.emplace_back();
}

void TFXFormValueWriter::WriteListEnd()
{
    if (FLevels.size() < 2)
        throw EFXError("WriteListEnd without WriteListBegin");
    std::vector<TFXFormValue> items = std::move(FLevels.back());
    FLevels.pop_back();
    Add(TFXFormValue::List(std::move(items)));
}

TFXFormValue TFXFormValueWriter::Take(const std::string& label)
{
    if (FLevels.size() != 1)
        throw EFXError(label + ": a list was left open");
    if (FLevels[0].size() != 1)
        throw EFXError(label + ": " + std::to_string(FLevels[0].size()) +
                       " values written, a stored property holds one (write a list)");
    TFXFormValue value = std::move(FLevels[0][0]);
    FLevels[0].clear();
    return value;
}

// ---------------------------------------------------------------- filers

TFXFormReadFiler::TFXFormReadFiler(std::string_view name, const TFXFormValue& value,
                                   std::string fileName, std::string label)
    : FName(name), FValue(value), FFileName(std::move(fileName)), FLabel(std::move(label))
{
}

void TFXFormReadFiler::DefineProperty(std::string_view name,
                                      const std::function<void(TFXReader&)>& read,
                                      const std::function<void(TFXWriter&)>& write, bool hasData)
{
    FNames.emplace_back(name);
    if (FFound || !FXFormSameName(name, FName) || !read)
        return;
    FFound = true;
    TFXFormValueReader reader(FValue, FFileName, FLabel);
    try {
        read(reader);
    } catch (const EFXFormError&) {
        throw;
    } catch (const EFXError& e) {
        // The class refused the value itself (a wrong count, say): point at the value.
        throw EFXFormError(FFileName, FValue.Position(), FLabel + ": " + e.what());
    }
    reader.CheckFinished();
}

void TFXFormWriteFiler::DefineProperty(std::string_view name,
                                       const std::function<void(TFXReader&)>& read,
                                       const std::function<void(TFXWriter&)>& write, bool hasData)
{
    if (!hasData || !write)
        return; // equal to its default, or read-only (a legacy property)
    TFXFormValueWriter writer;
    write(writer);
    FValues.emplace_back(std::string(name), writer.Take(FLabel + "." + std::string(name)));
}

} // namespace framix
