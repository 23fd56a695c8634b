#include "ambrel/properties/property_group.h"

#include "ambrel/properties/config_node.h"
#include "ambrel/properties/group_config.h"
#include "ambrel/properties/hotkey.h"
#include "ambrel/properties/property_descriptor.h"
#include "ambrel/properties/resource_properties.h"

#include <algorithm>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::guarded;
using morvane::returning;
using morvane::viewOf;

namespace {

template <class List, class Interface>
std::optional<std::size_t> indexIn(const List& list, Interface* object) noexcept
{
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i].get() == object)
            return i;
    return std::nullopt;
}

/// S_FALSE and null for an index that is none.
template <class List, class Interface>
HRESULT giveAt(const List& list, long index, Interface** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (index < 0 || static_cast<std::size_t>(index) >= list.size())
        return S_FALSE;
    *result = list[index].get();
    (*result)->AddRef();
    return S_OK;
}

} // namespace

PropertyGroup::PropertyGroup(IVexControlBase* owner, std::wstring_view name, bool expanded)
    : m_isExpanded(expanded), m_name(name), m_owner(owner)
{
    morvane::ModuleLock::add();
}

PropertyGroup::~PropertyGroup()
{
    for (const auto& property : m_properties.items())
        leaveProperty(*property.get());
    for (const auto& group : groups())
        group->m_parent = nullptr;
    morvane::ModuleLock::remove();
}

ComPtr<PropertyGroup> PropertyGroup::create(IVexControlBase* owner, std::wstring_view name, bool expanded)
{
    return ComPtr<PropertyGroup>(new PropertyGroup(owner, name, expanded));
}

ComPtr<PropertyGroup> PropertyGroup::from(ICtrlPluginProp* group) noexcept
{
    ComPtr<PropertyGroup> result;
    if (group)
        group->QueryInterface(kIidPropertyGroup, result.putVoid());
    return result;
}

std::wstring PropertyGroup::path(std::wstring_view separator) const
{
    std::wstring result = m_parent ? m_parent->path(separator).append(separator) : std::wstring();
    return result.append(name());
}

PropertyGroup* PropertyGroup::findGroup(std::wstring_view name) const noexcept
{
    const auto found = std::ranges::find_if(groups(), [&](const auto& group) { return group->name() == name; });
    return found == groups().end() ? nullptr : found->get();
}

PropertyCore* PropertyGroup::findProperty(std::wstring_view name) const noexcept
{
    for (const auto& property : properties())
        if (PropertyCore* core = coreOf(property.get()); core->name().text() == name)
            return core;
    return nullptr;
}

PropertyGroup::Extras& PropertyGroup::extras()
{
    if (!m_extras)
        m_extras = std::make_unique<Extras>();
    return *m_extras;
}

bool PropertyGroup::isWithin(const PropertyGroup& ancestor) const noexcept
{
    for (const PropertyGroup* group = this; group; group = group->m_parent)
        if (group == &ancestor)
            return true;
    return false;
}

int PropertyGroup::depth() const noexcept
{
    int depth = 0;
    for (const PropertyGroup* group = this; group; group = group->m_parent)
        ++depth;
    return depth;
}

int PropertyGroup::height() const noexcept
{
    int below = 0;
    for (const auto& group : groups())
        below = std::max(below, group->height());
    return below + 1;
}

void PropertyGroup::leaveProperty(IVexPropBase& property) noexcept
{
    if (PropertyCore* core = coreOf(&property); core->group() == this)
        core->setGroup(nullptr);
}

void PropertyGroup::add(ComPtr<IVexPropBase> property, PropertyCore& core)
{
    m_properties.add(std::move(property));
    core.setGroup(this);
    if (mayHaveHotkey(core))
        hotkeyGained();
}

bool PropertyGroup::add(ComPtr<PropertyGroup> group)
{
    if (isWithin(*group) || depth() + group->height() > kDeepest)
        return false;
    PropertyGroup& added = *group.get();
    PropertyGroup* former = added.m_parent;
    extras().groups.add(std::move(group));
    added.m_parent = this;
    if (former)
        former->takeGroup(added);
    return true;
}

