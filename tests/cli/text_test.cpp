// The Text operator and the tools for texts on the built program.

#include <cmath>

#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

class CliText : public Cli {
protected:
    /// What a text covers of a picture, in its pixels; rows count from the bottom.
    struct Ink {
        int left = 1 << 20, right = -1, bottom = 1 << 20, top = -1;
        double area = 0.0; ///< sum of alpha
        int Height() const { return top - bottom + 1; }
        int Width() const { return right - left + 1; }
    };
    Ink InkOf(char const* file) const
    {
        ReadResult const read = ReadPicture((folder / file).string());
        EXPECT_FALSE(read.problem) << read.problem->Format();
        Ink ink;
        for (int y = 0; y < read.image->Height(); ++y) {
            for (int x = 0; x < read.image->Width(); ++x) {
                FltPixel pixel;
                PixPtr(read.image.Get(), x, y).GetPixel(pixel);
                ink.area += pixel.alpha;
                if (pixel.alpha < 0.5F) continue;
                ink.left = std::min(ink.left, x), ink.right = std::max(ink.right, x);
                ink.bottom = std::min(ink.bottom, y), ink.top = std::max(ink.top, y);
            }
        }
        return ink;
    }
    Ink Drawn(std::string const& text, std::string const& settings = "") const
    {
        std::string const quoted = "'StyledText=" + text + "'";
        Ended const ended = Run("apply Text --set Width=400 --set Height=300 --set " + quoted + " " +
                                settings + " --out t.exr");
        EXPECT_EQ(ended.status, 0) << ended.errors;
        EXPECT_EQ(ended.errors, "");
        return InkOf("t.exr");
    }
};

TEST_F(CliText, SizeIsThatOfTheFontInWidthsOfThePicture)
{
    // Capitals of DejaVu Sans are 1493 of 2048 parts high: 72.9 and 36.45 pixels of em sizes 100 and 50.
    EXPECT_NEAR(Drawn("H", "--set Size=0.25").Height(), 72.9, 1.0);
    EXPECT_NEAR(Drawn("H", "--set Size=0.125").Height(), 36.45, 1.0);
    // The same at half the size.
    ASSERT_EQ(
        Run("apply Text --set Width=200 --set Height=150 --set StyledText=H --set Size=0.25 --out t.exr")
            .status,
        0);
    EXPECT_NEAR(InkOf("t.exr").Height(), 36.45, 1.0);
    EXPECT_EQ(Drawn("").area, 0.0);
    EXPECT_EQ(Drawn("H", "--set Size=0").area, 0.0);
}

TEST_F(CliText, MovesByPartsOfAPixel)
{
    // A stem of "I", a quarter of a pixel further: the middle of what it covers moves as far.
    auto const middle = [&](double x) {
        Drawn("I", fmt::format("--set Size=0.2 --set Center={},0.5", x));
        ReadResult const read = ReadPicture((folder / "t.exr").string());
        double sum = 0.0, row = 0.0;
        for (int column = 0; column < 400; ++column) {
            FltPixel pixel;
            PixPtr(read.image.Get(), column, 150).GetPixel(pixel);
            sum += pixel.alpha * (column + 0.5);
            row += pixel.alpha;
        }
        return sum / row;
    };
    EXPECT_NEAR(middle(0.5), 200.0, 0.6);
    EXPECT_NEAR(middle(0.500625) - middle(0.5), 0.25, 0.02);
}

