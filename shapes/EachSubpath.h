#pragma once

#include <memory>

#include "shapes/KShape.h"
#include "shapes/KShapeArray.h"

namespace ombrelune {

/// What an operation makes of each subpath, one after the other; null is nothing. The caller owns the result,
/// the operation gives its own up.
template <class Operation> KShape* EachSubpath(KShapeArrayList const& arrays, Operation const& operation)
{
    auto result = std::make_unique<KShape>();
    for (KShapeArray* array : arrays.Each<KShapeArray>()) {
        std::unique_ptr<KShape> const part(operation(*array));
        if (part) result->TakePoints(*part);
    }
    return result.release();
}

} // namespace ombrelune
