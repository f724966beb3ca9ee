#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

#include <Imath/half.h>
#include <OpenImageIO/typedesc.h>

#include "host/image/Pixel.h"

namespace ombrelune {

// What reader and writer share about the picture library and how pixels lie in its files.

/// Auxiliary channels that OpenEXR files carry: the name that is written, and another that is understood.
struct AuxName {
    int channel;
    char const* name;
    char const* otherName;
};
inline constexpr AuxName kAuxNames[] = {
    {kChannelZ, "Z", "depth.Z"},
    {kChannelNormalX, "N.X", "NX"},
    {kChannelNormalY, "N.Y", "NY"},
    {kChannelNormalZ, "N.Z", "NZ"},
    {kChannelVelocityX, "velocity.X", "VX"},
    {kChannelVelocityY, "velocity.Y", "VY"},
};

/// The picture library's name for a stored type.
template <class Stored> OIIO::TypeDesc LibraryType()
{
    if constexpr (std::is_same_v<Stored, std::uint8_t>) return OIIO::TypeDesc::UINT8;
    else if constexpr (std::is_same_v<Stored, std::uint16_t>) return OIIO::TypeDesc::UINT16;
    else if constexpr (std::is_same_v<Stored, Imath::half>) return OIIO::TypeDesc::HALF;
    else return OIIO::TypeDesc::FLOAT;
}

/// Rows to read or write at a time: a multiple of what compressed blocks are high, at most 64 MiB where a
/// picture is not wider than can be.
inline int RowsAtATime(std::size_t rowBytes)
{
    return static_cast<int>(std::clamp<std::size_t>((std::size_t{64} << 20) / rowBytes, 64, 256)) / 64 * 64;
}

/// First line of the library's message, " (like this)"; nothing when it has none.
inline std::string InBrackets(std::string const& message)
{
    return message.empty() ? "" : " (" + message.substr(0, message.find('\n')) + ")";
}

} // namespace ombrelune
