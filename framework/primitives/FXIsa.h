// SPDX-License-Identifier: MIT
// Names the instruction-set namespace that header-defined helpers of the primitive layer live in.
#pragma once

// Inline helpers shared by the reference and the vector kernels are compiled once per level.
// Each copy must carry its own symbol, or the linker could keep an AVX-512 copy for baseline
// callers; FXRound.h and the like therefore open `inline namespace FX_ISA_NS` inside
// framix::prim: `isa_avx2` (and so on) in a level's kernel file, `isa_base` elsewhere.
#define FX_ISA_JOIN2(a, b) a##b
#define FX_ISA_JOIN(a, b) FX_ISA_JOIN2(a, b)
#ifdef FX_SIMD_NS
#define FX_ISA_NS FX_ISA_JOIN(isa_, FX_SIMD_NS)
#else
#define FX_ISA_NS isa_base
#endif
