#pragma once

// What the renderer keeps between and within requests; for the files of the renderer alone.

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

#include "host/graph/BusyOperator.h"
#include "host/render/Renderer.h"

namespace ombrelune {

/// Key of an operator's results at a time, or why it cannot be made.
struct Renderer::Keyed {
    ResultKey key = {};
    bool varies = false; ///< made for this frame; another has no use for it
    std::optional<Problem> problem = {};
};

/// One question from outside: how it is meant, keys that are known, and the plan when one is wanted.
struct Renderer::Frame {
    double time;
    RenderQuality quality;
    std::shared_ptr<Snapshot const> snapshot;
    std::stop_token stop = {};
    bool waits = true; ///< false: what needs another's work, or a picture, is given up
    Plan* plan = nullptr;
    std::mutex lock = {};
    std::map<std::pair<Operator const*, double>, Keyed> keys = {};
};

/// An operator that is asked for a time, and who asks.
struct Renderer::Visit {
    Visit(Frame& forFrame, Operator& asked, double at)
        : frame(forFrame), op(asked), state(frame.snapshot->Of(asked)), time(at)
    {}

    Frame& frame;
    Operator& op;
    std::shared_ptr<OperatorState const> const& state; ///< null when the document does not have it
    double time;
    Visit const* from = nullptr;
    int depth = 0;
    int expressions = 0;  ///< that read one another, down to here
    bool mayMiss = false; ///< somebody can do without this frame

    Visit To(Operator& source, double at) const
    {
        Visit to(frame, source, at);
        to.from = this;
        to.depth = depth + 1;
        to.expressions = expressions;
        to.mayMiss = mayMiss;
        return to;
    }
    /// The same operator at another time, for the same asker.
    Visit At(double other) const
    {
        Visit at = *this;
        at.time = other;
        return at;
    }
    InputState const& Of(Input const& input) const { return state->Of(input); }
};

struct Renderer::State {
    std::atomic<bool> servesOthers = false; ///< was asked for a time other than that of the frame
    std::atomic<int> processed = 0, reused = 0;
    std::atomic<double> seconds = 0.0;
    Results latest; ///< of an operator with history, under the lock of that
};

/// Results that some thread is making while others wait for them.
struct Renderer::Pending {
    std::condition_variable_any done;
    bool isOver = false;
    SharedResults results; ///< null when it was called off
};

} // namespace ombrelune
