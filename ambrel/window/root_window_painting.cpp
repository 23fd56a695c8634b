// What a root shows, and when.
#include "ambrel/window/root_window.h"

namespace ambrel {

STDMETHODIMP RootWindow::Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return onDeviceContext(dc, result, [&](HDC target) {
        const ComPtr<IAmbrel> hold(this);
        m_core.renderAll(node().rect().size());
        m_core.surface().copyTo(target, morvane::toRect(rect));
        return true;
    });
}

STDMETHODIMP RootWindow::SetRefreshType(VEX_REFRESH_TYPE type) noexcept
{
    if (type != VEX_REFRESH_ALL && type != VEX_REFRESH_PART)
        return E_INVALIDARG;
    return m_core.setRefreshType(type), S_OK;
}

STDMETHODIMP RootWindow::FreezeUpdate(VARIANT_BOOL freeze) noexcept
{
    return guarded([&] { m_core.setFrozen(freeze != VARIANT_FALSE); });
}

STDMETHODIMP RootWindow::GetFreezeHBitmap(hyper* result) noexcept
{
    return read(reinterpret_cast<hyper>(m_core.isFrozen() ? m_core.surface().bitmap() : nullptr), result);
}

STDMETHODIMP RootWindow::SetFreezeDrawRect(SkinRect rect) noexcept
{
    return guarded([&] { m_core.setFrozenPart(morvane::toRect(rect)); });
}

STDMETHODIMP RootWindow::AddDirtyRect(SkinRect rect) noexcept
{
    return guarded([&] { m_core.invalidate(morvane::toRect(rect).intersection(node().rect())); });
}

STDMETHODIMP RootWindow::Present(SkinRect* result) noexcept
{
    return returning(result, [&] {
        const ComPtr<IAmbrel> hold(this);
        m_core.paintNow();
        return morvane::toSkinRect(m_core.lastPainted());
    });
}

STDMETHODIMP RootWindow::DirectDrawImmediate() noexcept
{
    return held([&] {
        m_core.invalidate(node().rect());
        m_core.paintNow();
    });
}

STDMETHODIMP RootWindow::SetBatchMode(VARIANT_BOOL batch) noexcept
{
    return guarded([&] { m_core.setBatching(batch != VARIANT_FALSE); });
}

STDMETHODIMP RootWindow::SetArabicMode(VARIANT_BOOL mirror) noexcept
{
    return held([&] {
        setMirrored(mirror != VARIANT_FALSE);
        layOutChildren();
        m_core.invalidate(node().rect());
    });
}

} // namespace ambrel
