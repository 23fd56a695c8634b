#include "module/class_objects.h"

#include "frame/com/module_lock.h"
#include "frame/com/result.h"

namespace morvane {

namespace {
constexpr ULONG kCacheOnly = 1; // the reference that the cache holds
}

STDMETHODIMP ClassObject::QueryInterface(REFIID iid, void** result) noexcept
{
    return filling(result, [&](void*& place) {
        if (iid != IID_IUnknown && iid != IID_IClassFactory)
            return E_NOINTERFACE;
        AddRef();
        place = static_cast<IClassFactory*>(this);
        return S_OK;
    });
}

STDMETHODIMP_(ULONG) ClassObject::AddRef() noexcept
{
    const ULONG count = ++m_count;
    if (count == kCacheOnly + 1)
        ModuleLock::add();
    return count;
}

STDMETHODIMP_(ULONG) ClassObject::Release() noexcept
{
    const ULONG count = --m_count;
    if (count == kCacheOnly)
        ModuleLock::remove();
    if (count == 0)
        delete this;
    return count;
}

STDMETHODIMP ClassObject::CreateInstance(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return filling(result, [&](void*& place) {
        // Only the non-delegating unknown may leave an object that becomes a part of another.
        return outer && iid != IID_IUnknown ? CLASS_E_NOAGGREGATION : m_create(outer, iid, &place);
    });
}

STDMETHODIMP ClassObject::LockServer(BOOL lock) noexcept
{
    lock ? ModuleLock::add() : ModuleLock::remove();
    return S_OK;
}

HRESULT ClassObjects::find(REFCLSID clsid, REFIID iid, void** result)
{
    for (std::size_t i = 0; i < m_table.size(); ++i)
        if (m_table[i].create && m_table[i].clsid == clsid)
            return objectAt(i).QueryInterface(iid, result);
    return CLASS_E_CLASSNOTAVAILABLE;
}

IClassFactory& ClassObjects::objectAt(std::size_t index)
{
    auto& place = m_objects[index];
    if (!place) {
        const std::scoped_lock lock(m_making);
        if (!place) {
            ComPtr<ClassObject> made(new ClassObject(m_table[index].create));
            place = made.detach();
        }
    }
    return *place;
}

ClassObjects::~ClassObjects()
{
    for (auto& place : m_objects)
        ComPtr<ClassObject>::adopt(place.exchange(nullptr));
}

} // namespace morvane
