#include "host/flow/Cycles.h"

#include <unordered_map>
#include <variant>

#include <fmt/format.h>

#include "host/flow/InputValue.h"

namespace ombrelune {

namespace {

using Node = std::variant<Operator const*, Input const*>;

void const* KeyOf(Node const& node)
{
    return std::visit([](auto* object) -> void const* { return object; }, node);
}

std::vector<Node> NeedsOf(Node const& node)
{
    std::vector<Node> needs;
    if (auto* const* op = std::get_if<Operator const*>(&node)) {
        for (auto const& input : (*op)->Inputs())
            if (input->Source() || input->Expression()) needs.emplace_back(input.get());
        return needs;
    }
    Input const& input = *std::get<Input const*>(node);
    if (auto const expression = input.Expression()) {
        for (Operator const* read : expression->Reads()) needs.emplace_back(read);
        for (Input const* read : expression->InputsRead()) needs.emplace_back(read);
    } else if (input.Source()) {
        needs.emplace_back(input.Source()->Owner());
    }
    return needs;
}

} // namespace

std::vector<Problem> FindCycles(FusionDoc const& document)
{
    // Depth first; what is met while it is still open closes a cycle.
    enum State { kNew, kOpen, kDone };
    struct Step {
        Node node;
        std::vector<Node> needs;
        std::size_t next = 0;
    };
    std::unordered_map<void const*, State> state;
    std::vector<Problem> problems;
    std::vector<Step> path;
    auto const open = [&](Node const& node) {
        state[KeyOf(node)] = kOpen;
        path.push_back({node, NeedsOf(node)});
    };
    for (auto const& start : document.Operators()) {
        if (state[start.get()] == kNew) open(start.get());
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next == step.needs.size()) {
                state[KeyOf(step.node)] = kDone;
                path.pop_back();
                continue;
            }
            Node const need = step.needs[step.next++];
            State const met = state[KeyOf(need)];
            if (met == kNew) open(need);
            if (met != kOpen) continue;
            // The last edge of a cycle starts or ends at an input, since operators need nothing else.
            auto* const* from = std::get_if<Input const*>(&step.node);
            auto* const* op = std::get_if<Operator const*>(&need);
            if (op)
                problems.push_back(
                    {.file = document.file,
                     .line = (*op)->line,
                     .text = fmt::format("{} feeds itself through {}", (*op)->Name(), PlaceOf(**from))});
            else {
                Input const& input = *std::get<Input const*>(need);
                problems.push_back({.file = document.file,
                                    .line = input.Owner()->line,
                                    .text = fmt::format("{} needs its own value through the expression of {}",
                                                        PlaceOf(input), PlaceOf(from ? **from : input))});
            }
        }
    }
    return problems;
}

} // namespace ombrelune
