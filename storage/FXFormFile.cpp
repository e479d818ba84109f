// SPDX-License-Identifier: MIT
// File-level entry points of the stored-form reader and writer.
#include "storage/FXFormFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace framix {

namespace {

struct TFileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using TFilePtr = std::unique_ptr<std::FILE, TFileCloser>;

[[noreturn]] void FailFile(const std::filesystem::path& path, const std::string& what, int error)
{
    throw EFXError(path.string() + ": " + what + " (" + std::strerror(error) + ")");
}

} // namespace

TFXFormObject FXReadFormText(std::string_view text, const std::string& fileName,
                             const TFXFormLimits& limits)
{
    return TFXFormReader(text, fileName, limits).Read();
}

TFXFormObject FXReadFormFile(const std::filesystem::path& path, const TFXFormLimits& limits)
{
    TFilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file)
        FailFile(path, "cannot open the form", errno);
    std::string text;
    char buffer[65536];
    for (;;) {
        const std::size_t n = std::fread(buffer, 1, sizeof buffer, file.get());
        text.append(buffer, n);
        if (text.size() > limits.MaxTextBytes)
            throw EFXError(path.string() + ": form is larger than the limit of " +
                           std::to_string(limits.MaxTextBytes) + " bytes");
        if (n < sizeof buffer)
            break;
    }
    if (std::ferror(file.get()))
        FailFile(path, "cannot read the form", errno);
    return FXReadFormText(text, path.string(), limits);
}

std::string FXWriteFormText(const TFXFormObject& root)
{
    return TFXFormWriter().Write(root);
}

void FXWriteFormFile(const TFXFormObject& root, const std::filesystem::path& path)
{
    const std::string text = FXWriteFormText(root);
    TFilePtr file(std::fopen(path.c_str(), "wb"));
    if (!file)
        FailFile(path, "cannot create the form", errno);
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0)
        FailFile(path, "cannot write the form", errno);
}

} // namespace framix
