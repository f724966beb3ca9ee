#include <algorithm>
#include <cmath>
#include <optional>

#include "shapes/EachSubpath.h"
#include "shapes/FlatShape.h"
#include "shapes/KShapeArray.h"
#include "shapes/KShapeGroup.h"

// Parts of a path by its length. A range that is spread over several things is brought to the length of each
// in turn.

namespace ombrelune {

namespace {

class Spread {
public:
    Spread(KRange const& range, float total) : range_(range), total_(total == 0.0F ? 1.0F : total) {}

    /// The range for the next thing of that length; a thing without length gets the range as it is.
    KRange Next(float length)
    {
        if (!(length > 0.0F)) return range_;
        float const a = travelled_ / total_, b = (travelled_ + length) / total_;
        travelled_ += length;
        return {(range_.low - a) / (b - a), (range_.high - a) / (b - a)};
    }

private:
    KRange range_;
    float total_, travelled_ = 0.0F;
};

KShapeEffectWriteOnData WithRange(KShapeEffectWriteOnData data, KRange const& range)
{
    data.range = range;
    return data;
}

} // namespace

KShape* KShapeArray::WriteOnOf(KRange const& range) const
{
    if (range.low <= 0.0F && range.high >= 1.0F) return ShapeOf();
    if (range.low > 1.0F || range.high < 0.0F || range.low > range.high) return nullptr;
    double const total = PathLength();
    double const start = std::max(range.low, 0.0F) * total, end = std::min(range.high, 1.0F) * total;
    if (!(start < end)) return nullptr; // a single point would end the list of subpaths
    auto* result = new KShape;
    double travelled = 0.0;
    for (int i = 0; i < GetSegmentCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i));
        double const t0 = travelled, t1 = t0 + SegmentLength(i);
        auto const at = [&](double t) {
            return a + static_cast<float>(t1 > t0 ? (t - t0) / (t1 - t0) : 0.0) * (b - a);
        };
        if (result->GetCount() == 0 && t0 <= start && start <= t1) result->MoveTo(at(start));
        if (start < t1 && t1 < end) result->LineTo(b);
        if (t0 <= end && end <= t1) {
            result->LineTo(at(end));
            break;
        }
        travelled = t1;
    }
    return result;
}

KShape* KShape::WriteOnOf(KShapeEffectWriteOnData const& data) const
{
    KRange const range = data.range;
    if (range.low >= range.high) return new KShape;
    if (range.low <= 0.0F && range.high >= 1.0F) return CopyOf();
    FlatShape const flat(*this, data.steps);
    KShapeArrayList const arrays(flat.Get());
    bool const spreads = data.level < kLevelElement && arrays.Count() > 1;
    Spread spread(range, flat.Get()->Length());
    return EachSubpath(arrays, [&](KShapeArray const& array) {
        return array.WriteOnOf(spreads ? spread.Next(array.Length()) : range);
    });
}

KShapeList* KShapeList::WriteOnOf(KShapeEffectWriteOnData const& data) const
{
    bool const spreads = data.level == kLevelGlobal && Count() > 1;
    Spread spread(data.range, spreads ? LengthTotal() : 1.0F);
    return Lift([&](KShape const& shape) {
        return shape.WriteOnOf(spreads ? WithRange(data, spread.Next(shape.Length())) : data);
    });
}

KShapeGroup* KShapeGroup::WriteOnOf(KShapeEffectWriteOnData const& data) const
{
    KRange range(data.range.low + data.shift, data.range.high + data.shift);
    std::optional<KRange> second;
    if (data.wrap) {
        if (range.low < 0.0F || range.low > 1.0F) range.low -= std::floor(range.low);
        range.high = range.low + (data.range.high - data.range.low);
        if (range.high > 1.0F) {
            second = KRange(0.0F, range.high - 1.0F);
            range.high = 1.0F;
        }
    }
    bool const spreads = data.level == kLevelGlobal && GetCount() > 1;
    auto* result = new KShapeGroup;
    auto const add = [&](KRange const& part) {
        Spread spread(part, spreads ? LengthTotal() : 1.0F);
        for (int i = 0; i < GetCount(); ++i) {
            KShapeList const* list = Get(i);
            KRange const own = spreads ? spread.Next(list->LengthTotal()) : part;
            result->Add(list->WriteOnOf(WithRange(data, own)), false);
        }
    };
    add(range);
    if (second) add(*second);
    return result;
}

} // namespace ombrelune
