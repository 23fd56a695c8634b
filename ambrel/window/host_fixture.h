// A window whose controls the test itself answers for.
#pragma once

#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ambrel::testing {

using morvane::Bstr;
using morvane::ComPtr;
using testing_objects::TestControl;
using Log = std::vector<std::string>;

/// The clock stands still. Everything is told by name: "a focus". At the end nothing may be left of it all.
class HostTest : public ::testing::Test {
public:
    /// Handles what was posted.
    static void settle()
    {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

protected:
    void SetUp() override
    {
        objectsBefore = AmbrelLiveObjects();
        AmbrelFreezeClock();
        ASSERT_EQ(AmbrelCreateRes(resources.put()), S_OK);
        root = open(L"Main", {100, 100, 400, 300});
        window = windowOf(root.get());
        ASSERT_TRUE(IsWindow(window));
    }

    void TearDown() override
    {
        answers.clear();
        controls.clear();
        if (IsWindow(window))
            DestroyWindow(window);
        root.reset();
        resources.reset();
        AmbrelRunClock();
        EXPECT_EQ(AmbrelLiveObjects(), objectsBefore) << "something outlives its window";
    }

    ComPtr<IAmbrel> open(const wchar_t* name, SkinRect rect, HWND parent = nullptr)
    {
        ComPtr<IDispatch> made;
        VARIANT_BOOL created = VARIANT_FALSE;
        resources->CreateAmbrel(Bstr(name).get(), 0, made.put());
        ComPtr<IAmbrel> opened = made.as<IAmbrel>();
        if (parent)
            opened->SetPopWindow(VARIANT_FALSE);
        opened->Create(reinterpret_cast<hyper>(parent), rect, &created);
        return opened;
    }

    static HWND windowOf(IAmbrel* of)
    {
        hyper handle = 0;
        of->GetWindowHandle(&handle);
        return reinterpret_cast<HWND>(handle);
    }

    /// A tab stop, child of `parent` or of the root.
    TestControl* add(const std::string& name, SkinRect rect, ISkinObjResBase* parent = nullptr)
    {
        ComPtr<TestControl> control = TestControl::make();
        control->SetName(Bstr(std::wstring(name.begin(), name.end())).get());
        control->onNotice = [this, name](const VexNotify& notice) { told(name, notice); };
        hyper created = 0;
        ISkinObjResBase* const above = parent ? parent : root.get();
        control->CreateObj(reinterpret_cast<hyper>(resources.get()), reinterpret_cast<hyper>(above), VEXOBJTYPE_PLUGIN,
                           VARIANT_FALSE, &created);
        long changed = 0;
        control->Resize(&rect, &changed);
        control->SetTabStop(VARIANT_TRUE);
        controls.push_back(control);
        log.clear();
        return control.get();
    }
    /// The test lets go of it; the tree may still hold it.
    void letGo(TestControl* control)
    {
        std::erase_if(controls, [&](const auto& each) { return each.get() == control; });
    }

    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(window, message, wParam, lParam);
    }
    void moveTo(int x, int y, WPARAM flags = 0) { send(WM_MOUSEMOVE, flags, MAKELPARAM(x, y)); }
    void press(int x, int y) { send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    void release(int x, int y) { send(WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    void show(int how = SW_SHOWNOACTIVATE)
    {
        ShowWindow(window, how);
        UpdateWindow(window);
        log.clear();
    }
    std::vector<std::uint32_t> picture(IAmbrel* of, long width, long height)
    {
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height), 0xDEADBEEF);
        AmbrelRenderWindow(of, width, height, pixels.data());
        return pixels;
    }
    static SkinRect rectOf(ISkinObjResBase* object)
    {
        ComPtr<IVexRect> rect;
        SkinRect record{};
        object->GetRect(rect.put());
        rect->GetRectStruct(&record);
        return record;
    }

    Log taken() { return std::exchange(log, {}); }

    testing_objects::RuntimeClasses classes;
    long objectsBefore = 0;
    ComPtr<IVexRes> resources;
    ComPtr<IAmbrel> root;
    HWND window = nullptr;
    std::vector<ComPtr<TestControl>> controls;
    std::map<std::string, std::function<void(const VexNotify&)>> answers; // run after an entry was written
    std::map<long, const char*> words = {{VEXSM_MOUSEENTER, "enter"},
                                         {VEXSM_MOUSELEAVE, "leave"},
                                         {VEXSM_MOUSEMOVE, "move"},
                                         {VEXSM_LBUTTONDOWN, "down"},
                                         {VEXSM_LBUTTONUP, "up"},
                                         {VEXSM_ONSETFOCUS, "focus"},
                                         {VEXSM_ONKILLFOCUS, "blur"},
                                         {VEXSM_SIZE, "size"},
                                         {VEXSM_TIMER, "timer"},
                                         {VEXSM_STARTDRAG, "start drag"},
                                         {VEXSM_DRAGING, "drag over"},
                                         {VEXSM_ENDDRAG, "drop"},
                                         {VEXSM_ENDDRAG_NOTIFYFROMOBJ, "drag ended"},
                                         {VEXSM_PRE_DODRAGDROP, "ole over"},
                                         {VEXSM_DODRAGDROP, "ole drop"},
                                         {VEXSM_POST_DODRAGDROP, "ole end"},
                                         {VEXSM_HOOKPROC, "hook"},
                                         {VEXSM_KBHOOKPROC, "key hook"},
                                         {VEXSM_USER_SETFOCUS, "whose window"},
                                         {VEXSM_AUTOLOADINIT, "afresh"},
                                         {VEXSM_DESTROYING, "destroying"},
                                         {WM_DROPFILES, "files"}};
    Log log;

private:
    void told(const std::string& name, const VexNotify& notice)
    {
        const auto word = words.find(notice.eVexMsgId ? static_cast<long>(notice.eVexMsgId) : notice.eWinMsgId);
        if (word == words.end())
            return;
        const std::string entry = name + " " + word->second;
        log.push_back(entry);
        if (const auto answer = answers.find(entry); answer != answers.end()) {
            const auto run = answer->second; // it may change the table
            run(notice);
        }
    }
};

} // namespace ambrel::testing
