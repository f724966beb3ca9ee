// Blobs: discs whose fields melt together where they are near.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "framework/Registration.h"
#include "image/KRandomStream.h"

namespace ombrelune {

class KEffectBlobs : public KEffectPosition {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Blb", "Blobs"); }
    static char const* Category() { return "Ombrelune\\Image Create"; }

    KEffectBlobs()
    {
        // clang-format off
        parameters.AddChapter("General");
        parameters.AddSliderSeed(&seed, "Random Seed", "SEED"_id, 0);
        parameters.AddRange (&levels, {0.0F, 1.0F}, "Levels Low", "Levels High", "LevL"_id, "LevH"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&gamma,     1.0F,   "Gamma",             "Gamm"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider(&blobiness, 0.002F, "General Blobiness", "Blob"_id, KF_SoftMax, 0.0, 0.01);
        parameters.AddButtons(&type, kProduct, "Type", "BLST"_id, KF_AffectInputs, {"Type 1", "Type 2"});
        parameters.AddSlider(&radius,        0.2F, "General Radius",        "Radi"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider(&minimumRadius, 0.1F, "Minimum Random Radius", "RaMi"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider(&maximumRadius, 0.3F, "Maximum Random Radius", "RaMa"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddColor (&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Color", "ColR"_id, 0);

        parameters.AddChapter("Blobs");
        parameters.AddSliderInt(&count, 5, "Count", "BlCo"_id, KF_AffectInputs, 1, kBlobs);
        for (int i = 0; i < kBlobs; ++i) {
            unsigned const hidden = i < 5 ? 0U : unsigned{KF_Hidden};
            auto const n = static_cast<std::uint32_t>(i);
            double const angle = 2.0 * std::numbers::pi * i / kBlobs;
            KVector2 const place(static_cast<float>(0.5 + 0.4 * std::cos(angle)), static_cast<float>(0.5 + 0.4 * std::sin(angle)));
            Blob& blob = blobs[i];
            KString label;
            parameters.GroupStart(label.Numbered("Settings", i + 1, true), "BlG0"_id + n, hidden);
            parameters.AddPoint  (&blob.place, place,    label.Numbered("Blob Position", i + 1, true),  "BlP0"_id + n, KF_Preview | hidden, KPoint_Aspect);
            parameters.AddButtons(&blob.sizeType, 0,     label.Numbered("Blob Size Type", i + 1, true), "Bls0"_id + n, KF_AffectInputs | hidden, {"General", "Individual", "Random"});
            parameters.AddSlider (&blob.size, 0.1F,      label.Numbered("Blob Size", i + 1, true),      "BlS0"_id + n, KF_SoftMax | hidden, 0.0, 1.0);
            parameters.AddSlider (&blob.blobiness, 1.0F, label.Numbered("Blob Blobiness", i + 1, true), "BlB0"_id + n, KF_SoftMax | hidden, 0.0, 2.0);
            parameters.GroupEnd();
        }
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id != "BlCo"_id) return messages;
        for (std::uint32_t i = 0; i < kBlobs; ++i)
            // The last one is kept for a tool that may ask for it; no input has it.
            for (std::uint32_t first : {"BlG0"_id, "BlP0"_id, "Bls0"_id, "BlS0"_id, "BlB0"_id, "Blb0"_id})
                messages->Show(first + i, static_cast<int>(i) < value.intValue);
        return messages;
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source; }

    bool Init(KImage* source) override
    {
        PixelFromColor(solid, color);
        KRandomStream random(static_cast<unsigned>(seed));
        for (int i = 0; i < count; ++i) {
            Blob const& blob = blobs[i];
            radii[i] = radius;
            if (blob.sizeType == kIndividual) radii[i] = blob.size;
            if (blob.sizeType == kRandom)
                radii[i] = minimumRadius + random.Random(1.0F) * (maximumRadius - minimumRadius);
        }
        return KEffectPosition::Init(source);
    }

    using KEffectPosition::F; // floats go through the integer form
    Pixel F(Pixel& source, KVector2& position) override
    {
        float v = type == kProduct ? 1.0F - Product(position) / blobiness
                                   : 1.0F - Lack(position) / (kLack * blobiness);
        v = std::pow(v, gamma);
        v = (v - levels.low) / (levels.high - levels.low);
        v = std::min(v > 0.0F ? v : 0.0F, 1.0F); // 0 also for what is not a number
        Pixel result = source;
        for (int c = 0; c < 4; ++c)
            result.word[c] =
                static_cast<std::uint32_t>(static_cast<int>(v * static_cast<float>(solid.word[c])));
        return result;
    }

    static constexpr int kBlobs = 64;
    struct Blob {
        KVector2 place;
        int sizeType;
        float size, blobiness;
    };

    int seed;
    KRange levels;
    float gamma, blobiness;
    int type;
    float radius, minimumRadius, maximumRadius; // widths of the picture
    KColor color;
    int count;
    Blob blobs[kBlobs];

private:
    enum Type { kProduct, kSum };
    enum SizeType { kGeneral, kIndividual, kRandom };
    static constexpr float kLack = 50.0F; // the softness of sums against that of products

    /// Of the distances to all edges; 0 within any blob.
    float Product(KVector2 const& place) const
    {
        float product = 1.0F;
        for (int i = 0; i < count; ++i) {
            float const edge = place.Distance(blobs[i].place) - radii[i];
            product *= edge >= 0.0F ? std::pow(edge, blobs[i].blobiness) : 0.0F;
        }
        return product;
    }

    /// What the fields lack to 1 in sum. A field is 1 at the edge of its blob and falls with the square of
    /// the distance at a blobiness of 1.
    float Lack(KVector2 const& place) const
    {
        float sum = 0.0F;
        for (int i = 0; i < count; ++i)
            sum += std::pow(radii[i] / std::max(place.Distance(blobs[i].place), 1e-6F),
                            2.0F * blobs[i].blobiness);
        return std::max(0.0F, 1.0F - sum);
    }

    float radii[kBlobs] = {};
    Pixel solid;
};

OMBRELUNE_TOOL(BF_Blobs, BF_SourceOperator, KEffectBlobs);

} // namespace ombrelune
