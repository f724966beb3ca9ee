#pragma once

#include <memory>
#include <vector>

#include "shapes/KShapeList.h"

namespace ombrelune {

/// Lists of shapes, later ones over earlier ones: the value that goes from tool to tool. Owns its lists.
class KShapeGroup {
public:
    KShapeGroup() = default;
    KShapeGroup(KShapeGroup const& other) { Add(other); } ///< deep
    KShapeGroup(KShapeList* list, bool copy) { Add(list, copy); }
    KShapeGroup& operator=(KShapeGroup const&) = delete;

    int GetCount() const { return static_cast<int>(lists_.size()); }
    /// The index must be one of the group.
    KShapeList* Get(int i) const { return lists_[static_cast<std::size_t>(i)].get(); }
    /// Appends deep copies of all lists.
    void Add(KShapeGroup const& other);
    /// Appends a copy of the list, or takes it over; null is ignored.
    void Add(KShapeList* list, bool copy);

    KShapeGroup* CopyOf() const { return new KShapeGroup(*this); }
    void Transform(KMatrix4 const& m);
    void SetStyle(KStyle const& style);
    bool Inside(KVector2 const& p) const;
    float LengthTotal() const;
    /// Whether all points lie within that distance of the origin along both axes; none does that is no
    /// number.
    bool IsWithin(float reach) const;

    /// Draws the lists in order. See KShapeList.
    void Render(KImage* image, KShapeRenderData const& data);

    // New groups with the operation's result for each list. See KShape.

    KShapeGroup* FlattenOf(int steps) const
    {
        return Lift([&](KShapeList const& l) { return l.FlattenOf(steps); });
    }
    KShapeGroup* OffsetOf(KShapeEffectOffsetData const& data) const
    {
        return Lift([&](KShapeList const& l) { return l.OffsetOf(data); });
    }
    KShapeGroup* ReplicateOf(KShapeEffectReplicateData const& data) const
    {
        return Lift([&](KShapeList const& l) { return l.ReplicateOf(data); });
    }
    KShapeGroup* OutlineOf(KShapeEffectOutlineData const& data) const
    {
        return Lift([&](KShapeList const& l) { return l.OutlineOf(data); });
    }
    KShapeGroup* DashDotOf(KShapeEffectDashDotData const& data, float thickness) const
    {
        return Lift([&](KShapeList const& l) { return l.DashDotOf(data, thickness); });
    }
    KShapeGroup* BooleanOf(KShapeEffectBooleanData const& data) const;
    KShapeGroup* ResampleOf(KShapeEffectResampleData const& data) const
    {
        return Lift([&](KShapeList const& l) { return l.ResampleOf(data); });
    }
    KShapeGroup* SmoothOf(float smooth, float curvature) const
    {
        return Lift([&](KShapeList const& l) { return l.SmoothOf(smooth, curvature); });
    }
    KShapeGroup* ZigZagOf(ShapeZigZagType type, float offset, int steps, float distance) const
    {
        return Lift([&](KShapeList const& l) { return l.ZigZagOf(type, offset, steps, distance); });
    }
    KShapeGroup* KillOf(KShapeEffectKillData const& data) const
    {
        return Lift([&](KShapeList const& l) { return l.KillOf(data); });
    }
    KShapeGroup* OffsetStartOf(float part) const
    {
        return Lift([&](KShapeList const& l) { return l.OffsetStartOf(part); });
    }
    KShapeGroup* CloseOpenOf(int mode) const
    {
        return Lift([&](KShapeList const& l) { return l.CloseOpenOf(mode); });
    }
    KShapeGroup* TriangulateOf(KShapeEffectTriangulateData const& data) const
    {
        return Lift([&](KShapeList const& l) { return l.TriangulateOf(data); });
    }
    /// The range moved by the shift; with wrap, what moves past the end comes in at the start, as further
    /// lists. At the global level it is spread over the lists by their lengths.
    KShapeGroup* WriteOnOf(KShapeEffectWriteOnData const& data) const;

private:
    template <class Operation> KShapeGroup* Lift(Operation const& of) const
    {
        auto* result = new KShapeGroup;
        for (auto const& list : lists_) result->Add(of(*list), false);
        return result;
    }

    std::vector<std::unique_ptr<KShapeList>> lists_;
};

/// True. Whoever uses groups refers to it, and so links the registration that lets the bridge carry them: a
/// linker leaves out what nothing refers to.
bool ShapesAreRegistered();
inline bool const kShapesAreRegistered = ShapesAreRegistered();

} // namespace ombrelune
