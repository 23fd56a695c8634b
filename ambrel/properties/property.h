// The common half of a property object: IVexPropBase over PropertyCore. A typed class adds its operations and its
// value.
#pragma once

#include "ambrel/properties/property_config.h"
#include "ambrel/properties/property_core.h"
#include "frame/com/dispatch.h"

namespace ambrel {

/// `Derived` is final, implements the typed operations of `Interface` and supplies
///   HRESULT toVariant(VARIANT&); HRESULT fromVariant(const VARIANT&, Notify)
///   std::wstring toText(); TextResult fromText(std::wstring_view, const ResourceResolver&, Notify)
///   void copyValue(Derived& source); bool releaseValue()
template <class Derived, class Interface, class Dual = IVexPropBase>
class Property : public morvane::Dispatch<Dual, Interface>, public PropertyCore, public InSmallBlock {
public:
    using PropertyCore::PropertyCore;

    /// The operations of this type, for the table of types.
    static PropertyKind makeKind(std::wstring_view keySuffix = {})
    {
        return {
            keySuffix,
            [](PropertyCore& p) -> IVexPropBase& { return derived(p); },
            [](PropertyCore& p, VARIANT& value) { return derived(p).toVariant(value); },
            [](PropertyCore& p, const VARIANT& value, Notify notify) { return derived(p).fromVariant(value, notify); },
            [](PropertyCore& p) { return derived(p).toText(); },
            [](PropertyCore& p, std::wstring_view text, const ResourceResolver& resolver, Notify notify) {
                return derived(p).fromText(text, resolver, notify);
            },
            [](PropertyCore& p, PropertyCore& source) { derived(p).copyValue(derived(source)); },
            [](PropertyCore& p) { return derived(p).releaseValue(); }};
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override
    {
        if (!result)
            return E_POINTER;
        *result = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == morvane::iidOf<IVexPropBase>() ||
            iid == morvane::iidOf<Dual>())
            *result = static_cast<Dual*>(this);
        else if (iid == kIidPropertyCore)
            *result = static_cast<PropertyCore*>(this);
        if (!*result)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_references; }

    STDMETHODIMP_(ULONG) Release() noexcept override
    {
        const ULONG left = --m_references;
        if (left == 0) {
            m_references = kDying; // what is released with it may ask for it again
            delete static_cast<Derived*>(this);
        }
        return left;
    }

