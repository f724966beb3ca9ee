#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ombrelune {

// Characters of a text, which is UTF-8. A byte that belongs to no character counts as one of its own, and
// comes back as it was.

inline constexpr char32_t kStrayByte = 0x110000; ///< plus the byte: beyond all characters

/// Length in bytes of the character that a text starts with; 1 for a stray byte.
inline std::size_t CharacterBytes(std::string_view text)
{
    auto const first = static_cast<unsigned char>(text[0]);
    std::size_t const bytes = first < 0x80   ? 1
                              : first < 0xc2 ? 0
                              : first < 0xe0 ? 2
                              : first < 0xf0 ? 3
                              : first < 0xf5 ? 4
                                             : 0;
    if (bytes == 0 || bytes > text.size()) return 1;
    for (std::size_t i = 1; i < bytes; ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xc0) != 0x80) return 1;
    return bytes;
}

inline std::u32string CharactersOf(std::string_view text)
{
    std::u32string characters;
    characters.reserve(text.size());
    while (!text.empty()) {
        std::size_t const bytes = CharacterBytes(text);
        auto const byte = [&](std::size_t i) {
            return static_cast<char32_t>(static_cast<unsigned char>(text[i]));
        };
        char32_t c = byte(0);
        if (bytes == 1 && c >= 0x80) c += kStrayByte;
        if (bytes > 1) c &= 0x7fU >> bytes;
        for (std::size_t i = 1; i < bytes; ++i) c = c << 6 | (byte(i) & 0x3f);
        characters.push_back(c);
        text.remove_prefix(bytes);
    }
    return characters;
}

inline std::string TextOfCharacters(std::u32string_view characters)
{
    std::string text;
    text.reserve(characters.size());
    auto const add = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    for (char32_t c : characters) {
        if (c >= kStrayByte) add(c - kStrayByte);
        else if (c < 0x80) add(c);
        else if (c < 0x800) add(0xc0 | c >> 6), add(0x80 | (c & 0x3f));
        else if (c < 0x10000) add(0xe0 | c >> 12), add(0x80 | (c >> 6 & 0x3f)), add(0x80 | (c & 0x3f));
        else
            add(0xf0 | c >> 18), add(0x80 | (c >> 12 & 0x3f)), add(0x80 | (c >> 6 & 0x3f)),
                add(0x80 | (c & 0x3f));
    }
    return text;
}

} // namespace ombrelune
