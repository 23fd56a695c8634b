#include "ambrel/properties/property_tree.h"

#include "ambrel/properties/group_config.h"
#include "ambrel/properties/property_factory.h"

#include <algorithm>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::viewOf;

HRESULT PropertyTree::createGroup(IVexControlBase* owner, ICtrlPluginProp* parent, BSTR name, bool expanded,
                                  ICtrlPluginProp** result) noexcept
{
    return morvane::filling(result, [&](ICtrlPluginProp*& place) {
        auto group = ambrel::createGroup(owner, parent, viewOf(name), expanded);
        if (!group)
            return E_INVALIDARG;
        if (!parent)
            add(group.get());
        place = group.detach();
        return S_OK;
    });
}

HRESULT PropertyTree::createProp(IVexControlBase*, ICtrlPluginProp* group, enumPropType type, BSTR name, BSTR help,
                                 bool isStyle, IPropChangedCallback* callback, IVexPropBase** result) noexcept
{
    return createProperty(group, type, viewOf(name), viewOf(help), isStyle, callback, result);
}

bool PropertyTree::add(ICtrlPluginProp* group)
{
    auto added = PropertyGroup::from(group);
    if (!added || std::ranges::find(groups(), added) != groups().end())
        return false;
    m_groups.add(std::move(added));
    return true;
}

bool PropertyTree::remove(ICtrlPluginProp* group) noexcept
{
    const auto removed = PropertyGroup::from(group);
    const auto found = std::ranges::find(groups(), removed);
    if (!removed || found == groups().end())
        return false;
    removed->setOwner(nullptr);
    m_groups.take(static_cast<std::size_t>(found - groups().begin()));
    return true;
}

PropertyGroup* PropertyTree::findGroup(std::wstring_view name) const noexcept
{
    const auto found = std::ranges::find_if(groups(), [&](const auto& group) { return group->name() == name; });
    return found == groups().end() ? nullptr : found->get();
}

void PropertyTree::detach() noexcept
{
    // Out of the tree first: releasing resources can call back.
    const auto detached = std::move(m_groups);
    for (const auto& group : detached.items()) {
        group->setOwner(nullptr);
        group->SetVexRes(nullptr);
    }
}

void PropertyTree::copyFrom(const PropertyTree& source)
{
    for (const auto& group : groups())
        if (PropertyGroup* from = source.findGroup(group->name()))
            group->copyFrom(*from);
}

HRESULT PropertyTree::access(std::wstring_view parentName, NodeHandle node, bool read, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& done) {
        const Bstr prefix(parentName);
        for (const auto& group : groups()) {
            VARIANT_BOOL groupDone = VARIANT_FALSE;
            const HRESULT status = accessGroup(*group.get(), prefix.get(), node, read, StyleNodes::Ignored, &groupDone);
            if (FAILED(status))
                return status;
            if (groupDone != VARIANT_FALSE)
                done = VARIANT_TRUE;
        }
        return S_OK;
    });
}

void PropertyTree::setStyleNodes(NodeHandle node)
{
    for (const auto& group : groups())
        ambrel::setStyleNodes(*group.get(), node);
}

void PropertyTree::setRenderDevice(hyper device) noexcept
{
    for (const auto& group : groups())
        group->SetRenderDevice(device);
}

} // namespace ambrel
