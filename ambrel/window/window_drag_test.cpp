// Drags of objects, drops from other programs, and the pointer taken away.
#include "ambrel/window/host_fixture.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <shellapi.h>
#include <shlobj.h>

namespace ambrel::testing {
namespace {

class ObjectDragTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        resources->SetDrag(VARIANT_TRUE);
        words.erase(VEXSM_MOUSEENTER);
        words.erase(VEXSM_MOUSELEAVE);
        words.erase(VEXSM_MOUSEMOVE);
        words.erase(VEXSM_ONSETFOCUS);
        words.erase(VEXSM_ONKILLFOCUS);
        words.erase(VEXSM_SIZE);
        a = add("a", {0, 0, 100, 50});
        b = add("b", {100, 0, 200, 50});
    }

    void startDrag()
    {
        AmbrelAdvanceClock(1000); // not the second press of a double click
        press(10, 10);
        moveTo(60, 20, MK_LBUTTON);
    }
    bool isDragging()
    {
        VARIANT_BOOL on = VARIANT_FALSE;
        root->IsDraging(&on);
        return on != VARIANT_FALSE;
    }
    /// What the record names, as identities only.
    std::pair<ISkinObjResBase*, ISkinObjResBase*> recorded()
    {
        VEX_DRAGINFO info{};
        resources->GetDragInfo(&info);
        for (ISkinObjResBase* each : {info.pFromObj, info.pToObj}) {
            if (each)
                each->Release();
        }
        return {info.pFromObj, info.pToObj};
    }

    TestControl* a = nullptr;
    TestControl* b = nullptr;
};

TEST_F(ObjectDragTest, TheTargetHearsOfTheDropAndTheSourceOfTheEnd)
{
    std::pair<ISkinObjResBase*, ISkinObjResBase*> atDrop;
    answers["b drop"] = [&](const VexNotify& notice) {
        atDrop = recorded();
        EXPECT_EQ(notice.lParam1, reinterpret_cast<hyper>(a->asControl()));
        EXPECT_EQ(notice.lParam2, 150);
        EXPECT_EQ(notice.lParam3, 20);
    };
    startDrag();
    EXPECT_TRUE(isDragging());
    moveTo(150, 20, MK_LBUTTON);
    release(150, 20);
    EXPECT_EQ(taken(), Log({"a down", "a start drag", "a drag over", "b drag over", "b drop", "a drag ended"}));
    EXPECT_EQ(atDrop.first, a->asControl());
    EXPECT_EQ(atDrop.second, b->asControl());
    EXPECT_EQ(recorded(), (std::pair<ISkinObjResBase*, ISkinObjResBase*>())) << "nothing is kept for the next drag";
    EXPECT_FALSE(isDragging());
    EXPECT_NE(GetCapture(), window);
}

TEST_F(ObjectDragTest, ADragGivenUpDropsNowhere)
{
    const std::function<void()> waysToGiveUp[] = {
        [&] { send(WM_KEYDOWN, VK_ESCAPE); },
        [&] { ReleaseCapture(); },
        [&] { a->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE); },
    };
    for (const auto& giveUp : waysToGiveUp) {
        a->SetVisible(VARIANT_TRUE, VARIANT_FALSE, VARIANT_FALSE);
        std::pair<ISkinObjResBase*, ISkinObjResBase*> atEnd{a, a};
        answers["a drag ended"] = [&](const VexNotify&) { atEnd = recorded(); };
        startDrag();
        moveTo(150, 20, MK_LBUTTON);
        taken();
        giveUp();
        release(150, 20);
        EXPECT_EQ(taken(), Log({"a drag ended"}));
        EXPECT_EQ(atEnd.second, nullptr);
        EXPECT_FALSE(isDragging());
    }
}

TEST_F(ObjectDragTest, TheSourceMayEndDuringItsDrag)
{
    answers["b drag over"] = [&](const VexNotify&) {
        resources->ReleasePluginResObject(a);
        letGo(a);
    };
    startDrag();
    moveTo(150, 20, MK_LBUTTON);
    EXPECT_EQ(taken(), Log({"a down", "a start drag", "a drag over", "b drag over", "a destroying"}));
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(recorded().first, nullptr);
    release(150, 20);
    EXPECT_EQ(taken(), Log());
}

