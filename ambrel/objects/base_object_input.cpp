// Input, focus, sizes, timers and callbacks: state first, then the control is told.
#include "ambrel/objects/base_object.h"

#include "ambrel/trace/trace.h"

#include <algorithm>
#include <limits>

namespace ambrel {

STDMETHODIMP BaseObject::EventNotify(VexNotify* notice, VARIANT_BOOL* result) noexcept
{
    // Nobody but the control answers notifications; this is where they end when there is none.
    if (!notice)
        return E_POINTER;
    return returning(result, [] { return false; });
}

HRESULT BaseObject::pointer(VexMsgID id, short hitTest, short x, short y, long* result) noexcept
{
    return filling(result, [&](long& handled) {
        handled = tell(id, hitTest, x, y);
        return S_OK;
    });
}

STDMETHODIMP BaseObject::OnMouseEnter(short hitTest, short x, short y, long* result) noexcept
{
    m_node.set(NodeFlag::MouseOver, true);
    return pointer(VEXSM_MOUSEENTER, hitTest, x, y, result);
}

STDMETHODIMP BaseObject::OnMouseMove(short hitTest, short x, short y, long* result) noexcept
{
    m_node.set(NodeFlag::MouseOver, true);
    return filling(result, [&](long& handled) {
        const ComPtr<IVexControlBase> hold(control());
        handled = tell(VEXSM_MOUSEMOVE, hitTest, x, y) || tell(VEXSM_DISPOSEMOUSEMOVE);
        return S_OK;
    });
}

STDMETHODIMP BaseObject::OnLButtonDown(short hitTest, short x, short y, long* result) noexcept
{
    m_node.set(NodeFlag::LeftButtonDown, true);
    return pointer(VEXSM_LBUTTONDOWN, hitTest, x, y, result);
}

STDMETHODIMP BaseObject::OnLButtonDbClick(short hitTest, short x, short y, long* result) noexcept
{
    m_node.set(NodeFlag::LeftButtonDown, true); // it is the second press
    return pointer(VEXSM_LBUTTONDBCLICK, hitTest, x, y, result);
}

STDMETHODIMP BaseObject::OnLButtonUp(short hitTest, short x, short y, long* result) noexcept
{
    m_node.set(NodeFlag::LeftButtonDown, false);
    return pointer(VEXSM_LBUTTONUP, hitTest, x, y, result);
}

STDMETHODIMP BaseObject::OnMouseLeave(long* result) noexcept
{
    m_node.set(NodeFlag::MouseOver, false);
    return pointer(VEXSM_MOUSELEAVE, 0, 0, 0, result);
}

void BaseObject::focusGained(Point at)
{
    m_node.set(NodeFlag::Focused, true);
    showFocusMark();
    tell(VEXSM_ONSETFOCUS, 0, at.x, at.y);
}

void BaseObject::focusLost()
{
    showFocusMark(); // while it is known where the mark lies
    m_node.set(NodeFlag::Focused, false);
    tell(VEXSM_ONKILLFOCUS);
}

void BaseObject::showFocusMark()
{
    // The mark is the runtime's: most controls do not redraw themselves for it.
    RootServices* const window = services();
    if (window && window->showsFocusMarks() && m_node.has(NodeFlag::DrawsFocus))
        invalidate();
}

STDMETHODIMP BaseObject::OnSetFocus(short x, short y, long* result) noexcept
{
    m_node.set(NodeFlag::Focused, true);
    return pointer(VEXSM_ONSETFOCUS, 0, x, y, result);
}

STDMETHODIMP BaseObject::OnKillFocus() noexcept
{
    return guarded([&] { focusLost(); });
}

STDMETHODIMP BaseObject::OnSize() noexcept
{
    return guarded([&] {
        const ComPtr<IVexControlBase> hold(control());
        layOutChildren();
        sizeChanged();
    });
}

STDMETHODIMP BaseObject::OnTimer(unsigned int id) noexcept
{
    return guarded([&] { return tell(VEXSM_TIMER, id) ? S_OK : S_FALSE; });
}

void BaseObject::sizeChanged()
{
    if (m_node.has(NodeFlag::Initialised)) // before that it has nothing to lay out
        tell(VEXSM_SIZE);
}

void BaseObject::enabledChanged(bool enabled, bool redraws)
{
    tell(VEXSM_ENABLEOBJECT, enabled, redraws);
}

STDMETHODIMP BaseObject::SetFocus(VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        const ComPtr<IVexControlBase> hold(control());
        RootServices* const window = services();
        return window && window->setFocus(&m_node);
    });
}

STDMETHODIMP BaseObject::KillFocus() noexcept
{
    return guarded([&] {
        const ComPtr<IVexControlBase> hold(control());
        RootServices* const window = services();
        if (!window || window->focusNode() != &m_node)
            return S_FALSE;
        window->setFocus(nullptr);
        return S_OK;
    });
}

STDMETHODIMP BaseObject::ShiftFocus() noexcept
{
    return guarded([&] {
        const ComPtr<IVexControlBase> hold(control());
        RootServices* const window = services();
        if (window)
            window->shiftFocus(true);
        return window ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::AddMsgCallback(long message, hyper function, hyper self, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& added) {
        if (!function)
            return E_INVALIDARG;
        if (!m_callbacks)
            m_callbacks = std::make_unique<MessageCallbacks>();
        added = morvane::toVariantBool(m_callbacks->add(message, function, self));
        return added ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::RemoveMsgCallback(long message, hyper function, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] { return m_callbacks && m_callbacks->remove(message, function); });
}

STDMETHODIMP BaseObject::GetMsgCallbackCount(long message, short* result) noexcept
{
    return returning(result, [&] {
        const std::size_t count = m_callbacks ? m_callbacks->count(message) : 0;
        return static_cast<short>(std::min<std::size_t>(count, std::numeric_limits<short>::max()));
    });
}

STDMETHODIMP BaseObject::GetCallbackAddress(long message, hyper self, hyper* result) noexcept
{
    return filling(result, [&](hyper& address) {
        address = m_callbacks ? m_callbacks->find(message, self) : 0;
        return address ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::CallMsg(long message, hyper wParam, hyper lParam, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const ComPtr<IVexControlBase> hold(control());
        const ComPtr<IVexControlBase> self(this); // owns the list of callbacks
        trace(AMBREL_TRACE_CALLBACK, hold.get(), message, wParam, lParam);
        return m_callbacks && m_callbacks->call(message, wParam, lParam);
    });
}

} // namespace ambrel
