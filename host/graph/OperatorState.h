#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/graph/Input.h"
#include "host/graph/InputState.h"

namespace ombrelune {

class Operator;

/// What a render reads of one operator, as it is at one version of its document. Never changes.
struct OperatorState {
    std::shared_ptr<Operator> op;   ///< lives as long as somebody renders by this
    std::vector<InputState> inputs; ///< by input index
    std::vector<int> lateLevels;    ///< levels below 0, descending, at which inputs are gathered
    bool passThrough = false;
    bool keepsHistory = false;

    InputState const& Of(Input const& input) const { return inputs[static_cast<std::size_t>(input.Index())]; }
};

/// All operators of a document at one version. Shared and never changed, so that whoever holds one may read
/// it without a lock while the document is edited.
class Snapshot {
public:
    std::uint64_t Version() const { return version_; }
    /// Null for an operator that the document does not have.
    std::shared_ptr<OperatorState const> const& Of(Operator const& op) const;
    /// In order of their places; some are null.
    std::vector<std::shared_ptr<OperatorState const>> const& States() const { return states_; }

private:
    friend class FusionDoc;
    std::uint64_t version_ = 0;
    std::vector<std::shared_ptr<OperatorState const>> states_; // by place
};

} // namespace ombrelune
