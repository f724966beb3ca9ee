#include <atomic>
#include <thread>

#include "host/flow/Expression.h"
#include "tests/host/flow_helpers.h"

namespace ombrelune {
namespace {

/// A flow around one input: X of P, a number; At of Q, a point; Filename of L, a text; ProcessMode of B, a
/// list.
std::string FlowWith(std::string const& input, std::string const& expression)
{
    auto const given = [&](char const* name) {
        return input == name ? fmt::format("Input {{ Expression = [==[{}]==] }}", expression) : "nil";
    };
    auto const entry = [&](char const* name, char const* key) {
        std::string const value = given(name);
        return value == "nil" ? std::string() : fmt::format("{} = {},", key, value);
    };
    return fmt::format(R"({{ GlobalRange = {{ -3, 96 }}, RenderRange = {{ 0, 48 }},
        FrameFormat = {{ Width = 640, Height = 360, Rate = 25 }},
        Tools = {{
        Ramp = BezierSpline {{ KeyFrames = {{ [0] = {{ 0, Flags = {{ Linear = true }} }}, [100] = {{ 50 }} }} }},
        Path = XYPath {{ Inputs = {{ X = Input {{ SourceOp = "Ramp" }}, Y = 0.25 }} }},
        Move = XYPath {{ Inputs = {{ Y = Input {{ Expression = "Path.Value.X + time" }} }} }},
        L = Loader {{ Inputs = {{ {} }} }},
        B = Background {{ Inputs = {{ Red = 0.5, {} {} }} }},
        P = XYPath {{ Inputs = {{ Y = 7, {} }} }},
    }} }})",
                       input == "L.Filename" ? entry("L.Filename", "Filename") : "Filename = 'in.png'",
                       entry("B.ProcessMode", "ProcessMode"), entry("B.Width", "Width"), entry("P.X", "X"));
}

struct Case {
    char const* expression;
    char const* expected;
};

TEST(Expression, ComputesNumbers)
{
    Case const cases[] = {
        {"time", "10"},
        {"0.5 + sin(time / 10)", "1.341470985"}, // sin 1
        {"math.floor(-2.5) + max(1, 4, 2) + abs(-pi) - pi", "1"},
        {"time // 3 + time % 3 + 2 ^ 3", "12"},
        {"comp.FrameFormat.Width / comp.FrameFormat.Height", "1.777777778"},
        {"comp.GlobalStart + comp.GlobalEnd + comp.RenderStart + comp.RenderEnd + comp.FrameFormat.Rate",
         "166"},
        {"B.Red * 4", "2"},
        {"Ramp.Value", "5"},
        {"Ramp:GetValue(\"Value\", time - 4)", "3"},
        {"Path.X + Path['Y'] + P.Y", "12.25"},
        {"Path.Value.X - Path:GetValue(\"Value\", 2).X", "4"},
        {"Move.Y + Move:GetValue('Y', 0)", "15"},
        {"time > 5 and 3 or 4", "3"},
        {"time == 10", "1"}, // true
        {"L.Filename == 'in.png'", "1"},
        {"#('x'):rep(12) + ('abc'):byte(2) + tonumber('7')", "117"},
        {": local sum = 0; for i = 1, 4 do sum = sum + i end return sum", "10"},
        {":\nlocal function twice(x) return 2 * x end\nreturn twice(Ramp.Value) -- Ghost.X", "10"},
        {": local t = { Ramp = 3 } return t.Ramp", "3"},
    };
    for (Case const& c : cases) {
        ReadDocument flow(FlowWith("P.X", c.expression));
        EXPECT_EQ(flow.At("P.X", 10), c.expected) << c.expression;
    }
}

