// A root asked without places for its answers, before it has a window, and when its window is gone.
#include "ambrel/window/host_fixture.h"

#include <functional>

namespace ambrel::testing {
namespace {

struct Call {
    const char* name;
    std::function<HRESULT(IAmbrel&)> make;
};

template <class Out>
Call asks(const char* name, HRESULT (STDMETHODCALLTYPE IAmbrel::*method)(Out*))
{
    return {name, [method](IAmbrel& root) { return (root.*method)(nullptr); }};
}

/// Operations whose only parameter is where the answer goes.
std::vector<Call> questions()
{
    return {
        asks("GetWindowHandle", &IAmbrel::GetWindowHandle),
        asks("IsSupportPerPixel", &IAmbrel::IsSupportPerPixel),
        asks("GetResizeBorder", &IAmbrel::GetResizeBorder),
        asks("GetMinSize", &IAmbrel::GetMinSize),
        asks("SetMinSize", &IAmbrel::SetMinSize),
        asks("GetMaxSize", &IAmbrel::GetMaxSize),
        asks("SetMaxSize", &IAmbrel::SetMaxSize),
        asks("IsPopWindow", &IAmbrel::IsPopWindow),
        asks("IsResizable", &IAmbrel::IsResizable),
        asks("IsDragabled", &IAmbrel::IsDragabled),
        asks("IsCanCopyRun", &IAmbrel::IsCanCopyRun),
        asks("IsParentBlend", &IAmbrel::IsParentBlend),
        asks("IsSetRgn", &IAmbrel::IsSetRgn),
        asks("IsCaptured", &IAmbrel::IsCaptured),
        asks("Default", &IAmbrel::Default),
        asks("IsUseRgnInfo", &IAmbrel::IsUseRgnInfo),
        asks("GetEventRecieve", &IAmbrel::GetEventRecieve),
        asks("GetHotObject", &IAmbrel::GetHotObject),
        asks("GetIsAutoLoad", &IAmbrel::GetIsAutoLoad),
        asks("GetRenderEngine", &IAmbrel::GetRenderEngine),
        asks("GetRenderDevice", &IAmbrel::GetRenderDevice),
        asks("GetRefreshType", &IAmbrel::GetRefreshType),
        asks("IsFreezeUpdate", &IAmbrel::IsFreezeUpdate),
        asks("GetFreezeHBitmap", &IAmbrel::GetFreezeHBitmap),
        asks("IsRegisterHotkey", &IAmbrel::IsRegisterHotkey),
        asks("IsDraging", &IAmbrel::IsDraging),
        asks("Present", &IAmbrel::Present),
        asks("IsBatchMode", &IAmbrel::IsBatchMode),
        asks("GetCurrentFocusObject", &IAmbrel::GetCurrentFocusObject),
        asks("SetDragPosition", &IAmbrel::SetDragPosition),
        asks("GetDragPosition", &IAmbrel::GetDragPosition),
        {"Create",
         [](IAmbrel& root) {
             return root.Create(0, {0, 0, 10, 10}, nullptr);
         }},
        {"Draw", [](IAmbrel& root) { return root.Draw(0, {}, nullptr); }},
        {"RegisterMessage", [](IAmbrel& root) { return root.RegisterMessage(1, nullptr, VARIANT_FALSE, nullptr); }},
        {"UnRegisterMessage", [](IAmbrel& root) { return root.UnRegisterMessage(1, nullptr, nullptr); }},
        {"RegisterWholeMessage",
         [](IAmbrel& root) { return root.RegisterWholeMessage(nullptr, VARIANT_FALSE, nullptr); }},
        {"UnRegisterWholeMessage", [](IAmbrel& root) { return root.UnRegisterWholeMessage(nullptr, nullptr); }},
        {"DoWindowProc", [](IAmbrel& root) { return root.DoWindowProc(0, 0, 0, 0, nullptr); }},
        {"AddNCRgn", [](IAmbrel& root) { return root.AddNCRgn(VEX_NCRGN_LEFT, nullptr, nullptr); }},
        {"RemoveNCRgn", [](IAmbrel& root) { return root.RemoveNCRgn(VEX_NCRGN_LEFT, nullptr, nullptr); }},
        {"RemoveAllNCRgns", [](IAmbrel& root) { return root.RemoveAllNCRgns(VEX_NCRGN_LEFT, nullptr); }},
        {"GetVexControlByPt", [](IAmbrel& root) { return root.GetVexControlByPt(0, 0, nullptr); }},
        {"UpdateAmbrelLayerCache", [](IAmbrel& root) { return root.UpdateAmbrelLayerCache({}, 0, {}, nullptr); }},
        {"DrawCurrentLayer",
         [](IAmbrel& root) { return root.DrawCurrentLayer(0, VARIANT_TRUE, {}, VARIANT_FALSE, nullptr); }},
        {"DestroyRgnInfo", [](IAmbrel& root) { return root.DestroyRgnInfo(nullptr); }},
        {"Resize", [](IAmbrel& root) { return root.Resize(nullptr, nullptr); }},
        {"SetRect", [](IAmbrel& root) { return root.SetRect(nullptr); }},
        {"SetPosition", [](IAmbrel& root) { return root.SetPosition(nullptr); }},
    };
}

/// What an application may do at any time; answers whether the root takes it without a window.
std::vector<Call> works()
{
    return {
        {"SetVisible", [](IAmbrel& root) { return root.SetVisible(VARIANT_TRUE, VARIANT_TRUE, VARIANT_TRUE); }},
        {"SetVisibleEx", [](IAmbrel& root) { return root.SetVisibleEx(VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE); }},
        {"FadeShow", [](IAmbrel& root) { return root.FadeShow(VARIANT_TRUE, VEX_FADE_IN); }},
        {"SetOpacity", [](IAmbrel& root) { return root.SetOpacity(100); }},
        {"SetSupportPerPixel", [](IAmbrel& root) { return root.SetSupportPerPixel(VARIANT_TRUE); }},
        {"SetPopWindow", [](IAmbrel& root) { return root.SetPopWindow(VARIANT_FALSE); }},
        {"SetResizable", [](IAmbrel& root) { return root.SetResizable(VARIANT_TRUE); }},
        {"SetParentBlend", [](IAmbrel& root) { return root.SetParentBlend(VARIANT_TRUE); }},
        {"SetRgn", [](IAmbrel& root) { return root.SetRgn(VARIANT_TRUE); }},
        {"SetWindowRgn", [](IAmbrel& root) { return root.SetWindowRgn(); }},
        {"SetCapture", [](IAmbrel& root) { return root.SetCapture(VARIANT_TRUE); }},
        {"ReleaseCaptureCtrl", [](IAmbrel& root) { return root.ReleaseCaptureCtrl(); }},
        {"ShiftFocus", [](IAmbrel& root) { return root.ShiftFocus(VARIANT_TRUE); }},
        {"Center", [](IAmbrel& root) { return root.Center(); }},
        {"ResizeSence", [](IAmbrel& root) { return root.ResizeSence(100, 50); }},
        {"FreezeUpdate", [](IAmbrel& root) { return root.FreezeUpdate(VARIANT_TRUE); }},
        {"SetFreezeDrawRect",
         [](IAmbrel& root) {
             return root.SetFreezeDrawRect({0, 0, 5, 5});
         }},
        {"thaw", [](IAmbrel& root) { return root.FreezeUpdate(VARIANT_FALSE); }},
        {"SetBatchMode", [](IAmbrel& root) { return root.SetBatchMode(VARIANT_TRUE); }},
        {"AddDirtyRect",
         [](IAmbrel& root) {
             return root.AddDirtyRect({-2147483647, 0, 2147483647, 10});
         }},
        {"end of batch", [](IAmbrel& root) { return root.SetBatchMode(VARIANT_FALSE); }},
        {"DirectDrawImmediate", [](IAmbrel& root) { return root.DirectDrawImmediate(); }},
        {"SetArabicMode", [](IAmbrel& root) { return root.SetArabicMode(VARIANT_TRUE); }},
        {"SynMoveWindow", [](IAmbrel& root) { return root.SynMoveWindow(); }},
        {"RegisterDropTarget", [](IAmbrel& root) { return root.RegisterDropTarget(); }},
        {"RevokeDropTarget", [](IAmbrel& root) { return root.RevokeDropTarget(); }},
        {"VexMessage", [](IAmbrel& root) { return root.VexMessage(0, 1, 2, 3); }},
        {"CallEvent", [](IAmbrel& root) { return root.CallEvent(1, 2, 3); }},
        {"RemoveAllRegister", [](IAmbrel& root) { return root.RemoveAllRegister(); }},
        {"RemoveAllWholeMessage", [](IAmbrel& root) { return root.RemoveAllWholeMessage(); }},
        {"DelAllSubObjects", [](IAmbrel& root) { return root.DelAllSubObjects(); }},
        {"ResizeThis", [](IAmbrel& root) { return root.ResizeThis(); }},
        {"DirectDraw", [](IAmbrel& root) { return root.DirectDraw(VARIANT_TRUE); }},
    };
}

TEST_F(HostTest, ARootSaysSoWhenThereIsNoPlaceForItsAnswer)
{
    for (const Call& each : questions())
        EXPECT_EQ(each.make(*root.get()), E_POINTER) << each.name;
}

TEST_F(HostTest, ARootWithoutAWindowTakesEveryCall)
{
    TestControl* const a = add("a", {0, 0, 50, 50});
    VARIANT_BOOL done = VARIANT_FALSE;
    a->SetFocus(&done);
    DestroyWindow(window);
    for (const Call& call : works())
        EXPECT_TRUE(SUCCEEDED(call.make(*root.get()))) << call.name;
    ComPtr<ISkinObjResBase> met;
    root->GetCurrentFocusObject(met.put());
    EXPECT_FALSE(met);
    EXPECT_EQ(windowOf(root.get()), nullptr);
    SkinRect painted{};
    EXPECT_EQ(root->Present(&painted), S_OK);
    EXPECT_EQ(root->SetCaptureCtrl(a), E_INVALIDARG) << "it left the tree with the window";
    EXPECT_EQ(root->AddSubObject(a, VARIANT_FALSE, &done), S_FALSE) << "it was told of its end";
}

TEST_F(HostTest, ARootMayGetAnotherWindowAfterItsFirst)
{
    TestControl* const first = add("first", {0, 0, 50, 50});
    show();
    press(10, 10);
    DestroyWindow(window);
    EXPECT_FALSE(IsWindow(window));
    letGo(first);
    VARIANT_BOOL created = VARIANT_FALSE;
    ASSERT_EQ(root->Create(0, {100, 100, 300, 200}, &created), S_OK);
    window = windowOf(root.get());
    show();
    add("second", {0, 0, 50, 50});
    press(10, 10);
    release(10, 10);
    send(WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(taken(), Log({"second enter", "second focus", "second down", "second up"}));
    EXPECT_NE(GetCapture(), window);
}

} // namespace
} // namespace ambrel::testing
