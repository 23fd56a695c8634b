// A window and its desktop: resolution, transparency, visibility, companions.
#include "ambrel/window/host_fixture.h"
#include "frame/platform/handles.h"

#include <algorithm>

namespace ambrel::testing {
namespace {

constexpr std::uint32_t kGround = 0xFFF3F4F7;

/// Fills itself with one colour (0xBBGGRR).
void paintWith(TestControl* control, OLE_COLOR colour)
{
    control->onRender = [colour](IVexRenderDC& dc, SkinRect rect) {
        VARIANT_BOOL done = VARIANT_FALSE;
        dc.FillSolidColor(&rect, colour, &done);
    };
}

LRESULT changeDpi(HWND window, int dpi, RECT place)
{
    return SendMessageW(window, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                        reinterpret_cast<LPARAM>(&place));
}

TEST_F(HostTest, AnotherResolutionAndBackShowsTheSamePixelsAndKeepsTheState)
{
    TestControl* panel = add("panel", {7, 9, 207, 159});
    TestControl* field = add("field", {13, 21, 54, 46}, panel);
    paintWith(panel, 0x3366CC);
    paintWith(field, 0x11AA55);
    VARIANT_BOOL done = VARIANT_FALSE;
    field->SetFocus(&done);
    const auto before = picture(root.get(), 300, 200);
    // Odd steps up and down must not add up their roundings.
    for (const int dpi : {144, 120, 168, 192, 120, 144})
        changeDpi(window, dpi, {100, 100, 100 + 300 * dpi / 96, 100 + 200 * dpi / 96});
    const SkinRect grown = rectOf(field);
    EXPECT_EQ(grown.left, 20);  // 13 at 150 percent: 19.5
    EXPECT_EQ(grown.right, 82); // and 41 wide: 61.5
    EXPECT_EQ(rectOf(root.get()).right, 450);
    taken();
    changeDpi(window, 96, {100, 100, 400, 300});
    EXPECT_GE(field->count(VEXSM_SIZE), 1);
    EXPECT_EQ(rectOf(field).left, 13);
    EXPECT_EQ(rectOf(field).bottom, 46);
    EXPECT_EQ(picture(root.get(), 300, 200), before);
    ComPtr<ISkinObjResBase> focused;
    root->GetCurrentFocusObject(focused.put());
    EXPECT_EQ(focused.get(), field->asControl());
    const Log told = taken();
    EXPECT_EQ(std::count(told.begin(), told.end(), "field blur"), 0);
}

TEST_F(HostTest, WhatWasMovedAtAnotherResolutionStaysWhereItWasMovedTo)
{
    TestControl* field = add("field", {10, 10, 50, 30});
    changeDpi(window, 192, {100, 100, 700, 500});
    SkinRect moved{100, 100, 200, 140};
    long changed = 0;
    field->Resize(&moved, &changed);
    changeDpi(window, 96, {100, 100, 400, 300});
    EXPECT_EQ(rectOf(field).left, 50);
    EXPECT_EQ(rectOf(field).right, 100);
    EXPECT_EQ(send(WM_DPICHANGED, MAKEWPARAM(192, 192), 0), 0) << "no rectangle suggested";
    EXPECT_EQ(rectOf(field).left, 100);
}

// --- transparency

TEST_F(HostTest, APerPixelWindowIsLayeredAndLetsThePointerThroughWhereNothingIsDrawn)
{
    TestControl* field = add("field", {50, 50, 100, 100});
    paintWith(field, 0x11AA55);
    EXPECT_EQ(root->SetSupportPerPixel(VARIANT_TRUE), S_OK);
    EXPECT_EQ(root->SetSupportPerPixel(VARIANT_TRUE), S_FALSE);
    EXPECT_TRUE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYERED);
    show();
    const auto hit = [&](int x, int y) {
        POINT at{x, y};
        ClientToScreen(window, &at);
        return send(WM_NCHITTEST, 0, MAKELPARAM(at.x, at.y));
    };
    EXPECT_EQ(hit(75, 75), HTCLIENT);
    EXPECT_EQ(hit(10, 10), HTTRANSPARENT);
    root->ResizeSence(200, 150);
    UpdateWindow(window);
    EXPECT_EQ(hit(75, 75), HTCLIENT);
    EXPECT_EQ(hit(150, 120), HTTRANSPARENT);
    EXPECT_EQ(root->SetSupportPerPixel(VARIANT_FALSE), S_OK);
    UpdateWindow(window);
    EXPECT_FALSE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYERED);
    EXPECT_EQ(hit(10, 10), HTCLIENT);
}

