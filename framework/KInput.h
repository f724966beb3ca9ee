#pragma once

#include <memory>

#include "framework/KParameter.h"
#include "host/graph/Input.h"

namespace ombrelune {

/// Joins a host input with the parameter that declared it.
class KInput : public KListItem {
public:
    KInput(std::uint32_t inputId, Input* hostInput, KParameter* declared, int subInput);
    ~KInput() override;

    std::uint32_t id;
    Input* input; ///< the host's, null when there was no host to declare it to
    KParameter* parameter;
    int sub; ///< channel or component in a compound parameter, 0 otherwise

    // What the effect's target points to while a frame is rendered.
    std::unique_ptr<KImage> image;
    std::unique_ptr<KLookUpTable> table;
};

class KInputList : public KList {
public:
    /// First entry with the identifier, or null.
    KInput* FindInput(std::uint32_t id) const;
    // These do nothing for an identifier that no input has.
    void SetVisibility(std::uint32_t id, bool visible);
    void SetName(std::uint32_t id, KParameterValue const& value);
    /// Numbers, ends of ranges and points only, from the value's float or point.
    void SetValue(std::uint32_t id, KParameterValue const& value, float time);
};

} // namespace ombrelune
