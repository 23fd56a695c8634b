// The root of a window's object tree, as the outside sees it.
#pragma once

#include "ambrel/objects/name_index.h"
#include "ambrel/objects/skin_object.h"
#include "ambrel/window/window_core.h"

#include <utility>

namespace ambrel {

/// IAmbrel. Statuses: S_FALSE where there is no window yet or nothing to do; E_NOTIMPL for rotating windows, foreign
/// message entries and the rendering engines that this runtime does not have.
class RootWindow : public SkinObject<IAmbrel> {
public:
    RootWindow() : SkinObject(VEXOBJTYPE_AMBREL), m_core(*this, *this) {}

    // Two bases have them; the creatable class has the last word.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    HRESULT finalConstruct() { return S_OK; }
    void finalRelease();
    void* findInterface(REFIID iid) { return findSkinInterface(iid); }

    /// A root without a window. Throws std::bad_alloc.
    static ComPtr<RootWindow> make(IVexRes* resources, std::wstring_view name);
    /// The window of a root of this runtime; null for any other.
    static RootWindow* from(IUnknown* root) noexcept;
    /// The root of the window of this runtime that `window` is, or stands in; null when it is foreign.
    static RootWindow* of(HWND window) noexcept;

    WindowCore& window() noexcept { return m_core; }

    // SkinObjectCore
    ISkinObjResBase* face() noexcept override { return this; }
    bool notify(VexNotify&) override { return false; }
    RootServices* rootServices() noexcept override { return &m_core; }
    NameIndex* nameIndex() noexcept override { return &m_names; }

