#pragma once

#include "image/KVector2.h"

namespace ombrelune {

/// Rectangle of whole pixels.
struct KImagePixelRegion {
    int y = 0, x = 0, width = 0, height = 0;

    KImagePixelRegion() = default;
    KImagePixelRegion(int left, int low, int across, int up) { Set(left, low, across, up); }
    void Set(int left, int low, int across, int up)
    {
        x = left;
        y = low;
        width = across;
        height = up;
    }

    bool IsEmpty() const { return width < 1 || height < 1; }
    KImagePixelRegion Scale(int f) const { return {x * f, y * f, width * f, height * f}; }
};

/// Rectangle in frame units: x 0 to 1 across the width, y in the same unit. New ones are empty. An empty one
/// stays empty when it is scaled or expanded.
struct KImageRegion {
    double low, high, left, right;

    KImageRegion() { Empty(); }
    KImageRegion(double x0, double y0, double x1, double y1) { Set(x0, y0, x1, y1); }
    void Set(double x0, double y0, double x1, double y1);
    void Empty() { Set(0.0, 0.0, kNothing, kNothing); }
    bool IsEmpty() const { return right < kNothing + 1.0; }

    /// Whether it reaches into a frame of that size with its corner at the origin.
    bool IsInFrame(double w, double h) const { return right > 0.0 && w > left && high > 0.0 && h > low; }

    /// Grows to hold a point or another region.
    void Add(double x, double y);
    void Add(KImageRegion const& other);
    void Expand(double dx, double dy);
    void Scale(float sx, float sy);

    /// Quick reject: false only when both ends lie beyond one and the same side.
    bool LineCuts(KVector2 const& a, KVector2 const& b) const;

    /// Whole pixels that hold the region, one more than needed along each side, within a frame of w by h
    /// pixels of that aspect.
    KImagePixelRegion ToPixelRegion(int w, int h, double aspect) const;

private:
    static constexpr double kNothing = -100000.0;
};

} // namespace ombrelune
