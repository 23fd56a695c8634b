// What may happen inside the callbacks of a window: hooks, timers, messages, events, and the end of everything.
#include "ambrel/window/host_fixture.h"

namespace ambrel::testing {
namespace {

/// A real key: hooks hear of nothing else.
void type(int key)
{
    keybd_event(static_cast<BYTE>(key), 0, 0, 0);
    HostTest::settle();
    keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
}

class HookTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        words = {{VEXSM_HOOKPROC, "hook"}, {VEXSM_KBHOOKPROC, "key hook"}, {WM_KEYDOWN, "key"}};
        a = add("a", {0, 0, 100, 50});
        b = add("b", {100, 0, 200, 50});
        show(SW_SHOW);
        SetForegroundWindow(window);
        SetFocus(window);
        settle();
        // Only presses.
        for (TestControl* each : {a, b})
            each->onNotice = [this, former = each->onNotice](const VexNotify& notice) {
                if (notice.eVexMsgId != VEXSM_KBHOOKPROC || !(notice.lParam3 & 0x80000000))
                    former(notice);
            };
    }
    bool isRegistered(TestControl* control)
    {
        VARIANT_BOOL on = VARIANT_FALSE;
        resources->IsRegKbHookObj(control, &on);
        return on != VARIANT_FALSE;
    }

    TestControl* a = nullptr;
    TestControl* b = nullptr;
    VARIANT_BOOL done = VARIANT_FALSE;
};

TEST_F(HookTest, TheKeyboardGoesToTheLastObjectFirstUntilOneEatsTheKey)
{
    root->RegisterMessage(WM_KEYDOWN, a, VARIANT_FALSE, &done);
    EXPECT_EQ(resources->RegisterKbHookObj(a, &done), S_OK);
    EXPECT_EQ(resources->RegisterKbHookObj(b, &done), S_OK);
    EXPECT_EQ(resources->RegisterKbHookObj(b, &done), S_FALSE);
    type('A');
    EXPECT_EQ(taken(), Log({"b key hook", "a key hook", "a key"}));
    b->answers.push_back(VEXSM_KBHOOKPROC);
    answers["b key hook"] = [&](const VexNotify& notice) {
        EXPECT_EQ(notice.lParam2, 'B');
        *reinterpret_cast<LRESULT*>(notice.lParam4) = 1;
    };
    type('B');
    EXPECT_EQ(taken(), Log({"b key hook"}));
    resources->UnRegisterKbHookObj(a, &done);
    resources->UnRegisterKbHookObj(b, &done);
    EXPECT_EQ(resources->UnRegisterKbHookObj(b, &done), S_FALSE);
}

TEST_F(HookTest, AnObjectMayLeaveOrEndInsideItsHook)
{
    resources->RegisterKbHookObj(a, &done);
    resources->RegisterKbHookObj(b, &done);
    answers["b key hook"] = [&](const VexNotify&) {
        resources->UnRegisterKbHookObj(b, &done);
        a->Remove(&done);
        letGo(a); // the next in line
    };
    type('A');
    EXPECT_EQ(taken(), Log({"b key hook"}));
    EXPECT_FALSE(isRegistered(b));
    type('A');
    EXPECT_EQ(taken(), Log());
}

TEST_F(HookTest, TheWindowMayEndInsideAHook)
{
    resources->RegisterKbHookObj(a, &done);
    answers["a key hook"] = [&](const VexNotify&) { DestroyWindow(window); };
    type('A');
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(HookTest, MouseHooksWorkBetweenStartAndEnd)
{
    show();
    resources->RegisterHookObject(VEX_HM_GETMESSAGE, a, &done);
    PostMessageW(window, WM_NULL, 0, 0);
    settle();
    EXPECT_EQ(taken(), Log());
    resources->StartHook(&done);
    PostMessageW(window, WM_NULL, 0, 0);
    settle();
    EXPECT_FALSE(taken().empty());
    a->Remove(&done);
    letGo(a);
    PostMessageW(window, WM_NULL, 0, 0);
    settle();
    EXPECT_EQ(taken(), Log()) << "hooks end with their object";
    resources->EndHook(&done);
}

TEST_F(HookTest, AHookLeavesTheSystemWithTheLastObjectThatNeedsIt)
{
    const long before = AmbrelLiveObjects();
    resources->RegisterKbHookObj(a, &done);
    EXPECT_EQ(AmbrelLiveObjects(), before + 1) << "an installed hook keeps the module";
    resources->UnRegisterKbHookObj(a, &done);
    EXPECT_EQ(AmbrelLiveObjects(), before);
    resources->RegisterKbHookObj(a, &done);
    resources->RegisterHookObject(VEX_HM_MOUSE, a, &done);
    resources->StartHook(&done);
    a->Remove(&done);
    letGo(a);
    EXPECT_LT(AmbrelLiveObjects(), before);
    resources->EndHook(&done);
}

// --- timers

TEST_F(HostTest, ATimerMayBeKilledByTheObjectItTells)
{
    words = {{VEXSM_TIMER, "timer"}};
    add("a", {0, 0, 100, 50});
    constexpr UINT_PTR kTimer = 77;
    answers["a timer"] = [&](const VexNotify& notice) {
        EXPECT_EQ(notice.lParam1, static_cast<hyper>(kTimer));
        EXPECT_TRUE(KillTimer(window, kTimer));
        PostQuitMessage(0);
    };
    SetTimer(window, kTimer, 10, nullptr);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0))
        DispatchMessageW(&message);
    EXPECT_EQ(taken(), Log({"a timer"}));
    EXPECT_FALSE(KillTimer(window, kTimer)) << "it is gone";
}

