#pragma once

#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "image/KColor32.h"
#include "image/KImage.h"

namespace ombrelune::test {

using Picture = std::unique_ptr<KImage>;

/// Picture whose pixels are made by place; a 16-bit one takes 65535 times the value, rounded.
inline Picture MakePicture(int depth, int width, int height, std::function<KColor(int x, int y)> const& color)
{
    Ref<Image> image = NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}});
    Picture picture(KImage::ImageFromHost(image.Release(), true));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            KColor const c = color(x, y);
            FltPixel pixel;
            pixel.red = c.red;
            pixel.green = c.green;
            pixel.blue = c.blue;
            pixel.alpha = c.alpha;
            picture->SetPixel(x, y, pixel);
        }
    }
    return picture;
}

/// Uneven colours for comparisons: every pixel differs from its neighbours, alpha includes 0 and 1.
inline Picture MakeBusyPicture(int depth, int width, int height)
{
    return MakePicture(depth, width, height, [](int x, int y) {
        auto const wave = [&](int a, int b) { return static_cast<float>((x * a + y * b) % 17) / 16.0F; };
        float const alpha = wave(3, 5);
        return KColor(wave(1, 7) * alpha, wave(5, 2) * alpha, wave(11, 13) * alpha, alpha);
    });
}

inline KColor Grey(float v) { return {v, v, v, v}; }

inline Picture Plain(int depth, KColor const& color, int width = 7, int height = 5)
{
    return MakePicture(depth, width, height, [=](int, int) { return color; });
}

/// A picture of one row of greys, alpha included.
inline Picture GreyRow(int depth, std::vector<float> const& values)
{
    return MakePicture(depth, static_cast<int>(values.size()), 1,
                       [&](int x, int) { return Grey(values[static_cast<std::size_t>(x)]); });
}

inline KColor ColorAt(KImage const& image, int x, int y)
{
    FltPixel pixel;
    image.GetPixel(x, y, pixel);
    return KColor(pixel);
}

/// The four colour words as integers.
inline KColor32 WordsAt(KImage const& image, int x, int y)
{
    Pixel pixel;
    image.GetPixel(x, y, pixel);
    return KColor32(pixel);
}

inline bool SameBytes(KImage const& a, KImage const& b)
{
    if (!a.SameSize(&b) || a.Depth() != b.Depth()) return false;
    std::size_t const bytes = static_cast<std::size_t>(a.Width() * a.FImage()->PixelBytes());
    for (int y = 0; y < a.Height(); ++y)
        if (std::memcmp(a.FImage()->MainRow(y), b.FImage()->MainRow(y), bytes) != 0) return false;
    return true;
}

/// The red words of a picture, row by row from the top, as letters: 0 is '.', 0.1 'a', 0.2 'b' and so on.
inline std::string Letters(KImage const& image)
{
    std::string text;
    for (int y = image.Height(); y-- > 0; text += y > 0 ? "/" : "")
        for (int x = 0; x < image.Width(); ++x) {
            int const tenths = static_cast<int>(std::lround(ColorAt(image, x, y).red * 10));
            text += tenths == 0 ? '.' : static_cast<char>('a' + tenths - 1);
        }
    return text;
}

/// A picture of such letters; alpha is 1 where there is one.
inline Picture FromLetters(int depth, std::string_view text)
{
    int const width = static_cast<int>(text.find('/') == text.npos ? text.size() : text.find('/'));
    int const height = static_cast<int>(text.size() + 1) / (width + 1);
    return MakePicture(depth, width, height, [&](int x, int y) {
        char const letter = text[static_cast<std::size_t>((height - 1 - y) * (width + 1) + x)];
        float const value = letter == '.' ? 0.0F : static_cast<float>(letter - 'a' + 1) / 10.0F;
        return KColor(value, 0.0F, 0.0F, letter == '.' ? 0.0F : 1.0F);
    });
}

} // namespace ombrelune::test
