#pragma once

#include <atomic>
#include <utility>

namespace ombrelune {

/// Intrusive reference count. A new object holds one reference, which belongs to whoever made it.
class RefCounted {
public:
    RefCounted() = default;
    RefCounted(RefCounted const&) = delete;
    RefCounted& operator=(RefCounted const&) = delete;

    void Use() const { count_.fetch_add(1, std::memory_order_relaxed); }
    /// Drops one reference; the last one deletes the object.
    void Recycle() const
    {
        if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

protected:
    virtual ~RefCounted() = default;

private:
    mutable std::atomic<int> count_{1};
};

/// Owner of one reference.
template <class T> class Ref {
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    /// Takes over the reference that the caller holds.
    static Ref Adopt(T* object)
    {
        Ref ref;
        ref.object_ = object;
        return ref;
    }
    /// Adds a reference of its own.
    static Ref Share(T* object)
    {
        if (object) object->Use();
        return Adopt(object);
    }
    Ref(Ref const& other) : object_(other.object_)
    {
        if (object_) object_->Use();
    }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(Ref<U> other) : object_(other.Release()) {}
    Ref& operator=(Ref other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref()
    {
        if (object_) object_->Recycle();
    }

    T* Get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    /// Hands the reference to the caller.
    T* Release() { return std::exchange(object_, nullptr); }

private:
    T* object_ = nullptr;
};

template <class T, class... Arguments> Ref<T> MakeRef(Arguments&&... arguments)
{
    return Ref<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

} // namespace ombrelune
