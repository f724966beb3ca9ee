// Grow: a flood from seed points through the pixels whose channel is in range, shown as a moving band of
// distance.

#include <memory>
#include <utility>

#include "framework/Registration.h"
#include "image/KImageMapFlt.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

constexpr int kSeeds = KImageMapFltData::kPoints;

template <class Word> void Scale(PixelRecord<Word>& pixel, float factor)
{
    for (Word& word : pixel.word) word = static_cast<Word>(static_cast<float>(word) * factor);
}

} // namespace

class KEffectGrow : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Grw", "Grow"); }

    KEffectGrow()
    {
        // clang-format off
        // Four inputs share one identifier: inputs are told apart by their labels.
        parameters.AddChapter("Grow");
        parameters.AddButtonsChannel(&seeds.channel, 4, "Channel", "Chan"_id, 0);
        parameters.AddRange (&seeds.range, {0.01F, 1.0F}, "Channel Low", "Channel High", "GrwS"_id, "GrwE"_id, 0, 0.0, 1.0);
        parameters.AddScrew (&growStart,     0.0F,  "Grow Start",     "GrwS"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddScrew (&growEnd,       0.5F,  "Grow End",       "GrwS"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider(&softnessStart, 0.01F, "Softness Start", "SofS"_id, KF_SoftMax, 0.0, 0.1);
        parameters.AddSlider(&softnessEnd,   0.01F, "Softness End",   "SofE"_id, KF_SoftMax, 0.0, 0.1);

        parameters.AddChapter("Seeds");
        parameters.AddSliderInt(&seeds.pointCount, 1, "Seed Number", "SeNu"_id, KF_AffectInputs, 1, kSeeds);
        for (int i = 0; i < kSeeds; ++i) {
            unsigned const hidden = i == 0 ? 0U : unsigned{KF_Hidden};
            KString label;
            parameters.AddPoint (&seeds.points[i], {0.5F, 0.5F}, label.Numbered("Seed", i + 1, true), SeedId(i), KF_Preview | hidden, KPoint_Pixels);
            parameters.AddSlider(&seeds.radii[i], 0.0F, label.Numbered("Offset", i + 1, true), OffsetId(i), KF_SoftMax | hidden, 0.0, 1.0);
        }
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "SeNu"_id)
            for (int i = 0; i < kSeeds; ++i)
                for (std::uint32_t shown : {SeedId(i), OffsetId(i)})
                    messages->Show(shown, i < value.intValue);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        auto const pixels = static_cast<float>(width);
        band = {growStart * pixels, growEnd * pixels, softnessStart * pixels, softnessEnd * pixels};
        if (growStart > growEnd) std::swap(band.start, band.end);
        return true;
    }

    int StepCount() override { return 2; }
    int ThreadCount(int step) override { return step == 0 ? 1 : height; }
    void F(int step, int chunk, KImage* source, KImage* destination) override
    {
        if (step == 0) map = std::make_unique<KImageMapFlt>(source, seeds);
        else if (data.depth == 2) ShowRow<FltPixel>(chunk, source, destination);
        else ShowRow<Pixel>(chunk, source, destination);
    }

    void Done(KImage** destination) override
    {
        map.reset();
        KEffectThreads::Done(destination);
    }

    KImageMapFltData seeds;
    float growStart, growEnd;
    float softnessStart, softnessEnd;

private:
    static constexpr std::uint32_t SeedId(int i) { return "See0"_id + static_cast<std::uint32_t>(i); }
    static constexpr std::uint32_t OffsetId(int i) { return "Off0"_id + static_cast<std::uint32_t>(i); }

    template <class Record> void ShowRow(int y, KImage* source, KImage* destination) const
    {
        auto const row = [&](int count, auto in, auto out) {
            auto const [start, end, softStart, softEnd] = band;
            Record pixel;
            for (int x = 0; x < count; ++x) {
                pixel >>= in;
                float const d = map->GetFlt(x, y);
                if (d < start || d >= end) {
                    for (auto& word : pixel.word) word = 0;
                } else {
                    if (d > end - softEnd) Scale(pixel, (end - d) / softEnd);
                    if (d < start + softStart) Scale(pixel, (d - start) / softStart);
                }
                out >>= pixel;
            }
        };
        VisitRow<Record>(y, row, source->FImage(), destination->FImage());
    }

    struct Band {
        float start, end, softStart, softEnd; // pixels
    };
    Band band;
    std::unique_ptr<KImageMapFlt> map;
};

OMBRELUNE_TOOL(BF_Grow, BF_ThreadedOperator, KEffectGrow);

} // namespace ombrelune
