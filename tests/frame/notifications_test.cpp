// The common handling of the framework's notifications, on the command button, whose handling it is: what happens, in
// which order, and whether the framework's default is left to run.
#include "tests/frame/control_fixture.h"

#include <array>

namespace morvane {
namespace {

using testing::addressOf;
using testing::kHandled;
using testing::kLeftToFramework;
using testing::Log;

class NotificationTest : public testing::ControlFixture {
protected:
    void SetUp() override { bringUp(); }
    void TearDown() override
    {
        if (button)
            notify(VEXSM_DESTROYING);
        ControlFixture::TearDown();
    }

    void setToolTip(const wchar_t* text)
    {
        host.base().find<testing::StringObject>(L"Tooltip", L"Tooltip")->value = text;
    }
};

// The pointer
// -----------------------------------------------------------------------------------------------------------

TEST_F(NotificationTest, PressingRedrawsOnceBeforeTheCallback)
{
    EXPECT_EQ(point(VEXSM_LBUTTONDOWN, 5, 10), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "callback 1027 control a0005"}));
    EXPECT_EQ(point(VEXSM_LBUTTONUP, 6, 11), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "callback 1028 control b0006"}));
    EXPECT_EQ(point(VEXSM_LBUTTONDBCLICK, 7, 12), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "callback 1862 control c0007"}));
}

TEST_F(NotificationTest, MovingCallsBackWithoutARedrawAndLeavesTheDefaultToRun)
{
    EXPECT_EQ(point(VEXSM_MOUSEMOVE, 1, 2), kLeftToFramework);
    EXPECT_EQ(log(), Log({"callback 1861 control 20001"}));
}

TEST_F(NotificationTest, LeavingCarriesNoCoordinates)
{
    EXPECT_EQ(point(VEXSM_MOUSELEAVE, 8, 9), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "callback 1863 control 0"}));
}

TEST_F(NotificationTest, NegativeAndLargeCoordinatesPackInThirtyTwoBitsAndKeepTheirSign)
{
    point(VEXSM_MOUSEMOVE, -2, -3);
    point(VEXSM_MOUSEMOVE, -1, 0);
    point(VEXSM_MOUSEMOVE, 0, -1);
    point(VEXSM_MOUSEMOVE, 0x12345, 1);
    point(VEXSM_MOUSEMOVE, 0, 0x8000);
    EXPECT_EQ(log(), Log({"callback 1861 control fffffffffffdfffe", "callback 1861 control ffff",
                          "callback 1861 control ffffffffffff0000", "callback 1861 control 12345",
                          "callback 1861 control ffffffff80000000"}));
}

TEST_F(NotificationTest, EnteringShowsTheToolTipThenCallsBackThenTellsTheHostWindow)
{
    setToolTip(L"Sends the letter");
    EXPECT_EQ(point(VEXSM_MOUSEENTER, 3, 4), kHandled);
    EXPECT_EQ(log(), Log({"redraw", "tip \"Sends the letter\" control", "callback 1891 control 40003",
                          "message 1891 control 40003"}));
}

TEST_F(NotificationTest, AnEmptyToolTipIsSentTooSoThatTheTipIsHidden)
{
    point(VEXSM_MOUSEENTER, 3, 4);
    EXPECT_EQ(log()[1], "tip \"\" control");
    host.base().find<testing::StringObject>(L"Tooltip", L"Tooltip")->givesNull = true;
    point(VEXSM_MOUSEENTER, 3, 4);
    EXPECT_EQ(log()[1], "tip \"\" control");
}

TEST_F(NotificationTest, EnteringFetchesAHostWindowThatWasNotThereBefore)
{
    host.root->window = nullptr;
    notify(VEXSM_ACCESSCONFIGED, 1);
    point(VEXSM_MOUSEENTER, 0, 0);
    EXPECT_EQ(log(), Log({"redraw", "callback 1891 control 0"}));
    host.root->window = host.window.handle();
    point(VEXSM_MOUSEENTER, 0, 0);
    EXPECT_EQ(log(), Log({"redraw", "tip \"\" control", "callback 1891 control 0", "message 1891 control 0"}));
}

