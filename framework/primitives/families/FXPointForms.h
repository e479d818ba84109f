// SPDX-License-Identifier: MIT
// Kernels every level of a point family derives the same way from its main kernels: in-place
// forms (the destination is also the second operand) and scalar-constant forms. Expanded in
// the reference's namespace and in each level's, after the main kernels.
#pragma once

#include "framework/primitives/FXPrimitiveShapes.h"

// Name(pSrc, srcStep, pSrcDst, srcDstStep, roiSize[, scaleFactor]) = Op(pSrc, pSrcDst -> pSrcDst)
#define FX_POINT_IN_PLACE_SFS(Name, Op)                                                            \
    template <class T, ::framix::prim::TFXLayout L>                                                \
    ::framix::IppStatus Name(const T* pSrc, int srcStep, T* pSrcDst, int srcDstStep,               \
                             ::framix::IppiSize roiSize, int scaleFactor)                          \
    {                                                                                              \
        return Op<T, L>(pSrc, srcStep, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize,          \
                        scaleFactor);                                                              \
    }
#define FX_POINT_IN_PLACE(Name, Op)                                                                \
    template <class T, ::framix::prim::TFXLayout L>                                                \
    ::framix::IppStatus Name(const T* pSrc, int srcStep, T* pSrcDst, int srcDstStep,               \
                             ::framix::IppiSize roiSize)                                           \
    {                                                                                              \
        return Op<T, L>(pSrc, srcStep, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);         \
    }

// From Op(pSrc, srcStep, const T* value, pDst, dstStep, roiSize): the one-value form, and the
// in-place forms of both.
#define FX_POINT_CONSTANT_FORMS(Op)                                                                \
    template <class T, ::framix::prim::TFXLayout L>                                                \
    ::framix::IppStatus Op(const T* pSrc, int srcStep, T value, T* pDst, int dstStep,              \
                           ::framix::IppiSize roiSize)                                             \
    {                                                                                              \
        return Op##V<T, L>(pSrc, srcStep, &value, pDst, dstStep, roiSize);                         \
    }                                                                                              \
    template <class T, ::framix::prim::TFXLayout L>                                                \
    ::framix::IppStatus Op##VI(const T* value, T* pSrcDst, int srcDstStep,                         \
                               ::framix::IppiSize roiSize)                                         \
    {                                                                                              \
        return Op##V<T, L>(pSrcDst, srcDstStep, value, pSrcDst, srcDstStep, roiSize);              \
    }                                                                                              \
    template <class T, ::framix::prim::TFXLayout L>                                                \
    ::framix::IppStatus Op##I(T value, T* pSrcDst, int srcDstStep, ::framix::IppiSize roiSize)     \
    {                                                                                              \
        return Op##V<T, L>(pSrcDst, srcDstStep, &value, pSrcDst, srcDstStep, roiSize);             \
    }
