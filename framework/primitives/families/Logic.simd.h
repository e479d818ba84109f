// SPDX-License-Identifier: MIT
// Bitwise logic, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/Logic.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include "framework/primitives/families/FXPointForms.h"
#include "framework/primitives/families/FXPointRows.h"

// A row is one sequence of bytes (16-bit samples alike); AC4 puts the destination's alpha back.

namespace framix::prim::FX_SIMD_NS {
namespace {

struct TAnd {
    template <class V> V operator()(V a, V b) const { return And(a, b); }
};
struct TOr {
    template <class V> V operator()(V a, V b) const { return Or(a, b); }
};
struct TXor {
    template <class V> V operator()(V a, V b) const { return Xor(a, b); }
};

template <class T, TFXLayout L, class Op>
IppStatus Bitwise(const T* a, int aStep, const T* b, int bStep, T* d, int dStep, IppiSize roi,
                  Op op)
{
    const VU8 alpha = AlphaLanes();
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, FXChannels(L),
               [&](const T* x, const T* y, T* z, int) { Put<L>(z, op(Load(x), Load(y)), alpha); });
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L>
IppStatus And(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize)
{
    return Bitwise<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, TAnd{});
}

template <class T, TFXLayout L>
IppStatus Or(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
             IppiSize roiSize)
{
    return Bitwise<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, TOr{});
}

template <class T, TFXLayout L>
IppStatus Xor(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize)
{
    return Bitwise<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, TXor{});
}

FX_POINT_IN_PLACE(AndI, And)
FX_POINT_IN_PLACE(OrI, Or)
FX_POINT_IN_PLACE(XorI, Xor)

template <class T, TFXLayout L> IppStatus NotI(T* pSrcDst, int srcDstStep, IppiSize roiSize)
{
    const VU8 alpha = AlphaLanes();
    ForEachRow(static_cast<const T*>(nullptr), 0, static_cast<const T*>(nullptr), 0, pSrcDst,
               srcDstStep, roiSize, FXChannels(L), [&](const T*, const T*, T* z, int) {
                   Put<L>(z, Xor(Load(z), SplatU8(0xFF)), alpha);
               });
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Logic, FX_LOGIC_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
