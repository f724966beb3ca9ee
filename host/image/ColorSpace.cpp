#include "host/image/ColorSpace.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/image/StoredPixel.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

struct Color3 {
    float first, second, third;
};

/// RGB and the components of a space that is linear in it: component = row . rgb + offset.
struct LinearSpace {
    double rows[3][3];
    double offset[3];
};

constexpr double kRangeI = 2.0 * 0.5959,
                 kRangeQ = 2.0 * 0.5227; // differences from their lowest to their highest

constexpr LinearSpace kYuv = {{{0.299, 0.587, 0.114},
                               {-0.299 / 1.772, -0.587 / 1.772, 0.886 / 1.772},
                               {0.701 / 1.402, -0.587 / 1.402, -0.114 / 1.402}},
                              {0.0, 0.5, 0.5}};
constexpr LinearSpace kYiq = {{{0.299, 0.587, 0.114},
                               {0.5959 / kRangeI, -0.2746 / kRangeI, -0.3213 / kRangeI},
                               {0.2115 / kRangeQ, -0.5227 / kRangeQ, 0.3112 / kRangeQ}},
                              {0.0, 0.5, 0.5}};
constexpr LinearSpace kCmy = {{{-1.0, 0.0, 0.0}, {0.0, -1.0, 0.0}, {0.0, 0.0, -1.0}}, {1.0, 1.0, 1.0}};
constexpr LinearSpace kXyz = {{{0.4124 / 0.9505, 0.3576 / 0.9505, 0.1805 / 0.9505},
                               {0.2126, 0.7152, 0.0722},
                               {0.0193 / 1.089, 0.1192 / 1.089, 0.9505 / 1.089}},
                              {0.0, 0.0, 0.0}};

constexpr LinearSpace Inverse(LinearSpace const& s)
{
    auto const& m = s.rows;
    LinearSpace inverse{};
    auto const minor = [&](int i, int j) {
        int const i1 = (i + 1) % 3, i2 = (i + 2) % 3, j1 = (j + 1) % 3, j2 = (j + 2) % 3;
        return m[i1][j1] * m[i2][j2] - m[i1][j2] * m[i2][j1];
    };
    double const determinant = m[0][0] * minor(0, 0) + m[0][1] * minor(0, 1) + m[0][2] * minor(0, 2);
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            inverse.rows[i][j] = minor(j, i) / determinant;
            inverse.offset[i] -= inverse.rows[i][j] * s.offset[j];
        }
    }
    return inverse;
}

template <LinearSpace const& Space> Color3 Apply(Color3 c)
{
    auto const row = [&](int i) {
        double const* const r = Space.rows[i];
        return static_cast<float>(r[0] * c.first + r[1] * c.second + r[2] * c.third + Space.offset[i]);
    };
    return {row(0), row(1), row(2)};
}

constexpr LinearSpace kYuvInverse = Inverse(kYuv), kYiqInverse = Inverse(kYiq), kXyzInverse = Inverse(kXyz);

/// Hue in turns of a colour whose largest channel exceeds its smallest by `range`.
float Hue(Color3 rgb, float most, float range)
{
    if (range == 0.0F) return 0.0F;
    auto const [r, g, b] = rgb;
    float const sixths = most == r   ? (g - b) / range
                         : most == g ? (b - r) / range + 2.0F
                                     : (r - g) / range + 4.0F;
    return (sixths < 0.0F ? sixths + 6.0F : sixths) / 6.0F;
}

/// Colour of a hue with its smallest channel and the range up to its largest.
Color3 FromHue(float hue, float least, float range)
{
    float const sixths = (hue - std::floor(hue)) * 6.0F;
    auto const channel = [&](float centre) {
        // Full up to one sixth of a turn from the channel's own hue, nothing from two sixths on.
        float const away = std::abs(sixths - centre);
        return least + range * std::clamp(2.0F - std::min(away, 6.0F - away), 0.0F, 1.0F);
    };
    return {channel(0.0F), channel(2.0F), channel(4.0F)};
}

Color3 HlsFromRgb(Color3 c)
{
    float const most = std::max({c.first, c.second, c.third}), least = std::min({c.first, c.second, c.third});
    float const range = most - least, lightness = (most + least) * 0.5F;
    float const widest = 1.0F - std::abs(2.0F * lightness - 1.0F); // the largest range at this lightness
    return {Hue(c, most, range), lightness, widest != 0.0F ? range / widest : 0.0F};
}

Color3 RgbFromHls(Color3 c)
{
    float const range = (1.0F - std::abs(2.0F * c.second - 1.0F)) * c.third;
    return FromHue(c.first, c.second - range * 0.5F, range);
}

Color3 HsvFromRgb(Color3 c)
{
    float const most = std::max({c.first, c.second, c.third}), least = std::min({c.first, c.second, c.third});
    return {Hue(c, most, most - least), most != 0.0F ? (most - least) / most : 0.0F, most};
}

