#include "host/render/ResultCache.h"

namespace ombrelune {

namespace {

constexpr std::size_t kEntryBytes = 512; // what a number costs, so that numbers go some day too

} // namespace

SharedResults ResultCache::Find(ResultKey const& key)
{
    std::lock_guard guard(lock_);
    auto const found = known_.find(key);
    if (found == known_.end()) return nullptr;
    Known& known = found->second;
    if (known.place != recent_.end()) recent_.splice(recent_.end(), recent_, known.place);
    return known.results.lock();
}

bool ResultCache::Has(ResultKey const& key)
{
    std::lock_guard guard(lock_);
    auto const found = known_.find(key);
    if (found == known_.end()) return false;
    SharedResults const results = found->second.results.lock();
    return results && !results->problem;
}

void ResultCache::Add(ResultKey const& key, SharedResults results, std::size_t bytes, Origin const& origin)
{
    std::lock_guard guard(lock_);
    if (auto const found = known_.find(key); found != known_.end() && found->second.place != recent_.end())
        Drop(found->second.place);
    bytes += kEntryBytes;
    bytes_ += bytes;
    std::weak_ptr<Results const> const weak = results;
    recent_.push_back({key, std::move(results), bytes, origin});
    known_[key] = {std::prev(recent_.end()), weak};
    while (bytes_ > budget_) Drop(recent_.begin());
    if (known_.size() > 2 * recent_.size() + 1024) Sweep();
}

void ResultCache::Drop(Place place)
{
    bytes_ -= place->bytes;
    known_[place->key].place = recent_.end();
    recent_.erase(place);
}

void ResultCache::Sweep()
{
    std::erase_if(known_, [](auto const& entry) { return entry.second.results.expired(); });
}

void ResultCache::Clear()
{
    std::lock_guard guard(lock_);
    recent_.clear();
    known_.clear();
    bytes_ = 0;
}

} // namespace ombrelune
