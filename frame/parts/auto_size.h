// A control that fits itself to its text: its properties, the measuring and the new position.
#pragma once

#include "frame/properties.h"

#include <optional>

namespace morvane {

/// The space a text style keeps beside its text on the side where it is aligned, in pixels; 0 when centred.
int alignedOffset(IVexTextStyle& style);

/// The extent of a text in a text style, measured on the screen; nothing when the style cannot measure it.
std::optional<Size> measureText(IVexTextStyle& style, const Bstr& text, Size within);

/// When a control fits itself: at once, or only where something has changed that its size depends on.
enum class Fit { Always, WhereChanged };

/// The "AutoResize" group of a control's property table and what it does.
class AutoSize {
public:
    void declare(PropertyTable& table);

    bool isEnabled() const { return m_enabled.isSet(); }

    LongProp& minHeight() { return m_minHeight; }
    LongProp& maxHeight() { return m_maxHeight; }
    LongProp& minWidth() { return m_minWidth; }
    LongProp& maxWidth() { return m_maxWidth; }

    /// Gives the control a new position where its text asks for one. `besideText` is the room that graphic, box and
    /// shifts take beside the text; the style's own margin is added here. May call back into the control through the
    /// position.
    void apply(IVexControlBase& inner, const Rect& control, const Bstr& text, IVexTextStyle* style,
               int besideText) const;

private:
    BoolProp m_enabled;
    LongProp m_minHeight;
    LongProp m_maxHeight;
    LongProp m_minWidth;
    LongProp m_maxWidth;
};

} // namespace morvane
