#pragma once

#include <vector>

#include "framework/KParameter.h"
#include "image/KRange.h"

namespace ombrelune {

/// How an effect sweeps over the items of a list. A plain record: the parameters of tools are bound to its
/// members.
struct KGrowData {
    KRange range{0.0F, 1.0F}; ///< parts of the whole sweep that are shown
    int seed = 0;
    bool oneByOne = false; ///< of a random sweep: each place in the order occurs once
    int type = 0;          ///< 0 forward, 1 outside in, 2 random
    int seeds = 1;         ///< places that the sweep starts from
    int start = 0;         ///< whole lists by which the starting places are moved
    float seedsJitter = 0.0F;
    float overlap = 0.0F; ///< 0 one item after the other, 1 all together
    float length = 1.0F;  ///< of an item's own way, in items
    float lengthJitter = 0.0F;
    int curve = 0; ///< as KTween's shape

    void ParameterListAdd(KParameterList& parameters);
};

/// Where an item stands: `in` from 0 to 1 as the start of the range passes it, `out` as its end does.
struct KGrowValue {
    float start, length; ///< its own way in the sweep, in items
    float in, out;
};

/// The progress of each item of a list. Its random numbers come from a stream of its own.
class KGrow {
public:
    KGrow(int count, KGrowData const& data);

    /// 0 and 1 for an item beyond the list.
    void Get(int item, float& in, float& out) const;

private:
    std::vector<KGrowValue> values_;
};

} // namespace ombrelune
