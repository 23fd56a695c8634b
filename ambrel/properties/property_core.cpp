#include "ambrel/properties/property_config.h"

#include "ambrel/properties/config_node.h"
#include "ambrel/properties/property_descriptor.h"
#include "ambrel/properties/property_group.h"
#include "ambrel/trace/trace.h"
#include "frame/com/variant.h"

#include <utility>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::guarded;
using morvane::Variant;

PropertyCore::~PropertyCore()
{
    morvane::ModuleLock::remove();
}

void PropertyCore::setHelp(std::wstring_view help)
{
    if (help != this->help().text())
        extras().help = Atom(help);
}

IVexControlBase* PropertyCore::owner() const noexcept
{
    return m_group ? m_group->owner() : nullptr;
}

void PropertyCore::setCallback(IPropChangedCallback* callback)
{
    if (callback || m_extras)
        extras().callback = ComPtr<IPropChangedCallback>(callback);
}

ComPtr<IVexRes> PropertyCore::resources() const noexcept
{
    if (m_extras && m_extras->resources)
        return m_extras->resources;
    return m_group ? m_group->resources() : nullptr;
}

PropertyExtras& PropertyCore::extras()
{
    if (!m_extras)
        m_extras = std::make_unique<PropertyExtras>();
    return *m_extras;
}

void PropertyCore::runCallback() noexcept
{
    const ComPtr<IPropChangedCallback> called(callback());
    if (!called)
        return;
    const ComPtr<IVexControlBase> told(owner());
    called->Do(told.get());
}

namespace {

void traceChange(PropertyCore& property, IVexControlBase* owner) noexcept
{
    if (!Trace::instance().isWatched())
        return;
    guarded([&] {
        ComPtr<IVexControlBase> control;
        if (owner)
            owner->GetRealCtrlPtr(control.put());
        std::wstring text = property.group() ? property.group()->path(L"/") + L"/" : std::wstring();
        text += property.name().text();
        traceText(AMBREL_TRACE_PROPERTY, control ? control.get() : owner, 0, text.c_str());
    });
}

} // namespace

void PropertyCore::announceChange() noexcept
{
    constexpr std::uint8_t kDeepest = 16;
    if (m_announcing == kDeepest)
        return;
    const ComPtr<IVexPropBase> self(&asInterface());
    const ComPtr<IVexControlBase> told(owner());
    traceChange(*this, told.get());
    ++m_announcing;
    runCallback();
    // The callback may have taken the property from its owner, or ended the owner.
    if (told && owner() == told.get())
        told->PropChangedNotify(self.get());
    --m_announcing;
}

bool PropertyCore::readAttribute(const ConfigNode& node, std::wstring_view key)
{
    const std::wstring* text = node.attribute(key);
    // A copy: setting the value may reach the node again.
    return text &&
           kind().setText(*this, std::wstring(*text), SkinResources(resources()), Notify::No) == TextResult::Taken;
}

bool PropertyCore::writeAttribute(ConfigNode& node, std::wstring_view key)
{
    const std::wstring text = kind().text(*this);
    if (text.empty() && isResource()) {
        ComPtr<IDispatch> object;
        asInterface().GetDispatch(object.put());
        if (object) {
            node.removeAttribute(key);
            return false;
        }
    }
    node.setAttribute(key, text);
    return true;
}

std::wstring PropertyCore::keyName() const
{
    std::wstring key(m_name.text());
    return key += kind().keySuffix;
}

PropertyCore* coreOf(IVexPropBase* property) noexcept
{
    void* core = nullptr;
    if (!property || FAILED(property->QueryInterface(kIidPropertyCore, &core)))
        return nullptr;
    property->Release(); // the caller keeps it
    return static_cast<PropertyCore*>(core);
}

