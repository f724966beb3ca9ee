// Analyzer: draws how often each value occurs in each channel.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/RowLoop.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectAnalyzer : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Anl", "Analyzer", "Image analysis");
    }

    KEffectAnalyzer()
    {
        unsigned const guide = KF_SoftMin | KF_SoftMax | KF_AffectInputs | KF_Preview | KF_Internal;
        // clang-format off
        parameters.AddChapter("Image");
        parameters.AddSliderInt(&graphWidth,  256, "Width",  "AnWi"_id, KF_SoftMax, 2, 1000);
        parameters.AddSliderInt(&graphHeight, 256, "Height", "AnHe"_id, KF_SoftMax, 2, 1000);
        parameters.AddChapter("Type");
        parameters.AddButtons(&type, 0, "Type", "Type"_id, 0, {"Histogram"});
        parameters.AddSlider(&verticalScale, 1.0F, "Vertical Scale", "AnSc"_id, KF_SoftMax, 0.0, 2.0);
        parameters.AddSliderInt(&fraction, 10, "Sample Fraction (one out of ...)", "AnFr"_id, KF_SoftMax, 1, 50);
        parameters.AddChapter("Guides");
        parameters.AddButtons(&guideScale, 0, "Scale", "GuSc"_id, 0, {"0.0 ... 1.0", "0 ... 255", "0 ... 1023", "0 ... 65535"});
        parameters.AddSlider(&guides[0], 0.0F, "Guide 1", "GuP1"_id, guide, 0.0, 1.0);
        parameters.AddSlider(&guides[1], 1.0F, "Guide 2", "GuP2"_id, guide, 0.0, 1.0);
        parameters.AddCheckbox(&lock, false, "Lock Both Guides Together", "GuLo"_id, KF_AffectInputs | KF_Internal);
        parameters.AddColor(&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Guides Color", "GuCR"_id, KF_AffectInputs);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "GuLo"_id) {
            isLocked = value.intValue > 0;
            distance = shown[1] - shown[0];
        } else if (id == "GuP1"_id || id == "GuP2"_id) {
            int const moved = id == "GuP1"_id ? 0 : 1, other = 1 - moved;
            if (shown[moved] == value.floatValue) return messages; // it has followed the other
            shown[moved] = value.floatValue;
            if (!isLocked) return messages;
            shown[other] = moved == 0 ? shown[0] + distance : shown[1] - distance;
            messages->SetValue(other == 0 ? "GuP1"_id : "GuP2"_id, shown[other]);
        }
        return messages;
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Resize; }
    bool GetResize(int scale, int& w, int& h, float& xAspect, float& yAspect) override
    {
        w = binCount = std::max(graphWidth / scale, 1);
        h = std::max(graphHeight / scale, 1);
        xAspect = yAspect = 1.0F;
        return true;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        int w, h;
        float xAspect, yAspect;
        GetResize(source->Scale(), w, h, xAspect, yAspect);
        counts = std::vector<std::atomic<std::int64_t>>(4 * static_cast<std::size_t>(binCount));
        graphRows = static_cast<float>(h);
        barHeight = verticalScale *
                    (static_cast<float>(fraction) / static_cast<float>(width) / static_cast<float>(height)) *
                    static_cast<float>(h) * 100.0F / static_cast<float>(source->Scale());
        return true;
    }

    int ThreadCount(int) override { return height / fraction; }
    void F(int, int chunk, KImage* source, KImage*) override
    {
        double const binsPerValue = binCount / 65535.0;
        auto const count = [&](int channel, std::uint32_t value) {
            int const bin = std::min(static_cast<int>(binsPerValue * value), binCount - 1);
            CountOf(channel, bin).fetch_add(1, std::memory_order_relaxed);
        };
        VisitRow<Pixel>(
            chunk * fraction,
            [&](int columns, auto in) {
                Pixel pixel;
                for (int x = 0; x < columns; ++x) {
                    pixel >>= in;
                    for (int c = 0; c < 4; ++c) count(c, pixel.word[c]);
                }
            },
            source->FImage());
    }

    void Done(KImage** destination) override
    {
        if (!counts.empty()) Draw(**destination);
        counts.clear();
        KEffectThreads::Done(destination);
    }

    int graphWidth, graphHeight; // pixels of the full-sized picture
    int type;                    // there is one alone
    float verticalScale;
    int fraction; // every so many rows are counted
    int guideScale;
    float guides[2]; // of the panel, as are scale and colour
    bool lock;
    KColor color;

private:
    std::atomic<std::int64_t>& CountOf(int channel, int bin)
    {
        return counts[4 * static_cast<std::size_t>(bin) + static_cast<std::size_t>(channel)];
    }

    /// Each channel is full from the bottom up to its count.
    void Draw(KImage& picture)
    {
        int const columns = std::min(picture.Width(), binCount), rows = picture.Height();
        picture.Clear();
        std::vector<int> tops(counts.size()); // rows from the top that stay empty, less one
        for (std::size_t i = 0; i < tops.size(); ++i)
            tops[i] = SaturatedInt(graphRows - barHeight * static_cast<float>(counts[i].load()));
        ParallelFor(rows, [&](int y) {
            int const fromTop = rows - 1 - y;
            PixPtr out(picture.FImage(), 0, y);
            Pixel pixel;
            pixel.DropAux();
            for (int x = 0; x < columns; ++x) {
                for (int c = 0; c < 4; ++c)
                    pixel.word[c] =
                        tops[4 * static_cast<std::size_t>(x) + static_cast<std::size_t>(c)] < fromTop ? 65535U
                                                                                                      : 0U;
                out >>= pixel;
            }
        });
    }

    // As the panel was told last.
    float shown[2] = {0.0F, 1.0F};
    bool isLocked = false;
    float distance = 1.0F;

    int binCount = 0;
    float graphRows = 0.0F;
    float barHeight = 0.0F;                        // of one count, in rows
    std::vector<std::atomic<std::int64_t>> counts; // by bin and word
};

OMBRELUNE_TOOL(BF_Analyzer, BF_ThreadedOperator, KEffectAnalyzer);

} // namespace ombrelune
