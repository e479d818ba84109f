// SPDX-License-Identifier: MIT
// Row conversion between netpbm sample order and the frame formats' memory order.
#include "bridges/detail/FXPNMRow.h"

#include <cstring>

namespace framix::detail {

namespace {

// Fixed channel count and sample size, so the compiler can unroll and vectorise the loop.
template <int Channels, int Bytes>
void Reorder(const std::uint8_t* in, std::uint8_t* out, int width)
{
    constexpr int kPixel = Channels * Bytes;
    for (int x = 0; x < width; ++x, in += kPixel, out += kPixel) {
        for (int k = 0; k < Channels; ++k) {
            const int from = (Channels >= 3 && k < 3) ? 2 - k : k; // swap R and B
            if constexpr (Bytes == 2) {
                out[2 * k] = in[2 * from + 1];
                out[2 * k + 1] = in[2 * from];
            } else {
                out[k] = in[from];
            }
        }
    }
}

} // namespace

void FXReorderPNMRow(const std::uint8_t* in, std::uint8_t* out, int width, int channels,
                     int bytesPerSample)
{
    const bool wide = bytesPerSample == 2;
    switch (channels) {
    case 1:
        if (wide)
            Reorder<1, 2>(in, out, width);
        else
            std::memcpy(out, in, std::size_t(width));
        break;
    case 3:
        wide ? Reorder<3, 2>(in, out, width) : Reorder<3, 1>(in, out, width);
        break;
    case 4:
        wide ? Reorder<4, 2>(in, out, width) : Reorder<4, 1>(in, out, width);
        break;
    default:
        break;
    }
}

} // namespace framix::detail
