#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/image/AreaSampler.h"
#include "host/image/PixPtr.h"
#include "host/image/Sampler.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

/// From a pixel of the result to its place in the source, in pixels.
struct PlaceMap {
    double xx, xy, yx, yy; // source step along x and y for one pixel along x (xx, yx) and y (xy, yy)
    double x0, y0;         // source place of pixel (0, 0)

    double X(int x, int y) const { return x0 + xx * x + xy * y; }
    double Y(int x, int y) const { return y0 + yx * x + yy * y; }
};

int ToFixed(double place)
{
    return static_cast<int>(std::clamp(place * 65536.0, -2147483648.0, 2147483647.0));
}

template <class Record, EdgeModes Edges>
void Resample(Image const& source, SummedAreaTable const* table, PlaceMap const& map, Image& result)
{
    ParallelFor(result.Height(), [&](int y) {
        BilinearSampler<Record, Edges> const bilinear(source);
        AreaSampler<Record, Edges> const area(source, table);
        PixPtr out(&result, 0, y);
        Record record;
        for (int x = 0; x < result.Width(); ++x) {
            if (!source.IsPlain()) record.Clear(); // black leaves the auxiliary words alone
            double sx = map.X(x, y), sy = map.Y(x, y);
            if constexpr (Edges == kEdgeWrap) {
                // Back into the first tile: 16.16 would not reach far ones.
                sx -= std::floor(sx / source.Width()) * source.Width();
                sy -= std::floor(sy / source.Height()) * source.Height();
            }
            if (table) {
                double const ax = (map.xx + map.xy) / 2.0, bx = (map.xx - map.xy) / 2.0;
                double const ay = (map.yx + map.yy) / 2.0, by = (map.yx - map.yy) / 2.0;
                area({ToFixed(sx - ax), ToFixed(sx + bx), ToFixed(sx + ax), ToFixed(sx - bx)},
                     {ToFixed(sy - ay), ToFixed(sy + by), ToFixed(sy + ay), ToFixed(sy - by)}, record);
            } else {
                bilinear(ToFixed(sx), ToFixed(sy), record);
            }
            out >>= record;
        }
    });
}

template <class Record>
void Resample(Image const& source, SummedAreaTable const* table, PlaceMap const& map, EdgeModes edges,
              Image& result)
{
    if (edges == kEdgeWrap) Resample<Record, kEdgeWrap>(source, table, map, result);
    else if (edges == kEdgeDuplicate) Resample<Record, kEdgeDuplicate>(source, table, map, result);
    else Resample<Record, kEdgeBlack>(source, table, map, result);
}

} // namespace

Ref<Image> Image::TransformOf(double x, double y, double pivotX, double pivotY, double scaleX, double scaleY,
                              double angle, EdgeModes edges) const
{
    Ref<Image> result = CopyOfImage(true);
    if (!result) return nullptr;
    constexpr double kLeastScale = 1e-9; // below this nothing is left, and places would not be numbers
    if (std::abs(scaleX) < kLeastScale || std::abs(scaleY) < kLeastScale) {
        result->Clear();
        return result;
    }
    // Turning happens in square units, so a pixel's step along x counts by its aspect.
    double const aspect = xScale_ / yScale_;
    double const turn = angle * std::numbers::pi / 180.0, c = std::cos(turn), s = std::sin(turn);
    PlaceMap map{c / scaleX, s / (scaleX * aspect), -s * aspect / scaleY, c / scaleY, 0.0, 0.0};
    // Pixel centres lie half a pixel into the picture: place = normalised * size - 0.5.
    double const toX = x * width_ - 0.5, toY = y * height_ - 0.5;
    map.x0 = pivotX * width_ - 0.5 - map.xx * toX - map.xy * toY;
    map.y0 = pivotY * height_ - 0.5 - map.yx * toX - map.yy * toY;

    // A table of its own where the picture has none: kept, it would go stale when somebody writes to it.
    std::unique_ptr<SummedAreaTable> made;
    bool const shrinks = std::min(std::abs(scaleX), std::abs(scaleY)) < 1.0;
    if (shrinks && !sat_) made = SummedAreaTable::Of(*this);
    SummedAreaTable const* const table = !shrinks ? nullptr : sat_ ? sat_.get() : made.get();
    if (IsFloat()) Resample<FltPixel>(*this, table, map, edges, *result);
    else Resample<Pixel>(*this, table, map, edges, *result);
    return result;
}

} // namespace ombrelune
