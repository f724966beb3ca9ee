#include "shapes/ClippingWork.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrelune {

namespace {

using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;

constexpr double kCrossingWork = 100.0;

struct Vector {
    double x, y;
};

Vector Between(IntPoint const& from, IntPoint const& to)
{
    return {static_cast<double>(to.X - from.X), static_cast<double>(to.Y - from.Y)};
}

double Cross(Vector const& a, Vector const& b) { return a.x * b.y - a.y * b.x; }

struct Side {
    IntPoint low, high; // by y
    ClipperLib::cInt left, right;

    Side(IntPoint const& a, IntPoint const& b)
        : low(a.Y <= b.Y ? a : b), high(a.Y <= b.Y ? b : a), left(std::min(a.X, b.X)),
          right(std::max(a.X, b.X))
    {}

    bool Parts(Side const& other) const
    {
        Vector const along = Between(low, high);
        return (Cross(along, Between(low, other.low)) < 0.0) !=
               (Cross(along, Between(low, other.high)) < 0.0);
    }

    bool Crosses(Side const& other) const
    {
        return left <= other.right && other.left <= right && Parts(other) && other.Parts(*this);
    }
};

/// To the right of the way, of length 1; none for a way of no length.
Vector Normal(IntPoint const& from, IntPoint const& to)
{
    Vector const way = Between(from, to);
    double const length = std::hypot(way.x, way.y);
    return length > 0.0 ? Vector{way.y / length, -way.x / length} : Vector{0.0, 0.0};
}

IntPoint Moved(IntPoint const& p, Vector const& normal, double distance)
{
    return {p.X + std::llround(normal.x * distance), p.Y + std::llround(normal.y * distance)};
}

} // namespace

double ClippingWork(Paths const& paths, double most)
{
    std::vector<Side> sides;
    for (Path const& path : paths)
        for (std::size_t i = 0; i < path.size(); ++i)
            sides.emplace_back(path[i], path[(i + 1) % path.size()]);
    std::sort(sides.begin(), sides.end(), [](Side const& a, Side const& b) { return a.low.Y < b.low.Y; });
    double work = 0.0;
    std::vector<Side const*> alive; // on the sweep line, which moves up
    for (Side const& side : sides) {
        if (work > most) break;
        std::erase_if(alive, [&](Side const* each) { return each->high.Y <= side.low.Y; });
        auto const crossings =
            std::count_if(alive.begin(), alive.end(), [&](Side const* each) { return each->Crosses(side); });
        work += static_cast<double>(alive.size()) + kCrossingWork * static_cast<double>(crossings);
        alive.push_back(&side);
    }
    return work;
}

Paths UnclippedOffset(Paths const& paths, double distance)
{
    double area = 0.0;
    for (Path const& path : paths) area += ClipperLib::Area(path);
    double const away = area < 0.0 ? -distance : distance;
    Paths loops;
    for (Path const& path : paths) {
        Path& loop = loops.emplace_back();
        for (std::size_t i = 0; i < path.size(); ++i) {
            IntPoint const& p = path[i];
            Vector const before = Normal(path[(i + path.size() - 1) % path.size()], p),
                         behind = Normal(p, path[(i + 1) % path.size()]);
            loop.push_back(Moved(p, before, away));
            if (Cross(before, behind) * away < 0.0) loop.push_back(p);
            loop.push_back(Moved(p, behind, away));
        }
    }
    return loops;
}

double MeanTurn(Paths const& paths)
{
    double turns = 0.0, corners = 0.0;
    for (Path const& path : paths) {
        for (std::size_t i = 0; i < path.size(); ++i) {
            IntPoint const& p = path[i];
            Vector const a = Between(path[(i + path.size() - 1) % path.size()], p),
                         b = Between(p, path[(i + 1) % path.size()]);
            turns += std::abs(std::atan2(Cross(a, b), a.x * b.x + a.y * b.y)) / (2.0 * std::numbers::pi);
        }
        corners += static_cast<double>(path.size());
    }
    return corners > 0.0 ? turns / corners : 0.0;
}

} // namespace ombrelune
