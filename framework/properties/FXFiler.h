// SPDX-License-Identifier: MIT
// The hook through which a class reads and writes stored properties beyond its table.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace framix {

// Reads the value of one extra stored property, item by item. Every read throws EFXError
// (with the stored form's position) when the stored value is not of the kind asked for.
class TFXReader {
public:
    virtual ~TFXReader() = default;
    virtual std::int64_t ReadInteger() = 0;
    virtual double ReadFloat() = 0;  // an integer is accepted as well
    virtual std::string ReadString() = 0;
    virtual std::string ReadIdent() = 0;
    virtual bool ReadBool() = 0;
    virtual std::vector<std::uint8_t> ReadBinary() = 0;
    virtual void ReadListBegin() = 0;
    virtual bool EndOfList() = 0;
    virtual void ReadListEnd() = 0;
};

class TFXWriter {
public:
    virtual ~TFXWriter() = default;
    virtual void WriteInteger(std::int64_t value) = 0;
    virtual void WriteFloat(double value) = 0;
    virtual void WriteString(std::string_view value) = 0;
    virtual void WriteIdent(std::string_view value) = 0;
    virtual void WriteBool(bool value) = 0;
    virtual void WriteBinary(const std::vector<std::uint8_t>& data) = 0;
    virtual void WriteListBegin() = 0;
    virtual void WriteListEnd() = 0;
};

// A class's DefineProperties registers each extra property with a reader and a writer;
// `hasData` false means the property is not written this time (it equals its default).
class TFXFiler {
public:
    virtual ~TFXFiler() = default;
    virtual void DefineProperty(std::string_view name, const std::function<void(TFXReader&)>& read,
                                const std::function<void(TFXWriter&)>& write, bool hasData) = 0;
};

} // namespace framix
