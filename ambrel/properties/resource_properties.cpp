#include "ambrel/properties/resource_properties.h"

#include "ambrel/properties/draws_text.h"
#include "ambrel/properties/hotkey.h"
#include "ambrel/properties/picture_frames.h"
#include "ambrel/properties/property_descriptor.h"
#include "ambrel/properties/property_factory.h"
#include "ambrel/properties/simple_properties.h"
#include "base/rounding.h"

#include <algorithm>
#include <limits>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::guarded;
using morvane::returning;

namespace {

short toShort(long value) noexcept
{
    constexpr long kMost = std::numeric_limits<short>::max();
    return static_cast<short>(std::clamp(value, 0L, kMost));
}

ComPtr<IVexPicture> pictureOf(const ComPtr<IVexImageBase>& section) noexcept
{
    ComPtr<IVexPicture> picture;
    if (section)
        section->get_ImageObj(picture.put());
    return picture;
}

/// Runs a drawing of `object` with held references; without an object nothing is drawn and the status is S_FALSE.
template <class Object, class Body>
HRESULT drawing(const ComPtr<Object>& object, const SkinRect* rect, VARIANT_BOOL* drawn, Body&& body) noexcept
{
    return filling(drawn, [&](VARIANT_BOOL& result) -> HRESULT {
        if (!rect)
            return E_POINTER;
        const ComPtr<Object> held = object;
        return held ? body(*held.get(), result) : S_FALSE;
    });
}

} // namespace

STDMETHODIMP ImageSectionPropertyObject::HasPicture(VARIANT_BOOL* has) noexcept
{
    return returning(has, [&] { return pictureOf(object()) != nullptr; });
}

STDMETHODIMP ImageSectionPropertyObject::SetSectionRect(const SkinRect* rect) noexcept
{
    if (!rect)
        return E_POINTER;
    const ComPtr<IVexImageBase> section = object();
    if (!section)
        return S_FALSE;
    const auto hold = held();
    SkinRect changed = *rect;
    const HRESULT status = section->put_rect(&changed);
    if (SUCCEEDED(status))
        announceChange();
    return status;
}

// Natural sizes are those of the picture in use, which at higher scales is a larger one.

STDMETHODIMP ImageSectionPropertyObject::GetSectionRect(SkinRect* rect) noexcept
{
    const auto hold = held();
    return filling(rect, [&](SkinRect& place) {
        const ComPtr<IVexImageBase> section = object();
        const HRESULT status = section ? section->get_rect(&place) : S_FALSE;
        for (LONG* each : {&place.left, &place.top, &place.right, &place.bottom})
            *each = natural(*each);
        return status;
    });
}

STDMETHODIMP ImageSectionPropertyObject::GetImageWidth(short* width) noexcept
{
    const auto hold = held();
    return filling(width, [&](short& place) {
        if (const auto known = images()) {
            place = toShort(natural(known->imageSize().width));
            return S_OK;
        }
        long whole = 0;
        const ComPtr<IVexImageBase> section = object();
        const HRESULT status = section ? section->GetWidth(&whole) : S_FALSE;
        place = toShort(natural(whole / imageCount()));
        return status;
    });
}

STDMETHODIMP ImageSectionPropertyObject::GetImageHeight(short* height) noexcept
{
    const auto hold = held();
    return filling(height, [&](short& place) {
        if (const auto known = images()) {
            place = toShort(natural(known->imageSize().height));
            return S_OK;
        }
        long whole = 0;
        const ComPtr<IVexImageBase> section = object();
        const HRESULT status = section ? section->GetHeight(&whole) : S_FALSE;
        place = toShort(natural(whole));
        return status;
    });
}

STDMETHODIMP ImageSectionPropertyObject::GetImageCount(long* count) noexcept
{
    return returning(count, [&] { return imageCount(); });
}

STDMETHODIMP ImageSectionPropertyObject::SetImageCount(long count) noexcept
{
    if (count < 1)
        return E_INVALIDARG;
    return guarded([&] {
        if (count == imageCount())
            return;
        if (const auto known = images()) {
            known->setImageCount(static_cast<int>(count));
            announceChange();
        } else {
            assign(extras().imageCount, count);
        }
    });
}

ComPtr<SectionImages> ImageSectionPropertyObject::images() const noexcept
{
    ComPtr<SectionImages> known;
    if (const ComPtr<IVexImageBase> section = object())
        section->QueryInterface(kIidSectionImages, known.putVoid());
    return known;
}

long ImageSectionPropertyObject::imageCount() const noexcept
{
    if (const auto known = images())
        return known->imageCount();
    return knownExtras() ? knownExtras()->imageCount : 1;
}

