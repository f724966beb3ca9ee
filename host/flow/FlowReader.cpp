#include "host/flow/FlowReader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include <fmt/format.h>

#include "host/flow/Cycles.h"
#include "host/flow/Expression.h"
#include "host/flow/InputValue.h"
#include "host/flow/KeyFrames.h"
#include "host/flow/Parser.h"
#include "host/flow/ToolTree.h"
#include "host/image/Image.h"
#include "host/value/NearestName.h"

namespace ombrelune {

namespace {

/// Fields that are read. Any other is for editors, and stays out of the way.
std::vector<std::string> const kRootFields{"Tools", "FrameFormat", "GlobalRange", "RenderRange",
                                           "CurrentTime"};
std::vector<std::string> const kFormatFields{"Width", "Height", "Rate", "Depth", "AspectX", "AspectY"};
std::vector<std::string> const kToolFields{"Inputs", "PassThrough", "KeyFrames"};
std::vector<std::string> const kInputFields{"Value", "SourceOp", "Source", "Expression"};

class Builder {
public:
    Builder(FlowReading& reading, std::string const& file)
        : reading_(reading), file_(file), document_(std::make_unique<FusionDoc>()),
          tree_(*document_, reading.problems)
    {
        document_->file = file;
    }

    void Build(ScriptVal const& flow)
    {
        ScriptTable const* const root = flow.AsTable();
        if (!root)
            return Wrong(flow.line, fmt::format("a flow is a table with Tools, not {}", flow.KindName()));
        if (!root->constructor.empty() && root->constructor != "Composition")
            return Wrong(flow.line,
                         fmt::format("a flow starts with Composition, not {}", Quoted(root->constructor)));
        ReadFormat(*root);
        ReadRange(*root, "GlobalRange", document_->globalStart, document_->globalEnd);
        document_->renderStart = document_->globalStart;
        document_->renderEnd = document_->globalEnd;
        ReadRange(*root, "RenderRange", document_->renderStart, document_->renderEnd);
        ReadNumber(*root, "CurrentTime", document_->currentTime, -1e9, 1e9);

        WarnOfLikeFields(*root, kRootFields, "the flow");

        ScriptVal const* const tools = root->Find("Tools");
        if (!tools || !tools->AsTable()) return Wrong(flow.line, "the flow has no table Tools");
        tree_.Read(*tools->AsTable());
        document_->groups = tree_.OutermostGroups();
        for (auto const& tool : tree_.Tools()) ReadTool(tool);
        for (auto const& given : tree_.GroupInputs()) ReadGroupInput(given);
        for (Problem& cycle : FindCycles(*document_)) reading_.problems.push_back(std::move(cycle));
        // Tools learn of every value as an artist's change would tell them; what the flow says still holds
        // after.
        if (reading_.problems.empty()) Notify();
        if (reading_.problems.empty()) reading_.document = std::move(document_);
    }

private:
    void Wrong(int line, std::string text)
    {
        reading_.problems.push_back({.file = file_, .line = line, .text = std::move(text)});
    }

    template <class T>
    void ReadNumber(ScriptTable const& table, char const* name, T& value, double least, double most)
    {
        ScriptVal const* const given = table.Find(name);
        if (!given) return;
        double const* const number = given->AsNumber();
        if (!number)
            return Wrong(given->line, fmt::format("{} takes a number, not {}", name, given->KindName()));
        if (!(*number >= least && *number <= most))
            return Wrong(given->line, fmt::format("{} = {} is not in {} to {}", name, *number, least, most));
        value = static_cast<T>(*number);
    }

