#include "apps/ombrelune/ToolJson.h"

#include <utility>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/flow/ColorGroups.h"

namespace ombrelune::app {

namespace {

/// What a user calls the control.
std::string KindOf(Input const& input)
{
    static std::pair<FuID, char const*> const kinds[] = {
        {CLSID_InputControl_Button, "button"},       {CLSID_InputControl_Checkbox, "checkbox"},
        {CLSID_InputControl_Color, "color"},         {CLSID_InputControl_Combo, "list"},
        {CLSID_InputControl_File, "file"},           {CLSID_InputControl_Label, "label"},
        {CLSID_InputControl_MultiButton, "buttons"}, {CLSID_InputControl_MultiButtonID, "buttons"},
        {CLSID_InputControl_Nest, "group"},          {CLSID_InputControl_Offset, "point"},
        {CLSID_InputControl_Range, "range"},         {CLSID_InputControl_Screw, "screw"},
        {CLSID_InputControl_Slider, "slider"},       {CLSID_InputControl_Spline, "curve"},
        {CLSID_InputControl_TextEdit, "text"},
    };
    FuID const control = input.Attributes().GetId(Attr_InputControl);
    for (auto const& [id, name] : kinds)
        if (id == control) return name;
    if (input.DataType() == CLSID_DataType_Image) return "image";
    return input.DataType() == CLSID_DataType_Mask ? "mask" : "value";
}

Json DefaultOf(Input const& input)
{
    Ref<Parameter> const value = input.Default();
    if (auto const* number = dynamic_cast<Number const*>(value.Get())) {
        // Defaults are declared in single precision: 0.1 and not 0.10000000149011612.
        return Json::parse(NumberText(number->value));
    }
    if (auto const* point = dynamic_cast<Point const*>(value.Get())) return Json::array({point->x, point->y});
    if (auto const* text = dynamic_cast<Text const*>(value.Get())) return text->value;
    if (auto const* id = dynamic_cast<IdParameter const*>(value.Get())) return id->value.Text();
    return nullptr;
}

/// The range's ends, null where there is none.
Json RangeOf(Input const& input, std::uint32_t low, std::uint32_t high)
{
    auto const end = [&](std::uint32_t key) -> Json {
        if (!input.Attributes().Has(key)) return nullptr;
        return Json::parse(NumberText(input.Attributes().GetFloat(key)));
    };
    return {{"min", end(low)}, {"max", end(high)}};
}

Json EntriesOf(Input const& input)
{
    Json entries = Json::array();
    for (TagValue const& entry : input.Attributes().All(Attr_ListEntry))
        entries.push_back(std::get<std::string>(entry));
    return entries;
}

Json InputJson(Input const& input)
{
    Json json = {{"label", input.Label()},
                 {"id", input.Id().Text()},
                 {"kind", KindOf(input)},
                 {"type", input.DataType().Text()},
                 {"default", DefaultOf(input)},
                 {"hard", RangeOf(input, Attr_MinHard, Attr_MaxHard)},
                 {"soft", RangeOf(input, Attr_MinSoft, Attr_MaxSoft)},
                 {"page", input.Page()},
                 {"visible", input.IsVisible()}};
    if (Json entries = EntriesOf(input); !entries.empty()) json["entries"] = std::move(entries);
    if (!input.Nest().empty()) json["group"] = input.Nest();
    if (input.Attributes().GetBool(Attr_IntegerValue)) json["integer"] = true;
    if (input.MainNumber() > 0) json["main"] = input.MainNumber();
    if (input.IsImage()) json["required"] = input.IsRequired();
    return json;
}

} // namespace

Json ToolJson(Registry const& registry)
{
    FusionDoc document;
    Operator const& op = *document.AddOperator(registry, "Tool1");
    Json tool = {{"class", ClassName(registry)},
                 {"id", registry.Id().Text()},
                 {"name", registry.DisplayName()},
                 {"category", registry.Category()},
                 {"description", registry.Description()},
                 {"inputs", Json::array()},
                 {"colors", Json::array()},
                 {"outputs", Json::array()}};
    for (auto const& input : op.Inputs()) tool["inputs"].push_back(InputJson(*input));
    for (ColorGroup const& group : ColorGroups(op)) {
        Json channels = Json::array();
        for (Input const* channel : group.channels) channels.push_back(channel->Id().Text());
        tool["colors"].push_back({{"id", group.name}, {"inputs", std::move(channels)}});
    }
    for (auto const& output : op.Outputs())
        tool["outputs"].push_back(
            {{"label", output->Name()}, {"id", output->Id().Text()}, {"type", output->DataType().Text()}});
    return tool;
}

std::string RangeText(Json const& input)
{
    auto const end = [&](char const* name) -> std::string {
        if (!input["hard"][name].is_null()) return input["hard"][name].dump();
        return input["soft"][name].is_null() ? "" : input["soft"][name].dump() + "~";
    };
    if (input.contains("entries") && input["kind"] != "file") {
        std::string text;
        for (auto const& entry : input["entries"])
            text += (text.empty() ? "" : " | ") + entry.get<std::string>();
        return text;
    }
    std::string const low = end("min"), high = end("max");
    return low.empty() && high.empty() ? "" : low + " to " + high;
}

} // namespace ombrelune::app