Color3 RgbFromHsv(Color3 c)
{
    float const range = c.third * c.second;
    return FromHue(c.first, c.third - range, range);
}

constexpr float kLabBend = 6.0F / 29.0F; // the cube root goes on as a straight line below this

float LabCurve(float t)
{
    return t > kLabBend * kLabBend * kLabBend ? std::cbrt(t)
                                              : t / (3.0F * kLabBend * kLabBend) + 4.0F / 29.0F;
}

float LabCurveInverse(float f)
{
    return f > kLabBend ? f * f * f : (f - 4.0F / 29.0F) * (3.0F * kLabBend * kLabBend);
}

Color3 LabFromRgb(Color3 c)
{
    Color3 const xyz = Apply<kXyz>(c);
    float const x = LabCurve(xyz.first), y = LabCurve(xyz.second), z = LabCurve(xyz.third);
    return {1.16F * y - 0.16F, 0.5F + (x - y) * (500.0F / 256.0F), 0.5F + (y - z) * (200.0F / 256.0F)};
}

Color3 RgbFromLab(Color3 c)
{
    float const y = (c.first + 0.16F) / 1.16F;
    float const x = y + (c.second - 0.5F) * (256.0F / 500.0F), z = y - (c.third - 0.5F) * (256.0F / 200.0F);
    return Apply<kXyzInverse>({LabCurveInverse(x), LabCurveInverse(y), LabCurveInverse(z)});
}

template <Color3 (*Convert)(Color3)> void Pixels(Float4* pixels, int count)
{
    for (int i = 0; i < count; ++i) {
        Float4& pixel = pixels[i];
        Color3 const converted = Convert({pixel[2], pixel[1], pixel[0]});
        pixel = Float4{converted.third, converted.second, converted.first, pixel[3]};
    }
}

template <class Stored> void ConvertRow(Stored* row, int width, ConvertPixels toRgb, ConvertPixels fromRgb)
{
    constexpr int kBlock = 256;
    constexpr float kOne = std::is_integral_v<Stored> ? float(std::numeric_limits<Stored>::max()) : 1.0F;
    Float4 block[kBlock];
    for (int x = 0; x < width; x += kBlock, row += 4 * kBlock) {
        int const count = std::min(kBlock, width - x);
        for (int i = 0; i < count; ++i) block[i] = LoadPixel(row + 4 * i) / kOne;
        if (toRgb) toRgb(block, count);
        if (fromRgb) fromRgb(block, count);
        for (int i = 0; i < count; ++i) {
            Stored const alpha = row[4 * i + 3];
            StorePixel(block[i] * kOne, row + 4 * i);
            row[4 * i + 3] = alpha;
        }
    }
}

} // namespace

ConvertPixels ToRgb(ColorSpaceType from)
{
    switch (from) {
    case kSpaceHLS: return Pixels<RgbFromHls>;
    case kSpaceYUV: return Pixels<Apply<kYuvInverse>>;
    case kSpaceYIQ: return Pixels<Apply<kYiqInverse>>;
    case kSpaceCMY: return Pixels<Apply<kCmy>>; // its own inverse
    case kSpaceHSV: return Pixels<RgbFromHsv>;
    case kSpaceXYZ: return Pixels<Apply<kXyzInverse>>;
    case kSpaceLAB: return Pixels<RgbFromLab>;
    default: return nullptr;
    }
}

ConvertPixels FromRgb(ColorSpaceType to)
{
    switch (to) {
    case kSpaceHLS: return Pixels<HlsFromRgb>;
    case kSpaceYUV: return Pixels<Apply<kYuv>>;
    case kSpaceYIQ: return Pixels<Apply<kYiq>>;
    case kSpaceCMY: return Pixels<Apply<kCmy>>;
    case kSpaceHSV: return Pixels<HsvFromRgb>;
    case kSpaceXYZ: return Pixels<Apply<kXyz>>;
    case kSpaceLAB: return Pixels<LabFromRgb>;
    default: return nullptr;
    }
}

void Image::CSConvertTagList(ColorSpaceType from, ColorSpaceType to, TagList const&)
{
    if (from == to) return;
    ConvertPixels const toRgb = ToRgb(from), fromRgb = FromRgb(to);
    ParallelFor(height_, [&](int y) {
        auto const convert = [&]<class Stored>(Stored* row) { ConvertRow(row, width_, toRgb, fromRgb); };
        switch (depth_) {
        case kDepthInt8: return convert(reinterpret_cast<std::uint8_t*>(MainRow(y)));
        case kDepthInt16: return convert(reinterpret_cast<std::uint16_t*>(MainRow(y)));
        case kDepthHalf: return convert(reinterpret_cast<Imath::half*>(MainRow(y)));
        default: return convert(reinterpret_cast<float*>(MainRow(y)));
        }
    });
}

} // namespace ombrelune
