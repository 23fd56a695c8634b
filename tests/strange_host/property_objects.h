// The strange host's property objects. Of the typed operations they have the documented positions only; everything else
// answers E_NOTIMPL and shows in the log.
#pragma once

#include "host/typed_properties.h"
#include "tests/strange_host/stubs.h" // generated

namespace morvane::testing {

/// What all property objects have. The label is how the log names the property: "Group.Name".
template <class Typed>
class PropertyObject : public IVexPropBaseStub<Typed> {
public:
    PropertyObject(Ledger& ledger, std::string label) : IVexPropBaseStub<Typed>(ledger), m_label(std::move(label)) {}

protected:
    HRESULT position(int number) { return this->unexpected((m_label + " position " + std::to_string(number)).c_str()); }
    void drawn(const SkinRect& rect, const std::string& what);

    const std::string m_label;
};

/// Boolean and whole numbers.
template <class Value>
class ValueObject final : public PropertyObject<ValueProperty<Value>> {
public:
    using PropertyObject<ValueProperty<Value>>::PropertyObject;

    STDMETHODIMP GetValue(Value* result) override
    {
        this->called();
        *result = value;
        return S_OK;
    }
    STDMETHODIMP SetValue(Value newValue) override
    {
        this->called();
        value = newValue;
        wasSet = true;
        return S_OK;
    }

    Value value{};
    bool wasSet = false; // by anybody, so by the control's own default at first
};
using BoolObject = ValueObject<VARIANT_BOOL>;
using LongObject = ValueObject<long>;

class StringObject final : public PropertyObject<StringProperty> {
public:
    using PropertyObject::PropertyObject;

    STDMETHODIMP GetValue(BSTR* result) override;
    STDMETHODIMP SetValue(const wchar_t* newValue) override;

    std::wstring value;
    bool wasSet = false;
    bool givesNull = false; // answers a null string, as the contract lets a host do for an empty one
};

class ImageSectionObject final : public PropertyObject<ImageSectionProperty> {
public:
    using PropertyObject::PropertyObject;

    STDMETHODIMP GetResourceName(BSTR*) override { return position(1); }
    STDMETHODIMP SetResourceName(const wchar_t*) override { return position(2); }
    STDMETHODIMP HasPicture(VARIANT_BOOL*) override { return position(3); }
    STDMETHODIMP GetImageSection(IVexImageBase** result) override;
    STDMETHODIMP SetImageSection(IVexImageBase* newSection) override;
    STDMETHODIMP SetSectionRect(const SkinRect*) override { return position(6); }
    STDMETHODIMP GetSectionRect(SkinRect* result) override;
    STDMETHODIMP GetImageWidth(short* result) override;
    STDMETHODIMP GetImageHeight(short* result) override;
    STDMETHODIMP GetImageCount(long*) override { return position(10); }
    STDMETHODIMP SetImageCount(long) override { return position(11); }
    STDMETHODIMP Draw(std::int64_t, const SkinRect*, long, VARIANT_BOOL*) override { return position(12); }
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, const SkinRect* rect, long index, short flag,
                            VARIANT_BOOL* result) override;
    STDMETHODIMP GetBorder(SkinRect*) override { return position(14); }
    STDMETHODIMP SetBorder(const SkinRect*) override { return position(15); }
    STDMETHODIMP GetFrameTable(const PictureFrameTable** result) override;

    ComPtr<IVexImageBase> section;
    SkinRect sectionRect{};

protected:
    void lastRelease() override { section.reset(); }
};

class TextStyleObject final : public PropertyObject<TextStyleProperty> {
public:
    using PropertyObject::PropertyObject;

    STDMETHODIMP GetResourceName(BSTR*) override { return position(1); }
    STDMETHODIMP SetResourceName(const wchar_t*) override { return position(2); }
    STDMETHODIMP HasTextStyle(VARIANT_BOOL*) override { return position(3); }
    STDMETHODIMP GetTextColor(OLE_COLOR*) override { return position(4); }
    STDMETHODIMP SetTextColor(OLE_COLOR) override { return position(5); }
    STDMETHODIMP GetTextStyle(IVexTextStyle** result) override;
    STDMETHODIMP SetTextStyle(IVexTextStyle* newStyle) override;
    STDMETHODIMP Draw(std::int64_t, const SkinRect*, const wchar_t*, VARIANT_BOOL*) override { return position(8); }
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, const SkinRect* rect, const wchar_t* text, VARIANT_BOOL* result) override;

    ComPtr<IVexTextStyle> style;

protected:
    void lastRelease() override { style.reset(); }
};

class ComboObject final : public PropertyObject<ComboProperty> {
public:
    using PropertyObject::PropertyObject;

    STDMETHODIMP AddItem(const wchar_t* text) override;
    STDMETHODIMP SetSelection(long index) override;
    STDMETHODIMP GetSelection(long* result) override;
    STDMETHODIMP GetItemCount(long*) override { return position(4); }
    STDMETHODIMP GetItem(long, BSTR*) override { return position(5); }
    STDMETHODIMP RemoveAllItems() override { return position(6); }

    std::vector<std::wstring> items;
    long selection = -1;
};

class FillColorObject final : public PropertyObject<FillColorProperty> {
public:
    using PropertyObject::PropertyObject;

    STDMETHODIMP GetFill(IFillColor** result) override;
    STDMETHODIMP SetFill(IFillColor* newFill) override;
    STDMETHODIMP GetResourceName(BSTR*) override { return position(3); }
    STDMETHODIMP SetResourceName(const wchar_t*) override { return position(4); }
    STDMETHODIMP GetStartColor(OLE_COLOR*) override { return position(5); }
    STDMETHODIMP SetStartColor(OLE_COLOR) override { return position(6); }
    STDMETHODIMP GetEndColor(OLE_COLOR*) override { return position(7); }
    STDMETHODIMP SetEndColor(OLE_COLOR) override { return position(8); }
    STDMETHODIMP GetRotation(long*) override { return position(9); }
    STDMETHODIMP SetRotation(long) override { return position(10); }
    STDMETHODIMP Draw(std::int64_t, const SkinRect*, VARIANT_BOOL*) override { return position(11); }
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, const SkinRect* rect, VARIANT_BOOL* result) override;

    ComPtr<IFillColor> fill;

protected:
    void lastRelease() override { fill.reset(); }
};

/// The positions 1, 2 and 4 of the colour interface; the other drawings are stubs.
class ColorObject final : public IColorPropStub<IColorProp> {
public:
    ColorObject(Ledger& ledger, std::string label) : IColorPropStub<IColorProp>(ledger), m_label(std::move(label)) {}

    STDMETHODIMP GetValue(OLE_COLOR* result) override;
    STDMETHODIMP SetValue(OLE_COLOR newValue) override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) override;

    OLE_COLOR value = 0;

private:
    const std::string m_label;
};

/// Font, cursor, hot key and plug-in: controls make these and leave them to the host.
class OpaqueObject final : public PropertyObject<ObjectProperty<IDispatch>> {
public:
    using PropertyObject::PropertyObject;

    STDMETHODIMP GetObject(IDispatch**) override { return position(1); }
    STDMETHODIMP SetObject(IDispatch*) override { return position(2); }
};

/// A property object of the type, with one reference; null for a type that is none.
ComPtr<IVexPropBase> makePropertyObject(Ledger& ledger, enumPropType type, const std::string& label);

} // namespace morvane::testing
