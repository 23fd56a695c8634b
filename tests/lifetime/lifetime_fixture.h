// Every class of Morvane.dll on the real runtime, in a window with a form, for tests of beginnings and ends.
#pragma once

#include "ambrel/module/loaded_runtime.h"
#include "frame/com/bstr.h"
#include "tests/soak/control_library.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace morvane::testing {

using soak::ControlClass;

/// What ends inside of a control's work.
enum class End { Control, Parent, Window, LastReference };

class LifetimeTest : public ::testing::Test {
protected:
    void SetUp() override;
    /// Nothing may be left of runtime or controls.
    void TearDown() override;

    void openWindow();
    /// Lets everything go that the test holds, and checks that nothing is left.
    void closeWindow();
    /// The same while a test holds something of it: nothing is checked.
    void closeWindowWhileHeld();

    /// Calls `test` for each class of controls, with its name in what a failure prints.
    void forEachControl(const std::function<void(const ControlClass&)>& test);

    ComPtr<IVexControlBase> create(const ControlClass& type);
    /// Puts the control into the form (or below `parent`), with a place of its own.
    void attach(IVexControlBase& control, IVexControlBase* parent = nullptr);
    void addSubject(const ControlClass& type);
    void end(End what);
    /// The next time the subject is told `id`, this ends, once.
    void endAt(long id, End what);
    bool hasEnded() const { return !m_isArmed; }

    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(window, message, wParam, lParam);
    }
    /// Everything a user and an application do to a control on an ordinary day.
    void useSubject();

    ambrel::testing::LoadedRuntime runtime;
    std::unique_ptr<soak::ControlLibrary> library;
    ComPtr<IVexRes> resources;
    ComPtr<IAmbrel> root;
    ComPtr<IVexControlBase> form;
    ComPtr<IVexControlBase> subject;
    HWND window = nullptr;

private:
    static void STDMETHODCALLTYPE traced(void* context, const AmbrelTraceEntry* entry);

    long m_objectsAtStart = 0;
    long m_objectsBefore = 0;
    const IUnknown* m_subjectIdentity = nullptr;
    long m_endId = 0;
    End m_end = End::Control;
    bool m_isArmed = false;
};

} // namespace morvane::testing
