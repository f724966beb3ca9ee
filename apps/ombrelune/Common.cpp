#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <dlfcn.h>
#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/builtin/Builtin.h"
#include "host/flow/ColorGroups.h"
#include "host/flow/InputValue.h"

namespace ombrelune::app {

namespace {

constexpr std::string_view kMaker = "Brassfennel.";

int outputError = 0; ///< the first of standard output

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

} // namespace

void Print(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) < text.size() && outputError == 0)
        outputError = errno;
}

void FlushOutput()
{
    if (std::fflush(stdout) != 0 && outputError == 0) outputError = errno;
}

ExitStatus FinishOutput()
{
    FlushOutput();
    if (outputError == 0 && std::ferror(stdout)) outputError = EIO;
    if (outputError == 0 || outputError == EPIPE) return kDone;
    Complain("standard output could not be written: " + std::generic_category().message(outputError));
    return kFileProblem;
}

void Complain(std::string const& text)
{
    std::string const line = fmt::format("ombrelune: {}\n", text);
    std::fwrite(line.data(), 1, line.size(), stderr);
}
void Warn(std::string const& text) { Complain("warning: " + text); }

ExitStatus Complain(Problem const& problem)
{
    Complain(problem.Format());
    return problem.isFile ? kFileProblem : kWrongInput;
}

std::optional<Problem> LoadBundle(std::string const& path)
{
    std::string file = path;
    if (file.empty()) {
        std::error_code error;
        file = std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "Ombrelune.plugin";
    }
    // Stays loaded: its registrations are wanted until the program ends.
    if (dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) return std::nullopt;
    char const* const reason = dlerror();
    return Problem{
        .file = file, .text = fmt::format("the bundle cannot be loaded: {}", reason), .isFile = true};
}

std::string ClassName(Registry const& registry)
{
    std::string const& id = registry.Id().Text();
    return id.starts_with(kMaker) ? id.substr(kMaker.size()) : id;
}

Registry const* FindTool(std::string const& name)
{
    std::string wanted = Lower(name);
    if (wanted.starts_with(Lower(std::string(kMaker)))) wanted.erase(0, kMaker.size());
    std::vector<std::string> known;
    for (Registry const* registry : Operator::AllOperators()) {
        known.push_back(ClassName(*registry));
        if (Lower(known.back()) == wanted) return registry;
    }
    Complain(fmt::format("there is no tool {}{}; 'ombrelune tools' lists them", Quoted(name),
                         DidYouMean(name, known)));
    return nullptr;
}

std::string NumberText(double number)
{
    auto const single = static_cast<float>(number);
    return single == number ? fmt::format("{}", single) : fmt::format("{}", number);
}

Operator* FindOperator(FusionDoc const& document, std::string const& name)
{
    Operator* const op = document.FindOperator(name);
    if (op) return op;
    std::vector<std::string> known;
    for (auto const& each : document.Operators()) known.push_back(each->Name());
    Complain(fmt::format("there is no tool {} in the flow{}", Quoted(name), DidYouMean(name, known)));
    return nullptr;
}

bool SetFromText(Operator& op, std::string const& assignment)
{
    auto const equals = assignment.find('=');
    if (equals == std::string::npos) {
        Complain(fmt::format("--set {}: write Input=VALUE", Quoted(assignment)));
        return false;
    }
    std::string const id = assignment.substr(0, equals), text = assignment.substr(equals + 1);
    std::vector<Input*> inputs;
    std::vector<std::string> texts, known;
    if (Input* const input = op.FindInput(id)) {
        inputs = {input};
        texts = {text};
    }
    for (ColorGroup const& group : ColorGroups(op)) {
        known.push_back(group.name);
        if (group.name != id) continue;
        inputs = group.channels;
        texts = ColorChannels(text);
        if (!texts.empty() && texts.size() <= inputs.size()) continue;
        Complain(fmt::format("{}.{} takes a colour such as #ff8800, #ff8800cc or 1,0.5,0,1, not {}",
                             op.Name(), id, Quoted(text)));
        return false;
    }
    if (inputs.empty()) {
        for (auto const& each : op.Inputs()) known.push_back(each->Id().Text());
        Complain(fmt::format("no input {} on {}{}", Quoted(id), op.Name(), DidYouMean(id, known)));
        return false;
    }
    // All are read before the first is set.
    std::vector<Ref<Parameter>> values;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        InputValue read = ValueFromText(*inputs[i], texts[i]);
        if (read.problem) {
            Complain(*read.problem);
            return false;
        }
        values.push_back(std::move(read.value));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        inputs[i]->ConnectTo(nullptr);
        inputs[i]->SetExpression(nullptr);
        inputs[i]->SetSource(values[i].Get(), op.Document()->GetCurrentTime(), nullptr);
    }
    return true;
}

} // namespace ombrelune::app