STDMETHODIMP ImageSectionPropertyObject::Draw(hyper dc, const SkinRect* rect, long, VARIANT_BOOL* drawn) noexcept
{
    return drawing(m_object, rect, drawn,
                   [&](IVexImageBase& section, VARIANT_BOOL& done) { return section.Draw(dc, *rect, &done); });
}

STDMETHODIMP ImageSectionPropertyObject::RenderDraw(IVexRenderDC* dc, const SkinRect* rect, long index, short,
                                                    VARIANT_BOOL* drawn) noexcept
{
    return drawing(m_object, rect, drawn, [&](IVexImageBase& section, VARIANT_BOOL& done) -> HRESULT {
        if (!dc)
            return E_POINTER;
        if (index < 0 || index > std::numeric_limits<short>::max())
            return S_FALSE;
        return section.RenderDraw(dc, *rect, static_cast<short>(index), &done);
    });
}

STDMETHODIMP ImageSectionPropertyObject::GetBorder(SkinRect* border) noexcept
{
    return filling(border, [&](SkinRect& place) {
        const ComPtr<IVexImageBase> section = object();
        return section ? section->get_rcBorder(&place) : S_FALSE;
    });
}

STDMETHODIMP ImageSectionPropertyObject::SetBorder(const SkinRect* border) noexcept
{
    if (!border)
        return E_POINTER;
    const ComPtr<IVexImageBase> section = object();
    if (!section)
        return S_FALSE;
    const auto hold = held();
    const HRESULT status = section->put_rcBorder(*border);
    if (SUCCEEDED(status))
        announceChange();
    return status;
}

STDMETHODIMP ImageSectionPropertyObject::GetFrameTable(const morvane::PictureFrameTable** table) noexcept
{
    return filling(table, [&](const morvane::PictureFrameTable*& place) {
        const ComPtr<IVexPicture> picture = pictureOf(object());
        ComPtr<PictureFrames> frames;
        if (picture)
            picture->QueryInterface(kIidPictureFrames, frames.putVoid());
        place = frames ? frames->frameTable() : nullptr;
        return place ? S_OK : S_FALSE;
    });
}

void ImageSectionPropertyObject::copyValue(ImageSectionPropertyObject& source)
{
    ResourceProperty::copyValue(source);
    if (!images() && imageCount() != source.imageCount())
        extras().imageCount = source.imageCount();
}

STDMETHODIMP TextStylePropertyObject::HasTextStyle(VARIANT_BOOL* has) noexcept
{
    return returning(has, [&] { return m_object != nullptr; });
}

STDMETHODIMP TextStylePropertyObject::GetTextColor(OLE_COLOR* color) noexcept
{
    return filling(color, [&](OLE_COLOR& place) {
        const ComPtr<IVexTextStyle> style = object();
        return style ? style->get_clrText(&place) : S_FALSE;
    });
}

STDMETHODIMP TextStylePropertyObject::SetTextColor(OLE_COLOR color) noexcept
{
    const ComPtr<IVexTextStyle> style = object();
    if (!style)
        return S_FALSE;
    const auto hold = held();
    OLE_COLOR former = 0;
    style->get_clrText(&former);
    const HRESULT status = style->put_clrText(color);
    if (SUCCEEDED(status) && former != color)
        announceChange();
    return status;
}

namespace {

/// Draws by a style of ours with `ours`, without a copy of the text; by any other style with `other` and a string.
template <class Ours, class Other>
HRESULT drawText(IVexTextStyle& style, const wchar_t* text, Ours&& ours, Other&& other)
{
    const std::wstring_view words = text ? std::wstring_view(text) : std::wstring_view();
    ComPtr<DrawsText> face;
    style.QueryInterface(kIidDrawsText, face.putVoid());
    return face ? ours(*face.get(), words) : other(Bstr(words).get());
}

} // namespace

STDMETHODIMP TextStylePropertyObject::Draw(hyper dc, const SkinRect* rect, const wchar_t* text,
                                           VARIANT_BOOL* drawn) noexcept
{
    return drawing(m_object, rect, drawn, [&](IVexTextStyle& style, VARIANT_BOOL& done) {
        return drawText(
            style, text,
            [&](DrawsText& ours, std::wstring_view words) { return ours.drawTextOn(dc, *rect, words, done); },
            [&](BSTR words) { return style.DrawText(dc, words, *rect, VARIANT_FALSE, -1, nullptr, &done); });
    });
}

STDMETHODIMP TextStylePropertyObject::RenderDraw(IVexRenderDC* dc, const SkinRect* rect, const wchar_t* text,
                                                 VARIANT_BOOL* drawn) noexcept
{
    return drawing(m_object, rect, drawn, [&](IVexTextStyle& style, VARIANT_BOOL& done) -> HRESULT {
        if (!dc)
            return E_POINTER;
        return drawText(
            style, text,
            [&](DrawsText& ours, std::wstring_view words) { return ours.renderText(*dc, *rect, words, done); },
            [&](BSTR words) { return style.RenderDrawText(dc, words, *rect, VARIANT_FALSE, -1, nullptr, &done); });
    });
}

