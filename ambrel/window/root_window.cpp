#include "ambrel/window/root_window.h"

#include "ambrel/objects/hit_test.h"
#include "ambrel/window/drop_target.h"
#include "frame/com/instance.h"

#include <algorithm>

namespace ambrel {

using morvane::ComPtr;
using morvane::toVariantBool;

namespace {

bool isTrue(VARIANT_BOOL value) noexcept
{
    return value != VARIANT_FALSE;
}

/// Only dots per inch and the system's own limit the other direction: a window of this size can be made anywhere.
bool isPossible(const Rect& rect) noexcept
{
    constexpr int kLargest = 32767;
    return rect.width() >= 0 && rect.height() >= 0 && rect.width() <= kLargest && rect.height() <= kLargest;
}

} // namespace

ComPtr<RootWindow> RootWindow::make(IVexRes* resources, std::wstring_view name)
{
    ComPtr<RootWindow> root = morvane::Instance<RootWindow>::make();
    root->setResources(resources);
    root->setName(name);
    return root;
}

RootWindow* RootWindow::from(IUnknown* root) noexcept
{
    return dynamic_cast<RootWindow*>(coreOf(root));
}

void RootWindow::finalRelease()
{
    m_core.destroy();
    releaseTree();
}

void RootWindow::sizeChanged()
{
    m_core.invalidate(node().rect());
}

template <class Body>
HRESULT RootWindow::onWindow(VARIANT_BOOL* result, Body&& body) noexcept
{
    return answering(result, [&] { return m_core.window() && body(m_core.window()); });
}

HRESULT RootWindow::setTrait(bool& trait, VARIANT_BOOL on) noexcept
{
    return guarded([&] {
        if (trait == isTrue(on))
            return S_FALSE;
        trait = isTrue(on);
        m_core.applyTraits();
        return S_OK;
    });
}

STDMETHODIMP RootWindow::SetVisible(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL animate) noexcept
{
    return guarded([&] {
        const ComPtr<IAmbrel> hold(this);
        setVisible(isTrue(visible), isTrue(refresh));
        if (m_core.window() && isTrue(animate))
            m_core.fade(isTrue(visible), VEX_FADE_IN);
        else if (m_core.window())
            ::ShowWindow(m_core.window(), isTrue(visible) ? SW_SHOW : SW_HIDE);
    });
}

STDMETHODIMP RootWindow::SetName(BSTR text) noexcept
{
    return guarded([&] {
        setName(morvane::viewOf(text));
        if (m_core.window())
            ::SetWindowTextW(m_core.window(), std::wstring(name()).c_str());
    });
}

// The window

STDMETHODIMP RootWindow::Create(hyper parent, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& created) {
        const auto owner = reinterpret_cast<HWND>(parent);
        const Rect place = morvane::toRect(rect);
        if ((owner && !IsWindow(owner)) || !isPossible(place))
            return E_INVALIDARG;
        const ComPtr<IAmbrel> hold(this);
        if (m_core.window()) // made already: it takes the new place
            created = toVariantBool(::SetWindowPos(m_core.window(), nullptr, place.left, place.top, place.width(),
                                                   place.height(), SWP_NOZORDER | SWP_NOACTIVATE) != FALSE);
        else
            created = toVariantBool(m_core.create(owner, place));
        return isTrue(created) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP RootWindow::GetWindowHandle(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_core.window()); });
}

STDMETHODIMP RootWindow::IsSupportPerPixel(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.traits().perPixel; });
}
STDMETHODIMP RootWindow::SetSupportPerPixel(VARIANT_BOOL on) noexcept
{
    return setTrait(m_core.traits().perPixel, on);
}

STDMETHODIMP RootWindow::GetResizeBorder(SkinRect* result) noexcept
{
    return returning(result, [&] { return m_core.traits().resizeBorder; });
}
STDMETHODIMP RootWindow::SetResizeBorder(SkinRect border) noexcept
{
    if (border.left < 0 || border.top < 0 || border.right < 0 || border.bottom < 0)
        return E_INVALIDARG;
    m_core.traits().resizeBorder = border;
    return S_OK;
}

STDMETHODIMP RootWindow::GetMinSize(SkinSize* result) noexcept
{
    return returning(result, [&] { return m_core.traits().minSize; });
}
STDMETHODIMP RootWindow::SetMinSize(SkinSize* size) noexcept
{
    return size ? (m_core.traits().minSize = *size, S_OK) : E_POINTER;
}
STDMETHODIMP RootWindow::GetMaxSize(SkinSize* result) noexcept
{
    return returning(result, [&] { return m_core.traits().maxSize; });
}
STDMETHODIMP RootWindow::SetMaxSize(SkinSize* size) noexcept
{
    return size ? (m_core.traits().maxSize = *size, S_OK) : E_POINTER;
}

