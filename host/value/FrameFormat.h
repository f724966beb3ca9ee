#pragma once

namespace ombrelune {

/// What new pictures of a document look like when nothing else says so.
struct FrameFormat {
    int width = 1920;
    int height = 1080;
    double rate = 24.0;
    int depth = 8;       ///< a picture depth, 5 to 8
    double xScale = 1.0; ///< pixel aspect is xScale / yScale
    double yScale = 1.0;
};

} // namespace ombrelune
