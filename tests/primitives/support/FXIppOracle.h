// SPDX-License-Identifier: MIT
// Runs a primitive's modern real-IPP counterpart on the same arguments (tests and benchmarks).
// Header-only, so the benchmark binary can use it too.
#pragma once

#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/FXPrimitiveShapes.h"
#include "framework/primitives/dispatch/FXRealIpp.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace framix::test {

// Loads the real IPP, by default from the folder scripts/install-ipp.sh fills; false if absent.
inline bool FXRealIppLoaded()
{
#ifdef FRAMIX_SOURCE_DIR
    setenv("FRAMIX_IPP_DIR", FRAMIX_SOURCE_DIR "/.deps/ipp/lib", 0);
#endif
    return FXRealIppSymbol("ippInit") != nullptr && FXRealIppSymbol("ippiGetLibVersion") != nullptr;
}

// Functions modern IPP still exports unchanged (the colour conversions, twist, gamma) are
// called directly. IPP 9.0 removed the legacy box, rank and separable filters. Their replacements:
// - box, min, max, median: ippiFilter<Op>Border_<type>_<layout> with ippBorderInMem (reads the
//   source outside the ROI as the legacy functions did) and a centred mask ((size - 1) / 2); a
//   legacy anchor becomes a shift of the source pointer;
// - row and column filters: ippiFilterBorder with a 1xK (Kx1) float kernel rounding to
//   nearest; it runs the kernel in direct order around (K - 1) / 2, so the kernel is reversed
//   and the source shifted.
class TFXIppOracle {
public:
    // args describe one call (as for FXCallShape); Ready() is false when the installed IPP has
    // no counterpart or refuses the arguments.
    TFXIppOracle(const prim::TFXPrimitiveInfo& p, const prim::TFXShapeArgs& args)
        : FPrim(p), FArgs(args)
    {
        const int channels = prim::FXChannels(p.Layout);
        const int type = p.Sample == prim::TFXSample::U8 ? kIpp8u : kIpp16u;
        const int pixelBytes = channels * prim::FXSampleBytes(p.Sample);
        const auto* src = static_cast<const Ipp8u*>(args.Src);
        const std::string suffix(p.Name.substr(p.Name.find('_')));
        if (SameArguments(p.Shape)) {
            FDirect = Symbol<prim::TFXAnyFn>(std::string(p.Name));
            FReady = FDirect != nullptr;
            return;
        }
        if (p.Shape == prim::TFXShape::MaskFilter) {
            const std::string op(p.Name.substr(0, p.Name.find('_')));
            FMask = Symbol<TMaskFilter>(op + "Border" + suffix);
            auto bufferSize = Symbol<TBufferSize>(op + "BorderGetBufferSize");
            int size = 0;
            if (FMask == nullptr || bufferSize == nullptr ||
                bufferSize(args.Roi, args.Mask, type, channels, &size) != 0)
                return;
            FBuffer.resize(std::size_t(size) + 64);
            const int shiftX = (args.Mask.width - 1) / 2 - args.Anchor.x;
            const int shiftY = (args.Mask.height - 1) / 2 - args.Anchor.y;
            FSrc =
                src + std::ptrdiff_t(shiftY) * args.SrcStep + std::ptrdiff_t(shiftX) * pixelBytes;
        } else {
            auto getSize = Symbol<TGetSize>("ippiFilterBorderGetSize");
            auto init = Symbol<TInit>("ippiFilterBorderInit_32f");
            FKernel = Symbol<TKernelFilter>("ippiFilterBorder" + suffix);
            if (getSize == nullptr || init == nullptr || FKernel == nullptr)
                return;
            const bool row = p.Shape == prim::TFXShape::RowFilter;
            const int k = args.KernelSize;
            const IppiSize kernelSize = row ? IppiSize{k, 1} : IppiSize{1, k};
            const std::vector<Ipp32f> reversed(args.Kernel, args.Kernel + k);
            std::vector<Ipp32f> kernel(reversed.rbegin(), reversed.rend());
            int specSize = 0, bufferSize = 0;
            if (getSize(kernelSize, args.Roi, type, kIpp32f, channels, &specSize, &bufferSize) != 0)
                return;
            FSpec.resize(std::size_t(specSize) + 64);
            FBuffer.resize(std::size_t(bufferSize) + 64);
            if (init(kernel.data(), kernelSize, type, channels, kIppRndNear, FSpec.data()) != 0)
                return;
            const int shift = args.KernelAnchor - (k - 1) + (k - 1) / 2;
            FSrc = src + (row ? std::ptrdiff_t(shift) * pixelBytes
                              : std::ptrdiff_t(shift) * args.SrcStep);
        }
        FReady = true;
    }

    bool Ready() const { return FReady; }

    // IPP's status (modern numbering); writes args.Dst.
    int Run()
    {
        if (FDirect != nullptr)
            return prim::FXCallShape(FPrim.Shape, FPrim.Sample, FDirect, FArgs);
        const Ipp8u zeros[8] = {};
        if (FPrim.Shape == prim::TFXShape::MaskFilter)
            return FMask(FSrc, FArgs.SrcStep, FArgs.Dst, FArgs.DstStep, FArgs.Roi, FArgs.Mask,
                         kIppBorderInMem, zeros, FBuffer.data());
        return FKernel(FSrc, FArgs.SrcStep, FArgs.Dst, FArgs.DstStep, FArgs.Roi, kIppBorderInMem,
                       zeros, FSpec.data(), FBuffer.data());
    }

private:
    // Modern IPP's numbering (2021 and later), which differs from the legacy one we use.
    static constexpr int kIppBorderInMem = 0xF0;
    static constexpr int kIpp8u = 1, kIpp16u = 5, kIpp32f = 13;
    static constexpr int kIppRndNear = 1;

    // Border values are passed by value (C1) or by pointer (C3, C4) depending on the function;
    // both travel in an integer register, so one pointer-typed declaration serves.
    using TMaskFilter = int (*)(const void*, int, void*, int, IppiSize, IppiSize, int, const void*,
                                Ipp8u*);
    using TBufferSize = int (*)(IppiSize, IppiSize, int, int, int*);
    using TGetSize = int (*)(IppiSize, IppiSize, int, int, int, int*, int*);
    using TInit = int (*)(const Ipp32f*, IppiSize, int, int, int, void*);
    using TKernelFilter = int (*)(const void*, int, void*, int, IppiSize, int, const void*,
                                  const void*, Ipp8u*);

    // Shapes whose functions modern IPP still exports under the same name and arguments.
    static bool SameArguments(prim::TFXShape shape)
    {
        return shape == prim::TFXShape::ColorConvert || shape == prim::TFXShape::ColorConvertC3P3 ||
               shape == prim::TFXShape::ColorConvertP3C3 || shape == prim::TFXShape::ColorTwist;
    }

    template <class Fn> static Fn Symbol(const std::string& name)
    {
        return reinterpret_cast<Fn>(FXRealIppSymbol(name));
    }

    const prim::TFXPrimitiveInfo& FPrim;
    prim::TFXShapeArgs FArgs;
    const Ipp8u* FSrc = nullptr;
    TMaskFilter FMask = nullptr;
    TKernelFilter FKernel = nullptr;
    prim::TFXAnyFn FDirect = nullptr;
    std::vector<Ipp8u> FSpec, FBuffer;
    bool FReady = false;
};

} // namespace framix::test
