#include "host/flow/Lexer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include <fmt/format.h>
#include <locale.h>

#include "host/value/Problem.h"

namespace ombrelune {

namespace {

// Own tests of letters: those of the C library depend on the locale.
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool IsNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c); }
bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }
bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

std::size_t CountWhile(std::string_view text, bool (*test)(char))
{
    std::size_t count = 0;
    while (count < text.size() && test(text[count])) ++count;
    return count;
}

/// Value of a decimal or hexadecimal numeral; false unless all of it is one. Out of range gives infinity.
bool NumberFromText(std::string const& numeral, double& number)
{
    static locale_t const plain = newlocale(LC_ALL_MASK, "C", nullptr);
    char* end = nullptr;
    number = strtod_l(numeral.c_str(), &end, plain);
    return end == numeral.c_str() + numeral.size();
}

/// UTF-8 in its first, wide form of up to six bytes: any value below 2^31.
void AppendUtf8(std::string& out, std::uint32_t code)
{
    static constexpr std::uint32_t limits[] = {0x80, 0x800, 0x10000, 0x200000, 0x4000000};
    int tail = 0; // bytes after the first
    while (tail < 5 && code >= limits[tail]) ++tail;
    std::uint32_t const mark = tail ? 0xff00U >> (tail + 1) & 0xffU : 0U;
    out += static_cast<char>(mark | code >> (6 * tail));
    while (tail-- > 0) out += static_cast<char>(0x80U | (code >> (6 * tail) & 0x3fU));
}

} // namespace

bool IsKeyword(std::string_view text)
{
    static constexpr std::string_view words[] = {
        "and", "break", "do",  "else", "elseif", "end",    "false",  "for",  "function", "goto",  "if",
        "in",  "local", "nil", "not",  "or",     "repeat", "return", "then", "true",     "until", "while"};
    return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

bool IsPlainName(std::string_view text)
{
    return !text.empty() && IsNameStart(text[0]) && CountWhile(text, IsNamePart) == text.size() &&
           !IsKeyword(text);
}

Token Lexer::Next()
{
    Token token;
    if (!SkipSpace(token)) return token;
    token.line = line_;
    if (rest_.empty()) return token;

    char const c = rest_[0];
    if (IsNameStart(c)) {
        std::size_t const length = CountWhile(rest_, IsNamePart);
        token.kind = Token::kName;
        token.text = rest_.substr(0, length);
        rest_.remove_prefix(length);
    } else if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) {
        TakeNumber(token);
    } else if (c == '"' || c == '\'') {
        TakeQuoted(token);
    } else if (int const level = LongBracketLevel(); level >= 0) {
        token.kind = Token::kText;
        if (!TakeLongBracket(level, token.text)) {
            token.kind = Token::kBad;
            token.text = "the long text that begins here does not end";
        }
    } else {
        bool const isSymbol = std::string_view("{}[]()=,;.-").find(c) != std::string_view::npos;
        token.kind = isSymbol ? Token::kSymbol : Token::kOther;
        token.text = c;
        rest_.remove_prefix(1);
    }
    return token;
}

bool Lexer::TakeLineEnd()
{
    if (rest_.empty() || !IsLineEnd(rest_[0])) return false;
    bool const pair = Has(1) && IsLineEnd(rest_[1]) && rest_[0] != rest_[1];
    rest_.remove_prefix(pair ? 2 : 1);
    ++line_;
    return true;
}

bool Lexer::SkipSpace(Token& token)
{
    int lineEnds = 0;
    while (!rest_.empty()) {
        if (TakeLineEnd()) {
            ++lineEnds;
        } else if (IsSpace(rest_[0])) {
            rest_.remove_prefix(1);
        } else if (rest_.substr(0, 2) == "--") {
            if (!TakeComment(token, lineEnds > 1)) return false;
            lineEnds = 0;
        } else {
            break;
        }
    }
    token.blankLine = lineEnds > 1;
    return true;
}

bool Lexer::TakeComment(Token& token, bool blankLine)
{
    std::string_view const start = rest_;
    int const line = line_;
    rest_.remove_prefix(2);
    if (int const level = LongBracketLevel(); level >= 0) {
        std::string contents;
        if (!TakeLongBracket(level, contents)) {
            token.kind = Token::kBad;
            token.line = line;
            token.text = "the comment that begins here does not end";
            return false;
        }
    } else {
        rest_.remove_prefix(CountWhile(rest_, [](char c) { return !IsLineEnd(c); }));
    }
    std::string text(start.substr(0, start.size() - rest_.size()));
    while (IsSpace(text.back())) text.pop_back();
    token.comments.push_back({std::move(text), line, line_, blankLine});
    return true;
}

int Lexer::LongBracketLevel() const
{
    if (Peek() != '[') return -1;
    std::size_t const level = CountWhile(rest_.substr(1), [](char c) { return c == '='; });
    return Peek(1 + level) == '[' ? static_cast<int>(level) : -1;
}

