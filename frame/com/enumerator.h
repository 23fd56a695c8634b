// The enumerators that connection points hand out: a snapshot of a list, walked from the outside.
#pragma once

#include "frame/com/com_ptr.h"
#include "frame/com/instance.h"

#include <algorithm>
#include <vector>

namespace morvane {

/// `Copy` makes a counted copy of an item for the caller.
template <class Interface, class Item, class Stored, void (*Copy)(const Stored&, Item&)>
class Enumerator : public Interface {
public:
    static HRESULT create(std::vector<Stored> items, std::size_t position, Interface** result)
    {
        auto object = Instance<Enumerator>::make();
        object->m_items = std::move(items);
        object->m_position = position;
        *result = object.detach();
        return S_OK;
    }

    HRESULT finalConstruct() { return S_OK; }
    void finalRelease() {}
    void* findInterface(REFIID iid) { return iid == iidOf<Interface>() ? static_cast<Interface*>(this) : nullptr; }

    STDMETHODIMP Next(ULONG count, Item* items, ULONG* fetched) noexcept override
    {
        if (!items || (!fetched && count != 1))
            return E_POINTER;
        const ULONG given = std::min<ULONG>(count, static_cast<ULONG>(m_items.size() - m_position));
        for (ULONG i = 0; i < given; ++i)
            Copy(m_items[m_position + i], items[i]);
        m_position += given;
        if (fetched)
            *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Skip(ULONG count) noexcept override
    {
        const auto left = m_items.size() - m_position;
        m_position += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }

    STDMETHODIMP Reset() noexcept override
    {
        m_position = 0;
        return S_OK;
    }

    STDMETHODIMP Clone(Interface** result) noexcept override
    {
        if (!result)
            return E_POINTER;
        *result = nullptr;
        return guarded([&] { return create(m_items, m_position, result); });
    }

private:
    std::vector<Stored> m_items;
    std::size_t m_position = 0;
};

} // namespace morvane