TEST_F(CliText, JustificationPutsTheTextBesideItsPlace)
{
    struct {
        char const* horizontal;
        char const* vertical;
        int sideX, sideY; // of the place: -1 left or below, 1 right or above
    } const cases[] = {{"Left", "Bottom", 1, 1}, {"Right", "Top", -1, -1}, {"Center", "Center", 0, 0}};
    for (auto const& each : cases) {
        Ink const ink = Drawn(
            "HHH",
            fmt::format("--set Size=0.1 --set HorizontalJustification={} --set VerticalJustification={}",
                        each.horizontal, each.vertical));
        double const x = (ink.left + ink.right) / 2.0 - 200.0, y = (ink.bottom + ink.top) / 2.0 - 150.0;
        EXPECT_EQ(x > 20.0 ? 1 : x < -20.0 ? -1 : 0, each.sideX) << x;
        EXPECT_EQ(y > 10.0 ? 1 : y < -10.0 ? -1 : 0, each.sideY) << y;
    }
}

TEST_F(CliText, LinesAndCharactersAreSpaced)
{
    std::string const size = "--set Size=0.1 --set 'Font=DejaVu Sans Mono' ";
    Ink const one = Drawn("HH", size), two = Drawn("HH\nHH", size);
    double const line = two.Height() - one.Height();
    EXPECT_NEAR(line, 46.6, 1.0); // ascent 1901 and descent 483 of 2048, of 40 pixels
    EXPECT_NEAR(Drawn("HH\nHH", size + "--set LineSpacing=2").Height() - one.Height(), 2.0 * line, 1.0);
    EXPECT_NEAR(Drawn("HH", size + "--set CharacterSpacing=1.5").Width() - one.Width(), 20.0, 1.0);
    EXPECT_EQ(Drawn("HH\r\nHH", size).Height(), two.Height());
}

TEST_F(CliText, LiesOverItsInputInTheColourAndDepthOfIts)
{
    WriteRamp("in.tif", kDepthInt16, 60, 40);
    ASSERT_EQ(Run("apply Text --in in.tif --set StyledText=█ --set Size=0.5 --set Red1=1 --set Green1=0.5 "
                  "--set Blue1=0 "
                  "--set Alpha1=0.5 --out over.tif")
                  .status,
              0);
    FltPixel const before = PixelOf("in.tif", 30, 20), under = PixelOf("over.tif", 30, 20);
    EXPECT_NEAR(under.red, before.red * 0.5F + 0.5F, 1e-4F);
    EXPECT_NEAR(under.green, before.green * 0.5F + 0.25F, 1e-4F);
    EXPECT_NEAR(under.alpha, 1.0F, 1e-4F);
    EXPECT_EQ(PixelOf("over.tif", 1, 1).red, PixelOf("in.tif", 1, 1).red);
    EXPECT_EQ(ReadPicture((folder / "over.tif").string()).image->Depth(), kDepthInt16);
}

TEST_F(CliText, MissingFontsAreToldWithWhatStandsIn)
{
    Ended const ended =
        Run("apply Text --set StyledText=x --set 'Font=No Such Sans' --set Style=Wavy --out t.exr");
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(
        ended.errors.find("Text.Font: there is no font family 'No Such Sans'; DejaVu Sans is used instead"),
        std::string::npos)
        << ended.errors;
    EXPECT_NE(ended.errors.find("Text.Style: DejaVu Sans has no style 'Wavy'; Book is used instead"),
              std::string::npos);
    EXPECT_EQ(
        Run("apply Text --set StyledText=x --set 'Font=dejavu serif' --set Style=bold --out t.exr").errors,
        "");
}

TEST_F(CliText, BrokenAndEndlessTextsAreDrawnAsFarAsTheyGo)
{
    Write(
        "flow.comp",
        "{ Tools = { F = Brassfennel.BF_TextFromFile { Inputs = { Filename = \"text.txt\", Format = 2 } },\n"
        "T = Text { Inputs = { Width = 64, Height = 48, StyledText = Input { SourceOp = \"F\" } } },\n"
        "S = Saver { Inputs = { Input = Input { SourceOp = \"T\" }, Filename = \"out.exr\" } } } }");
    Write("text.txt", "a\xff\xc3(\xe2\x82");
    EXPECT_EQ(Run("render flow.comp").errors, "");
    Write("text.txt", std::string(70000, 'x'));
    Ended const ended = Run("render flow.comp");
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(ended.errors.find("flow.comp:2: T.StyledText is 70000 bytes long; the first 65536 are drawn"),
              std::string::npos)
        << ended.errors;
}

