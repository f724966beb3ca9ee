#pragma once

#include "apps/ombrelune/RenderJob.h"

namespace ombrelune::app {

/// Tells a user, or with json a program, how a render goes: a line for each frame on standard output (on a
/// terminal one line that stays, with the time left), problems on the error stream.
class RenderReporter {
public:
    RenderReporter(std::size_t frames, bool json);
    void Frame(FrameReport const& report);
    void Plan(int frame, RenderJob::FramePlan const& plan, bool skipExisting);
    /// Time by tool and the peaks of memory.
    void Stats(Renderer const& renderer) const;
    /// Ends the line that stays, and with json tells the sums.
    void End();

private:
    std::size_t frames_, done_ = 0, failed_ = 0;
    bool json_, terminal_;
    double start_;
};

} // namespace ombrelune::app
