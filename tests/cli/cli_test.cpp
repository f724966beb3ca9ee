// The built program on small flows and files: what it prints, what it ends with, which files there are
// afterwards.

#include <array>
#include <set>

#include <nlohmann/json.hpp>

#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

char const* const kSequence = R"(Composition {
  RenderRange = { 1, 3 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "in.####.tif" } } },
    Invert1 = Brassfennel.BF_Invert { Inputs = { Image = Input { SourceOp = "Photo", Source = "Output" } } },
    Out = Saver { Inputs = { Input = Input { SourceOp = "Invert1", Source = "Output" },
                             Filename = Input { Value = "out/inverted.####.tif" } } },
  },
})";

TEST_F(Cli, ApplyWritesWhatTheToolMakes)
{
    WriteRamp("ramp.exr", kDepthFloat);
    ASSERT_EQ(Run("apply BF_Invert --in Image=ramp.exr --out made/inverted.exr").status, 0);
    FltPixel const pixel = PixelOf("made/inverted.exr", 63, 0);
    EXPECT_EQ(pixel.red, 0.0F);
    EXPECT_EQ(pixel.green, 1.0F);
    EXPECT_EQ(pixel.blue, 0.75F);
    EXPECT_EQ(pixel.alpha, 1.0F);
}

TEST_F(Cli, AButtonThatIsSetActsAsPressed)
{
    WriteRamp("ramp.exr", kDepthFloat);
    // The button sets the correction to destination minus source: red by 0.5 where red is within 0.1 of 0.25.
    ASSERT_EQ(Run("apply BF_ReplaceColor --in ramp.exr --out r.exr --set SourceColorRed=0.25 "
                  "--set DestinationColorRed=0.75 --set SourceColorGreen=0.5 --set DestinationColorGreen=0.5 "
                  "--set SourceColorBlue=0.25 --set DestinationColorBlue=0.25 --set RedRange=0.6 "
                  "--set Matchsourcetodestination=1")
                  .status,
              0);
    EXPECT_NEAR(PixelOf("r.exr", 16, 16).red, 16.0 / 63 + 0.5, 1e-3);
}

TEST_F(Cli, RendersRangesInOrderAndGoesOnPastAFrameThatFails)
{
    Write("flow.comp", kSequence);
    WriteRamp("in.0001.tif", kDepthInt16);
    WriteRamp("in.0003.tif", kDepthInt16);
    Ended const ended = Run("render flow.comp");
    EXPECT_EQ(ended.status, 3);
    EXPECT_NE(ended.errors.find("frame 2: flow.comp:4: Photo: "), std::string::npos) << ended.errors;
    EXPECT_NE(ended.errors.find("in.0002.tif"), std::string::npos);
    EXPECT_LT(ended.out.find("frame 1"), ended.out.find("frame 3"));
    EXPECT_EQ(Files("out"), (std::vector<std::string>{"inverted.0001.tif", "inverted.0003.tif"}));

    EXPECT_EQ(Run("render flow.comp --stop-on-error --frames 2-3").status, 3);
    Ended const single = Run("render flow.comp --frames 3 --set Invert1.Type=1 --out Invert1=extra.png");
    EXPECT_EQ(single.status, 0) << single.errors;
    EXPECT_TRUE(fs::exists(folder / "extra.png"));
}

TEST_F(Cli, ProxiesAreSmaller)
{
    Write("flow.comp", kSequence);
    WriteRamp("in.0001.tif", kDepthInt16);
    ASSERT_EQ(Run("render flow.comp --frames 1 --proxy 2").status, 0);
    ReadResult const read = ReadPicture((folder / "out/inverted.0001.tif").string());
    EXPECT_EQ(read.image->Width(), 32);
}

TEST_F(Cli, PassThroughHandsThePictureOn)
{
    WriteRamp("in.tif", kDepthInt16);
    Write("flow.comp", R"({ Tools = {
        Photo = Loader { Inputs = { Filename = "in.tif" } },
        Invert1 = Brassfennel.BF_Invert { PassThrough = true, Inputs = { Image = Input { SourceOp = "Photo" } } },
        Out = Saver { Inputs = { Input = Input { SourceOp = "Invert1" }, Filename = "same.tif" } } } })");
    ASSERT_EQ(Run("render flow.comp").status, 0);
    EXPECT_EQ(Slurp(folder / "same.tif"), Slurp(folder / "in.tif"));
}

