#include "ambrel/render/glyph_font.h"

#include "ambrel/render/font_faces.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace ambrel {

using morvane::UniqueFont;

namespace {

constexpr int kOversampling = 4;
constexpr int kUnits = 64; // of a pixel, in advances

/// Characters that stand for themselves, one after the other from left to right.
bool isSimpleCharacter(wchar_t c)
{
    struct Range {
        wchar_t first;
        wchar_t last;
    };
    constexpr Range kRanges[] = {
        {0x20, 0x7E},     {0xA0, 0xAC},     {0xAE, 0x2FF},    {0x370, 0x482},   {0x48A, 0x52F},   {0x1E00, 0x1FFF},
        {0x2010, 0x2027}, {0x2030, 0x205E}, {0x20A0, 0x20BF}, {0x2100, 0x23FF}, {0x2500, 0x27BF}, {0x3000, 0x3029},
        {0x3041, 0x3096}, {0x30A0, 0x30FF}, {0x4E00, 0x9FFF}, {0xF900, 0xFAFF}, {0xFF01, 0xFFEF}};
    return std::ranges::any_of(kRanges, [c](const Range& r) { return c >= r.first && c <= r.last; });
}

/// Thin strokes of small dark text look paler than they are; this strengthens middle coverages a little.
std::uint8_t strengthened(int coverage, int most)
{
    static const auto table = [] {
        std::array<std::uint8_t, 257> values{};
        for (int i = 0; i <= 256; ++i)
            values[static_cast<std::size_t>(i)] =
                static_cast<std::uint8_t>(std::lround(255 * std::pow(i / 256.0, 0.82)));
        return values;
    }();
    return table[static_cast<std::size_t>(coverage * 256 / most)];
}

/// Lines of text are level, so their characters stand upright in them.
LOGFONTW upright(LOGFONTW font)
{
    font.lfEscapement = 0;
    font.lfOrientation = 0;
    return font;
}

/// The font with another character height and its characters as wide in proportion.
LOGFONTW resized(const LOGFONTW& font, LONG emHeight, LONG wanted)
{
    LOGFONTW other = upright(font);
    other.lfHeight = -wanted;
    other.lfWidth = MulDiv(font.lfWidth, wanted, emHeight);
    return other;
}

UniqueFont fontOf(const LOGFONTW& description)
{
    return UniqueFont(CreateFontIndirectW(&description));
}

} // namespace

