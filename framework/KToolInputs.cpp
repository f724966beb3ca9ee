// The half of the bridge that declares: from an effect's parameters and outputs to the host's.

#include <numbers>

#include "framework/KObjectType.h"
#include "framework/KTool.h"

namespace ombrelune {

namespace {

constexpr std::uint32_t kMinimum[] = {Attr_MinHard, Attr_MinSoft};
constexpr std::uint32_t kMaximum[] = {Attr_MaxHard, Attr_MaxSoft};

TagList NumberTags(FuID control, double value)
{
    return {{Attr_DataType, CLSID_DataType_Number}, {Attr_InputControl, control}, {Attr_Default, value}};
}

/// Tags of a slider or screw: range, default, whole numbers.
TagList RangeTags(FuID control, KParameter const& parameter)
{
    TagList tags = NumberTags(control, parameter.defaultValue);
    tags.Add({kMinimum[(parameter.flags & KF_SoftMin) != 0], parameter.minimum});
    tags.Add({kMaximum[(parameter.flags & KF_SoftMax) != 0], parameter.maximum});
    if (parameter.type == KPT_Int) tags.Add({Attr_IntegerValue, true});
    return tags;
}

template <class Names> void AddEntries(TagList& tags, Names const& names, std::size_t count)
{
    tags.Add({Attr_MinHard, 0.0});
    tags.Add({Attr_MaxHard, static_cast<double>(count) - 1.0});
    for (auto const* name : names) tags.Add({Attr_ListEntry, name});
}

KString Joined(KString const& label, char const* suffix)
{
    KString text = label;
    text.Add(suffix);
    return text;
}

} // namespace

Input* KTool::AddInput_Basic(KString const& label, TagList const& tags)
{
    if (!inputHost) return nullptr;
    KString id;
    id.Scriptify(label);
    return inputHost->AddInputTagList(label.String(), id.String(), tags);
}

void KTool::AddInput_Flags(Input* input, unsigned flags)
{
    if (!input) return;
    if (flags & KF_AffectInputs) input->SetAttrsTagList({{Attr_PreviewFlag, true}, {Attr_Notify2, true}});
    if (flags & (KF_Hidden | KF_HiddenToo)) input->SetAttrsTagList({{Attr_ControlVisible, false}});
    if (flags & KF_Internal) input->SetAttrsTagList({{Attr_External, false}});
    if (flags & KF_Late) {
        preProcessNeeded = true;
        input->SetAttrsTagList({{Attr_Priority, -1}, {Attr_Required, false}});
    }
}

Input* KTool::AddGroupStart(KParameter const& parameter)
{
    if (!inputHost) return nullptr;
    KString id;
    id.Scriptify(parameter.label);
    Input* const input = inputHost->BeginControlNest(parameter.label.String(), id.String(), false);
    AddInput_Flags(input, parameter.flags);
    return input;
}

void KTool::AddGroupEnd()
{
    if (inputHost) inputHost->EndControlNest();
}

Input* KTool::AddInput_Angle(KParameter const& parameter)
{
    TagList tags = NumberTags(CLSID_InputControl_Screw, parameter.defaultValue);
    tags.Add({Attr_MinSoft, 0.0})
        .Add({Attr_MaxSoft, 360.0})
        .Add({Attr_ScrewSteps, 3601})
        .Add({Attr_TextLines, 451});
    if (parameter.flags & KF_Preview) {
        tags.Add({Attr_PreviewControl, CLSID_PreviewControl_Angle});
        if (parameter.flags & KF_PreviewCentered && lastPointInput)
            tags.Add({Attr_PreviewCenter, lastPointInput});
    }
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Button(char const* label, unsigned flags)
{
    Input* const input = AddInput_Basic(label, NumberTags(CLSID_InputControl_Button, 0.0));
    AddInput_Flags(input, flags);
    return input;
}

Input* KTool::AddInput_Buttons(char const* label, unsigned flags, float value, KNames names)
{
    TagList tags = NumberTags(CLSID_InputControl_MultiButton, value);
    tags.Add({Attr_ButtonLabels, true});
    AddEntries(tags, names, names.size());
    Input* const input = AddInput_Basic(label, tags);
    AddInput_Flags(input, flags);
    return input;
}

/// A button row or a list.
Input* KTool::AddInput_Choice(KParameter const& parameter)
{
    bool const isRow = parameter.control == KCT_Buttons;
    TagList tags =
        NumberTags(isRow ? CLSID_InputControl_MultiButton : CLSID_InputControl_Combo, parameter.defaultValue);
    if (isRow) tags.Add({Attr_ButtonLabels, true});
    std::vector<char const*> names;
    for (KName const* name : parameter.names.Each<KName>()) names.push_back(name->name.String().c_str());
    AddEntries(tags, names, names.size());
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Checkbox(char const* label, unsigned flags, float value, float width)
{
    TagList tags = NumberTags(CLSID_InputControl_Checkbox, value);
    tags.Add({Attr_MinHard, 0.0}).Add({Attr_MaxHard, 1.0});
    if (width > 1.0F) tags.Add({Attr_ControlWidth, 1.0F / width});
    Input* const input = AddInput_Basic(label, tags);
    AddInput_Flags(input, flags);
    return input;
}

void KTool::AddInput_Color(KParameter& parameter)
{
    static constexpr char const* suffixes[] = {"Red", "Green", "Blue", "Alpha"};
    for (int channel = 0; channel < 4; ++channel) {
        TagList tags = NumberTags(CLSID_InputControl_Color, parameter.defaultColor.GetChannel(channel));
        tags.Add({Attr_MinHard, 0.0}).Add({Attr_MaxHard, 1.0});
        tags.Add({Attr_GroupNumber, parameter.group}).Add({Attr_GroupChannel, channel});
        if (channel == 0) tags.Add({Attr_ControlName, parameter.label.String()});
        Input* const input = AddInput_Basic(Joined(parameter.label, suffixes[channel]), tags);
        AddInput_Flags(input, parameter.flags);
        AddKInput(parameter.id[channel], input, parameter, channel);
    }
}

Input* KTool::AddInput_Curve(KParameter const& parameter)
{
    Input* const input = AddInput_Basic(parameter.label, {{Attr_DataType, CLSID_DataType_LookUpTable},
                                                          {Attr_InputControl, CLSID_InputControl_Spline},
                                                          {Attr_CurveClass, CLSID_LUT_Bezier},
                                                          {Attr_GroupNumber, parameter.group},
                                                          {Attr_GroupChannel, 0},
                                                          {Attr_CurveFlag, true},
                                                          {Attr_MinHard, 0.0},
                                                          {Attr_MaxHard, 255.0},
                                                          {Attr_MinSoft, 0.0},
                                                          {Attr_MaxSoft, 255.0}});
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Filename(KParameter const& parameter)
{
    TagList tags{{Attr_DataType, CLSID_DataType_Text},
                 {Attr_InputControl, CLSID_InputControl_File},
                 {Attr_DefaultText, parameter.defaultText}};
    for (KName const* filter : parameter.names.Each<KName>())
        tags.Add({Attr_ListEntry, filter->name.String()});
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Image(KParameter const& parameter)
{
    TagList tags{{Attr_DataType, CLSID_DataType_Image}, {Attr_Required, false}, {Attr_Priority, -1}};
    if (parameter.flags & KF_Preview) tags.Add({Attr_InputControl, CLSID_InputControl_Image});
    if (parameter.flags & KF_MainInput) tags.Add({Attr_MainNumber, parameter.id[0]});
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Label(KParameter const& parameter)
{
    TagList tags = NumberTags(CLSID_InputControl_Label, 0.0);
    tags.Add({Attr_External, false});
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Matte(char const* label, unsigned flags)
{
    Input* const input = AddInput_Basic(
        label, {{Attr_DataType, CLSID_DataType_Mask}, {Attr_Required, false}, {Attr_Priority, -1000}});
    AddInput_Flags(input, flags);
    return input;
}

/// A shape or a region.
Input* KTool::AddInput_Object(KParameter const& parameter)
{
    KObjectType const* const type = FindObjectType(parameter.type);
    if (!type) return nullptr;
    TagList tags{{Attr_DataType, FuID(type->dataType)}, {Attr_Required, false}, {Attr_Priority, -1}};
    if (parameter.flags & KF_Preview) tags.Add({Attr_InputControl, CLSID_InputControl_Label});
    if (parameter.flags & KF_MainInput) tags.Add({Attr_MainNumber, parameter.id[0]});
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Point(KParameter const& parameter)
{
    TagList tags{{Attr_DataType, CLSID_DataType_Point},
                 {Attr_InputControl, CLSID_InputControl_Offset},
                 {Attr_DefaultX, parameter.defaultPoint.x},
                 {Attr_DefaultY, parameter.defaultPoint.y}};
    if (parameter.flags & KF_Preview) {
        bool const follows = parameter.flags & KF_PreviewFollow && lastPointInput;
        tags.Add(
            {Attr_PreviewControl, follows ? CLSID_PreviewControl_Point : CLSID_PreviewControl_Crosshair});
        if (follows) tags.Add({Attr_PreviewCenter, lastPointInput});
    }
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    lastPointInput = input;
    return input;
}

void KTool::AddInput_Point3D(KParameter& parameter)
{
    static constexpr char const* suffixes[] = {" X", " Y", " Z"};
    for (int i = 0; i < 3; ++i) {
        TagList tags = NumberTags(CLSID_InputControl_Screw, parameter.defaultPoint3[i]);
        tags.Add({Attr_MinSoft, -10.0}).Add({Attr_MaxSoft, 10.0});
        tags.Add({Attr_GroupNumber, parameter.group}).Add({Attr_GroupChannel, i});
        if (parameter.flags & KF_Preview) {
            tags.Add({Attr_PreviewControl, CLSID_PreviewControl_Transform});
            tags.Add({Attr_PreviewNumber, 2 + i}).Add({Attr_PreviewFlag, true});
        }
        Input* const input = AddInput_Basic(Joined(parameter.label, suffixes[i]), tags);
        AddInput_Flags(input, parameter.flags);
        AddKInput(parameter.id[0], input, parameter, i);
    }
}

void KTool::AddInput_Range(KParameter& parameter)
{
    KString const labels[] = {parameter.label, static_cast<KName*>(parameter.names.First())->name};
    float const values[] = {parameter.defaultRange.low, parameter.defaultRange.high};
    for (int i = 0; i < 2; ++i) {
        TagList tags = NumberTags(CLSID_InputControl_Range, values[i]);
        tags.Add({Attr_MinHard, parameter.minimum}).Add({Attr_MaxHard, parameter.maximum});
        tags.Add({Attr_GroupNumber, parameter.group}).Add({Attr_GroupChannel, i});
        Input* const input = AddInput_Basic(labels[i], tags);
        AddInput_Flags(input, parameter.flags);
        AddKInput(parameter.id[i], input, parameter, i);
    }
}

Input* KTool::AddInput_Slider(KParameter const& parameter)
{
    TagList tags = RangeTags(CLSID_InputControl_Slider, parameter);
    if (parameter.flags & KF_Preview && parameter.flags & KF_PreviewEllipse && lastPointInput)
        tags.Add({Attr_PreviewControl, CLSID_PreviewControl_Ellipse})
            .Add({Attr_PreviewCenter, lastPointInput});
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Screw(KParameter const& parameter)
{
    TagList tags = RangeTags(CLSID_InputControl_Screw, parameter);
    unsigned const rectangle = parameter.flags & (KF_PreviewRectWidth | KF_PreviewRectHeight);
    if (parameter.flags & KF_Preview && parameter.flags & KF_PreviewEllipse && lastPointInput) {
        tags.Add({Attr_PreviewControl, CLSID_PreviewControl_Ellipse})
            .Add({Attr_PreviewCenter, lastPointInput});
    } else if (parameter.flags & KF_Preview && rectangle && lastPointInput) {
        bool const isHeight = (rectangle & KF_PreviewRectHeight) != 0;
        tags.Add({Attr_PreviewControl, CLSID_PreviewControl_Rectangle})
            .Add({Attr_PreviewPart, isHeight ? 1 : 0});
        tags.Add({Attr_PreviewNumber, nextPreviewControl}).Add({Attr_PreviewCenter, lastPointInput});
        if (isHeight) ++nextPreviewControl;
    }
    Input* const input = AddInput_Basic(parameter.label, tags);
    AddInput_Flags(input, parameter.flags);
    return input;
}

Input* KTool::AddInput_Text(KParameter const& parameter)
{
    Input* const input = AddInput_Basic(parameter.label, {{Attr_DataType, CLSID_DataType_Text},
                                                          {Attr_InputControl, CLSID_InputControl_TextEdit},
                                                          {Attr_DefaultText, parameter.defaultText},
                                                          {Attr_TextLines, parameter.group}});
    AddInput_Flags(input, parameter.flags);
    return input;
}

void KTool::AddInput_Transformation(KParameter& parameter)
{
    static constexpr FuID const* orders[] = {&ROID_XYZ, &ROID_XZY, &ROID_YXZ,
                                             &ROID_YZX, &ROID_ZXY, &ROID_ZYX};
    static constexpr char const* axes[] = {"X", "Y", "Z"};
    KTransformation const& value = parameter.defaultTransformation;
    int const type = parameter.transformationType;
    bool const hasPosition = type <= KTransformation_PositionRotation;
    bool const hasRotation = hasPosition || type == KTransformation_Rotation;
    bool const hasScale = type <= KTransformation_AllToo || type == KTransformation_Scale;

    auto add = [&](std::string const& suffix, int sub, TagList tags, int previewNumber) {
        tags.Add({Attr_GroupNumber, parameter.group});
        if (parameter.flags & KF_Preview && previewNumber > 0) {
            tags.Add({Attr_PreviewControl, CLSID_PreviewControl_Transform});
            tags.Add({Attr_PreviewNumber, previewNumber}).Set({Attr_PreviewFlag, true});
        }
        Input* const input = AddInput_Basic(Joined(parameter.label, suffix.c_str()), tags);
        AddInput_Flags(input, parameter.flags);
        AddKInput(parameter.id[0], input, parameter, sub);
    };

    if (hasPosition) {
        for (int i = 0; i < 3; ++i) {
            TagList tags = NumberTags(CLSID_InputControl_Screw, value.position[i]);
            tags.Add({Attr_MinSoft, -10.0}).Add({Attr_MaxSoft, 10.0});
            add(std::string(" Position ") + axes[i], i, tags, 2 + i);
        }
    }
    if (hasRotation) {
        TagList tags{{Attr_DataType, CLSID_DataType_FuID},
                     {Attr_InputControl, CLSID_InputControl_MultiButtonID},
                     {Attr_DefaultId, ROID_XYZ}};
        for (FuID const* order : orders) {
            tags.Add({Attr_ListEntry, order->Text()});
            tags.Add({Attr_Icon1, "Icons.Rotation." + order->Text() + ".1"});
            tags.Add({Attr_Icon2, "Icons.Rotation." + order->Text() + ".2"});
        }
        add(" Rotation Order", 3, tags, 15);
        for (int i = 0; i < 3; ++i) {
            TagList angle =
                NumberTags(CLSID_InputControl_Screw, value.rotation[i] * 180.0 / std::numbers::pi);
            angle.Add({Attr_MinSoft, -180.0}).Add({Attr_MaxSoft, 180.0});
            angle.Add({Attr_ScrewSteps, 3601}).Add({Attr_TextLines, 450}).Add({Attr_PreviewFlag, true});
            add(std::string(" Rotation ") + axes[i], 4 + i, angle, 5 + i);
        }
    }
    if (hasScale) {
        TagList lock = NumberTags(CLSID_InputControl_Checkbox, 1.0);
        lock.Add({Attr_MinHard, 0.0}).Add({Attr_MaxHard, 1.0}).Add({Attr_PreviewFlag, true});
        add(" Scale Lock", 7, lock, 0);
        for (int i = 0; i < 3; ++i) {
            TagList tags = NumberTags(CLSID_InputControl_Screw, value.scale[i]);
            tags.Add({Attr_MinSoft, 0.0}).Add({Attr_MaxSoft, 5.0}).Add({Attr_PreviewFlag, true});
            add(std::string(" Scale ") + axes[i], 8 + i, tags, 8 + i);
        }
    }
}

Input* KTool::AddMainImageInput(bool isOptional)
{
    if (!inputHost) return nullptr;
    if (effect && effect->GetInputTimes(0, 0.0F, nullptr) >= 2) {
        preProcessNeeded = true;
        return AddInput_Basic("Input", {{Attr_DataType, CLSID_DataType_Image},
                                        {Attr_MainNumber, 1},
                                        {Attr_Priority, -1},
                                        {Attr_Required, false},
                                        {Attr_FrameSlots, 0}});
    }
    TagList tags{{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}, {Attr_Priority, -1}};
    if (isOptional) tags.Add({Attr_Required, false});
    return AddInput_Basic("Image", tags);
}

Input* KTool::AddChannelInputs(int count)
{
    static constexpr char const* labels[] = {"Red", "Green", "Blue", "Alpha"};
    for (int i = 0; i < count; ++i)
        if (!channelInputs[i])
            channelInputs[i] = AddInput_Checkbox(labels[i], 0, 1.0F, static_cast<float>(count));
    return channelInputs[0];
}

Input* KTool::AddTrailsInputs()
{
    if (trailsInput) return trailsInput;
    trailsInput = AddInput_Checkbox("Trails (Experimental)", KF_AffectInputs, 0.0F, 1.0F);
    KParameter fade;
    fade.label = "Fade";
    fade.type = KPT_Float;
    fade.defaultValue = 0.95F;
    fade.maximum = 1.0;
    fadeInput = AddInput_Slider(fade);
    resetInput = AddInput_Button("Reset", KF_AffectInputs);
    return trailsInput;
}

Input* KTool::AddInputBF(KParameterStandard standard, float value)
{
    float const given = value == kNoDefault ? 0.0F : value;
    float const orOne = value == kNoDefault ? 1.0F : value;
    auto const once = [](Input*& slot, auto const& make) { return slot ? slot : slot = make(); };
    auto const slider = [&](char const* label, KParameterType type, double low, double high, unsigned flags) {
        KParameter parameter;
        parameter.label = label;
        parameter.type = type;
        parameter.defaultValue = orOne;
        parameter.minimum = low;
        parameter.maximum = high;
        parameter.flags = flags;
        return AddInput_Slider(parameter);
    };
    switch (standard) {
    case KPS_Image: return once(mainImageInput, [&] { return AddMainImageInput(value != kNoDefault); });
    case KPS_ColorSpace:
        return once(colorSpaceInput, [&] {
            return AddInput_Buttons("Color space", KF_AffectInputs, given,
                                    {"RGB", "HLS", "YUV", "YIQ", "CMY", "HSV", "XYZ", "LAB"});
        });
    case KPS_ChannelsRGB: return AddChannelInputs(3);
    case KPS_ChannelsRGBA: return AddChannelInputs(4);
    case KPS_UnderSample:
        return once(underSampleInput,
                    [&] { return slider("Under-sample resolution", KPT_Int, 1.0, 16.0, KF_SoftMax); });
    case KPS_SuperSample:
        return once(superSampleInput, [&] {
            return AddInput_Buttons("Super-sampling", 0, given,
                                    {"1x1", "2x2", "3x3", "4x4", "5x5", "8x8", "16x16"});
        });
    case KPS_SuperSampleFilter:
        return once(superSampleFilterInput,
                    [&] { return slider("Super-sampling filter size", KPT_Float, 0.1, 5.0, 0); });
    case KPS_SubPixel:
        return once(filteringInput, [&] { return AddInput_Checkbox("Sub-pixel sampling", 0, orOne, 1.0F); });
    case KPS_Filtering:
        return once(filteringInput, [&] {
            return AddInput_Buttons("Filtering", 0, orOne, {"None", "Pixel", "Area"});
        });
    case KPS_Edges:
        return once(edgesInput, [&] {
            return AddInput_Buttons("Edges", 0, given, {"Black", "Wrap", "Duplicate"});
        });
    case KPS_PreDivide:
        return once(preDivideInput,
                    [&] { return AddInput_Checkbox("Pre-Divide / Post-Multiply", 0, given, 1.0F); });
    case KPS_Trails: return AddTrailsInputs();
    case KPS_MultiThreading: {
        bool const isNew = !multiThreadingInput;
        once(multiThreadingInput, [&] { return AddInput_Checkbox("Do multi-threading", 0, orOne, 1.0F); });
        // The framework makes this one for every tool, so here a later default counts.
        if (!isNew && value != kNoDefault && multiThreadingInput)
            multiThreadingInput->SetSource(MakeRef<Number>(value).Get(), kDefaultTime, nullptr);
        return multiThreadingInput;
    }
    case KPS_WarpMask: return once(warpMaskInput, [&] { return AddInput_Matte("Warp Mask", 0); });
    }
    return nullptr;
}

void KTool::AddControlPageBF()
{
    if (controlPageDone || !inputHost) return;
    controlPageDone = true;
    inputHost->AddControlPageTagList(
        "BF", {{Page_Label, "Ombrelune Controls"}, {Page_Id, "BF"}, {Page_Last, true}});
}

void KTool::AddKInput(std::uint32_t id, Input* input, KParameter& parameter, int sub)
{
    inputs.AddLast(new KInput(id, input, &parameter, sub));
}

void KTool::AddParameterInputs(KParameter& parameter)
{
    auto const& [label, flags] = std::tie(parameter.label, parameter.flags);
    auto const one = [&](Input* input) { AddKInput(parameter.id[0], input, parameter); };
    switch (parameter.control) {
    case KCT_Standard: break; // stands on the framework's page
    case KCT_Chapter:
        if (inputHost) inputHost->AddControlPageTagList(label.String().c_str(), {});
        break;
    case KCT_GroupStart: one(AddGroupStart(parameter)); break;
    case KCT_GroupEnd: AddGroupEnd(); break;
    case KCT_Angle: one(AddInput_Angle(parameter)); break;
    case KCT_Button: one(AddInput_Button(label.String().c_str(), flags)); break;
    case KCT_Buttons:
    case KCT_List: one(AddInput_Choice(parameter)); break;
    case KCT_Checkbox:
        one(AddInput_Checkbox(label.String().c_str(), flags, parameter.defaultValue, parameter.width));
        break;
    case KCT_Curve: one(AddInput_Curve(parameter)); break;
    case KCT_Color: AddInput_Color(parameter); break;
    case KCT_Filename: one(AddInput_Filename(parameter)); break;
    case KCT_Image: one(AddInput_Image(parameter)); break;
    case KCT_Label: one(AddInput_Label(parameter)); break;
    case KCT_Matte: one(AddInput_Matte(label.String().c_str(), flags)); break;
    case KCT_Point: one(AddInput_Point(parameter)); break;
    case KCT_Range: AddInput_Range(parameter); break;
    case KCT_Region3D:
    case KCT_Shape: one(AddInput_Object(parameter)); break;
    case KCT_Slider: one(AddInput_Slider(parameter)); break;
    case KCT_Screw: one(AddInput_Screw(parameter)); break;
    case KCT_Text: one(AddInput_Text(parameter)); break;
    case KCT_Transformation: AddInput_Transformation(parameter); break;
    case KCT_Point3D: AddInput_Point3D(parameter); break;
    }
}

void KTool::AddStandardInputs()
{
    auto const withDefault = [this](KParameterStandard standard) {
        AddInputBF(standard, effect->Default(standard));
    };
    bool const isSource = effect->GetFlag(KPF_Source), isResize = effect->GetFlag(KPF_Resize);
    if (!isResize) AddInputBF(KPS_ChannelsRGBA);
    switch (effect->ProcessType()) {
    case KProc_Color:
        withDefault(KPS_SuperSample);
        withDefault(KPS_SuperSampleFilter);
        if (!isSource) withDefault(KPS_PreDivide);
        break;
    case KProc_Warp:
        AddInputBF(KPS_UnderSample);
        withDefault(KPS_Filtering);
        withDefault(KPS_Edges);
        AddInputBF(KPS_WarpMask);
        break;
    case KProc_Position:
        withDefault(KPS_SuperSample);
        if (!isSource) withDefault(KPS_PreDivide);
        break;
    default: break;
    }
    if (!isSource && !isResize) AddInputBF(KPS_Trails);
    AddInputBF(KPS_MultiThreading);
}

void KTool::AddOutputs()
{
    if (effect->OutputCount(KPT_Image) > 0) {
        if (effect->GetFlag(KPF_Source)) {
            ++nextOutput; // the host base's own output
        } else {
            AddInputBF(KPS_Image, effect->GetFlag(KPF_OptionalImage) ? 1.0F : kNoDefault);
            if (inputHost)
                imageOutput = inputHost->AddOutputTagList(
                    "Output", "Output",
                    {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, nextOutput++}});
        }
    }
    if (!inputHost) return;
    for (KOutput* output : effect->outputs.Each<KOutput>()) {
        KString id;
        id.Scriptify(output->label);
        auto const add = [&](FuID type) {
            output->output =
                inputHost->AddOutputTagList(output->label.String(), id.String(), {{Attr_DataType, type}});
        };
        switch (output->type) {
        case KPT_Image: output->output = imageOutput; break;
        case KPT_Float: add(CLSID_DataType_Number); break;
        case KPT_Text: add(CLSID_DataType_Text); break;
        case KPT_Region3D:
        case KPT_Shape:
            if (KObjectType const* type = FindObjectType(output->type))
                output->output =
                    inputHost->AddOutputTagList("Output", "Output", {{Attr_DataType, FuID(type->dataType)}});
            break;
        default: break;
        }
    }
}

void KTool::AddEffectInputs(ThreadedOperator* host, KEffect* toolEffect)
{
    SetInputHost(host);
    AddEffectInputs(toolEffect);
}

void KTool::AddEffectInputs(KEffect* toolEffect)
{
    effect = toolEffect;
    if (!effect) return;
    for (KParameter* parameter : effect->parameters.Each<KParameter>()) AddParameterInputs(*parameter);
    AddControlPageBF();
    AddStandardInputs();
    for (KParameter* parameter : effect->parameters.Each<KParameter>()) {
        if (parameter->control != KCT_Standard) continue;
        AddControlPageBF();
        auto const standard = static_cast<KParameterStandard>(parameter->standard);
        if (Input* input = AddInputBF(standard, parameter->defaultValue))
            AddKInput(parameter->id[0], input, *parameter);
    }
    AddOutputs();
    shapeTool = effect->ProcessType() == KProc_Shapes;
}

} // namespace ombrelune
