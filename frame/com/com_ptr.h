// A counted reference to a component object.
#pragma once

#include "frame/com/compiler.h"

#include <type_traits>
#include <utility>

namespace morvane {

/// Owns one reference; null when empty. `put()` hands its (emptied) place to a getter, which gives a counted reference.
template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}

    /// Shares the object: adds a reference of its own.
    explicit ComPtr(T* object) noexcept : m_object(object)
    {
        if (m_object)
            m_object->AddRef();
    }

    ComPtr(const ComPtr& other) noexcept : ComPtr(other.m_object) {}
    ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    /// From a pointer to a derived class.
    template <class Derived>
    requires(std::is_convertible_v<Derived*, T*> && !std::is_same_v<Derived, T>) ComPtr(ComPtr<Derived> other)
    noexcept : m_object(other.detach()) {}

    ~ComPtr() { reset(); }

    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    /// Takes over a reference that the caller already owns.
    static ComPtr adopt(T* object) noexcept
    {
        ComPtr result;
        result.m_object = object;
        return result;
    }

    void reset() noexcept
    {
        // Emptied first: the last release may call back into the owner of this pointer.
        if (T* old = std::exchange(m_object, nullptr))
            old->Release();
    }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// The emptied place for an out-parameter.
    T** put() noexcept
    {
        reset();
        return &m_object;
    }

    /// The emptied place for an out-parameter typed as `void*`.
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }

    /// Gives the reference away.
    T* detach() noexcept { return std::exchange(m_object, nullptr); }

    /// Writes a counted reference to an out-parameter that was already checked.
    void copyTo(T** out) const noexcept
    {
        if (m_object)
            m_object->AddRef();
        *out = m_object;
    }

    /// Another interface of the same object; empty when the object does not have it.
    template <class Other>
    ComPtr<Other> as() const noexcept
    {
        ComPtr<Other> result;
        if (m_object)
            m_object->QueryInterface(iidOf<Other>(), result.putVoid());
        return result;
    }

    friend bool operator==(const ComPtr& a, const ComPtr& b) noexcept { return a.m_object == b.m_object; }
    friend bool operator==(const ComPtr& a, std::nullptr_t) noexcept { return a.m_object == nullptr; }

private:
    T* m_object = nullptr;
};

/// True when both pointers lead to the same object, whatever interfaces they are. Null equals only null.
inline bool isSameObject(IUnknown* a, IUnknown* b) noexcept
{
    if (a == b || !a || !b)
        return a == b;
    ComPtr<IUnknown> identityA;
    ComPtr<IUnknown> identityB;
    a->QueryInterface(IID_IUnknown, identityA.putVoid());
    b->QueryInterface(IID_IUnknown, identityB.putVoid());
    return identityA == identityB;
}

} // namespace morvane
