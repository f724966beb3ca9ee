// The command line: parses the arguments, loads the bundle as any host would, runs one command.

#include <csignal>
#include <map>
#include <new>

#include <CLI/CLI.hpp>

#include "apps/ombrelune/Commands.h"
#include "host/io/AtomicFile.h"
#include "host/value/NearestName.h"
#include "host/value/Parallel.h"

namespace ombrelune::app {
namespace {

/// Names the command that was meant, if the first word is almost one; the parser tells only what is missing.
void SuggestCommand(CLI::App& program, int argc, char** argv)
{
    if (!program.get_subcommands().empty()) return;
    std::vector<std::string> known;
    for (CLI::App const* command : program.get_subcommands({})) known.push_back(command->get_name());
    for (int i = 1; i < argc; ++i) {
        std::string const word = argv[i];
        if (word.starts_with('-')) continue;
        std::string const likely = DidYouMean(word, known);
        if (likely.empty()) continue; // the value of an option, perhaps
        return Complain(fmt::format("there is no command {}{}", Quoted(word), likely));
    }
}

std::string NoMinus(std::string const& text) { return text.starts_with('-') ? "is below 0" : ""; }
std::string NotEmpty(std::string const& text) { return text.empty() ? "names no frame" : ""; }

ExitStatus Main(int argc, char** argv)
{
    CLI::App program("Creative compositing tools, without a viewer: renders flows and applies single tools.",
                     "ombrelune");
    program.require_subcommand(1);
    program.fallthrough();
    std::string bundle;
    int threads = 0;
    program.add_option("--plugin", bundle,
                       "bundle to load instead of the Ombrelune.plugin beside the program");
    program.add_option("--threads", threads, "worker threads; 0 takes one per core")
        ->check(CLI::Range(0, 1024));

    RenderOptions render;
    CLI::App* const renderCommand = program.add_subcommand("render", "render frames of a flow");
    renderCommand->add_option("FLOW", render.flow, "flow to render")->required();
    renderCommand
        ->add_option("--frames", render.frames, "5, 1-10, 1-10x2,30; --frames=-5--1 for negative ones")
        ->check(CLI::Validator(NotEmpty, ""));
    renderCommand
        ->add_option("--set", render.set, "Tool.Input=VALUE, instead of what the flow says or connects")
        ->take_all();
    renderCommand->add_option("--out", render.out, "Tool=PATTERN: write this tool's picture too")->take_all();
    renderCommand
        ->add_option("--print", render.print, "Tool.Output: print its numbers or texts, write no picture")
        ->take_all()
        ->excludes("--out");
    renderCommand->add_flag("--csv", render.csv, "with --print: a table with commas between")
        ->needs("--print");
    renderCommand->add_option("--proxy", render.proxy, "make pictures smaller by this factor")
        ->check(CLI::Range(1, 1024));
    renderCommand->add_flag("--quick", render.quick, "as while dragging: cheap filtering");
    std::map<std::string, MissingFrame> const missing{
        {"error", MissingFrame::kError}, {"hold", MissingFrame::kHold}, {"black", MissingFrame::kBlack}};
    renderCommand
        ->add_option("--missing", render.missing,
                     "where a sequence has a gap: error, hold the frame before, or black")
        ->transform(CLI::CheckedTransformer(missing))
        ->option_text("error|hold|black");
    renderCommand
        ->add_option("--memory", render.memory,
                     "memory for results that are kept, such as 2GB; a quarter of the machine's unless told")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Validator(NoMinus, ""))
        ->option_text("SIZE");
    renderCommand
        ->add_option("--timeout", render.timeout, "end, and with status 1, when a frame takes longer")
        ->check(CLI::Range(0.001, 1e8))
        ->option_text("SECONDS");
    renderCommand->add_flag("--skip-existing", render.skipExisting,
                            "leave files alone that are there and look whole");
    renderCommand->add_flag("--overwrite-sources", render.overwriteSources,
                            "write even over files that the flow reads");
    renderCommand->add_flag("--stop-on-error", render.stopOnError, "end at the first frame that fails");
    renderCommand->add_flag("--dry-run", render.dryRun, "say what would be written, and from what");
    renderCommand->add_flag("--stats", render.stats, "time by tool and peak memory, at the end");
    renderCommand->add_flag("--json", render.json, "a line of JSON a frame, for programs")->excludes("--csv");

