#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apps/ombrelune/FrameTimeout.h"
#include "host/render/Renderer.h"

namespace ombrelune::app {

/// A picture to write: a Saver of the flow, or an output and the pattern of its files.
struct RenderTarget {
    Operator* saver = nullptr;
    Output* output = nullptr; ///< the picture; a Saver's comes from what feeds it
    std::string pattern = {}; ///< empty for a Saver, which has its own

    Operator& Op() const { return saver ? *saver : *output->Owner(); }
};

/// What became of one frame.
struct FrameReport {
    int frame = 0;
    std::vector<std::string> written = {}, kept = {}; ///< files; the kept ones were there already
    std::vector<Problem> problems = {};
    std::vector<Problem> warnings = {}; ///< that came up since the last report
    double seconds = 0.0;
};

/// Renders frames of a document to files. While one frame is written the next is rendered, but files appear
/// in the order of frames, and reports come in that order.
class RenderJob {
public:
    RenderJob(FusionDoc& document, RenderQuality quality, std::size_t memory,
              std::vector<RenderTarget> targets);

    struct Options {
        bool skipExisting = false; ///< files that are there, and look whole, are left alone
        FrameTimeout* timeout =
            nullptr; ///< told of the time that frames take, without waiting for their turn
    };
    /// @param frames  ascending
    /// @param report  called once a frame, by one thread at a time; false ends the job
    void Run(std::vector<int> const& frames, Options const& options,
             std::function<bool(FrameReport const&)> const& report);

    /// What Run would read and write for a frame.
    struct FramePlan {
        std::vector<std::string> reads, writes; ///< each once
        std::vector<Problem> problems;
    };
    FramePlan PlanOf(int frame);

    Renderer const& GetRenderer() const { return renderer_; }

private:
    struct Progress;
    /// Nothing that a frame throws, such as for want of memory, leaves it.
    FrameReport TryFrame(int frame, std::size_t index, Options const& options, Progress& progress);
    FrameReport RenderFrame(int frame, std::size_t index, Options const& options, Progress& progress);
    /// File of a target at a frame.
    std::string PathOf(RenderTarget const& target, int frame);
    std::optional<Problem> Write(RenderTarget const& target, int frame);

    Renderer renderer_;
    std::size_t memory_;
    std::vector<RenderTarget> targets_;
};

} // namespace ombrelune::app
