// Extend: holds the last acceptable value along each row or column, outward from a start point.

#include <algorithm>

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
        if (data.depth == 2) ExtendLine<FltPixel>(line, source, destination);
        else ExtendLine<Pixel>(line, source, destination);
    }

    KVector2 start;
    int direction; // 0 along rows, 1 along columns
    int channel;
    KRange range;
    int hold;

private:
    enum Hold { kHoldWithin, kHoldMinimum, kHoldMaximum };
    static constexpr int kEach = 5;

    template <class Record> void ExtendLine(int line, KImage* source, KImage* destination) const
    {
        int const size = direction == 0 ? width : height;
        int const from = std::clamp(TruncateToInt(direction == 0 ? start.x : start.y), 0, size - 1);
        // The start is visited by both runs.
        Run<Record>(line, from, -1, -1, source, destination);
        Run<Record>(line, from, size, 1, source, destination);
    }

    /// From one place up to, not including, another.
    template <class Record>
    void Run(int line, int from, int end, int step, KImage* source, KImage* destination) const
    {
        Record pixel, held;
        held.DropAux();
        for (auto& word : held.word) word = 0;
        KRange ranges[4] = {range, range, range, range};
        for (int i = from; i != end; i += step) {
            int const x = direction == 0 ? i : line, y = direction == 0 ? line : i;
            source->GetPixel(x, y, pixel);
            if (channel == kEach) {
                for (int c = 0; c < 4; ++c) {
                    bool const isIn = Accept(ranges[c], PixelGetChannel(pixel, c));
                    auto &word = pixel.word[WordOf(c)], &last = held.word[WordOf(c)];
                    isIn ? last = word : word = last;
                }
            } else {
                bool const isIn = Accept(ranges[0], PixelGetChannel(pixel, channel));
                isIn ? held = pixel : pixel = held;
            }
            destination->SetPixel(x, y, pixel);
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
