// Map Filter: filters a picture with another one as the kernel.

#include <algorithm>
#include <memory>
#include <vector>

#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "host/image/Vector4.h"
#include "image/KOffsets.h"

namespace ombrelune {

namespace {

constexpr int kMostSide = 1024; // of a resized map: its pixels count for each pixel of the picture
constexpr int kBlock = 8;       // pixels that are summed side by side, in registers

struct Tap {
    int x;
    float weight;
};

/// The taps of one row of the kernel.
struct TapRow {
    int y;
    std::size_t first, last;
    double weight; // of all
};

int WrappedTo(int i, int size)
{
    int const rest = i % size;
    return rest < 0 ? rest + size : rest;
}

void Finish(float const* words, FltPixel& pixel) { Store(LoadFloat4(words), pixel.word); }
void Finish(float const* words, Pixel& pixel)
{
    for (int c = 0; c < 4; ++c)
        pixel.word[c] =
            words[c] > 0.0F ? static_cast<std::uint32_t>(std::min(words[c], 1.0F) * 65535.0F + 0.5F) : 0U;
}

} // namespace

class KEffectMapFilter : public KEffectPixel {
public:
    static constexpr bool kOwnRow = true;
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Map", "Map Filter"); }

    KEffectMapFilter()
    {
        // clang-format off
        parameters.AddChapter("Map Filter");
        parameters.AddCheckbox(&resizes, true, "Resize map", "MaRe"_id, KF_AffectInputs);
        parameters.AddSliderInt(&mapWidth,  50, "Map width",  "MaWi"_id, KF_SoftMax, 1, 100);
        parameters.AddSliderInt(&mapHeight, 50, "Map height", "MaHe"_id, KF_SoftMax, 1, 100);
        parameters.AddButtonsChannel(&channel, 4, "Channel", "MaCh"_id, 0);
        parameters.AddAngle(&angle, 0.0F, "Angle", "MaAn"_id, KF_Hidden, KAngle_Radians);
        parameters.AddPoint(&centre, {0.5F, 0.5F}, "Center", "MaCe"_id, KF_Hidden, KPoint_Normal);
        parameters.AddImage(&map, "MapMapper map", 2, KF_MainInput);
        parameters.AddStandard(&edges, 0, KPS_Edges, 0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source) || !map || source->BoundingBox().IsEmpty()) return false;
        return SetFloats(*source) && SetTaps(source->Scale());
    }

    Pixel F(int x, int y, KImage*) override { return At<Pixel>(x, y); }
    FltPixel FFlt(int x, int y, KImage*) override { return At<FltPixel>(x, y); }
    void Row(KPixelRow const& row) override
    {
        if (row.data->depth == 2) BlockRow<FltPixel>(row);
        else BlockRow<Pixel>(row);
    }

    void Done(KImage** destination) override
    {
        converted.reset();
        taps = {};
        rows = {};
        KEffectPixel::Done(destination);
    }

    bool resizes;
    int mapWidth, mapHeight; // pixels of the full-sized picture
    int channel;             // of the map
    float angle;             // no effect
    KVector2 centre;         // no effect
    KImage* map = nullptr;
    int edges;

private:
    /// The sums run over floats, whatever the depth. False when memory is out.
    bool SetFloats(KImage const& source)
    {
        Image* image = source.FImage();
        converted.reset();
        if (!image->IsPlain() || image->Depth() != kDepthFloat) {
            converted.reset(KImage::ImageFromHost(
                NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, int{kDepthFloat}}})
                    .Release(),
                true));
            if (!converted) return false;
            converted->CopyFrom(&source);
            image = converted->FImage();
        }
        floats = image;
        return true;
    }

    bool SetTaps(int scale)
    {
        std::unique_ptr<KImage> resized;
        if (resizes) {
            auto const side = [scale](int size) { return std::clamp(size / scale, 1, kMostSide); };
            resized.reset(map->ResizeOf(side(mapWidth), side(mapHeight)));
            if (!resized) return false;
        }
        KOffsets const kernel(resized ? resized.get() : map, channel, true, 0);
        taps.clear();
        rows.clear();
        for (KOffset const& entry : kernel.entries) {
            if (rows.empty() || rows.back().y != entry.y)
                rows.push_back({.y = entry.y, .first = taps.size(), .last = 0, .weight = 0.0});
            taps.push_back({entry.x, static_cast<float>(entry.weight) / 65535.0F});
            rows.back().last = taps.size();
            rows.back().weight += taps.back().weight;
        }
        return true;
    }

    template <class Record> Record At(int x, int y) const
    {
        float words[4 * kBlock];
        Filter(x, y, 1, words);
        Record pixel;
        Finish(words, pixel);
        return pixel;
    }

    template <class Record> void BlockRow(KPixelRow const& row) const
    {
        float words[4 * kBlock];
        PixelRow<Record>(row, [&](int x, int y, KImage*) {
            int const i = x % kBlock;
            if (i == 0) Filter(x, y, std::min(kBlock, width - x), words);
            Record pixel;
            Finish(words + 4 * i, pixel);
            return pixel;
        });
    }

    /// The weighted means of `count` neighbouring pixels from x, y on. Each row of the kernel has a sum of
    /// its own, which keeps the errors of large kernels small.
    void Filter(int x, int y, int count, float* words) const
    {
        Float4 sums[kBlock] = {};
        double weights[kBlock] = {};
        for (TapRow const& row : rows) {
            int const wantedY = y + row.y;
            bool const isOutside = wantedY < 0 || wantedY >= height;
            if (isOutside && edges == kEdgeBlack) continue;
            float const* const line = reinterpret_cast<float const*>(floats->MainRow(Edge(wantedY, height)));
            Float4 rowSums[kBlock] = {};
            for (int i = 0; i < count; ++i) weights[i] += row.weight;
            for (std::size_t t = row.first; t < row.last; ++t) {
                Tap const tap = taps[t];
                int const first = x + tap.x;
                if (first >= 0 && first + kBlock <= width)
                    for (int i = 0; i < kBlock; ++i)
                        rowSums[i] += tap.weight * LoadFloat4(line + 4 * (first + i));
                else AddAtBorder(line, first, count, tap.weight, rowSums, weights);
            }
            for (int i = 0; i < kBlock; ++i) sums[i] += rowSums[i];
        }
        for (int i = 0; i < count; ++i) {
            auto const weight = static_cast<float>(weights[i]);
            Store(weight > 0.0F ? sums[i] / weight : Float4{}, words + 4 * i);
        }
    }

    void AddAtBorder(float const* line, int first, int count, float weight, Float4* sums,
                     double* weights) const
    {
        for (int i = 0; i < count; ++i) {
            int const wantedX = first + i;
            bool const isOutside = wantedX < 0 || wantedX >= width;
            if (isOutside && edges == kEdgeBlack) weights[i] -= weight;
            else sums[i] += weight * LoadFloat4(line + 4 * Edge(wantedX, width));
        }
    }

    int Edge(int i, int size) const
    {
        return edges == kEdgeWrap ? WrappedTo(i, size) : std::clamp(i, 0, size - 1);
    }

    Image* floats = nullptr;           // the source, or its copy
    std::unique_ptr<KImage> converted; // the source in floats, where it is not
    std::vector<Tap> taps;
    std::vector<TapRow> rows;
};

OMBRELUNE_TOOL(BF_MapFilter, BF_ThreadedOperator, KEffectMapFilter);

} // namespace ombrelune
