#pragma once

#include <vector>

namespace ombrelune {

// Owners of raw pointers let go of them through these: null is skipped, and the pointer is cleared.

template <class T> void KSAFE_DELETE(T*& object)
{
    delete object;
    object = nullptr;
}

template <class T> void KSAFE_DELETE_ARRAY(T*& array)
{
    delete[] array;
    array = nullptr;
}

template <class T> void KSAFE_DELETE_VECTOR(std::vector<T*>& objects)
{
    for (T* object : objects) delete object;
    objects.clear();
}

template <class T> void KSAFE_USE(T* object)
{
    if (object) object->Use();
}

/// Drops a reference of what the object counts; the object itself stays.
template <class T> void KSAFE_RECYCLE(T*& object)
{
    if (object) object->Recycle();
    object = nullptr;
}

} // namespace ombrelune