ComPtr<PropertyGroup> PropertyGroup::takeGroup(PropertyGroup& group) noexcept
{
    const auto index = m_extras ? indexIn(m_extras->groups.items(), &group) : std::nullopt;
    return index ? m_extras->groups.take(*index) : nullptr;
}

IVexControlBase* PropertyGroup::owner() const noexcept
{
    for (const PropertyGroup* group = this; group; group = group->m_parent)
        if (group->m_owner)
            return group->m_owner;
    return nullptr;
}

void PropertyGroup::setOwner(IVexControlBase* owner) noexcept
{
    m_owner = owner;
    for (const auto& group : groups())
        group->setOwner(owner);
}

ComPtr<IVexRes> PropertyGroup::resources() const noexcept
{
    for (const PropertyGroup* group = this; group; group = group->m_parent)
        if (group->m_extras && group->m_extras->resources)
            return group->m_extras->resources;
    ComPtr<IVexRes> result;
    if (IVexControlBase* base = owner())
        base->GetVexRes(result.put());
    return result;
}

hyper PropertyGroup::renderDevice() const noexcept
{
    for (const PropertyGroup* group = this; group; group = group->m_parent)
        if (group->m_extras && group->m_extras->renderDevice != 0)
            return group->m_extras->renderDevice;
    return 0;
}

void PropertyGroup::copyFrom(PropertyGroup& source)
{
    if (&source == this)
        return;
    m_isExpanded = source.m_isExpanded;
    eachProperty([&](PropertyCore& property) {
        PropertyCore* from = source.findProperty(property.name().text());
        if (!from || from->type() != property.type())
            return;
        const ComPtr<IVexPropBase> hold(&from->asInterface());
        property.kind().copyFrom(property, *from);
    });
    eachGroup([&](PropertyGroup& group) {
        if (const ComPtr<PropertyGroup> from(source.findGroup(group.name())); from)
            group.copyFrom(*from.get());
    });
}

STDMETHODIMP PropertyGroup::QueryInterface(REFIID iid, void** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == morvane::iidOf<ICtrlPluginProp>())
        *result = static_cast<ICtrlPluginProp*>(this);
    else if (iid == kIidPropertyGroup)
        *result = this;
    if (!*result)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) PropertyGroup::Release() noexcept
{
    const ULONG left = --m_references;
    if (left == 0) {
        constexpr std::uint32_t kDying = 0x20000000;
        m_references = kDying; // what is released with it may ask for it again
        delete this;
    }
    return left;
}

STDMETHODIMP PropertyGroup::get_bGroup(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_isGroup != 0; });
}

STDMETHODIMP PropertyGroup::put_bGroup(VARIANT_BOOL isGroup) noexcept
{
    m_isGroup = isGroup != VARIANT_FALSE;
    return S_OK;
}

STDMETHODIMP PropertyGroup::get_strName(BSTR* result) noexcept
{
    return returning(result, [&] { return Bstr(name()); });
}

STDMETHODIMP PropertyGroup::put_strName(BSTR name) noexcept
{
    return guarded([&] {
        m_name = Atom(viewOf(name));
        hotkeyGained(); // groups are known by their names
    });
}

STDMETHODIMP PropertyGroup::AddProp(ICtrlPluginProp* group) noexcept
{
    if (!group)
        return E_POINTER;
    auto added = from(group);
    if (!added)
        return E_INVALIDARG;
    if (added->m_parent == this)
        return S_FALSE;
    return guarded([&] {
        if (!add(added))
            return E_INVALIDARG;
        hotkeyGained();           // it may bring some
        added->setOwner(nullptr); // its owner is now that of the groups above
        return S_OK;
    });
}

STDMETHODIMP PropertyGroup::RemoveProp(ICtrlPluginProp* group) noexcept
{
    if (!group)
        return E_POINTER;
    const auto removed = from(group);
    if (!removed || !takeGroup(*removed.get()))
        return S_FALSE;
    removed->m_parent = nullptr;
    removed->setOwner(nullptr); // nobody would tell it when the control goes
    return S_OK;
}

