// Draws one sheet with every way of stretching, filling and setting text, to look at: render_sheet out.png [scale
// percent]
#include "ambrel/pixels/gradient.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/focus_mark.h"
#include "ambrel/render/frame_control.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <cstdio>
#include <cstdlib>

namespace ambrel {
namespace {

using morvane::ComPtr;
using morvane::Instance;

constexpr Pixel kWindow = 0xFFF3F4F7;
constexpr Pixel kDarkWindow = 0xFF1E2126;
constexpr OLE_COLOR kText = 0x00241E1A;
constexpr OLE_COLOR kDarkText = 0x00F3EFEC;

/// A button's face drawn for the given scale: a border of one pixel, round corners, and a dot pattern in the middle so
/// that tiling shows.
Surface buttonPicture(Scale scale, bool hasPattern)
{
    Surface s(scale(Size{24, 24}));
    const Rect all = s.view().bounds();
    const Canvas canvas{s.view(), {}, all};
    fillGradient(canvas, all.inflated(-scale(1)), 0xFFFFFFFF, 0xFFE6EAF0, 90);
    if (hasPattern)
        for (int y = 6; y < 18; y += 4)
            for (int x = 6; x < 18; x += 4)
                fillRect(canvas, {scale(x), scale(y), scale(x + 2), scale(y + 2)}, 0xFF6EA0FF);
    for (const Rect& corner : {Rect{0, 0, 2, 2}, Rect{22, 0, 24, 2}, Rect{0, 22, 2, 24}, Rect{22, 22, 24, 24}})
        fillRect(canvas, {scale(corner.left), scale(corner.top), scale(corner.right), scale(corner.bottom)}, 0);
    drawRing(canvas, all, scale(4), scale(1), 0xFF8A93A0);
    return s;
}

class Sheet {
public:
    explicit Sheet(Scale scale) : m_device(scale)
    {
        m_device.resize(scale(Size{900, 700}));
        for (const bool hasPattern : {false, true}) {
            auto picture = Instance<Picture>::make();
            picture->loadFromMemory(encodePng(buttonPicture(Scale(100), hasPattern).view()));
            picture->loadVariantFromMemory(200, encodePng(buttonPicture(Scale(200), hasPattern).view()));
            m_pictures[hasPattern] = picture;
        }
    }

    void draw()
    {
        const Canvas all = dc().canvas();
        fillRect(all, all.clip, kWindow);
        fillRect(all, scaled({600, 0, 900, 700}), kDarkWindow);
        drawSections();
        drawFills();
        drawTexts(20, kText);
        drawTexts(620, kDarkText);
        drawTextBoxes();
        drawOthers();
    }

    bool save(const wchar_t* path)
    {
        dc().finishDrawing();
        return writeFile(path, encodePng(m_device.surface()->pixels()));
    }

private:
    RenderDC& dc() { return m_device.renderDC(); }
    Scale scale() const { return m_device.scale(); }
    Rect scaled(const Rect& r) const { return {scale()(r.left), scale()(r.top), scale()(r.right), scale()(r.bottom)}; }

    ComPtr<ImageBase> section(bool hasPattern)
    {
        auto image = Instance<ImageBase>::make();
        image->setPicture(m_pictures[hasPattern].get());
        ImageSection s;
        s.borders = {5, 5, 5, 5};
        image->setSection(s);
        return image;
    }

    void drawSections()
    {
        const auto plain = section(false);
        const auto pattern = section(true);
        const auto put = [&](ImageBase& image, const Rect& r) { image.draw(dc().canvas(), scaled(r), 0, scale()); };
        put(*plain.get(), {20, 15, 44, 39});
        put(*plain.get(), {54, 15, 174, 43});
        put(*pattern.get(), {184, 15, 304, 75});
        pattern->StretchAll(VARIANT_FALSE);
        put(*pattern.get(), {314, 15, 434, 75});
        put(*plain.get(), {20, 50, 27, 57});
        put(*plain.get(), {32, 50, 36, 75});
        put(*plain.get(), {44, 50, 144, 56});
        pattern->put_clrColorize(0x004080FF);
        put(*pattern.get(), {444, 15, 504, 75});
        pattern->put_nOpacity(100);
        put(*pattern.get(), {514, 15, 574, 75});
    }

    void drawFills()
    {
        int left = 20;
        for (const int angle : {0, 45, 90, 135, 180, 225, 270, 315}) {
            fillGradient(dc().canvas(), scaled({left, 90, left + 50, 130}), 0xFF2563D9, 0xFFFFFFFF, angle);
            left += 60;
        }
    }

    ComPtr<TextStyle> style(const wchar_t* face, int height, int weight, OLE_COLOR colour)
    {
        auto font = Instance<Font>::make();
        LOGFONTW description = defaultLogFont();
        description.lfHeight = -height;
        description.lfWeight = weight;
        wcscpy(description.lfFaceName, face);
        font->setLogFont(description);
        auto style = Instance<TextStyle>::make();
        style->setFont(font.get());
        style->put_clrText(colour);
        return style;
    }

    void write(TextStyle& style, const Rect& rect, const wchar_t* text)
    {
        style.draw(dc().canvas(), scaled(rect), text, scale());
    }

