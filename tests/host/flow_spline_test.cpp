#include <random>

#include "host/builtin/Builtin.h"
#include "host/value/BezierCurve.h"
#include "tests/host/flow_helpers.h"

namespace ombrelune {
namespace {

/// Point of a cubic by repeated halving of its polygon's sides at t.
std::pair<double, double> OnCubic(std::array<std::pair<double, double>, 4> p, double t)
{
    for (std::size_t count = 3; count > 0; --count)
        for (std::size_t i = 0; i < count; ++i)
            p[i] = {p[i].first + t * (p[i + 1].first - p[i].first),
                    p[i].second + t * (p[i + 1].second - p[i].second)};
    return p[0];
}

TEST(BezierCurve, PassesThroughThePointsOfItsCubics)
{
    std::mt19937 random(4);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (int round = 0; round < 500; ++round) {
        double const x0 = 200.0 * unit(random) - 100.0, x3 = x0 + 0.01 + 50.0 * unit(random);
        // Every fifth handle lies as far as it may, which makes time stand still somewhere.
        double const h1 = round % 5 ? x0 + (x3 - x0) * unit(random) : x3;
        double const h2 = round % 5 ? x0 + (x3 - x0) * unit(random) : x0;
        double const y[] = {unit(random), 3.0 * unit(random) - 1.0, 3.0 * unit(random) - 1.0, unit(random)};
        BezierCurve const curve{{{.x = x0, .y = y[0], .rightX = h1, .rightY = y[1]},
                                 {.x = x3, .y = y[3], .leftX = h2, .leftY = y[2]}}};
        for (double t : {0.0, 0.1, 0.35, 0.5, 0.77, 1.0}) {
            auto const [px, py] = OnCubic({{{x0, y[0]}, {h1, y[1]}, {h2, y[2]}, {x3, y[3]}}}, t);
            // Where time stands still the value is as steep as a cube root: compare loosely there.
            EXPECT_NEAR(curve.Evaluate(px), py, round % 5 ? 1e-6 : 1e-3) << "round " << round << " t " << t;
        }
    }
}

TEST(BezierCurve, HandlesThatTurnTimeBackAreLimited)
{
    auto const curve = [](double right, double left) {
        return BezierCurve{
            {{.x = 10, .y = 0, .rightX = right, .rightY = 0}, {.x = 20, .y = 1, .leftX = left, .leftY = 1}}};
    };
    // Too far in both directions is as far as may be.
    for (double x = 9.5; x < 21.0; x += 0.37) {
        EXPECT_EQ(curve(500, -90).Evaluate(x), curve(20, 10).Evaluate(x));
        EXPECT_EQ(curve(-7, 33).Evaluate(x), curve(10, 20).Evaluate(x));
    }
    double before = -1.0;
    for (double x = 10.0; x <= 20.0; x += 0.01) {
        double const value = curve(500, -90).Evaluate(x);
        EXPECT_GE(value, before);
        before = value;
    }
    EXPECT_DOUBLE_EQ(curve(500, -90).Evaluate(15), 0.5); // by symmetry
}

TEST(Spline, FollowsItsKeys)
{
    ReadDocument flow(R"({ Tools = {
        Eased = BezierSpline { KeyFrames = {
            [24] = { 1, LH = { 16, 1 } }, [0] = { 0, RH = { 8, 0 } } } },
        Straight = BezierSpline { KeyFrames = {
            [-2.5] = { 3, RH = { 0, 90 }, Flags = { Linear = true } }, [1.5] = { 5, LH = { 0, 90 } }, [2] = 1 } },
        Plain = BezierSpline { KeyFrames = { [0] = 2, [9] = { 8 } } },
        One = BezierSpline { KeyFrames = { [7] = { 0.25 } } },
        Place = XYPath { Inputs = { X = Input { SourceOp = "Plain", Source = "Value" }, Y = 0.75 } },
    } })");
    // Handles of a third of the time: x(t) = 24 t, y(t) = 3 t^2 - 2 t^3.
    EXPECT_EQ(flow.At("Eased.Value", 6), "0.15625");
    EXPECT_EQ(flow.At("Eased.Value", 12), "0.5");
    EXPECT_EQ(flow.At("Eased.Value", -100), "0");
    EXPECT_EQ(flow.At("Eased.Value", 24), "1");
    EXPECT_EQ(flow.At("Eased.Value", 1e9), "1");
    EXPECT_EQ(flow.At("Straight.Value", -0.5), "4");
    EXPECT_EQ(flow.At("Straight.Value", 1.5), "5");
    EXPECT_EQ(flow.At("Plain.Value", 3), "4"); // missing handles lie on the straight line
    EXPECT_EQ(flow.At("One.Value", -1), "0.25");
    EXPECT_EQ(flow.At("Place.Value", 4.5), "5,0.75");
}

