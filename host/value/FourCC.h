#pragma once

#include <cstddef>
#include <cstdint>

namespace ombrelune {

/// Four-character identifier, first letter in the highest byte: "KFil"_id is 0x4b46696c.
/// Any other length does not compile.
consteval std::uint32_t operator""_id(char const* text, std::size_t length)
{
    if (length != 4) throw "an identifier has four characters";
    std::uint32_t id = 0;
    for (std::size_t i = 0; i < 4; ++i) id = id << 8 | static_cast<unsigned char>(text[i]);
    return id;
}

} // namespace ombrelune
