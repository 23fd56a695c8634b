// How a control comes to life and goes: its cache of the host, its window messages, and what happens when the host does
// things out of order, breaks down or takes the control away in the middle of a call.
#include "tests/frame/control_fixture.h"

#include <random>

namespace morvane {
namespace {

using testing::ControlFixture;
using testing::kHandled;
using testing::kLeftToFramework;
using testing::Log;

const Log kRegistered = {"register 205"};
const Log kUnregistered = {"unregister 205"};

class LifeCycleTest : public ControlFixture {
protected:
    void SetUp() override
    {
        createButton();
        button->CreateProps();
        host.takeLog();
    }
};

TEST_F(LifeCycleTest, FinalCreationRegistersAndDestructionUnregisters)
{
    host.attach();
    EXPECT_EQ(notify(VEXSM_FINALCREATE), kHandled);
    EXPECT_EQ(log(), kRegistered);
    EXPECT_EQ(host.root->registered.size(), 1u);
    EXPECT_EQ(host.root->registered.begin()->second, button.get());
    EXPECT_EQ(notify(VEXSM_DESTROYING), kLeftToFramework);
    EXPECT_EQ(log(), kUnregistered);
}

TEST_F(LifeCycleTest, DoingEverythingTwiceRegistersOnce)
{
    host.attach();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(notify(VEXSM_ACCESSCONFIGED, 1), kLeftToFramework);
        EXPECT_EQ(notify(VEXSM_FINALCREATE), kHandled);
    }
    EXPECT_EQ(log(), kRegistered);
    EXPECT_EQ(notify(VEXSM_DESTROYING), kLeftToFramework);
    EXPECT_EQ(notify(VEXSM_DESTROYING), kLeftToFramework);
    EXPECT_EQ(log(), kUnregistered);
}

TEST_F(LifeCycleTest, ADestroyedControlMayBeCreatedAgain)
{
    host.attach();
    notify(VEXSM_FINALCREATE);
    notify(VEXSM_DESTROYING);
    log();
    notify(VEXSM_FINALCREATE);
    EXPECT_EQ(log(), kRegistered);
    notify(VEXSM_DESTROYING);
    EXPECT_EQ(log(), kUnregistered);
}

TEST_F(LifeCycleTest, AControlThatWasNeverDestroyedUnregistersAtItsEnd)
{
    host.attach();
    notify(VEXSM_FINALCREATE);
    log();
    button.reset();
    EXPECT_EQ(log(), Log({"unregister 205", "no real control"}));
}

TEST_F(LifeCycleTest, WindowMessagesMoveWithTheControlToAnotherRoot)
{
    host.attach();
    notify(VEXSM_FINALCREATE);
    const auto other = host.ledger.make<testing::Root>();
    host.base().root = ComPtr<IAmbrel>(other.get());
    notify(VEXSM_ACCESSCONFIGED, 1);
    EXPECT_TRUE(host.root->registered.empty()) << "the first root would deliver to a control that may be gone";
    EXPECT_EQ(other->registered.size(), 1u);
    notify(VEXSM_DESTROYING);
    EXPECT_TRUE(other->registered.empty());
}

TEST_F(LifeCycleTest, AControlTakenOffItsRootLeavesNoRegistrationAndMayComeBack)
{
    host.attach();
    notify(VEXSM_FINALCREATE);
    host.base().root.reset();
    notify(VEXSM_ACCESSCONFIGED, 1);
    EXPECT_EQ(log(), Log({"register 205", "unregister 205"}));
    host.attach();
    notify(VEXSM_FINALCREATE);
    EXPECT_EQ(log(), kRegistered);
    notify(VEXSM_DESTROYING);
}

TEST_F(LifeCycleTest, WithoutARootNothingIsRegisteredAndNothingIsSent)
{
    EXPECT_EQ(notify(VEXSM_DESTROYING), kLeftToFramework) << "before creation";
    EXPECT_EQ(notify(VEXSM_INITOBJECT), kHandled);
    EXPECT_EQ(notify(VEXSM_ACCESSCONFIGED, 1), kLeftToFramework);
    EXPECT_EQ(notify(VEXSM_FINALCREATE), kHandled);
    EXPECT_EQ(point(VEXSM_MOUSEENTER, 1, 1), kHandled);
    EXPECT_EQ(windowMessage(WM_RBUTTONUP, 0, MAKELPARAM(50, 40)), kLeftToFramework);
    EXPECT_EQ(notify(VEXSM_DESTROYING), kLeftToFramework);
    EXPECT_EQ(log(), Log({"redraw", "callback 1891 control 10001"}));
}

TEST_F(LifeCycleTest, InitialisationFetchesTheWindowOnceThereIsARoot)
{
    notify(VEXSM_INITOBJECT);
    host.attach();
    EXPECT_EQ(notify(VEXSM_INITOBJECT), kHandled);
    point(VEXSM_MOUSEENTER, 1, 1);
    EXPECT_EQ(host.entriesOf("message"), Log({"message 1891 control 10001"}));
}

TEST_F(LifeCycleTest, WhatTheCacheHoldsIsGivenBackWhileTheControlLivesOn)
{
    host.attach();
    notify(VEXSM_ACCESSCONFIGED, 1);
    EXPECT_GT(host.root->references(), 2u) << "the base object's and the cache's beside our own";
    host.base().root.reset();
    host.base().res.reset();
    notify(VEXSM_ACCESSCONFIGED, 1);
    EXPECT_EQ(host.root->references(), 1u);
    EXPECT_EQ(host.res->references(), 1u);
}

// Without host objects
// -----------------------------------------------------------------------------------------------------

/// Calls every notification with null parameters.
void notifyEverything(IVexControlBase& control)
{
    for (long id = 0; id < 6000; ++id) {
        VexNotify record{static_cast<VexMsgID>(id), 0, 0, 0, 0, 0, 0, VARIANT_FALSE};
        VARIANT_BOOL handled = VARIANT_FALSE;
        EXPECT_EQ(control.EventNotify(&record, &handled), S_OK) << id;
    }
}

class PoorHostTest : public ControlFixture {};

TEST_F(PoorHostTest, WithoutAnInnerBaseObjectEveryOperationFailsAndEveryNotificationIsSurvived)
{
    host.givesBase = false;
    createButton();
    BSTR name = nullptr;
    VARIANT_BOOL flag = VARIANT_FALSE;
    EXPECT_EQ(button->GetName(&name), E_UNEXPECTED);
    EXPECT_EQ(button->IsEnable(&flag), E_UNEXPECTED);
    EXPECT_EQ(button->DirectRedraw(nullptr), E_UNEXPECTED);
    EXPECT_EQ(button->CreateProps(), S_OK);
    notifyEverything(*button);
    const auto dc = host.ledger.make<testing::RenderDc>();
    EXPECT_EQ(button->RenderDrawObject(dc.get(), SkinRect{}, &flag), S_OK);
    EXPECT_EQ(log(), Log());
}

TEST_F(PoorHostTest, WithoutAnInnerBaseObjectTheOwnInterfaceIsHarmless)
{
    host.givesBase = false;
    createButton();
    Bstr text;
    VARIANT_BOOL flag = VARIANT_TRUE;
    long number = 5;
    EXPECT_EQ(button->SetText(Bstr(L"x").get()), S_OK);
    EXPECT_EQ(button->GetText(text.put()), S_OK);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(button->ShowText(VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(button->IsShowText(&flag), S_FALSE);
    EXPECT_EQ(button->GetMaxWidth(&number), S_OK);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(button->SetButtonState(VEX_BTN_PRESS), S_OK);
}

TEST_F(PoorHostTest, WithoutAnObjectDrawTheControlWorks)
{
    host.givesObjectDraw = false;
    bringUp();
    point(VEXSM_LBUTTONDOWN, 1, 1);
    EXPECT_EQ(log(), Log({"redraw", "callback 1027 control 10001"}));
    notify(VEXSM_DESTROYING);
}

TEST_F(PoorHostTest, AHostThatBreaksDownIsSurvived)
{
    bringUp();
    host.base().isBroken = true;
    notifyEverything(*button);
    VARIANT_BOOL flag = VARIANT_FALSE;
    const auto dc = host.ledger.make<testing::RenderDc>();
    EXPECT_EQ(button->RenderDrawObject(dc.get(), SkinRect{}, &flag), S_OK);
    button.reset();
}

TEST_F(PoorHostTest, ArbitraryNotificationsAndNumbersAreSurvived)
{
    bringUp();
    std::mt19937 random(20260707); // always the same
    std::uniform_int_distribution<std::int64_t> anything(INT64_MIN, INT64_MAX);
    std::uniform_int_distribution<long> someId(1000, 3600);
    for (int i = 0; i < 20000; ++i) {
        // Pointers are null; numbers are anything. Which parameter is which depends on the notification, so the first
        // and the third, the only ones that are ever pointers, are null.
        const bool isWindowMessage = i % 5 == 0;
        const VexNotify record{static_cast<VexMsgID>(isWindowMessage ? 0 : someId(random)),
                               isWindowMessage ? WM_RBUTTONUP : 0,
                               0,
                               0,
                               0,
                               anything(random),
                               anything(random),
                               VARIANT_FALSE};
        VexNotify varied = record;
        const bool takesNumbers = record.eVexMsgId == VEXSM_MOUSEMOVE || record.eVexMsgId == VEXSM_LBUTTONDOWN ||
                                  record.eVexMsgId == VEXSM_LBUTTONUP || record.eVexMsgId == VEXSM_MOUSELEAVE ||
                                  isWindowMessage;
        if (takesNumbers) {
            varied.lParam1 = anything(random);
            varied.lParam2 = anything(random);
            varied.lParam3 = anything(random);
        }
        ASSERT_EQ(notify(varied).status, S_OK) << record.eVexMsgId;
    }
    notify(VEXSM_DESTROYING);
}

// Taken away in the middle
// ---------------------------------------------------------------------------------------------------

class TakenAwayTest : public ControlFixture {
protected:
    void SetUp() override { bringUp(); }

    /// The control's last reference from outside goes while a call of it runs.
    void letGo() { button.reset(); }

    /// As the framework calls: with a borrowed pointer.
    void deliver(VexMsgID id)
    {
        IVexControlBase* const borrowed = button.get();
        VexNotify record{id, 0, 0, 5, 5, 0, 0, VARIANT_FALSE};
        VARIANT_BOOL handled = VARIANT_FALSE;
        EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
        EXPECT_FALSE(button) << "it was not taken away at all";
        EXPECT_EQ(host.base().references(), 0u) << "gone when the call returns";
    }
};

TEST_F(TakenAwayTest, FromACallback)
{
    for (VexMsgID id : {VEXSM_LBUTTONDOWN, VEXSM_LBUTTONUP, VEXSM_LBUTTONDBCLICK, VEXSM_MOUSEMOVE, VEXSM_MOUSELEAVE,
                        VEXSM_MOUSEENTER}) {
        host.base().onCallback = [this](long) { letGo(); };
        deliver(id);
        bringUp();
    }
    notify(VEXSM_DESTROYING);
}

// Its work goes on until the call returns: the end comes last.
const Log kEnteredForTheLastTime = {
    "redraw",         "tip \"\" control", "callback 1891 control 50005", "message 1891 control 50005",
    "unregister 205", "no real control"};

TEST_F(TakenAwayTest, FromTheHostWindowWhileTheTipIsSet)
{
    host.onMessage = [this](UINT message) {
        if (message == 3464)
            letGo();
    };
    deliver(VEXSM_MOUSEENTER);
    EXPECT_EQ(log(), kEnteredForTheLastTime);
}

TEST_F(TakenAwayTest, FromACallbackWithWorkStillToDo)
{
    host.base().onCallback = [this](long) { letGo(); };
    deliver(VEXSM_MOUSEENTER);
    EXPECT_EQ(log(), kEnteredForTheLastTime);
}

TEST_F(TakenAwayTest, FromTheHostWindowAfterARightClick)
{
    host.onMessage = [this](UINT) { letGo(); };
    IVexControlBase* const borrowed = button.get();
    VexNotify record{VexMsgID{}, WM_RBUTTONUP, 0, MAKELPARAM(50, 40), 0, 0, 0, VARIANT_FALSE};
    VARIANT_BOOL handled = VARIANT_FALSE;
    EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
    EXPECT_FALSE(button);
    EXPECT_EQ(host.base().references(), 0u);
}

TEST_F(TakenAwayTest, DestroyedFromACallbackButStillHeldItGoesOnQuietly)
{
    host.base().onCallback = [this](long) {
        notify(VEXSM_DESTROYING);
        host.base().root.reset();
        notify(VEXSM_ACCESSCONFIGED, 1);
    };
    EXPECT_EQ(point(VEXSM_MOUSEENTER, 1, 1), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "tip \"\" control", "callback 1891 control 10001", "unregister 205"}))
        << "the window went away before it could be told";
}

TEST_F(TakenAwayTest, AWindowThatIsGoneIsNoTarget)
{
    DestroyWindow(host.window.handle());
    EXPECT_EQ(point(VEXSM_MOUSEENTER, 1, 1), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "callback 1891 control 10001"}));
    notify(VEXSM_DESTROYING);
}

} // namespace
} // namespace morvane
