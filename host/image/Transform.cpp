#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/image/AreaSampler.h"
#include "host/image/PixPtr.h"
#include "host/image/Place.h"
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

constexpr double kLeastScale = 1e-9; // below this nothing is left, and places would not be numbers

/// The map that turns and scales about a place: `to` in the result comes from `from` in the source, both in
/// pixels. Turning happens in square units, so a pixel's step along x counts by its aspect.
PlaceMap MapAbout(double toX, double toY, double fromX, double fromY, double scaleX, double scaleY,
                  double angle, double aspect)
{
    double const turn = angle * std::numbers::pi / 180.0, c = std::cos(turn), s = std::sin(turn);
    PlaceMap map{c / scaleX, s / (scaleX * aspect), -s * aspect / scaleY, c / scaleY, 0.0, 0.0};
    map.x0 = fromX - map.xx * toX - map.xy * toY;
    map.y0 = fromY - map.yx * toX - map.yy * toY;
    return map;
}

void Resample(Image const& source, SummedAreaTable const* ready, PlaceMap const& map, bool shrinks,
              EdgeModes edges, Image& result)
{
    // A table of its own where the picture has none: kept, it would go stale when somebody writes to it.
    std::unique_ptr<SummedAreaTable> made;
    if (shrinks && !ready) made = SummedAreaTable::Of(source);
    SummedAreaTable const* const table = !shrinks ? nullptr : ready ? ready : made.get();
    if (source.IsFloat()) Resample<FltPixel>(source, table, map, edges, result);
    else Resample<Pixel>(source, table, map, edges, result);
}

} // namespace

Ref<Image> Image::TransformOf(double x, double y, double pivotX, double pivotY, double scaleX, double scaleY,
                              double angle, EdgeModes edges) const
{
    Ref<Image> result = CopyOfImage(true);
    if (!result) return nullptr;
    if (std::abs(scaleX) < kLeastScale || std::abs(scaleY) < kLeastScale) {
        result->Clear();
        return result;
    }
    // Pixel centres lie half a pixel into the picture: place = normalised * size - 0.5.
    PlaceMap const map = MapAbout(x * width_ - 0.5, y * height_ - 0.5, pivotX * width_ - 0.5,
                                  pivotY * height_ - 0.5, scaleX, scaleY, angle, xScale_ / yScale_);
    Resample(*this, sat_.get(), map, std::min(std::abs(scaleX), std::abs(scaleY)) < 1.0, edges, *result);
    return result;
}

std::optional<Placed> PlaceImage(Ref<Image> const& image, Placement const& placement, int canvasWidth,
                                 int canvasHeight)
{
    double const scale = placement.scale;
    if (std::abs(scale) < kLeastScale) return Placed{};
    int const width = image->Width(), height = image->Height();
    // Where the lower left pixel goes at scale 1: whole from the canvas's centre, so that a picture whose
    // size is odd on an even canvas stays sharp.
    double const left = std::floor((canvasWidth - width) / 2.0) + (placement.centerX - 0.5) * canvasWidth;
    double const low = std::floor((canvasHeight - height) / 2.0) + (placement.centerY - 0.5) * canvasHeight;
    double const aspect = image->XScale() / image->YScale();
    double const fromX = (width - 1) / 2.0, fromY = (height - 1) / 2.0;
    double const toX = left + fromX, toY = low + fromY;

    // The box around the turned picture, with a pixel more on each side for what filters reach.
    double const turn = placement.angle * std::numbers::pi / 180.0, c = std::cos(turn), s = std::sin(turn);
    double const halfX = std::abs(scale) * (std::abs(c) * width + std::abs(s / aspect) * height) / 2.0 + 1.0;
    double const halfY = std::abs(scale) * (std::abs(s * aspect) * width + std::abs(c) * height) / 2.0 + 1.0;
    // Limited before they become integers: the box may be far away.
    auto const limited = [](double place, int size) {
        return static_cast<int>(std::clamp(place, 0.0, static_cast<double>(size)));
    };
    int const x0 = limited(std::floor(toX - halfX), canvasWidth),
              x1 = limited(std::ceil(toX + halfX) + 1.0, canvasWidth);
    int const y0 = limited(std::floor(toY - halfY), canvasHeight),
              y1 = limited(std::ceil(toY + halfY) + 1.0, canvasHeight);
    if (x1 <= x0 || y1 <= y0) return Placed{};
    bool const isWhole = left == std::floor(left) && low == std::floor(low);
    if (scale == 1.0 && placement.angle == 0.0 && isWhole)
        return Placed{image, static_cast<int>(left), static_cast<int>(low)};

    Ref<Image> placed =
        NewImageTagList({{Img_Like, image.Get()}, {Img_Width, x1 - x0}, {Img_Height, y1 - y0}});
    if (!placed) return {};
    PlaceMap const map = MapAbout(toX - x0, toY - y0, fromX, fromY, scale, scale, placement.angle, aspect);
    Resample(*image, nullptr, map, std::abs(scale) < 1.0, kEdgeBlack, *placed);
    return Placed{std::move(placed), x0, y0};
}

} // namespace ombrelune
