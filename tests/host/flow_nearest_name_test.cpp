#include <gtest/gtest.h>

#include "host/value/NearestName.h"

namespace ombrelune {
namespace {

TEST(NearestName, FindsWhatWasMeantAndNothingFarther)
{
    std::vector<std::string> const names = {"Type", "Tape", "Threshold", "BF_Invert", "Softness", "type2"};
    struct {
        char const* typed;
        char const* meant;
    } const cases[] = {
        {"Typ", "Type"},            // a letter is missing
        {"tYPE", "Type"},           // another case
        {"Tyep", "Type"},           // neighbours swapped: one error, not two
        {"Treshhold", "Threshold"}, // two errors in nine letters
        {"BF_Invrt", "BF_Invert"},
        {"Tupe", "Type"}, // as near as Tape: the first wins
        {"Soft", ""},     // four errors
        {"T", ""},        // three errors
        {"", ""},
        {"Quite another", ""},
    };
    for (auto const& c : cases) EXPECT_EQ(NearestName(c.typed, names), c.meant) << c.typed;
    EXPECT_EQ(NearestName(std::string(100000, 'x'), {std::string(100000, 'x')}), "");
}

} // namespace
} // namespace ombrelune
