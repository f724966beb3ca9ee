#include <algorithm>
#include <cmath>
#include <optional>

#include "image/KMath.h"
#include "shapes/EachSubpath.h"
#include "shapes/FlatShape.h"
#include "shapes/KShapeArray.h"

// Operations that work on one subpath after the other.

namespace ombrelune {

namespace {

constexpr double kLeastDistance = 0.0001, kMostSamples = 1 << 16;
constexpr float kFullTurn = 6.2831855F;

} // namespace

KShape* KShape::ResampleOf(KShapeEffectResampleData const& data) const
{
    return EachSubpath(KShapeArrayList(this),
                       [&](KShapeArray const& array) { return array.ResampleOf(data); });
}

KShape* KShapeArray::ResampleOf(KShapeEffectResampleData const& data) const
{
    double const total = PathLength();
    if (points.empty() || !std::isfinite(total)) return ShapeOf();
    auto* result = new KShape;
    std::optional<KVector2> last;
    auto const add = [&](KVector2 const& p) {
        if (last == p) return;
        result->To(p, !last, false);
        last = p;
    };
    double const distance = std::max({kLeastDistance, double{data.distance}, total / kMostSamples});
    double target = std::max(0.0F, data.offset), travelled = 0.0;
    if (data.keepEndPoints) add(points.front());
    for (int i = 0; i < GetSegmentCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i));
        double const length = SegmentLength(i), end = travelled + length;
        if (data.keepOriginalPoints) add(a);
        for (; end > target; target += distance)
            add(a + static_cast<float>((target - travelled) / length) * (b - a));
        if (data.keepOriginalPoints) add(b);
        travelled = end;
    }
    if (closed) result->Close();
    else if (data.keepEndPoints) add(points.back());
    if (result->GetCount() < 2) result->Clear(); // a single point would end the list of subpaths
    return result;
}

KShape* KShape::SmoothOf(float smooth, float curvature) const
{
    return EachSubpath(KShapeArrayList(this),
                       [&](KShapeArray const& array) { return array.SmoothOf(smooth, curvature); });
}

KShape* KShapeArray::SmoothOf(float smooth, float curvature) const
{
    if (GetCount() < 3) return ShapeOf();
    auto* result = new KShape;
    float const k = smooth * curvature / 4.0F, s = (1.0F - smooth) / 3.0F;
    result->MoveTo(GetVector(0));
    for (int i = 0; i < GetSegmentCount(); ++i) {
        KVector2 const p0 = GetVector(i), p1 = GetVector(IndexNext(i));
        KVector2 const before = GetVectorPrev(i), after = GetVectorNext(IndexNext(i));
        KVector2 const c1 = p0 + k * (p1 - before) + s * (p1 - p0);
        KVector2 const c2 = p1 - k * (after - p0) - s * (p1 - p0);
        result->BezierTo(c1, c2, p1, false);
    }
    if (closed) result->Close();
    return result;
}

KShape* KShape::ZigZagOf(ShapeZigZagType type, float offset, int steps, float distance) const
{
    FlatShape const flat(*this, 16);
    return EachSubpath(KShapeArrayList(flat.Get()), [&](KShapeArray const& array) {
        return array.ZigZagOf(type, offset, steps, distance);
    });
}

KShape* KShapeArray::ZigZagOf(ShapeZigZagType type, float offset, int steps, float /*distance*/) const
{
    if (GetCount() < 2 || type != kZigZagSegments) return ShapeOf();
    steps = std::clamp(steps, 1, kMostSteps);
    auto* result = new KShape;
    float sign = 1.0F;
    for (int i = 0; i < GetSegmentCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i));
        if (!(SegmentLength(i) > 0.0)) continue;
        KVector2 const n = offset * (b - a).Ortho(true);
        bool const isEnd = !closed && i + 1 == GetSegmentCount();
        for (int k = 0; k < steps + (isEnd ? 1 : 0); ++k, sign = -sign) {
            KVector2 lean = sign * n;
            if (k == 0 && (closed || i > 0)) { // into the corner
                lean += sign * offset * (a - GetVector(IndexPrev(i))).Ortho(true);
                lean.SetLength(std::abs(offset));
            }
            KVector2 const p = a + static_cast<float>(k) / static_cast<float>(steps) * (b - a) + lean;
            result->To(p, result->GetCount() == 0, false);
        }
    }
    if (closed) result->Close();
    return result;
}

KShape* KShape::KillOf(KShapeEffectKillData const& data) const
{
    FlatShape const flat(*this, data.steps);
    return EachSubpath(KShapeArrayList(flat.Get()),
                       [&](KShapeArray const& array) { return array.KillOf(data); });
}

KShape* KShapeArray::KillOf(KShapeEffectKillData const& data) const
{
    float const first = KMod(data.angleOffset + data.angleMinimum, kFullTurn);
    float const last = KMod(data.angleOffset + data.angleMaximum, kFullTurn);
    auto const isKept = [&](KVector2 const& a, KVector2 const& b) {
        if (data.byAngle) {
            float const angle = KMod(a.Angle(b), kFullTurn);
            bool const after = angle >= first, before = angle <= last;
            if (!(last < first ? after || before : after && before)) return false;
        }
        return !data.byLength || KRange(data.lengthMinimum, data.lengthMaximum).IsIn(a.Distance(b));
    };
    auto* result = new KShape;
    bool keptBefore = false, keptAll = true;
    for (int i = 0; i < GetSegmentCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i));
        bool const keep = isKept(a, b);
        keptAll &= keep;
        if (keep && !keptBefore) result->MoveTo(a);
        if (keep && closed && keptAll && i + 1 == GetSegmentCount()) result->Close();
        else if (keep) result->LineTo(b);
        keptBefore = keep;
    }
    return result;
}

KShape* KShape::OffsetStartOf(float part) const
{
    if (part == 0.0F || !IsClosed(false)) return CopyOf();
    FlatShape const flat(*this, 16);
    return EachSubpath(KShapeArrayList(flat.Get()),
                       [&](KShapeArray const& array) { return array.OffsetStartOf(part); });
}

KShape* KShapeArray::OffsetStartOf(float part) const
{
    part = KMod(part, 1.0F);
    if (!closed || !(part > 0.0F)) return ShapeOf();
    double const target = part * PathLength();
    auto* result = new KShape;
    // From the cut on, then round from the first point to the side that holds the cut.
    double travelled = 0.0;
    for (int i = 0; i < GetCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i));
        double const length = SegmentLength(i), end = travelled + length;
        if (result->GetCount() == 0 && target < end)
            result->MoveTo(a + static_cast<float>((target - travelled) / length) * (b - a));
        if (result->GetCount() > 0) result->LineTo(b);
        travelled = end;
    }
    travelled = 0.0;
    for (int i = 0; i < GetCount() && result->GetCount() > 0; ++i) {
        travelled += SegmentLength(i);
        if (travelled >= target) break;
        result->LineTo(GetVector(IndexNext(i)));
    }
    result->Close();
    return result;
}

KShape* KShape::CloseOpenOf(int mode) const
{
    KShape* copy = CopyOf();
    if (mode < 1 || mode > 3) return copy;
    for (KShapePoint* p = copy->first_; p; p = p->next) {
        bool const isLast = !p->next || p->next->type == kShapeMove;
        if (isLast) p->closed = mode == 1 || (mode == 3 && !p->closed);
    }
    return copy;
}

} // namespace ombrelune
