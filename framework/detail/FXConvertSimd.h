// SPDX-License-Identifier: MIT
// Vector conversion kernels, written once against a small vector interface and compiled per level.
//
// Included by each level's source after its target pragma and after its TVec (the vector
// interface: 16-byte lanes, kLanes of them, in-lane byte shuffles and a few cross-lane moves).
// Everything here has internal linkage, so the levels never share a symbol. Each kernel runs the
// vector body over as many whole blocks as fit without reading or writing past a row and hands
// the remaining columns (and an odd last row) to the scalar reference, which defines the result.
#pragma once

namespace framix::conv {
namespace {

using TVecT = typename TVec::T;

// ---------------------------------------------------------------- shuffle masks
struct TMask {
    std::uint8_t B[16];
};
constexpr std::uint8_t kZ = 0x80; // pshufb: zero this byte

// Interleaving 16 B, G, R (or grey) bytes of a lane into its 48 packed bytes: mask for output
// chunk k (bytes 16k..16k+15) taking channel c (-1: every channel from one source).
constexpr TMask InterleaveMask(int k, int c)
{
    TMask m{};
    for (int j = 0; j < 16; ++j) {
        const int i = 16 * k + j;
        m.B[j] = (c < 0 || i % 3 == c) ? std::uint8_t(i / 3) : kZ;
    }
    return m;
}
// The inverse: channel c of 16 packed pixels, taking the bytes found in input chunk k.
constexpr TMask DeinterleaveMask(int k, int c)
{
    TMask m{};
    for (int p = 0; p < 16; ++p) {
        const int i = 3 * p + c;
        m.B[p] = i / 16 == k ? std::uint8_t(i % 16) : kZ;
    }
    return m;
}

inline TVecT Mask(const TMask& m)
{
    return TVec::Lanes(m.B);
}

// A sub-image starting at column x0 and row y0 (x0, y0 even so chroma stays aligned).
template <class Planes> Planes SubImage(TFXVideoFormat format, const Planes& p, int x0, int y0)
{
    Planes s = p;
    for (int plane = 0; plane < FXFormatInfo(format).PlaneCount; ++plane)
        s.Data[plane] +=
            std::ptrdiff_t(FXPlaneGeometry(format, x0, 2, plane).RowBytes) +
            std::ptrdiff_t(y0 ? FXPlaneGeometry(format, 2, y0, plane).Rows : 0) * p.Stride[plane];
    return s;
}

// The columns from x0 on, by the reference.
void Tail(TFXVideoFormat sf, const TFXConstPlanes& src, TFXVideoFormat df, const TFXPlanes& dst,
          int x0, int width, int height)
{
    if (x0 < width)
        ConvertReference(sf, SubImage(sf, src, x0, 0), df, SubImage(df, dst, x0, 0), width - x0,
                         height);
}

// Whole blocks of `block` pixels whose reads stay inside a row that is `slack` pixels shorter.
constexpr int BodyWidth(int width, int block, int slack = 0)
{
    return width - slack < block ? 0 : (width - slack) / block * block;
}

inline const std::uint8_t* Row(const TFXConstPlanes& p, int plane, int y)
{
    return p.Data[plane] + std::ptrdiff_t(y) * p.Stride[plane];
}
inline std::uint8_t* Row(const TFXPlanes& p, int plane, int y)
{
    return p.Data[plane] + std::ptrdiff_t(y) * p.Stride[plane];
}

// Four vectors of 32-bit results (vector i, lane j holding pixels 4 * (i * kLanes + j) on)
// narrowed with unsigned saturation into one vector of bytes in pixel order.
inline TVecT PackGroups(TVecT d0, TVecT d1, TVecT d2, TVecT d3)
{
    return TVec::FixPack4(TVec::Packus16(TVec::Packs32(d0, d1), TVec::Packs32(d2, d3)));
}
// Four vectors of 32-bit results covering one lane's 16 pixels in order, narrowed in place.
inline TVecT PackInLane(TVecT d0, TVecT d1, TVecT d2, TVecT d3)
{
    return TVec::Packus16(TVec::Packs32(d0, d1), TVec::Packs32(d2, d3));
}

// B, G, R bytes of 16 pixels per lane -> 48 packed bytes per lane, stored in pixel order.
inline void StoreBgr(std::uint8_t* p, TVecT b, TVecT g, TVecT r)
{
    static constexpr TMask kB0 = InterleaveMask(0, 0), kG0 = InterleaveMask(0, 1),
                           kR0 = InterleaveMask(0, 2);
    static constexpr TMask kB1 = InterleaveMask(1, 0), kG1 = InterleaveMask(1, 1),
                           kR1 = InterleaveMask(1, 2);
    static constexpr TMask kB2 = InterleaveMask(2, 0), kG2 = InterleaveMask(2, 1),
                           kR2 = InterleaveMask(2, 2);
    using V = TVec;
    const TVecT x0 =
        V::Or(V::Or(V::Shuffle(b, Mask(kB0)), V::Shuffle(g, Mask(kG0))), V::Shuffle(r, Mask(kR0)));
    const TVecT x1 =
        V::Or(V::Or(V::Shuffle(b, Mask(kB1)), V::Shuffle(g, Mask(kG1))), V::Shuffle(r, Mask(kR1)));
    const TVecT x2 =
        V::Or(V::Or(V::Shuffle(b, Mask(kB2)), V::Shuffle(g, Mask(kG2))), V::Shuffle(r, Mask(kR2)));
    V::StoreInterleaved3(p, x0, x1, x2);
}

// 48 packed bytes per lane (16 pixels, in pixel order) -> B, G, R bytes.
inline void LoadBgr(const std::uint8_t* p, TVecT& b, TVecT& g, TVecT& r)
{
    using V = TVec;
    TVecT x0, x1, x2;
    V::LoadInterleaved3(p, x0, x1, x2);
    auto plane = [&](int c) {
        const TMask m0 = DeinterleaveMask(0, c), m1 = DeinterleaveMask(1, c),
                    m2 = DeinterleaveMask(2, c);
        return V::Or(V::Or(V::Shuffle(x0, Mask(m0)), V::Shuffle(x1, Mask(m1))),
                     V::Shuffle(x2, Mask(m2)));
    };
    b = plane(0);
    g = plane(1);
    r = plane(2);
}

// Runs block(s, d, x) over the whole blocks of every row (reads stay `slack` pixels short of the
// row end), then converts the remaining columns by the reference.
template <class Block>
void RowKernel(TFXVideoFormat from, const TFXConstPlanes& src, TFXVideoFormat to,
               const TFXPlanes& dst, int width, int height, int blockWidth, int slack, Block block)
{
    const int body = BodyWidth(width, blockWidth, slack);
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* s = Row(src, 0, y);
        std::uint8_t* d = Row(dst, 0, y);
        for (int x = 0; x < body; x += blockWidth)
            block(s, d, x);
    }
    Tail(from, src, to, dst, body, width, height);
}

// ---------------------------------------------------------------- RGB <-> RGB and grey
void Rgb24ToRgb32(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    static constexpr TMask kSpread{{0, 1, 2, kZ, 3, 4, 5, kZ, 6, 7, 8, kZ, 9, 10, 11, kZ}};
    const TVecT spread = Mask(kSpread), alpha = V::Set32(int(0xFF000000u));
    // Each lane reads 4 bytes past its 12, hence 2 pixels of slack.
    RowKernel(vfRGB24, src, vfRGB32, dst, width, height, 4 * V::kLanes, 2,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  V::Store(d + 4 * x, V::Or(V::Shuffle(V::LoadLanes12(s + 3 * x), spread), alpha));
              });
}

