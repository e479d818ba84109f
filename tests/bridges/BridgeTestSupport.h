// SPDX-License-Identifier: MIT
// Test images with padded, sentinel-guarded rows and per-test temporary folders.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix::test {

inline constexpr std::uint8_t kSentinel = 0xA5;

// One image in its own memory; every row is followed by `padding` sentinel bytes, so a codec
// that writes past a row or ignores the stride is caught.
class TTestImage {
public:
    TTestImage(TFXVideoFormat format, int width, int height, int padding, std::uint32_t seed)
        : FFormat(format), FWidth(width), FHeight(height)
    {
        std::mt19937 rng(seed);
        for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, p);
            FRowBytes[p] = g.RowBytes;
            FRows[p] = g.Rows;
            FStride[p] = g.RowBytes + padding;
            FMemory[p].assign(std::size_t(FStride[p]) * std::size_t(g.Rows), kSentinel);
            for (int y = 0; y < g.Rows; ++y)
                for (int x = 0; x < g.RowBytes; ++x)
                    FMemory[p][std::size_t(y) * FStride[p] + x] = seed ? std::uint8_t(rng()) : 0;
        }
    }

    TFXPlanes Planes()
    {
        TFXPlanes planes;
        for (int p = 0; p < 4; ++p) {
            planes.Data[p] = FMemory[p].empty() ? nullptr : FMemory[p].data();
            planes.Stride[p] = FStride[p];
        }
        return planes;
    }
    TFXConstPlanes ConstPlanes() const { return const_cast<TTestImage*>(this)->Planes(); }

    // The pixel bytes of all planes, rows packed.
    std::vector<std::uint8_t> Pixels() const
    {
        std::vector<std::uint8_t> out;
        for (int p = 0; p < 4; ++p)
            for (int y = 0; y < FRows[p]; ++y)
                out.insert(out.end(), FMemory[p].begin() + std::ptrdiff_t(y) * FStride[p],
                           FMemory[p].begin() + std::ptrdiff_t(y) * FStride[p] + FRowBytes[p]);
        return out;
    }

    bool PaddingIntact() const
    {
        for (int p = 0; p < 4; ++p)
            for (int y = 0; y < FRows[p]; ++y)
                for (int x = FRowBytes[p]; x < FStride[p]; ++x)
                    if (FMemory[p][std::size_t(y) * FStride[p] + x] != kSentinel)
                        return false;
        return true;
    }

    std::uint8_t* Row(int plane, int y)
    {
        return FMemory[plane].data() + std::ptrdiff_t(y) * FStride[plane];
    }

    TFXVideoFormat Format() const { return FFormat; }
    int Width() const { return FWidth; }
    int Height() const { return FHeight; }

private:
    TFXVideoFormat FFormat;
    int FWidth;
    int FHeight;
    std::vector<std::uint8_t> FMemory[4];
    int FStride[4] = {};
    int FRowBytes[4] = {};
    int FRows[4] = {};
};

// A fresh folder under the system temporary directory, removed with the object.
class TTempDir {
public:
    TTempDir()
    {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("framix-") + info->test_suite_name() + "-" + info->name() +
                           "-" + std::to_string(::getpid());
        for (char& c : name)
            if (c == '/')
                c = '_';
        FPath = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(FPath);
        std::filesystem::create_directories(FPath);
    }
    ~TTempDir() { std::filesystem::remove_all(FPath); }

    std::string operator/(const std::string& name) const { return (FPath / name).string(); }

private:
    std::filesystem::path FPath;
};

inline void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadBytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Runs `action` and returns the message of the EFXError-derived exception it throws.
template <class TAction> std::string ErrorMessage(TAction&& action)
{
    try {
        action();
    } catch (const std::exception& e) {
        return e.what();
    }
    ADD_FAILURE() << "no error thrown";
    return {};
}

} // namespace framix::test
