// The property table that a control builds on its base object.
#include "ambrel/objects/base_object.h"

#include "ambrel/properties/property_factory.h"

#include <algorithm>

namespace ambrel {

std::span<const ComPtr<ICtrlPluginProp>> BaseObject::groups() const noexcept
{
    return std::span(m_groups).first(m_groups.empty() ? 0 : m_groups.size() - 1);
}

void BaseObject::addGroup(ComPtr<ICtrlPluginProp> group)
{
    m_node.set(NodeFlag::NoHotKeys, false);
    // The null at the end makes the list readable as a plain array.
    m_groups.reserve(m_groups.empty() ? 8 : m_groups.size() + 1);
    m_groups.resize(std::max<std::size_t>(m_groups.size(), 1));
    m_groups.insert(m_groups.end() - 1, std::move(group));
}

void BaseObject::setGroupsOwner(IVexControlBase* owner) noexcept
{
    for (const auto& group : groups())
        group->SetControlBasePtr(owner);
}

STDMETHODIMP BaseObject::CreateGroupProp(ICtrlPluginProp* parent, BSTR name, VARIANT_BOOL expand,
                                         ICtrlPluginProp** result) noexcept
{
    return filling(result, [&](ICtrlPluginProp*& made) {
        ComPtr<ICtrlPluginProp> group = createGroup(this, parent, morvane::viewOf(name), expand != VARIANT_FALSE);
        if (!group)
            return E_INVALIDARG;
        if (!parent)
            addGroup(group);
        made = group.detach();
        return S_OK;
    });
}

STDMETHODIMP BaseObject::CreateProp(ICtrlPluginProp* group, enumPropType type, BSTR name, BSTR help, VARIANT_BOOL style,
                                    IPropChangedCallback* callback, IVexPropBase** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    return createProperty(group, type, morvane::viewOf(name), morvane::viewOf(help), style != VARIANT_FALSE, callback,
                          result);
}

STDMETHODIMP BaseObject::AddProp(ICtrlPluginProp* group) noexcept
{
    if (!group)
        return E_POINTER;
    return guarded([&] {
        const bool known =
            std::any_of(groups().begin(), groups().end(), [&](const auto& own) { return own.get() == group; });
        if (known)
            return S_FALSE;
        addGroup(ComPtr<ICtrlPluginProp>(group));
        group->SetControlBasePtr(this);
        return S_OK;
    });
}

STDMETHODIMP BaseObject::GetPropList(hyper* result) noexcept
{
    static_assert(sizeof(ComPtr<ICtrlPluginProp>) == sizeof(void*), "handed out as an array of plain pointers");
    return returning(result, [&] { return m_groups.empty() ? 0 : reinterpret_cast<hyper>(m_groups.data()); });
}

STDMETHODIMP BaseObject::GetProps(hyper** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = m_groups.empty() ? nullptr : reinterpret_cast<hyper*>(m_groups.data());
    return *result ? S_OK : S_FALSE;
}

STDMETHODIMP BaseObject::CallProp(long id, BSTR* result) noexcept
{
    return filling(result, [&](BSTR& text) {
        Bstr answer;
        const bool handled = tell(VEXSM_CALLPROP, id, reinterpret_cast<hyper>(answer.put()));
        text = answer.empty() ? Bstr(std::wstring_view()).detach() : answer.detach();
        return handled ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::PropChangedNotify(IVexPropBase* property) noexcept
{
    return guarded([&] {
        m_node.set(NodeFlag::Modified, true);
        tell(VEXSM_PROPCHANGEDNOTIFY, reinterpret_cast<hyper>(property));
    });
}

STDMETHODIMP BaseObject::CloneProp(IVexControlBase* source) noexcept
{
    return guarded([&] {
        SkinObjectCore* const core = coreOf(source);
        if (!core)
            return E_INVALIDARG;
        const std::size_t count = std::min(groups().size(), core->groups().size());
        for (std::size_t i = 0; i < count; ++i) {
            const ComPtr<ICtrlPluginProp> own = groups()[i];
            own->Clone(core->groups()[i].get());
        }
        return count > 0 ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::RebuildPropBaseXMLNode() noexcept
{
    for (const auto& group : groups())
        group->RebuildPropBaseStyleNode(configuration());
    return configuration() ? S_OK : S_FALSE;
}

STDMETHODIMP BaseObject::ClearPropBaseXMLNode() noexcept
{
    for (const auto& group : groups())
        group->RebuildPropBaseStyleNode(0);
    return groups().empty() ? S_FALSE : S_OK;
}

STDMETHODIMP BaseObject::SetRenderDevice(hyper device) noexcept
{
    return guarded([&] {
        belongings().renderDevice = device;
        for (const auto& group : groups())
            group->SetRenderDevice(device);
        tell(VEXSM_SETRENDERDEVICED, device);
    });
}

STDMETHODIMP BaseObject::GetRenderDevice(hyper* result) noexcept
{
    return returning(result, [&] {
        RootServices* const window = services();
        if (m_belongings && m_belongings->renderDevice)
            return m_belongings->renderDevice;
        return window ? window->renderDevice() : 0;
    });
}

} // namespace ambrel
