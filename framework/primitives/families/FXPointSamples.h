// SPDX-License-Identifier: MIT
// Sample traversal shared by the reference implementations of the point families (arithmetic,
// logic, blending).
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXPrimitiveShapes.h"

namespace framix::prim::ref {

// Runs op(first, second) -> result over every processed sample of the ROI: C1, C3 and C4
// samples alike, AC4 skipping the alpha (the destination's alpha keeps its value). An in-place
// call passes the destination as `second`. FXMapSamples (FXImageRows.h) is the one-source form.
template <class T, TFXLayout L, class Op>
void FXForEachPair(const T* first, int firstStep, const T* second, int secondStep, T* dst,
                   int dstStep, IppiSize roi, Op op)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < roi.height; ++y) {
        const T* a = FXRowAt(first, firstStep, y);
        const T* b = FXRowAt(second, secondStep, y);
        T* d = FXRowAt(dst, dstStep, y);
        for (int x = 0; x < roi.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                const int i = x * kCh + c;
                d[i] = op(a[i], b[i]);
            }
    }
}

} // namespace framix::prim::ref
