#include <filesystem>
#include <set>

#include <gtest/gtest.h>

#include "framework/Registration.h"

namespace ombrelune {
namespace {

TEST(Catalogue, EverySourceOfAToolRegistersOne)
{
    // A linker drops what nothing calls: a tool that is missing here was not linked whole.
    for (auto const& entry : std::filesystem::recursive_directory_iterator(OMBRELUNE_SOURCE_DIR "/tools")) {
        if (entry.path().extension() != ".cpp") continue;
        std::string const name = entry.path().stem().string();
        EXPECT_TRUE(ClassRegistry().Find("Brassfennel.BF_" + name) || ClassRegistry().Find(name)) << name;
    }
}

TEST(Catalogue, IdentifiersAndNamesAreUnique)
{
    std::set<std::string> ids, names, shortNames;
    for (Registry const* tool : Operator::AllOperators()) {
        if (!tool->Id().Text().starts_with("Brassfennel.")) continue;
        EXPECT_TRUE(ids.insert(tool->Id().Text()).second) << tool->Id().Text();
        EXPECT_TRUE(names.insert(tool->DisplayName()).second) << tool->DisplayName();
        EXPECT_TRUE(shortNames.insert(tool->ShortName()).second) << tool->ShortName();
        EXPECT_TRUE(tool->Category().starts_with("Ombrelune")) << tool->Id().Text();
    }
    EXPECT_EQ(ids.size(), EffectFactories().size());
}

} // namespace
} // namespace ombrelune
