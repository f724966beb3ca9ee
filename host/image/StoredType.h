#pragma once

#include <cstdint>
#include <type_traits>

#include <Imath/half.h>

#include "host/image/Image.h"

namespace ombrelune {

/// Calls f with std::type_identity of the type that a depth stores, and returns what f returns.
template <class F> auto WithStoredType(int depth, F&& f)
{
    switch (depth) {
    case kDepthInt8: return f(std::type_identity<std::uint8_t>{});
    case kDepthInt16: return f(std::type_identity<std::uint16_t>{});
    case kDepthHalf: return f(std::type_identity<Imath::half>{});
    default: return f(std::type_identity<float>{});
    }
}

} // namespace ombrelune
