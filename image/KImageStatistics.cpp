#include <algorithm>
#include <cmath>
#include <type_traits>

#include "image/HeightNormal.h"
#include "image/KImage.h"
#include "image/KLookUpTable.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

constexpr float kLargestFloat = 3.4028235e38F, kSmallestFloat = 1.1754944e-38F;

/// First and last column with alpha; none when first is above last.
template <class Record> KRangeInt ColumnsWithAlpha(Image* image, int y)
{
    KRangeInt columns(0, image->Width() - 1);
    PixPtr forward(image, 0, y), backward(image, columns.high, y);
    Record pixel;
    for (; columns.low <= columns.high; ++columns.low) {
        pixel >>= forward;
        if (pixel.alpha != 0) break;
    }
    for (; columns.high > columns.low; --columns.high) {
        pixel <<= backward;
        if (pixel.alpha != 0) break;
    }
    return columns;
}

struct Box {
    KVector2 low{kLargestFloat, kLargestFloat}, high{kSmallestFloat, kSmallestFloat};
    bool found = false;

    void Add(Box const& box)
    {
        low = {std::min(low.x, box.low.x), std::min(low.y, box.low.y)};
        high = {std::max(high.x, box.high.x), std::max(high.y, box.high.y)};
        found |= box.found;
    }
};

/// Sum, least and largest of each word over some pixels, in the record's own units.
struct Samples {
    double sum[4] = {}, least[4] = {}, most[4] = {};
    bool any = false;

    /// Sums row by row in doubles: floats would lose the small parts of a large picture.
    void Add(Samples const& s)
    {
        if (!s.any) return;
        for (int i = 0; i < 4; ++i) {
            sum[i] += s.sum[i];
            least[i] = any ? std::min(least[i], s.least[i]) : s.least[i];
            most[i] = any ? std::max(most[i], s.most[i]) : s.most[i];
        }
        any = true;
    }
};

template <class Record> Samples SamplesOfRow(Image* image, int y, int x0, int x1)
{
    Samples row;
    PixPtr in(image, x0, y);
    Record pixel;
    for (int x = x0; x < x1; ++x) {
        pixel >>= in;
        for (int i = 0; i < 4; ++i) {
            // By way of int, since there is no quick way from unsigned to double.
            double const word =
                static_cast<std::conditional_t<std::is_same_v<Record, Pixel>, int, float>>(pixel.word[i]);
            row.sum[i] += word;
            row.least[i] = row.any ? std::min(row.least[i], word) : word;
            row.most[i] = row.any ? std::max(row.most[i], word) : word;
        }
        row.any = true;
    }
    return row;
}

/// Pixels of a side between two places in parts of it.
KRangeInt PixelsAround(float centre, float extent, int size)
{
    auto const side = static_cast<float>(size);
    return {std::max(TruncateToInt((centre - extent * 0.5F) * side), 0),
            std::min(TruncateToInt((centre + extent * 0.5F) * side), size)};
}

} // namespace

KImageRegion KImage::BoundingBox() const
{
    auto const rows = MeasureRows(0, height_, [&](int y) {
        return IsFloat() ? ColumnsWithAlpha<FltPixel>(image_, y) : ColumnsWithAlpha<Pixel>(image_, y);
    });
    KImageRegion box;
    for (int y = 0; y < height_; ++y) {
        KRangeInt const& columns = rows[static_cast<std::size_t>(y)];
        if (columns.low > columns.high) continue;
        box.Add(columns.low, y);
        box.Add(columns.high, y);
    }
    return box;
}

bool KImage::BoundingBox(KVector2& low, KVector2& high, KVector2&, int channel, KRange const& range) const
{
    auto const rows = MeasureRows(0, height_, [&](int y) {
        Box box;
        PixPtr in(image_, 0, y);
        Pixel pixel;
        for (int x = 0; x < width_; ++x) {
            pixel >>= in;
            float const v = PixelGetChannel(pixel, channel);
            if (!(range.low < v && v <= range.high)) continue;
            float const f = (v - range.low) / range.Range();
            KVector2 const place(static_cast<float>(x), static_cast<float>(y)), in1(1.0F - f, 1.0F - f);
            box.Add({place + in1, place + KVector2(f, f), true});
        }
        return box;
    });
    Box box;
    for (Box const& row : rows) box.Add(row);
    if (box.found) {
        // Faint pixels alone may put the lower edge above the upper one.
        auto const meet = [](float& a, float& b) {
            if (a > b) a = b = (a + b) / 2.0F;
        };
        meet(box.low.x, box.high.x);
        meet(box.low.y, box.high.y);
    }
    low = box.low;
    high = box.high;
    return box.found;
}

KColor KImage::GetSamples(int kind, int area, KVector2 const& centre, float w, float h, KImage const*) const
{
    KRangeInt columns(0, 0), rows(0, 0);
    if (area == 0) {
        columns = {0, width_};
        rows = {0, height_};
    } else if (area == 1) {
        columns = PixelsAround(centre.x, w, width_);
        rows = PixelsAround(centre.y, h, height_);
    }
    Samples samples;
    for (Samples const& row : MeasureRows(rows.low, rows.high, [&](int y) {
             return IsFloat() ? SamplesOfRow<FltPixel>(image_, y, columns.low, columns.high)
                              : SamplesOfRow<Pixel>(image_, y, columns.low, columns.high);
         }))
        samples.Add(row);
    if (!samples.any) return {};

    double const* const words = kind == 1 ? samples.least : kind == 2 ? samples.most : samples.sum;
    double divisor = IsFloat() ? 1.0 : 65535.0;
    if (kind == 0) divisor *= static_cast<double>(columns.high - columns.low) * (rows.high - rows.low);
    auto const channel = [&](int word) { return static_cast<float>(words[word] / divisor); };
    return {channel(kChannelRed), channel(kChannelGreen), channel(kChannelBlue), channel(kChannelAlpha)};
}

int KImage::Shape(KLookUpTable const* table, Pixel const& p, int selector)
{
    std::uint32_t value = 0;
    switch (selector) {
    case 0: value = p.red; break;
    case 1: value = p.green; break;
    case 2: value = p.blue; break;
    case 3: value = p.alpha; break;
    case 4: value = (std::max({p.red, p.green, p.blue}) + std::min({p.red, p.green, p.blue})) >> 1; break;
    default: break;
    }
    auto const i = static_cast<int>(value);
    return table && table->GetCount() == 65536 ? static_cast<int>(table->GetValue(i)) : i;
}

KVector3 KImage::GetNormal(int x, int y, int channel, float strength, KLookUpTable const* table) const
{
    return HeightNormal(width_, strength, [&](int dx, int dy) {
        Pixel p;
        GetPixelD(x + dx, y + dy, p);
        return Shape(table, p, channel);
    });
}

} // namespace ombrelune