namespace config {

HRESULT descriptor(PropertyCore& property, IVexPropType** result) noexcept
{
    return morvane::returning(result, [&] { return PropertyDescriptor::of(property); });
}

HRESULT getVariant(PropertyCore& property, VARIANT* result) noexcept
{
    if (!result)
        return E_POINTER;
    VariantInit(result);
    return guarded([&] { return property.kind().getVariant(property, *result); });
}

HRESULT setVariant(PropertyCore& property, const VARIANT& value, Notify notify) noexcept
{
    return guarded([&]() -> HRESULT {
        const ComPtr<IVexPropBase> hold(&property.asInterface()); // what is asked for a value may release it
        if (!(value.vt & VT_BYREF))
            return property.kind().setVariant(property, value, notify);
        Variant own;
        if (!value.byref)
            return E_INVALIDARG;
        if ((value.vt & VT_TYPEMASK) == VT_RECORD || FAILED(VariantCopyInd(&own, const_cast<VARIANT*>(&value))) ||
            (own.vt & VT_BYREF))
            return DISP_E_TYPEMISMATCH;
        return property.kind().setVariant(property, own, notify);
    });
}

HRESULT getDispatch(PropertyCore& property, IDispatch** result) noexcept
{
    return morvane::filling(result, [&](IDispatch*& place) {
        Variant own;
        const HRESULT status = property.kind().getVariant(property, own);
        if (FAILED(status))
            return status;
        if (own.vt == VT_DISPATCH)
            place = std::exchange(own.pdispVal, nullptr);
        return place ? S_OK : S_FALSE;
    });
}

HRESULT setDispatch(PropertyCore& property, IDispatch* value) noexcept
{
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_DISPATCH;
    variant.pdispVal = value; // borrowed for the call
    return setVariant(property, variant, Notify::Yes);
}

HRESULT access(PropertyCore& property, hyper node, BSTR key, bool read, bool isWholeKey, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& done) {
        const auto element = ConfigNode::fromHandle(node);
        if (!element)
            return E_INVALIDARG;
        const ComPtr<IVexPropBase> hold(&property.asInterface());
        std::wstring name(morvane::viewOf(key));
        if (!isWholeKey)
            name += property.keyName();
        done = morvane::toVariantBool(read ? property.readAttribute(*element, name)
                                           : property.writeAttribute(*element, name));
        return S_OK;
    });
}

HRESULT clone(PropertyCore& property, IVexPropBase* source) noexcept
{
    if (!source)
        return E_POINTER;
    return guarded([&]() -> HRESULT {
        PropertyCore* core = coreOf(source);
        if (core == &property)
            return S_OK;
        const ComPtr<IVexPropBase> hold(&property.asInterface());
        if (core && core->type() == property.type()) {
            property.kind().copyFrom(property, *core);
            return S_OK;
        }
        Variant own;
        const HRESULT status = source->GetVariant(&own);
        return FAILED(status) ? status : setVariant(property, own, Notify::No);
    });
}

HRESULT setResources(PropertyCore& property, IVexRes* resources) noexcept
{
    return guarded([&] {
        if (resources || property.knownExtras())
            property.extras().resources = ComPtr<IVexRes>(resources);
    });
}

namespace {

HRESULT setNode(PropertyCore& property, NodeHandle PropertyExtras::*place, hyper node) noexcept
{
    if (node != 0 && !ConfigNode::fromHandle(node))
        return E_INVALIDARG;
    return guarded([&] {
        if (node != 0 || property.knownExtras())
            property.extras().*place = node;
    });
}

} // namespace

HRESULT setPropertyNode(PropertyCore& property, hyper node) noexcept
{
    return setNode(property, &PropertyExtras::propertyNode, node);
}

HRESULT setStyleNode(PropertyCore& property, hyper node) noexcept
{
    return setNode(property, &PropertyExtras::styleNode, node);
}

hyper renderDevice(const PropertyCore& property) noexcept
{
    const PropertyExtras* known = property.knownExtras();
    if (known && known->renderDevice != 0)
        return known->renderDevice;
    return property.group() ? property.group()->renderDevice() : 0;
}

HRESULT setRenderType(PropertyCore& property, VEX_RENDERENGINE_TYPE type) noexcept
{
    if (type < VEX_RENDERENGINE_ERROR || type > VEX_RENDERENGINE_KENGINE)
        return E_INVALIDARG;
    return guarded([&] { property.extras().renderType = type; });
}

VEX_RENDERENGINE_TYPE renderType(const PropertyCore& property) noexcept
{
    const PropertyExtras* known = property.knownExtras();
    return known && known->renderType != VEX_RENDERENGINE_ERROR ? known->renderType : VEX_RENDERENGINE_GDI;
}

} // namespace config

} // namespace ambrel
