// What tools declare, through the bridge and the reader of values.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "host/flow/InputValue.h"
#include "host/graph/FusionDoc.h"
#include "host/graph/Registry.h"

namespace ombrelune {
namespace {

TEST(Declarations, TheLeastAndTheMostOfEachInputAreTaken)
{
    FusionDoc document;
    int checked = 0;
    for (Registry const* registry : ClassRegistry().All()) {
        if (!registry->NewFunction() || !registry->Id().Text().starts_with("Brassfennel.")) continue;
        Operator& tool = *document.AddOperator(*registry, fmt::format("Tool{}", checked));
        for (auto const& input : tool.Inputs())
            for (std::uint32_t const limit : {Attr_MinHard, Attr_MaxHard}) {
                if (input->DataType() != FuID(CLSID_DataType_Number) || !input->Attributes().Has(limit))
                    continue;
                // As people write it: 0.1 and not 0.100000001.
                auto const number = static_cast<float>(input->Attributes().GetFloat(limit));
                InputValue const read = ValueFromText(*input, fmt::format("{}", number));
                EXPECT_TRUE(read.value) << registry->Id().Text() << "." << input->Id().Text();
                EXPECT_FALSE(read.warning) << (read.warning ? read.warning->text : "");
                ++checked;
            }
    }
    EXPECT_GT(checked, 1000);
}

TEST(Declarations, AButtonSetsTheEndsOfARange)
{
    FusionDoc document;
    Operator& tool =
        *document.AddOperator(*ClassRegistry().Find(std::string("Brassfennel.BF_ReplaceColor")), "Tool");
    auto const number = [&](char const* id) {
        auto const* value = dynamic_cast<Number const*>(tool.FindInput(id)->Value().Get());
        return value ? value->value : -1.0;
    };
    auto const set = [&](char const* id, double value) {
        ASSERT_TRUE(tool.FindInput(id)) << id;
        tool.FindInput(id)->SetSource(MakeRef<Number>(value).Get(), 0.0, nullptr);
    };
    set("SourceColorGreen", 0.5);
    set("SelectionWidthOnSettingWithButtonAbove", 0.125);
    set("SetSelectionAroundSourceColor", 1.0);
    EXPECT_EQ(number("GreenLow"), 0.375);
    EXPECT_EQ(number("GreenHigh"), 0.625);
    set("SetSelectionToFullRange", 1.0);
    EXPECT_EQ(number("GreenLow"), 0.0);
    EXPECT_EQ(number("GreenHigh"), 1.0);
}

} // namespace
} // namespace ombrelune
