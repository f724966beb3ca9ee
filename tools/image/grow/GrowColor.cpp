// Grow Color: fills transparent parts from below with ever wider blurs of what is there, and gives the result
// a hard matte.

#include <atomic>
#include <cmath>
#include <memory>

#include "framework/Registration.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

constexpr int kMostRounds = 1024; // each blurs the picture

} // namespace

class KEffectGrowColor : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "GrwC", "Grow Color", "Fill transparent parts by extending the edge color");
    }

    KEffectGrowColor()
    {
        // clang-format off
        parameters.AddChapter("Grow Color");
        parameters.AddSliderInt(&iterations, 8,  "Iterations",  "Iter"_id, KF_SoftMax, 1, 16);
        parameters.AddSlider(&interrupt, 0.05F,  "Iteration Interrupt", "ItIn"_id, 0,  0.0, 1.0);
        parameters.AddCheckbox(&lock, true,      "Lock X/Y",            "ReLo"_id, KF_AffectInputs);
        parameters.AddSlider(&resolutionX, 1.5F, "Resolution",          "Reso"_id, KF_SoftMax, 0.5, 5.0);
        parameters.AddSlider(&resolutionY, 1.5F, "Resolution Y",        "ResY"_id, KF_SoftMax, 0.5, 5.0);
        parameters.AddSlider(&exponent,  2.0F,   "Iteration Exponent",  "Expo"_id, KF_SoftMax, 1.0, 5.0);
        parameters.AddSlider(&threshold, 0.005F, "Threshold",           "Thre"_id, 0, 0.001, 0.1);
        parameters.AddSlider(&softness,  0.005F, "Threshold Softness",  "ThSo"_id, 0, 0.001, 0.1);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "ReLo"_id) messages->Show("ResY"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        stopped = false;
        needed = true;
        work.reset();
        return KEffectThreads::Init(source);
    }

    // Each round blurs as a whole and fills by rows.
    int StepCount() override { return 2 * std::min(iterations, kMostRounds); }
    int ThreadCount(int step) override { return step % 2 == 0 ? 1 : height; }
    void F(int step, int chunk, KImage* source, KImage* destination) override
    {
        if (step == 0) CopyWithoutNegativeAlpha(source, destination);
        if (step % 2 == 0) Blur(step / 2, destination);
        else if (!stopped) FillRow(chunk, destination);
    }

    void Done(KImage** destination) override
    {
        work.reset();
        ForEachPixel<FltPixel>((*destination)->FImage(),
                               [full = threshold + softness, none = threshold, soft = softness](FltPixel& p) {
                                   if (p.alpha >= full) {
                                       for (int c : {kChannelBlue, kChannelGreen, kChannelRed})
                                           p.word[c] /= p.alpha;
                                       p.alpha = 1.0F;
                                   } else if (p.alpha < none) {
                                       for (float& word : p.word) word = 0.0F;
                                   } else {
                                       float const alpha = (p.alpha - none) / soft;
                                       // Nothing has no colour, whatever the threshold.
                                       bool const isNothing = p.alpha == 0.0F;
                                       for (int c : {kChannelBlue, kChannelGreen, kChannelRed})
                                           p.word[c] = isNothing ? 0.0F : p.word[c] * (alpha / p.alpha);
                                       p.alpha = alpha;
                                   }
                               });
        KEffectThreads::Done(destination);
    }

    int iterations;
    float interrupt; // a round that leaves no alpha below this is the last
    bool lock;
    float resolutionX, resolutionY; // of the first blur, in 720ths of the width
    float exponent;
    float threshold, softness;

private:
    /// Negative alpha would grow with each round, without end.
    static void CopyWithoutNegativeAlpha(KImage* source, KImage* destination)
    {
        destination->CopyFrom(source);
        ForEachPixel<FltPixel>(destination->FImage(), [](FltPixel& p) { p.alpha = std::max(p.alpha, 0.0F); });
    }

    void Blur(int round, KImage* destination)
    {
        stopped = !needed;
        if (stopped) return;
        float const growth = std::pow(exponent, static_cast<float>(round));
        float const x = resolutionX * growth, y = lock ? x : resolutionY * growth;
        work.reset(destination->BlurOf(x, y, 8, 0xF, 1.0, 1.0));
        needed = false;
        stopped = !work;
    }

    void FillRow(int y, KImage* destination)
    {
        bool isLacking = false;
        auto const row = [&](int count, auto in, auto blurred) {
            auto out = in;
            FltPixel d, b;
            for (int x = 0; x < count; ++x) {
                d >>= in;
                b >>= blurred;
                if (d.alpha < 1.0F && b.alpha > 0.0F) { // colour without alpha would only add up
                    float const w = 1.0F - d.alpha;
                    for (int c = 0; c < 4; ++c) d.word[c] += w * b.word[c];
                }
                if (d.alpha < interrupt) isLacking = true;
                out >>= d;
            }
        };
        VisitRow<FltPixel>(y, row, destination->FImage(), work->FImage());
        if (isLacking) needed.store(true, std::memory_order_relaxed);
    }

    bool stopped = false;
    std::atomic<bool> needed = true; // another round is; set by many rows at once
    std::unique_ptr<KImage> work;
};

OMBRELUNE_TOOL(BF_GrowColor, BF_ThreadedOperator, KEffectGrowColor);

} // namespace ombrelune