void Rgb32ToRgb24(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    static constexpr TMask kCompact{{0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, kZ, kZ, kZ, kZ}};
    const TVecT compact = Mask(kCompact);
    RowKernel(vfRGB32, src, vfRGB24, dst, width, height, 4 * V::kLanes, 0,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  V::StoreLanes12(d + 3 * x, V::Shuffle(V::Load(s + 4 * x), compact));
              });
}

// Grey from packed RGB: lumaOf(p) gives the 32-bit luma of the 4 * kLanes pixels at p; four
// such groups make one vector of grey bytes.
template <int Bytes, class LumaOf>
void PackedToGray8(TFXVideoFormat from, const TFXConstPlanes& src, const TFXPlanes& dst, int width,
                   int height, int slack, LumaOf lumaOf)
{
    constexpr int kGroup = 4 * TVec::kLanes;
    RowKernel(from, src, vfGray8, dst, width, height, 4 * kGroup, slack,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  const std::uint8_t* p = s + Bytes * x;
                  TVec::Store(d + x, PackGroups(lumaOf(p), lumaOf(p + Bytes * kGroup),
                                                lumaOf(p + 2 * Bytes * kGroup),
                                                lumaOf(p + 3 * Bytes * kGroup)));
              });
}

void Rgb24ToGray8(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    static constexpr TMask kBG{{0, kZ, 1, kZ, 3, kZ, 4, kZ, 6, kZ, 7, kZ, 9, kZ, 10, kZ}};
    static constexpr TMask kR{{2, kZ, kZ, kZ, 5, kZ, kZ, kZ, 8, kZ, kZ, kZ, 11, kZ, kZ, kZ}};
    const TVecT maskBG = Mask(kBG), maskR = Mask(kR), oneHigh = V::Set32(1 << 16);
    const TVecT wBG = V::Pair16(kLumaB, kLumaG), wR1 = V::Pair16(kLumaR, 16384);
    // 16-bit (B, G) and (R, 1) pairs per pixel against the weights and the rounding half.
    PackedToGray8<3>(vfRGB24, src, dst, width, height, 2, [&](const std::uint8_t* p) {
        const TVecT v = V::LoadLanes12(p); // each lane reads 4 bytes past its 12
        const TVecT bg = V::Shuffle(v, maskBG), r1 = V::Or(V::Shuffle(v, maskR), oneHigh);
        return V::template Srai32<15>(V::Add32(V::Madd(bg, wBG), V::Madd(r1, wR1)));
    });
}

