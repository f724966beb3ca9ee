// Beams: light rays out of the picture or its edges, in parallel or from a centre.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/KColor32.h"
#include "image/KLookUpTable.h"
#include "image/KOffsetsTable.h"
#include "image/Saturate.h"
#include "tools/image/ray/EdgeLight.h"

namespace ombrelune {

class KEffectBeams : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Bms", "Beams"); }

    KEffectBeams()
    {
        // clang-format off
        parameters.AddChapter("Beams");
        parameters.AddSlider (&blend,      1.0F,  "Blend Original", "ExBl"_id, 0, 0.0, 1.0);
        parameters.AddSlider (&brightness, 0.05F, "Brightness",     "ExGa"_id, KF_SoftMax, 0.0, 0.1);
        parameters.AddSlider (&edges,      1.0F,  "Full                                                    edges", "ExEd"_id, 0, 0.0, 1.0);
        parameters.AddButtons(&perspective, kRadial, "Perspective Type", "ExPe"_id, KF_AffectInputs, {"Parallel", "Radial"});
        parameters.AddAngle  (&angle, 45.0F, "Angle", "ExAn"_id, 0, KAngle_Radians);
        parameters.AddPoint  (&center, {0.5F, 0.5F}, "Center", "ExCe"_id, KF_Preview, KPoint_Aspect);
        parameters.AddSlider (&length,  0.5F,  "Length",  "ExLe"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider (&adapt,   1.0F,  "Adapt Length To Perspective", "ExLA"_id, 0, 0.0, 1.0);
        parameters.AddSlider (&quality, 10.0F, "Quality", "ExQu"_id, KF_SoftMax, 1.0, 50.0);
        parameters.AddButtons(&colorType, 0, "Color Type", "ExCT"_id, KF_AffectInputs, {"Solid", "Original"});
        parameters.AddColor  (&color, {0.0F, 1.0F, 0.5F, 1.0F}, "Color", "ExCR"_id, 0);
        parameters.AddChapter("Shape");
        parameters.AddCurve  (&shape, "Shape", "Shap"_id, 0, {0.0F, 0.5F, 1.0F, 0.0F});
        parameters.AddMatte  (&mask, "Beams Mask", "BMat"_id, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "ExCT"_id)
            for (std::uint32_t each : {"ExCR"_id, "ExCG"_id, "ExCB"_id, "ExCA"_id})
                messages->Show(each, value.intValue == 0);
        if (id == "ExPe"_id) {
            messages->Show("ExAn"_id, value.intValue == 0);
            for (std::uint32_t each : {"ExCe"_id, "ExLA"_id, "ExQu"_id})
                messages->Show(each, value.intValue > 0);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        auto const light = MakeEdgeLight(*source, edges, mask);
        if (!light) return false;
        region = light->BoundingBox();
        if (region.IsEmpty()) return false;
        region.Expand(1.0, 1.0);
        region.Scale(1.0F / static_cast<float>(width), 1.0F / (static_cast<float>(height) * frameAspect));

        TakeLight(*light);
        solid = color;
        blend16 = TruncateToInt(blend * 65535.0F);
        SetWeights();
        float farthest = 0.0F;
        for (float const x : {0.0F, 1.0F})
            for (float const y : {0.0F, 1.0F / frameAspect})
                farthest = std::max(farthest, center.Distance({x, y}));
        reach = adapt * farthest + (1.0F - adapt);
        stopsAtCenter = perspective == kRadial && adapt != 1.0F;
        SetLines();
        return true;
    }

    Pixel F(int x, int y, KImage* source) override
    {
        Pixel pixel;
        source->GetPixel(x, y, pixel);
        KVector2 const p = Place(x, y);
        float towards = angle, far = length, ratio = 1.0F;
        if (perspective == kRadial) {
            float distance;
            towards = -center.AngleLength(p, distance);
            far = adapt * distance + (1.0F - adapt);
            ratio = far / reach;
        }
        if (!region.LineCuts(p, {p.x - far * std::cos(towards), p.y + far * std::sin(towards)})) return pixel;

        int signX = 1, signY = 1;
        KOffsets const& line =
            perspective == kRadial ? *radial->GetOffsets(towards, linePixels, signX, signY) : *parallel;
        Sums const sums = Gather(x, y, line, signX, signY, ratio);
        Shade(pixel, sums);
        return pixel;
    }

    void Done(KImage** destination) override
    {
        alphas = {};
        lights = {};
        parallel.reset();
        radial.reset();
        weights = {};
        KEffectPixel::Done(destination);
    }

    float blend, brightness;
    float edges;     // 0 the whole picture, 1 its edges alone
    int perspective; // 0 parallel, 1 radial
    float angle;     // radians
    KVector2 center; // frame units
    float length;    // widths of the picture, radial in parts of the largest distance
    float adapt;     // how much shorter rays are near the centre
    float quality;   // directions for each degree
    int colorType;   // 0 solid, 1 original
    KColor color;
    KLookUpTable* shape;
    KImage* mask;

private:
    static constexpr int kRadial = 1;
    static constexpr int kWeightCount = 65536;

    struct Sums {
        std::int64_t word[4] = {}; // in the order of a pixel's words; of a solid colour alpha alone
    };

    /// Rays read the light often and all over the picture: close together, and the colours only when wanted.
    void TakeLight(KImage const& light)
    {
        auto const pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        alphas.resize(pixels);
        lights.resize(colorType == 0 ? 0 : pixels);
        ParallelFor(height, [&](int y) {
            PixPtr in(light.FImage(), 0, y);
            Pixel pixel;
            for (std::size_t i = Index(0, y), end = Index(width, y); i < end; ++i) {
                pixel >>= in;
                alphas[i] = static_cast<std::uint16_t>(pixel.alpha);
                for (int c = 0; colorType != 0 && c < 4; ++c)
                    lights[i][static_cast<std::size_t>(c)] = static_cast<std::uint16_t>(pixel.word[c]);
            }
        });
    }
    std::size_t Index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }

    KVector2 Place(int x, int y) const
    {
        return {static_cast<float>(x) / static_cast<float>(width),
                static_cast<float>(y) / static_cast<float>(height) / frameAspect};
    }

    void SetWeights()
    {
        KLookUpTable const identity;
        KLookUpTable const& curve = shape && shape->GetCount() == kWeightCount ? *shape : identity;
        weights.resize(kWeightCount);
        for (int i = 0; i < kWeightCount; ++i)
            weights[static_cast<std::size_t>(i)] = curve.GetValueNormalised(i) * brightness;
    }

    /// Rays leave the picture after its diagonal; what is longer changes their falloff alone, and lines must
    /// fit into memory.
    void SetLines()
    {
        float const longest = 16.0F * static_cast<float>(width + height);
        auto const limited = [=](float pixels) { return std::min(longest, pixels); };
        if (perspective != kRadial) {
            parallel.emplace(angle, limited(length * static_cast<float>(width)), pixelAspect, true,
                             data.quick);
            return;
        }
        linePixels = limited(reach * static_cast<float>(width) * length);
        constexpr float kMostEntries = 8388608.0F;
        // More directions than pixels along the border make no difference.
        float const most =
            std::min(4.0F * static_cast<float>(width + height), kMostEntries / (linePixels + 1.0F));
        float const count = data.quick ? 90.0F : quality * 90.0F;
        radial.emplace(0, SaturatedInt(std::min(count, std::max(most, 90.0F))), pixelAspect, true,
                       data.quick);
    }

    /// What the light holds along a line, up to the part `ratio` of its length.
    Sums Gather(int x, int y, KOffsets const& line, int signX, int signY, float ratio) const
    {
        Sums sums;
        int const limit = std::min(65535, TruncateToInt(ratio * 65535.0F));
        float const stretch = 1.0F / ratio;
        KVector2 const fromCenter = Place(x, y) - center;
        // A line moves by a pixel along its longer axis, so one that is too short to pass need not look.
        float const farthest = std::max(std::abs(fromCenter.x) * static_cast<float>(width),
                                        std::abs(fromCenter.y) * frameAspect * static_cast<float>(height));
        bool const mayPass = stopsAtCenter && farthest <= static_cast<float>(line.entries.size()) + 2.0F;
        for (std::size_t n = 1; n < line.entries.size(); ++n) {
            KOffset const& entry = line.entries[n];
            if (entry.position >= limit) break;
            int const px = x + signX * entry.x, py = y + signY * entry.y;
            if (px < 0 || px >= width || py < 0 || py >= height) break;
            std::size_t const at = Index(px, py);
            if (alphas[at] != 0) {
                int const i =
                    std::max(0, 65535 - TruncateToInt(stretch * static_cast<float>(entry.position)));
                // The limit keeps the sums of the longest line within 64 bits.
                auto const w = static_cast<std::int64_t>(std::min(
                    weights[static_cast<std::size_t>(i)] * static_cast<float>(entry.weight), 268435456.0F));
                if (colorType == 0) sums.word[kChannelAlpha] += w * alphas[at];
                else
                    for (std::size_t c = 0; c < 4; ++c) sums.word[c] += w * lights[at][c];
            }
            if (mayPass && (Place(px, py) - center) * fromCenter < 0.0F) break;
        }
        return sums;
    }

    void Shade(Pixel& pixel, Sums const& sums) const
    {
        std::int64_t const alpha = sums.word[kChannelAlpha];
        if (alpha == 0) {
            for (int c = 0; c < 4; ++c)
                pixel.word[c] = ScaledProduct(pixel.word[c], static_cast<std::uint32_t>(blend16));
            return;
        }
        int const colors[] = {solid.blue, solid.green, solid.red, solid.alpha};
        std::uint32_t rays[4];
        for (int c = 0; c < 4; ++c) {
            std::int64_t const ray = colorType == 0 ? ((alpha >> 16) * colors[c]) >> 16 : sums.word[c] >> 16;
            rays[c] = static_cast<std::uint32_t>(std::min<std::int64_t>(ray, 65535));
        }
        auto const keep =
            static_cast<std::uint32_t>(blend * static_cast<float>(65535U - rays[kChannelAlpha]));
        for (int c = 0; c < 4; ++c)
            pixel.word[c] = std::min(ScaledProduct(pixel.word[c], keep) + rays[c], 65535U);
    }

    std::vector<std::uint16_t> alphas;                // of what rays start from
    std::vector<std::array<std::uint16_t, 4>> lights; // and its words
    KImageRegion region;                              // of the light, frame units
    std::optional<KOffsets> parallel;
    std::optional<KOffsetsTable> radial;
    std::vector<float> weights; // by what is left of the way, 0 to 65535
    KColor32 solid;
    int blend16 = 0;
    float reach = 1.0F;      // of the longest ray
    float linePixels = 1.0F; // of the lines of the table
    bool stopsAtCenter = false;
};

OMBRELUNE_TOOL(BF_Beams, BF_ThreadedOperator, KEffectBeams);

} // namespace ombrelune
