#include "framework/KParameter.h"

#include "image/KImage.h"

namespace ombrelune {

void KNameList::Add(KNames texts)
{
    for (char const* text : texts) AddLast(new KName(text));
}

KParameterValue::KParameterValue() = default;
KParameterValue::~KParameterValue() = default;

KParameter& KParameterList::Append(KControlType control, KParameterType type, void* target, char const* label,
                                   std::uint32_t id, unsigned flags)
{
    auto* parameter = new KParameter;
    parameter->control = control;
    parameter->type = type;
    parameter->target = target;
    parameter->label.Set(label);
    parameter->id[0] = id;
    parameter->flags = flags;
    AddLast(parameter);
    return *parameter;
}

KParameter& KParameterList::AppendNumber(KControlType control, KParameterType type, void* target,
                                         double value, char const* label, std::uint32_t id, unsigned flags,
                                         double minimum, double maximum)
{
    KParameter& parameter = Append(control, type, target, label, id, flags);
    parameter.defaultValue = static_cast<float>(value);
    parameter.minimum = minimum;
    parameter.maximum = maximum;
    return parameter;
}

void KParameterList::GroupStart(char const* label, std::uint32_t id, unsigned flags)
{
    Append(KCT_GroupStart, KPT_None, nullptr, label, id, flags);
}

void KParameterList::GroupEnd() { Append(KCT_GroupEnd, KPT_None, nullptr, "", 0, 0); }

void KParameterList::AddChapter(char const* label) { Append(KCT_Chapter, KPT_None, nullptr, label, 0, 0); }

void KParameterList::AddStandard(int* target, int value, KParameterStandard standard, unsigned flags)
{
    *target = value;
    AppendNumber(KCT_Standard, KPT_Standard, target, value, "", 0, flags, 0.0, 0.0).standard = standard;
}

void KParameterList::AddAngle(float* target, float value, char const* label, std::uint32_t id, unsigned flags,
                              KAngleType unit)
{
    *target = value;
    AppendNumber(KCT_Angle, KPT_Float, target, value, label, id, flags, 0.0, 0.0).angleType = unit;
}

void KParameterList::AddButton(char const* label, std::uint32_t id, unsigned flags)
{
    Append(KCT_Button, KPT_None, nullptr, label, id, flags);
}

void KParameterList::AddButtons(int* target, int value, char const* label, std::uint32_t id, unsigned flags,
                                KNames names)
{
    *target = value;
    AppendNumber(KCT_Buttons, KPT_Int, target, value, label, id, flags, 0.0, 0.0).names.Add(names);
}

void KParameterList::AddButtonsChannel(int* target, int value, char const* label, std::uint32_t id,
                                       unsigned flags)
{
    AddButtons(target, value, label, id, flags, {"Red", "Green", "Blue", "Alpha", "Lumin."});
}

void KParameterList::AddCheckbox(bool* target, bool value, char const* label, std::uint32_t id,
                                 unsigned flags, int width)
{
    *target = value;
    AppendNumber(KCT_Checkbox, KPT_Bool, target, value ? 1.0 : 0.0, label, id, flags, 0.0, 1.0).width =
        static_cast<float>(width);
}

void KParameterList::AddColor(KColor* target, KColor const& value, char const* label, std::uint32_t id,
                              unsigned flags)
{
    *target = value;
    KParameter& parameter = Append(KCT_Color, KPT_Color, target, label, id, flags);
    parameter.id[1] = id - 11;
    parameter.id[2] = id - 16;
    parameter.id[3] = id - 17;
    parameter.defaultColor = value;
    parameter.group = ++lastGroup_;
}

void KParameterList::AddCurve(KLookUpTable** target, char const* label, std::uint32_t id, unsigned flags,
                              KColor const& color)
{
    *target = nullptr;
    KParameter& parameter = Append(KCT_Curve, KPT_Curve, static_cast<void*>(target), label, id, flags);
    parameter.defaultColor = color;
    parameter.group = ++lastGroup_;
}

void KParameterList::AddFilename(FuStringT<char>* target, FuStringT<char> const& value, char const* label,
                                 std::uint32_t id, unsigned flags, char const* filter)
{
    *target = value;
    KParameter& parameter = Append(KCT_Filename, KPT_Text, target, label, id, flags);
    parameter.defaultText = value;
    if (filter) parameter.names.Add({filter});
}

void KParameterList::AddImage(KImage** target, char const* label, std::uint32_t id, unsigned flags)
{
    *target = nullptr;
    Append(KCT_Image, KPT_Image, target, label, id, flags);
}

void KParameterList::AddLabel(char const* label, std::uint32_t id, unsigned flags)
{
    Append(KCT_Label, KPT_None, nullptr, label, id, flags);
}

void KParameterList::AddList(int* target, int value, char const* label, std::uint32_t id, unsigned flags,
                             KNames names)
{
    *target = value;
    AppendNumber(KCT_List, KPT_Int, target, value, label, id, flags, 0.0, 0.0).names.Add(names);
}

void KParameterList::AddMatte(KImage** target, char const* label, std::uint32_t id, unsigned flags)
{
    *target = nullptr;
    Append(KCT_Matte, KPT_Image, target, label, id, flags);
}

void KParameterList::AddPoint(KVector2* target, KVector2 const& value, char const* label, std::uint32_t id,
                              unsigned flags, KPointType unit)
{
    *target = value;
    KParameter& parameter = Append(KCT_Point, KPT_Point, target, label, id, flags);
    parameter.defaultPoint = value;
    parameter.pointType = unit;
}

void KParameterList::AddPoint3D(KVector3* target, KVector3 const& value, char const* label, std::uint32_t id,
                                unsigned flags)
{
    *target = value;
    KParameter& parameter = Append(KCT_Point3D, KPT_Point3D, target, label, id, flags);
    parameter.defaultPoint3 = value;
    parameter.group = ++lastGroup_;
}

void KParameterList::AddRange(KRange* target, KRange value, char const* label, char const* label2,
                              std::uint32_t id, std::uint32_t id2, unsigned flags, double minimum,
                              double maximum)
{
    *target = value;
    KParameter& parameter =
        AppendNumber(KCT_Range, KPT_Range, target, 0.0, label, id, flags, minimum, maximum);
    parameter.id[1] = id2;
    parameter.defaultRange = value;
    parameter.names.Add({label2});
    parameter.group = ++lastGroup_;
}

void KParameterList::AddRegion3D(void** target, char const* label, std::uint32_t id, unsigned flags)
{
    *target = nullptr;
    Append(KCT_Region3D, KPT_Region3D, static_cast<void*>(target), label, id, flags);
}

void KParameterList::AddShape(void** target, char const* label, std::uint32_t id, unsigned flags)
{
    *target = nullptr;
    Append(KCT_Shape, KPT_Shape, static_cast<void*>(target), label, id, flags);
}

void KParameterList::AddSlider(float* target, float value, char const* label, std::uint32_t id,
                               unsigned flags, double minimum, double maximum)
{
    *target = value;
    AppendNumber(KCT_Slider, KPT_Float, target, value, label, id, flags, minimum, maximum);
}

void KParameterList::AddSliderInt(int* target, int value, char const* label, std::uint32_t id, unsigned flags,
                                  int minimum, int maximum)
{
    *target = value;
    AppendNumber(KCT_Slider, KPT_Int, target, value, label, id, flags, minimum, maximum);
}

void KParameterList::AddSliderSeed(int* target, char const* label, std::uint32_t id, unsigned flags)
{
    AddSliderInt(target, 0, label, id, flags, 0, 32767);
}

void KParameterList::AddScrew(float* target, float value, char const* label, std::uint32_t id, unsigned flags,
                              double minimum, double maximum)
{
    *target = value;
    AppendNumber(KCT_Screw, KPT_Float, target, value, label, id, flags, minimum, maximum);
}

void KParameterList::AddScrewInt(int* target, int value, char const* label, std::uint32_t id, unsigned flags,
                                 int minimum, int maximum)
{
    *target = value;
    AppendNumber(KCT_Screw, KPT_Int, target, value, label, id, flags, minimum, maximum);
}

void KParameterList::AddText(FuStringT<char>* target, FuStringT<char> const& value, char const* label,
                             std::uint32_t id, unsigned flags, int lines)
{
    *target = value;
    KParameter& parameter = Append(KCT_Text, KPT_Text, target, label, id, flags);
    parameter.defaultText = value;
    parameter.group = lines;
}

void KParameterList::AddTransformation(KTransformation* target, KTransformation const& value,
                                       char const* label, std::uint32_t id, unsigned flags,
                                       KTransformationType type)
{
    *target = value;
    KParameter& parameter = Append(KCT_Transformation, KPT_Transformation, target, label, id, flags);
    parameter.defaultTransformation = value;
    parameter.transformationType = type;
    parameter.group = ++lastGroup_;
}

} // namespace ombrelune
