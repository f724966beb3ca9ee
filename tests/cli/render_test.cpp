// Ranges of frames on the built program: which file a frame takes, gaps, what is left when a render is
// killed, and that threads, memory and a second render beside it change no byte.

#include <cmath>

#include <nlohmann/json.hpp>

#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

class CliRender : public Cli {
protected:
    /// A picture that tells its frame: red is a hundredth of it.
    void WriteFrame(int frame, int width = 32, int height = 16) const
    {
        Ref<Image> image =
            NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, kDepthFloat}});
        for (int y = 0; y < height; ++y) {
            PixPtr row(image.Get(), 0, y);
            for (int x = 0; x < width; ++x) {
                FltPixel pixel;
                pixel.red = static_cast<float>(frame) / 100.0F;
                pixel.green = static_cast<float>(x) / static_cast<float>(width);
                pixel.alpha = 0.5F; // so that trails show through
                row >>= pixel;
            }
        }
        auto const problem = WritePicture(*image, (folder / PathOfSource(frame)).string());
        ASSERT_FALSE(problem) << problem->Format();
    }
    static std::string PathOfSource(int frame) { return fmt::format("in/a.{:04d}.exr", frame); }
    void WriteFrames(std::initializer_list<int> frames) const
    {
        for (int frame : frames) WriteFrame(frame);
    }
    int FrameIn(std::string const& file) const
    {
        return static_cast<int>(std::lround(PixelOf(file.c_str(), 0, 0).red * 100.0F));
    }
    std::map<std::string, std::string> Bytes(char const* below) const
    {
        std::map<std::string, std::string> bytes;
        for (std::string const& name : Files(below)) bytes[name] = Slurp(folder / below / name);
        return bytes;
    }
};

std::string Copying(std::string const& loader)
{
    return "{ Tools = { L = Loader { Inputs = { Filename = \"in/a.####.exr\", " + loader +
           " } },\n S = Saver { Inputs = { Input = Input { SourceOp = \"L\" }, "
           "Filename = \"out/b.####.exr\" } } } }";
}

TEST_F(CliRender, AFrameTakesTheFileThatTheLoaderTells)
{
    WriteFrames({-2, -1, 0, 1, 2, 3, 4, 5, 6});
    struct Case {
        char const* loader;
        char const* frames;
        char const* options;
        std::map<int, int> files; // frame, file
    };
    Case const cases[] = {
        {"", "--frames=-2--1,3", "", {{-2, -2}, {-1, -1}, {3, 3}}},
        {"Offset = -3", "--frames 1-3", "", {{1, -2}, {2, -1}, {3, 0}}},
        {"Step = 2, Offset = 1", "--frames 0-2", "", {{0, 1}, {1, 3}, {2, 5}}},
        {"Step = -1, Offset = 6", "--frames 0-2", "", {{0, 6}, {1, 5}, {2, 4}}},
        {"Step = 0.5", "--frames 2-5", "", {{2, 1}, {3, 1}, {4, 2}, {5, 2}}},
        {"Trim = 1, TrimIn = 2, TrimOut = 4, Loop = 1",
         "--frames 0-5x1,8",
         "",
         {{0, 3}, {1, 4}, {2, 2}, {3, 3}, {4, 4}, {5, 2}, {8, 2}}},
        {"Trim = 1, TrimIn = 2, TrimOut = 4",
         "--frames 1-5",
         "--missing hold",
         {{1, 2}, {2, 2}, {3, 3}, {4, 4}, {5, 4}}},
        {"", "--frames 5-8", "--missing hold", {{5, 5}, {6, 6}, {7, 6}, {8, 6}}},
        {"", "--frames=-4,-2", "--missing hold", {{-4, -2}, {-2, -2}}},
        {"", "--frames 6-7", "--missing black", {{6, 6}, {7, 0}}},
    };
    for (Case const& each : cases) {
        SCOPED_TRACE(std::string(each.loader) + " " + each.frames);
        fs::remove_all(folder / "out");
        Write("flow.comp", Copying(each.loader));
        Ended const ended = Run(std::string("render flow.comp ") + each.frames + " " + each.options);
        ASSERT_EQ(ended.status, 0) << ended.errors;
        EXPECT_EQ(Files("out").size(), each.files.size());
        for (auto const& [frame, file] : each.files)
            EXPECT_EQ(FrameIn(fmt::format("out/b.{:04d}.exr", frame)), file) << "frame " << frame;
    }
    Write("flow.comp", Copying("Trim = 1, TrimIn = 2, TrimOut = 4"));
    Ended const outside = Run("render flow.comp --frames 5");
    EXPECT_EQ(outside.status, 1);
    EXPECT_NE(outside.errors.find("flow.comp:1: L is trimmed to 2-4"), std::string::npos) << outside.errors;
    Write("flow.comp", Copying("Trim = 1, TrimIn = 4, TrimOut = 2"));
    EXPECT_NE(Run("render flow.comp --frames 5").errors.find("Trim In 4 lies after Trim Out 2"),
              std::string::npos);
}

