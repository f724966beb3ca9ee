// The bundle as a host sees it.

#include <dlfcn.h>

#include <filesystem>

#include <gtest/gtest.h>

#include "host/graph/Operator.h"

namespace ombrelune {
namespace {

TEST(Bundle, BringsItsToolsAndTakesThemAway)
{
    std::string const file = std::filesystem::path(OMBRELUNE_PROGRAM).parent_path() / "Ombrelune.plugin";
    std::size_t const before = Operator::AllOperators().size();
    void* const bundle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(bundle) << dlerror();
    EXPECT_TRUE(ClassRegistry().Find("Brassfennel.BF_Invert"));
    EXPECT_GE(Operator::AllOperators().size(), before + 60);

    EXPECT_EQ(dlclose(bundle), 0);
    EXPECT_EQ(Operator::AllOperators().size(), before);
    EXPECT_FALSE(ClassRegistry().Find("Brassfennel.BF_Invert"));
    EXPECT_FALSE(dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD)) << "the code is still there";
}

} // namespace
} // namespace ombrelune
