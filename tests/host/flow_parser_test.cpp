#include <gtest/gtest.h>

#include <random>

#include <fmt/format.h>

#include "host/flow/Parser.h"

namespace ombrelune {
namespace {

/// One spelling per value: texts in quotes, every value followed by @line where a table begins.
std::string Dump(ScriptVal const& value)
{
    if (value.IsNil()) return "nil";
    if (auto const* flag = value.AsBool()) return *flag ? "true" : "false";
    if (auto const* number = value.AsNumber()) return fmt::format("{}", *number);
    if (auto const* text = value.AsText()) return '"' + *text + '"';
    std::string dump = fmt::format("{}@{}{{", value.AsTable()->constructor, value.line);
    for (auto const& entry : value.AsTable()->entries) {
        if (dump.back() != '{') dump += ", ";
        if (!entry.key.IsNil()) dump += Dump(entry.key) + ":";
        dump += Dump(entry.value);
    }
    return dump + "}";
}

std::string Dump(Parsed const& parsed)
{
    if (parsed.problems.empty()) return Dump(parsed.value);
    std::string dump;
    for (Problem const& problem : parsed.problems) dump += problem.Format() + "\n";
    dump.pop_back();
    return dump;
}

struct Case {
    std::string_view text;
    std::string_view expected;
};

void Check(std::initializer_list<Case> cases)
{
    for (Case const& c : cases) EXPECT_EQ(Dump(ParseScript(c.text, "f")), c.expected) << "in: " << c.text;
}

using namespace std::string_view_literals;

TEST(Parser, TablesKeepOrderKeysAndConstructors)
{
    Check({
        {"{}", "@1{}"},
        {"\xef\xbb\xbf{ 1; 2, }", "@1{1, 2}"},
        {"{ b = 1, [\"a\"] = 2, [0] = 3, [-5] = 4, [true] = 5, 6, nil }",
         "@1{\"b\":1, \"a\":2, 0:3, -5:4, true:5, 6, nil}"},
        {"Composition { Tools = ordered() { A = X.BF_Invert { }, B = ordered { } } }",
         "Composition@1{\"Tools\":ordered@1{\"A\":X.BF_Invert@1{}, \"B\":ordered@1{}}}"},
        {"{ A . b . c\n{ true }, nilly { false } }", "@1{A.b.c@1{true}, nilly@2{false}}"},
        {"{ a = {\n{ },\n\n{ } } }", "@1{\"a\":@1{@2{}, @4{}}}"},
        {"12", "12"},
    });
}

TEST(Parser, Numbers)
{
    Check({
        {"{ 0, 007, 1.5, .5, 5., 1e3, 1E-2, 2.5e+2, -4, - 4 }",
         "@1{0, 7, 1.5, 0.5, 5, 1000, 0.01, 250, -4, -4}"},
        {"{ 0xe+1 }", "f:1: found '+', which stands only in quoted texts"},
        {"{ 0x10, 0XfF, 0x.8p1, 0xA.8, -0x1 }", "@1{16, 255, 1, 10.5, -1}"},
        {"1e-999", "0"},
        {"1e999", "f:1: the number '1e999' is out of range"},
        {"0x", "f:1: '0x' is not a number"},
        {"12cm", "f:1: '12cm' is not a number"},
        {"1..2", "f:1: '1..2' is not a number"},
        {"1e", "f:1: '1e' is not a number"},
        {"{ a = - }", "f:1: found '}'; expected a number after '-'"},
        {"{ a = -b }", "f:1: found the name 'b'; expected a number after '-'"},
        {"{ inf }", "f:1: found '}'; expected '{' after 'inf' (a text stands in quotes)"},
    });
}

TEST(Parser, TextsInEveryForm)
{
    Check({
        {R"({ "a'b", 'a"b', "" })", R"(@1{"a'b", "a"b", ""})"},
        {R"('\a\b\f\n\r\t\v\\\"\'')", "\"\a\b\f\n\r\t\v\\\"'\""},
        {R"("\65\066\0677\0")", "\"ABC7\0\""sv},
        {R"("\x41\xfF")", "\"A\xff\""},
        {"'a\\z  \n\t b\\\nc\\\r\nd'", "\"ab\nc\nd\""},
        {R"("\u{41}\u{e9}\u{20AC}\u{1F600}\u{7fffffff}")",
         "\"A\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\xfd\xbf\xbf\xbf\xbf\xbf\""},
        {"[[\na]b\r\nc]]", "\"a]b\nc\""},
        {"[==[ ]=] ]] \\n ]==]", "\" ]=] ]] \\n \""},
        {"{ [ [[k]] ] = 1 }", "@1{\"k\":1}"},
        {"\"raw \xff\0 bytes\""sv, "\"raw \xff\0 bytes\""sv},
        {"\"\\256\"", "f:1: \\256 is more than a byte; the largest is \\255"},
        {"{\n'a\\qb'", "f:2: '\\q' is no escape; write \\\\ for a backslash"},
        {"'\\x4'", "f:1: \\x takes two hexadecimal digits"},
        {"'\\u{80000000}'", "f:1: \\u takes hexadecimal digits in braces, at most \\u{7fffffff}"},
        {"'\\u{41'", "f:1: \\u takes hexadecimal digits in braces, at most \\u{7fffffff}"},
        {"{ 'a\n' }", "f:1: the text that begins here has no closing '"},
        {"\n\"abc", "f:2: the text that begins here has no closing \""},
        {"'abc\\", "f:1: the text that begins here has no closing '"},
        {"\n[=[ ]]\n\n", "f:2: the long text that begins here does not end"},
    });
}

TEST(Parser, CommentsAndLineEnds)
{
    Check({
        {"--first\n{ -- rest\n--[[ a\n b ]] { } --[==[ ]] ]==], { }\n}--", "@2{@4{}, @4{}}"},
        {"{\r\n\r\n{ }\r{ }}", "f:4: found '{'; expected ',' or '}' in the table opened in line 1"},
        {"--[[ open\n\n", "f:1: the comment that begins here does not end"},
        {"--[ not long\n1", "1"},
    });
}

TEST(Parser, MistakesNameLineFoundAndExpected)
{
    Check({
        {"", "f:1: found the end of the file; expected a value"},
        {"{\n a = 1,\n b = ", "f:3: found the end of the file; expected a value"},
        {"{\n\n a = { 1, 2\n",
         "f:4: found the end of the file; expected ',' or '}' in the table opened in line 3"},
        {"{ a = 1 b = 2 }", "f:1: found the name 'b'; expected ',' or '}' in the table opened in line 1"},
        {"{ 1,, 2 }", "f:1: found ','; expected a value"},
        {"{ a = b }", "f:1: found '}'; expected '{' after 'b' (a text stands in quotes)"},
        {"{ a.b = 1 }", "f:1: found '='; expected '{' after 'a.b' (a text stands in quotes)"},
        {"{ other() { } }", "f:1: found '('; expected '{' after 'other' (a text stands in quotes)"},
        {"{ ordered({ }) }", "f:1: found '{'; expected ')'"},
        {"{ A. { } }", "f:1: found '{'; expected a name after '.'"},
        {"{ [1 = 2 }", "f:1: found '='; expected ']' after the key"},
        {"{ [1] 2 }", "f:1: found the number 2; expected '=' after the key"},
        {"{ [nil] = 2 }", "f:1: a key cannot be nothing; a text or a number can"},
        {"{ [{ }] = 2 }", "f:1: a key cannot be a table; a text or a number can"},
        {"{ } 'more'", "f:1: found the text 'more'; expected nothing more"},
        {"{ a + b }", "f:1: found '+', which stands only in quoted texts"},
        {"{ \0 }"sv, "f:1: found byte 0x00, which stands only in quoted texts"},
        {"{ \xc3\xa9 = 1 }", "f:1: found byte 0xc3, which stands only in quoted texts"},
    });
}

TEST(Parser, KeysSetTwiceAreAllReportedAndKept)
{
    constexpr char const* text =
        "{\n a = 1,\n b = { [0] = 1, [0.0] = 2, [-0] = 3 },\n [\"a\"] = 4,\n [true] = 5, [1] = 6 }";
    Parsed const parsed = ParseScript(text, "f");
    EXPECT_EQ(Dump(parsed), "f:3: [0] is set twice, before in line 3\n"
                            "f:3: [-0] is set twice, before in line 3\n"
                            "f:4: 'a' is set twice, before in line 2");
    EXPECT_EQ(parsed.value.AsTable()->entries.size(), 5U);
}

TEST(Parser, GoesOnAfterAMissingComma)
{
    Parsed const parsed = ParseScript("{\n a = 1\n b = 2,\n c = { 3 4 }\n ['d'] = 5 }", "f");
    EXPECT_EQ(Dump(parsed), "f:3: found the name 'b'; expected ',' or '}' in the table opened in line 1\n"
                            "f:4: found the number 4; expected ',' or '}' in the table opened in line 4\n"
                            "f:5: found '['; expected ',' or '}' in the table opened in line 1");
    EXPECT_EQ(parsed.value.AsTable()->entries.size(), 4U);
    EXPECT_EQ(ParseScript("{ " + std::string(100000, '1') + " }", "f").problems.size(), 1U);
    std::string many = "{";
    for (int i = 0; i < 1000; ++i) many += " 1";
    EXPECT_LE(ParseScript(many + "}", "f").problems.size(), 101U);
}

TEST(Parser, LinesOfKeysAndValues)
{
    Parsed const parsed = ParseScript("{\nkey\n=\nX\n{ }, [\n'k'] =\n-1 }", "f");
    auto const& entries = parsed.value.AsTable()->entries;
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].key.line, 2);
    EXPECT_EQ(entries[0].value.line, 4);
    EXPECT_EQ(entries[1].key.line, 6);
    EXPECT_EQ(entries[1].value.line, 7);
}

TEST(Parser, NestingIsBounded)
{
    auto const nested = [](std::size_t depth) { return std::string(depth, '{') + std::string(depth, '}'); };
    EXPECT_TRUE(ParseScript(nested(kMaxDepth), "f").problems.empty());
    EXPECT_EQ(Dump(ParseScript(nested(kMaxDepth + 1), "f")), "f:1: tables are nested deeper than 200");
    std::string keys;
    for (int i = 0; i < 100000; ++i) keys += "{[";
    EXPECT_EQ(ParseScript(keys, "f").problems.size(), 1U);
    EXPECT_EQ(Dump(ParseScript(std::string(kMaxTextBytes + 1, ' '), "f")), "f: is larger than 64 MiB");
}

TEST(Parser, SurvivesDamagedTexts)
{
    std::string const good =
        "Composition { Tools = ordered() { A = X.Y { Inputs = { V = Input { Value = -0x1p3, } } },"
        " ['s'] = \"\\u{41}\\z \\065\", [0] = [=[long]=], --[[c]] true, nil; false } }";
    ASSERT_TRUE(ParseScript(good, "f").problems.empty());
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_EQ(ParseScript(std::string_view(good).substr(0, length), "f").problems.size(), 1U) << length;

    std::mt19937 random(20240611);
    for (int round = 0; round < 20000; ++round) {
        std::string damaged = good;
        for (int i = 0; i < 3; ++i) damaged[random() % damaged.size()] = static_cast<char>(random());
        Parsed const parsed = ParseScript(damaged, "f");
        for (Problem const& problem : parsed.problems) EXPECT_GE(problem.line, 1);
    }
}

TEST(Quoted, IsOneShortLineOfValidText)
{
    EXPECT_EQ(Quoted("caf\xc3\xa9"), "'caf\xc3\xa9'");
    EXPECT_EQ(Quoted("a\n\xff\xc3"), "'a\?\?\?'");
    EXPECT_EQ(Quoted("\xed\xa0\x80\xc0\xaf"), "'\?\?\?\?\?'"); // a surrogate and an overlong slash
    EXPECT_EQ(Quoted(std::string(50, 'x')), "'" + std::string(40, 'x') + "...'");
}

} // namespace
} // namespace ombrelune
