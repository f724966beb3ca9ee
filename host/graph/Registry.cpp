#include "host/graph/Registry.h"

#include <algorithm>

namespace ombrelune {

RegistryList& ClassRegistry()
{
    // Never destroyed: registrations of a bundle may leave it after the host's own statics are gone.
    static auto& list = *new RegistryList;
    return list;
}

Registry const* RegistryList::Find(FuID id) const
{
    auto found =
        std::find_if(all_.begin(), all_.end(), [&](Registry const* entry) { return entry->Id() == id; });
    return found == all_.end() ? nullptr : *found;
}

Registry::Registry(RegistryList& list, FuID id, TagList tags) : list_(list), id_(id), tags_(std::move(tags))
{
    list_.all_.push_back(this);
    if (auto* init = tags_.GetFunction<RegistryFunction>(Reg_InitFunction)) init(this);
}

Registry::~Registry()
{
    if (auto* cleanup = tags_.GetFunction<RegistryFunction>(Reg_CleanupFunction)) cleanup(this);
    std::erase(list_.all_, this);
}

} // namespace ombrelune
