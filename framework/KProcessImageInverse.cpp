#include "framework/KProcessImageInverse.h"

#include <algorithm>

#include "framework/RowForms.h"
#include "host/image/PixPtr.h"
#include "host/image/Sampler.h"
#include "image/PixelMath.h"

namespace ombrelune {

namespace {

/// Calls body with the bilinear sampler of an edge mode, bound to the picture.
template <class Record, class Body> void WithSampler(Image const& image, int edges, Body const& body)
{
    switch (edges) {
    case kEdgeDuplicate: return body(BilinearSampler<Record, kEdgeDuplicate>(image));
    case kEdgeWrap: return body(BilinearSampler<Record, kEdgeWrap>(image));
    default: return body(BilinearSampler<Record, kEdgeBlack>(image));
    }
}

/// The pixels at a run of places, truncated to whole ones.
template <class Record> class NearestSamples {
public:
    NearestSamples(KImage const& image, int edges) : image_(image), edges_(edges) {}
    void Take(KVector2 const* places, int) { places_ = places; }
    void Get(int i, Record& pixel) const
    {
        image_.GetSample(TruncateToInt(places_[i].x), TruncateToInt(places_[i].y), pixel, edges_);
    }

private:
    KImage const& image_;
    int edges_;
    KVector2 const* places_ = nullptr;
};

/// Bilinear samples at a run of places. Each asks for the pixels of a later one, which are far away where the
/// picture is turned: waiting for memory would cost more than all else.
template <class Sampler> class BilinearSamples {
public:
    explicit BilinearSamples(Sampler const& sampler) : sampler_(sampler) {}
    void Take(KVector2 const* places, int count)
    {
        for (int i = 0; i < count; ++i) {
            x_[i] = ToFixed16(places[i].x);
            y_[i] = ToFixed16(places[i].y);
        }
        last_ = count - 1;
    }
    template <class Record> void Get(int i, Record& pixel) const
    {
        int const ahead = std::min(i + kAhead, last_);
        sampler_.Prefetch(x_[ahead], y_[ahead]);
        sampler_(x_[i], y_[i], pixel);
    }

private:
    static constexpr int kAhead = 24;

    Sampler const& sampler_;
    int x_[KProcessImageInverse::kRun], y_[KProcessImageInverse::kRun];
    int last_ = 0;
};

} // namespace

KProcessImageInverse::KProcessImageInverse(KImage* newSource, KImage** newDestination,
                                           KEffectImage* newEffect, KProcessImageData const& newData)
    : KProcessImageWarp(newSource, newDestination, newEffect, newData), mask(newData.warpMask)
{
    // A picture one pixel wide or high has no extent to measure places by: it is copied.
    if (width < 2 || height < 2) skip = true;
    if (skip) return;
    scaleX = static_cast<float>(width - 1);
    scaleY = static_cast<float>(height - 1) * frameAspect;
    if (IsArea()) source->PrepareAreaSampling();
    if (IsMapped()) {
        mapWidth = source->Width() / data.underSample + 2;
        mapHeight = source->Height() / data.underSample + 2;
        map.resize(static_cast<std::size_t>(mapWidth) * static_cast<std::size_t>(mapHeight));
    }
    // The mask is walked in step with the output, so it needs its size.
    if (mask && (mask->Width() != width || mask->Height() != height)) {
        fittedMask.reset(mask->ResizeOf(width, height));
        mask = fittedMask.get();
    }
}

void KProcessImageInverse::DoThread(int chunk, int step)
{
    if (skip) return CopyRow(chunk);
    if (IsMapped() && step == 0) return MapRow(chunk);
    bool const isFloat = data.depth == 2;
    if (IsArea()) isFloat ? AreaRow<FltPixel>(chunk) : AreaRow<Pixel>(chunk);
    else isFloat ? SampleRow<FltPixel>(chunk) : SampleRow<Pixel>(chunk);
}

void KProcessImageInverse::MapRow(int row)
{
    auto* const warp = static_cast<KEffectWarp*>(effect);
    KVector2 places[kRun], sources[kRun];
    bool found[kRun];
    auto const y = static_cast<float>(row * data.underSample);
    for (int first = 0; first < mapWidth; first += kRun) {
        int const count = std::min(kRun, mapWidth - first);
        for (int i = 0; i < count; ++i)
            places[i] = Normalised(static_cast<float>((first + i) * data.underSample), y);
        warp->Span(sources, found, places, count);
        KVector2* const nodes = map.data() + static_cast<std::ptrdiff_t>(row) * mapWidth + first;
        // A node without a source is the corner (0, 0), and nothing later tells it from a real one.
        for (int i = 0; i < count; ++i) nodes[i] = found[i] ? InPixels(sources[i]) : KVector2();
    }
}

void KProcessImageInverse::MapRun(int x, int y, int count, KVector2* places) const
{
    int const u = data.underSample;
    auto const cell = static_cast<float>(u);
    float const fy = static_cast<float>(y % u) / cell;
    KVector2 const* const low = map.data() + static_cast<std::ptrdiff_t>(y / u) * mapWidth;
    auto const at = [&](int c) { return (1.0F - fy) * low[c] + fy * low[c + mapWidth]; };
    for (int i = 0, c = x / u, first = x % u; i < count; ++c, first = 0) {
        KVector2 const left = at(c), right = at(c + 1);
        int const last = std::min(u, first + count - i);
        for (int inCell = first; inCell < last; ++inCell) {
            float const fx = static_cast<float>(inCell) / cell;
            places[i++] = (1.0F - fx) * left + fx * right;
        }
    }
}

void KProcessImageInverse::MaskRun(int x, int y, int count, unsigned* alphas) const
{
    if (!mask) {
        std::fill_n(alphas, count, 65535U);
        return;
    }
    PixPtr cursor(mask->FImage(), x, y);
    Pixel pixel;
    for (int i = 0; i < count; ++i) {
        pixel >>= cursor;
        alphas[i] = pixel.alpha;
    }
}

void KProcessImageInverse::PlaceRun(int x, int y, int count, KVector2* places, Origin* origins) const
{
    if (!mask && !IsMapped()) {
        KVector2 asked[kRun];
        bool found[kRun];
        for (int i = 0; i < count; ++i)
            asked[i] = Normalised(static_cast<float>(x + i), static_cast<float>(y));
        static_cast<KEffectWarp*>(effect)->Span(places, found, asked, count);
        for (int i = 0; i < count; ++i) places[i] = InPixels(places[i]);
        for (int i = 0; i < count; ++i) origins[i] = found[i] ? Origin::kSample : Origin::kNothing;
        return;
    }

    unsigned alphas[kRun];
    MaskRun(x, y, count, alphas);
    if (IsMapped()) {
        MapRun(x, y, count, places);
        for (int i = 0; i < count; ++i) {
            origins[i] = alphas[i] == 0 ? Origin::kCopy : Origin::kSample;
            if (alphas[i] == 0 || alphas[i] >= 65535) continue;
            float const t = static_cast<float>(alphas[i] / 65535.0);
            places[i] =
                t * places[i] + (1.0F - t) * KVector2(static_cast<float>(x + i), static_cast<float>(y));
        }
        return;
    }

    // Only pixels that the mask lets move are asked of the effect.
    KVector2 asked[kRun], sources[kRun];
    bool found[kRun];
    int askedCount = 0;
    for (int i = 0; i < count; ++i)
        if (alphas[i] != 0)
            asked[askedCount++] = Normalised(static_cast<float>(x + i), static_cast<float>(y));
    static_cast<KEffectWarp*>(effect)->Span(sources, found, asked, askedCount);
    for (int i = 0, a = 0; i < count; ++i) {
        if (alphas[i] == 0) {
            origins[i] = Origin::kCopy;
            continue;
        }
        origins[i] = found[a] ? Origin::kSample : Origin::kNothing;
        if (alphas[i] < 65535) {
            float const t = static_cast<float>(alphas[i] / 65535.0);
            sources[a] = t * sources[a] + (1.0F - t) * asked[a];
        }
        places[i] = InPixels(sources[a++]);
    }
}

KProcessImageInverse::Edge KProcessImageInverse::FirstEdge(int y) const
{
    if (IsMapped()) {
        Edge edge;
        MapRun(0, y, 1, &edge.top);
        MapRun(0, y + 1, 1, &edge.bottom);
        return edge;
    }
    auto const top = static_cast<float>(y) - 0.5F, bottom = static_cast<float>(y) + 0.5F;
    KVector2 const places[2] = {Normalised(-0.5F, top), Normalised(-0.5F, bottom)};
    KVector2 sources[2];
    bool found[2];
    static_cast<KEffectWarp*>(effect)->Span(sources, found, places, 2); // used whether found or not
    return {InPixels(sources[0]), InPixels(sources[1])};
}

/// Right edges of a run of cells.
void KProcessImageInverse::EdgeRun(int x, int y, int count, Edge* edges, Origin* origins) const
{
    unsigned alphas[kRun];
    MaskRun(x, y, count, alphas);
    // Cells lie around the pixels; through the map they start at them.
    float const reach = IsMapped() ? 1.0F : 0.5F;
    auto const top = static_cast<float>(y) + reach - 1.0F, bottom = static_cast<float>(y) + reach;

    KVector2 asked[2 * kRun], sources[2 * kRun];
    bool found[2 * kRun];
    int askedCount = 0;
    if (IsMapped()) {
        MapRun(x + 1, y, count, sources);
        MapRun(x + 1, y + 1, count, sources + kRun);
    } else {
        for (int i = 0; i < count; ++i) {
            if (alphas[i] == 0) continue;
            asked[askedCount++] = Normalised(static_cast<float>(x + i) + reach, top);
            asked[askedCount++] = Normalised(static_cast<float>(x + i) + reach, bottom);
        }
        static_cast<KEffectWarp*>(effect)->Span(sources, found, asked, askedCount);
    }

    for (int i = 0, a = 0; i < count; ++i) {
        float const right = static_cast<float>(x + i) + reach;
        Edge const unmoved{{right, top}, {right, bottom}};
        edges[i] = unmoved;
        origins[i] = Origin::kCopy;
        if (alphas[i] == 0) continue;

        bool hasSource = true;
        Edge moved;
        if (IsMapped()) {
            moved = {sources[i], sources[kRun + i]};
        } else {
            hasSource = found[a] && found[a + 1];
            moved = {InPixels(sources[a]), InPixels(sources[a + 1])};
            a += 2;
        }
        origins[i] = hasSource ? Origin::kSample : Origin::kNothing;
        if (!hasSource) continue;
        if (alphas[i] < 65535) {
            float const t = static_cast<float>(alphas[i] / 65535.0);
            moved = {t * moved.top + (1.0F - t) * unmoved.top,
                     t * moved.bottom + (1.0F - t) * unmoved.bottom};
        }
        edges[i] = moved;
    }
}

template <class Record> void KProcessImageInverse::SampleRow(int y)
{
    if (data.filtering == 0) return SampleRow<Record>(y, NearestSamples<Record>(*source, data.edges));
    WithSampler<Record>(*source->FImage(), data.edges,
                        [&](auto const& sampler) { SampleRow<Record>(y, BilinearSamples(sampler)); });
}

/// @param samples  takes the places of a run in pixels, then gives the record of each
template <class Record, class Samples> void KProcessImageInverse::SampleRow(int y, Samples samples)
{
    auto const loop = [&](auto out) {
        KVector2 places[kRun];
        Origin origins[kRun];
        Record pixel;
        for (int x = 0; x < width; x += kRun) {
            int const count = std::min(kRun, width - x);
            PlaceRun(x, y, count, places, origins);
            samples.Take(places, count);
            for (int i = 0; i < count; ++i) {
                switch (origins[i]) {
                case Origin::kNothing: pixel.Clear(); break;
                case Origin::kCopy: source->GetPixel(x + i, y, pixel); break;
                case Origin::kSample: samples.Get(i, pixel); break;
                }
                out >>= pixel;
            }
        }
    };
    WithCursors<Record>(y, loop, (*destination)->FImage());
}

template <class Record> void KProcessImageInverse::AreaRow(int y)
{
    PixPtr out((*destination)->FImage(), 0, y);
    Edge edges[kRun];
    Origin origins[kRun];
    Record pixel;
    Edge left = FirstEdge(y);
    for (int x = 0; x < width; x += kRun) {
        int const count = std::min(kRun, width - x);
        EdgeRun(x, y, count, edges, origins);
        for (int i = 0; i < count; left = edges[i++]) {
            Edge const& right = edges[i];
            switch (origins[i]) {
            case Origin::kNothing: pixel.Clear(); break;
            case Origin::kCopy: source->GetPixel(x + i, y, pixel); break;
            case Origin::kSample:
                source->GetSampleArea(left.top.x, left.top.y, right.top.x, right.top.y, left.bottom.x,
                                      left.bottom.y, right.bottom.x, right.bottom.y, pixel, data.edges);
                break;
            }
            out >>= pixel;
        }
    }
}

} // namespace ombrelune
