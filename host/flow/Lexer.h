#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrelune {

/// One word of the table syntax, with the comments that stand before it.
struct Token {
    struct Comment {
        std::string text; ///< with its dashes, without white space at the end of a line comment
        int line, endLine;
        bool blankLine; ///< an empty line stands above it
    };

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
    std::vector<Comment> comments = {};
    bool blankLine = false; ///< an empty line stands above it, under the comments
};

/// Whether a text is a name of Lua that is not one of its words.
bool IsPlainName(std::string_view text);
/// "and", "break" and so on.
bool IsKeyword(std::string_view text);

/// Cuts a text into tokens. Lexical rules are those of Lua 5.4: its names,
/// numerals, short and long texts with all escapes, comments. Any byte may occur anywhere; a text or number
/// that is wrong becomes a bad token, after which nothing more should be asked.
class Lexer {
public:
    explicit Lexer(std::string_view text) : rest_(text) {}

    Token Next();
    /// Line that the text has reached.
    int Line() const { return line_; }

private:
    bool Has(std::size_t index) const { return index < rest_.size(); }
    char Peek(std::size_t index = 0) const { return Has(index) ? rest_[index] : '\0'; }
    bool TakeLineEnd();
    /// Skips up to the next token; false, with the token bad, at a comment that does not end.
    bool SkipSpace(Token& token);
    bool TakeComment(Token& token, bool blankLine);
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
