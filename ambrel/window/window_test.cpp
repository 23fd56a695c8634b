#include "ambrel/window/window_fixture.h"

#include <algorithm>

namespace ambrel::testing {
namespace {

TEST_F(WindowTest, ThePointerEntersPressesAndLeavesTheObjectUnderIt)
{
    add(L"a", {0, 0, 100, 50});
    add(L"b", {100, 0, 200, 50});
    taken();
    moveTo(10, 10);
    press(10, 10);
    moveTo(150, 10, MK_LBUTTON);
    release(150, 10);
    EXPECT_EQ(taken(), Log({"a enter", "a focus", "a down", "a leave", "b enter"}));
    ComPtr<ISkinObjResBase> hot;
    EXPECT_EQ(root->GetHotObject(hot.put()), S_OK);
    EXPECT_EQ(hot.get(), controls[1].get());
}

TEST_F(WindowTest, DoubleClicksFollowTheRuntimesClock)
{
    add(L"a", {0, 0, 100, 50});
    for (int i = 0; i < 2; ++i) {
        press(10, 10);
        release(10, 10);
    }
    pass(5000);
    press(10, 10);
    release(10, 10);
    const Log told = taken();
    EXPECT_EQ(std::count(told.begin(), told.end(), "a double"), 1);
    EXPECT_EQ(std::count(told.begin(), told.end(), "a down"), 2);
}

TEST_F(WindowTest, TheFocusObjectIsThePointerThatTheApplicationHolds)
{
    IVexControlBase* a = add(L"a", {0, 0, 100, 50});
    IVexControlBase* b = add(L"b", {100, 0, 200, 50});
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(a->SetFocus(&done), S_OK);
    EXPECT_EQ(focused().get(), a);
    root->ShiftFocus(VARIANT_TRUE);
    EXPECT_EQ(focused().get(), b);
    send(WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(focused().get(), a);
    a->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &done);
    EXPECT_EQ(focused().get(), nullptr);
    EXPECT_EQ(taken(), Log({"a focus", "a blur", "b focus", "b blur", "a focus", "a blur"}));
}

TEST_F(WindowTest, RegisteredMessagesReachTheirObjectsAndNothingIsLeftBehind)
{
    IVexControlBase* a = add(L"a", {0, 0, 100, 50});
    add(L"inner", {0, 0, 50, 20}, a);
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(root->RegisterMessage(WM_RBUTTONUP, a, VARIANT_FALSE, &done), S_OK);
    EXPECT_EQ(root->RegisterMessage(WM_RBUTTONUP, a, VARIANT_TRUE, &done), S_FALSE);
    send(WM_RBUTTONUP, 0, MAKELPARAM(250, 150));
    EXPECT_EQ(taken(), Log({"a WM_RBUTTONUP", "inner WM_RBUTTONUP"}));
    EXPECT_EQ(root->UnRegisterMessage(WM_RBUTTONUP, a, &done), S_OK);
    EXPECT_EQ(root->UnRegisterMessage(WM_RBUTTONUP, a, &done), S_FALSE);
    send(WM_RBUTTONUP, 0, MAKELPARAM(10, 10));
    EXPECT_EQ(taken(), Log());
    EXPECT_EQ(root->RegisterMessage(WM_RBUTTONUP, nullptr, VARIANT_FALSE, &done), E_INVALIDARG);
}

TEST_F(WindowTest, TimersReachEveryObjectOfTheWindow)
{
    IVexControlBase* a = add(L"a", {0, 0, 100, 50});
    add(L"inner", {0, 0, 50, 20}, a);
    add(L"b", {100, 0, 200, 50});
    hooks["a timer"] = [&] { a->DelAllSubObjects(); };
    send(WM_TIMER, 77);
    EXPECT_EQ(taken(), Log({"a timer", "inner destroying", "b timer"}));
}

TEST_F(WindowTest, AWindowAndItsObjectsMayEndInsideAnyNotification)
{
    IVexControlBase* a = add(L"a", {0, 0, 100, 50});
    hooks["a down"] = [&] {
        VARIANT_BOOL done = VARIANT_FALSE;
        a->Remove(&done);
    };
    press(10, 10);
    release(10, 10);
    EXPECT_EQ(taken(), Log({"a enter", "a focus", "a down"}));
    EXPECT_EQ(focused().get(), nullptr);

    add(L"b", {0, 0, 100, 50});
    hooks["b enter"] = [&] {
        root.reset();
        DestroyWindow(window);
    };
    moveTo(10, 10);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(taken(), Log({"b enter", "b destroying"}));
}

TEST_F(WindowTest, InvalidPartsArePaintedOnceAndOnlyThoseParts)
{
    IVexControlBase* a = add(L"a", {10, 10, 110, 60});
    ShowWindow(window, SW_SHOWNOACTIVATE);
    UpdateWindow(window);
    painted.clear();
    SkinRect part{20, 20, 30, 30};
    a->DirectRedraw(&part);
    a->DirectRedraw(&part);
    EXPECT_TRUE(painted.empty());
    UpdateWindow(window);
    ASSERT_EQ(painted.size(), 1u);
    EXPECT_EQ(painted[0].left, 20);
    EXPECT_EQ(painted[0].bottom, 30);
    painted.clear();
    root->FreezeUpdate(VARIANT_TRUE);
    a->DirectRedraw(&part);
    UpdateWindow(window);
    EXPECT_TRUE(painted.empty());
    root->FreezeUpdate(VARIANT_FALSE);
    UpdateWindow(window);
    EXPECT_EQ(painted.size(), 1u);
}

TEST_F(WindowTest, AToolTipComesAfterItsDelayAndGoesWithAPress)
{
    IVexControlBase* a = add(L"a", {0, 0, 100, 50});
    const auto tip = [&] { return FindWindowW(L"AmbrelToolTip", nullptr); };
    moveTo(10, 10);
    send(3464, reinterpret_cast<WPARAM>(L"Save the file"), reinterpret_cast<LPARAM>(a));
    pass(499);
    EXPECT_FALSE(tip());
    pass(1);
    EXPECT_TRUE(tip());
    press(10, 10);
    EXPECT_FALSE(tip());
    release(10, 10);
}

TEST_F(WindowTest, SpacePressesTheFocusedObjectUnlessItAskedForTheKeysItself)
{
    IVexControlBase* a = add(L"a", {0, 0, 100, 50});
    VARIANT_BOOL done = VARIANT_FALSE;
    a->SetFocus(&done);
    send(WM_KEYDOWN, VK_SPACE);
    send(WM_KEYUP, VK_SPACE);
    EXPECT_EQ(taken(), Log({"a focus", "a down", "a up"}));
    root->RegisterMessage(WM_KEYDOWN, a, VARIANT_FALSE, &done);
    send(WM_KEYDOWN, VK_SPACE);
    send(WM_KEYUP, VK_SPACE);
    EXPECT_EQ(taken(), Log({"a WM_KEYDOWN"}));
}

TEST_F(WindowTest, WhatWaitsForItsFinalCreationGetsItWhenTheWindowIsShown)
{
    add(L"a", {0, 0, 100, 50});
    ShowWindow(window, SW_SHOWNOACTIVATE);
    ShowWindow(window, SW_HIDE);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    const Log told = taken();
    EXPECT_EQ(std::count(told.begin(), told.end(), "a finalcreate"), 1);
}

TEST_F(WindowTest, TheWindowCarriesItsRootUntilItIsGone)
{
    EXPECT_EQ(GetPropW(window, L"CAMBREL"), root.get());
    ComPtr<IDispatch> found;
    EXPECT_EQ(resources->GetAmbrelForm(Bstr(L"Main").get(), found.put()), S_OK);
    EXPECT_EQ(found.as<IAmbrel>(), root);
    found.reset();
    EXPECT_EQ(resources->GetAmbrelForm(Bstr(L"Other").get(), found.put()), S_FALSE);
    EXPECT_EQ(root->GetWindowHandle(nullptr), E_POINTER);
}

TEST_F(WindowTest, AWindowIsDrawnWithoutADisplay)
{
    std::vector<std::uint32_t> pixels(300 * 200, 0);
    EXPECT_EQ(runtime.AmbrelRenderWindow()(root.get(), 300, 200, pixels.data()), S_OK);
    EXPECT_EQ(pixels.front(), 0xFFF3F4F7u);
    EXPECT_EQ(pixels.back(), 0xFFF3F4F7u);
    EXPECT_EQ(runtime.AmbrelRenderWindow()(root.get(), 0, 200, pixels.data()), E_INVALIDARG);
}

} // namespace
} // namespace ambrel::testing
