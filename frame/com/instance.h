// How a component object lives: alone with a count of its own, or as part of an outer object.
#pragma once

#include "frame/com/com_ptr.h"
#include "frame/com/module_lock.h"
#include "frame/com/result.h"

#include <memory>

namespace morvane {

/// Completes a component class into a creatable object. `Object` derives from its interfaces and supplies
///   HRESULT finalConstruct()             work that needs the finished object; a failure destroys it
///   void finalRelease()                  runs once, before the members go
///   void* findInterface(REFIID)          the interface's pointer, not counted, or null; IUnknown is handled here
/// Reference counts are plain: objects belong to the user-interface thread. Every instance holds a module lock.
template <class Object>
class Instance final : public Object {
public:
    /// Creates an object for a class object: plain when `outer` is null, else as a part of `outer`, in which case `iid`
    /// must be IUnknown's and the non-delegating unknown is returned. On failure nothing remains and `*result` is null.
    static HRESULT create(IUnknown* outer, REFIID iid, void** result) noexcept
    {
        if (!result)
            return E_POINTER;
        *result = nullptr;
        if (outer && iid != IID_IUnknown)
            return CLASS_E_NOAGGREGATION;
        return guarded([&] {
            auto* object = new Instance(outer);
            ComPtr<IUnknown> hold(&object->m_inner); // keeps it through its construction
            const HRESULT status = object->finalConstruct();
            return FAILED(status) ? status : object->m_inner.QueryInterface(iid, result);
        });
    }

    /// Creates a plain object for use inside this module. Throws std::bad_alloc; null when finalConstruct failed.
    static ComPtr<Instance> make()
    {
        auto* object = new Instance(nullptr);
        ComPtr<IUnknown> hold(&object->m_inner);
        if (FAILED(object->finalConstruct()))
            return nullptr;
        return ComPtr<Instance>(object);
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override
    {
        return m_outer->QueryInterface(iid, result);
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return m_outer->AddRef(); }
    STDMETHODIMP_(ULONG) Release() noexcept override { return m_outer->Release(); }

private:
    /// The object's own IUnknown, which never asks an outer object.
    class Inner final : public IUnknown {
    public:
        explicit Inner(Instance& object) noexcept : m_object(object) {}

        STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override
        {
            if (!result)
                return E_POINTER;
            *result = iid == IID_IUnknown ? static_cast<IUnknown*>(this) : m_object.findInterface(iid);
            if (!*result)
                return E_NOINTERFACE;
            // Counted through the pointer handed out, so that an outer object counts its own.
            static_cast<IUnknown*>(*result)->AddRef();
            return S_OK;
        }

        STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_count; }

        STDMETHODIMP_(ULONG) Release() noexcept override
        {
            const ULONG left = --m_count;
            if (left == 0) {
                // Work of the last release may hand out references to the dying object; they must not end it twice.
                m_count = kDying;
                m_object.finalRelease();
                delete &m_object;
            }
            return left;
        }

    private:
        static constexpr ULONG kDying = 0x40000000;
        Instance& m_object;
        ULONG m_count = 0;
    };

    explicit Instance(IUnknown* outer) : m_inner(*this), m_outer(outer ? outer : &m_inner) {}
    ~Instance() = default;

    Inner m_inner;
    IUnknown* m_outer; // borrowed: the outer object lives longer than its parts
    ModuleLock m_moduleLock;
};

} // namespace morvane
