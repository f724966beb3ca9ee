#include "host/image/SummedAreaTable.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/image/PixelCodec.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr int kBandRows = 64;

template <class Stored> double Value(Stored stored)
{
    if constexpr (std::is_integral_v<Stored>) {
        return PixelCodec<Stored>::ToInt(stored);
    } else {
        float const value = PixelCodec<Stored>::ToFloat(stored);
        return std::isfinite(value) ? value : 0.0F;
    }
}

template <class Stored> void AddRow(Sum4* sums, Stored const* row, int width)
{
    for (int x = 0; x < width; ++x, row += 4)
        sums[x] = sums[x] + Sum4{{Value(row[0]), Value(row[1])}, {Value(row[2]), Value(row[3])}};
}

} // namespace

std::unique_ptr<SummedAreaTable> SummedAreaTable::Of(Image const& image)
{
    std::unique_ptr<SummedAreaTable> table(new SummedAreaTable);
    table->stride_ = image.Width() + 1;
    table->entries_ = TakeBuffer(sizeof(Sum4) * static_cast<std::size_t>(table->stride_) *
                                 static_cast<std::size_t>(image.Height() + 1));
    if (!table->entries_) return nullptr;
    switch (image.Depth()) {
    case kDepthInt8: table->Build<std::uint8_t>(image); break;
    case kDepthInt16: table->Build<std::uint16_t>(image); break;
    case kDepthHalf: table->Build<Imath::half>(image); break;
    default: table->Build<float>(image); break;
    }
    return table;
}

template <class Stored> void SummedAreaTable::Build(Image const& image)
{
    // Bands of rows: first every band's column sums, then what lies below each band, then the table itself,
    // which is thus written once.
    int const width = image.Width(), height = image.Height();
    int const bands = (height + kBandRows - 1) / kBandRows;
    auto const stored = [&](int y) { return reinterpret_cast<Stored const*>(image.MainRow(y)); };
    std::vector<std::vector<Sum4>> columns(static_cast<std::size_t>(bands));
    ParallelFor(bands, [&](int band) {
        auto& sums = columns[static_cast<std::size_t>(band)];
        sums.resize(static_cast<std::size_t>(width));
        if (band == 0) return; // becomes what lies below band 0
        int const from = (band - 1) * kBandRows;
        for (int y = from; y < from + kBandRows; ++y) AddRow(sums.data(), stored(y), width);
    });
    for (std::size_t band = 1; band < columns.size(); ++band)
        for (std::size_t x = 0; x < columns[band].size(); ++x)
            columns[band][x] = columns[band][x] + columns[band - 1][x];

    std::fill_n(Row(0), stride_, Sum4{});
    ParallelFor(bands, [&](int band) {
        Sum4* const sums = columns[static_cast<std::size_t>(band)].data();
        for (int y = band * kBandRows; y < std::min((band + 1) * kBandRows, height); ++y) {
            AddRow(sums, stored(y), width);
            Sum4* const out = Row(y + 1);
            Sum4 total;
            out[0] = total;
            for (int x = 0; x < width; ++x) out[x + 1] = total = total + sums[x];
        }
    });
}

void Image::UseSAT()
{
    std::call_once(satOnce_, [this] { sat_ = SummedAreaTable::Of(*this); });
}

} // namespace ombrelune
