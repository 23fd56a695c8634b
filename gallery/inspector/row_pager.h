// The heading over a list of rows that shows a part of them: title, which part, and buttons to move it.
#pragma once

#include "gallery/scene.h"

namespace gallery {

class RowPager {
public:
    /// `place` is the heading's; `moved` runs after another part is to be shown.
    RowPager(Scene& scene, IVexControlBase& parent, const Rect& place, std::wstring_view title, std::size_t visibleRows,
             std::function<void()> moved);

    std::size_t first() const { return m_first; }
    std::size_t visibleRows() const { return m_visible; }
    RowPager(const RowPager&) = delete;
    RowPager& operator=(const RowPager&) = delete;

    /// How many rows there are now; the shown part stays inside.
    void setCount(std::size_t count);
    void goTo(std::size_t first);
    void scroll(int rows);
    /// Moves the shown part so that the row is in it.
    void reveal(std::size_t row);
    void setTitle(const std::wstring& title);

private:
    std::size_t lastFirst() const { return m_count > m_visible ? m_count - m_visible : 0; }
    void showRange();

    ComPtr<ICmdButton> m_title;
    ComPtr<ICmdButton> m_range;
    ComPtr<ICmdButton> m_back;
    ComPtr<ICmdButton> m_on;
    std::wstring m_shownTitle;
    std::wstring m_shownRange;
    std::size_t m_visible;
    std::size_t m_count = 0;
    std::size_t m_first = 0;
    std::function<void()> m_moved;
};

/// Sets a button's text when it is another one.
void showText(ICmdButton& control, std::wstring& shown, const std::wstring& text);

} // namespace gallery
