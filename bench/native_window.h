// The platform's side: a window with BUTTON children, without themes.
#pragma once

#include "bench/window_pixels.h"

#include "frame/platform/handles.h"

#include <string>

namespace bench {

class NativeWindow {
public:
    NativeWindow();

    HWND window() const { return m_window.get(); }
    /// A visible button; its window lives as long as its parent unless it is destroyed before.
    HWND addButton(const morvane::Rect& place, const wchar_t* text) const;
    std::vector<HWND> fill(int count) const;
    /// Paints the window and all its buttons at once, whether they need it or not.
    void repaintAll() const;
    /// Paints what needs it.
    void paintPending() const;
    int buttonCount() const;
    /// Ends all buttons at once, by ending the child window that holds them.
    void clear();

private:
    morvane::UniqueWindow m_window;
    morvane::UniqueWindow m_panel; // as large as the window; holds the buttons
};

} // namespace bench