    ApplyOptions apply;
    CLI::App* const applyCommand = program.add_subcommand("apply", "apply one tool to files");
    applyCommand->add_option("TOOL", apply.tool, "tool, such as BF_Invert")->required();
    applyCommand->add_option("--in", apply.in, "[Input=]FILE; without an input the main inputs in order")
        ->take_all();
    applyCommand
        ->add_option("--set", apply.set, "Input=VALUE: a number, true, a button's name, x,y, #rrggbb, a text")
        ->take_all();
    applyCommand->add_option("--out", apply.out, "file to write")->required();
    applyCommand->add_flag("--quick", apply.quick, "as while dragging: cheap filtering");

    ToolsOptions tools;
    CLI::App* const toolsCommand = program.add_subcommand("tools", "list the tools of the bundle");
    toolsCommand->add_option("--category", tools.category, "only categories that contain this text");
    toolsCommand->add_flag("--built-in", tools.builtIn, "list the host's own operators instead");
    toolsCommand->add_flag("--json", tools.json, "for programs");

    DescribeOptions describe;
    CLI::App* const describeCommand = program.add_subcommand("describe", "inputs and outputs of a tool");
    describeCommand->add_option("TOOL", describe.tool, "tool, such as BF_Invert")->required();
    describeCommand->add_flag("--json", describe.json, "for programs");

    CheckOptions check;
    CLI::App* const checkCommand =
        program.add_subcommand("check", "list everything that is wrong with a flow");
    checkCommand->add_option("FLOW", check.flow, "flow to check")->required();
    checkCommand->add_flag("--json", check.json, "for programs");

    FmtOptions fmt;
    CLI::App* const fmtCommand = program.add_subcommand("fmt", "print flows in the canonical layout");
    fmtCommand->add_option("FLOW", fmt.flows, "flows to lay out")->required();
    CLI::Option* const inPlace = fmtCommand->add_flag("--in-place", fmt.inPlace, "write the flows back");
    fmtCommand->add_flag("--check", fmt.check, "only tell which would change; ends with 1 if any would")
        ->excludes(inPlace);

    DocsOptions docs;
    CLI::App* const docsCommand = program.add_subcommand(
        "docs", "write a page for each tool, with its example's picture, and a gallery");
    docsCommand->add_option("FOLDER", docs.folder, "pages go to FOLDER/tools")->required();
    docsCommand->add_option("--examples", docs.examples, "folder of the example flows")
        ->capture_default_str();

    try {
        program.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        if (error.get_exit_code() != 0) SuggestCommand(program, argc, argv);
        return program.exit(error) == 0 ? kDone : kWrongInput;
    }

    if (fmtCommand->parsed()) return Fmt(fmt); // needs no tools
    SetThreadCount(threads);
    if (auto problem = LoadBundle(bundle)) return Complain(*problem);
    if (renderCommand->parsed()) return Render(render);
    if (applyCommand->parsed()) return Apply(apply);
    if (toolsCommand->parsed()) return Tools(tools);
    if (checkCommand->parsed()) return Check(check);
    if (docsCommand->parsed()) return Docs(docs);
    return Describe(describe);
}

} // namespace
} // namespace ombrelune::app

int main(int argc, char** argv)
{
    using namespace ombrelune::app;
    // A reader that closes the pipe early must not end a render; see FinishOutput.
    std::signal(SIGPIPE, SIG_IGN);
    ombrelune::RemoveTemporariesOnSignals();
    ExitStatus status = kFrameFailed;
    try {
        status = Main(argc, argv);
    } catch (std::bad_alloc const&) {
        Complain("there is not enough memory");
    } catch (std::exception const& error) {
        Complain(error.what());
    }
    return std::max(status, FinishOutput());
}