TEST(Expression, ResultBecomesWhatTheInputTakes)
{
    struct {
        char const* input;
        char const* expression;
        char const* expected;
    } const cases[] = {
        {"L.Filename", "'in.' .. time .. '.png'", "in.10.png"},
        {"L.Filename", "string.format('%s %04d', ('Mask'):lower(), time)", "mask 0010"},
        {"L.Filename", "time / 4", "2.5"},
        {"B.ProcessMode", "'fields'", "1"},
        {"B.ProcessMode", "time", "1"}, // limited to the last button
        {"B.Width", "-time", "1"},      // limited to the least width
        {"B.Width", "time * 1e9", "65536"},
        {"B.ProcessMode", "'Frames'",
         "f:8: B.ProcessMode has no choice 'Frames'; there are 'Full frames', 'Fields'"},
        {"P.X", "'five'", "f:9: P.X takes a number, not 'five'"},
        {"P.X", "Point(1, 2)", "f:9: P.X takes a number, not a table"},
        {"P.X", "nil", "f:9: P.X: expression: gives nothing"},
        {"P.X", "max", "f:9: P.X: expression: gives a function"},
        {"P.X", "0 / 0", "f:9: P.X takes a finite number"},
        {"L.Filename", "true", "f:7: L.Filename takes a text, not a truth value"},
    };
    for (auto const& c : cases) {
        ReadDocument flow(FlowWith(c.input, c.expression));
        EXPECT_EQ(flow.At(c.input, 10), c.expected) << c.expression;
    }
}

TEST(Expression, PointsTakeTwoNumbers)
{
    // No operator of the host takes a point: one that hands it on.
    class PointUser : public Operator {
    public:
        using Operator::Operator;
    };
    FusionDoc document;
    Registry const registry(ClassRegistry(), "PointUser", {});
    PointUser op(&registry, {}, {{Op_Document, &document}, {Op_Name, "U"}});
    Input& input = *op.AddInputTagList("At", "At", {{Attr_DataType, CLSID_DataType_Point}});
    class NoTools : public ToolNames {
        std::vector<std::string> All() const override { return {}; }
        bool Has(std::string const&) const override { return false; }
        Readable Member(std::string const&, std::string const&) const override { return ""; }
    };
    ReadDocument scope("{ Tools = { } }");
    Case const cases[] = {
        {"{ time, 0.5 }", "3,0.5"},
        {"Point(0.25, time)", "0.25,3"},
        {"{ Y = 2, X = 1 }", "1,2"},
        {"{ 1 }", "f:1: U.At takes a point: two numbers such as 0.5,0.5"},
        {"5", "f:1: U.At takes a point: two numbers such as 0.5,0.5"},
        {"Point(1, 'a')", "f:1: U.At: expression: bad argument #2 to 'Point' (number expected, got string)"},
    };
    for (Case const& c : cases) {
        auto const read = CompileExpression(input, c.expression, NoTools(), "f", 1);
        ASSERT_TRUE(read.expression) << c.expression;
        RenderResult const result = read.expression->Evaluate(scope, 3);
        auto const* point = dynamic_cast<Point const*>(result.value.Get());
        EXPECT_EQ(point ? fmt::format("{},{}", point->x, point->y) : result.problem->Format(), c.expected);
    }
}

TEST(Expression, MistakesAreToldWhenTheFlowIsRead)
{
    Case const cases[] = {
        {"", ""}, // gives nothing, at run time
        {"1 +", "unexpected symbol near <eof>"},
        {"x = 1", "<eof> expected near '='"},
        {": return 1 +\n+ 2", "line 2: unexpected symbol near '+'"},
        {"\x1bLua", "unexpected symbol near '<\\27>'"},
        {"Rmap.Value", "there is no tool or function 'Rmap'; did you mean 'Ramp'?"},
        {"sine(3)", "there is no tool or function 'sine'; did you mean 'sin'?"},
        {"maxx(3)", "there is no tool or function 'maxx'; did you mean 'max'?"},
        {"Ramp.Valeu", "no input or output 'Valeu' on Ramp; did you mean 'Value'?"},
        {"Path:GetValue('Z', 1)", "no input or output 'Z' on Path; did you mean 'X'?"},
        {"L.Output", "L.Output is of type Image; expressions read numbers, points and texts"},
        {"Ramp", "write Ramp.Input or Ramp:GetValue(\"Input\", time)"},
        {"Ramp['Va' .. 'lue']", "write Ramp.Input or Ramp:GetValue(\"Input\", time)"},
        {"Ramp:GetValue('Val' .. 'ue', 1)", "write Ramp.Input or Ramp:GetValue(\"Input\", time)"},
        {": local Ramp = 5 return Ramp", "'Ramp' is a tool; give the local another name"},
        {"_ENV.time", "'_ENV' is not known here"},
    };
    for (Case const& c : cases) {
        std::string const told = Told(ReadFlowText(FlowWith("P.X", c.expression), "f"));
        std::string const expected = *c.expected ? fmt::format("f:9: P.X: expression: {}\n", c.expected) : "";
        EXPECT_TRUE(told.starts_with(expected)) << c.expression << "\n" << told;
        EXPECT_EQ(told.empty(), expected.empty()) << told;
    }
    EXPECT_EQ(Told(ReadFlowText("{ Tools = { A = Saver { Inputs = { Input = Input { Expression = '1' },\n"
                                "Filename = Input { Expression = 5 } } } } }",
                                "f")),
              "f:1: A.Input: expression: this input takes the output of another tool\n"
              "f:2: A.Filename: Expression is a text\n");
}