TEST_F(HostTest, AnOpacityOfTheRootIsThatOfItsWindow)
{
    const auto shown = [&]() -> int {
        BYTE opacity = 0;
        DWORD flags = 0;
        return GetLayeredWindowAttributes(window, nullptr, &opacity, &flags) && (flags & LWA_ALPHA) ? opacity : -1;
    };
    EXPECT_EQ(shown(), -1);
    root->SetOpacity(128);
    EXPECT_EQ(shown(), 128);
    short opacity = 0;
    root->GetOpacity(&opacity);
    EXPECT_EQ(opacity, 128);
    root->SetOpacity(300); // the most there is
    EXPECT_EQ(shown(), -1);
}

TEST_F(HostTest, OpacitiesOfAncestorsMultiply)
{
    TestControl* panel = add("panel", {0, 0, 100, 100});
    TestControl* field = add("field", {0, 0, 100, 100}, panel);
    paintWith(field, 0x000000);
    panel->SetOpacity(128);
    field->SetOpacity(128);
    const std::uint32_t pixel = picture(root.get(), 300, 200)[50 * 300 + 50];
    // A quarter of black over the ground.
    EXPECT_NEAR(pixel & 0xFF, 0xF7 * 3 / 4, 3);
    panel->SetOpacity(0);
    EXPECT_EQ(picture(root.get(), 300, 200)[50 * 300 + 50], kGround);
}

TEST_F(HostTest, WhatAncestorsForbidHolds)
{
    TestControl* panel = add("panel", {0, 0, 100, 100});
    TestControl* field = add("field", {0, 0, 100, 100}, panel);
    VARIANT_BOOL on = VARIANT_FALSE;
    panel->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &on);
    field->IsEnable(&on);
    EXPECT_EQ(on, VARIANT_FALSE);
    press(10, 10);
    release(10, 10);
    EXPECT_EQ(taken(), Log());
    EXPECT_EQ(field->SetFocus(&on), S_FALSE);
    panel->EnableObject(VARIANT_TRUE, VARIANT_FALSE, &on);
    panel->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    press(10, 10);
    release(10, 10);
    EXPECT_EQ(taken(), Log());
    panel->SetVisible(VARIANT_TRUE, VARIANT_FALSE, VARIANT_FALSE);
    press(10, 10);
    EXPECT_EQ(field->count(VEXSM_LBUTTONDOWN), 1);
}

// --- showing

