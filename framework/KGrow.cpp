#include "framework/KGrow.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

#include "image/KRandomStream.h"
#include "image/KTween.h"
#include "image/Saturate.h"

namespace ombrelune {

namespace {

enum Type { kForward, kOutsideIn, kRandom };

using Order = std::vector<int>;

/// Items in the order in which waves from a few places reach them.
Order WavesOf(int count, KGrowData const& data, KRandomStream& random)
{
    int const seeds = std::clamp(data.seeds, 1, count);
    int const jitter = SaturatedInt(data.seedsJitter * static_cast<float>(count));
    std::vector<std::int64_t> places;
    for (std::int64_t s = 0; s < seeds; ++s) {
        std::int64_t place = s * count / seeds;
        if (jitter > 1) place += random.RandomInt(jitter);
        place += std::int64_t{data.start} * (count - 1);
        places.push_back((place % count + count) % count);
    }
    Order order(static_cast<std::size_t>(count), -1);
    int reached = 0;
    auto const reach = [&](std::int64_t item, int step) {
        int& value = order[static_cast<std::size_t>(item % count)];
        if (value >= 0) return;
        value = step;
        ++reached;
    };
    for (int i = 0; i < count && reached < count; ++i)
        for (std::int64_t const place : places) {
            reach(place + i, i);
            if (data.type == kOutsideIn) reach(place - i + count, i);
        }
    return order;
}

Order RandomOrder(int count, bool oneByOne, KRandomStream& random)
{
    Order order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    for (int i = 0; i < count; ++i) {
        auto const item = static_cast<std::size_t>(i);
        if (oneByOne)
            std::swap(order[item], order[item + static_cast<std::size_t>(random.RandomInt(count - i))]);
        else order[item] = static_cast<int>(random.RandomInt(std::int64_t{count} * 10) % count);
    }
    return order;
}

} // namespace

void KGrowData::ParameterListAdd(KParameterList& parameters)
{
    // clang-format off
    parameters.AddSliderSeed(&seed, "Range Random Seed", "RTRS"_id, 0);
    parameters.AddButtons   (&type, 0, "Range Type", "RTTy"_id, KF_AffectInputs, {"Forward", "Outside In", "Random"});
    parameters.AddSliderInt (&seeds, 1, "Range Seeds", "RTSe"_id, KF_SoftMax, 1, 10);
    parameters.AddSlider    (&seedsJitter, 0.0F, "Range Seeds Jitter", "RTSJ"_id, 0, 0.0, 1.0);
    parameters.AddCheckbox  (&oneByOne, false, "Range Random One By One", "RROO"_id, 0);
    parameters.AddRange     (&range, {0.0F, 1.0F}, "Range Min", "Range Max", "RTRL"_id, "RTRH"_id, 0, 0.0, 1.0);
    parameters.AddSlider    (&overlap, 0.0F, "Range Overlap", "RTOv"_id, 0, 0.0, 1.0);
    parameters.AddSlider    (&length, 1.0F, "Range Length", "RTLe"_id, KF_SoftMax, 0.0, 5.0);
    parameters.AddButtons   (&curve, 0, "Range Curve", "RTCu"_id, 0, {"Linear", "Ease In", "Ease Out", "Ease In/Out"});
    // clang-format on
}

KGrow::KGrow(int count, KGrowData const& data)
{
    if (count < 1) return;
    KRandomStream random(static_cast<unsigned>(data.seed));
    Order const order =
        data.type == kRandom ? RandomOrder(count, data.oneByOne, random) : WavesOf(count, data, random);
    float low = std::numeric_limits<float>::max(), high = std::numeric_limits<float>::min();
    for (int const place : order) {
        float const start = (1.0F - data.overlap) * static_cast<float>(place);
        float const length =
            std::max(0.0F, data.length + random.Random(-data.lengthJitter, data.lengthJitter));
        values_.push_back({start, length, 0.0F, 1.0F});
        low = std::min(low, start);
        high = std::max(high, start + length);
    }
    float const from = low + data.range.low * (high - low), to = low + data.range.high * (high - low);
    for (KGrowValue& value : values_) {
        float const end = value.start + value.length;
        value.in = KTween(from, value.start, end, data.curve);
        value.out = KTween(to, value.start, end, data.curve);
    }
}

void KGrow::Get(int item, float& in, float& out) const
{
    bool const isListed = item >= 0 && static_cast<std::size_t>(item) < values_.size();
    in = isListed ? values_[static_cast<std::size_t>(item)].in : 0.0F;
    out = isListed ? values_[static_cast<std::size_t>(item)].out : 1.0F;
}

} // namespace ombrelune
