#pragma once

namespace ombrelune {

/// Base of everything kept in a KList; an item is in one list at most. Copies of an item are in no list.
class KListItem {
public:
    KListItem() = default;
    KListItem(KListItem const&) {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): it keeps its own place in its own list
    KListItem& operator=(KListItem const&) { return *this; }
    virtual ~KListItem() = default;

    KListItem* Next() const { return next_; }
    KListItem* Previous() const { return previous_; }

private:
    friend class KList;
    KListItem* next_ = nullptr;
    KListItem* previous_ = nullptr;
};

/// Doubly linked list that owns its items: Clear and the destructor delete them, the removing operations hand
/// them to the caller.
class KList {
public:
    KList() = default;
    KList(KList const&) = delete;
    KList& operator=(KList const&) = delete;
    virtual ~KList() { Clear(); }

    KListItem* First() const { return first_; }
    KListItem* Last() const { return last_; }
    int Count() const { return count_; }

    // The adding operations return the item.
    KListItem* AddFirst(KListItem* item) { return Link(nullptr, item, first_); }
    KListItem* AddLast(KListItem* item) { return Link(last_, item, nullptr); }
    /// After a null position means first.
    KListItem* AddAfter(KListItem* position, KListItem* item);
    /// Before a null position means last.
    KListItem* AddBefore(KListItem* position, KListItem* item);

    /// Null on an empty list. The links of the item are left as they are.
    KListItem* RemoveFirst();
    KListItem* RemoveLast();
    /// Unlinks the item and clears its links; null when it is in no list.
    KListItem* RemoveNode(KListItem* item);

    /// Index of the item; all bits set when it is not here.
    unsigned Search(KListItem const* item) const;
    /// Item at the index, or null.
    KListItem* Nth(int index) const;
    /// The item that many steps after this one, or null.
    static KListItem* NodeNth(KListItem* item, int steps);

    void Clear();

    template <class T> class Range;
    /// The items as their common class, for a range-based for that neither adds nor removes.
    template <class T> Range<T> Each() const { return Range<T>(first_); }

private:
    KListItem* Link(KListItem* before, KListItem* item, KListItem* after);
    void Unlink(KListItem* item);

    KListItem* first_ = nullptr;
    KListItem* last_ = nullptr;
    int count_ = 0;
};

template <class T> class KList::Range {
public:
    explicit Range(KListItem* first) : first_(first) {}

    class Iterator {
    public:
        explicit Iterator(KListItem* item) : item_(item) {}
        T* operator*() const { return static_cast<T*>(item_); }
        Iterator& operator++()
        {
            item_ = item_->Next();
            return *this;
        }
        bool operator!=(Iterator const& other) const { return item_ != other.item_; }

    private:
        KListItem* item_;
    };
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(nullptr); }

private:
    KListItem* first_;
};

} // namespace ombrelune
