#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/flow/FlowReader.h"
#include "host/flow/FrameRange.h"
#include "host/graph/Renderer.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"

namespace ombrelune::app {

namespace {

/// A picture to write beside what the flow's Savers write.
struct ExtraOutput {
    Output* output;
    std::string pattern;
};

Operator* FindOperator(FusionDoc const& document, std::string const& name)
{
    Operator* const op = document.FindOperator(name);
    if (op) return op;
    std::vector<std::string> known;
    for (auto const& each : document.Operators()) known.push_back(each->Name());
    Complain(fmt::format("there is no tool {} in the flow{}", Quoted(name), DidYouMean(name, known)));
    return nullptr;
}

bool SetValues(FusionDoc const& document, std::vector<std::string> const& assignments)
{
    for (std::string const& assignment : assignments) {
        auto const dot = assignment.find('.');
        if (dot == std::string::npos || dot > assignment.find('=')) {
            Complain(fmt::format("--set {}: write Tool.Input=VALUE", Quoted(assignment)));
            return false;
        }
        Operator* const op = FindOperator(document, assignment.substr(0, dot));
        if (!op || !SetFromText(*op, assignment.substr(dot + 1))) return false;
    }
    return true;
}

/// Complains and returns false when one does not fit.
bool ReadOutputs(FusionDoc const& document, std::vector<std::string> const& texts,
                 std::vector<ExtraOutput>& outputs)
{
    for (std::string const& text : texts) {
        auto const equals = text.find('=');
        if (equals == std::string::npos) {
            Complain(fmt::format("--out {}: write Tool=PATTERN", Quoted(text)));
            return false;
        }
        Operator* const op = FindOperator(document, text.substr(0, equals));
        if (!op) return false;
        Output* const output = op->MainOutput(1);
        if (!output || output->DataType() != CLSID_DataType_Image) {
            Complain(fmt::format("{} makes no picture to write", op->Name()));
            return false;
        }
        std::string const pattern = text.substr(equals + 1);
        if (auto problem = CheckPattern(pattern)) {
            Complain(*problem);
            return false;
        }
        outputs.push_back({output, pattern});
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

class Job {
public:
    Job(FusionDoc& document, RenderQuality quality, std::vector<ExtraOutput> extras)
        : renderer_(document, quality), extras_(std::move(extras))
    {
        for (auto const& op : document.Operators())
            if (op->Registration()->Id() == FuID("Saver") && !op->passThrough) savers_.push_back(op.get());
    }

    /// A Saver without a place for the frame number, null when there is none.
    Operator* SaverOfOneFile() const
    {
        for (Operator* saver : savers_) {
            Ref<Parameter> const name = saver->FindInput("Filename")->Value();
            auto const* text = dynamic_cast<Text const*>(name.Get());
            if (text && !IsPattern(text->value)) return saver;
        }
        return nullptr;
    }
    bool HasOutputs() const { return !savers_.empty() || !extras_.empty(); }
    void Start(int first, int last) { renderer_.Start(first, last); }

    /// Everything that is wrong with the frame; what can be written is written all the same.
    std::vector<Problem> RenderFrame(int frame)
    {
        std::vector<Problem> problems;
        renderer_.NewFrame();
        for (Operator* saver : savers_)
            if (auto problem = renderer_.Run(*saver, frame)) problems.push_back(std::move(*problem));
        for (ExtraOutput const& extra : extras_)
            if (auto problem = WriteExtra(extra, frame)) problems.push_back(std::move(*problem));
        return problems;
    }

private:
    std::optional<Problem> WriteExtra(ExtraOutput const& extra, int frame)
    {
        RenderResult result = renderer_.Evaluate(*extra.output, frame);
        if (result.problem) return result.problem;
        auto const* image = dynamic_cast<Image const*>(result.value.Get());
        if (!image) return Problem{.text = fmt::format("{} gave no picture", extra.output->Owner()->Name())};
        auto problem = WritePicture(*image, PathOfFrame(extra.pattern, frame));
        if (problem) problem->isFile = true;
        return problem;
    }

    Renderer renderer_;
    std::vector<ExtraOutput> extras_;
    std::vector<Operator*> savers_;
};

/// Which of two endings to report: a file's trouble says more than a failed frame.
ExitStatus Worse(ExitStatus a, ExitStatus b) { return std::max(a, b); }

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
    std::vector<ExtraOutput> extras;
    if (!SetValues(document, options.set) || !ReadOutputs(document, options.out, extras) ||
        !ReadFrames(document, options.frames, frames))
        return kWrongInput;
    Job job(document, {.proxy = options.proxy, .quick = options.quick}, std::move(extras));
    if (!job.HasOutputs()) {
        Complain(fmt::format("{} writes nothing: add a Saver or --out Tool=PATTERN", options.flow));
        return kWrongInput;
    }
    if (frames.size() > 1) {
        // Several frames into one file would leave the last one alone.
        if (Operator const* saver = job.SaverOfOneFile()) {
            Complain(fmt::format("{}.Filename has no place for the frame number: write #### or %04d",
                                 saver->Name()));
            return kWrongInput;
        }
        for (std::string const& text : options.out) {
            if (IsPattern(text)) continue;
            Complain(
                fmt::format("--out {} has no place for the frame number: write #### or %04d", Quoted(text)));
            return kWrongInput;
        }
    }

    job.Start(frames.front(), frames.back());
    for (int frame : frames) {
        auto const start = std::chrono::steady_clock::now();
        std::vector<Problem> const problems = job.RenderFrame(frame);
        std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - start;
        for (Problem const& problem : problems) {
            Complain(fmt::format("frame {}: {}", frame, problem.Format()));
            status = Worse(status, problem.isFile ? kFileProblem : kFrameFailed);
        }
        if (problems.empty()) fmt::print("frame {}  {:.2f} s\n", frame, seconds.count());
        std::fflush(stdout);
        if (!problems.empty() && options.stopOnError) break;
    }
    return status;
}

} // namespace ombrelune::app