    void ReadFormat(ScriptTable const& root)
    {
        ScriptVal const* const given = root.Find("FrameFormat");
        if (!given) return;
        ScriptTable const* const table = given->AsTable();
        if (!table) return Wrong(given->line, "FrameFormat is a table");
        WarnOfLikeFields(*table, kFormatFields, "FrameFormat");
        FrameFormat& format = document_->format;
        ReadNumber(*table, "Width", format.width, 1, Image::kMaxSide);
        ReadNumber(*table, "Height", format.height, 1, Image::kMaxSide);
        ReadNumber(*table, "Rate", format.rate, 0.001, 1e6);
        ReadNumber(*table, "Depth", format.depth, kDepthInt8, kDepthFloat);
        ReadNumber(*table, "AspectX", format.xScale, 1e-3, 1e3);
        ReadNumber(*table, "AspectY", format.yScale, 1e-3, 1e3);
    }

    void ReadRange(ScriptTable const& root, char const* name, double& start, double& end)
    {
        ScriptVal const* const given = root.Find(name);
        if (!given) return;
        ScriptTable const* const table = given->AsTable();
        ScriptVal const* const first = table ? table->At(0) : nullptr;
        ScriptVal const* const last = table ? table->At(1) : nullptr;
        if (!first || !last || !first->AsNumber() || !last->AsNumber() ||
            *first->AsNumber() > *last->AsNumber())
            return Wrong(given->line, fmt::format("{} is a table of a first and a last frame", name));
        start = *first->AsNumber();
        end = *last->AsNumber();
    }

    /// A field that nobody reads and that is spelled almost like one that is read.
    void WarnOfLikeFields(ScriptTable const& table, std::vector<std::string> const& known,
                          std::string const& place)
    {
        for (auto const& entry : table.entries) {
            std::string const* const name = entry.key.AsText();
            if (!name || std::find(known.begin(), known.end(), *name) != known.end()) continue;
            std::string const hint = DidYouMean(*name, known);
            if (hint.empty()) continue;
            reading_.warnings.push_back(
                {.file = file_,
                 .line = entry.value.line,
                 .text = fmt::format("{}: the field {} changes nothing{}", place, Quoted(*name), hint)});
        }
    }

    void ReadTool(ToolTree::Tool const& tool)
    {
        Operator& op = *tool.op;
        ScriptTable const& table = *tool.given->AsTable();
        WarnOfLikeFields(table, kToolFields, op.Name());
        if (ScriptVal const* pass = table.Find("PassThrough")) {
            if (!pass->AsBool())
                Wrong(pass->line, fmt::format("{}: PassThrough is true or false", op.Name()));
            else if (*pass->AsBool() && !op.HasIdentity())
                Wrong(pass->line, fmt::format("{} has no input to pass through", op.Name()));
            else op.SetPassThrough(*pass->AsBool());
        }
        // The operator has read them too, but cannot speak.
        bool const isSpline = table.constructor == "BezierSpline" || table.constructor == "LUTBezier";
        if (isSpline || table.Find("KeyFrames")) TakeCurve(*tool.given, op.Name());

        ScriptVal const* const inputs = table.Find("Inputs");
        if (!inputs) return;
        if (!inputs->AsTable()) return Wrong(inputs->line, fmt::format("{}: Inputs is a table", op.Name()));
        for (auto const& entry : inputs->AsTable()->entries) {
            std::string const* const name = entry.key.AsText();
            if (!name) {
                Wrong(entry.value.line,
                      fmt::format("{}: an input is written Name = Input {{ ... }}", op.Name()));
                continue;
            }
            auto const input = ToolTree::InputOf({&op, nullptr}, *name);
            if (auto const* wrong = std::get_if<std::string>(&input)) Wrong(entry.value.line, *wrong);
            else ReadInput(*std::get<Input*>(input), entry.value, *tool.scope);
        }
    }