TEST_F(Cli, DescribeGivesInputsInOrderWithRanges)
{
    Ended const ended = Run("describe BF_Threshold --json");
    ASSERT_EQ(ended.status, 0);
    auto const tool = nlohmann::json::parse(ended.out);
    auto const& inputs = tool["inputs"];
    EXPECT_EQ(inputs[0]["id"], "Channelusedasthreshold");
    EXPECT_EQ(inputs[0]["entries"][5], "Each");
    auto const find = [&](char const* id) {
        for (auto const& input : inputs)
            if (input["id"] == id) return input;
        return nlohmann::json();
    };
    auto const repeat = find("Repeat");
    EXPECT_EQ(repeat["label"], "Repeat");
    EXPECT_EQ(repeat["kind"], "slider");
    EXPECT_EQ(repeat["default"], 1.0);
    EXPECT_EQ(repeat["hard"]["min"], 0.0);
    EXPECT_TRUE(repeat["hard"]["max"].is_null());
    EXPECT_EQ(repeat["soft"]["max"], 5.0);
    EXPECT_EQ(repeat["page"], "Threshold");
    EXPECT_EQ(find("PreDividePostMultiply")["page"], "Ombrelune Controls");
    EXPECT_EQ(inputs.back()["id"], "Image");
    EXPECT_EQ(find("ThresholdBlue")["visible"], false);
}

/// The header of a PNG file of 200000 x 200000 pixels, with a sum that is right, and four bytes of pixels.
std::string HugePng()
{
    static constexpr unsigned char bytes[] = {
        0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44,
        0x52, 0x00, 0x03, 0x0d, 0x40, 0x00, 0x03, 0x0d, 0x40, 0x08, 0x06, 0x00, 0x00, 0x00, 0xf9,
        0x3b, 0x88, 0x0a, 0x00, 0x00, 0x00, 0x0c, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9c, 0x4b, 0x4c,
        0x4a, 0x4e, 0x01, 0x00, 0x03, 0xd8, 0x01, 0x8b, 0x70, 0x60, 0xdd, 0xf9,
    };
    return {reinterpret_cast<char const*>(bytes), sizeof bytes};
}

TEST_F(Cli, MistakesInCommandsAreAnswered)
{
    WriteRamp("in.tif", kDepthInt16);
    Write("empty.png", "");
    Write("broken.exr", "\x76\x2f\x31\x01 and then nothing");
    WriteRamp("cut.png", kDepthInt16);
    fs::resize_file(folder / "cut.png", fs::file_size(folder / "cut.png") / 2);
    Write("huge.png", HugePng());
    Mistake const mistakes[] = {
        {"apply BF_Inwert --in in.tif --out o.png", 2,
         "there is no tool 'BF_Inwert'; did you mean 'BF_Invert'?"},
        {"apply BF_Invert --in in.tif --out o.png --set Typ=1", 2,
         "no input 'Typ' on BF_Invert; did you mean 'Type'?"},
        {"apply BF_Invert --in in.tif --out o.png --set Type=3", 2, "BF_Invert.Type = 3 is above the most 2"},
        {"apply BF_Invert --in in.tif --out o.png --set Type=Colour", 2,
         "there are 'Color', 'Luminance', 'Hue'"},
        {"apply BF_HueSaturation --in in.tif --out o.png --set Hue=nan", 2, "takes a finite number"},
        {"apply BF_HueSaturation --in in.tif --out o.png --set Hue=warm", 2, "takes a number, not 'warm'"},
        {"apply BF_Invert --out o.png", 2, "BF_Invert.Image needs a picture: add --in FILE"},
        {"apply BF_Invert --in in.tif --in in.tif --out o.png", 2, "takes no further picture"},
        {"apply BF_Invert --in Picture=in.tif --out o.png", 2, "no picture input 'Picture'"},
        {"apply BF_Invert --in gone.tif --out o.png", 3, "gone.tif"},
        {"apply BF_Invert --in empty.png --out o.png", 3, "empty.png"},
        {"apply BF_Invert --in broken.exr --out o.png", 3, "broken.exr"},
        {"apply BF_Invert --in cut.png --out o.png", 3, "cut.png"},
        {"apply BF_Invert --in huge.png --out o.png", 3, "huge.png: is 200000 x 200000 pixels"},
        {"apply BF_Invert --in in.tif --out o.xyz", 2, "unknown extension '.xyz'"},
        {"apply BF_Invert --in in.tif --out in.tif/o.png", 3, "in.tif"},
        {"render gone.comp", 3, "gone.comp: cannot be read"},
        {"render .", 3, "is a folder"},
        {"describe", 2, "TOOL is required"},
        {"apply BF_Invert --in in.tif --out o.png --wobble", 2, "--wobble"},
        {"paint", 2, ""},
        {"--plugin gone.plugin tools", 3, "gone.plugin: the bundle cannot be loaded"},
    };
    for (Mistake const& mistake : mistakes) ExpectMistake(mistake.arguments, mistake);
    EXPECT_EQ(Files("."), (std::vector<std::string>{"broken.exr", "cut.png", "empty.png", "huge.png",
                                                    "in.tif", "stderr.txt", "stdout.txt"}));
}

