#include "apps/ombrelune/RenderReport.h"

#include <chrono>
#include <cstdio>
#include <filesystem>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <unistd.h>

#include "apps/ombrelune/Commands.h"
#include "host/image/BufferPool.h"

namespace ombrelune::app {

namespace {

using Json = nlohmann::ordered_json;

double Now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

Json ToJson(std::vector<Problem> const& problems)
{
    Json list = Json::array();
    for (Problem const& problem : problems)
        list.push_back({{"file", problem.file}, {"line", problem.line}, {"text", problem.text}});
    return list;
}

void PrintJson(Json const& line)
{
    // Paths may hold any bytes; JSON may not.
    Print("{}\n", line.dump(-1, ' ', false, Json::error_handler_t::replace));
    FlushOutput();
}

bool Exists(std::string const& path)
{
    std::error_code error;
    return std::filesystem::exists(path, error);
}

double Mebibytes(std::size_t bytes) { return static_cast<double>(bytes) / (1 << 20); }

std::size_t PeakOfProcess()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

} // namespace

RenderReporter::RenderReporter(std::size_t frames, bool json)
    : frames_(frames), json_(json), terminal_(!json && isatty(STDOUT_FILENO)), start_(Now())
{}

void RenderReporter::Frame(FrameReport const& report)
{
    ++done_;
    bool const failed = !report.problems.empty();
    bool const kept = report.written.empty() && !report.kept.empty();
    failed_ += failed;
    if (json_) {
        PrintJson({{"frame", report.frame},
                   {"status", failed ? "failed"
                              : kept ? "kept"
                                     : "done"},
                   {"seconds", report.seconds},
                   {"files", failed ? std::vector<std::string>{} : report.written},
                   {"kept", report.kept},
                   {"problems", ToJson(report.problems)},
                   {"warnings", ToJson(report.warnings)}});
        return;
    }
    if (terminal_ && (failed || !report.warnings.empty())) Print("\r\033[K");
    FlushOutput();
    for (Problem const& warning : report.warnings) Warn(warning.Format());
    for (Problem const& problem : report.problems)
        Complain(fmt::format("frame {}: {}", report.frame, problem.Format()));
    if (terminal_) {
        double const left =
            (Now() - start_) / static_cast<double>(done_) * static_cast<double>(frames_ - done_);
        auto const seconds = static_cast<int>(left + 0.5);
        Print("\r\033[Kframe {}  {} of {}  {:.2f} s  left {}:{:02}", report.frame, done_, frames_,
              report.seconds, seconds / 60, seconds % 60);
    } else if (!failed) {
        Print("frame {}  {}\n", report.frame, kept ? "is there" : fmt::format("{:.2f} s", report.seconds));
    }
    FlushOutput();
}

void RenderReporter::Plan(int frame, RenderJob::FramePlan const& plan, bool skipExisting)
{
    ++done_;
    bool failed = !plan.problems.empty();
    for (std::string const& path : plan.reads) failed = failed || !Exists(path);
    failed_ += failed;
    if (json_) {
        Json writes = Json::array(), reads = Json::array();
        for (std::string const& path : plan.writes)
            writes.push_back({{"file", path}, {"exists", Exists(path)}});
        for (std::string const& path : plan.reads)
            reads.push_back({{"file", path}, {"exists", Exists(path)}});
        PrintJson(
            {{"frame", frame}, {"writes", writes}, {"reads", reads}, {"problems", ToJson(plan.problems)}});
        return;
    }
    Print("frame {}\n", frame);
    for (std::string const& path : plan.writes)
        Print("  writes {}{}\n", path,
              !Exists(path)  ? ""
              : skipExisting ? " (is there and stays)"
                             : " (replaces the one that is there)");
    for (std::string const& path : plan.reads)
        Print("  reads  {}{}\n", path, Exists(path) ? "" : " (missing)");
    FlushOutput();
    for (Problem const& problem : plan.problems)
        Complain(fmt::format("frame {}: {}", frame, problem.Format()));
}

void RenderReporter::Stats(Renderer const& renderer) const
{
    std::vector<OperatorWork> const work = renderer.Work();
    std::size_t const pictures = BuffersInUse().peak, process = PeakOfProcess();
    if (json_) {
        Json tools = Json::array();
        for (OperatorWork const& each : work)
            tools.push_back({{"tool", each.op->Name()},
                             {"class", ClassName(*each.op->Registration())},
                             {"seconds", each.seconds},
                             {"processed", each.processed},
                             {"reused", each.reused}});
        PrintJson({{"tools", tools}, {"peakPictureBytes", pictures}, {"peakBytes", process}});
        return;
    }
    if (terminal_) Print("\n");
    Print("{:<24} {:<24} {:>10} {:>10} {:>8}\n", "tool", "class", "seconds", "processed", "reused");
    for (OperatorWork const& each : work)
        Print("{:<24} {:<24} {:>10.3f} {:>10} {:>8}\n", each.op->Name(), ClassName(*each.op->Registration()),
              each.seconds, each.processed, each.reused);
    Print("peak memory: {:.1f} MiB of pictures, {:.1f} MiB in all\n", Mebibytes(pictures),
          Mebibytes(process));
}

void RenderReporter::End()
{
    if (json_) PrintJson({{"frames", done_}, {"failed", failed_}, {"seconds", Now() - start_}});
    else if (terminal_ && done_ > 0) Print("\n");
}

} // namespace ombrelune::app
