#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ombrelune {

struct ScriptTable;

/// A value of the table syntax: nothing, a truth value, a number, a text or a table. Knows the line it was
/// read from (0 when it was made by the program), so that a message can name its place. Copies share their
/// table.
class ScriptVal {
public:
    ScriptVal() = default;
    explicit ScriptVal(bool flag) : value_(flag) {}
    explicit ScriptVal(double number) : value_(number) {}
    explicit ScriptVal(std::string text) : value_(std::move(text)) {}
    explicit ScriptVal(std::shared_ptr<ScriptTable> table) : value_(std::move(table)) {}

    bool IsNil() const { return value_.index() == 0; }
    bool const* AsBool() const { return std::get_if<bool>(&value_); }
    double const* AsNumber() const { return std::get_if<double>(&value_); }
    std::string const* AsText() const { return std::get_if<std::string>(&value_); }
    ScriptTable const* AsTable() const;
    ScriptTable* AsTable();

    /// Member of a table by name; null for any other value and for a name that is not there.
    ScriptVal const* Find(std::string_view name) const;
    /// "a number", "a text": what this is, for messages.
    char const* KindName() const;

    int line = 0;

private:
    std::variant<std::monostate, bool, double, std::string, std::shared_ptr<ScriptTable>> value_;
};

/// A comment as it was written, dashes and all.
struct ScriptComment {
    std::string text;
    bool blankLine = false; ///< an empty line stands above it
};

/// Table with its entries in order. A key is nil for positional entries, else a text, number or truth value.
struct ScriptTable {
    struct Entry {
        ScriptVal key = {};
        ScriptVal value = {};
        std::vector<ScriptComment> before = {}; ///< on lines above the entry
        std::vector<ScriptComment> behind = {}; ///< on the entry's last line
        bool blankLine = false;                 ///< an empty line stands above the entry, under its comments
    };

    /// Name before the brace: "Input", "Brassfennel.BF_Invert"; "ordered" for ordered().
    std::string constructor = {};
    std::vector<Entry> entries = {};
    std::vector<ScriptComment> behindBrace = {}; ///< on the line of the opening brace
    std::vector<ScriptComment> atEnd = {};       ///< on lines below the last entry

    ScriptVal const* Find(std::string_view name) const;
    /// Positional entry, counted from 0.
    ScriptVal const* At(std::size_t index) const;
    void Set(std::string name, ScriptVal value);
};

} // namespace ombrelune
