// Values from the command line, and values on it.

#include <nlohmann/json.hpp>

#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

char const* const kFlow = R"(Composition {
  FrameFormat = { Width = 8, Height = 6, Depth = 8 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = "gone.tif" } },
    Bg = Background { Inputs = { Red = 0.25, Green = 0.25, Blue = 0.25, Alpha = 0.5 } },
    Fg = Background { Inputs = { Green = 1 } },
    M = Merge { Inputs = { Background = Input { SourceOp = "Bg" }, Foreground = Input { SourceOp = "Fg" } } },
    Move = Transform { Inputs = { Input = Input { SourceOp = "Photo" } } },
  },
})";

TEST_F(Cli, SetsColorsByTheirName)
{
    Write("flow.comp", kFlow);
    struct Case {
        char const* value;
        float red, green, blue, alpha;
    };
    for (Case const& c :
         {Case{"#ff8000", 1, 128 / 255.0F, 0, 0.5F}, Case{"#FF800033", 1, 128 / 255.0F, 0, 0.2F},
          Case{"0.125,2,0,1", 0.125F, 2, 0, 1}, Case{"0,0.5,1", 0, 0.5F, 1, 0.5F}}) {
        SCOPED_TRACE(c.value);
        Ended const ended =
            Run("render flow.comp --out Bg=bg.exr --set Bg.Color='" + std::string(c.value) + "'");
        ASSERT_EQ(ended.status, 0) << ended.errors;
        FltPixel const pixel = PixelOf("bg.exr", 3, 3);
        EXPECT_NEAR(pixel.red, c.red, 1e-6);
        EXPECT_NEAR(pixel.green, c.green, 1e-6);
        EXPECT_NEAR(pixel.blue, c.blue, 1e-6);
        EXPECT_NEAR(pixel.alpha, c.alpha, 1e-6);
    }
    // Three colours of one label: the second is Whatitshouldbe_1, as its inputs' ids are numbered.
    auto const tool = nlohmann::json::parse(Run("describe BF_MatchColor --json").out);
    std::vector<std::string> names;
    for (auto const& color : tool["colors"]) names.push_back(color["id"]);
    EXPECT_NE(std::find(names.begin(), names.end(), "Whatitshouldbe_1"), names.end());
    EXPECT_NE(Run("describe Background").out.find("--set Color=#ff8800"), std::string::npos);
}

TEST_F(Cli, SetsPointsButtonsTruthValuesAndFiles)
{
    fs::create_directories(folder / "flows");
    Write("flows/flow.comp", kFlow);
    WriteRamp("in.exr", kDepthFloat, 32, 32);
    // The file lies beside the caller, not beside the flow. A quarter of the width to the right is 8 pixels.
    Ended const moved = Run("render flows/flow.comp --out Move=moved.exr --set Photo.Filename=in.exr "
                            "--set Move.Center=0.75,0.5 --set Move.Edges=wrap");
    ASSERT_EQ(moved.status, 0) << moved.errors;
    EXPECT_NEAR(PixelOf("moved.exr", 20, 7).red, 12 / 31.0, 1e-4);
    EXPECT_NEAR(PixelOf("moved.exr", 4, 7).red, 28 / 31.0, 1e-4);

    // 4 / 32 of the width is 90 / 720: a box of radius 4 along x leaves a ramp along y as it is.
    Ended const blurred = Run("apply Blur --in in.exr --out b.exr --set Filter=Box --set LockXY=off "
                              "--set XBlurSize=90 --set YBlurSize=0 --set Red=false");
    ASSERT_EQ(blurred.status, 0) << blurred.errors;
    EXPECT_NEAR(PixelOf("b.exr", 9, 5).red, 9 / 31.0, 1e-6);
    EXPECT_NEAR(PixelOf("b.exr", 9, 5).green, 5 / 31.0, 1e-6);
}

