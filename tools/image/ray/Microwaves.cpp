// Microwaves: light that gathers brightness outward from a centre, ring by ring, laid over the picture.

#include <cmath>
#include <memory>

#include "framework/Registration.h"
#include "image/Saturate.h"
#include "tools/image/ray/EdgeLight.h"
#include "tools/image/ray/RingWalk.h"

namespace ombrelune {

class KEffectMicrowaves : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Mic", "Microwaves"); }

    KEffectMicrowaves()
    {
        // clang-format off
        parameters.AddChapter("Microwave");
        parameters.AddPoint  (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Normal);
        parameters.AddSlider (&blend,      1.0F,  "Blend original", "ExBl"_id, 0, 0.0, 1.0);
        parameters.AddSlider (&brightness, 0.05F, "Brightness",     "ExGa"_id, KF_SoftMax, 0.0, 0.1);
        parameters.AddSlider (&edges,      0.0F,  "Full                                                    edges", "ExEd"_id, 0, 0.0, 1.0);
        parameters.AddSlider (&length,     0.5F,  "Length",         "Leng"_id, 0, 0.0, 1.0);
        parameters.AddButtons(&shape, 0, "Shape", "Shap"_id, KF_AffectInputs, {"Square", "Round", "Axial"});
        parameters.AddSlider (&exponent, 2.0F, "Exponent", "Expo"_id, KF_SoftMax | KF_Hidden, 0.0, 100.0);
        parameters.AddMatte  (&mask, "Microwaves Mask", "MMat"_id, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Shap"_id) messages->Show("Expo"_id, value.intValue == 2);
        return messages;
    }

    int StepCount() override { return 2; }
    int ThreadCount(int step) override { return step == 0 ? 1 : height; }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        double const q = std::pow(1.0 - length, 10.0);
        falloff.isSquare = shape == 0;
        falloff.straight = static_cast<float>(std::pow(1.0 - q, 720.0 / width));
        falloff.exponent = shape == 1 ? static_cast<float>(q / 1.5) : 1.0F / exponent;
        light = MakeEdgeLight(*source, edges, mask);
        return light != nullptr;
    }

    void F(int step, int y, KImage* source, KImage* destination) override
    {
        bool const isFloat = data.depth == 2;
        if (step == 0) isFloat ? Shine<FltPixel>(source, destination) : Shine<Pixel>(source, destination);
        else if (blend > 0.0F)
            isFloat ? LayOver<FltPixel>(y, source, destination) : LayOver<Pixel>(y, source, destination);
    }

    void Done(KImage** destination) override
    {
        light.reset();
        KEffectThreads::Done(destination);
    }

    KVector2 center; // parts of the picture
    float blend, brightness;
    float edges; // 0 the whole picture, 1 its edges alone
    float length;
    int shape; // 0 square, 1 round, 2 axial
    float exponent;
    KImage* mask;

private:
    /// The rays alone. In one go, since each ring needs the one before.
    template <class Record> void Shine(KImage const* source, KImage* destination) const
    {
        destination->Clear();
        int const cx = TruncateToInt(center.x * static_cast<float>(width));
        int const cy = TruncateToInt(center.y * static_cast<float>(height));
        auto const shine = [&](int x, int y, auto const& gathered) {
            Record pixel, own;
            source->GetPixel(x, y, pixel); // for its auxiliary channels
            light->GetPixel(x, y, own);
            for (int c = 0; c < 4; ++c)
                Put(static_cast<double>(brightness) * own.word[c] + gathered(c), pixel.word[c]);
            destination->SetPixel(x, y, pixel);
        };
        if (cx >= 0 && cx < width && cy >= 0 && cy < height) shine(cx, cy, [](int) { return 0.0; });
        WalkRings(width, height, cx, cy, [&](int x, int y, RingCrossing const& ring) {
            Record at, next;
            destination->GetPixelB(ring.x, ring.y, at);
            destination->GetPixelB(ring.nextX, ring.nextY, next);
            double const w = falloff.At(ring.shift);
            shine(x, y, [&](int c) { return w * ring.Mix(at, next, c); });
        });
    }

    template <class Record> void LayOver(int y, KImage const* source, KImage* destination) const
    {
        for (int x = 0; x < width; ++x) {
            Record under, rays;
            source->GetPixel(x, y, under);
            destination->GetPixel(x, y, rays);
            LayOver(under, rays);
            destination->SetPixel(x, y, rays);
        }
    }

    void LayOver(Pixel const& under, Pixel& rays) const
    {
        std::uint32_t const keep = 65535U - rays.alpha;
        for (int c = 0; c < 4; ++c) {
            auto const word = static_cast<std::uint32_t>(blend * static_cast<float>(under.word[c]));
            rays.word[c] = std::min(ScaledProduct(word, keep) + rays.word[c], 65535U);
        }
    }
    void LayOver(FltPixel const& under, FltPixel& rays) const
    {
        double const keep = blend * (1.0 - rays.alpha);
        for (int c = 0; c < 4; ++c) Put(keep * under.word[c] + rays.word[c], rays.word[c]);
    }

    static void Put(double value, std::uint32_t& word) { word = LimitTo16(TruncateToInt(value)); }
    /// A number that is none counts as 0, or one would fill all that lies behind it.
    static void Put(double value, float& word) { word = std::isnan(value) ? 0.0F : SaturatedFloat(value); }

    std::unique_ptr<KImage> light;
    RingFalloff falloff{};
};

OMBRELUNE_TOOL(BF_Microwaves, BF_ThreadedOperator, KEffectMicrowaves);

} // namespace ombrelune
