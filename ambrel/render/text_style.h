// How texts look, as shared resources.
#pragma once

#include "ambrel/properties/draws_text.h"
#include "ambrel/render/font.h"
#include "ambrel/render/text_drawing.h"

namespace ambrel {

/// Stored in skins as numbers.
enum class TextEffect { None = 0, Shadow = 1, Outline = 2 };

/// Offsets, shadow distances and the like are in pixels at 100 percent.
struct TextLook {
    OLE_COLOR colour = 0;
    OLE_COLOR shadowColour = 0x00C0C0C0;
    short hotkeyPrefix = 0; // what an ampersand is: 0 an ordinary character, 1 an underline, 2 nothing to be seen
    bool isSingleLine = true;
    bool isVertical = false;
    bool isRightToLeft = false;
    short horizontal = 0; // kept as it was set; values other than 0, 1 and 2 align left or top
    short vertical = 1;
    short trimming = 3;
    short effect = 0;
    short shadowX = 1;
    short shadowY = 1;
    short shadowOnPerPixel = 0; // how soft the shadow is
    short outlineSize = 0;      // 0 is as 1
    short left = 0;
    short right = 0;
    short top = 0;
    short bottom = 0;
};

/// IVexTextStyle. Measuring and drawing go through the same fonts and the same layout.
class TextStyle : public SharedResource<IVexTextStyle>, public DrawsText {
public:
    static constexpr IID kImplementationIid = {
        0x1F6A93E4, 0x7B28, 0x4D05, {0xAE, 0x13, 0xC9, 0x50, 0x84, 0x2E, 0xF7, 0x6B}};

    TextStyle() : SharedResource(VEXOBJTYPE_TEXTSTYLE, L"TextStyle") {}
    void* findInterface(REFIID iid) noexcept;

    // Two bases have them; the instance completes them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    const TextLook& look() const noexcept { return m_look; }
    void setLook(const TextLook& look) noexcept { m_look = look; }
    void setFont(IVexFontEx* font);
    TextFormat format() const noexcept;

    /// The style's font on a device of that scale. Throws std::bad_alloc.
    std::shared_ptr<const GlyphFont> glyphs(Scale scale);

    /// Draws into the rectangle less the style's offsets. `userFormat`: DT_ flags instead of the style's own alignment
    /// and wrapping; 0 and -1 mean the style's own. `isMirrored` swaps near and far. Throws std::bad_alloc.
    void draw(const Canvas& canvas, const Rect& rect, std::wstring_view text, Scale scale, long userFormat = -1,
              bool isMirrored = false);

    /// The extent of the text alone, without the offsets, in a room of this size. Throws std::bad_alloc.
    Size measure(std::wstring_view text, Size room, Scale scale, long userFormat = -1);

    HRESULT renderText(IVexRenderDC& dc, const SkinRect& rect, std::wstring_view text,
                       VARIANT_BOOL& drawn) noexcept override;
    HRESULT drawTextOn(hyper dc, const SkinRect& rect, std::wstring_view text, VARIANT_BOOL& drawn) noexcept override;

