// The built program where things are against it: full disks, closed pipes, signals, links, names that are
// wrong, files that stand where others are to go.

#include <fcntl.h>
#include <sys/stat.h>

#include "host/io/AtomicFile.h"
#include "tests/cli/Cli.h"

namespace ombrelune {
namespace {

class HostileUse : public Cli {
protected:
    /// Photo -> Invert1 -> Out, from one file or sequence to another.
    void WriteFlow(std::string const& from, std::string const& to) const
    {
        Write("flow.comp", fmt::format(R"({{ RenderRange = {{ 1, 1 }}, Tools = {{
            Photo = Loader {{ Inputs = {{ Filename = "{}" }} }},
            Invert1 = Brassfennel.BF_Invert {{ Inputs = {{ Image = Input {{ SourceOp = "Photo" }} }} }},
            Out = Saver {{ Inputs = {{ Input = Input {{ SourceOp = "Invert1" }}, Filename = "{}" }} }} }} }})",
                                       from, to));
    }
};

TEST_F(HostileUse, WrongCommandsAreRefusedBeforeAnyWork)
{
    WriteRamp("in.tif", kDepthInt8);
    WriteRamp("in.0001.tif", kDepthInt8);
    fs::create_symlink("in.tif", folder / "link.tif");
    ASSERT_EQ(mkfifo((folder / "pipe.comp").c_str(), 0600), 0);
    struct {
        char const *from, *to;
        Mistake mistake;
    } const cases[] = {
        {"in.tif", "out.tif", {"render flow.comp --memory -5", 2, "--memory"}},
        {"in.tif", "out.tif", {"render flow.comp --frames ''", 2, "--frames"}},
        {"in.tif", "out.tif", {"render flow.comp --timeout -1", 2, "--timeout"}},
        {"in.tif", "out.tif", {"render flow.comp --out Invert1=more.xyz", 2, "unknown extension '.xyz'"}},
        {"in.tif", "out.gif", {"render flow.comp", 2, "Out.Filename 'out.gif': unknown extension '.gif'"}},
        {"in.tif", "out", {"render flow.comp", 2, "the name has no extension"}},
        {"in.tif", "in.tif", {"render flow.comp", 2, "add --overwrite-sources"}},
        {"link.tif", "in.tif", {"render flow.comp", 2, "add --overwrite-sources"}},
        {"in.tif", "./link.tif", {"render flow.comp", 2, "add --overwrite-sources"}},
        {"in.####.tif", "in.%04d.tif", {"render flow.comp", 2, "add --overwrite-sources"}},
        {"in.tif", "out.tif", {"render flow.comp --out Photo=in.tif", 2, "add --overwrite-sources"}},
        {"in.tif", "out.tif", {"rendr flow.comp", 2, "did you mean 'render'?"}},
        {"in.tif", "out.tif", {"--threads 1 chek flow.comp", 2, "did you mean 'check'?"}},
        {"in.tif", "out.tif", {"render pipe.comp", 3, "is no regular file"}},
        {"in.tif", "out.tif", {"render /dev/zero", 3, "is no regular file"}},
        {"in.tif",
         "out.tif",
         {"apply BF_Invert --in in.####.tif --out a.png", 2, "'ombrelune render FLOW --frames 1-100'"}},
        {"in.tif",
         "out.tif",
         {"apply BF_Invert --in in.tif --out a.%04d.png", 2, "'ombrelune render FLOW --frames 1-100'"}},
    };
    std::string const source = Slurp(folder / "in.tif");
    for (auto const& [from, to, mistake] : cases) {
        SCOPED_TRACE(fmt::format("{} from {} to {}", mistake.arguments, from, to));
        WriteFlow(from, to);
        Ended const ended = Shell(std::string("timeout 10 \"$OMBRELUNE\" ") + mistake.arguments);
        EXPECT_EQ(ended.status, mistake.status);
        EXPECT_NE(ended.errors.find(mistake.says), std::string::npos) << ended.errors;
        EXPECT_FALSE(fs::exists(folder / "out.tif"));
    }
    EXPECT_EQ(Slurp(folder / "in.tif"), source);

    WriteFlow("link.tif", "in.tif");
    EXPECT_EQ(Run("render flow.comp --overwrite-sources").status, 0);
    EXPECT_NE(Slurp(folder / "in.tif"), source);
}

TEST_F(HostileUse, ARenderRangeIsBoundedAsFramesAre)
{
    WriteRamp("in.tif", kDepthInt8);
    for (char const* range : {"0, 1e6", "-1e300, 1e300", "5e9, 5e9"}) {
        Write("flow.comp", fmt::format(R"({{ RenderRange = {{ {} }}, Tools = {{
            Photo = Loader {{ Inputs = {{ Filename = "in.tif" }} }},
            Out = Saver {{ Inputs = {{ Input = Input {{ SourceOp = "Photo" }}, Filename = "o.##.tif" }} }} }} }})",
                                       range));
        Ended const ended = Shell("timeout 10 \"$OMBRELUNE\" render flow.comp");
        EXPECT_EQ(ended.status, 2) << range;
        EXPECT_NE(ended.errors.find("RenderRange: "), std::string::npos) << ended.errors;
    }
}

