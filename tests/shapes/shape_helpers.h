#pragma once

#include <cmath>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "shapes/KShapeArray.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune::test {

using Shape = std::unique_ptr<KShape>;

/// A shape from text: M and L one point each, Q two, C three, Z closes; "M0,0 L1,0 Q1,1 0,1 Z".
inline Shape Path(std::string const& text)
{
    auto shape = std::make_unique<KShape>();
    std::istringstream in(text);
    char kind = 0, comma = 0;
    auto const point = [&] {
        KVector2 p;
        in >> p.x >> comma >> p.y;
        return p;
    };
    while (in >> kind) {
        if (kind == 'Z') {
            shape->Close();
            continue;
        }
        KVector2 const a = point();
        if (kind == 'M' || kind == 'L') shape->To(a, kind == 'M', false);
        if (kind == 'Q') shape->ConicTo(a, point(), false);
        if (kind == 'C') {
            KVector2 const b = point();
            shape->BezierTo(a, b, point(), false);
        }
    }
    return shape;
}

/// The same way back, rounded to four digits; points of a curve are written one by one.
inline std::string TextOf(KShape const& shape)
{
    std::ostringstream out;
    auto const number = [](float v) {
        double const rounded = std::round(double{v} * 1e4) / 1e4;
        return rounded == 0.0 ? 0.0 : rounded; // not -0
    };
    for (KShapePoint const* p = shape.GetFirstPoint(); p; p = p->next) {
        out << (p->previous ? " " : "") << "MLQC"[p->type] << number(p->position.x) << ","
            << number(p->position.y);
        if (p->closed) out << " Z";
    }
    return out.str();
}
inline std::string TextOf(KShape* owned)
{
    Shape const shape(owned);
    return shape ? TextOf(*shape) : "null";
}

inline std::unique_ptr<KShapeArrayList> ArraysOf(KShape const& shape)
{
    return std::make_unique<KShapeArrayList>(&shape);
}
inline KShapeArray* First(KShapeArrayList const& arrays) { return static_cast<KShapeArray*>(arrays.First()); }

/// Area of each flat subpath, positive counter-clockwise.
inline std::vector<double> AreasOf(KShape const& shape)
{
    std::vector<double> areas;
    auto const arrays = ArraysOf(shape);
    for (KShapeArray const* array : arrays->Each<KShapeArray>()) {
        double area = 0.0;
        for (int i = 0; i < array->GetCount(); ++i) {
            KVector2 const a = array->GetVector(i), b = array->GetVector(array->IndexNext(i));
            area += double{a.x} * b.y - double{a.y} * b.x;
        }
        areas.push_back(area / 2.0);
    }
    return areas;
}
inline double AreaOf(KShape const& shape)
{
    double sum = 0.0;
    for (double area : AreasOf(shape)) sum += area;
    return sum;
}
inline double AreaOf(KShape* owned)
{
    Shape const shape(owned);
    return AreaOf(*shape);
}

inline std::vector<KVector2> PointsOf(KShape const& shape)
{
    std::vector<KVector2> points;
    for (KShapePoint const* p = shape.GetFirstPoint(); p; p = p->next) points.push_back(p->position);
    return points;
}

inline constexpr char const* kSquare = "M0,0 L1,0 L1,1 L0,1 Z"; ///< counter-clockwise
inline constexpr char const* kCorner = "M0,0 L1,0 L1,1";        ///< turns to the left

} // namespace ombrelune::test
