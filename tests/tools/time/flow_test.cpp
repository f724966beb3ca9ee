// Tools for texts and times within a flow: what is asked for, what is shared, what stands in for what is
// missing.

#include <cmath>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "host/flow/FlowReader.h"
#include "host/io/Pictures.h"
#include "host/render/Renderer.h"
#include "tests/framework/Expect.h"

namespace ombrelune::test {
namespace {

namespace fs = std::filesystem;

/// A flow in a folder of its own.
class TimeFlow : public testing::Test {
protected:
    TimeFlow() : folder(fs::temp_directory_path() / ("ombrelune_time_" + std::to_string(getpid())))
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    ~TimeFlow() override { fs::remove_all(folder); }

    void Read(std::string const& tools, RenderQuality const& quality = {})
    {
        reading =
            ReadFlowText("{ FrameFormat = { Width = 16, Height = 8, Depth = 8 }, Tools = {\n" + tools + "} }",
                         (folder / "flow.comp").string());
        for (Problem const& each : reading.problems) ADD_FAILURE() << each.Format();
        renderer = std::make_unique<Renderer>(*reading.document, quality);
    }
    RenderResult At(char const* op, double time)
    {
        return renderer->Evaluate(*reading.document->FindOperator(op)->MainOutput(1), time);
    }
    /// Red of the picture that an operator gives; not a number when there is none.
    float RedAt(char const* op, double time)
    {
        RenderResult const result = At(op, time);
        if (result.problem) problem = result.problem->Format();
        auto* image = dynamic_cast<Image*>(result.value.Get());
        if (!image) return std::nanf("");
        FltPixel pixel;
        PixPtr(image, 3, 2).GetPixel(pixel);
        return pixel.red;
    }
    int Processed(char const* op) const
    {
        for (OperatorWork const& work : renderer->Work())
            if (work.op->Name() == op) return work.processed;
        return 0;
    }
    /// Frames of a sequence whose red is a tenth of their number.
    void WriteFrames(std::initializer_list<int> numbers) const
    {
        for (int n : numbers) {
            Picture const picture = Plain(kDepthFloat, {0.1F * static_cast<float>(n), 0, 0, 1}, 16, 8);
            auto const failed =
                WritePicture(*picture->FImage(),
                             (folder / ("in." + std::to_string(1000 + n).substr(1) + ".exr")).string());
            ASSERT_FALSE(failed);
        }
    }

