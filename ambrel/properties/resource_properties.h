// Properties whose value is an object: shared resources of the skin, and objects that a property owns.
#pragma once

#include "ambrel/properties/property.h"
#include "ambrel/properties/section_images.h"
#include "host/typed_properties.h"

namespace ambrel {

/// The reference and its exchange as a variant, by name and by cloning. `Derived` may name what an unset property has.
template <class Derived, class Layout, class Object>
class ResourceProperty : public Property<Derived, Layout> {
    using Base = Property<Derived, Layout>;

public:
    using Base::Base;

    HRESULT toVariant(VARIANT& result)
    {
        result.vt = VT_DISPATCH;
        result.pdispVal = morvane::ComPtr<IDispatch>(m_object.get()).detach();
        return S_OK;
    }

    /// An object of the right interface, nothing, or the name of a resource of the skin.
    HRESULT fromVariant(const VARIANT& value, Notify notify)
    {
        if (value.vt == VT_BSTR)
            return setByName(morvane::viewOf(value.bstrVal), notify);
        morvane::ComPtr<Object> object;
        if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) {
            IUnknown* given = value.vt == VT_DISPATCH ? value.pdispVal : value.punkVal;
            if (given && FAILED(given->QueryInterface(morvane::iidOf<Object>(), object.putVoid())))
                return E_NOINTERFACE;
        } else if (value.vt != VT_EMPTY && value.vt != VT_NULL) {
            return DISP_E_TYPEMISMATCH;
        }
        this->assign(m_object, std::move(object), notify);
        return S_OK;
    }

    std::wstring toText() { return resourceName(object().get()); }

    TextResult fromText(std::wstring_view text, const ResourceResolver& resolver, Notify notify)
    {
        morvane::ComPtr<Object> object;
        if (!text.empty()) {
            if (const auto found = resolver.find(this->type(), text))
                object = found.template as<Object>();
            if (!object)
                return TextResult::NoSuchResource;
        }
        this->assign(m_object, std::move(object), notify);
        return TextResult::Taken;
    }

    void copyValue(ResourceProperty& source) { m_object = source.m_object; }

    bool releaseValue() noexcept
    {
        const morvane::ComPtr<Object> released = std::move(m_object); // goes when the property is empty
        return released.get() != nullptr;
    }

protected:
    /// Counted, for calls: the property may be given another object meanwhile.
    morvane::ComPtr<Object> object() const noexcept { return m_object; }

    HRESULT giveObject(Object** result) const noexcept
    {
        if (!result)
            return E_POINTER;
        m_object.copyTo(result);
        return m_object ? S_OK : S_FALSE;
    }

    HRESULT takeObject(Object* object) noexcept
    {
        return morvane::guarded([&] { this->assign(m_object, morvane::ComPtr<Object>(object)); });
    }

    HRESULT giveName(BSTR* result) noexcept
    {
        return morvane::returning(result, [&] { return morvane::Bstr(resourceName(object().get())); });
    }

    /// S_FALSE and no change when the skin has no resource of the name; the empty name removes the resource.
    HRESULT takeName(const wchar_t* name) noexcept
    {
        const auto hold = this->held();
        return morvane::guarded(
            [&] { return setByName(name ? std::wstring_view(name) : std::wstring_view(), Notify::Yes); });
    }

    morvane::ComPtr<Object> m_object;

private:
    HRESULT setByName(std::wstring_view name, Notify notify)
    {
        const SkinResources resolver(this->resources());
        return static_cast<Derived*>(this)->fromText(name, resolver, notify) == TextResult::Taken ? S_OK : S_FALSE;
    }
};

class ImageSectionPropertyObject final
    : public ResourceProperty<ImageSectionPropertyObject, morvane::ImageSectionProperty, IVexImageBase> {
public:
    using ResourceProperty::ResourceProperty;

    STDMETHODIMP GetResourceName(BSTR* name) noexcept override { return giveName(name); }
    STDMETHODIMP SetResourceName(const wchar_t* name) noexcept override { return takeName(name); }
    STDMETHODIMP HasPicture(VARIANT_BOOL* has) noexcept override;
    STDMETHODIMP GetImageSection(IVexImageBase** section) noexcept override { return giveObject(section); }
    STDMETHODIMP SetImageSection(IVexImageBase* section) noexcept override { return takeObject(section); }
    /// Changes the shared section.
    STDMETHODIMP SetSectionRect(const SkinRect* rect) noexcept override;
    STDMETHODIMP GetSectionRect(SkinRect* rect) noexcept override;
    STDMETHODIMP GetImageWidth(short* width) noexcept override;
    STDMETHODIMP GetImageHeight(short* height) noexcept override;
    /// How many images of equal size lie in the section: the shared section's number. One of another maker does not
    /// know it; the property does then, and takes the images to stand side by side.
    STDMETHODIMP GetImageCount(long* count) noexcept override;
    STDMETHODIMP SetImageCount(long count) noexcept override;
    STDMETHODIMP Draw(hyper dc, const SkinRect* rect, long index, VARIANT_BOOL* drawn) noexcept override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, const SkinRect* rect, long index, short flag,
                            VARIANT_BOOL* drawn) noexcept override;
    STDMETHODIMP GetBorder(SkinRect* border) noexcept override;
    STDMETHODIMP SetBorder(const SkinRect* border) noexcept override;
    STDMETHODIMP GetFrameTable(const morvane::PictureFrameTable** table) noexcept override;

    void copyValue(ImageSectionPropertyObject& source);

private:
    /// A length of the section at the scale of the owner's window.
    long natural(long length) const noexcept;
    morvane::ComPtr<SectionImages> images() const noexcept;
    long imageCount() const noexcept;
};

