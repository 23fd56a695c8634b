#include "ambrel/window/input_router.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ambrel {
namespace {

using morvane::Point;
using morvane::Rect;
using Log = std::vector<std::string>;

constexpr int kTab = 0x09;
constexpr int kEnter = 0x0D;
constexpr int kEscape = 0x1B;
constexpr int kBackspace = 0x08;
constexpr int kSpace = 0x20;
constexpr int kLeft = 0x25;
constexpr int kUp = 0x26;
constexpr int kRight = 0x27;
constexpr int kDown = 0x28;

/// Objects in a row, later ones above earlier ones; everything delivered is written down.
class FakeScene final : public InputScene {
public:
    struct Object {
        Rect rect;
        bool enabled = true;
        bool draggable = false;
        bool takesKeys = false;
        bool pressedByEnter = true;
        wchar_t accessKey = 0;
        bool inGroup = false;
    };

    InputTarget hitTest(Point point) override
    {
        for (auto each = objects.rbegin(); each != objects.rend(); ++each)
            if (each->second.rect.contains(point))
                return each->first;
        return 0;
    }
    bool covers(InputTarget target, Point point) override { return objects.at(target).rect.contains(point); }
    bool isEnabled(InputTarget target) override { return objects.contains(target) && objects.at(target).enabled; }
    bool takesFocus(InputTarget target) override { return isEnabled(target); }
    bool isDraggable(InputTarget target) override { return objects.at(target).draggable; }
    InputTarget nextInTabOrder(InputTarget from, bool forward) override
    {
        const int step = forward ? 1 : -1;
        const int count = static_cast<int>(objects.size());
        int index = from ? static_cast<int>(from) - 1 : (forward ? -1 : count);
        for (int tries = 0; tries < count; ++tries) {
            index = (index + step + count) % count;
            if (isEnabled(static_cast<InputTarget>(index + 1)))
                return static_cast<InputTarget>(index + 1);
        }
        return 0;
    }
    InputTarget nextInGroup(InputTarget from, bool forward) override
    {
        InputTarget next = from;
        do {
            next = nextInTabOrder(next, forward);
        } while (next != from && !objects.at(next).inGroup);
        return objects.at(from).inGroup && next != from ? next : 0;
    }
    InputTarget hotKeyOwner(const KeyFact& key) override { return key.key == hotKey ? 3 : 0; }
    std::vector<InputTarget> accessKeyOwners(wchar_t character, InputTarget from) override
    {
        std::vector<InputTarget> owners;
        for (InputTarget i = 1; i <= objects.size(); ++i) {
            const InputTarget each = (from + i - 1) % objects.size() + 1;
            if (isEnabled(each) && objects.at(each).accessKey == character)
                owners.push_back(each);
        }
        return owners;
    }
    InputTarget enterOwner() override { return defaultButton; }
    InputTarget backspaceOwner() override { return defaultButton; }
    bool keepsTab(InputTarget) override { return false; }
    bool takesKeys(InputTarget target) override { return objects.at(target).takesKeys; }
    bool isPressedByEnter(InputTarget target) override { return objects.at(target).pressedByEnter; }

    void deliver(const InputAction& action) override
    {
        static const std::map<InputKind, const char*> names = {{InputKind::Enter, "enter"},
                                                               {InputKind::Move, "move"},
                                                               {InputKind::Leave, "leave"},
                                                               {InputKind::LeftDown, "down"},
                                                               {InputKind::LeftUp, "up"},
                                                               {InputKind::LeftDoubleClick, "double"},
                                                               {InputKind::PressCancelled, "cancel"},
                                                               {InputKind::RightDown, "rdown"},
                                                               {InputKind::RightUp, "rup"},
                                                               {InputKind::Wheel, "wheel"},
                                                               {InputKind::FocusGained, "focus"},
                                                               {InputKind::FocusLost, "blur"},
                                                               {InputKind::Activate, "activate"},
                                                               {InputKind::HotKey, "hotkey"},
                                                               {InputKind::DragStart, "dragstart"},
                                                               {InputKind::DragMove, "drag"},
                                                               {InputKind::DragEnd, "drop"},
                                                               {InputKind::DragCancel, "dragcancel"}};
        const std::string entry = names.at(action.kind) + std::to_string(action.target);
        log.push_back(entry);
        if (const auto hook = hooks.find(entry); hook != hooks.end())
            hook->second();
    }
    void setPointerCapture(bool captured) override { log.push_back(captured ? "capture" : "release"); }

