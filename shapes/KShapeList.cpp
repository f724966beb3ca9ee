#include "shapes/KShapeList.h"

#include <cmath>

namespace ombrelune {

KShapeList* KShapeList::CopyOf() const
{
    return Lift([](KShape const& shape) { return shape.CopyOf(); });
}

void KShapeList::Merge(KShapeList const* other)
{
    if (!other) return;
    KListItem const* const last = other->Last(); // the other list may be this one
    for (KListItem const* item = other->First(); item; item = item == last ? nullptr : item->Next())
        AddLast(static_cast<KShape const*>(item)->CopyOf());
}

void KShapeList::Transform(KMatrix4 const& m)
{
    KMatrix4 const inverse = m.Inverse();
    if (std::all_of(std::begin(inverse.m), std::end(inverse.m), [](float v) { return std::isfinite(v); }))
        mapping *= inverse;
    for (KShape* shape : Each<KShape>()) shape->Transform(m);
}

bool KShapeList::Inside(KVector2 const& p) const
{
    for (KShape const* shape : Each<KShape>())
        if (shape->Inside(p)) return true;
    return false;
}

float KShapeList::LengthTotal() const
{
    float length = 0.0F;
    for (KShape const* shape : Each<KShape>()) length += shape->Length();
    return length;
}

} // namespace ombrelune
