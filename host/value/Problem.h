#pragma once

#include <string>

namespace ombrelune {

/// Something a user has to know and can mend: where it is, what was found, what would do.
struct Problem {
    std::string file; ///< empty when no document is to blame
    int line = 0;     ///< 1 for the first; 0 when the whole file is meant
    std::string text;

    /// "file:line: text", without the parts that are not known.
    std::string Message() const
    {
        std::string place = file;
        if (line > 0) place += (place.empty() ? "line " : ":") + std::to_string(line);
        return place.empty() ? text : place + ": " + text;
    }
};

} // namespace ombrelune
