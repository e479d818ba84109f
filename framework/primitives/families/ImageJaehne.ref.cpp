// SPDX-License-Identifier: MIT
// The Jaehne test image, reference: the definition the vector kernels are proved against.
#include "framework/primitives/families/ImageJaehne.h"

#include "framework/primitives/FXImageRows.h"

#include <cstddef>

namespace framix::prim::ref {

// Dst(x, y) = 128 + 128 sin(pi/2 * (x2^2 + y2^2) / H) on every channel, centred on the ROI's
// middle, in the precision described in ImageJaehne.h.
template <class T, TFXLayout L> IppStatus ImageJaehne(T* pDst, int dstStep, IppiSize roiSize)
{
    const float k = 3.14159265358979323846f * (0.5f / float(roiSize.height));
    const float cx = float(roiSize.width - 1) * 0.5f, cy = float(roiSize.height - 1) * 0.5f;
    for (int y = 0; y < roiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        const float y2 = float(y) - cy;
        for (int x = 0; x < roiSize.width; ++x) {
            const float x2 = float(x) - cx;
            const T v = FXJaehneByte(FXJaehnePhase(x2, y2, k));
            for (int c = 0; c < FXChannels(L); ++c)
                out[std::ptrdiff_t(x) * FXChannels(L) + c] = v;
        }
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(ImageJaehne, FX_IMAGE_JAEHNE_PRIMITIVES)

} // namespace framix::prim::ref
