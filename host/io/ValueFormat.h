#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/value/FrameFormat.h"
#include "host/value/Parameter.h"
#include "host/value/Problem.h"

namespace ombrelune {

/// A kind of file that the values of a class are written as, such as shapes as SVG. Whoever owns the class
/// registers one with a static ValueFormatRegistration, which lives as long as its code is loaded.
struct ValueFormat {
    FuID dataType;         ///< of outputs
    std::string extension; ///< lower case, without a dot
    /// Appends the whole file for a document of that format, or tells what the file cannot hold.
    std::optional<Problem> (*write)(Parameter const& value, FrameFormat const& frame, std::string& bytes);
};

class ValueFormatRegistration {
public:
    explicit ValueFormatRegistration(ValueFormat format);
    ~ValueFormatRegistration();
    ValueFormatRegistration(ValueFormatRegistration const&) = delete;
    ValueFormatRegistration& operator=(ValueFormatRegistration const&) = delete;

    ValueFormat const& Format() const { return format_; }

private:
    ValueFormat const format_;
};

/// Null when no format has the type and the extension of the path.
ValueFormat const* FindValueFormat(FuID dataType, std::string_view path);
/// "name.svg or name.txt": what files a type can be written as; empty for none.
std::string ValueFileNames(FuID dataType);

/// Writes a value in the format of its path's extension, whole or not at all (see AtomicFile).
std::optional<Problem> WriteValue(Parameter const& value, FrameFormat const& frame, std::string const& path);

} // namespace ombrelune