/// An operator that takes a curve.
class CurveUser : public Operator {
public:
    CurveUser(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags)
    {
        AddInputTagList("Curve", "Curve", {{Attr_DataType, CLSID_DataType_LookUpTable}});
    }
};

TEST(Spline, CurvesForLookUpTablesAreToolsOrValues)
{
    Registry const registry(ClassRegistry(), "CurveUser", BuiltinTags<CurveUser>("CurveUser", ""));
    ReadDocument flow(R"({ Tools = {
        Lut = LUTBezier { KeyFrames = { [0] = 1, [1] = 0 } },
        A = CurveUser { Inputs = { Curve = Input { SourceOp = "Lut", Source = "Value" } } },
        B = CurveUser { Inputs = { Curve = Input { Value = LUTBezier { KeyFrames = { [0] = 0.5, [0.5] = 1 } } } } },
        C = CurveUser { Inputs = { Curve = { KeyFrames = { [0] = 0.25 } } } },
        D = CurveUser { },
    } })");
    auto const table = [&](char const* name) {
        RenderResult const result = flow.InputAt(*flow.Document().FindOperator(name)->FindInput("Curve"), 0);
        auto const& curve = dynamic_cast<LookUpTable const&>(*result.value);
        return curve.MakeTable({{Lut_EntryBytes, 2}, {Lut_Low, 0.0}, {Lut_High, 1.0}, {Lut_Count, 5}});
    };
    using Table = std::vector<std::uint16_t>;
    EXPECT_EQ(table("A"), (Table{65535, 49151, 32768, 16384, 0}));
    EXPECT_EQ(table("B"), (Table{32768, 49151, 65535, 65535, 65535}));
    EXPECT_EQ(table("C"), (Table{16384, 16384, 16384, 16384, 16384}));
    EXPECT_EQ(table("D"), (Table{0, 16384, 32768, 49151, 65535}));
    EXPECT_EQ(Told(ReadFlowText("{ Tools = { A = CurveUser { Inputs = { Curve = 5,\n} } } }", "f")),
              "f:1: A.Curve: KeyFrames = { [0] = { 1 } } gives a curve\n");
}

TEST(Spline, MistakesNameKeyAndLine)
{
    struct {
        char const* keys;
        char const* told;
    } const cases[] = {
        {"", "f:1: S: KeyFrames = { [0] = { 1 } } gives a curve\n"},
        {"KeyFrames = { }", "f:1: S: KeyFrames = { [0] = { 1 } } gives a curve\n"},
        {"KeyFrames = { [0] = { },\n[1] = 'a', x = { 1 } }", "f:1: S: the key at 0 has no number\n"
                                                             "f:2: S: the key at 1 has no number\n"
                                                             "f:2: S: a key is written [time] = { value }\n"},
        {"KeyFrames = { [0] = { 1,\nLH = 3,\nRH = { 1 } } }",
         "f:2: S: LH is a table of a time and a value\n"
         "f:3: S: RH is a table of a time and a value\n"},
        {"KeyFrames = { [0] = { 1,\nFlags = { Linear = false, StepIn = true } } }",
         "warning: f:2: S: the flag 'StepIn' of the key at 0 is not known and changes nothing; there is "
         "'Linear'\n"},
        {"KeyFrame = { [0] = 1 },\nKeyFrames = { [0] = 1, [0.0] = 2 }",
         "f:2: [0] is set twice, before in line 2\n"
         "warning: f:1: S: the field 'KeyFrame' changes nothing; did you mean 'KeyFrames'?\n"},
    };
    for (auto const& c : cases)
        EXPECT_EQ(
            Told(ReadFlowText(fmt::format("{{ Tools = {{ S = BezierSpline {{ {} }} }} }}", c.keys), "f")),
            c.told)
            << c.keys;
}

} // namespace
} // namespace ombrelune
