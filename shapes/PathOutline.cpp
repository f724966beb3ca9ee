#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "image/Saturate.h"
#include "shapes/EachSubpath.h"
#include "shapes/FlatShape.h"
#include "shapes/KShapeArray.h"
#include "shapes/KStyle.h"
#include "shapes/Turn.h"

// The area of a pen's stroke.

namespace ombrelune {

namespace {

constexpr double kLeastTurn = 1.1920929e-7; // below it a join is straight

/// The sides of a stroke: outer on the right of the path, inner on its left.
class Stroke {
public:
    explicit Stroke(KPenStyle const& newPen)
        : pen_(newPen), outerThickness_(newPen.ThicknessOuter()), innerThickness_(newPen.ThicknessInner()),
          joinPrecision_(std::clamp(newPen.joinPrecision, 2, kMostJoinSteps))
    {}

    void AddSide(KVector2 const& p0, KVector2 const& p1)
    {
        KVector2 const d = p1 - p0;
        KVector2 const toOuter = Across(d, -outerThickness_), toInner = Across(d, innerThickness_);
        outer.points.push_back(p0 + toOuter);
        outer.points.push_back(p1 + toOuter);
        inner.points.push_back(p0 + toInner);
        inner.points.push_back(p1 + toInner);
    }

    /// The corner p0, p1, p2 on its outer side: the right one of a turn to the left.
    void AddJoin(KVector2 const& p0, KVector2 const& p1, KVector2 const& p2)
    {
        KVector2 const d0 = p1 - p0, d1 = p2 - p1;
        double const turn = TurnOf(d0, d1);
        if (std::abs(turn) <= kLeastTurn) return;
        bool const toLeft = turn > 0.0;
        std::vector<KVector2>& side = toLeft ? outer.points : inner.points;
        double const thickness = toLeft ? -outerThickness_ : innerThickness_;
        if (pen_.joinType == kJoinMiter) AddMiter(side, p1, d0, turn, thickness);
        else if (pen_.joinType == kJoinRound) AddArc(side, p1, Across(d0, thickness), turn);
    }

    KShape* Closed() const
    {
        auto* shape = new KShape;
        outer.AddToShape(shape, false, true);
        shape->Close();
        inner.AddToShape(shape, true, true);
        shape->Close();
        return shape;
    }

    KShape* Open() const
    {
        auto* shape = new KShape;
        if (outer.GetCount() < 2 || inner.GetCount() < 2) return shape;
        outer.AddToShape(shape, false, true);
        AddCap(*shape, outer.points.back(), inner.points.back());
        inner.AddToShape(shape, true, false);
        AddCap(*shape, inner.points.front(), outer.points.front());
        shape->Close();
        return shape;
    }

private:
    /// To the left of a direction, by so much.
    static KVector2 Across(KVector2 const& d, double thickness)
    {
        return static_cast<float>(thickness / d.Length()) * d.Ortho(false);
    }

    /// Crossing of the two lines along the sides, if the limit lets it. On the bisector, where it doesn't
    /// depend on how flat the lines cross.
    void AddMiter(std::vector<KVector2>& side, KVector2 const& corner, KVector2 const& d0, double turn,
                  double thickness) const
    {
        double const tip = std::abs(thickness) / std::abs(std::cos(turn / 2.0));
        if (!(tip < pen_.miterLimit * (outerThickness_ + innerThickness_))) return;
        double const angle = std::atan2(d0.x, -d0.y) + turn / 2.0; // of the left of the bisector
        double const reach = thickness < 0.0 ? -tip : tip;
        side.push_back(corner + KVector2(static_cast<float>(reach * std::cos(angle)),
                                         static_cast<float>(reach * std::sin(angle))));
    }

    /// From one side's end to the other's start, both left out.
    void AddArc(std::vector<KVector2>& side, KVector2 const& corner, KVector2 const& start, double turn) const
    {
        int const parts = SaturatedInt(joinPrecision_ * std::abs(turn) / std::numbers::pi + 0.5);
        KVector2 const across = start.Ortho(false);
        for (int k = 1; k < parts; ++k) {
            double const angle = k * turn / parts;
            side.push_back(corner + static_cast<float>(std::cos(angle)) * start +
                           static_cast<float>(std::sin(angle)) * across);
        }
    }

    /// Round the end of a stroke from a to b, both left out: to the left of the way from b to a.
    void AddCap(KShape& shape, KVector2 const& a, KVector2 const& b) const
    {
        if (pen_.endType == 0) return;
        KVector2 const centre = 0.5F * (a + b), x = (a - b).Normalize(), y = x.Ortho(false);
        double const r = 0.5 * (a - b).Length();
        auto const add = [&](double u, double v) {
            shape.LineTo(centre + static_cast<float>(u * r) * x + static_cast<float>(v * r) * y);
        };
        int const n = joinPrecision_;
        auto const cosine = [&](int k) { return std::cos(std::numbers::pi * k / n); };
        auto const sine = [&](int k) { return std::sin(std::numbers::pi * k / n); };
        double const w = std::clamp(pen_.endRoundness, 0.0F, 1.0F);
        if (w == 1.0) {
            for (int k = 1; k < n; ++k) add(cosine(k), sine(k));
        } else if (w == 0.0) {
            add(1.0, 1.0);
            add(-1.0, 1.0);
        } else {
            // Two quarter circles of radius w, moved out of the way by what is left.
            double const i = 1.0 - w;
            add(1.0, i);
            for (int k = 1; k < n / 2; ++k) add(i + w * cosine(k), i + w * sine(k));
            add(i, 1.0);
            add(-i, 1.0);
            for (int k = n / 2 + 1; k < n; ++k) add(w * cosine(k) - i, i + w * sine(k));
            add(-1.0, i);
        }
    }

    KPenStyle const& pen_;
    double const outerThickness_, innerThickness_;
    int const joinPrecision_;
    KShapeArray outer, inner;
};

} // namespace

KShape* KShapeArray::OutlineOf(KPenStyle const& pen) const
{
    if (GetCount() < 2) return nullptr;
    Stroke stroke(pen);
    for (int i = 0; i < GetSegmentCount(); ++i) {
        int const next = IndexNext(i);
        KVector2 const p0 = GetVector(i), p1 = GetVector(next);
        if (!(p0.Distance(p1) > 0.0F)) continue;
        stroke.AddSide(p0, p1);
        // An open end goes straight on.
        if (closed || i + 1 < GetSegmentCount()) stroke.AddJoin(p0, p1, GetVectorNext(next));
    }
    return closed ? stroke.Closed() : stroke.Open();
}

KShape* KShape::OutlineOf(KShapeEffectOutlineData const& data) const
{
    KPenStyle const& pen = data.pen;
    if (GetCount() < 2 || !(pen.thickness > 0.0F)) return new KShape;
    FlatShape const flat(*this, data.steps);
    bool const dashed = pen.dash.lineType > 0;
    std::unique_ptr<KShape> const dashes(dashed ? flat.Get()->DashDotOf(pen.dash, pen.thickness) : nullptr);
    KShape* const result = EachSubpath(KShapeArrayList(dashed ? dashes.get() : flat.Get()),
                                       [&](KShapeArray const& array) { return array.OutlineOf(pen); });
    if (pen.winding != 0)
        for (KShapePoint* p = result->GetFirstPoint(); p; p = p->next) p->winding = pen.winding;
    return result;
}

} // namespace ombrelune
