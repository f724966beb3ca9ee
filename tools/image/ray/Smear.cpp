// Smear: a one-sided blur along rows or columns, its weights by a curve.

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "framework/Registration.h"
#include "image/ColorVectors.h"
#include "image/KLookUpTable.h"

namespace ombrelune {

class KEffectSmear : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Sme", "Smear", "Smears the image horizontally or vertically");
    }

    KEffectSmear()
    {
        // clang-format off
        parameters.AddChapter("Smear");
        parameters.AddButtons(&direction, 0, "Direction", "SmDi"_id, 0, {"Horizontal", "Vertical"});
        parameters.AddSlider (&length,    0.1F, "Length",    "SmLe"_id, KF_SoftMin | KF_SoftMax, -0.5, 0.5);
        parameters.AddSlider (&normalize, 1.0F, "Normalize", "SmNo"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddChapter("Shape");
        parameters.AddCurve  (&shape, "Shape", "Shap"_id, 0, {0.0F, 0.5F, 1.0F, 0.0F});
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source) || length == 0.0F) return false;
        float const pixels = std::min(std::abs(length) * static_cast<float>(width), kLongest);
        weights.resize(static_cast<std::size_t>(std::ceil(pixels + 1.0F)));
        int const curve = shape ? shape->GetCount() : 0;
        double const step = (curve - 1) / static_cast<double>(weights.size());
        for (std::size_t i = 0; i < weights.size(); ++i)
            weights[i] =
                curve == 0
                    ? pixels + 1.0F - static_cast<float>(i)
                    : shape->GetValueNormalised(static_cast<int>(curve - 1 - static_cast<double>(i) * step));
        double const sum = std::accumulate(weights.begin(), weights.end(), 0.0);
        for (float& weight : weights)
            weight = sum > 0.0 ? static_cast<float>(weight * (normalize / sum)) : 0.0F;
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return Smeared<Pixel>(x, y, source); }
    FltPixel FFlt(int x, int y, KImage* source) override { return Smeared<FltPixel>(x, y, source); }

    void Done(KImage** destination) override
    {
        weights = {};
        KEffectPixel::Done(destination);
    }

    int direction; // 0 horizontal, 1 vertical
    float length;  // widths of the picture; below 0 it reads to the right or upward
    float normalize;
    KLookUpTable* shape;

private:
    static constexpr float kLongest = 131072.0F; // pixels, as far as lines reach

    template <class Record> Record Smeared(int x, int y, KImage const* source) const
    {
        int const place = direction == 0 ? x : y, size = direction == 0 ? width : height;
        int const step = length > 0.0F ? -1 : 1;
        int const count = std::min(static_cast<int>(weights.size()), step < 0 ? place + 1 : size - place);
        int const stepX = direction == 0 ? step : 0, stepY = direction == 0 ? 0 : step;
        Float4 sum{};
        Record result, pixel;
        source->GetPixel(x, y, result);
        for (int i = 0; i < count; ++i) {
            source->GetPixel(x + i * stepX, y + i * stepY, pixel);
            sum += weights[static_cast<std::size_t>(i)] * PartsOf(pixel);
        }
        Put(sum, result);
        return result;
    }

    static Float4 PartsOf(Pixel const& p)
    {
        return __builtin_convertvector(reinterpret_cast<Int4>(LoadUInt4(p.word)), Float4);
    }
    static Float4 PartsOf(FltPixel const& p) { return LoadFloat4(p.word); }
    static void Put(Float4 const& sum, Pixel& p)
    {
        for (int c = 0; c < 4; ++c) p.word[c] = LimitTo16(TruncateToInt(sum[c]));
    }
    static void Put(Float4 const& sum, FltPixel& p) { Store(sum, p.word); }

    std::vector<float> weights; // by steps from the pixel
};

OMBRELUNE_TOOL(BF_Smear, BF_ThreadedOperator, KEffectSmear);

} // namespace ombrelune
