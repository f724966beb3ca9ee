#pragma once

#include <string>
#include <string_view>

namespace ombrelune {

/// What is wrong, and where: a file and its line, or either alone. The text says what was found and what
/// would do.
struct Problem {
    std::string file = {};
    int line = 0; ///< from 1; 0 when the whole file is meant
    std::string text = {};
    bool isFile = false;  ///< a file could not be read or written; the flow may be right
    bool isGap = false;   ///< a frame that its sequence does not have
    bool isStop = false;  ///< nothing is wrong: the work was called off, or nobody would wait for it
    bool mayPass = false; ///< another try may go well, as when memory was short

    /// "file:line: text", without the parts that are not known.
    std::string Format() const;
};

/// User's text in single quotes for a message: one line of valid UTF-8 of at most about 40 characters, with
/// control characters and broken bytes shown as '?'.
std::string Quoted(std::string_view text);

} // namespace ombrelune