TEST_F(HostileUse, StandardOutputThatCannotBeWrittenIsAFileProblemAndAClosedPipeIsNone)
{
    WriteRamp("in.tif", kDepthInt8);
    WriteFlow("in.tif", "out.tif");
    for (std::string const command :
         {"tools", "tools --json", "describe BF_Invert", "check flow.comp", "check flow.comp --json",
          "fmt flow.comp", "render flow.comp", "render flow.comp --json", "--help"}) {
        SCOPED_TRACE(command);
        if (command != "check flow.comp") { // says nothing when all is well
            Ended const full = Run(command + " >/dev/full");
            EXPECT_EQ(full.status, 3);
            EXPECT_NE(full.errors.find("standard output could not be written"), std::string::npos);
        }
        Ended const piped =
            Shell("{ sleep 0.2; \"$OMBRELUNE\" " + command + "; echo $? >status.txt; } | true");
        EXPECT_EQ(Slurp(folder / "status.txt"), "0\n");
        EXPECT_EQ(piped.errors, "");
    }
}

TEST_F(HostileUse, OnlyWholeFilesAreKept)
{
    WriteRamp("in.tif", kDepthInt16);
    for (std::string const name : {"out.png", "out.tif", "out.exr"}) {
        SCOPED_TRACE(name);
        WriteFlow("in.tif", name);
        ASSERT_EQ(Run("render flow.comp").status, 0);
        std::string const whole = Slurp(folder / name);
        EXPECT_NE(Run("render flow.comp --skip-existing").out.find("is there"), std::string::npos);
        for (std::string const& broken : {std::string(), whole.substr(0, 12), std::string("no picture")}) {
            Write(name.c_str(), broken);
            EXPECT_EQ(Run("render flow.comp --skip-existing").status, 0);
            EXPECT_EQ(Slurp(folder / name), whole) << broken.size();
        }
    }
}

TEST_F(HostileUse, AReplacedFileKeepsItsModeAndALinkIsFollowed)
{
    WriteRamp("in.tif", kDepthInt8);
    WriteRamp("there.tif", kDepthInt8);
    fs::permissions(folder / "there.tif", fs::perms(0640));
    fs::create_symlink("there.tif", folder / "out.tif");
    WriteFlow("in.tif", "out.tif");
    ASSERT_EQ(Run("render flow.comp").status, 0);
    EXPECT_TRUE(fs::is_symlink(folder / "out.tif"));
    EXPECT_EQ(fs::status(folder / "there.tif").permissions(), fs::perms(0640));
    EXPECT_NE(Slurp(folder / "there.tif"), Slurp(folder / "in.tif"));
    ASSERT_EQ(Shell("umask 027; \"$OMBRELUNE\" apply BF_Invert --in in.tif --out new.tif").status, 0);
    EXPECT_EQ(fs::status(folder / "new.tif").permissions(), fs::perms(0640));
}

TEST_F(HostileUse, AFrameThatTakesTooLongEndsTheRender)
{
    WriteRamp("in.tif", kDepthInt8, 2000, 2000);
    Write("flow.comp", R"({ RenderRange = { 1, 2 }, Tools = {
        Photo = Loader { Inputs = { Filename = "in.tif" } },
        Soft = Blur { Inputs = { Input = Input { SourceOp = "Photo" }, XBlurSize = 100 } },
        Out = Saver { Inputs = { Input = Input { SourceOp = "Soft" }, Filename = "o.##.png" } } } })");
    Ended const ended = Shell("timeout 20 \"$OMBRELUNE\" render flow.comp --timeout 0.001 --json");
    EXPECT_EQ(ended.status, 1) << ended.errors;
    EXPECT_NE(ended.out.find("took longer than 0.001 s"), std::string::npos) << ended.out;
    EXPECT_NE(ended.out.find("\"status\":\"failed\""), std::string::npos);
    EXPECT_EQ(Files("."), (std::vector<std::string>{"flow.comp", "in.tif", "stderr.txt", "stdout.txt"}));
}

/// A process that writes a temporary with a name, as where a folder has no nameless ones, and then gets a
/// signal.
TEST_F(HostileUse, TemporariesGoWithTheProcessAndStaleOnesAreTold)
{
    WriteRamp("in.tif", kDepthInt8);
    WriteFlow("in.tif", "out.tif");
    for (int const signal : {SIGTERM, SIGKILL}) {
        pid_t const child = fork();
        if (child == 0) {
            RemoveTemporariesOnSignals();
            AtomicFile file((folder / "out.tif").string(), AtomicFile::Naming::kAtOnce);
            if (!file.Open()) raise(signal);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        Ended const ended = Run("render flow.comp");
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.errors.find("was left by a render that was killed") != std::string::npos,
                  signal == SIGKILL)
            << ended.errors;
    }
}

} // namespace
} // namespace ombrelune
