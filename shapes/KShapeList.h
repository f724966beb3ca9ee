#pragma once

#include <algorithm>
#include <array>

#include "image/KList.h"
#include "image/KMatrix4.h"
#include "shapes/KShape.h"
#include "shapes/KStyle.h"

namespace ombrelune {

class BooleanOther;
class KImage;

/// How shapes are drawn.
struct KShapeRenderData {
    int subsampling = 8;    ///< samples per side of a pixel
    int winding = 0;        ///< of brushes: 0 even-odd, 1 non-zero
    bool forceFill = false; ///< brushes fill open shapes too, as if closed
};

/// Shapes with their look and the matrix that takes them to the 0 to 1 square of a texture. Owns its shapes.
class KShapeList : public KList {
public:
    KShapeList() = default;
    /// Without shapes; styles and mapping of the source unless it is null.
    explicit KShapeList(KShapeList const* source)
    {
        if (!source) return;
        styles = source->styles;
        mapping = source->mapping;
    }

    KShapeList* CopyOf() const;
    /// Appends a copy of each shape of the other list, which may be null.
    void Merge(KShapeList const* other);
    /// Fills all slots.
    void SetStyle(KStyle const& style) { styles.fill(style); }
    /// Moves the shapes and what they are mapped to along. A matrix without an inverse leaves the mapping.
    void Transform(KMatrix4 const& m);
    bool Inside(KVector2 const& p) const;
    /// Sum of KShape::Length.
    float LengthTotal() const;
    /// Appends the outlines of the pixels whose channel is above the threshold, as one shape: the image is 1
    /// wide with its lower left corner at the origin. With `flatten` all curves of the list become `steps`
    /// segments each. Null does nothing.
    /// Method: P. Selinger, Potrace: a polygon-based tracing algorithm, 2003.
    void Trace(KImage const* image, int channel, float threshold, bool flatten, int steps);

    /// Draws the shapes in order, each with the first style: the brush where it is closed or force fill is
    /// set, then the pen. A pen's thickness counts in hundredths of the frame's width here. The lower left
    /// corner of the image is the origin.
    void Render(KImage* image, KShapeRenderData const& data);

    // New lists with the operation's result for each shape; styles and mapping are kept. See KShape.

    KShapeList* FlattenOf(int steps) const
    {
        return Lift([&](KShape const& s) { return s.FlattenOf(steps); });
    }
    KShapeList* OffsetOf(KShapeEffectOffsetData const& data) const
    {
        return Lift([&](KShape const& s) { return s.OffsetOf(data); });
    }
    KShapeList* ReplicateOf(KShapeEffectReplicateData const& data) const
    {
        return Lift([&](KShape const& s) { return s.ReplicateOf(data); });
    }
    KShapeList* OutlineOf(KShapeEffectOutlineData const& data) const
    {
        return Lift([&](KShape const& s) { return s.OutlineOf(data); });
    }
    KShapeList* DashDotOf(KShapeEffectDashDotData const& data, float thickness) const
    {
        return Lift([&](KShape const& s) { return s.DashDotOf(data, thickness); });
    }
    KShapeList* BooleanOf(KShapeEffectBooleanData const& data) const;
    KShapeList* BooleanOf(BooleanOther const& other) const; ///< the same, prepared for many lists
    KShapeList* ResampleOf(KShapeEffectResampleData const& data) const
    {
        return Lift([&](KShape const& s) { return s.ResampleOf(data); });
    }
    KShapeList* SmoothOf(float smooth, float curvature) const
    {
        return Lift([&](KShape const& s) { return s.SmoothOf(smooth, curvature); });
    }
    KShapeList* ZigZagOf(ShapeZigZagType type, float offset, int steps, float distance) const
    {
        return Lift([&](KShape const& s) { return s.ZigZagOf(type, offset, steps, distance); });
    }
    KShapeList* KillOf(KShapeEffectKillData const& data) const
    {
        return Lift([&](KShape const& s) { return s.KillOf(data); });
    }
    KShapeList* OffsetStartOf(float part) const
    {
        return Lift([&](KShape const& s) { return s.OffsetStartOf(part); });
    }
    KShapeList* CloseOpenOf(int mode) const
    {
        return Lift([&](KShape const& s) { return s.CloseOpenOf(mode); });
    }
    KShapeList* TriangulateOf(KShapeEffectTriangulateData const& data) const
    {
        return Lift([&](KShape const& s) { return s.TriangulateOf(data); });
    }
    /// At the global level the range is spread over the shapes by their lengths.
    KShapeList* WriteOnOf(KShapeEffectWriteOnData const& data) const;

    std::array<KStyle, 8> styles; ///< the first one is drawn
    KMatrix4 mapping;

private:
    template <class Operation> KShapeList* Lift(Operation const& of) const
    {
        auto* result = new KShapeList(this);
        for (KShape const* shape : Each<KShape>()) result->AddLast(of(*shape));
        return result;
    }
};

} // namespace ombrelune
