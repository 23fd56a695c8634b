#include "ambrel/properties/property_descriptor.h"

#include "ambrel/properties/property_config.h"
#include "ambrel/properties/property_group.h"
#include "ambrel/properties/simple_properties.h"

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::guarded;
using morvane::returning;
using morvane::viewOf;

namespace {

template <class Value>
HRESULT setRange(DescriptorState::Range<Value>& range, Value least, Value most) noexcept
{
    if (!(least <= most))
        return E_INVALIDARG;
    range = {least, most};
    return S_OK;
}

template <class Value>
HRESULT getRange(const DescriptorState::Range<Value>& range, Value* least, Value* most) noexcept
{
    if (!least || !most)
        return E_POINTER;
    *least = range.least;
    *most = range.most;
    return S_OK;
}

} // namespace

DescriptorState& descriptorStateOf(PropertyCore& property)
{
    PropertyExtras& extras = property.extras();
    if (!extras.descriptorState)
        extras.descriptorState = std::make_shared<DescriptorState>();
    return *extras.descriptorState;
}

ComPtr<IVexPropType> PropertyDescriptor::of(PropertyCore& property)
{
    PropertyExtras& extras = property.extras();
    return ComPtr<IVexPropType>(extras.descriptor ? extras.descriptor : new PropertyDescriptor(property));
}

PropertyDescriptor::PropertyDescriptor(PropertyCore& property)
{
    attach(property);
    morvane::ModuleLock::add();
}

PropertyDescriptor::~PropertyDescriptor()
{
    if (m_property->knownExtras() && m_property->knownExtras()->descriptor == this)
        m_property->extras().descriptor = nullptr;
    morvane::ModuleLock::remove();
}

void PropertyDescriptor::attach(PropertyCore& property)
{
    descriptorStateOf(property);
    PropertyExtras& extras = property.extras();
    if (m_property && m_property->extras().descriptor == this)
        m_property->extras().descriptor = nullptr;
    if (!extras.descriptor)
        extras.descriptor = this;
    m_state = extras.descriptorState;
    m_property = &property;
    m_hold = ComPtr<IVexPropBase>(&property.asInterface());
}

STDMETHODIMP PropertyDescriptor::QueryInterface(REFIID iid, void** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch && iid != morvane::iidOf<IVexPropType>())
        return E_NOINTERFACE;
    *result = static_cast<IVexPropType*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) PropertyDescriptor::Release() noexcept
{
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

STDMETHODIMP PropertyDescriptor::get_strName(BSTR* result) noexcept
{
    return m_hold->GetName(result);
}
STDMETHODIMP PropertyDescriptor::put_strName(BSTR name) noexcept
{
    return m_hold->SetName(name);
}
STDMETHODIMP PropertyDescriptor::get_eType(enumPropType* result) noexcept
{
    return m_hold->GetType(result);
}
STDMETHODIMP PropertyDescriptor::put_eType(enumPropType type) noexcept
{
    return m_hold->SetType(type);
}
STDMETHODIMP PropertyDescriptor::get_vtValue(VARIANT* result) noexcept
{
    return m_hold->GetVariant(result);
}
STDMETHODIMP PropertyDescriptor::put_vtValue(VARIANT value) noexcept
{
    return config::setVariant(*m_property, value, Notify::Yes);
}
STDMETHODIMP PropertyDescriptor::get_strHelp(BSTR* result) noexcept
{
    return m_hold->GetHelp(result);
}
STDMETHODIMP PropertyDescriptor::put_strHelp(BSTR help) noexcept
{
    return m_hold->SetHelp(help);
}

STDMETHODIMP PropertyDescriptor::get_nStatus(short* result) noexcept
{
    return returning(result, [&] { return m_state->status; });
}

STDMETHODIMP PropertyDescriptor::put_nStatus(short status) noexcept
{
    m_state->status = status;
    return S_OK;
}

STDMETHODIMP PropertyDescriptor::get_strValue(BSTR* result) noexcept
{
    return returning(result, [&] { return Bstr(m_property->kind().text(*m_property)); });
}

STDMETHODIMP PropertyDescriptor::put_strValue(BSTR text) noexcept
{
    return guarded([&] {
        const ComPtr<IVexPropBase> hold = m_hold;
        const auto taken =
            m_property->kind().setText(*m_property, viewOf(text), SkinResources(m_property->resources()), Notify::Yes);
        return taken == TextResult::Taken ? S_OK : taken == TextResult::NoSuchResource ? S_FALSE : E_INVALIDARG;
    });
}

STDMETHODIMP PropertyDescriptor::get_lPropId(long* result) noexcept
{
    return returning(result, [&] { return m_state->identifier; });
}

STDMETHODIMP PropertyDescriptor::put_lPropId(long identifier) noexcept
{
    m_state->identifier = identifier;
    return S_OK;
}

ComboPropertyObject* PropertyDescriptor::combo() const noexcept
{
    return m_property->type() == _PROPTYPE_COMBO ? static_cast<ComboPropertyObject*>(m_hold.get()) : nullptr;
}

STDMETHODIMP PropertyDescriptor::get_nComboSelItem(long* result) noexcept
{
    return returning(result, [&] { return combo() ? combo()->selection() : -1; });
}

STDMETHODIMP PropertyDescriptor::put_nComboSelItem(long index) noexcept
{
    return combo() ? combo()->SetSelection(index) : E_INVALIDARG;
}

STDMETHODIMP PropertyDescriptor::get_bAccess(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_state->isAccessible; });
}

