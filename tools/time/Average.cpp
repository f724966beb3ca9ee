// Average: the mean of a run of frames, before and after the present one.

#include <algorithm>
#include <cstdint>
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

inline UInt4 LoadWords(std::uint16_t const* words) { return LoadUInt4(words); }
inline Float4 LoadWords(float const* words) { return LoadFloat4(words); }
inline UInt4 Words(Pixel const& p) { return LoadUInt4(p.word); }
inline Float4 Words(FltPixel const& p) { return LoadFloat4(p.word); }

template <class Record> using VectorOf = decltype(Words(Record()));

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
        bool const isStored = std::all_of(frames.begin(), frames.end(), [](KImage const* frame) {
            return frame->FImage()->Layout() == kPlainLayout<Record>;
        });
        VectorOf<Record> sums[kRun];
        for (int x = 0; x < width; x += kRun) {
            int const count = std::min(kRun, width - x);
            if (isStored) AddStored<Record>(x, row.y, sums, count);
            else AddRead<Record>(x, row.y, sums, count);
            WriteMeans<Record>(row.destination->FImage(), x, row.y, sums, count);
        }
    }

    /// Sums of a run of pixels, frame by frame from the first on; the order of a float sum counts.
    template <class Record> void AddRead(int x, int y, VectorOf<Record>* sums, int count) const
    {
        for (std::size_t i = 0; i < frames.size(); ++i) {
            PixPtr in(frames[i]->FImage(), x, y);
            Record pixel;
            for (int p = 0; p < count; ++p) {
                pixel >>= in;
                sums[p] = i == 0 ? Words(pixel) : sums[p] + Words(pixel);
            }
        }
    }
    /// The same where the words are stored as they are, several frames at a time.
    template <class Record> void AddStored(int x, int y, VectorOf<Record>* sums, int count) const
    {
        StoredWord<Record> const* words[8];
        for (std::size_t first = 0; first < frames.size();) {
            std::size_t const left = frames.size() - first, some = left >= 8 ? 8 : left >= 4 ? 4 : 1;
            for (std::size_t k = 0; k < some; ++k)
                words[k] =
                    reinterpret_cast<StoredWord<Record> const*>(frames[first + k]->FImage()->MainRow(y)) +
                    4 * x;
            if (some == 8) AddSome<8>(words, first == 0, sums, count);
            else if (some == 4) AddSome<4>(words, first == 0, sums, count);
            else AddSome<1>(words, first == 0, sums, count);
            first += some;
        }
    }
    template <int kSome, class Stored, class Vector>
    static void AddSome(Stored const* const* words, bool areFirst, Vector* sums, int count)
    {
        for (int p = 0; p < count; ++p) {
            Vector sum = LoadWords(words[0] + 4 * p);
            if (!areFirst) sum = sums[p] + sum;
            for (int k = 1; k < kSome; ++k) sum += LoadWords(words[k] + 4 * p);
            sums[p] = sum;
        }
    }
    template <class Record>
    void WriteMeans(Image* image, int x, int y, VectorOf<Record> const* sums, int count) const
    {
        auto const d = static_cast<float>(divisor);
        Float4 const by{d, d, d, d};
        if (image->Layout() == kPlainLayout<Record>) {
            auto* words = reinterpret_cast<StoredWord<Record>*>(image->MainRow(y)) + 4 * x;
            for (int p = 0; p < count; ++p) Store(Quotient(sums[p], by), words + 4 * p);
            return;
        }
        PixPtr out(image, x, y);
        Record pixel;
        for (int p = 0; p < count; ++p) {
            Store(Quotient(sums[p], by), pixel.word);
            out >>= pixel;
        }
    }

    std::vector<KImage*> frames;
    int divisor = 1;
    bool arePlain = false;
};

OMBRELUNE_TOOL(BF_Average, BF_ThreadedOperator, KEffectAverage, .isTimeVariant = true);

} // namespace ombrelune