void Rgb32ToGray8(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    const TVecT lowBytes = V::Set32(0x00FF00FF), half = V::Set32(16384);
    const TVecT wBR = V::Pair16(kLumaB, kLumaR), wGA = V::Pair16(kLumaG, 0);
    // The 16-bit words of B, G, R, A are (B, R) masked and (G, A) shifted.
    PackedToGray8<4>(vfRGB32, src, dst, width, height, 0, [&](const std::uint8_t* p) {
        const TVecT v = V::Load(p);
        const TVecT br = V::And(v, lowBytes), ga = V::template Srli16<8>(v);
        return V::template Srai32<15>(V::Add32(V::Add32(V::Madd(br, wBR), V::Madd(ga, wGA)), half));
    });
}

void Gray8ToRgb24(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    static constexpr TMask kM0 = InterleaveMask(0, -1), kM1 = InterleaveMask(1, -1),
                           kM2 = InterleaveMask(2, -1);
    const TVecT m0 = Mask(kM0), m1 = Mask(kM1), m2 = Mask(kM2);
    RowKernel(vfGray8, src, vfRGB24, dst, width, height, 16 * V::kLanes, 0,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  const TVecT g = V::Load(s + x);
                  V::StoreInterleaved3(d + 3 * x, V::Shuffle(g, m0), V::Shuffle(g, m1),
                                       V::Shuffle(g, m2));
              });
}

void Gray8ToRgb32(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    static constexpr TMask kSpread{{0, 0, 0, kZ, 4, 4, 4, kZ, 8, 8, 8, kZ, 12, 12, 12, kZ}};
    const TVecT spread = Mask(kSpread), alpha = V::Set32(int(0xFF000000u));
    RowKernel(vfGray8, src, vfRGB32, dst, width, height, 4 * V::kLanes, 0,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  V::Store(d + 4 * x, V::Or(V::Shuffle(V::LoadWidenU8ToU32(s + x), spread), alpha));
              });
}

