#include "host/flow/FlowReader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>

#include <fmt/format.h>

#include "host/flow/InputValue.h"
#include "host/flow/Parser.h"
#include "host/image/Image.h"
#include "host/value/NearestName.h"

namespace ombrelune {

namespace {

/// "; did you mean 'x'?", or nothing.
std::string DidYouMean(std::string const& name, std::vector<std::string> const& known)
{
    std::string const near = NearestName(name, known);
    return near.empty() ? "" : fmt::format("; did you mean '{}'?", near);
}

template <class Items> std::vector<std::string> IdsOf(Items const& items)
{
    std::vector<std::string> ids;
    for (auto const& item : items) ids.push_back(item->Id().Text());
    return ids;
}

class Builder {
public:
    Builder(FlowReading& reading, std::string const& file)
        : reading_(reading), file_(file), document_(std::make_unique<FusionDoc>())
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

        ScriptVal const* const tools = root->Find("Tools");
        if (!tools || !tools->AsTable()) return Wrong(flow.line, "the flow has no table Tools");
        for (auto const& entry : tools->AsTable()->entries) AddTool(entry);
        for (auto const& [op, table] : tools_) ReadInputs(*op, *table);
        FindCycles();
        // Tools learn of every value as an artist's change would tell them; what the flow says still holds
        // after.
        if (reading_.problems.empty()) Notify();
        std::stable_sort(reading_.problems.begin(), reading_.problems.end(),
                         [](Problem const& a, Problem const& b) { return a.line < b.line; });
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

    void AddTool(ScriptTable::Entry const& entry)
    {
        std::string const* const name = entry.key.AsText();
        ScriptTable const* const table = entry.value.AsTable();
        if (!name || !table || table->constructor.empty())
            return Wrong(entry.value.line, "a tool is written Name = Class { ... }");
        if (document_->FindOperator(*name))
            return Wrong(entry.value.line, fmt::format("there are two tools of the name {}", Quoted(*name)));
        Registry const* const found = FindClass(table->constructor);
        if (!found) {
            std::vector<std::string> known;
            for (Registry const* registry : Operator::AllOperators()) known.push_back(registry->Id().Text());
            return Wrong(entry.value.line,
                         fmt::format("{}: there is no tool {}{}", *name, Quoted(table->constructor),
                                     DidYouMean(table->constructor, known)));
        }
        Operator* const op = document_->AddOperator(*found, *name, entry.value);
        op->line = entry.value.line;
        tools_.emplace_back(op, table);
    }

    static Registry const* FindClass(std::string const& id)
    {
        auto const all = Operator::AllOperators();
        auto const found =
            std::find_if(all.begin(), all.end(), [&](Registry const* r) { return r->Id().Text() == id; });
        return found == all.end() ? nullptr : *found;
    }

    void ReadInputs(Operator& op, ScriptTable const& table)
    {
        if (ScriptVal const* pass = table.Find("PassThrough")) {
            if (!pass->AsBool())
                Wrong(pass->line, fmt::format("{}: PassThrough is true or false", op.Name()));
            else if (*pass->AsBool() && !op.HasIdentity())
                Wrong(pass->line, fmt::format("{} has no input to pass through", op.Name()));
            else op.passThrough = *pass->AsBool();
        }
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
            if (Input* const input = op.FindInput(*name)) ReadInput(*input, entry.value);
            else
                Wrong(entry.value.line,
                      fmt::format("no input {} on {} ({}){}", Quoted(*name), op.Name(),
                                  op.Registration()->ShortName().empty() ? op.Registration()->Id().Text()
                                                                         : op.Registration()->DisplayName(),
                                  DidYouMean(*name, IdsOf(op.Inputs()))));
        }
    }

    void ReadInput(Input& input, ScriptVal const& given)
    {
        ScriptTable const* const table = given.AsTable();
        bool const isInput = table && table->constructor == "Input";
        if (isInput && table->Find("SourceOp")) return Connect(input, *table, given.line);
        if (isInput && table->Find("Expression"))
            return Wrong(given.line,
                         fmt::format("{} has an expression, which cannot be read yet: give it a value",
                                     PlaceOf(input)));
        ScriptVal const* const value = isInput ? table->Find("Value") : &given;
        if (!value)
            return Wrong(given.line, fmt::format("{} has neither a Value nor a SourceOp", PlaceOf(input)));
        InputValue read = ValueFromScript(input, *value, file_);
        if (read.warning) reading_.warnings.push_back(*read.warning);
        if (read.problem) reading_.problems.push_back(*read.problem);
        else input.SetValueQuietly(std::move(read.value));
    }

