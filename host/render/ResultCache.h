#pragma once

#include <cstddef>
#include <list>
#include <mutex>
#include <unordered_map>

#include "host/graph/Results.h"
#include "host/render/ResultKey.h"

namespace ombrelune {

/// Results within a budget of bytes; the least recently used go first. A result that somebody still holds is
/// found even after it went. Thread-safe.
class ResultCache {
public:
    explicit ResultCache(std::size_t budget) : budget_(budget) {}

    /// Where a result comes from, for DropFrame.
    struct Origin {
        std::uint64_t op = 0;   ///< serial of the operator
        double frame = 0.0;     ///< frame that was being rendered
        bool lastsFrame = true; ///< it serves no other frame
    };

    /// Whether a result is there that holds a value; asking does not count as a use.
    bool Has(ResultKey const& key);
    /// Null when there is none.
    SharedResults Find(ResultKey const& key);
    /// @param bytes  picture memory that the result keeps alive and nothing else does
    void Add(ResultKey const& key, SharedResults results, std::size_t bytes, Origin const& origin);
    /// Lets go what a finished frame leaves behind and no other frame will ask for.
    /// @param servesOthers  tells of an operator whether its results serve other frames all the same
    template <class Predicate> void DropFrame(double frame, Predicate servesOthers)
    {
        std::lock_guard guard(lock_);
        for (auto it = recent_.begin(); it != recent_.end();) {
            auto const here = it++;
            Origin const& origin = here->origin;
            if (origin.frame == frame && origin.lastsFrame && !servesOthers(origin.op)) Drop(here);
        }
        Sweep();
    }
    void Clear();

private:
    struct Entry {
        ResultKey key;
        SharedResults results;
        std::size_t bytes;
        Origin origin;
    };
    using Place = std::list<Entry>::iterator;
    struct Known {
        Place place; ///< end when it went
        std::weak_ptr<Results const> results;
    };
    void Drop(Place place);
    void Sweep();

    std::size_t budget_;
    std::mutex lock_;
    std::list<Entry> recent_; // least recently used first
    std::unordered_map<ResultKey, Known, ResultKeyHash> known_;
    std::size_t bytes_ = 0;
};

} // namespace ombrelune
