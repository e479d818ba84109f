// SPDX-License-Identifier: MIT
// Row conversion between netpbm sample order and the frame formats' memory order.
#pragma once

#include <cstdint>

namespace framix::detail {

// Converts one row of `width` pixels between file order (R,G,B(,A) or gray, big-endian
// samples) and memory order (B,G,R(,A) or gray, little-endian). The conversion is its own
// inverse, so readers and writers share it. channels: 1, 3 or 4; bytesPerSample: 1 or 2.
void FXReorderPNMRow(const std::uint8_t* in, std::uint8_t* out, int width, int channels,
                     int bytesPerSample);

} // namespace framix::detail
