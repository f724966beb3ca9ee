#pragma once

#include <vector>

#include "image/KList.h"
#include "image/KVector2.h"
#include "shapes/KShapeEffectData.h"

namespace ombrelune {

class KShape;
struct KPenStyle;

/// One flat subpath, made for computing. See KShape for the operations.
class KShapeArray : public KListItem {
public:
    KShapeArray() = default;
    /// So many points at the origin.
    explicit KShapeArray(int count) : points(static_cast<std::size_t>(count > 0 ? count : 0)) {}

    void Add(KVector2 const& p) { points.push_back(p); }
    KVector2 const& GetVector(int i) const { return points[static_cast<std::size_t>(i)]; }
    void SetVector(int i, KVector2 const& p) { points[static_cast<std::size_t>(i)] = p; }
    /// The ends of an open array look like the middle of a straight line: beyond them lies the neighbour's
    /// mirror image.
    KVector2 GetVectorNext(int i) const;
    KVector2 GetVectorPrev(int i) const;
    KVector2 GetNormal(int i, bool second) const
    {
        return normals[2 * static_cast<std::size_t>(i) + (second ? 1 : 0)];
    }
    KVector2 GetNormalNext(int i, bool second) const { return GetNormal(IndexNext(i), second); }
    /// Normals of length 1 to the right of travel, of the side that comes in and the side that goes out. At
    /// corners that turn by at most `angle` degrees they are drawn together: `smooth` 0 not at all, 1 to one.
    /// With fewer than 2 points they are the points themselves.
    void SetNormals(float smooth, float angle);

    void SetClosed(bool isClosed) { closed = isClosed; }
    bool IsClosed() const { return closed; }
    int GetCount() const { return static_cast<int>(points.size()); }
    int GetSegmentCount() const { return closed ? GetCount() : GetCount() - 1; }
    // Round the end, whether closed or not.
    int IndexNext(int i) const { return i + 1 < GetCount() ? i + 1 : 0; }
    int IndexPrev(int i) const { return i > 0 ? i - 1 : GetCount() - 1; }

    /// Of all sides, the closing one of a closed array too.
    float Length() const { return static_cast<float>(PathLength()); }
    /// Whether all coordinates are numbers within 1e12: then the integers of clipping hold them, and products
    /// in single floats stay finite.
    bool IsBounded() const;
    /// Odd number of crossings of the ray upward from the point; a side holds its left end and not its right.
    bool Inside(KVector2 const& p) const;

    KShape* ShapeOf() const;
    /// Appends the points; with `move` the first one starts a subpath.
    void AddToShape(KShape* shape, bool reverse, bool move) const;

    KShape* OffsetOf(KShapeEffectOffsetData const& data);
    /// Moves the points to a mitred offset, in place.
    void OffsetSimple(float offset);
    /// Null with fewer than 2 points.
    KShape* OutlineOf(KPenStyle const& pen) const;
    /// The pen starts anew with a full dash. A pattern that is too fine (2^18 dashes) or has no length leaves
    /// the line solid.
    KShape* DashDotOf(KShapeEffectDashDotData const& data, float thickness) const;
    KShape* ResampleOf(KShapeEffectResampleData const& data) const;
    KShape* SmoothOf(float smooth, float curvature) const;
    /// Null for a range that holds nothing of the path.
    KShape* WriteOnOf(KRange const& range) const;
    KShape* ZigZagOf(ShapeZigZagType type, float offset, int steps, float distance) const;
    KShape* KillOf(KShapeEffectKillData const& data) const;
    KShape* OffsetStartOf(float part) const;

    std::vector<KVector2> points;  ///< without a repeated closing point
    std::vector<KVector2> normals; ///< two for each point, see SetNormals
    bool closed = false;           ///< the last point joins the first

private:
    double SegmentLength(int i) const;
    double PathLength() const;
};

/// All flat subpaths of a shape in order, control points as points. A subpath without two different points
/// ends the list.
class KShapeArrayList : public KList {
public:
    /// Null gives an empty list.
    explicit KShapeArrayList(KShape const* shape);
};

} // namespace ombrelune
