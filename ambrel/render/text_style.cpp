#include "ambrel/render/text_style.h"

#include "ambrel/render/colours.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"

namespace ambrel {

using morvane::returning;
using morvane::toRect;

void* TextStyle::findInterface(REFIID iid) noexcept
{
    if (iid == kIidDrawsText)
        return static_cast<DrawsText*>(this);
    return findResourceInterface(iid, kImplementationIid);
}

void TextStyle::setFont(IVexFontEx* font)
{
    m_font = morvane::ComPtr(font);
    m_ourFont = implementationOf<Font>(font);
    m_glyphs.reset();
    changed();
}

namespace {

TextAlign alignOf(short value) noexcept
{
    return value == 1 ? TextAlign::Centre : value == 2 ? TextAlign::Far : TextAlign::Near;
}

TextAlign mirrored(TextAlign align) noexcept
{
    return align == TextAlign::Near ? TextAlign::Far : align == TextAlign::Far ? TextAlign::Near : align;
}

LOGFONTW logFontOf(IVexFontEx* font)
{
    VEXLOGFONT record{};
    if (!font || FAILED(font->GetLogFont(&record)))
        return defaultLogFont();
    const LOGFONTW description = toLogFont(record);
    SysFreeString(record.lfFaceName);
    return description;
}

} // namespace

TextFormat TextStyle::format() const noexcept
{
    TextFormat format;
    format.horizontal = alignOf(m_look.horizontal);
    format.vertical = alignOf(m_look.vertical);
    format.trimming =
        m_look.trimming >= 0 && m_look.trimming <= 5 ? static_cast<TextTrimming>(m_look.trimming) : TextTrimming::None;
    format.prefix = m_look.hotkeyPrefix == 2   ? HotkeyPrefix::Hidden
                    : m_look.hotkeyPrefix != 0 ? HotkeyPrefix::Underlined
                                               : HotkeyPrefix::Plain;
    format.isSingleLine = m_look.isSingleLine;
    format.isRightToLeft = m_look.isRightToLeft;
    format.isVertical = m_look.isVertical;
    return format;
}

TextFormat TextStyle::formatFor(long userFormat) const noexcept
{
    return userFormat == 0 || userFormat == -1 ? format() : formatOfFlags(userFormat);
}

std::shared_ptr<const GlyphFont> TextStyle::glyphs(Scale scale)
{
    const unsigned generation = m_ourFont ? m_ourFont->generation() : 0;
    const bool mayHaveChanged = m_font && !m_ourFont; // somebody else's font does not tell
    if (!m_glyphs || m_glyphScale != scale || m_fontGeneration != generation || mayHaveChanged) {
        m_glyphs = FontCache::instance().get(m_ourFont ? m_ourFont->logFont() : logFontOf(m_font.get()), scale);
        m_glyphScale = scale;
        m_fontGeneration = generation;
    }
    return m_glyphs;
}

void TextStyle::draw(const Canvas& canvas, const Rect& rect, std::wstring_view text, Scale scale, long userFormat,
                     bool isMirrored)
{
    const int left = scale(isMirrored ? m_look.right : m_look.left);
    const int right = scale(isMirrored ? m_look.left : m_look.right);
    const Rect inner{rect.left + left, rect.top + scale(m_look.top), rect.right - right,
                     rect.bottom - scale(m_look.bottom)};
    const auto font = glyphs(scale);
    TextFormat how = formatFor(userFormat);
    if (isMirrored)
        how.horizontal = mirrored(how.horizontal);
    drawEffect(canvas, inner, text, scale, *font, how);
    drawText(canvas, *font, text, inner, how, toPixel(m_look.colour));
}

void TextStyle::drawEffect(const Canvas& canvas, const Rect& rect, std::wstring_view text, Scale scale,
                           const GlyphFont& font, const TextFormat& format) const
{
    const Pixel colour = toPixel(m_look.shadowColour);
    const auto drawShifted = [&](int dx, int dy) {
        drawText(canvas, font, text, rect.shifted(dx, dy), format, colour);
    };
    if (m_look.effect == static_cast<short>(TextEffect::Shadow)) {
        const Point by{scale(m_look.shadowX), scale(m_look.shadowY)};
        if (m_look.shadowOnPerPixel > 0)
            drawHalo(canvas, font, text, rect.shifted(by.x, by.y), format, colour, TextHalo::Soft,
                     scale(m_look.shadowOnPerPixel));
        else
            drawShifted(by.x, by.y);
    } else if (m_look.effect == static_cast<short>(TextEffect::Outline)) {
        if (m_look.outlineSize > 1)
            return drawHalo(canvas, font, text, rect, format, colour, TextHalo::Thick, scale(m_look.outlineSize));
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                drawShifted(dx * scale(1), dy * scale(1));
    }
}

Size TextStyle::measure(std::wstring_view text, Size room, Scale scale, long userFormat)
{
    return measureText(*glyphs(scale), text, room, formatFor(userFormat));
}

STDMETHODIMP TextStyle::get_fontExPtr(IVexFontEx** result) noexcept
{
    return returning(result, [&] { return m_font; });
}

STDMETHODIMP TextStyle::put_fontExPtr(IVexFontEx* font) noexcept
{
    return morvane::guarded([&] { setFont(font); });
}

namespace {

/// Fills the caller's rectangle. With a rectangle and no wish to draw, callers only measure.
/// Returns whether to draw.
bool calculate(TextStyle& style, std::wstring_view text, const Rect& rect, Scale scale, bool calculateAndDraw,
               long userFormat, SkinRect* calculated)
{
    if (calculated) {
        const Size size = style.measure(text, rect.size(), scale, userFormat);
        *calculated = morvane::toSkinRect(Rect::at(rect.topLeft(), size));
    }
    return calculateAndDraw || !calculated;
}

} // namespace

STDMETHODIMP TextStyle::DrawText(hyper dc, BSTR text, SkinRect rect, VARIANT_BOOL calculateAndDraw, long userFormat,
                                 SkinRect* calculated, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const Rect where = toRect(rect);
        const std::wstring_view words = morvane::viewOf(text);
        const Scale scale = currentScale();
        if (!calculate(*this, words, where, scale, calculateAndDraw != VARIANT_FALSE, userFormat, calculated))
            return true;
        return drawOn(reinterpret_cast<HDC>(dc), words, where, userFormat);
    });
}

