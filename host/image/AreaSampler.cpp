#include "host/image/AreaSampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "host/image/EdgeIndex.h"
#include "host/image/PixPtr.h"
#include "host/image/PixelCodec.h"
#include "host/image/Sampler.h"

namespace ombrelune {

namespace {

constexpr int kMostStrips = 16;

struct Span {
    double low, high;
    double Size() const { return high - low; }
    /// A cell below a pixel grows to one: the mean over a unit cell is the bilinear sample, so that enlarged
    /// parts of a picture are smooth, down to cells without any area.
    Span AtLeastAPixel() const
    {
        double const grow = std::max(0.0, 0.5 - 0.5 * Size());
        return {low - grow, high + grow};
    }
};

/// Integral over a rectangle, in table places, of the picture continued beyond its border.
template <EdgeModes Edges>
Sum4 IntegralOf(SummedAreaTable const& table, int width, int height, Span x, Span y)
{
    if constexpr (Edges == kEdgeBlack) {
        auto const clip = [](Span s, double size) {
            return TableInterval(std::clamp(s.low, 0.0, size), std::clamp(s.high, 0.0, size),
                                 static_cast<int>(size));
        };
        return table.Integral(clip(x, width), clip(y, height));
    } else if constexpr (Edges == kEdgeDuplicate) {
        return table.Integral({x.low, x.high, width}, {y.low, y.high, height});
    } else {
        // Along each axis: a number of whole turns and the rest, which may run backwards.
        auto const turn = [](double place, int size) { return std::floor(place / size); };
        auto const rest = [&](Span s, int size) {
            return TableInterval(s.low - turn(s.low, size) * size, s.high - turn(s.high, size) * size, size);
        };
        double const turnsX = turn(x.high, width) - turn(x.low, width);
        double const turnsY = turn(y.high, height) - turn(y.low, height);
        TableInterval const restX = rest(x, width), restY = rest(y, height);
        TableInterval const allX(0, width, width), allY(0, height, height);
        Sum4 sum = table.Integral(restX, restY);
        if (turnsX != 0.0) sum = sum + turnsX * table.Integral(allX, restY);
        if (turnsY != 0.0) sum = sum + turnsY * table.Integral(restX, allY);
        if (turnsX != 0.0 && turnsY != 0.0) sum = sum + turnsX * turnsY * table.Integral(allX, allY);
        return sum;
    }
}

/// Four corners in 16.16, sorted from low to high and from left to right, so that the order in which they are
/// given does not matter.
class Quad {
public:
    Quad(std::array<int, 4> const& x, std::array<int, 4> const& y)
    {
        // One number per corner that sorts by y, then x; then a sorting network.
        std::int64_t key[4];
        constexpr int kLowest = -std::numeric_limits<int>::max(); // one lower and the number would not fit
        for (std::size_t i = 0; i < 4; ++i) key[i] = std::max(y[i], kLowest) * kRow + x[i];
        auto const order = [&](int i, int j) {
            auto const [low, high] = std::pair(std::min(key[i], key[j]), std::max(key[i], key[j]));
            key[i] = low;
            key[j] = high;
        };
        order(0, 1), order(2, 3), order(0, 2), order(1, 3), order(1, 2);
        for (int i = 0; i < 4; ++i) {
            y_[i] = (key[i] + kRow / 2) >> 32;
            x_[i] = key[i] - y_[i] * kRow;
        }
    }

    /// True when the sides are level and upright to within what an undistorted cell loses in floats.
    bool IsRectangle() const
    {
        auto const near = [](std::int64_t a, std::int64_t b) { return std::abs(a - b) <= kTolerance; };
        return near(y_[0], y_[1]) && near(y_[2], y_[3]) &&
               near(std::min(x_[0], x_[1]), std::min(x_[2], x_[3])) &&
               near(std::max(x_[0], x_[1]), std::max(x_[2], x_[3]));
    }
    Span RectangleX() const
    {
        return ToTable(std::min(x_[0], x_[1]) + std::min(x_[2], x_[3]),
                       std::max(x_[0], x_[1]) + std::max(x_[2], x_[3]));
    }
    Span RectangleY() const { return ToTable(y_[0] + y_[1], y_[2] + y_[3]); }

    Span Height() const { return ToTable(2 * y_[0], 2 * y_[3]); }
    Span FlatX() const { return ToTable(2 * x_[0], 2 * x_[3]); }

private:
    static constexpr std::int64_t kRow = std::int64_t{1} << 32;
    static constexpr int kTolerance = 256; // 1 / 256 pixel

    /// From twice a place in 16.16, around pixels, to one in the table, where pixel 0 starts at 0.
    static Span ToTable(std::int64_t low, std::int64_t high)
    {
        return {static_cast<double>(low) / 131072.0 + 0.5, static_cast<double>(high) / 131072.0 + 0.5};
    }

    friend class Hull;
    std::int64_t x_[4], y_[4];
};

/// Convex hull of a quadrilateral that has some height.
class Hull {
public:
    explicit Hull(Quad const& quad)
    {
        for (int i = 0; i < 4; ++i) {
            x_[i] = static_cast<double>(quad.x_[i]) / 65536.0 + 0.5;
            y_[i] = static_cast<double>(quad.y_[i]) / 65536.0 + 0.5;
        }
        for (int i = 0; i < 3; ++i)
            for (int j = i + 1; j < 4; ++j) slope_[i][j] = (x_[j] - x_[i]) / (y_[j] - y_[i]);
    }