TEST_F(Cli, MistakesInValuesAreAnswered)
{
    Write("flow.comp", kFlow);
    Mistake const mistakes[] = {
        {"--set Bg.Color=#ff88", 2,
         "Bg.Color takes a colour such as #ff8800, #ff8800cc or 1,0.5,0,1, not '#ff88'"},
        {"--set Bg.Color=#ff88zz", 2, "takes a colour"},
        {"--set Bg.Color=1,2", 2, "takes a colour"},
        {"--set Bg.Color=1,nan,0", 2, "Bg.Green takes a finite number"},
        {"--set Bg.Color=1,red,0", 2, "Bg.Green takes a number, not 'red'"},
        {"--set Bg.Colour=#ffffff", 2, "no input 'Colour' on Bg; did you mean 'Color'?"},
        {"--set M.Blend=1.5", 2, "M.Blend = 1.5 is above the most 1"},
        {"--set M.Size=inf", 2, "M.Size takes a finite number"},
        {"--set M.Center=0.5", 2, "M.Center takes a point"},
        {"--set M.Center=0.5,nan", 2, "M.Center takes a point"},
        {"--set M.Operator=Under", 2, "there are 'Over', 'In', 'Held Out', 'Atop', 'XOr'"},
        {"--set M.Foreground=Bg", 2, "M.Foreground takes the output of another tool, not a value"},
        {"--print M", 2, "write Tool.Output"},
        {"--print M.Output", 2, "'M.Output': the output gives Image; only numbers and texts can be printed"},
        {"--print M.Outptu", 2, "no output 'Outptu' on M; did you mean 'Output'?"},
        {"--print N.Output", 2, "there is no tool 'N' in the flow"},
        {"--csv", 2, "--print"},
    };
    for (Mistake const& mistake : mistakes)
        ExpectMistake("render flow.comp " + std::string(mistake.arguments), mistake);
}

TEST_F(Cli, WhatAGroupShowsIsSetAndPrinted)
{
    Write("flow.comp", R"({ Tools = { G = GroupOperator {
        Inputs = ordered() { Parts = InstanceInput { SourceOp = "V", Source = "Divisor" } },
        Outputs = { Share = InstanceOutput { SourceOp = "V", Source = "Number" } },
        Tools = { V = Test.Values { } } } } })");
    std::string const render = "--plugin '" OMBRELUNE_TEST_BUNDLE "' render flow.comp --frames 2 --print G.";
    EXPECT_EQ(Run(render + "Share --set G.Parts=8").out, "frame 2  G.Share = 0.25\n");
    Ended const input = Run(render + "Share --set G.Part=8");
    EXPECT_EQ(input.status, 2);
    EXPECT_NE(input.errors.find("group G shows no input 'Part'; did you mean 'Parts'"), std::string::npos)
        << input.errors;
    EXPECT_EQ(Run(render + "Number").status, 2);
}

TEST_F(Cli, PrintsNumbersAndTexts)
{
    Write("flow.comp", "{ Tools = { V = Test.Values { } } }");
    std::string const print =
        "--plugin '" OMBRELUNE_TEST_BUNDLE "' render flow.comp --print V.Number --print V.Text ";
    EXPECT_EQ(Run(print + "--frames 1-3x2").out, "frame 1  V.Number = 0.25\nframe 1  V.Text = a \"b\", c\n"
                                                 "frame 3  V.Number = 0.75\nframe 3  V.Text = a \"b\", c\n");
    // 1 / 10 is no number of single precision, and still prints as 0.1; what is not a number is null.
    Ended const csv = Run(print + "--csv --frames 1,6-8 --set V.Divisor=10");
    EXPECT_EQ(csv.status, 1);
    EXPECT_EQ(csv.out, "frame,V.Number,V.Text\n1,0.1,\"a \"\"b\"\", c\"\n6,0.6,\"a \"\"b\"\", c\"\n"
                       "8,0.8,\"a \"\"b\"\", c\"\n");
    EXPECT_NE(csv.errors.find("frame 7: flow.comp:1: V has no frame 7"), std::string::npos) << csv.errors;
    EXPECT_EQ(Run(print + "--json --frames 0 --set V.Divisor=0").out,
              "{\"frame\":0,\"values\":{\"V.Number\":null,\"V.Text\":\"a \\\"b\\\", c\"}}\n");
}

} // namespace
} // namespace ombrelune
