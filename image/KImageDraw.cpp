#include <cmath>
#include <numbers>

#include "image/KColor32.h"
#include "image/KImage.h"
#include "image/KOffsets.h"

// Points, lines and rectangles.

namespace ombrelune {

namespace {

/// The colour premultiplied by its alpha, truncated.
Pixel LineColor(Pixel const& color)
{
    Pixel result;
    double const f = color.alpha / 65535.0;
    for (int i = 0; i < 3; ++i) result.word[i] = static_cast<std::uint32_t>(f * color.word[i]);
    result.alpha = color.alpha;
    return result;
}

Pixel Weighted(Pixel const& color, float weight)
{
    Pixel result;
    for (int i = 0; i < 4; ++i)
        result.word[i] = static_cast<std::uint32_t>(weight * static_cast<float>(color.word[i]));
    return result;
}

KColor Weighted(KColor const& c, float weight)
{
    return {c.red * weight, c.green * weight, c.blue * weight, c.alpha * weight};
}

/// Calls point(dx, dy, weight) for the steps of a line from the origin up to its end, which is left out: two
/// pixels share each step of the longer axis.
template <class Point> void VisitSteps(float dx, float dy, Point const& point)
{
    constexpr float kLongest = 131072.0F;
    bool const alongX = std::abs(dx) >= std::abs(dy);
    float const major = alongX ? dx : dy, length = std::min(std::abs(major), kLongest);
    float const slope = (alongX ? dy : dx) / std::abs(major);
    int const sign = major < 0.0F ? -1 : 1;
    for (int i = 1; static_cast<float>(i) < length; ++i) {
        float const minor = slope * static_cast<float>(i), high = std::ceil(minor), weight = high - minor;
        auto const put = [&](float place, float w) {
            int const step = sign * i, other = TruncateToInt(place);
            alongX ? point(step, other, w) : point(other, step, w);
        };
        put(std::floor(minor), weight);
        put(high, 1.0F - weight);
    }
}

} // namespace

void KImage::DrawPointSafe(int x, int y, int red, int green, int blue, int alpha)
{
    Pixel color;
    color.red = LimitTo16(red);
    color.green = LimitTo16(green);
    color.blue = LimitTo16(blue);
    color.alpha = LimitTo16(alpha);
    DrawPoint(x, y, color);
}

void KImage::DrawPoint(int x, int y, Pixel const& color)
{
    if (!IsInside(x, y)) return;
    Pixel pixel;
    GetPixel(x, y, pixel);
    for (int i = 0; i < 4; ++i)
        pixel.word[i] = std::min(ScaledProduct(pixel.word[i], 65535U - color.alpha) + color.word[i], 65535U);
    SetPixel(x, y, pixel);
}

void KImage::DrawPoint(int x, int y, KColor const& color)
{
    KColor32 const c(color);
    DrawPointSafe(x, y, c.red, c.green, c.blue, c.alpha);
}

void KImage::DrawRectangle(int x, int y, int w, int h, int red, int green, int blue, int alpha)
{
    if (w < 1 || h < 1) return;
    std::int64_t const right = std::int64_t{x} + w - 1, top = std::int64_t{y} + h - 1;
    auto const point = [&](std::int64_t px, std::int64_t py) {
        if (px >= 0 && px < width_ && py >= 0 && py < height_)
            DrawPointSafe(static_cast<int>(px), static_cast<int>(py), red, green, blue, alpha);
    };
    for (std::int64_t py = std::max(y, 0); py <= std::min<std::int64_t>(top, height_ - 1); ++py) {
        point(x, py);
        if (w > 1) point(right, py);
    }
    for (std::int64_t px = std::max<std::int64_t>(std::int64_t{x} + 1, 0);
         px < std::min<std::int64_t>(right, width_); ++px) {
        point(px, y);
        if (h > 1) point(px, top);
    }
}

void KImage::DrawRectangleAA(float x0, float y0, float x1, float y1, KColor const& color)
{
    auto const place = [](float v, int size) {
        return std::min(std::max(0.0F, v * static_cast<float>(size)), static_cast<float>(size));
    };
    x0 = place(x0, width_);
    x1 = place(x1, width_);
    y0 = place(y0, height_);
    y1 = place(y1, height_);
    float const left = std::ceil(x0), right = std::floor(x1), low = std::ceil(y0), high = std::floor(y1);
    int const ix0 = static_cast<int>(left), ix1 = static_cast<int>(right);
    int const iy0 = static_cast<int>(low), iy1 = static_cast<int>(high);
    auto const column = [&](int x, KColor const& c) {
        if (iy0 > 0) DrawPoint(x, iy0 - 1, Weighted(c, low - y0));
        for (int y = iy0; y < iy1; ++y) DrawPoint(x, y, c);
        if (iy1 < height_ - 1) DrawPoint(x, iy1, Weighted(c, y1 - high));
    };
    if (ix0 > 0) column(ix0 - 1, Weighted(color, left - x0));
    for (int x = ix0; x < ix1; ++x) column(x, color);
    if (ix1 < width_ - 1) column(ix1, Weighted(color, x1 - right));
}

void KImage::DrawCenterLine(int x, int y, float angle, float length, Pixel const& color, float aspect)
{
    Pixel const line = LineColor(color);
    KOffsets const offsets(static_cast<float>(std::numbers::pi - angle), length, aspect, false, false);
    for (std::size_t i = 0; i < offsets.entries.size(); ++i) {
        KOffset const& offset = offsets.entries[i];
        if (i == 0) {
            DrawPoint(x, y, line);
            continue;
        }
        Pixel weighted;
        for (int k = 0; k < 4; ++k)
            weighted.word[k] = ScaledProduct(line.word[k], static_cast<std::uint32_t>(offset.weight));
        DrawPoint(x + offset.x, y + offset.y, weighted);
        DrawPoint(x - offset.x, y - offset.y, weighted);
    }
}

void KImage::DrawCenterLineByOffset(int x, int y, float dx, float dy, Pixel const& color)
{
    Pixel const line = LineColor(color);
    DrawPoint(x, y, line);
    VisitSteps(dx, dy, [&](int sx, int sy, float weight) {
        Pixel const weighted = Weighted(line, weight);
        DrawPoint(x + sx, y + sy, weighted);
        DrawPoint(x - sx, y - sy, weighted);
    });
}

void KImage::DrawVectorByOffset(int x, int y, float dx, float dy, Pixel const& color)
{
    Pixel const line = LineColor(color);
    Pixel start;
    for (int i = 0; i < 4; ++i) start.word[i] = std::min(2 * line.word[i], 65535U);
    DrawPoint(x, y, start);
    VisitSteps(dx, dy,
               [&](int sx, int sy, float weight) { DrawPoint(x + sx, y + sy, Weighted(line, weight)); });
}

void KImage::DrawVectorField(KColor const& color, std::vector<KVector2i> const* patterns, float spacing,
                             float scale)
{
    Pixel pixel;
    PixelFromColor(pixel, color);
    auto const draw = [&](int x, int y) {
        FltPixel at;
        GetPixelD(x, y, at);
        DrawVectorByOffset(x, y, scale * at.Aux(kChannelVelocityX), scale * at.Aux(kChannelVelocityY), pixel);
    };
    if (patterns) {
        for (KVector2i const& corner : *patterns) {
            DrawRectangle(corner.x, corner.y, 5, 5, static_cast<int>(pixel.red),
                          static_cast<int>(pixel.green), static_cast<int>(pixel.blue),
                          static_cast<int>(pixel.alpha));
            draw(corner.x + 2, corner.y + 2);
        }
        return;
    }
    float const step = spacing * static_cast<float>(width_);
    int const sx = std::max(2, TruncateToInt(step)), sy = std::max(2, TruncateToInt(step * PixelAspect()));
    for (std::int64_t y = height_ / 2 % sy; y < height_; y += sy)
        for (std::int64_t x = width_ / 2 % sx; x < width_; x += sx)
            draw(static_cast<int>(x), static_cast<int>(y));
}

} // namespace ombrelune
