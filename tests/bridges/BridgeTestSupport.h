// SPDX-License-Identifier: MIT
// Test images with padded, sentinel-guarded rows and per-test temporary folders.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
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

// One image in its own memory; every row is followed by `padding` sentinel bytes, so a codec
// that writes past a row or ignores the stride is caught. Seed 0 gives a black image.
class TTestImage {
public:
    TTestImage(TFXVideoFormat format, int width, int height, int padding, std::uint32_t seed)
    {
        std::mt19937 rng(seed);
        for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
            FGeometry[p] = FXPlaneGeometry(format, width, height, p);
            FPlanes.Stride[p] = FGeometry[p].RowBytes + padding;
            FMemory[p].assign(std::size_t(FPlanes.Stride[p]) * FGeometry[p].Rows, kSentinel);
            FPlanes.Data[p] = FMemory[p].data();
            for (int y = 0; y < FGeometry[p].Rows; ++y)
                for (int x = 0; x < FGeometry[p].RowBytes; ++x)
                    Row(p, y)[x] = seed ? std::uint8_t(rng()) : 0;
        }
    }

    const TFXPlanes& Planes() { return FPlanes; }
    TFXConstPlanes ConstPlanes() const { return FPlanes; }
    std::uint8_t* Row(int plane, int y) { return FPlanes.Data[plane] + y * FPlanes.Stride[plane]; }

    // The pixel bytes of all planes, rows packed.
    std::vector<std::uint8_t> Pixels() const
    {
        std::vector<std::uint8_t> out;
        for (int p = 0; p < 4; ++p)
            for (int y = 0; y < FGeometry[p].Rows; ++y) {
                const std::uint8_t* row = FPlanes.Data[p] + y * FPlanes.Stride[p];
                out.insert(out.end(), row, row + FGeometry[p].RowBytes);
            }
        return out;
    }

    bool PaddingIntact() const
    {
        for (int p = 0; p < 4; ++p)
            for (int y = 0; y < FGeometry[p].Rows; ++y)
                for (int x = FGeometry[p].RowBytes; x < FPlanes.Stride[p]; ++x)
                    if (FPlanes.Data[p][y * FPlanes.Stride[p] + x] != kSentinel)
                        return false;
        return true;
    }

private:
    static constexpr std::uint8_t kSentinel = 0xA5;
    std::vector<std::uint8_t> FMemory[4];
    TFXPlaneGeometry FGeometry[4] = {};
    TFXPlanes FPlanes;
};

// A fresh folder under the system temporary directory, removed with the object.
class TTempDir {
public:
    TTempDir()
    {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("framix-") + test->test_suite_name() + "-" + test->name() +
                           "-" + std::to_string(::getpid());
        std::replace(name.begin(), name.end(), '/', '_');
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

// The message of the exception `action` throws (a test failure when it throws none).
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