TEST_F(HostTest, AWindowFadedOutAndShownByOthersShowsItsObjects)
{
    TestControl* field = add("field", {0, 0, 100, 100});
    VARIANT_BOOL visible = VARIANT_TRUE;
    root->IsVisible(&visible);
    EXPECT_EQ(visible, VARIANT_FALSE);
    for (const VEX_FADE_TYPE type : {VEX_FADE_DOWN, VEX_FADE_UP, VEX_FADE_RIGHT, VEX_FADE_LEFT, VEX_FADE_IN}) {
        EXPECT_EQ(root->FadeShow(VARIANT_TRUE, type), S_OK);
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_EQ(root->FadeShow(VARIANT_FALSE, type), S_OK);
        EXPECT_FALSE(IsWindowVisible(window));
    }
    EXPECT_EQ(field->count(VEXSM_FINALCREATE), 1);
    root->SetVisible(VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    ComPtr<ISkinObjResBase> met;
    EXPECT_EQ(root->GetVexControlByPt(50, 50, met.put()), S_OK);
    root->IsVisible(&visible);
    EXPECT_EQ(visible, VARIANT_TRUE);
}

TEST_F(HostTest, APerPixelWindowFadesByItsOwnOpacity)
{
    AmbrelRunClock();
    TestControl* field = add("field", {50, 50, 100, 100});
    paintWith(field, 0x11AA55);
    root->SetSupportPerPixel(VARIANT_TRUE);
    root->FadeShow(VARIANT_TRUE, VEX_FADE_IN);
    EXPECT_TRUE(IsWindowVisible(window));
    root->FadeShow(VARIANT_FALSE, VEX_FADE_IN);
    EXPECT_FALSE(IsWindowVisible(window));
    AmbrelFreezeClock();
}

TEST_F(HostTest, AWindowThatStartsAfreshTellsItsObjectsEachTimeButTheFirst)
{
    add("field", {0, 0, 100, 100});
    root->SetIsAutoLoad(VARIANT_TRUE);
    for (int i = 0; i < 3; ++i) {
        ShowWindow(window, SW_SHOWNOACTIVATE);
        ShowWindow(window, SW_HIDE);
    }
    const Log told = taken();
    EXPECT_EQ(std::count(told.begin(), told.end(), "field afresh"), 2);
}

TEST_F(HostTest, MinimizedAndBackOrMaximizedTheObjectsFollow)
{
    TestControl* field = add("field", {0, 0, 300, 200});
    VexPosition all{};
    all.horzPos.nSpaceType = PHST_RIGHTWIDTH;
    all.vertPos.nSpaceType = PHST_RIGHTWIDTH;
    ComPtr<IVexPos> position;
    field->GetPosition(position.put());
    position->SetPosStruct(all);
    field->SetPosition(position.get());
    show();
    ShowWindow(window, SW_SHOWMINNOACTIVE);
    EXPECT_EQ(rectOf(field).right, 300);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    EXPECT_EQ(rectOf(field).right, 300);
    ShowWindow(window, SW_MAXIMIZE);
    RECT client{};
    GetClientRect(window, &client);
    EXPECT_GT(client.right, 300);
    EXPECT_EQ(rectOf(field).right, client.right);
    ShowWindow(window, SW_RESTORE);
    EXPECT_EQ(rectOf(field).right, 300);
}

// --- painting

TEST_F(HostTest, OnlyTheFrozenPartKeepsItsPicture)
{
    TestControl* field = add("field", {0, 0, 200, 100});
    int drawn = 0;
    SkinRect last{};
    field->onDraw = [&](const SkinRect& rect) {
        ++drawn;
        last = rect;
    };
    show();
    drawn = 0;
    root->SetFreezeDrawRect({0, 0, 100, 100});
    root->FreezeUpdate(VARIANT_TRUE);
    SkinRect inside{10, 10, 50, 50};
    field->DirectRedraw(&inside);
    UpdateWindow(window);
    EXPECT_EQ(drawn, 0);
    SkinRect across{80, 10, 150, 50};
    field->DirectRedraw(&across);
    UpdateWindow(window);
    EXPECT_EQ(drawn, 1);
    EXPECT_EQ(last.left, 100);
    EXPECT_EQ(last.right, 150);
    root->FreezeUpdate(VARIANT_FALSE);
    UpdateWindow(window);
    EXPECT_GE(drawn, 2) << "what waited is shown";
}

TEST_F(HostTest, AWindowThatRefreshesAllDrawsAllForAnyPart)
{
    TestControl* field = add("field", {0, 0, 100, 50});
    SkinRect last{};
    field->onDraw = [&](const SkinRect& rect) { last = rect; };
    show();
    EXPECT_EQ(root->SetRefreshType(VEX_REFRESH_ERROR), E_INVALIDARG);
    EXPECT_EQ(root->SetRefreshType(VEX_REFRESH_ALL), S_OK);
    SkinRect part{10, 10, 20, 20};
    field->DirectRedraw(&part);
    UpdateWindow(window);
    EXPECT_EQ(last.right, 100);
    root->SetRefreshType(VEX_REFRESH_PART);
    field->DirectRedraw(&part);
    UpdateWindow(window);
    EXPECT_EQ(last.right, 20);
}

TEST_F(HostTest, AChildWindowThatBlendsShowsWhatItsParentShowsThere)
{
    TestControl* panel = add("panel", {0, 0, 300, 200});
    paintWith(panel, 0x0000FF); // red
    show();
    const ComPtr<IAmbrel> child = open(L"Child", {50, 50, 150, 150}, window);
    EXPECT_EQ(picture(child.get(), 100, 100)[0], kGround);
    EXPECT_EQ(GetAncestor(windowOf(child.get()), GA_PARENT), window);
    EXPECT_EQ(child->SetParentBlend(VARIANT_TRUE), S_OK);
    EXPECT_EQ(picture(child.get(), 100, 100)[0], 0xFFFF0000);
    const HWND childWindow = windowOf(child.get());
    TestControl* inner = add("inner", {0, 0, 10, 10}, child.get());
    int drawn = 0;
    inner->onDraw = [&](const SkinRect&) { ++drawn; };
    ShowWindow(childWindow, SW_SHOWNOACTIVATE);
    UpdateWindow(childWindow);
    settle();
    drawn = 0;
    paintWith(panel, 0x00FF00);
    panel->DirectRedraw(nullptr);
    UpdateWindow(window);
    settle();
    EXPECT_GE(drawn, 1) << "its ground has changed";
    EXPECT_EQ(picture(child.get(), 100, 100)[99 * 100 + 99], 0xFF00FF00);
    child->SetParentBlend(VARIANT_FALSE);
    EXPECT_EQ(picture(child.get(), 100, 100)[0], kGround);
    DestroyWindow(childWindow);
}

TEST_F(HostTest, AWindowBecomesAChildAndItsOwnAgain)
{
    hyper made = 0;
    ASSERT_EQ(resources->CreateVexWindow(Bstr(L"Inner").get(), reinterpret_cast<hyper>(window), WS_CHILD, &made), S_OK);
    const auto inner = reinterpret_cast<HWND>(made);
    EXPECT_EQ(GetAncestor(inner, GA_PARENT), window);
    ComPtr<IDispatch> found;
    resources->GetAmbrelForm(Bstr(L"Inner").get(), found.put());
    const ComPtr<IAmbrel> innerRoot = found.as<IAmbrel>();
    found.reset();
    innerRoot->SetPopWindow(VARIANT_TRUE);
    EXPECT_EQ(GetAncestor(inner, GA_PARENT), GetDesktopWindow());
    EXPECT_EQ(GetWindow(inner, GW_OWNER), window);
    DestroyWindow(inner);
}

TEST_F(HostTest, AWindowPrintsItselfOnAnyContext)
{
    TestControl* panel = add("panel", {0, 0, 300, 200});
    paintWith(panel, 0x0000FF);
    const morvane::WindowDc screen(nullptr);
    const morvane::UniqueMemoryDc dc(CreateCompatibleDC(screen.get()));
    const morvane::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.get(), 300, 200));
    const morvane::SelectedObject selected(dc.get(), bitmap.get());
    send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc.get()), PRF_CLIENT);
    EXPECT_EQ(GetPixel(dc.get(), 150, 100), static_cast<COLORREF>(0x0000FF));
}

