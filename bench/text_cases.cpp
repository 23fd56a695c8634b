// Texts: drawing and measuring the same ones again, as every repaint does, beside the platform's own.
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/text_style.h"
#include "bench/allocations.h"
#include "bench/cases.h"
#include "bench/own_window.h"
#include "bench/table.h"
#include "bench/window_pixels.h"
#include "frame/com/instance.h"

#include <cstdio>

namespace bench {

namespace {

using ambrel::DibSurface;
using ambrel::GlyphFont;
using ambrel::RenderDevice;
using ambrel::TextStyle;
using morvane::Instance;
using morvane::Rect;
using morvane::Size;

constexpr int kTexts = 500;
constexpr Size kPlace{120, 24};
constexpr UINT kLikeOurs = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;

constexpr wchar_t kLatin[] = L"Button ";
constexpr wchar_t kHebrew[] = L"\x05DB\x05E4\x05EA\x05D5\x05E8 "; // drawn by the system

std::vector<Bstr> captions(const wchar_t* word)
{
    std::vector<Bstr> texts;
    for (int i = 0; i < kTexts; ++i)
        texts.emplace_back(word + std::to_wstring(i));
    return texts;
}

ComPtr<TextStyle> centredStyle()
{
    auto style = Instance<TextStyle>::make();
    style->put_nHAlign(1);
    return style;
}

/// Draws texts of ours and of the platform in the same font onto surfaces of the same size.
class TextStage {
public:
    explicit TextStage(const wchar_t* word = kLatin)
        : m_style(centredStyle()), m_texts(captions(word)), m_target(kPlace)
    {
        m_device.resize(kPlace);
        m_glyphs = m_style->glyphs(m_device.scale());
        m_formerFont = SelectObject(m_target.dc(), m_glyphs->handle());
        SetBkMode(m_target.dc(), TRANSPARENT);
    }
    TextStage(const TextStage&) = delete;
    TextStage& operator=(const TextStage&) = delete;
    ~TextStage() { SelectObject(m_target.dc(), m_formerFont); }

    bool draw(int i)
    {
        VARIANT_BOOL drawn = VARIANT_FALSE;
        m_style->renderText(m_device.renderDC(), morvane::toSkinRect(place()), text(i).view(), drawn);
        return drawn != VARIANT_FALSE;
    }
    void drawNatively(int i)
    {
        RECT rect{0, 0, kPlace.width, kPlace.height};
        const auto words = text(i).view();
        DrawTextW(m_target.dc(), words.data(), static_cast<int>(words.size()), &rect, kLikeOurs);
    }

    int measure(int i)
    {
        SkinRect extent{};
        VARIANT_BOOL measured = VARIANT_FALSE;
        m_style->DrawText(0, text(i).get(), {0, 0, 1000, 1000}, VARIANT_FALSE, -1, &extent, &measured);
        return static_cast<int>(extent.right);
    }
    int measureNatively(int i)
    {
        RECT rect{0, 0, 1000, 1000};
        const auto words = text(i).view();
        DrawTextW(m_target.dc(), words.data(), static_cast<int>(words.size()), &rect, kLikeOurs | DT_CALCRECT);
        return static_cast<int>(rect.right);
    }

    /// How many pixels are not blank.
    int inkOf(bool ours)
    {
        const auto pixels = ours ? m_device.surface()->pixels() : m_target.pixels();
        int count = 0;
        for (int y = 0; y < pixels.height; ++y)
            for (int x = 0; x < pixels.width; ++x)
                count += pixels.at(x, y) != 0;
        return count;
    }

private:
    const Bstr& text(int i) const { return m_texts[static_cast<std::size_t>(i % kTexts)]; }
    static Rect place() { return Rect::at({}, kPlace); }

    ComPtr<TextStyle> m_style;
    std::vector<Bstr> m_texts;
    RenderDevice m_device;
    DibSurface m_target;
    std::shared_ptr<const GlyphFont> m_glyphs;
    HGDIOBJ m_formerFont = nullptr;
};

/// What one of `count` operations asks for, the second time that `round` does them all.
template <class Round>
void allocationsRow(const char* name, std::span<const HMODULE> modules, int count, Round round)
{
    round();
    const AllocationCount counter(modules);
    round();
    const Allocations counted = counter.soFar();
    char text[80];
    std::snprintf(text, sizeof text, "%18.2f blocks of the heap, %.2f strings",
                  static_cast<double>(counted.blocks) / count, static_cast<double>(counted.strings) / count);
    remark(name, text);
}

void compareDrawing(Bench& bench, TextStage& stage, const char* name)
{
    const auto drawOurs = [&](int i) { stage.draw(i); };
    const auto drawNative = [&](int i) { stage.drawNatively(i); };
    check(stage.draw(0) && stage.inkOf(true) > 100, "the text was not drawn");
    row(name, bench.compare(repeated(kTexts, drawOurs), repeated(kTexts, drawNative)));
    const HMODULE program[] = {nullptr};
    allocationsRow("the same", program, kTexts, repeated(kTexts, drawOurs).round);
}

void drawTexts(Bench& bench)
{
    TextStage stage;
    compareDrawing(bench, stage, "a text drawn again / DrawText");
}

void drawHebrew(Bench& bench)
{
    TextStage stage(kHebrew);
    compareDrawing(bench, stage, "a text in Hebrew drawn again / DrawText");
}

void measureTexts(Bench& bench)
{
    TextStage stage;
    const auto measureOurs = [&](int i) { use(stage.measure(i)); };
    const auto measureNative = [&](int i) { use(stage.measureNatively(i)); };
    check(stage.measure(100) > stage.measure(1) && stage.measure(1) > 20, "the texts were not measured");
    row("a text measured again / DrawText",
        bench.compare(repeated(kTexts, measureOurs), repeated(kTexts, measureNative)));
    const HMODULE program[] = {nullptr};
    allocationsRow("the same", program, kTexts, repeated(kTexts, measureOurs).round);
}

/// All that a repainted button asks the heap for, its window's share of the paint included.
void paintedButtons(Bench&)
{
    OwnWindow own;
    const auto buttons = own.fill(kTexts);
    const HMODULE modules[] = {GetModuleHandleW(L"Ambrel.dll"), platform().controls()};
    const auto repaint = [&] {
        scribble(own.window(), {0, 0, kWindowSize.width, kWindowSize.height});
        own.repaintAll();
    };
    repaint();
    check(scribbledPixels(own.window(), {0, 0, kWindowSize.width, kWindowSize.height}) == 0, "nothing was repainted");
    allocationsRow("a repainted button of 500", modules, kTexts, repaint);
}

constexpr Case kCases[] = {
    {"text-draw", &drawTexts},
    {"text-draw-hebrew", &drawHebrew},
    {"text-measure", &measureTexts},
    {"text-painted-buttons", &paintedButtons},
};

} // namespace

std::span<const Case> textCases()
{
    return kCases;
}

} // namespace bench
