#include "controls/buttons/check_box/check_box_logic.h"

namespace morvane {

CheckValue nextCheckValue(CheckValue value, const CheckStepping& stepping)
{
    const int next = static_cast<int>(value) + 1;
    const CheckValue last =
        stepping.hasThreeStates && stepping.stepsThroughHalf ? CheckValue::HalfChecked : CheckValue::Checked;
    // A two-state box may have been half-checked by the application; a click leads it on from there like the others.
    return next > static_cast<int>(last) ? CheckValue::Unchecked : static_cast<CheckValue>(next);
}

CheckState checkStateOf(const CheckFacts& facts)
{
    if (!facts.isEnabled)
        return CheckState::Disable;
    if (facts.isLeftButtonDown)
        return CheckState::Press;
    return facts.isMouseOver ? CheckState::Hot : CheckState::Normal;
}

} // namespace morvane
