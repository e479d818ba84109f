// SPDX-License-Identifier: MIT
// Frames: the reference-counted image buffer interface and its copy-on-write implementation.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "framework/FXPlanes.h"
#include "framework/FXRef.h"
#include "framework/FXStamps.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// Width and height as two 32-bit integers: the region size handed to primitives.
struct TFXImageSize {
    int width;
    int height;
};

// One frame. Pixel (x, y) of plane 0 lies at the read (or write) pointer plus y times the row
// stride plus x times the bytes per pixel. The stride may exceed the row. A frame may be held by
// several components at once: a component writes only through the write or modify pointer of a
// buffer it owns, never through the read pointer.
class IFXImageBuffer {
public:
    virtual void AddRef() const = 0;
    virtual void Release() const = 0;

    // This buffer becomes an independent copy of `source`: size, format, pixels and stamps.
    virtual void CopyFrom(const IFXImageBuffer& source) = 0;
    virtual TQNSequenceStamp& GetSequenceStamp() = 0;
    virtual const TQNSequenceStamp& GetSequenceStamp() const = 0;
    virtual TZPTimeStamp& GetTimeStamp() = 0;
    virtual const TZPTimeStamp& GetTimeStamp() const = 0;
    virtual const std::uint8_t* GetReadPointer() const = 0;
    // For overwriting every pixel: the previous contents need not survive.
    virtual std::uint8_t* GetWritePointer() = 0;
    // For changing some pixels: the current contents survive.
    virtual std::uint8_t* GetModifyPointer() = 0;
    virtual int GetWidth() const = 0;
    virtual int GetHeight() const = 0;
    // Converts the pixels to `format`; width and height are kept.
    virtual void ConvertFormat(TFXVideoFormat format) = 0;
    virtual TFXVideoFormat GetFormat() const = 0;
    virtual int GetBytesPerPixel() const = 0;
    virtual TFXImageSize GetSize() const = 0;
    virtual int GetRowStride() const = 0;

    // Further operations of the framework.
    virtual TFXTimeCode& GetTimeCode() = 0;
    virtual TFXDateTime& GetDateTime() = 0;
    virtual TFXConstPlanes GetReadPlanes() const = 0;
    virtual TFXPlanes GetWritePlanes() = 0;
    virtual TFXPlanes GetModifyPlanes() = 0;
    // Gives the buffer a new size and format; the contents are undefined afterwards.
    virtual void SetSize(int width, int height, TFXVideoFormat format) = 0;
    // True when the pixels are shared with another buffer (a write would copy or reallocate).
    virtual bool IsShared() const = 0;
    virtual void CopyStampsFrom(const IFXImageBuffer& source) = 0;
    virtual bool IsEmpty() const = 0;

protected:
    virtual ~IFXImageBuffer() = default;
};

using FXImageBufferPtr = TFXRef<IFXImageBuffer>;

// Memory delivered by someone else (a platform, an application), wrapped without a copy. The
// buffer never writes into it unless Writable; Release runs when the last user lets go.
struct TFXDataBlock {
    std::uint8_t* Data = nullptr;
    int Width = 0;
    int Height = 0;
    TFXVideoFormat Format = vfRGB24;
    int RowStride = 0;  // plane 0; 0 = packed. Planar formats must be packed. The block
                        // holds RowStride * Height bytes (the last row padded too).
    bool Writable = false;
    std::function<void()> Release;
};

// An uncompressed bitmap as device-independent bitmaps store it: rows bottom-up when Height is
// positive, top-down when negative, each row padded to 4 bytes unless Stride says otherwise.
struct TFXBitmap {
    int Width = 0;
    int Height = 0;
    int BitCount = 24;  // 8, 16, 24, 32, 48 or 64
    const void* Bits = nullptr;
    int Stride = 0;
};

class TFXPixelStorage;

