#include <bit>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include <fmt/format.h>

#include "host/flow/Lexer.h"
#include "host/flow/Writer.h"

namespace ombrelune {
namespace {

std::string Formatted(std::string_view text)
{
    Parsed const parsed = ParseScript(text, "f");
    return parsed.problems.empty() ? WriteScript(parsed) : parsed.problems[0].Format();
}

/// Everything that a value means, without places and comments.
void Describe(ScriptVal const& value, std::string& out)
{
    if (auto const* number = value.AsNumber()) {
        out += fmt::format("{:016x} ", std::bit_cast<std::uint64_t>(*number));
    } else if (auto const* text = value.AsText()) {
        out += fmt::format("{}:{} ", text->size(), *text);
    } else if (auto const* table = value.AsTable()) {
        out += table->constructor + "{ ";
        for (auto const& entry : table->entries) {
            Describe(entry.key, out);
            out += "= ";
            Describe(entry.value, out);
        }
        out += "} ";
    } else {
        out += value.IsNil() ? "nil " : *value.AsBool() ? "true " : "false ";
    }
}
std::string Described(Parsed const& parsed)
{
    std::string out;
    Describe(parsed.value, out);
    return out;
}

/// All comments, in any order that they may have been moved to.
std::multiset<std::string> CommentsOf(std::string_view text)
{
    std::multiset<std::string> comments;
    Lexer lexer(text);
    for (Token token = lexer.Next();; token = lexer.Next()) {
        for (auto const& comment : token.comments) comments.insert(comment.text);
        if (token.kind == Token::kEnd || token.kind == Token::kBad) return comments;
    }
}

void ExpectFaithful(std::string const& text)
{
    Parsed const parsed = ParseScript(text, "f");
    ASSERT_TRUE(parsed.problems.empty()) << text << parsed.problems[0].Format();
    std::string const written = WriteScript(parsed);
    Parsed const again = ParseScript(written, "f");
    ASSERT_TRUE(again.problems.empty()) << text << "\n" << written << again.problems[0].Format();
    EXPECT_EQ(Described(again), Described(parsed)) << text << "\n" << written;
    EXPECT_EQ(WriteScript(again), written) << text;
    EXPECT_EQ(CommentsOf(written), CommentsOf(text)) << text << "\n" << written;
}

TEST(Writer, LaysOutTables)
{
    std::string const wide(120, 'x');
    struct {
        std::string text, expected;
    } const cases[] = {
        {"12", "12\n"},
        {"X.Y{}", "X.Y { }\n"},
        {"{1;2,a=3}", "{\n  1,\n  2,\n  a = 3,\n}\n"}, // the outermost table is always open
        {"{a={1;2,{},b='c'}}", "{\n  a = { 1, 2, { }, b = \"c\" },\n}\n"},
        {"{Tools=ordered(){A=Loader{}}}", "{\n  Tools = ordered() {\n    A = Loader { },\n  },\n}\n"},
        {"{a={'" + wide + "'}}", "{\n  a = {\n    \"" + wide + "\",\n  },\n}\n"},
        {"{['a']=1,['b c']=2,['end']=3,[4]=5,[-0.5]=6,[true]=7}",
         "{\n  a = 1,\n  [\"b c\"] = 2,\n  [\"end\"] = 3,\n  [4] = 5,\n  [-0.5] = 6,\n  [true] = 7,\n}\n"},
        {"{0x10,1.50,1e3,.1,100000000000000000000,-0.0,nil,false}",
         "{\n  16,\n  1.5,\n  1000,\n  0.1,\n  1e+20,\n  -0,\n  nil,\n  false,\n}\n"},
        {"{'\\65\\'\"\\0011\\n\xc3\xa9',[[\na\\\nb]]}",
         "{\n  \"A'\\\"\\0011\\n\xc3\xa9\",\n  \"a\\\\\\nb\",\n}\n"},
    };
    for (auto const& c : cases) EXPECT_EQ(Formatted(c.text), c.expected) << c.text;
    // 110 columns with the comma are one line, 111 are not.
    std::string const fits = "{ a = { '" + std::string(110 - 2 - 4 - 2 - 1 - 1 - 2 - 1, 'x') + "' } }";
    EXPECT_EQ(std::count(fits.begin(), fits.end(), '\n'), 0);
    std::string const one = Formatted(fits);
    EXPECT_EQ(std::count(one.begin(), one.end(), '\n'), 3);
    EXPECT_EQ(one.find('\n', 2) - 2, 110U);
    std::string longer = fits;
    longer.insert(longer.find('x'), "x");
    std::string const broken = Formatted(longer);
    EXPECT_EQ(std::count(broken.begin(), broken.end(), '\n'), 5);
}

TEST(Writer, KeepsCommentsAndEmptyLines)
{
    EXPECT_EQ(
        Formatted("\n\n-- top  \n\n\nX { -- brace\n\n\n  -- first\n a = 1 -- one\n , b = { 2, --[[two]] 3 "
                  "},\n\n\n\n"
                  " c = 3, --[[ three\n ]] d = --[[in]] 4, --[[x]] -- four\n\n -- last\n}-- after\n\n-- end"),
        R"(-- top

X { -- brace
  -- first
  a = 1, -- one
  b = {
    2,
    --[[two]]
    3,
  },

  c = 3,
  --[[ three
 ]]
  --[[in]]
  d = 4, --[[x]] -- four

  -- last
}
-- after

-- end
)");
}

TEST(Writer, ReadsBackAsTheSameAndIsWrittenTheSame)
{
    for (char const* text : {
             "{ a --[[1]] . --[[2]] b --[[3]] { --[[4]] } --[[5]] , --[[6]] }",
             "{ - -- 1\n 4 -- 2\n}",
             "-- 1\n{ -- 2\n--[[3]] --[==[4\n]==] x = -- 5\n1 --[[6]] ; --[[7\n]] y = 2 -- 8\n -- 9\n}",
             "{ ordered --[[1]] ( -- 2\n ) -- 3\n { } }",
             "X -- 1\n{ --[[2\n]] }",
             "{ [ --[[1]] 'k' ] --[[2]] = --[[3]] { } }",
             "{ {{{{ -- deep\n }}}} }",
             "{ --[=[1]=] } --[[2]] --[[3]]",
             "{ a = 1, --[[1\n]] --[[2]]\n b = 2 }",
             "{ 1, --[\n --\n --[=x\n }",
         })
        ExpectFaithful(text);

    // Flows made of random pieces, each of which may be followed by a comment or an empty line.
    std::mt19937 random(77);
    auto const pick = [&](std::vector<char const*> const& list) { return list[random() % list.size()]; };
    std::vector<char const*> const gaps = {" ", "\n", "\n\n\n", " -- c\n", "--[[ b ]]", "--[=[\n m]=]\n",
                                           "",  "",   ""};
    std::vector<char const*> const names = {"", "Input ", "A.B", "ordered()"};
    std::vector<char const*> const values = {"1", "-2.5e-7", "'t\\n'", "true", "[[l]]", "0x1p-4"};
    auto const table = [&](auto const& self, int depth) -> std::string {
        std::string text = pick(names) + std::string(pick(gaps)) + "{" + pick(gaps);
        auto const count = random() % 4;
        for (unsigned i = 0; i < count; ++i) {
            if (random() % 2) text += fmt::format("k{}", i) + pick(gaps) + "=" + pick(gaps);
            text += depth > 0 && random() % 2 ? self(self, depth - 1) : pick(values);
            text += pick(gaps) + std::string(random() % 3 ? "," : ";") + pick(gaps);
        }
        return text + "}" + pick(gaps);
    };
    for (int round = 0; round < 2000; ++round) ExpectFaithful(pick(gaps) + table(table, 3));
}

TEST(Writer, NumbersKeepEveryBit)
{
    std::mt19937_64 random(5);
    for (int round = 0; round < 20000; ++round) {
        double const number = std::bit_cast<double>(random());
        if (!std::isfinite(number)) continue;
        Parsed parsed;
        parsed.value = ScriptVal(number);
        Parsed const again = ParseScript(WriteScript(parsed), "f");
        EXPECT_EQ(Described(again), Described(parsed)) << number;
    }
}

} // namespace
} // namespace ombrelune
