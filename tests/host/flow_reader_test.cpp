#include "tests/host/flow_helpers.h"

namespace ombrelune {
namespace {

TEST(FlowReader, ReadsEverySpelling)
{
    for (char const* text : {
             R"(Composition { CurrentTime = 3, Version = "Editor 9", ActiveTool = "A", Tools = ordered() {
                A = XYPath { NameSet = true, CtrlWZoom = false, Inputs = { X = Input { Value = 0.25 } },
                             ViewInfo = OperatorInfo { Pos = { 110, 16.5 } } },
                B = XYPath { Inputs = { X = Input { SourceOp = "S", Source = "Value" } } },
                S = BezierSpline { SplineColor = { Red = 255 }, KeyFrames = { [0] = { 0.5 } } } } })",
             R"({ ["CurrentTime"] = 3; ["Tools"] = { ["A"] = XYPath { ["Inputs"] = { ["X"] = 0.25 } },
                ['B'] = XYPath { Inputs = { X = Input { SourceOp = [[S]] } } },
                S = BezierSpline { KeyFrames = { [0] = 0.5 } } } })",
         }) {
        ReadDocument flow(text);
        EXPECT_EQ(flow.Document().currentTime, 3);
        EXPECT_EQ(flow.At("A.Value", 0), "0.25,0.5");
        EXPECT_EQ(flow.At("B.Value", 0), "0.5,0.5");
        EXPECT_EQ(Told(flow.Reading()), "");
    }
}

TEST(FlowReader, TellsEveryMistakeByLine)
{
    struct {
        char const* text;
        char const* told;
    } const cases[] = {
        {"5", "f:1: a flow is a table with Tools, not a number\n"},
        {"nil", "f:1: a flow is a table with Tools, not nothing\n"},
        {"Other { Tools = { } }", "f:1: a flow starts with Composition, not 'Other'\n"},
        {"{\nTool = { } }",
         "f:1: the flow has no table Tools\n"
         "warning: f:2: the flow: the field 'Tool' changes nothing; did you mean 'Tools'?\n"},
        {"{ FrameFormat = { Width = 0,\nHieght = 5 },\nRenderRange = { 3, 1 },\nTools = {\n"
         "A = XYPath { Input = { X = 1 } },\nB = XYPath { Inputs = { X = Input { Valeu = 1 },\nZ = 1,\n"
         "Y = Input { SourceOp = \"C\", Source = \"Valu\" } } }\nC = XYPaht { },\nD = { },\n"
         "E = XYPath { Inputs = { X = Input { SourceOp = \"A\" },\nY = Input { SourceOp = \"F\" } } } } }",
         "f:1: Width = 0 is not in 1 to 65536\n"
         "f:3: RenderRange is a table of a first and a last frame\n"
         "f:6: B.X has neither a Value, a SourceOp nor an Expression\n"
         "f:7: no input 'Z' on B (XYPath); did you mean 'X'?\n"
         "f:9: found the name 'C'; expected ',' or '}' in the table opened in line 4\n"
         "f:10: a tool is written Name = Class { ... }\n"
         "f:11: E.X takes a value of type Number, and A.Value gives Point\n"
         "f:12: E.Y: there is no tool 'F' in the flow; did you mean 'A'?\n"
         "warning: f:2: FrameFormat: the field 'Hieght' changes nothing; did you mean 'Height'?\n"
         "warning: f:5: A: the field 'Input' changes nothing; did you mean 'Inputs'?\n"
         "warning: f:6: B.X: the field 'Valeu' changes nothing; did you mean 'Value'?\n"},
        {"{ Tools = {\nA = XYPath { },\nA = XYPath { } } }", "f:3: 'A' is set twice, before in line 2\n"},
        {"{ Tools = { A = Background { Inputs = { Width = 99999,\nHeight = Input { SourceOp = \"S\", "
         "Expression = \"3\" } } },\nS = BezierSpline { KeyFrames = { [0] = 1 } } } }",
         "warning: f:1: A.Width = 99999 is above the most 65536; that is used instead\n"
         "warning: f:2: A.Height has a SourceOp and an Expression; the expression is used\n"},
    };
    for (auto const& c : cases) EXPECT_EQ(Told(ReadFlowText(c.text, "f")), c.told) << c.text;
}

TEST(FlowReader, ComputedNumbersStayInTheHardRange)
{
    ReadDocument flow(
        R"({ Tools = { B = Background { Inputs = { Width = Input { SourceOp = "S" }, Height = 2 } },
        S = BezierSpline { KeyFrames = { [0] = { -9 }, [1] = 1e12 } } } })");
    Renderer renderer(flow.Document(), {});
    EXPECT_FALSE(renderer.Evaluate(*flow.Document().FindOperator("B")->FindOutput("Output"), 0).problem);
    Input& width = *flow.Document().FindOperator("B")->FindInput("Width");
    EXPECT_EQ(dynamic_cast<Number const&>(*width.State().Limited(MakeRef<Number>(1e12))).value, 65536);
}

