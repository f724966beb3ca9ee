// Fragments: fades the connected parts of a picture one after the other.

#include <memory>
#include <optional>

#include "framework/KGrow.h"
#include "framework/Registration.h"
#include "image/KImageMapFlt.h"
#include "image/RowLoop.h"

namespace ombrelune {

class KEffectFragments : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Frg", "Fragments"); }

    KEffectFragments()
    {
        // clang-format off
        parameters.AddChapter("Fragments");
        parameters.AddButtonsChannel(&parts.channel, 4, "Channel", "Chan"_id, 0);
        parameters.AddRange(&parts.range, {0.01F, 1.0F}, "Channel Low", "Channel High", "GrwS"_id, "GrwE"_id, 0, 0.0, 1.0);
        parameters.AddChapter("Range Fade");
        sweep.ParameterListAdd(parameters);
        // clang-format on
    }

    int StepCount() override { return 2; }
    int ThreadCount(int step) override { return step == 0 ? 1 : height; }
    void F(int step, int chunk, KImage* source, KImage* destination) override
    {
        if (step == 0) FindParts(*source);
        else if (data.depth == 2) FadeRow<FltPixel>(chunk, source, destination);
        else FadeRow<Pixel>(chunk, source, destination);
    }

    void Done(KImage** destination) override
    {
        map.reset();
        grow.reset();
        KEffectThreads::Done(destination);
    }

    KImageMapFltData parts;
    KGrowData sweep;

private:
    void FindParts(KImage const& source)
    {
        parts.type = 1;
        map = std::make_unique<KImageMapFlt>(&source, parts);
        if (map->GetIndexCount() > 0) grow.emplace(map->GetIndexCount(), sweep);
    }

    template <class Record> void FadeRow(int y, KImage* source, KImage* destination) const
    {
        auto const row = [&](int count, auto in, auto out) {
            int const* part =
                map->blobs.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
            Record pixel;
            for (int x = 0; x < count; ++x) {
                pixel >>= in;
                float const shown = grow && part[x] >= 0 ? ShownOf(part[x]) : 0.0F;
                for (auto& word : pixel.word)
                    word = static_cast<std::decay_t<decltype(word)>>(static_cast<float>(word) * shown);
                out >>= pixel;
            }
        };
        VisitRow<Record>(y, row, source->FImage(), destination->FImage());
    }

    float ShownOf(int part) const
    {
        float in, out;
        grow->Get(part, in, out);
        return (1.0F - in) * out;
    }

    std::unique_ptr<KImageMapFlt> map;
    std::optional<KGrow> grow; // none without parts
};

OMBRELUNE_TOOL(BF_Fragments, BF_ThreadedOperator, KEffectFragments);

} // namespace ombrelune
