#pragma once

// What the renderer keeps between and within requests; for the files of the renderer alone.

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <set>

#include "host/graph/Renderer.h"

namespace ombrelune {

/// Key of an operator's results at a time, or why it cannot be made.
struct Renderer::Keyed {
    ResultKey key = {};
    bool varies = false; ///< made for this frame; another has no use for it
    std::optional<Problem> problem = {};
};

/// One pull from outside: keys that are known, and the plan when one is wanted.
struct Renderer::Frame {
    double time;
    Plan* plan = nullptr;
    std::mutex lock = {};
    std::map<std::pair<Operator const*, double>, Keyed> keys = {};
};

/// An operator that is asked for a time, and who asks.
struct Renderer::Visit {
    Frame& frame;
    Operator& op;
    double time;
    Visit const* from = nullptr;
    int depth = 0;
    int expressions = 0;  ///< that read one another, down to here
    bool mayMiss = false; ///< somebody can do without this frame

    Visit To(Operator& source, double at) const
    {
        return {frame, source, at, this, depth + 1, expressions, mayMiss};
    }
};

struct Renderer::State {
    std::mutex busy;                        ///< held while CheckRequest or Process runs
    std::atomic<bool> servesOthers = false; ///< was asked for a time other than that of the frame
    std::atomic<int> processed = 0, reused = 0;
    double seconds = 0.0; ///< under busy

    std::mutex ordered; ///< held while an operator with history takes its frames in order
    std::optional<double> latestTime;
    Results latest;
};

/// Results that some thread is making while others wait for them.
struct Renderer::Pending {
    std::condition_variable done;
    SharedResults results;
};

/// Levels below 0, descending, at which inputs of an operator are gathered after those of 0.
std::set<int, std::greater<>> LateLevels(Operator const& op);

} // namespace ombrelune