TEST(Expression, NothingOfTheMachineIsInReach)
{
    for (char const* name :
         {"os",           "io",           "require", "load",    "loadstring", "dofile",
          "loadfile",     "print",        "debug",   "package", "coroutine",  "collectgarbage",
          "setmetatable", "getmetatable", "rawset",  "rawget",  "rawequal",   "rawlen",
          "pairs",        "next",         "pcall",   "xpcall",  "error",      "random",
          "randomseed",   "table",        "utf8",    "_G",      "warn"}) {
        std::string const told = Told(ReadFlowText(FlowWith("P.X", name), "f"));
        EXPECT_NE(told.find(fmt::format("there is no tool or function '{}'", name)), std::string::npos)
            << told;
    }
}

TEST(Expression, MistakesOfARunAreTold)
{
    Case const cases[] = {
        {"math.random()", "attempt to call a nil value (field 'random')"},
        {"('x'):find('x')", "attempt to call a nil value (method 'find')"},
        {"('x'):rep(1e12)", "the repeated text is too long"},
        {"(''):rep(1e12) .. nil", "attempt to concatenate a nil value"}, // and no long wait
        {"#('x'):rep(2 ^ 15):rep(3)", "the repeated text is too long"},
        {"tostring({})", "bad argument #1 to 'tostring' (a number or a text expected)"},
        {"('%s'):format({})", "bad argument #1 to 'format' (a number or a text expected)"},
        {"('%-10p'):format('x')", "'%p' is not known here"},
        {"1 // 0", "attempt to divide by zero"},
        {": while true do end", "takes more than 1000000 steps; is there a loop without an end?"},
        {": local function f() return 1 + f() end return f()", "needs more memory than 1024 KiB"},
        {": local s = 'x' while true do s = s .. s end", "makes a text longer than 64 KiB"},
        {": local t = {} for i = 1, 1e6 do t[i] = i end", "needs more memory than 1024 KiB"},
        {": local s = ('1'):rep(6e4) while true do tonumber(s, 36) end", "takes more than 2 seconds"},
        {": local s, n = (' '):rep(6e4) .. 1 while true do n = s + 1 end", "takes more than 2 seconds"},
        {": local s = ('x'):rep(6e4) while true do s:upper() end", "needs more memory than 1024 KiB"},
        {": x = 1 return x", "there is no tool or function 'x'"},
        {": time = 1", "'time' cannot be set; write 'local time'"},
        {": comp.FrameFormat.Width = 1", "'Width' cannot be set"},
        {": math.pi = 3", "'pi' cannot be set"},
        {": string.rep = nil", "'rep' cannot be set"},
        {": Ramp.Value = 3", "'Value' cannot be set"},
        {"Ramp:GetValue('Value', 0 / 0)", "the time of GetValue is not a finite number"},
        {"Ramp.Value.X", "attempt to index a number value (field 'Value')"},
    };
    for (Case const& c : cases) {
        FlowReading reading = ReadFlowText(FlowWith("P.X", c.expression), "f");
        std::string told = Told(reading);
        if (told.empty()) {
            ReadDocument flow(FlowWith("P.X", c.expression));
            told = flow.At("P.X", 1);
            EXPECT_EQ(flow.At("P.X", 1), told) << "a run left something behind";
        }
        EXPECT_TRUE(told.starts_with("f:9: P.X: expression: ")) << told;
        EXPECT_NE(told.find(c.expected), std::string::npos) << c.expression << "\n" << told;
    }
}