namespace {

constexpr OLE_COLOR kNoColor = 0xFFFFFFFF;
constinit FillFactory g_fillFactory = nullptr;
constinit OwnerScale g_ownerScale = nullptr;

} // namespace

long ImageSectionPropertyObject::natural(long length) const noexcept
{
    IVexControlBase* const control = owner();
    return g_ownerScale && control ? morvane::scaled(static_cast<int>(length), g_ownerScale(*control), 100) : length;
}

void setOwnerScale(OwnerScale scale) noexcept
{
    g_ownerScale = scale;
}

void setFillFactory(FillFactory factory) noexcept
{
    g_fillFactory = factory;
}

namespace {

ComPtr<IFillColor> newFill()
{
    ComPtr<IFillColor> made;
    if (g_fillFactory)
        g_fillFactory(made.put());
    return made;
}

bool isColored(IFillColor& fill) noexcept
{
    OLE_COLOR start = 0;
    OLE_COLOR end = 0;
    fill.get_clrStart(&start);
    fill.get_clrEnd(&end);
    return start != kNoColor || end != kNoColor;
}

} // namespace

ComPtr<IFillColor> FillColorPropertyObject::fill()
{
    if (m_object)
        return m_object;
    if (const auto made = newFill()) {
        made->put_clrStart(kNoColor);
        made->put_clrEnd(kNoColor);
        m_object = made;
    }
    return m_object;
}

void FillColorPropertyObject::copyValue(FillColorPropertyObject& source)
{
    const ComPtr<IFillColor> given = source.object();
    const bool isShared = !given || !resourceName(given.get()).empty();
    const ComPtr<IFillColor> own = isShared ? nullptr : newFill();
    if (!own) {
        m_object = given;
        return;
    }
    OLE_COLOR start = kNoColor;
    OLE_COLOR end = kNoColor;
    long rotation = 0;
    given->get_clrStart(&start);
    given->get_clrEnd(&end);
    given->get_nGradientIrotation(&rotation);
    own->put_clrStart(start);
    own->put_clrEnd(end);
    own->put_nGradientIrotation(rotation);
    m_object = own;
}

STDMETHODIMP FillColorPropertyObject::GetFill(IFillColor** result) noexcept
{
    return filling(result, [&](IFillColor*& place) {
        place = fill().detach();
        return place ? S_OK : S_FALSE;
    });
}

namespace {

/// Reads through a getter of the fill; without a fill the value stays and the status is S_FALSE.
template <class Value>
HRESULT readFill(const ComPtr<IFillColor>& fill, HRESULT (STDMETHODCALLTYPE IFillColor::*getter)(Value*), Value* result,
                 Value unset) noexcept
{
    if (!result)
        return E_POINTER;
    *result = unset;
    return fill ? (fill.get()->*getter)(result) : S_FALSE;
}

} // namespace

/// Writes through a setter of the fill and announces it. S_FALSE when nothing changed.
template <class Value>
HRESULT FillColorPropertyObject::change(HRESULT (STDMETHODCALLTYPE IFillColor::*getter)(Value*),
                                        HRESULT (STDMETHODCALLTYPE IFillColor::*setter)(Value), Value value) noexcept
{
    const auto hold = held();
    return guarded([&]() -> HRESULT {
        const ComPtr<IFillColor> changed = fill();
        Value former{};
        if (!changed || (SUCCEEDED((changed.get()->*getter)(&former)) && former == value))
            return S_FALSE;
        const HRESULT status = (changed.get()->*setter)(value);
        if (status == S_OK)
            announceChange();
        return status;
    });
}

STDMETHODIMP FillColorPropertyObject::GetStartColor(OLE_COLOR* color) noexcept
{
    return readFill(object(), &IFillColor::get_clrStart, color, kNoColor);
}

STDMETHODIMP FillColorPropertyObject::SetStartColor(OLE_COLOR color) noexcept
{
    return change(&IFillColor::get_clrStart, &IFillColor::put_clrStart, color);
}

STDMETHODIMP FillColorPropertyObject::GetEndColor(OLE_COLOR* color) noexcept
{
    return readFill(object(), &IFillColor::get_clrEnd, color, kNoColor);
}

STDMETHODIMP FillColorPropertyObject::SetEndColor(OLE_COLOR color) noexcept
{
    return change(&IFillColor::get_clrEnd, &IFillColor::put_clrEnd, color);
}

STDMETHODIMP FillColorPropertyObject::GetRotation(long* degrees) noexcept
{
    return readFill(object(), &IFillColor::get_nGradientIrotation, degrees, 0L);
}