// --- messages

TEST_F(HostTest, RegistrationsMayChangeWhileAMessageIsServed)
{
    words = {{WM_RBUTTONDOWN, "press"}, {WM_RBUTTONUP, "release"}};
    TestControl* a = add("a", {0, 0, 100, 50});
    TestControl* b = add("b", {100, 0, 200, 50});
    VARIANT_BOOL done = VARIANT_FALSE;
    root->RegisterMessage(WM_RBUTTONDOWN, a, VARIANT_FALSE, &done);
    root->RegisterMessage(WM_RBUTTONDOWN, b, VARIANT_FALSE, &done);
    answers["a press"] = [&](const VexNotify&) {
        root->UnRegisterMessage(WM_RBUTTONDOWN, b, &done);
        root->RegisterMessage(WM_RBUTTONUP, b, VARIANT_FALSE, &done);
    };
    send(WM_RBUTTONDOWN);
    send(WM_RBUTTONUP);
    EXPECT_EQ(taken(), Log({"a press", "b release"}));
    root->RemoveAllRegister();
    root->RegisterWholeMessage(a, VARIANT_FALSE, &done);
    send(WM_RBUTTONUP);
    EXPECT_EQ(taken(), Log({"a release"}));
    EXPECT_EQ(root->UnRegisterWholeMessage(a, &done), S_OK);
    send(WM_RBUTTONUP);
    EXPECT_EQ(taken(), Log());
}

// --- the application's ear

struct Receiver : AmbrelEventReceiver {
    IAmbrel* root = nullptr;
    int calls = 0;
};

TEST_F(HostTest, TheReceiverMayTakeItselfAway)
{
    Receiver receiver;
    receiver.root = root.get();
    receiver.frameworkMessage = [](AmbrelEventReceiver* self, hyper, long, hyper, hyper) {
        auto& own = *static_cast<Receiver*>(self);
        ++own.calls;
        own.root->SetEventRecieve(0);
    };
    receiver.objectEvent = [](AmbrelEventReceiver* self, ISkinObjResBase*, long, hyper, hyper) {
        ++static_cast<Receiver*>(self)->calls;
    };
    root->SetEventRecieve(reinterpret_cast<hyper>(static_cast<AmbrelEventReceiver*>(&receiver)));
    TestControl* a = add("a", {0, 0, 100, 50});
    a->CallEvent(5, 0, 0);
    root->VexMessage(0, 5, 0, 0);
    a->CallEvent(5, 0, 0);
    root->VexMessage(0, 5, 0, 0);
    EXPECT_EQ(receiver.calls, 2);
}

// --- the end of the window inside each kind of callback

class EndTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        a = add("a", {0, 0, 100, 50});
        b = add("b", {100, 0, 200, 50});
        show();
    }
    void endIn(const std::string& entry)
    {
        answers[entry] = [&](const VexNotify&) { end(); };
    }
    void end()
    {
        root.reset();
        DestroyWindow(window);
    }
    void expectEnded()
    {
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(a->count(VEXSM_DESTROYING), 1);
        EXPECT_EQ(b->count(VEXSM_DESTROYING), 1);
    }

    TestControl* a = nullptr;
    TestControl* b = nullptr;
};