    STDMETHODIMP GetPropTypePtr(IVexPropType** result) noexcept override { return config::descriptor(*this, result); }
    STDMETHODIMP SetName(BSTR name) noexcept override
    {
        return morvane::guarded([&] { setName(morvane::viewOf(name)); });
    }
    STDMETHODIMP GetName(BSTR* result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::Bstr(name().text()); });
    }
    STDMETHODIMP SetHelp(BSTR help) noexcept override
    {
        return morvane::guarded([&] { setHelp(morvane::viewOf(help)); });
    }
    STDMETHODIMP GetHelp(BSTR* result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::Bstr(help().text()); });
    }
    /// The layout of the typed operations is fixed when the property is made.
    STDMETHODIMP SetType(enumPropType newType) noexcept override { return newType == type() ? S_OK : E_INVALIDARG; }
    STDMETHODIMP GetType(enumPropType* result) noexcept override
    {
        return morvane::returning(result, [&] { return type(); });
    }
    STDMETHODIMP SetVariant(VARIANT value) noexcept override { return config::setVariant(*this, value, Notify::Yes); }
    STDMETHODIMP GetVariant(VARIANT* result) noexcept override { return config::getVariant(*this, result); }
    STDMETHODIMP SetDispatch(IDispatch* value) noexcept override { return config::setDispatch(*this, value); }
    STDMETHODIMP GetDispatch(IDispatch** result) noexcept override { return config::getDispatch(*this, result); }
    STDMETHODIMP AccessConfig(hyper node, BSTR key, VARIANT_BOOL read, VARIANT_BOOL isWholeKey,
                              VARIANT_BOOL* result) noexcept override
    {
        return config::access(*this, node, key, read != VARIANT_FALSE, isWholeKey != VARIANT_FALSE, result);
    }
    STDMETHODIMP SetVexRes(IVexRes* resources) noexcept override { return config::setResources(*this, resources); }
    STDMETHODIMP GetVexRes(IVexRes** result) noexcept override
    {
        return morvane::returning(result, [&] { return resources(); });
    }
    STDMETHODIMP SetPrivateValue(VARIANT value) noexcept override
    {
        return config::setVariant(*this, value, Notify::No);
    }
    STDMETHODIMP Clone(IVexPropBase* source) noexcept override { return config::clone(*this, source); }
    STDMETHODIMP ExportConfig(hyper node, BSTR key, VARIANT_BOOL* result) noexcept override
    {
        return config::access(*this, node, key, false, true, result);
    }
    STDMETHODIMP DoCallbackFunc() noexcept override
    {
        runCallback();
        return S_OK;
    }
    STDMETHODIMP SetChangedCallback(IPropChangedCallback* callback) noexcept override
    {
        return morvane::guarded([&] { setCallback(callback); });
    }
    STDMETHODIMP GetChangedCallback(IPropChangedCallback** result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::ComPtr<IPropChangedCallback>(callback()); });
    }
    STDMETHODIMP IsStyle(VARIANT_BOOL* result) noexcept override
    {
        return morvane::returning(result, [&] { return isStyle(); });
    }
    STDMETHODIMP SetStyle(VARIANT_BOOL isStyle) noexcept override
    {
        setStyle(isStyle != VARIANT_FALSE);
        return S_OK;
    }
    STDMETHODIMP SetPropertyNode(hyper node) noexcept override { return config::setPropertyNode(*this, node); }
    STDMETHODIMP GetPropertyNode(hyper* result) noexcept override
    {
        return morvane::returning(result, [&] { return knownExtras() ? knownExtras()->propertyNode : 0; });
    }
    STDMETHODIMP SetStyleNode(hyper node) noexcept override { return config::setStyleNode(*this, node); }
    STDMETHODIMP GetStyleNode(hyper* result) noexcept override
    {
        return morvane::returning(result, [&] { return knownExtras() ? knownExtras()->styleNode : 0; });
    }
    STDMETHODIMP ReleaseResource(VARIANT_BOOL* result) noexcept override
    {
        return morvane::returning(result, [&] { return self().releaseValue(); });
    }
    STDMETHODIMP SetRenderDevice(hyper device) noexcept override
    {
        return morvane::guarded([&] { extras().renderDevice = device; });
    }
    STDMETHODIMP GetRenderDevice(hyper* result) noexcept override
    {
        return morvane::returning(result, [&] { return config::renderDevice(*this); });
    }
    STDMETHODIMP SetRenderType(VEX_RENDERENGINE_TYPE type) noexcept override
    {
        return config::setRenderType(*this, type);
    }
    STDMETHODIMP GetRenderType(VEX_RENDERENGINE_TYPE* result) noexcept override
    {
        return morvane::returning(result, [&] { return config::renderType(*this); });
    }

    bool releaseValue() noexcept { return false; } // only resources are released

protected:
    /// Held where something of this object is touched after a call of a foreign object, which may release it.
    morvane::ComPtr<IVexPropBase> held() noexcept { return morvane::ComPtr<IVexPropBase>(this); }

    /// Stores a value; a different one is announced.
    template <class Value>
    void assign(Value& place, Value value, Notify notify = Notify::Yes)
    {
        if (place == value)
            return;
        std::swap(place, value); // the former value goes last
        if (notify == Notify::Yes)
            announceChange();
    }

private:
    static constexpr std::uint32_t kDying = 0x40000000;

    static Derived& derived(PropertyCore& core) noexcept { return static_cast<Derived&>(static_cast<Property&>(core)); }
    Derived& self() noexcept { return static_cast<Derived&>(*this); }
};

} // namespace ambrel
