#include "host/value/FuID.h"

#include <mutex>
#include <unordered_set>

namespace ombrelune {

FuID::FuID(std::string_view text)
{
    // Never destroyed: identifiers live in static objects of every library, whose order of destruction is
    // unknown.
    static auto& pool = *new std::unordered_set<std::string>;
    static std::mutex lock;
    std::lock_guard guard(lock);
    text_ = &*pool.emplace(text).first;
}

} // namespace ombrelune
