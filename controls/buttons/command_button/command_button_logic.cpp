#include "controls/buttons/command_button/command_button_logic.h"

namespace morvane {

ButtonStateDecision decideButtonState(const ButtonFacts& facts)
{
    if (!facts.isEnabled)
        return {ButtonState::Disable};
    if (facts.isLeftButtonDown)
        return {ButtonState::Press};
    if (facts.isMouseOver) {
        // A cursor that is gone shows the normal look once, even with the focus: the mark is cleared for the next
        // drawing.
        if (facts.isCursorInside)
            return {ButtonState::Hot, false, true};
        return {ButtonState::Normal, true, true};
    }
    return {facts.isFocusObject || facts.wasGivenFocus ? ButtonState::Focus : ButtonState::Normal};
}

} // namespace morvane
