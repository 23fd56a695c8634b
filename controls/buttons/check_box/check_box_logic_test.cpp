#include "controls/buttons/check_box/check_box_logic.h"

#include "frame/parts/box_layout.h"

#include <gtest/gtest.h>

#include <vector>

using namespace morvane;

namespace {

std::vector<CheckValue> afterClicks(CheckValue start, const CheckStepping& stepping, int clicks)
{
    std::vector<CheckValue> values;
    for (CheckValue value = start; clicks > 0; --clicks)
        values.push_back(value = nextCheckValue(value, stepping));
    return values;
}

using enum CheckValue;
using Values = std::vector<CheckValue>;

} // namespace

TEST(CheckBoxLogicTest, ClicksCycleTwoValuesUnlessThreeAreAskedFor)
{
    EXPECT_EQ(afterClicks(Unchecked, {false, true}, 3), (Values{Checked, Unchecked, Checked}));
    EXPECT_EQ(afterClicks(Unchecked, {true, true}, 4), (Values{Checked, HalfChecked, Unchecked, Checked}));
}

TEST(CheckBoxLogicTest, AHalfCheckedValueThatOnlyTheApplicationSetsIsLeftForGoodByClicking)
{
    EXPECT_EQ(afterClicks(HalfChecked, {true, false}, 4), (Values{Unchecked, Checked, Unchecked, Checked}));
    EXPECT_EQ(afterClicks(HalfChecked, {false, true}, 2), (Values{Unchecked, Checked}));
}

TEST(CheckBoxLogicTest, DisabledWinsOverPressedAndPressedOverHot)
{
    EXPECT_EQ(checkStateOf({true, true, true}), CheckState::Press);
    EXPECT_EQ(checkStateOf({false, true, true}), CheckState::Disable);
    EXPECT_EQ(checkStateOf({true, false, true}), CheckState::Hot);
}

TEST(BoxLayoutTest, AMirroredBoxStandsAtTheRightAndItsTextAtTheLeft)
{
    const Rect control{10, 10, 110, 41};
    EXPECT_EQ(placeBox(control, {16, 16}, false), (Rect{10, 17, 26, 33}));
    EXPECT_EQ(placeBox(control, {16, 16}, true), (Rect{94, 17, 110, 33}));
    EXPECT_EQ(textBesideBox(control, 16, false), (Rect{28, 10, 110, 41}));
    EXPECT_EQ(textBesideBox(control, 16, true), (Rect{10, 10, 92, 41}));
}
