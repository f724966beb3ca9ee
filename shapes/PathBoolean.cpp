#include <algorithm>

#include "shapes/ClipperPaths.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune {

namespace {

struct Box {
    ClipperLib::cInt left, bottom, right, top;

    bool Touches(Box const& other) const
    {
        return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
    }
};

/// Of paths with at least one point.
Box BoxOf(ClipperLib::Paths const& paths)
{
    ClipperLib::IntPoint const& start = paths.front().front();
    Box box{start.X, start.Y, start.X, start.Y};
    for (ClipperLib::Path const& path : paths)
        for (ClipperLib::IntPoint const& p : path)
            box = {std::min(box.left, p.X), std::min(box.bottom, p.Y), std::max(box.right, p.X),
                   std::max(box.top, p.Y)};
    return box;
}

} // namespace

/// The second operand of many operations, made once.
class BooleanOther {
public:
    explicit BooleanOther(KShapeEffectBooleanData const& data)
        : type_(ToClipType(data.type)), fill_(ToPolyFillType(data.fill))
    {
        PathsFromShapeGroup(paths_, data.other, kClipperScale);
        boxes_.reserve(paths_.size());
        for (ClipperLib::Path const& path : paths_) boxes_.push_back(BoxOf({path}));
    }

    KShape* CombinedWith(KShape const& shape) const
    {
        ClipperLib::Paths subject;
        PathsFromShape(subject, &shape, kClipperScale);
        if (type_ == ClipperLib::ctUnion || type_ == ClipperLib::ctXor) return Combined(subject, paths_);
        // Only what touches the shape takes part in it.
        ClipperLib::Paths near;
        if (!subject.empty()) {
            Box const box = BoxOf(subject);
            for (std::size_t i = 0; i < paths_.size(); ++i)
                if (boxes_[i].Touches(box)) near.push_back(paths_[i]);
        }
        if (near.empty() && type_ == ClipperLib::ctIntersection) return new KShape;
        return Combined(subject, near);
    }

private:
    KShape* Combined(ClipperLib::Paths const& subject, ClipperLib::Paths const& clip) const
    {
        return ShapeFromPaths(CombinePaths(subject, clip, type_, fill_), kClipperScale);
    }

    ClipperLib::ClipType type_;
    ClipperLib::PolyFillType fill_;
    ClipperLib::Paths paths_;
    std::vector<Box> boxes_; // of each path
};

KShape* KShape::BooleanOf(KShapeEffectBooleanData const& data) const
{
    return BooleanOther(data).CombinedWith(*this);
}

KShapeList* KShapeList::BooleanOf(KShapeEffectBooleanData const& data) const
{
    return BooleanOf(BooleanOther(data));
}

KShapeList* KShapeList::BooleanOf(BooleanOther const& other) const
{
    return Lift([&](KShape const& shape) { return other.CombinedWith(shape); });
}

KShapeGroup* KShapeGroup::BooleanOf(KShapeEffectBooleanData const& data) const
{
    BooleanOther const other(data);
    return Lift([&](KShapeList const& l) { return l.BooleanOf(other); });
}

} // namespace ombrelune
