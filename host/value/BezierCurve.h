#pragma once

#include <vector>

namespace ombrelune {

/// Curve y(x) through keys joined by cubic Bezier segments; handles are absolute positions. Before the first
/// key the first value holds, after the last the last.
struct BezierCurve {
    struct Key {
        double x = 0.0, y = 0.0;
        double leftX = 0.0, leftY = 0.0;   ///< handle towards the key before
        double rightX = 0.0, rightY = 0.0; ///< handle towards the key after
        bool linear = false;               ///< the segment from here to the next key is straight
    };

    std::vector<Key> keys; ///< by ascending x

    /// The diagonal from (0, 0) to (1, 1).
    static BezierCurve Identity();

    /// Value at x; 0 without keys. Handles are limited to their segment in x, so that every x has one value.
    /// Method: Newton's steps for the segment's parameter, kept inside a bracket that shrinks.
    double Evaluate(double x) const;
};

} // namespace ombrelune
