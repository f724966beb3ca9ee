#pragma once

#include <algorithm>
#include <cstdint>

namespace ombrelune {

// A stored byte as a record word of 0 to 65535, and back to the nearest; what is beyond is limited.

inline std::uint32_t IntFromByte(std::uint8_t s) { return s * 257U; }
inline std::uint8_t ByteFromInt(std::uint32_t v)
{
    return static_cast<std::uint8_t>((std::min(v, 65535U) + 128U) / 257U);
}

} // namespace ombrelune
