// SPDX-License-Identifier: MIT
// The machinery a primitive family plugs into: kernel tables per level, checked entry points
// and the family description the registry collects.
#pragma once

#include "framework/primitives/FXCpu.h"
#include "framework/primitives/FXPrimitiveShapes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

// A family is one X-list of rows X(name, Op, Shape, T, L):
//   name   the IPP name (ippiFilterBox_8u_C3R)
//   Op     the kernel template every level defines: template <class T, TFXLayout L> IppStatus
//          Op(<the shape's IPP parameters>), and the check `Check<Op><T, L>` (a pointer to a
//          function with the same parameters) in framix::prim
//   Shape  a TFXShape enumerator (MaskFilter)
//   T      the sample type (Ipp8u)
//   L      a TFXLayout enumerator (C3)

namespace framix::prim {

// One level's kernels of a family, in X-list order; empty where the level is not compiled.
using TFXKernelTable = std::span<const TFXAnyFn>;
using TFXKernelTableFn = TFXKernelTable (*)();

// A primitive as its family declares it.
struct TFXPrimitiveRow {
    const char* Name;
    TFXShape Shape;
    TFXSample Sample;
    TFXLayout Layout;
    TFXAnyFn Entry; // validates, then runs the selected level
};

struct TFXFamily {
    const char* Name;
    std::span<const TFXPrimitiveRow> Rows;
    std::array<TFXKernelTableFn, kFXSimdLevelCount> Levels; // Ref, Sse41, Avx2, Avx512
};

// A primitive's name as a template argument, so each entry point is its own instantiation.
template <std::size_t N> struct TFXName {
    char Text[N];
    constexpr TFXName(const char (&text)[N]) { std::copy_n(text, N, Text); }
};

// The kernels an entry point calls: the selected level and the reference it falls back on.
template <class Fn> struct TFXSelection {
    Fn* Fast;
    Fn* Ref;
};

// Looks the primitive up in the registry (FXPrimitiveRegistry.cpp) and picks its level.
TFXSelection<void()> FXSelectKernelsByName(const char* name);

template <class Fn> struct TFXEntry;

// Every entry point: IPP's status for bad arguments first (shared by all levels), then the
// level chosen once for this primitive, then the reference if that level declines.
template <class... A> struct TFXEntry<IppStatus(A...)> {
    template <TFXName Name, IppStatus (*Check)(A...)> static IppStatus Call(A... args)
    {
        if (const IppStatus s = Check(args...); s != ippStsNoErr)
            return s;
        static const auto kSel = Typed(FXSelectKernelsByName(Name.Text));
        const IppStatus s = kSel.Fast(args...);
        return s == kFXDeclined ? kSel.Ref(args...) : s;
    }

private:
    static TFXSelection<IppStatus(A...)> Typed(TFXSelection<void()> sel)
    {
        return {reinterpret_cast<IppStatus (*)(A...)>(sel.Fast),
                reinterpret_cast<IppStatus (*)(A...)>(sel.Ref)};
    }
};

} // namespace framix::prim

// Expands a family X-list into the level's kernel table. Used once at the end of a family's
// reference file (inside namespace framix::prim::ref) and of its .simd.h (inside the level's
// namespace).
#define FX_KERNEL_TABLE_ENTRY(name, Op, Shape, T, L)                                               \
    reinterpret_cast<::framix::prim::TFXAnyFn>(&Op<T, ::framix::prim::TFXLayout::L>),
#define FX_KERNEL_TABLE(Fam, LIST)                                                                 \
    ::framix::prim::TFXKernelTable Fam##Kernels()                                                  \
    {                                                                                              \
        static const ::framix::prim::TFXAnyFn kTable[] = {LIST(FX_KERNEL_TABLE_ENTRY)};            \
        return kTable;                                                                             \
    }

// Expands a family X-list into its description (entry points included). Used once, in the
// family's .cpp, inside namespace framix::prim.
#define FX_FAMILY_ROW(name, Op, Shape, T, L)                                                       \
    {#name, TFXShape::Shape, kFXSampleOf<T>, TFXLayout::L,                                         \
     reinterpret_cast<TFXAnyFn>(                                                                   \
         &TFXEntry<FXShapeFn<TFXShape::Shape, T>>::template Call<#name,                            \
                                                                 Check##Op<T, TFXLayout::L>>)},
#define FX_DEFINE_FAMILY(Fam, LIST)                                                                \
    namespace ref {                                                                                \
    TFXKernelTable Fam##Kernels();                                                                 \
    }                                                                                              \
    namespace sse41 {                                                                              \
    TFXKernelTable Fam##Kernels();                                                                 \
    }                                                                                              \
    namespace avx2 {                                                                               \
    TFXKernelTable Fam##Kernels();                                                                 \
    }                                                                                              \
    namespace avx512 {                                                                             \
    TFXKernelTable Fam##Kernels();                                                                 \
    }                                                                                              \
    const TFXFamily& Fam##Family()                                                                 \
    {                                                                                              \
        static const TFXPrimitiveRow kRows[] = {LIST(FX_FAMILY_ROW)};                              \
        static const TFXFamily kFamily{#Fam,                                                       \
                                       kRows,                                                      \
                                       {&ref::Fam##Kernels, &sse41::Fam##Kernels,                  \
                                        &avx2::Fam##Kernels, &avx512::Fam##Kernels}};              \
        return kFamily;                                                                            \
    }
