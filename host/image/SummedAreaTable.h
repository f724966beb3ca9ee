#pragma once

#include <algorithm>
#include <memory>

#include "host/image/Image.h"
#include "host/image/Vector4.h"

namespace ombrelune {

/// Interval along one side of the table: whole cells `first` and `last`, and how far into each of them the
/// interval starts and ends. A fraction outside 0 to 1 continues the cell's pixel, which is how the edge
/// pixel is repeated; an interval may run backwards and then counts negative.
struct TableInterval {
    TableInterval(double from, double to, int size)
        : first(Cell(from, size)), last(Cell(to, size)), firstFraction(from - first), lastFraction(to - last)
    {}

    int first, last;
    double firstFraction, lastFraction;

private:
    static int Cell(double place, int size)
    {
        // Truncation is enough for a floor: all that lies below 0 ends at 0.
        return std::clamp(static_cast<int>(place), 0, size - 1);
    }
};

/// Integral of a picture from its lower left corner, for the mean of any rectangle at a constant price.
/// (Crow, "Summed-area tables for texture mapping", SIGGRAPH 1984.) Pixel x covers x to x + 1 here. Integer
/// depths are summed as 0 to 65535, and since the largest possible sum is below 2^48 their doubles are exact;
/// values of float depths that are not finite count as 0, or one of them would spoil all that lies above it.
class SummedAreaTable {
public:
    /// Table of a picture, on the worker threads; null when memory is out. The order of summing depends on
    /// the picture's size alone, so that the bytes are the same for any number of threads.
    static std::unique_ptr<SummedAreaTable> Of(Image const& image);

    /// Integral over a rectangle with fractional sides.
    Sum4 Integral(TableInterval const& x, TableInterval const& y) const;

private:
    SummedAreaTable() = default;
    template <class Stored> void Build(Image const& image);

    Sum4* Row(int y) { return reinterpret_cast<Sum4*>(entries_.get()) + y * stride_; }
    Sum4 const* Row(int y) const { return const_cast<SummedAreaTable*>(this)->Row(y); }

    PooledBuffer entries_; // (width + 1) x (height + 1), the first row and column 0
    std::ptrdiff_t stride_ = 0;
};

inline Sum4 SummedAreaTable::Integral(TableInterval const& x, TableInterval const& y) const
{
    // Differences of entries come before any fraction: between whole entries they lose nothing.
    auto const rows = [&](int from, int to) {
        Sum4 const *const low = Row(from), *const high = Row(to);
        auto const columns = [&](int left, int right) {
            return (high[right] - low[right]) - (high[left] - low[left]);
        };
        return columns(x.first, x.last) + x.lastFraction * columns(x.last, x.last + 1) -
               x.firstFraction * columns(x.first, x.first + 1);
    };
    return rows(y.first, y.last) + y.lastFraction * rows(y.last, y.last + 1) -
           y.firstFraction * rows(y.first, y.first + 1);
}

} // namespace ombrelune