STDMETHODIMP PropertyDescriptor::put_bAccess(VARIANT_BOOL isAccessible) noexcept
{
    m_state->isAccessible = isAccessible != VARIANT_FALSE;
    return S_OK;
}

STDMETHODIMP PropertyDescriptor::get_pIDispatch(IDispatch** result) noexcept
{
    return m_hold->GetDispatch(result);
}
STDMETHODIMP PropertyDescriptor::put_pIDispatch(IDispatch* value) noexcept
{
    return m_hold->SetDispatch(value);
}

STDMETHODIMP PropertyDescriptor::get_pVoid(hyper* result) noexcept
{
    return returning(result, [&] { return m_state->pointer; });
}

STDMETHODIMP PropertyDescriptor::put_pVoid(hyper pointer) noexcept
{
    m_state->pointer = pointer;
    return S_OK;
}

STDMETHODIMP PropertyDescriptor::SetIntPropMinMax(int least, int most) noexcept
{
    return setRange(m_state->intRange, least, most);
}
STDMETHODIMP PropertyDescriptor::GetIntPropMinMax(int* least, int* most) noexcept
{
    return getRange(m_state->intRange, least, most);
}
STDMETHODIMP PropertyDescriptor::SetLongPropMinMax(long least, long most) noexcept
{
    return setRange(m_state->longRange, least, most);
}
STDMETHODIMP PropertyDescriptor::GetLongPropMinMax(long* least, long* most) noexcept
{
    return getRange(m_state->longRange, least, most);
}
STDMETHODIMP PropertyDescriptor::SetFloatPropMinMax(float least, float most) noexcept
{
    return setRange(m_state->floatRange, least, most);
}
STDMETHODIMP PropertyDescriptor::GetFloatPropMinMax(float* least, float* most) noexcept
{
    return getRange(m_state->floatRange, least, most);
}

STDMETHODIMP PropertyDescriptor::GetComboSelItemIndexPtr(long** result) noexcept
{
    return morvane::filling(result, [&](long*& place) {
        if (combo())
            place = combo()->selectionPlace();
        return place ? S_OK : S_FALSE;
    });
}

STDMETHODIMP PropertyDescriptor::GetPropBase(IVexPropBase** result) noexcept
{
    return returning(result, [&] { return m_hold; });
}

STDMETHODIMP PropertyDescriptor::SetPropBase(IVexPropBase* property) noexcept
{
    PropertyCore* core = coreOf(property);
    if (!core)
        return E_INVALIDARG;
    return guarded([&] { attach(*core); });
}

STDMETHODIMP PropertyDescriptor::GetParentProp(ICtrlPluginProp** result) noexcept
{
    return returning(result, [&] { return ComPtr<ICtrlPluginProp>(m_property->group()); });
}

STDMETHODIMP PropertyDescriptor::SetParentProp(ICtrlPluginProp* group) noexcept
{
    const auto wanted = PropertyGroup::from(group);
    if (!wanted)
        return E_INVALIDARG;
    return guarded([&] {
        const ComPtr<PropertyGroup> former(m_property->group());
        if (former.get() == wanted.get())
            return;
        wanted->add(m_hold, *m_property);
        if (former)
            former->RemovePropBase(m_hold.get());
    });
}

} // namespace ambrel
