#include "shapes/KEffectShape.h"

namespace ombrelune {

void KEffectShape::ProcessData()
{
    output.Reset(FShape());
    input.Reset(nullptr);
    if (!output.Get()) return;
    if (hasShading) output.Get()->SetStyle(style);
    if (hasTransform) output.Get()->Transform(transformation.GetMatrix());
}

KMessageList* KEffectShape::AffectInputs(std::uint32_t id, KParameterValue& value)
{
    KMessageList* messages = KEffect::AffectInputs(id, value);
    switch (id) {
    case "PeET"_id: messages->Show("PeER"_id, value.intValue == 1); break;
    case "PeLT"_id:
        style.pen.dash.lineType = value.intValue;
        messages->Show("PeLC"_id, value.intValue == 3);
        ShowDashes(*messages);
        break;
    case "PeLC"_id:
        style.pen.dash.dashCount = value.intValue;
        ShowDashes(*messages);
        break;
    }
    return messages;
}

/// The lengths that the line type uses: dashed one of each, dotted a space, custom as many as are counted.
void KEffectShape::ShowDashes(KMessageList& messages) const
{
    int const type = style.pen.dash.lineType, count = style.pen.dash.dashCount;
    messages.Show("PeLS"_id, type >= 1);
    messages.Show("PeD0"_id, type == 1 || type == 3);
    messages.Show("PeS0"_id, type >= 1);
    for (int i = 1; i < KShapeEffectDashDotData::kSlots; ++i) {
        auto const slot = static_cast<std::uint32_t>(i);
        messages.Show("PeD0"_id + slot, type == 3 && i < count);
        messages.Show("PeS0"_id + slot, type == 3 && i < count);
    }
}

void KEffectShape::AddShapeInput(KShapeSlot& slot, char const* label, unsigned number)
{
    parameters.AddShape(slot.Target(), label, number, KF_MainInput);
}

void KEffectShape::ParametersAddTransform()
{
    hasTransform = true;
    parameters.AddChapter("Transform");
    parameters.AddTransformation(&transformation, KTransformation(), "Transform", "PeCT"_id, KF_Preview,
                                 KTransformation_All);
}

void KEffectShape::ParametersAddShading()
{
    unsigned const affects = KF_AffectInputs, softMax = KF_SoftMax, soft = KF_SoftMin | KF_SoftMax;
    KPenStyle& pen = style.pen;
    hasShading = true;
    // clang-format off
    parameters.AddChapter("Shading");
    parameters.AddCheckbox(&style.brush.enabled, true, "Brush Enabled", "BrEn"_id, 0);
    parameters.AddColor   (&style.fill.color, {0.8F, 0.2F, 0.3F, 1.0F}, "Brush Color", "BruR"_id, 0);
    parameters.AddSlider  (&style.brush.opacity, 1.0F, "Brush Opacity", "BrOp"_id, 0, 0.0, 1.0);
    parameters.AddCheckbox(&style.penChannel.enabled, true, "Pen Enabled", "PnEn"_id, 0);
    parameters.AddColor   (&pen.color, {1.0F, 1.0F, 1.0F, 1.0F}, "Pen Color", "PnCR"_id, 0);
    parameters.AddSlider  (&style.penChannel.opacity, 1.0F, "Pen Opacity", "PnOp"_id, 0, 0.0, 1.0);
    parameters.AddSlider  (&pen.thickness, 1.0F, "Pen Thickness",      "PnTh"_id, softMax, 0.0, 10.0);
    parameters.AddSlider  (&pen.bias,      0.0F, "Pen Thickness Bias", "PnTB"_id, soft,   -1.0, 1.0);
    parameters.AddButtons (&pen.joinType,  0, "Pen Join Type", "PeJT"_id, 0,       {"Miter", "Bevel", "Round"});
    parameters.AddButtons (&pen.endType,   1, "Pen End Type",  "PeET"_id, affects, {"Simple", "Round"});
    parameters.AddSlider  (&pen.endRoundness, 1.0F, "Pen End Type Roundness", "PeER"_id, 0, 0.0, 1.0);

    parameters.GroupStart("Pen Line", "PeLi"_id, 0);
    parameters.AddButtons  (&pen.dash.lineType,  0, "Pen Line Type",  "PeLT"_id, affects,
                            {"Solid", "Dashed", "Dotted", "Custom"});
    parameters.AddSlider   (&pen.dash.dashScale, 1.0F, "Pen Line Scale", "PeLS"_id, softMax, 0.01, 5.0);
    parameters.AddSliderInt(&pen.dash.dashCount, 3, "Pen Line Count", "PeLC"_id, affects, 1, 16);
    // clang-format on
    KString label;
    for (int i = 0; i < KShapeEffectDashDotData::kSlots; ++i) {
        auto const slot = static_cast<std::uint32_t>(i);
        parameters.AddSlider(&pen.dash.dashLengths[i], static_cast<float>(2 + i),
                             label.Numbered("Pen Line Dash", i + 1, true), "PeD0"_id + slot, softMax, 0.0,
                             10.0);
        parameters.AddSlider(&pen.dash.spaceLengths[i], 2.0F, label.Numbered("Pen Line Space", i + 1, true),
                             "PeS0"_id + slot, softMax, 0.0, 10.0);
    }
    parameters.GroupEnd();
}

} // namespace ombrelune
