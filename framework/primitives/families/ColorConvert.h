// SPDX-License-Identifier: MIT
// Colour conversion from RGB (or BGR) to other colour spaces: the family's list and the
// constants its reference and vector kernels share.
#pragma once

#include "framework/primitives/FXFamily.h"

#include <array>
#include <bit>
#include <cstdint>

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_COLOR_CONVERT_PRIMITIVES(X)                                                             \
    X(ippiRGBToHLS_8u_C3R, RGBToHLS, ColorConvert, Ipp8u, C3)                                      \
    X(ippiRGBToHLS_8u_AC4R, RGBToHLS, ColorConvert, Ipp8u, AC4)                                    \
    X(ippiRGBToHSV_8u_C3R, RGBToHSV, ColorConvert, Ipp8u, C3)                                      \
    X(ippiRGBToHSV_8u_AC4R, RGBToHSV, ColorConvert, Ipp8u, AC4)                                    \
    X(ippiRGBToLUV_8u_C3R, RGBToLUV, ColorConvert, Ipp8u, C3)                                      \
    X(ippiRGBToLUV_8u_AC4R, RGBToLUV, ColorConvert, Ipp8u, AC4)                                    \
    X(ippiRGBToXYZ_8u_C3R, RGBToXYZ, ColorConvert, Ipp8u, C3)                                      \
    X(ippiRGBToXYZ_8u_AC4R, RGBToXYZ, ColorConvert, Ipp8u, AC4)                                    \
    X(ippiRGBToYCC_8u_C3R, RGBToYCC, ColorConvert, Ipp8u, C3)                                      \
    X(ippiRGBToYCC_8u_AC4R, RGBToYCC, ColorConvert, Ipp8u, AC4)                                    \
    X(ippiRGBToYCbCr_8u_C3R, RGBToYCbCr, ColorConvert, Ipp8u, C3)                                  \
    X(ippiRGBToYCbCr_8u_AC4R, RGBToYCbCr, ColorConvert, Ipp8u, AC4)                                \
    X(ippiRGBToYUV_8u_C3R, RGBToYUV, ColorConvert, Ipp8u, C3)                                      \
    X(ippiRGBToYUV_8u_AC4R, RGBToYUV, ColorConvert, Ipp8u, AC4)                                    \
    X(ippiBGRToLab_8u_C3R, BGRToLab, ColorConvert, Ipp8u, C3)                                      \
    X(ippiBGRToHLS_8u_C3P3R, BGRToHLS, ColorConvertC3P3, Ipp8u, C3)

