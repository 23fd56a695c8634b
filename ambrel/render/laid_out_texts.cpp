#include "ambrel/render/laid_out_texts.h"

namespace ambrel {

const TextLayout& LaidOutTexts::layOut(std::wstring_view text, int width, const TextFormat& format,
                                       const TextMeasure& font)
{
    const auto kept = [&](int within, TextTrimming trimming) -> const TextLayout& {
        TextFormat lines; // what alone decides about the lines
        lines.trimming = trimming;
        lines.prefix = format.prefix;
        lines.isSingleLine = format.isSingleLine;
        const unsigned how = static_cast<unsigned>(lines.trimming) << 3 | static_cast<unsigned>(lines.prefix) << 1 |
                             static_cast<unsigned>(lines.isSingleLine);
        return m_layouts.get({text, {within, 0}, how}, [&] { return layOutText(text, within, lines, font); });
    };
    // Most texts fit: then every width and trimming has the same layout, and measuring has it, too.
    const TextLayout& whole = kept(0, TextTrimming::None);
    const bool isNeverBroken = format.isSingleLine ? format.trimming == TextTrimming::None : !format.wraps;
    if (width <= 0 || whole.size.width <= width || isNeverBroken)
        return whole;
    return kept(width, format.isSingleLine ? format.trimming : TextTrimming::None);
}

} // namespace ambrel