    std::map<InputTarget, Object> objects;
    std::map<std::string, std::function<void()>> hooks; // what an object does when it is told
    InputTarget defaultButton = 0;
    int hotKey = 'S'; // of object 3, with whatever modifiers
    Log log;
};

/// Three objects of 100 by 20 side by side: 1 at 0, 2 at 100, 3 at 200.
class InputRouterTest : public testing::Test {
protected:
    InputRouterTest()
    {
        for (int i = 0; i < 3; ++i)
            scene.objects[static_cast<InputTarget>(i + 1)] = {Rect::at({i * 100, 0}, {100, 20})};
    }

    void moveTo(int x) { router.pointerMoved({{x, 10}, 0, now}); }
    void press(int x) { router.buttonDown(PointerButton::Left, {{x, 10}, 1, now}); }
    void release(int x) { router.buttonUp(PointerButton::Left, {{x, 10}, 0, now}); }
    bool key(int code, bool shift = false) { return router.keyDown({.key = code, .shift = shift}, false); }
    void remove(InputTarget target)
    {
        scene.objects.erase(target);
        router.objectGone(target);
    }
    Log taken() { return std::exchange(scene.log, {}); }

    FakeScene scene;
    InputRouter router{scene};
    std::int64_t now = 1000;
};

TEST_F(InputRouterTest, CrossingABorderLeavesOneObjectBeforeEnteringTheNext)
{
    moveTo(10);
    moveTo(99);
    moveTo(100);
    router.pointerLeftWindow();
    EXPECT_EQ(taken(), Log({"enter1", "move1", "move1", "leave1", "enter2", "move2", "leave2"}));
    EXPECT_EQ(router.hot(), 0u);
}

TEST_F(InputRouterTest, APressedObjectKeepsThePointerAndHearsOfItAgainWhenItComesBack)
{
    press(10);
    moveTo(150);
    moveTo(20);
    release(20);
    EXPECT_EQ(taken(), Log({"enter1", "focus1", "capture", "down1", "leave1", "enter1", "move1", "up1", "release"}));
}

TEST_F(InputRouterTest, AReleaseElsewhereCancelsThePressAndMakesTheObjectThereHot)
{
    press(10);
    moveTo(150);
    taken();
    release(150);
    EXPECT_EQ(taken(), Log({"cancel1", "release", "enter2"}));
}

TEST_F(InputRouterTest, TheSecondPressIsADoubleClickOnlyInTimeAndPlaceAndTheThirdIsNot)
{
    const auto click = [&](int x) {
        press(x);
        release(x);
        const Log log = taken();
        return std::count(log.begin(), log.end(), "double1") == 1;
    };
    EXPECT_FALSE(click(10));
    now += 500;
    EXPECT_TRUE(click(12));
    EXPECT_FALSE(click(12));
    now += 501;
    EXPECT_FALSE(click(12));
    now += 10;
    EXPECT_FALSE(click(15)); // too far
    now += 501;
    press(15);
    release(150); // no click, so the next one is the first
    taken();
    EXPECT_FALSE(click(15));
}

TEST_F(InputRouterTest, ADisabledObjectHidesWhatLiesBelowItAndHearsNothing)
{
    scene.objects[4] = {Rect{0, 0, 100, 20}, false};
    moveTo(10);
    press(10);
    release(10);
    EXPECT_EQ(taken(), Log());
    scene.objects[4].enabled = true;
    router.sceneChanged();
    EXPECT_EQ(taken(), Log({"enter4"}));
    press(10);
    taken();
    scene.objects[4].enabled = false;
    router.sceneChanged();
    EXPECT_EQ(taken(), Log({"cancel4", "release", "blur4", "leave4"}));
}

TEST_F(InputRouterTest, ACapturingObjectGetsEveryMoveAndTheReleaseWhereverTheyHappen)
{
    scene.hooks["down2"] = [&] { router.captureFor(2); };
    scene.hooks["up2"] = [&] { router.releaseCapture(); };
    press(150);
    taken();
    moveTo(10);
    moveTo(500);
    release(10);
    EXPECT_EQ(taken(), Log({"move2", "move2", "up2", "release", "leave2", "enter1"}));
    EXPECT_EQ(router.captured(), 0u);
}

TEST_F(InputRouterTest, ObjectsMayGoInsideAnyDelivery)
{
    moveTo(10);
    scene.hooks["leave1"] = [&] { remove(2); };
    moveTo(150); // 2 was about to be entered
    EXPECT_EQ(taken(), Log({"enter1", "move1", "leave1"}));
    EXPECT_EQ(router.hot(), 0u);

    scene.hooks["focus3"] = [&] { remove(3); };
    press(250);
    EXPECT_EQ(taken(), Log({"enter3", "focus3"}));
    release(250);

    scene.hooks["down1"] = [&] { remove(1); };
    press(10);
    release(10);
    EXPECT_EQ(taken(), Log({"enter1", "focus1", "capture", "down1", "release"}));
    EXPECT_EQ(router.pressed(), 0u);
    EXPECT_EQ(router.focused(), 0u);
}

TEST_F(InputRouterTest, TheWindowMayEndInsideADelivery)
{
    scene.hooks["down1"] = [&] { router.shutDown(); };
    press(10);
    release(10);
    moveTo(150);
    key(kSpace);
    EXPECT_EQ(taken(), Log({"enter1", "focus1", "capture", "down1"}));
}

TEST_F(InputRouterTest, AnObjectThatMovesTheFocusWhileLosingItHasTheLastWord)
{
    router.setFocus(1);
    scene.hooks["blur1"] = [&] { router.setFocus(3); };
    EXPECT_FALSE(router.setFocus(2));
    EXPECT_EQ(router.focused(), 3u);
    EXPECT_EQ(taken(), Log({"focus1", "blur1", "focus3"}));
}

TEST_F(InputRouterTest, TabWalksTheEnabledObjectsBothWaysAndWrapsRound)
{
    scene.objects[2].enabled = false;
    EXPECT_TRUE(key(kTab));
    EXPECT_TRUE(key(kTab));
    EXPECT_EQ(router.focused(), 3u);
    key(kTab);
    EXPECT_EQ(router.focused(), 1u);
    key(kTab, true);
    EXPECT_EQ(router.focused(), 3u);
}

TEST_F(InputRouterTest, AWindowWithoutTheFocusTellsItsObjectOnlyWhenItComesBack)
{
    router.setFocus(1);
    router.windowFocused(false);
    router.setFocus(2);
    router.windowFocused(true);
    EXPECT_EQ(taken(), Log({"focus1", "blur1", "focus2"}));
}

TEST_F(InputRouterTest, SpaceHoldsTheFocusedObjectLikeAButtonAndEscapeLetsGo)
{
    router.setFocus(1);
    taken();
    EXPECT_TRUE(key(kSpace));
    EXPECT_TRUE(router.keyDown({.key = kSpace, .repeated = true}, false));
    EXPECT_TRUE(router.keyUp({.key = kSpace}));
    EXPECT_EQ(taken(), Log({"down1", "up1"}));
    key(kSpace);
    EXPECT_TRUE(key(kEscape));
    EXPECT_FALSE(router.keyUp({.key = kSpace}));
    EXPECT_FALSE(key(kEscape)); // nothing left to give up
    EXPECT_EQ(taken(), Log({"down1", "cancel1"}));
    key(kSpace);
    router.setFocus(2); // the press does not travel with the focus
    EXPECT_EQ(taken(), Log({"down1", "cancel1", "blur1", "focus2"}));
}

TEST_F(InputRouterTest, EnterPressesAFocusedButtonElseTheDefaultOneElseWhateverHasTheFocus)
{
    scene.objects[2].pressedByEnter = false;
    router.setFocus(1);
    taken();
    scene.defaultButton = 3;
    EXPECT_TRUE(key(kEnter));
    EXPECT_EQ(taken(), Log({"activate1"}));
    router.setFocus(2);
    taken();
    EXPECT_TRUE(key(kEnter));
    EXPECT_FALSE(router.keyDown({.key = kEnter, .repeated = true}, false));
    EXPECT_FALSE(router.keyDown({.key = kEnter}, true)); // the object answered the key itself
    EXPECT_EQ(taken(), Log({"activate3"}));
    scene.defaultButton = 0;
    EXPECT_TRUE(key(kEnter));
    EXPECT_EQ(taken(), Log({"activate2"}));
}

TEST_F(InputRouterTest, AnObjectThatTakesTextKeepsPlainKeysButNotEnterAndCommands)
{
    scene.objects[1].takesKeys = true;
    scene.defaultButton = 2;
    router.setFocus(1);
    taken();
    EXPECT_FALSE(key('S'));
    EXPECT_FALSE(router.keyDown({.key = 'S', .control = true, .alt = true, .makesText = true}, false));
    EXPECT_FALSE(key(kBackspace));
    EXPECT_FALSE(key(kSpace));
    EXPECT_EQ(taken(), Log());
    EXPECT_TRUE(key(kEnter));
    EXPECT_TRUE(router.keyDown({.key = 'S', .control = true}, false));
    scene.hotKey = kEscape;
    EXPECT_TRUE(key(kEscape));
    EXPECT_EQ(taken(), Log({"activate2", "hotkey3", "hotkey3"}));
}

TEST_F(InputRouterTest, AHotKeyIsPressedOnceHoweverLongItIsHeldAndComesAfterTheFocusedObjectsOwnKeys)
{
    router.setFocus(1);
    taken();
    EXPECT_TRUE(key('S'));
    EXPECT_TRUE(router.keyDown({.key = 'S', .repeated = true}, false));
    EXPECT_FALSE(key('T'));
    EXPECT_EQ(taken(), Log({"hotkey3"}));
    scene.hotKey = kEnter;
    EXPECT_TRUE(key(kEnter));
    EXPECT_EQ(taken(), Log({"activate1"}));
    scene.hotKey = kEscape;
    key(kSpace);
    EXPECT_TRUE(key(kEscape)); // lets go of what is held before it means anything else
    EXPECT_EQ(taken(), Log({"down1", "cancel1"}));
}

TEST_F(InputRouterTest, ArrowsChooseTheNextOfAGroupAndTheFocusGoesWithThem)
{
    scene.objects[1].inGroup = scene.objects[3].inGroup = true;
    router.setFocus(1);
    taken();
    EXPECT_TRUE(key(kDown));
    EXPECT_TRUE(key(kRight));
    EXPECT_TRUE(key(kUp));
    EXPECT_EQ(taken(),
              Log({"blur1", "focus3", "activate3", "blur3", "focus1", "activate1", "blur1", "focus3", "activate3"}));
    EXPECT_FALSE(router.keyDown({.key = kDown, .control = true}, false));
    router.setFocus(2);
    EXPECT_FALSE(key(kDown));
    router.setFocus(3);
    scene.objects[3].takesKeys = true; // it does what it likes with arrows
    EXPECT_FALSE(key(kLeft));
    EXPECT_EQ(router.focused(), 3u);
}

TEST_F(InputRouterTest, AMemberThatGoesOrPassesTheFocusOnIsNotChosen)
{
    scene.objects[1].inGroup = scene.objects[2].inGroup = true;
    router.setFocus(1);
    taken();
    scene.hooks["focus2"] = [&] { router.setFocus(3); };
    EXPECT_TRUE(key(kDown));
    EXPECT_EQ(taken(), Log({"blur1", "focus2", "blur2", "focus3"}));
    router.setFocus(1);
    taken();
    scene.hooks["focus2"] = [&] { remove(2); };
    EXPECT_TRUE(key(kDown));
    EXPECT_EQ(taken(), Log({"blur1", "focus2"}));
}

TEST_F(InputRouterTest, AnAccessKeyFocusesAndPressesItsOnlyOwner)
{
    scene.objects[2].accessKey = L'b';
    router.setFocus(1);
    taken();
    EXPECT_TRUE(router.character({L'b', true}, false));
    EXPECT_TRUE(router.character({L'b', true, true}, false)); // held
    EXPECT_FALSE(router.character({L'x', true}, false));
    EXPECT_FALSE(router.character({L'b', true}, true));
    EXPECT_EQ(taken(), Log({"blur1", "focus2", "activate2"}));

    scene.objects[1].takesKeys = true;
    scene.objects[1].accessKey = L'a';
    router.setFocus(1);
    taken();
    EXPECT_FALSE(router.character({L'b'}, false)); // it is being written
    EXPECT_TRUE(router.character({L'b', true}, false));
    EXPECT_TRUE(router.character({L'a'}, false)); // one that takes keys is not pressed
    EXPECT_EQ(taken(), Log({"blur1", "focus2", "activate2", "blur2", "focus1"}));
}

TEST_F(InputRouterTest, AnAccessKeyOfSeveralPutsTheFocusOnOneAfterTheOther)
{
    scene.objects[1].accessKey = scene.objects[3].accessKey = L'x';
    EXPECT_TRUE(router.character({L'x'}, false));
    EXPECT_TRUE(router.character({L'x'}, false));
    EXPECT_TRUE(router.character({L'x', true}, false));
    EXPECT_EQ(taken(), Log({"focus1", "blur1", "focus3", "blur3", "focus1"}));
    router.setFocus(2);
    taken();
    EXPECT_TRUE(router.character({L'x'}, false));
    EXPECT_EQ(router.focused(), 3u);
}

TEST_F(InputRouterTest, TheOwnerOfAnAccessKeyMayGoWhenItGetsTheFocus)
{
    scene.objects[2].accessKey = L'b';
    scene.hooks["focus2"] = [&] { remove(2); };
    EXPECT_TRUE(router.character({L'b', true}, false));
    EXPECT_EQ(taken(), Log({"focus2"}));
}

TEST_F(InputRouterTest, ADragStartsBeyondTheThresholdAndEndsTheClick)
{
    scene.objects[1].draggable = true;
    press(10);
    taken();
    moveTo(13);
    EXPECT_EQ(taken(), Log({"move1"}));
    moveTo(150);
    release(150);
    EXPECT_EQ(taken(), Log({"cancel1", "dragstart1", "drag1", "drop1", "release", "leave1", "enter2"}));
    press(10);
    moveTo(90);
    taken();
    router.captureLost();
    EXPECT_EQ(taken(), Log({"dragcancel1"}));
    EXPECT_FALSE(router.isDragging());
}

TEST_F(InputRouterTest, TheWheelGoesToWhatLiesUnderThePointerElseToTheFocus)
{
    router.setFocus(1);
    taken();
    router.wheel(120, {{150, 10}, 0, now});
    router.wheel(-120, {{500, 10}, 0, now});
    EXPECT_EQ(taken(), Log({"wheel2", "wheel1"}));
}

} // namespace
} // namespace ambrel
