#include <algorithm>
#include <cmath>
#include <filesystem>

#include <fmt/format.h>

#include "apps/ombrelune/Print.h"
#include "apps/ombrelune/RenderReport.h"
#include "host/flow/FlowReader.h"
#include "host/flow/FrameRange.h"
#include "host/graph/ValueFormat.h"
#include "host/io/PicturePath.h"

namespace ombrelune::app {

namespace {

/// Sets what a group shows, for the tool inside it. Complains and returns false when it shows no such input.
bool SetInGroup(std::string const& group, ShownByGroup const& shown, std::string const& assignment)
{
    auto const equals = assignment.find('=');
    std::string const id = assignment.substr(0, equals);
    auto const found = shown.inputs.find(id);
    if (found != shown.inputs.end() && found->second && equals != std::string::npos)
        return SetFromText(*found->second->Owner(), found->second->Id().Text() + assignment.substr(equals));
    std::vector<std::string> known;
    for (auto const& [name, input] : shown.inputs) known.push_back(name);
    Complain(fmt::format("group {} shows no input {}{}", group, Quoted(id), DidYouMean(id, known)));
    return false;
}

bool SetValues(FusionDoc const& document, std::vector<std::string> const& assignments)
{
    for (std::string const& assignment : assignments) {
        auto const dot = assignment.find('.');
        if (dot == std::string::npos || dot > assignment.find('=')) {
            Complain(fmt::format("--set {}: write Tool.Input=VALUE", Quoted(assignment)));
            return false;
        }
        if (auto group = document.groups.find(assignment.substr(0, dot)); group != document.groups.end()) {
            if (!SetInGroup(group->first, group->second, assignment.substr(dot + 1))) return false;
            continue;
        }
        Operator* const op = FindOperator(document, assignment.substr(0, dot));
        if (!op || !SetFromText(*op, assignment.substr(dot + 1))) return false;
    }
    return true;
}

/// Complains and returns false when one does not fit.
bool ReadOutputs(FusionDoc const& document, std::vector<std::string> const& texts,
                 std::vector<RenderTarget>& targets)
{
    for (std::string const& text : texts) {
        auto const equals = text.find('=');
        if (equals == std::string::npos) {
            Complain(fmt::format("--out {}: write Tool=PATTERN", Quoted(text)));
            return false;
        }
        Operator* const op = FindOperator(document, text.substr(0, equals));
        if (!op) return false;
        Output* output = op->MainOutput(1);
        if (!output) output = op->FindOutput("Output"); // of shapes, which have no number
        std::string const pattern = text.substr(equals + 1);
        FuID const type = output ? output->DataType() : FuID();
        if (type != CLSID_DataType_Image && !FindValueFormat(type, pattern)) {
            std::string const names = output ? ValueFileNames(type) : "";
            Complain(names.empty() ? fmt::format("{} makes no picture to write", op->Name())
                                   : fmt::format("--out {}: {} makes no picture, write {}={}", Quoted(text),
                                                 op->Name(), op->Name(), names));
            return false;
        }
        if (auto problem = CheckPattern(pattern)) {
            Complain(*problem);
            return false;
        }
        targets.push_back({.output = output, .pattern = pattern});
    }
    return true;
}

bool ReadFrames(FusionDoc const& document, std::string const& text, std::vector<int>& frames)
{
    if (text.empty()) {
        for (double frame = std::ceil(document.renderStart); frame <= document.renderEnd; ++frame)
            frames.push_back(static_cast<int>(frame));
        return true;
    }
    FrameRange range = ParseFrames(text);
    if (range.problem) Complain(*range.problem);
    frames = std::move(range.frames);
    return !range.problem;
}

/// The Savers of a flow; one that is passed through writes nothing.
std::vector<RenderTarget> SaversOf(FusionDoc const& document)
{
    std::vector<RenderTarget> savers;
    for (auto const& op : document.Operators()) {
        if (op->Registration()->Id() != FuID("Saver") || op->PassesThrough()) continue;
        savers.push_back({.saver = op.get(), .output = op->MainInput(1)->Source()});
    }
    return savers;
}

/// Several frames into one file would leave the last one alone; complains when that would happen.
bool HavePlaceForFrames(std::vector<RenderTarget> const& targets)
{
    for (RenderTarget const& target : targets) {
        std::string pattern = target.pattern, place = fmt::format("--out {}", Quoted(pattern));
        if (target.saver) {
            Input const& name = *target.saver->FindInput("Filename");
            Ref<Parameter> const value = name.Value();
            auto const* text = dynamic_cast<Text const*>(value.Get());
            if (name.Source() || name.Expression() || !text) continue;
            pattern = text->value, place = target.saver->Name() + ".Filename";
        }
        if (IsPattern(pattern)) continue;
        Complain(fmt::format("{} has no place for the frame number: write #### or %04d", place));
        return false;
    }
    return true;
}

/// Which of two endings to report: a file's trouble says more than a failed frame.
ExitStatus Worse(ExitStatus a, ExitStatus b) { return std::max(a, b); }

ExitStatus StatusOf(RenderJob::FramePlan const& plan)
{
    for (std::string const& path : plan.reads)
        if (std::error_code error; !std::filesystem::exists(path, error)) return kFileProblem;
    return plan.problems.empty() ? kDone : kFrameFailed;
}

} // namespace

ExitStatus Render(RenderOptions const& options)
{
    FlowReading reading = ReadFlow(options.flow);
    for (Problem const& warning : reading.warnings) Warn(warning.Format());
    ExitStatus status = kDone;
    for (Problem const& problem : reading.problems) status = Worse(status, Complain(problem));
    if (!reading.document) return status;
    FusionDoc& document = *reading.document;

    std::vector<int> frames;
    if (!SetValues(document, options.set)) return kWrongInput;
    std::vector<RenderTarget> targets = SaversOf(document);
    if (!ReadOutputs(document, options.out, targets) || !ReadFrames(document, options.frames, frames))
        return kWrongInput;
    RenderQuality const quality{.proxy = options.proxy, .quick = options.quick, .missing = options.missing};
    std::size_t const memory = options.memory > 0 ? options.memory : MachineMemory() / 4;
    if (!options.print.empty()) {
        Renderer renderer(document, quality, memory);
        return PrintValues(document, renderer, frames, options);
    }
    if (targets.empty()) {
        Complain(fmt::format("{} writes nothing: add a Saver or --out Tool=PATTERN", options.flow));
        return kWrongInput;
    }
    if (frames.size() > 1 && !HavePlaceForFrames(targets)) return kWrongInput;

    RenderJob job(document, quality, memory, std::move(targets));
    RenderReporter reporter(frames.size(), options.json);
    if (options.dryRun) {
        for (int frame : frames) {
            RenderJob::FramePlan const plan = job.PlanOf(frame);
            reporter.Plan(frame, plan, options.skipExisting);
            status = Worse(status, StatusOf(plan));
        }
    } else {
        job.Run(frames, {.skipExisting = options.skipExisting}, [&](FrameReport const& report) {
            reporter.Frame(report);
            for (Problem const& problem : report.problems)
                status = Worse(status, problem.isFile ? kFileProblem : kFrameFailed);
            return report.problems.empty() || !options.stopOnError;
        });
    }
    if (options.stats) reporter.Stats(job.GetRenderer());
    reporter.End();
    return status;
}

} // namespace ombrelune::app
