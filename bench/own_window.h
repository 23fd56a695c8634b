// Our side: a window of the runtime with command buttons of the control library, built as an application builds it.
#pragma once

#include "bench/window_pixels.h"

#include "controls/control_interfaces.h"
#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <array>
#include <string>

namespace bench {

using morvane::Bstr;
using morvane::ComPtr;

/// COM, the runtime's classes and the control library, for the length of the program.
class Platform {
public:
    Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    ~Platform();

    HINSTANCE controls() const { return m_controls; }
    /// A button from its class factory, standing nowhere.
    ComPtr<ICmdButton> createButton() const;

private:
    HINSTANCE m_controls = nullptr;
    ComPtr<IClassFactory> m_buttons;
};

/// The one platform of this program.
Platform& platform();

/// What a button shows in its states, shared by all buttons of a window.
struct ButtonLook {
    std::array<ComPtr<IVexImageBase>, 5> images;
    std::array<ComPtr<IVexTextStyle>, 5> textStyles;
};

enum class Look {
    None,    // as constructed
    Shared,  // picture sections and text styles that the application holds
    Package, // the default skin, applied to each button
};

class OwnWindow {
public:
    OwnWindow();
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;
    ~OwnWindow();

    HWND window() const;
    IAmbrel& root() const { return *m_root; }
    IVexRes& resources() const { return *m_resources; }

    ComPtr<ICmdButton> addButton(const morvane::Rect& place, const std::wstring& text, Look look);
    std::vector<ComPtr<ICmdButton>> fill(int count, Look look = Look::Shared);
    /// Takes a button out of the window; it ends with its last reference.
    static void remove(ICmdButton& button);
    void repaintAll() const;
    void paintPending() const { UpdateWindow(window()); }
    int buttonCount() const;
    /// Takes all buttons out of the window.
    void clear();

private:
    const ButtonLook& look();

    ComPtr<IVexRes> m_resources;
    ComPtr<IAmbrel> m_root;
    ComPtr<IVexPos> m_position; // carries the place from the application to each button
    ButtonLook m_look;
    int m_lastName = 0;
};

} // namespace bench
