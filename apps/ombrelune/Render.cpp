#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <set>

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "apps/ombrelune/Print.h"
#include "apps/ombrelune/RenderReport.h"
#include "host/flow/FlowReader.h"
#include "host/flow/FrameRange.h"
#include "host/io/AtomicFile.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"
#include "host/io/ValueFormat.h"

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
        auto problem = CheckPattern(pattern);
        if (!problem && type == CLSID_DataType_Image) problem = CheckExtension(pattern);
        if (problem) {
            Complain(fmt::format("--out {}: {}", Quoted(text), problem->text));
            return false;
        }
        targets.push_back({.output = output, .pattern = pattern});
    }
    return true;
}

bool ReadFrames(FusionDoc const& document, std::string const& text, std::vector<int>& frames)
{
    if (text.empty()) {
        FrameRange range = FramesBetween(document.renderStart, document.renderEnd);
        if (range.problem) Complain("RenderRange: " + range.problem->text);
        frames = std::move(range.frames);
        return !range.problem;
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

/// The file name of a Saver, if it is the same at all times.
std::optional<std::string> FixedName(Operator const& saver)
{
    Input const& name = *saver.FindInput("Filename");
    Ref<Parameter> const value = name.Value();
    auto const* text = dynamic_cast<Text const*>(value.Get());
    if (name.Source() || name.Expression() || !text) return std::nullopt;
    return text->value;
}

/// Complains about a Saver whose file has an extension of no picture, before there is work in it.
bool HaveKnownExtensions(std::vector<RenderTarget> const& targets)
{
    for (RenderTarget const& target : targets) {
        auto const name = target.saver ? FixedName(*target.saver) : std::nullopt;
        if (!name || name->empty()) continue;
        if (auto problem = CheckExtension(*name)) {
            Complain(fmt::format("{}.Filename {}: {}", target.saver->Name(), Quoted(*name), problem->text));
            return false;
        }
    }
    return true;
}

/// Device and number of a file, the same by whatever name; nothing when it is not there.
using FileIdentity = std::pair<dev_t, ino_t>;
std::optional<FileIdentity> IdentityOf(std::string const& path)
{
    struct stat found = {};
    if (stat(path.c_str(), &found) != 0) return std::nullopt;
    return FileIdentity{found.st_dev, found.st_ino};
}

/// A render that writes over what it reads cannot be done again; complains when some frame would. Plans are
/// made of all frames, since one may write what a later one reads.
bool LeavesSourcesAlone(RenderJob& job, std::vector<int> const& frames)
{
    std::set<FileIdentity> sources;
    std::vector<std::string> writes;
    for (int frame : frames) {
        RenderJob::FramePlan const plan = job.PlanOf(frame);
        for (std::string const& path : plan.reads)
            if (auto identity = IdentityOf(path)) sources.insert(*identity);
        writes.insert(writes.end(), plan.writes.begin(), plan.writes.end());
    }
    for (std::string const& path : writes) {
        auto const identity = IdentityOf(path);
        if (!identity || !sources.contains(*identity)) continue;
        Complain(fmt::format("{} is read by this render and would be written over; write elsewhere, or add "
                             "--overwrite-sources",
                             path));
        return false;
    }
    return true;
}

void WarnOfStaleTemporaries(std::vector<std::string> const& writes)
{
    std::set<std::string> folders;
    for (std::string const& path : writes) {
        std::string const folder = std::filesystem::path(path).parent_path().string();
        folders.insert(folder.empty() ? "." : folder);
    }
    for (std::string const& folder : folders)
        for (std::string const& file : StaleTemporaries(folder))
            Warn(fmt::format("{} was left by a render that was killed; rm '{}' removes it", file, file));
}

/// Several frames into one file would leave the last one alone; complains when that would happen.
bool HavePlaceForFrames(std::vector<RenderTarget> const& targets)
{
    for (RenderTarget const& target : targets) {
        std::string pattern = target.pattern, place = fmt::format("--out {}", Quoted(pattern));
        if (target.saver) {
            auto const name = FixedName(*target.saver);
            if (!name) continue;
            pattern = *name, place = target.saver->Name() + ".Filename";
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
    if (!HaveKnownExtensions(targets)) return kWrongInput;

    RenderJob job(document, quality, memory, std::move(targets));
    if (!options.overwriteSources && !LeavesSourcesAlone(job, frames)) return kWrongInput;
    RenderReporter reporter(frames.size(), options.json);
    if (options.dryRun) {
        for (int frame : frames) {
            RenderJob::FramePlan const plan = job.PlanOf(frame);
            reporter.Plan(frame, plan, options.skipExisting);
            status = Worse(status, StatusOf(plan));
        }
    } else {
        if (!frames.empty()) WarnOfStaleTemporaries(job.PlanOf(frames.front()).writes);
        std::mutex reporting;
        // What a frame is in the middle of cannot be stopped, so the process ends with it.
        FrameTimeout timeout(options.timeout, [&](int frame) {
            std::lock_guard guard(reporting);
            reporter.Frame({.frame = frame,
                            .problems = {Problem{.text = fmt::format("took longer than {} s (--timeout); the "
                                                                     "render ends here",
                                                                     options.timeout)}}});
            reporter.End();
            FlushOutput();
            RemoveTemporaries();
            std::_Exit(kFrameFailed);
        });
        RenderJob::Options const how{.skipExisting = options.skipExisting,
                                     .timeout = options.timeout > 0.0 ? &timeout : nullptr};
        job.Run(frames, how, [&](FrameReport const& report) {
            std::lock_guard guard(reporting);
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