TEST_F(EndTest, Painting)
{
    // A window that ends while it is painted must not make the system repaint everybody else's.
    const ComPtr<IAmbrel> other = open(L"Other", {500, 100, 600, 200});
    const HWND otherWindow = windowOf(other.get());
    ShowWindow(otherWindow, SW_SHOWNOACTIVATE);
    UpdateWindow(otherWindow);
    settle();
    ValidateRect(otherWindow, nullptr);
    int drawn = 0;
    a->onDraw = [&](const SkinRect&) {
        ++drawn;
        end();
    };
    a->DirectRedraw(nullptr);
    b->DirectRedraw(nullptr);
    UpdateWindow(window);
    EXPECT_EQ(drawn, 1);
    expectEnded();
    EXPECT_FALSE(GetUpdateRect(otherWindow, nullptr, FALSE));
    DestroyWindow(otherWindow);
}

TEST_F(EndTest, PaintingAtOnce)
{
    a->onDraw = [&](const SkinRect&) { end(); };
    const ComPtr<IAmbrel> hold = root;
    a->DirectRedraw(nullptr);
    SkinRect painted{};
    hold->Present(&painted);
    expectEnded();
}

TEST_F(EndTest, Timer)
{
    endIn("a timer");
    send(WM_TIMER, 5);
    expectEnded();
}

TEST_F(EndTest, Size)
{
    VexPosition all{};
    all.horzPos.nSpaceType = PHST_RIGHTWIDTH;
    all.vertPos.nSpaceType = PHST_RIGHTWIDTH;
    ComPtr<IVexPos> position;
    a->GetPosition(position.put());
    position->SetPosStruct(all);
    a->SetPosition(position.get());
    endIn("a size");
    SetWindowPos(window, nullptr, 0, 0, 350, 250, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    expectEnded();
}

TEST_F(EndTest, Focus)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    a->SetFocus(&done);
    endIn("a blur");
    b->SetFocus(&done);
    expectEnded();
}

TEST_F(EndTest, Drag)
{
    resources->SetDrag(VARIANT_TRUE);
    endIn("b drag over");
    press(10, 10);
    moveTo(60, 20, MK_LBUTTON);
    moveTo(150, 20, MK_LBUTTON);
    expectEnded();
}

TEST_F(EndTest, RegisteredMessage)
{
    words[WM_RBUTTONDOWN] = "press";
    VARIANT_BOOL done = VARIANT_FALSE;
    root->RegisterMessage(WM_RBUTTONDOWN, a, VARIANT_TRUE, &done);
    root->RegisterMessage(WM_RBUTTONDOWN, b, VARIANT_TRUE, &done);
    endIn("a press");
    send(WM_RBUTTONDOWN);
    expectEnded();
}

TEST_F(EndTest, FinalCreation)
{
    words[VEXSM_FINALCREATE] = "finished";
    words[VEXSM_AUTOLOADINIT] = "afresh";
    root->SetIsAutoLoad(VARIANT_TRUE);
    ShowWindow(window, SW_HIDE);
    endIn("a afresh");
    ShowWindow(window, SW_SHOWNOACTIVATE);
    expectEnded();
}

TEST_F(HostTest, ACopyIsWhatTheFirstOneIsToItsUser)
{
    TestControl* const a = add("a", {10, 20, 60, 70});
    a->SetClassId(Bstr(L"{2D97AF66-11FB-4DF7-8D15-960247FF4F60}").get());
    a->VexSetToolTip(Bstr(L"Tip").get());
    a->SetDisposeMouse(VARIANT_FALSE);
    a->SetTabStop(VARIANT_FALSE);
    ComPtr<IVexObj> made;
    ASSERT_EQ(a->Clone(root.get(), made.put()), S_OK);
    const ComPtr<IVexControlBase> copy = made.as<IVexControlBase>();
    Bstr tip;
    copy->VexGetToolTip(tip.put());
    EXPECT_EQ(tip.view(), L"Tip");
    VARIANT_BOOL on = VARIANT_TRUE;
    copy->GetDisposeMouse(&on);
    EXPECT_EQ(on, VARIANT_FALSE);
    on = VARIANT_TRUE;
    copy->IsTabStop(&on);
    EXPECT_EQ(on, VARIANT_FALSE);
    EXPECT_EQ(rectOf(copy.get()).left, 10);
    // A place in another framework's tree cannot be had.
    ComPtr<IVexObj> picture;
    resources->AddResObject(VEXOBJTYPE_IMAGE, nullptr, Bstr(L"Picture").get(), VARIANT_FALSE, picture.put());
    ASSERT_TRUE(picture);
    made.reset();
    EXPECT_EQ(a->Clone(picture.get(), made.put()), E_INVALIDARG);
    EXPECT_FALSE(made);
}

} // namespace
} // namespace ambrel::testing