// --- frame and place

TEST_F(HostTest, RegionsOfTheApplicationActAsTheWindowsFrame)
{
    class SubRegion : public morvane::Dispatch<IVexSkinSubRgn> {
    public:
        HRESULT finalConstruct() { return S_OK; }
        void finalRelease() {}
        void* findInterface(REFIID iid)
        {
            return iid == morvane::iidOf<IVexSkinSubRgn>() ? static_cast<IVexSkinSubRgn*>(this) : nullptr;
        }
        STDMETHODIMP SetObjPtr(hyper pointer) noexcept override { return m_pointer = pointer, S_OK; }
        STDMETHODIMP GetObjPtr(hyper* pointer) noexcept override { return *pointer = m_pointer, S_OK; }

    private:
        hyper m_pointer = 0;
    };
    const morvane::UniqueRegion corner(CreateRectRgn(270, 170, 300, 200));
    const auto region = morvane::Instance<SubRegion>::make();
    region->SetObjPtr(reinterpret_cast<hyper>(corner.get()));
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(root->AddNCRgn(VEX_NCRGN_BOTTOMRIGHT, region.get(), &done), S_OK);
    EXPECT_EQ(root->AddNCRgn(VEX_NCRGN_BOTTOMRIGHT, region.get(), &done), S_FALSE);
    EXPECT_EQ(root->AddNCRgn(VEX_NCRGN_LEFT, nullptr, &done), S_FALSE);
    const auto hit = [&] { return send(WM_NCHITTEST, 0, MAKELPARAM(385, 285)); };
    EXPECT_EQ(hit(), HTCLIENT);
    root->SetUseRgnInfo(VARIANT_TRUE);
    EXPECT_EQ(hit(), HTBOTTOMRIGHT);
    EXPECT_EQ(root->RemoveNCRgn(VEX_NCRGN_BOTTOMRIGHT, Bstr(L"Corner").get(), &done), S_FALSE) << "it has no name";
    EXPECT_EQ(root->RemoveAllNCRgns(VEX_NCRGN_LEFT, &done), S_FALSE);
    EXPECT_EQ(root->RemoveAllNCRgns(VEX_NCRGN_BOTTOMRIGHT, &done), S_OK);
    EXPECT_EQ(hit(), HTCLIENT);
}

