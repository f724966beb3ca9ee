#include <gtest/gtest.h>

#include "framework/KObjectType.h"
#include "framework/Registration.h"
#include "host/render/Renderer.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune {
namespace {

using namespace test;

// Small tools for the bridge; they register under their own names and live only in this program.

struct KEffectTestColor : KEffectColor {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TCo", "Test Color"); }
    KEffectTestColor()
    {
        parameters.AddChapter("Look");
        parameters.AddSlider(&gain, 1.0F, "Gain", "Gain"_id, KF_SoftMax, 0.0, 2.0);
        parameters.AddAngle(&degrees, 0.0F, "Turn", "Turn"_id, 0, KAngle_Degrees);
        parameters.AddAngle(&radians, 0.0F, "Turn in radians (both)", "TurR"_id, 0, KAngle_Radians);
        parameters.AddColor(&tint, KColor(), "What it is", "TinR"_id, 0);
        parameters.AddColor(&second, KColor(), "What it is", "SecR"_id, 0);
        parameters.AddSliderInt(&whole, 0, "Whole", "Whol"_id, KF_SoftMin | KF_SoftMax, 0, 10);
        parameters.AddPoint(&pixels, KVector2(0.5F, 0.5F), "Place", "Plac"_id, 0, KPoint_Pixels);
        parameters.AddPoint(&centred, KVector2(0.5F, 0.5F), "Centre", "Cent"_id, 0, KPoint_CenteredAspect);
        parameters.AddCurve(&curve, "Curve", "Curv"_id, 0, KColor());
        parameters.AddCheckbox(&extra, false, "Extra", "Extr"_id, KF_AffectInputs);
        parameters.AddTransformation(&transformation, KTransformation(), "Move", "Move"_id, 0,
                                     KTransformation_PositionRotation);
        parameters.AddStandard(&space, 0, KPS_ColorSpace, 0);
        parameters.AddStandard(&mask, 0, KPS_ChannelsRGBA, 0);
    }
    using KEffectColor::F;
    KColor F(KColor const& c) override
    {
        return {c.red * gain, c.green * gain, c.blue * gain, c.alpha * gain};
    }
    bool Init(KImage* source) override
    {
        seen = data;
        hasCurve = curve != nullptr;
        return KEffectColor::Init(source);
    }
    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id != "Extr"_id) return messages;
        messages->Show("Gain"_id, value.intValue > 0);
        messages->SetName("Whol"_id, "Number of things");
        messages->SetValue("Whol"_id, 7.0F);
        messages->SetPoint("Plac"_id, KVector2(0.25F, 0.75F));
        return messages;
    }
    float gain, degrees, radians;
    KColor tint, second;
    int whole, space, mask;
    KVector2 pixels, centred;
    KLookUpTable* curve;
    bool extra, hasCurve = false;
    KTransformation transformation;
    inline static KProcessImageData seen;
};

struct KEffectTestFrames : KEffectThreads {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TFr", "Test Frames"); }
    KEffectTestFrames() { ImagesInitialise(3); }
    int GetInputTimes(unsigned, float time, float* times) override
    {
        if (times) {
            times[0] = time;
            times[1] = time - 1.0F;
            times[2] = kNoFrame;
        }
        return 3;
    }
    void F(int, int, KImage* source, KImage* destination) override
    {
        // Red of this frame, green of the one before, blue tells whether the third slot is empty.
        FltPixel now, before;
        source->GetPixel(0, 0, now);
        GetImage(1)->GetPixel(0, 0, before);
        FltPixel pixel = now;
        pixel.green = before.red;
        pixel.blue = GetImage(2) ? 0.0F : 1.0F;
        destination->SetPixel(0, 0, pixel);
    }
};

struct KEffectTestSource : KEffectPixel {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TSo", "Test Source"); }
    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source || KEffectPixel::GetFlag(flag); }
    Pixel F(int, int y, KImage* source) override
    {
        Pixel pixel;
        pixel.Clear();
        pixel.red = static_cast<std::uint32_t>(y);
        pixel.green = static_cast<std::uint32_t>(source->FImage()->yOffset * 65535.0);
        pixel.blue = static_cast<std::uint32_t>(data.time * 100.0F);
        pixel.alpha = 65535;
        return pixel;
    }
};

struct KEffectTestHalf : KEffectPixel {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "THa", "Test Half"); }
    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Resize || KEffectPixel::GetFlag(flag); }
    bool GetResize(int, int& w, int& h, float&, float&) override
    {
        w /= 2;
        h /= 2;
        return true;
    }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel;
        source->GetPixel(2 * x, 2 * y, pixel);
        return pixel;
    }
};

