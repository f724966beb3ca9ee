// Average: the mean of a run of frames, before and after the present one.

#include <algorithm>
#include <type_traits>
#include <vector>

#include "framework/Registration.h"
#include "host/image/Vector4.h"
#include "tools/time/FrameSizes.h"
#include "tools/time/TimeAdjust.h"

namespace ombrelune {

namespace {

constexpr int kMostFrames = 64; // on each side
constexpr int kRun = 512; // pixels that are summed before they are divided: their sums stay in the cache

// The sum of at most 128 frames lies below 2^24, so it divides exactly enough in floats: truncated, the
// quotient is that of the integers.
inline UInt4 Quotient(UInt4 sum, Float4 divisor)
{
    Float4 const floats = __builtin_convertvector(reinterpret_cast<Int4>(sum), Float4);
    return reinterpret_cast<UInt4>(__builtin_convertvector(floats / divisor, Int4));
}
inline Float4 Quotient(Float4 sum, Float4 divisor) { return sum / divisor; }

inline UInt4 Words(Pixel const& p) { return LoadUInt4(p.word); }
inline Float4 Words(FltPixel const& p) { return LoadFloat4(p.word); }

} // namespace

class KEffectAverage : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Avr", "Average"); }

    KEffectAverage()
    {
        ImagesInitialise(2 * kMostFrames);
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Average");
        parameters.AddButtons  (&time.mode, 0, "Main Time", "TiAd"_id, KF_AffectInputs, {"Flow Time", "Time Speed", "Time Stretch"});
        parameters.AddSlider   (&time.speed,      1.0F, "Speed",       "TiSp"_id, KF_SoftMax, 0.0001, 32.0);
        parameters.AddScrew    (&time.sourceTime, 0.0F, "Source time", "TiSo"_id, soft, 0.0, 100.0);
        parameters.AddSliderInt(&after,  8, "Number of frames",        "NuFr"_id, 0, 1, kMostFrames);
        parameters.AddSliderInt(&before, 0, "Number of frames before", "NuFB"_id, 0, 0, kMostFrames);
        parameters.AddSliderInt(&step,   1, "Frames step",             "FrSt"_id, KF_SoftMax, 1, 16);
        parameters.AddCheckbox (&includeCurrent, true, "Include current frame", "Curr"_id, 0);
        parameters.AddButtons  (&nonExisting, 0, "Non-existing frames", "NoEx"_id, KF_AffectInputs, {"Black", "Ignore"});
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "TiAd"_id) TimeAdjust::ShowMode(*messages, value.intValue);
        return messages;
    }

    int GetInputTimes(unsigned input, float now, float* times) override
    {
        if (input != 0) return KEffectPixel::GetInputTimes(input, now, times);
        int const count = 2 * kMostFrames;
        if (!times) return count;
        float const present = time.At(now);
        std::fill_n(times, count, kNoFrame);
        for (int i = 0; i < After(); ++i)
            times[i] = present + static_cast<float>(i) * static_cast<float>(step);
        for (int i = 0; i < Before(); ++i)
            times[After() + i] = present - static_cast<float>(i + 1) * static_cast<float>(step);
        return count;
    }

    bool Init(KImage* source) override
    {
        KEffectPixel::Init(source);
        FitFrames(*this);
        frames.clear();
        for (int i = includeCurrent ? 0 : 1; i < After() + Before(); ++i)
            if (KImage* frame = GetImage(i)) frames.push_back(frame);
        if (frames.empty()) return false;
        // A missing frame counts as black, and so does the present one where it is left out.
        divisor = nonExisting == 0 ? After() + Before() : static_cast<int>(frames.size());
        arePlain =
            std::all_of(frames.begin(), frames.end(), [](KImage const* f) { return f->FImage()->IsPlain(); });
        return true;
    }

    Pixel F(int x, int y, KImage*) override { return Mean<Pixel>(x, y); }
    FltPixel FFlt(int x, int y, KImage*) override { return Mean<FltPixel>(x, y); }

    // Frame by frame over a run of pixels, so that each frame is read from end to end.
    static constexpr bool kOwnRow = true;
    void Row(KPixelRow const& row) override
    {
        if (!arePlain || row.keepUnselected) KEffectPixel::Row(row);
        else if (row.data->depth == 2) RowOf<FltPixel>(row);
        else RowOf<Pixel>(row);
    }

    TimeAdjust time;
    int after, before; // frames; the present one is the first of those after
    int step;          // frames
    bool includeCurrent;
    int nonExisting; // 0 black, 1 ignored

private:
    int After() const { return std::clamp(after, 1, kMostFrames); }
    int Before() const { return std::clamp(before, 0, kMostFrames); }

    template <class Record> Record Mean(int x, int y) const
    {
        Record mean, pixel;
        frames[0]->GetPixel(x, y, mean);
        for (std::size_t i = 1; i < frames.size(); ++i) {
            frames[i]->GetPixel(x, y, pixel);
            for (int w = 0; w < 4; ++w) mean.word[w] += pixel.word[w];
        }
        using Word = std::remove_reference_t<decltype(mean.word[0])>;
        for (auto& word : mean.word) word /= static_cast<Word>(divisor);
        return mean;
    }

    template <class Record> void RowOf(KPixelRow const& row) const
    {
        using Vector = decltype(Words(Record()));
        float const d = static_cast<float>(divisor);
        Vector sums[kRun];
        for (int x = 0; x < width; x += kRun) {
            int const count = std::min(kRun, width - x);
            for (std::size_t i = 0; i < frames.size(); ++i)
                WithCursor<Record>(frames[i]->FImage(), x, row.y, [&](auto in) {
                    Record pixel;
                    for (int p = 0; p < count; ++p) {
                        pixel >>= in;
                        sums[p] = i == 0 ? Words(pixel) : sums[p] + Words(pixel);
                    }
                });
            WithCursor<Record>(row.destination->FImage(), x, row.y, [&](auto out) {
                Record pixel;
                for (int p = 0; p < count; ++p) {
                    Store(Quotient(sums[p], Float4{d, d, d, d}), pixel.word);
                    out >>= pixel;
                }
            });
        }
    }
    template <class Record, class Body> static void WithCursor(Image* image, int x, int y, Body const& body)
    {
        if (image->Layout() == kPlainLayout<Record>) body(PlainPixPtr<StoredWord<Record>>(image, x, y));
        else body(PixPtr(image, x, y));
    }

    std::vector<KImage*> frames;
    int divisor = 1;
    bool arePlain = false;
};

OMBRELUNE_TOOL(BF_Average, BF_ThreadedOperator, KEffectAverage, .isTimeVariant = true);

} // namespace ombrelune
