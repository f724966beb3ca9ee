#include "host/flow/ExpressionReads.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

#include "host/flow/Lexer.h"
#include "host/value/NearestName.h"
#include "host/value/Problem.h"

namespace ombrelune {

namespace {

/// Walks over the tokens of a text that is known to compile.
class Finder {
public:
    Finder(std::string_view text, std::vector<std::string> const& known, ToolNames const& tools)
        : tools_(tools), known_(known.begin(), known.end())
    {
        Lexer lexer(text);
        for (Token token = lexer.Next(); token.kind != Token::kEnd; token = lexer.Next())
            tokens_.push_back(std::move(token));
    }

    ExpressionReads Run()
    {
        FindLocals();
        for (at_ = 0; at_ < tokens_.size(); ++at_)
            if (IsFreeName()) Name(tokens_[at_].text);
        return std::move(found_);
    }

private:
    bool Is(std::size_t index, char symbol) const
    {
        return index < tokens_.size() && tokens_[index].kind == Token::kSymbol &&
               tokens_[index].text[0] == symbol;
    }
    bool IsName(std::size_t index) const
    {
        return index < tokens_.size() && tokens_[index].kind == Token::kName &&
               !IsKeyword(tokens_[index].text);
    }
    bool IsText(std::size_t index) const
    {
        return index < tokens_.size() && tokens_[index].kind == Token::kText;
    }
    bool IsColon(std::size_t index) const
    {
        return index < tokens_.size() && tokens_[index].kind == Token::kOther && tokens_[index].text == ":";
    }

    void Wrong(std::string text)
    {
        auto& all = found_.mistakes;
        if (!text.empty() && std::find(all.begin(), all.end(), text) == all.end())
            all.push_back(std::move(text));
    }

    /// Names behind local, for and function, wherever they hold: whoever gives a local the name of something
    /// else has to look after it.
    void FindLocals()
    {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].kind != Token::kName) continue;
            std::string const& word = tokens_[i].text;
            if (word != "local" && word != "for" && word != "function") continue;
            std::size_t j = i + 1;
            if (word == "function") {
                if (IsName(j)) Declare(j);
                while (j < tokens_.size() && !Is(j++, '(')) {
                }
            }
            for (; IsName(j); j += Is(j + 1, ',') ? 2 : 1) Declare(j);
        }
    }
    void Declare(std::size_t index)
    {
        std::string const& name = tokens_[index].text;
        if (tools_.Has(name) && !known_.contains(name))
            Wrong(fmt::format("{} is a tool; give the local another name", Quoted(name)));
        locals_.insert(name);
    }

    /// Whether the name here is neither a member of something nor a key or target of an assignment.
    bool IsFreeName() const
    {
        if (!IsName(at_)) return false;
        bool const isMember =
            at_ > 0 && ((Is(at_ - 1, '.') && !(at_ > 1 && Is(at_ - 2, '.'))) || IsColon(at_ - 1));
        bool const isAssigned = Is(at_ + 1, '=') && !Is(at_ + 2, '=');
        bool const isLabel = at_ > 0 && tokens_[at_ - 1].text == "goto";
        return !isMember && !isAssigned && !isLabel;
    }

    void Name(std::string const& name)
    {
        if (name == "_ENV") return Wrong("'_ENV' is not known here");
        if (known_.contains(name) || locals_.contains(name)) return;
        if (!tools_.Has(name)) {
            std::vector<std::string> all = tools_.All();
            all.insert(all.end(), known_.begin(), known_.end());
            return Wrong(
                fmt::format("there is no tool or function {}{}", Quoted(name), DidYouMean(name, all)));
        }
        bool const hasMember = Is(at_ + 1, '.') && IsName(at_ + 2);
        bool const hasQuoted = Is(at_ + 1, '[') && IsText(at_ + 2) && Is(at_ + 3, ']');
        bool const hasTime = IsColon(at_ + 1) && IsName(at_ + 2) && tokens_[at_ + 2].text == "GetValue" &&
                             Is(at_ + 3, '(') && IsText(at_ + 4) && (Is(at_ + 5, ',') || Is(at_ + 5, ')'));
        if (!hasMember && !hasQuoted && !hasTime)
            return Wrong(fmt::format("write {0}.Input or {0}:GetValue(\"Input\", time)", name));
        Read(name, tokens_[at_ + (hasTime ? 4 : 2)].text);
    }

    void Read(std::string const& tool, std::string const& member)
    {
        auto const isSame = [&](ExpressionReads::Read const& r) {
            return r.tool == tool && r.member == member;
        };
        if (std::any_of(found_.reads.begin(), found_.reads.end(), isSame)) return;
        Readable const target = tools_.Member(tool, member);
        if (auto const* wrong = std::get_if<std::string>(&target)) return Wrong(*wrong);
        if (auto* const* input = std::get_if<Input*>(&target)) Add(tool, member, *input);
        else Add(tool, member, std::get<Output*>(target));
    }
    template <class Target> void Add(std::string const& tool, std::string const& member, Target* target)
    {
        FuID const type = target->DataType();
        if (type != CLSID_DataType_Number && type != CLSID_DataType_Point && type != CLSID_DataType_Text &&
            type != CLSID_DataType_FuID)
            return Wrong(fmt::format("{}.{} is of type {}; expressions read numbers, points and texts", tool,
                                     member, type.Text()));
        found_.reads.push_back({tool, member, target});
    }

    ToolNames const& tools_;
    std::set<std::string> known_, locals_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    ExpressionReads found_;
};

} // namespace

ExpressionReads FindReads(std::string_view text, std::vector<std::string> const& known,
                          ToolNames const& tools)
{
    return Finder(text, known, tools).Run();
}

} // namespace ombrelune
