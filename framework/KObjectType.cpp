#include "framework/KObjectType.h"

#include <algorithm>
#include <vector>

namespace ombrelune {

namespace {

std::vector<KObjectType>& Types()
{
    static std::vector<KObjectType> types;
    return types;
}

} // namespace

KObjectType const* FindObjectType(KParameterType type)
{
    auto const& types = Types();
    auto found =
        std::find_if(types.begin(), types.end(), [&](KObjectType const& t) { return t.type == type; });
    return found == types.end() ? nullptr : &*found;
}

KObjectTypeRegistration::KObjectTypeRegistration(KObjectType const& type) { Types().push_back(type); }

} // namespace ombrelune
