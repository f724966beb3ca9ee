// Merge and Bone: lays a foreground into a scene with its background, and lets the light of each wrap round
// the other.

#include <algorithm>
#include <memory>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "tools/image/scene/SceneView.h"

namespace ombrelune {

class KEffectMergeAndBone : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "M&B", "Merge and Bone"); }

    KEffectMergeAndBone()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax, softMax = KF_SoftMax, affects = KF_AffectInputs;
        unsigned const locked = softMax | KF_Hidden;
        // clang-format off
        parameters.AddChapter("Position");
        parameters.AddImage   (&picture, "Foreground", 2, KF_MainInput);
        parameters.AddPoint   (&position, {0.5F, 0.5F}, "Position", "FoPo"_id, KF_Preview, KPoint_CenteredAspect);
        parameters.AddScrew   (&positionZ, 0.0F, "Position Z", "FoPZ"_id, soft, -1.0, 1.0);
        parameters.AddButtons (&rotationOrder, 0, "Rotation Order", "FoRO"_id, 0, {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"});
        parameters.AddAngle   (&angleX, 0.0F, "Angle X", "FoAX"_id, 0, KAngle_Radians);
        parameters.AddAngle   (&angleY, 0.0F, "Angle Y", "FoAY"_id, 0, KAngle_Radians);
        parameters.AddAngle   (&angleZ, 0.0F, "Angle Z", "FoAZ"_id, 0, KAngle_Radians);
        parameters.AddCheckbox(&lock, true,  "Lock Size", "FoSL"_id, affects);
        parameters.AddSlider  (&sizeX, 1.0F, "Size X",    "FoSX"_id, softMax, 0.0, 5.0);
        parameters.AddSlider  (&sizeY, 1.0F, "Size Y",    "FoSY"_id, locked,  0.0, 5.0);

        parameters.AddChapter("Wrap");
        parameters.AddSlider   (&front.amount, 0.0F, "Wrap Foreground Over Background", "WFor"_id, 0, 0.0, 1.0);
        parameters.AddCheckbox (&front.lock, true,   "Lock Foreground Size",        "WFSL"_id, affects);
        parameters.AddSlider   (&front.x, 5.0F,      "Wrap Foreground Size X",      "WFSX"_id, softMax, 0.0, 30.0);
        parameters.AddSlider   (&front.y, 5.0F,      "Wrap Foreground Size Y",      "WFSY"_id, locked, 0.0, 30.0);
        parameters.AddSliderInt(&front.steps, 1,     "Wrap Foreground Steps",       "WFSt"_id, softMax, 1, 5);
        parameters.AddSlider   (&front.spread, 1.0F, "Wrap Foreground Size Spread", "WFSG"_id, softMax, 1e-05, 5.0);
        parameters.AddSlider   (&back.amount, 0.0F,  "Wrap Background Over Foreground", "WBac"_id, 0, 0.0, 1.0);
        parameters.AddCheckbox (&back.lock, true,    "Lock Background Size",        "WBSL"_id, affects);
        parameters.AddSlider   (&back.x, 5.0F,       "Wrap Background Size X",      "WBSX"_id, softMax, 0.0, 30.0);
        parameters.AddSlider   (&back.y, 5.0F,       "Wrap Background Size Y",      "WBSY"_id, locked, 0.0, 30.0);
        parameters.AddSliderInt(&back.steps, 1,      "Wrap Background Steps",       "WBSt"_id, softMax, 1, 5);
        parameters.AddSlider   (&back.spread, 1.0F,  "Wrap Background Size Spread", "WBSG"_id, softMax, 1e-05, 5.0);
        parameters.AddChapter("Scene");
        // clang-format on
        scene.ParametersAdd(parameters);
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "FoSL"_id) messages->Show("FoSY"_id, value.intValue == 0);
        if (id == "WFSL"_id) messages->Show("WFSY"_id, value.intValue == 0);
        if (id == "WBSL"_id) messages->Show("WBSY"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        background = Rendered(*source, *source, KMatrix4());
        if (!background) return false;
        if (!picture) return true;
        KMatrix4 const place = KMatrix4()
                                   .Move(position.x, position.y, positionZ)
                                   .Rotate(angleX, angleY, angleZ, rotationOrder)
                                   .Scale(sizeX, lock ? sizeX : sizeY, 1.0F);
        foreground = Rendered(*picture, *source, place);
        if (foreground && front.amount > 0.0F) frontLight = Spread(*foreground, front);
        if (foreground && back.amount > 0.0F) {
            backLight = Spread(*background, back);
            matte = Spread(*foreground, back);
        }
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* /*source*/) override
    {
        FltPixel result, over, light, soft;
        background->GetPixel(x, y, result);
        if (!foreground) return result;
        foreground->GetPixel(x, y, over);
        if (frontLight) {
            frontLight->GetPixel(x, y, light);
            for (float& word : light.word) word *= front.amount;
            LayOver(result, light);
        }
        if (backLight) {
            backLight->GetPixel(x, y, light);
            matte->GetPixel(x, y, soft);
            // Within the foreground, by how near its edge is.
            float const share = back.amount * (1.0F - std::clamp(soft.alpha, 0.0F, 1.0F));
            if (share > 0.0F)
                for (int c = 0; c < 3; ++c)
                    over.word[c] += share * (light.word[c] * over.alpha - over.word[c]);
        }
        LayOver(result, over);
        return result;
    }

    void Done(KImage** destination) override
    {
        for (auto* each : {&background, &foreground, &frontLight, &backLight, &matte}) each->reset();
        KEffectPixel::Done(destination);
    }

    struct Wrap {
        float amount;
        bool lock;
        float x, y;   // 720ths of the width
        int steps;    // blurs that are averaged
        float spread; // each is so much as large as the one before
    };

    KImage* picture = nullptr;
    KVector2 position; // of its middle, from the frame's
    float positionZ;
    int rotationOrder;
    float angleX, angleY, angleZ;
    bool lock;
    float sizeX, sizeY; // 1 is as wide as the frame
    Wrap front, back;
    SceneView scene;

private:
    using Owned = std::unique_ptr<KImage>;

    /// As the frame shows it; null when memory is out.
    Owned Rendered(KImage& from, KImage const& like, KMatrix4 const& place) const
    {
        SceneFrame const frame(like);
        SeenPlane const plane(from, PictureFit::ToWidth(from), scene.Seen(place), frame, scene.clipBehind);
        Owned made(like.LikeOf(-1, -1, -1.0F, -1.0F));
        if (made)
            ParallelFor(frame.height, [&](int y) {
                for (int x = 0; x < frame.width; ++x) made->SetPixel(x, y, plane.At(x, y, kEdgeBlack));
            });
        return made;
    }

    static Owned Spread(KImage const& from, Wrap const& wrap)
    {
        int const steps = std::clamp(wrap.steps, 1, 16);
        Owned sum;
        double size = 1.0;
        for (int i = 0; i < steps; ++i, size *= wrap.spread) {
            double const x = std::min(wrap.x * size, kWidest);
            double const y = std::min((wrap.lock ? wrap.x : wrap.y) * size, kWidest);
            Owned blurred(from.BlurOf(x, y, kBlurGaussian, 0xF, 1.0, 1.0));
            if (!blurred) return sum;
            // The mean so far and the new one.
            if (sum) sum->BlendWith(blurred.get(), 1.0F / static_cast<float>(i + 1));
            else sum = std::move(blurred);
        }
        return sum;
    }

    static constexpr double kWidest = 720.0; // as wide as the frame

    Owned background, foreground;
    Owned frontLight, backLight, matte; // blurred
};

OMBRELUNE_TOOL(BF_MergeAndBone, BF_ThreadedOperator, KEffectMergeAndBone);

} // namespace ombrelune
