// SPDX-License-Identifier: MIT
// Plane pointers and strides of one image: how pixel memory is handed between the layers.
#pragma once

#include <array>
#include <cstdint>

namespace framix {

// Up to four planes (Y, U, V, A for planar formats; only plane 0 for packed ones).
// Strides are in bytes and may exceed the plane's row bytes.
struct TFXPlanes {
    std::array<std::uint8_t*, 4> Data{};
    std::array<int, 4> Stride{};
};

struct TFXConstPlanes {
    std::array<const std::uint8_t*, 4> Data{};
    std::array<int, 4> Stride{};

    TFXConstPlanes() = default;
    TFXConstPlanes(const TFXPlanes& p)  // NOLINT: a writable view is also a readable one
    {
        for (int i = 0; i < 4; ++i) {
            Data[i] = p.Data[i];
            Stride[i] = p.Stride[i];
        }
    }
};

} // namespace framix
