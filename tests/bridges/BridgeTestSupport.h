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
#include "tests/support/FXTestImage.h"

namespace framix::test {

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
