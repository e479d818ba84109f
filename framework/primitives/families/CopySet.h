// SPDX-License-Identifier: MIT
// Copy, set and channel operations (also between layouts, and the 16-bit packing of colour):
// the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. The channel-of-interest layouts (C1C4, C4C, C3RAC4)
// take pointers to the addressed channel of the first pixel. ippiCopyChannel_8u_C3RAC4R and the
// two RGBA packers are ours: IPP has no such functions.
#define FX_COPY_SET_PRIMITIVES(X)                                                                  \
    X(ippiCopy_8u_C1R, Copy, PixelMap, Ipp8u, C1)                                                  \
    X(ippiCopy_8u_C3R, Copy, PixelMap, Ipp8u, C3)                                                  \
    X(ippiCopy_8u_C4R, Copy, PixelMap, Ipp8u, C4)                                                  \
    X(ippiCopy_8u_AC4R, Copy, PixelMap, Ipp8u, AC4)                                                \
    X(ippiCopy_8u_AC4C3R, Copy, PixelMap, Ipp8u, AC4C3)                                            \
    X(ippiCopy_8u_C3AC4R, Copy, PixelMap, Ipp8u, C3AC4)                                            \
    X(ippiCopy_8u_C1C4R, Copy, PixelMap, Ipp8u, C1C4)                                              \
    X(ippiCopy_8u_C4CR, Copy, PixelMap, Ipp8u, C4C)                                                \
    X(ippiCopy_16s_C1R, Copy, PixelMap, Ipp16s, C1)                                                \
    X(ippiCopyChannel_8u_C3RAC4R, Copy, PixelMap, Ipp8u, C3RAC4)                                   \
    X(ippiCopy_8u_C3P3R, CopyToPlanes, CopyToPlanes, Ipp8u, C3P3)                                  \
    X(ippiCopy_8u_C4P4R, CopyToPlanes, CopyToPlanes, Ipp8u, C4P4)                                  \
    X(ippiSet_8u_C1R, Set, SetScalar, Ipp8u, C1)                                                   \
    X(ippiSet_16s_C1R, Set, SetScalar, Ipp16s, C1)                                                 \
    X(ippiSet_8u_C3R, SetChannels, SetChannels, Ipp8u, C3)                                         \
    X(ippiSet_8u_C4R, SetChannels, SetChannels, Ipp8u, C4)                                         \
    X(ippiSet_8u_AC4R, SetChannels, SetChannels, Ipp8u, AC4)                                       \
    X(ippiSwapChannels_8u_AC4R, SwapChannels, SwapChannels, Ipp8u, AC4)                            \
    X(ippiSwapChannels_8u_C3IR, SwapChannelsInPlace, SwapChannelsInPlace, Ipp8u, C3)               \
    X(ippiRGBA_8u_AC4RToRGB555, PackRgb555, PackRgb16, Ipp8u, AC4)                                 \
    X(ippiRGBA_8u_AC4RToRGB565, PackRgb565, PackRgb16, Ipp8u, AC4)

namespace framix::prim {

// Channels a copy moves per pixel: all of a shared layout but the alpha of AC4, the colour of
// AC4C3 and C3AC4, one for the channel-of-interest layouts.
constexpr int FXCopiedChannels(TFXLayout layout)
{
    switch (layout) {
    case TFXLayout::C1:
    case TFXLayout::C1C4:
    case TFXLayout::C4C:
    case TFXLayout::C3RAC4:
        return 1;
    case TFXLayout::C4:
        return 4;
    default:
        return 3;
    }
}

const TFXFamily& CopySetFamily();

} // namespace framix::prim
