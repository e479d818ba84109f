// SPDX-License-Identifier: MIT
// Fuzz target: the PGM/PPM/PAM reader, over every image of a multi-image stream.
#include <cstdint>

#include "bridges/FXPNMReader.h"
#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace framix;
    std::FILE* file = fuzz::OpenInput(data, size);
    if (!file)
        return 0;
    try {
        TFXPNMReader reader(TFXFileStream(file, "fuzz.pnm", true));
        do {
            const TFXPNMInfo& info = reader.Info();
            fuzz::TFuzzFrame frame;
            // Plain (ASCII) images need at least two input bytes per sample.
            if (frame.Allocate(info.Format, info.Width, info.Height, 8 * size + 64))
                reader.ReadPixels(frame.Planes());
        } while (reader.NextImage());
    } catch (const EFXError&) {
    }
    return 0;
}