STDMETHODIMP RootWindow::IsPopWindow(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.traits().popup; });
}
STDMETHODIMP RootWindow::SetPopWindow(VARIANT_BOOL popup) noexcept
{
    m_core.traits().popup = isTrue(popup); // for the window's creation
    return m_core.window() ? S_FALSE : S_OK;
}
STDMETHODIMP RootWindow::IsResizable(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.traits().resizable; });
}
STDMETHODIMP RootWindow::SetResizable(VARIANT_BOOL on) noexcept
{
    return setTrait(m_core.traits().resizable, on);
}
STDMETHODIMP RootWindow::IsDragabled(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.traits().dragable; });
}
STDMETHODIMP RootWindow::SetDragabled(VARIANT_BOOL on) noexcept
{
    m_core.traits().dragable = isTrue(on);
    return S_OK;
}

STDMETHODIMP RootWindow::IsSetRgn(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.traits().shaped; });
}
STDMETHODIMP RootWindow::SetRgn(VARIANT_BOOL on) noexcept
{
    return guarded([&] {
        m_core.traits().shaped = isTrue(on);
        m_core.updateShape();
    });
}
STDMETHODIMP RootWindow::SetWindowRgn() noexcept
{
    return ReCalcRgn();
}
STDMETHODIMP RootWindow::ReCalcRgn() noexcept
{
    return guarded([&] { m_core.updateShape(); });
}

STDMETHODIMP RootWindow::ResizeSence(short width, short height) noexcept
{
    if (width < 0 || height < 0)
        return E_INVALIDARG;
    return guarded([&] {
        return m_core.window() && ::SetWindowPos(m_core.window(), nullptr, 0, 0, width, height,
                                                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE)
                   ? S_OK
                   : S_FALSE;
    });
}

STDMETHODIMP RootWindow::FadeShow(VARIANT_BOOL show, VEX_FADE_TYPE type) noexcept
{
    return guarded([&] {
        if (!m_core.window())
            return S_FALSE;
        const ComPtr<IAmbrel> hold(this);
        m_core.fade(isTrue(show), type);
        return S_OK;
    });
}

STDMETHODIMP RootWindow::RegSyncMoveWindow(hyper window, IVexControlBase*) noexcept
{
    return guarded([&] {
        if (!IsWindow(reinterpret_cast<HWND>(window)))
            return S_FALSE;
        m_core.followMoves(reinterpret_cast<HWND>(window), true);
        return S_OK;
    });
}
STDMETHODIMP RootWindow::UnRegSyncMoveWindow(hyper window) noexcept
{
    return guarded([&] { m_core.followMoves(reinterpret_cast<HWND>(window), false); });
}
STDMETHODIMP RootWindow::SynMoveWindow() noexcept
{
    return guarded([&] { m_core.moveFollowers(); });
}

// Messages

STDMETHODIMP RootWindow::RegisterMessage(ULONG message, ISkinObjResBase* object, VARIANT_BOOL withChildren,
                                         VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& added) {
        SkinObjectCore* core = nullptr;
        const HRESULT status = checkedCore(object, core);
        if (FAILED(status))
            return status;
        added = toVariantBool(m_core.messages().add(message, core->node(), isTrue(withChildren)));
        return isTrue(added) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP RootWindow::UnRegisterMessage(ULONG message, ISkinObjResBase* object, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        SkinObjectCore* core = coreOf(object);
        return core && m_core.messages().remove(message, core->node());
    });
}

STDMETHODIMP RootWindow::RemoveAllRegister() noexcept
{
    m_core.messages().removeAll();
    return S_OK;
}

STDMETHODIMP RootWindow::RegisterWholeMessage(ISkinObjResBase* object, VARIANT_BOOL withChildren,
                                              VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& added) {
        SkinObjectCore* core = nullptr;
        const HRESULT status = checkedCore(object, core);
        if (FAILED(status))
            return status;
        added = toVariantBool(m_core.messages().addWhole(core->node(), isTrue(withChildren)));
        return isTrue(added) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP RootWindow::UnRegisterWholeMessage(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        SkinObjectCore* core = coreOf(object);
        return core && m_core.messages().removeWhole(core->node());
    });
}

STDMETHODIMP RootWindow::RemoveAllWholeMessage() noexcept
{
    m_core.messages().removeAllWhole();
    return S_OK;
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

STDMETHODIMP RootWindow::SetMessageEntry(LONG*, LONG*) noexcept
{
    return E_NOTIMPL;
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
    m_core.setReceiver(reinterpret_cast<AmbrelEventReceiver*>(receiver));
    return S_OK;
}
STDMETHODIMP RootWindow::GetEventRecieve(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_core.receiver()); });
}

