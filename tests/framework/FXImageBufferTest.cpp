// SPDX-License-Identifier: MIT
// Image buffers: construction, copy on write, pooling, stamps and bad sizes.
#include "framework/FXImageBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "framework/FXBufferPool.h"
#include "framework/FXError.h"
#include "tests/support/FXTestHarness.h"

namespace framix {
namespace {

using test::FXRandomFrame;
using test::FXSamePixels;

TEST(FXImageBuffer, BytesPerPixelOfProcessedFormats)
{
    EXPECT_EQ(FXImageBufferPtr(new TFXImageBuffer(3, 2, vfRGB24))->GetBytesPerPixel(), 3);
    EXPECT_EQ(FXImageBufferPtr(new TFXImageBuffer(3, 2, vfRGB32))->GetBytesPerPixel(), 4);
    EXPECT_EQ(FXImageBufferPtr(new TFXImageBuffer(3, 2, vfGray8))->GetBytesPerPixel(), 1);
    EXPECT_EQ(FXImageBufferPtr(new TFXImageBuffer(3, 2, vfGray16))->GetBytesPerPixel(), 2);
}

TEST(FXImageBuffer, RowsAreAlignedAndStrideMayBePadded)
{
    FXImageBufferPtr aligned = new TFXImageBuffer(5, 3, vfRGB24);
    EXPECT_EQ(aligned->GetRowStride() % 64, 0);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(aligned->GetReadPointer()) % 64, 0u);
    FXImageBufferPtr padded = new TFXImageBuffer(5, 3, vfRGB24, 16);
    EXPECT_EQ(padded->GetRowStride(), 16);
    EXPECT_THROW(FXImageBufferPtr(new TFXImageBuffer(5, 3, vfRGB24, 14)), EFXError);  // less than a row
}

TEST(FXImageBuffer, CopiesSharePixelsUntilOneSideWrites)
{
    FXImageBufferPtr original = FXRandomFrame(7, 5, vfRGB24, 1);
    FXImageBufferPtr copy = new TFXImageBuffer(*original);
    EXPECT_EQ(copy->GetReadPointer(), original->GetReadPointer());
    EXPECT_TRUE(copy->IsShared());

    const std::uint64_t before = TFXImageBuffer::GetPixelBytesCopied();
    std::uint8_t* modified = copy->GetModifyPointer();
    EXPECT_NE(modified, original->GetReadPointer());
    EXPECT_GT(TFXImageBuffer::GetPixelBytesCopied(), before);
    EXPECT_TRUE(FXSamePixels(*copy, *original));
    modified[0] ^= 0xFF;
    EXPECT_FALSE(FXSamePixels(*copy, *original));  // the original never sees the write
    EXPECT_FALSE(copy->IsShared());
    EXPECT_EQ(copy->GetModifyPointer(), modified);  // sole owner: written in place
}

TEST(FXImageBuffer, WritePointerOfASharedFrameGivesFreshMemoryWithoutCopying)
{
    FXImageBufferPtr original = FXRandomFrame(64, 16, vfGray8, 2);
    FXImageBufferPtr copy = new TFXImageBuffer();
    copy->CopyFrom(*original);
    const std::uint64_t before = TFXImageBuffer::GetPixelBytesCopied();
    EXPECT_NE(copy->GetWritePointer(), original->GetReadPointer());
    EXPECT_EQ(TFXImageBuffer::GetPixelBytesCopied(), before);
}

TEST(FXImageBuffer, CopyOfPaddedFrameKeepsItsPaddingBytes)
{
    FXImageBufferPtr frame = new TFXImageBuffer(3, 2, vfRGB24, 12);
    std::uint8_t* p = frame->GetWritePointer();
    std::memset(p, 0xAB, 24);  // pixels and padding
    FXImageBufferPtr copy = new TFXImageBuffer(*frame);
    std::uint8_t* q = copy->GetModifyPointer();
    q[0] = 1;
    EXPECT_EQ(copy->GetRowStride(), 12);
    for (int pad = 9; pad < 12; ++pad)
        EXPECT_EQ(q[pad], 0xAB) << "padding byte " << pad;
}

TEST(FXImageBuffer, ConstructsFromPixelsBitmapsAndDataBlocks)
{
    const std::uint8_t pixels[] = {1, 2, 3, 4, 5, 6, 7, 8};  // 2 x 2 gray, stride 4
    FXImageBufferPtr fromPixels = new TFXImageBuffer(pixels, 2, 2, vfGray8, 4);
    EXPECT_EQ(fromPixels->GetReadPointer()[0], 1);
    EXPECT_EQ(fromPixels->GetReadPointer()[fromPixels->GetRowStride()], 5);

    // A bottom-up 24-bit bitmap, rows padded to 4 bytes: the last row in memory is row 0.
    const std::uint8_t dib[] = {10, 11, 12, 0, 20, 21, 22, 0};
    FXImageBufferPtr fromBitmap = new TFXImageBuffer(TFXBitmap{1, 2, 24, dib, 0});
    EXPECT_EQ(fromBitmap->GetFormat(), vfRGB24);
    EXPECT_EQ(fromBitmap->GetReadPointer()[0], 20);
    EXPECT_EQ(fromBitmap->GetReadPointer()[fromBitmap->GetRowStride()], 10);

    std::vector<std::uint8_t> external(8, 7);
    bool released = false;
    {
        FXImageBufferPtr wrapped = new TFXImageBuffer(
            TFXDataBlock{external.data(), 2, 2, vfGray8, 4, false, [&] { released = true; }});
        EXPECT_EQ(wrapped->GetReadPointer(), external.data());
        wrapped->GetModifyPointer()[0] = 99;  // read-only block: the write goes elsewhere
        EXPECT_EQ(external[0], 7);
    }
    EXPECT_TRUE(released);
}

TEST(FXImageBuffer, BadSizesAndFormatsAreClearErrors)
{
    EXPECT_THROW(FXImageBufferPtr(new TFXImageBuffer(0, 5, vfRGB24)), EFXError);
    EXPECT_THROW(FXImageBufferPtr(new TFXImageBuffer(-3, 5, vfRGB24)), EFXError);
    EXPECT_THROW(FXImageBufferPtr(new TFXImageBuffer(kFXMaxImageSide + 1, 1, vfGray8)), EFXError);
    EXPECT_THROW(FXImageBufferPtr(new TFXImageBuffer(4, 4, TFXVideoFormat(16))), EFXError);
    try {
        FXImageBufferPtr(new TFXImageBuffer(0, 5, vfRGB24));
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("0 x 5"), std::string::npos) << e.what();
    }
    FXImageBufferPtr frame = new TFXImageBuffer(2, 2, vfRGB24);
    EXPECT_THROW(frame->ConvertFormat(TFXVideoFormat(200)), EFXError);
    EXPECT_EQ(frame->GetFormat(), vfRGB24);
}

