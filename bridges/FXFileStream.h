// SPDX-License-Identifier: MIT
// A FILE-based byte stream for the file bridges: files, standard streams and descriptors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "framework/FXError.h"

namespace framix {

// The stream ended inside a frame. Every complete frame before it was delivered; the caller
// decides whether a cut-off last frame ends the stream quietly or is reported.
class EFXIncompleteFrame : public EFXError {
public:
    EFXIncompleteFrame(const std::string& message, std::int64_t bytesRead,
                       std::int64_t bytesExpected)
        : EFXError(message), FBytesRead(bytesRead), FBytesExpected(bytesExpected)
    {
    }
    std::int64_t BytesRead() const { return FBytesRead; }
    std::int64_t BytesExpected() const { return FBytesExpected; }

private:
    std::int64_t FBytesRead;
    std::int64_t FBytesExpected;
};

enum class TFXFileMode : std::uint8_t { Read, Write };

// What ReadLine found.
enum class TFXLineResult : std::uint8_t {
    End,     // the stream ended before any byte
    Partial, // the stream ended inside the line (the bytes are in `line`)
    Line,    // a whole line; the '\n' is consumed and not stored
};

// Owns (or borrows) a FILE. Every failure is an EFXError whose message starts with the
// stream's name, so users see which file was wrong. Move-only.
class TFXFileStream {
public:
    // "-" names standard input (Read) or standard output (Write).
    TFXFileStream(const std::string& fileName, TFXFileMode mode);
    // An already open stream; `owned` closes it with the stream object. `name` labels errors.
    TFXFileStream(std::FILE* file, std::string name, bool owned);
    // A descriptor such as a pipe end; it is duplicated, so the caller still closes its own.
    static TFXFileStream FromDescriptor(int fd, TFXFileMode mode, std::string name);

    TFXFileStream(TFXFileStream&& other) noexcept;
    TFXFileStream& operator=(TFXFileStream&& other) noexcept;
    TFXFileStream(const TFXFileStream&) = delete;
    TFXFileStream& operator=(const TFXFileStream&) = delete;
    ~TFXFileStream();

    const std::string& Name() const { return FName; }
    std::FILE* Handle() const { return FFile; }

    // Up to `size` bytes; fewer only at the end of the stream. Read errors throw.
    std::size_t Read(void* data, std::size_t size);
    // The next byte, or -1 at the end of the stream.
    int GetChar();
    // Reads one '\n'-terminated line of at most maxBytes bytes (longer lines throw).
    TFXLineResult ReadLine(std::string& line, std::size_t maxBytes);
    // Reads `rows` rows of `rowBytes` bytes into memory `stride` bytes apart; returns the
    // bytes read, less than rows * rowBytes only at the end of the stream.
    std::int64_t ReadRows(std::uint8_t* data, std::ptrdiff_t stride, std::size_t rowBytes,
                          int rows);

    void Write(const void* data, std::size_t size);
    void Write(std::string_view text) { Write(text.data(), text.size()); }
    void WriteRows(const std::uint8_t* data, std::ptrdiff_t stride, std::size_t rowBytes, int rows);
    // Pushes buffered bytes to the file or pipe, so a reader at the other end sees them.
    void Flush();

    // Throws EFXError("<name>: <problem>").
    [[noreturn]] void Fail(const std::string& problem) const;

private:
    void Close() noexcept;

    std::FILE* FFile = nullptr;
    std::string FName;
    bool FOwned = false;
};

} // namespace framix
