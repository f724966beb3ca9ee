#include "host/graph/Renderer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <functional>
#include <utility>

#include <fmt/format.h>

#include "host/graph/RendererState.h"
#include "host/image/Image.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr int kMostInARow = 2000;     // a request takes some 3 KB of stack for each
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

} // namespace

std::set<int, std::greater<>> LateLevels(Operator const& op)
{
    std::set<int, std::greater<>> levels{Request::kBeforeImages};
    for (auto const& input : op.Inputs())
        if (input->Priority() < 0) levels.insert(input->Priority());
    return levels;
}

Renderer::Renderer(FusionDoc& document, RenderQuality quality, std::size_t memory)
    : document_(document), quality_(quality), cache_(memory), pool_(ThreadCount() - 1)
{}

Renderer::~Renderer() = default;

void Renderer::Start(std::vector<double> frames)
{
    jobFrames_ = std::move(frames);
    message_ = {.quality = quality_};
    if (!jobFrames_.empty()) message_.start = jobFrames_.front(), message_.end = jobFrames_.back();
    cache_.Clear();
    for (auto const& op : document_.Operators()) {
        op->OnStartRender(&message_);
        StateOf(*op).latestTime.reset();
    }
}

RenderResult Renderer::Evaluate(Output& output, double time)
{
    Frame frame{.time = time};
    SharedResults results = Render({frame, *output.Owner(), time});
    if (results->problem) return {nullptr, results->problem, results};
    return {results->values[static_cast<std::size_t>(output.Index())], std::nullopt, results};
}

std::optional<Problem> Renderer::Run(Operator& op, double time)
{
    Frame frame{.time = time};
    return Render({frame, op, time})->problem;
}

Renderer::Plan Renderer::PlanOf(Operator& op, double time)
{
    Plan plan;
    Frame frame{.time = time, .plan = &plan};
    plan.problem = KeyOf({frame, op, time}).problem;
    return plan;
}

void Renderer::FinishFrame(double frame)
{
    // Whoever looks for a result holds our lock and then takes the cache's, so it is not taken in there.
    std::set<Operator const*> servesOthers;
    {
        std::lock_guard guard(lock_);
        for (auto const& [op, state] : states_)
            if (state->servesOthers) servesOthers.insert(op);
    }
    cache_.DropFrame(frame, [&](Operator const* op) { return servesOthers.contains(op); });
}

std::vector<Problem> Renderer::TakeWarnings()
{
    std::lock_guard guard(lock_);
    return std::exchange(warnings_, {});
}

bool Renderer::KeepsHistory() const
{
    auto const& all = document_.Operators();
    return std::any_of(all.begin(), all.end(),
                       [](auto const& op) { return !op->passThrough && op->KeepsHistory(); });
}

std::vector<OperatorWork> Renderer::Work() const
{
    std::lock_guard guard(lock_);
    std::vector<OperatorWork> work;
    for (auto const& op : document_.Operators()) {
        auto const found = states_.find(op.get());
        if (found == states_.end()) continue;
        State const& state = *found->second;
        if (state.processed + state.reused > 0)
            work.push_back({op.get(), state.seconds, state.processed, state.reused});
    }
    return work;
}

Renderer::State& Renderer::StateOf(Operator& op)
{
    std::lock_guard guard(lock_);
    auto& state = states_[&op];
    if (!state) state = std::make_unique<State>();
    return *state;
}

std::optional<Problem> Renderer::FeedsItself(Visit const& visit) const
{
    if (visit.depth > kMostInARow)
        return Problem{document_.file, visit.op.line,
                       fmt::format("more than {} tools in a row feed '{}'", kMostInARow, visit.op.Name())};
    for (Visit const* above = visit.from; above; above = above->from)
        if (&above->op == &visit.op && above->time == visit.time)
            return Problem{document_.file, visit.op.line, fmt::format("'{}' feeds itself", visit.op.Name())};
    return std::nullopt;
}

SharedResults Renderer::Render(Visit const& visit)
{
    State& state = StateOf(visit.op);
    if (visit.time != visit.frame.time) state.servesOthers = true;
    Keyed const keyed = KeyOf(visit);
    if (keyed.problem) return std::make_shared<Results const>(Results{.problem = keyed.problem});
    if (visit.op.passThrough) return PassThrough(visit);

    std::shared_ptr<Pending> pending;
    {
        std::unique_lock guard(lock_);
        SharedResults known = cache_.Find(keyed.key);
        if (!known) {
            auto& slot = underWay_[keyed.key];
            if (slot) {
                pending = slot;
                pending->done.wait(guard, [&] { return pending->results != nullptr; });
                known = pending->results;
            } else {
                pending = slot = std::make_shared<Pending>();
            }
        }
        if (known) {
            ++state.reused;
            return known;
        }
    }
    SharedResults made = std::make_shared<Results const>(Make(visit));
    {
        std::lock_guard guard(lock_);
        cache_.Add(keyed.key, made, made->bytes,
                   {.op = &visit.op, .frame = visit.frame.time, .lastsFrame = keyed.varies});
        pending->results = made;
        underWay_.erase(keyed.key);
    }
    pending->done.notify_all();
    return made;
}