STDMETHODIMP RootWindow::VexMessage(hyper window, LONG message, hyper wParam, hyper lParam) noexcept
{
    return guarded([&] {
        const ComPtr<IAmbrel> hold(this);
        m_core.sendToReceiver(reinterpret_cast<HWND>(window), message, wParam, lParam);
    });
}

// Painting

STDMETHODIMP RootWindow::Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    if (!dc)
        return E_INVALIDARG;
    return answering(result, [&] {
        const ComPtr<IAmbrel> hold(this);
        m_core.renderAll(node().rect().size());
        m_core.surface().copyTo(reinterpret_cast<HDC>(dc), morvane::toRect(rect));
        return true;
    });
}

STDMETHODIMP RootWindow::GetRenderEngine(VEX_RENDERENGINE_TYPE* result) noexcept
{
    return returning(result, [] { return VEX_RENDERENGINE_GDI; });
}
STDMETHODIMP RootWindow::SetRenderEngine(VEX_RENDERENGINE_TYPE type) noexcept
{
    return type == VEX_RENDERENGINE_GDI ? S_OK : E_NOTIMPL;
}
STDMETHODIMP RootWindow::GetRenderDevice(hyper* result) noexcept
{
    return returning(result, [&] { return m_core.renderDevice(); });
}
STDMETHODIMP RootWindow::SetRefreshType(VEX_REFRESH_TYPE type) noexcept
{
    m_refreshType = type;
    return S_OK;
}
STDMETHODIMP RootWindow::GetRefreshType(hyper* result) noexcept
{
    return returning(result, [&] { return m_refreshType; });
}

STDMETHODIMP RootWindow::FreezeUpdate(VARIANT_BOOL freeze) noexcept
{
    return guarded([&] { m_core.setFrozen(isTrue(freeze)); });
}
STDMETHODIMP RootWindow::IsFreezeUpdate(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.isFrozen(); });
}
STDMETHODIMP RootWindow::GetFreezeHBitmap(hyper* result) noexcept
{
    return returning(result,
                     [&] { return m_core.isFrozen() ? reinterpret_cast<hyper>(m_core.surface().bitmap()) : 0; });
}
STDMETHODIMP RootWindow::SetFreezeDrawRect(SkinRect) noexcept
{
    return E_NOTIMPL;
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
    return guarded([&] {
        const ComPtr<IAmbrel> hold(this);
        m_core.invalidate(node().rect());
        m_core.paintNow();
    });
}
STDMETHODIMP RootWindow::IsBatchMode(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.isBatching(); });
}
STDMETHODIMP RootWindow::SetBatchMode(VARIANT_BOOL batch) noexcept
{
    return guarded([&] { m_core.setBatching(isTrue(batch)); });
}

// Input

STDMETHODIMP RootWindow::IsCaptured(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.window() && ::GetCapture() == m_core.window(); });
}

STDMETHODIMP RootWindow::SetCapture(VARIANT_BOOL captured) noexcept
{
    return guarded([&] {
        if (!m_core.window())
            return S_FALSE;
        m_capturesPointer = isTrue(captured);
        if (m_capturesPointer)
            ::SetCapture(m_core.window());
        else if (::GetCapture() == m_core.window())
            ::ReleaseCapture();
        return S_OK;
    });
}

