// SPDX-License-Identifier: MIT
// Format table: sizes, plane geometry, names, bit counts and FourCC codes.
#include "framework/FXVideoFormat.h"

#include <gtest/gtest.h>

#include "framework/FXError.h"

namespace framix {
namespace {

TEST(FXVideoFormat, ProcessedFormatsHaveTheDocumentedSampleSizes)
{
    EXPECT_EQ(FXFormatInfo(vfRGB24).BytesPerPixel, 3);
    EXPECT_EQ(FXFormatInfo(vfRGB32).BytesPerPixel, 4);
    EXPECT_EQ(FXFormatInfo(vfGray8).BytesPerPixel, 1);
    EXPECT_EQ(FXFormatInfo(vfGray16).BytesPerPixel, 2);
    EXPECT_EQ(FXFormatInfo(vfGray16).BytesPerSample, 2);
    EXPECT_EQ(FXFormatInfo(vfRGB565).BitsPerPixel, 16);
}

TEST(FXVideoFormat, SubsampledPlanesRoundOddSizesUp)
{
    // 5 x 3 in 4:2:0: chroma is 3 x 2, as Y4M and ffmpeg lay it out.
    EXPECT_EQ(FXPlaneGeometry(vfI420, 5, 3, 0).RowBytes, 5);
    EXPECT_EQ(FXPlaneGeometry(vfI420, 5, 3, 1).RowBytes, 3);
    EXPECT_EQ(FXPlaneGeometry(vfI420, 5, 3, 2).Rows, 2);
    EXPECT_EQ(FXPlaneGeometry(vfI422, 5, 3, 1).Rows, 3);
    EXPECT_EQ(FXPlaneGeometry(vfNV12, 5, 3, 1).RowBytes, 6);
    EXPECT_EQ(FXPlaneGeometry(vfYUY2, 5, 3, 0).RowBytes, 12);
    EXPECT_EQ(FXPlaneGeometry(vfYUVA444, 5, 3, 3).RowBytes, 5);
    EXPECT_EQ(FXPlaneGeometry(vfRGB24, 5, 3, 1).RowBytes, 0);
}

TEST(FXVideoFormat, NamesFourCCsAndBitCountsRoundTrip)
{
    for (int i = 0; i < kFXVideoFormatCount; ++i) {
        const auto f = TFXVideoFormat(i);
        EXPECT_EQ(FXVideoFormatFromName(FXVideoFormatName(f)), f);
        EXPECT_EQ(FXGetFormatFromFourCC(FXGetFourCCFromFormat(f)), f);
    }
    for (TFXVideoFormat f : {vfGray8, vfRGB555, vfRGB24, vfRGB32, vfRGB48, vfRGBA64})
        EXPECT_EQ(FXBitCountToVideoFormat(FXVideoFormatToBitCount(f)), f);
    EXPECT_EQ(FXVideoFormatFromName("9"), vfGray16);
}

TEST(FXVideoFormat, UnknownOrdinalsNamesAndCodesAreClearErrors)
{
    EXPECT_THROW(FXCheckedVideoFormat(16), EFXError);
    EXPECT_THROW(FXCheckedVideoFormat(-1), EFXError);
    EXPECT_THROW(FXVideoFormatFromName("vfRGB99"), EFXError);
    EXPECT_THROW(FXBitCountToVideoFormat(12), EFXError);
    EXPECT_THROW(FXGetFormatFromFourCC(FXMakeFourCC('A', 'B', 'C', 'D')), EFXError);
    try {
        FXCheckedVideoFormat(200);
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("200"), std::string::npos);
    }
}

TEST(FXVideoFormat, NativeSetMatchesTheDocumentedMask)
{
    EXPECT_TRUE(kFXNativeFormats.Contains(vfGray16));
    EXPECT_FALSE(kFXNativeFormats.Contains(vfRGB24));
    EXPECT_FALSE(TFXFormatSet::FromMask(0xFFFF).Contains(TFXVideoFormat(16)));
}

} // namespace
} // namespace framix