    // ISkinObjResBase, where the root differs
    STDMETHODIMP SetVisible(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL animate) noexcept override;
    STDMETHODIMP SetVisibleEx(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL animate) noexcept override;
    STDMETHODIMP SetName(BSTR name) noexcept override;
    STDMETHODIMP IsVisible(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetOpacity(short opacity) noexcept override;
    STDMETHODIMP SetRect(IVexRect* rect) noexcept override;
    STDMETHODIMP Resize(SkinRect* rect, long* result) noexcept override;
    STDMETHODIMP Center() noexcept override;
    STDMETHODIMP DestroyRgnInfo(VARIANT_BOOL* result) noexcept override;

    // IAmbrel
    STDMETHODIMP Create(hyper hWndParent, SkinRect sknrc, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetWindowHandle(hyper* window) noexcept override
    {
        return read(reinterpret_cast<hyper>(m_core.window()), window);
    }
    STDMETHODIMP IsSupportPerPixel(VARIANT_BOOL* on) noexcept override { return read(traits().perPixel, on); }
    STDMETHODIMP SetSupportPerPixel(VARIANT_BOOL on) noexcept override { return setTrait(traits().perPixel, on); }
    STDMETHODIMP GetResizeBorder(SkinRect* widths) noexcept override { return read(traits().resizeBorder, widths); }
    STDMETHODIMP SetResizeBorder(SkinRect rcBorder) noexcept override;
    STDMETHODIMP GetMinSize(SkinSize* size) noexcept override { return read(traits().minSize, size); }
    STDMETHODIMP SetMinSize(SkinSize* size) noexcept override { return take(traits().minSize, size); }
    STDMETHODIMP GetMaxSize(SkinSize* size) noexcept override { return read(traits().maxSize, size); }
    STDMETHODIMP SetMaxSize(SkinSize* size) noexcept override { return take(traits().maxSize, size); }
    STDMETHODIMP IsPopWindow(VARIANT_BOOL* on) noexcept override { return read(traits().popup, on); }
    STDMETHODIMP SetPopWindow(VARIANT_BOOL bPopWindow) noexcept override;
    STDMETHODIMP IsResizable(VARIANT_BOOL* on) noexcept override { return read(traits().resizable, on); }
    STDMETHODIMP SetResizable(VARIANT_BOOL on) noexcept override { return setTrait(traits().resizable, on); }
    STDMETHODIMP IsDragabled(VARIANT_BOOL* on) noexcept override { return read(traits().dragable, on); }
    STDMETHODIMP SetDragabled(VARIANT_BOOL on) noexcept override { return keep(traits().dragable, on); }
    STDMETHODIMP IsCanCopyRun(VARIANT_BOOL* on) noexcept override { return read(m_canCopyRun, on); }
    STDMETHODIMP SetCanCopyRun(VARIANT_BOOL on) noexcept override { return keep(m_canCopyRun, on); }
    STDMETHODIMP IsParentBlend(VARIANT_BOOL* on) noexcept override { return read(traits().blendsWithParent, on); }
    STDMETHODIMP SetParentBlend(VARIANT_BOOL on) noexcept override { return setTrait(traits().blendsWithParent, on); }
    STDMETHODIMP IsSetRgn(VARIANT_BOOL* on) noexcept override { return read(traits().shaped, on); }
    STDMETHODIMP SetRgn(VARIANT_BOOL bSetRgn) noexcept override;
    STDMETHODIMP Draw(hyper hDC, SkinRect rect, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP IsCaptured(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetCapture(VARIANT_BOOL bCaptured) noexcept override;
    STDMETHODIMP RegisterMessage(ULONG uMsg, ISkinObjResBase* pObject, VARIANT_BOOL bChildrenNotify,
                                 VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UnRegisterMessage(ULONG uMsg, ISkinObjResBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveAllRegister() noexcept override;
    STDMETHODIMP RegisterWholeMessage(ISkinObjResBase* pObject, VARIANT_BOOL bChildrenNotify,
                                      VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UnRegisterWholeMessage(ISkinObjResBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveAllWholeMessage() noexcept override;
    STDMETHODIMP DoWindowProc(hyper hWnd, LONG msg, hyper wParam, hyper lParam, LONG* pResult) noexcept override;
    STDMETHODIMP Default(LONG* pResult) noexcept override;
    STDMETHODIMP SetDragFullWindow(VARIANT_BOOL on) noexcept override { return keep(traits().dragsFull, on); }
    STDMETHODIMP SetWindowRgn() noexcept override { return ReCalcRgn(); }
    STDMETHODIMP SetMessageEntry(LONG*, LONG*) noexcept override { return E_NOTIMPL; } // tables of foreign code
    STDMETHODIMP SetUseRgnInfo(VARIANT_BOOL on) noexcept override { return keep(traits().usesFrameRegions, on); }
    STDMETHODIMP IsUseRgnInfo(VARIANT_BOOL* on) noexcept override { return read(traits().usesFrameRegions, on); }
    STDMETHODIMP AddNCRgn(VEX_NCRGNTYPE eNcRgnType, IVexSkinSubRgn* pSubRgn, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveNCRgn(VEX_NCRGNTYPE eNcRgnType, BSTR strName, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveAllNCRgns(VEX_NCRGNTYPE eNcRgnType, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetEventRecieve(hyper pEventBase) noexcept override;
    STDMETHODIMP GetEventRecieve(hyper* receiver) noexcept override
    {
        return read(reinterpret_cast<hyper>(m_core.receiver()), receiver);
    }
    STDMETHODIMP VexMessage(hyper hWnd, LONG nMsgID, hyper wParam, hyper lParam) noexcept override;
    STDMETHODIMP GetHotObject(ISkinObjResBase** pHotObj) noexcept override;
    STDMETHODIMP SetDispatchMsg(LONG pMsgId) noexcept override;
    STDMETHODIMP RemoveDispatchMsg(LONG pMsgId) noexcept override;
    STDMETHODIMP GetIsAutoLoad(VARIANT_BOOL* on) noexcept override { return read(traits().startsAfresh, on); }
    STDMETHODIMP SetIsAutoLoad(VARIANT_BOOL on) noexcept override { return keep(traits().startsAfresh, on); }
    STDMETHODIMP GetRenderEngine(VEX_RENDERENGINE_TYPE* type) noexcept override
    {
        return read(VEX_RENDERENGINE_GDI, type);
    }
    STDMETHODIMP SetRenderEngine(VEX_RENDERENGINE_TYPE type) noexcept override
    {
        return type == VEX_RENDERENGINE_GDI ? S_OK : E_NOTIMPL; // there is no other
    }
    STDMETHODIMP GetRenderDevice(hyper* device) noexcept override { return read(m_core.renderDevice(), device); }
    STDMETHODIMP SetRefreshType(VEX_REFRESH_TYPE type) noexcept override;
    STDMETHODIMP GetRefreshType(hyper* type) noexcept override { return read(m_core.refreshType(), type); }
    STDMETHODIMP ResizeSence(short nWidth, short nHeight) noexcept override;
    STDMETHODIMP FreezeUpdate(VARIANT_BOOL bFreeze) noexcept override;
    STDMETHODIMP IsFreezeUpdate(VARIANT_BOOL* on) noexcept override { return read(m_core.isFrozen(), on); }
    STDMETHODIMP GetFreezeHBitmap(hyper* bResult) noexcept override;
    STDMETHODIMP SetFreezeDrawRect(SkinRect rc) noexcept override;
    STDMETHODIMP RegSyncMoveWindow(hyper hWnd, IVexControlBase* pCtrl) noexcept override;
    STDMETHODIMP AppendFinalCtrl(ISkinObjResBase* pContrlBase) noexcept override;
    STDMETHODIMP RemoveFinalCtrl(ISkinObjResBase* pContrlBase) noexcept override;
    STDMETHODIMP UnRegSyncMoveWindow(hyper hWnd) noexcept override;
    STDMETHODIMP SetArabicMode(VARIANT_BOOL bIsMirror) noexcept override;
    STDMETHODIMP RegisterHotkey(VARIANT_BOOL on) noexcept override
    {
        return m_core.setHotKeys(on != VARIANT_FALSE), S_OK;
    }
    STDMETHODIMP IsRegisterHotkey(VARIANT_BOOL* on) noexcept override { return read(m_core.usesHotKeys(), on); }
    STDMETHODIMP ShiftFocus(VARIANT_BOOL bForward) noexcept override;
    STDMETHODIMP SynMoveWindow() noexcept override;
    STDMETHODIMP GetVexControlByPt(LONG nXPt, LONG nYPt, ISkinObjResBase** pCtrl) noexcept override;
    STDMETHODIMP SetCaptureCtrl(IVexControlBase* pCtrl) noexcept override;
    STDMETHODIMP ReleaseCaptureCtrl() noexcept override;
    STDMETHODIMP DirectDrawImmediate() noexcept override;
    STDMETHODIMP FadeShow(VARIANT_BOOL bShow, VEX_FADE_TYPE FadeType) noexcept override;
    STDMETHODIMP ReCalcRgn() noexcept override;
    STDMETHODIMP IsDraging(VARIANT_BOOL* on) noexcept override { return read(m_core.router().isDragging(), on); }
    STDMETHODIMP RegisterDropTarget() noexcept override;
    STDMETHODIMP RevokeDropTarget() noexcept override;
    STDMETHODIMP RotateWindow(VEX_ROTATE_TYPE, float) noexcept override
    {
        return E_NOTIMPL;
    } // windows of the platform stand upright
    STDMETHODIMP InitRotateWindow() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP EndRotateWindow() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP AddDirtyRect(SkinRect rc) noexcept override;
    STDMETHODIMP Present(SkinRect* pRect) noexcept override;
    STDMETHODIMP IsBatchMode(VARIANT_BOOL* on) noexcept override { return read(m_core.isBatching(), on); }
    STDMETHODIMP SetBatchMode(VARIANT_BOOL bValue) noexcept override;
    STDMETHODIMP GetCurrentFocusObject(ISkinObjResBase** pCtrl) noexcept override;
    STDMETHODIMP RegisterAcceptFile(IVexControlBase* pCtrl, LONG nMode = 1) noexcept override;
    STDMETHODIMP RevokeAcceptFile(IVexControlBase* pCtrl) noexcept override;
    STDMETHODIMP SetDragPosition(VexPosition* position) noexcept override { return take(m_dragPosition, position); }
    STDMETHODIMP GetDragPosition(VexPosition* position) noexcept override { return read(m_dragPosition, position); }
    STDMETHODIMP RegisterAccecptHwnd(hyper hWnd) noexcept override;
    STDMETHODIMP RevokeAcceptHwnd(hyper hWnd) noexcept override;

protected:
    void sizeChanged() override;

private:
    WindowTraits& traits() noexcept { return m_core.traits(); }
    HRESULT setTrait(bool& trait, VARIANT_BOOL on) noexcept;

    // Plain values go in and out through these.
    template <class Value, class Out>
    static HRESULT read(const Value& value, Out* result) noexcept
    {
        return returning(result, [&] { return value; });
    }
    template <class Value>
    static HRESULT take(Value& place, const Value* value) noexcept
    {
        return value ? (place = *value, S_OK) : E_POINTER;
    }
    static HRESULT keep(bool& place, VARIANT_BOOL on) noexcept { return place = on != VARIANT_FALSE, S_OK; }

    /// S_OK when `work(node)` answers true, S_FALSE when it does not; E_INVALIDARG for a foreign object.
    template <class Work>
    static HRESULT onObject(ISkinObjResBase* object, VARIANT_BOOL* result, Work&& work) noexcept
    {
        return filling(result, [&](VARIANT_BOOL& done) {
            SkinObjectCore* core = nullptr;
            const HRESULT status = checkedCore(object, core);
            if (FAILED(status))
                return status;
            done = morvane::toVariantBool(work(core->node()));
            return done ? S_OK : S_FALSE;
        });
    }
    template <class Work>
    static HRESULT onObject(ISkinObjResBase* object, Work&& work) noexcept
    {
        return guarded([&] {
            SkinObjectCore* core = nullptr;
            const HRESULT status = checkedCore(object, core);
            if (SUCCEEDED(status))
                work(core->node());
            return status;
        });
    }
    /// For work that runs foreign code: the root outlives it.
    template <class Work>
    HRESULT held(Work&& work) noexcept
    {
        const ComPtr<IAmbrel> hold(this);
        return guarded(std::forward<Work>(work));
    }

    NameIndex m_names;
    WindowCore m_core;
    ComPtr<IDropTarget> m_dropTarget;
    // Settings of the application's own; nothing here acts on them.
    VexPosition m_dragPosition{};
    bool m_canCopyRun = false;
};

} // namespace ambrel
