#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "host/graph/FusionDoc.h"
#include "host/render/Renderer.h"
#include "shapes/KShapeParameter.h"
#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {

using Settings = std::vector<std::pair<char const*, double>>;

/// The paths of a group: shapes of a list between bars, lists between double bars.
inline std::string TextOf(KShapeGroup const& group)
{
    std::string text;
    for (int i = 0; i < group.GetCount(); ++i) {
        if (i > 0) text += " || ";
        for (KShape const* shape : group.Get(i)->Each<KShape>())
            text += (shape == group.Get(i)->First() ? "" : " | ") + TextOf(*shape);
    }
    return text;
}

/// A document in which tools are set and joined as by an artist: values in the units of the inputs.
class Flow {
public:
    Operator* Add(std::string const& tool, Settings const& settings = {})
    {
        Registry const* registry = ClassRegistry().Find("Brassfennel.BF_" + tool);
        EXPECT_TRUE(registry) << tool;
        Operator* op = document_.AddOperator(*registry, tool + std::to_string(++count_));
        for (auto const& [id, value] : settings) {
            Input* input = op->FindInput(id);
            EXPECT_TRUE(input) << tool << " has no input " << id;
            if (input) input->SetSource(MakeRef<Number>(value).Get(), kDefaultTime, nullptr);
        }
        return op;
    }
    /// A tool whose main inputs come from others.
    Operator* Then(std::string const& tool, std::vector<Operator*> const& sources,
                   Settings const& settings = {})
    {
        Operator* op = Add(tool, settings);
        for (std::size_t i = 0; i < sources.size(); ++i)
            op->MainInput(static_cast<int>(i) + 1)->ConnectTo(sources[i]->FindOutput("Output"));
        return op;
    }
    /// Shapes from a text of paths with bars between them.
    Operator* Paths(std::string const& text)
    {
        Operator* op = Add("TestPaths");
        op->FindInput("Paths")->SetSource(MakeRef<Text>(text).Get(), kDefaultTime, nullptr);
        return op;
    }

    std::unique_ptr<KShapeGroup> Result(Operator* op)
    {
        Renderer renderer(document_, {});
        RenderResult const result = renderer.Evaluate(*op->FindOutput("Output"), 0.0);
        EXPECT_FALSE(result.problem);
        auto const* shapes = dynamic_cast<KShapeParameter const*>(result.value.Get());
        return std::unique_ptr<KShapeGroup>(shapes ? shapes->Group()->CopyOf() : new KShapeGroup);
    }

private:
    FusionDoc document_;
    int count_ = 0;
};

/// One tool after fixed paths.
inline std::unique_ptr<KShapeGroup> After(std::string const& paths, std::string const& tool,
                                          Settings const& settings = {})
{
    Flow flow;
    return flow.Result(flow.Then(tool, {flow.Paths(paths)}, settings));
}
inline std::unique_ptr<KShapeGroup> Made(std::string const& tool, Settings const& settings = {})
{
    Flow flow;
    return flow.Result(flow.Add(tool, settings));
}

inline KShape const& FirstShape(KShapeGroup const& group)
{
    return *static_cast<KShape const*>(group.Get(0)->First());
}

} // namespace ombrelune::test