STDMETHODIMP PropertyGroup::Expand(VARIANT_BOOL expanded) noexcept
{
    m_isExpanded = expanded != VARIANT_FALSE;
    return S_OK;
}

STDMETHODIMP PropertyGroup::IsExpand(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return isExpanded(); });
}

STDMETHODIMP PropertyGroup::SetParent(ICtrlPluginProp* parent) noexcept
{
    const ComPtr<PropertyGroup> self(this); // the former parent may hold the only reference
    if (parent) {
        const auto wanted = from(parent);
        return wanted ? wanted->AddProp(this) : E_INVALIDARG;
    }
    if (PropertyGroup* former = std::exchange(m_parent, nullptr)) {
        former->takeGroup(*this);
        setOwner(nullptr);
    }
    return S_OK;
}

STDMETHODIMP PropertyGroup::GetParent(ICtrlPluginProp** result) noexcept
{
    return returning(result, [&] { return ComPtr<ICtrlPluginProp>(m_parent); });
}

STDMETHODIMP PropertyGroup::GetAddinPropCount(long* result) noexcept
{
    return returning(result, [&] { return groups().size(); });
}

STDMETHODIMP PropertyGroup::GetAddinPropByIndex(long index, ICtrlPluginProp** result) noexcept
{
    return giveAt(groups(), index, result);
}

STDMETHODIMP PropertyGroup::GetVexRes(IVexRes** result) noexcept
{
    return returning(result, [&] { return resources(); });
}

STDMETHODIMP PropertyGroup::SetVexRes(IVexRes* resources) noexcept
{
    return guarded([&] {
        if (resources || m_extras)
            extras().resources = ComPtr<IVexRes>(resources);
    });
}

STDMETHODIMP PropertyGroup::GetControlBasePtr(IVexControlBase** result) noexcept
{
    return returning(result, [&] { return ComPtr<IVexControlBase>(owner()); });
}

STDMETHODIMP PropertyGroup::SetControlBasePtr(IVexControlBase* owner) noexcept
{
    setOwner(owner);
    if (owner)
        hotkeyGained(); // it comes into a table
    return S_OK;
}

STDMETHODIMP PropertyGroup::AddPropBase(IVexPropBase* property) noexcept
{
    if (!property)
        return E_POINTER;
    PropertyCore* core = coreOf(property);
    if (!core)
        return E_INVALIDARG;
    if (indexIn(properties(), property))
        return S_FALSE;
    return guarded([&] {
        // In one group at a time, like a group in its parent: it would not know the other one's control.
        const ComPtr<PropertyGroup> former(core->group());
        const ComPtr<IVexPropBase> added(property);
        add(added, *core);
        if (former)
            former->RemovePropBase(added.get());
    });
}

STDMETHODIMP PropertyGroup::RemovePropBase(IVexPropBase* property) noexcept
{
    if (!property)
        return E_POINTER;
    const auto index = indexIn(properties(), property);
    if (!index)
        return S_FALSE;
    const auto removed = m_properties.take(*index);
    leaveProperty(*removed.get());
    return S_OK;
}

STDMETHODIMP PropertyGroup::RemoveAllPropBase() noexcept
{
    const auto removed = std::move(m_properties);
    for (const auto& property : removed.items())
        leaveProperty(*property.get());
    return S_OK;
}

STDMETHODIMP PropertyGroup::GetPropBaseCount(long* result) noexcept
{
    return returning(result, [&] { return properties().size(); });
}

STDMETHODIMP PropertyGroup::GetAtPropBase(long index, IVexPropBase** result) noexcept
{
    return giveAt(properties(), index, result);
}

STDMETHODIMP PropertyGroup::Clone(ICtrlPluginProp* source) noexcept
{
    if (!source)
        return E_POINTER;
    const auto from = PropertyGroup::from(source);
    const ComPtr<PropertyGroup> hold(this);
    return from ? guarded([&] { copyFrom(*from.get()); }) : E_INVALIDARG;
}