TEST_F(ObjectDragTest, AForeignWindowThatAsksForItHearsOfDragsOverIt)
{
    show();
    const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 100, 100, 100, 100, window, nullptr,
                                       nullptr, nullptr);
    static std::vector<std::pair<UINT, LPARAM>> heard;
    heard.clear();
    static WNDPROC former;
    former = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(other, GWLP_WNDPROC,
                          reinterpret_cast<LONG_PTR>(
                              static_cast<WNDPROC>([](HWND w, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
                                  if (message == VEXSM_DRAGING || message == VEXSM_ENDDRAG)
                                      heard.emplace_back(message, lParam);
                                  if (message == WM_NCHITTEST)
                                      return HTCLIENT;
                                  return CallWindowProcW(former, w, message, wParam, lParam);
                              }))));
    EXPECT_EQ(root->RegisterAccecptHwnd(reinterpret_cast<hyper>(other)), S_OK);
    EXPECT_EQ(root->RegisterAccecptHwnd(reinterpret_cast<hyper>(other)), S_FALSE);
    startDrag();
    moveTo(110, 120, MK_LBUTTON);
    release(110, 120);
    const LPARAM at = MAKELPARAM(10, 20);
    EXPECT_EQ(heard, (std::vector<std::pair<UINT, LPARAM>>{{VEXSM_DRAGING, at}, {VEXSM_ENDDRAG, at}}));
    EXPECT_EQ(taken(), Log({"a down", "a start drag", "a drag over", "a drag ended"}));
    DestroyWindow(other);
    EXPECT_EQ(root->RevokeAcceptHwnd(reinterpret_cast<hyper>(other)), S_OK);
    EXPECT_EQ(root->RevokeAcceptHwnd(reinterpret_cast<hyper>(other)), S_FALSE);
}

