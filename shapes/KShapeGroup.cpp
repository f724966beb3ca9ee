#include "shapes/KShapeGroup.h"

#include <cmath>

namespace ombrelune {

void KShapeGroup::Add(KShapeGroup const& other)
{
    int const count = other.GetCount(); // the other group may be this one
    for (int i = 0; i < count; ++i) Add(other.Get(i), true);
}

void KShapeGroup::Add(KShapeList* list, bool copy)
{
    if (list) lists_.emplace_back(copy ? list->CopyOf() : list);
}

void KShapeGroup::Transform(KMatrix4 const& m)
{
    for (auto const& list : lists_) list->Transform(m);
}

void KShapeGroup::SetStyle(KStyle const& style)
{
    for (auto const& list : lists_) list->SetStyle(style);
}

bool KShapeGroup::Inside(KVector2 const& p) const
{
    for (auto const& list : lists_)
        if (list->Inside(p)) return true;
    return false;
}

bool KShapeGroup::IsWithin(float reach) const
{
    for (auto const& list : lists_)
        for (KShape const* shape : list->Each<KShape>())
            for (KShapePoint const* p = shape->GetFirstPoint(); p; p = p->next)
                if (!(std::abs(p->position.x) <= reach && std::abs(p->position.y) <= reach)) return false;
    return true;
}

float KShapeGroup::LengthTotal() const
{
    float length = 0.0F;
    for (auto const& list : lists_) length += list->LengthTotal();
    return length;
}

} // namespace ombrelune
