#include "shapes/KEffectImageShape.h"

#include "shapes/KImageChannel.h"

namespace ombrelune {

void KEffectImageShape::ParametersAdd()
{
    unsigned const softMax = KF_SoftMax, soft = KF_SoftMin | KF_SoftMax;
    // clang-format off
    parameters.AddChapter("Shape");
    parameters.AddPoint    (&centre, {0.5F, 0.5F}, "Shape Center", "Cent"_id, KF_Preview, KPoint_Aspect);
    parameters.AddCheckbox (&isCentered, false, "Shape Reposition Around Center", "RepC"_id, 0);
    parameters.AddScrew    (&offset, 0.0F, "Shape Offset", "Offs"_id, soft, -0.1, 0.1);
    parameters.AddSliderInt(&replicate, 1, "Shape Replicate", "Repl"_id, softMax, 1, 32);
    parameters.AddScrew    (&replicateOffset, 0.1F, "Shape Replicate Offset", "ReOf"_id, soft, -0.1, 0.1);
    parameters.AddRange    (&range, {0.0F, 1.0F}, "Shape Range Start", "Shape Range End", "WriS"_id, "WriE"_id, 0, 0.0, 1.0);
    // clang-format on
    ShadingAdd();
}

void KEffectImageShape::ShadingAdd()
{
    unsigned const softMax = KF_SoftMax, soft = KF_SoftMin | KF_SoftMax;
    KPenStyle& pen = style.pen;
    // clang-format off
    parameters.AddChapter("Shading");
    parameters.AddColor  (&pen.color, {1.0F, 1.0F, 1.0F, 1.0F}, "Pen Color", "PnCR"_id, 0);
    parameters.AddSlider (&style.penChannel.opacity, 1.0F, "Pen Opacity", "PnOp"_id, 0, 0.0, 1.0);
    parameters.AddSlider (&pen.thickness, 0.01F, "Pen Thickness",      "PnTh"_id, softMax, 0.0, 0.1);
    parameters.AddSlider (&pen.bias,      0.0F,  "Pen Thickness Bias", "PnTB"_id, soft,   -1.0, 1.0);
    parameters.AddButtons(&pen.joinType,  2, "Pen Join Type", "PeJT"_id, 0, {"Miter", "Bevel", "Round"});
    parameters.AddButtons(&pen.endType,   0, "Pen End Type",  "PeET"_id, 0, {"Simple", "Round"});
    parameters.AddSlider (&pen.endRoundness, 1.0F, "Pen End Type Roundness", "PeER"_id, 0, 0.0, 1.0);
    // clang-format on
}

bool KEffectImageShape::Init(KImage* source)
{
    bool const done = KEffectThreads::Init(source);
    style.Init();
    return done;
}

void KEffectImageShape::F(int /*step*/, int /*chunk*/, KImage* source, KImage* destination)
{
    destination->CopyFrom(source);
    std::unique_ptr<KShapeGroup> const group(FShape());
    if (!group || group->GetCount() == 0) return;
    KImageChannel channel(destination, 8, nullptr, true);
    channel.SetStyleFill(&style.pen);
    for (KShape* shape : group->Get(0)->Each<KShape>()) {
        if (isCentered) shape->Center(centre);
        std::unique_ptr<KShape> const path = PartOf(*shape);
        Stroke(channel, *path);
        int const copies = CopiesOf(replicate - 1, path->GetCount());
        for (int r = 1; r <= copies; ++r)
            for (float side : {1.0F, -1.0F})
                Stroke(channel, *OffsetOf(*path, side * static_cast<float>(r) * replicateOffset, 2 * copies));
    }
}

/// What the range leaves of the path, at the offset.
std::unique_ptr<KShape> KEffectImageShape::PartOf(KShape const& shape) const
{
    constexpr float epsilon = 1.1920929e-7F;
    bool const isWhole = range.low <= epsilon && range.high >= 1.0F - epsilon;
    KShapeEffectWriteOnData part;
    part.range = range;
    std::unique_ptr<KShape> path(isWhole ? shape.CopyOf() : shape.WriteOnOf(part));
    return offset == 0.0F ? std::move(path) : OffsetOf(*path, offset, 1);
}

std::unique_ptr<KShape> KEffectImageShape::OffsetOf(KShape const& path, float distance, int copies)
{
    return std::unique_ptr<KShape>(path.OffsetOf({distance, kJoinMiter, 8, 16, copies}));
}

void KEffectImageShape::Stroke(KImageChannel& channel, KShape const& path)
{
    KShapeEffectOutlineData outline;
    outline.pen = style.pen;
    std::unique_ptr<KShape> const area(path.OutlineOf(outline));
    channel.ShapeFill(area.get(), -1, nullptr);
    channel.PutToImage(kCombineMerge, style.penChannel);
}

} // namespace ombrelune
