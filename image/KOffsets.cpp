#include "image/KOffsets.h"

#include <algorithm>
#include <cmath>

#include "image/KImage.h"

namespace ombrelune {

namespace {

constexpr float kLongest = 131072.0F; // twice the widest picture

bool IsAlongX(KVector2 const& step) { return std::abs(step.x) >= std::abs(step.y); }

/// Value of a pixel of the kernel, 0 beyond its border.
int KernelValue(KImage const& image, int x, int y, int channel, bool flip)
{
    Pixel pixel;
    if (flip) image.GetPixelB(image.Width() - 1 - x, image.Height() - 1 - y, pixel);
    else image.GetPixelB(x, y, pixel);
    return static_cast<int>(PixelGetChannel32(pixel, channel));
}

} // namespace

KOffsets::KOffsets(float angle, float newLength, float newAspect, bool roundUp, bool quick)
    : aspect(newAspect)
{
    KVector2 step(-std::cos(angle), std::sin(angle) * aspect);
    float const longer = std::max(std::abs(step.x), std::abs(step.y));
    length = std::min(newLength * longer, kLongest) + 1.0F;
    if (roundUp && !quick) length = std::ceil(length);
    step /= longer;
    entries.push_back({.weight = 65535});
    if (quick) SetSingleSidedLine_Quick(step);
    else SetSingleSidedLine_Exact(step);
    SetPositions();
}

KOffsets::KOffsets(KImage const* image, int channel, bool flip, int mode)
{
    if (mode == 0) SetKernel(*image, channel, flip);
    else SetEdges(*image, channel, flip, mode == 2);
}

KOffsets::KOffsets(int count) : entries(static_cast<std::size_t>(std::max(count, 0))) {}

void KOffsets::SetSingleSidedLine_Quick(KVector2 const& step)
{
    KVector2 place;
    for (int i = 1; static_cast<float>(i) < length; ++i) {
        place += step;
        // The longer axis moves by whole pixels, so truncation leaves it alone.
        entries.push_back({.x = static_cast<int>(place.x), .y = static_cast<int>(place.y), .weight = 65535});
    }
}

void KOffsets::SetSingleSidedLine_Exact(KVector2 const& step)
{
    bool const alongX = IsAlongX(step);
    int const direction = (alongX ? step.x : step.y) < 0.0F ? -1 : 1;
    float const slope = alongX ? step.y : step.x;
    int major = 0;
    float minor = 0.0F;
    for (int i = 1; static_cast<float>(i) < length; ++i)
        AddPair(alongX, major += direction, minor += slope, 1.0F);
    float const part = length - std::floor(length);
    if (part > 0.0F) AddPair(alongX, major + direction, minor + part * slope, part);
}

/// Shares the weight, 0 to 1, between the two pixels beside a place of the shorter axis.
void KOffsets::AddPair(bool alongX, int major, float minor, float weight)
{
    float const below = std::floor(minor), above = std::ceil(minor);
    auto const entry = [&](float place, int share) {
        int const m = static_cast<int>(place);
        return KOffset{.x = alongX ? major : m, .y = alongX ? m : major, .weight = share};
    };
    int const full = static_cast<int>(weight * 65535.0F);
    if (below == above) {
        entries.push_back(entry(below, full));
        return;
    }
    int const share = static_cast<int>((above - minor) * (weight * 65535.0F));
    KOffset const low = entry(below, share), high = entry(above, full - share);
    bool const lowIsNearer = minor - below <= above - minor;
    entries.push_back(lowIsNearer ? low : high);
    entries.push_back(lowIsNearer ? high : low);
}

void KOffsets::SetPositions()
{
    float const factor = length > 1.0F ? 65535.0F / (length - 1.0F) : 65535.0F;
    for (KOffset& entry : entries) {
        entry.distance = static_cast<float>(std::max(std::abs(entry.x), std::abs(entry.y)));
        // The part of a last step would lie beyond the end.
        entry.position = std::min(TruncateToInt(factor * entry.distance + 0.5F), 65535);
    }
    entries.back().position = 65535;
}

void KOffsets::SetKernel(KImage const& image, int channel, bool flip)
{
    int const halfWidth = image.Width() / 2, halfHeight = image.Height() / 2;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x)
            if (int const value = KernelValue(image, x, y, channel, flip))
                entries.push_back({.x = x - halfWidth, .y = y - halfHeight, .weight = value});
}

void KOffsets::SetEdges(KImage const& image, int channel, bool flip, bool byColumns)
{
    int const halfWidth = image.Width() / 2, halfHeight = image.Height() / 2;
    int const lines = byColumns ? image.Width() : image.Height();
    int const pixels = byColumns ? image.Height() : image.Width();
    for (int line = 0; line < lines; ++line) {
        int previous = 0;
        for (int i = 0; i <= pixels; ++i) {
            int const x = byColumns ? line : i, y = byColumns ? i : line;
            int const value = KernelValue(image, x, y, channel, flip), change = previous - value;
            if (change != 0 && (value == 0 || previous == 0))
                entries.push_back({.x = x - halfWidth - (byColumns ? 0 : 1),
                                   .y = y - halfHeight - (byColumns ? 1 : 0),
                                   .weight = std::abs(change),
                                   .flag = change < 0});
            previous = value;
        }
    }
}

} // namespace ombrelune