Results Renderer::Make(Visit const& visit)
{
    // Without a job frames come as somebody looks at them, and history is what was seen.
    return visit.op.KeepsHistory() && !jobFrames_.empty() ? MakeInOrder(visit) : MakeFrame(visit);
}

/// The frames of the job before this one come first, whatever order they are asked in, so that a result does
/// not depend on who asked for what before.
Results Renderer::MakeInOrder(Visit const& visit)
{
    State& state = StateOf(visit.op);
    std::lock_guard guard(state.ordered);
    if (state.latestTime == visit.time) return state.latest;
    auto const end = std::lower_bound(jobFrames_.begin(), jobFrames_.end(), visit.time);
    std::optional<double> const before =
        end == jobFrames_.begin() ? std::nullopt : std::optional(*std::prev(end));
    if (state.latestTime != before) {
        {
            std::lock_guard busy(state.busy);
            visit.op.OnStartRender(&message_);
        }
        for (auto frame = jobFrames_.begin(); frame != end; ++frame)
            MakeFrame({visit.frame, visit.op, *frame, visit.from, visit.depth, visit.expressions});
    }
    state.latest = MakeFrame(visit);
    state.latestTime = visit.time;
    return state.latest;
}

Results Renderer::MakeFrame(Visit const& visit)
{
    auto const* source = dynamic_cast<SourceOperator const*>(&visit.op);
    if (!source) return MakeField(visit, 0, 0);

    Request mode(visit.op, visit.time, quality_);
    mode.SetInputData(source->processModeInput,
                      Fetch(*source->processModeInput, visit.time, visit).value.Get(), 0);
    if (!source->WantsFields(mode)) return MakeField(visit, 0, 0);

    // The second field lies half a frame later.
    Results lower = MakeField(visit, 2, 0);
    Results upper = MakeField(
        {visit.frame, visit.op, visit.time + 0.5, visit.from, visit.depth, visit.expressions}, 2, 1);
    if (lower.problem) return lower;
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
    Request request(op, visit.time, quality_);
    request.fieldCount_ = fieldCount;
    request.fieldNumber_ = fieldNumber;

    Gather(request, 0, visit);
    for (int level : LateLevels(op)) {
        if (request.failure_) break;
        request.priority_ = level;
        Check(request);
        Gather(request, level, visit);
    }
    if (!request.failure_) Process(request);
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

void Renderer::Check(Request& request)
{
    if (!request.Op().ChecksRequests()) return;
    std::lock_guard guard(StateOf(request.Op()).busy);
    request.Op().CheckRequest(&request);
}

void Renderer::Process(Request& request)
{
    Operator& op = request.Op();
    State& state = StateOf(op);
    std::lock_guard guard(state.busy);
    if (op.ChecksRequests()) {
        // Another request may have been checked since, and an operator remembers the last.
        Request again = request;
        for (int level : LateLevels(op)) {
            again.priority_ = level;
            op.CheckRequest(&again);
        }
    }
    request.priority_ = Request::kComplete;
    auto const start = std::chrono::steady_clock::now();
    op.Process(&request);
    state.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    ++state.processed;
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
        bool const due = priority == 0 ? input->Priority() >= 0 : input->Priority() == priority;
        if (!due) continue;
        auto& slots = request.slots_[static_cast<std::size_t>(input->Index())];
        if (slots.empty()) request.SlotOf(*input, 0);
        for (auto& slot : slots)
            if (!slot.given) {
                wanted.push_back({input.get(), &slot, {}, &slot != &slots.front()});
                branches += input->Source() != nullptr;
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
        pool_.RunAll(tasks);
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
    RenderResult result = ValueOf(input, time, visit);
    if (result.problem) return result;
    Operator const& op = *input.Owner();
    auto const fail = [&](std::string text) {
        result.problem = Problem{document_.file, op.line, std::move(text)};
    };
    if (!IsFinite(result.value.Get()))
        fail(fmt::format("{}.{} is not a finite number at time {}", op.Name(), input.Id().Text(), time));
    else if (!result.value && !input.Source() && input.IsRequired())
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
    if (auto const* expression = input.Expression()) {
        if (visit.expressions == kMostExpressions)
            return {nullptr,
                    Problem{document_.file, input.Owner()->line,
                            fmt::format("{}.{}: more than {} expressions read one another",
                                        input.Owner()->Name(), input.Id().Text(), kMostExpressions)}};
        Scope scope(*this, visit);
        return expression->Evaluate(scope, time);
    }
    Output const* const source = input.Source();
    if (!source) return {input.Value()};
    SharedResults const results = Render(visit.To(*source->Owner(), time));
    if (results->problem) return {nullptr, results->problem, results};
    return {input.Limited(results->values[static_cast<std::size_t>(source->Index())]), std::nullopt, results};
}

SharedResults Renderer::PassThrough(Visit const& visit)
{
    Results results;
    results.values.resize(visit.op.Outputs().size());
    Input* const in = visit.op.MainInput(1);
    Output* const out = visit.op.MainOutput(1);
    if (in && out && in->Source()) {
        RenderResult passed = Fetch(*in, visit.time, visit);
        results.values[static_cast<std::size_t>(out->Index())] = std::move(passed.value);
        results.problem = std::move(passed.problem);
    }
    return std::make_shared<Results const>(std::move(results));
}

} // namespace ombrelune
