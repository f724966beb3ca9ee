#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

#include <gtest/gtest.h>

#include "image/KImageMap.h"
#include "image/KImageMapFlt.h"
#include "image/KRandom.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune::test {
namespace {

constexpr int kWidth = 37, kHeight = 22;

/// A picture whose alpha is 1 where the pattern has a star, bottom row first.
Owned Stencil(std::vector<std::string> const& rows)
{
    Owned image(new KImage(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), 1.0F, false));
    image->Clear();
    for (int y = 0; y < image->Height(); ++y)
        for (int x = 0; x < image->Width(); ++x) {
            FltPixel p;
            p.Clear();
            p.alpha = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '*' ? 1.0F : 0.0F;
            image->SetPixel(x, y, p);
        }
    return image;
}

TEST(ImageMap, KeepsEachPixelApart)
{
    std::set<std::pair<int, int>> used;
    std::mt19937 random(3);
    KImageMap map(kWidth, kHeight);
    for (int i = 0; i < 300; ++i) {
        int const x = static_cast<int>(random() % kWidth), y = static_cast<int>(random() % kHeight);
        map.SetBit(x, y);
        used.emplace(x, y);
    }
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) EXPECT_EQ(map.GetBit(x, y), used.count({x, y}) == 1);
}

TEST(ImageMap, UsesThePixelsInRange)
{
    Owned const image = Stencil({"*..*.", ".....", "....*"});
    KImageMap map;
    EXPECT_EQ(map.SetImage(image.get(), 3, KRange(0.5F, 1.0F)), 3);
    EXPECT_EQ(map.Width(), 5);
    EXPECT_TRUE(map.GetBit(3, 0) && map.GetBit(4, 2) && !map.GetBit(1, 1));
    EXPECT_EQ(map.SetImage(image.get(), 0, KRange(0.0F, 0.0F)), 15) << "all of it is black";
}

// Distances.

KImageMapFltData OverAlpha(int type)
{
    KImageMapFltData data;
    data.type = type;
    data.channel = 3;
    data.range = KRange(0.5F, 1.0F);
    return data;
}

TEST(ImageMapFlt, NumbersBlobsAndMeasuresFromTheirFirstPixel)
{
    Owned const image = Stencil({"**..*", "..*.*", "....*"});
    KImageMapFlt const map(image.get(), OverAlpha(1));
    EXPECT_EQ(map.GetIndexCount(), 2);
    float const root = std::sqrt(2.0F);
    float const distances[] = {0, 1, -1, -1, 0, -1, -1, 1 + root, -1, 1, -1, -1, -1, -1, 2};
    int const blobs[] = {0, 0, -1, -1, 1, -1, -1, 0, -1, 1, -1, -1, -1, -1, 1};
    for (int i = 0; i < 15; ++i) {
        EXPECT_FLOAT_EQ(map.distances[static_cast<std::size_t>(i)], distances[i]) << i;
        EXPECT_EQ(map.blobs[static_cast<std::size_t>(i)], blobs[i]) << i;
    }
}

TEST(ImageMapFlt, SeedsReachWhatTheMaskJoins)
{
    Owned const image = Stencil({"******", ".....*", "******", "......", "******"});
    KImageMapFltData data = OverAlpha(0);
    data.pointCount = 4;
    data.points[0] = {0.9F, -0.5F}; // truncated to 0, 0
    data.radii[0] = 0.5F;
    data.points[1] = {6.0F, 0.0F};
    data.points[2] = {-1.0F, 0.0F};
    data.points[3] = {std::nanf(""), 2.0F};
    KImageMapFlt const map(image.get(), data);
    EXPECT_EQ(map.GetIndexCount(), 0);
    EXPECT_FLOAT_EQ(map.GetFlt(0, 0), 3.0F) << "half the width";
    EXPECT_FLOAT_EQ(map.GetFlt(4, 0), 7.0F);
    EXPECT_FLOAT_EQ(map.GetFlt(5, 1), 7.0F + std::sqrt(2.0F));
    EXPECT_FLOAT_EQ(map.GetFlt(4, 2), 7.0F + 2.0F * std::sqrt(2.0F));
    EXPECT_FLOAT_EQ(map.GetFlt(0, 2), 11.0F + 2.0F * std::sqrt(2.0F));
    EXPECT_EQ(map.GetFlt(0, 1), -1.0F);
    EXPECT_EQ(map.GetFlt(0, 4), -1.0F) << "no way leads there";

    data.pointCount = 0;
    KImageMapFlt const none(image.get(), data);
    EXPECT_TRUE(
        std::all_of(none.distances.begin(), none.distances.end(), [](float d) { return d == -1.0F; }));
}

/// The walk in plain steps: every pixel of the list in turn from the last, its place taken by the list's
/// last.
std::vector<float> WalkedDistances(KImage const& image, KImageMapFltData const& data)
{
    int const width = image.Width(), height = image.Height();
    auto const at = [&](int x, int y) { return static_cast<std::size_t>(y * width + x); };
    std::vector<float> distances(at(0, height), -1.0F);
    std::vector<KVector2i> list;
    for (int i = 0; i < data.pointCount; ++i) {
        KVector2i const p(static_cast<int>(data.points[i].x), static_cast<int>(data.points[i].y));
        distances[at(p.x, p.y)] = data.radii[i] * static_cast<float>(width);
        list.push_back(p);
    }
    int const steps[8][2] = {{-1, 0}, {-1, 1}, {-1, -1}, {0, 1}, {0, -1}, {1, 0}, {1, 1}, {1, -1}};
    while (!list.empty()) {
        for (auto i = static_cast<int>(list.size()) - 1; i >= 0; --i) {
            KVector2i const p = list[static_cast<std::size_t>(i)];
            list[static_cast<std::size_t>(i)] = list.back();
            list.pop_back();
            for (auto const& step : steps) {
                int const x = p.x + step[0], y = p.y + step[1];
                if (x < 0 || y < 0 || x >= width || y >= height) continue;
                float const length = step[0] != 0 && step[1] != 0 ? static_cast<float>(std::sqrt(2.0)) : 1.0F;
                float const d = distances[at(p.x, p.y)] + length;
                float& old = distances[at(x, y)];
                if (old >= 0.0F) {
                    old = std::min(old, d);
                } else if (data.range.IsIn(PixelGetChannel(At<FltPixel>(image, x, y), data.channel))) {
                    old = d;
                    list.emplace_back(x, y);
                }
            }
        }
    }
    return distances;
}

TEST(ImageMapFlt, WalksAsTold)
{
    std::mt19937 random(11);
    for (auto [width, height] : {std::pair(61, 40), std::pair(1, 9), std::pair(9, 1), std::pair(2, 2)}) {
        // Three of four pixels are in range.
        std::vector<std::string> rows(static_cast<std::size_t>(height),
                                      std::string(static_cast<std::size_t>(width), '*'));
        for (auto& row : rows)
            for (char& c : row) c = random() % 4 == 0 ? '.' : '*';
        Owned const image = Stencil(rows);
        KImageMapFltData data = OverAlpha(0);
        data.pointCount = 3;
        for (int i = 0; i < 3; ++i) {
            data.points[i] = {static_cast<float>(random() % static_cast<unsigned>(width)),
                              static_cast<float>(random() % static_cast<unsigned>(height))};
            data.radii[i] = 0.07F * static_cast<float>(i);
        }
        EXPECT_EQ(KImageMapFlt(image.get(), data).distances, WalkedDistances(*image, data)) << width;
    }
}

} // namespace
} // namespace ombrelune::test
