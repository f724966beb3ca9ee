#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "apps/ombrelune/Commands.h"
#include "host/builtin/Builtin.h"

namespace ombrelune::app {

ExitStatus Tools(ToolsOptions const& options)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (Registry const* tool : Operator::AllOperators()) {
        bool const isBuiltIn = tool->Category() == kBuiltinCategory;
        if (isBuiltIn != options.builtIn) continue;
        if (tool->Category().find(options.category) == std::string::npos) continue;
        if (!options.json) {
            Print("{:<28} {:<28} {}\n", ClassName(*tool), tool->Category(), tool->Description());
            continue;
        }
        list.push_back({{"class", ClassName(*tool)},
                        {"id", tool->Id().Text()},
                        {"name", tool->DisplayName()},
                        {"shortName", tool->ShortName()},
                        {"category", tool->Category()},
                        {"description", tool->Description()}});
    }
    if (options.json) Print("{}\n", list.dump(2));
    return kDone;
}

} // namespace ombrelune::app