TEST_F(Cli, MistakesInFlowsNameTheirLine)
{
    WriteRamp("in.tif", kDepthInt16);
    Mistake const flows[] = {
        {"Composition {\n Tools = {\n A = Brassfennel.BF_Invrt { } } }", 2,
         "flow.comp:3: A: there is no tool 'Brassfennel.BF_Invrt'; did you mean 'Brassfennel.BF_Invert'?"},
        {"{ Tools = { A = Brassfennel.BF_Invert { Inputs = {\n Typ = 1 } } } }", 2,
         "flow.comp:2: no input 'Typ' on A (Invert); did you mean 'Type'?"},
        {"{ Tools = { A = Brassfennel.BF_Invert { Inputs = {\n\n Image = Input { SourceOp = \"B\" } } } } }",
         2, "flow.comp:3: A.Image: there is no tool 'B' in the flow"},
        {"{ Tools = { A = Brassfennel.BF_Invert { Inputs = { Image = Input { SourceOp = \"A\" } } } } }", 2,
         "A feeds itself through A.Image"},
        {"{ }", 2, "the flow has no table Tools"},
        {"{ Tools = { A = Background { } } }", 2, "writes nothing: add a Saver or --out Tool=PATTERN"},
        {"{ FrameFormat = { Width = 0 }, Tools = { } }", 2, "Width = 0 is not in 1 to 65536"},
    };
    // What an expression does is known when it runs, and ends the frame.
    std::pair<char const*, Mistake> const expressions[] = {
        {": while true do end", {"", 1, "takes more than 1000000 steps"}},
        {"Ghost.Red", {"", 2, "flow.comp:2: B.Red"}},
    };
    for (auto const& [expression, mistake] : expressions) {
        SCOPED_TRACE(expression);
        Write("flow.comp", fmt::format("{{ Tools = {{ B = Background {{ Inputs = {{\n Red = Input {{ "
                                       "Expression = \"{}\" }} }} }} }} }}",
                                       expression));
        ExpectMistake("render flow.comp --out B=b.png", mistake);
        EXPECT_FALSE(fs::exists(folder / "b.png"));
    }
    for (Mistake const& mistake : flows) {
        SCOPED_TRACE(mistake.arguments);
        Write("flow.comp", mistake.arguments);
        ExpectMistake("render flow.comp", mistake);
    }

    Write("flow.comp", kSequence);
    Mistake const commands[] = {
        {"render flow.comp --frames 3-1", 2, "1 comes before 3"},
        {"render flow.comp --frames 1-", 2, "a range needs a last frame"},
        {"render flow.comp --frames two", 2, "a frame is a whole number"},
        {"render flow.comp --set Invert2.Type=1", 2,
         "there is no tool 'Invert2' in the flow; did you mean 'Invert1'?"},
        {"render flow.comp --set Type=1", 2, "write Tool.Input=VALUE"},
        {"render flow.comp --out Invert1=lone.#.png", 2, "#"},
        {"render flow.comp --out Invert1=one.png", 2, "has no place for the frame number"},
    };
    for (Mistake const& mistake : commands) ExpectMistake(mistake.arguments, mistake);
}

TEST_F(Cli, AValueBeyondItsRangeIsLimitedWithAWarning)
{
    WriteRamp("in.tif", kDepthInt16);
    Write("flow.comp", R"({ Tools = {
        Photo = Loader { Inputs = { Filename = "in.tif" } },
        A = Brassfennel.BF_Threshold { Inputs = { Image = Input { SourceOp = "Photo" }, Threshold = 7 } },
        Out = Saver { Inputs = { Input = Input { SourceOp = "A" }, Filename = "out.png" } } } })");
    Ended const ended = Run("render flow.comp");
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(
        ended.errors.find("warning: flow.comp:3: A.Threshold = 7 is above the most 1; that is used instead"),
        std::string::npos)
        << ended.errors;
}

TEST_F(Cli, EveryToolHasAnExampleThatRenders)
{
    auto const tools = nlohmann::json::parse(Run("tools --json").out);
    ASSERT_FALSE(tools.empty());
    for (auto const& tool : tools) {
        std::string const name = tool["class"].get<std::string>().substr(3); // without "BF_"
        SCOPED_TRACE(name);
        // Rendered beside a copy, so that the flow's own output stays where it is.
        fs::create_directories(folder / "examples");
        fs::copy(OMBRELUNE_SOURCE_DIR "/examples/media", folder / "examples/media",
                 fs::copy_options::recursive);
        fs::copy_file(fs::path(OMBRELUNE_SOURCE_DIR "/examples") / (name + ".comp"),
                      folder / "examples/flow.comp");
        Ended const ended = Run("render examples/flow.comp");
        EXPECT_EQ(ended.status, 0) << ended.errors;
        ReadResult const made = ReadPicture((folder / "out" / (name + ".png")).string());
        ASSERT_FALSE(made.problem) << made.problem->Format();
        EXPECT_GE(made.image->Width(), 300);
        fs::remove_all(folder / "examples");
    }
}

TEST_F(Cli, TheFirstFlowGradesItsPhotograph)
{
    Ended const ended = Run("render " OMBRELUNE_SOURCE_DIR "/examples/first.comp --out Grade=first.png");
    ASSERT_EQ(ended.status, 0) << ended.errors;
    ReadResult const read = ReadPicture((folder / "first.png").string());
    EXPECT_EQ(read.image->Width(), 600);
    EXPECT_EQ(read.image->Height(), 400);
}

} // namespace
} // namespace ombrelune
