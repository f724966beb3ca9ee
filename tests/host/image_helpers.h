#pragma once

#include <cstring>
#include <initializer_list>
#include <random>

#include "host/image/PixPtr.h"

namespace ombrelune::test {

inline Ref<Image> MakeImage(int width, int height, int depth, std::initializer_list<int> auxChannels = {})
{
    TagList tags{{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}};
    for (int channel : auxChannels) tags.Add({Img_Channel, channel});
    return NewImageTagList(tags);
}

/// Seeded noise of 0 to 1 in the colour channels, -5 to 5 in the auxiliary ones.
inline Ref<Image> MakeNoise(int width, int height, int depth, std::initializer_list<int> auxChannels = {},
                            unsigned seed = 7)
{
    Ref<Image> image = MakeImage(width, height, depth, auxChannels);
    std::mt19937 random(seed);
    auto const unit = [&] { return static_cast<float>(random() >> 8) / 16777216.0F; };
    for (int y = 0; y < height; ++y) {
        PixPtr out(image.Get(), 0, y);
        for (int x = 0; x < width; ++x) {
            FltPixel pixel;
            for (float& word : pixel.word) word = unit();
            for (int channel : auxChannels) pixel.SetAux(channel, unit() * 10.0F - 5.0F);
            out >>= pixel;
        }
    }
    return image;
}

template <class Record> Record At(Image const& image, int x, int y)
{
    Record record;
    PixPtr(const_cast<Image*>(&image), x, y).GetPixel(record);
    return record;
}

/// Colour word under an edge rule, written the slow way.
inline double WordAt(Image const& image, int x, int y, int word, EdgeModes edges)
{
    int const w = image.Width(), h = image.Height();
    if (edges == kEdgeWrap) {
        while (x < 0) x += w;
        while (y < 0) y += h;
        x %= w;
        y %= h;
    }
    if (edges == kEdgeDuplicate) {
        x = x < 0 ? 0 : x >= w ? w - 1 : x;
        y = y < 0 ? 0 : y >= h ? h - 1 : y;
    }
    if (x < 0 || y < 0 || x >= w || y >= h) return 0.0;
    if (image.IsFloat()) return At<FltPixel>(image, x, y).word[word];
    return At<Pixel>(image, x, y).word[word];
}

/// The bilinear sampler of an edge rule.
template <class Record> void Sample(Image const& image, int x, int y, EdgeModes edges, Record& record)
{
    if (edges == kEdgeBlack) image.SamplePixelB(x, y, record);
    else if (edges == kEdgeWrap) image.SamplePixelW(x, y, record);
    else image.SamplePixelD(x, y, record);
}

inline bool SameBytes(Image const& a, Image const& b)
{
    for (int y = 0; y < a.Height(); ++y) {
        std::size_t const main =
            static_cast<std::size_t>(a.Width()) * static_cast<std::size_t>(a.PixelBytes());
        std::size_t const aux =
            static_cast<std::size_t>(a.Width()) * static_cast<std::size_t>(a.AuxFloats()) * 4;
        if (std::memcmp(a.MainRow(y), b.MainRow(y), main) != 0) return false;
        if (aux && std::memcmp(a.AuxRow(y), b.AuxRow(y), aux) != 0) return false;
    }
    return true;
}

inline constexpr int kAllDepths[] = {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat};
inline constexpr EdgeModes kAllEdges[] = {kEdgeBlack, kEdgeWrap, kEdgeDuplicate};

} // namespace ombrelune::test
