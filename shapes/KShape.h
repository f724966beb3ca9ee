#pragma once

#include "image/KList.h"
#include "image/ShapeArrays.h"
#include "shapes/KShapeEffectData.h"
#include "shapes/KShapePoint.h"

namespace ombrelune {

struct KShapeEffectOutlineData;

enum ShapePresetType {
    kPresetCross = 0,
    kPresetPolygon = 1,
    kPresetRectangle = 2,
    kPresetPolygonToo = 3, ///< the same as 1
    kPresetStar = 4,
};

/// A path: a chain of points that holds any number of subpaths with straight, conic and Bezier segments.
/// Shape units: the frame is 1 wide. Operations whose name ends in Of give a new shape that the caller owns
/// and leave this one alone; a shape with curves is flattened first where the operation says nothing else.
/// There are no errors: empty, degenerate and unbounded input gives an empty or unchanged shape. A shape
/// belongs to one thread.
class KShape : public KListItem {
public:
    KShape() = default;
    /// Empty, whatever the source.
    explicit KShape(KShape const*) {}
    KShape(KShape const&) = delete;
    KShape& operator=(KShape const&) = delete;
    ~KShape() override { Clear(); }

    // The way into the chain. Nothing checks the order of types.

    /// Takes the point over.
    void AddPoint(KShapePoint* point);
    void AddPointCopy(KShapePoint const* point) { AddPoint(new KShapePoint(*point)); }
    void MoveTo(KVector2 const& p, bool closed = false) { AddPoint(new KShapePoint(p, kShapeMove, closed)); }
    void LineTo(KVector2 const& p, bool closed = false) { AddPoint(new KShapePoint(p, kShapeLine, closed)); }
    void To(KVector2 const& p, bool move, bool closed)
    {
        AddPoint(new KShapePoint(p, move ? kShapeMove : kShapeLine, closed));
    }
    void ConicTo(KVector2 const& control, KVector2 const& end, bool closed);
    void BezierTo(KVector2 const& control1, KVector2 const& control2, KVector2 const& end, bool closed);
    /// Closes the last subpath.
    void Close();
    void Clear();
    /// Appends a copy; null does nothing. Reversed, a closed subpath starts at its old end. A winding other
    /// than kWindingKeep is given to the copies.
    void AddShape(KShape const* source, bool reverse, ShapeWindingMode winding);
    /// Appends a closed outline around the origin. With half the size (hx, hy): a cross with arms hx long and
    /// 2 hy wide; a polygon of so many steps in an ellipse; a rectangle; a star of outer radius hx and inner
    /// radius hy. Angles are radians.
    void AddShape(ShapePresetType preset, KVector2 const& size, int steps, float angle);
    /// Moves all points of the other shape to the end of this one.
    void TakePoints(KShape& source);

    KShapePoint* GetFirstPoint() const { return first_; }
    int GetCount() const { return count_; }
    bool IsFlat() const { return conicCount_ == 0 && bezierCount_ == 0; }
    /// Whether the last subpath is closed, or all of them; false for an empty shape.
    bool IsClosed(bool lastOnly) const;

    KShape* CopyOf() const;
    void Transform(KMatrix4 const& m);
    /// Of all points, control points too; left as they are for an empty shape.
    void Boundary(KVector2& min, KVector2& max) const;
    /// Moves the middle of the bounds there.
    void Center(KVector2 const& centre);
    /// Of the straight segments; neither curves nor closing sides count.
    float Length() const;
    /// Whether the point is inside one of the subpaths, by an odd number of crossings each; holes count as
    /// inside. Curves stand for 16 segments.
    bool Inside(KVector2 const& p) const;

    /// Straight segments, `steps` for each curve, at even parameters; the start of a curve is the point
    /// before it.
    KShape* FlattenOf(int steps) const;
    /// Outlines for the scan converter: flattened, scaled, then moved.
    ShapeArrays ConvertTo(double offsetX, double offsetY, double scaleX, double scaleY, int steps) const;

    /// Outline at a distance; 0 gives a copy with its curves. When all subpaths are closed the outlines that
    /// collide are merged, and positive distances lie outside. Otherwise every subpath is offset alone, and
    /// positive distances lie to the right of travel. Distances beyond 1000 give an empty shape.
    KShape* OffsetOf(KShapeEffectOffsetData const& data) const;
    KShape* ReplicateOf(KShapeEffectReplicateData const& data) const;
    /// Area of a pen's stroke. It is not cleaned and may overlap itself.
    KShape* OutlineOf(KShapeEffectOutlineData const& data) const;
    /// The dashes as open subpaths.
    KShape* DashDotOf(KShapeEffectDashDotData const& data, float thickness) const;
    /// This shape combined with all of the other group. Control points count as corners.
    KShape* BooleanOf(KShapeEffectBooleanData const& data) const;

    /// Points at even distances along the path. Control points count as corners. At most 2^20 on a subpath;
    /// distances below 0.0001 count as that.
    KShape* ResampleOf(KShapeEffectResampleData const& data) const;
    /// Curves through the points; control points count as points. 0 leaves the sides straight.
    KShape* SmoothOf(float smooth, float curvature) const;
    /// The part of the path in a range of its length, open.
    KShape* WriteOnOf(KShapeEffectWriteOnData const& data) const;
    /// Each side bent into `steps` parts that lie on both sides of it in turn.
    KShape* ZigZagOf(ShapeZigZagType type, float offset, int steps, float distance) const;
    /// Only the sides whose direction and length are in range.
    KShape* KillOf(KShapeEffectKillData const& data) const;
    /// Closed subpaths that start at another part of their length.
    KShape* OffsetStartOf(float part) const;
    KShape* CloseOpenOf(int mode) const;
    /// One closed triangle per subpath, by the odd rule. Control points count as corners.
    KShape* TriangulateOf(KShapeEffectTriangulateData const& data) const;

private:
    KShapePoint* first_ = nullptr;
    KShapePoint* last_ = nullptr;
    int count_ = 0, conicCount_ = 0, bezierCount_ = 0;
};

} // namespace ombrelune
