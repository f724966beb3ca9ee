#include "apps/ombrelune/Print.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace ombrelune::app {

namespace {

using Json = nlohmann::ordered_json;

/// The output that "Tool.Output" means; null after a complaint.
Output* FindOutput(FusionDoc const& document, std::string const& text)
{
    auto const dot = text.find('.');
    if (dot == std::string::npos) {
        Complain(fmt::format("--print {}: write Tool.Output", Quoted(text)));
        return nullptr;
    }
    std::string const name = text.substr(0, dot), id = text.substr(dot + 1);
    std::vector<std::string> known;
    Output* output = nullptr;
    if (auto const group = document.groups.find(name); group != document.groups.end()) {
        for (auto const& [shown, of] : group->second.outputs) {
            known.push_back(shown);
            if (shown == id) output = of;
        }
    } else {
        Operator* const op = FindOperator(document, name);
        if (!op) return nullptr;
        output = op->FindOutput(id);
        for (auto const& each : op->Outputs()) known.push_back(each->Id().Text());
    }
    if (!output) {
        Complain(fmt::format("no output {} on {}{}", Quoted(id), name, DidYouMean(id, known)));
        return nullptr;
    }
    FuID const type = output->DataType();
    if (type == CLSID_DataType_Number || type == CLSID_DataType_Text) return output;
    Complain(fmt::format("--print {}: the output gives {}; only numbers and texts can be printed",
                         Quoted(text), type.Text()));
    return nullptr;
}

/// A number, a text, or null for neither and for what is not a number.
Json JsonOf(Parameter const* value)
{
    if (auto const* text = dynamic_cast<Text const*>(value)) return text->value;
    auto const* number = dynamic_cast<Number const*>(value);
    if (!number || !std::isfinite(number->value)) return nullptr;
    return Json::parse(NumberText(number->value));
}

std::string TextOf(Parameter const* value)
{
    if (auto const* text = dynamic_cast<Text const*>(value)) return text->value;
    auto const* number = dynamic_cast<Number const*>(value);
    return number ? NumberText(number->value) : "";
}

/// A field of a table with commas between (RFC 4180).
std::string CsvField(std::string const& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

using Values = std::vector<Ref<Parameter>>;

void PrintFrame(int frame, Values const& values, RenderOptions const& options)
{
    std::vector<std::string> const& names = options.print;
    if (options.json) {
        Json json = {{"frame", frame}, {"values", Json::object()}};
        for (std::size_t i = 0; i < names.size(); ++i) json["values"][names[i]] = JsonOf(values[i].Get());
        // A text need not be UTF-8.
        Print("{}\n", json.dump(-1, ' ', false, Json::error_handler_t::replace));
    } else if (options.csv) {
        Print("{}", frame);
        for (auto const& value : values) Print(",{}", CsvField(TextOf(value.Get())));
        Print("\n");
    } else {
        for (std::size_t i = 0; i < names.size(); ++i)
            Print("frame {}  {} = {}\n", frame, names[i], TextOf(values[i].Get()));
    }
    FlushOutput();
}

} // namespace

ExitStatus PrintValues(FusionDoc const& document, Renderer& renderer, std::vector<int> const& frames,
                       RenderOptions const& options)
{
    std::vector<Output*> outputs;
    for (std::string const& text : options.print) {
        outputs.push_back(FindOutput(document, text));
        if (!outputs.back()) return kWrongInput;
    }
    if (options.csv) {
        Print("frame");
        for (std::string const& name : options.print) Print(",{}", CsvField(name));
        Print("\n");
    }
    ExitStatus status = kDone;
    renderer.Start({frames.begin(), frames.end()});
    for (int frame : frames) {
        Values values;
        for (Output* output : outputs) {
            RenderResult result = renderer.Evaluate(*output, frame);
            if (result.problem) {
                Complain(fmt::format("frame {}: {}", frame, result.problem->Format()));
                status = std::max(status, result.problem->isFile ? kFileProblem : kFrameFailed);
                break;
            }
            values.push_back(std::move(result.value));
        }
        for (Problem const& warning : renderer.TakeWarnings()) Warn(warning.Format());
        if (values.size() == outputs.size()) PrintFrame(frame, values, options);
        else if (options.stopOnError) break;
        renderer.FinishFrame(frame);
    }
    return status;
}

} // namespace ombrelune::app