TEST_F(HostTest, TheRectangleOfARootIsItsWindowsClientArea)
{
    SkinRect wanted{0, 0, 260, 180};
    long changed = 0;
    EXPECT_EQ(root->Resize(&wanted, &changed), S_OK);
    RECT client{};
    GetClientRect(window, &client);
    EXPECT_EQ(client.right, 260);
    EXPECT_EQ(client.bottom, 180);
    EXPECT_EQ(root->Resize(&wanted, &changed), S_FALSE);
    EXPECT_EQ(root->Center(), S_OK);
    RECT place{};
    GetWindowRect(window, &place);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    EXPECT_EQ(place.left, (monitor.rcWork.left + monitor.rcWork.right - 260) / 2);
}

TEST_F(HostTest, WindowsThatFollowEachOtherMoveOnce)
{
    const ComPtr<IAmbrel> second = open(L"Second", {500, 100, 600, 200});
    const HWND other = windowOf(second.get());
    EXPECT_EQ(root->RegSyncMoveWindow(reinterpret_cast<hyper>(window), nullptr), E_INVALIDARG);
    EXPECT_EQ(root->RegSyncMoveWindow(reinterpret_cast<hyper>(other), nullptr), S_OK);
    EXPECT_EQ(second->RegSyncMoveWindow(reinterpret_cast<hyper>(window), nullptr), S_OK);
    const HWND child = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 20, 30, 10, 10, window, nullptr, nullptr, nullptr);
    root->RegSyncMoveWindow(reinterpret_cast<hyper>(child), nullptr);
    const auto cornerOf = [](HWND of) {
        RECT place{};
        GetWindowRect(of, &place);
        return morvane::Point{static_cast<int>(place.left), static_cast<int>(place.top)};
    };
    SetWindowPos(window, nullptr, 130, 140, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(cornerOf(window), (morvane::Point{130, 140}));
    EXPECT_EQ(cornerOf(other), (morvane::Point{530, 140}));
    EXPECT_EQ(cornerOf(child), (morvane::Point{150, 170})) << "a child is where its parent is";
    SetWindowPos(other, nullptr, 500, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(cornerOf(window), (morvane::Point{100, 100}));
    DestroyWindow(other);
}

TEST_F(HostTest, ARootShownWithItsObjectsIsAWindowThatIsShown)
{
    TestControl* const a = add("a", {0, 0, 50, 50});
    VARIANT_BOOL shown = VARIANT_TRUE;
    root->SetVisibleEx(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    a->IsVisible(&shown);
    EXPECT_EQ(shown, VARIANT_FALSE);
    root->SetVisibleEx(VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE);
    a->IsVisible(&shown);
    EXPECT_EQ(shown, VARIANT_TRUE);
    EXPECT_TRUE(IsWindowVisible(window));
    root->SetVisibleEx(VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
    EXPECT_FALSE(IsWindowVisible(window));
}

TEST_F(HostTest, WhatIsNoDeviceContextOrWindowIsRefused)
{
    VARIANT_BOOL drawn = VARIANT_TRUE;
    EXPECT_EQ(root->Draw(0, {0, 0, 10, 10}, &drawn), E_INVALIDARG);
    EXPECT_EQ(drawn, VARIANT_FALSE);
    drawn = VARIANT_TRUE;
    EXPECT_EQ(root->Draw(reinterpret_cast<hyper>(window), {0, 0, 10, 10}, &drawn), E_INVALIDARG);
    EXPECT_EQ(drawn, VARIANT_FALSE);
    TestControl* const a = add("a", {0, 0, 50, 50});
    EXPECT_EQ(a->SetOwnerHwnd(0x123456), E_INVALIDARG);
    hyper stands = 0;
    a->GetWindow(&stands);
    EXPECT_EQ(stands, reinterpret_cast<hyper>(window));
}

TEST_F(HostTest, CompanionsMoveAlongUntilTheirControlEnds)
{
    TestControl* field = add("field", {0, 0, 100, 100});
    const HWND first = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 120, 130, 10, 10, window, nullptr,
                                       nullptr, nullptr);
    const HWND second = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 140, 130, 10, 10, window, nullptr,
                                        nullptr, nullptr);
    EXPECT_EQ(root->RegSyncMoveWindow(0x1234, field), S_FALSE);
    EXPECT_EQ(root->RegSyncMoveWindow(reinterpret_cast<hyper>(first), field), S_OK);
    EXPECT_EQ(root->RegSyncMoveWindow(reinterpret_cast<hyper>(second), nullptr), S_OK);
    const auto moveBy = [&](int x) {
        RECT place{};
        GetWindowRect(window, &place);
        SetWindowPos(window, nullptr, place.left + x, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    const auto left = [](HWND of) {
        RECT place{};
        GetWindowRect(of, &place);
        return place.left;
    };
    moveBy(30);
    EXPECT_EQ(left(first), 150);
    EXPECT_EQ(left(second), 170);
    VARIANT_BOOL done = VARIANT_FALSE;
    field->Remove(&done);
    letGo(field);
    moveBy(30);
    EXPECT_EQ(left(first), 150);
    EXPECT_EQ(left(second), 200);
    show();
    ShowWindow(window, SW_SHOWMINNOACTIVE);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    EXPECT_EQ(left(second), 200);
    EXPECT_EQ(root->UnRegSyncMoveWindow(reinterpret_cast<hyper>(second)), S_OK);
    EXPECT_EQ(root->UnRegSyncMoveWindow(reinterpret_cast<hyper>(second)), S_FALSE);
    DestroyWindow(first);
    DestroyWindow(second);
}

TEST_F(HostTest, AForeignWindowThatTakesTheKeyboardGivesTheFocusToTheObjectItBelongsTo)
{
    show(SW_SHOW);
    SetFocus(window);
    TestControl* first = add("first", {0, 0, 100, 50});
    TestControl* host = add("host", {100, 0, 200, 100});
    const HWND inner =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 100, 0, 100, 100, window, nullptr, nullptr, nullptr);
    VARIANT_BOOL done = VARIANT_FALSE;
    first->SetFocus(&done);
    answers["host whose window"] = [&](const VexNotify& notice) {
        if (notice.lParam1 == reinterpret_cast<hyper>(inner))
            *reinterpret_cast<hyper*>(notice.lParam2) = 1;
    };
    SetFocus(inner);
    ComPtr<ISkinObjResBase> focused;
    root->GetCurrentFocusObject(focused.put());
    EXPECT_EQ(focused.get(), host->asControl());
    EXPECT_EQ(GetFocus(), inner);
}

// --- two windows of one thread

TEST_F(HostTest, TwoWindowsHaveTheirOwnPointerAndFocusAndMayEndEachOther)
{
    TestControl* a = add("a", {0, 0, 100, 50});
    const ComPtr<IAmbrel> second = open(L"Second", {500, 100, 700, 200});
    const HWND other = windowOf(second.get());
    TestControl* b = add("b", {0, 0, 100, 50}, second.get());
    VARIANT_BOOL done = VARIANT_FALSE;
    a->SetFocus(&done);
    b->SetFocus(&done);
    ComPtr<ISkinObjResBase> focused;
    root->GetCurrentFocusObject(focused.put());
    EXPECT_EQ(focused.get(), a->asControl());
    moveTo(10, 10);
    SendMessageW(other, WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
    ComPtr<ISkinObjResBase> hot;
    root->GetHotObject(hot.put());
    EXPECT_EQ(hot.get(), a->asControl());
    hot.reset();
    second->GetHotObject(hot.put());
    EXPECT_EQ(hot.get(), b->asControl());
    hot.reset();
    focused.reset();
    taken();
    answers["a down"] = [&](const VexNotify&) { DestroyWindow(other); };
    answers["b destroying"] = [&](const VexNotify&) { DestroyWindow(window); };
    press(10, 10);
    EXPECT_FALSE(IsWindow(other));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(taken(), Log({"a down", "b destroying", "a destroying"}));
}

TEST_F(HostTest, AnObjectMovesFromOneWindowToAnother)
{
    TestControl* a = add("a", {0, 0, 100, 50});
    const ComPtr<IAmbrel> second = open(L"Second", {500, 100, 700, 200});
    VARIANT_BOOL done = VARIANT_FALSE;
    a->SetFocus(&done);
    root->RegisterMessage(WM_RBUTTONUP, a, VARIANT_FALSE, &done);
    words[WM_RBUTTONUP] = "right";
    EXPECT_EQ(a->SetParent(second.get()), S_OK);
    EXPECT_EQ(a->count(VEXSM_DESTROYING), 0);
    ComPtr<ISkinObjResBase> focused;
    EXPECT_EQ(root->GetCurrentFocusObject(focused.put()), S_FALSE);
    taken();
    send(WM_RBUTTONUP);
    SendMessageW(windowOf(second.get()), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    EXPECT_EQ(taken(), Log({"a enter", "a focus", "a down"}));
    DestroyWindow(windowOf(second.get()));
}

// --- windows by their number

TEST_F(HostTest, WindowsAreMadeAndEndedByNumber)
{
    ComPtr<IVexWindow> windows;
    ASSERT_EQ(resources->GetVexWindow(windows.put()), S_OK);
    hyper made = 0;
    ASSERT_EQ(windows->Create(0, Bstr(L"STATIC").get(), Bstr(L"Text").get(), WS_CHILD, 10, 20, 30, 40,
                              reinterpret_cast<hyper>(window), &made),
              S_OK);
    Bstr text;
    EXPECT_EQ(windows->GetWindowText(made, text.put()), S_OK);
    EXPECT_EQ(text.view(), L"Text");
    hyper parent = 0;
    EXPECT_EQ(windows->GetParent(made, &parent), S_OK);
    EXPECT_EQ(parent, reinterpret_cast<hyper>(window));
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(windows->ModifyStyle(made, 0, WS_DISABLED, &done), S_OK);
    windows->IsWindowEnabled(made, &done);
    EXPECT_EQ(done, VARIANT_FALSE);
    short timer = 0;
    EXPECT_EQ(windows->SetTimer(made, 5, 10000, &timer), S_OK);
    windows->KillTimer(made, 5, &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    windows->Destroy(made, &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(made)));
    EXPECT_EQ(windows->Destroy(made, &done), S_FALSE);
    EXPECT_EQ(windows->GetWindowText(made, text.put()), S_FALSE) << "a window that is gone has no text";
    EXPECT_EQ(text.view(), L"");
    EXPECT_EQ(windows->GetWindowText(made, nullptr), E_POINTER);
    ComPtr<IVexRect> rect;
    EXPECT_EQ(windows->GetWindowRect(made, rect.put()), S_FALSE);
    EXPECT_EQ(windows->Create(0, Bstr(L"No such class").get(), nullptr, 0, 0, 0, 0, 0, 0, &made), S_FALSE);
    EXPECT_EQ(made, 0);
}

} // namespace
} // namespace ambrel::testing
