// A window of the runtime for tests, with plain base objects as its controls and everything they are told written down.
#pragma once

#include "ambrel/module/loaded_runtime.h"
#include "frame/com/bstr.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace ambrel::testing {

using morvane::Bstr;
using morvane::ComPtr;
using Log = std::vector<std::string>;

class WindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_NE(runtime.handle(), nullptr) << "Ambrel.dll does not load";
        objectsBefore = runtime.AmbrelLiveObjects()();
        ASSERT_TRUE(SUCCEEDED(runtime.AmbrelRegisterClasses()()));
        runtime.AmbrelFreezeClock()();
        ASSERT_EQ(runtime.AmbrelCreateRes()(resources.put()), S_OK);
        runtime.AmbrelSetTraceSink()(&WindowTest::traced, this);
        ComPtr<IDispatch> made;
        ASSERT_EQ(resources->CreateAmbrel(Bstr(L"Main").get(), 0, made.put()), S_OK);
        root = made.as<IAmbrel>();
        VARIANT_BOOL placed = VARIANT_FALSE;
        ASSERT_EQ(root->Create(0, {0, 0, 300, 200}, &placed), S_OK);
        hyper handle = 0;
        root->GetWindowHandle(&handle);
        window = reinterpret_cast<HWND>(handle);
        ASSERT_TRUE(IsWindow(window));
    }

    void TearDown() override
    {
        hooks.clear();
        controls.clear();
        if (IsWindow(window))
            DestroyWindow(window);
        root.reset();
        resources.reset();
        runtime.AmbrelSetTraceSink()(nullptr, nullptr);
        runtime.AmbrelRunClock()();
        runtime.AmbrelUnregisterClasses()();
        EXPECT_EQ(runtime.AmbrelLiveObjects()(), objectsBefore) << "something outlives its window";
    }

    /// A tab stop of the given name and place, child of `parent` or of the root.
    IVexControlBase* add(const wchar_t* name, SkinRect rect, ISkinObjResBase* parent = nullptr)
    {
        ComPtr<IVexControlBase> control;
        CoCreateInstance(morvane::kClsidInnerBaseObject, nullptr, CLSCTX_INPROC_SERVER,
                         morvane::iidOf<IVexControlBase>(), control.putVoid());
        control->SetName(Bstr(name).get());
        hyper created = 0;
        ISkinObjResBase* above = parent ? parent : root.get();
        control->CreateObj(reinterpret_cast<hyper>(resources.get()), reinterpret_cast<hyper>(above), VEXOBJTYPE_PLUGIN,
                           VARIANT_FALSE, &created);
        long changed = 0;
        control->Resize(&rect, &changed);
        control->SetTabStop(VARIANT_TRUE);
        taken();
        controls.push_back(control);
        return control.get();
    }

    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(window, message, wParam, lParam);
    }
    void moveTo(int x, int y, WPARAM flags = 0) { send(WM_MOUSEMOVE, flags, MAKELPARAM(x, y)); }
    void press(int x, int y) { send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    void release(int x, int y) { send(WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    void pass(std::int64_t milliseconds) { runtime.AmbrelAdvanceClock()(milliseconds); }

    /// What was told since the last call: "name what".
    Log taken() { return std::exchange(log, {}); }

    ComPtr<ISkinObjResBase> focused()
    {
        ComPtr<ISkinObjResBase> result;
        root->GetCurrentFocusObject(result.put());
        return result;
    }

    LoadedRuntime runtime;
    long objectsBefore = 0;
    ComPtr<IVexRes> resources;
    ComPtr<IAmbrel> root;
    HWND window = nullptr;
    std::vector<ComPtr<IVexControlBase>> controls;
    std::map<std::string, std::function<void()>> hooks; // run when an entry is written
    Log log;
    std::vector<SkinRect> painted;

private:
    static void STDMETHODCALLTYPE traced(void* context, const AmbrelTraceEntry* entry)
    {
        static_cast<WindowTest*>(context)->write(*entry);
    }

    void write(const AmbrelTraceEntry& entry)
    {
        if (entry.kind == AMBREL_TRACE_PAINT)
            painted.push_back(entry.rect);
        if (entry.kind != AMBREL_TRACE_NOTIFICATION)
            return;
        static const std::map<long, const char*> words = {{VEXSM_MOUSEENTER, "enter"},
                                                          {VEXSM_MOUSELEAVE, "leave"},
                                                          {VEXSM_LBUTTONDOWN, "down"},
                                                          {VEXSM_LBUTTONUP, "up"},
                                                          {VEXSM_LBUTTONDBCLICK, "double"},
                                                          {VEXSM_ONSETFOCUS, "focus"},
                                                          {VEXSM_ONKILLFOCUS, "blur"},
                                                          {VEXSM_TIMER, "timer"},
                                                          {VEXSM_DESTROYING, "destroying"},
                                                          {WM_RBUTTONUP, "WM_RBUTTONUP"},
                                                          {WM_KEYDOWN, "WM_KEYDOWN"},
                                                          {VEXSM_FINALCREATE, "finalcreate"},
                                                          {WM_CHAR, "WM_CHAR"}};
        const auto word = words.find(entry.id);
        if (word == words.end())
            return;
        ComPtr<IUnknown> object(entry.object);
        Bstr name;
        if (const auto named = object.as<IVexObj>())
            named->GetName(name.put());
        std::string text;
        for (const wchar_t c : name.view())
            text += static_cast<char>(c);
        text += std::string(" ") + word->second;
        log.push_back(text);
        if (const auto hook = hooks.find(text); hook != hooks.end())
            hook->second();
    }
};

} // namespace ambrel::testing
