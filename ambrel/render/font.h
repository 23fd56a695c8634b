// Fonts as shared resources.
#pragma once

#include "ambrel/render/glyph_font.h"
#include "ambrel/render/shared_resource.h"

namespace ambrel {

/// IVexFontEx: a font description for 100 percent.
class Font : public SharedResource<IVexFontEx> {
public:
    static constexpr IID kImplementationIid = {
        0x6D40B2C9, 0xE51F, 0x4A38, {0x92, 0xC7, 0x1B, 0x83, 0xF6, 0x0E, 0x5D, 0x7A}};

    Font();
    void* findInterface(REFIID iid) noexcept;

    const LOGFONTW& logFont() const noexcept { return m_font; }
    void setLogFont(const LOGFONTW& font) noexcept;

    /// Changes whenever the description does.
    unsigned generation() const noexcept { return m_generation; }

    STDMETHODIMP GetLogFont(VEXLOGFONT* result) noexcept override;
    STDMETHODIMP GetHFont(hyper* result) noexcept override;
    STDMETHODIMP SetLogFont(VEXLOGFONT font) noexcept override;

protected:
    void readConfig(const ConfigNode& node) override;
    void writeConfig(ConfigNode& node) const override;

private:
    LOGFONTW m_font;
    short m_antiAliasing = 0; // kept for skins; all our text is smoothed
    unsigned m_generation = 0;
    std::shared_ptr<const GlyphFont> m_handleFont; // whose system font GetHFont handed out
};

/// Between the contract's record and the system's. A record's face name is new and the caller's.
LOGFONTW toLogFont(const VEXLOGFONT& record) noexcept;
VEXLOGFONT toVexLogFont(const LOGFONTW& font);

} // namespace ambrel
