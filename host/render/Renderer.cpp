#include "host/render/Renderer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <exception>
#include <functional>
#include <new>
#include <utility>

#include <fmt/format.h>

#include "host/image/Image.h"
#include "host/render/RendererState.h"
#include "host/render/TaskPool.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr int kMostInARow = 2000;     // a request takes some 3 KB of stack for each
constexpr int kLooksForRings = 8;     // every so many tools
constexpr int kMostExpressions = 200; // and an expression more

bool IsFinite(Parameter const* value)
{
    if (auto const* number = dynamic_cast<Number const*>(value)) return std::isfinite(number->value);
    if (auto const* point = dynamic_cast<Point const*>(value))
        return std::isfinite(point->x) && std::isfinite(point->y) && std::isfinite(point->z);
    return true;
}

/// Two pictures of half the height become one: field 0 gives rows 0, 2, 4 ..., field 1 the rows between.
Ref<Image> WeaveFields(Image const& lower, Image const& upper)
{
    TagList tags{{Img_Like, &lower}, {Img_Height, lower.Height() + upper.Height()}};
    Ref<Image> frame = NewImageTagList(tags);
    if (!frame) return nullptr;
    for (int y = 0; y < frame->Height(); ++y) {
        Image const& field = y % 2 ? upper : lower;
        std::memcpy(frame->MainRow(y), field.MainRow(y / 2), frame->RowBytes());
        if (!frame->IsPlain())
            std::memcpy(frame->AuxRow(y), field.AuxRow(y / 2),
                        static_cast<std::size_t>(frame->Width() * frame->AuxFloats()) * sizeof(float));
    }
    frame->yOffset = 0.0;
    return frame;
}

std::uint64_t NextJob()
{
    static std::atomic<std::uint64_t> next{1};
    return next.fetch_add(1, std::memory_order_relaxed);
}

/// Such a result is given to who waits for it and then forgotten.
bool MayPass(Results const& results) { return results.problem && results.problem->mayPass; }

Problem StopProblem() { return {.text = "the work was called off", .isStop = true, .mayPass = true}; }

} // namespace

Renderer::Renderer(FusionDoc& document, RenderQuality quality, std::size_t memory)
    : document_(document), quality_(quality), cache_(memory)
{}

Renderer::~Renderer() = default;

void Renderer::Start(std::vector<double> frames)
{
    jobFrames_ = std::move(frames);
    job_ = NextJob();
    message_ = {.quality = quality_};
    if (!jobFrames_.empty()) message_.start = jobFrames_.front(), message_.end = jobFrames_.back();
    cache_.Clear();
    for (auto const& state : document_.TakeSnapshot()->States()) {
        if (!state) continue;
        Operator& op = *state->op;
        std::lock_guard history(op.history.lock);
        op.history.job = 0;
        BusyOperator const busy(op);
        op.OnStartRender(&message_);
    }
}

Problem Renderer::ProblemOfException(Operator const* op, std::string const& place) const
{
    Problem problem{.file = document_.file, .line = op ? op->line : 0, .mayPass = true};
    std::string const start = place.empty() ? "" : place + ": ";
    try {
        throw;
    } catch (Stopped const&) {
        problem = StopProblem();
    } catch (std::bad_alloc const& error) {
        // A plain one does not know what was asked for.
        std::string const what = error.what();
        bool const isPlain = what == std::bad_alloc().what() || what == std::bad_array_new_length().what();
        problem.text = fmt::format("{}there is not enough memory{}", start, isPlain ? "" : ": " + what);
    } catch (std::exception const& error) {
        problem.text = fmt::format("{}failed: {}", start, error.what());
    } catch (...) {
        problem.text = start + "failed, and does not say why";
    }
    return problem;
}

RenderResult Renderer::Evaluate(Output& output, double time, RenderQuality const& quality,
                                std::stop_token const& stop)
try {
    Frame frame{.time = time, .quality = quality, .snapshot = document_.TakeSnapshot(), .stop = stop};
    SharedResults results = Render({frame, *output.Owner(), time});
    if (results->problem) return {nullptr, results->problem, results};
    return {results->values[static_cast<std::size_t>(output.Index())], std::nullopt, results};
} catch (...) {
    return {nullptr, ProblemOfException(nullptr, "")};
}

std::optional<Problem> Renderer::Run(Operator& op, double time, std::stop_token const& stop)
try {
    Frame frame{.time = time, .quality = quality_, .snapshot = document_.TakeSnapshot(), .stop = stop};
    return Render({frame, op, time})->problem;
} catch (...) {
    return ProblemOfException(nullptr, "");
}

