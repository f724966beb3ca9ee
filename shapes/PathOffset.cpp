#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "shapes/ClipperPaths.h"
#include "shapes/EachSubpath.h"
#include "shapes/FlatShape.h"
#include "shapes/KShapeArray.h"
#include "shapes/Turn.h"

// Outlines at a distance.

namespace ombrelune {

namespace {

/// Round joins of the clipping library grow with the root of the distance.
constexpr float kFarthestOffset = 1000.0F;

/// Points of the arc from v + r on, without its ends.
void AddArc(KShape& result, KVector2 const& v, KVector2 const& r, double turn, int joinPrecision)
{
    // A hair less, so that rounding does not cut a right angle into one part more.
    double const parts = std::ceil(std::abs(turn) / std::numbers::pi * joinPrecision - 1e-5);
    KVector2 const across = r.Ortho(false);
    for (int k = 1; k < parts; ++k) {
        double const angle = k * turn / parts;
        result.LineTo(v + static_cast<float>(std::cos(angle)) * r +
                      static_cast<float>(std::sin(angle)) * across);
    }
}

} // namespace

KShape* KShapeArray::OffsetOf(KShapeEffectOffsetData const& data)
{
    if (GetCount() < 2) return ShapeOf();
    auto* result = new KShape;
    float const d = data.offset;
    int const joinPrecision = std::clamp(data.joinPrecision, 1, kMostJoinSteps);
    bool const miter = data.joinType != kJoinBevel && data.joinType != kJoinRound;
    if (!miter) SetNormals(0.0F, 10.0F);
    auto const add = [&](KVector2 const& p) { result->To(p, result->GetCount() == 0, false); };
    for (int i = 0; i < GetCount(); ++i) {
        KVector2 const v = GetVector(i), previous = GetVectorPrev(i), next = GetVectorNext(i);
        KVector2 const a = miter ? KVector2() : GetNormal(i, false),
                       b = miter ? KVector2() : GetNormal(i, true);
        bool const outer = d * (a + b) * (v - previous) > 0.0F;
        if (miter || !outer) {
            add(v.Offset(previous, next, d));
            continue;
        }
        if (closed || i > 0) add(v + d * a);
        if (!closed && i == GetCount() - 1) continue;
        if (data.joinType == kJoinRound && result->GetCount() > 0)
            AddArc(*result, v, d * a, TurnOf(a, b), joinPrecision);
        add(v + d * b);
    }
    if (closed) result->Close();
    return result;
}

void KShapeArray::OffsetSimple(float offset)
{
    std::unique_ptr<KShape> const moved(OffsetOf({offset, kJoinMiter, 8, 16}));
    int i = 0;
    for (KShapePoint const* p = moved->GetFirstPoint(); p; p = p->next) SetVector(i++, p->position);
}

KShape* KShape::OffsetOf(KShapeEffectOffsetData const& data) const
{
    if (data.offset == 0.0F) return CopyOf();
    if (!(std::abs(data.offset) <= kFarthestOffset)) return new KShape;
    FlatShape const flat(*this, data.steps);
    if (IsClosed(false)) {
        ClipperLib::Paths paths;
        PathsFromShape(paths, flat.Get(), kClipperScale);
        return ShapeFromPaths(
            OffsetPaths(paths, ToJoinType(data.joinType), double{data.offset} * kClipperScale, data.copies),
            kClipperScale);
    }
    return EachSubpath(KShapeArrayList(flat.Get()), [&](KShapeArray& array) { return array.OffsetOf(data); });
}

KShape* KShape::ReplicateOf(KShapeEffectReplicateData const& data) const
{
    KShape* result = data.keepOriginal ? CopyOf() : new KShape;
    int const number = CopiesOf(data.number, GetCount()), copies = number * (data.sides == 0 ? 2 : 1);
    auto const add = [&](float offset) {
        std::unique_ptr<KShape> const copy(
            OffsetOf({offset, data.joinType, data.joinPrecision, data.steps, copies}));
        result->TakePoints(*copy);
    };
    for (int i = 1; i <= number; ++i) {
        float const offset = data.offset * static_cast<float>(i);
        if (data.sides == 0 || data.sides == 1) add(-offset);
        if (data.sides == 0 || data.sides == 2) add(offset);
    }
    return result;
}

} // namespace ombrelune
