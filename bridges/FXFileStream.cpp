// SPDX-License-Identifier: MIT
// FILE-based byte stream with named errors, row-wise transfers and line reading.
#include "bridges/FXFileStream.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace framix {

namespace {

// Big enough that row-by-row transfers of padded images cost few system calls.
constexpr std::size_t kBufferBytes = 1u << 20;

} // namespace

TFXFileStream::TFXFileStream(const std::string& fileName, TFXFileMode mode)
{
    const bool read = mode == TFXFileMode::Read;
    if (fileName == "-") {
        FFile = read ? stdin : stdout;
        FName = read ? "standard input" : "standard output";
        return;
    }
    FName = fileName;
    FFile = std::fopen(fileName.c_str(), read ? "rb" : "wb");
    if (!FFile)
        Fail(std::string(read ? "cannot open" : "cannot create") + " (" + std::strerror(errno) +
             ")");
    FOwned = true;
    std::setvbuf(FFile, nullptr, _IOFBF, kBufferBytes);
}

TFXFileStream::TFXFileStream(std::FILE* file, std::string name, bool owned)
    : FFile(file), FName(std::move(name)), FOwned(owned)
{
    if (!FFile)
        Fail("no open stream");
}

TFXFileStream TFXFileStream::FromDescriptor(int fd, TFXFileMode mode, std::string name)
{
    const int copy = ::dup(fd);
    std::FILE* file = copy < 0 ? nullptr : ::fdopen(copy, mode == TFXFileMode::Read ? "rb" : "wb");
    if (!file) {
        const int error = errno;
        if (copy >= 0)
            ::close(copy);
        throw EFXError(name + ": cannot use descriptor " + std::to_string(fd) + " (" +
                       std::strerror(error) + ")");
    }
    return TFXFileStream(file, std::move(name), true);
}

TFXFileStream::TFXFileStream(TFXFileStream&& other) noexcept
    : FFile(other.FFile), FName(std::move(other.FName)), FOwned(other.FOwned)
{
    other.FFile = nullptr;
    other.FOwned = false;
}

TFXFileStream& TFXFileStream::operator=(TFXFileStream&& other) noexcept
{
    if (this != &other) {
        Close();
        FFile = other.FFile;
        FName = std::move(other.FName);
        FOwned = other.FOwned;
        other.FFile = nullptr;
        other.FOwned = false;
    }
    return *this;
}

TFXFileStream::~TFXFileStream()
{
    Close();
}

void TFXFileStream::Close() noexcept
{
    // A borrowed stream (standard input or output, a caller's FILE) stays open and is not
    // flushed here: fflush is undefined on input, and the writers flush every frame anyway.
    if (FFile && FOwned)
        std::fclose(FFile);
    FFile = nullptr;
}

void TFXFileStream::Fail(const std::string& problem) const
{
    throw EFXError(FName + ": " + problem);
}

std::size_t TFXFileStream::Read(void* data, std::size_t size)
{
    const std::size_t n = std::fread(data, 1, size, FFile);
    if (n < size && std::ferror(FFile))
        Fail(std::string("read error (") + std::strerror(errno) + ")");
    return n;
}

int TFXFileStream::GetChar()
{
    const int c = std::getc(FFile);
    if (c == EOF && std::ferror(FFile))
        Fail(std::string("read error (") + std::strerror(errno) + ")");
    return c == EOF ? -1 : c;
}

TFXLineResult TFXFileStream::ReadLine(std::string& line, std::size_t maxBytes)
{
    line.clear();
    for (;;) {
        const int c = GetChar();
        if (c < 0)
            return line.empty() ? TFXLineResult::End : TFXLineResult::Partial;
        if (c == '\n')
            return TFXLineResult::Line;
        if (line.size() >= maxBytes)
            Fail("header line longer than " + std::to_string(maxBytes) + " bytes");
        line += char(c);
    }
}

std::int64_t TFXFileStream::ReadRows(std::uint8_t* data, std::ptrdiff_t stride,
                                     std::size_t rowBytes, int rows)
{
    if (std::ptrdiff_t(rowBytes) == stride)
        return std::int64_t(Read(data, rowBytes * std::size_t(rows)));
    std::int64_t total = 0;
    for (int y = 0; y < rows; ++y) {
        const std::size_t n = Read(data + y * stride, rowBytes);
        total += std::int64_t(n);
        if (n < rowBytes)
            break;
    }
    return total;
}

void TFXFileStream::Write(const void* data, std::size_t size)
{
    if (std::fwrite(data, 1, size, FFile) != size)
        Fail(std::string("write error (") + std::strerror(errno) + ")");
}

void TFXFileStream::WriteRows(const std::uint8_t* data, std::ptrdiff_t stride, std::size_t rowBytes,
                              int rows)
{
    if (std::ptrdiff_t(rowBytes) == stride) {
        Write(data, rowBytes * std::size_t(rows));
        return;
    }
    for (int y = 0; y < rows; ++y)
        Write(data + y * stride, rowBytes);
}

void TFXFileStream::Flush()
{
    if (std::fflush(FFile) != 0)
        Fail(std::string("write error (") + std::strerror(errno) + ")");
}

} // namespace framix
