#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "host/graph/FusionDoc.h"
#include "host/value/NearestName.h"
#include "host/value/Problem.h"

namespace ombrelune::app {

/// What the program ends with.
enum ExitStatus {
    kDone = 0,
    kFrameFailed = 1, ///< some frame could not be made
    kWrongInput = 2,  ///< the command or the flow is wrong
    kFileProblem = 3, ///< a file cannot be read or written
};

/// Writes to standard output. What goes wrong is told by FinishOutput, so that work goes on.
void Print(std::string_view text);
template <class... Args> void Print(fmt::format_string<Args...> text, Args&&... args)
{
    Print(std::string_view(fmt::format(text, std::forward<Args>(args)...)));
}
void FlushOutput();
/// Flushes and tells whether standard output could be written. A reader that has had enough, as in `| head`,
/// is no fault.
ExitStatus FinishOutput();

/// Prints "ombrelune: ..." on the error stream.
void Complain(std::string const& text);
void Warn(std::string const& text);
ExitStatus Complain(Problem const& problem);

/// Loads the bundle: the file given, or Ombrelune.plugin beside the program.
std::optional<Problem> LoadBundle(std::string const& path);

/// Class of an operator by "BF_Invert", "Brassfennel.BF_Invert" or "Loader", in any case of letters;
/// complains and returns null when there is none.
Registry const* FindTool(std::string const& name);
/// "BF_Invert": what FindTool takes and the other commands print.
std::string ClassName(Registry const& registry);

struct ToolsOptions {
    std::string category;
    bool builtIn = false;
    bool json = false;
};
ExitStatus Tools(ToolsOptions const& options);

struct DescribeOptions {
    std::string tool;
    bool json = false;
};
ExitStatus Describe(DescribeOptions const& options);

struct ApplyOptions {
    std::string tool;
    std::vector<std::string> in;  ///< [Input=]FILE
    std::vector<std::string> set; ///< Input=VALUE
    std::string out;
    bool quick = false;
};
ExitStatus Apply(ApplyOptions const& options);

struct RenderOptions {
    std::string flow;
    std::string frames;
    std::vector<std::string> set;   ///< Tool.Input=VALUE
    std::vector<std::string> out;   ///< Tool=PATTERN
    std::vector<std::string> print; ///< Tool.Output: print its values and write nothing
    int proxy = 1;
    bool quick = false;
    MissingFrame missing = MissingFrame::kError;
    std::size_t memory = 0; ///< bytes of pictures that are kept; 0 takes a quarter of the machine's
    double timeout = 0.0;   ///< seconds for a frame; 0 for no end
    bool skipExisting = false;
    bool overwriteSources = false; ///< write over files that the flow reads
    bool stopOnError = false;
    bool dryRun = false;
    bool stats = false;
    bool json = false;
    bool csv = false; ///< of what is printed
};
ExitStatus Render(RenderOptions const& options);

struct CheckOptions {
    std::string flow;
    bool json = false;
};
/// Lists everything that is wrong with a flow.
ExitStatus Check(CheckOptions const& options);

struct FmtOptions {
    std::vector<std::string> flows;
    bool inPlace = false;
    bool check = false;
};
/// Prints flows in the canonical layout, or writes them back, or tells which are not in it.
ExitStatus Fmt(FmtOptions const& options);

struct DocsOptions {
    std::string folder;
    std::string examples = "examples"; ///< folder of the flows and notes
};
/// Writes FOLDER/tools: a page for each tool, an index, a gallery, their pictures.
ExitStatus Docs(DocsOptions const& options);

/// Complains and returns null when there is none.
Operator* FindOperator(FusionDoc const& document, std::string const& name);

/// Sets an input, or the inputs of a colour, as an artist would, instead of what is connected to it;
/// complains when the text "Input=VALUE" does not fit.
bool SetFromText(Operator& op, std::string const& assignment);

/// Shortest text that reads as the same number; one that single precision holds as that precision prints it,
/// so that 0.1 stays 0.1.
std::string NumberText(double number);

} // namespace ombrelune::app
