#include <cmath>

#include "image/KImage.h"

// Soft marks.

namespace ombrelune {

namespace {

/// A mark in coordinates that are -1 to 1 within it.
struct Mark {
    int shape, colorSource;
    FltPixel color;
    KImage const* map;

    /// Adds the colour at a place; false where the mark is not.
    bool AddTo(FltPixel& sum, float x, float y) const
    {
        if (shape == 3) return AddMap(sum, x, y);
        bool const inside = shape == 0   ? x * x + y * y <= 1.0F
                            : shape == 1 ? std::abs(x) <= 1.0F && std::abs(y) <= 1.0F
                                         : std::abs(x) + std::abs(y) <= 1.0F;
        if (inside)
            for (int i = 0; i < 4; ++i) sum.word[i] += color.word[i];
        return inside;
    }

private:
    bool AddMap(FltPixel& sum, float x, float y) const
    {
        auto const place = [](float v, int size) {
            return TruncateToInt((v + 1.0F) / 2.0F * static_cast<float>(size - 1));
        };
        FltPixel pixel;
        map->GetPixelB(place(x, map->Width()), place(y, map->Height()), pixel);
        float const luminance = PixelGetChannel(pixel, 4);
        for (int i = 0; i < 4; ++i)
            sum.word[i] += colorSource == 2 ? pixel.word[i] : luminance * color.word[i];
        return true;
    }
};

float Merge(int merge, float a, float b)
{
    switch (merge) {
    case 0: return std::max(a, b);
    case 1: return a + b;
    case 2: return std::abs(a - b);
    default: return 1.0F - (1.0F - a) * (1.0F - b);
    }
}

} // namespace

void KImage::DrawDot(KVector2 const& center, KVector2 const& size, float angle, bool noRotation, int samples,
                     int shape, int colorSource, int merge, KColor const& color, KImage const* map,
                     KImageRows const* rows)
{
    if (!map && shape == 3) shape = 0;
    if (!map && colorSource == 2) colorSource = 0;
    if (!(size.x > 0.0F && size.y > 0.0F)) return;
    bool const isBlack =
        color.red == 0.0F && color.green == 0.0F && color.blue == 0.0F && color.alpha == 0.0F;
    if (isBlack && !(shape == 3 && colorSource == 2)) return;

    Mark mark{shape, colorSource, {}, map};
    mark.color.red = color.red;
    mark.color.green = color.green;
    mark.color.blue = color.blue;
    mark.color.alpha = color.alpha;
    mark.color.DropAux();

    float const largest = 1.5F * std::max(size.x, size.y); // holds it however it is turned
    KVector2 const half = noRotation ? size : KVector2(largest, largest);
    auto const across = static_cast<float>(std::max(width_ - 1, 1)),
               up = static_cast<float>(std::max(height_ - 1, 1));
    int const left = std::max(TruncateToInt((center.x - half.x) * across - 1.0F), 0);
    int const right = std::min(TruncateToInt((center.x + half.x) * across + 1.0F), width_ - 1);
    int const low = std::max(TruncateToInt((center.y - half.y) * up - 1.0F), rows ? rows->first : 0);
    int const high =
        std::min(TruncateToInt((center.y + half.y) * up + 1.0F), (rows ? rows->end : height_) - 1);

    float const aspect = FrameAspect(), c = std::cos(angle), s = std::sin(angle);
    float const sizeX = std::max(size.x, 1e-05F), sizeY = std::max(size.y, 1e-05F);
    int const n = std::clamp(samples, 1, 64);
    float const step = 1.0F / static_cast<float>(n), first = -0.5F * static_cast<float>(n - 1) * step;
    for (int py = low; py <= high; ++py) {
        for (int px = left; px <= right; ++px) {
            FltPixel sum;
            sum.red = sum.green = sum.blue = sum.alpha = 0.0F;
            bool drawn = false;
            for (int i = 0; i < n * n; ++i) {
                int const column = i % n, row = i / n;
                float const sx = static_cast<float>(px) + first + static_cast<float>(column) * step;
                float const sy = static_cast<float>(py) + first + static_cast<float>(row) * step;
                float const dx = sx / across - center.x, dy = sy / up - center.y;
                float const x = noRotation ? dx : dx * c + dy * s / aspect;
                float const y = noRotation ? dy : dy * c - dx * s * aspect;
                drawn |= mark.AddTo(sum, x / sizeX, y / sizeY);
            }
            if (!drawn) continue;
            FltPixel pixel;
            GetPixel(px, py, pixel);
            float const samplesTaken = static_cast<float>(n) * static_cast<float>(n);
            for (int k = 0; k < 4; ++k)
                pixel.word[k] = Merge(merge, sum.word[k] / samplesTaken, pixel.word[k]);
            SetPixel(px, py, pixel);
        }
    }
}

} // namespace ombrelune
