// Planes: up to six pictures behind each other, moved and turned before one camera, as with a multiplane
// table.

#include <algorithm>
#include <memory>
#include <vector>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "tools/image/scene/SceneView.h"

namespace ombrelune {

class KEffectPlanes : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Pln", "Planes"); }

    KEffectPlanes()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Planes");
        for (std::uint32_t i = 0; i < kPlanes; ++i) {
            KString text, label;
            char const* const plane = text.Numbered("Plane", static_cast<int>(i) + 1, true);
            if (i > 0) parameters.AddImage(&pictures[i], plane, i + 1, KF_MainInput);
            parameters.AddScrew(&depths[i], 0.0F, label.Concatenate(plane, " Depth"), "PlD0"_id + i, soft, -1.0, 1.0);
        }
        parameters.AddChapter("Scene position");
        // clang-format on
        scene.ParametersAdd(parameters);
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        pictures[0] = source;
        SceneFrame const frame(*source);
        struct Seen {
            double depth;
            SeenPlane plane;
        };
        std::vector<Seen> seen;
        KMatrix4 const whole = scene.Matrix();
        for (std::uint32_t i = 0; i < kPlanes; ++i) {
            if (!pictures[i]) continue;
            // Each is as large as fills the frame from where it stands.
            float const size = 1.0F - scene.perspective * depths[i];
            KMatrix4 const place = KMatrix4().Move(0.0F, 0.0F, depths[i]).Scale(size, size, 1.0F);
            KImage& picture = *pictures[i];
            seen.push_back({(whole * KVector3(0.0F, 0.0F, depths[i])).z,
                            SeenPlane(picture, PictureFit::ToWidth(picture), scene.Seen(place), frame,
                                      scene.clipBehind)});
        }
        std::stable_sort(seen.begin(), seen.end(),
                         [](auto const& a, auto const& b) { return a.depth < b.depth; });
        for (Seen const& each : seen) backToFront.push_back(each.plane);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel result;
        source->GetPixel(x, y, result);
        for (float& word : result.word) word = 0.0F;
        for (SeenPlane const& plane : backToFront) LayOver(result, plane.At(x, y, kEdgeBlack));
        return result;
    }

    void Done(KImage** destination) override
    {
        backToFront.clear();
        KEffectPixel::Done(destination);
    }

    static constexpr std::uint32_t kPlanes = 6;

    KImage* pictures[kPlanes] = {}; // the first is the source
    float depths[kPlanes];          // parts of the width, positive towards the viewer
    SceneView scene;

private:
    std::vector<SeenPlane> backToFront;
};

OMBRELUNE_TOOL(BF_Planes, BF_ThreadedOperator, KEffectPlanes);

} // namespace ombrelune