void Gray8ToGray16(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    RowKernel(vfGray8, src, vfGray16, dst, width, height, 8 * V::kLanes, 0,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  const TVecT v = V::LoadWidenU8ToU16(s + x);
                  V::Store(d + 2 * x, V::Or(v, V::template Slli16<8>(v))); // v * 257
              });
}

void Gray16ToGray8(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    // (v * 255 + 32767) / 65535 == ((v * 65281 >> 16) + 128) >> 8 for every 16-bit v.
    const TVecT m = V::Set16(65281), half = V::Set16(128);
    auto narrow = [&](TVecT v) { return V::template Srli16<8>(V::Add16(V::MulhiU16(v, m), half)); };
    RowKernel(vfGray16, src, vfGray8, dst, width, height, 16 * V::kLanes, 0,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  const TVecT a = narrow(V::Load(s + 2 * x));
                  const TVecT b = narrow(V::Load(s + 2 * x + 16 * V::kLanes));
                  V::Store(d + x, V::FixPack2(V::Packus16(a, b)));
              });
}

// ---------------------------------------------------------------- YUV -> RGB
// The chroma contributions of 8 chroma samples per lane, duplicated to the 16 pixels they cover.
struct TChromaTerms {
    TVecT R[4], G[4], B[4];
};

// uv0, uv1: 16-bit (U - 128, V - 128) pairs of samples 0-3 and 4-7 of each lane.
inline TChromaTerms ChromaTerms(TVecT uv0, TVecT uv1)
{
    using V = TVec;
    const TVecT wR = V::Pair16(0, kCRV), wG = V::Pair16(kCGU, kCGV), wB = V::Pair16(kCBU, 0);
    TChromaTerms t;
    auto spread = [](TVecT* out, TVecT a, TVecT b) {
        out[0] = V::Unpacklo32(a, a);
        out[1] = V::Unpackhi32(a, a);
        out[2] = V::Unpacklo32(b, b);
        out[3] = V::Unpackhi32(b, b);
    };
    spread(t.R, V::Madd(uv0, wR), V::Madd(uv1, wR));
    spread(t.G, V::Madd(uv0, wG), V::Madd(uv1, wG));
    spread(t.B, V::Madd(uv0, wB), V::Madd(uv1, wB));
    return t;
}

// The same for 16 chroma samples per lane, one per pixel: uv[k] holds pixels 4k..4k+3.
inline TChromaTerms ChromaTermsPerPixel(const TVecT* uv)
{
    using V = TVec;
    const TVecT wR = V::Pair16(0, kCRV), wG = V::Pair16(kCGU, kCGV), wB = V::Pair16(kCBU, 0);
    TChromaTerms t;
    for (int k = 0; k < 4; ++k) {
        t.R[k] = V::Madd(uv[k], wR);
        t.G[k] = V::Madd(uv[k], wG);
        t.B[k] = V::Madd(uv[k], wB);
    }
    return t;
}

// 16 luma bytes per lane plus their chroma terms -> packed B, G, R stored at p.
inline void StoreYuvAsBgr(std::uint8_t* p, TVecT luma, const TChromaTerms& t)
{
    using V = TVec;
    const TVecT zero = V::Zero(), wY = V::Pair16(kCY, 0), bias = V::Set32(kYBias);
    const TVecT lo = V::Unpacklo8(luma, zero), hi = V::Unpackhi8(luma, zero);
    const TVecT yw[4] = {V::Unpacklo16(lo, zero), V::Unpackhi16(lo, zero), V::Unpacklo16(hi, zero),
                         V::Unpackhi16(hi, zero)};
    TVecT r[4], g[4], b[4];
    for (int k = 0; k < 4; ++k) {
        const TVecT y = V::Add32(V::Madd(yw[k], wY), bias);
        r[k] = V::template Srai32<13>(V::Add32(y, t.R[k]));
        g[k] = V::template Srai32<13>(V::Add32(y, t.G[k]));
        b[k] = V::template Srai32<13>(V::Add32(y, t.B[k]));
    }
    StoreBgr(p, PackInLane(b[0], b[1], b[2], b[3]), PackInLane(g[0], g[1], g[2], g[3]),
             PackInLane(r[0], r[1], r[2], r[3]));
}

