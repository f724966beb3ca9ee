#include "image/KList.h"

namespace ombrelune {

KListItem* KList::Link(KListItem* before, KListItem* item, KListItem* after)
{
    item->previous_ = before;
    item->next_ = after;
    (before ? before->next_ : first_) = item;
    (after ? after->previous_ : last_) = item;
    ++count_;
    return item;
}

void KList::Unlink(KListItem* item)
{
    (item->previous_ ? item->previous_->next_ : first_) = item->next_;
    (item->next_ ? item->next_->previous_ : last_) = item->previous_;
    --count_;
}

KListItem* KList::AddAfter(KListItem* position, KListItem* item)
{
    return position ? Link(position, item, position->next_) : AddFirst(item);
}

KListItem* KList::AddBefore(KListItem* position, KListItem* item)
{
    return position ? Link(position->previous_, item, position) : AddLast(item);
}

KListItem* KList::RemoveFirst()
{
    KListItem* const item = first_;
    if (item) Unlink(item);
    return item;
}

KListItem* KList::RemoveLast()
{
    KListItem* const item = last_;
    if (item) Unlink(item);
    return item;
}

KListItem* KList::RemoveNode(KListItem* item)
{
    if (!item || (!item->next_ && !item->previous_ && item != first_)) return nullptr;
    Unlink(item);
    item->next_ = item->previous_ = nullptr;
    return item;
}

unsigned KList::Search(KListItem const* item) const
{
    unsigned index = 0;
    for (KListItem const* i = first_; i; i = i->next_, ++index)
        if (i == item) return index;
    return ~0U;
}

KListItem* KList::Nth(int index) const { return index < 0 ? nullptr : NodeNth(first_, index); }

KListItem* KList::NodeNth(KListItem* item, int steps)
{
    while (item && steps-- > 0) item = item->next_;
    return item;
}

void KList::Clear()
{
    while (KListItem* item = RemoveFirst()) delete item;
}

} // namespace ombrelune
