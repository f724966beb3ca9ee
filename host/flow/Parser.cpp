#include "host/flow/Parser.h"

#include <algorithm>
#include <tuple>

#include <fmt/format.h>

#include "host/flow/Lexer.h"

namespace ombrelune {

namespace {

constexpr std::size_t kMostProblems = 100;

std::string Describe(Token const& token)
{
    switch (token.kind) {
    case Token::kEnd: return "the end of the file";
    case Token::kName: return fmt::format("the name {}", Quoted(token.text));
    case Token::kNumber: return fmt::format("the number {}", token.number);
    case Token::kText: return fmt::format("the text {}", Quoted(token.text));
    default: return fmt::format("'{}'", token.text);
    }
}

std::string DescribeCharacter(char c)
{
    bool const visible = c > 0x20 && c < 0x7f;
    return visible ? fmt::format("'{}'", c) : fmt::format("byte 0x{:02x}", static_cast<unsigned char>(c));
}

std::string DescribeKey(ScriptVal const& key)
{
    if (auto const* text = key.AsText()) return Quoted(*text);
    if (auto const* number = key.AsNumber()) return fmt::format("[{}]", *number);
    return *key.AsBool() ? "[true]" : "[false]";
}

/// Equal for keys that mean the same entry; gives any order otherwise.
std::tuple<int, double, std::string_view> KeyRank(ScriptVal const& key)
{
    if (auto const* text = key.AsText()) return {0, 0.0, *text};
    if (auto const* number = key.AsNumber()) return {1, *number, {}};
    return {2, *key.AsBool() ? 1.0 : 0.0, {}};
}

/// Each step takes the tokens of its part and returns true, or notes a problem and returns false.
class Parser {
public:
    Parser(std::string_view text, std::string const& file) : lexer_(text), file_(file) { Advance(); }

    Parsed Run()
    {
        Parsed parsed;
        TakeComments(parsed.before);
        parsed.blankLine = now_.blankLine;
        bool ok = Value(parsed.value, 0);
        if (ok && now_.kind != Token::kEnd) ok = Expected("nothing more");
        TakeComments(parsed.after);
        if (!ok) parsed.value = {};
        std::stable_sort(problems_.begin(), problems_.end(),
                         [](Problem const& a, Problem const& b) { return a.line < b.line; });
        parsed.problems = std::move(problems_);
        return parsed;
    }

private:
    void Advance()
    {
        lastLine_ = lexer_.Line();
        now_ = lexer_.Next();
        for (Token::Comment& comment : now_.comments) pending_.push_back(std::move(comment));
        now_.comments.clear();
    }
    bool Is(char symbol) const { return now_.kind == Token::kSymbol && now_.text[0] == symbol; }
    bool Take(char symbol)
    {
        if (!Is(symbol)) return false;
        Advance();
        return true;
    }
    bool Fail(int line, std::string text)
    {
        problems_.push_back({file_, line, std::move(text)});
        return false;
    }
    bool Expected(std::string_view what)
    {
        if (now_.kind == Token::kBad) return Fail(now_.line, now_.text);
        if (now_.kind == Token::kOther)
            return Fail(now_.line, fmt::format("found {}, which stands only in quoted texts",
                                               DescribeCharacter(now_.text[0])));
        return Fail(now_.line, fmt::format("found {}; expected {}", Describe(now_), what));
    }

    void TakeComments(std::vector<ScriptComment>& to) { TakeComments(to, pending_.size()); }
    void TakeComments(std::vector<ScriptComment>& to, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            to.push_back({std::move(pending_[i].text), pending_[i].blankLine});
        pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(count));
    }
    /// Takes the comments that follow the last token on its line, if nothing else follows there that they
    /// could stand before.
    void TakeCommentsBehind(std::vector<ScriptComment>& to)
    {
        std::size_t count = 0;
        while (count < pending_.size() && pending_[count].line == lastLine_) ++count;
        if (count == 0) return;
        bool const endsTable = Is(',') || Is(';') || Is('}');
        int const nextLine = count < pending_.size() ? pending_[count].line : now_.line;
        if (endsTable || nextLine > pending_[count - 1].endLine) TakeComments(to, count);
    }

    bool Value(ScriptVal& value, int depth)
    {
        Token const first = now_;
        if (first.kind == Token::kName) {
            Advance();
            return NamedValue(first, value, depth);
        }
        if (Is('{')) return Table({}, first.line, value, depth);
        if (first.kind == Token::kText) {
            value = ScriptVal(first.text);
        } else if (first.kind == Token::kNumber) {
            value = ScriptVal(first.number);
        } else if (Take('-')) {
            if (now_.kind != Token::kNumber) return Expected("a number after '-'");
            value = ScriptVal(-now_.number);
        } else {
            return Expected("a value");
        }
        value.line = first.line;
        Advance();
        return true;
    }

