// BezierSpline, LUTBezier and XYPath: curves that animate numbers, feed look-up tables and move points.

#include "host/builtin/BuiltinOperator.h"
#include "host/flow/KeyFrames.h"

namespace ombrelune {

namespace {

/// The curve of a tool's settings. What is wrong with it was told when the flow was read.
BezierCurve CurveOf(ScriptVal const& settings) { return ReadKeyFrames(settings, {}, {}).curve; }

Output* AddValue(Operator& op, FuID type)
{
    return op.AddOutputTagList("Value", "Value", {{Attr_DataType, type}, {Attr_MainNumber, 1}});
}

/// A number that follows a curve over time.
class BezierSpline : public Operator {
public:
    BezierSpline(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags), curve(CurveOf(settings)),
          value(AddValue(*this, CLSID_DataType_Number))
    {}
    unsigned SizeOf() const override { return sizeof(BezierSpline); }

    void Process(Request* request) override
    {
        value->Set(request, new Number(curve.Evaluate(request->GetTime())), nullptr);
    }

private:
    BezierCurve const curve;
    Output* const value;
};

/// A curve over 0 to 1 that tools look values up in; the same at all times.
class LUTBezier : public Operator {
public:
    LUTBezier(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags), curve(CurveOf(settings)),
          value(AddValue(*this, CLSID_DataType_LookUpTable))
    {}
    unsigned SizeOf() const override { return sizeof(LUTBezier); }

    void Process(Request* request) override { value->Set(request, new LookUpTable(curve), nullptr); }

private:
    BezierCurve const curve;
    Output* const value;
};

/// A point whose two numbers are inputs, each to be animated by itself.
class XYPath : public BuiltinOperator<Operator> {
public:
    XYPath(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : BuiltinOperator(registry, settings, tags), value(AddValue(*this, CLSID_DataType_Point))
    {
        for (int axis = 0; axis < 2; ++axis) {
            char const* const name = axis == 0 ? "X" : "Y";
            place[axis] = AddNumber(name, name, CLSID_InputControl_Screw, 0.5,
                                    {{Attr_MinSoft, 0.0}, {Attr_MaxSoft, 1.0}});
        }
    }
    unsigned SizeOf() const override { return sizeof(XYPath); }

    void Process(Request* request) override
    {
        auto const* x = dynamic_cast<Number const*>(place[0]->GetValue(request, 0));
        auto const* y = dynamic_cast<Number const*>(place[1]->GetValue(request, 0));
        if (!x || !y) return request->Fail(Name() + (x ? ".Y" : ".X") + " got no number");
        value->Set(request, new Point(x->value, y->value), nullptr);
    }

private:
    Output* const value;
    Input* place[2];
};

Registry const splineRegistry(ClassRegistry(), "BezierSpline",
                              BuiltinTags<BezierSpline>("BezierSpline", "A number that follows a curve",
                                                        Varies::kWithTime));
Registry const lutRegistry(ClassRegistry(), "LUTBezier",
                           BuiltinTags<LUTBezier>("LUTBezier", "A curve to look values up in"));
Registry const pathRegistry(ClassRegistry(), "XYPath",
                            BuiltinTags<XYPath>("XYPath", "A point whose two numbers are animated"));

} // namespace

} // namespace ombrelune
