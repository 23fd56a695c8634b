// Pointer, focus and drops of a root.
#include "ambrel/objects/hit_test.h"
#include "ambrel/window/drop_target.h"
#include "ambrel/window/root_window.h"

namespace ambrel {

STDMETHODIMP RootWindow::IsCaptured(VARIANT_BOOL* result) noexcept
{
    return read(m_core.window() && ::GetCapture() == m_core.window(), result);
}

STDMETHODIMP RootWindow::SetCapture(VARIANT_BOOL captured) noexcept
{
    return held([&] { return m_core.capturePointer(captured != VARIANT_FALSE) ? S_OK : S_FALSE; });
}

STDMETHODIMP RootWindow::SetCaptureCtrl(IVexControlBase* control) noexcept
{
    return guarded([&] {
        SkinObjectCore* const core = coreOf(control);
        if (!core || &core->node().root() != &node())
            return E_INVALIDARG;
        // It would hear of the pointer, which objects that are hidden or disabled never do.
        if (!core->node().isShown() || !core->node().isUsable())
            return S_FALSE;
        m_core.router().captureFor(targetOf(&core->node()));
        return S_OK;
    });
}

STDMETHODIMP RootWindow::ReleaseCaptureCtrl() noexcept
{
    return held([&] { m_core.router().releaseCapture(); });
}

STDMETHODIMP RootWindow::GetHotObject(ISkinObjResBase** result) noexcept
{
    return finding(result, [&] { return faceOf(m_core.hotNode()); });
}

STDMETHODIMP RootWindow::GetCurrentFocusObject(ISkinObjResBase** result) noexcept
{
    return finding(result, [&] { return faceOf(m_core.focusNode()); });
}

STDMETHODIMP RootWindow::GetVexControlByPt(LONG x, LONG y, ISkinObjResBase** result) noexcept
{
    return finding(result, [&] {
        ObjectNode* const met = hitTest(node(), {static_cast<int>(x), static_cast<int>(y)}, HitPurpose::Anything);
        return faceOf(met == &node() ? nullptr : met);
    });
}

STDMETHODIMP RootWindow::ShiftFocus(VARIANT_BOOL forward) noexcept
{
    return held([&] { return m_core.router().shiftFocus(forward != VARIANT_FALSE) ? S_OK : S_FALSE; });
}

// Drops

STDMETHODIMP RootWindow::RegisterDropTarget() noexcept
{
    return guarded([&] {
        if (!m_core.window() || m_dropTarget)
            return S_FALSE;
        ComPtr<IDropTarget> target = makeDropTarget(m_core);
        const HRESULT status = RegisterDragDrop(m_core.window(), target.get());
        if (SUCCEEDED(status))
            m_dropTarget = target;
        return status;
    });
}

STDMETHODIMP RootWindow::RevokeDropTarget() noexcept
{
    return guarded([&] {
        if (!m_dropTarget)
            return S_FALSE;
        m_dropTarget.reset();
        return m_core.window() ? RevokeDragDrop(m_core.window()) : S_OK;
    });
}

STDMETHODIMP RootWindow::RegisterAcceptFile(IVexControlBase* control, LONG) noexcept
{
    return onObject(control, [&](ObjectNode& each) { m_core.acceptFiles(each, true); });
}

STDMETHODIMP RootWindow::RevokeAcceptFile(IVexControlBase* control) noexcept
{
    return onObject(control, [&](ObjectNode& each) { m_core.acceptFiles(each, false); });
}

STDMETHODIMP RootWindow::RegisterAccecptHwnd(hyper window) noexcept
{
    return guarded([&] { return m_core.acceptDrags(reinterpret_cast<HWND>(window)) ? S_OK : S_FALSE; });
}

STDMETHODIMP RootWindow::RevokeAcceptHwnd(hyper window) noexcept
{
    return m_core.refuseDrags(reinterpret_cast<HWND>(window)) ? S_OK : S_FALSE;
}

} // namespace ambrel
