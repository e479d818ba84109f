// SPDX-License-Identifier: MIT
// Integer convolution: the general kernel with a divisor and the fixed kernels (edges,
// Laplace, Gauss, high- and low-pass, sharpen): the family's list and the fixed kernels.
#pragma once

#include "framework/primitives/FXFamily.h"

#include <array>

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_FILTER_KERNEL_PRIMITIVES(X)                                                             \
    X(ippiFilter_8u_C1R, FilterKernel32s, KernelFilter, Ipp8u, C1)                                 \
    X(ippiFilter_8u_C3R, FilterKernel32s, KernelFilter, Ipp8u, C3)                                 \
    X(ippiFilter_8u_AC4R, FilterKernel32s, KernelFilter, Ipp8u, AC4)                               \
    X(ippiFilter_16u_C1R, FilterKernel32s, KernelFilter, Ipp16u, C1)                               \
    X(ippiFilterPrewittHoriz_8u_C1R, FilterPrewittHoriz, FixedFilter, Ipp8u, C1)                   \
    X(ippiFilterPrewittHoriz_8u_C3R, FilterPrewittHoriz, FixedFilter, Ipp8u, C3)                   \
    X(ippiFilterPrewittHoriz_8u_AC4R, FilterPrewittHoriz, FixedFilter, Ipp8u, AC4)                 \
    X(ippiFilterPrewittHoriz_16u_C1R, FilterPrewittHoriz, FixedFilter, Ipp16u, C1)                 \
    X(ippiFilterPrewittVert_8u_C1R, FilterPrewittVert, FixedFilter, Ipp8u, C1)                     \
    X(ippiFilterPrewittVert_8u_C3R, FilterPrewittVert, FixedFilter, Ipp8u, C3)                     \
    X(ippiFilterPrewittVert_8u_AC4R, FilterPrewittVert, FixedFilter, Ipp8u, AC4)                   \
    X(ippiFilterPrewittVert_16u_C1R, FilterPrewittVert, FixedFilter, Ipp16u, C1)                   \
    X(ippiFilterSobelHoriz_8u_C1R, FilterSobelHoriz, FixedFilter, Ipp8u, C1)                       \
    X(ippiFilterSobelHoriz_8u_C3R, FilterSobelHoriz, FixedFilter, Ipp8u, C3)                       \
    X(ippiFilterSobelHoriz_8u_AC4R, FilterSobelHoriz, FixedFilter, Ipp8u, AC4)                     \
    X(ippiFilterSobelHoriz_16u_C1R, FilterSobelHoriz, FixedFilter, Ipp16u, C1)                     \
    X(ippiFilterSobelVert_8u_C1R, FilterSobelVert, FixedFilter, Ipp8u, C1)                         \
    X(ippiFilterSobelVert_8u_C3R, FilterSobelVert, FixedFilter, Ipp8u, C3)                         \
    X(ippiFilterSobelVert_8u_AC4R, FilterSobelVert, FixedFilter, Ipp8u, AC4)                       \
    X(ippiFilterSobelVert_16u_C1R, FilterSobelVert, FixedFilter, Ipp16u, C1)                       \
    X(ippiFilterRobertsDown_8u_C1R, FilterRobertsDown, FixedFilter, Ipp8u, C1)                     \
    X(ippiFilterRobertsDown_8u_C3R, FilterRobertsDown, FixedFilter, Ipp8u, C3)                     \
    X(ippiFilterRobertsDown_8u_AC4R, FilterRobertsDown, FixedFilter, Ipp8u, AC4)                   \
    X(ippiFilterRobertsDown_16u_C1R, FilterRobertsDown, FixedFilter, Ipp16u, C1)                   \
    X(ippiFilterRobertsUp_8u_C1R, FilterRobertsUp, FixedFilter, Ipp8u, C1)                         \
    X(ippiFilterRobertsUp_8u_C3R, FilterRobertsUp, FixedFilter, Ipp8u, C3)                         \
    X(ippiFilterRobertsUp_8u_AC4R, FilterRobertsUp, FixedFilter, Ipp8u, AC4)                       \
    X(ippiFilterRobertsUp_16u_C1R, FilterRobertsUp, FixedFilter, Ipp16u, C1)                       \
    X(ippiFilterSharpen_8u_C1R, FilterSharpen, FixedFilter, Ipp8u, C1)                             \
    X(ippiFilterSharpen_8u_C3R, FilterSharpen, FixedFilter, Ipp8u, C3)                             \
    X(ippiFilterSharpen_8u_AC4R, FilterSharpen, FixedFilter, Ipp8u, AC4)                           \
    X(ippiFilterSharpen_16u_C1R, FilterSharpen, FixedFilter, Ipp16u, C1)                           \
    X(ippiFilterLaplace_8u_C1R, FilterLaplace, FixedMaskFilter, Ipp8u, C1)                         \
    X(ippiFilterLaplace_8u_C3R, FilterLaplace, FixedMaskFilter, Ipp8u, C3)                         \
    X(ippiFilterLaplace_8u_AC4R, FilterLaplace, FixedMaskFilter, Ipp8u, AC4)                       \
    X(ippiFilterLaplace_16u_C1R, FilterLaplace, FixedMaskFilter, Ipp16u, C1)                       \
    X(ippiFilterGauss_8u_C1R, FilterGauss, FixedMaskFilter, Ipp8u, C1)                             \
    X(ippiFilterGauss_8u_C3R, FilterGauss, FixedMaskFilter, Ipp8u, C3)                             \
    X(ippiFilterGauss_8u_AC4R, FilterGauss, FixedMaskFilter, Ipp8u, AC4)                           \
    X(ippiFilterGauss_16u_C1R, FilterGauss, FixedMaskFilter, Ipp16u, C1)                           \
    X(ippiFilterHipass_8u_C1R, FilterHipass, FixedMaskFilter, Ipp8u, C1)                           \
    X(ippiFilterHipass_8u_C3R, FilterHipass, FixedMaskFilter, Ipp8u, C3)                           \
    X(ippiFilterHipass_8u_AC4R, FilterHipass, FixedMaskFilter, Ipp8u, AC4)                         \
    X(ippiFilterHipass_16u_C1R, FilterHipass, FixedMaskFilter, Ipp16u, C1)                         \
    X(ippiFilterLowpass_8u_C1R, FilterLowpass, FixedMaskFilter, Ipp8u, C1)                         \
    X(ippiFilterLowpass_8u_C3R, FilterLowpass, FixedMaskFilter, Ipp8u, C3)                         \
    X(ippiFilterLowpass_8u_AC4R, FilterLowpass, FixedMaskFilter, Ipp8u, AC4)                       \
    X(ippiFilterLowpass_16u_C1R, FilterLowpass, FixedMaskFilter, Ipp16u, C1)

