// SPDX-License-Identifier: MIT
// The copy-on-write image buffer, its pooled pixel storage and recycled buffer objects.
#include "framework/FXImageBuffer.h"

#include <cstring>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "framework/FXBufferPool.h"
#include "framework/FXError.h"
#include "framework/FXFormatConversion.h"
#include "framework/FXResize.h"

namespace framix {

namespace {

constexpr std::size_t kAlign = 64;
constexpr std::size_t kMaxImageBytes = std::size_t(1) << 31;
std::atomic<std::uint64_t> GPixelBytesCopied{0};

std::size_t AlignUp(std::size_t v) { return (v + kAlign - 1) / kAlign * kAlign; }

// Recycled TFXImageBuffer objects: the per-frame output buffer costs no heap allocation.
class TFXObjectFreeList {
public:
    void* Take(std::size_t size)
    {
        {
            std::lock_guard lock(FMutex);
            if (!FItems.empty()) {
                void* p = FItems.back();
                FItems.pop_back();
                return p;
            }
        }
        return ::operator new(size);
    }
    void Give(void* p)
    {
        {
            std::lock_guard lock(FMutex);
            if (FItems.size() < 4096) {
                FItems.push_back(p);
                return;
            }
        }
        ::operator delete(p);
    }

private:
    std::mutex FMutex;
    std::vector<void*> FItems;
};

TFXObjectFreeList& BufferObjects()
{
    static TFXObjectFreeList* list = new TFXObjectFreeList;  // outlives static frames
    return *list;
}

// `wholeRows`: the source's last row has its padding too (true of every block a TFXImageBuffer
// holds), so the padding bytes can be copied along.
void CopyPlanes(TFXVideoFormat format, int width, int height, const TFXConstPlanes& src,
                const TFXPlanes& dst, bool wholeRows = false)
{
    const int planes = FXFormatInfo(format).PlaneCount;
    for (int p = 0; p < planes; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, p);
        if (g.Rows > 0 && src.Stride[p] == dst.Stride[p]) {
            // One block, padding included, so a copy keeps whatever the padding held.
            std::memcpy(dst.Data[p], src.Data[p],
                        std::size_t(src.Stride[p]) * std::size_t(g.Rows - 1) +
                            std::size_t(wholeRows ? src.Stride[p] : g.RowBytes));
        } else {
            for (int y = 0; y < g.Rows; ++y)
                std::memcpy(dst.Data[p] + std::ptrdiff_t(y) * dst.Stride[p],
                            src.Data[p] + std::ptrdiff_t(y) * src.Stride[p],
                            std::size_t(g.RowBytes));
        }
        GPixelBytesCopied.fetch_add(std::uint64_t(g.RowBytes) * std::uint64_t(g.Rows),
                                    std::memory_order_relaxed);
    }
}

void CheckSize(int width, int height)
{
    const bool empty = width == 0 && height == 0;
    if (!empty && (width <= 0 || height <= 0 || width > kFXMaxImageSide || height > kFXMaxImageSide))
        throw EFXError("Image size " + std::to_string(width) + " x " + std::to_string(height) +
                       " is invalid: width and height must be between 1 and " +
                       std::to_string(kFXMaxImageSide));
}

} // namespace

// ---------------------------------------------------------------- pixel storage

// One block of pixels with its own reference count. Pooled blocks carry this header in front of
// the pixels, so sharing and recycling need no separate allocation.
class TFXPixelStorage {
public:
    static constexpr std::size_t kHeaderBytes = 128;

    static TFXPixelStorage* Allocate(std::size_t bytes)
    {
        void* block = TFXBufferPool::Global().Acquire(kHeaderBytes + bytes);
        auto* storage = new (block) TFXPixelStorage;
        storage->FData = static_cast<std::uint8_t*>(block) + kHeaderBytes;
        storage->FCapacity = bytes;
        storage->FPooled = true;
        storage->FWritable = true;
        return storage;
    }

    static TFXPixelStorage* Wrap(const TFXDataBlock& block, std::size_t bytes)
    {
        auto* storage = new TFXPixelStorage;
        storage->FData = block.Data;
        storage->FCapacity = bytes;
        storage->FWritable = block.Writable;
        storage->FRelease = block.Release;
        return storage;
    }