std::optional<ResultKey> Renderer::KeyAt(Output& output, double time, RenderQuality const& quality)
try {
    Frame frame{.time = time, .quality = quality, .snapshot = document_.TakeSnapshot(), .waits = false};
    // What is passed through is kept where it was made.
    Operator* op = output.Owner();
    for (int depth = 0; depth <= kMostInARow; ++depth) {
        Visit const visit(frame, *op, time);
        Keyed const keyed = KeyOf(visit);
        if (keyed.problem) return std::nullopt;
        if (!visit.state->passThrough) return keyed.key;
        Input const* const in = op->MainInput(1);
        Output const* const source = in ? visit.Of(*in).source : nullptr;
        if (!source) return std::nullopt;
        op = source->Owner();
    }
    return std::nullopt;
} catch (...) {
    return std::nullopt;
}

Renderer::Plan Renderer::PlanOf(Operator& op, double time)
{
    Plan plan;
    Frame frame{.time = time, .quality = quality_, .snapshot = document_.TakeSnapshot(), .plan = &plan};
    plan.problem = KeyOf({frame, op, time}).problem;
    return plan;
}

void Renderer::FinishFrame(double frame)
{
    // Whoever looks for a result holds our lock and then takes the cache's, so it is not taken in there.
    std::set<std::uint64_t> servesOthers;
    {
        std::lock_guard guard(lock_);
        for (auto const& [op, state] : states_)
            if (state->servesOthers) servesOthers.insert(op);
    }
    cache_.DropFrame(frame, [&](std::uint64_t op) { return servesOthers.contains(op); });
}

std::vector<Problem> Renderer::TakeWarnings()
{
    std::lock_guard guard(lock_);
    return std::exchange(warnings_, {});
}

bool Renderer::KeepsHistory() const
{
    auto const snapshot = document_.TakeSnapshot();
    auto const& all = snapshot->States();
    return std::any_of(all.begin(), all.end(),
                       [](auto const& state) { return state && !state->passThrough && state->keepsHistory; });
}

std::vector<OperatorWork> Renderer::Work() const
{
    auto const snapshot = document_.TakeSnapshot();
    std::vector<OperatorWork> work;
    {
        std::lock_guard guard(lock_);
        for (auto const& each : snapshot->States()) {
            auto const found = each ? states_.find(each->op->Serial()) : states_.end();
            if (found == states_.end()) continue;
            State const& state = *found->second;
            if (state.processed + state.reused > 0)
                work.push_back({each->op.get(), state.seconds, state.processed, state.reused});
        }
    }
    std::sort(work.begin(), work.end(),
              [](auto const& a, auto const& b) { return a.op->Serial() < b.op->Serial(); });
    return work;
}

Renderer::State& Renderer::StateOf(Operator const& op)
{
    std::lock_guard guard(lock_);
    auto& state = states_[op.Serial()];
    if (!state) state = std::make_unique<State>();
    return *state;
}

std::optional<Problem> Renderer::FeedsItself(Visit const& visit) const
{
    if (visit.depth > kMostInARow)
        return Problem{document_.file, visit.op.line,
                       fmt::format("more than {} tools in a row feed '{}'", kMostInARow, visit.op.Name())};
    // A ring comes round again, so a look now and then finds it; flows with one are refused when they are
    // read.
    if (visit.depth % kLooksForRings != 0) return std::nullopt;
    for (Visit const* above = visit.from; above; above = above->from)
        if (&above->op == &visit.op && above->time == visit.time)
            return Problem{document_.file, visit.op.line, fmt::format("'{}' feeds itself", visit.op.Name())};
    return std::nullopt;
}

bool Renderer::IsLight(Operator const& op)
{
    auto const isSmall = [](auto const& each) { return IsSmall(each->DataType()); };
    return std::all_of(op.Inputs().begin(), op.Inputs().end(), isSmall) &&
           std::all_of(op.Outputs().begin(), op.Outputs().end(), isSmall);
}

/// A visit that need not begin.
std::optional<Problem> Renderer::WhyNot(Visit const& visit)
{
    if (visit.frame.stop.stop_requested()) return StopProblem();
    if (!visit.state) return Problem{.text = visit.op.Name() + " is no longer in the document"};
    return std::nullopt;
}