TEST_F(ObjectDragTest, AnotherWindowOfTheApplicationTakesTheDrag)
{
    show();
    const ComPtr<IAmbrel> second = open(L"Second", {300, 150, 500, 350}); // over a corner of the first, at 100, 100
    add("there", {0, 0, 100, 100}, second.get());
    TestControl* const off = add("off", {100, 0, 200, 100}, second.get());
    VARIANT_BOOL changed = VARIANT_FALSE;
    off->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &changed);
    TestControl* const covered = add("covered", {200, 50, 300, 200});
    const HWND other = windowOf(second.get());
    SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    morvane::Point over;
    answers["there drag over"] = [&](const VexNotify& notice) {
        over = {static_cast<int>(notice.lParam2), static_cast<int>(notice.lParam3)};
    };
    std::pair<ISkinObjResBase*, ISkinObjResBase*> atDrop;
    answers["there drop"] = [&](const VexNotify& notice) {
        atDrop = recorded();
        EXPECT_EQ(notice.lParam1, reinterpret_cast<hyper>(a->asControl()));
    };
    startDrag();
    moveTo(210, 60, MK_LBUTTON); // where the second window lies over an object of the first
    moveTo(310, 60, MK_LBUTTON); // what is disabled hears nothing
    release(250, 70);
    EXPECT_EQ(over, (morvane::Point{10, 10}));
    EXPECT_EQ(taken(), Log({"a down", "a start drag", "a drag over", "there drag over", "there drop", "a drag ended"}));
    EXPECT_EQ(atDrop.second, controls[2]->asControl());
    EXPECT_EQ(recorded(), (std::pair<ISkinObjResBase*, ISkinObjResBase*>()));

    // A window that shows what is dragged lies under the pointer and is nobody's target; nor is a hidden one.
    VEX_DRAGINFO shown{};
    shown.hWnd = reinterpret_cast<hyper>(other);
    resources->SetDragInfo(shown);
    startDrag();
    moveTo(210, 60, MK_LBUTTON);
    send(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(taken(), Log({"a down", "a start drag", "a drag over", "covered drag over", "a drag ended"}));
    resources->SetDragInfo({});
    ShowWindow(other, SW_HIDE);
    startDrag();
    moveTo(210, 60, MK_LBUTTON);
    send(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(taken(), Log({"a down", "a start drag", "a drag over", "covered drag over", "a drag ended"}));
    EXPECT_TRUE(covered->asControl());
    DestroyWindow(other);
}

TEST_F(ObjectDragTest, WindowsOfDifferentSkinsShareTheRecordDuringADrag)
{
    show();
    ComPtr<IVexRes> others;
    ASSERT_EQ(AmbrelCreateRes(others.put()), S_OK);
    std::swap(resources, others);
    const ComPtr<IAmbrel> second = open(L"Second", {500, 100, 600, 200});
    add("there", {0, 0, 100, 100}, second.get());
    std::swap(resources, others);
    ShowWindow(windowOf(second.get()), SW_SHOWNOACTIVATE);
    const auto recordOf = [](IVexRes& of) {
        VEX_DRAGINFO info{};
        of.GetDragInfo(&info);
        for (ISkinObjResBase* each : {info.pFromObj, info.pToObj}) {
            if (each)
                each->Release();
        }
        return info;
    };
    const auto change = [&](IVexRes& of, hyper VEX_DRAGINFO::*field, hyper value) {
        VEX_DRAGINFO info{};
        of.GetDragInfo(&info);
        info.*field = value;
        of.SetDragInfo(info);
        for (ISkinObjResBase* each : {info.pFromObj, info.pToObj}) {
            if (each)
                each->Release();
        }
    };
    change(*others.get(), &VEX_DRAGINFO::hBitmap, 5); // how that skin shows drags
    answers["a start drag"] = [&](const VexNotify&) { change(*resources.get(), &VEX_DRAGINFO::hData1, 7); };
    VEX_DRAGINFO seenThere{};
    answers["there drop"] = [&](const VexNotify&) {
        seenThere = recordOf(*others.get());
        change(*others.get(), &VEX_DRAGINFO::hTargetItem, 9);
    };
    VEX_DRAGINFO seenAtEnd{};
    answers["a drag ended"] = [&](const VexNotify&) { seenAtEnd = recordOf(*resources.get()); };
    startDrag();
    moveTo(450, 50, MK_LBUTTON);
    release(450, 50);
    EXPECT_EQ(seenThere.pFromObj, a->asControl());
    EXPECT_EQ(seenThere.hData1, 7);
    EXPECT_EQ(seenThere.hBitmap, 5);
    EXPECT_EQ(seenAtEnd.hTargetItem, 9);
    EXPECT_EQ(seenAtEnd.hBitmap, 0);
    for (IVexRes* each : {resources.get(), others.get()}) {
        EXPECT_EQ(recordOf(*each).pFromObj, nullptr);
        EXPECT_EQ(recordOf(*each).hData1, 0);
        EXPECT_EQ(recordOf(*each).hTargetItem, 0);
    }
    EXPECT_EQ(recordOf(*others.get()).hBitmap, 5);
    DestroyWindow(windowOf(second.get()));
}

TEST_F(HostTest, CapturedForTheApplicationThePressedObjectGetsEveryMove)
{
    TestControl* a = add("a", {0, 0, 50, 50});
    answers["a down"] = [&](const VexNotify&) { root->SetCapture(VARIANT_TRUE); };
    press(10, 10);
    taken();
    moveTo(250, 100, MK_LBUTTON); // far outside of it
    EXPECT_EQ(taken(), Log({"a move"}));
    EXPECT_EQ(GetCapture(), window);
    answers["a up"] = [&](const VexNotify&) { root->SetCapture(VARIANT_FALSE); };
    release(250, 100);
    const Log told = taken();
    EXPECT_EQ(std::count(told.begin(), told.end(), "a up"), 1);
    EXPECT_NE(GetCapture(), window);
    VARIANT_BOOL down = VARIANT_TRUE;
    a->IsLButtonDowned(&down);
    EXPECT_EQ(down, VARIANT_FALSE);
}

TEST_F(HostTest, AnObjectThatCannotBeUsedCannotHaveThePointer)
{
    TestControl* a = add("a", {0, 0, 50, 50});
    VARIANT_BOOL changed = VARIANT_FALSE;
    a->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &changed);
    EXPECT_EQ(root->SetCaptureCtrl(a), S_FALSE);
    moveTo(200, 100);
    EXPECT_EQ(taken(), Log());
    EXPECT_NE(GetCapture(), window);
    a->EnableObject(VARIANT_TRUE, VARIANT_FALSE, &changed);
    EXPECT_EQ(root->SetCaptureCtrl(a), S_OK);
    moveTo(200, 100);
    EXPECT_EQ(taken(), Log({"a move"}));
    EXPECT_EQ(root->ReleaseCaptureCtrl(), S_OK);
}

