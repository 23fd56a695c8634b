#include "gallery/inspector/row_pager.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr Size kArrow{24, 22};

void enable(ICmdButton& button, bool isEnabled)
{
    VARIANT_BOOL was = VARIANT_FALSE;
    VARIANT_BOOL done = VARIANT_FALSE;
    button.IsEnable(&was);
    if ((was != VARIANT_FALSE) != isEnabled)
        button.EnableObject(isEnabled ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, &done);
}

} // namespace

void showText(ICmdButton& control, std::wstring& shown, const std::wstring& text)
{
    if (shown == text)
        return;
    shown = text;
    control.SetText(Bstr(text).get());
}

RowPager::RowPager(Scene& scene, IVexControlBase& parent, const Rect& place, std::wstring_view title,
                   std::size_t visibleRows, std::function<void()> moved)
    : m_shownTitle(title), m_visible(visibleRows), m_moved(std::move(moved))
{
    const Theme& theme = scene.theme();
    const int on = place.right - kArrow.width;
    const int back = on - kArrow.width - 4;
    constexpr int kRangeWidth = 84;
    m_title = scene.label(&parent, {place.left, place.top, back - kRangeWidth - 8, place.bottom}, title,
                          {theme.text, 9, true, TextAlign::Near, 0, true});
    m_range = scene.label(&parent, {back - kRangeWidth - 8, place.top, back - 8, place.bottom}, L"",
                          {theme.textSoft, 9, false, TextAlign::Far});
    m_back = scene.button(&parent, Rect::at({back, place.top}, kArrow), L"\u2039");
    m_on = scene.button(&parent, Rect::at({on, place.top}, kArrow), L"\u203A");
    scene.onClick(*m_back, [this] { scroll(-static_cast<int>(m_visible)); });
    scene.onClick(*m_on, [this] { scroll(static_cast<int>(m_visible)); });
    showRange();
}

void RowPager::setTitle(const std::wstring& title)
{
    showText(*m_title, m_shownTitle, title);
}

void RowPager::setCount(std::size_t count)
{
    m_count = count;
    m_first = std::min(m_first, lastFirst());
    showRange();
}

void RowPager::goTo(std::size_t first)
{
    first = std::min(first, lastFirst());
    if (first == m_first)
        return;
    m_first = first;
    showRange();
    m_moved();
}

void RowPager::scroll(int rows)
{
    const auto target = static_cast<std::int64_t>(m_first) + rows;
    goTo(target > 0 ? static_cast<std::size_t>(target) : 0);
}

void RowPager::reveal(std::size_t row)
{
    if (row < m_first)
        goTo(row);
    else if (row >= m_first + m_visible)
        goTo(row + 1 - m_visible);
}

void RowPager::showRange()
{
    const std::size_t last = std::min(m_first + m_visible, m_count);
    showText(*m_range, m_shownRange,
             m_count == 0 ? std::wstring(L"none")
                          : std::to_wstring(m_first + 1) + L"\u2013" + std::to_wstring(last) + L" of " +
                                std::to_wstring(m_count));
    enable(*m_back, m_first > 0);
    enable(*m_on, m_first < lastFirst());
}

} // namespace gallery