SharedResults Renderer::Render(Visit const& visit)
{
    auto const failed = [](Problem problem) {
        return std::make_shared<Results const>(Results{.problem = std::move(problem)});
    };
    State& state = StateOf(visit.op);
    if (visit.time != visit.frame.time) state.servesOthers = true;
    Keyed const keyed = KeyOf(visit);
    if (keyed.problem) return failed(*keyed.problem);
    if (visit.state->passThrough) return PassThrough(visit);

    std::shared_ptr<Pending> pending;
    bool const mayMake = visit.frame.waits || (IsLight(visit.op) && !visit.state->keepsHistory);
    for (;;) {
        std::unique_lock guard(lock_);
        SharedResults known = cache_.Find(keyed.key);
        if (!known) {
            if (!mayMake) return failed(StopProblem());
            auto& slot = underWay_[keyed.key];
            if (!slot) {
                pending = slot = std::make_shared<Pending>();
                break;
            }
            auto const other = slot;
            if (!visit.frame.waits) return failed(StopProblem());
            if (!other->done.wait(guard, visit.frame.stop, [&] { return other->isOver; }))
                return failed(StopProblem());
            known = other->results;
        }
        if (known) {
            ++state.reused;
            return known;
        }
        // Whoever made it was stopped, and we were not.
    }
    struct Finish {
        Renderer& renderer;
        ResultKey const& key;
        std::shared_ptr<Pending> pending;
        ~Finish()
        {
            {
                std::lock_guard guard(renderer.lock_);
                pending->isOver = true;
                renderer.underWay_.erase(key);
            }
            pending->done.notify_all();
        }
    } const finish{*this, keyed.key, pending};

    SharedResults results = std::make_shared<Results const>(Make(visit));
    if (results->problem && results->problem->isStop) return results;
    std::lock_guard guard(lock_);
    if (!MayPass(*results))
        cache_.Add(keyed.key, results, results->bytes,
                   {.op = visit.op.Serial(), .frame = visit.frame.time, .lastsFrame = keyed.varies});
    pending->results = results;
    return results;
}

Results Renderer::Make(Visit const& visit)
{
    return visit.state->keepsHistory ? MakeInOrder(visit) : MakeFrame(visit);
}

/// The frames of the job before this one come first, whatever order they are asked in, so that a result does
/// not depend on who asked for what before. Without a job frames come as somebody looks at them, and history
/// is what was seen.
Results Renderer::MakeInOrder(Visit const& visit)
{
    State& state = StateOf(visit.op);
    auto& history = visit.op.history;
    std::lock_guard guard(history.lock);
    // Other renderers, qualities and edits have frames of their own.
    RenderQuality const& quality = visit.frame.quality;
    std::uint64_t const job = jobFrames_.empty() ? 0
                                                 : ResultKeyBuilder()
                                                           .Add(job_)
                                                           .Add(static_cast<double>(quality.proxy))
                                                           .Add(quality.quick ? 1.0 : 0.0)
                                                           .Add(static_cast<double>(quality.missing))
                                                           .Add(visit.frame.snapshot->Version())
                                                           .Key()
                                                           .low |
                                                       1;
    if (job == 0) {
        history.job = 0;
        return MakeFrame(visit);
    }
    if (history.job == job && history.time == visit.time) return state.latest;
    auto const end = std::lower_bound(jobFrames_.begin(), jobFrames_.end(), visit.time);
    std::optional<double> const before =
        end == jobFrames_.begin() ? std::nullopt : std::optional(*std::prev(end));
    bool const goesOn = history.job == job && history.time && history.time == before;
    history.job = 0; // unless all goes well
    if (!goesOn) {
        {
            BusyOperator const busy(visit.op, visit.frame.stop);
            if (!busy) return {.problem = StopProblem()};
            visit.op.OnStartRender(&message_);
        }
        for (auto frame = jobFrames_.begin(); frame != end; ++frame)
            if (Results made = MakeFrame(visit.At(*frame)); MayPass(made)) return made;
    }
    Results made = MakeFrame(visit);
    if (MayPass(made)) return made;
    state.latest = made;
    history.job = job;
    history.time = visit.time;
    return made;
}

