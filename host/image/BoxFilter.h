#pragma once

#include <vector>

#include "host/image/Image.h"
#include "host/image/Vector4.h"

namespace ombrelune {

/// Filter along a line of pixels, made of boxes with fractional ends that run one after the other, so that
/// its cost hardly depends on its size and its size may grow without steps. (Gwosdek, Grewenig, Bruhn,
/// Weickert: "Theoretical Foundations of Gaussian Convolution by Extended Box Filtering", SSVM 2011.)
class BoxFilter {
public:
    /// @param radius  in pixels, 0 for none
    /// @param passes  how often the filter is applied
    BoxFilter(BlurFilter filter, double radius, double passes);

    /// Pixels that the filter needs beyond each end of a line.
    int Reach() const;

    /// Filters `count` pixels in place. The line holds them from `line + Reach()` on, and Reach() more on
    /// either side; the result starts at `line` and is to be multiplied by Scale().
    void Run(Sum4* line, int count) const;
    double Scale() const;

private:
    struct Box {
        int radius; // pixels on each side of the middle that count in full
        double end; // how much the next pixel on each side counts
    };
    static void Run(Box const& box, Sum4* line, int count);

    std::vector<Box> boxes_;
};

} // namespace ombrelune
