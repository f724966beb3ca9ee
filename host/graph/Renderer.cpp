#include "host/graph/Renderer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

#include <fmt/format.h>

#include "host/image/Image.h"

namespace ombrelune {

namespace {

constexpr int kMostExpressions = 200;

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

void Renderer::Start(double first, double last)
{
    RenderMessage message{first, last, quality_};
    for (auto const& op : document_.Operators()) op->OnStartRender(&message);
}

RenderResult Renderer::Evaluate(Output& output, double time)
{
    Results const& results = Render(*output.Owner(), time);
    if (results.problem) return {nullptr, results.problem};
    return {results.values[static_cast<std::size_t>(output.Index())], std::nullopt};
}

std::optional<Problem> Renderer::Run(Operator& op, double time) { return Render(op, time).problem; }

void Renderer::PreCalc(Operator& op, double time)
{
    Request request(op, time, quality_);
    Gather(request, 0);
    op.PreCalcProcess(&request);
}

Renderer::Results const& Renderer::Render(Operator& op, double time)
{
    std::pair const key(&op, time);
    if (auto found = results_.find(key); found != results_.end()) return found->second;

    Results made;
    if (underWay_.insert(key).second) {
        made = Make(op, time);
        underWay_.erase(key);
    } else {
        made.problem = Problem{document_.file, op.line, fmt::format("'{}' feeds itself", op.Name())};
    }
    return results_.insert_or_assign(key, std::move(made)).first->second;
}

Renderer::Results Renderer::Make(Operator& op, double time)
{
    if (op.passThrough) return PassThrough(op, time);
    auto const* source = dynamic_cast<SourceOperator const*>(&op);
    if (!source) return MakeField(op, time, 0, 0);

    Request mode(op, time, quality_);
    Fetch(mode, *source->processModeInput);
    if (!source->WantsFields(mode)) return MakeField(op, time, 0, 0);

    // The second field lies half a frame later.
    Results lower = MakeField(op, time, 2, 0);
    Results upper = MakeField(op, time + 0.5, 2, 1);
    if (lower.problem) return lower;
    if (upper.problem) return upper;
    auto& woven = lower.values[static_cast<std::size_t>(source->imageOutput->Index())];
    auto const* a = dynamic_cast<Image const*>(woven.Get());
    auto const* b = dynamic_cast<Image const*>(
        upper.values[static_cast<std::size_t>(source->imageOutput->Index())].Get());
    if (a && b) woven = WeaveFields(*a, *b);
    return lower;
}

Renderer::Results Renderer::MakeField(Operator& op, double time, int fieldCount, int fieldNumber)
{
    Request request(op, time, quality_);
    request.fieldCount_ = fieldCount;
    request.fieldNumber_ = fieldNumber;

    std::set<int, std::greater<>> priorities{0, Request::kBeforeImages};
    for (auto const& input : op.Inputs()) priorities.insert(std::min(input->Priority(), 0));
    for (int priority : priorities) {
        request.priority_ = priority;
        if (priority < 0) op.CheckRequest(&request);
        Gather(request, priority);
        if (request.failure_) break;
    }
    if (!request.failure_) {
        request.priority_ = Request::kComplete;
        op.Process(&request);
    }
    if (request.failure_ && request.failure_->file.empty()) {
        // What the operator itself reports gets the operator's place; what came from upstream has one.
        request.failure_->file = document_.file;
        request.failure_->line = op.line;
    }
    return {std::move(request.results_), std::move(request.failure_)};
}

void Renderer::Gather(Request& request, int priority)
{
    for (auto const& input : request.Op().Inputs()) {
        bool const due = priority == 0 ? input->Priority() >= 0 : input->Priority() == priority;
        if (due) Fetch(request, *input);
        if (request.failure_) return;
    }
}

void Renderer::Fetch(Request& request, Input& input)
{
    Operator const& op = request.Op();
    auto& slots = request.slots_[static_cast<std::size_t>(input.Index())];
    if (slots.empty()) request.SlotOf(input, 0);
    for (auto& slot : slots) {
        if (slot.given) continue;
        RenderResult result = ValueOf(input, slot.time, 0);
        if (result.problem) {
            request.failure_ = std::move(result.problem);
            return;
        }
        slot.value = std::move(result.value);
        if (!IsFinite(slot.value.Get()))
            return request.Fail(fmt::format("{}.{} is not a finite number at time {}", op.Name(),
                                            input.Id().Text(), slot.time));
        if (!slot.value && !input.Source() && input.IsRequired())
            return request.Fail(
                fmt::format("{}.{} has no picture: connect an output to it", op.Name(), input.Id().Text()));
    }
}

/// What an expression reads, with the depth to which expressions have nested.
class Renderer::Scope : public ExpressionScope {
public:
    Scope(Renderer& renderer, int depth) : renderer_(renderer), depth_(depth) {}
    RenderResult OutputAt(Output& output, double time) override { return renderer_.Evaluate(output, time); }
    RenderResult InputAt(Input& input, double time) override
    {
        return renderer_.ValueOf(input, time, depth_ + 1);
    }

private:
    Renderer& renderer_;
    int depth_;
};

RenderResult Renderer::ValueOf(Input& input, double time, int depth)
{
    if (auto const* expression = input.Expression()) {
        if (depth == kMostExpressions)
            return {nullptr, Problem{document_.file, input.Owner()->line,
                                     fmt::format("{}.{}: more than {} expressions read one another",
                                                 input.Owner()->Name(), input.Id().Text(), depth)}};
        Scope scope(*this, depth);
        return expression->Evaluate(scope, time);
    }
    Output* const source = input.Source();
    if (!source) return {input.Value(), std::nullopt};
    RenderResult result = Evaluate(*source, time);
    result.value = input.Limited(std::move(result.value));
    return result;
}

Renderer::Results Renderer::PassThrough(Operator& op, double time)
{
    Results results;
    results.values.resize(op.Outputs().size());
    Input* const in = op.MainInput(1);
    Output* const out = op.MainOutput(1);
    if (!in || !out || !in->Source()) return results;
    RenderResult passed = Evaluate(*in->Source(), time);
    results.values[static_cast<std::size_t>(out->Index())] = std::move(passed.value);
    results.problem = std::move(passed.problem);
    return results;
}

} // namespace ombrelune