    /// A value that begins with a name, which is already taken.
    bool NamedValue(Token const& name, ScriptVal& value, int depth)
    {
        if (name.text == "nil" || name.text == "true" || name.text == "false") {
            value = name.text == "nil" ? ScriptVal() : ScriptVal(name.text == "true");
            value.line = name.line;
            return true;
        }
        std::string constructor = name.text;
        while (Take('.')) {
            if (now_.kind != Token::kName) return Expected("a name after '.'");
            constructor += '.' + now_.text;
            Advance();
        }
        if (constructor == "ordered" && Take('(') && !Take(')')) return Expected("')'");
        if (!Is('{'))
            return Expected(fmt::format("'{{' after {} (a text stands in quotes)", Quoted(constructor)));
        return Table(std::move(constructor), name.line, value, depth);
    }

    bool Table(std::string constructor, int line, ScriptVal& value, int depth)
    {
        if (depth == kMaxDepth)
            return Fail(now_.line, fmt::format("tables are nested deeper than {}", kMaxDepth));
        int const opened = now_.line;
        Advance();
        auto table = std::make_shared<ScriptTable>();
        table->constructor = std::move(constructor);
        TakeCommentsBehind(table->behindBrace);
        while (!Is('}')) {
            ScriptTable::Entry& entry = table->entries.emplace_back();
            if (!Entry(entry, depth)) return false;
            TakeCommentsBehind(entry.behind);
            if (Take(',') || Take(';')) TakeCommentsBehind(entry.behind);
            else if (!Is('}') && !MissesComma(opened)) return false;
        }
        TakeComments(table->atEnd);
        Advance();
        NoteRepeatedKeys(*table);
        value = ScriptVal(std::move(table));
        value.line = line;
        return true;
    }

    /// Reports what stands where a comma should; false unless another entry begins there.
    bool MissesComma(int opened)
    {
        Expected(fmt::format("',' or '}}' in the table opened in line {}", opened));
        bool const beginsEntry = now_.kind == Token::kName || now_.kind == Token::kText ||
                                 now_.kind == Token::kNumber || Is('[') || Is('{');
        return beginsEntry && problems_.size() < kMostProblems;
    }

    bool Entry(ScriptTable::Entry& entry, int depth)
    {
        TakeComments(entry.before);
        entry.blankLine = now_.blankLine;
        if (now_.kind == Token::kName) {
            Token const name = now_;
            Advance();
            if (!Take('=')) return NamedValue(name, entry.value, depth + 1);
            entry.key = ScriptVal(name.text);
            entry.key.line = name.line;
        } else if (Take('[')) {
            int const line = now_.line;
            if (!Value(entry.key, depth + 1)) return false;
            if (entry.key.IsNil() || entry.key.AsTable())
                return Fail(line,
                            fmt::format("a key cannot be {}; a text or a number can", entry.key.KindName()));
            if (!Take(']')) return Expected("']' after the key");
            if (!Take('=')) return Expected("'=' after the key");
        }
        TakeComments(entry.before); // from within the key
        return Value(entry.value, depth + 1);
    }

    void NoteRepeatedKeys(ScriptTable const& table)
    {
        std::vector<ScriptVal const*> keys;
        for (ScriptTable::Entry const& entry : table.entries)
            if (!entry.key.IsNil()) keys.push_back(&entry.key);
        std::stable_sort(keys.begin(), keys.end(),
                         [](auto* a, auto* b) { return KeyRank(*a) < KeyRank(*b); });
        for (std::size_t i = 1; i < keys.size() && problems_.size() < kMostProblems; ++i) {
            if (KeyRank(*keys[i - 1]) != KeyRank(*keys[i])) continue;
            Fail(keys[i]->line,
                 fmt::format("{} is set twice, before in line {}", DescribeKey(*keys[i]), keys[i - 1]->line));
        }
    }

    Lexer lexer_;
    std::string const& file_;
    Token now_;
    int lastLine_ = 1;                    // where the token before now_ ends
    std::vector<Token::Comment> pending_; // up to now_, not yet taken
    std::vector<Problem> problems_;
};

} // namespace

Parsed ParseScript(std::string_view text, std::string const& file)
{
    if (text.size() > kMaxTextBytes)
        return {{}, {{file, 0, fmt::format("is larger than {} MiB", kMaxTextBytes >> 20)}}};
    if (text.substr(0, 3) == "\xef\xbb\xbf") text.remove_prefix(3); // byte order mark of some editors
    return Parser(text, file).Run();
}

} // namespace ombrelune