    fs::path folder;
    FlowReading reading;
    std::unique_ptr<Renderer> renderer;
    std::string problem;
};

constexpr char const* kRising =
    "Rising = Background { Inputs = { Red = Input { Expression = \"time / 100\" } } },\n";

TEST_F(TimeFlow, OverlappingRequestsAreAnsweredFromTheCache)
{
    Read(std::string(kRising) +
         "A = Brassfennel.BF_Average { Inputs = { Input = Input { SourceOp = \"Rising\" } } } ");
    for (int frame = 0; frame < 10; ++frame)
        EXPECT_NEAR(RedAt("A", frame), (frame + 3.5) / 100.0, 1e-5)
            << frame; // the mean of 8 frames from here on
    EXPECT_EQ(Processed("Rising"), 17) << "frames 0 to 16, each once";
}

TEST_F(TimeFlow, ARequestOfAThousandSlotsFetchesOnlyWhatIsAskedFor)
{
    Read(std::string(kRising) + "Map = Background { Inputs = { Red = 0.5, Green = 0.5, Blue = 0.5 } },\n"
                                "M = Brassfennel.BF_TimeMapper { Inputs = { Input = Input { SourceOp = "
                                "\"Rising\" }, Timemap = Input { SourceOp = \"Map\" } } } ");
    EXPECT_NEAR(RedAt("M", 20.0), 0.24, 1e-4);
    EXPECT_EQ(Processed("Rising"), 9);
    EXPECT_NEAR(RedAt("M", 21.0), 0.25, 1e-4);
    EXPECT_EQ(Processed("Rising"), 10);
    EXPECT_EQ(Processed("Map"), 1);
}

TEST_F(TimeFlow, ALoopPlaysItsFramesAgain)
{
    Read(std::string(kRising) +
         "L = Brassfennel.BF_SeamlessLoop { Inputs = { Input = Input { SourceOp = \"Rising\" }, "
         "Looplength = 6, Dissolvelength = 2 } } ");
    // Frames 2 to 7; the last is half of the frame 7 and half of the frame 1.
    float const reds[] = {0.02F, 0.03F, 0.04F, 0.05F, 0.06F, 0.04F};
    for (int frame = 0; frame < 13; ++frame) EXPECT_NEAR(RedAt("L", frame), reds[frame % 6], 1e-5F) << frame;
}

TEST_F(TimeFlow, FramesBesideTheOwnOneMayBeMissing)
{
    WriteFrames({0, 1, 2});
    std::string const tools =
        "In = Loader { Inputs = { Filename = \"in.###.exr\" } },\n"
        "A = Brassfennel.BF_Average { Inputs = { Input = Input { SourceOp = \"In\" }, Numberofframes = 4, "
        "Nonexistingframes = ";
    Read(tools + "1 } } ");
    EXPECT_NEAR(RedAt("A", 1.0), 0.15F, 1e-5F) << "of frames 1 and 2";
    EXPECT_NEAR(RedAt("A", 2.0), 0.2F, 1e-5F);
    EXPECT_TRUE(problem.empty()) << problem;
    EXPECT_TRUE(std::isnan(RedAt("A", 3.0)));
    EXPECT_NE(problem.find("there is no such file, but 3 frames from 0 to 2"), std::string::npos)
        << "its own frame";
    Read(tools + "0 } } ");
    EXPECT_NEAR(RedAt("A", 1.0), 0.075F, 1e-5F) << "two of four are black";
    Read(tools + "1 } } ", {.missing = MissingFrame::kHold});
    EXPECT_NEAR(RedAt("A", 1.0), 0.175F, 1e-5F) << "frame 2 counts three times";
    // The look ahead names no file that is not there and not needed.
    Read(tools + "1 } } ");
    Renderer::Plan const plan = renderer->PlanOf(*reading.document->FindOperator("A"), 1.0);
    EXPECT_EQ(plan.reads.size(), 2U);
    EXPECT_FALSE(plan.problem);
}

TEST_F(TimeFlow, LinksBringPicturesFromAnywhere)
{
    Read(
        "Red = Background { Inputs = { Red = 0.75 } },\n"
        "Link = Brassfennel.BF_WirelessLink { Inputs = { Link5 = Input { SourceOp = \"Red\" } } },\n"
        "Linky = Brassfennel.BF_WirelessLinky { Inputs = { Link1 = Input { SourceOp = \"Red\" } } },\n"
        "Main = Brassfennel.BF_WirelessLink { Inputs = { Image = Input { SourceOp = \"Red\" } } },\n"
        "Switch = Brassfennel.BF_Switcher { Inputs = { Image = Input { SourceOp = \"Red\" }, Index = 2 } },\n"
        "Behind = Brassfennel.BF_Invert { Inputs = { Image = Input { SourceOp = \"Switch\" } } },\n"
        "Far = Transform { Inputs = { Input = Input { SourceOp = \"Behind\" } } },\n"
        "Out = Saver { Inputs = { Input = Input { SourceOp = \"Switch\" }, Filename = \"out.exr\" } } ");
    EXPECT_EQ(RedAt("Link", 0.0), 0.75F);
    EXPECT_EQ(RedAt("Linky", 0.0), 0.75F);
    EXPECT_TRUE(std::isnan(RedAt("Main", 0.0))) << "the main picture is no link";
    EXPECT_TRUE(std::isnan(RedAt("Out", 0.0)));
    EXPECT_NE(problem.find("flow.comp:9: Out.Input got no picture: Switch gives none at this time"),
              std::string::npos)
        << problem;
    // However far behind the picture is missed, the cause is named.
    EXPECT_TRUE(std::isnan(RedAt("Far", 0.0)));
    EXPECT_NE(problem.find("Far.Input got no picture: Behind gives none"), std::string::npos) << problem;
    std::vector<Problem> const warnings = renderer->TakeWarnings();
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_NE(warnings[0].text.find("Main gives no picture"), std::string::npos) << warnings[0].text;
    EXPECT_NE(warnings[1].text.find("Switch gives no picture"), std::string::npos) << warnings[1].text;
}

TEST_F(TimeFlow, AChangedTextFileGivesANewText)
{
    Read("F = Brassfennel.BF_TextFromFile { Inputs = { Filename = \"words.txt\", Format = 2 } },\n"
         "Line = Brassfennel.BF_TextWrite { Inputs = { Text = Input { SourceOp = \"F\", Source = \"Output\" "
         "}, Cursorshow = 0 } } ");
    auto const evaluate = [&] {
        RenderResult const result =
            renderer->Evaluate(*reading.document->FindOperator("Line")->FindOutput("Output"), 0.0);
        auto const* text = dynamic_cast<Text const*>(result.value.Get());
        return text ? text->value : "no text";
    };
    std::ofstream(folder / "words.txt") << "first";
    EXPECT_EQ(evaluate(), "first");
    EXPECT_EQ(evaluate(), "first");
    std::ofstream(folder / "words.txt") << "the second";
    EXPECT_EQ(evaluate(), "the second");
    EXPECT_TRUE(renderer->TakeWarnings().empty());
    fs::remove(folder / "words.txt");
    EXPECT_EQ(evaluate(), "");
    EXPECT_EQ(renderer->TakeWarnings().size(), 1U);
    EXPECT_TRUE(renderer->TakeWarnings().empty()) << "told once";
}

} // namespace
} // namespace ombrelune::test