    STDMETHODIMP get_clrText(OLE_COLOR* result) noexcept override { return give(m_look.colour, result); }
    STDMETHODIMP put_clrText(OLE_COLOR value) noexcept override { return take(m_look.colour, value); }
    STDMETHODIMP get_clrShadow(OLE_COLOR* result) noexcept override { return give(m_look.shadowColour, result); }
    STDMETHODIMP put_clrShadow(OLE_COLOR value) noexcept override { return take(m_look.shadowColour, value); }
    STDMETHODIMP get_bHotkeyPrefixShow(VARIANT_BOOL* result) noexcept override
    {
        return give(m_look.hotkeyPrefix != 0, result);
    }
    STDMETHODIMP put_bHotkeyPrefixShow(VARIANT_BOOL value) noexcept override
    {
        return take(m_look.hotkeyPrefix, value != VARIANT_FALSE ? 1 : 0);
    }
    STDMETHODIMP get_bSingleLine(VARIANT_BOOL* result) noexcept override { return give(m_look.isSingleLine, result); }
    STDMETHODIMP put_bSingleLine(VARIANT_BOOL value) noexcept override { return take(m_look.isSingleLine, value); }
    STDMETHODIMP get_bVertDraw(VARIANT_BOOL* result) noexcept override { return give(m_look.isVertical, result); }
    STDMETHODIMP put_bVertDraw(VARIANT_BOOL value) noexcept override { return take(m_look.isVertical, value); }
    STDMETHODIMP get_bRightToLeft(VARIANT_BOOL* result) noexcept override { return give(m_look.isRightToLeft, result); }
    STDMETHODIMP put_bRightToLeft(VARIANT_BOOL value) noexcept override { return take(m_look.isRightToLeft, value); }
    STDMETHODIMP get_fontExPtr(IVexFontEx** result) noexcept override;
    STDMETHODIMP put_fontExPtr(IVexFontEx* font) noexcept override;
    STDMETHODIMP get_nHAlign(short* result) noexcept override { return give(m_look.horizontal, result); }
    STDMETHODIMP put_nHAlign(short value) noexcept override { return take(m_look.horizontal, value); }
    STDMETHODIMP get_nVAlign(short* result) noexcept override { return give(m_look.vertical, result); }
    STDMETHODIMP put_nVAlign(short value) noexcept override { return take(m_look.vertical, value); }
    STDMETHODIMP get_nStringTrimming(short* result) noexcept override { return give(m_look.trimming, result); }
    STDMETHODIMP put_nStringTrimming(short value) noexcept override { return take(m_look.trimming, value); }
    STDMETHODIMP get_nEffect(short* result) noexcept override { return give(m_look.effect, result); }
    STDMETHODIMP put_nEffect(short value) noexcept override { return take(m_look.effect, value); }
    STDMETHODIMP get_nShadowHSpace(short* result) noexcept override { return give(m_look.shadowX, result); }
    STDMETHODIMP put_nShadowHSpace(short value) noexcept override { return take(m_look.shadowX, value); }
    STDMETHODIMP get_nShadowVSpace(short* result) noexcept override { return give(m_look.shadowY, result); }
    STDMETHODIMP put_nShadowVSpace(short value) noexcept override { return take(m_look.shadowY, value); }
    STDMETHODIMP get_nShadowOnPerPixel(short* result) noexcept override
    {
        return give(m_look.shadowOnPerPixel, result);
    }
    STDMETHODIMP put_nShadowOnPerPixel(short value) noexcept override { return take(m_look.shadowOnPerPixel, value); }
    STDMETHODIMP get_nLeftOffset(short* result) noexcept override { return give(m_look.left, result); }
    STDMETHODIMP put_nLeftOffset(short value) noexcept override { return take(m_look.left, value); }
    STDMETHODIMP get_nRightOffset(short* result) noexcept override { return give(m_look.right, result); }
    STDMETHODIMP put_nRightOffset(short value) noexcept override { return take(m_look.right, value); }
    STDMETHODIMP get_nTopOffset(short* result) noexcept override { return give(m_look.top, result); }
    STDMETHODIMP put_nTopOffset(short value) noexcept override { return take(m_look.top, value); }
    STDMETHODIMP get_nBottomOffset(short* result) noexcept override { return give(m_look.bottom, result); }
    STDMETHODIMP put_nBottomOffset(short value) noexcept override { return take(m_look.bottom, value); }
    STDMETHODIMP DrawText(hyper dc, BSTR text, SkinRect rect, VARIANT_BOOL calculateAndDraw, long userFormat,
                          SkinRect* calculated, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetDrawFlags(long* result) noexcept override;
    STDMETHODIMP CreateTextStyle(BSTR name, hyper resources, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP RenderDrawText(IVexRenderDC* dc, BSTR text, SkinRect rect, VARIANT_BOOL calculateAndDraw,
                                long userFormat, SkinRect* calculated, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetRenderFont(hyper device, hyper* result) noexcept override;
    STDMETHODIMP ReleaseRenderFont(VEX_RENDERENGINE_TYPE type, long* result) noexcept override;
    STDMETHODIMP CalcTextWidth(hyper dc, BSTR text, long* result) noexcept override;
    STDMETHODIMP CalcTextSize(hyper dc, BSTR text, VARIANT_BOOL width, long* result) noexcept override;

protected:
    void readConfig(const ConfigNode& node) override;
    void writeConfig(ConfigNode& node) const override;
    bool preview(HDC dc, const Rect& rect) override;
    void dropReferences() override { setFont(nullptr); }

private:
    /// The shadow or outline beneath the text.
    void drawEffect(const Canvas& canvas, const Rect& rect, std::wstring_view text, Scale scale, const GlyphFont& font,
                    const TextFormat& format) const;
    TextFormat formatFor(long userFormat) const noexcept;
    HRESULT drawOn(IVexRenderDC& dc, std::wstring_view text, const Rect& rect, long userFormat);
    /// False when the device context shows nothing of the rectangle.
    bool drawOn(HDC dc, std::wstring_view text, const Rect& rect, long userFormat);

    TextLook m_look;
    morvane::ComPtr<IVexFontEx> m_font;        // null: the default font
    morvane::ComPtr<Font> m_ourFont;           // the same when it is ours
    std::shared_ptr<const GlyphFont> m_glyphs; // of the last scale
    Scale m_glyphScale;
    unsigned m_fontGeneration = 0;
};

} // namespace ambrel