    void AddRef() { FRefs.fetch_add(1, std::memory_order_relaxed); }
    void Release()
    {
        if (FRefs.fetch_sub(1, std::memory_order_acq_rel) != 1)
            return;
        if (FPooled) {
            const std::size_t bytes = kHeaderBytes + FCapacity;
            this->~TFXPixelStorage();
            TFXBufferPool::Global().Recycle(this, bytes);
        } else {
            if (FRelease)
                FRelease();
            delete this;
        }
    }
    bool IsShared() const { return !FWritable || FRefs.load(std::memory_order_acquire) > 1; }
    std::uint8_t* Data() const { return FData; }
    std::size_t Capacity() const { return FCapacity; }

private:
    TFXPixelStorage() = default;
    ~TFXPixelStorage() = default;

    std::atomic<int> FRefs{1};
    std::uint8_t* FData = nullptr;
    std::size_t FCapacity = 0;
    bool FPooled = false;
    bool FWritable = false;
    std::function<void()> FRelease;
};

static_assert(sizeof(TFXPixelStorage) <= TFXPixelStorage::kHeaderBytes);

// ---------------------------------------------------------------- construction

void* TFXImageBuffer::operator new(std::size_t size) { return BufferObjects().Take(size); }
void TFXImageBuffer::operator delete(void* object, std::size_t) { BufferObjects().Give(object); }

TFXImageBuffer::TFXImageBuffer() = default;

TFXImageBuffer::TFXImageBuffer(int width, int height, TFXVideoFormat format, int rowStride)
{
    Reshape(width, height, format, rowStride);
}

TFXImageBuffer::TFXImageBuffer(const std::uint8_t* pixels, int width, int height,
                               TFXVideoFormat format, int srcStride)
{
    Reshape(width, height, format, 0);
    if (IsEmpty())
        return;
    if (!pixels)
        throw EFXError("Cannot copy an image from a null pixel pointer");
    // The source is laid out as this format's packed planes, one after another.
    TFXConstPlanes src;
    const std::uint8_t* p = pixels;
    for (int i = 0; i < FXFormatInfo(format).PlaneCount; ++i) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, i);
        src.Data[i] = p;
        src.Stride[i] = (i == 0 && srcStride) ? srcStride : g.RowBytes;
        if (src.Stride[i] < g.RowBytes)
            throw EFXError("Source stride " + std::to_string(src.Stride[i]) +
                           " is smaller than a row of " + std::to_string(g.RowBytes) + " bytes");
        p += std::size_t(src.Stride[i]) * std::size_t(g.Rows);
    }
    CopyPlanes(format, width, height, src, PlanesOf(FStorage->Data()));
}

TFXImageBuffer::TFXImageBuffer(const IFXImageBuffer& source) { CopyFrom(source); }

namespace {

// An explicit row stride must hold a row and whole samples: 16-bit samples are never split
// across rows, so every sample sits at an even address for the primitives that read it.
void CheckRowStride(const char* what, int stride, int rowBytes, TFXVideoFormat format)
{
    if (stride < rowBytes)
        throw EFXError(std::string(what) + " " + std::to_string(stride) +
                       " is smaller than a row of " + std::to_string(rowBytes) + " bytes");
    const int sampleBytes = FXFormatInfo(format).BytesPerSample;
    if (stride % sampleBytes != 0)
        throw EFXError(std::string(what) + " " + std::to_string(stride) + " splits the " +
                       std::to_string(sampleBytes) + "-byte samples of " +
                       std::string(FXVideoFormatName(format)));
}

} // namespace

TFXImageBuffer::TFXImageBuffer(const TFXDataBlock& block)
{
    CheckSize(block.Width, block.Height);
    const TFXFormatInfo& info = FXFormatInfo(block.Format);
    if (block.Width == 0)
        return;
    if (!block.Data)
        throw EFXError("Cannot wrap a null data block");
    if (block.RowStride && info.PlaneCount > 1)
        throw EFXError("A planar data block must be packed");
    const int rowBytes = FXPlaneGeometry(block.Format, block.Width, block.Height, 0).RowBytes;
    if (block.RowStride)
        CheckRowStride("Data block stride", block.RowStride, rowBytes, block.Format);
    FWidth = block.Width;
    FHeight = block.Height;
    FFormat = block.Format;
    std::size_t offset = 0;
    for (int i = 0; i < info.PlaneCount; ++i) {
        const TFXPlaneGeometry g = FXPlaneGeometry(FFormat, FWidth, FHeight, i);
        FStride[i] = (i == 0 && block.RowStride) ? block.RowStride : g.RowBytes;
        FOffset[i] = offset;
        offset += std::size_t(FStride[i]) * std::size_t(g.Rows);
    }
    FBytes = offset;
    FStorage = TFXPixelStorage::Wrap(block, FBytes);
}