struct KEffectTestValues : KEffectNumber {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TVa", "Test Values"); }
    KEffectTestValues()
    {
        outputs.AddText(&text, "Text", "Text"_id, 0);
        parameters.AddRange(&range, {0.25F, 0.75F}, "From", "To", "From"_id, "ToTo"_id, 0, 0.0, 1.0);
    }
    void ProcessData() override
    {
        result = range.high - range.low;
        text = "span";
    }
    KRange range;
    FuStringT<char> text;
};

struct KEffectTestWarp : KEffectWarp {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TWa", "Test Warp"); }
    KEffectTestWarp() { parameters.AddStandard(&edges, 2, KPS_Edges, 0); }
    bool F(KVector2& source, KVector2 const& destination) override
    {
        source = destination;
        return true;
    }
    bool Init(KImage* source) override
    {
        seen = data;
        return KEffectWarp::Init(source);
    }
    int edges;
    inline static KProcessImageData seen;
};

OMBRELUNE_TOOL(BF_TestColor, BF_ThreadedOperator, KEffectTestColor);
OMBRELUNE_TOOL(BF_TestFrames, BF_ThreadedOperator, KEffectTestFrames, .isTimeVariant = true);
OMBRELUNE_TOOL(BF_TestSource, BF_SourceOperator, KEffectTestSource);
OMBRELUNE_TOOL(BF_TestHalf, BF_ThreadedOperator, KEffectTestHalf, .id = "BF_TestHalved");
OMBRELUNE_TOOL(BF_TestValues, BF_ThreadedOperator, KEffectTestValues, .outputType = CLSID_DataType_Number);
OMBRELUNE_TOOL(BF_TestWarp, BF_ThreadedOperator, KEffectTestWarp);

