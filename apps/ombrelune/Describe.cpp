#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "apps/ombrelune/ToolJson.h"

namespace ombrelune::app {

namespace {

void PrintText(Registry const& registry, Json const& tool)
{
    Print("{}  ({}, {})\n{}\n", ClassName(registry), registry.DisplayName(), registry.Category(),
          registry.Description());
    std::string page;
    for (Json const& input : tool["inputs"]) {
        if (input["page"] != page) {
            page = input["page"];
            Print("\n{}\n", page);
        }
        Json const& value = input["default"];
        Print("  {:<34} {:<9} {:<10} {}\n", input["id"].get<std::string>(), input["kind"].get<std::string>(),
              value.is_null() ? "" : value.dump(), RangeText(input));
    }
    if (!tool["colors"].empty())
        Print("\nColors, set together as in --set {0}=#ff8800, {0}=#ff8800cc or {0}=1,0.5,0,1\n",
              tool["colors"][0]["id"].get<std::string>());
    for (Json const& color : tool["colors"]) {
        std::string channels;
        for (Json const& id : color["inputs"]) channels += " " + id.get<std::string>();
        Print("  {:<34}{}\n", color["id"].get<std::string>(), channels);
    }
    Print("\nOutputs\n");
    for (Json const& output : tool["outputs"])
        Print("  {:<34} {}\n", output["id"].get<std::string>(), output["type"].get<std::string>());
}

} // namespace

ExitStatus Describe(DescribeOptions const& options)
{
    Registry const* const registry = FindTool(options.tool);
    if (!registry) return kWrongInput;
    Json const tool = ToolJson(*registry);
    if (options.json) Print("{}\n", tool.dump(2));
    else PrintText(*registry, tool);
    return kDone;
}

} // namespace ombrelune::app
