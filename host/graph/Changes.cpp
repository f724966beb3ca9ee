#include "host/graph/Changes.h"

#include <algorithm>
#include <exception>
#include <vector>

#include <fmt/format.h>

#include "host/graph/BusyOperator.h"
#include "host/graph/FusionDoc.h"

namespace ombrelune {

namespace {

constexpr int kLongestChain = 64;          // of changes that call each other up
constexpr std::size_t kMostAtOnce = 10000; // that one change may bring about

struct Change {
    Input* input;
    Ref<Parameter> value;
    double time;
    TagList tags;
    int cause; ///< index of the change that brought it about, -1 for none
    int depth;
};

/// What one thread has to tell.
struct Pending {
    std::vector<Change> changes;
    std::size_t next = 0; ///< first one not told
    bool isTelling = false;
    int held = 0; ///< operators that the thread works for
};
thread_local Pending pending;

std::string NameOf(Input const& input) { return input.Owner()->Name() + "." + input.Id().Text(); }

/// Inputs from the last time that a change came by the same input to the change itself.
std::string RingOf(Change const& last)
{
    std::string text = NameOf(*last.input);
    for (int i = last.cause; i >= 0; i = pending.changes[static_cast<std::size_t>(i)].cause) {
        Input const& input = *pending.changes[static_cast<std::size_t>(i)].input;
        text = fmt::format("{}, {}", NameOf(input), text);
        if (&input == last.input) return text;
    }
    return text;
}

void Report(Input const& input, std::string text)
{
    Operator const& op = *input.Owner();
    if (FusionDoc* const document = op.Document())
        document->Report({.file = document->file, .line = op.line, .text = std::move(text)});
}

void TellOne(Change change)
{
    Operator& op = *change.input->Owner();
    BusyOperator const busy(op);
    try {
        op.NotifyChanged(change.input, change.value.Get(), change.time, &change.tags);
    } catch (std::exception const& error) {
        Report(*change.input, fmt::format("{}: a change failed: {}", NameOf(*change.input), error.what()));
    } catch (...) {
        Report(*change.input, NameOf(*change.input) + ": a change failed");
    }
}

void TellAll()
{
    if (pending.isTelling || pending.held > 0 || pending.changes.empty()) return;
    pending.isTelling = true;
    for (pending.next = 0; pending.next < pending.changes.size(); ++pending.next)
        TellOne(pending.changes[pending.next]);
    pending.changes.clear();
    pending.next = 0;
    pending.isTelling = false;
}

} // namespace

void TellOfChange(Input& input, Ref<Parameter> value, double time, TagList tags)
{
    int const cause = pending.isTelling ? static_cast<int>(pending.next) : -1;
    int const depth = cause < 0 ? 0 : pending.changes[static_cast<std::size_t>(cause)].depth + 1;
    Change change{&input, std::move(value), time, std::move(tags), cause, depth};
    if (depth > kLongestChain)
        return Report(input, fmt::format("these inputs set each other without end, and were stopped: {}",
                                         RingOf(change)));
    if (pending.changes.size() >= kMostAtOnce)
        return Report(input, fmt::format("one change brings about more than {} others; the last were {}",
                                         kMostAtOnce, RingOf(change)));
    pending.changes.push_back(std::move(change));
    TellAll();
}

BusyOperator::BusyOperator(Operator& op)
{
    std::unique_lock guard(op.busyLock_);
    op.freed_.wait(guard, [&] { return !op.isBusy_; });
    Take(op);
}

BusyOperator::BusyOperator(Operator& op, std::stop_token const& stop)
{
    std::unique_lock guard(op.busyLock_);
    if (op.freed_.wait(guard, stop, [&] { return !op.isBusy_; })) Take(op);
}

BusyOperator::BusyOperator(Operator& op, std::try_to_lock_t)
{
    std::lock_guard guard(op.busyLock_);
    if (!op.isBusy_) Take(op);
}

void BusyOperator::Take(Operator& op)
{
    op.isBusy_ = true;
    op_ = &op;
    ++pending.held;
}

BusyOperator::~BusyOperator()
{
    if (!op_) return;
    {
        std::lock_guard guard(op_->busyLock_);
        op_->isBusy_ = false;
    }
    op_->freed_.notify_one();
    --pending.held;
    TellAll();
}

} // namespace ombrelune
