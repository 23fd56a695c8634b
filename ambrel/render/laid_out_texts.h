// Layouts of the texts that were drawn or measured last with one font.
#pragma once

#include "ambrel/render/recent_texts.h"
#include "ambrel/render/text_layout.h"

namespace ambrel {

/// A layout depends on the text, the room's width, the way lines are broken and cut, and the font at its size; on
/// nothing else of a style. Kept with the font they can never be out of date: a changed style asks for another one, a
/// changed font is another font.
class LaidOutTexts {
public:
    /// As layOutText, with the same font each time. Valid until the next call. Throws std::bad_alloc.
    const TextLayout& layOut(std::wstring_view text, int width, const TextFormat& format, const TextMeasure& font);

    std::size_t bytes() const noexcept { return m_layouts.bytes(); }

    static constexpr std::size_t kMostBytes = 384 * 1024; // a good thousand captions

private:
    RecentTexts<TextLayout> m_layouts{kMostBytes};
};

} // namespace ambrel