TEST(FXImageBuffer, ConvertFormatLeavesOtherHoldersUntouched)
{
    FXImageBufferPtr original = FXRandomFrame(9, 3, vfRGB24, 3);
    FXImageBufferPtr view = new TFXImageBuffer(*original);
    view->ConvertFormat(vfRGB32);
    EXPECT_EQ(view->GetFormat(), vfRGB32);
    EXPECT_EQ(original->GetFormat(), vfRGB24);
    for (int x = 0; x < 9; ++x)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(view->GetReadPointer()[4 * x + c], original->GetReadPointer()[3 * x + c]);
}

TEST(FXImageBuffer, SteadyStreamOfFramesAllocatesNothingFromTheSystem)
{
    const auto oneFrame = [] {
        FXImageBufferPtr frame = new TFXImageBuffer(320, 240, vfRGB32);
        FXImageBufferPtr copy = new TFXImageBuffer(*frame);
        copy->GetWritePointer()[0] = 1;  // needs a second block while the first is held
    };
    for (int i = 0; i < 3; ++i)  // the first frames fill the pool
        oneFrame();
    const std::uint64_t before = TFXBufferPool::Global().GetSystemAllocations();
    for (int i = 0; i < 100; ++i)
        oneFrame();
    EXPECT_EQ(TFXBufferPool::Global().GetSystemAllocations(), before);
}

TEST(FXImageBuffer, ResizeReplacesPixelsAndKeepsStamps)
{
    FXImageBufferPtr frame = new TFXImageBuffer(4, 4, vfGray8);
    std::memset(frame->GetWritePointer(), 77, std::size_t(frame->GetRowStride()) * 4);
    frame->GetSequenceStamp().SetBufferNumber(12);
    FXResizeBuffer(*frame, 9, 2);
    EXPECT_EQ(frame->GetWidth(), 9);
    EXPECT_EQ(frame->GetHeight(), 2);
    EXPECT_EQ(frame->GetReadPointer()[8], 77);
    EXPECT_EQ(frame->GetSequenceStamp().GetBufferNumber(), 12);
    EXPECT_THROW(FXResizeBuffer(*frame, 0, 3), EFXError);
}

} // namespace
} // namespace framix
