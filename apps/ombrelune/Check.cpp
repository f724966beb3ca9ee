#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "apps/ombrelune/Commands.h"
#include "host/flow/FlowReader.h"

namespace ombrelune::app {

namespace {

using Json = nlohmann::ordered_json;

void PrintJson(FlowReading const& reading, std::string const& flow)
{
    Json list = Json::array();
    auto const add = [&](Problem const& problem, char const* severity) {
        Json entry = {
            {"file", problem.file}, {"line", nullptr}, {"severity", severity}, {"text", problem.text}};
        if (problem.line > 0) entry["line"] = problem.line;
        list.push_back(std::move(entry));
    };
    for (Problem const& problem : reading.problems) add(problem, "error");
    for (Problem const& warning : reading.warnings) add(warning, "warning");
    Json const report = {{"flow", flow}, {"ok", reading.problems.empty()}, {"problems", std::move(list)}};
    // Names of tools and files may be any bytes.
    Print("{}\n", report.dump(2, ' ', false, Json::error_handler_t::replace));
}

void PrintText(FlowReading const& reading, std::string const& flow)
{
    for (Problem const& problem : reading.problems) Print("{}\n", problem.Format());
    for (Problem warning : reading.warnings) {
        warning.text = "warning: " + warning.text;
        Print("{}\n", warning.Format());
    }
    auto const count = [](std::size_t number, char const* what) {
        return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
    };
    Print("{}: {}, {}\n", flow, count(reading.problems.size(), "mistake"),
          count(reading.warnings.size(), "warning"));
}

} // namespace

ExitStatus Check(CheckOptions const& options)
{
    FlowReading const reading = ReadFlow(options.flow);
    if (options.json) PrintJson(reading, options.flow);
    else if (reading.problems.empty() || !reading.problems.front().isFile) PrintText(reading, options.flow);
    else Complain(reading.problems.front());
    if (reading.problems.empty()) return kDone;
    return reading.problems.front().isFile ? kFileProblem : kWrongInput;
}

} // namespace ombrelune::app
