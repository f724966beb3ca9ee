// A bundle of one tool whose outputs are a number and a text: what tests of the command line print.

#include "host/graph/Operator.h"
#include "host/value/Parameter.h"

namespace ombrelune {
namespace {

class Values : public Operator {
public:
    Values(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags)
    {
        divisor = AddInputTagList("Divisor", "Divisor",
                                  {{Attr_DataType, CLSID_DataType_Number}, {Attr_Default, 4.0}});
        number = AddOutputTagList("Number", "Number", {{Attr_DataType, CLSID_DataType_Number}});
        text = AddOutputTagList("Text", "Text", {{Attr_DataType, CLSID_DataType_Text}});
    }
    unsigned SizeOf() const override { return sizeof(Values); }

    /// The time over the divisor, and a text that a table has to quote. Frame 7 fails.
    void Process(Request* request) override
    {
        if (request->GetTime() == 7.0) return request->Fail(Name() + " has no frame 7");
        double const by = dynamic_cast<Number const&>(*divisor->GetValue(request, 0)).value;
        number->Set(request, new Number(request->GetTime() / by), nullptr);
        text->Set(request, new Text("a \"b\", c"), nullptr);
    }

private:
    Input* divisor;
    Output *number, *text;
};

Operator* Make(Registry const* registry, ScriptVal const& settings, TagList const& tags)
{
    return new Values(registry, settings, tags);
}

Registry const valuesRegistry(ClassRegistry(), "Test.Values",
                              {{Reg_InitFunction, Operator::RegInit},
                               {Reg_CleanupFunction, Operator::RegCleanup},
                               {Reg_NewFunction, Make},
                               {Reg_TimeVariant, true},
                               {Reg_Category, "Test"},
                               {Reg_DisplayName, "Values"}});

} // namespace
} // namespace ombrelune