bool Lexer::TakeLongBracket(int level, std::string& contents)
{
    auto const count = static_cast<std::size_t>(level);
    std::string closing(count + 2, '=');
    closing.front() = closing.back() = ']';
    rest_.remove_prefix(count + 2);
    std::size_t const length = rest_.find(closing);
    if (length == std::string_view::npos) return false;

    std::size_t const restAfter = rest_.size() - length - closing.size();
    TakeLineEnd(); // a line end right after the bracket is not part of the text
    while (rest_.size() > restAfter + closing.size()) {
        if (TakeLineEnd()) {
            contents += '\n';
        } else {
            contents += rest_[0];
            rest_.remove_prefix(1);
        }
    }
    rest_.remove_prefix(closing.size());
    return true;
}

void Lexer::TakeNumber(Token& token)
{
    bool const hex = Peek() == '0' && (Peek(1) == 'x' || Peek(1) == 'X');
    std::size_t length = hex ? 2 : 0;
    for (; Has(length); ++length) {
        char const c = rest_[length];
        bool const exponent = hex ? c == 'p' || c == 'P' : c == 'e' || c == 'E';
        if (exponent && (Peek(length + 1) == '+' || Peek(length + 1) == '-')) ++length;
        else if (!IsNamePart(c) && c != '.') break;
    }
    std::string const numeral(rest_.substr(0, length));
    rest_.remove_prefix(length);

    token.kind = Token::kNumber;
    if (!NumberFromText(numeral, token.number)) {
        token.kind = Token::kBad;
        token.text = fmt::format("{} is not a number", Quoted(numeral));
    } else if (std::isinf(token.number)) {
        token.kind = Token::kBad;
        token.text = fmt::format("the number {} is out of range", Quoted(numeral));
    }
}

void Lexer::TakeQuoted(Token& token)
{
    char const quote = rest_[0];
    rest_.remove_prefix(1);
    token.kind = Token::kText;
    while (!rest_.empty() && rest_[0] != quote && !IsLineEnd(rest_[0])) {
        char const c = rest_[0];
        rest_.remove_prefix(1);
        if (c != '\\') {
            token.text += c;
        } else if (std::string wrong = TakeEscape(token.text); !wrong.empty()) {
            token.kind = Token::kBad;
            token.text = std::move(wrong);
            token.line = line_;
            return;
        }
    }
    if (Peek() == quote) {
        rest_.remove_prefix(1);
    } else {
        token.kind = Token::kBad;
        token.text = fmt::format("the text that begins here has no closing {}", quote);
    }
}

std::string Lexer::TakeEscape(std::string& contents)
{
    if (rest_.empty()) return {}; // the text that does not end is the greater problem
    if (TakeLineEnd()) {
        contents += '\n';
        return {};
    }
    char const c = rest_[0];
    if (IsDigit(c)) {
        int code = 0;
        for (int i = 0; i < 3 && IsDigit(Peek()); ++i) {
            code = code * 10 + (rest_[0] - '0');
            rest_.remove_prefix(1);
        }
        if (code > 255) return fmt::format("\\{} is more than a byte; the largest is \\255", code);
        contents += static_cast<char>(code);
        return {};
    }
    static constexpr std::string_view letters = "abfnrtv\\\"'", meanings = "\a\b\f\n\r\t\v\\\"'";
    if (std::size_t const index = letters.find(c); index != std::string_view::npos) {
        contents += meanings[index];
        rest_.remove_prefix(1);
        return {};
    }
    if (c == 'z') {
        rest_.remove_prefix(1);
        while (Has(0) && (IsSpace(rest_[0]) || IsLineEnd(rest_[0])))
            if (!TakeLineEnd()) rest_.remove_prefix(1);
        return {};
    }
    if (c == 'x') {
        if (!IsHexDigit(Peek(1)) || !IsHexDigit(Peek(2))) return "\\x takes two hexadecimal digits";
        int code = 0;
        std::from_chars(rest_.data() + 1, rest_.data() + 3, code, 16);
        contents += static_cast<char>(code);
        rest_.remove_prefix(3);
        return {};
    }
    if (c == 'u') {
        std::size_t const digits = Peek(1) == '{' ? CountWhile(rest_.substr(2), IsHexDigit) : 0;
        std::uint32_t code = 0;
        char const* const first = rest_.data() + 2;
        if (digits == 0 || Peek(2 + digits) != '}' ||
            std::from_chars(first, first + digits, code, 16).ec != std::errc{} || code > 0x7fffffff)
            return "\\u takes hexadecimal digits in braces, at most \\u{7fffffff}";
        AppendUtf8(contents, code);
        rest_.remove_prefix(3 + digits);
        return {};
    }
    return fmt::format("{} is no escape; write \\\\ for a backslash", Quoted(std::string{'\\', c}));
}

} // namespace ombrelune
