// SPDX-License-Identifier: MIT
// Helpers shared by the fuzz targets: fuzz input as a FILE, frames in exactly sized memory.
#pragma once

#include <cstdint>
#include <cstdio>
#include <vector>

#include "bridges/FXFileStream.h"
#include "bridges/FXFrameLayout.h"
#include "framework/FXPlanes.h"

namespace framix::fuzz {

// The input as a read-only stream (null for empty input, which fmemopen refuses).
inline std::FILE* OpenInput(const std::uint8_t* data, std::size_t size)
{
    return size ? ::fmemopen(const_cast<std::uint8_t*>(data), size, "rb") : nullptr;
}

// A frame whose planes are separate exactly sized blocks with a padded stride, so the
// sanitizer sees any write past a plane.
class TFuzzFrame {
public:
    // False when the frame is larger than `budget` bytes: the input cannot fill it anyway, and
    // allocating it would only slow the fuzzer down.
    bool Allocate(TFXVideoFormat format, int width, int height, std::size_t budget)
    {
        if (FXImageBytes(format, width, height) > std::int64_t(budget))
            return false;
        for (int p = 0; p < 4; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, p);
            FPlanes.Stride[p] = g.RowBytes + 3;
            FMemory[p].assign(
                g.Rows ? std::size_t(FPlanes.Stride[p]) * (g.Rows - 1) + g.RowBytes : 0, 0);
            FPlanes.Data[p] = g.Rows ? FMemory[p].data() : nullptr;
        }
        return true;
    }
    const TFXPlanes& Planes() const { return FPlanes; }

private:
    std::vector<std::uint8_t> FMemory[4];
    TFXPlanes FPlanes;
};

} // namespace framix::fuzz
