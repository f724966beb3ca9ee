#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/value/Problem.h"
#include "host/value/ScriptVal.h"

namespace ombrelune {

/// What a text of the table syntax says. A key that is set twice and a missing comma are problems, but the
/// value is whole; any other problem ends the reading and leaves the value nil.
struct Parsed {
    ScriptVal value = {};
    std::vector<Problem> problems = {};     ///< by line; empty when all is well
    std::vector<ScriptComment> before = {}; ///< comments above the value
    bool blankLine = false;                 ///< an empty line stands between them and the value
    std::vector<ScriptComment> after = {};  ///< comments below the value
};

/// Reads one value of the table syntax, which is never executed:
///
///     value  = nil | true | false | number | text | table | name { '.' name } table | ordered '(' ')' table
///     table  = '{' [ entry { (',' | ';') entry } [ ',' | ';' ] ] '}'
///     entry  = value | name '=' value | '[' (text | number | true | false) ']' '=' value
///
/// with the lexical rules of Lua 5.4 (see Lexer); a number may carry a minus. Order and line of every key and
/// value are kept, and so are comments, each at the entry that it stands above or behind. Any bytes may come
/// in: tables nest to kMaxDepth, texts go up to kMaxTextBytes.
/// @param file  name for messages
Parsed ParseScript(std::string_view text, std::string const& file);

inline constexpr int kMaxDepth = 200;
inline constexpr std::size_t kMaxTextBytes = std::size_t{64} << 20;

} // namespace ombrelune
