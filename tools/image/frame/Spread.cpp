// Spread: carries the colour at the edge of a matte outwards, pixel by pixel.

#include <cstdint>
#include <utility>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/RowLoop.h"

namespace ombrelune {

class KEffectSpread : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Spr", "Spread"); }

    KEffectSpread()
    {
        parameters.AddChapter("Spread");
        parameters.AddSliderInt(&iterations, 128, "Iterations", "SofS"_id, KF_SoftMax, 0, 1024);
    }

    // The parts that run side by side share out the rounds inside.
    void F(int, int, KImage* source, KImage* destination) override
    {
        destination->CopyFrom(source);
        if (iterations > 0) Spread(*destination);
    }

    int iterations;

private:
    struct Place {
        int x, y;
    };
    using Places = std::vector<Place>;

    /// Each round fills the transparent pixels that touch an opaque one. Those are the neighbours of what the
    /// round before has filled, so all rounds together cost no more than the pixels that they fill.
    void Spread(KImage& picture)
    {
        marks.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
        MarkOpaque(picture);
        Places edge = FirstEdge();
        std::vector<FltPixel> colors;
        for (int round = 0; round < iterations && !edge.empty(); ++round) {
            colors.resize(edge.size());
            InRuns(edge.size(), [&](std::size_t i) { colors[i] = MeanAround(picture, edge[i]); });
            InRuns(edge.size(), [&](std::size_t i) { picture.SetPixel(edge[i].x, edge[i].y, colors[i]); });
            for (Place const& place : edge) Mark(place) = kOpaque;
            edge = Beyond(edge);
        }
        marks = {};
    }

    void MarkOpaque(KImage& picture)
    {
        ParallelFor(height, [&](int y) {
            VisitRow<FltPixel>(
                y,
                [&](int count, auto in) {
                    FltPixel pixel;
                    for (int x = 0; x < count; ++x) {
                        pixel >>= in;
                        if (pixel.alpha > 0.0F) Mark({x, y}) = kOpaque;
                    }
                },
                picture.FImage());
        });
    }

    Places FirstEdge()
    {
        auto const rows = MeasureRows(0, height, [&](int y) {
            Places found;
            for (int x = 0; x < width; ++x) {
                if (Mark({x, y}) == kOpaque) continue;
                bool touches = false;
                ForEachNeighbour({x, y}, [&](Place const& near) { touches |= Mark(near) == kOpaque; });
                if (touches) found.push_back({x, y});
            }
            return found;
        });
        Places edge;
        for (Places const& row : rows) edge.insert(edge.end(), row.begin(), row.end());
        for (Place const& place : edge) Mark(place) = kNext;
        return edge;
    }

    Places Beyond(Places const& edge)
    {
        Places next;
        for (Place const& place : edge)
            ForEachNeighbour(place, [&](Place const& near) {
                if (Mark(near) != kTransparent) return;
                Mark(near) = kNext;
                next.push_back(near);
            });
        return next;
    }

    FltPixel MeanAround(KImage const& picture, Place const& place)
    {
        float sum[4] = {};
        FltPixel pixel;
        ForEachNeighbour(place, [&](Place const& near) {
            if (Mark(near) != kOpaque) return;
            picture.GetPixel(near.x, near.y, pixel);
            for (int c = 0; c < 4; ++c) sum[c] += pixel.word[c];
        });
        picture.GetPixel(place.x, place.y, pixel); // for its auxiliary channels
        for (int c : {kChannelBlue, kChannelGreen, kChannelRed}) pixel.word[c] = sum[c] / sum[kChannelAlpha];
        pixel.alpha = 1.0F;
        return pixel;
    }

    template <class Visit> void ForEachNeighbour(Place const& place, Visit const& visit) const
    {
        for (int y = place.y - 1; y <= place.y + 1; ++y)
            for (int x = place.x - 1; x <= place.x + 1; ++x)
                if (x >= 0 && y >= 0 && x < width && y < height && (x != place.x || y != place.y))
                    visit(Place{x, y});
    }

    template <class Body> static void InRuns(std::size_t count, Body const& body)
    {
        constexpr std::size_t kRun = 4096;
        ParallelFor(static_cast<int>((count + kRun - 1) / kRun), [&](int run) {
            std::size_t const first = static_cast<std::size_t>(run) * kRun;
            for (std::size_t i = first; i < std::min(first + kRun, count); ++i) body(i);
        });
    }

    enum : std::uint8_t { kTransparent, kNext, kOpaque };
    std::uint8_t& Mark(Place const& p)
    {
        return marks[static_cast<std::size_t>(p.y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(p.x)];
    }

    std::vector<std::uint8_t> marks; // by pixel
};

OMBRELUNE_TOOL(BF_Spread, BF_ThreadedOperator, KEffectSpread);

} // namespace ombrelune
