// Fonts as we draw them: grey masks of single characters at quarter-pixel positions.
//
// The system draws small sizes of many fonts without smoothing and gives pixels no alpha. So simple scripts are set
// here: outlines are fetched once per character, hinted vertically and four times as wide as they are, from which masks
// for four horizontal positions are made; advance widths are the unhinted ones. Texts in scripts that need shaping, or
// with characters that the font lacks, are drawn by the system into a mask instead.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/laid_out_texts.h"
#include "ambrel/render/scale.h"
#include "ambrel/render/text_mask.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ambrel {

/// One font at one size. For the user-interface thread.
class GlyphFont final : public TextMeasure {
public:
    /// The height of `font` is in device pixels already.
    explicit GlyphFont(const LOGFONTW& font);
    GlyphFont(const GlyphFont&) = delete;
    GlyphFont& operator=(const GlyphFont&) = delete;
    ~GlyphFont();

    int width(std::wstring_view text) const override;
    int lineHeight() const override { return m_ascent + m_descent; }
    int ascent() const noexcept { return m_ascent; }
    int descent() const noexcept { return m_descent; }
    int underlineOffset() const noexcept { return m_underlineOffset; } // from the baseline down
    int lineThickness() const noexcept { return m_thickness; }
    /// For those who draw by the system; there, it may be turned.
    HFONT handle() const noexcept { return m_turnedFont ? m_turnedFont.get() : m_font.get(); }

    /// The layout of a text with this font; of those used last without doing it again. Valid until the next call.
    /// Throws std::bad_alloc.
    const TextLayout& layOut(std::wstring_view text, int width, const TextFormat& format) const
    {
        return m_layouts.layOut(text, width, format, *this);
    }

    /// The mask of a text that is drawn aside with this font, made when it is not one of those used last. Valid until
    /// the next call of this object.
    template <class Make>
    const TextMask& mask(const RecentTexts<TextMask>::Key& key, Make&& make) const
    {
        return m_masks.get(key, make);
    }
    static constexpr unsigned kSystemMask = 1u << 30; // belongs to the keys of lines that the system draws

    /// Draws one line with its left end at `x` on the baseline `y`. Throws std::bad_alloc.
    void drawLine(const Canvas& canvas, int x, int y, std::wstring_view text, bool isRightToLeft, Pixel colour) const;

private:
    static constexpr int kPhases = 4; // horizontal positions within a pixel

    struct Mask {
        int left = 0;
        int top = 0; // above the baseline
        Size size;
        std::size_t offset = 0; // into the pool
    };

    struct Glyph {
        int advance = 0;                   // in 64ths of a pixel
        const GlyphFont* source = nullptr; // the font that has it: this one or a fallback; null: for the system to draw
        bool isDrawn = false;
        std::array<Mask, kPhases> masks;
    };

    Glyph& glyph(wchar_t c) const;
    bool hasCharacter(wchar_t c) const;
    bool measureGlyph(wchar_t c, Glyph& glyph) const; // false when this font cannot draw it alone
    /// The first of the fallback fonts for which the test holds; null for none.
    template <class Test>
    const GlyphFont* findFallback(Test&& test) const;
    void drawGlyph(const Canvas& canvas, int quarters, int baseline, wchar_t c, Pixel colour) const;
    /// The font with which the system draws a text: the first that has all its characters.
    const GlyphFont& systemFontFor(std::wstring_view text) const;
    void drawMasks(wchar_t c, Glyph& glyph) const;
    bool isSimple(std::wstring_view text) const;
    int advanceSum(std::wstring_view text) const;
    void drawBySystem(const Canvas& canvas, int x, int y, std::wstring_view text, bool isRightToLeft,
                      Pixel colour) const;
    /// What covers a line with all that may hang over it, from its left end and its baseline.
    Rect boxOf(std::wstring_view text) const;
    TextMask drawnBySystem(std::wstring_view text, bool isRightToLeft, const Rect& part) const;

    static constexpr std::size_t kMostMaskBytes = 1024 * 1024; // a good thousand captions

    LOGFONTW m_description;
    morvane::UniqueFont m_font;
    morvane::UniqueFont m_turnedFont; // null for one that is not
    morvane::UniqueFont m_designFont; // the same as large as its design grid, for unhinted widths
    morvane::UniqueMemoryDc m_dc;     // with the font selected
    morvane::UniqueMemoryDc m_designDc;
    HGDIOBJ m_formerFont = nullptr;
    HGDIOBJ m_formerDesignFont = nullptr;
    int m_ascent = 0;
    int m_descent = 0;
    int m_emHeight = 1;
    int m_underlineOffset = 1;
    int m_thickness = 1;
    bool m_isUnderlined = false;
    bool m_isStruckOut = false;
    mutable std::vector<Glyph> m_glyphs;
    mutable std::array<std::int32_t, 128> m_latin; // index into the glyphs, -1 for not yet
    mutable std::unordered_map<wchar_t, std::size_t> m_others;
    mutable std::vector<std::uint8_t> m_pool;
    mutable std::vector<std::shared_ptr<const GlyphFont>> m_fallbacks; // those that were needed so far
    mutable LaidOutTexts m_layouts;
    mutable RecentTexts<TextMask> m_masks{kMostMaskBytes};
};

/// All fonts in use, by description and scale. One per process, owned by the module; emptied before it is unloaded.
class FontCache {
public:
    static FontCache& instance() noexcept;

    /// The font of a logical description (for 100 percent) on a device of this scale. Never null. Throws
    /// std::bad_alloc.
    std::shared_ptr<const GlyphFont> get(const LOGFONTW& logical, Scale scale);

    /// A font of this cache by its address, or a system font handle; the default font for anything else.
    std::shared_ptr<const GlyphFont> fromHandle(std::int64_t handle, Scale scale);

    void clear() noexcept;

private:
    struct Entry {
        LOGFONTW logical;
        Scale scale;
        std::shared_ptr<const GlyphFont> font;
    };

    std::vector<Entry> m_entries; // the last used first
};

/// What texts look like that have no font of their own: 9 point of the system's interface font.
LOGFONTW defaultLogFont() noexcept;

} // namespace ambrel
