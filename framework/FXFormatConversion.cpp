// SPDX-License-Identifier: MIT
// Pixel conversion: argument checks and the choice between the vector paths and the reference.
#include "framework/FXFormatConversion.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "framework/FXError.h"
#include "framework/detail/FXConvertKernels.h"

namespace framix {

namespace conv {

const char* FXConvertLevelName(TFXConvertLevel level)
{
    switch (level) {
    case TFXConvertLevel::Ref:
        return "ref";
    case TFXConvertLevel::Sse41:
        return "sse41";
    case TFXConvertLevel::Avx2:
        return "avx2";
    case TFXConvertLevel::Avx512:
        return "avx512";
    }
    return "?";
}

bool FXConvertLevelSupported(TFXConvertLevel level)
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_cpu_init();
    switch (level) {
    case TFXConvertLevel::Ref:
        return true;
    case TFXConvertLevel::Sse41:
        return __builtin_cpu_supports("sse4.1");
    case TFXConvertLevel::Avx2:
        return __builtin_cpu_supports("avx2");
    case TFXConvertLevel::Avx512:
        return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
               __builtin_cpu_supports("avx512vl");
    }
    return false;
#else
    return level == TFXConvertLevel::Ref;
#endif
}

TFXConvertLevel FXSelectedConvertLevel()
{
    static TFXConvertLevel selected = [] {
        int cap = kConvertLevelCount - 1;
        if (const char* env = std::getenv("FRAMIX_SIMD"))
            for (int i = 0; i < kConvertLevelCount; ++i)
                if (std::strcmp(env, FXConvertLevelName(TFXConvertLevel(i))) == 0)
                    cap = i;
        for (int i = cap; i > 0; --i)
            if (FXConvertLevelSupported(TFXConvertLevel(i)))
                return TFXConvertLevel(i);
        return TFXConvertLevel::Ref;
    }();
    return selected;
}

TFXConvertKernel FXFastKernel(TFXVideoFormat srcFormat, TFXVideoFormat dstFormat,
                              TFXConvertLevel level)
{
    const TFXFastKernelTable* table = nullptr;
    switch (level) {
    case TFXConvertLevel::Ref:
        return nullptr;
    case TFXConvertLevel::Sse41:
        table = &FastKernelsSse41();
        break;
    case TFXConvertLevel::Avx2:
        table = &FastKernelsAvx2();
        break;
    case TFXConvertLevel::Avx512:
        table = &FastKernelsAvx512();
        break;
    }
    for (int i = 0; i < kFastPairCount; ++i)
        if (kFastPairs[i].Src == srcFormat && kFastPairs[i].Dst == dstFormat)
            return (*table)[i];
    return nullptr;
}

} // namespace conv

void FXCheckPlanes(TFXVideoFormat format, const TFXConstPlanes& planes, int width, int height,
                   const char* what)
{
    // Keeps every row length and plane offset far inside int and ptrdiff_t.
    constexpr int kMaxDimension = 1 << 24;
    if (width <= 0 || height <= 0 || width > kMaxDimension || height > kMaxDimension)
        throw EFXError(std::string("Image size ") + std::to_string(width) + "x" +
                       std::to_string(height) + " is not valid (1 to " +
                       std::to_string(kMaxDimension) + " pixels each way)");
    const TFXFormatInfo& info = FXFormatInfo(FXCheckedVideoFormat(int(format)));
    for (int plane = 0; plane < info.PlaneCount; ++plane) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, plane);
        const std::string where = std::string(what) + " plane " + std::to_string(plane) + " of " +
                                  std::string(FXVideoFormatName(format));
        if (planes.Data[plane] == nullptr)
            throw EFXError("The " + where + " is null");
        if (planes.Stride[plane] < g.RowBytes)
            throw EFXError("The " + where + " has stride " + std::to_string(planes.Stride[plane]) +
                           ", less than its row of " + std::to_string(g.RowBytes) + " bytes");
    }
}

void FXConvertPixels(TFXVideoFormat srcFormat, const TFXConstPlanes& src, TFXVideoFormat dstFormat,
                     const TFXPlanes& dst, int width, int height)
{
    FXCheckPlanes(srcFormat, src, width, height, "source");
    FXCheckPlanes(dstFormat, dst, width, height, "destination");
    if (conv::TFXConvertKernel fast =
            conv::FXFastKernel(srcFormat, dstFormat, conv::FXSelectedConvertLevel()))
        return fast(src, dst, width, height);
    conv::ConvertReference(srcFormat, src, dstFormat, dst, width, height);
}

} // namespace framix
