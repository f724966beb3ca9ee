#include "host/graph/Request.h"

#include <fmt/format.h>

#include "host/graph/Operator.h"

namespace ombrelune {

Request::Request(std::shared_ptr<OperatorState const> state, double time, RenderQuality const& quality)
    : state_(std::move(state)), time_(time), quality_(quality), slots_(Op().Inputs().size()),
      results_(Op().Outputs().size())
{}

Request::Slot& Request::SlotOf(Input const& input, int slot)
{
    auto& slots = slots_[static_cast<std::size_t>(input.Index())];
    while (slots.size() <= static_cast<std::size_t>(slot)) slots.push_back({.value = nullptr, .time = time_});
    return slots[static_cast<std::size_t>(slot)];
}

void Request::SetInputData(Input* input, Parameter* value, int slot)
{
    SlotOf(*input, slot) = {.value = Ref<Parameter>::Share(value), .time = time_, .given = true};
}

void Request::SetInputTime(Input* input, double time, int slot)
{
    SlotOf(*input, slot) = {.value = nullptr, .time = time, .given = false};
}

Parameter* Request::InputData(Input const& input, int slot) const
{
    auto const& slots = slots_[static_cast<std::size_t>(input.Index())];
    return static_cast<std::size_t>(slot) < slots.size() ? slots[static_cast<std::size_t>(slot)].value.Get()
                                                         : nullptr;
}

double Request::Number(Input const& input, int slot) const
{
    auto const* number = dynamic_cast<ombrelune::Number const*>(InputData(input, slot));
    return number ? number->value : 0.0;
}

void Request::Fail(std::string text)
{
    if (!failure_) failure_ = Problem{.text = std::move(text)};
}

void Request::FailFile(std::string text)
{
    if (!failure_) failure_ = Problem{.text = std::move(text), .isFile = true};
}

void Request::FailWithoutPicture(Input const& input)
{
    Output const* const source = State().Of(input).source;
    Fail(fmt::format("{}.{} got no picture{}", Op().Name(), input.Id().Text(),
                     source ? ": " + source->Owner()->Name() + " gives none at this time" : ""));
}

void Request::FailGap(std::string text, bool isFile)
{
    if (!failure_) failure_ = Problem{.text = std::move(text), .isFile = isFile, .isGap = true};
}

void Output::Set(Request* request, Parameter* value, TagList*)
{
    request->results_[static_cast<std::size_t>(index_)] = Ref<Parameter>::Adopt(value);
}

} // namespace ombrelune
