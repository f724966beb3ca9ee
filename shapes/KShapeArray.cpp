#include "shapes/KShapeArray.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "shapes/KShape.h"

namespace ombrelune {

namespace {

bool EndsSubpath(KShapePoint const& p) { return p.closed || !p.next || p.next->type == kShapeMove; }

/// The subpath from the cursor on, which moves past it; null without two different points.
std::unique_ptr<KShapeArray> TakeSubpath(KShapePoint const*& cursor)
{
    auto array = std::make_unique<KShapeArray>();
    std::size_t count = 1;
    for (KShapePoint const* p = cursor; !EndsSubpath(*p); p = p->next) ++count;
    array->points.reserve(count);
    KVector2 const start = cursor->position;
    array->Add(start);
    KShapePoint const* p = cursor;
    while (!EndsSubpath(*p)) {
        p = p->next;
        bool const repeatsStart = p->closed && p->position == start;
        if (!repeatsStart && p->position != array->points.back()) array->Add(p->position);
    }
    array->SetClosed(p->closed);
    if (array->GetCount() < 2) return nullptr;
    cursor = p->next;
    return array;
}

} // namespace

KShapeArrayList::KShapeArrayList(KShape const* shape)
{
    KShapePoint const* cursor = shape ? shape->GetFirstPoint() : nullptr;
    while (cursor) {
        std::unique_ptr<KShapeArray> array = TakeSubpath(cursor);
        if (!array) break;
        AddLast(array.release());
    }
}

KVector2 KShapeArray::GetVectorNext(int i) const
{
    int const last = GetCount() - 1;
    if (closed || i < last) return GetVector(IndexNext(i));
    KVector2 const end = GetVector(last);
    return last > 0 ? end - (GetVector(last - 1) - end) : end;
}

KVector2 KShapeArray::GetVectorPrev(int i) const
{
    if (closed || i > 0) return GetVector(IndexPrev(i));
    KVector2 const start = GetVector(0);
    return GetCount() > 1 ? start - (GetVector(1) - start) : start;
}

double KShapeArray::SegmentLength(int i) const { return GetVector(i).Distance(GetVector(IndexNext(i))); }

double KShapeArray::PathLength() const
{
    double length = 0.0;
    for (int i = 0; i < GetSegmentCount(); ++i) length += SegmentLength(i);
    return length;
}

bool KShapeArray::IsBounded() const
{
    constexpr float kFarthest = 1e12F;
    return std::all_of(points.begin(), points.end(), [](KVector2 const& p) {
        return std::abs(p.x) <= kFarthest && std::abs(p.y) <= kFarthest;
    });
}

bool KShapeArray::Inside(KVector2 const& p) const
{
    bool inside = false;
    for (int i = 0; i < GetCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i));
        if (!(std::min(a.x, b.x) <= p.x && p.x < std::max(a.x, b.x))) continue;
        float const y = a.y + (p.x - a.x) * (b.y - a.y) / (b.x - a.x);
        // A crossing at the side's first point does not count, even where the side before leaves it out too.
        if (y > p.y && KVector2(p.x, y) != a) inside = !inside;
    }
    return inside;
}

void KShapeArray::SetNormals(float smooth, float angle)
{
    normals.assign(2 * points.size(), {});
    if (points.size() < 2) {
        std::fill(normals.begin(), normals.end(), points.empty() ? KVector2() : points[0]);
        return;
    }
    double const limit = angle * std::numbers::pi / 180.0;
    for (int i = 0; i < GetCount(); ++i) {
        KVector2 const p = GetVector(i), q = GetVectorPrev(i), r = GetVectorNext(i);
        KVector2 n1 = (q - p).Ortho(true), n2 = (p - r).Ortho(true);
        float const turn = std::abs((p - q).Angle() - (r - p).Angle());
        if (smooth != 0.0F && turn != 0.0F && turn <= limit) {
            // Not by a formula for all: at 1 both are the mean, however n1 and n2 lie.
            KVector2 const mean = smooth * (n1 + n2).Normalize();
            n1 = smooth == 1.0F ? mean : (mean + (1.0F - smooth) * n1).Normalize();
            n2 = smooth == 1.0F ? mean : (mean + (1.0F - smooth) * n2).Normalize();
        }
        normals[2 * static_cast<std::size_t>(i)] = n1;
        normals[2 * static_cast<std::size_t>(i) + 1] = n2;
    }
}

KShape* KShapeArray::ShapeOf() const
{
    auto* shape = new KShape;
    AddToShape(shape, false, true);
    return shape;
}

void KShapeArray::AddToShape(KShape* shape, bool reverse, bool move) const
{
    if (points.empty()) return;
    int const count = GetCount();
    for (int i = 0; i < count; ++i) shape->To(GetVector(reverse ? count - 1 - i : i), move && i == 0, false);
    if (closed) shape->Close();
}

} // namespace ombrelune