char const* const kGroups = R"({ Tools = ordered() {
    A = XYPath { Inputs = { X = 1, Y = Input { SourceOp = "A2" , Source = "Flat" } } },
    A2 = GroupOperator {
        Inputs = ordered() {
            Main = InstanceInput { SourceOp = "A", Source = "X", Name = "Width", Value = 5 },
            Deep = InstanceInput { SourceOp = "Inner", Source = "Far", Expression = "A.X + time" },
            Soft = InstanceInput { SourceOp = "B", Source = "X", Default = 0.125, Page = "Controls" },
        },
        Outputs = { Out = InstanceOutput { SourceOp = "A", Source = "Value" },
                    Flat = InstanceOutput { SourceOp = "Inner", Source = "Number" } },
        Tools = ordered() {
            A = XYPath { Inputs = { X = 2, Y = 3 } },
            B = XYPath { Inputs = { Y = Input { Expression = "A.X + C.X" } } },
            Inner = MacroOperator {
                Inputs = { Far = InstanceInput { SourceOp = "A", Source = "Y" } },
                Outputs = { Number = InstanceOutput { SourceOp = "S", Source = "Value" } },
                Tools = { S = BezierSpline { KeyFrames = { [0] = 40, [10] = 50 } }, A = XYPath { } },
                ViewInfo = GroupInfo { Pos = { 0, 0 } },
            },
        },
    },
    C = XYPath { Inputs = { X = Input { Expression = "A2.Main + A2.Out.X + A2.Flat" },
                            Y = Input { Expression = "A_2.Y + B.X" } } },
} })";

TEST(Groups, OpenIntoTheirTools)
{
    ReadDocument flow(kGroups);
    std::string names;
    for (auto const& op : flow.Document().Operators()) names += op->Name() + " ";
    // The outer A keeps its name, then the one of the group, then the one within it.
    EXPECT_EQ(names, "A A_1 B S A_2 C ");
    struct {
        char const* member;
        char const* value;
    } const values[] = {
        {"A.Value", "1,44"},  // Flat is the spline two groups down
        {"A_1.Value", "5,3"}, // what the group says wins over 2
        {"A_2.Y", "5"},       // the group's expression means the A around it: 1 + 4
        {"B.X", "0.125"},     // the default of the group
        {"B.Y", "59"},        // the A of its own group is 5, C.X is 54
        {"C.X", "54"},        // 5 + 5 + 44
        {"C.Y", "5.125"},     // inner tools by their names in the document
    };
    for (auto const& v : values) EXPECT_EQ(flow.At(v.member, 4), v.value) << v.member;
}

TEST(Groups, MistakesNameTheGroup)
{
    struct {
        char const* group;
        char const* told;
    } const cases[] = {
        {"", "f:1: the group 'G' has no table Tools\n"},
        {"Tools = { }, PassThrough = true", "f:1: G: a group cannot be passed through; its tools can\n"},
        {"Tools = { A = XYPath { } }, Inputs = { M = Input { Value = 3 } }",
         "f:1: G: what a group shows is written Name = InstanceInput { SourceOp = \"Tool\", Source = "
         "\"Input\" }\n"},
        {"Tools = { A = XYPath { } },\nInputs = { M = InstanceInput { SourceOp = 'B', Source = 'X' },\n"
         "N = InstanceInput { SourceOp = 'A', Source = 'XX' } },\n"
         "Outputs = { O = InstanceOutput { SourceOp = 'A', Source = 'Vlaue' } }",
         "f:2: G.M: there is no tool 'B' in the group; did you mean 'A'?\n"
         "f:3: G.N: no input 'XX' on A (XYPath); did you mean 'X'?\n"
         "f:4: G.O: no output 'Vlaue' on A; did you mean 'Value'?\n"},
        {"Tools = { A = Nix { } },\nOutputs = { O = InstanceOutput { SourceOp = 'A', Source = 'Value' } }",
         "f:1: A: there is no tool 'Nix'\n"},
        {"Tools = { A = XYPath { Inputs = { X = Input { SourceOp = 'G', Source = 'P' } } } },\n"
         "Outputs = { O = InstanceOutput { SourceOp = 'A', Source = 'Value' } }",
         "f:1: A.X: no output 'P' on G; did you mean 'O'?\n"},
        {"Tools = { S = BezierSpline { KeyFrames = { [0] = 1 } },\nA = XYPath { Inputs = { X = Input { "
         "Expression = 'G.O.X' } } } },\nOutputs = { O = InstanceOutput { SourceOp = 'A', Source = 'Value' } "
         "}",
         "f:2: A feeds itself through A.X\n"},
    };
    for (auto const& c : cases)
        EXPECT_EQ(
            Told(ReadFlowText(fmt::format("{{ Tools = {{ G = GroupOperator {{ {} }} }} }}", c.group), "f")),
            c.told)
            << c.group;
}

} // namespace
} // namespace ombrelune
