#include <algorithm>
#include <array>
#include <cmath>

#include "host/image/EdgeIndex.h"
#include "host/image/PixPtr.h"
#include "host/image/PixelCodec.h"
#include "host/image/Sampler.h"
#include "host/image/SummedAreaTable.h"

namespace ombrelune {

namespace {

constexpr int kMostStrips = 16;
constexpr double kRectangleTolerance = 1.0 / 256.0; // pixels; an undistorted cell is never exact in floats

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

struct Corner {
    double y, x;
    auto operator<=>(Corner const&) const = default;
};

/// Corners from low to high, which is the same for every order in which they are given.
class Quad {
public:
    explicit Quad(std::array<Corner, 4> const& given) : corner_(given)
    {
        std::sort(corner_.begin(), corner_.end());
    }

    bool IsRectangle() const
    {
        auto const near = [](double a, double b) { return std::abs(a - b) <= kRectangleTolerance; };
        auto const low = std::minmax(corner_[0].x, corner_[1].x);
        auto const high = std::minmax(corner_[2].x, corner_[3].x);
        return near(corner_[0].y, corner_[1].y) && near(corner_[2].y, corner_[3].y) &&
               near(low.first, high.first) && near(low.second, high.second);
    }
    Span Height() const { return {corner_[0].y, corner_[3].y}; }
    /// Height of a rectangle whose sides are not quite straight.
    Span MeanHeight() const
    {
        return {(corner_[0].y + corner_[1].y) / 2.0, (corner_[2].y + corner_[3].y) / 2.0};
    }
    /// Extent of the convex hull at a height between the lowest and the highest corner.
    Span ExtentAt(double y) const
    {
        Span extent{HUGE_VAL, -HUGE_VAL};
        for (int i = 0; i < 3; ++i) {
            for (int j = i + 1; j < 4; ++j) {
                Corner const &a = corner_[i], &b = corner_[j];
                if (a.y > y || b.y < y) continue;
                double const along = a.y < b.y ? (y - a.y) / (b.y - a.y) : 0.0;
                double const x = a.x + (b.x - a.x) * along, end = a.y < b.y ? x : b.x;
                extent = {std::min({extent.low, x, end}), std::max({extent.high, x, end})};
            }
        }
        return extent;
    }

private:
    std::array<Corner, 4> corner_;
};

/// Mean of the picture over a quadrilateral. A rectangle is one look at the table; anything else is cut into
/// level strips of about a row, each taken as wide as the quadrilateral is in its middle.
template <EdgeModes Edges>
Sum4 MeanOver(SummedAreaTable const& table, int width, int height, Quad const& quad)
{
    bool const rectangle = quad.IsRectangle();
    Span whole = rectangle ? quad.MeanHeight() : quad.Height();
    if (rectangle || whole.Size() <= 1.0) {
        Span const x = quad.ExtentAt((whole.low + whole.high) / 2.0).AtLeastAPixel();
        Span const y = whole.AtLeastAPixel();
        return 1.0 / (x.Size() * y.Size()) * IntegralOf<Edges>(table, width, height, x, y);
    }
    int const strips = std::min(static_cast<int>(std::ceil(whole.Size())) + 1, kMostStrips);
    double const step = whole.Size() / strips;
    Sum4 sum;
    double area = 0.0;
    for (int i = 0; i < strips; ++i) {
        Span const y{whole.low + i * step, whole.low + (i + 1) * step};
        Span const x = quad.ExtentAt((y.low + y.high) / 2.0).AtLeastAPixel();
        sum = sum + IntegralOf<Edges>(table, width, height, x, y);
        area += x.Size() * y.Size();
    }
    return 1.0 / area * sum;
}

/// Auxiliary channels of the pixel nearest to a place in 16.16; black leaves them alone outside.
template <EdgeModes Edges, class Record> void NearestAux(Image const& image, int x, int y, Record& record)
{
    int const column = EdgeIndex<Edges>((x + 32768) >> 16, image.Width());
    int const row = EdgeIndex<Edges>((y + 32768) >> 16, image.Height());
    if (column < 0 || row < 0) return;
    PixPtr(const_cast<Image*>(&image), column, row).GetPixel(record); // the colour is overwritten
}

int Middle(int a, int b, int c, int d) { return static_cast<int>((std::int64_t{a} + b + c + d) >> 2); }

/// A picture without a table gives the bilinear sample at the centre.
template <EdgeModes Edges, class Record>
void SampleArea(Image const& image, SummedAreaTable const* table, std::array<int, 4> const& x,
                std::array<int, 4> const& y, Record& record)
{
    int const middleX = Middle(x[0], x[1], x[2], x[3]), middleY = Middle(y[0], y[1], y[2], y[3]);
    if (!table) return BilinearSampler<Record, Edges>(image)(middleX, middleY, record);
    if (image.IsPlain()) record.DropAux();
    else NearestAux<Edges>(image, middleX, middleY, record);

    std::array<Corner, 4> corners;
    for (std::size_t i = 0; i < 4; ++i) corners[i] = {y[i] / 65536.0 + 0.5, x[i] / 65536.0 + 0.5};
    Sum4 const mean = MeanOver<Edges>(*table, image.Width(), image.Height(), Quad(corners));
    for (int i = 0; i < 4; ++i) {
        double const value = mean[i];
        if constexpr (std::is_same_v<Record, FltPixel>)
            record.word[i] = static_cast<float>(image.IsFloat() ? value : value / 65535.0);
        else
            record.word[i] = image.IsFloat() ? IntFromFloat(static_cast<float>(value))
                                             : static_cast<std::uint32_t>(std::max(value, 0.0) + 0.5);
    }
}

} // namespace

void Image::SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const
{
    SampleArea<kEdgeBlack>(*this, sat_.get(), {x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const
{
    SampleArea<kEdgeWrap>(*this, sat_.get(), {x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const
{
    SampleArea<kEdgeDuplicate>(*this, sat_.get(), {x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                        FltPixel& record) const
{
    SampleArea<kEdgeBlack>(*this, sat_.get(), {x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                        FltPixel& record) const
{
    SampleArea<kEdgeWrap>(*this, sat_.get(), {x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

void Image::SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                        FltPixel& record) const
{
    SampleArea<kEdgeDuplicate>(*this, sat_.get(), {x1, x2, x3, x4}, {y1, y2, y3, y4}, record);
}

} // namespace ombrelune