class TextStylePropertyObject final
    : public ResourceProperty<TextStylePropertyObject, morvane::TextStyleProperty, IVexTextStyle> {
public:
    using ResourceProperty::ResourceProperty;

    STDMETHODIMP GetResourceName(BSTR* name) noexcept override { return giveName(name); }
    STDMETHODIMP SetResourceName(const wchar_t* name) noexcept override { return takeName(name); }
    STDMETHODIMP HasTextStyle(VARIANT_BOOL* has) noexcept override;
    STDMETHODIMP GetTextColor(OLE_COLOR* color) noexcept override;
    /// Changes the shared style.
    STDMETHODIMP SetTextColor(OLE_COLOR color) noexcept override;
    STDMETHODIMP GetTextStyle(IVexTextStyle** style) noexcept override { return giveObject(style); }
    STDMETHODIMP SetTextStyle(IVexTextStyle* style) noexcept override { return takeObject(style); }
    STDMETHODIMP Draw(hyper dc, const SkinRect* rect, const wchar_t* text, VARIANT_BOOL* drawn) noexcept override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, const SkinRect* rect, const wchar_t* text,
                            VARIANT_BOOL* drawn) noexcept override;
};

/// An unset property makes a fill of its own when one is asked for, so that a caller always has one to set colours in.
/// Until somebody gives that fill a colour, nothing is drawn.
class FillColorPropertyObject final
    : public ResourceProperty<FillColorPropertyObject, morvane::FillColorProperty, IFillColor> {
public:
    using ResourceProperty::ResourceProperty;

    STDMETHODIMP GetFill(IFillColor** fill) noexcept override;
    STDMETHODIMP SetFill(IFillColor* fill) noexcept override { return takeObject(fill); }
    STDMETHODIMP GetResourceName(BSTR* name) noexcept override { return giveName(name); }
    STDMETHODIMP SetResourceName(const wchar_t* name) noexcept override { return takeName(name); }
    STDMETHODIMP GetStartColor(OLE_COLOR* color) noexcept override;
    STDMETHODIMP SetStartColor(OLE_COLOR color) noexcept override;
    STDMETHODIMP GetEndColor(OLE_COLOR* color) noexcept override;
    STDMETHODIMP SetEndColor(OLE_COLOR color) noexcept override;
    STDMETHODIMP GetRotation(long* degrees) noexcept override;
    STDMETHODIMP SetRotation(long degrees) noexcept override;
    STDMETHODIMP Draw(hyper dc, const SkinRect* rect, VARIANT_BOOL* drawn) noexcept override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, const SkinRect* rect, VARIANT_BOOL* drawn) noexcept override;

    /// A fill without a name is nobody else's: the copy gets one of its own.
    void copyValue(FillColorPropertyObject& source);

private:
    morvane::ComPtr<IFillColor> fill(); // makes one when none is set; null without a factory
    template <class Value>
    HRESULT change(HRESULT (STDMETHODCALLTYPE IFillColor::*getter)(Value*),
                   HRESULT (STDMETHODCALLTYPE IFillColor::*setter)(Value), Value value) noexcept;
};

/// Fonts and cursors.
template <class Object>
class ObjectPropertyObject final
    : public ResourceProperty<ObjectPropertyObject<Object>, morvane::ObjectProperty<Object>, Object> {
    using Base = ResourceProperty<ObjectPropertyObject, morvane::ObjectProperty<Object>, Object>;

public:
    using Base::Base;

    STDMETHODIMP GetObject(Object** object) noexcept override { return this->giveObject(object); }
    STDMETHODIMP SetObject(Object* object) noexcept override { return this->takeObject(object); }
};

/// Whether a property is one that has a hot-key object.
bool mayHaveHotkey(const PropertyCore& property) noexcept;

/// Has a hot key of its own from the first time it is asked for. Changes inside the hot-key object are not announced.
class HotkeyPropertyObject final : public ResourceProperty<HotkeyPropertyObject, morvane::HotkeyProperty, IVexHotkey> {
public:
    using ResourceProperty::ResourceProperty;

    STDMETHODIMP GetObject(IVexHotkey** object) noexcept override;
    STDMETHODIMP SetObject(IVexHotkey* object) noexcept override;

    /// Also one without a key yet: whoever holds it may give it one at any time.
    bool hasObject() const noexcept { return static_cast<bool>(m_object); }

    HRESULT toVariant(VARIANT& result);
    HRESULT fromVariant(const VARIANT& value, Notify notify);
    std::wstring toText();
    TextResult fromText(std::wstring_view text, const ResourceResolver&, Notify notify);
    void copyValue(HotkeyPropertyObject& source); // the keys, not the object

private:
    morvane::ComPtr<IVexHotkey> hotkey();
};

/// What a designer's dialog of the control edits: a text that the skin keeps (a name, or what the designer shows), the
/// dialog's identifier, and an object of the control's own.
class PluginPropertyObject final : public ResourceProperty<PluginPropertyObject, morvane::PluginProperty, IDispatch> {
public:
    using ResourceProperty::ResourceProperty;

    STDMETHODIMP GetObject(IDispatch** object) noexcept override { return giveObject(object); }
    STDMETHODIMP SetObject(IDispatch* object) noexcept override { return takeObject(object); }

    /// The object when there is one, else the text when there is one, else the identifier.
    HRESULT toVariant(VARIANT& result);
    /// An object, a text, or the identifier as a number, which is not announced.
    HRESULT fromVariant(const VARIANT& value, Notify notify);
    std::wstring toText() { return m_text.str(); }
    TextResult fromText(std::wstring_view text, const ResourceResolver&, Notify notify);
    void copyValue(PluginPropertyObject& source);

private:
    morvane::Bstr m_text;
};

} // namespace ambrel
