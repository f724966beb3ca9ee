#include "image/KImageMap.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

#include "image/KImage.h"
#include "image/KRandomStream.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

/// A pixel's number below its key.
using KeyedPixel = std::uint64_t;

/// Sorts by the upper 32 bits, largest first, and leaves equal ones in their order: three passes over 11
/// bits.
void SortLargestFirst(std::vector<KeyedPixel>& pixels)
{
    constexpr unsigned kBits = 11, kMask = (1U << kBits) - 1;
    std::vector<KeyedPixel> next(pixels.size());
    for (unsigned shift = 32; shift < 64; shift += kBits) {
        std::array<std::uint32_t, kMask + 2> start{};
        auto const digit = [&](KeyedPixel p) { return (~p >> shift) & kMask; };
        for (KeyedPixel p : pixels) ++start[digit(p) + 1];
        std::partial_sum(start.begin(), start.end(), start.begin());
        for (KeyedPixel p : pixels) next[start[digit(p)]++] = p;
        pixels.swap(next);
    }
}

constexpr int kLargestSize = 1 << 24;

int CircleHalfWidth(int size, int distance)
{
    double const r = size, d = distance;
    return static_cast<int>(std::sqrt(std::max(r * r - d * d, 0.0)));
}
// A scan keeps three pixels free even in the outermost rows.
int CircleScanHalfWidth(int size, int distance) { return std::max(CircleHalfWidth(size, distance), 1); }
int SquareHalfWidth(int size, int) { return size; }
int DiamondHalfWidth(int size, int distance) { return std::max(size - distance, 1); }

bool IsIn(KImageMap const& shape, int x, int y) { return shape.GetBit(x, y); }
bool IsIn(KImage const& shape, int x, int y)
{
    FltPixel pixel;
    shape.GetPixelB(x, y, pixel);
    return pixel.alpha > 0.5F;
}

} // namespace

void KImageMapIterator::SetSize(int width, int height, unsigned seed)
{
    position_ = 0;
    if (width == width_ && height == height_ && seed == seed_) return;
    width_ = width;
    height_ = height;
    seed_ = seed;
    KRandomStream random(seed);
    std::vector<KeyedPixel> pixels(static_cast<std::size_t>(std::max(width, 0)) *
                                   static_cast<std::size_t>(std::max(height, 0)));
    // Floats that are not negative have the order of their bits.
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = KeyedPixel{std::bit_cast<std::uint32_t>(random.Random(1.0F))} << 32 | i;
    SortLargestFirst(pixels);
    order_.assign(pixels.begin(), pixels.end()); // the numbers alone
}

bool KImageMapIterator::Next(KVector2i& p)
{
    if (position_ >= order_.size()) return false;
    auto const i = static_cast<int>(order_[position_++]);
    p = {i % width_, i / width_};
    return true;
}

void KImageMap::SetSize(int width, int height)
{
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
    tilesAcross_ = (width_ + 3) / 4;
    tiles_.assign(static_cast<std::size_t>(tilesAcross_) * static_cast<std::size_t>((height_ + 3) / 4), 0);
}

int KImageMap::SetImage(KImage const* image, int channel, KRange const& range)
{
    SetSize(image->Width(), image->Height());
    // Rows of tiles, so that no two threads share a word.
    auto const counts = MeasureRows(0, (height_ + 3) / 4, [&](int tileRow) {
        int count = 0;
        for (int y = 4 * tileRow; y < std::min(4 * tileRow + 4, height_); ++y)
            VisitRow<FltPixel>(
                y,
                [&](int width, auto in) {
                    FltPixel pixel;
                    for (int x = 0; x < width; ++x) {
                        pixel >>= in;
                        if (!range.IsIn(PixelGetChannel(pixel, channel))) continue;
                        SetBit(x, y);
                        ++count;
                    }
                },
                image->FImage());
        return count;
    });
    return std::accumulate(counts.begin(), counts.end(), 0);
}

bool KImageMap::NextAvailable(KVector2i& p, KImageMapIterator* walk) const
{
    while (walk->Next(p))
        if (!GetBit(p.x, p.y)) return true;
    return false;
}

bool KImageMap::IsSpanFree(int y, int x0, int x1) const
{
    for (int x = x0; x <= x1; x = (x | 3) + 1) {
        unsigned const row = tiles_[Tile(x, y)] >> ((y & 3) * 4);
        unsigned const from = 0xFU << (x & 3), upTo = (2U << std::min(x1 - (x & ~3), 3)) - 1U;
        if (row & from & upTo & 0xFU) return false;
    }
    return true;
}

void KImageMap::SetSpan(int y, int x0, int x1)
{
    for (int x = x0; x <= x1; ++x) SetBit(x, y);
}

template <class Visit>
void KImageMap::VisitRows(KVector2i const& c, int size, float aspect, HalfWidth halfWidth,
                          Visit const& visit) const
{
    float const up = aspect * static_cast<float>(size), middle = static_cast<float>(c.y);
    int const last = SafeY(TruncateToInt(middle + up));
    for (int y = SafeY(TruncateToInt(middle - up)); y <= last; ++y) {
        int const distance = TruncateToInt(std::abs(static_cast<float>(y - c.y)) / aspect);
        if (!visit(y, halfWidth(size, distance), distance)) return;
    }
}

