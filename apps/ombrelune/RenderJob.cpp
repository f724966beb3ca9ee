#include "apps/ombrelune/RenderJob.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <new>
#include <thread>

#include <fmt/format.h>

#include "host/image/BufferPool.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"
#include "host/io/ValueFormat.h"
#include "host/value/Parallel.h"

namespace ombrelune::app {

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void AppendNew(std::vector<std::string>& list, std::vector<std::string> const& more)
{
    for (std::string const& text : more)
        if (std::find(list.begin(), list.end(), text) == list.end()) list.push_back(text);
}

} // namespace

/// Frames are begun by whoever is free and finished in turn.
struct RenderJob::Progress {
    std::mutex lock;
    std::condition_variable changed;
    std::size_t next = 0; ///< first frame that nobody has begun
    std::size_t turn = 0; ///< frame whose files may be written
    bool roomForTwo = false;
    bool ended = false;
};

RenderJob::RenderJob(FusionDoc& document, RenderQuality quality, std::size_t memory,
                     std::vector<RenderTarget> targets)
    : renderer_(document, quality, memory), memory_(memory), targets_(std::move(targets))
{}

void RenderJob::Run(std::vector<int> const& frames, Options const& options,
                    std::function<bool(FrameReport const&)> const& report)
{
    SetPoolLimit(memory_);
    renderer_.Start({frames.begin(), frames.end()});
    Progress progress;
    auto const work = [&] {
        for (;;) {
            std::unique_lock guard(progress.lock);
            progress.changed.wait(guard, [&] {
                return progress.ended || progress.next == progress.turn || progress.roomForTwo;
            });
            if (progress.ended || progress.next == frames.size()) return;
            std::size_t const index = progress.next++;
            guard.unlock();
            FrameReport const done = TryFrame(frames[index], index, options, progress);
            guard.lock();
            if (progress.ended) return;
            progress.ended = !report(done);
            // What the first frame took alone tells whether two have room.
            if (progress.turn++ == 0) progress.roomForTwo = BuffersInUse().peak <= memory_ / 2;
            progress.changed.notify_all();
        }
    };
    // Frames that need the ones before them would only wait for each other.
    bool const ahead = ThreadCount() > 1 && frames.size() > 1 && !renderer_.KeepsHistory();
    std::thread second;
    if (ahead) second = std::thread(work);
    work();
    if (ahead) second.join();
}

FrameReport RenderJob::TryFrame(int frame, std::size_t index, Options const& options, Progress& progress)
{
    std::string what;
    try {
        return RenderFrame(frame, index, options, progress);
    } catch (std::bad_alloc const&) {
        what = "there is not enough memory";
    } catch (std::exception const& error) {
        what = error.what();
    }
    std::unique_lock guard(progress.lock);
    progress.changed.wait(guard, [&] { return progress.ended || progress.turn == index; });
    return {.frame = frame, .problems = {Problem{.text = what}}};
}

FrameReport RenderJob::RenderFrame(int frame, std::size_t index, Options const& options, Progress& progress)
{
    auto const start = Clock::now();
    FrameReport report{.frame = frame};
    std::vector<RenderTarget const*> wanted;
    std::vector<RenderResult> pictures; // kept until they are written, whatever the budget
    std::optional<FrameTimeout::Scope> watched;
    if (options.timeout) watched.emplace(*options.timeout, frame, 0.0);
    for (RenderTarget const& target : targets_) {
        std::string const path = PathOf(target, frame);
        if (options.skipExisting && IsWrittenFile(path)) {
            report.kept.push_back(path);
            continue;
        }
        wanted.push_back(&target);
        report.written.push_back(path);
        if (target.output) pictures.push_back(renderer_.Evaluate(*target.output, frame));
    }
    watched.reset();
    report.seconds = SecondsSince(start);
    {
        std::unique_lock guard(progress.lock);
        progress.changed.wait(guard, [&] { return progress.ended || progress.turn == index; });
        if (progress.ended) return report;
    }
    auto const writing = Clock::now();
    if (options.timeout) watched.emplace(*options.timeout, frame, report.seconds);
    for (RenderTarget const* target : wanted)
        if (auto problem = Write(*target, frame)) report.problems.push_back(std::move(*problem));
    report.warnings = renderer_.TakeWarnings();
    renderer_.FinishFrame(frame);
    report.seconds += SecondsSince(writing);
    return report;
}

RenderJob::FramePlan RenderJob::PlanOf(int frame)
{
    FramePlan plan;
    for (RenderTarget const& target : targets_) {
        Renderer::Plan const one = renderer_.PlanOf(target.Op(), frame);
        AppendNew(plan.reads, one.reads);
        AppendNew(plan.writes, one.writes);
        if (!target.saver) AppendNew(plan.writes, {PathOf(target, frame)});
        if (one.problem) plan.problems.push_back(*one.problem);
    }
    return plan;
}

std::string RenderJob::PathOf(RenderTarget const& target, int frame)
{
    if (!target.saver) return PathOfFrame(target.pattern, frame);
    // The last is the Saver's own; those before are of Savers that feed it.
    Renderer::Plan const plan = renderer_.PlanOf(*target.saver, frame);
    return plan.writes.empty() ? "" : plan.writes.back();
}

std::optional<Problem> RenderJob::Write(RenderTarget const& target, int frame)
{
    if (target.saver) return renderer_.Run(*target.saver, frame);
    RenderResult result = renderer_.Evaluate(*target.output, frame);
    if (result.problem) return result.problem;
    std::string const path = PathOfFrame(target.pattern, frame);
    auto const* image = dynamic_cast<Image const*>(result.value.Get());
    Parameter const* const value = result.value.Get();
    if (!image && value && FindValueFormat(value->DataType(), path)) {
        auto problem = WriteValue(*value, FormatOf(target.Op().Document()), path);
        if (problem) problem->text = fmt::format("{}: {}", target.Op().Name(), problem->text);
        if (problem) problem->isFile = true;
        return problem;
    }
    if (!image) return Problem{.text = fmt::format("{} gave no picture", target.Op().Name())};
    auto problem = WritePicture(*image, path);
    if (problem) problem->isFile = true;
    return problem;
}

} // namespace ombrelune::app
