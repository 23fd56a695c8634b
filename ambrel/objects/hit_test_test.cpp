#include "ambrel/objects/hit_test.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace ambrel {
namespace {

struct Owner final : NodeOwner {
    bool takesMouse() override
    {
        if (asked)
            asked();
        return takes;
    }
    bool takes = true;
    std::function<void()> asked;
};

class HitTestTest : public testing::Test {
protected:
    HitTestTest()
    {
        window.setRect({0, 0, 100, 100});
        panel.setRect({10, 10, 60, 60});
        button.setRect({50, 50, 90, 90}); // reaches out of its panel
        cover.setRect({20, 20, 40, 40});
        window.append(panel);
        panel.append(button);
        panel.append(cover);
    }

    Owner windowOwner, panelOwner, buttonOwner, coverOwner;
    ObjectNode window{windowOwner}, panel{panelOwner}, button{buttonOwner}, cover{coverOwner};
};

TEST_F(HitTestTest, FindsTheTopmostObjectThatItsAncestorsDoNotCutAway)
{
    EXPECT_EQ(hitTest(window, {25, 25}), &cover);
    EXPECT_EQ(hitTest(window, {55, 55}), &button);
    EXPECT_EQ(hitTest(window, {70, 70}), &window); // the button, but outside its panel
    EXPECT_EQ(hitTest(window, {12, 12}), &panel);
    EXPECT_EQ(hitTest(window, {60, 12}), &window); // the right edge is no longer inside
    EXPECT_EQ(hitTest(window, {100, 5}), nullptr);
    cover.set(NodeFlag::Visible, false);
    EXPECT_EQ(hitTest(window, {25, 25}), &panel);
}

TEST_F(HitTestTest, WhatDoesNotTakeTheMouseIsLookedThroughButItsChildrenAreNot)
{
    panelOwner.takes = false;
    EXPECT_EQ(hitTest(window, {12, 12}), &window);
    EXPECT_EQ(hitTest(window, {25, 25}), &cover);
    cover.set(NodeFlag::TakesMouse, false);
    EXPECT_EQ(hitTest(window, {25, 25}), &window);
    EXPECT_EQ(hitTest(window, {25, 25}, HitPurpose::Anything), &cover);
}

TEST_F(HitTestTest, AnObjectMayEndWhileItIsAsked)
{
    auto doomed = std::make_unique<ObjectNode>(coverOwner);
    doomed->setRect({20, 20, 40, 40});
    panel.append(*doomed);
    coverOwner.asked = [&] { doomed.reset(); };
    EXPECT_EQ(hitTest(window, {25, 25}), &cover);
}

} // namespace
} // namespace ambrel