namespace framix::prim {

const TFXFamily& ColorConvertFamily();

// The reciprocal estimates that hue and saturation divide by, for the integers 0 ... 255 (0 is
// never used). They are the values of the processors' approximate-reciprocal instruction
// (RCPPS on Intel processors, 12 significant bits, relative error below 2^-12), which IPP's
// conversions multiply by instead of dividing; a table makes the results the same on every
// processor and at every vector level.
inline constexpr std::array<std::uint32_t, 256> kFXReciprocalEstimateBits = {
    0x7F800000, 0x3F7FF000, 0x3EFFF000, 0x3EAAA000, 0x3E7FF000, 0x3E4CC000, 0x3E2AA000, 0x3E124000,
    0x3DFFF000, 0x3DE38000, 0x3DCCC000, 0x3DBA2800, 0x3DAAA000, 0x3D9D8000, 0x3D924000, 0x3D888000,
    0x3D7FF000, 0x3D70E000, 0x3D638000, 0x3D578800, 0x3D4CC000, 0x3D430000, 0x3D3A2800, 0x3D321000,
    0x3D2AA000, 0x3D23D000, 0x3D1D8000, 0x3D17B000, 0x3D124000, 0x3D0D3800, 0x3D088000, 0x3D042000,
    0x3CFFF000, 0x3CF83000, 0x3CF0E000, 0x3CEA0000, 0x3CE38000, 0x3CDD5800, 0x3CD78800, 0x3CD20000,
    0x3CCCC000, 0x3CC7C800, 0x3CC30000, 0x3CBE7800, 0x3CBA2800, 0x3CB60000, 0x3CB21000, 0x3CAE4800,
    0x3CAAA000, 0x3CA72800, 0x3CA3D000, 0x3CA09800, 0x3C9D8000, 0x3C9A8800, 0x3C97B000, 0x3C94F000,
    0x3C924000, 0x3C8FB000, 0x3C8D3800, 0x3C8AD800, 0x3C888000, 0x3C864800, 0x3C842000, 0x3C820000,
    0x3C7FF000, 0x3C7C0000, 0x3C783000, 0x3C747800, 0x3C70E000, 0x3C6D6800, 0x3C6A0000, 0x3C66B800,
    0x3C638000, 0x3C606000, 0x3C5D5800, 0x3C5A6800, 0x3C578800, 0x3C54C000, 0x3C520000, 0x3C4F5800,
    0x3C4CC000, 0x3C4A3800, 0x3C47C800, 0x3C456000, 0x3C430000, 0x3C40B800, 0x3C3E7800, 0x3C3C4800,
    0x3C3A2800, 0x3C381000, 0x3C360000, 0x3C340000, 0x3C321000, 0x3C302800, 0x3C2E4800, 0x3C2C7000,
    0x3C2AA000, 0x3C28E000, 0x3C272800, 0x3C257800, 0x3C23D000, 0x3C223000, 0x3C209800, 0x3C1F0800,
    0x3C1D8000, 0x3C1C0000, 0x3C1A8800, 0x3C191800, 0x3C17B000, 0x3C164800, 0x3C14F000, 0x3C139800,
    0x3C124000, 0x3C10F800, 0x3C0FB000, 0x3C0E7000, 0x3C0D3800, 0x3C0C0000, 0x3C0AD800, 0x3C09A800,
    0x3C088000, 0x3C076000, 0x3C064800, 0x3C053000, 0x3C042000, 0x3C031000, 0x3C020000, 0x3C010000,
    0x3BFFF000, 0x3BFDF800, 0x3BFC0000, 0x3BFA1000, 0x3BF83000, 0x3BF65000, 0x3BF47800, 0x3BF2A800,
    0x3BF0E000, 0x3BEF2000, 0x3BED6800, 0x3BEBB000, 0x3BEA0000, 0x3BE85800, 0x3BE6B800, 0x3BE51800,
    0x3BE38000, 0x3BE1F000, 0x3BE06000, 0x3BDEE000, 0x3BDD5800, 0x3BDBE000, 0x3BDA6800, 0x3BD8F800,
    0x3BD78800, 0x3BD62000, 0x3BD4C000, 0x3BD36000, 0x3BD20000, 0x3BD0A800, 0x3BCF5800, 0x3BCE1000,
    0x3BCCC000, 0x3BCB8000, 0x3BCA3800, 0x3BC90000, 0x3BC7C800, 0x3BC69000, 0x3BC56000, 0x3BC43000,
    0x3BC30000, 0x3BC1D800, 0x3BC0B800, 0x3BBF9800, 0x3BBE7800, 0x3BBD6000, 0x3BBC4800, 0x3BBB3800,
    0x3BBA2800, 0x3BB91800, 0x3BB81000, 0x3BB70800, 0x3BB60000, 0x3BB50000, 0x3BB40000, 0x3BB30800,
    0x3BB21000, 0x3BB11800, 0x3BB02800, 0x3BAF3000, 0x3BAE4800, 0x3BAD5800, 0x3BAC7000, 0x3BAB8800,
    0x3BAAA000, 0x3BA9C000, 0x3BA8E000, 0x3BA80000, 0x3BA72800, 0x3BA65000, 0x3BA57800, 0x3BA4A000,
    0x3BA3D000, 0x3BA30000, 0x3BA23000, 0x3BA16800, 0x3BA09800, 0x3B9FD000, 0x3B9F0800, 0x3B9E4800,
    0x3B9D8000, 0x3B9CC000, 0x3B9C0000, 0x3B9B4800, 0x3B9A8800, 0x3B99D000, 0x3B991800, 0x3B986000,
    0x3B97B000, 0x3B96F800, 0x3B964800, 0x3B959800, 0x3B94F000, 0x3B944000, 0x3B939800, 0x3B92E800,
    0x3B924000, 0x3B91A000, 0x3B90F800, 0x3B905800, 0x3B8FB000, 0x3B8F1000, 0x3B8E7000, 0x3B8DD800,
    0x3B8D3800, 0x3B8CA000, 0x3B8C0000, 0x3B8B6800, 0x3B8AD800, 0x3B8A4000, 0x3B89A800, 0x3B891800,
    0x3B888000, 0x3B87F000, 0x3B876000, 0x3B86D800, 0x3B864800, 0x3B85B800, 0x3B853000, 0x3B84A800,
    0x3B842000, 0x3B839800, 0x3B831000, 0x3B828800, 0x3B820000, 0x3B818000, 0x3B810000, 0x3B808000,};

inline float FXReciprocalEstimate(int n)
{
    return std::bit_cast<float>(kFXReciprocalEstimateBits[n]);
}

} // namespace framix::prim
