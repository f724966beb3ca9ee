#include "host/flow/InputValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <vector>

#include <fmt/format.h>

#include "host/graph/FusionDoc.h"
#include "host/value/NearestName.h"

namespace ombrelune {

namespace {

InputValue Wrong(std::string text)
{
    return {.value = nullptr, .problem = Problem{.text = std::move(text)}, .warning = {}};
}

std::vector<std::string> ButtonNames(Input const& input)
{
    std::vector<std::string> names;
    for (TagValue const& entry : input.Attributes().All(Attr_ListEntry))
        names.push_back(std::get<std::string>(entry));
    return names;
}

std::string Joined(std::vector<std::string> const& names)
{
    std::string text;
    for (std::string const& name : names) text += (text.empty() ? "'" : ", '") + name + "'";
    return text;
}

bool SameIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

std::optional<double> NumberIn(std::string_view text)
{
    double number = 0.0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Two or three numbers with commas between; empty when it is anything else.
std::vector<double> NumbersIn(std::string_view text)
{
    std::vector<double> numbers;
    while (true) {
        auto const comma = std::min(text.find(','), text.size());
        auto const number = NumberIn(text.substr(0, comma));
        if (!number) return {};
        numbers.push_back(*number);
        if (comma == text.size()) return numbers;
        text.remove_prefix(comma + 1);
    }
}

InputValue NamedButton(Input const& input, std::string_view name)
{
    auto const names = ButtonNames(input);
    for (std::size_t i = 0; i < names.size(); ++i)
        if (SameIgnoringCase(names[i], name)) return {.value = MakeRef<Number>(static_cast<double>(i))};
    if (names.empty()) return Wrong(fmt::format("{} takes a number, not {}", PlaceOf(input), Quoted(name)));
    return Wrong(
        fmt::format("{} has no choice {}; there are {}", PlaceOf(input), Quoted(name), Joined(names)));
}

InputValue CheckedNumber(Input const& input, double number)
{
    if (!std::isfinite(number)) return Wrong(fmt::format("{} takes a finite number", PlaceOf(input)));
    TagList const& attributes = input.Attributes();
    bool const isBelow = attributes.Has(Attr_MinHard) && number < attributes.GetFloat(Attr_MinHard);
    bool const isAbove = attributes.Has(Attr_MaxHard) && number > attributes.GetFloat(Attr_MaxHard);
    if (!isBelow && !isAbove) return {.value = MakeRef<Number>(number)};

    double const limit = attributes.GetFloat(isBelow ? Attr_MinHard : Attr_MaxHard);
    InputValue limited{.value = MakeRef<Number>(limit)};
    limited.warning =
        Problem{.text = fmt::format("{} = {} is {} the {} {}", PlaceOf(input), number,
                                    isBelow ? "below" : "above", isBelow ? "least" : "most", limit)};
    return limited;
}

InputValue CheckedPoint(Input const& input, std::vector<double> const& numbers)
{
    if (numbers.size() < 2 || numbers.size() > 3 ||
        !std::all_of(numbers.begin(), numbers.end(), [](double n) { return std::isfinite(n); }))
        return Wrong(fmt::format("{} takes a point: two numbers such as 0.5,0.5", PlaceOf(input)));
    return {.value = MakeRef<Point>(numbers[0], numbers[1], numbers.size() == 3 ? numbers[2] : 0.0)};
}

InputValue CheckedId(Input const& input, std::string_view name)
{
    auto const names = ButtonNames(input);
    for (std::string const& known : names)
        if (SameIgnoringCase(known, name)) return {.value = MakeRef<IdParameter>(known)};
    return Wrong(
        fmt::format("{} has no choice {}; there are {}", PlaceOf(input), Quoted(name), Joined(names)));
}

/// A file's name as it was typed is meant from the working folder, one of a flow from the flow's.
std::string TypedPath(Input const& input, std::string_view text)
{
    bool const isFile = input.Attributes().GetId(Attr_InputControl) == CLSID_InputControl_File;
    FusionDoc const* const document = input.Owner()->Document();
    if (!isFile || text.empty() || !document || document->file.empty()) return std::string(text);
    std::error_code error;
    std::string const path = std::filesystem::absolute(text, error).string();
    return error ? std::string(text) : path;
}

InputValue NeedsConnection(Input const& input)
{
    return Wrong(fmt::format("{} takes the output of another tool, not a value", PlaceOf(input)));
}

} // namespace

std::string PlaceOf(Input const& input) { return input.Owner()->Name() + "." + input.Id().Text(); }

InputValue ValueFromScript(Input const& input, ScriptVal const& given, std::string const& file)
{
    auto const read = [&]() -> InputValue {
        FuID const type = input.DataType();
        double const* const number = given.AsNumber();
        std::string const* const text = given.AsText();
        if (type == CLSID_DataType_Number) {
            if (number) return CheckedNumber(input, *number);
            if (bool const* flag = given.AsBool()) return CheckedNumber(input, *flag ? 1.0 : 0.0);
            if (text) return NamedButton(input, *text);
            return Wrong(fmt::format("{} takes a number, not {}", PlaceOf(input), given.KindName()));
        }
        if (type == CLSID_DataType_Point) {
            std::vector<double> numbers;
            if (ScriptTable const* table = given.AsTable())
                for (auto const& entry : table->entries)
                    if (entry.key.IsNil() && entry.value.AsNumber())
                        numbers.push_back(*entry.value.AsNumber());
            return CheckedPoint(input, numbers);
        }
        if (type == CLSID_DataType_Text) {
            if (text) return {.value = MakeRef<Text>(*text)};
            return Wrong(fmt::format("{} takes a text, not {}", PlaceOf(input), given.KindName()));
        }
        if (type == CLSID_DataType_FuID) {
            ScriptTable const* const table = given.AsTable(); // FuID { "XYZ" }
            ScriptVal const* const inner = table ? table->At(0) : &given;
            if (inner && inner->AsText()) return CheckedId(input, *inner->AsText());
            return Wrong(fmt::format("{} takes a name, not {}", PlaceOf(input), given.KindName()));
        }
        return NeedsConnection(input);
    };
    InputValue result = read();
    for (auto* problem : {&result.problem, &result.warning}) {
        if (!*problem) continue;
        (*problem)->file = file;
        (*problem)->line = given.line;
    }
    if (result.warning) result.warning->text += "; that is used instead";
    return result;
}

InputValue ValueFromText(Input const& input, std::string_view text)
{
    FuID const type = input.DataType();
    if (type == CLSID_DataType_Text) return {.value = MakeRef<Text>(TypedPath(input, text))};
    if (type == CLSID_DataType_FuID) return CheckedId(input, text);
    if (type == CLSID_DataType_Point) return CheckedPoint(input, NumbersIn(text));
    if (type == CLSID_DataType_LookUpTable)
        return Wrong(fmt::format("{} takes a curve, which only a flow can hold", PlaceOf(input)));
    if (type != CLSID_DataType_Number) return NeedsConnection(input);

    bool const isTrue = SameIgnoringCase(text, "true") || SameIgnoringCase(text, "on");
    bool const isFalse = SameIgnoringCase(text, "false") || SameIgnoringCase(text, "off");
    std::optional<double> number = NumberIn(text);
    if (!number && (isTrue || isFalse)) number = isTrue ? 1.0 : 0.0;
    if (!number) return NamedButton(input, text);
    InputValue result = CheckedNumber(input, *number);
    if (result.warning) return {.problem = std::move(result.warning)};
    return result;
}

} // namespace ombrelune
