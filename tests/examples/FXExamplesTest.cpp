// SPDX-License-Identifier: MIT
// Every graph in examples/ is in normal form and runs with the program on a small clip.
#include <gtest/gtest.h>

#include <filesystem>

#include "bridges/FXFileLogger.h"
#include "bridges/FXSequencePattern.h"
#include "bridges/FXY4MWriter.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"
#include "tests/host/HostTestSupport.h"

namespace framix {
namespace {

std::vector<std::string> Examples()
{
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(FRAMIX_SOURCE_DIR) + "/examples"))
        if (entry.path().extension() == ".dfm")
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class FXExamples : public testing::TestWithParam<std::string> {};

TEST_P(FXExamples, IsInNormalFormAndRunsOnASmallClip)
{
    test::TTempDir dir;
    const std::string source = std::string(FRAMIX_SOURCE_DIR) + "/examples/" + GetParam();
    const std::string text = test::ReadBytes(source);
    const auto graph = FXLoadGraphText(text, GetParam());
    EXPECT_EQ(FXSaveGraphText(*graph), text) << "run framix save on it";

    test::WriteBytes(dir / GetParam(), text);
    {
        // Graphs that play a file read input.y4m, or standard input.
        TFXY4MWriter clip(dir / "input.y4m", TFXY4MStreamInfo::For(vfI420, 64, 48, {25, 1}));
        for (int i = 0; i < 12; ++i)
            clip.WriteFrame(
                test::TTestImage(vfI420, 64, 48, 0, std::uint32_t(i + 1)).ConstPlanes());
    }
    const auto r = test::RunShell(dir, test::Framix() + " run " + GetParam() +
                                           " --frames 10 < input.y4m > stdout.bin");
    EXPECT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "");
    for (const TKTComponent* c : graph->GetComponents()) {
        const auto* logger = dynamic_cast<const TFXFileLogger*>(c);
        if (!logger)
            continue;
        const std::string name = logger->GetFileName();
        const std::string written =
            name == "-" ? "stdout.bin" : TFXSequencePattern(name).FileName(1);
        EXPECT_GT(std::filesystem::file_size(dir / written), 0u) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(AllGraphs, FXExamples, testing::ValuesIn(Examples()),
                         [](const auto& info) {
                             std::string name = info.param.substr(0, info.param.size() - 4);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
} // namespace framix