TEST_F(HostTest, AnotherWindowThatTakesThePointerEndsThePress)
{
    TestControl* a = add("a", {0, 0, 100, 50});
    press(10, 10);
    EXPECT_EQ(GetCapture(), window);
    const ComPtr<IAmbrel> second = open(L"Second", {500, 100, 600, 200});
    SetCapture(windowOf(second.get()));
    VARIANT_BOOL down = VARIANT_TRUE;
    a->IsLButtonDowned(&down);
    EXPECT_EQ(down, VARIANT_FALSE);
    EXPECT_EQ(GetCapture(), windowOf(second.get())) << "what was taken is not taken back";
    ReleaseCapture();
    taken();
    release(10, 10);
    EXPECT_EQ(taken(), Log());
    DestroyWindow(windowOf(second.get()));
}

// --- windows that are dragged by an outline

class OutlineTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        root->SetDragabled(VARIANT_TRUE);
        root->SetDragFullWindow(VARIANT_FALSE);
        show();
        before = placeOf(window);
    }
    static HWND outline() { return FindWindowW(L"AmbrelOutline", nullptr); }
    static morvane::Rect placeOf(HWND of)
    {
        RECT place{};
        GetWindowRect(of, &place);
        return morvane::fromWin32(place);
    }
    void grip(WPARAM command, int x, int y)
    {
        POINT at{x, y};
        ClientToScreen(window, &at);
        send(WM_SYSCOMMAND, command, MAKELPARAM(at.x, at.y));
    }

    morvane::Rect before;
};

TEST_F(OutlineTest, TheWindowFollowsWhenTheButtonIsReleased)
{
    press(10, 10);
    EXPECT_FALSE(outline());
    moveTo(60, 40, MK_LBUTTON);
    ASSERT_TRUE(outline());
    EXPECT_EQ(placeOf(outline()), before.shifted(50, 30));
    EXPECT_EQ(placeOf(window), before);
    EXPECT_EQ(GetCapture(), window);
    moveTo(-20, 40, MK_LBUTTON);
    EXPECT_EQ(placeOf(outline()), before.shifted(-30, 30));
    release(-40, 50);
    EXPECT_FALSE(outline());
    EXPECT_EQ(placeOf(window), before.shifted(-50, 40));
    EXPECT_NE(GetCapture(), window);
}

TEST_F(OutlineTest, GivenUpTheWindowStaysWhereItWas)
{
    const std::function<void()> waysToGiveUp[] = {[&] { send(WM_KEYDOWN, VK_ESCAPE); }, [] { ReleaseCapture(); }};
    for (const auto& giveUp : waysToGiveUp) {
        grip(SC_MOVE | HTCAPTION, 10, 10);
        moveTo(60, 40, MK_LBUTTON);
        ASSERT_TRUE(outline());
        giveUp();
        EXPECT_FALSE(outline());
        release(60, 40);
        EXPECT_EQ(placeOf(window), before);
    }
    grip(SC_MOVE | HTCAPTION, 10, 10);
    DestroyWindow(window);
    EXPECT_FALSE(outline());
}

