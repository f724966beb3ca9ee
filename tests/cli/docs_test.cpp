// The pages that are committed are those that the program writes now, and their pictures are its goldens.

#include "tests/cli/Cli.h"
#include "tests/cli/PictureLimits.h"

namespace ombrelune {
namespace {

using namespace test;

fs::path const kSource = OMBRELUNE_SOURCE_DIR;
fs::path const kCommitted = kSource / "docs/tools";
/// Pictures of failures are kept here.
fs::path const kDifferences = fs::path(OMBRELUNE_PROGRAM).parent_path().parent_path() / "differences";

Ref<Image> Read(fs::path const& path)
{
    ReadResult read = ReadPicture(path.string());
    EXPECT_FALSE(read.problem) << read.problem->Format();
    return read.image;
}

void ExpectSamePicture(Image const& made, fs::path const& reference)
{
    Ref<Image> const expected = Read(reference);
    ASSERT_TRUE(expected);
    PictureDistance const distance = DistanceOf(made, *expected);
    if (distance.IsWithinLimits()) return;
    KeepDifference(made, *expected, kDifferences, reference.stem().string());
    ADD_FAILURE() << reference << ": largest difference " << distance.largest << ", "
                  << distance.shareOff * 100.0 << " % of the values off, same size " << distance.sameSize
                  << "; see " << kDifferences;
}

std::vector<std::string> FilesBelow(fs::path const& folder)
{
    std::vector<std::string> names;
    for (auto const& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) names.push_back(fs::relative(entry.path(), folder).string());
    std::sort(names.begin(), names.end());
    return names;
}

class Docs : public Cli {};

TEST_F(Docs, CommittedPagesAreFresh)
{
    Ended const ended = Run("docs made --examples '" + (kSource / "examples").string() + "'");
    ASSERT_EQ(ended.status, 0) << ended.errors;
    fs::path const made = folder / "made/tools";
    ASSERT_EQ(FilesBelow(made), FilesBelow(kCommitted)) << "run ./ombrelune docs docs, and remove old pages";
    for (std::string const& name : FilesBelow(made)) {
        SCOPED_TRACE(name);
        if (name.ends_with(".png")) ExpectSamePicture(*Read(made / name), kCommitted / name);
        else
            EXPECT_TRUE(Slurp(made / name) == Slurp(kCommitted / name)) << "stale: run ./ombrelune docs docs";
    }
}

TEST_F(Docs, CommandsOfPagesMakeThePagesPictures)
{
    fs::create_symlink(kSource / "examples", folder / "examples");
    fs::create_symlink(OMBRELUNE_PROGRAM, folder / "ombrelune");
    int commands = 0;
    for (auto const& entry : fs::directory_iterator(kCommitted)) {
        std::string const page = Slurp(entry.path()), name = entry.path().stem().string();
        auto const begin = page.find("```sh\n");
        if (entry.path().extension() != ".md" || begin == std::string::npos) continue;
        SCOPED_TRACE(name);
        std::string command = page.substr(begin + 6, page.find("\n```", begin) - begin - 6);
        // Straight colour cannot hold what is brighter than its alpha, and it is shrunk below.
        ASSERT_TRUE(command.ends_with(name + ".png")) << command;
        command.replace(command.size() - 3, 3, "exr");
        Ended const ended = Shell(command);
        ASSERT_EQ(ended.status, 0) << ended.errors;
        Ref<Image> const full = Read(folder / (name + ".exr")),
                         golden = Read(kCommitted / "pictures" / (name + ".png"));
        ASSERT_TRUE(full && golden);
        std::string const small = (folder / "small.png").string();
        WritePicture(*full->ResizeOfImage(golden->Width(), golden->Height()), small, {.depth = kDepthInt8});
        ExpectSamePicture(*Read(small), kCommitted / "pictures" / (name + ".png"));
        ++commands;
    }
    EXPECT_GT(commands, 10);
}

TEST_F(Docs, MistakesInExamplesAreAnsweredAndTheOtherPagesWritten)
{
    EXPECT_NE(Run("docs made --examples gone").errors.find("gone: is no folder of example flows"),
              std::string::npos);
    fs::create_directories(folder / "examples");
    Write("examples/Invert.comp", "{ Tools = {\n A = Brassfennel.BF_Invrt { } } }");
    Write("examples/Color.comp", "{ Tools = { A = Background { } } }");
    Write("examples/built-in-Background.comp", "-- Half\n-- covered.\n{ FrameFormat = { Width = 9, Height = "
                                               "4 }, Tools = { B = Background { Inputs = "
                                               "{ Alpha = 0.5 } } } }");
    Ended const ended = Run("docs made");
    EXPECT_EQ(ended.status, 2);
    EXPECT_NE(ended.errors.find("examples/Invert.comp:2: A: there is no tool"), std::string::npos)
        << ended.errors;
    EXPECT_NE(ended.errors.find("examples/Color.comp: has no BF_Color to show"), std::string::npos);
    std::string const page = Slurp(folder / "made/tools/built-in-Background.md");
    EXPECT_NE(page.find("*Half covered.*"), std::string::npos);
    EXPECT_NE(page.find("./ombrelune apply Background --set Width=9 --set Height=4 --set Color=0,0,0,0.5 \\\n"
                        "    --out built-in-Background.png\n"),
              std::string::npos)
        << page;
    EXPECT_EQ(Read(folder / "made/tools/pictures/built-in-Background.png")->Width(), 9);
    EXPECT_TRUE(fs::exists(folder / "made/tools/Invert.md"));
}

TEST(PictureLimits, TellWhatIsTooFar)
{
    // 100 x 50: 20000 values, of which 4 may be off by two or three steps of 8 bits.
    Ref<Image> const reference =
        NewImageTagList({{Img_Width, 100}, {Img_Height, 50}, {Img_Depth, kDepthFloat}});
    reference->Clear();
    auto const distance = [&](int count, float by) {
        Ref<Image> made = reference->CopyOfImage(false);
        for (int i = 0; i < count; ++i) reinterpret_cast<float*>(made->MainRow(i / 400))[i % 400] += by;
        return DistanceOf(*made, *reference);
    };
    EXPECT_TRUE(distance(20000, 1.0F / 255.0F).IsWithinLimits());
    EXPECT_TRUE(distance(4, -3.0F / 255.0F).IsWithinLimits());
    EXPECT_FALSE(distance(5, 2.0F / 255.0F).IsWithinLimits());
    EXPECT_FALSE(distance(1, 4.0F / 255.0F).IsWithinLimits());
    EXPECT_FALSE(DistanceOf(*reference, *reference->ResizeOfImage(100, 49)).IsWithinLimits());
}

} // namespace
} // namespace ombrelune