    void ReadInput(Input& input, ScriptVal const& given, ToolTree::Scope const& scope)
    {
        ScriptTable const* const table = given.AsTable();
        if (!table || table->constructor != "Input") return ReadValue(input, given);
        WarnOfLikeFields(*table, kInputFields, PlaceOf(input));
        ScriptVal const* const source = table->Find("SourceOp");
        ScriptVal const* const expression = table->Find("Expression");
        ScriptVal const* const value = table->Find("Value");
        if (!source && !expression && !value)
            return Wrong(given.line,
                         fmt::format("{} has neither a Value, a SourceOp nor an Expression", PlaceOf(input)));
        if (value && !source) ReadValue(input, *value);
        if (source) Connect(input, *table, given.line, scope);
        if (expression) ReadExpression(input, *expression, scope);
        if (source && expression)
            reading_.warnings.push_back({.file = file_,
                                         .line = expression->line,
                                         .text = fmt::format("{} has a SourceOp and an Expression; the "
                                                             "expression is used",
                                                             PlaceOf(input))});
    }

    /// What a group says about the input of a tool inside it wins over what the tool says.
    void ReadGroupInput(ToolTree::GroupInput const& group)
    {
        Input& input = *group.input;
        if (ScriptVal const* standard = group.given->Find("Default")) {
            InputValue read = ValueFromScript(input, *standard, file_);
            if (Report(read)) input.SetSource(read.value.Get(), kDefaultTime, nullptr);
        }
        if (ScriptVal const* value = group.given->Find("Value")) {
            ReadValue(input, *value);
            input.ConnectTo(nullptr);
            input.SetExpression(nullptr);
        }
        if (ScriptVal const* expression = group.given->Find("Expression"))
            ReadExpression(input, *expression, *group.scope);
    }

    /// Takes up problem and warning; whether there is a value.
    bool Report(InputValue& read)
    {
        if (read.warning) reading_.warnings.push_back(*read.warning);
        if (read.problem) reading_.problems.push_back(*read.problem);
        return !read.problem;
    }

    void ReadValue(Input& input, ScriptVal const& value)
    {
        if (input.DataType() == CLSID_DataType_LookUpTable)
            return input.SetValueQuietly(MakeRef<LookUpTable>(TakeCurve(value, PlaceOf(input))));
        InputValue read = ValueFromScript(input, value, file_);
        if (Report(read)) input.SetValueQuietly(std::move(read.value));
    }

    BezierCurve TakeCurve(ScriptVal const& table, std::string const& place)
    {
        KeyFrames read = ReadKeyFrames(table, place, file_);
        for (Problem& problem : read.problems) reading_.problems.push_back(std::move(problem));
        for (Problem& warning : read.warnings) reading_.warnings.push_back(std::move(warning));
        return std::move(read.curve);
    }

    void ReadExpression(Input& input, ScriptVal const& given, ToolTree::Scope const& scope)
    {
        if (!given.AsText())
            return Wrong(given.line, fmt::format("{}: Expression is a text", PlaceOf(input)));
        auto read = CompileExpression(input, *given.AsText(), ScopeNames(tree_, scope), file_, given.line);
        for (Problem& problem : read.problems) reading_.problems.push_back(std::move(problem));
        input.SetExpression(std::move(read.expression));
    }

    void Connect(Input& input, ScriptTable const& table, int line, ToolTree::Scope const& scope)
    {
        ScriptVal const& opName = *table.Find("SourceOp");
        ScriptVal const* const outputName = table.Find("Source");
        if (!opName.AsText() || (outputName && !outputName->AsText()))
            return Wrong(line, fmt::format("{}: SourceOp and Source are texts", PlaceOf(input)));
        ToolTree::Member const* const source = tree_.Find(scope, *opName.AsText());
        if (!source)
            return Wrong(opName.line, fmt::format("{}: there is no tool {} in the flow{}", PlaceOf(input),
                                                  Quoted(*opName.AsText()),
                                                  DidYouMean(*opName.AsText(), tree_.NamesFrom(scope))));
        if (!source->IsMade()) return; // what is wrong with it is told already
        auto const found =
            ToolTree::OutputOf(*source, outputName ? std::optional(*outputName->AsText()) : std::nullopt);
        if (auto const* wrong = std::get_if<std::string>(&found))
            return Wrong(outputName ? outputName->line : opName.line,
                         fmt::format("{}: {}", PlaceOf(input), *wrong));
        Output& output = *std::get<Output*>(found);
        bool const bothImages = input.IsImage() && (output.DataType() == CLSID_DataType_Image ||
                                                    output.DataType() == CLSID_DataType_Mask);
        if (output.DataType() != input.DataType() && !bothImages)
            return Wrong(line, fmt::format("{} takes a value of type {}, and {}.{} gives {}", PlaceOf(input),
                                           input.DataType().Text(), output.Owner()->Name(),
                                           output.Id().Text(), output.DataType().Text()));
        input.ConnectTo(&output);
    }