constexpr char const* kManyTexts =
    R"flow({ RenderRange = { 0, 5 }, FrameFormat = { Width = 200, Height = 100 }, Tools = {
    R = Brassfennel.BF_NumberRandom { }, R2 = Brassfennel.BF_NumberRandom { Inputs = { Seed = 3 } },
    J = Brassfennel.BF_TextJuggle { Inputs = { Text = "Many letters in one row", Jugglecharacters = 1 } },
    F = Brassfennel.BF_TextFormula { Inputs = { Text = "n1 n2", n1 = Input { SourceOp = "R" },
                                                n2 = Input { SourceOp = "R2" } } },
    A = Text { Inputs = { StyledText = Input { SourceOp = "J" }, Size = Input { SourceOp = "R" } } },
    B = Text { Inputs = { StyledText = Input { SourceOp = "F" }, Center = Input { Expression = "Point(R2.Number, 0.5)" } } },
    M = Merge { Inputs = { Background = Input { SourceOp = "A" }, Foreground = Input { SourceOp = "B" } } },
    S = Saver { Inputs = { Input = Input { SourceOp = "M" }, Filename = "out/####.exr" } } } })flow";

TEST_F(CliText, BranchesSideBySideGiveTheBytesOfOneThread)
{
    Write("flow.comp", kManyTexts);
    std::vector<std::string> first;
    for (char const* threads : {"1", "2", "2", "4"}) {
        ASSERT_EQ(Run(std::string("render flow.comp --threads ") + threads).status, 0);
        std::vector<std::string> bytes;
        for (std::string const& name : Files("out")) bytes.push_back(Slurp(folder / "out" / name));
        if (first.empty()) first = bytes;
        EXPECT_EQ(bytes.size(), 6U);
        EXPECT_TRUE(bytes == first) << threads;
    }
    EXPECT_NE(first[0], first[1]);
    Ended const printed = Run("render flow.comp --frames 3 --print F.Output --print R.Number --threads 2");
    EXPECT_NE(printed.out.find("frame 3  R.Number = 0."), std::string::npos) << printed.out;
}

TEST_F(CliText, FilesAtFaultAreToldAndTheTextIsWhatTheyGive)
{
    fs::create_directories(folder / "sub");
    Write("sub/flow.comp", "{ Tools = {\nF = Brassfennel.BF_TextFromFile { Inputs = { Filename = "
                           "\"words.txt\", Format = 2 } } } }");
    std::string const print = "render sub/flow.comp --frames 0 --print F.Output";
    Ended ended = Run(print);
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(ended.errors.find(
                  "sub/flow.comp:2: F.Filename: sub/words.txt: No such file or directory; the text is empty"),
              std::string::npos)
        << ended.errors;
    EXPECT_EQ(ended.out, "frame 0  F.Output = \n");

    Write("sub/words.txt", "found\nbeside the flow\n");
    ended = Run(print);
    EXPECT_EQ(ended.out + ended.errors, "frame 0  F.Output = found\n");

    Write("sub/words.txt", std::string("a\0b", 3));
    EXPECT_NE(Run(print).errors.find("words.txt: holds zero bytes; is it a text file?"), std::string::npos);

    fs::remove(folder / "sub/words.txt");
    ended = Shell("mkfifo sub/words.txt && \"$OMBRELUNE\" " + print);
    EXPECT_EQ(ended.status, 3);
    EXPECT_NE(ended.errors.find("words.txt: is no regular file; name a text file"), std::string::npos)
        << ended.errors;
    EXPECT_EQ(Run(print + " --set F.Source=Textbox").errors, "") << "a file that is not read";
}

} // namespace
} // namespace ombrelune
