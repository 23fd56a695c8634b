// Messages of a root: who hears them, and what the application hears.
#include "ambrel/window/root_window.h"

namespace ambrel {

STDMETHODIMP RootWindow::RegisterMessage(ULONG message, ISkinObjResBase* object, VARIANT_BOOL withChildren,
                                         VARIANT_BOOL* result) noexcept
{
    return onObject(object, result, [&](ObjectNode& each) {
        return m_core.messages().add(message, each, withChildren != VARIANT_FALSE);
    });
}

STDMETHODIMP RootWindow::UnRegisterMessage(ULONG message, ISkinObjResBase* object, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        SkinObjectCore* const core = coreOf(object);
        return core && m_core.messages().remove(message, core->node());
    });
}

STDMETHODIMP RootWindow::RemoveAllRegister() noexcept
{
    return m_core.messages().removeAll(), S_OK;
}

STDMETHODIMP RootWindow::RegisterWholeMessage(ISkinObjResBase* object, VARIANT_BOOL withChildren,
                                              VARIANT_BOOL* result) noexcept
{
    return onObject(object, result,
                    [&](ObjectNode& each) { return m_core.messages().addWhole(each, withChildren != VARIANT_FALSE); });
}

STDMETHODIMP RootWindow::UnRegisterWholeMessage(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        SkinObjectCore* const core = coreOf(object);
        return core && m_core.messages().removeWhole(core->node());
    });
}

STDMETHODIMP RootWindow::RemoveAllWholeMessage() noexcept
{
    return m_core.messages().removeAllWhole(), S_OK;
}

STDMETHODIMP RootWindow::DoWindowProc(hyper window, LONG message, hyper wParam, hyper lParam, LONG* result) noexcept
{
    return filling(result, [&](LONG& answer) {
        if (!m_core.window() || reinterpret_cast<HWND>(window) != m_core.window())
            return S_FALSE;
        answer = static_cast<LONG>(
            m_core.handle(static_cast<UINT>(message), static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam)));
        return S_OK;
    });
}

STDMETHODIMP RootWindow::Default(LONG* result) noexcept
{
    return returning(result, [&] { return static_cast<LONG>(m_core.defaultForCurrent()); });
}

STDMETHODIMP RootWindow::SetDispatchMsg(LONG message) noexcept
{
    return guarded([&] { m_core.passOn(static_cast<UINT>(message), true); });
}

STDMETHODIMP RootWindow::RemoveDispatchMsg(LONG message) noexcept
{
    return guarded([&] { m_core.passOn(static_cast<UINT>(message), false); });
}

STDMETHODIMP RootWindow::SetEventRecieve(hyper receiver) noexcept
{
    return m_core.setReceiver(reinterpret_cast<AmbrelEventReceiver*>(receiver)), S_OK;
}

STDMETHODIMP RootWindow::VexMessage(hyper window, LONG message, hyper wParam, hyper lParam) noexcept
{
    return held([&] { m_core.sendToReceiver(reinterpret_cast<HWND>(window), message, wParam, lParam); });
}

STDMETHODIMP RootWindow::AppendFinalCtrl(ISkinObjResBase* object) noexcept
{
    return onObject(object, [&](ObjectNode& each) { m_core.finalCreatePending(each); });
}

STDMETHODIMP RootWindow::RemoveFinalCtrl(ISkinObjResBase* object) noexcept
{
    return onObject(object, [&](ObjectNode& each) { m_core.finalCreateDone(each); });
}

} // namespace ambrel
