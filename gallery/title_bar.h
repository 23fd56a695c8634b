// The strip at the window's top: its title, and keys to minimise, maximise and close it. The window has no frame of the
// system's, so this is what it is moved by.
#pragma once

#include "gallery/scene.h"

namespace gallery {

class TitleBar {
public:
    static constexpr int kHeight = 32;

    /// Along the upper edge of `parent`, `width` wide at first, as it stands in the window.
    TitleBar(Scene& scene, IVexControlBase& parent, int width, const wchar_t* title);
    TitleBar(const TitleBar&) = delete;
    TitleBar& operator=(const TitleBar&) = delete;
    ~TitleBar();

private:
    ComPtr<ICmdButton> addKey(int fromRight, const wchar_t* drawing, const wchar_t* tip, std::function<void()> action);
    void showDrawing(ICmdButton& key, const wchar_t* drawing) const;
    /// The key in the middle says what it would do now.
    void showZoom();
    bool isFreeAt(LPARAM pointOnScreen) const;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR self);

    Scene& m_scene;
    HWND m_window;
    int m_width;
    bool m_isZoomed = false;
    ComPtr<IUIFormObj> m_strip;
    ComPtr<ICmdButton> m_zoom;
};

} // namespace gallery
