// Extend: holds the last acceptable value along each row or column, outward from a start point.

#include <algorithm>
#include <vector>

#include "framework/Registration.h"
#include "framework/RowForms.h"

namespace ombrelune {

class KEffectExtend : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Extd", "Extend"); }

    KEffectExtend()
    {
        // clang-format off
        parameters.AddChapter("Extend");
        parameters.AddPoint  (&start, {0.5F, 0.5F}, "Start", "Strt"_id, KF_Preview, KPoint_Pixels);
        parameters.AddButtons(&direction, 0, "Direction", "Dire"_id, 0, {"Horizontal", "Vertical"});
        parameters.AddButtons(&channel, kEach, "Channel", "ThCh"_id, 0, {"Red", "Green", "Blue", "Alpha", "Lumin.", "Each"});
        parameters.AddRange  (&range, {0.0F, 1.0F}, "Range low", "High", "RanL"_id, "RanH"_id, 0, 0.0, 1.0);
        parameters.AddButtons(&hold, kHoldMaximum, "Hold", "Hold"_id, 0, {"Within range", "Minumum", "Maximum"});
        // clang-format on
    }

    int ThreadCount(int) override { return direction == 0 ? height : width; }
    void F(int, int line, KImage* source, KImage* destination) override
    {
        // Columns lie far apart in memory: the first of a strip does all of them, row by row.
        int const lines = direction == 0 ? 1 : kStrip;
        if (line % lines != 0) return;
        if (data.depth == 2) ExtendLines<FltPixel>(line, lines, source, destination);
        else ExtendLines<Pixel>(line, lines, source, destination);
    }

    KVector2 start;
    int direction; // 0 along rows, 1 along columns
    int channel;
    KRange range;
    int hold;

private:
    enum Hold { kHoldWithin, kHoldMinimum, kHoldMaximum };
    static constexpr int kEach = 5;

    static constexpr int kStrip = 16;

    /// What a line has accepted so far.
    template <class Record> struct Held {
        Record pixel;
        KRange ranges[4];

        explicit Held(KRange const& range) : ranges{range, range, range, range}
        {
            for (auto& word : pixel.word) word = 0;
        }
    };

    template <class Record> void ExtendLines(int first, int lines, KImage* source, KImage* destination) const
    {
        int const size = direction == 0 ? width : height;
        int const last = std::min(first + lines, direction == 0 ? height : width);
        int const from = std::clamp(TruncateToInt(direction == 0 ? start.x : start.y), 0, size - 1);
        // The start is visited by both runs.
        for (int step : {-1, 1}) {
            std::vector<Held<Record>> held(static_cast<std::size_t>(last - first), Held<Record>(range));
            for (int i = from; i >= 0 && i < size; i += step)
                for (int line = first; line < last; ++line) {
                    int const x = direction == 0 ? i : line, y = direction == 0 ? line : i;
                    Record pixel;
                    source->GetPixel(x, y, pixel);
                    Extend(pixel, held[static_cast<std::size_t>(line - first)]);
                    destination->SetPixel(x, y, pixel);
                }
        }
    }

    template <class Record> void Extend(Record& pixel, Held<Record>& held) const
    {
        if (channel != kEach) {
            bool const isIn = Accept(held.ranges[0], PixelGetChannel(pixel, channel));
            isIn ? held.pixel = pixel : pixel = held.pixel;
            return;
        }
        for (int c = 0; c < 4; ++c) {
            bool const isIn = Accept(held.ranges[c], PixelGetChannel(pixel, c));
            auto &word = pixel.word[WordOf(c)], &last = held.pixel.word[WordOf(c)];
            isIn ? last = word : word = last;
        }
    }

    /// Whether a value is in range; one that is may narrow the range for those after it.
    bool Accept(KRange& allowed, float v) const
    {
        if (!allowed.IsIn(v)) return false;
        if (hold == kHoldMinimum) allowed.high = v;
        else if (hold == kHoldMaximum) allowed.low = v;
        return true;
    }
};

OMBRELUNE_TOOL(BF_Extend, BF_ThreadedOperator, KEffectExtend);

} // namespace ombrelune