KImageMap::Fit KImageMap::TestShape(KVector2i const& c, int size, int knownFree, float aspect,
                                    HalfWidth halfWidth) const
{
    // Shapes only grow with their size, so of a row that belongs to a free one the ends alone are new.
    float const knownUp = aspect * static_cast<float>(knownFree), middle = static_cast<float>(c.y);
    int const knownFirst = knownFree < 0 ? height_ : TruncateToInt(middle - knownUp);
    int const knownLast = knownFree < 0 ? -1 : TruncateToInt(middle + knownUp);
    bool free = true;
    int fullRows = 0;
    VisitRows(c, size, aspect, halfWidth, [&](int y, int half, int distance) {
        int const x0 = SafeX(c.x - half), x1 = SafeX(c.x + half);
        fullRows += x0 == 0 && x1 == width_ - 1;
        if (y >= knownFirst && y <= knownLast) {
            int const known = halfWidth(knownFree, distance);
            free = IsSpanFree(y, x0, std::min(c.x - known - 1, x1)) &&
                   IsSpanFree(y, std::max(c.x + known + 1, x0), x1);
        } else free = IsSpanFree(y, x0, x1);
        return free;
    });
    if (!free) return Fit::kUsed;
    return fullRows == height_ ? Fit::kEverywhere : Fit::kFree;
}

int KImageMap::ScanShape(KVector2i const& c, KRangeInt const& sizes, float aspect, HalfWidth halfWidth) const
{
    int const largest = std::min(sizes.high, kLargestSize);
    int free = -1;
    for (int size = std::max(sizes.low, 0); size <= largest; ++size) {
        Fit const fit = TestShape(c, size, free, aspect, halfWidth);
        if (fit == Fit::kUsed) break;
        if (fit == Fit::kEverywhere) return largest;
        free = size;
    }
    return free;
}

void KImageMap::SetShape(KVector2i const& c, int size, float aspect, HalfWidth halfWidth)
{
    VisitRows(c, size, aspect, halfWidth, [&](int y, int half, int) {
        SetSpan(y, SafeX(c.x - half), SafeX(c.x + half));
        return true;
    });
}

int KImageMap::ScanCircle(KVector2i const& c, KRangeInt const& sizes, float aspect, bool set)
{
    int const size = ScanShape(c, sizes, aspect, CircleScanHalfWidth);
    if (set && size >= 0) SetCircle(c, size, aspect);
    return size;
}

int KImageMap::ScanSquare(KVector2i const& c, KRangeInt const& sizes, float aspect, bool set)
{
    int const size = ScanShape(c, sizes, aspect, SquareHalfWidth);
    if (set && size >= 0) SetSquare(c, size, aspect);
    return size;
}

int KImageMap::ScanDiamond(KVector2i const& c, KRangeInt const& sizes, float aspect, bool set)
{
    int const size = ScanShape(c, sizes, aspect, DiamondHalfWidth);
    if (set && size >= 0) SetDiamond(c, size, aspect);
    return size;
}

void KImageMap::SetCircle(KVector2i const& c, int size, float aspect)
{
    SetShape(c, size, aspect, CircleHalfWidth);
}
void KImageMap::SetSquare(KVector2i const& c, int size, float aspect)
{
    SetShape(c, size, aspect, SquareHalfWidth);
}
void KImageMap::SetDiamond(KVector2i const& c, int size, float aspect)
{
    SetShape(c, size, aspect, DiamondHalfWidth);
}

template <class Shape, class Visit>
bool KImageMap::VisitPicture(KVector2i const& c, int size, Shape const* shape, Visit const& visit) const
{
    if (size < 1) return visit(SafeX(c.x), SafeY(c.y));
    auto const place = [&](int offset, int side) {
        return static_cast<int>(std::int64_t{offset} * (side - 1) / (std::int64_t{2} * size));
    };
    for (int y = SafeY(c.y - size); y <= SafeY(c.y + size); ++y)
        for (int x = SafeX(c.x - size); x <= SafeX(c.x + size); ++x)
            if (IsIn(*shape, place(x - (c.x - size), shape->Width()),
                     place(y - (c.y - size), shape->Height())) &&
                !visit(x, y))
                return false;
    return true;
}

template <class Shape>
int KImageMap::ScanPicture(KVector2i const& c, KRangeInt const& sizes, Shape const* shape, bool set)
{
    int const largest = std::min(sizes.high, kLargestSize);
    int free = -1;
    // Pictures don't grow pixel by pixel, so each size is tested as a whole.
    for (int size = std::max(sizes.low, 0); size <= largest; ++size) {
        if (!VisitPicture(c, size, shape, [&](int x, int y) { return !GetBit(x, y); })) break;
        free = size;
    }
    if (set && free >= 0) SetPicture(c, free, shape);
    return free;
}

template <class Shape> void KImageMap::SetPicture(KVector2i const& c, int size, Shape const* shape)
{
    VisitPicture(c, size, shape, [&](int x, int y) {
        SetBit(x, y);
        return true;
    });
}

int KImageMap::ScanImage(KVector2i const& c, KRangeInt const& sizes, float /*aspect*/, KImage const* shape,
                         int, bool set)
{
    return ScanPicture(c, sizes, shape, set);
}

int KImageMap::ScanImage(KVector2i const& c, KRangeInt const& sizes, float /*aspect*/, KImageMap const* shape,
                         bool set)
{
    return ScanPicture(c, sizes, shape, set);
}

void KImageMap::SetImage(KVector2i const& c, int size, float /*aspect*/, KImage const* shape, int)
{
    SetPicture(c, size, shape);
}

void KImageMap::SetImage(KVector2i const& c, int size, float /*aspect*/, KImageMap const* shape)
{
    SetPicture(c, size, shape);
}

} // namespace ombrelune
