#include "shapes/ClipperPaths.h"
#include "shapes/KShapeList.h"

namespace ombrelune {

namespace {

ClipperLib::Paths PathsOfOther(KShapeEffectBooleanData const& data)
{
    ClipperLib::Paths paths;
    PathsFromShapeGroup(paths, data.other, kClipperScale);
    return paths;
}

KShape* Combine(KShape const& shape, ClipperLib::Paths const& other, KShapeEffectBooleanData const& data)
{
    ClipperLib::Paths subject;
    PathsFromShape(subject, &shape, kClipperScale);
    return ShapeFromPaths(CombinePaths(subject, other, ToClipType(data.type), ToPolyFillType(data.fill)),
                          kClipperScale);
}

} // namespace

KShape* KShape::BooleanOf(KShapeEffectBooleanData const& data) const
{
    return Combine(*this, PathsOfOther(data), data);
}

KShapeList* KShapeList::BooleanOf(KShapeEffectBooleanData const& data) const
{
    ClipperLib::Paths const other = PathsOfOther(data);
    return Lift([&](KShape const& shape) { return Combine(shape, other, data); });
}

} // namespace ombrelune
