// Which look a command button shows.
#pragma once

namespace morvane {

/// In the order of the interface's VEX_BUTTONSTATE, which indexes the per-state properties.
enum class ButtonState { Normal, Press, Disable, Hot, Focus };
inline constexpr int kButtonStateCount = 5;

constexpr bool isButtonState(int value)
{
    return value >= 0 && value < kButtonStateCount;
}

/// What decides the state of a button that is not pinned to one.
struct ButtonFacts {
    bool isEnabled = true;
    bool wasGivenFocus = false; // the framework told the button so
    bool isFocusObject = false; // the window's focus object is the button
    bool isLeftButtonDown = false;
    bool isMouseOver = false;    // as the framework marks it
    bool isCursorInside = false; // where the cursor really is; asked only with the mark
};

struct ButtonStateDecision {
    ButtonState state;
    bool clearsMouseOver = false; // the cursor left without the framework noticing
    bool asksForRedraw = false;

    friend bool operator==(const ButtonStateDecision&, const ButtonStateDecision&) = default;
};

ButtonStateDecision decideButtonState(const ButtonFacts& facts);

} // namespace morvane
