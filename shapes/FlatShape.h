#pragma once

#include <memory>

#include "shapes/KShape.h"

namespace ombrelune {

/// Most segments of a curve and of half a turn of a join; more only cost time.
inline constexpr int kMostSteps = 1024, kMostJoinSteps = 1024;

/// A shape without curves: the shape itself when it has none, else a flattened copy.
class FlatShape {
public:
    FlatShape(KShape const& shape, int steps)
        : copy_(shape.IsFlat() ? nullptr : shape.FlattenOf(steps)), shape_(copy_ ? copy_.get() : &shape)
    {}
    KShape const* Get() const { return shape_; }

private:
    std::unique_ptr<KShape> copy_;
    KShape const* shape_;
};

} // namespace ombrelune
