// Flur: smears the picture outward from a centre, each square ring taking over a part of the one before it.

#include <cmath>

#include "framework/Registration.h"
#include "tools/image/ray/RingWalk.h"

namespace ombrelune {

class KEffectFlur : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Flr", "Flur"); }

    KEffectFlur()
    {
        // clang-format off
        parameters.AddChapter("Flur");
        parameters.AddPoint  (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Normal);
        parameters.AddSlider (&length, 0.2F, "Length", "Leng"_id, 0, 0.0, 1.0);
        parameters.AddButtons(&shape, 0, "Shape", "Shap"_id, KF_AffectInputs, {"Square", "Round", "Axial"});
        parameters.AddSlider (&exponent, 2.0F, "Exponent", "Expo"_id, KF_SoftMax | KF_Hidden, 0.0, 100.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Shap"_id) messages->Show("Expo"_id, value.intValue == 2);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        double const q = std::pow(1.0 - length, 10.0);
        falloff.isSquare = shape == 0;
        falloff.straight = static_cast<float>(1.0 - q * (720.0 / width));
        falloff.exponent = shape == 1 ? static_cast<float>(q / 1.5) : 1.0F / exponent;
        return true;
    }

    /// In one go, since each ring needs the one before; in 16 bits at any depth, as the sums are limited.
    void F(int, int, KImage* source, KImage* destination) override
    {
        destination->CopyFrom(source);
        auto const pixels = [](float part, int size) {
            return TruncateToInt(part * static_cast<float>(size - 1));
        };
        WalkRings(width, height, pixels(center.x, width), pixels(center.y, height),
                  [&](int x, int y, RingCrossing const& ring) {
                      Pixel pixel, at, next;
                      source->GetPixel(x, y, pixel);
                      destination->GetPixelD(ring.x, ring.y, at);
                      destination->GetPixelD(ring.nextX, ring.nextY, next);
                      float const w = falloff.At(ring.shift);
                      for (int c = 0; c < 4; ++c)
                          pixel.word[c] = LimitTo16(TruncateToInt(
                              (1.0F - w) * static_cast<float>(pixel.word[c]) + w * ring.Mix(at, next, c)));
                      destination->SetPixel(x, y, pixel);
                  });
    }

    KVector2 center; // parts of the picture
    float length;
    int shape; // 0 square, 1 round, 2 axial
    float exponent;

private:
    RingFalloff falloff{};
};

OMBRELUNE_TOOL(BF_Flur, BF_ThreadedOperator, KEffectFlur);

} // namespace ombrelune