TEST_F(OutlineTest, AnEdgeStopsAtTheLeastSizeAndTheObjectsHearOnce)
{
    TestControl* const a = add("a", {0, 0, 50, 50});
    root->RegisterMessage(WM_SIZING, a, VARIANT_FALSE, std::array<VARIANT_BOOL, 1>().data());
    words = {{WM_SIZING, "sizing"}, {VEXSM_SIZE, "size"}};
    SkinSize least{200, 150};
    root->SetMinSize(&least);
    grip(SC_SIZE | WMSZ_TOPLEFT, 0, 0);
    moveTo(500, 20, MK_LBUTTON);
    const morvane::Rect wanted{before.right - 200, before.top + 20, before.right, before.bottom};
    EXPECT_EQ(placeOf(outline()), wanted);
    release(500, 20);
    EXPECT_EQ(placeOf(window), wanted);
    EXPECT_EQ(taken(), Log({"a sizing"}));
    EXPECT_EQ(rectOf(root.get()).right, 200);
}

// --- drops from other programs

class DataObject final : public IDataObject {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDataObject;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; } // lives on the stack
    STDMETHODIMP GetData(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
    STDMETHODIMP QueryGetData(FORMATETC*) override { return DV_E_FORMATETC; }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }
    ULONG references = 1;
};

/// Moves the pointer along a path, then drops (or gives up).
class DropSource final : public IDropSource {
public:
    DropSource(std::vector<POINT> path, HRESULT end) : m_path(std::move(path)), m_end(end) {}
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDropSource;
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP QueryContinueDrag(BOOL, DWORD) override
    {
        if (m_next == m_path.size())
            return m_end;
        const POINT at = m_path[m_next++];
        SetCursorPos(at.x, at.y);
        mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
        return S_OK;
    }
    STDMETHODIMP GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

private:
    std::vector<POINT> m_path;
    std::size_t m_next = 0;
    HRESULT m_end;
};

class OleDropTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        initialised = SUCCEEDED(OleInitialize(nullptr));
        words = {{VEXSM_PRE_DODRAGDROP, "over"},
                 {VEXSM_DODRAGDROP, "drop"},
                 {VEXSM_POST_DODRAGDROP, "end"},
                 {VEXSM_DESTROYING, "destroying"}};
        add("a", {0, 0, 100, 200});
        add("b", {100, 0, 200, 200});
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        show();
        ASSERT_EQ(root->RegisterDropTarget(), S_OK);
        EXPECT_EQ(root->RegisterDropTarget(), S_FALSE);
    }
    void TearDown() override
    {
        HostTest::TearDown();
        EXPECT_EQ(data.references, 1u);
        if (initialised)
            OleUninitialize();
    }

    /// Points are in the window. Answers the effect that the source is told.
    DWORD drag(std::vector<POINT> path, HRESULT end = DRAGDROP_S_DROP)
    {
        for (POINT& each : path)
            ClientToScreen(window, &each);
        SetCursorPos(path.front().x, path.front().y);
        mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
        DropSource source(path, end);
        DWORD effect = DROPEFFECT_NONE;
        // Something must come in for the platform to ask the source again.
        const UINT_PTR pulse = SetTimer(nullptr, 0, 10, nullptr);
        result = DoDragDrop(&data, &source, DROPEFFECT_COPY | DROPEFFECT_MOVE, &effect);
        KillTimer(nullptr, pulse);
        log.erase(std::unique(log.begin(), log.end()), log.end()); // how often it asks is the platform's business
        return effect;
    }
    static std::function<void(const VexNotify&)> choosing(DWORD effect)
    {
        return [effect](const VexNotify& notice) { *reinterpret_cast<DWORD*>(notice.lParam4) = effect; };
    }

    DataObject data;
    HRESULT result = E_FAIL;
    bool initialised = false;
};

TEST_F(OleDropTest, TheControlUnderThePointerChoosesWhatTheDropDoes)
{
    answers["a over"] = choosing(DROPEFFECT_COPY);
    answers["b over"] = choosing(DROPEFFECT_MOVE);
    hyper dropped = 0;
    answers["b drop"] = [&](const VexNotify& notice) {
        dropped = notice.lParam1;
        choosing(DROPEFFECT_MOVE | DROPEFFECT_LINK)(notice); // a link was not offered
    };
    const DWORD effect = drag({{50, 50}, {150, 50}, {151, 51}});
    EXPECT_EQ(result, DRAGDROP_S_DROP);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_MOVE));
    EXPECT_EQ(taken(), Log({"a over", "a end", "b over", "b drop", "b end"}));
    EXPECT_NE(dropped, 0);
}

