// SPDX-License-Identifier: MIT
// Row addressing by byte steps, shared by the reference implementations and the vector kernels.
#pragma once

#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/FXIsa.h"

#include <cstddef>

namespace framix::prim {
inline namespace FX_ISA_NS {

// Row y (may be negative) of an image whose rows are `step` bytes apart.
template <class T> const T* FXRowAt(const T* p, int step, int y)
{
    return reinterpret_cast<const T*>(reinterpret_cast<const Ipp8u*>(p) + std::ptrdiff_t(y) * step);
}

template <class T> T* FXRowAt(T* p, int step, int y)
{
    return reinterpret_cast<T*>(reinterpret_cast<Ipp8u*>(p) + std::ptrdiff_t(y) * step);
}

// Start of the vector at step i of a row of n samples (n >= lanes): the last one is moved back
// so it ends at the row's end. It recomputes a few samples, which only kernels that are a pure
// function of the source may do.
inline int FXVectorStart(int i, int n, int lanes)
{
    return i + lanes > n ? n - lanes : i;
}

} // namespace FX_ISA_NS
} // namespace framix::prim