Results Renderer::MakeFrame(Visit const& visit)
{
    auto const* source = dynamic_cast<SourceOperator const*>(&visit.op);
    if (!source) return MakeField(visit, 0, 0);

    Request mode(visit.state, visit.time, visit.frame.quality);
    mode.SetInputData(source->processModeInput,
                      Fetch(*source->processModeInput, visit.time, visit).value.Get(), 0);
    if (!source->WantsFields(mode)) return MakeField(visit, 0, 0);

    // The second field lies half a frame later.
    Results lower = MakeField(visit, 2, 0);
    if (lower.problem) return lower;
    Results upper = MakeField(visit.At(visit.time + 0.5), 2, 1);
    if (upper.problem) return upper;
    auto const index = static_cast<std::size_t>(source->imageOutput->Index());
    auto const* a = dynamic_cast<Image const*>(lower.values[index].Get());
    auto const* b = dynamic_cast<Image const*>(upper.values[index].Get());
    if (a && b) lower.values[index] = WeaveFields(*a, *b);
    lower.bytes += upper.bytes;
    return lower;
}

Results Renderer::MakeField(Visit const& visit, int fieldCount, int fieldNumber)
{
    Operator& op = visit.op;
    Request request(visit.state, visit.time, visit.frame.quality);
    request.fieldCount_ = fieldCount;
    request.fieldNumber_ = fieldNumber;

    try {
        Gather(request, 0, visit);
        for (int level : visit.state->lateLevels) {
            if (request.failure_) break;
            request.priority_ = level;
            if (!Check(request, visit.frame)) request.failure_ = StopProblem();
            else Gather(request, level, visit);
        }
        if (!request.failure_) Process(request, visit.frame);
    } catch (...) {
        request.failure_ = ProblemOfException(&op, op.Name());
    }
    // What was processed beside a stop may be anything.
    if (visit.frame.stop.stop_requested()) request.failure_ = StopProblem();
    if (request.failure_ && request.failure_->file.empty()) {
        // What the operator itself reports gets the operator's place; what came from upstream has one.
        request.failure_->file = document_.file;
        request.failure_->line = op.line;
    }

    if (!request.warnings_.empty()) {
        std::lock_guard guard(lock_);
        for (std::string& text : request.warnings_)
            if (warned_.insert(text).second) warnings_.push_back({document_.file, op.line, std::move(text)});
    }

    Results results{.values = std::move(request.results_), .problem = std::move(request.failure_)};
    for (auto const& value : results.values) {
        bool handedOn = false;
        for (auto const& slots : request.slots_)
            for (auto const& slot : slots) handedOn = handedOn || slot.value.Get() == value.Get();
        if (value && !handedOn) results.bytes += value->MemoryBytes();
    }
    return results;
}

/// False when the operator was at work and nobody waits for it.
bool Renderer::Check(Request& request, Frame const& frame)
{
    Operator& op = request.Op();
    if (!op.ChecksRequests()) return true;
    auto const check = [&](BusyOperator const& busy) {
        if (busy) op.CheckRequest(&request);
        return static_cast<bool>(busy);
    };
    return frame.waits ? check(BusyOperator(op, frame.stop)) : check(BusyOperator(op, std::try_to_lock));
}

void Renderer::Process(Request& request, Frame const& frame)
{
    Operator& op = request.Op();
    State& state = StateOf(op);
    auto const process = [&](BusyOperator const& busy) {
        if (!busy) {
            request.failure_ = StopProblem();
            return;
        }
        // An operator remembers what it was asked last, and that may have been another request.
        if (op.ChecksRequests()) {
            Request again = request;
            for (int level : request.State().lateLevels) {
                again.priority_ = level;
                op.CheckRequest(&again);
            }
        } else {
            request.priority_ = Request::kBeforeImages;
            op.CheckRequest(&request);
        }
        request.priority_ = Request::kComplete;
        StopScope const scope(frame.stop);
        if (listener_) listener_({op, request.GetTime(), std::nullopt});
        auto const start = std::chrono::steady_clock::now();
        struct End {
            decltype(start)& began;
            State& of;
            std::function<void(OperatorEvent const&)> const& listener;
            Request const& request;
            ~End()
            {
                double const seconds =
                    std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
                of.seconds += seconds;
                if (listener) listener({request.Op(), request.GetTime(), seconds * 1000.0});
            }
        } const end{start, state, listener_, request};
        op.Process(&request);
        ++state.processed;
    };
    if (frame.waits) return process(BusyOperator(op, frame.stop));
    process(BusyOperator(op, std::try_to_lock));
}