// Planar YUV to RGB24; with 4:2:0 two luma rows share each chroma row's terms.
// F is vfI420, vfYV12, vfNV12, vfI422 or vfI444.
template <TFXVideoFormat F>
void PlanarYuvToRgb24(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    constexpr int kBlock = 16 * V::kLanes, kRowsPerChroma = F == vfI422 || F == vfI444 ? 1 : 2;
    const TVecT zero = V::Zero(), bias = V::Set16(128);
    const int body = BodyWidth(width, kBlock);
    for (int y = 0; y < height; y += kRowsPerChroma) {
        const std::uint8_t* c1 = Row(src, 1, y / kRowsPerChroma);
        const std::uint8_t* c2 = F == vfNV12 ? nullptr : Row(src, 2, y / kRowsPerChroma);
        const int rows = std::min(kRowsPerChroma, height - y);
        for (int x = 0; x < body; x += kBlock) {
            TChromaTerms t;
            if constexpr (F == vfI444) {
                const TVecT u = V::Load(c1 + x), v = V::Load(c2 + x);
                const TVecT lo = V::Unpacklo8(u, v), hi = V::Unpackhi8(u, v);
                const TVecT uv[4] = {
                    V::Sub16(V::Unpacklo8(lo, zero), bias), V::Sub16(V::Unpackhi8(lo, zero), bias),
                    V::Sub16(V::Unpacklo8(hi, zero), bias), V::Sub16(V::Unpackhi8(hi, zero), bias)};
                t = ChromaTermsPerPixel(uv);
            } else {
                // U, V byte pairs of 8 chroma samples per lane.
                const TVecT uv =
                    F == vfNV12 ? V::Load(c1 + x)
                    : F != vfYV12
                        ? V::Unpacklo8(V::LoadLanes8(c1 + x / 2), V::LoadLanes8(c2 + x / 2))
                        : V::Unpacklo8(V::LoadLanes8(c2 + x / 2), V::LoadLanes8(c1 + x / 2));
                t = ChromaTerms(V::Sub16(V::Unpacklo8(uv, zero), bias),
                                V::Sub16(V::Unpackhi8(uv, zero), bias));
            }
            for (int r = 0; r < rows; ++r)
                StoreYuvAsBgr(Row(dst, 0, y + r) + 3 * x, V::Load(Row(src, 0, y + r) + x), t);
        }
    }
    Tail(F, src, vfRGB24, dst, body, width, height);
}

// Packed 4:2:2 to RGB24. F is vfYUY2 (Y U Y V) or vfUYVY (U Y V Y).
template <TFXVideoFormat F>
void Packed422ToRgb24(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    constexpr int kBlock = 16 * V::kLanes;
    const TVecT lowBytes = V::Set16(0x00FF), bias = V::Set16(128);
    // Splits 16-bit words into their luma and chroma bytes, as 16-bit values.
    auto luma = [&](TVecT w) {
        return F == vfYUY2 ? V::And(w, lowBytes) : V::template Srli16<8>(w);
    };
    auto chroma = [&](TVecT w) {
        return V::Sub16(F == vfYUY2 ? V::template Srli16<8>(w) : V::And(w, lowBytes), bias);
    };
    RowKernel(F, src, vfRGB24, dst, width, height, kBlock, 0,
              [&](const std::uint8_t* s, std::uint8_t* d, int x) {
                  TVecT a = V::Load(s + 2 * x), b = V::Load(s + 2 * x + 16 * V::kLanes);
                  V::Deinterleave2(a, b); // lane j: pixels 16j..16j+7 in a, 16j+8..16j+15 in b
                  StoreYuvAsBgr(d + 3 * x, V::Packus16(luma(a), luma(b)),
                                ChromaTerms(chroma(a), chroma(b)));
              });
}