TEST_F(NotificationTest, ARightButtonReleaseCountsOnTheLeftAndTopEdgeButNotOnTheOthers)
{
    host.base().rect = {10, 20, 110, 60};
    const auto releaseAt = [&](int x, int y) {
        EXPECT_EQ(windowMessage(WM_RBUTTONUP, 0, MAKELPARAM(x, y)), kLeftToFramework);
        return log();
    };
    const Log told = {"message 3031 control 0"};
    EXPECT_EQ(releaseAt(10, 20), told);
    EXPECT_EQ(releaseAt(109, 59), told);
    EXPECT_EQ(releaseAt(110, 40), Log());
    EXPECT_EQ(releaseAt(50, 60), Log());
    EXPECT_EQ(releaseAt(9, 40), Log());
    EXPECT_EQ(releaseAt(50, 19), Log());
    host.base().rect = {-30, -20, -1, -1};
    EXPECT_EQ(releaseAt(-30, -20), told) << "both coordinates are signed";
    EXPECT_EQ(releaseAt(-1, -5), Log());
}

TEST_F(NotificationTest, OtherWindowMessagesAreLeftAlone)
{
    EXPECT_EQ(windowMessage(WM_RBUTTONDOWN, 0, MAKELPARAM(50, 40)), kLeftToFramework);
    EXPECT_EQ(windowMessage(WM_TIMER, 1, 0), kLeftToFramework);
    EXPECT_EQ(log(), Log());
}

// Focus, size, previews
// ---------------------------------------------------------------------------------------------------

TEST_F(NotificationTest, FocusRedrawsAndIsLeftToTheFramework)
{
    EXPECT_EQ(notify(VEXSM_ONSETFOCUS), kLeftToFramework);
    EXPECT_EQ(notify(VEXSM_ONKILLFOCUS), kLeftToFramework);
    EXPECT_EQ(log(), Log({"redraw", "redraw"}));
}

TEST_F(NotificationTest, APreviewRedrawsTheControlsRectangleOnly)
{
    EXPECT_EQ(notify(VEXSM_DRAWPREVIEW), kLeftToFramework);
    EXPECT_EQ(log(), Log({"redraw 10,20,110,60"}));
}

TEST_F(NotificationTest, ASizeChangeFitsTheButtonOnlyWhenItFitsItself)
{
    EXPECT_EQ(notify(VEXSM_SIZE), kLeftToFramework);
    EXPECT_EQ(log(), Log());
    host.base().find<testing::BoolObject>(L"AutoResize", L"IsEnableAutoSize")->value = VARIANT_TRUE;
    host.base().find<testing::TextStyleObject>(L"Normal", L"TextStyle")->style =
        ComPtr<IVexTextStyle>(host.ledger.make<testing::TextStyle>().get());
    EXPECT_EQ(notify(VEXSM_SIZE), kLeftToFramework);
    EXPECT_EQ(log(), Log({"position", "resize"}));
    EXPECT_EQ(notify(VEXSM_SIZE), kLeftToFramework);
    EXPECT_EQ(log(), Log()) << "nothing it depends on has changed";
}

// Questions about the class
// -----------------------------------------------------------------------------------------------

TEST_F(NotificationTest, NamesAreStaticStrings)
{
    const wchar_t* typeName = nullptr;
    const wchar_t* category = nullptr;
    EXPECT_EQ(notify(VEXSM_GETCONTROLTYPENAME, addressOf(typeName)), kHandled);
    EXPECT_STREQ(typeName, L"Button");
    EXPECT_EQ(notify(VEXSM_GETCATEGORYNAME, addressOf(category)), kHandled);
    EXPECT_STREQ(category, L"MorvaneControls");
    const wchar_t* again = nullptr;
    notify(VEXSM_GETCONTROLTYPENAME, addressOf(again));
    EXPECT_EQ(again, typeName) << "not a copy";
}

TEST_F(NotificationTest, TheAuthorIsFourStringsInOrder)
{
    std::array<const wchar_t*, 5> places{};
    EXPECT_EQ(notify(VEXSM_GETAUTHORINFO, addressOf(places)), kHandled);
    EXPECT_STREQ(places[0], L"Brellin");
    EXPECT_STREQ(places[1], L"Halvard Software Co,Ltd.");
    ASSERT_NE(places[2], nullptr);
    EXPECT_EQ(std::wstring_view(places[2]).substr(0, 4), L"http");
    EXPECT_STREQ(places[3], L"1.0.0");
    EXPECT_EQ(places[4], nullptr) << "four, not more";
}

TEST_F(NotificationTest, TabAndDragAnswers)
{
    VARIANT_BOOL takesTab = 0x55;
    VARIANT_BOOL drawsFocus = 0x55;
    EXPECT_EQ(notify(VEXSM_GETTABINFO, addressOf(takesTab), addressOf(drawsFocus)), kHandled);
    EXPECT_EQ(takesTab, VARIANT_TRUE);
    EXPECT_EQ(drawsFocus, VARIANT_TRUE);
    VARIANT_BOOL drag = VARIANT_TRUE;
    EXPECT_EQ(notify(VEXSM_ISDRAGABLED, addressOf(drag)), kHandled);
    EXPECT_EQ(drag, VARIANT_FALSE);
}