namespace framix::prim {

const TFXFamily& FilterKernelFamily();

// A fixed kernel as Intel publishes it: a square matrix, rows from the top, that the filter
// applies exactly as ippiFilter applies pKernel (in inverse order, so rotated by 180 degrees
// over the image, centred), then divides by Divisor.
struct TFXFixedKernel {
    int Size;
    int Divisor;
    std::array<Ipp32s, 25> Published; // Size * Size used
};

inline constexpr TFXFixedKernel kFXPrewittHoriz{3, 1, {1, 1, 1, 0, 0, 0, -1, -1, -1}};
inline constexpr TFXFixedKernel kFXPrewittVert{3, 1, {-1, 0, 1, -1, 0, 1, -1, 0, 1}};
inline constexpr TFXFixedKernel kFXSobelHoriz{3, 1, {1, 2, 1, 0, 0, 0, -1, -2, -1}};
inline constexpr TFXFixedKernel kFXSobelVert{3, 1, {-1, 0, 1, -2, 0, 2, -1, 0, 1}};
inline constexpr TFXFixedKernel kFXRobertsDown{3, 1, {0, 0, 0, 0, 1, 0, 0, 0, -1}};
inline constexpr TFXFixedKernel kFXRobertsUp{3, 1, {0, 0, 0, 0, 1, 0, -1, 0, 0}};
inline constexpr TFXFixedKernel kFXSharpen{3, 8, {-1, -1, -1, -1, 16, -1, -1, -1, -1}};
inline constexpr TFXFixedKernel kFXLaplace3x3{3, 1, {-1, -1, -1, -1, 8, -1, -1, -1, -1}};
inline constexpr TFXFixedKernel kFXLaplace5x5{5, 1, {-1, -3, -4, -3, -1, //
                                                     -3, 0,  6,  0,  -3, //
                                                     -4, 6,  20, 6,  -4, //
                                                     -3, 0,  6,  0,  -3, //
                                                     -1, -3, -4, -3, -1}};
inline constexpr TFXFixedKernel kFXGauss3x3{3, 16, {1, 2, 1, 2, 4, 2, 1, 2, 1}};
inline constexpr TFXFixedKernel kFXGauss5x5{5, 571, {2,  7,  12,  7,  2,  //
                                                     7,  31, 52,  31, 7,  //
                                                     12, 52, 127, 52, 12, //
                                                     7,  31, 52,  31, 7,  //
                                                     2,  7,  12,  7,  2}};
inline constexpr TFXFixedKernel kFXHipass3x3 = kFXLaplace3x3;
inline constexpr TFXFixedKernel kFXHipass5x5{5, 1, {-1, -1, -1, -1, -1, //
                                                    -1, -1, -1, -1, -1, //
                                                    -1, -1, 24, -1, -1, //
                                                    -1, -1, -1, -1, -1, //
                                                    -1, -1, -1, -1, -1}};
inline constexpr TFXFixedKernel kFXLowpass3x3{3, 9, {1, 1, 1, 1, 1, 1, 1, 1, 1}};
inline constexpr TFXFixedKernel kFXLowpass5x5{
    5, 25, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}};

} // namespace framix::prim