STDMETHODIMP FillColorPropertyObject::SetRotation(long degrees) noexcept
{
    return change(&IFillColor::get_nGradientIrotation, &IFillColor::put_nGradientIrotation, degrees);
}

STDMETHODIMP FillColorPropertyObject::Draw(hyper dc, const SkinRect* rect, VARIANT_BOOL* drawn) noexcept
{
    return drawing(m_object, rect, drawn, [&](IFillColor& painted, VARIANT_BOOL& done) {
        return isColored(painted) ? painted.Draw(dc, *rect, &done) : S_FALSE;
    });
}

STDMETHODIMP FillColorPropertyObject::RenderDraw(IVexRenderDC* dc, const SkinRect* rect, VARIANT_BOOL* drawn) noexcept
{
    return drawing(m_object, rect, drawn, [&](IFillColor& painted, VARIANT_BOOL& done) -> HRESULT {
        if (!dc)
            return E_POINTER;
        return isColored(painted) ? painted.RenderDraw(dc, *rect, &done) : S_FALSE;
    });
}

bool mayHaveHotkey(const PropertyCore& property) noexcept
{
    return property.type() == _PROPTYPE_HOTKEY && static_cast<const HotkeyPropertyObject&>(property).hasObject();
}

ComPtr<IVexHotkey> HotkeyPropertyObject::hotkey()
{
    if (!m_object) {
        m_object = Hotkey::create();
        hotkeyGained();
    }
    return m_object;
}

STDMETHODIMP HotkeyPropertyObject::GetObject(IVexHotkey** object) noexcept
{
    return returning(object, [&] { return hotkey(); });
}

STDMETHODIMP HotkeyPropertyObject::SetObject(IVexHotkey* object) noexcept
{
    hotkeyGained();
    return takeObject(object);
}

HRESULT HotkeyPropertyObject::toVariant(VARIANT& result)
{
    hotkey();
    return ResourceProperty::toVariant(result);
}

HRESULT HotkeyPropertyObject::fromVariant(const VARIANT& value, Notify notify)
{
    hotkeyGained();
    return ResourceProperty::fromVariant(value, notify);
}

std::wstring HotkeyPropertyObject::toText()
{
    const ComPtr<IVexHotkey> key = object();
    return key ? hotkeyText(*key.get()) : std::wstring();
}

TextResult HotkeyPropertyObject::fromText(std::wstring_view text, const ResourceResolver&, Notify notify)
{
    // A new object, so that the former one stays as its holders know it when the text is none.
    const auto changed = Hotkey::create();
    if (!setHotkeyText(*changed.get(), text))
        return TextResult::NotThisType;
    if (toText() == hotkeyText(*changed.get()))
        return TextResult::Taken;
    hotkeyGained();
    assign(m_object, changed, notify);
    return TextResult::Taken;
}

void HotkeyPropertyObject::copyValue(HotkeyPropertyObject& source)
{
    const ComPtr<IVexHotkey> copy = source.m_object ? Hotkey::create() : nullptr;
    if (copy)
        setHotkeyText(*copy.get(), source.toText());
    hotkeyGained();
    m_object = copy;
}

HRESULT PluginPropertyObject::toVariant(VARIANT& result)
{
    if (m_object)
        return ResourceProperty::toVariant(result);
    if (!m_text.empty()) {
        result.bstrVal = Bstr(m_text.view()).detach();
        result.vt = VT_BSTR;
        return S_OK;
    }
    const PropertyExtras* known = knownExtras();
    result.vt = VT_I4;
    result.lVal = known && known->descriptorState ? known->descriptorState->identifier : 0;
    return S_OK;
}

HRESULT PluginPropertyObject::fromVariant(const VARIANT& value, Notify notify)
{
    if (value.vt == VT_BSTR) {
        fromText(morvane::viewOf(value.bstrVal), SkinResources(nullptr), notify);
        return S_OK;
    }
    const HRESULT status = ResourceProperty::fromVariant(value, notify);
    if (status != DISP_E_TYPEMISMATCH)
        return status;
    const ConvertedVariant identifier(value, VT_I4);
    if (SUCCEEDED(identifier.status()))
        descriptorStateOf(*this).identifier = identifier.value().lVal;
    return identifier.status();
}

TextResult PluginPropertyObject::fromText(std::wstring_view text, const ResourceResolver&, Notify notify)
{
    if (text == m_text.view())
        return TextResult::Taken;
    m_text = text.empty() ? Bstr() : Bstr(text);
    if (notify == Notify::Yes)
        announceChange();
    return TextResult::Taken;
}

void PluginPropertyObject::copyValue(PluginPropertyObject& source)
{
    m_text = source.m_text;
    if (const PropertyExtras* known = source.knownExtras(); known && known->descriptorState)
        descriptorStateOf(*this).identifier = known->descriptorState->identifier;
    m_object = source.m_object;
}

} // namespace ambrel