/// An operator that hands out a picture made for the time.
class Feed : public Operator {
public:
    Feed(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags)
    {
        output = AddOutputTagList("Output", "Output",
                                  {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
    }
    void Process(Request* request) override
    {
        ++renders;
        Picture const picture = make(request->GetTime());
        output->Set(request, Ref<Image>::Share(picture->FImage()).Release(), nullptr);
    }
    static Operator* New(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    {
        return new Feed(registry, settings, tags);
    }
    std::function<Picture(double)> make = [](double) { return MakeBusyPicture(kDepthFloat, 4, 3); };
    Output* output;
    int renders = 0;
};

Registry const feedRegistry(ClassRegistry(), "Test.Feed",
                            {{Reg_InitFunction, Operator::RegInit},
                             {Reg_CleanupFunction, Operator::RegCleanup},
                             {Reg_NewFunction, Feed::New},
                             {Reg_TimeVariant, 1}});

/// A document with a feed and one tool behind it.
struct Flow {
    explicit Flow(char const* tool)
        : feed(static_cast<Feed*>(document.AddOperator(*ClassRegistry().Find("Test.Feed"), "Feed1"))),
          op(document.AddOperator(*ClassRegistry().Find(std::string("Brassfennel.") + tool), "Tool1"))
    {
        if (Input* main = op->MainInput(1)) main->ConnectTo(feed->output);
    }
    void Set(char const* id, double value) { op->FindInput(id)->SetValueQuietly(MakeRef<Number>(value)); }
    Ref<Parameter> Result(double time, RenderQuality quality = {}, char const* output = "Output")
    {
        renderer = std::make_unique<Renderer>(document, quality);
        RenderResult result = renderer->Evaluate(*op->FindOutput(output), time);
        EXPECT_FALSE(result.problem) << result.problem->Format();
        return result.value;
    }
    Picture Render(double time, RenderQuality quality = {})
    {
        Ref<Parameter> value = Result(time, quality);
        return Picture(
            KImage::ImageFromHost(Ref<Image>::Share(dynamic_cast<Image*>(value.Get())).Release(), true));
    }

    FusionDoc document;
    Feed* feed;
    Operator* op;
    std::unique_ptr<Renderer> renderer;
};

std::vector<std::string> IdsOnPage(Operator const& op, std::string const& page)
{
    std::vector<std::string> ids;
    for (auto const& input : op.Inputs())
        if (input->Page() == page) ids.push_back(input->Id().Text());
    return ids;
}

TEST(ToolInputs, StandardInputsFollowOnTheirOwnPage)
{
    Flow const flow("BF_TestColor");
    EXPECT_EQ(IdsOnPage(*flow.op, "Ombrelune Controls"),
              (std::vector<std::string>{"Red", "Green", "Blue", "Alpha", "Supersampling",
                                        "Supersamplingfiltersize", "PreDividePostMultiply", "Trails", "Fade",
                                        "Reset", "Domultithreading", "Colorspace", "Image"}));
    EXPECT_EQ(flow.op->Inputs().front()->Page(), "Look");
}

TEST(ToolInputs, EqualLabelsAreKeptApart)
{
    Flow const flow("BF_TestColor");
    EXPECT_TRUE(flow.op->FindInput("WhatitisRed"));
    EXPECT_TRUE(flow.op->FindInput("WhatitisRed_1"));
    EXPECT_TRUE(flow.op->FindInput("Turninradians")) << "an id stops at the first parenthesis";
    EXPECT_EQ(flow.op->FindInput("WhatitisRed")->Label(), "What it is");
}

TEST(ToolInputs, FamiliesAndFlagsDecideWhichStandardsThereAre)
{
    Flow const warp("BF_TestWarp"), source("BF_TestSource"), half("BF_TestHalved"), frames("BF_TestFrames");
    EXPECT_EQ(IdsOnPage(*warp.op, "Ombrelune Controls"),
              (std::vector<std::string>{"Red", "Green", "Blue", "Alpha", "Undersampleresolution", "Filtering",
                                        "Edges", "WarpMask", "Trails", "Fade", "Reset", "Domultithreading",
                                        "Image"}));
    EXPECT_EQ(IdsOnPage(*half.op, "Ombrelune Controls"),
              (std::vector<std::string>{"Domultithreading", "Image"}));
    EXPECT_EQ(IdsOnPage(*source.op, "Ombrelune Controls"),
              (std::vector<std::string>{"Red", "Green", "Blue", "Alpha", "Domultithreading"}));
    EXPECT_TRUE(frames.op->FindInput("Input")) << "a main input of many frames has another name";
    EXPECT_FALSE(frames.op->FindInput("Image"));
    EXPECT_EQ(warp.op->FindInput("Edges")->Attributes().GetFloat(Attr_Default), 0.0)
        << "a standard that is there already keeps its default";
    EXPECT_EQ(ClassRegistry().Find("Brassfennel.BF_TestHalved"), half.op->Registration());
}

TEST(ToolInputs, ValuesReachTheirTargets)
{
    Flow flow("BF_TestColor");
    flow.feed->make = [](double) { return MakeBusyPicture(kDepthFloat, 40, 20); };
    flow.Set("Turn", 30.0);
    flow.Set("Turninradians", 180.0);
    flow.Set("WhatitisGreen", 0.25);
    flow.Set("WhatitisBlue_1", 0.75);
    flow.Set("Whole", -2.5);
    flow.Set("MovePositionY", 4.0);
    flow.Set("MoveRotationZ", 90.0);
    flow.op->FindInput("MoveRotationOrder")->SetValueQuietly(MakeRef<IdParameter>(ROID_ZYX));
    flow.op->FindInput("Centre")->SetValueQuietly(MakeRef<Point>(0.75, 0.75));
    flow.Set("Colorspace", 5.0);
    flow.Set("Blue", 0.0);
    flow.Render(3.0);

    auto const& tool = dynamic_cast<KTool const&>(*flow.op);
    auto const target = [&](std::uint32_t id) {
        for (KInput const* entry : tool.EffectInputs().Each<KInput>())
            if (entry->id == id) return entry->parameter->target;
        return static_cast<void*>(nullptr);
    };
    EXPECT_EQ(*static_cast<float*>(target("Turn"_id)), -30.0F);
    EXPECT_FLOAT_EQ(*static_cast<float*>(target("TurR"_id)), -3.14159265F);
    EXPECT_EQ(static_cast<KColor*>(target("TinR"_id))->green, 0.25F);
    EXPECT_EQ(static_cast<KColor*>(target("SecR"_id))->blue, 0.75F);
    EXPECT_EQ(*static_cast<int*>(target("Whol"_id)), -3) << "halves round away from zero";
    auto const& move = *static_cast<KTransformation*>(target("Move"_id));
    EXPECT_EQ(move.position.y, 4.0F);
    EXPECT_FLOAT_EQ(move.rotation.z, 1.57079633F);
    EXPECT_EQ(move.rotationOrder, 5);
    EXPECT_EQ(*static_cast<KVector2*>(target("Plac"_id)), KVector2(20.0F, 10.0F));
    EXPECT_EQ(*static_cast<KVector2*>(target("Cent"_id)), KVector2(0.25F, 0.125F)); // frame aspect 2
    EXPECT_EQ(*static_cast<KLookUpTable**>(target("Curv"_id)), nullptr) << "freed at the end of the render";

    KProcessImageData const& seen = KEffectTestColor::seen;
    EXPECT_EQ(seen.colorSpace, 5);
    EXPECT_EQ(seen.time, 3.0F);
    EXPECT_TRUE(seen.channels[0] && seen.channels[1] && !seen.channels[2] && seen.channels[3]);
    EXPECT_EQ(seen.fade, 0.95F) << "the input's default, not the block's 0.9";
    EXPECT_TRUE(seen.bottomUp);
}

TEST(ToolInputs, SuperSamplesAreCountsAndQuickRequestsTakeNone)
{
    int const counts[] = {1, 2, 3, 4, 5, 8, 16};
    for (int button = 0; button < 7; ++button) {
        Flow flow("BF_TestColor");
        flow.Set("Supersampling", button);
        flow.Render(0.0);
        EXPECT_EQ(KEffectTestColor::seen.superSample, counts[button]);
        flow.Render(0.0, {.quick = true});
        EXPECT_EQ(KEffectTestColor::seen.superSample, 1);
    }
    Flow warp("BF_TestWarp");
    warp.Set("Filtering", 2.0);
    warp.Render(0.0);
    EXPECT_EQ(KEffectTestWarp::seen.filtering, 2);
    warp.Render(0.0, {.quick = true});
    EXPECT_EQ(KEffectTestWarp::seen.filtering, 0);
}

TEST(ToolRender, EachSlotHoldsItsFrame)
{
    Flow flow("BF_TestFrames");
    flow.feed->make = [](double time) {
        return MakePicture(kDepthFloat, 1, 1,
                           [&](int, int) { return KColor(std::floor(static_cast<float>(time)), 0, 0, 1); });
    };
    EXPECT_EQ(ColorAt(*flow.Render(5.0), 0, 0), KColor(5.0F, 4.0F, 1.0F, 1.0F));
    EXPECT_EQ(flow.feed->renders, 2) << "the empty slot fetches nothing";
}

TEST(ToolRender, TrailsLayTheFadedPastUnderTheSource)
{
    Flow flow("BF_TestColor");
    flow.feed->make = [](double time) {
        float const v = time == 0.0 ? 1.0F : 0.0F; // a flash, then nothing
        return MakePicture(kDepthFloat, 2, 2, [&](int, int) { return KColor(v, v, v, v); });
    };
    flow.Set("Trails", 1.0);
    flow.Set("Fade", 0.5);
    EXPECT_EQ(ColorAt(*flow.Render(0.0), 0, 0).red, 1.0F);
    EXPECT_EQ(ColorAt(*flow.Render(1.0), 0, 0).red, 0.5F);
    EXPECT_EQ(ColorAt(*flow.Render(2.0), 0, 0).red, 0.25F);
    flow.Set("Trails", 0.0);
    EXPECT_EQ(ColorAt(*flow.Render(3.0), 0, 0).red, 0.0F);
    flow.Set("Trails", 1.0);
    EXPECT_EQ(ColorAt(*flow.Render(4.0), 0, 0).red, 0.0F) << "a frame without trails drops the past";

    flow.Render(0.0);
    flow.renderer->Start({0.0, 4.0});
    EXPECT_EQ(ColorAt(*flow.Render(1.0), 0, 0).red, 0.0F) << "a new job begins afresh";
    flow.Render(0.0);
    flow.op->FindInput("Reset")->SetSource(MakeRef<Number>(1.0).Get(), 0.0, nullptr);
    EXPECT_EQ(ColorAt(*flow.Render(1.0), 0, 0).red, 0.0F) << "the button clears them too";
}

TEST(ToolRender, TrailsOfAnotherSizeAreFitted)
{
    Flow flow("BF_TestColor");
    flow.feed->make = [](double time) {
        int const side = time == 0.0 ? 8 : 4;
        return MakePicture(kDepthFloat, side, side, [&](int, int) { return KColor(0.5F, 0.5F, 0.5F, 0.5F); });
    };
    flow.Set("Trails", 1.0);
    flow.Set("Fade", 0.5);
    flow.Render(0.0);
    // 0.25 of the past under 0.5 of now: 0.25 * (1 - 0.5) + 0.5.
    EXPECT_NEAR(ColorAt(*flow.Render(1.0), 1, 2).red, 0.625F, 1e-6);
}

TEST(ToolRender, AGeneratorMakesAtLeastOneByTwoPixels)
{
    Flow flow("BF_TestSource");
    flow.Set("Width", 0.0);
    flow.Set("Height", 0.0);
    Picture const smallest = flow.Render(0.0);
    EXPECT_EQ(smallest->Width(), 1);
    EXPECT_EQ(smallest->Height(), 2);
}

TEST(ToolRender, AProxyRemembersItsFullSize)
{
    Flow flow("BF_TestSource");
    flow.Set("Width", 60.0);
    flow.Set("Height", 30.0);
    Picture const proxy = flow.Render(0.0, {.proxy = 3});
    EXPECT_EQ(proxy->Width(), 20);
    EXPECT_EQ(proxy->Height(), 10);
    EXPECT_EQ(proxy->OriginalWidth(), 60);
    EXPECT_EQ(proxy->OriginalHeight(), 30);
    EXPECT_EQ(proxy->Scale(), 3);
}

TEST(ToolRender, FieldsAreMadeApartAndWoven)
{
    Flow flow("BF_TestSource");
    flow.document.format.depth = kDepthInt16;
    flow.Set("Width", 4.0);
    flow.Set("Height", 10.0);
    flow.Set("ProcessMode", 1.0);
    Picture const frame = flow.Render(2.0);
    ASSERT_EQ(frame->Height(), 10);
    // Rows 6 and 7 are row 3 of their fields; the second one lies half a frame later and 1 / (2 x 5) higher.
    EXPECT_EQ(WordsAt(*frame, 1, 6), KColor32(3, 0, 200, 65535));
    EXPECT_EQ(WordsAt(*frame, 1, 7), KColor32(3, 6553, 250, 65535));
}

TEST(ToolRender, ResizingEffectsKeepTheProxysFullSize)
{
    Flow flow("BF_TestHalved");
    flow.feed->make = [](double) {
        Picture picture = MakeBusyPicture(kDepthFloat, 12, 8);
        picture->Set(1, 24);
        picture->Set(2, 16);
        return picture;
    };
    Picture const result = flow.Render(0.0);
    EXPECT_EQ(result->Width(), 6);
    EXPECT_EQ(result->OriginalWidth(), 12);
    EXPECT_EQ(ColorAt(*result, 2, 3), ColorAt(*MakeBusyPicture(kDepthFloat, 12, 8), 4, 6));
}

TEST(ToolRender, ValuesComeOutWithoutAPicture)
{
    Flow flow("BF_TestValues");
    flow.Set("To", 1.0);
    auto const number = flow.Result(0.0, {}, "Number");
    EXPECT_EQ(dynamic_cast<Number const&>(*number).value, 0.75);
    auto const text = flow.Result(0.0, {}, "Text");
    EXPECT_EQ(dynamic_cast<Text const&>(*text).value, "span");
}

TEST(ToolRender, MultiThreadingOffGivesTheSameBytes)
{
    Flow flow("BF_TestColor");
    flow.feed->make = [](double) { return MakeBusyPicture(kDepthInt8, 133, 77); };
    flow.Set("Gain", 0.7);
    Picture const threaded = flow.Render(0.0);
    flow.Set("Domultithreading", 0.0);
    EXPECT_TRUE(SameBytes(*flow.Render(0.0), *threaded));
}

TEST(ToolRender, NumbersThatAreNotFiniteStopAtTheDoor)
{
    Flow flow("BF_TestColor");
    flow.Set("Gain", std::nan(""));
    Renderer renderer(flow.document, {});
    RenderResult const result = renderer.Evaluate(*flow.op->FindOutput("Output"), 0.0);
    ASSERT_TRUE(result.problem);
    EXPECT_NE(result.problem->text.find("Tool1.Gain is not a finite number"), std::string::npos);
}

TEST(ToolRender, AToolThatFeedsItselfIsReported)
{
    Flow flow("BF_TestColor");
    flow.op->MainInput(1)->ConnectTo(flow.op->FindOutput("Output"));
    Renderer renderer(flow.document, {});
    RenderResult const result = renderer.Evaluate(*flow.op->FindOutput("Output"), 0.0);
    ASSERT_TRUE(result.problem);
    EXPECT_NE(result.problem->text.find("'Tool1' feeds itself"), std::string::npos);
}

TEST(ToolNotify, AChangeShowsHidesRenamesAndSets)
{
    Flow flow("BF_TestColor");
    auto const change = [&](char const* id, double value) {
        flow.op->FindInput(id)->SetSource(MakeRef<Number>(value).Get(), 0.0, nullptr);
    };
    change("Extra", 0.0);
    EXPECT_FALSE(flow.op->FindInput("Gain")->IsVisible());
    EXPECT_EQ(flow.op->FindInput("Whole")->Label(), "Number of things");
    EXPECT_EQ(dynamic_cast<Number const&>(*flow.op->FindInput("Whole")->Value()).value, 7.0);
    EXPECT_EQ(dynamic_cast<Point const&>(*flow.op->FindInput("Place")->Value()).y, 0.75);
    change("Extra", 1.0);
    EXPECT_TRUE(flow.op->FindInput("Gain")->IsVisible());

    change("Colorspace", 1.0);
    EXPECT_EQ(flow.op->FindInput("Green")->Label(), "L");
    change("Colorspace", 8.0);
    EXPECT_EQ(flow.op->FindInput("Green")->Label(), "L") << "an unknown space leaves the labels";
    change("Trails", 0.0);
    EXPECT_FALSE(flow.op->FindInput("Fade")->IsVisible());
}

// A value of a class that the framework does not know, as shapes are.

struct Basket {
    int apples = 0;
    inline static int alive = 0;
    Basket() { ++alive; }
    ~Basket() { --alive; }
};

struct BasketParameter : Parameter {
    explicit BasketParameter(Basket* held) : basket(held) {}
    FuID DataType() const override { return "Test.Basket"; }
    std::unique_ptr<Basket> basket;
};

KObjectTypeRegistration const basketType({
    KPT_Shape,
    "Test.Basket",
    [](Parameter* value) -> void* {
        auto const* held = dynamic_cast<BasketParameter const*>(value);
        auto* copy = new Basket;
        if (held && held->basket) copy->apples = held->basket->apples;
        return copy;
    },
    [](void* object) { delete static_cast<Basket*>(object); },
    [](void* object) -> Parameter* { return new BasketParameter(static_cast<Basket*>(object)); },
});

struct KEffectTestBasket : KEffect {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TBa", "Test Basket"); }
    KEffectTestBasket()
    {
        parameters.AddShape(&in, "Input", 1, KF_MainInput);
        outputs.AddShape(&out, "Output", "Bask"_id, 0);
    }
    int ProcessType() override { return KProc_Shapes; }
    void ProcessData() override
    {
        ++runs;
        out = nullptr; // the bridge took the last one
        if (leavesIt) return;
        static_cast<Basket*>(in)->apples += 1;
        out = in;
        in = nullptr;
    }
    void* in;
    void* out = nullptr;
    inline static int runs = 0;
    inline static bool leavesIt = false; // as one that was declined does
};

OMBRELUNE_TOOL(BF_TestBasket, BF_ThreadedOperator, KEffectTestBasket, .outputType = "Test.Basket");

TEST(ToolRender, ObjectsAreCopiedInAndHandedOn)
{
    {
        FusionDoc document;
        Registry const& registry = *ClassRegistry().Find("Brassfennel.BF_TestBasket");
        Operator* const first = document.AddOperator(registry, "First");
        Operator* const second = document.AddOperator(registry, "Second");
        second->MainInput(1)->ConnectTo(first->FindOutput("Output"));
        Renderer renderer(document, {});
        renderer.PlanOf(*second, 0.0);
        EXPECT_EQ(KEffectTestBasket::runs, 0) << "the pass before a render makes no objects";
        RenderResult const result = renderer.Evaluate(*second->FindOutput("Output"), 0.0);
        EXPECT_EQ(dynamic_cast<BasketParameter const&>(*result.value).basket->apples, 2);
        RenderResult const between = renderer.Evaluate(*first->FindOutput("Output"), 0.0);
        EXPECT_EQ(dynamic_cast<BasketParameter const&>(*between.value).basket->apples, 1)
            << "what was fed stays";

        KEffectTestBasket::leavesIt = true;
        for (int i = 0; i < 5; ++i) Renderer(document, {}).Evaluate(*first->FindOutput("Output"), 0.0);
        EXPECT_LE(Basket::alive, 4) << "two results, and what an effect was given last";
        KEffectTestBasket::leavesIt = false;
        Renderer(document, {}).Evaluate(*first->FindOutput("Output"), 0.0);
    }
    EXPECT_EQ(Basket::alive, 0);
}

} // namespace
} // namespace ombrelune
