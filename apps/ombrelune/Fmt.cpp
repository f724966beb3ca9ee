#include <algorithm>
#include <cstdio>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/flow/FlowReader.h"
#include "host/flow/Writer.h"
#include "host/io/AtomicFile.h"

namespace ombrelune::app {

namespace {

std::optional<Problem> Replace(std::string const& path, std::string const& text)
{
    AtomicFile file(path);
    if (auto problem = file.Open()) return problem;
    std::fwrite(text.data(), 1, text.size(), file.Stream());
    return file.Commit();
}

ExitStatus FmtOne(std::string const& flow, FmtOptions const& options)
{
    FlowText const read = ReadFlowFile(flow);
    if (read.problem) return Complain(*read.problem);
    Parsed const parsed = ParseScript(read.text, flow);
    for (Problem const& problem : parsed.problems) Complain(problem);
    if (!parsed.problems.empty()) return kWrongInput;

    std::string const text = WriteScript(parsed);
    if (options.check) {
        if (text == read.text) return kDone;
        Complain(fmt::format("{} is not in the canonical layout; 'ombrelune fmt --in-place' mends it", flow));
        return kFrameFailed;
    }
    if (!options.inPlace) {
        Print(std::string_view(text));
        return kDone;
    }
    if (text == read.text) return kDone;
    auto problem = Replace(flow, text);
    if (!problem) return kDone;
    problem->isFile = true;
    return Complain(*problem);
}

} // namespace

ExitStatus Fmt(FmtOptions const& options)
{
    ExitStatus status = kDone;
    for (std::string const& flow : options.flows) status = std::max(status, FmtOne(flow, options));
    return status;
}

} // namespace ombrelune::app
