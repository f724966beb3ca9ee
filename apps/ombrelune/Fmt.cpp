#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/flow/FlowReader.h"
#include "host/flow/Writer.h"
#include "host/io/AtomicFile.h"

namespace ombrelune::app {

namespace {

/// Replaces the contents of a file, which may be a link to it, and keeps its permissions.
std::optional<Problem> Replace(std::string const& path, std::string const& text)
{
    std::error_code error;
    std::string const target = std::filesystem::canonical(path, error).string();
    auto const permissions = std::filesystem::status(target, error).permissions();
    AtomicFile file(target);
    if (auto problem = file.Open()) return problem;
    std::fwrite(text.data(), 1, text.size(), file.Stream());
    if (auto problem = file.Commit()) return problem;
    std::filesystem::permissions(target, permissions, error);
    return std::nullopt;
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
        std::fwrite(text.data(), 1, text.size(), stdout);
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