void Renderer::Gather(Request& request, int priority, Visit const& visit)
{
    struct Wanted {
        Input* input;
        Request::Slot* slot;
        RenderResult result;
        bool mayMiss; ///< a frame beside the tool's own, which it can do without
    };
    std::vector<Wanted> wanted;
    int branches = 0;
    for (auto const& input : request.Op().Inputs()) {
        InputState const& state = visit.Of(*input);
        bool const due = priority == 0 ? state.priority >= 0 : state.priority == priority;
        if (!due) continue;
        auto& slots = request.slots_[static_cast<std::size_t>(input->Index())];
        if (slots.empty()) request.SlotOf(*input, 0);
        for (auto& slot : slots)
            if (!slot.given) {
                wanted.push_back({input.get(), &slot, {}, &slot != &slots.front()});
                branches += state.source != nullptr;
            }
    }
    auto const fetch = [&](Wanted& each) {
        each.result = Fetch(*each.input, each.slot->time, visit);
        if (each.result.problem && each.result.problem->isGap && each.mayMiss) each.result = {};
    };
    // Numbers are not worth a thread.
    if (priority < 0 && branches > 1) {
        std::vector<std::function<void()>> tasks;
        for (Wanted& each : wanted) tasks.emplace_back([&] { fetch(each); });
        TaskPool::Shared().RunAll(tasks);
    } else {
        for (Wanted& each : wanted) {
            fetch(each);
            if (each.result.problem) break;
        }
    }
    for (Wanted& each : wanted) {
        if (each.result.problem) {
            request.failure_ = std::move(each.result.problem);
            return;
        }
        each.slot->value = std::move(each.result.value);
    }
}

RenderResult Renderer::Fetch(Input& input, double time, Visit const& visit)
{
    Operator const& op = *input.Owner();
    RenderResult result;
    try {
        result = ValueOf(input, time, visit);
    } catch (...) {
        result.problem = ProblemOfException(&op, op.Name() + "." + input.Id().Text());
    }
    if (result.problem) return result;
    auto const fail = [&](std::string text) {
        result.problem = Problem{document_.file, op.line, std::move(text)};
    };
    InputState const& state = visit.Of(input);
    if (!IsFinite(result.value.Get()))
        fail(fmt::format("{}.{} is not a finite number at time {}", op.Name(), input.Id().Text(), time));
    else if (!result.value && !state.source && state.isRequired)
        fail(fmt::format("{}.{} has no picture: connect an output to it", op.Name(), input.Id().Text()));
    return result;
}

/// What an expression reads.
class Renderer::Scope : public ExpressionScope {
public:
    Scope(Renderer& renderer, Visit const& visit) : renderer_(renderer), visit_(visit) {}
    RenderResult OutputAt(Output& output, double time) override
    {
        SharedResults const results = renderer_.Render(Inner(*output.Owner(), time));
        if (results->problem) return {nullptr, results->problem, results};
        return {results->values[static_cast<std::size_t>(output.Index())], std::nullopt, results};
    }
    RenderResult InputAt(Input& input, double time) override
    {
        return renderer_.ValueOf(input, time, Inner(*input.Owner(), time));
    }

private:
    Visit Inner(Operator& op, double time) const
    {
        Visit inner = visit_.To(op, time);
        ++inner.expressions;
        return inner;
    }
    Renderer& renderer_;
    Visit const& visit_;
};

RenderResult Renderer::ValueOf(Input& input, double time, Visit const& visit)
{
    if (auto problem = WhyNot(visit)) return {nullptr, std::move(problem)};
    InputState const& state = visit.Of(input);
    if (state.expression) {
        if (visit.expressions == kMostExpressions)
            return {nullptr,
                    Problem{document_.file, input.Owner()->line,
                            fmt::format("{}.{}: more than {} expressions read one another",
                                        input.Owner()->Name(), input.Id().Text(), kMostExpressions)}};
        Scope scope(*this, visit);
        return state.expression->Evaluate(scope, time);
    }
    if (!state.source) return {state.value};
    SharedResults const results = Render(visit.To(*state.source->Owner(), time));
    if (results->problem) return {nullptr, results->problem, results};
    return {state.Limited(results->values[static_cast<std::size_t>(state.source->Index())]), std::nullopt,
            results};
}

SharedResults Renderer::PassThrough(Visit const& visit)
{
    Results results;
    results.values.resize(visit.op.Outputs().size());
    Input* const in = visit.op.MainInput(1);
    Output* const out = visit.op.MainOutput(1);
    if (in && out && visit.Of(*in).source) {
        RenderResult passed = Fetch(*in, visit.time, visit);
        results.values[static_cast<std::size_t>(out->Index())] = std::move(passed.value);
        results.problem = std::move(passed.problem);
    }
    return std::make_shared<Results const>(std::move(results));
}

} // namespace ombrelune
