#include "host/flow/Expression.h"

#include <algorithm>
#include <mutex>

#include <fmt/format.h>

#include "host/flow/InputValue.h"
#include "host/flow/LuaSandbox.h"

namespace ombrelune {

namespace {

using Target = std::variant<Input*, Output*>;

template <class T> void AddOnce(std::vector<T*>& list, T* item)
{
    if (std::find(list.begin(), list.end(), item) == list.end()) list.push_back(item);
}

/// A sandbox takes some microseconds to make and to fill, so each expression keeps those it needed at once.
/// None is shared while it runs: what it reads may make this very thread or others evaluate again.
class LuaExpression : public InputExpression {
public:
    LuaExpression(Input& input, std::string text, std::string file, int line, ExpressionReads const& reads)
        : input_(input), text_(std::move(text)), file_(std::move(file)), line_(line)
    {
        for (ExpressionReads::Read const& read : reads.reads) {
            auto tool = std::find_if(tools_.begin(), tools_.end(),
                                     [&](LuaSandbox::Tool const& each) { return each.name == read.tool; });
            if (tool == tools_.end()) tool = tools_.insert(tool, {read.tool, {}});
            tool->members.emplace_back(read.member, static_cast<int>(targets_.size()));
            targets_.push_back(read.target);
            if (auto* const* output = std::get_if<Output*>(&read.target)) AddOnce(reads_, (*output)->Owner());
            else AddOnce(inputsRead_, std::get<Input*>(read.target));
        }
    }

    std::string const& Text() const override { return text_; }
    std::vector<Operator*> const& Reads() const override { return reads_; }
    std::vector<Input*> const& InputsRead() const override { return inputsRead_; }

    RenderResult Evaluate(ExpressionScope& scope, double time) const override
    {
        std::unique_ptr<LuaSandbox> sandbox = TakeSandbox();
        if (!sandbox->Mistake().empty()) return Wrong(sandbox->Mistake());
        ScopeReader reader(*this, scope);
        LuaSandbox::Outcome outcome = sandbox->Run(time, reader);
        GiveBack(std::move(sandbox));

        if (outcome.problem) return {nullptr, std::move(outcome.problem)};
        if (!outcome.mistake.empty()) return Wrong(outcome.mistake);
        if (outcome.value.IsNil()) return Wrong("gives nothing");
        outcome.value.line = line_;
        if (double const* number = outcome.value.AsNumber(); number && WantsText())
            outcome.value = ScriptVal(fmt::format("{:.14g}", *number));
        InputValue value = ValueFromScript(input_, outcome.value, file_);
        return {std::move(value.value), std::move(value.problem)};
    }

private:
    class ScopeReader : public LuaSandbox::Reader {
    public:
        ScopeReader(LuaExpression const& expression, ExpressionScope& scope)
            : expression_(expression), scope_(scope)
        {}
        RenderResult Read(int member, double time) override
        {
            Target const target = expression_.targets_[static_cast<std::size_t>(member)];
            auto* const* const input = std::get_if<Input*>(&target);
            RenderResult result =
                input ? scope_.InputAt(**input, time) : scope_.OutputAt(*std::get<Output*>(target), time);
            if (result.problem || result.value) return result;
            Output const* const output = input ? (*input)->Source() : std::get<Output*>(target);
            return expression_.Wrong(output ? fmt::format("{}.{} gives nothing at time {}",
                                                          output->Owner()->Name(), output->Id().Text(), time)
                                            : PlaceOf(**input) + " has no value");
        }

    private:
        LuaExpression const& expression_;
        ExpressionScope& scope_;
    };

    bool WantsText() const { return input_.DataType() == CLSID_DataType_Text; }

    RenderResult Wrong(std::string const& what) const
    {
        return {nullptr, Problem{file_, line_, fmt::format("{}: expression: {}", PlaceOf(input_), what)}};
    }

    std::unique_ptr<LuaSandbox> TakeSandbox() const
    {
        {
            std::lock_guard const guard(lock_);
            if (!idle_.empty()) {
                auto sandbox = std::move(idle_.back());
                idle_.pop_back();
                return sandbox;
            }
        }
        return std::make_unique<LuaSandbox>(text_, tools_, input_.Owner()->Document());
    }
    void GiveBack(std::unique_ptr<LuaSandbox> sandbox) const
    {
        std::lock_guard const guard(lock_);
        idle_.push_back(std::move(sandbox));
    }

    Input& input_;
    std::string text_, file_;
    int line_;
    std::vector<LuaSandbox::Tool> tools_;
    std::vector<Target> targets_; // by the number of a member
    std::vector<Operator*> reads_;
    std::vector<Input*> inputsRead_;

    mutable std::mutex lock_;
    mutable std::vector<std::unique_ptr<LuaSandbox>> idle_;
};

} // namespace

ReadExpression CompileExpression(Input& input, std::string const& text, ToolNames const& tools,
                                 std::string const& file, int line)
{
    ReadExpression read;
    auto const wrong = [&](std::string const& what) {
        read.problems.push_back({file, line, fmt::format("{}: expression: {}", PlaceOf(input), what)});
    };
    FuID const type = input.DataType();
    if (type != CLSID_DataType_Number && type != CLSID_DataType_Point && type != CLSID_DataType_Text &&
        type != CLSID_DataType_FuID) {
        wrong("this input takes the output of another tool");
        return read;
    }
    LuaSandbox const trial(text, {}, input.Owner()->Document());
    if (!trial.Mistake().empty()) {
        wrong(trial.Mistake());
        return read;
    }
    std::string_view const body = std::string_view(text).substr(text.starts_with(':') ? 1 : 0);
    ExpressionReads const reads = FindReads(body, trial.Names(), tools);
    for (std::string const& mistake : reads.mistakes) wrong(mistake);
    if (read.problems.empty())
        read.expression = std::make_unique<LuaExpression>(input, text, file, line, reads);
    return read;
}

} // namespace ombrelune