STDMETHODIMP PropertyGroup::SetGetExpandCallback(hyper callback, hyper) noexcept
{
    return callback == 0 ? S_OK : E_NOTIMPL;
}

STDMETHODIMP PropertyGroup::SetRenderDevice(hyper device) noexcept
{
    return guarded([&] {
        if (device != 0 || m_extras)
            extras().renderDevice = device;
    });
}

PropertyCore* PropertyGroup::propertyOf(IVexPropType& descriptor) const noexcept
{
    ComPtr<IVexPropBase> property;
    descriptor.GetPropBase(property.put());
    return property && indexIn(properties(), property.get()) ? coreOf(property.get()) : nullptr;
}

STDMETHODIMP PropertyGroup::AddSkinProp(IVexPropType* descriptor) noexcept
{
    if (!descriptor)
        return E_POINTER;
    return guarded([&] {
        if (PropertyCore* core = propertyOf(*descriptor)) {
            core->setHidden(false);
            return S_OK;
        }
        auto& descriptors = extras().descriptors;
        if (indexIn(descriptors.items(), descriptor))
            return S_FALSE;
        descriptors.add(ComPtr<IVexPropType>(descriptor));
        return S_OK;
    });
}

STDMETHODIMP PropertyGroup::RemoveSkinProp(IVexPropType* descriptor) noexcept
{
    if (!descriptor)
        return E_POINTER;
    if (PropertyCore* core = propertyOf(*descriptor)) {
        const bool wasShown = !core->isHidden();
        core->setHidden(true);
        return wasShown ? S_OK : S_FALSE;
    }
    const auto index = m_extras ? indexIn(m_extras->descriptors.items(), descriptor) : std::nullopt;
    if (!index)
        return S_FALSE;
    m_extras->descriptors.take(*index);
    return S_OK;
}

/// The properties whose descriptors a designer sees.
template <class Visit>
void PropertyGroup::eachShown(Visit visit) const
{
    for (const auto& property : properties())
        if (PropertyCore* core = coreOf(property.get()); !core->isHidden())
            visit(*core);
}

STDMETHODIMP PropertyGroup::GetSkinPropTypeCount(long* result) noexcept
{
    return returning(result, [&] {
        std::size_t count = m_extras ? m_extras->descriptors.size() : 0;
        eachShown([&](PropertyCore&) { ++count; });
        return count;
    });
}

STDMETHODIMP PropertyGroup::GetSkinPropTypeFromIndex(long index, IVexPropType** result) noexcept
{
    return morvane::filling(result, [&](IVexPropType*& place) {
        if (index < 0)
            return S_FALSE;
        long left = index;
        PropertyCore* found = nullptr;
        eachShown([&](PropertyCore& core) {
            if (left-- == 0)
                found = &core;
        });
        if (found) {
            place = PropertyDescriptor::of(*found).detach();
            return S_OK;
        }
        return m_extras ? giveAt(m_extras->descriptors.items(), left, &place) : S_FALSE;
    });
}

STDMETHODIMP PropertyGroup::AccessConfig(hyper node, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return accessGroup(*this, nullptr, node, read != VARIANT_FALSE, StyleNodes::Ignored, result);
}

STDMETHODIMP PropertyGroup::AccessConfig2(BSTR parentName, hyper node, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return accessGroup(*this, parentName, node, read != VARIANT_FALSE, StyleNodes::Ignored, result);
}

STDMETHODIMP PropertyGroup::AccessConfig3(BSTR parentName, hyper node, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return accessGroup(*this, parentName, node, read != VARIANT_FALSE, StyleNodes::Used, result);
}

STDMETHODIMP PropertyGroup::ExportConfig(BSTR parentName, hyper node, VARIANT_BOOL* result) noexcept
{
    return accessGroup(*this, parentName, node, false, StyleNodes::Ignored, result);
}

STDMETHODIMP PropertyGroup::RebuildPropBaseStyleNode(hyper node) noexcept
{
    if (node != 0 && !ConfigNode::fromHandle(node))
        return E_INVALIDARG;
    return guarded([&] { setStyleNodes(*this, node); });
}

} // namespace ambrel
