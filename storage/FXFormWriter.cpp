// SPDX-License-Identifier: MIT
// Normalised text output of a stored-form tree.
#include "storage/FXFormWriter.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace framix {

namespace {

bool IsPlainName(std::string_view s)
{
    if (s.empty())
        return false;
    auto start = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    };
    if (!start(s[0]))
        return false;
    for (char c : s)
        if (!start(c) && !(c >= '0' && c <= '9'))
            return false;
    return true;
}

bool IsDottedName(std::string_view s)
{
    for (;;) {
        const std::size_t dot = s.find('.');
        if (!IsPlainName(s.substr(0, dot)))
            return false;
        if (dot == std::string_view::npos)
            return true;
        s.remove_prefix(dot + 1);
    }
}

[[noreturn]] void Refuse(const std::string& what, std::string_view text)
{
    throw EFXError("cannot write the form: " + what + " '" + std::string(text) +
                   "' is not a valid name");
}

void CheckDotted(const std::string& what, std::string_view text)
{
    if (!IsDottedName(text))
        Refuse(what, text);
}

// A text longer than one chunk is split after line feeds and every `chunk` bytes, never
// inside a UTF-8 sequence; a shorter one stays whole.
std::vector<std::string_view> SplitString(std::string_view text, std::size_t chunk)
{
    std::vector<std::string_view> parts;
    if (text.size() <= chunk) {
        parts.push_back(text);
        return parts;
    }
    while (!text.empty()) {
        std::size_t end = std::min(text.size(), chunk);
        const std::size_t lineFeed = text.substr(0, end).find('\n');
        if (lineFeed != std::string_view::npos) {
            end = lineFeed + 1;
        } else if (end < text.size()) {
            // text[end] starts the next part; step back over at most three continuation
            // bytes to the lead byte (malformed UTF-8 is split where it falls).
            std::size_t back = end;
            while (back > 0 && end - back < 3 && (std::uint8_t(text[back]) & 0xC0) == 0x80)
                --back;
            if (back > 0 && (std::uint8_t(text[back]) & 0xC0) != 0x80)
                end = back;
        }
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return parts;
}

// Quoted runs for printable text (UTF-8 passes through untouched), #n for control codes.
std::string EncodeString(std::string_view text)
{
    std::string out;
    bool quoted = false;
    for (char ch : text) {
        const auto c = std::uint8_t(ch);
        if (c < 32 || c == 127) {
            if (quoted)
                out += '\'';
            quoted = false;
            out += '#';
            out += std::to_string(c);
        } else {
            if (!quoted)
                out += '\'';
            quoted = true;
            out += ch;
            if (ch == '\'')
                out += '\'';
        }
    }
    if (quoted)
        out += '\'';
    return out.empty() ? "''" : out;
}

} // namespace

std::string TFXFormWriter::FormatFloat(double value)
{
    if (!std::isfinite(value))
        throw EFXError("cannot write the form: the float " + std::to_string(value) +
                       " has no text form");
    // The shortest digits that read back to the same double, padded to 18 decimals: 0.1 is
    // written 0.100000000000000000, not with the tail of its binary expansion.
    auto padDecimals = [](std::string text) {
        std::size_t dot = text.find('.');
        if (dot == std::string::npos) {
            dot = text.size();
            text += '.';
        }
        text.append(18 - (text.size() - dot - 1), '0');
        return text;
    };
    char buffer[512];
    if (std::fabs(value) < 1e15) {
        auto [end, ec] =
            std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
        const std::string text(buffer, end);
        const std::size_t dot = text.find('.');
        if (dot == std::string::npos || text.size() - dot - 1 <= 18)
            return padDecimals(text);
    }
    auto [end, ec] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const std::string text(buffer, end);
    const std::size_t e = text.find('e');
    std::string exponent = text.substr(e + 1);
    const bool negative = exponent[0] == '-';
    exponent.erase(0, exponent.find_first_not_of("+-0"));
    return padDecimals(text.substr(0, e)) + 'E' + (negative ? "-" : "") +
           (exponent.empty() ? "0" : exponent);
}

std::string TFXFormWriter::Write(const TFXFormObject& root)
{
    FOut.clear();
    WriteObject(root, 0);
    FOut += '\n';
    return std::move(FOut);
}

void TFXFormWriter::NewLine(int indent)
{
    if (!FOut.empty())
        FOut += '\n';
    FOut.append(std::size_t(indent), ' ');
}