TEST_F(CliRender, AGapIsAnErrorUnlessToldOtherwise)
{
    WriteFrames({1, 3});
    Write("flow.comp", Copying(""));
    Ended const ended = Run("render flow.comp --frames 1-3");
    EXPECT_EQ(ended.status, 3);
    EXPECT_NE(ended.errors.find("in/a.0002.exr: there is no such file, but 2 frames from 1 to 3"),
              std::string::npos)
        << ended.errors;
    EXPECT_EQ(Files("out"), (std::vector<std::string>{"b.0001.exr", "b.0003.exr"}));
    fs::remove_all(folder / "in");
    EXPECT_EQ(Run("render flow.comp --frames 1-3 --missing black").status, 3)
        << "a sequence of which nothing is there is no gap";
}

TEST_F(CliRender, ADryRunTellsFilesAndWritesNone)
{
    WriteFrames({1, 2, 3});
    Write("flow.comp", Copying(""));
    Ended const ended = Run("render flow.comp --frames 2-3 --dry-run --out L=extra.%02d.png");
    EXPECT_EQ(ended.status, 0) << ended.errors;
    EXPECT_NE(
        ended.out.find("frame 2\n  writes out/b.0002.exr\n  writes extra.02.png\n  reads  in/a.0002.exr"),
        std::string::npos)
        << ended.out;
    EXPECT_FALSE(fs::exists(folder / "out"));
    Ended const gap = Run("render flow.comp --frames 3-4 --dry-run --json");
    EXPECT_EQ(gap.status, 3);
    std::istringstream lines(gap.out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(nlohmann::json::parse(line)["reads"][0]["exists"], true);
    std::getline(lines, line);
    auto const frame = nlohmann::json::parse(line);
    EXPECT_EQ(frame["frame"], 4);
    EXPECT_EQ(frame["reads"][0]["exists"], false);
}

TEST_F(CliRender, ProgramsGetALineForEachFrame)
{
    WriteFrames({1, 3});
    Write("flow.comp", Copying(""));
    Ended const ended = Run("render flow.comp --frames 1-3 --json --stats");
    EXPECT_EQ(ended.status, 3);
    std::vector<nlohmann::json> lines;
    std::istringstream text(ended.out);
    for (std::string line; std::getline(text, line);) lines.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0]["status"], "done");
    EXPECT_EQ(lines[0]["files"][0], "out/b.0001.exr");
    EXPECT_EQ(lines[1]["status"], "failed");
    EXPECT_EQ(lines[1]["problems"][0]["line"], 1);
    EXPECT_EQ(lines[2]["frame"], 3);
    EXPECT_EQ(lines[3]["tools"][0]["tool"], "L");
    EXPECT_EQ(lines[3]["tools"][0]["processed"], 3);
    EXPECT_GT(lines[3]["peakPictureBytes"], 0);
    EXPECT_EQ(lines[4]["failed"], 1);
}

