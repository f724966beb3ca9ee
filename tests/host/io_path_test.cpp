#include <gtest/gtest.h>

#include "host/io/PicturePath.h"

namespace ombrelune {
namespace {

TEST(PicturePath, FieldsTakeTheFrame)
{
    struct {
        char const* path;
        int frame;
        char const* expanded;
    } const cases[] = {
        {"a.####.png", 7, "a.0007.png"},
        {"a.####.png", -7, "a.-007.png"},
        {"a.####.png", 12345, "a.12345.png"},
        {"a.##.png", 0, "a.00.png"},
        {"a.%04d.png", -7, "a.-007.png"},
        {"a%d", 42, "a42"},
        {"##/%03d.png", 5, "05/005.png"},
        {"100%/a%s.png", 5, "100%/a%s.png"},
        {"take #2/a.##", 3, "take #2/a.03"},
        {"~/a.png", 1, "~/a.png"},
        {"50%4d.%", 1, "50%4d.%"},
        {"", 1, ""},
    };
    for (auto const& c : cases) EXPECT_EQ(PathOfFrame(c.path, c.frame), c.expanded) << c.path;
}

TEST(PicturePath, PatternsAreKnownAndMistakesNamed)
{
    for (char const* pattern : {"a.##", "%d", "a.%04d.png", "#1/##"})
        EXPECT_TRUE(IsPattern(pattern)) << pattern;
    for (char const* plain : {"a.png", "a#.png", "50%.png", "%5d", "%"})
        EXPECT_FALSE(IsPattern(plain)) << plain;

    EXPECT_EQ(CheckPattern("out/a.#.png")->Format(),
              "out/a.#.png: one '#' alone is no frame number; write '####' or '%04d'");
    EXPECT_FALSE(CheckPattern("take #2/a.####.png"));
    EXPECT_FALSE(CheckPattern("a.png"));
    EXPECT_EQ(CheckPattern("%0999999999999999999999d")->text, "a frame number has at most 20 digits");
    EXPECT_EQ(CheckPattern(std::string(21, '#'))->text, "a frame number has at most 20 digits");
    EXPECT_EQ(PathOfFrame("%0999999999999999999999d", 1), "00000000000000000001");
}

} // namespace
} // namespace ombrelune
