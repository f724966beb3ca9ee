#pragma once

#include <algorithm>
#include <type_traits>
#include <vector>

#include "host/image/PixPtr.h"
#include "host/value/Parallel.h"

namespace ombrelune {

/// Stored word and depth of pictures whose pixels are the record's own kind.
template <class Record> struct RecordTraits;
template <> struct RecordTraits<Pixel> {
    using Stored = std::uint16_t;
    static constexpr int kDepth = kDepthInt16;
};
template <> struct RecordTraits<FltPixel> {
    using Stored = float;
    static constexpr int kDepth = kDepthFloat;
};

/// Calls body(width, cursors...) with one cursor per picture at the start of row y. The body is generic over
/// the cursors: it is instantiated for plain pictures of the record's own kind, whose pixels are loads and
/// stores, and for all others.
template <class Record, class Body, class... Images> void VisitRow(int y, Body const& body, Images*... images)
{
    using Traits = RecordTraits<Record>;
    int const width = std::min({images->Width()...});
    if ((... && (images->IsPlain() && images->Depth() == Traits::kDepth)))
        body(width, PlainPixPtr<typename Traits::Stored>(images, 0, y)...);
    else body(width, PixPtr(images, 0, y)...);
}

/// Calls change(pixel) for each pixel and writes it back, on the worker threads.
template <class Record, class Change> void ForEachPixel(Image* image, Change const& change)
{
    auto const row = [&](int width, auto in) {
        auto const step =
            change; // a copy of the row's own, or the compiler reloads its numbers for each pixel
        auto out = in;
        Record pixel;
        for (int x = 0; x < width; ++x) {
            pixel >>= in;
            step(pixel);
            out >>= pixel;
        }
    };
    ParallelFor(image->Height(), [&](int y) { VisitRow<Record>(y, row, image); });
}

/// The same as change(pixel, its counterpart in the other picture). Pictures of two sizes meet in the lower
/// left corner.
template <class Record, class Change> void ForEachPixel(Image* image, Image* other, Change const& change)
{
    auto const row = [&](int width, auto in, auto with) {
        auto const step = change;
        auto out = in;
        Record pixel, counterpart;
        for (int x = 0; x < width; ++x) {
            pixel >>= in;
            counterpart >>= with;
            step(pixel, counterpart);
            out >>= pixel;
        }
    };
    ParallelFor(std::min(image->Height(), other->Height()),
                [&](int y) { VisitRow<Record>(y, row, image, other); });
}

/// Results of measure(y) for rows first to last - 1, in the order of rows: a sum over them does not depend on
/// the number of threads.
template <class Measure> auto MeasureRows(int first, int last, Measure const& measure)
{
    std::vector<decltype(measure(first))> results(static_cast<std::size_t>(std::max(last - first, 0)));
    ParallelFor(static_cast<int>(results.size()),
                [&](int i) { results[static_cast<std::size_t>(i)] = measure(first + i); });
    return results;
}

} // namespace ombrelune
