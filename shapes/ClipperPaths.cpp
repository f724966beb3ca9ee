#include "shapes/ClipperPaths.h"

#include <cmath>
#include <numbers>

#include "shapes/ClippingWork.h"
#include "shapes/KShapeArray.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune {

namespace {

using namespace ClipperLib;

/// No exception leaves the library: the road of a render knows none.
template <class Work> Paths WithoutExceptions(Work const& work)
{
    try {
        return work();
    } catch (clipperException const&) {
        return {};
    }
}

/// Points of a full turn of the library's round joins: a quarter of a unit is what they may differ from the
/// arc.
double ArcPoints(double distance)
{
    return std::numbers::pi / std::acos(1.0 - std::min(0.25 / std::abs(distance), 1.0));
}

} // namespace

void PathsFromShape(Paths& paths, KShape const* shape, float scale)
{
    KShapeArrayList const arrays(shape);
    for (KShapeArray const* array : arrays.Each<KShapeArray>()) {
        if (!array->IsBounded()) continue;
        Path& path = paths.emplace_back();
        path.reserve(array->points.size());
        for (KVector2 const& p : array->points)
            path.emplace_back(static_cast<cInt>(double{p.x} * scale), static_cast<cInt>(double{p.y} * scale));
    }
}

void PathsFromShapeGroup(Paths& paths, KShapeGroup const* group, float scale)
{
    if (!group) return;
    for (int i = 0; i < group->GetCount(); ++i)
        for (KShape const* shape : group->Get(i)->Each<KShape>()) PathsFromShape(paths, shape, scale);
}

KShape* ShapeFromPaths(Paths const& paths, float scale)
{
    auto* shape = new KShape;
    for (Path const& path : paths) {
        bool first = true;
        for (IntPoint const& p : path) {
            shape->To({static_cast<float>(static_cast<double>(p.X) / scale),
                       static_cast<float>(static_cast<double>(p.Y) / scale)},
                      first, false);
            first = false;
        }
        if (!path.empty()) shape->Close();
    }
    return shape;
}

ClipType ToClipType(int type)
{
    constexpr ClipType kTypes[] = {ctIntersection, ctUnion, ctDifference, ctXor};
    return type >= 0 && type < 4 ? kTypes[type] : ctIntersection;
}

PolyFillType ToPolyFillType(int fill) { return fill == 1 ? pftNonZero : pftEvenOdd; }

JoinType ToJoinType(int type)
{
    return type == kJoinBevel ? jtSquare : type == kJoinRound ? jtRound : jtMiter;
}

Paths OffsetPaths(Paths const& paths, JoinType join, double distance, int copies)
{
    double const most =
        kMostClippingWork / copies / (join == jtRound ? 1.0 + MeanTurn(paths) * ArcPoints(distance) : 1.0);
    if (ClippingWork(UnclippedOffset(paths, distance), most) > most) return {};
    return WithoutExceptions([&] {
        ClipperOffset offset(0.0, 0.0); // the library's own limits of mitres and arcs
        offset.AddPaths(paths, join, etClosedPolygon);
        Paths solution;
        offset.Execute(solution, distance);
        return solution;
    });
}

Paths CombinePaths(Paths const& subject, Paths const& clip, ClipType type, PolyFillType fill)
{
    Paths all = subject;
    all.insert(all.end(), clip.begin(), clip.end());
    if (ClippingWork(all, kMostClippingWork) > kMostClippingWork) return {};
    return WithoutExceptions([&] {
        Clipper clipper(0);
        clipper.AddPaths(subject, ptSubject, true);
        clipper.AddPaths(clip, ptClip, true);
        Paths solution;
        clipper.Execute(type, solution, fill, fill);
        return solution;
    });
}

} // namespace ombrelune