    void Notify()
    {
        for (auto const& op : document_->Operators()) {
            std::vector<std::pair<Input*, Ref<Parameter>>> given;
            for (auto const& input : op->Inputs())
                if (input->HasValue()) given.emplace_back(input.get(), input->Value());
            for (auto const& [input, value] : given)
                input->SetSource(value.Get(), document_->currentTime, nullptr);
            for (auto const& [input, value] : given) input->SetValueQuietly(value);
        }
        for (Problem& problem : document_->TakeProblems()) reading_.warnings.push_back(std::move(problem));
    }

    FlowReading& reading_;
    std::string file_;
    std::unique_ptr<FusionDoc> document_;
    ToolTree tree_;
};

} // namespace

FlowReading BuildDocument(ScriptVal const& flow, std::string const& file)
{
    FlowReading reading;
    Builder(reading, file).Build(flow);
    for (auto* list : {&reading.problems, &reading.warnings})
        std::stable_sort(list->begin(), list->end(),
                         [](Problem const& a, Problem const& b) { return a.line < b.line; });
    return reading;
}

FlowReading ReadFlowText(std::string_view text, std::string const& file)
{
    Parsed parsed = ParseScript(text, file);
    if (parsed.value.IsNil() && !parsed.problems.empty())
        return {.document = nullptr, .problems = std::move(parsed.problems), .warnings = {}};
    FlowReading reading = BuildDocument(parsed.value, file);
    if (parsed.problems.empty()) return reading;
    // Both mistakes in what is written and in what it means; one line's mistake is told once.
    reading.document = nullptr;
    for (Problem& problem : reading.problems) {
        auto const isTold = std::any_of(parsed.problems.begin(), parsed.problems.end(),
                                        [&](Problem const& told) { return told.line == problem.line; });
        if (!isTold) parsed.problems.push_back(std::move(problem));
    }
    std::stable_sort(parsed.problems.begin(), parsed.problems.end(),
                     [](Problem const& a, Problem const& b) { return a.line < b.line; });
    reading.problems = std::move(parsed.problems);
    return reading;
}

FlowText ReadFlowFile(std::string const& path)
{
    auto const failed = [&](std::string const& what) -> FlowText {
        return {.problem = Problem{.file = path, .line = 0, .text = what, .isFile = true}};
    };
    std::error_code error;
    auto const status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) return failed("is a folder, not a flow");
    // A pipe that nobody writes would be waited for.
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        return failed("is no regular file");
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) return failed(fmt::format("cannot be read: {}", std::strerror(errno)));
    FlowText read;
    std::vector<char> block(1 << 16);
    // The parser's limit bounds what is read of an endless file.
    while (read.text.size() <= kMaxTextBytes) {
        std::size_t const count = std::fread(block.data(), 1, block.size(), file.get());
        if (count == 0) break;
        read.text.append(block.data(), count);
    }
    if (std::ferror(file.get())) return failed(fmt::format("cannot be read: {}", std::strerror(errno)));
    return read;
}

FlowReading ReadFlow(std::string const& path)
{
    FlowText const read = ReadFlowFile(path);
    if (read.problem) return {.document = nullptr, .problems = {*read.problem}, .warnings = {}};
    return ReadFlowText(read.text, path);
}

} // namespace ombrelune
