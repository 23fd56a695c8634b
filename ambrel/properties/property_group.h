// A property group: the named place of properties and sub-groups in a control's property tree.
#pragma once

#include "ambrel/properties/atoms.h"
#include "ambrel/properties/compact_list.h"
#include "ambrel/properties/property_core.h"
#include "frame/com/dispatch.h"

#include <memory>
#include <span>
#include <string>

namespace ambrel {

class ConfigNode;

/// Finds the group object behind an interface of this runtime.
inline constexpr IID kIidPropertyGroup = {0x5E0B3D7A, 0x92C4, 0x4F16, {0x8A, 0x61, 0x0C, 0xD3, 0x7B, 0x2F, 0x49, 0xE5}};

/// Keeps its properties and sub-groups; knows its parent and its owner without keeping them.
class PropertyGroup final : public morvane::Dispatch<ICtrlPluginProp>, public InSmallBlock {
public:
    using PropertyList = std::span<morvane::ComPtr<IVexPropBase>>;
    using GroupList = std::span<morvane::ComPtr<PropertyGroup>>;

    static morvane::ComPtr<PropertyGroup> create(IVexControlBase* owner, std::wstring_view name, bool expanded);
    /// Null for null and for a group of another runtime.
    static morvane::ComPtr<PropertyGroup> from(ICtrlPluginProp* group) noexcept;

    std::wstring_view name() const noexcept { return m_name.text(); }
    /// The names of the groups from the top-level one to this one, with `separator` between them.
    std::wstring path(std::wstring_view separator = {}) const;
    bool isExpanded() const noexcept { return m_isExpanded != 0; }
    void setExpanded(bool isExpanded) noexcept { m_isExpanded = isExpanded; }

    PropertyGroup* parent() const noexcept { return m_parent; }
    PropertyList properties() const noexcept { return m_properties.items(); }
    GroupList groups() const noexcept { return m_extras ? m_extras->groups.items() : GroupList(); }
    /// One after the other, each kept during its visit, which may change the lists. Keep the group meanwhile.
    template <class Visit>
    void eachProperty(Visit visit) const
    {
        for (std::size_t i = 0; i < m_properties.size(); ++i) {
            const morvane::ComPtr<IVexPropBase> property = m_properties[i];
            visit(*coreOf(property.get()));
        }
    }
    template <class Visit>
    void eachGroup(Visit visit) const
    {
        for (std::size_t i = 0; i < groups().size(); ++i) {
            const morvane::ComPtr<PropertyGroup> group = groups()[i];
            visit(*group.get());
        }
    }
    PropertyGroup* findGroup(std::wstring_view name) const noexcept;   // the first of the name; borrowed
    PropertyCore* findProperty(std::wstring_view name) const noexcept; // the first of the name; borrowed

    void add(morvane::ComPtr<IVexPropBase> property, PropertyCore& core);
    /// How many groups may lie inside each other: what walks them needs the stack.
    static constexpr int kDeepest = 200;
    /// False when the group contains this one, and when it would lie too deep.
    bool add(morvane::ComPtr<PropertyGroup> group);

    /// Borrowed: the owner of this group or of the nearest group above that has one.
    IVexControlBase* owner() const noexcept;
    /// Here and in every group below.
    void setOwner(IVexControlBase* owner) noexcept;
    morvane::ComPtr<IVexRes> resources() const noexcept;
    hyper renderDevice() const noexcept;

    /// Copies the values of properties and sub-groups of the same names; others stay as they are.
    void copyFrom(PropertyGroup& source);

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() noexcept override;

    STDMETHODIMP get_bGroup(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP put_bGroup(VARIANT_BOOL isGroup) noexcept override;
    STDMETHODIMP get_strName(BSTR* result) noexcept override;
    STDMETHODIMP put_strName(BSTR name) noexcept override;
    STDMETHODIMP AddSkinProp(IVexPropType* descriptor) noexcept override;
    STDMETHODIMP RemoveSkinProp(IVexPropType* descriptor) noexcept override;
    STDMETHODIMP AddProp(ICtrlPluginProp* group) noexcept override;
    STDMETHODIMP RemoveProp(ICtrlPluginProp* group) noexcept override;
    STDMETHODIMP AccessConfig(hyper node, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP ExportConfig(BSTR parentName, hyper node, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP Expand(VARIANT_BOOL expanded) noexcept override;
    STDMETHODIMP IsExpand(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetParent(ICtrlPluginProp* parent) noexcept override;
    STDMETHODIMP GetParent(ICtrlPluginProp** result) noexcept override;
    STDMETHODIMP GetSkinPropTypeCount(long* result) noexcept override;
    STDMETHODIMP GetSkinPropTypeFromIndex(long index, IVexPropType** result) noexcept override;
    STDMETHODIMP GetAddinPropCount(long* result) noexcept override;
    STDMETHODIMP GetAddinPropByIndex(long index, ICtrlPluginProp** result) noexcept override;
    STDMETHODIMP GetVexRes(IVexRes** result) noexcept override;
    STDMETHODIMP SetVexRes(IVexRes* resources) noexcept override;
    STDMETHODIMP GetControlBasePtr(IVexControlBase** result) noexcept override;
    STDMETHODIMP SetControlBasePtr(IVexControlBase* owner) noexcept override;
    STDMETHODIMP AccessConfig2(BSTR parentName, hyper node, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP AddPropBase(IVexPropBase* property) noexcept override;
    STDMETHODIMP RemovePropBase(IVexPropBase* property) noexcept override;
    STDMETHODIMP RemoveAllPropBase() noexcept override;
    STDMETHODIMP GetPropBaseCount(long* result) noexcept override;
    STDMETHODIMP GetAtPropBase(long index, IVexPropBase** result) noexcept override;
    STDMETHODIMP Clone(ICtrlPluginProp* source) noexcept override;
    /// Only 0 is taken: how such a callback would be called is not agreed between hosts.
    STDMETHODIMP SetGetExpandCallback(hyper callback, hyper property) noexcept override;
    STDMETHODIMP RebuildPropBaseStyleNode(hyper node) noexcept override;
    STDMETHODIMP AccessConfig3(BSTR parentName, hyper node, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetRenderDevice(hyper device) noexcept override;

private:
    /// What few groups have; made when first needed.
    struct Extras : InSmallBlock {
        CompactList<morvane::ComPtr<PropertyGroup>> groups;
        CompactList<morvane::ComPtr<IVexPropType>> descriptors; // added ones that describe no property of this group
        morvane::ComPtr<IVexRes> resources;
        hyper renderDevice = 0;
    };

    PropertyGroup(IVexControlBase* owner, std::wstring_view name, bool expanded);
    ~PropertyGroup();

    Extras& extras();
    bool isWithin(const PropertyGroup& ancestor) const noexcept;
    int depth() const noexcept;  // 1 for a top-level group
    int height() const noexcept; // 1 for a group without groups
    morvane::ComPtr<PropertyGroup> takeGroup(PropertyGroup& group) noexcept;
    void leaveProperty(IVexPropBase& property) noexcept;
    PropertyCore* propertyOf(IVexPropType& descriptor) const noexcept;
    template <class Visit>
    void eachShown(Visit visit) const;

    // One word: a control has a dozen groups.
    std::uint32_t m_references : 30 = 0;
    std::uint32_t m_isExpanded : 1;
    std::uint32_t m_isGroup : 1 = 1;
    Atom m_name;
    IVexControlBase* m_owner;
    PropertyGroup* m_parent = nullptr;
    std::unique_ptr<Extras> m_extras;
    CompactList<morvane::ComPtr<IVexPropBase>> m_properties;
};

} // namespace ambrel
