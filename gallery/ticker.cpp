#include "gallery/ticker.h"

namespace gallery {

namespace {

HWND windowOf(IVexControlBase& control)
{
    std::int64_t window = 0;
    control.GetWindow(&window);
    return reinterpret_cast<HWND>(window);
}

} // namespace

Ticker::Ticker(IVexControlBase& control, int periodMs, std::function<void()> action)
    : m_control(&control), m_action(std::move(action)), m_window(windowOf(control))
{
    if (m_window)
        SetTimer(m_window, reinterpret_cast<UINT_PTR>(this), static_cast<UINT>(periodMs), &Ticker::due);
}

void Ticker::stop()
{
    if (m_window)
        KillTimer(m_window, reinterpret_cast<UINT_PTR>(this));
    m_window = nullptr;
    m_action = nullptr;
    m_control.reset();
}

void CALLBACK Ticker::due(HWND, UINT, UINT_PTR ticker, DWORD)
{
    Ticker& self = *reinterpret_cast<Ticker*>(ticker);
    VARIANT_BOOL isVisible = VARIANT_FALSE;
    if (windowOf(*self.m_control) != self.m_window)
        return self.stop();
    self.m_control->IsVisible(&isVisible);
    if (isVisible != VARIANT_FALSE)
        self.m_action();
}

} // namespace gallery
