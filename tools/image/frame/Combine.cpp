// Combine: a weighted mix of one picture merged over another, under it, and averaged with it.

#include <algorithm>
#include <cmath>
#include <memory>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectCombine : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Com", "Combine"); }

    KEffectCombine()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Combine");
        parameters.AddSlider(&additive, 1.0F, "Substractive/Additive", "Addi"_id, soft, 0.0, 1.0);
        parameters.AddButtons(&sumMode, 0, "Sum Of Fractions", "SumF"_id, 0, {"Signed", "Absolute"});
        parameters.AddSlider(&merge,      1.0F, "Fraction Merge",       "FMrg"_id, soft, 0.0, 1.0);
        parameters.AddSlider(&mergeUnder, 0.0F, "Fraction Merge Under", "FMrU"_id, soft, 0.0, 1.0);
        parameters.AddSlider(&average,    0.0F, "Fraction Average",     "FAvr"_id, soft, 0.0, 1.0);
        parameters.AddImage(&image, "Combine image", 2, KF_MainInput);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source) || !image) return false;
        // Nobody can tell larger ones from these, and their products stay finite.
        for (float* fraction : {&merge, &mergeUnder, &average})
            *fraction = std::clamp(*fraction, -1e12F, 1e12F);
        sum = sumMode == 0 ? merge + mergeUnder + average
                           : std::abs(merge) + std::abs(mergeUnder) + std::abs(average);
        if (sum == 0.0F) return false;
        other.reset(image->ResizeOf(width, height));
        return other != nullptr;
    }

    using KEffectPixel::F; // integers go through the float form
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel a, b;
        source->GetPixel(x, y, a);
        other->GetPixel(x, y, b);
        float const na = 1.0F - a.alpha, nb = 1.0F - b.alpha;
        float const cover = 1.0F - na * nb;
        float const both = a.alpha + b.alpha;
        float const keep = additive < 1.0F ? (1.0F - additive) * b.alpha + additive : 1.0F;
        float const mean = average != 0.0F && both > 0.0F ? average * cover : 0.0F;
        float const share = mean != 0.0F ? mean / both : 0.0F;
        auto const mixed = [&](float ca, float cb) {
            cb *= keep;
            // What has no part in it leaves no trace, even of what is not finite.
            float color = merge != 0.0F ? merge * (ca * nb + cb) : 0.0F;
            if (mergeUnder != 0.0F) color += mergeUnder * (cb * na + ca);
            if (share != 0.0F) color += share * (ca + cb);
            return color / sum;
        };
        FltPixel result = a;
        result.red = mixed(a.red, b.red);
        result.green = mixed(a.green, b.green);
        result.blue = mixed(a.blue, b.blue);
        result.alpha = ((merge + mergeUnder) * cover + mean) / sum;
        return result;
    }

    void Done(KImage** destination) override
    {
        other.reset();
        KEffectPixel::Done(destination);
    }

    float additive; // below 1 the second picture's colour counts as not yet multiplied by its alpha
    int sumMode;    // 0 signed, 1 absolute
    float merge, mergeUnder, average;
    KImage* image = nullptr;

private:
    std::unique_ptr<KImage> other; // at the source's size
    float sum = 1.0F;
};

OMBRELUNE_TOOL(BF_Combine, BF_ThreadedOperator, KEffectCombine);

} // namespace ombrelune
