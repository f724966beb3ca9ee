// Extend: holds the last acceptable value along each row or column, outward from a start point.

#include <algorithm>
#include <vector>

#include "framework/Registration.h"
#include "image/ColorVectors.h"

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

    static constexpr int kStrip = 128;

    /// What a line has accepted so far. The bounds are by word, those of a single channel all alike.
    template <class Record> struct Held {
        Float4 low, high;
        Record pixel;

        explicit Held(KRange const& range) : low(Float4{} + range.low), high(Float4{} + range.high)
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

    /// What is in range is held, and what is held is shown.
    template <class Record> void Extend(Record& pixel, Held<Record>& held) const
    {
        if (channel == kEach) {
            auto const words = WordsOf(pixel);
            Store(Select(Accept(held, PartsOf(pixel)), words, WordsOf(held.pixel)), pixel.word);
            Store(WordsOf(pixel), held.pixel.word);
        } else {
            Float4 const value = Float4{} + PixelGetChannel(pixel, channel);
            if (Accept(held, value)[0] != 0) held.pixel = pixel;
            pixel = held.pixel;
        }
    }

    /// Where values are in range; those may narrow it for the ones after them.
    template <class Record> Int4 Accept(Held<Record>& held, Float4 const& values) const
    {
        Int4 const isIn = (held.low <= values) & (values <= held.high);
        if (hold == kHoldMinimum) held.high = Select(isIn, values, held.high);
        else if (hold == kHoldMaximum) held.low = Select(isIn, values, held.low);
        return isIn;
    }

    static UInt4 WordsOf(Pixel const& p) { return LoadUInt4(p.word); }
    static Float4 WordsOf(FltPixel const& p) { return LoadFloat4(p.word); }
    static Float4 PartsOf(Pixel const& p)
    {
        return __builtin_convertvector(reinterpret_cast<Int4>(WordsOf(p)), Float4) / 65535.0F;
    }
    static Float4 PartsOf(FltPixel const& p) { return WordsOf(p); }
};

OMBRELUNE_TOOL(BF_Extend, BF_ThreadedOperator, KEffectExtend);

} // namespace ombrelune
