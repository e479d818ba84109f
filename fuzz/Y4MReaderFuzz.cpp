// SPDX-License-Identifier: MIT
// Fuzz target: the YUV4MPEG2 stream reader.
#include <cstdint>

#include "bridges/FXY4MReader.h"
#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace framix;
    std::FILE* file = fuzz::OpenInput(data, size);
    if (!file)
        return 0;
    try {
        TFXY4MReader reader(TFXFileStream(file, "fuzz.y4m", true));
        const TFXY4MStreamInfo& info = reader.Info();
        fuzz::TFuzzFrame frame;
        if (!frame.Allocate(info.Format, info.Width, info.Height, size + 64))
            return 0;
        while (reader.ReadFrame(frame.Planes())) {
        }
        // The header the reader produced must be writable as it was read.
        FXFormatY4MHeader(info, "fuzz.y4m");
    } catch (const EFXError&) {
    }
    return 0;
}
