#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {
namespace {

ToolUnderTest Formula(char const* text) { return ToolUnderTest("BF_TextFormula").Set("Text"_id, text); }

TEST(TextFormula, NumbersArePrintedAsToldByTheirFormat)
{
    struct {
        float value;
        int precision, digits;
        bool leadingZeros, spaceIfPositive;
        char const* text;
    } const cases[] = {
        {3.14159F, 2, 3, true, true, " 003.14"},
        {-3.14159F, 2, 3, true, true, "-003.14"},
        {-3.14159F, 2, 3, false, true, "  -3.14"}, // the sign behind the pad
        {3.14159F, 2, 3, false, false, "  3.14"},
        {9.996F, 2, 2, true, false, "10.00"}, // as printed it has two digits
        {0.5F, 0, 2, true, false, "00"},      // printed as 0, counted as 1: one digit either way
        {9.5F, 0, 2, true, false, "10"},
        {8.5F, 0, 2, true, false, "08"}, // to even
        {1234.5F, 1, 3, true, false, "1234.5"},
        {15000.0F, 6, 6, true, false, "015000.000000"},
        {0.0F, 2, 1, true, true, " 0.00"},
    };
    for (auto const& each : cases) {
        ToolUnderTest tool = Formula("n1");
        tool.Set("NuIn"_id, each.value).Set("TePN"_id, each.precision).Set("TeDN"_id, each.digits);
        tool.Set("TeZN"_id, each.leadingZeros).Set("TeNM"_id, each.spaceIfPositive);
        EXPECT_EQ(tool.TextAt(0.0F), each.text);
    }
}

TEST(TextFormula, TokensAreReplacedWhereverTheyStand)
{
    ToolUnderTest tool = Formula("sun1 n9 p3y,p3x t1t2 t0 t");
    tool.Set("NuIn"_id, 2.0F).Set("NuIn"_id + 8, -7.0F).Set("PoIn"_id + 2, KVector2(0.25F, 0.75F));
    tool.Set("TeIn"_id, "[t2 n1]").Set("TeIn"_id + 1, "two");
    tool.Set("TePN"_id, 0).Set("TeNM"_id, false).Set("TePM"_id, false).Set("TePP"_id, 1);
    // Halves go to the even digit: 0.75 is 0.8, 0.25 is 0.2. What t1 brings in stays as it is.
    EXPECT_EQ(tool.TextAt(0.0F), "su2 -7 0.8,0.2 [t2 n1]two t0 t");
}

TEST(TextWrite, KeepsAsManyCharactersAsAreWritten)
{
    struct {
        char const* text;
        float write;
        bool cursor, prefix;
        char const* result;
    } const cases[] = {
        {"0123456789", 0.0F, true, false, "_"},
        {"0123456789", 0.0F, false, false, ""},
        {"0123456789", 0.5F, false, false, "01234"}, // 0.5 x 10.5 is 5.25
        {"0123456789", 0.96F, true, true, "//0123456789_"},
        {"0123456789", 1.0F, true, false, "0123456789_"},
        {"", 1.0F, true, true, "//_"},
        {"äö€𝄞x", 0.7F, false, false, "äö€"},        // 0.7 x 5.5 is 3.85
        {"a\xff\xc3z", 0.6F, false, false, "a\xff"}, // stray bytes count one each: 0.6 x 4.5 is 2.7
    };
    for (auto const& each : cases) {
        ToolUnderTest tool("BF_TextWrite");
        tool.Set("Text"_id, each.text).Set("TxWr"_id, each.write);
        tool.Set("CuSh"_id, each.cursor).Set("PrSh"_id, each.prefix);
        EXPECT_EQ(tool.TextAt(0.0F), each.result) << each.text;
    }
}

/// The number for a time and seed, straight from the C library.
float Drawn(double time, unsigned seed)
{
    auto const mixed = static_cast<unsigned>(seed + time * 10.0);
    srandom(mixed);
    for (unsigned i = 0; i < mixed % 97; ++i) random();
    return static_cast<float>(static_cast<double>(random()) / 2147483648.0);
}

TEST(TextJuggle, ExchangesWhatTheGeneratorSays)
{
    std::string const text = "The quick brown\nfox\tjumps  over";
    for (bool keepSpaces : {false, true}) {
        for (float amount : {0.0F, 0.1F, 1.0F}) {
            float const time = 3.5F;
            std::string expected = text;
            auto const n = static_cast<float>(text.size());
            for (int r = 0; r < static_cast<int>(2.0F * amount * n); ++r) {
                auto const place = [&](int seed) {
                    return std::min(static_cast<std::size_t>(Drawn(time, static_cast<unsigned>(seed)) * n),
                                    text.size() - 1);
                };
                char &a = expected[place(r * 7)], &b = expected[place(101 + r * 7)];
                std::string const fixed = keepSpaces ? "\n\r\t " : "\n\r\t";
                if (fixed.find(a) == std::string::npos && fixed.find(b) == std::string::npos) std::swap(a, b);
            }
            ToolUnderTest tool("BF_TextJuggle");
            tool.Set("Text"_id, text).Set("JuCh"_id, amount).Set("JuKS"_id, keepSpaces);
            EXPECT_EQ(tool.TextAt(time), expected);
            EXPECT_EQ(tool.TextAt(time), expected) << "the same time gives the same order";
            EXPECT_EQ(tool.TextAt(time + 1.0F) == expected, amount == 0.0F);
        }
    }
}

TEST(TextJuggle, LeavesLinesAloneAndCharactersWhole)
{
    auto const juggled = [](char const* text) {
        return ToolUnderTest("BF_TextJuggle").Set("Text"_id, text).Set("JuCh"_id, 1.0F).TextAt(7.0F);
    };
    EXPECT_EQ(juggled(""), "");
    EXPECT_EQ(juggled("\n\n\n"), "\n\n\n");
    std::string const result = juggled("äöüß€𝄞");
    ASSERT_EQ(result.size(), 15U);
    for (char const* character : {"ä", "ö", "ü", "ß", "€", "𝄞"})
        EXPECT_NE(result.find(character), std::string::npos);
    EXPECT_NE(result, "äöüß€𝄞");
}

ToolUnderTest FromText(char const* text, int format)
{
    return ToolUnderTest("BF_TextFromFile").Set("Sour"_id, 1).Set("Text"_id, text).Set("FiFo"_id, format);
}

TEST(TextFromFile, EachLineAFrame)
{
    ToolUnderTest tool = FromText("a\nb\nc", 0).Set("Hold"_id, 2);
    char const* const once[] = {"a", "a", "b", "b", "c", "c", "", ""};
    for (int frame = 0; frame < 8; ++frame) EXPECT_EQ(tool.TextAt(static_cast<float>(frame)), once[frame]);
    tool.Set("Loop"_id, true);
    EXPECT_EQ(tool.TextAt(6.9F), "a");
    EXPECT_EQ(tool.TextAt(9.0F), "b");
    EXPECT_EQ(FromText("", 0).Set("Loop"_id, true).TextAt(3.0F), "");
}

TEST(TextFromFile, StartFrameAndText)
{
    struct {
        char const* text;
        float frame;
        char const* result;
    } const cases[] = {
        {"0 First\n10 Second", -1.0F, ""},
        {"0 First\n10 Second", 0.0F, "First"},
        {"0 First\n10 Second", 9.9F, "First"},
        {"0 First\n10 Second", 10.0F, "Second"},
        {"0 First\n10 Second", 500.0F, "Second"},
        {"5 Late", 4.0F, ""},
        {"  3\tTab first", 3.0F, "Tab first"},
        {"0 a\n4\n8 b", 5.0F, "a"},      // a line of a number alone brings no text
        {"0 a\nword b\n6 c", 3.0F, "b"}, // no number reads as 0
        {"0 a\n\n6 c", 3.0F, "a"},
        {"0 one\\ntwo", 0.0F, "one\r\ntwo"},
    };
    for (auto const& each : cases)
        EXPECT_EQ(FromText(each.text, 1).TextAt(each.frame), each.result) << each.text;
}

TEST(TextFromFile, OneLineAndWhatAnEmptyLineDoes)
{
    auto const line = [](char const* text, int n) {
        return FromText(text, 2).Set("Line"_id, n).TextAt(0.0F);
    };
    EXPECT_EQ(line("a\nb\nc", 1), "b");
    EXPECT_EQ(line("a\nb\nc", 3), "");
    // An empty line begins the next one, and there are fewer lines than were counted.
    EXPECT_EQ(line("a\n\nb\nc", 1), "\nb");
    EXPECT_EQ(line("a\n\nb\nc", 2), "c");
    EXPECT_EQ(line("a\n\nb\nc", 3), "c");
}

TEST(TextFromFile, ReadsTheFileAnewForEveryFrame)
{
    std::string const path =
        (std::filesystem::temp_directory_path() / ("ombrelune_text_" + std::to_string(getpid()))).string();
    ToolUnderTest tool("BF_TextFromFile");
    tool.Set("FiNa"_id, path).Set("FiFo"_id, 2).Set("Line"_id, 1);
    EXPECT_EQ(tool.TextAt(0.0F), "");
    std::ofstream(path, std::ios::binary) << std::string("one\n\xff\0two\n", 10);
    EXPECT_EQ(tool.TextAt(0.0F), std::string("\xff\0two", 5));
    std::ofstream(path) << "one\nother\n";
    EXPECT_EQ(tool.TextAt(0.0F), "other");
    std::filesystem::remove(path);
    tool.Set("FiNa"_id, std::filesystem::temp_directory_path().string());
    EXPECT_EQ(tool.TextAt(0.0F), "") << "a folder";
}

} // namespace
} // namespace ombrelune::test