// The framework's image buffer. Copies share their pixels until one of them writes
// (copy on write); pixel blocks come from TFXBufferPool. Objects are recycled too, so a
// steady stream of frames allocates nothing.
class TFXImageBuffer final : public IFXImageBuffer {
public:
    TFXImageBuffer();
    // A fresh, unstamped frame; rowStride 0 = rows padded to 64 bytes (single-plane formats may
    // ask for any stride of at least one row).
    TFXImageBuffer(int width, int height, TFXVideoFormat format, int rowStride = 0);
    // A copy of external memory (srcStride 0 = packed rows).
    TFXImageBuffer(const std::uint8_t* pixels, int width, int height, TFXVideoFormat format,
                   int srcStride = 0);
    // A copy of another buffer (shares the pixels until either side writes).
    explicit TFXImageBuffer(const IFXImageBuffer& source);
    explicit TFXImageBuffer(const TFXDataBlock& block);
    explicit TFXImageBuffer(const TFXBitmap& bitmap);

    static void* operator new(std::size_t size);
    static void operator delete(void* object, std::size_t size);

    void AddRef() const override;
    void Release() const override;

    void CopyFrom(const IFXImageBuffer& source) override;
    TQNSequenceStamp& GetSequenceStamp() override { return FSequence; }
    const TQNSequenceStamp& GetSequenceStamp() const override { return FSequence; }
    TZPTimeStamp& GetTimeStamp() override { return FTime; }
    const TZPTimeStamp& GetTimeStamp() const override { return FTime; }
    const std::uint8_t* GetReadPointer() const override;
    std::uint8_t* GetWritePointer() override;
    std::uint8_t* GetModifyPointer() override;
    int GetWidth() const override { return FWidth; }
    int GetHeight() const override { return FHeight; }
    void ConvertFormat(TFXVideoFormat format) override;
    TFXVideoFormat GetFormat() const override { return FFormat; }
    int GetBytesPerPixel() const override;
    TFXImageSize GetSize() const override { return {FWidth, FHeight}; }
    int GetRowStride() const override { return FStride[0]; }

    TFXTimeCode& GetTimeCode() override { return FTimeCode; }
    TFXDateTime& GetDateTime() override { return FDateTime; }
    TFXConstPlanes GetReadPlanes() const override;
    TFXPlanes GetWritePlanes() override;
    TFXPlanes GetModifyPlanes() override;
    void SetSize(int width, int height, TFXVideoFormat format) override;
    bool IsShared() const override;
    void CopyStampsFrom(const IFXImageBuffer& source) override;
    bool IsEmpty() const override { return FWidth == 0; }

    // Process-wide count of pixel bytes copied because a shared buffer was modified or a
    // foreign buffer copied; lets tests and benchmarks prove that pass-through costs nothing.
    static std::uint64_t GetPixelBytesCopied();

private:
    ~TFXImageBuffer() override;
    void Reshape(int width, int height, TFXVideoFormat format, int rowStride);
    void Share(const TFXImageBuffer& source);
    void MakeUnique(bool keepContents);
    TFXPlanes PlanesOf(std::uint8_t* base) const;

    mutable std::atomic<int> FRefCount{0};
    TFXPixelStorage* FStorage = nullptr;
    int FWidth = 0;
    int FHeight = 0;
    TFXVideoFormat FFormat = vfRGB24;
    std::array<int, 4> FStride{};
    std::array<std::size_t, 4> FOffset{};
    std::size_t FBytes = 0;
    TQNSequenceStamp FSequence;
    TZPTimeStamp FTime;
    TFXTimeCode FTimeCode;
    TFXDateTime FDateTime;
};

// Replaces the buffer's pixels by a resampled image of the new size (bilinear).
void FXResizeBuffer(IFXImageBuffer& buffer, unsigned width, unsigned height);

// The largest width or height a frame may have.
inline constexpr int kFXMaxImageSide = 32768;

} // namespace framix
