#include <algorithm>
#include <array>

#include "shapes/EachSubpath.h"
#include "shapes/FlatShape.h"
#include "shapes/KShapeArray.h"

// Dashes along a path.

namespace ombrelune {

namespace {

constexpr float kShortestDash = 0.01F; // KSHAPES_DASHLENGTH_MIN
constexpr double kMostDashes = 1 << 18;

/// Lengths of dashes and gaps in turn.
struct Pattern {
    std::array<double, KShapeEffectDashDotData::kSlots> dash, space;
    int slots;

    Pattern(KShapeEffectDashDotData const& data, float thickness)
        : slots(data.lineType == 3 ? std::clamp(data.dashCount, 1, KShapeEffectDashDotData::kSlots) : 1)
    {
        double const base = double{thickness} * data.dashScale;
        for (std::size_t i = 0; i < dash.size(); ++i) {
            dash[i] = base * std::max(data.dashLengths[i], kShortestDash);
            space[i] = base * std::max(data.spaceLengths[i], kShortestDash);
        }
        if (data.lineType == 2) dash[0] = base * kShortestDash;
    }

    /// False for lengths that are 0, not numbers or so short that a walk would not end.
    bool Covers(double length) const
    {
        double period = 0.0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(slots); ++i) period += dash[i] + space[i];
        return period > 0.0 && length / period * slots <= kMostDashes;
    }
};

/// Appends dashes to a shape. One that has shrunk to a point in single floats is left out: it would end the
/// list of subpaths.
class DashWriter {
public:
    explicit DashWriter(KShape& shape) : shape_(shape) {}

    void Start(KVector2 const& p) { points_.assign(1, p); }
    void Add(KVector2 const& p)
    {
        if (p != points_.back()) points_.push_back(p);
    }
    void End()
    {
        if (points_.size() > 1)
            for (KVector2 const& p : points_) shape_.To(p, &p == points_.data(), false);
        points_.clear();
    }

private:
    KShape& shape_;
    std::vector<KVector2> points_;
};

} // namespace

KShape* KShapeArray::DashDotOf(KShapeEffectDashDotData const& data, float thickness) const
{
    if (data.lineType == 0 || GetCount() < 2) return ShapeOf();
    Pattern const pattern(data, thickness);
    if (!pattern.Covers(PathLength())) return ShapeOf();

    auto* result = new KShape;
    DashWriter writer(*result);
    bool isDown = true;
    std::size_t slot = 0;
    double left = pattern.dash[0]; // of the current dash or gap
    writer.Start(GetVector(0));
    for (int i = 0; i < GetSegmentCount(); ++i) {
        KVector2 const a = GetVector(i), b = GetVector(IndexNext(i)), side = b - a;
        double const length = SegmentLength(i);
        if (!(length > 0.0)) continue;
        double rest = length;
        while (rest > left) {
            rest -= left;
            KVector2 const p = a + static_cast<float>((length - rest) / length) * side;
            if (isDown) {
                writer.Add(p);
                writer.End();
                left = pattern.space[slot];
            } else {
                writer.Start(p);
                slot = (slot + 1) % static_cast<std::size_t>(pattern.slots);
                left = pattern.dash[slot];
            }
            isDown = !isDown;
        }
        if (isDown) writer.Add(b);
        left -= rest;
    }
    if (isDown) writer.End();
    return result;
}

KShape* KShape::DashDotOf(KShapeEffectDashDotData const& data, float thickness) const
{
    FlatShape const flat(*this, data.steps);
    return EachSubpath(KShapeArrayList(flat.Get()),
                       [&](KShapeArray const& array) { return array.DashDotOf(data, thickness); });
}

} // namespace ombrelune
