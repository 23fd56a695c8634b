#include "tests/strange_host/property_objects.h"

#include "frame/com/bstr.h"
#include "tests/strange_host/text.h"

#include <array>

namespace morvane::testing {

template <class Typed>
void PropertyObject<Typed>::drawn(const SkinRect& rect, const std::string& what)
{
    this->note("draw " + m_label + " " + toText(rect) + what);
}

STDMETHODIMP StringObject::GetValue(BSTR* result)
{
    called();
    *result = givesNull ? nullptr : Bstr(value).detach();
    return S_OK;
}

STDMETHODIMP StringObject::SetValue(const wchar_t* newValue)
{
    called();
    value = newValue ? newValue : L"";
    wasSet = true;
    return S_OK;
}

STDMETHODIMP ImageSectionObject::GetImageSection(IVexImageBase** result)
{
    called();
    section.copyTo(result);
    return S_OK;
}

STDMETHODIMP ImageSectionObject::SetImageSection(IVexImageBase* newSection)
{
    called();
    section = ComPtr<IVexImageBase>(newSection);
    return S_OK;
}

STDMETHODIMP ImageSectionObject::GetSectionRect(SkinRect* result)
{
    called();
    *result = sectionRect;
    return S_OK;
}

STDMETHODIMP ImageSectionObject::GetImageWidth(short* result)
{
    called();
    *result = static_cast<short>(sectionRect.right - sectionRect.left);
    return S_OK;
}

STDMETHODIMP ImageSectionObject::GetImageHeight(short* result)
{
    called();
    *result = static_cast<short>(sectionRect.bottom - sectionRect.top);
    return S_OK;
}

STDMETHODIMP ImageSectionObject::RenderDraw(IVexRenderDC*, const SkinRect* rect, long index, short flag,
                                            VARIANT_BOOL* result)
{
    drawn(*rect, " #" + std::to_string(index) + (flag ? " flagged" : ""));
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP ImageSectionObject::GetFrameTable(const PictureFrameTable** result)
{
    *result = nullptr;
    return S_OK;
}

STDMETHODIMP TextStyleObject::GetTextStyle(IVexTextStyle** result)
{
    called();
    style.copyTo(result);
    return S_OK;
}

STDMETHODIMP TextStyleObject::SetTextStyle(IVexTextStyle* newStyle)
{
    called();
    style = ComPtr<IVexTextStyle>(newStyle);
    return S_OK;
}

STDMETHODIMP TextStyleObject::RenderDraw(IVexRenderDC*, const SkinRect* rect, const wchar_t* text, VARIANT_BOOL* result)
{
    drawn(*rect, " \"" + narrow(text) + "\"");
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP ComboObject::AddItem(const wchar_t* text)
{
    items.emplace_back(text);
    return S_OK;
}

STDMETHODIMP ComboObject::SetSelection(long index)
{
    selection = index;
    return S_OK;
}

STDMETHODIMP ComboObject::GetSelection(long* result)
{
    *result = selection;
    return S_OK;
}

STDMETHODIMP FillColorObject::GetFill(IFillColor** result)
{
    called();
    fill.copyTo(result);
    return S_OK;
}

STDMETHODIMP FillColorObject::SetFill(IFillColor* newFill)
{
    called();
    fill = ComPtr<IFillColor>(newFill);
    return S_OK;
}

STDMETHODIMP FillColorObject::RenderDraw(IVexRenderDC*, const SkinRect* rect, VARIANT_BOOL* result)
{
    drawn(*rect, "");
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP ColorObject::GetValue(OLE_COLOR* result)
{
    called();
    *result = value;
    return S_OK;
}

STDMETHODIMP ColorObject::SetValue(OLE_COLOR newValue)
{
    called();
    value = newValue;
    return S_OK;
}

STDMETHODIMP ColorObject::RenderDraw(IVexRenderDC*, SkinRect rect, VARIANT_BOOL* result)
{
    note("draw " + m_label + " " + toText(rect));
    *result = VARIANT_TRUE;
    return S_OK;
}

namespace {

template <class Object>
ComPtr<IVexPropBase> make(Ledger& ledger, const std::string& label)
{
    return ComPtr<IVexPropBase>(ledger.make<Object>(label).get());
}

using Maker = ComPtr<IVexPropBase> (*)(Ledger&, const std::string&);

// By enumPropType.
constexpr std::array<Maker, 14> kMakers = {
    &make<ImageSectionObject>, // _PROPTYPE_IMAGESECTION
    &make<TextStyleObject>,    // _PROPTYPE_TEXTSTYLE
    &make<LongObject>,         // _PROPTYPE_INT
    &make<LongObject>,         // _PROPTYPE_LONG
    &make<BoolObject>,         // _PROPTYPE_BOOL
    &make<ComboObject>,        // _PROPTYPE_COMBO
    &make<StringObject>,       // _PROPTYPE_STRING
    &make<OpaqueObject>,       // _PROPTYPE_FONT
    &make<ColorObject>,        // _PROPTYPE_COLOR
    &make<OpaqueObject>,       // _PROPTYPE_PLUGIN
    &make<OpaqueObject>,       // _PROPTYPE_CURSOR
    &make<ValueObject<float>>, // _PROPTYPE_FLOAT
    &make<OpaqueObject>,       // _PROPTYPE_HOTKEY
    &make<FillColorObject>,    // _PROPTYPE_FILLCOLOR
};

} // namespace

ComPtr<IVexPropBase> makePropertyObject(Ledger& ledger, enumPropType type, const std::string& label)
{
    const auto index = static_cast<std::size_t>(type);
    return index < kMakers.size() ? kMakers[index](ledger, label) : nullptr;
}

} // namespace morvane::testing
