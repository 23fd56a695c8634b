// The platform's edit window over a row: Enter or leaving it commits, Esc cancels.
#pragma once

#include "gallery/theme.h"

#include "base/geometry.h"

#include <functional>
#include <string>

namespace gallery {

class InlineEdit {
public:
    using Commit = std::function<void(const std::wstring& text)>;

    InlineEdit() = default;
    InlineEdit(const InlineEdit&) = delete;
    InlineEdit& operator=(const InlineEdit&) = delete;
    ~InlineEdit() { close(); }

    /// `place` in device pixels of `parent`; the text is selected. An open one is committed first.
    void open(HWND parent, const morvane::Rect& place, int scale, const Theme& theme, const std::wstring& text,
              Commit commit);
    void commit();
    void close(); // without committing
    HWND window() const { return m_window; }

private:
    static LRESULT CALLBACK editProcedure(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR context);
    static LRESULT CALLBACK parentProcedure(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR context);

    HWND m_window = nullptr;
    HWND m_parent = nullptr;
    HFONT m_font = nullptr;
    HBRUSH m_brush = nullptr;
    const Theme* m_theme = nullptr;
    Commit m_commit;
};

} // namespace gallery