// ---------------------------------------------------------------- RGB -> YUV
// ((B, G) . wBG + (R, 1) . wR1) >> 15, plus offset, for 16 pixels per lane given as bytes: luma
// (offset 16) and unsubsampled chroma (offset 128) alike.
inline TVecT WeightedBgr(TVecT b, TVecT g, TVecT r, TVecT wBG, TVecT wR1, int offset)
{
    using V = TVec;
    const TVecT zero = V::Zero(), one = V::Set8(1), add = V::Set32(offset);
    const TVecT bgLo = V::Unpacklo8(b, g), bgHi = V::Unpackhi8(b, g);
    const TVecT r1Lo = V::Unpacklo8(r, one), r1Hi = V::Unpackhi8(r, one);
    const TVecT bg[4] = {V::Unpacklo8(bgLo, zero), V::Unpackhi8(bgLo, zero),
                         V::Unpacklo8(bgHi, zero), V::Unpackhi8(bgHi, zero)};
    const TVecT r1[4] = {V::Unpacklo8(r1Lo, zero), V::Unpackhi8(r1Lo, zero),
                         V::Unpacklo8(r1Hi, zero), V::Unpackhi8(r1Hi, zero)};
    TVecT y[4];
    for (int k = 0; k < 4; ++k)
        y[k] = V::Add32(V::template Srai32<15>(V::Add32(V::Madd(bg[k], wBG), V::Madd(r1[k], wR1))),
                        add);
    return PackInLane(y[0], y[1], y[2], y[3]);
}

// RGB24 to planar YUV. F is vfI420, vfYV12 or vfNV12 (two rows per chroma row), vfI422 or
// vfI444 (one).
template <TFXVideoFormat F>
void Rgb24ToPlanarYuv(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    using V = TVec;
    constexpr int kBlock = 16 * V::kLanes, kRows = F == vfI422 || F == vfI444 ? 1 : 2;
    const TVecT one = V::Set8(1), four = V::Set16(4), bias = V::Set16(128);
    const TVecT wYBG = V::Pair16(kYB, kYG), wYR = V::Pair16(kYR, 16384);
    // Against (R, 1) the second weight adds the rounding half of >> 15; against (R, 4), of >> 17.
    const TVecT wUBG = V::Pair16(kUB, kUG), wUR = V::Pair16(kUR, 16384);
    const TVecT wVBG = V::Pair16(kVB, kVG), wVR = V::Pair16(kVR, 16384);
    const int body = BodyWidth(width, kBlock);
    const int fullRows = height / kRows * kRows;
    for (int y = 0; y < fullRows; y += kRows) {
        std::uint8_t* c1 = Row(dst, 1, y / kRows);
        std::uint8_t* c2 = F == vfNV12 ? nullptr : Row(dst, 2, y / kRows);
        for (int x = 0; x < body; x += kBlock) {
            TVecT b[kRows], g[kRows], r[kRows];
            for (int i = 0; i < kRows; ++i) {
                LoadBgr(Row(src, 0, y + i) + 3 * x, b[i], g[i], r[i]);
                V::Store(Row(dst, 0, y + i) + x, WeightedBgr(b[i], g[i], r[i], wYBG, wYR, 16));
            }
            if constexpr (F == vfI444) {
                V::Store(c1 + x, WeightedBgr(b[0], g[0], r[0], wUBG, wUR, 128));
                V::Store(c2 + x, WeightedBgr(b[0], g[0], r[0], wVBG, wVR, 128));
                continue;
            }
            // 16-bit sums scaled to four pixels, 8 per lane: 2x2 blocks, or 2x1 pairs doubled.
            auto sum = [&](const TVecT* c) {
                const TVecT s = V::Maddubs(c[0], one);
                return V::Add16(s, kRows == 2 ? V::Maddubs(c[kRows - 1], one) : s);
            };
            const TVecT sb = sum(b), sg = sum(g), sr = sum(r);
            const TVecT bg0 = V::Unpacklo16(sb, sg), bg1 = V::Unpackhi16(sb, sg);
            const TVecT r40 = V::Unpacklo16(sr, four), r41 = V::Unpackhi16(sr, four);
            auto chroma = [&](TVecT wBG, TVecT wR) {
                const TVecT lo = V::Add32(V::Madd(bg0, wBG), V::Madd(r40, wR));
                const TVecT hi = V::Add32(V::Madd(bg1, wBG), V::Madd(r41, wR));
                return V::Add16(V::Packs32(V::template Srai32<17>(lo), V::template Srai32<17>(hi)),
                                bias);
            };
            const TVecT u = chroma(wUBG, wUR), v = chroma(wVBG, wVR);
            if (F == vfNV12)
                V::Store(c1 + x, V::Packus16(V::Unpacklo16(u, v), V::Unpackhi16(u, v)));
            else if (F == vfYV12)
                V::StoreLanes8Pair(c2 + x / 2, c1 + x / 2, V::Packus16(u, v));
            else
                V::StoreLanes8Pair(c1 + x / 2, c2 + x / 2, V::Packus16(u, v));
        }
    }
    Tail(vfRGB24, src, F, dst, body, width, fullRows);
    if (fullRows < height)
        ConvertReference(vfRGB24, SubImage(vfRGB24, src, 0, fullRows), F,
                         SubImage(F, dst, 0, fullRows), width, height - fullRows);
}