TEST_F(CliRender, ThreadsMemoryAndAKilledRenderChangeNoByte)
{
    // A spline, expressions, two branches, trails.
    std::string const render =
        "render " OMBRELUNE_SOURCE_DIR "/examples/animated.comp --proxy 8 --set Out.Filename=out/####.png ";
    ASSERT_EQ(Run(render + "--threads 1").status, 0);
    auto const reference = Bytes("out");
    ASSERT_EQ(reference.size(), 50U);
    EXPECT_NE(reference.at("0010.png"), reference.at("0000.png"));

    for (char const* options : {"--threads 2", "--threads 4 --memory 100KB", "--threads 1 --memory 1MB"}) {
        fs::remove_all(folder / "out");
        ASSERT_EQ(Run(render + options).status, 0);
        EXPECT_EQ(Bytes("out"), reference) << options;
    }

    // Killed once some frames are there, then finished.
    fs::remove_all(folder / "out");
    Shell("\"$OMBRELUNE\" " + render +
          " & p=$!; while kill -0 $p 2>/dev/null && [ ! -e out/0010.png ]; do :; done; "
          "kill -9 $p; wait $p; true");
    auto const left = Bytes("out");
    EXPECT_GE(left.size(), 10U);
    EXPECT_LT(left.size(), 50U);
    for (auto const& [name, bytes] : left) {
        ASSERT_TRUE(reference.contains(name)) << name << " is a leftover";
        EXPECT_EQ(bytes, reference.at(name)) << "no half file";
    }
    fs::remove(folder / "out/0002.png");
    Ended const finished = Run(render + "--skip-existing");
    EXPECT_EQ(finished.status, 0) << finished.errors;
    EXPECT_NE(finished.out.find("frame 0  is there"), std::string::npos) << finished.out;
    EXPECT_EQ(Bytes("out"), reference);
}

/// Two branches of a sequence.
char const* const kTwoBranches =
    R"({ RenderRange = { 1, 12 }, FrameFormat = { Width = 300, Height = 200 }, Tools = {
  L = Loader { Inputs = { Filename = "in/a.####.exr", Trim = 1, TrimIn = 1, TrimOut = 3, Loop = 1 } },
  T = Brassfennel.BF_HueSaturation { Inputs = { Image = Input { SourceOp = "L" } } },
  I = Brassfennel.BF_Invert { Inputs = { Image = Input { SourceOp = "T" } } },
  S = Saver { Inputs = { Input = Input { SourceOp = "I" }, Filename = "out/t.####.exr" } },
  B = Saver { Inputs = { Input = Input { SourceOp = "L" }, Filename = "out/b.####.png" } } } })";

TEST_F(CliRender, TwoRendersOfTheSameFilesDoNotHurtEachOther)
{
    for (int frame = 1; frame <= 3; ++frame) WriteFrame(frame, 300, 200);
    Write("flow.comp", kTwoBranches);
    ASSERT_EQ(Run("render flow.comp").status, 0);
    auto const reference = Bytes("out");
    fs::remove_all(folder / "out");
    Ended const ended =
        Shell("\"$OMBRELUNE\" render flow.comp & p=$!; \"$OMBRELUNE\" render flow.comp; a=$?; "
              "wait $p && [ $a = 0 ]");
    EXPECT_EQ(ended.status, 0) << ended.errors;
    EXPECT_EQ(Bytes("out"), reference);
}

TEST_F(CliRender, AFullDiskAndAFolderThatCannotBeMadeAreReported)
{
    WriteFrames({1});
    Write("flow.comp", Copying(""));
    Ended const folderEnded = Run("render flow.comp --frames 1 --out L=/proc/none/x.png");
    EXPECT_EQ(folderEnded.status, 3);
    EXPECT_NE(folderEnded.errors.find("cannot make the folder '/proc/none'"), std::string::npos)
        << folderEnded.errors;

    if (Shell("mkdir -p out && unshare -rm mount -t tmpfs tmpfs out").status != 0)
        GTEST_SKIP() << "no private mounts here";
    for (int frame = 1; frame <= 2; ++frame) WriteFrame(frame, 640, 480);
    Ended const full =
        Shell("unshare -rm sh -c 'mount -t tmpfs -o size=64k tmpfs out && "
              "\"$0\" render flow.comp --frames 1-2; s=$?; ls -A out; exit $s' \"$OMBRELUNE\"");
    EXPECT_EQ(full.status, 3);
    EXPECT_NE(full.errors.find("frame 2: flow.comp:2: S: "), std::string::npos) << full.errors;
    EXPECT_NE(full.errors.find("could not be written whole"), std::string::npos) << full.errors;
    EXPECT_EQ(full.out, "") << "nothing half is left";
}

} // namespace
} // namespace ombrelune
