#include "frame/control_frame.h"

#include "frame/module_resources.h"
#include "host/geometry.h"

#include <algorithm>
#include <utility>

namespace morvane {

namespace {

constexpr UINT kSetToolTip = 3464;
constexpr const wchar_t* kSkinResourceType = L"UIFILES";

} // namespace

void ControlFrame::constructInnerObjects()
{
    // Neither result is a reason to fail: a control without its host objects refuses forwarded calls and draws nothing.
    m_hostClasses = HostClasses::shared();
    m_inner = m_hostClasses->createInnerBase();
    if (m_inner)
        m_inner->SetRealCtrlPtr(&self());
    m_objectDraw = m_hostClasses->createObjectDraw();
}

void ControlFrame::releaseHostObjects()
{
    // Out of the control's reach first: what comes back in while it lets go finds no host to attach it to again.
    const ComPtr<IVexControlBase> inner = std::move(m_inner);
    const HostCache host = std::exchange(m_host, {});
    unregisterWindowMessages(host.root.get());
    letGo(host);
    m_objectDraw.reset();
    if (inner)
        inner->SetRealCtrlPtr(nullptr); // the inner base object may live on in the hands of others
}

// State of the inner base object -------------------------------------------------------------------------------------

namespace {

template <class Getter>
bool ask(IVexControlBase* inner, Getter getter, bool otherwise = false)
{
    VARIANT_BOOL answer = VARIANT_FALSE;
    if (!inner || FAILED((inner->*getter)(&answer)))
        return otherwise;
    return answer != VARIANT_FALSE;
}

} // namespace

Rect ControlFrame::ownRect() const
{
    ComPtr<IVexRect> object;
    if (m_inner)
        m_inner->GetRect(object.put());
    SkinRect rect{};
    if (object)
        object->GetRectStruct(&rect);
    return toRect(rect);
}

bool ControlFrame::isEnabled() const
{
    return ask(m_inner.get(), &IVexControlBase::IsEnable, true);
}
bool ControlFrame::isLeftButtonDown() const
{
    return ask(m_inner.get(), &IVexControlBase::IsLButtonDowned);
}
bool ControlFrame::isMouseOver() const
{
    return ask(m_inner.get(), &IVexControlBase::IsMouseMove);
}
bool ControlFrame::isMirrored() const
{
    return ask(m_inner.get(), &IVexControlBase::IsMirrorObject);
}

bool ControlFrame::isDesignTime() const
{
    VARIANT_BOOL design = VARIANT_FALSE;
    if (const ComPtr<IVexRes> res = m_host.res)
        res->IsDesignStatus(&design);
    return design != VARIANT_FALSE;
}

void ControlFrame::setMouseOver(bool over)
{
    if (m_inner)
        m_inner->SetMouseMove(over ? VARIANT_TRUE : VARIANT_FALSE);
}

bool ControlFrame::isFocusObject()
{
    ComPtr<ISkinObjResBase> focused;
    if (const ComPtr<IAmbrel> root = m_host.root)
        root->GetCurrentFocusObject(focused.put());
    return focused && isSameObject(focused.get(), &self());
}

ComPtr<IVexControlBase> ControlFrame::realControl() const
{
    ComPtr<IVexControlBase> real;
    if (m_inner)
        m_inner->GetRealCtrlPtr(real.put());
    return real;
}

// Redrawing -----------------------------------------------------------------------------------------------------------

void ControlFrame::redraw()
{
    if (m_inner)
        m_inner->DirectRedraw(nullptr);
}

void ControlFrame::redrawOwnRect()
{
    if (!m_inner)
        return;
    SkinRect rect = toSkinRect(ownRect());
    m_inner->DirectRedraw(&rect);
}

void ControlFrame::redrawIf(VARIANT_BOOL asked)
{
    if (asked != VARIANT_FALSE)
        redraw();
}

void ControlFrame::drawFocusMark(IVexRenderDC& dc)
{
    if (m_inner)
        m_inner->RenderDrawFocus(&dc);
}

// Telling others ------------------------------------------------------------------------------------------------------

bool ControlFrame::raise(const PointerNotice& notice)
{
    return raise(notice.id, notice.packed());
}

bool ControlFrame::raise(long message, std::int64_t lParam)
{
    const ComPtr<IVexControlBase> inner = m_inner; // a callback may take the control apart
    if (!inner)
        return false;
    const ComPtr<IVexControlBase> real = realControl();
    VARIANT_BOOL answer = VARIANT_FALSE;
    inner->CallMsg(message, reinterpret_cast<std::int64_t>(real.get()), lParam, &answer);
    return answer != VARIANT_FALSE;
}

LRESULT ControlFrame::sendToHost(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_host.window ? SendMessageW(m_host.window, message, wParam, lParam) : 0;
}

LRESULT ControlFrame::sendControlToHost(UINT message, LPARAM lParam)
{
    const ComPtr<IVexControlBase> real = realControl();
    return sendToHost(message, reinterpret_cast<WPARAM>(real.get()), lParam);
}

void ControlFrame::sendToolTip()
{
    if (!m_host.window)
        m_host.refreshWindow();
    // The copy lives until the host has answered; an empty text hides the tip.
    Bstr text = toolTipText();
    if (!text.get())
        text = Bstr(L"");
    sendToHost(kSetToolTip, reinterpret_cast<WPARAM>(text.get()), reinterpret_cast<LPARAM>(&self()));
}

void ControlFrame::registerWindowMessage(UINT message)
{
    const ComPtr<IAmbrel> root = m_host.root;
    if (!root || m_registered.contains(message))
        return;
    m_registered.add(message);
    VARIANT_BOOL done = VARIANT_FALSE;
    root->RegisterMessage(message, &self(), VARIANT_FALSE, &done);
    // The call may have taken the control out of this window before it was registered there.
    if (m_host.root != root || !m_registered.contains(message))
        root->UnRegisterMessage(message, &self(), &done);
}

void ControlFrame::unregisterWindowMessages(IAmbrel* root)
{
    const MessageList messages = std::exchange(m_registered, {});
    for (const UINT message : messages.items()) {
        VARIANT_BOOL done = VARIANT_FALSE;
        if (root)
            root->UnRegisterMessage(message, &self(), &done);
    }
}

void ControlFrame::reportRightButtonUp(const WindowMessageNotice& notice)
{
    if (ownRect().contains(unpackPoint(notice.lParam)))
        sendControlToHost(VEXSM_RBUTTONUP, 0);
}

// Common handling -----------------------------------------------------------------------------------------------------

void ControlFrame::fillHostCache()
{
    if (!m_inner)
        return;
    const unsigned turn = ++m_fills;
    HostCache now = HostCache::of(*m_inner);
    if (turn != m_fills)
        return; // filled again in the meantime, with what holds since
    const ComPtr<IAmbrel> before = m_host.root;
    m_host = std::move(now); // the control may have moved to another window or skin
    if (m_host.root != before)
        moveRegistrations(before.get());
}

/// A root keeps no reference on those it delivers to, so a control that has left one must not stay registered there.
void ControlFrame::moveRegistrations(IAmbrel* before)
{
    const MessageList messages = m_registered;
    unregisterWindowMessages(before);
    for (const UINT message : messages.items())
        registerWindowMessage(message);
}

Handled ControlFrame::onInitObject()
{
    if (m_inner && m_host.ensureRoot(*m_inner))
        m_host.refreshWindow();
    return Handled::Yes;
}

Handled ControlFrame::onDestroying()
{
    unregisterWindowMessages(ComPtr<IAmbrel>(m_host.root).get());
    return Handled::No;
}

Handled ControlFrame::onAccessConfigured(bool)
{
    fillHostCache();
    return Handled::No;
}

Handled ControlFrame::onFinalCreate()
{
    fillHostCache();
    return Handled::Yes;
}

Handled ControlFrame::onImportConfig(const ImportRequest& request)
{
    if (info().defaultSkin == 0)
        return Handled::No;
    if (request.res) {
        Bstr type{kSkinResourceType};
        ComPtr<IVexControlBase> unwanted;
        request.res->ImportSkin(reinterpret_cast<std::int64_t>(namedModule()), info().defaultSkin, type.get(),
                                request.parent, request.result ? request.result : unwanted.put());
    }
    return Handled::Yes;
}

Handled ControlFrame::onMouseEnter(const PointerNotice& notice)
{
    redraw();
    sendToolTip();
    raise(notice);
    sendControlToHost(static_cast<UINT>(notice.id), notice.packed());
    return Handled::Yes;
}

Handled ControlFrame::onMouseMove(const PointerNotice& notice)
{
    raise(notice);
    return Handled::No; // the framework moves the hot object on
}

Handled ControlFrame::onMouseLeave(const PointerNotice& notice)
{
    redraw();
    raise(notice.id, 0);
    return Handled::Yes;
}

Handled ControlFrame::onLeftButtonDown(const PointerNotice& notice)
{
    redraw();
    raise(notice);
    return Handled::Yes;
}

Handled ControlFrame::onLeftButtonUp(const PointerNotice& notice)
{
    redraw();
    raise(notice);
    return Handled::Yes;
}

Handled ControlFrame::onLeftDoubleClick(const PointerNotice& notice)
{
    redraw();
    raise(notice);
    return Handled::Yes;
}

Handled ControlFrame::onSetFocus()
{
    m_hasFocus = true;
    redraw();
    return Handled::No;
}

Handled ControlFrame::onKillFocus()
{
    m_hasFocus = false;
    redraw();
    return Handled::No;
}

Handled ControlFrame::onWindowMessage(const WindowMessageNotice& notice)
{
    if (notice.message == WM_RBUTTONUP)
        reportRightButtonUp(notice);
    return Handled::No; // other registered objects hear of it too
}

Handled ControlFrame::onDrawPreview()
{
    redrawOwnRect();
    return Handled::No;
}

Handled ControlFrame::onIsDragEnabled(VARIANT_BOOL& enabled)
{
    enabled = VARIANT_FALSE;
    return Handled::Yes;
}

Handled ControlFrame::onGetTabInfo(VARIANT_BOOL& takesTab, VARIANT_BOOL& drawsFocus)
{
    takesTab = VARIANT_TRUE;
    drawsFocus = VARIANT_TRUE;
    return Handled::Yes;
}

} // namespace morvane
