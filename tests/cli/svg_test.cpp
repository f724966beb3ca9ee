// SVG files on the built program: in, out, and what is said of mistakes.

#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

class CliSvg : public Cli {
protected:
    /// A flow around a tool that makes the shape to be written or drawn.
    void WriteFlow(std::string const& tools) const
    {
        Write("flow.comp", "Composition { FrameFormat = { Width = 40, Height = 20 }, Tools = ordered() {\n" +
                               tools + "\n} }");
    }
    void WriteLoaderFlow() const
    {
        WriteFlow(R"(Logo = SVGLoader { Inputs = { Filename = Input { Value = "logo.svg" } } },
                     Drawn = Brassfennel.BF_ShapeRender {
                       Inputs = { Shape = Input { SourceOp = "Logo", Source = "Output" } } })");
    }
    static constexpr char const* kLogo =
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 2"><path fill="red" d="M1 0H3V2H1Z"/></svg>)";
};

TEST_F(CliSvg, LoadsDrawsAndWrites)
{
    WriteLoaderFlow();
    Write("logo.svg", kLogo);
    auto const drawn = Run("render flow.comp --out Drawn=a.exr");
    ASSERT_EQ(drawn.status, 0) << drawn.errors;
    for (int x : {5, 9, 10, 29, 30, 35}) // the middle half of 40
        EXPECT_EQ(PixelOf("a.exr", x, 10).red, x >= 10 && x < 30 ? 1.0F : 0.0F) << x;

    auto const written = Run("render flow.comp --frames 1-2 --out Logo=out/logo.##.svg");
    ASSERT_EQ(written.status, 0) << written.errors;
    EXPECT_EQ(Slurp(folder / "out/logo.01.svg"),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"40\" height=\"20\" viewBox=\"0 0 40 20\">\n"
              "  <path fill=\"#ff0000\" fill-rule=\"evenodd\" d=\"M10 0L30 0L30 20L10 20Z\"/>\n"
              "</svg>\n");
    EXPECT_EQ(Slurp(folder / "out/logo.02.svg"), Slurp(folder / "out/logo.01.svg"));

    // A file that changed is read anew.
    Write("logo.svg", R"(<svg width="4" height="2"><text/><path d="M0 0H4V1Z"/><use/><text/></svg>)");
    auto const again = Run("render flow.comp --out Logo=logo2.svg");
    ASSERT_EQ(again.status, 0);
    EXPECT_NE(again.errors.find("Logo: logo.svg: 2 text, 1 use left out"), std::string::npos) << again.errors;
    EXPECT_NE(Slurp(folder / "logo2.svg").find("M0 0L40 0L40 10Z"), std::string::npos);
}

TEST_F(CliSvg, MistakesAreAnswered)
{
    WriteLoaderFlow();
    auto const missing = Run("render flow.comp --out Logo=a.svg");
    EXPECT_EQ(missing.status, 3);
    EXPECT_NE(missing.errors.find("Logo: logo.svg: No such file"), std::string::npos) << missing.errors;

    Write("logo.svg", "<svg>\n<path>\n</svg>");
    auto const broken = Run("render flow.comp --out Logo=a.svg");
    EXPECT_EQ(broken.status, 3);
    EXPECT_NE(broken.errors.find("Logo: logo.svg:3: not well-formed"), std::string::npos) << broken.errors;
    EXPECT_FALSE(fs::exists(folder / "a.svg"));

    auto const kind = Run("render flow.comp --out Logo=a.png");
    EXPECT_EQ(kind.status, 2);
    EXPECT_NE(kind.errors.find("Logo makes no picture, write Logo=name.svg"), std::string::npos)
        << kind.errors;
}

TEST_F(CliSvg, AShapeTooFarForTheClipperIsRefusedByName)
{
    WriteFlow(R"(A = Brassfennel.BF_ShapePrimitiveCreate { Inputs = { SizeX = Input { Value = 1e15 } } },
                 B = Brassfennel.BF_ShapePrimitiveCreate { },
                 Cut = Brassfennel.BF_ShapeBoolean { Inputs = {
                   Shape1 = Input { SourceOp = "B", Source = "Output" },
                   Shape2 = Input { SourceOp = "A", Source = "Output" } } })");
    auto const ended = Run("render flow.comp --out Cut=a.svg");
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.errors.find("Cut.Shape2 is a shape with a point beyond 1e10 frame widths"),
              std::string::npos)
        << ended.errors;
}

} // namespace
} // namespace ombrelune