bool TextStyle::drawOn(HDC dc, std::wstring_view text, const Rect& rect, long userFormat)
{
    const BorrowedPixels target(dc, rect);
    if (target.isEmpty())
        return false;
    draw(target.canvas(), rect, text, currentScale(), userFormat);
    return true;
}

HRESULT TextStyle::drawTextOn(hyper dc, const SkinRect& rect, std::wstring_view text, VARIANT_BOOL& drawn) noexcept
{
    return returning(&drawn, [&] { return drawOn(reinterpret_cast<HDC>(dc), text, toRect(rect), -1); });
}

/// S_FALSE on a context of somebody else and on one without a target.
HRESULT TextStyle::drawOn(IVexRenderDC& dc, std::wstring_view text, const Rect& rect, long userFormat)
{
    const auto ours = fromInterface(&dc);
    if (!ours || !ours->hasTarget())
        return S_FALSE;
    draw(ours->canvas(), rect, text, ours->scale(), userFormat, ours->isMirrored());
    return S_OK;
}

HRESULT TextStyle::renderText(IVexRenderDC& dc, const SkinRect& rect, std::wstring_view text,
                              VARIANT_BOOL& drawn) noexcept
{
    return morvane::filling(&drawn, [&](VARIANT_BOOL& done) {
        const HRESULT status = drawOn(dc, text, toRect(rect), -1);
        done = morvane::toVariantBool(status == S_OK);
        return status;
    });
}

