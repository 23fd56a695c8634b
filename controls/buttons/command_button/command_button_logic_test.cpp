#include "controls/buttons/command_button/command_button_logic.h"

#include <gtest/gtest.h>

using namespace morvane;

TEST(ButtonStateTest, DisabledWinsOverPressedAndPressedOverHot)
{
    ButtonFacts facts;
    facts.isMouseOver = facts.isCursorInside = facts.isLeftButtonDown = facts.isFocusObject = true;
    EXPECT_EQ(decideButtonState(facts).state, ButtonState::Press);
    facts.isEnabled = false;
    EXPECT_EQ(decideButtonState(facts), (ButtonStateDecision{ButtonState::Disable}));
}

TEST(ButtonStateTest, ACursorThatLeftUnnoticedClearsTheMarkAndShowsTheNormalLook)
{
    ButtonFacts facts;
    facts.isMouseOver = true;
    facts.wasGivenFocus = true;
    EXPECT_EQ(decideButtonState(facts), (ButtonStateDecision{ButtonState::Normal, true, true}));
    facts.isCursorInside = true;
    EXPECT_EQ(decideButtonState(facts), (ButtonStateDecision{ButtonState::Hot, false, true}));
}

TEST(ButtonStateTest, FocusShowsWhetherToldOrFoundWhileThePointerIsElsewhere)
{
    ButtonFacts facts;
    EXPECT_EQ(decideButtonState(facts).state, ButtonState::Normal);
    facts.wasGivenFocus = true;
    EXPECT_EQ(decideButtonState(facts).state, ButtonState::Focus);
    facts.wasGivenFocus = false;
    facts.isFocusObject = true;
    EXPECT_EQ(decideButtonState(facts).state, ButtonState::Focus);
}