TEST_F(NotificationTest, TheIconComesInTheSizeAskedForAndTheCursorIsTheSystemsToKeep)
{
    HICON icon = nullptr;
    EXPECT_EQ(notify(VEXSM_GETCONTROLICON, 24, 24, addressOf(icon)), kHandled);
    ASSERT_NE(icon, nullptr);
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(icon, &info));
    BITMAP bitmap{};
    GetObjectW(info.hbmColor, sizeof bitmap, &bitmap);
    EXPECT_EQ(bitmap.bmWidth, 24);
    EXPECT_EQ(bitmap.bmHeight, 24);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    DestroyIcon(icon);

    HCURSOR cursor = nullptr;
    HCURSOR again = nullptr;
    EXPECT_EQ(notify(VEXSM_GETDRAGCURSOR, addressOf(cursor)), kHandled);
    notify(VEXSM_GETDRAGCURSOR, addressOf(again));
    EXPECT_NE(cursor, nullptr);
    EXPECT_EQ(cursor, again);
}

TEST_F(NotificationTest, ImportingTheDefaultLookNamesModuleResourceTypeAndParent)
{
    auto* result = reinterpret_cast<IVexControlBase*>(this);
    const auto skin = reinterpret_cast<std::int64_t>(host.res.get());
    EXPECT_EQ(notify(VEXSM_IMPORTCONFIG, skin, 0xABCD, addressOf(result)), kHandled);
    EXPECT_EQ(log(), Log({"import 2080 UIFILES abcd"}));
    EXPECT_EQ(host.res->importedFrom, reinterpret_cast<std::int64_t>(host.module.handle()));
    EXPECT_EQ(result, nullptr) << "the skin's answer arrived where the caller wanted it";
    EXPECT_EQ(notify(VEXSM_IMPORTCONFIG, skin, 0, 0), kHandled) << "a caller that does not want the result";
    log();
    EXPECT_EQ(notify(VEXSM_IMPORTCONFIG, 0, 0xABCD, addressOf(result)), kHandled) << "no skin to import into";
    EXPECT_EQ(log(), Log());
}

TEST_F(NotificationTest, WhatAControlDoesNotKnowIsLeftToTheFramework)
{
    const std::vector<long> unknown = {VEXSM_INITDIALOG,
                                       VEXSM_TIMER,
                                       VEXSM_CALLPROP,
                                       VEXSM_DESIGNSTATUSCHANGED,
                                       VEXSM_PROPCHANGEDNOTIFY,
                                       VEXSM_DISPOSEMOUSEMOVE,
                                       VEXSM_ENABLEOBJECT,
                                       VEXSM_HOOKPROC,
                                       VEXSM_CHANGELANGUAGE,
                                       VEXSM_STARTDRAG,
                                       0,
                                       -1,
                                       0x7FFFFFFF};
    for (long id : unknown)
        EXPECT_EQ(notify(static_cast<VexMsgID>(id), -1, -1, -1), kLeftToFramework) << id;
    EXPECT_EQ(notify(VEXSM_DESTROYBMPPERPIXEL), kHandled);
    EXPECT_EQ(log(), Log());
}

TEST_F(NotificationTest, NullArgumentsAreRefusedAndNullPlacesSurvived)
{
    VARIANT_BOOL result = 0x55;
    VexNotify record{};
    EXPECT_EQ(button->EventNotify(nullptr, &result), E_POINTER);
    EXPECT_EQ(button->EventNotify(&record, nullptr), E_POINTER);
    const auto dc = host.ledger.make<testing::RenderDc>();
    EXPECT_EQ(button->RenderDrawObject(nullptr, SkinRect{}, &result), E_POINTER);
    EXPECT_EQ(button->RenderDrawObject(dc.get(), SkinRect{}, nullptr), E_POINTER);
    EXPECT_EQ(log(), Log()) << "nothing was drawn";
    result = 0x55;
    EXPECT_EQ(button->DrawObject(nullptr, SkinRect{}, &result), S_OK) << "it draws on render devices only";
    EXPECT_EQ(result, 0x55);
    for (VexMsgID id : {VEXSM_GETDRAGCURSOR, VEXSM_GETCONTROLICON, VEXSM_GETAUTHORINFO, VEXSM_GETCONTROLTYPENAME,
                        VEXSM_GETCATEGORYNAME, VEXSM_ISDRAGABLED, VEXSM_GETTABINFO, VEXSM_IMPORTCONFIG})
        EXPECT_EQ(notify(id), kHandled) << id;
}

} // namespace
} // namespace morvane
