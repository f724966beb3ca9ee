#pragma once

#include <cstdint>
#include <vector>

#include "image/KRange.h"
#include "image/KVector2.h"

namespace ombrelune {

class KImage;

/// Visits each pixel of a map once, in random order.
class KImageMapIterator {
public:
    /// Starts again. Draws a new order when one of the three has changed: a stream of that seed gives
    /// each pixel a key; larger keys come first, and equal keys in the order of their
    /// pixels.
    void SetSize(int width, int height, unsigned seed);
    /// False at the end.
    bool Next(KVector2i& p);

private:
    int width_ = 0, height_ = 0;
    unsigned seed_ = 0;
    std::size_t position_ = 0;
    std::vector<std::uint32_t> order_; // pixel numbers
};

/// Bitmap of used pixels in tiles of 4 by 4, one word a tile, so that scans of shapes touch few words.
/// Belongs to one thread.
class KImageMap {
public:
    KImageMap() = default;
    KImageMap(int width, int height) { SetSize(width, height); }

    /// All pixels are free afterwards.
    void SetSize(int width, int height);
    void Clear() { tiles_.assign(tiles_.size(), 0); }
    int Width() const { return width_; }
    int Height() const { return height_; }
    float Aspect() const { return static_cast<float>(width_) / static_cast<float>(height_); }

    // The caller stays inside.
    void SetBit(int x, int y) { tiles_[Tile(x, y)] |= Mask(x, y); }
    bool GetBit(int x, int y) const { return (tiles_[Tile(x, y)] & Mask(x, y)) != 0; }

    int SafeX(int x) const { return x < 0 ? 0 : x < width_ ? x : width_ - 1; }
    int SafeY(int y) const { return y < 0 ? 0 : y < height_ ? y : height_ - 1; }

    /// Takes the size of the image and uses the pixels whose channel is in range; gives their number.
    int SetImage(KImage const* image, int channel, KRange const& range);
    /// Takes places from the walk until one is free; false when they run out.
    bool NextAvailable(KVector2i& p, KImageMapIterator* walk) const;

    // The largest free shape around c: sizes are tried from low to high until one meets a used pixel. Gives
    // the last free size, or -1 when there is none; with `set` it is marked as used. A size is half the width
    // in pixels, times the aspect half the height. What lies outside the map is left out.

    int ScanCircle(KVector2i const& c, KRangeInt const& sizes, float aspect, bool set);
    int ScanSquare(KVector2i const& c, KRangeInt const& sizes, float aspect, bool set);
    int ScanDiamond(KVector2i const& c, KRangeInt const& sizes, float aspect, bool set);
    // A picture laid over the square, where its alpha is above a half or its map is used; size 0 is the pixel
    // c. Neither the aspect nor the number has an effect.
    int ScanImage(KVector2i const& c, KRangeInt const& sizes, float aspect, KImage const* shape, int,
                  bool set);
    int ScanImage(KVector2i const& c, KRangeInt const& sizes, float aspect, KImageMap const* shape, bool set);

    // Mark a shape as used.

    void SetCircle(KVector2i const& c, int size, float aspect);
    void SetSquare(KVector2i const& c, int size, float aspect);
    void SetDiamond(KVector2i const& c, int size, float aspect);
    void SetImage(KVector2i const& c, int size, float aspect, KImage const* shape, int);
    void SetImage(KVector2i const& c, int size, float aspect, KImageMap const* shape);

private:
    std::size_t Tile(int x, int y) const
    {
        return static_cast<std::size_t>(y >> 2) * static_cast<std::size_t>(tilesAcross_) +
               static_cast<std::size_t>(x >> 2);
    }
    static std::uint16_t Mask(int x, int y)
    {
        return static_cast<std::uint16_t>(1U << ((y & 3) * 4 + (x & 3)));
    }

    /// Half the width of a shape's row, by its size and the row's distance from the centre.
    using HalfWidth = int (*)(int size, int distance);
    enum class Fit { kUsed, kFree, kEverywhere };

    bool IsSpanFree(int y, int x0, int x1) const;
    void SetSpan(int y, int x0, int x1);
    /// Calls visit(row, half width, distance) for the rows of a shape until it gives false.
    template <class Visit>
    void VisitRows(KVector2i const& c, int size, float aspect, HalfWidth halfWidth, Visit const& visit) const;
    Fit TestShape(KVector2i const& c, int size, int knownFree, float aspect, HalfWidth halfWidth) const;
    int ScanShape(KVector2i const& c, KRangeInt const& sizes, float aspect, HalfWidth halfWidth) const;
    void SetShape(KVector2i const& c, int size, float aspect, HalfWidth halfWidth);

    /// Calls visit(x, y) for the pixels of a picture that is laid over the square until it gives false.
    template <class Shape, class Visit>
    bool VisitPicture(KVector2i const& c, int size, Shape const* shape, Visit const& visit) const;
    template <class Shape>
    int ScanPicture(KVector2i const& c, KRangeInt const& sizes, Shape const* shape, bool set);
    template <class Shape> void SetPicture(KVector2i const& c, int size, Shape const* shape);

    int width_ = 0, height_ = 0, tilesAcross_ = 0;
    std::vector<std::uint16_t> tiles_; // pixel x, y at bit 4 (y % 4) + x % 4, rows from the bottom
};

} // namespace ombrelune