GlyphFont::GlyphFont(const LOGFONTW& font)
    : m_description(font), m_font(fontOf(upright(font))), m_dc(CreateCompatibleDC(nullptr)),
      m_designDc(CreateCompatibleDC(nullptr)), m_isUnderlined(font.lfUnderline != 0),
      m_isStruckOut(font.lfStrikeOut != 0)
{
    m_latin.fill(-1);
    m_formerFont = SelectObject(m_dc.get(), m_font.get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(m_dc.get(), &metrics);
    m_ascent = static_cast<int>(metrics.tmAscent);
    m_descent = static_cast<int>(metrics.tmDescent);
    // A negative height is the em itself; the metrics round it to the hinted one.
    m_emHeight = static_cast<int>(
        std::max(1L, font.lfHeight < 0 ? -font.lfHeight : metrics.tmHeight - metrics.tmInternalLeading));
    m_thickness = std::max(1, (m_emHeight + 7) / 14);
    m_underlineOffset = std::max(1, m_emHeight / 9);
    constexpr LONG kDesignHeight = 2048;
    m_designFont = fontOf(resized(font, m_emHeight, kDesignHeight));
    if (font.lfEscapement != 0 || font.lfOrientation != 0)
        m_turnedFont = fontOf(font);
    m_formerDesignFont = SelectObject(m_designDc.get(), m_designFont.get());
}

GlyphFont::~GlyphFont()
{
    SelectObject(m_dc.get(), m_formerFont);
    SelectObject(m_designDc.get(), m_formerDesignFont);
}

GlyphFont::Glyph& GlyphFont::glyph(wchar_t c) const
{
    std::size_t index = m_glyphs.size();
    if (c < m_latin.size()) {
        if (m_latin[c] >= 0)
            return m_glyphs[static_cast<std::size_t>(m_latin[c])];
        m_latin[c] = static_cast<std::int32_t>(index);
    } else if (const auto [place, isNew] = m_others.try_emplace(c, index); !isNew) {
        return m_glyphs[place->second];
    }
    Glyph made;
    if (isSimpleCharacter(c) && !measureGlyph(c, made))
        findFallback([&](const GlyphFont& font) { return font.measureGlyph(c, made); });
    return m_glyphs.emplace_back(made);
}

bool GlyphFont::hasCharacter(wchar_t c) const
{
    constexpr WORD kMissing = 0xFFFF;
    WORD index = kMissing;
    return GetGlyphIndicesW(m_dc.get(), &c, 1, &index, GGI_MARK_NONEXISTING_GLYPHS) != GDI_ERROR && index != kMissing;
}

bool GlyphFont::measureGlyph(wchar_t c, Glyph& glyph) const
{
    if (!hasCharacter(c))
        return false;
    ABC widths{};
    TEXTMETRICW metrics{};
    if (!GetCharABCWidthsW(m_designDc.get(), c, c, &widths) || !GetTextMetricsW(m_designDc.get(), &metrics))
        return false; // a bitmap font: the system draws it as it is
    const double design = static_cast<double>(std::max(1L, metrics.tmHeight - metrics.tmInternalLeading));
    const double advance = widths.abcA + static_cast<int>(widths.abcB) + widths.abcC;
    glyph.advance = static_cast<int>(std::lround(advance * m_emHeight * kUnits / design));
    glyph.source = this;
    return true;
}

template <class Test>
const GlyphFont* GlyphFont::findFallback(Test&& test) const
{
    for (const auto& known : m_fallbacks)
        if (test(*known))
            return known.get();
    for (const wchar_t* face : fallbackFaces()) {
        const bool isKnown = std::ranges::any_of(
            m_fallbacks, [face](const auto& known) { return wcscmp(known->m_description.lfFaceName, face) == 0; });
        LOGFONTW other = m_description;
        wcscpy(other.lfFaceName, face);
        if (isKnown || !isFaceInstalled(face))
            continue;
        auto font = std::make_shared<const GlyphFont>(other);
        if (test(*font)) {
            m_fallbacks.push_back(std::move(font));
            return m_fallbacks.back().get();
        }
    }
    return nullptr;
}

void GlyphFont::drawMasks(wchar_t c, Glyph& glyph) const
{
    glyph.isDrawn = true;
    constexpr MAT2 kWide = {{0, kOversampling}, {0, 0}, {0, 0}, {0, 1}};
    constexpr int kMostGrey = 64;
    GLYPHMETRICS metrics{};
    const DWORD length = GetGlyphOutlineW(m_dc.get(), c, GGO_GRAY8_BITMAP, &metrics, 0, nullptr, &kWide);
    if (length == GDI_ERROR || length == 0)
        return;
    std::vector<std::uint8_t> wide(length);
    if (GetGlyphOutlineW(m_dc.get(), c, GGO_GRAY8_BITMAP, &metrics, length, wide.data(), &kWide) == GDI_ERROR)
        return;
    const int wideWidth = static_cast<int>(metrics.gmBlackBoxX);
    const int stride = (wideWidth + 3) & ~3;
    const int height = std::min(static_cast<int>(metrics.gmBlackBoxY), static_cast<int>(length) / std::max(stride, 1));
    for (int phase = 0; phase < kPhases; ++phase) {
        const int start = metrics.gmptGlyphOrigin.x + phase * kOversampling / kPhases; // in quarter pixels
        const int left = static_cast<int>(std::floor(start / static_cast<double>(kOversampling)));
        const int right = static_cast<int>(std::ceil((start + wideWidth) / static_cast<double>(kOversampling)));
        Mask& mask = glyph.masks[static_cast<std::size_t>(phase)];
        mask = {left, static_cast<int>(metrics.gmptGlyphOrigin.y), {right - left, height}, m_pool.size()};
        m_pool.resize(m_pool.size() + static_cast<std::size_t>(mask.size.width) * height);
        std::uint8_t* out = m_pool.data() + mask.offset;
        for (int y = 0; y < height; ++y) {
            for (int x = left; x < right; ++x) {
                int sum = 0;
                for (int k = 0; k < kOversampling; ++k)
                    if (const int at = x * kOversampling + k - start; at >= 0 && at < wideWidth)
                        sum += wide[static_cast<std::size_t>(y) * stride + at];
                *out++ = strengthened(std::min(sum, kMostGrey * kOversampling), kMostGrey * kOversampling);
            }
        }
    }
}

bool GlyphFont::isSimple(std::wstring_view text) const
{
    return std::ranges::all_of(text, [this](wchar_t c) { return glyph(c).source != nullptr; });
}

int GlyphFont::advanceSum(std::wstring_view text) const
{
    int sum = 0;
    for (const wchar_t c : text)
        sum += glyph(c).advance;
    return sum;
}

int GlyphFont::width(std::wstring_view text) const
{
    if (isSimple(text))
        return (advanceSum(text) + kUnits - 1) / kUnits;
    SIZE extent{};
    GetTextExtentPoint32W(systemFontFor(text).m_dc.get(), text.data(), static_cast<int>(text.size()), &extent);
    return static_cast<int>(extent.cx);
}

const GlyphFont& GlyphFont::systemFontFor(std::wstring_view text) const
{
    const auto hasAll = [text](const GlyphFont& font) {
        return std::ranges::all_of(text, [&](wchar_t c) { return font.hasCharacter(c); });
    };
    if (hasAll(*this))
        return *this;
    const GlyphFont* other = findFallback(hasAll);
    return other ? *other : *this;
}

void GlyphFont::drawGlyph(const Canvas& canvas, int quarters, int baseline, wchar_t c, Pixel colour) const
{
    Glyph& g = glyph(c);
    if (!g.isDrawn)
        drawMasks(c, g);
    const Mask& mask = g.masks[static_cast<std::size_t>(quarters & (kPhases - 1))];
    if (!mask.size.isEmpty())
        blendMask(canvas, {(quarters >> 2) + mask.left, baseline - mask.top}, mask.size,
                  {m_pool.data() + mask.offset, static_cast<std::size_t>(mask.size.width) * mask.size.height},
                  mask.size.width, colour);
}

void GlyphFont::drawLine(const Canvas& canvas, int x, int y, std::wstring_view text, bool isRightToLeft,
                         Pixel colour) const
{
    if (isSimple(text)) {
        int position = x * kUnits;
        for (const wchar_t c : text) {
            constexpr int kStep = kUnits / kPhases;
            const Glyph& g = glyph(c);
            const int quarters = (position + kStep / 2) >> 4; // 16 units each
            position += g.advance;
            g.source->drawGlyph(canvas, quarters, y, c, colour);
        }
    } else {
        drawBySystem(canvas, x, y, text, isRightToLeft, colour);
    }
    if (m_isUnderlined)
        blendRect(canvas, Rect::at({x, y + m_underlineOffset}, {width(text), m_thickness}), colour);
    if (m_isStruckOut)
        blendRect(canvas, Rect::at({x, y - m_ascent / 3}, {width(text), m_thickness}), colour);
}

Rect GlyphFont::boxOf(std::wstring_view text) const
{
    const int margin = m_emHeight;
    return {-margin, -m_ascent - margin, width(text) + margin, m_descent + margin};
}

TextMask GlyphFont::drawnBySystem(std::wstring_view text, bool isRightToLeft, const Rect& part) const
{
    const DibSurface picture(part.size());
    if (picture.isEmpty())
        throw std::bad_alloc();
    {
        const morvane::SelectedObject selected(picture.dc(), systemFontFor(text).m_font.get());
        SetTextColor(picture.dc(), RGB(255, 255, 255));
        SetTextAlign(picture.dc(), TA_BASELINE | TA_LEFT);
        ExtTextOutW(picture.dc(), -part.left, -part.top, isRightToLeft ? ETO_RTLREADING : 0, nullptr, text.data(),
                    static_cast<UINT>(text.size()), nullptr);
    }
    return maskOf(picture.pixels(), part.topLeft());
}

void GlyphFont::drawBySystem(const Canvas& canvas, int x, int y, std::wstring_view text, bool isRightToLeft,
                             Pixel colour) const
{
    const TextMask& kept = mask({text, {}, kSystemMask | static_cast<unsigned>(isRightToLeft)}, [&]() -> TextMask {
        const Rect whole = boxOf(text);
        return isWorthKeeping(whole.size()) ? drawnBySystem(text, isRightToLeft, whole) : TextMask{{}, {}, false};
    });
    if (kept.isWhole)
        return kept.draw(canvas, {x, y}, colour);
    const Rect shown = canvas.visible(boxOf(text).shifted(x, y)).shifted(-x, -y);
    if (!shown.isEmpty())
        drawnBySystem(text, isRightToLeft, shown).draw(canvas, {x, y}, colour);
}

FontCache& FontCache::instance() noexcept
{
    static FontCache cache;
    return cache;
}

LOGFONTW defaultLogFont() noexcept
{
    LOGFONTW font{};
    font.lfHeight = -12;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    wcscpy(font.lfFaceName, L"Segoe UI");
    return font;
}

namespace {

/// Descriptions are compared as bytes, so what lies behind a name's end must not differ.
LOGFONTW normalised(const LOGFONTW& font)
{
    LOGFONTW clean = font;
    const std::size_t length = wcsnlen(clean.lfFaceName, LF_FACESIZE - 1);
    std::fill(clean.lfFaceName + length, clean.lfFaceName + LF_FACESIZE, L'\0');
    clean.lfHeight = std::clamp(clean.lfHeight, -2000L, 2000L);
    clean.lfWidth = std::clamp(clean.lfWidth, -2000L, 2000L);
    return clean;
}

} // namespace

std::shared_ptr<const GlyphFont> FontCache::get(const LOGFONTW& logical, Scale scale)
{
    constexpr std::size_t kMost = 48;
    const LOGFONTW wanted = normalised(logical);
    const auto found = std::ranges::find_if(m_entries, [&](const Entry& e) {
        return e.scale == scale && std::memcmp(&e.logical, &wanted, sizeof wanted) == 0;
    });
    if (found != m_entries.end()) {
        std::rotate(m_entries.begin(), found, found + 1);
        return m_entries.front().font;
    }
    LOGFONTW scaled = wanted;
    scaled.lfHeight = scale(static_cast<int>(wanted.lfHeight));
    scaled.lfWidth = scale(static_cast<int>(wanted.lfWidth));
    scaled.lfQuality = ANTIALIASED_QUALITY;
    resolveFace(scaled);
    if (m_entries.size() >= kMost)
        m_entries.pop_back();
    m_entries.insert(m_entries.begin(), Entry{wanted, scale, std::make_shared<GlyphFont>(scaled)});
    return m_entries.front().font;
}

std::shared_ptr<const GlyphFont> FontCache::fromHandle(std::int64_t handle, Scale scale)
{
    for (const Entry& entry : m_entries)
        if (reinterpret_cast<std::int64_t>(entry.font.get()) == handle)
            return entry.font;
    LOGFONTW description{};
    auto* font = reinterpret_cast<HFONT>(handle);
    if (font && GetObjectType(font) == OBJ_FONT && GetObjectW(font, sizeof description, &description) != 0)
        return get(description, Scale(100)); // a system font is made for the device already
    return get(defaultLogFont(), scale);
}

void FontCache::clear() noexcept
{
    m_entries.clear();
}

} // namespace ambrel
