#include "gallery/title_bar.h"

#include <commctrl.h>
#include <windowsx.h>

namespace gallery {

namespace {

constexpr UINT_PTR kSubclass = 2;
constexpr int kKeyWidth = 48;
constexpr int kKeys = 3;
constexpr short kFrames = 5; // one for each state, in the order of VEX_BUTTONSTATE

HWND windowOf(IAmbrel& root)
{
    std::int64_t handle = 0;
    root.GetWindowHandle(&handle);
    return reinterpret_cast<HWND>(handle);
}

} // namespace

TitleBar::TitleBar(Scene& scene, IVexControlBase& parent, int width, const wchar_t* title)
    : m_scene(scene), m_window(windowOf(scene.root())), m_width(width)
{
    const Theme& theme = scene.theme();
    m_strip = scene.form(&parent, {0, 0, width, kHeight}, theme.surface);
    scene.placeIn(*m_strip, {0, 0, width, kHeight}, {width, kHeight}, Hold::Both, Hold::Near);
    const auto line = scene.form(m_strip.get(), {0, kHeight - 1, width, kHeight}, theme.line);
    scene.placeIn(*line, {0, kHeight - 1, width, kHeight}, {width, kHeight}, Hold::Both, Hold::Near);
    scene.label(m_strip.get(), {20, 0, 300, kHeight - 1}, title, {theme.textSoft, 9});
    // Posted: the window may not end while it handles the press.
    const auto command = [this](WPARAM what) { PostMessageW(m_window, WM_SYSCOMMAND, what, 0); };
    addKey(1, L"window-close", L"Close (Alt+F4)", [command] { command(SC_CLOSE); });
    m_zoom = addKey(2, L"window-maximise", L"Maximise, or back to its size",
                    [this, command] { command(IsZoomed(m_window) ? SC_RESTORE : SC_MAXIMIZE); });
    addKey(3, L"window-minimise", L"Minimise", [command] { command(SC_MINIMIZE); });
    SetWindowSubclass(m_window, &TitleBar::procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    showZoom();
}

TitleBar::~TitleBar()
{
    RemoveWindowSubclass(m_window, &TitleBar::procedure, kSubclass);
}

ComPtr<ICmdButton> TitleBar::addKey(int fromRight, const wchar_t* drawing, const wchar_t* tip,
                                    std::function<void()> action)
{
    const Rect place = Rect::at({m_width - fromRight * kKeyWidth, 0}, {kKeyWidth, kHeight});
    const auto key = m_scene.label(m_strip.get(), place, L"", {m_scene.theme().text});
    m_scene.placeIn(*key, place, {m_width, kHeight}, Hold::Far, Hold::Near);
    key->SetTooltip(Bstr(tip).get());
    showDrawing(*key, drawing);
    m_scene.onClick(*key, std::move(action));
    return key;
}

void TitleBar::showDrawing(ICmdButton& key, const wchar_t* drawing) const
{
    key.SetGraphicsFilePath(m_scene.drawing(drawing).get(), 0, 0, kFrames, VARIANT_TRUE);
}

void TitleBar::showZoom()
{
    const bool isZoomed = IsZoomed(m_window) != FALSE;
    if (isZoomed != m_isZoomed)
        showDrawing(*m_zoom, isZoomed ? L"window-restore" : L"window-maximise");
    m_isZoomed = isZoomed;
}

bool TitleBar::isFreeAt(LPARAM pointOnScreen) const
{
    POINT at{GET_X_LPARAM(pointOnScreen), GET_Y_LPARAM(pointOnScreen)};
    RECT client{};
    ScreenToClient(m_window, &at);
    GetClientRect(m_window, &client);
    return at.y >= 0 && at.y < m_scene.scaled(kHeight) && at.x < client.right - m_scene.scaled(kKeys * kKeyWidth);
}

LRESULT CALLBACK TitleBar::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR self)
{
    auto& bar = *reinterpret_cast<TitleBar*>(self);
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_NCHITTEST && result == HTCLIENT && bar.isFreeAt(lParam))
        return HTCAPTION; // the system moves the window, and maximises it at a double click
    if (message == WM_SIZE && wParam != SIZE_MINIMIZED)
        bar.showZoom();
    return result;
}

} // namespace gallery
