#include "host/graph/FusionDoc.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <fmt/format.h>

namespace ombrelune {

namespace {

/// Stands in for an expression that reads an operator which is no longer there.
class LostExpression : public InputExpression {
public:
    LostExpression(std::string text, Problem problem) : text_(std::move(text)), problem_(std::move(problem))
    {}
    RenderResult Evaluate(ExpressionScope&, double) const override { return {nullptr, problem_}; }
    std::string const& Text() const override { return text_; }
    std::vector<Operator*> const& Reads() const override { return reads_; }
    std::vector<Input*> const& InputsRead() const override { return inputsRead_; }

private:
    std::string text_;
    Problem problem_;
    std::vector<Operator*> reads_;
    std::vector<Input*> inputsRead_;
};

bool Reads(InputExpression const& expression, Operator const& op)
{
    auto const& ops = expression.Reads();
    auto const& inputs = expression.InputsRead();
    return std::find(ops.begin(), ops.end(), &op) != ops.end() ||
           std::any_of(inputs.begin(), inputs.end(), [&](Input* input) { return input->Owner() == &op; });
}

} // namespace

std::shared_ptr<OperatorState const> const& Snapshot::Of(Operator const& op) const
{
    static std::shared_ptr<OperatorState const> const none;
    if (!op.place_ || *op.place_ >= states_.size()) return none;
    auto const& state = states_[*op.place_];
    return state && state->op.get() == &op ? state : none;
}

Operator* FusionDoc::AddOperator(Registry const& registry, std::string const& name, ScriptVal const& settings)
{
    TagList const tags{{Op_Document, this}, {Op_Name, name}};
    operators_.emplace_back(registry.NewFunction()(&registry, settings, tags));
    Operator& op = *operators_.back();
    std::lock_guard guard(lock_);
    if (freePlaces_.empty()) {
        op.place_ = places_.size();
        places_.push_back(&op);
    } else {
        op.place_ = freePlaces_.back();
        freePlaces_.pop_back();
        places_[*op.place_] = &op;
    }
    op.Edited();
    return &op;
}

std::shared_ptr<Operator> FusionDoc::RemoveOperator(Operator& op)
{
    auto const found = std::find_if(operators_.begin(), operators_.end(),
                                    [&](auto const& each) { return each.get() == &op; });
    if (found == operators_.end()) return nullptr;
    Edits const together(*this);
    std::shared_ptr<Operator> removed = *found;
    operators_.erase(found);
    for (auto const& other : operators_) {
        for (auto const& input : other->Inputs()) {
            if (Output const* source = input->Source(); source && source->Owner() == &op)
                input->ConnectTo(nullptr);
            if (auto const expression = input->Expression(); expression && Reads(*expression, op))
                input->SetExpression(std::make_shared<LostExpression>(
                    expression->Text(),
                    Problem{.file = file,
                            .line = other->line,
                            .text = fmt::format("{}.{}: expression: the tool {} is no longer there",
                                                other->Name(), input->Id().Text(), op.Name())}));
        }
    }
    for (auto& [name, shown] : groups) {
        std::erase_if(shown.inputs, [&](auto const& each) { return each.second->Owner() == &op; });
        std::erase_if(shown.outputs, [&](auto const& each) { return each.second->Owner() == &op; });
    }
    std::lock_guard guard(lock_);
    places_[*op.place_] = nullptr;
    freePlaces_.push_back(*op.place_);
    edited_.push_back(*op.place_);
    op.isEdited_ = true; // its own edits concern nobody any more
    return removed;
}

std::shared_ptr<Snapshot const> FusionDoc::TakeSnapshot()
{
    std::shared_ptr<Snapshot const> before; // goes after the lock, and with it what was removed
    std::lock_guard guard(lock_);
    if (published_ && (edited_.empty() || openEdits_ > 0)) return published_;
    before = published_;
    auto next = before ? std::make_shared<Snapshot>(*before) : std::make_shared<Snapshot>();
    ++next->version_;
    next->states_.resize(places_.size());
    for (std::size_t const place : edited_) {
        Operator* const op = places_[place];
        if (!op) {
            next->states_[place] = nullptr;
            continue;
        }
        auto state = std::make_shared<OperatorState>(op->StateUnderLock());
        state->op = op->shared_from_this();
        next->states_[place] = std::move(state);
        op->isEdited_ = false;
    }
    edited_.clear();
    return published_ = std::move(next);
}

FusionDoc::Edits::Edits(FusionDoc& document) : document_(document)
{
    document_.TakeSnapshot(); // what was edited before is seen
    std::lock_guard guard(document_.lock_);
    ++document_.openEdits_;
}

FusionDoc::Edits::~Edits()
{
    std::lock_guard guard(document_.lock_);
    --document_.openEdits_;
}

std::vector<Problem> FusionDoc::TakeProblems()
{
    std::lock_guard guard(lock_);
    return std::exchange(problems_, {});
}

void FusionDoc::Report(Problem problem)
{
    std::lock_guard guard(lock_);
    problems_.push_back(std::move(problem));
}

Operator* FusionDoc::FindOperator(std::string_view name) const
{
    auto found = std::find_if(operators_.begin(), operators_.end(),
                              [&](auto const& op) { return op->Name() == name; });
    return found == operators_.end() ? nullptr : found->get();
}

std::string ResolvePath(FusionDoc const* document, std::string const& path)
{
    std::filesystem::path const given(path);
    if (given.is_absolute() || !document || document->file.empty()) return path;
    return (std::filesystem::path(document->file).parent_path() / given).string();
}

FrameFormat const& FormatOf(FusionDoc const* document)
{
    static FrameFormat const standard;
    return document ? document->format : standard;
}

} // namespace ombrelune