TFXImageBuffer::TFXImageBuffer(const TFXBitmap& bitmap)
{
    const TFXVideoFormat format = FXBitCountToVideoFormat(bitmap.BitCount);
    const int height = bitmap.Height < 0 ? -bitmap.Height : bitmap.Height;
    Reshape(bitmap.Width, height, format, 0);
    if (IsEmpty())
        return;
    if (!bitmap.Bits)
        throw EFXError("Cannot copy a bitmap without pixels");
    const int rowBytes = bitmap.Width * FXFormatInfo(format).BytesPerPixel;
    const int stride = bitmap.Stride ? bitmap.Stride : (bitmap.Width * bitmap.BitCount + 31) / 32 * 4;
    if (stride < rowBytes)
        throw EFXError("Bitmap stride " + std::to_string(stride) + " is smaller than a row");
    const bool bottomUp = bitmap.Height > 0;
    const auto* bits = static_cast<const std::uint8_t*>(bitmap.Bits);
    std::uint8_t* dst = FStorage->Data();
    for (int y = 0; y < height; ++y) {
        const int srcRow = bottomUp ? height - 1 - y : y;
        std::memcpy(dst + std::size_t(y) * std::size_t(FStride[0]),
                    bits + std::size_t(srcRow) * std::size_t(stride), std::size_t(rowBytes));
    }
    GPixelBytesCopied.fetch_add(std::uint64_t(rowBytes) * std::uint64_t(height),
                                std::memory_order_relaxed);
}

TFXImageBuffer::~TFXImageBuffer()
{
    if (FStorage)
        FStorage->Release();
}

void TFXImageBuffer::AddRef() const { FRefCount.fetch_add(1, std::memory_order_relaxed); }

