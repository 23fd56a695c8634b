// Two windows full of controls of every class, and everything the soak may take hold of.
#pragma once

#include "ambrel/ambrel.h"
#include "frame/com/bstr.h"
#include "tests/soak/control_library.h"
#include "tests/soak/random.h"

#include <array>
#include <functional>

namespace morvane::soak {

struct Member {
    ComPtr<IDispatch> object;
    const ControlClass* type;

    ComPtr<IVexControlBase> control() const { return object.as<IVexControlBase>(); }
};

class World {
public:
    World(const ControlLibrary& library, Random& random, HWND owner);
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    bool hasWindow() const { return isAlive(m_windows[0]) || isAlive(m_windows[1]); }
    /// One of the windows, in most cases one that lives.
    HWND window() const { return someWindowPlace().handle; }
    HWND owner() const { return m_owner; }
    IAmbrel* root() const { return someWindowPlace().root.get(); }
    IVexRes* res() const { return m_res.get(); }
    Random& random() const { return m_random; }
    const ControlLibrary& library() const { return m_library; }

    /// A control of any class somewhere in the window, in most cases with a look of its own.
    void addControl();
    void addItem();
    /// Any control or item, also one that was taken out of the window; empty when there is none.
    Member anyMember() const;
    /// Any control.
    ComPtr<IVexControlBase> anyControl() const;
    /// Some object with that interface, or null.
    ComPtr<IUnknown> anyObject(REFIID iid) const;
    /// Any property of the control; null when it has none.
    ComPtr<IVexPropBase> anyProperty(IVexControlBase& control) const;
    /// Any top-level group of the control's table; null when it has none.
    ComPtr<ICtrlPluginProp> anyGroup(IVexControlBase& control) const;
    /// The handle of some control's configuration node, or 0, or one that is none.
    std::int64_t someNode() const;
    /// A skin package that is there; empty when there is none.
    std::wstring someSkinFile() const;
    /// Somebody's face as a parent: the given control's, a window's, nobody's.
    ComPtr<ISkinObjResBase> someParentOrRoot(IVexControlBase* parent) const;

    /// A picture or a skin file's path for the control; most do not fit it.
    void changeSkin(IVexControlBase& control);
    /// A control comes out of a package of the module.
    void importSkin();
    void place(IVexControlBase& control);
    /// Takes a control out of the window in one of the ways there are.
    void removeSomething();
    void forgetSomething();
    void destroyWindow();

    /// Handle numbers of each sort: 0, valid ones, ones that were valid.
    std::int64_t someWindow();
    std::int64_t someDeviceContext();

    /// What runs in the middle of the controls' work, every now and then.
    void setInterruption(std::function<void()> action) { m_interruption = std::move(action); }
    static std::int64_t callbackAddress();

private:
    struct Window {
        HWND handle = nullptr;
        ComPtr<IAmbrel> root; // stays when the window ends
    };

    static bool isAlive(const Window& window) { return IsWindow(window.handle) != FALSE; }
    const Window& someWindowPlace() const;
    void openWindow(Window& window);
    void interrupt();
    static void STDMETHODCALLTYPE traced(void* context, const AmbrelTraceEntry* entry);
    static VARIANT_BOOL STDMETHODCALLTYPE calledBack(hyper context, long message, hyper wParam, hyper lParam);

    const ControlLibrary& m_library;
    Random& m_random;
    HWND m_owner;
    std::array<Window, 2> m_windows;
    HDC m_dc = nullptr;
    std::int64_t m_formerWindow = 0;
    std::int64_t m_formerDc = 0;
    ComPtr<IVexRes> m_res;
    std::vector<Member> m_members;
    std::vector<std::wstring> m_skins;
    std::function<void()> m_interruption;
    int m_depth = 0;
    int m_lastName = 0;
};

} // namespace morvane::soak
