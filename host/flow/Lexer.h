#pragma once

#include <string>
#include <string_view>

namespace ombrelune {

/// One word of the table syntax.
struct Token {
    enum Kind {
        kEnd,
        kName,
        kNumber,
        kText,
        kSymbol, ///< one character that the table syntax uses
        kOther,  ///< one character that it does not use outside of texts
        kBad,
    };

    Kind kind = kEnd;
    std::string text; ///< name, contents of a text, the character, or what is wrong with a bad token
    double number = 0.0;
    int line = 1; ///< where it begins
};

/// Cuts a text into tokens and drops white space and comments. Lexical rules are those of Lua 5.4: its names,
/// numerals, short and long texts with all escapes, comments. Any byte may occur anywhere; a text or number
/// that is wrong becomes a bad token, after which nothing more should be asked.
class Lexer {
public:
    explicit Lexer(std::string_view text) : rest_(text) {}

    Token Next();

private:
    bool Has(std::size_t index) const { return index < rest_.size(); }
    char Peek(std::size_t index = 0) const { return Has(index) ? rest_[index] : '\0'; }
    bool TakeLineEnd();
    /// Skips up to the next token; false, with `bad` filled, at a comment that does not end.
    bool SkipSpace(Token& bad);
    /// Number of '=' in the long bracket that opens here, -1 when none does.
    int LongBracketLevel() const;
    bool TakeLongBracket(int level, std::string& contents);
    void TakeNumber(Token& token);
    void TakeQuoted(Token& token);
    /// Appends what the escape after a backslash stands for; returns what is wrong, empty when nothing is.
    std::string TakeEscape(std::string& contents);

    std::string_view rest_;
    int line_ = 1;
};

} // namespace ombrelune