void TFXFormWriter::WriteObject(const TFXFormObject& object, int indent)
{
    if (!object.Name.empty() && (!IsPlainName(object.Name) || FXFormSameName(object.Name, "end")))
        Refuse("object name", object.Name);
    if (!IsPlainName(object.ClassName) || FXFormSameName(object.ClassName, "end"))
        Refuse("class name", object.ClassName);
    NewLine(indent);
    switch (object.Kind) {
    case TFXFormObjectKind::Object:
        FOut += "object ";
        break;
    case TFXFormObjectKind::Inherited:
        FOut += "inherited ";
        break;
    case TFXFormObjectKind::Inline:
        FOut += "inline ";
        break;
    }
    if (!object.Name.empty())
        FOut += object.Name + ": ";
    FOut += object.ClassName;
    if (object.Index >= 0)
        FOut += " [" + std::to_string(object.Index) + ']';
    for (const TFXFormProperty& p : object.Properties)
        WriteProperty(p, indent + 2, false);
    for (const TFXFormObject& child : object.Children)
        WriteObject(child, indent + 2);
    NewLine(indent);
    FOut += "end";
}

void TFXFormWriter::WriteProperty(const TFXFormProperty& property, int indent, bool inItem)
{
    CheckDotted("property path", property.Path);
    // These would read back as the block structure instead of an assignment.
    for (std::string_view keyword : {"end", "object", "inherited", "inline"}) {
        if (FXFormSameName(property.Path, keyword))
            throw EFXError("cannot write the form: a property may not be called '" + property.Path +
                           "'");
        if (inItem)
            break;
    }
    NewLine(indent);
    FOut += property.Path;
    FOut += " =";
    const TFXFormValue& v = property.Value;
    if (v.Kind() == TFXFormValueKind::String &&
        SplitString(v.AsString(), kStringChunk).size() > 1) {
        WriteString(v.AsString(), indent, true);
        return;
    }
    FOut += ' ';
    WriteValue(v, indent);
}

void TFXFormWriter::WriteString(const std::string& text, int indent, bool breakFirst)
{
    const std::vector<std::string_view> parts = SplitString(text, kStringChunk);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (breakFirst)
            NewLine(indent + 2);
        else if (i > 0)
            NewLine(indent);
        FOut += EncodeString(parts[i]);
        if (i + 1 < parts.size())
            FOut += " +";
    }
    if (parts.empty())
        FOut += "''";
}

void TFXFormWriter::WriteValue(const TFXFormValue& value, int indent)
{
    switch (value.Kind()) {
    case TFXFormValueKind::Integer:
        FOut += std::to_string(value.AsInteger());
        break;
    case TFXFormValueKind::Float:
        FOut += FormatFloat(value.AsNumber());
        break;
    case TFXFormValueKind::String:
        WriteString(value.AsString(), indent, false);
        break;
    case TFXFormValueKind::Identifier:
        CheckDotted("identifier", value.AsIdentifier());
        FOut += value.AsIdentifier();
        break;
    case TFXFormValueKind::Set: {
        FOut += '[';
        const std::vector<std::string>& names = value.AsSet();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!IsPlainName(names[i]))
                Refuse("set element", names[i]);
            FOut += (i ? ", " : "") + names[i];
        }
        FOut += ']';
        break;
    }
    case TFXFormValueKind::List:
        FOut += '(';
        for (const TFXFormValue& item : value.AsList()) {
            NewLine(indent + 2);
            WriteValue(item, indent + 2);
        }
        FOut += ')';
        break;
    case TFXFormValueKind::Binary: {
        static constexpr char kHex[] = "0123456789ABCDEF";
        const std::vector<std::uint8_t>& bytes = value.AsBinary();
        FOut += '{';
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            if (i % kBinaryBytesPerLine == 0)
                NewLine(indent + 2);
            FOut += kHex[bytes[i] >> 4];
            FOut += kHex[bytes[i] & 15];
        }
        FOut += '}';
        break;
    }
    case TFXFormValueKind::Collection:
        FOut += '<';
        for (const TFXFormCollectionItem& item : value.AsCollection()) {
            NewLine(indent + 2);
            FOut += "item";
            for (const TFXFormProperty& p : item.Properties)
                WriteProperty(p, indent + 4, true);
            NewLine(indent + 2);
            FOut += "end";
        }
        FOut += '>';
        break;
    }
}

} // namespace framix
