#include "shapes/KShape.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "shapes/FlatShape.h"
#include "shapes/KShapeArray.h"

namespace ombrelune {

void KShape::AddPoint(KShapePoint* point)
{
    point->previous = last_;
    (last_ ? last_->next : first_) = point;
    last_ = point;
    ++count_;
    conicCount_ += point->type == kShapeConic;
    bezierCount_ += point->type == kShapeBezier;
}

void KShape::ConicTo(KVector2 const& control, KVector2 const& end, bool closed)
{
    AddPoint(new KShapePoint(control, kShapeConic, false));
    AddPoint(new KShapePoint(end, kShapeConic, closed));
}

void KShape::BezierTo(KVector2 const& control1, KVector2 const& control2, KVector2 const& end, bool closed)
{
    AddPoint(new KShapePoint(control1, kShapeBezier, false));
    AddPoint(new KShapePoint(control2, kShapeBezier, false));
    AddPoint(new KShapePoint(end, kShapeBezier, closed));
}

void KShape::Close()
{
    if (last_) last_->closed = true;
}

void KShape::Clear()
{
    while (KShapePoint* const point = first_) {
        first_ = point->next;
        delete point;
    }
    last_ = nullptr;
    count_ = conicCount_ = bezierCount_ = 0;
}

void KShape::AddShape(KShape const* source, bool reverse, ShapeWindingMode winding)
{
    if (!source) return;
    auto const add = [&](KShapePoint const& from, KShapePoint* copy) {
        copy->winding = winding == kWindingKeep ? from.winding : winding;
        AddPoint(copy);
    };
    if (!reverse) {
        KShapePoint const* const last = source->last_; // the source may be this shape
        for (KShapePoint const* p = source->first_; p; p = p == last ? nullptr : p->next)
            add(*p, new KShapePoint(*p));
        return;
    }
    // A segment's type sits at its end point, so it moves on to the next point of the way back.
    ShapePointType type = kShapeMove;
    for (KShapePoint const* p = source->last_; p; p = p->previous) {
        auto* copy = new KShapePoint(p->position, type, false);
        if (p->type == kShapeMove) {
            copy->type = kShapeLine;
            copy->closed = true;
        }
        if (p->closed) copy->type = kShapeMove;
        add(*p, copy);
        type = p->type;
    }
}

void KShape::AddShape(ShapePresetType preset, KVector2 const& size, int steps, float angle)
{
    float const hx = size.x / 2.0F, hy = size.y / 2.0F;
    steps = std::clamp(steps, 0, kMostSteps);
    float const turn = 2.0F * std::numbers::pi_v<float> / static_cast<float>(std::max(steps, 1));
    KShapeArray outline;
    auto const addAt = [&](float a, float rx, float ry) {
        outline.Add({rx * std::cos(a), ry * std::sin(a)});
    };
    switch (preset) {
    case kPresetCross:
        outline.points = {{hy, hx},   {-hy, hx}, {-hy, hy}, {-hx, hy}, {-hx, -hy}, {-hy, -hy},
                          {-hy, -hx}, {hy, -hx}, {hy, -hy}, {hx, -hy}, {hx, hy},   {hy, hy}};
        outline.SetClosed(true);
        break;
    case kPresetPolygon:
    case kPresetPolygonToo:
        for (int i = 0; i < steps; ++i) addAt(angle + static_cast<float>(i) * turn, hx, hy);
        outline.SetClosed(steps > 2);
        break;
    case kPresetStar:
        for (int i = 0; i < steps; ++i) {
            addAt(angle + static_cast<float>(i) * turn, hx, hx);
            addAt(angle + (static_cast<float>(i) + 0.5F) * turn, hy, hy);
        }
        outline.SetClosed(true);
        break;
    default: outline.points = {{-hx, -hy}, {hx, -hy}, {hx, hy}, {-hx, hy}}; outline.SetClosed(true);
    }
    outline.AddToShape(this, false, true);
}

void KShape::TakePoints(KShape& source)
{
    if (!source.first_ || &source == this) return;
    source.first_->previous = last_;
    (last_ ? last_->next : first_) = source.first_;
    last_ = source.last_;
    count_ += source.count_;
    conicCount_ += source.conicCount_;
    bezierCount_ += source.bezierCount_;
    source.first_ = source.last_ = nullptr;
    source.Clear();
}

bool KShape::IsClosed(bool lastOnly) const
{
    if (!last_ || !last_->closed) return false;
    if (lastOnly) return true;
    for (KShapePoint const* p = first_->next; p; p = p->next)
        if (p->type == kShapeMove && !p->previous->closed) return false;
    return true;
}

KShape* KShape::CopyOf() const
{
    auto* copy = new KShape;
    copy->AddShape(this, false, kWindingKeep);
    return copy;
}

void KShape::Transform(KMatrix4 const& m)
{
    for (KShapePoint* p = first_; p; p = p->next) p->position = m * p->position;
}

void KShape::Boundary(KVector2& min, KVector2& max) const
{
    if (!first_) return;
    min = max = first_->position;
    for (KShapePoint const* p = first_->next; p; p = p->next) {
        min = {std::min(min.x, p->position.x), std::min(min.y, p->position.y)};
        max = {std::max(max.x, p->position.x), std::max(max.y, p->position.y)};
    }
}

void KShape::Center(KVector2 const& centre)
{
    KVector2 min, max;
    Boundary(min, max);
    KVector2 const move = centre - 0.5F * (min + max);
    for (KShapePoint* p = first_; p; p = p->next) p->position += move;
}

float KShape::Length() const
{
    double length = 0.0;
    for (KShapePoint const* p = first_; p; p = p->next)
        if (p->type == kShapeLine && p->previous) length += p->position.Distance(p->previous->position);
    return static_cast<float>(length);
}

bool KShape::Inside(KVector2 const& p) const
{
    FlatShape const flat(*this, 16);
    KShapeArrayList const arrays(flat.Get());
    for (KShapeArray const* array : arrays.Each<KShapeArray>())
        if (array->Inside(p)) return true;
    return false;
}

} // namespace ombrelune
