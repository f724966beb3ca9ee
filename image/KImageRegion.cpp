#include "image/KImageRegion.h"

#include <algorithm>
#include <cmath>

#include "image/PixelMath.h"

namespace ombrelune {

namespace {

/// First pixel and number of pixels of an interval along a side of `size` pixels.
void ToPixels(double from, double to, double scale, int size, int& first, int& count)
{
    first = std::min(std::max(TruncateToInt(from * scale), 0), size - 1);
    count = std::min(std::max(TruncateToInt(std::ceil((to - from) * scale) + 1.0), 0), size - first);
}

} // namespace

void KImageRegion::Set(double x0, double y0, double x1, double y1)
{
    left = x0;
    low = y0;
    right = x1;
    high = y1;
}

void KImageRegion::Add(double x, double y)
{
    if (IsEmpty()) return Set(x, y, x, y);
    Set(std::min(left, x), std::min(low, y), std::max(right, x), std::max(high, y));
}

void KImageRegion::Add(KImageRegion const& other)
{
    if (other.IsEmpty()) return;
    Add(other.left, other.low);
    Add(other.right, other.high);
}

void KImageRegion::Expand(double dx, double dy)
{
    if (!IsEmpty()) Set(left - dx, low - dy, right + dx, high + dy);
}

void KImageRegion::Scale(float sx, float sy)
{
    if (!IsEmpty()) Set(left * sx, low * sy, right * sx, high * sy);
}

bool KImageRegion::LineCuts(KVector2 const& a, KVector2 const& b) const
{
    return !((a.x < left && b.x < left) || (a.x > right && b.x > right) || (a.y < low && b.y < low) ||
             (a.y > high && b.y > high));
}

KImagePixelRegion KImageRegion::ToPixelRegion(int w, int h, double aspect) const
{
    KImagePixelRegion pixels;
    ToPixels(left, right, w, w, pixels.x, pixels.width);
    ToPixels(low, high, w * aspect, h, pixels.y, pixels.height);
    return pixels;
}

} // namespace ombrelune
