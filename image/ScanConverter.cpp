#include "image/ScanConverter.h"

#include <atomic>
#include <bit>
#include <cmath>
#include <span>

#include "host/value/Parallel.h"
#include "image/PixelMath.h"

namespace ombrelune {

namespace {

/// Set of numbers that gives its members in order. A bit of the second level stands for a word of the first.
class OrderedSet {
public:
    explicit OrderedSet(int size)
        : words_(static_cast<std::size_t>(size) / 64 + 1), summary_(words_.size() / 64 + 1)
    {}
    void Add(int i)
    {
        auto const n = static_cast<std::size_t>(i);
        words_[n / 64] |= std::uint64_t{1} << (n % 64);
        summary_[n / 4096] |= std::uint64_t{1} << (n / 64 % 64);
    }
    /// Calls visit(number) for each in ascending order; the set is empty afterwards.
    template <class Visit> void Drain(Visit const& visit)
    {
        for (std::size_t s = 0; s < summary_.size(); ++s) {
            for (; summary_[s] != 0; summary_[s] &= summary_[s] - 1) {
                std::size_t const w = s * 64 + static_cast<std::size_t>(std::countr_zero(summary_[s]));
                for (std::uint64_t word = words_[w]; word != 0; word &= word - 1)
                    visit(static_cast<int>(w) * 64 + std::countr_zero(word));
                words_[w] = 0;
            }
        }
    }

private:
    std::vector<std::uint64_t> words_, summary_;
};

// The turns of the three classes are kept in one number, 21 bits each, so that one addition does.

constexpr int kTurnBits = 21;
constexpr std::int64_t kTurnMask = (std::int64_t{1} << kTurnBits) - 1;

constexpr std::int64_t Turns(int windingClass, std::int64_t turns)
{
    return turns * (std::int64_t{1} << (kTurnBits * windingClass));
}

/// Half of each class's range, so that no class borrows from the next one.
constexpr std::int64_t kNoTurns =
    Turns(0, kTurnMask / 2 + 1) + Turns(1, kTurnMask / 2 + 1) + Turns(2, kTurnMask / 2 + 1);

/// An edge is there on the lines after the line of its lower end, up to that of its upper end.
std::vector<ShapeArrayEdge> MakeEdges(ShapeArrays const& arrays, int endLine)
{
    std::vector<ShapeArrayEdge> edges;
    edges.reserve(arrays.points.size());
    int const start = std::max(arrays.indices.front().row, 0);
    for (ShapeArrayPointIndex const& index : arrays.indices) {
        if (index.row >= endLine - 1) break;
        ShapeArrayPoint const& from = arrays.points[static_cast<std::size_t>(index.point)];
        int const line = std::max(index.row + 1, start);
        auto const add = [&](int neighbour, int direction) {
            ShapeArrayPoint const& to = arrays.points[static_cast<std::size_t>(neighbour)];
            if (to.row < line) return;
            double const dx = (to.x - from.x) / (to.y - from.y);
            double const x = from.x + dx * (line - from.y);
            edges.push_back({x, dx, line, to.row, static_cast<std::int8_t>(direction),
                             std::min(from.winding, std::uint8_t{2})});
        };
        add(index.previous, -1);
        add(index.next, 1);
    }
    return edges;
}

/// Steps all edges to a line by as many additions as a scan would make: a product would round differently.
void StepTo(std::span<ShapeArrayEdge> edges, int line)
{
    constexpr std::size_t kLanes = 8; // side by side, since each addition waits for the one before
    for (std::size_t first = 0; first < edges.size(); first += kLanes) {
        auto const lanes = edges.subspan(first, std::min(kLanes, edges.size() - first));
        double x[kLanes] = {}, dx[kLanes] = {};
        int latest = 0;
        for (ShapeArrayEdge const& edge : lanes) latest = std::max(latest, edge.line);
        for (std::size_t i = 0; i < lanes.size(); ++i) {
            x[i] = lanes[i].x;
            dx[i] = lanes[i].dx;
            for (int n = lanes[i].line; n < latest; ++n) x[i] += dx[i];
        }
        for (int n = latest; n < line; ++n)
            for (std::size_t i = 0; i < kLanes; ++i) x[i] += dx[i];
        for (std::size_t i = 0; i < lanes.size(); ++i) {
            lanes[i].x = x[i];
            lanes[i].line = line;
        }
    }
}

/// Rows that one thread scans, with the edges that are there at its first line.
struct Band {
    int row = 0, endRow = 0; ///< pixels of the frame
    std::vector<ShapeArrayEdge> active;
    std::size_t next = 0; ///< first edge that begins in the band
};

std::vector<Band> MakeBands(std::vector<ShapeArrayEdge> const& edges, ScanGrid const& grid)
{
    KImagePixelRegion const& region = grid.region;
    constexpr std::int64_t kWorthThreads = 1 << 15; // pixels
    bool const threaded = ThreadCount() > 1 && std::int64_t{region.width} * region.height > kWorthThreads;
    int const count = threaded ? std::min(4 * ThreadCount(), region.height) : 1;
    std::vector<Band> bands(static_cast<std::size_t>(count));
    for (int b = 0; b < count; ++b) {
        Band& band = bands[static_cast<std::size_t>(b)];
        band.row = region.y + static_cast<int>(std::int64_t{region.height} * b / count);
        band.endRow = region.y + static_cast<int>(std::int64_t{region.height} * (b + 1) / count);
        if (b == 0) continue;
        Band const& before = bands[static_cast<std::size_t>(b - 1)];
        int const line = band.row * grid.samples;
        band.next = before.next;
        for (ShapeArrayEdge const& edge : before.active)
            if (edge.last >= line) band.active.push_back(edge);
        for (; band.next < edges.size() && edges[band.next].line < line; ++band.next)
            if (edges[band.next].last >= line) band.active.push_back(edges[band.next]);
        StepTo(band.active, line);
    }
    return bands;
}

/// Scans one band. The number of samples is known at compile time, or 0 and then the grid's.
template <int kSamples> class BandScanner {
public:
    BandScanner(std::vector<ShapeArrayEdge> const& edges, Band& band, ScanGrid const& grid, FillRule rule,
                int endLine)
        : edges_(edges), band_(band), region_(grid.region), gridSamples_(grid.samples), endLine_(endLine),
          filled_(Turns(2, kTurnMask) | (rule == kFillEvenOdd ? 1 : kTurnMask)), left_(region_.x * Samples()),
          right_((region_.x + region_.width) * Samples()),
          bins_(static_cast<std::size_t>(region_.width * Samples() + 1)), crossed_(region_.width * Samples()),
          steps_(static_cast<std::size_t>(region_.width) + 2), stepped_(region_.width + 1),
          amounts_(static_cast<std::size_t>(region_.width))
    {}

    void Scan(int* cancel, ScanRow const& flush)
    {
        for (int y = band_.row; y < band_.endRow; ++y) {
            if (cancel && std::atomic_ref<int>(*cancel).load(std::memory_order_relaxed) != 0) return;
            int const line = y * Samples(), end = std::min(line + Samples(), endLine_);
            for (int n = line; n < end; ++n) ScanLine(n);
            FlushAccum(y - region_.y, flush);
        }
    }

private:
    int Samples() const { return kSamples ? kSamples : gridSamples_; }

    void ScanLine(int line)
    {
        for (; band_.next < edges_.size() && edges_[band_.next].line <= line; ++band_.next)
            band_.active.push_back(edges_[band_.next]);
        for (std::size_t i = 0; i < band_.active.size();) {
            ShapeArrayEdge& edge = band_.active[i];
            double x = edge.x > left_ ? edge.x : left_; // the left side too where it is not a number
            x = x < right_ ? x : right_;
            int const bin = static_cast<int>(x) - static_cast<int>(left_);
            bins_[static_cast<std::size_t>(bin)] += Turns(edge.winding, edge.direction);
            crossed_.Add(bin);
            edge.x += edge.dx;
            if (edge.last > line) {
                ++i;
                continue;
            }
            edge = band_.active.back();
            band_.active.pop_back();
        }
        std::int64_t turns = kNoTurns;
        int start = -1;
        crossed_.Drain([&](int x) {
            std::int64_t& bin = bins_[static_cast<std::size_t>(x)];
            turns += bin;
            bin = 0;
            std::int64_t const turned = turns ^ kNoTurns;
            bool const inside = (turned & filled_) != 0 && (turned & Turns(1, kTurnMask)) == 0;
            if (inside == (start >= 0)) return;
            if (!inside) SampleSpan(start, x);
            start = inside ? x : -1;
        });
    }

    /// Samples x0 to x1 - 1 of this line are inside.
    void SampleSpan(int x0, int x1)
    {
        AddStep(x0, 1);
        AddStep(x1, -1);
    }
    /// All pixels from x on have one more line inside, the first one from its sample on.
    void AddStep(int x, int sign)
    {
        int const pixel = x / Samples(), rest = x - pixel * Samples();
        steps_[static_cast<std::size_t>(pixel)] += sign * (Samples() - rest);
        steps_[static_cast<std::size_t>(pixel) + 1] += sign * rest;
        stepped_.Add(pixel);
        stepped_.Add(pixel + 1);
    }

    void FlushAccum(int row, ScanRow const& flush)
    {
        int lo = -1, hi = 0, amount = 0;
        stepped_.Drain([&](int pixel) {
            if (lo < 0) lo = pixel;
            else Fill(hi, pixel, amount);
            hi = pixel;
            int& step = steps_[static_cast<std::size_t>(pixel)];
            amount += step;
            step = 0;
        });
        flush(row, std::max(lo, 0), std::min(hi, region_.width), amounts_.data());
    }
    void Fill(int from, int to, int amount)
    {
        auto const value = static_cast<std::uint16_t>(amount);
        for (int x = from; x < std::min(to, region_.width); ++x)
            amounts_[static_cast<std::size_t>(x)] = value;
    }

    std::vector<ShapeArrayEdge> const& edges_;
    Band& band_;
    KImagePixelRegion const region_;
    int const gridSamples_, endLine_;
    std::int64_t const filled_; // bits of the turns that make a place inside
    double const left_, right_;
    std::vector<std::int64_t> bins_; // turns at each sample of the line
    OrderedSet crossed_;             // bins with edges
    std::vector<int> steps_;         // what the amount changes by at each pixel of the row
    OrderedSet stepped_;
    std::vector<std::uint16_t> amounts_;
};

template <int kSamples>
void ScanBands(ShapeArrays const& arrays, ScanGrid const& grid, FillRule rule, int* cancel,
               ScanRow const& row)
{
    int const last = arrays.indices.empty() ? -1 : arrays.indices.back().row;
    int const gridLines = (grid.region.y + grid.region.height) * grid.samples;
    int const endLine = last < gridLines ? std::min(last + 1, gridLines) : gridLines;
    auto const edges = endLine > 0 ? MakeEdges(arrays, endLine) : std::vector<ShapeArrayEdge>();
    auto bands = MakeBands(edges, grid);
    ParallelFor(static_cast<int>(bands.size()), [&](int b) {
        BandScanner<kSamples>(edges, bands[static_cast<std::size_t>(b)], grid, rule, endLine)
            .Scan(cancel, row);
    });
}

} // namespace

KImagePixelRegion ScanBounds(ShapeArrays const& arrays, int w, int h, int samples)
{
    if (arrays.points.empty()) return {};
    double low = arrays.points.front().x, high = low;
    bool finite = true;
    for (ShapeArrayPoint const& p : arrays.points) {
        low = std::min(low, p.x);
        high = std::max(high, p.x);
        finite = finite && std::isfinite(p.x) && std::isfinite(p.y);
    }
    constexpr int kMargin = 1; // what the steps along an edge may round by is far less than a pixel
    auto const pixel = [&](int sample, int margin, int size) {
        return static_cast<int>(std::clamp<std::int64_t>(std::int64_t{sample} / samples + margin, 0, size));
    };
    int const left = finite ? pixel(TruncateToInt(low), -kMargin, w) : 0;
    int const right = finite ? pixel(TruncateToInt(high), 1 + kMargin, w) : w;
    int const bottom = pixel(arrays.indices.front().row, 0, h), top = pixel(arrays.indices.back().row, 1, h);
    return {left, bottom, right - left, top - bottom};
}

void ScanShape(ShapeArrays const& arrays, ScanGrid const& grid, FillRule rule, int* cancel,
               ScanRow const& row)
{
    if (grid.region.IsEmpty()) return;
    switch (grid.samples) {
    case 1: return ScanBands<1>(arrays, grid, rule, cancel, row);
    case 8: return ScanBands<8>(arrays, grid, rule, cancel, row);
    default: return ScanBands<0>(arrays, grid, rule, cancel, row);
    }
}

} // namespace ombrelune