STDMETHODIMP TextStyle::RenderDrawText(IVexRenderDC* dc, BSTR text, SkinRect rect, VARIANT_BOOL calculateAndDraw,
                                       long userFormat, SkinRect* calculated, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& drawn) {
        if (!dc)
            return E_POINTER;
        const auto ours = fromInterface(dc);
        if (!ours)
            return S_FALSE;
        const Rect where = toRect(rect);
        const std::wstring_view words = morvane::viewOf(text);
        HRESULT status = S_OK;
        if (calculate(*this, words, where, ours->scale(), calculateAndDraw != VARIANT_FALSE, userFormat, calculated))
            status = drawOn(*dc, words, where, userFormat);
        drawn = morvane::toVariantBool(status == S_OK);
        return status;
    });
}

STDMETHODIMP TextStyle::GetDrawFlags(long* result) noexcept
{
    return returning(result, [&] { return flagsOfFormat(format()); });
}

STDMETHODIMP TextStyle::CreateTextStyle(BSTR name, hyper resources, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& made) {
        if (resources != 0)
            identity().setResources(reinterpret_cast<IVexRes*>(resources));
        const HRESULT status = identity().rename(*this, morvane::viewOf(name));
        made = morvane::toVariantBool(SUCCEEDED(status));
        return status;
    });
}

STDMETHODIMP TextStyle::GetRenderFont(hyper device, hyper* result) noexcept
{
    return returning(result, [&] {
        const RenderDevice* known = RenderDevice::fromHandle(device);
        return reinterpret_cast<hyper>(glyphs(known ? known->scale() : currentScale()).get());
    });
}

STDMETHODIMP TextStyle::ReleaseRenderFont(VEX_RENDERENGINE_TYPE, long* result) noexcept
{
    return returning(result, [&] {
        m_glyphs.reset();
        return 0;
    });
}

STDMETHODIMP TextStyle::CalcTextWidth(hyper dc, BSTR text, long* result) noexcept
{
    return CalcTextSize(dc, text, VARIANT_TRUE, result);
}

STDMETHODIMP TextStyle::CalcTextSize(hyper, BSTR text, VARIANT_BOOL width, long* result) noexcept
{
    return returning(result, [&] {
        const Size size = measure(morvane::viewOf(text), {}, currentScale());
        return width != VARIANT_FALSE ? size.width : size.height;
    });
}

bool TextStyle::preview(HDC dc, const Rect& rect)
{
    return drawOn(dc, L"AaBbYyZz", rect, -1);
}

namespace {

const ConfigField<TextLook> kFields[] = {
    {L"HAlign", &TextLook::horizontal},       {L"VAlign", &TextLook::vertical},
    {L"clrText", &TextLook::colour},          {L"Effect", &TextLook::effect},
    {L"clrShadow", &TextLook::shadowColour},  {L"ShadowH", &TextLook::shadowX},
    {L"ShadowV", &TextLook::shadowY},         {L"ShadowPixel", &TextLook::shadowOnPerPixel},
    {L"OutlineSize", &TextLook::outlineSize}, {L"LeftOffset", &TextLook::left},
    {L"RightOffset", &TextLook::right},       {L"TopOffset", &TextLook::top},
    {L"BottOffset", &TextLook::bottom},       {L"HotkeyPrefixShow", &TextLook::hotkeyPrefix},
    {L"StringTrimming", &TextLook::trimming}, {L"SingleLine", &TextLook::isSingleLine},
    {L"VertDraw", &TextLook::isVertical},     {L"RightToLeft", &TextLook::isRightToLeft}};

} // namespace

void TextStyle::readConfig(const ConfigNode& node)
{
    readFields<TextLook>(node, kFields, m_look);
    std::wstring font = readText(node, L"PreFontGUID0");
    if (font.empty())
        font = readText(node, L"PreFontGUID");
    if (const auto named = identity().find(VEXOBJTYPE_FONTEX, font).as<IVexFontEx>())
        setFont(named.get());
    changed();
}

void TextStyle::writeConfig(ConfigNode& node) const
{
    writeFields<TextLook>(node, kFields, m_look);
    node.setAttribute(L"PreFontGUID0", nameOf(m_font.get()));
}

} // namespace ambrel