    void Connect(Input& input, ScriptTable const& table, int line)
    {
        ScriptVal const& opName = *table.Find("SourceOp");
        ScriptVal const* const outputName = table.Find("Source");
        if (!opName.AsText() || (outputName && !outputName->AsText()))
            return Wrong(line, fmt::format("{}: SourceOp and Source are texts", PlaceOf(input)));
        Operator* const source = document_->FindOperator(*opName.AsText());
        if (!source) {
            std::vector<std::string> names;
            for (auto const& op : document_->Operators()) names.push_back(op->Name());
            return Wrong(opName.line,
                         fmt::format("{}: there is no tool {} in the flow{}", PlaceOf(input),
                                     Quoted(*opName.AsText()), DidYouMean(*opName.AsText(), names)));
        }
        std::string const wanted = outputName ? *outputName->AsText() : "Output";
        Output* const output = source->FindOutput(wanted);
        if (!output)
            return Wrong(outputName ? outputName->line : opName.line,
                         fmt::format("{}: no output {} on {}{}", PlaceOf(input), Quoted(wanted),
                                     source->Name(), DidYouMean(wanted, IdsOf(source->Outputs()))));
        bool const bothImages = input.IsImage() && (output->DataType() == CLSID_DataType_Image ||
                                                    output->DataType() == CLSID_DataType_Mask);
        if (output->DataType() != input.DataType() && !bothImages)
            return Wrong(line, fmt::format("{} takes a value of type {}, and {}.{} gives {}", PlaceOf(input),
                                           input.DataType().Text(), source->Name(), output->Id().Text(),
                                           output->DataType().Text()));
        input.ConnectTo(output);
    }

    /// Depth first; a tool that is met while it is still open closes a cycle.
    void FindCycles()
    {
        std::map<Operator const*, int> state; // 1 open, 2 done
        struct Step {
            Operator const* op;
            std::size_t next;
        };
        for (auto const& [start, table] : tools_) {
            std::vector<Step> path;
            if (state[start] == 0) path.push_back({start, 0});
            while (!path.empty()) {
                auto& [op, next] = path.back();
                state[op] = 1;
                if (next == op->Inputs().size()) {
                    state[op] = 2;
                    path.pop_back();
                    continue;
                }
                Input const& input = *op->Inputs()[next++];
                Operator const* const source = input.Source() ? input.Source()->Owner() : nullptr;
                if (!source || state[source] == 2) continue;
                if (state[source] == 1) {
                    Wrong(source->line,
                          fmt::format("{} feeds itself through {}", source->Name(), PlaceOf(input)));
                    continue;
                }
                path.push_back({source, 0});
            }
        }
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
    }

    FlowReading& reading_;
    std::string file_;
    std::unique_ptr<FusionDoc> document_;
    std::vector<std::pair<Operator*, ScriptTable const*>> tools_;
};

} // namespace

FlowReading BuildDocument(ScriptVal const& flow, std::string const& file)
{
    FlowReading reading;
    Builder(reading, file).Build(flow);
    return reading;
}

FlowReading ReadFlow(std::string const& path)
{
    auto const failed = [&](std::string const& what) {
        FlowReading reading;
        reading.problems.push_back({.file = path, .line = 0, .text = what, .isFile = true});
        return reading;
    };
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return failed("is a folder, not a flow");
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) return failed(fmt::format("cannot be read: {}", std::strerror(errno)));
    std::string text;
    std::vector<char> block(1 << 16);
    // The parser's limit bounds what is read of an endless file.
    while (text.size() <= kMaxTextBytes) {
        std::size_t const count = std::fread(block.data(), 1, block.size(), file.get());
        if (count == 0) break;
        text.append(block.data(), count);
    }
    Parsed parsed = ParseScript(text, path);
    if (!parsed.problems.empty()) {
        FlowReading reading;
        reading.problems = std::move(parsed.problems);
        return reading;
    }
    return BuildDocument(parsed.value, path);
}

} // namespace ombrelune