// Defines every fixed filter's Op, in the namespace where it is expanded (the reference or a
// vector level), as that namespace's FilterKernel32s<T, L> with the published kernel, centred.
// The mask-taking filters choose their kernel by the mask code, already checked to be 3x3 or
// 5x5.
#define FX_FIXED_KERNEL_APPLY                                                                      \
    template <class T, TFXLayout L>                                                                \
    IppStatus ApplyFixed(const TFXFixedKernel& kernel, const T* pSrc, int srcStep, T* pDst,        \
                         int dstStep, IppiSize roiSize)                                            \
    {                                                                                              \
        const int centre = kernel.Size / 2;                                                        \
        return FilterKernel32s<T, L>(pSrc, srcStep, pDst, dstStep, roiSize,                        \
                                     kernel.Published.data(), {kernel.Size, kernel.Size},          \
                                     {centre, centre}, kernel.Divisor);                            \
    }
#define FX_FIXED_KERNEL_OP(Op, kernel)                                                             \
    template <class T, TFXLayout L>                                                                \
    IppStatus Op(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)               \
    {                                                                                              \
        return ApplyFixed<T, L>(kernel, pSrc, srcStep, pDst, dstStep, roiSize);                    \
    }
#define FX_FIXED_MASK_KERNEL_OP(Op, kernel3x3, kernel5x5)                                          \
    template <class T, TFXLayout L>                                                                \
    IppStatus Op(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,               \
                 IppiMaskSize mask)                                                                \
    {                                                                                              \
        return ApplyFixed<T, L>(mask == ippMskSize5x5 ? kernel5x5 : kernel3x3, pSrc, srcStep,      \
                                pDst, dstStep, roiSize);                                           \
    }
#define FX_DEFINE_FIXED_KERNEL_OPS                                                                 \
    FX_FIXED_KERNEL_APPLY                                                                          \
    FX_FIXED_KERNEL_OP(FilterPrewittHoriz, kFXPrewittHoriz)                                        \
    FX_FIXED_KERNEL_OP(FilterPrewittVert, kFXPrewittVert)                                          \
    FX_FIXED_KERNEL_OP(FilterSobelHoriz, kFXSobelHoriz)                                            \
    FX_FIXED_KERNEL_OP(FilterSobelVert, kFXSobelVert)                                              \
    FX_FIXED_KERNEL_OP(FilterRobertsDown, kFXRobertsDown)                                          \
    FX_FIXED_KERNEL_OP(FilterRobertsUp, kFXRobertsUp)                                              \
    FX_FIXED_KERNEL_OP(FilterSharpen, kFXSharpen)                                                  \
    FX_FIXED_MASK_KERNEL_OP(FilterLaplace, kFXLaplace3x3, kFXLaplace5x5)                           \
    FX_FIXED_MASK_KERNEL_OP(FilterGauss, kFXGauss3x3, kFXGauss5x5)                                 \
    FX_FIXED_MASK_KERNEL_OP(FilterHipass, kFXHipass3x3, kFXHipass5x5)                              \
    FX_FIXED_MASK_KERNEL_OP(FilterLowpass, kFXLowpass3x3, kFXLowpass5x5)
