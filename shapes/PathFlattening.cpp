#include <algorithm>
#include <array>
#include <cmath>

#include "image/PixelMath.h"
#include "shapes/FlatShape.h"
#include "shapes/KShape.h"

// Curves to straight segments.

namespace ombrelune {

namespace {

template <int kPoints> using CurveWeights = std::vector<std::array<float, kPoints>>;

/// Calls weights(t) for the ends of so many even parts of 0 to 1. The parameters add up in single floats, and
/// the last one is taken as it falls.
template <int kPoints, class Weights> CurveWeights<kPoints> Tabulate(int steps, Weights const& weights)
{
    CurveWeights<kPoints> table(static_cast<std::size_t>(steps));
    float const step = 1.0F / static_cast<float>(steps);
    float t = 0.0F;
    for (auto& row : table) row = weights(t += step);
    return table;
}

/// Walks a shape: point(p) for points that stay, curve(weights, points, end) for each curve. What is left of
/// a run without its end point are points that stay.
template <class Point, class Curve>
void WalkCurves(KShape const& shape, int steps, Point const& point, Curve const& curve)
{
    steps = std::clamp(steps, 1, kMostSteps);
    CurveWeights<3> conic;
    CurveWeights<4> bezier;
    for (KShapePoint const* p = shape.GetFirstPoint(); p; p = p->next) {
        KShapePoint const* const start = p->previous ? p->previous : p;
        KShapePoint const* const second = p->next;
        if (p->type == kShapeConic && second) {
            if (conic.empty())
                conic = Tabulate<3>(steps, [](float t) {
                    float const s = 1.0F - t;
                    return std::array{s * s, 2.0F * t * s, t * t};
                });
            curve(conic, std::array{start->position, p->position, second->position}, *second);
            p = second;
        } else if (p->type == kShapeBezier && second && second->next) {
            if (bezier.empty())
                bezier = Tabulate<4>(steps, [](float t) {
                    float const s = 1.0F - t;
                    return std::array{s * s * s, 3.0F * t * s * s, 3.0F * t * t * s, t * t * t};
                });
            KShapePoint const* const end = second->next;
            curve(bezier, std::array{start->position, p->position, second->position, end->position}, *end);
            p = end;
        } else point(*p);
    }
}

} // namespace

KShape* KShape::FlattenOf(int steps) const
{
    auto* flat = new KShape;
    WalkCurves(
        *this, steps,
        [&](KShapePoint const& p) {
            auto* copy = new KShapePoint(p);
            if (copy->type != kShapeMove) copy->type = kShapeLine;
            flat->AddPoint(copy);
        },
        [&](auto const& table, auto const& points, KShapePoint const& end) {
            for (auto const& weights : table) {
                KVector2 sum;
                for (std::size_t i = 0; i < points.size(); ++i) sum += weights[i] * points[i];
                flat->LineTo(sum);
            }
            if (end.closed) flat->Close();
        });
    return flat;
}

ShapeArrays KShape::ConvertTo(double offsetX, double offsetY, double scaleX, double scaleY, int steps) const
{
    ShapeArrays arrays;
    int start = 0;
    auto const add = [&](double x, double y, ShapeWindingMode winding) {
        int const i = static_cast<int>(arrays.points.size()), row = TruncateToInt(std::floor(y));
        arrays.points.push_back({x, y, row, static_cast<std::uint8_t>(winding)});
        arrays.indices.push_back({row, i, i - 1, i + 1});
    };
    auto const close = [&] {
        int const end = static_cast<int>(arrays.indices.size()) - 1;
        arrays.indices[static_cast<std::size_t>(start)].previous = end;
        arrays.indices[static_cast<std::size_t>(end)].next = start;
    };
    WalkCurves(
        *this, steps,
        [&](KShapePoint const& p) {
            if (p.type == kShapeMove) start = static_cast<int>(arrays.points.size());
            add(scaleX * p.position.x + offsetX, scaleY * p.position.y + offsetY, p.winding);
            if (p.closed) close();
        },
        [&](auto const& table, auto const& points, KShapePoint const& end) {
            for (auto const& weights : table) {
                double x = 0.0, y = 0.0;
                for (std::size_t i = 0; i < points.size(); ++i) {
                    x += scaleX * weights[i] * points[i].x;
                    y += scaleY * weights[i] * points[i].y;
                }
                add(x + offsetX, y + offsetY, end.winding);
            }
            if (end.closed) close();
        });
    if (arrays.points.empty()) return arrays;
    // The chain's ends have no neighbour but themselves.
    arrays.indices.front().previous = std::max(arrays.indices.front().previous, 0);
    int const last = static_cast<int>(arrays.points.size()) - 1;
    arrays.indices.back().next = std::min(arrays.indices.back().next, last);
    std::sort(arrays.indices.begin(), arrays.indices.end(), [](auto const& a, auto const& b) {
        return a.row != b.row ? a.row < b.row : a.point < b.point;
    });
    return arrays;
}

} // namespace ombrelune