    /// Extent at a height between the lowest and the highest corner: the outermost of the lines from corners
    /// below to corners above, none of which is level.
    Span ExtentAt(double y) const
    {
        int const above = y < y_[1] ? 1 : y < y_[2] ? 2 : 3; // the first corner above
        Span extent{HUGE_VAL, -HUGE_VAL};
        for (int i = 0; i < above; ++i) {
            for (int j = above; j < 4; ++j) {
                double const x = x_[i] + slope_[i][j] * (y - y_[i]);
                extent = {std::min(extent.low, x), std::max(extent.high, x)};
            }
        }
        return extent;
    }

private:
    double x_[4], y_[4], slope_[4][4];
};

/// Mean of the picture over a quadrilateral. A rectangle is one look at the table; anything else is cut into
/// level strips of about a row, each taken as wide as the quadrilateral is in its middle.
template <EdgeModes Edges>
Sum4 MeanOver(SummedAreaTable const& table, int width, int height, Quad const& quad)
{
    auto const mean = [&](Span x, Span y) {
        x = x.AtLeastAPixel();
        y = y.AtLeastAPixel();
        return 1.0 / (x.Size() * y.Size()) * IntegralOf<Edges>(table, width, height, x, y);
    };
    if (quad.IsRectangle()) return mean(quad.RectangleX(), quad.RectangleY());
    Span const whole = quad.Height();
    if (whole.Size() == 0.0) return mean(quad.FlatX(), whole);
    Hull const hull(quad);
    if (whole.Size() <= 1.0) return mean(hull.ExtentAt((whole.low + whole.high) / 2.0), whole);

    int const strips = std::min(static_cast<int>(std::ceil(whole.Size())) + 1, kMostStrips);
    double const step = whole.Size() / strips;
    Sum4 sum;
    double area = 0.0;
    for (int i = 0; i < strips; ++i) {
        Span const y{whole.low + i * step, whole.low + (i + 1) * step};
        Span const x = hull.ExtentAt((y.low + y.high) / 2.0).AtLeastAPixel();
        sum = sum + IntegralOf<Edges>(table, width, height, x, y);
        area += x.Size() * y.Size();
    }
    return 1.0 / area * sum;
}

/// Pixel nearest to a place in 16.16.
int Nearest(int place) { return (place >> 16) + (place >> 15 & 1); }

/// Auxiliary channels of the pixel nearest to a place in 16.16; black leaves them alone outside.
template <EdgeModes Edges, class Record> void NearestAux(Image const& image, int x, int y, Record& record)
{
    int const column = EdgeIndex<Edges>(Nearest(x), image.Width());
    int const row = EdgeIndex<Edges>(Nearest(y), image.Height());
    if (column < 0 || row < 0) return;
    PixPtr(const_cast<Image*>(&image), column, row).GetPixel(record); // the colour is overwritten
}

int Middle(std::array<int, 4> const& places)
{
    return static_cast<int>((std::int64_t{places[0]} + places[1] + places[2] + places[3]) >> 2);
}

} // namespace

template <class Record, EdgeModes Edges>
void AreaSampler<Record, Edges>::operator()(std::array<int, 4> const& x, std::array<int, 4> const& y,
                                            Record& record) const
{
    int const middleX = Middle(x), middleY = Middle(y);
    if (!table_) return BilinearSampler<Record, Edges>(image_)(middleX, middleY, record);
    if (image_.IsPlain()) record.DropAux();
    else NearestAux<Edges>(image_, middleX, middleY, record);

    Sum4 const mean = MeanOver<Edges>(*table_, image_.Width(), image_.Height(), Quad(x, y));
    for (int i = 0; i < 4; ++i) {
        double const value = mean[i];
        if constexpr (std::is_same_v<Record, FltPixel>)
            record.word[i] = static_cast<float>(image_.IsFloat() ? value : value / 65535.0);
        else
            record.word[i] = image_.IsFloat() ? IntFromFloat(static_cast<float>(value))
                                              : static_cast<std::uint32_t>(std::max(value, 0.0) + 0.5);
    }
}

template class AreaSampler<Pixel, kEdgeBlack>;
template class AreaSampler<Pixel, kEdgeWrap>;
template class AreaSampler<Pixel, kEdgeDuplicate>;
template class AreaSampler<FltPixel, kEdgeBlack>;
template class AreaSampler<FltPixel, kEdgeWrap>;
template class AreaSampler<FltPixel, kEdgeDuplicate>;

void Image::SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const
{
    AreaSampler<Pixel, kEdgeBlack>(*this, sat_.get())({x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const
{
    AreaSampler<Pixel, kEdgeWrap>(*this, sat_.get())({x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const
{
    AreaSampler<Pixel, kEdgeDuplicate>(*this, sat_.get())({x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                        FltPixel& record) const
{
    AreaSampler<FltPixel, kEdgeBlack>(*this, sat_.get())({x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                        FltPixel& record) const
{
    AreaSampler<FltPixel, kEdgeWrap>(*this, sat_.get())({x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                        FltPixel& record) const
{
    AreaSampler<FltPixel, kEdgeDuplicate>(*this, sat_.get())({x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

} // namespace ombrelune
