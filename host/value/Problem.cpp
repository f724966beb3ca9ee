#include "host/value/Problem.h"

#include <fmt/format.h>

namespace ombrelune {

namespace {

/// Length of the UTF-8 sequence at the start of a text that is not empty; 0 for a broken or control one.
std::size_t CharacterLength(std::string_view text)
{
    auto const lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return lead >= 0x20 && lead != 0x7f ? 1 : 0;
    std::size_t const length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xc0) != 0x80) return 0;
    auto const second = static_cast<unsigned char>(text[1]);
    bool const overlong = (lead == 0xe0 && second < 0xa0) || (lead == 0xf0 && second < 0x90);
    bool const outside = (lead == 0xed && second > 0x9f) || (lead == 0xf4 && second > 0x8f);
    return overlong || outside ? 0 : length;
}

} // namespace

std::string Problem::Format() const
{
    if (file.empty()) return line ? fmt::format("line {}: {}", line, text) : text;
    return line ? fmt::format("{}:{}: {}", file, line, text) : fmt::format("{}: {}", file, text);
}

std::string Quoted(std::string_view text)
{
    constexpr int kLongest = 40;
    std::string quoted = "'";
    for (int count = 0; !text.empty(); ++count) {
        if (count == kLongest) {
            quoted += "...";
            break;
        }
        std::size_t const length = CharacterLength(text);
        quoted += length ? text.substr(0, length) : "?";
        text.remove_prefix(length ? length : 1);
    }
    return quoted + "'";
}

} // namespace ombrelune