// ---------------------------------------------------------------- the level's table
// Every listed pair needs a kernel: the primary template has no value, so a pair without its
// specialisation cannot initialise kLevelKernels below. Intentional: no static_assert comparing
// the entries with nullptr, because with -fsanitize=null GCC 12 does not treat the address of a
// function template specialisation as a constant.
template <TFXVideoFormat S, TFXVideoFormat D> extern const TFXConvertKernel kKernel;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfRGB32> = Rgb24ToRgb32;
template <> constexpr TFXConvertKernel kKernel<vfRGB32, vfRGB24> = Rgb32ToRgb24;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfGray8> = Rgb24ToGray8;
template <> constexpr TFXConvertKernel kKernel<vfRGB32, vfGray8> = Rgb32ToGray8;
template <> constexpr TFXConvertKernel kKernel<vfGray8, vfRGB24> = Gray8ToRgb24;
template <> constexpr TFXConvertKernel kKernel<vfGray8, vfRGB32> = Gray8ToRgb32;
template <> constexpr TFXConvertKernel kKernel<vfGray8, vfGray16> = Gray8ToGray16;
template <> constexpr TFXConvertKernel kKernel<vfGray16, vfGray8> = Gray16ToGray8;
template <> constexpr TFXConvertKernel kKernel<vfI420, vfRGB24> = PlanarYuvToRgb24<vfI420>;
template <> constexpr TFXConvertKernel kKernel<vfYV12, vfRGB24> = PlanarYuvToRgb24<vfYV12>;
template <> constexpr TFXConvertKernel kKernel<vfNV12, vfRGB24> = PlanarYuvToRgb24<vfNV12>;
template <> constexpr TFXConvertKernel kKernel<vfI422, vfRGB24> = PlanarYuvToRgb24<vfI422>;
template <> constexpr TFXConvertKernel kKernel<vfI444, vfRGB24> = PlanarYuvToRgb24<vfI444>;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfI420> = Rgb24ToPlanarYuv<vfI420>;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfYV12> = Rgb24ToPlanarYuv<vfYV12>;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfNV12> = Rgb24ToPlanarYuv<vfNV12>;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfI422> = Rgb24ToPlanarYuv<vfI422>;
template <> constexpr TFXConvertKernel kKernel<vfRGB24, vfI444> = Rgb24ToPlanarYuv<vfI444>;
template <> constexpr TFXConvertKernel kKernel<vfYUY2, vfRGB24> = Packed422ToRgb24<vfYUY2>;
template <> constexpr TFXConvertKernel kKernel<vfUYVY, vfRGB24> = Packed422ToRgb24<vfUYVY>;

constexpr TFXConvertKernel kLevelKernels[kFastPairCount] = {
#define FX_LEVEL_KERNEL(s, d) kKernel<s, d>,
    FX_CONVERT_FAST_PAIRS(FX_LEVEL_KERNEL)
#undef FX_LEVEL_KERNEL
};

} // namespace
} // namespace framix::conv
