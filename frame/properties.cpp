#include "frame/properties.h"

#include "frame/com/variant.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace morvane {

namespace {

/// A name as a BSTR on the stack: building a table costs no allocation for names. Longer ones would be cut; the longest
/// name of the library has half this length.
class NameOnStack {
public:
    explicit NameOnStack(std::wstring_view name) noexcept
    {
        const std::size_t length = std::min(name.size(), std::size(m_text) - 1);
        name.copy(m_text, length); // an empty name may have no characters to point at
        m_text[length] = L'\0';
        m_byteCount = static_cast<std::uint32_t>(length * sizeof(wchar_t));
    }
    BSTR get() noexcept { return m_text; }

private:
    alignas(8) std::uint32_t m_padding = 0;
    std::uint32_t m_byteCount = 0; // directly before the text
    wchar_t m_text[64];
};

ComPtr<ICtrlPluginProp> createGroup(IVexControlBase& inner, ICtrlPluginProp* parent, std::wstring_view name)
{
    NameOnStack text(name);
    ComPtr<ICtrlPluginProp> group;
    inner.CreateGroupProp(parent, text.get(), VARIANT_TRUE, group.put());
    return group;
}

} // namespace

VARIANT_BOOL BoolProp::raw() const
{
    VARIANT_BOOL value = VARIANT_FALSE;
    if (m_property)
        m_property->GetValue(&value);
    return value;
}

void BoolProp::set(VARIANT_BOOL value)
{
    if (m_property)
        m_property->SetValue(value);
}

float FloatProp::value() const
{
    float value = 0;
    if (m_property)
        m_property->GetValue(&value);
    return std::isfinite(value) ? value : 0;
}

void FloatProp::set(float value)
{
    if (m_property)
        m_property->SetValue(value);
}

Bstr StringProp::value() const
{
    Bstr text;
    if (m_property)
        m_property->GetValue(text.put());
    return text;
}

void StringProp::set(const wchar_t* value)
{
    if (m_property)
        m_property->SetValue(value ? value : L"");
}

int ComboProp::selection() const
{
    long index = 0;
    if (m_property)
        m_property->GetSelection(&index);
    return static_cast<int>(index);
}

void ComboProp::select(int index)
{
    if (m_property)
        m_property->SetSelection(index);
}

void ComboProp::addItem(const wchar_t* text)
{
    if (m_property)
        m_property->AddItem(text);
}

OLE_COLOR ColorProp::value() const
{
    OLE_COLOR color = 0;
    if (m_property)
        m_property->GetValue(&color);
    return color;
}

void ColorProp::set(OLE_COLOR color)
{
    if (m_property)
        m_property->SetValue(color);
}

void ColorProp::fill(IVexRenderDC& dc, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_property)
        m_property->RenderDraw(&dc, toSkinRect(rect), &drawn);
}

ComPtr<IFillColor> FillColorProp::fill() const
{
    ComPtr<IFillColor> result;
    if (m_property)
        m_property->GetFill(result.put());
    return result;
}

void FillColorProp::set(IFillColor* fill)
{
    if (m_property)
        m_property->SetFill(fill);
}

void FillColorProp::draw(IVexRenderDC& dc, const Rect& rect) const
{
    const SkinRect target = toSkinRect(rect);
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_property)
        m_property->RenderDraw(&dc, &target, &drawn);
}

ComPtr<IVexImageBase> ImageProp::section() const
{
    ComPtr<IVexImageBase> result;
    if (m_property)
        m_property->GetImageSection(result.put());
    return result;
}

void ImageProp::setSection(IVexImageBase* section)
{
    if (m_property)
        m_property->SetImageSection(section);
}

Rect ImageProp::sectionRect() const
{
    SkinRect rect{};
    if (m_property)
        m_property->GetSectionRect(&rect);
    return toRect(rect);
}

Size ImageProp::imageSize() const
{
    short width = 0;
    short height = 0;
    if (m_property) {
        m_property->GetImageWidth(&width);
        m_property->GetImageHeight(&height);
    }
    return {width, height};
}

bool ImageProp::hasPicture() const
{
    const ComPtr<IVexImageBase> image = section();
    ComPtr<IVexPicture> picture;
    if (image)
        image->get_ImageObj(picture.put());
    return static_cast<bool>(picture);
}

void ImageProp::draw(IVexRenderDC& dc, const Rect& rect, int index) const
{
    const SkinRect target = toSkinRect(rect);
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_property)
        m_property->RenderDraw(&dc, &target, index, 0, &drawn);
}

ComPtr<IVexTextStyle> TextStyleProp::style() const
{
    ComPtr<IVexTextStyle> result;
    if (m_property)
        m_property->GetTextStyle(result.put());
    return result;
}

void TextStyleProp::setStyle(IVexTextStyle* style)
{
    if (m_property)
        m_property->SetTextStyle(style);
}

void TextStyleProp::draw(IVexRenderDC& dc, const Rect& rect, const Bstr& text) const
{
    const SkinRect target = toSkinRect(rect);
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_property && text.get())
        m_property->RenderDraw(&dc, &target, text.get(), &drawn);
}

void PluginProp::setDialog(int identifier)
{
    Variant number;
    number.vt = VT_I4;
    number.lVal = identifier;
    if (m_property)
        m_property->SetPrivateValue(number);
}

Bstr PluginProp::text() const
{
    Variant content;
    if (m_property)
        m_property->GetVariant(&content);
    return content.vt == VT_BSTR ? Bstr(viewOf(content.bstrVal)) : Bstr();
}

void PluginProp::setText(const wchar_t* text)
{
    if (!m_property)
        return;
    Variant content;
    content.bstrVal = Bstr(text ? std::wstring_view(text) : std::wstring_view()).detach();
    content.vt = VT_BSTR;
    m_property->SetVariant(content);
}

void PropertyGroup::initialise(ComboProp& p, const Choices& choices)
{
    for (const wchar_t* item : choices.items)
        p.addItem(item);
    p.select(choices.initial);
}

PropertyGroup PropertyTable::group(std::wstring_view name) const
{
    return {m_inner, createGroup(m_inner, nullptr, name)};
}

PropertyGroup PropertyGroup::group(std::wstring_view name) const
{
    return {m_inner, createGroup(m_inner, m_group.get(), name)};
}

ComPtr<IVexPropBase> PropertyGroup::create(enumPropType type, std::wstring_view name, bool isStyle) const
{
    NameOnStack text(name);
    NameOnStack noHelp{{}};
    ComPtr<IVexPropBase> property;
    m_inner.CreateProp(m_group.get(), type, text.get(), noHelp.get(), isStyle ? VARIANT_TRUE : VARIANT_FALSE, nullptr,
                       property.put());
    return property;
}

} // namespace morvane