TEST_F(OleDropTest, AControlThatChoosesNothingTakesNothing)
{
    EXPECT_EQ(drag({{50, 50}, {51, 51}}), static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(taken(), Log({"a over", "a end"}));
    answers["a over"] = choosing(DROPEFFECT_COPY);
    drag({{50, 50}, {51, 51}}, DRAGDROP_S_CANCEL);
    EXPECT_EQ(taken(), Log({"a over", "a end"}));
}

TEST_F(OleDropTest, TheWindowMayEndInTheMiddleOfADrop)
{
    answers["a over"] = choosing(DROPEFFECT_COPY);
    answers["a drop"] = [&](const VexNotify&) {
        root.reset();
        DestroyWindow(window);
    };
    drag({{50, 50}, {51, 51}});
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(taken(), Log({"a over", "a drop", "a destroying", "b destroying"}));
}

HDROP filesAt(int x, int y)
{
    static constexpr wchar_t kFiles[] = L"C:\\one.txt\0C:\\two.txt\0";
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + sizeof kFiles);
    auto* const head = static_cast<DROPFILES*>(GlobalLock(memory));
    head->pFiles = sizeof(DROPFILES);
    head->pt = {x, y};
    head->fWide = TRUE;
    std::memcpy(head + 1, kFiles, sizeof kFiles);
    GlobalUnlock(memory);
    return reinterpret_cast<HDROP>(memory);
}

TEST_F(HostTest, FilesGoToWhatAskedForThemAndLiesOnTop)
{
    words = {{WM_DROPFILES, "files"}};
    TestControl* panel = add("panel", {0, 0, 200, 200});
    TestControl* field = add("field", {0, 0, 100, 100}, panel);
    UINT count = 0;
    answers["field files"] = [&](const VexNotify& notice) {
        count = DragQueryFileW(reinterpret_cast<HDROP>(notice.lParam1), 0xFFFFFFFF, nullptr, 0);
    };
    EXPECT_EQ(root->RegisterAcceptFile(field, 1), S_OK);
    EXPECT_EQ(root->RegisterAcceptFile(panel, 1), S_OK); // later, but beneath
    EXPECT_EQ(root->RegisterAcceptFile(nullptr, 1), E_INVALIDARG);
    EXPECT_TRUE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
    const auto drop = [&](int x, int y) { send(WM_DROPFILES, reinterpret_cast<WPARAM>(filesAt(x, y))); };
    drop(50, 50);
    drop(150, 150);
    drop(250, 150); // nobody's
    EXPECT_EQ(taken(), Log({"field files", "panel files"}));
    EXPECT_EQ(count, 2u);
    VARIANT_BOOL done = VARIANT_FALSE;
    field->Remove(&done); // still alive, but in no window
    drop(50, 50);
    EXPECT_EQ(taken(), Log({"panel files"}));
    panel->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &done);
    drop(150, 150);
    EXPECT_EQ(taken(), Log());
    panel->EnableObject(VARIANT_TRUE, VARIANT_FALSE, &done);
    answers["panel files"] = [&](const VexNotify&) { DestroyWindow(window); };
    drop(150, 150);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(HostTest, ARequestForFilesBeforeTheWindowIsMadeHolds)
{
    ComPtr<IDispatch> made;
    resources->CreateAmbrel(Bstr(L"Late").get(), 0, made.put());
    const ComPtr<IAmbrel> late = made.as<IAmbrel>();
    TestControl* const field = add("field", {0, 0, 100, 100}, late.get());
    late->RegisterAcceptFile(field, 1);
    VARIANT_BOOL created = VARIANT_FALSE;
    late->Create(0, {0, 0, 100, 100}, &created);
    EXPECT_TRUE(GetWindowLongPtrW(windowOf(late.get()), GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
    DestroyWindow(windowOf(late.get()));
}

} // namespace
} // namespace ambrel::testing
