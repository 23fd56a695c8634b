#include "gallery/inspector/inline_edit.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

namespace gallery {

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr UINT kLeft = WM_APP + 1; // posted to the edit window: it cannot end while it loses the focus

/// As high as a line of the font needs, in the middle of `place`: the window puts its text at its top.
morvane::Rect fitted(const morvane::Rect& place, HWND window, HFONT font, int scale)
{
    TEXTMETRICW metrics{};
    const HDC dc = GetDC(window);
    const HGDIOBJ former = SelectObject(dc, font);
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, former);
    ReleaseDC(window, dc);
    const int height = std::min(place.height(), static_cast<int>(metrics.tmHeight) + 6 * scale / 100);
    return morvane::Rect::at({place.left, place.top + (place.height() - height) / 2}, {place.width(), height});
}

} // namespace

void InlineEdit::open(HWND parent, const morvane::Rect& place, int scale, const Theme& theme, const std::wstring& text,
                      Commit done)
{
    commit();
    m_window = CreateWindowExW(0, L"EDIT", text.c_str(), WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, place.left,
                               place.top, place.width(), place.height(), parent, nullptr, nullptr, nullptr);
    if (!m_window)
        return;
    m_parent = parent;
    m_theme = &theme;
    m_commit = std::move(done);
    m_brush = CreateSolidBrush(theme.surface);
    m_font = CreateFontW(-MulDiv(9, 96 * scale, 72 * 100), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                         OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH, L"Tahoma");
    const morvane::Rect lineRect = fitted(place, m_window, m_font, scale);
    MoveWindow(m_window, lineRect.left, lineRect.top, lineRect.width(), lineRect.height(), FALSE);
    SendMessageW(m_window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), TRUE);
    SendMessageW(m_window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(2 * scale / 100, 2 * scale / 100));
    SetWindowSubclass(m_window, &InlineEdit::editProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    SetWindowSubclass(m_parent, &InlineEdit::parentProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    SendMessageW(m_window, EM_SETSEL, 0, -1);
    SetFocus(m_window);
}

void InlineEdit::commit()
{
    if (!m_window)
        return;
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(m_window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(m_window, text.data(), static_cast<int>(text.size()))));
    const Commit done = std::move(m_commit);
    close();
    done(text);
}

void InlineEdit::close()
{
    const HWND window = std::exchange(m_window, nullptr);
    if (!window)
        return;
    RemoveWindowSubclass(window, &InlineEdit::editProcedure, kSubclass);
    RemoveWindowSubclass(m_parent, &InlineEdit::parentProcedure, kSubclass);
    const bool hadFocus = GetFocus() == window;
    DestroyWindow(window);
    if (hadFocus)
        SetFocus(m_parent);
    DeleteObject(std::exchange(m_font, nullptr));
    DeleteObject(std::exchange(m_brush, nullptr));
    m_commit = nullptr;
}

LRESULT CALLBACK InlineEdit::editProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                           DWORD_PTR context)
{
    auto& self = *reinterpret_cast<InlineEdit*>(context);
    if (message == WM_KEYDOWN && wParam == VK_RETURN) {
        self.commit();
        return 0;
    }
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
        self.close();
        return 0;
    }
    if (message == kLeft) {
        self.commit();
        return 0;
    }
    if (message == WM_KILLFOCUS)
        PostMessageW(window, kLeft, 0, 0);
    return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK InlineEdit::parentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                             DWORD_PTR context)
{
    auto& self = *reinterpret_cast<InlineEdit*>(context);
    if (message == WM_CTLCOLOREDIT && reinterpret_cast<HWND>(lParam) == self.m_window) {
        const HDC dc = reinterpret_cast<HDC>(wParam);
        SetTextColor(dc, self.m_theme->text);
        SetBkColor(dc, self.m_theme->surface);
        return reinterpret_cast<LRESULT>(self.m_brush);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace gallery
