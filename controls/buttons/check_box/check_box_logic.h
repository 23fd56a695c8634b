// Values and looks of a check box.
#pragma once

namespace morvane {

/// In the order of the interface's VEXCHECKBOX_VALUE.
enum class CheckValue { Unchecked, Checked, HalfChecked };
inline constexpr int kCheckValueCount = 3;

/// In the order of the interface's VEX_CHECKBOXSTATE; a radio box has the same.
enum class CheckState { Normal, Hot, Press, Disable };
inline constexpr int kCheckStateCount = 4;

constexpr bool isCheckValue(int value)
{
    return value >= 0 && value < kCheckValueCount;
}
constexpr bool isCheckState(int state)
{
    return state >= 0 && state < kCheckStateCount;
}

/// How clicks step through the values.
struct CheckStepping {
    bool hasThreeStates = false;
    bool stepsThroughHalf = true; // clicks reach the half-checked value; otherwise only the application sets it
};

/// The value after a click.
CheckValue nextCheckValue(CheckValue value, const CheckStepping& stepping);

struct CheckFacts {
    bool isEnabled = true;
    bool isLeftButtonDown = false;
    bool isMouseOver = false;
};

CheckState checkStateOf(const CheckFacts& facts);

} // namespace morvane
