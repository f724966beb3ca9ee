#include "host/builtin/PictureOperator.h"

#include <cmath>
#include <cstring>

#include "host/value/Parallel.h"

namespace ombrelune {

PictureOperator::PictureOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    : Operator(registry, settings, tags)
{
    AddIdentityInput();
    output =
        AddOutputTagList("Output", "Output", {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
}

Input* PictureOperator::AddPicture(char const* name, int mainNumber, bool isRequired)
{
    return AddInputTagList(name, name,
                           {{Attr_DataType, CLSID_DataType_Image},
                            {Attr_MainNumber, mainNumber},
                            {Attr_Priority, -1},
                            {Attr_Required, isRequired}});
}

Input* PictureOperator::AddNumber(char const* label, char const* id, FuID control, double value,
                                  TagList const& range)
{
    TagList tags{{Attr_DataType, CLSID_DataType_Number}, {Attr_InputControl, control}, {Attr_Default, value}};
    return AddInputTagList(label, id, tags.Merge(range));
}

Input* PictureOperator::AddChoice(char const* label, char const* id, FuID control, int value,
                                  std::initializer_list<char const*> names)
{
    TagList tags{{Attr_DataType, CLSID_DataType_Number},
                 {Attr_InputControl, control},
                 {Attr_Default, value},
                 {Attr_MinHard, 0.0},
                 {Attr_MaxHard, static_cast<double>(names.size()) - 1.0}};
    for (char const* name : names) tags.Add({Attr_ListEntry, name});
    return AddInputTagList(label, id, tags);
}

Input* PictureOperator::AddCheckbox(char const* label, char const* id, bool value)
{
    return AddNumber(label, id, CLSID_InputControl_Checkbox, value,
                     {{Attr_MinHard, 0.0}, {Attr_MaxHard, 1.0}});
}

Input* PictureOperator::AddPoint(char const* label, char const* id)
{
    return AddInputTagList(label, id,
                           {{Attr_DataType, CLSID_DataType_Point},
                            {Attr_InputControl, CLSID_InputControl_Offset},
                            {Attr_PreviewControl, CLSID_PreviewControl_Crosshair},
                            {Attr_DefaultX, 0.5},
                            {Attr_DefaultY, 0.5}});
}

int PictureOperator::ChoiceOf(Input const* input, Request* request)
{
    return static_cast<int>(std::lround(request->Number(*input)));
}

Point const& PictureOperator::PointOf(Input const* input, Request* request)
{
    return dynamic_cast<Point const&>(*input->GetValue(request, 0));
}

Ref<Image> PictureOperator::PictureOf(Input const* input, Request* request)
{
    return Ref<Image>::Share(dynamic_cast<Image*>(input->GetValue(request, 0)));
}

Ref<Image> PictureOperator::MainPicture(Request* request)
{
    Input const* const input = MainInput(1);
    Ref<Image> image = PictureOf(input, request);
    if (!image) request->FailWithoutPicture(*input);
    return image;
}

void PictureOperator::CopyAux(Image const& from, Image& to)
{
    if (from.IsPlain()) return;
    auto const bytes =
        sizeof(float) * static_cast<std::size_t>(from.AuxFloats()) * static_cast<std::size_t>(from.Width());
    ParallelFor(from.Height(), [&](int y) { std::memcpy(to.AuxRow(y), from.AuxRow(y), bytes); });
}

void PictureOperator::Give(Request* request, Ref<Image> image)
{
    if (!image) return request->Fail(Name() + ": no memory for a picture of this size");
    output->Set(request, image.Release(), nullptr);
}

} // namespace ombrelune
