// The half of the bridge that renders: from a request to the host's outputs.

#include "framework/KTool.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <numbers>
#include <utility>

#include "framework/KObjectType.h"
#include "host/graph/FusionDoc.h"
#include "image/KLookUpTable.h"
#include "image/SafeDelete.h"
#include "image/Saturate.h"

namespace ombrelune {

namespace {

Image* ImageOf(Parameter* value) { return dynamic_cast<Image*>(value); }

KImage* WrapSlot(Input* input, Request* request, int slot)
{
    return KImage::ImageFromHost(ImageOf(input->GetValue(request, slot)), false);
}

double NumberOf(Parameter const* value)
{
    auto const* number = dynamic_cast<Number const*>(value);
    return number ? number->value : 0.0;
}

/// What an integer input without a hard range may mean: beyond this single floats, in which numbers travel,
/// skip whole ones. So sums of a few inputs and products with a proxy's factor stay integers too.
constexpr double kMostWhole = 1 << 24;

int RoundHalfAway(float f)
{
    return SaturatedInt(std::clamp<double>(f >= 0.0F ? f + 0.5F : f - 0.5F, -kMostWhole, kMostWhole));
}

int RotationOrder(FuID id)
{
    FuID const orders[] = {ROID_XYZ, ROID_XZY, ROID_YXZ, ROID_YZX, ROID_ZXY};
    return static_cast<int>(std::find(std::begin(orders), std::end(orders), id) - std::begin(orders));
}

void ReadTransformation(KTransformation& target, int sub, Parameter const* value)
{
    float const number = SaturatedFloat(NumberOf(value));
    switch (sub) {
    case 0:
    case 1:
    case 2: target.position[sub] = number; break;
    case 3:
        if (auto const* id = dynamic_cast<IdParameter const*>(value))
            target.rotationOrder = RotationOrder(id->value);
        break;
    case 4:
    case 5:
    case 6: target.rotation[sub - 4] = static_cast<float>(number * std::numbers::pi / 180.0); break;
    case 7: target.lock = number > 0.5F; break;
    case 8:
    case 9:
    case 10: target.scale[sub - 8] = number; break;
    case 11: target.type = number < 0.5F ? 0 : 1; break;
    case 12:
        if (auto const* point = dynamic_cast<Point const*>(value))
            target.centre.Set(SaturatedFloat(point->x), SaturatedFloat(point->y));
        break;
    case 14: target.aspect = number; break;
    default: break; // 13, the type of the aspect, is the interface's alone
    }
}

/// A point in the unit that its parameter asks for.
KVector2 AdaptedPoint(KVector2 const& p, int type, KImage const& image)
{
    float const aspect = image.FrameAspect();
    switch (type) {
    case KPoint_Aspect: return {p.x, p.y / aspect};
    case KPoint_Pixels:
        return {p.x * static_cast<float>(image.Width()), p.y * static_cast<float>(image.Height())};
    case KPoint_Centered: return {p.x - 0.5F, p.y - 0.5F};
    case KPoint_CenteredAspect: return {p.x - 0.5F, (p.y - 0.5F) / aspect};
    default: return p;
    }
}

bool IsAdmitted(KParameter const& parameter, bool all) { return all || !(parameter.flags & KF_Late); }

} // namespace

KEffectImage* KTool::ImageEffect() const
{
    return effect && effect->OutputCount(KPT_Image) > 0 ? dynamic_cast<KEffectImage*>(effect) : nullptr;
}

void KTool::StartProcess()
{
    if (KEffectImage* image = ImageEffect()) image->BufferTrailsSet(nullptr);
}

bool KTool::MayLeaveTrails(OperatorState const& state) const
{
    if (!trailsInput) return false;
    InputState const& trails = state.Of(*trailsInput);
    return trails.source || trails.expression || NumberOf(trails.value.Get()) > 0.5;
}

void KTool::PreCalcProcess(Request* request)
{
    for (KInput const* entry : inputs.Each<KInput>())
        if (entry->parameter->type == KPT_Shape && entry->input)
            request->SetInputData(entry->input, nullptr, 0);
}

void KTool::PreProcess(Request* request)
{
    if (!preProcessNeeded || request->GetPri() != Request::kBeforeImages) return;
    ProcessInputs(request, false);
    ProcessInputs_AdaptToImage(false);
    if (!effect || !mainImageInput) return;
    auto const time = static_cast<float>(request->GetTime());
    int const count = effect->GetInputTimes(0, time, nullptr);
    if (count <= 1) return;
    std::vector<float> times(static_cast<std::size_t>(count));
    effect->GetInputTimes(0, time, times.data());
    for (int i = 0; i < count; ++i) {
        float const wanted = times[static_cast<std::size_t>(i)];
        if (wanted == kNoFrame) request->SetInputData(mainImageInput, nullptr, i);
        // The addition keeps the time from falling just below a whole frame.
        else request->SetInputTime(mainImageInput, wanted + 0.0001, i);
    }
}

void KTool::ProcessInputs(Request* request, bool all)
{
    for (KInput* entry : inputs.Each<KInput>()) {
        KParameter const& parameter = *entry->parameter;
        if (!entry->input || !IsAdmitted(parameter, all)) continue;
        Parameter* const value = entry->input->GetValue(request, 0);
        switch (parameter.type) {
        // Objects are made even when there is no value. Those that travel by image priority come with `all`
        // alone.
        case KPT_Image:
            entry->image.reset(KImage::ImageFromHost(ImageOf(value), false));
            *static_cast<KImage**>(parameter.target) = entry->image.get();
            break;
        case KPT_Curve:
            entry->table = std::make_unique<KLookUpTable>(dynamic_cast<LookUpTable*>(value));
            *static_cast<KLookUpTable**>(parameter.target) = entry->table.get();
            break;
        case KPT_Region3D:
        case KPT_Shape:
            if (KObjectType const* type = FindObjectType(parameter.type); type && all) {
                if (char const* why = type->refuse ? type->refuse(value) : nullptr)
                    request->Fail(inputHost->Name() + "." + entry->input->Id().Text() + " " + why);
                // An effect that was declined left what it was given the last time.
                void*& slot = *static_cast<void**>(parameter.target);
                type->release(std::exchange(slot, nullptr));
                slot = type->copyForEffect(value);
            }
            break;
        default:
            if (value) ReadValue(*entry, value);
        }
    }
}

void KTool::ReadValue(KInput const& entry, Parameter const* value)
{
    KParameter const& parameter = *entry.parameter;
    double const number = NumberOf(value);
    float const single = SaturatedFloat(number);
    switch (parameter.type) {
    case KPT_Standard: {
        int& target = *static_cast<int*>(parameter.target);
        int const channels = parameter.standard == KPS_ChannelsRGB    ? 3
                             : parameter.standard == KPS_ChannelsRGBA ? 4
                                                                      : 0;
        if (channels > 0) {
            target = 0;
            for (int i = 0; i < channels; ++i) target |= channelInputs[i] && data.channels[i] ? 1 << i : 0;
        } else if (parameter.standard == KPS_SuperSample) {
            target = data.superSample;
        } else {
            target = SaturatedInt(single + 1.1920928955078125e-07F);
        }
        break;
    }
    case KPT_Bool: *static_cast<bool*>(parameter.target) = number > 0.5; break;
    case KPT_Color: {
        auto& color = *static_cast<KColor*>(parameter.target);
        float* const channels[] = {&color.red, &color.green, &color.blue, &color.alpha};
        *channels[entry.sub] = single;
        break;
    }
    case KPT_Int: *static_cast<int*>(parameter.target) = RoundHalfAway(single); break;
    case KPT_Float: {
        auto& target = *static_cast<float*>(parameter.target);
        target = single;
        if (parameter.control != KCT_Angle) break;
        target = -target;
        if (parameter.angleType == KAngle_Radians)
            target = static_cast<float>(target * std::numbers::pi / 180.0);
        break;
    }
    case KPT_Point:
        if (auto const* point = dynamic_cast<Point const*>(value))
            static_cast<KVector2*>(parameter.target)->Set(SaturatedFloat(point->x), SaturatedFloat(point->y));
        break;
    case KPT_Range: {
        auto& range = *static_cast<KRange*>(parameter.target);
        (entry.sub == 0 ? range.low : range.high) = single;
        break;
    }
    case KPT_Point3D: (*static_cast<KVector3*>(parameter.target))[entry.sub] = single; break;
    case KPT_Text:
        if (auto const* text = dynamic_cast<Text const*>(value))
            *static_cast<FuStringT<char>*>(parameter.target) =
                parameter.control == KCT_Filename ? ResolvedFile(text->value) : text->value;
        break;
    case KPT_Transformation:
        ReadTransformation(*static_cast<KTransformation*>(parameter.target), entry.sub, value);
        break;
    default: break;
    }
}

void KTool::ProcessInputs_AdaptToImage(bool all)
{
    KImage const* const image = source ? source : destination;
    if (!image) return;
    for (KInput const* entry : inputs.Each<KInput>()) {
        KParameter const& parameter = *entry->parameter;
        if (parameter.type != KPT_Point || !IsAdmitted(parameter, all)) continue;
        // Without a source only the scaled units apply.
        if (!source && parameter.pointType >= KPoint_Centered) continue;
        auto& point = *static_cast<KVector2*>(parameter.target);
        point = AdaptedPoint(point, parameter.pointType, *image);
    }
}

void KTool::ReadStandardInputs(Request* request)
{
    auto const number = [&](Input* input) { return NumberOf(input->GetValue(request, 0)); };
    auto const isOn = [&](Input* input) { return number(input) > 0.5; };
    auto const rounded = [&](Input* input) { return SaturatedInt(number(input) + 0.5); };

    data.time = static_cast<float>(request->GetTime());
    data.quick = request->IsQuick();
    for (int i = 0; i < 4; ++i)
        if (channelInputs[i]) data.channels[i] = isOn(channelInputs[i]);
    if (colorSpaceInput) data.colorSpace = rounded(colorSpaceInput);
    if (preDivideInput) data.preDivide = isOn(preDivideInput);
    if (edgesInput) data.edges = rounded(edgesInput);
    if (filteringInput) data.filtering = data.quick ? 0 : rounded(filteringInput);
    if (superSampleInput) {
        static constexpr int samples[] = {1, 2, 3, 4, 5, 8, 16};
        data.superSample = data.quick ? 1 : samples[std::clamp(rounded(superSampleInput), 0, 6)];
    }
    if (superSampleFilterInput) data.superSampleFilter = SaturatedFloat(number(superSampleFilterInput));
    if (underSampleInput) data.underSample = rounded(underSampleInput);
    if (trailsInput) data.trails = isOn(trailsInput);
    if (fadeInput) data.fade = SaturatedFloat(number(fadeInput));
    if (multiThreadingInput) data.multiThreading = isOn(multiThreadingInput);
    if (warpMaskInput) data.warpMask = WrapSlot(warpMaskInput, request, 0);
    data.bottomUp = true;
}

void KTool::MakeGeneratorImage(ThreadedOperator* op, Request* request, int generatorScale, bool interlaced,
                               int field, float fieldXAspect, float fieldYAspect)
{
    int const fullWidth = std::max(SaturatedInt(NumberOf(widthInput->GetValue(request, 0))), 1);
    int fullHeight = std::max(SaturatedInt(NumberOf(heightInput->GetValue(request, 0))), 2);
    int const imageWidth = std::max(fullWidth / generatorScale, 1);
    int imageHeight = std::max(fullHeight / generatorScale, 1);
    if (interlaced) {
        imageHeight = std::max(imageHeight / 2, 1);
        fullHeight /= 2;
    }
    FrameFormat const& format = FormatOf(op->Document());
    Ref<Image> image = NewImageTagList({{Img_Document, &format},
                                        {Img_Width, imageWidth},
                                        {Img_Height, imageHeight},
                                        {Img_Channel, kChannelRed},
                                        {Img_Channel, kChannelGreen},
                                        {Img_Channel, kChannelBlue},
                                        {Img_Channel, kChannelAlpha},
                                        {Img_XScale, fieldXAspect},
                                        {Img_YScale, fieldYAspect}});
    if (!image)
        return request->Fail("no memory for a picture of " + std::to_string(imageWidth) + " x " +
                             std::to_string(imageHeight));
    if (interlaced && field != 0) image->yOffset += 1.0 / (2.0 * fullHeight);
    // The picture is its own source, and a channel that is off keeps what stands there.
    image->Clear();
    destination = KImage::ImageFromHost(image.Release(), true);
    if (generatorScale != 1) {
        destination->Set(1, static_cast<unsigned>(fullWidth));
        destination->Set(2, static_cast<unsigned>(fullHeight));
    }
    if (interlaced) {
        destination->Set(3, static_cast<unsigned>(field));
        destination->SetYScale(destination->YScale() * 2.0);
    }
    source = destination;
}

void KTool::MakeDestination(ThreadedOperator* op, Request* request, int generatorScale, bool interlaced,
                            int field, float fieldXAspect, float fieldYAspect)
{
    if (!mainImageInput) {
        if (widthInput && heightInput)
            MakeGeneratorImage(op, request, generatorScale, interlaced, field, fieldXAspect, fieldYAspect);
        return;
    }
    if (!source || !effect) return;
    if (effect->GetFlag(KPF_Resize)) {
        int const proxy = source->Scale();
        int w = source->Width(), h = source->Height();
        Image const& image = *source->FImage();
        auto xs = static_cast<float>(image.XScale()), ys = static_cast<float>(image.YScale());
        effect->GetResize(proxy, w, h, xs, ys);
        destination = source->LikeOf(w, h, xs, ys);
        if (destination && proxy != 1) {
            destination->Set(1, static_cast<unsigned>(w * proxy));
            destination->Set(2, static_cast<unsigned>(h * proxy));
        }
    } else if (effect->GetFlag(KPF_Velocity)) {
        destination = source->LikeOfPlusVelocity();
    } else {
        destination = source->LikeOf(-1, -1, -1.0F, -1.0F);
    }
    if (!destination) request->Fail("no memory for a picture like the source");
}

void KTool::ProcessSetData(ThreadedOperator* op, Request* request, int generatorScale, bool interlaced,
                           int field, float fieldXAspect, float fieldYAspect)
{
    if (mainImageInput) {
        source = WrapSlot(mainImageInput, request, 0);
        if (KEffectImage* image = ImageEffect()) {
            int const count = effect->GetInputTimes(0, static_cast<float>(request->GetTime()), nullptr);
            if (count > 1)
                for (int i = 0; i < count; ++i) image->SetImage(i, WrapSlot(mainImageInput, request, i));
        }
        if (source) data.depth = source->IsFloat() ? 2 : 1;
    }
    ReadStandardInputs(request);
    if (effect) effect->SetData(data);
    ProcessInputs(request, true);
    destination = nullptr;
    MakeDestination(op, request, generatorScale, interlaced, field, fieldXAspect, fieldYAspect);
    ProcessInputs_AdaptToImage(true);
}

/// The source laid over the faded past; null when there is no past.
std::unique_ptr<KImage> KTool::SourceWithTrails(KEffectImage* imageEffect)
{
    KImage* const past = imageEffect->BufferTrailsGet();
    if (!data.trails || !past || !source) return nullptr;
    std::unique_ptr<KImage> work(past->CopyOf());
    work->Multiply(data.fade);
    if (!work->SameSize(source)) work.reset(work->ResizeOf(source->Width(), source->Height()));
    work->MergePixel(source, 1.0, 0.0);
    return work;
}

void KTool::ProcessImage(ThreadedOperator* op, Request* request, KEffectImage* imageEffect)
{
    std::unique_ptr<KImage> const withTrails = SourceWithTrails(imageEffect);
    engine = MakeEngine(withTrails ? withTrails.get() : source, &destination, imageEffect, data);
    if (engine && data.multiThreading) {
        for (currentStep = 0; currentStep < engine->GetStepCount(); ++currentStep) {
            engine->Init(currentStep);
            op->DoMultiProcess(request, engine->GetThreadCount(currentStep));
            engine->Done(currentStep);
        }
    } else if (engine) {
        engine->Process();
    }
    bool const isGenerator = source == destination;
    if (engine) engine->Finish();
    engine.reset();
    if (isGenerator) source = destination; // which the effect's Done may have replaced
    imageEffect->BufferTrailsSet(data.trails && destination ? destination->CopyOf() : nullptr);
    if (!imageOutput) return;
    // Tools behind would be blamed for it: an effect itself cannot say what is missing.
    if (!destination)
        request->Warn(
            request->Op().Name() +
            " gives no picture: the one that it is set to hand on is not connected, or gives none itself");
    // The output gets a reference of its own; the wrapper keeps and drops what it owns.
    imageOutput->Set(request, Ref<Image>::Share(destination ? destination->FImage() : nullptr).Release(),
                     nullptr);
}

void KTool::SetOutputs(Request* request)
{
    for (KOutput const* output : effect->outputs.Each<KOutput>()) {
        if (!output->output) continue;
        Parameter* value = nullptr;
        switch (output->type) {
        case KPT_Float: value = new Number(*static_cast<float*>(output->target)); break;
        case KPT_Text: value = new Text(*static_cast<FuStringT<char>*>(output->target)); break;
        case KPT_Region3D:
        case KPT_Shape:
            if (KObjectType const* type = FindObjectType(output->type))
                value = type->wrap(*static_cast<void**>(output->target));
            break;
        default: continue; // the image went out with the engine
        }
        output->output->Set(request, value, nullptr);
    }
}

void KTool::ProcessDo(ThreadedOperator* op, Request* request, bool cleanUp)
{
    if (!effect || !CheckFile(request)) return;
    // However the frame ends, the next one finds nothing of it.
    struct CleanUp {
        KTool& tool;
        int thrown = std::uncaught_exceptions();
        bool always;
        ~CleanUp()
        {
            if (!always && std::uncaught_exceptions() == thrown) return;
            tool.BreakOff();
            tool.ProcessCleanUp();
        }
    } const end{.tool = *this, .always = cleanUp};
    ProcessSetData(op, request, static_cast<int>(scale), fieldCount > 0, fieldNumber, xAspect, yAspect);
    KEffectImage* const imageEffect = ImageEffect();
    if (imageEffect && (destination || effect->GetFlag(KPF_OptionalImage)))
        ProcessImage(op, request, imageEffect);
    effect->ProcessData();
    SetOutputs(request);
}

/// What an exception leaves behind of the engine.
void KTool::BreakOff()
{
    if (!engine) return;
    bool const isGenerator = source == destination;
    engine.reset();
    if (isGenerator) source = destination; // which the effect's Done may have replaced
}

void KTool::ProcessCleanUp()
{
    if (source != destination) delete source;
    source = nullptr;
    KSAFE_DELETE(destination);
    KSAFE_DELETE(data.warpMask);
    if (effect) effect->data.warpMask = nullptr;
    for (KInput* entry : inputs.Each<KInput>()) {
        if (entry->image) *static_cast<KImage**>(entry->parameter->target) = nullptr;
        if (entry->table) *static_cast<KLookUpTable**>(entry->parameter->target) = nullptr;
        entry->image.reset();
        entry->table.reset();
    }
}

void KTool::RenameChannels(int colorSpace)
{
    static constexpr char const* names[8][3] = {{"Red", "Green", "Blue"}, {"H", "L", "S"}, {"Y", "U", "V"},
                                                {"Y", "I", "Q"},          {"C", "M", "Y"}, {"H", "S", "V"},
                                                {"X", "Y", "Z"},          {"L", "A", "B"}};
    if (!channelInputs[0] || !channelInputs[1] || !channelInputs[2]) return;
    if (colorSpace < 0 || colorSpace > 7) return;
    for (int i = 0; i < 3; ++i) channelInputs[i]->SetAttrsTagList({{Attr_ControlName, names[colorSpace][i]}});
}

void KTool::ApplyAffectInputs(Input* input, Parameter* value, float time)
{
    for (KInput const* entry : inputs.Each<KInput>()) {
        if (entry->input != input || !(entry->parameter->flags & KF_AffectInputs)) continue;
        KParameterValue given;
        if (entry->parameter->type == KPT_Image) {
            given.image.reset(KImage::ImageFromHost(ImageOf(value), false));
        } else {
            given.floatValue = SaturatedFloat(NumberOf(value));
            given.intValue = SaturatedInt(given.floatValue + 0.5F);
        }
        std::unique_ptr<KMessageList> const messages(effect->AffectInputs(entry->id, given));
        for (KMessage const* message : messages->Each<KMessage>()) {
            switch (message->type) {
            case KMsg_Visibility: inputs.SetVisibility(message->target, message->value.intValue > 0); break;
            case KMsg_Name: inputs.SetName(message->target, message->value); break;
            case KMsg_Value: inputs.SetValue(message->target, message->value, time); break;
            }
        }
    }
}

void KTool::Notify(Input* input, Parameter* value, float time)
{
    if (!value) return;
    if (input == colorSpaceInput) RenameChannels(SaturatedInt(NumberOf(value)));
    if (input == trailsInput && trailsInput) {
        bool const visible = NumberOf(value) > 0.5;
        fadeInput->SetAttrsTagList({{Attr_ControlVisible, visible}});
        resetInput->SetAttrsTagList({{Attr_ControlVisible, visible}});
    }
    if (input == resetInput && resetInput && NumberOf(value) >= 0.9) StartProcess();
    if (effect) ApplyAffectInputs(input, value, time);
}

void KTool::ShowInputs(bool show)
{
    for (KInput const* entry : inputs.Each<KInput>()) {
        if (!entry->input) continue;
        show ? entry->input->ShowControls(1) : entry->input->HideControls(1);
    }
}

} // namespace ombrelune