TEST(Expression, ProblemsOfWhatItReadsKeepTheirPlace)
{
    ReadDocument flow(R"({ Tools = {
        A = XYPath { Inputs = { X = Input { Expression = "nil .. 'x'" } } },
        B = XYPath { Inputs = { X = Input { Expression = "A.X + 1" }, Y = Input { Expression = "A.Value.X" } } } } })");
    std::string const expected = "f:2: A.X: expression: attempt to concatenate a nil value";
    EXPECT_EQ(flow.At("B.X", 0), expected);
    EXPECT_EQ(flow.At("B.Y", 0), expected);
}

TEST(Expression, CyclesAreRefused)
{
    struct {
        char const* tools;
        char const* told;
    } const cases[] = {
        {"A = XYPath { Inputs = { X = Input { Expression = 'A.X' } } }",
         "f:1: A.X needs its own value through the expression of A.X\n"},
        {"A = XYPath { Inputs = { X = Input { Expression = 'A.Value.X' } } }",
         "f:1: A feeds itself through A.X\n"},
        {"A = XYPath { Inputs = { X = Input { Expression = 'B.Y' } } },\n"
         "B = XYPath { Inputs = { Y = Input { Expression = 'A:GetValue(\"X\", time - 1)' } } }",
         "f:1: A.X needs its own value through the expression of B.Y\n"},
        {"A = XYPath { Inputs = { X = Input { Expression = 'B.Value.X' } } },\n"
         "B = XYPath { Inputs = { Y = Input { Expression = 'A.X' } } }",
         "f:1: A.X needs its own value through the expression of B.Y\n"},
        // An input beside it, and the inputs of a tool further down, are no cycles.
        {"A = XYPath { Inputs = { X = Input { Expression = 'A.Y' } } }", ""},
        {"A = XYPath { Inputs = { X = Input { Expression = 'B.Y' } } },\n"
         "B = XYPath { Inputs = { X = Input { Expression = 'A.Value.X' } } }",
         ""},
    };
    for (auto const& c : cases)
        EXPECT_EQ(Told(ReadFlowText(fmt::format("{{ Tools = {{ {} }} }}", c.tools), "f")), c.told) << c.tools;
}

TEST(Expression, LongChainsEndWithAProblem)
{
    std::string tools = "A0 = XYPath { Inputs = { X = 1 } },";
    for (int i = 1; i <= 250; ++i)
        tools += fmt::format("A{} = XYPath {{ Inputs = {{ X = Input {{ Expression = 'A{}.X + 1' }} }} }},", i,
                             i - 1);
    ReadDocument flow("{ Tools = { " + tools + " } }");
    Renderer renderer(flow.Document(), {});
    auto const ask = [&](char const* name) {
        return renderer.Evaluate(*flow.Document().FindOperator(name)->FindOutput("Value"), 0);
    };
    EXPECT_EQ(dynamic_cast<Point const&>(*ask("A200").value).x, 201);
    ASSERT_TRUE(ask("A250").problem);
    EXPECT_EQ(ask("A250").problem->Format(), "f:1: A50.X: more than 200 expressions read one another");
}

TEST(Expression, ThreadsGetTheSameValues)
{
    ReadDocument flow(R"flow({ Tools = {
        A = XYPath { Inputs = { X = Input { Expression = "B.X + B:GetValue('X', time - 1)" },
                                Y = Input { Expression = "A:GetValue('X', time + 1) * 2" } } },
        B = XYPath { Inputs = { X = Input { Expression = ": local t = Point(time, 1) return t.X * t.X" } } } } })flow");
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int k = 0; k < 4; ++k)
        threads.emplace_back([&, k] {
            for (int t = k; t < 400; ++t) {
                // (t + 1)^2 + t^2, doubled
                std::string const expected = fmt::format("{}", 2 * ((t + 1) * (t + 1) + t * t));
                if (flow.At("A.Y", t) != expected) ++wrong;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace ombrelune
