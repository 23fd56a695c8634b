// The property groups of one control.
#pragma once

#include "ambrel/properties/compact_list.h"
#include "ambrel/properties/property_group.h"

#include <span>
#include <string_view>

namespace ambrel {

/// Keeps the top-level groups in the order in which they were made. The base object has one; its destruction, like
/// detach(), tells the groups that their owner is gone.
class PropertyTree {
public:
    PropertyTree() noexcept = default;
    PropertyTree(const PropertyTree&) = delete;
    PropertyTree& operator=(const PropertyTree&) = delete;
    ~PropertyTree() { detach(); }

    /// What CreateGroupProp does: a group of `owner` below `parent`, or a top-level one when that is null. E_INVALIDARG
    /// for a parent of another runtime.
    HRESULT createGroup(IVexControlBase* owner, ICtrlPluginProp* parent, BSTR name, bool expanded,
                        ICtrlPluginProp** result) noexcept;
    /// What CreateProp does, see createProperty.
    HRESULT createProp(IVexControlBase* owner, ICtrlPluginProp* group, enumPropType type, BSTR name, BSTR help,
                       bool isStyle, IPropChangedCallback* callback, IVexPropBase** result) noexcept;

    /// A group made elsewhere. False when it is of another runtime or here already. Throws std::bad_alloc.
    bool add(ICtrlPluginProp* group);
    bool remove(ICtrlPluginProp* group) noexcept;
    std::span<morvane::ComPtr<PropertyGroup>> groups() const noexcept { return m_groups.items(); }
    PropertyGroup* findGroup(std::wstring_view name) const noexcept; // the first of the name; borrowed

    /// The groups forget their owner and the resource object they were given; whoever still holds a property can go on
    /// using it, unheard.
    void detach() noexcept;

    /// Copies the values of the properties that both trees have at the same path. Nothing is announced.
    void copyFrom(const PropertyTree& source);

    /// Reads or writes every group in a configuration node under the given parent name; see accessGroup. E_INVALIDARG
    /// for a handle that is no node.
    HRESULT access(std::wstring_view parentName, NodeHandle node, bool read, VARIANT_BOOL* result) noexcept;

    void setStyleNodes(NodeHandle node);
    void setRenderDevice(hyper device) noexcept;

private:
    CompactList<morvane::ComPtr<PropertyGroup>> m_groups;
};

} // namespace ambrel