STDMETHODIMP RootWindow::SetCaptureCtrl(IVexControlBase* control) noexcept
{
    return guarded([&] {
        SkinObjectCore* core = coreOf(control);
        if (!core || &core->node().root() != &node())
            return E_INVALIDARG;
        m_core.router().captureFor(targetOf(&core->node()));
        return S_OK;
    });
}
STDMETHODIMP RootWindow::ReleaseCaptureCtrl() noexcept
{
    return guarded([&] { m_core.router().releaseCapture(); });
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
        ObjectNode* met = hitTest(node(), {static_cast<int>(x), static_cast<int>(y)}, HitPurpose::Anything);
        return faceOf(met == &node() ? nullptr : met);
    });
}
STDMETHODIMP RootWindow::ShiftFocus(VARIANT_BOOL forward) noexcept
{
    return guarded([&] {
        const ComPtr<IAmbrel> hold(this);
        return m_core.router().shiftFocus(isTrue(forward)) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP RootWindow::RegisterHotkey(VARIANT_BOOL use) noexcept
{
    m_core.setHotKeys(isTrue(use));
    return S_OK;
}
STDMETHODIMP RootWindow::IsRegisterHotkey(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.usesHotKeys(); });
}

// Dragging and dropping

STDMETHODIMP RootWindow::IsDraging(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_core.router().isDragging(); });
}
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
    return guarded([&] {
        SkinObjectCore* core = coreOf(control);
        if (!core)
            return E_INVALIDARG;
        m_core.acceptFiles(core->node(), true);
        return S_OK;
    });
}
STDMETHODIMP RootWindow::RevokeAcceptFile(IVexControlBase* control) noexcept
{
    return guarded([&] {
        SkinObjectCore* core = coreOf(control);
        if (!core)
            return E_INVALIDARG;
        m_core.acceptFiles(core->node(), false);
        return S_OK;
    });
}
STDMETHODIMP RootWindow::SetDragPosition(VexPosition* position) noexcept
{
    return position ? (m_dragPosition = *position, S_OK) : E_POINTER;
}
STDMETHODIMP RootWindow::GetDragPosition(VexPosition* position) noexcept
{
    return position ? (*position = m_dragPosition, S_OK) : E_POINTER;
}
STDMETHODIMP RootWindow::RegisterAccecptHwnd(hyper window) noexcept
{
    return guarded([&] {
        if (!IsWindow(reinterpret_cast<HWND>(window)))
            return S_FALSE;
        std::erase(m_acceptingWindows, window);
        m_acceptingWindows.push_back(window);
        return S_OK;
    });
}
STDMETHODIMP RootWindow::RevokeAcceptHwnd(hyper window) noexcept
{
    return std::erase(m_acceptingWindows, window) ? S_OK : S_FALSE;
}

// Settings that other objects read

STDMETHODIMP RootWindow::IsCanCopyRun(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_canCopyRun; });
}
STDMETHODIMP RootWindow::SetCanCopyRun(VARIANT_BOOL on) noexcept
{
    return m_canCopyRun = isTrue(on), S_OK;
}
STDMETHODIMP RootWindow::IsParentBlend(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_blendsWithParent; });
}
STDMETHODIMP RootWindow::SetParentBlend(VARIANT_BOOL on) noexcept
{
    return m_blendsWithParent = isTrue(on), S_OK;
}
STDMETHODIMP RootWindow::SetDragFullWindow(VARIANT_BOOL on) noexcept
{
    return m_dragsFull = isTrue(on), S_OK;
}
STDMETHODIMP RootWindow::SetUseRgnInfo(VARIANT_BOOL on) noexcept
{
    return m_usesRegionInfo = isTrue(on), S_OK;
}
STDMETHODIMP RootWindow::IsUseRgnInfo(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_usesRegionInfo; });
}
STDMETHODIMP RootWindow::GetIsAutoLoad(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_loadsByItself; });
}
STDMETHODIMP RootWindow::SetIsAutoLoad(VARIANT_BOOL on) noexcept
{
    return m_loadsByItself = isTrue(on), S_OK;
}
STDMETHODIMP RootWindow::SetArabicMode(VARIANT_BOOL mirror) noexcept
{
    return guarded([&] {
        const ComPtr<IAmbrel> hold(this);
        setMirrored(isTrue(mirror));
        layOutChildren();
        m_core.invalidate(node().rect());
    });
}

STDMETHODIMP RootWindow::AddNCRgn(VEX_NCRGNTYPE type, IVexSkinSubRgn* region, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        if (!region)
            return false;
        m_regions[type].emplace_back(region);
        return true;
    });
}
STDMETHODIMP RootWindow::RemoveNCRgn(VEX_NCRGNTYPE, BSTR, VARIANT_BOOL* result) noexcept
{
    return notImplemented(result); // sub-regions carry no name to find them by
}
STDMETHODIMP RootWindow::RemoveAllNCRgns(VEX_NCRGNTYPE type, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] { return m_regions.erase(type) != 0; });
}

STDMETHODIMP RootWindow::AppendFinalCtrl(ISkinObjResBase* object) noexcept
{
    return guarded([&] {
        SkinObjectCore* core = coreOf(object);
        if (!core)
            return E_INVALIDARG;
        m_core.finalCreatePending(core->node());
        return S_OK;
    });
}
STDMETHODIMP RootWindow::RemoveFinalCtrl(ISkinObjResBase* object) noexcept
{
    return guarded([&] {
        SkinObjectCore* core = coreOf(object);
        if (!core)
            return E_INVALIDARG;
        m_core.finalCreateDone(core->node());
        return S_OK;
    });
}

STDMETHODIMP RootWindow::RotateWindow(VEX_ROTATE_TYPE, float) noexcept
{
    return E_NOTIMPL;
}
STDMETHODIMP RootWindow::InitRotateWindow() noexcept
{
    return E_NOTIMPL;
}
STDMETHODIMP RootWindow::EndRotateWindow() noexcept
{
    return E_NOTIMPL;
}

} // namespace ambrel