    void drawTexts(int left, OLE_COLOR colour)
    {
        const struct {
            const wchar_t* face;
            int height;
            int weight;
        } kFonts[] = {{L"Tahoma", 11, 400},   {L"Tahoma", 11, 700},      {L"Segoe UI", 12, 400}, {L"Segoe UI", 12, 700},
                      {L"Segoe UI", 15, 400}, {L"DejaVu Sans", 12, 400}, {L"Segoe UI", 20, 600}};
        int top = 145;
        for (const auto& f : kFonts) {
            const int height = f.height + 8;
            write(*style(f.face, f.height, f.weight, colour).get(), {left, top, left + 270, top + height},
                  L"The quick brown fox, 0123456789");
            top += height;
        }
        const auto mixed = style(L"Segoe UI", 12, 400, colour);
        write(*mixed.get(), {left, top, left + 270, top + 20}, L"\x4E2D\x6587 Test\x6D4B\x8BD5 \x65E5\x672C\x8A9E");
        write(*mixed.get(), {left, top + 20, left + 270, top + 40},
              L"\x05E9\x05DC\x05D5\x05DD hello \x0645\x0631\x062D\x0628\x0627");
    }

    void drawTextBoxes()
    {
        const auto boxed = [&](TextStyle& s, const Rect& r, const wchar_t* text) {
            drawRing(dc().canvas(), scaled(r), 0, 1, 0xFFC9CED6);
            write(s, r, text);
        };
        const auto s = style(L"Segoe UI", 12, 400, kText);
        const wchar_t* kLong = L"A line of text that is much too long for its box";
        int left = 320;
        for (short align = 0; align < 3; ++align) {
            s->put_nHAlign(align);
            s->put_nVAlign(align);
            boxed(*s.get(), {left, 145, left + 80, 185}, L"Aligned");
            left += 90;
        }
        s->put_nVAlign(1);
        for (short trimming = 0; trimming < 6; ++trimming) {
            s->put_nHAlign(0);
            s->put_nStringTrimming(trimming);
            boxed(*s.get(), {320, 195 + trimming * 24, 440, 215 + trimming * 24},
                  trimming == 5 ? L"C:\\folder\\deeper\\more\\file.txt" : kLong);
        }
        s->put_bSingleLine(VARIANT_FALSE);
        for (short align = 0; align < 3; ++align) {
            s->put_nHAlign(align);
            boxed(*s.get(), {450, 195 + align * 60, 570, 250 + align * 60}, L"Wrapped over a few lines, with care");
        }
        s->put_bSingleLine(VARIANT_TRUE);
        s->put_bHotkeyPrefixShow(VARIANT_TRUE);
        s->put_nHAlign(1);
        boxed(*s.get(), {320, 345, 440, 373}, L"&Save && go");
        s->put_bRightToLeft(VARIANT_TRUE);
        s->put_nHAlign(0);
        boxed(*s.get(), {320, 380, 440, 404}, L"Right to left");
        s->put_bRightToLeft(VARIANT_FALSE);
        s->put_bVertDraw(VARIANT_TRUE);
        boxed(*s.get(), {580, 145, 600, 250}, L"Vertical text");
        s->put_bVertDraw(VARIANT_FALSE);
        const auto large = style(L"Segoe UI", 22, 700, 0x00D96325);
        large->put_nEffect(1);
        write(*large.get(), {320, 415, 570, 445}, L"Shadow effect");
        large->put_nEffect(2);
        large->put_clrText(0x00FFFFFF);
        large->put_clrShadow(0x00D96325);
        write(*large.get(), {320, 445, 570, 475}, L"Outline effect");
        TextLook look = large->look();
        look.outlineSize = 4;
        large->setLook(look);
        write(*large.get(), {630, 560, 880, 595}, L"Wide outline");
        look.effect = 1;
        look.colour = kText;
        look.shadowColour = 0x00808080;
        look.shadowX = look.shadowY = 2;
        look.shadowOnPerPixel = 4;
        large->setLook(look);
        write(*large.get(), {400, 650, 590, 690}, L"Soft shadow");
    }

    void drawOthers()
    {
        const Canvas canvas = dc().canvas();
        drawFocusMark(canvas, scaled({20, 480, 140, 508}), scale());
        drawFocusMark(canvas, scaled({620, 480, 740, 508}), scale());
        for (int i = 0; i < 4; ++i)
            drawFrameControl(canvas, scaled({160 + i * 30, 480, 184 + i * 30, 504}), DFC_SCROLL, i, scale());
        drawFrameControl(canvas, scaled({290, 480, 370, 508}), DFC_BUTTON, DFCS_BUTTONPUSH, scale());
        for (int i = 0; i < 8; ++i)
            drawLine(canvas, {scale()(400), scale()(520)}, {scale()(400 + i * 20), scale()(640 - i * 15)}, 1 + i / 2,
                     0xFF2563D9);
        dc().pushLayer(scaled({20, 520, 380, 680}), 128);
        section(true)->draw(dc().canvas(), scaled({30, 530, 150, 600}), 0, scale());
        write(*style(L"Segoe UI", 15, 400, kText).get(), {170, 530, 380, 560}, L"Half opaque layer");
        dc().popLayer();
        HDC gdi = dc().beginGdi();
        Ellipse(gdi, scale()(170), scale()(570), scale()(260), scale()(620));
    }

    RenderDevice m_device;
    ComPtr<Picture> m_pictures[2];
};

} // namespace
} // namespace ambrel

int wmain(int argc, wchar_t** argv)
{
    if (argc < 2 || FAILED(CoInitialize(nullptr)))
        return 2;
    bool saved = false;
    {
        ambrel::Sheet sheet(ambrel::Scale(argc > 2 ? _wtoi(argv[2]) : 100));
        sheet.draw();
        saved = sheet.save(argv[1]);
    }
    ambrel::FontCache::instance().clear();
    CoUninitialize();
    return saved ? 0 : 1;
}
