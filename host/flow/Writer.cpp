#include "host/flow/Writer.h"

#include <algorithm>

#include <fmt/format.h>

#include "host/flow/Lexer.h"

namespace ombrelune {

namespace {

std::string QuotedText(std::string const& text)
{
    std::string quoted = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const c = static_cast<unsigned char>(text[i]);
        if (c == '\n') quoted += "\\n";
        else if (c == '\r') quoted += "\\r";
        else if (c == '\t') quoted += "\\t";
        else if (c == '"' || c == '\\') (quoted += '\\') += text[i];
        // Three digits, so that a digit which follows stays by itself.
        else if (c < 0x20 || c == 0x7f) quoted += fmt::format("\\{:03}", c);
        else quoted += text[i];
    }
    return quoted + '"';
}

std::string Scalar(ScriptVal const& value)
{
    if (auto const* flag = value.AsBool()) return *flag ? "true" : "false";
    if (auto const* number = value.AsNumber()) return fmt::format("{}", *number);
    if (auto const* text = value.AsText()) return QuotedText(*text);
    return "nil";
}

/// "Name = ", or nothing for a positional entry.
std::string KeyText(ScriptVal const& key)
{
    if (key.IsNil()) return {};
    if (auto const* name = key.AsText(); name && IsPlainName(*name)) return *name + " = ";
    return '[' + Scalar(key) + "] = ";
}

std::string Opening(ScriptTable const& table)
{
    if (table.constructor.empty()) return "{";
    return table.constructor + (table.constructor == "ordered" ? "() {" : " {");
}

bool IsLineComment(ScriptComment const& comment)
{
    std::size_t const bracket = comment.text.find_first_not_of('=', 3);
    return comment.text.compare(0, 3, "--[") != 0 || bracket == std::string::npos ||
           comment.text[bracket] != '[';
}

class Writer {
public:
    std::string Write(Parsed const& parsed)
    {
        Comments(parsed.before, 0);
        if (parsed.blankLine) BlankLine();
        Value(parsed.value, 0, true);
        out_ += '\n';
        atTop_ = false;
        Comments(parsed.after, 0);
        return std::move(out_);
    }

private:
    std::size_t Column() const { return out_.size() - (out_.rfind('\n') + 1); }
    void Indent(int level) { out_.append(2 * static_cast<std::size_t>(level), ' '); }
    /// An empty line, but none at the top of the text or of a table.
    void BlankLine()
    {
        if (!out_.empty() && !atTop_) out_ += '\n';
    }

    /// Each on a line of its own.
    void Comments(std::vector<ScriptComment> const& comments, int level)
    {
        for (ScriptComment const& comment : comments) {
            if (comment.blankLine) BlankLine();
            Indent(level);
            out_ += comment.text + '\n';
            atTop_ = false;
        }
    }

    /// On the line that is under way; after a line comment or one of several lines each on its own.
    void CommentsBehind(std::vector<ScriptComment> const& comments, int level)
    {
        bool lineEnded = false;
        for (ScriptComment const& comment : comments) {
            if (lineEnded) {
                out_ += '\n';
                Indent(level);
            } else {
                out_ += ' ';
            }
            out_ += comment.text;
            if (IsLineComment(comment) || comment.text.find('\n') != std::string::npos) lineEnded = true;
        }
        out_ += '\n';
    }

    /// Appends the value as it looks on one line; false when it does not fit into what is left of it.
    static bool OneLine(ScriptVal const& value, std::size_t room, std::string& line)
    {
        ScriptTable const* const table = value.AsTable();
        if (!table) {
            line += Scalar(value);
            return line.size() <= room;
        }
        if (!table->behindBrace.empty() || !table->atEnd.empty()) return false;
        line += Opening(*table);
        for (auto const& entry : table->entries) {
            bool const isFirst = &entry == &table->entries.front();
            if (!entry.before.empty() || !entry.behind.empty() || (entry.blankLine && !isFirst)) return false;
            line += (isFirst ? " " : ", ") + KeyText(entry.key);
            if (!OneLine(entry.value, room, line)) return false;
        }
        line += " }";
        return line.size() <= room;
    }

    void Value(ScriptVal const& value, int level, bool mustBreak)
    {
        ScriptTable const* const table = value.AsTable();
        bool const isEmpty =
            table && table->entries.empty() && table->behindBrace.empty() && table->atEnd.empty();
        if (!table) {
            out_ += Scalar(value);
            return;
        }
        std::size_t const column = Column();
        std::string line;
        // A comma follows. What is indented beyond the width still gets a little room.
        std::size_t const room = std::max(kLineWidth - std::min(kLineWidth, column + 1), kLineWidth / 4);
        if ((isEmpty || !mustBreak) && OneLine(value, room, line)) {
            out_ += line;
            return;
        }
        out_ += Opening(*table);
        CommentsBehind(table->behindBrace, level + 1);
        atTop_ = true;
        for (auto const& entry : table->entries) {
            Comments(entry.before, level + 1);
            if (entry.blankLine) BlankLine();
            atTop_ = false;
            Indent(level + 1);
            std::string const key = KeyText(entry.key);
            out_ += key;
            Value(entry.value, level + 1, key == "Tools = ");
            out_ += ',';
            CommentsBehind(entry.behind, level + 1);
            atTop_ = false;
        }
        Comments(table->atEnd, level + 1);
        Indent(level);
        out_ += '}';
    }

    std::string out_;
    bool atTop_ = true; // nothing stands yet where an empty line would be the first
};

} // namespace

std::string WriteScript(Parsed const& parsed) { return Writer().Write(parsed); }

} // namespace ombrelune
