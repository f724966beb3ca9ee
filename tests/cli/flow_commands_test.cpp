// check, fmt and animated renders by the built program.

#include <nlohmann/json.hpp>

#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

class FlowCommands : public Cli {};

TEST_F(FlowCommands, CheckListsEveryMistakeAndWarning)
{
    Write("flow.comp", "{ Tools = {\n"
                       " A = Brassfennel.BF_Invert { Inputs = { Typ = 1,\n"
                       "  Image = Input { SourceOp = \"B\" } } },\n"
                       " T = Brassfennel.BF_Threshold { Inputs = { Threshold = 7,\n"
                       "  Softness = Input { Expression = \"tiem / 10\" } } } } }");
    Ended const text = Run("check flow.comp");
    EXPECT_EQ(text.status, 2);
    EXPECT_EQ(
        text.out,
        "flow.comp:2: no input 'Typ' on A (Invert); did you mean 'Type'?\n"
        "flow.comp:3: A.Image: there is no tool 'B' in the flow; did you mean 'A'?\n"
        "flow.comp:5: T.Softness: expression: there is no tool or function 'tiem'; did you mean 'time'?\n"
        "flow.comp:4: warning: T.Threshold = 7 is above the most 1; that is used instead\n"
        "flow.comp: 3 mistakes, 1 warning\n");

    Ended const json = Run("check flow.comp --json");
    EXPECT_EQ(json.status, 2);
    auto const report = nlohmann::json::parse(json.out);
    EXPECT_EQ(report["ok"], false);
    ASSERT_EQ(report["problems"].size(), 4U);
    EXPECT_EQ(report["problems"][0]["line"], 2);
    EXPECT_EQ(report["problems"][0]["file"], "flow.comp");
    EXPECT_EQ(report["problems"][3]["severity"], "warning");

    Write("odd\xff.comp", "{ Tools = { A = X\xff { } } }");
    Ended const odd = Run("check 'odd\xff.comp' --json");
    EXPECT_EQ(odd.status, 2);
    EXPECT_EQ(nlohmann::json::parse(odd.out)["problems"][0]["line"], 1);

    EXPECT_EQ(Run("check gone.comp").status, 3);
    Ended const gone = Run("check gone.comp --json");
    EXPECT_EQ(gone.status, 3);
    EXPECT_EQ(nlohmann::json::parse(gone.out)["problems"][0]["line"], nullptr);
    Ended const good = Run("check " OMBRELUNE_SOURCE_DIR "/examples/first.comp");
    EXPECT_EQ(good.status, 0);
    EXPECT_NE(good.out.find("0 mistakes, 0 warnings"), std::string::npos);
}

TEST_F(FlowCommands, FmtPrintsWritesBackAndChecks)
{
    Write("flow.comp", "--why\n{Tools={A=Loader{},--how\n}}");
    std::string const before = Slurp(folder / "flow.comp");
    Ended const printed = Run("fmt flow.comp");
    EXPECT_EQ(printed.status, 0);
    EXPECT_EQ(printed.out, "--why\n{\n  Tools = {\n    A = Loader { }, --how\n  },\n}\n");
    EXPECT_EQ(Run("fmt --check flow.comp").status, 1);
    EXPECT_EQ(Slurp(folder / "flow.comp"), before);

    fs::permissions(folder / "flow.comp", fs::perms(0600));
    fs::create_symlink("flow.comp", folder / "link.comp");
    EXPECT_EQ(Run("fmt --in-place link.comp").status, 0);
    EXPECT_EQ(Slurp(folder / "flow.comp"), printed.out);
    EXPECT_TRUE(fs::is_symlink(folder / "link.comp"));
    EXPECT_EQ(fs::status(folder / "flow.comp").permissions(), fs::perms(0600));
    EXPECT_EQ(Run("fmt --check flow.comp link.comp").status, 0);

    Write("bad.comp", "{ Tools = {\n A = } }");
    Ended const bad = Run("fmt --in-place bad.comp");
    EXPECT_EQ(bad.status, 2);
    EXPECT_NE(bad.errors.find("bad.comp:2: found '}'; expected a value"), std::string::npos) << bad.errors;
    EXPECT_EQ(Slurp(folder / "bad.comp"), "{ Tools = {\n A = } }");
    EXPECT_EQ(Run("fmt gone.comp flow.comp").status, 3);
    EXPECT_EQ(Run("fmt --check --in-place flow.comp").status, 2);
}

TEST_F(FlowCommands, AnimationReachesThePictures)
{
    Write("flow.comp", R"flow(Composition {
  FrameFormat = { Width = 4, Height = 4, Depth = 8 }, RenderRange = { 0, 10 },
  Tools = ordered() {
    Fade = BezierSpline { KeyFrames = { [0] = { 0, Flags = { Linear = true } }, [10] = { 1 } } },
    Plain = Background {
      Inputs = { Red = Input { SourceOp = "Fade", Source = "Value" },
                 Green = Input { Expression = "Plain.Red / 2 + Fade:GetValue('Value', 5)" },
                 Blue = Input { Expression = "time > 4 and 'no number' or 0.25" } } },
    Out = Saver { Inputs = { Input = Input { SourceOp = "Plain" }, Filename = "out.%02d.exr" } },
  },
})flow");
    ASSERT_EQ(Run("render flow.comp --frames 2,4").status, 0);
    for (int frame : {2, 4}) {
        ReadResult const read = ReadPicture((folder / ("out.0" + std::to_string(frame) + ".exr")).string());
        ASSERT_TRUE(read.image);
        FltPixel pixel;
        PixPtr(read.image.Get(), 0, 0).GetPixel(pixel);
        EXPECT_FLOAT_EQ(pixel.red, static_cast<float>(frame) / 10.0F);
        EXPECT_FLOAT_EQ(pixel.green, static_cast<float>(frame) / 20.0F + 0.5F);
        EXPECT_FLOAT_EQ(pixel.blue, 0.25F);
    }
    Ended const ended = Run("render flow.comp --frames 4-5");
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.errors.find("frame 5: flow.comp:8: Plain.Blue takes a number, not 'no number'"),
              std::string::npos)
        << ended.errors;
    // What the command line sets takes the place of an expression.
    EXPECT_EQ(Run("render flow.comp --frames 5 --set Plain.Blue=1").status, 0);
}

} // namespace
} // namespace ombrelune
