// The class objects of the module: made at the first request, kept until the module is unloaded.
#pragma once

#include "module/class_table.h"

#include "frame/com/com_ptr.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace morvane {

/// Creates instances of one class. While anyone but the cache refers to it, it keeps the module loaded.
class ClassObject final : public IClassFactory {
public:
    explicit ClassObject(CreateInstanceFunction create) noexcept : m_create(create) {}
    virtual ~ClassObject() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override;
    STDMETHODIMP_(ULONG) Release() noexcept override;

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) noexcept override;
    STDMETHODIMP LockServer(BOOL lock) noexcept override;

private:
    CreateInstanceFunction m_create;
    std::atomic<ULONG> m_count{0}; // class objects may be asked for from any thread
};

/// The class objects made so far. May be asked from any thread.
class ClassObjects {
public:
    explicit ClassObjects(std::span<const ComponentClass> table) : m_table(table), m_objects(table.size()) {}
    ClassObjects(const ClassObjects&) = delete;
    ClassObjects& operator=(const ClassObjects&) = delete;
    ~ClassObjects();

    /// An interface of the class object of `clsid`; the first entry of the table serves a class that stands there
    /// twice. CLASS_E_CLASSNOTAVAILABLE for unknown classes and for those that are not built.
    HRESULT find(REFCLSID clsid, REFIID iid, void** result);

private:
    IClassFactory& objectAt(std::size_t index);

    std::span<const ComponentClass> m_table;
    std::mutex m_making;
    std::vector<std::atomic<ClassObject*>> m_objects; // one reference each; null until the first request
};

} // namespace morvane