void TFXImageBuffer::Release() const
{
    if (FRefCount.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

std::uint64_t TFXImageBuffer::GetPixelBytesCopied()
{
    return GPixelBytesCopied.load(std::memory_order_relaxed);
}

// ---------------------------------------------------------------- geometry and storage

void TFXImageBuffer::Reshape(int width, int height, TFXVideoFormat format, int rowStride)
{
    CheckSize(width, height);
    const TFXFormatInfo& info = FXFormatInfo(format);
    std::array<int, 4> stride{};
    std::array<std::size_t, 4> offset{};
    std::size_t bytes = 0;
    if (width > 0) {
        if (rowStride && info.PlaneCount > 1)
            throw EFXError("Only single-plane formats take an explicit row stride");
        for (int i = 0; i < info.PlaneCount; ++i) {
            const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, i);
            if (i == 0 && rowStride) {
                CheckRowStride("Row stride", rowStride, g.RowBytes, format);
                stride[i] = rowStride;
            } else {
                stride[i] = int(AlignUp(std::size_t(g.RowBytes)));
            }
            offset[i] = bytes;
            bytes = AlignUp(bytes + std::size_t(stride[i]) * std::size_t(g.Rows));
        }
        if (bytes > kMaxImageBytes)
            throw EFXError("Image of " + std::to_string(width) + " x " + std::to_string(height) +
                           " in " + std::string(FXVideoFormatName(format)) + " is too large");
    }
    // Keep the block when it is ours alone and big enough: a reshape to the same geometry is
    // free.
    if (FStorage && (FStorage->IsShared() || FStorage->Capacity() < bytes || bytes == 0)) {
        FStorage->Release();
        FStorage = nullptr;
    }
    if (!FStorage && bytes > 0)
        FStorage = TFXPixelStorage::Allocate(bytes);
    FWidth = width;
    FHeight = height;
    FFormat = format;
    FStride = stride;
    FOffset = offset;
    FBytes = bytes;
}

void TFXImageBuffer::Share(const TFXImageBuffer& source)
{
    if (source.FStorage)
        source.FStorage->AddRef();
    if (FStorage)
        FStorage->Release();
    FStorage = source.FStorage;
    FWidth = source.FWidth;
    FHeight = source.FHeight;
    FFormat = source.FFormat;
    FStride = source.FStride;
    FOffset = source.FOffset;
    FBytes = source.FBytes;
}

void TFXImageBuffer::MakeUnique(bool keepContents)
{
    if (!FStorage || !FStorage->IsShared())
        return;
    TFXPixelStorage* old = FStorage;
    const TFXConstPlanes oldPlanes = PlanesOf(old->Data());
    // A fresh block is laid out packed-to-64 even when the shared one had a custom stride.
    FStorage = nullptr;
    Reshape(FWidth, FHeight, FFormat, FXFormatInfo(FFormat).PlaneCount == 1 ? FStride[0] : 0);
    if (keepContents)
        CopyPlanes(FFormat, FWidth, FHeight, oldPlanes, PlanesOf(FStorage->Data()), true);
    old->Release();
}

TFXPlanes TFXImageBuffer::PlanesOf(std::uint8_t* base) const
{
    TFXPlanes planes;
    if (!base)
        return planes;
    for (int i = 0; i < FXFormatInfo(FFormat).PlaneCount; ++i) {
        planes.Data[i] = base + FOffset[i];
        planes.Stride[i] = FStride[i];
    }
    return planes;
}

// ---------------------------------------------------------------- operations

void TFXImageBuffer::CopyFrom(const IFXImageBuffer& source)
{
    if (&source == this)
        return;
    if (const auto* own = dynamic_cast<const TFXImageBuffer*>(&source)) {
        Share(*own);
    } else {
        Reshape(source.GetWidth(), source.GetHeight(), source.GetFormat(), 0);
        if (!IsEmpty())
            CopyPlanes(FFormat, FWidth, FHeight, source.GetReadPlanes(), PlanesOf(FStorage->Data()));
    }
    CopyStampsFrom(source);
}

void TFXImageBuffer::CopyStampsFrom(const IFXImageBuffer& source)
{
    FSequence = source.GetSequenceStamp();
    FTime = source.GetTimeStamp();
    auto& mutableSource = const_cast<IFXImageBuffer&>(source);  // the getters hand out references
    FTimeCode = mutableSource.GetTimeCode();
    FDateTime = mutableSource.GetDateTime();
}

const std::uint8_t* TFXImageBuffer::GetReadPointer() const
{
    return FStorage ? FStorage->Data() + FOffset[0] : nullptr;
}

std::uint8_t* TFXImageBuffer::GetWritePointer()
{
    MakeUnique(false);
    return FStorage ? FStorage->Data() + FOffset[0] : nullptr;
}

std::uint8_t* TFXImageBuffer::GetModifyPointer()
{
    MakeUnique(true);
    return FStorage ? FStorage->Data() + FOffset[0] : nullptr;
}

TFXConstPlanes TFXImageBuffer::GetReadPlanes() const
{
    return PlanesOf(FStorage ? FStorage->Data() : nullptr);
}

TFXPlanes TFXImageBuffer::GetWritePlanes()
{
    MakeUnique(false);
    return PlanesOf(FStorage ? FStorage->Data() : nullptr);
}

TFXPlanes TFXImageBuffer::GetModifyPlanes()
{
    MakeUnique(true);
    return PlanesOf(FStorage ? FStorage->Data() : nullptr);
}

int TFXImageBuffer::GetBytesPerPixel() const { return FXFormatInfo(FFormat).BytesPerPixel; }

bool TFXImageBuffer::IsShared() const { return FStorage && FStorage->IsShared(); }

void TFXImageBuffer::SetSize(int width, int height, TFXVideoFormat format)
{
    Reshape(width, height, FXCheckedVideoFormat(format), 0);
}

void TFXImageBuffer::ConvertFormat(TFXVideoFormat format)
{
    format = FXCheckedVideoFormat(format);
    if (format == FFormat)
        return;
    if (IsEmpty()) {
        FFormat = format;
        return;
    }
    // Convert into a fresh block and let go of the old one (which others may still share).
    TFXPixelStorage* old = FStorage;
    const TFXConstPlanes oldPlanes = GetReadPlanes();
    const TFXVideoFormat oldFormat = FFormat;
    old->AddRef();  // keeps the source alive through the reshape
    try {
        FStorage->Release();
        FStorage = nullptr;
        Reshape(FWidth, FHeight, format, 0);
        FXConvertPixels(oldFormat, oldPlanes, format, PlanesOf(FStorage->Data()), FWidth, FHeight);
    } catch (...) {
        old->Release();
        throw;
    }
    old->Release();
}

void FXResizeBuffer(IFXImageBuffer& buffer, unsigned width, unsigned height)
{
    CheckSize(int(std::min<unsigned>(width, 1u << 30)), int(std::min<unsigned>(height, 1u << 30)));
    if (width == 0)
        throw EFXError("Cannot resize a frame to 0 x 0");
    if (int(width) == buffer.GetWidth() && int(height) == buffer.GetHeight())
        return;
    FXImageBufferPtr resized = new TFXImageBuffer(int(width), int(height), buffer.GetFormat());
    if (!resized->IsEmpty() && !buffer.IsEmpty())
        FXResizePixels(buffer.GetFormat(), buffer.GetReadPlanes(), buffer.GetWidth(),
                       buffer.GetHeight(), resized->GetWritePlanes(), int(width), int(height));
    resized->CopyStampsFrom(buffer);
    buffer.CopyFrom(*resized);
}

} // namespace framix
